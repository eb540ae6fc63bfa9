// The screen font, as the user chooses it.
#pragma once

#include <windows.h>

// Asks for another screen font and puts it to use at once. Fonts of the printer are offered too when there is one
// (else nullptr).
void ChooseScreenFont(HWND owner, HDC printer);
