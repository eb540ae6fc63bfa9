// The dialog that asks what to find, and how.
#pragma once

#include <windows.h>

// Asks, with what Find holds already entered; true: Find is what was entered, and its histories know it.
// Not both of Find's strings are then empty.
bool AskFind(HWND owner);
