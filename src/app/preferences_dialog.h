// The dialog of the settings that belong to no other.
#pragma once

#include <windows.h>

// Asks, and puts what is confirmed to use at once.
void AskPreferences(HWND mainWindow);
