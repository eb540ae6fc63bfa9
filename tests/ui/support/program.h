// One run of the real program.
#pragma once

#include "support/probe.h"

#include <memory>
#include <string>
#include <vector>
#include <windows.h>

// The file that the tests start: what the environment names in KESTOVAR_PROGRAM, else the program of their own build.
std::string ProgramPath();

class Program {
public:
    // Starts it. The command line is what a person would type behind the program's name; the flags say
    // whether the show command is marked as given.
    explicit Program(const std::string& arguments = "", WORD showCommand = SW_SHOWNORMAL,
                     DWORD flags = STARTF_USESHOWWINDOW);
    // Ends it, by force if it is still there.
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // Waits until the main window is shown and painted. False when that does not come about; then the
    // test has failed.
    bool WaitForFrame();
    HWND Frame() const { return FrameWindow; }
    HWND View() const;
    HWND Ruler() const;
    HWND Status() const;
    HWND Buttons() const;

    std::string Title() const;
    // Waits until the title names the file (in lower case), or is plain for "".
    bool WaitForTitle(const std::string& name) const;

    // Sends a message and waits for the answer; the test fails when there is none in time.
    LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    void Command(UINT id) const { Send(FrameWindow, WM_COMMAND, id); }
    void Post(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    bool Answers() const;

    // Waits for a message box, presses its button and waits until it is gone; returns the box's text.
    std::string AnswerBox(int button = IDOK);
    bool ShowsBox() const;

    // Closes the main window; returns the exit code. WaitForExit alone waits for an end that is under way.
    DWORD Close();
    DWORD WaitForExit();

    Probe& Inside();

    // Scroll bars of the view.
    ScrollValues Vertical() { return Inside().Scroll(View(), SB_VERT); }
    ScrollValues Horizontal() { return Inside().Scroll(View(), SB_HORZ); }
    int Top() { return Vertical().Position; }

    // The texts that the view paints, from the top, without empty ones.
    std::vector<ProbeText> ViewTexts();
    // Their first one; a failure when there is none.
    std::string TopText();
    std::string StatusText();

    MenuItem Menu(UINT id) { return Inside().Command(FrameWindow, id); }
    MenuItem SystemMenu(UINT id) { return Inside().Command(FrameWindow, id, ProbeMenuKind::System); }

private:
    PROCESS_INFORMATION Process = {};
    HWND FrameWindow = nullptr;
    std::unique_ptr<Probe> TheProbe;
};

SIZE ClientSize(HWND window);

// The window's place in its parent's client area, or on the screen.
RECT PlaceOf(HWND window);
