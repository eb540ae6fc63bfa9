// Copying and saving what is selected.
#pragma once

#include <windows.h>

// Puts the selection on the clipboard, at most 64000 bytes of it; more is reported.
void CopySelection(HWND mainWindow);

// Writes the selection to a new file, or in place of one that is there. False when it could not, or not all
// of it.
bool SaveSelection(HWND mainWindow, const char* path);
