// The other side of what the program launches in the tests: a program that records how it was started.
#pragma once

#include <string>
#include <vector>
#include <windows.h>

// How it was started.
struct LaunchRecord {
    std::string Program;     // its own path
    std::string CommandLine; // whole
    std::string Arguments;   // what follows the program's name there
    std::string Directory;
    DWORD Flags = 0; // of STARTUPINFO
    WORD Show = 0;
    std::string File; // its last argument: "free" when nobody else has it open, "held", or "none" when it is no file
    HWND Window = nullptr; // while it stays
};

// Programs that are started while this exists find out from it where to leave their record. They end at once,
// unless they are to stay, with a window, until they are let go.
class Launches {
public:
    enum class Kind { EndAtOnce, Stay };

    explicit Launches(Kind kind = Kind::EndAtOnce);
    // Waits until all that were seen have ended.
    ~Launches();
    Launches(const Launches&) = delete;
    Launches& operator=(const Launches&) = delete;

    // Waits for the next record and takes it away; without one the test has failed.
    LaunchRecord Wait();
    // Whether something has left a record that nobody has waited for.
    bool HasRecord() const;
    // Lets those go that stay, and waits for all.
    void End();

private:
    HANDLE EndEvent;
    std::vector<HANDLE> Processes;
};

// The path of the program to be launched, and copies of it, which the test removes.
std::string LaunchedProgram();
void CopyLaunchedTo(const std::string& path);
