// Starting something with the current file.
#pragma once

#include <windows.h>

// Command IDM_FILE_LAUNCH runs the file or starts what it is associated with; IDM_EDIT_FILE always starts the
// editor. A failure is reported, and the file is still shown.
void LaunchFile(HWND mainWindow, UINT command);
