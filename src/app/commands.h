// Every command of the program is a row: its id and what it does. Menus, keys, buttons and private requests
// all go through DispatchCommand. A command whose menu item is grey does nothing.
#pragma once

#include <windows.h>

// Carries command id out; an id that is none of ours goes on to DefWindowProc with the message that
// brought it.
LRESULT DispatchCommand(HWND mainWindow, UINT message, UINT id, LPARAM lParam);
