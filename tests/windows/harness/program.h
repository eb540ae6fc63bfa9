// The program, running in this process.
#pragma once

#include <gtest/gtest.h>

#include <string>

// Starts it unless it runs: classes, settings (section "test"), windows. It has no message loop; the tests
// send what they need and pump what was posted.
void StartProgramOnce();

// Starts it, which must have ended, with that command line. What is posted at its start waits.
void StartProgramWith(const std::string& commandLine);

// Destroys the main window, if there is one.
void EndProgram();

// Dispatches every message that is waiting.
void PumpMessages();

// How many more GDI objects this process could make. Differs exactly by what leaked in between.
int FreeGdiObjects();

// A test with the program running and no document open, before and after.
class RunningProgram : public testing::Test {
protected:
    RunningProgram();
    ~RunningProgram() override;
};

// Counts the blocks announced as being read, in place of the status line.
class ReadingCounter {
public:
    ReadingCounter();
    ~ReadingCounter();
    ReadingCounter(const ReadingCounter&) = delete;
    ReadingCounter& operator=(const ReadingCounter&) = delete;

    void Reset();
    int Count() const;

private:
    void (*Before)();
};
