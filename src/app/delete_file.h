// Deleting the current file.
#pragma once

#include <windows.h>

// Asks, deletes the file and takes it out of the list. A failure is reported, and the file is still shown.
void DeleteCurrentFile(HWND mainWindow);
