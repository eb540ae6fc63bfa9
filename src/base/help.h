// The help file and the topics asked for.
#pragma once

#include "base/text.h"

#include <windows.h>

struct HelpState {
    char Path[MaxPathSize] = ""; // of the help file, beside the program
    bool Used = false;           // a help window may be open, to be closed at the end
};

extern HelpState Help;

// Shows help for window; command and topic are those of WinHelp.
void ShowHelp(HWND window, UINT command, ULONG_PTR topic);

// Closes the help window that belongs to window, if there may be one.
void CloseHelp(HWND window);
