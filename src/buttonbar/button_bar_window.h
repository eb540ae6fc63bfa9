// The strip of buttons across the top of the frame. A button posts its command to the frame.
#pragma once

#include <windows.h>

// What the bar asks of the rooms above it; set at start.
struct ButtonBarCallsType {
    // The number of the string that says what Launch would do with the current file.
    UINT (*LaunchHelp)() = nullptr;
};

extern ButtonBarCallsType ButtonBarCalls;

// A button follows what its command can do; it is drawn anew when that changed.
void SetButtonEnabled(int button, bool enabled);

// Takes a bubble away before something else is shown where it stands: what was beneath it comes back.
void DismissBubble();

LRESULT CALLBACK ButtonWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
