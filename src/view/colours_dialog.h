// The dialog in which the colours of the regions are chosen.
#pragma once

#include <windows.h>

// True when it was confirmed; the settings are the new ones then, and nothing is drawn with them yet.
bool ChooseColours(HWND owner);
