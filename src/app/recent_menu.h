// The numbered entries at the end of the File menu.
#pragma once

#include <windows.h>

void BuildRecentMenu(HWND mainWindow);

// The current file has been opened through the Open dialog: it becomes the newest entry, unless it is there.
void AddRecentFile(HWND mainWindow);
