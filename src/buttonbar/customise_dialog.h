// The dialog in which the buttons of the bar are chosen and put into order.
#pragma once

#include <windows.h>

// True when it was confirmed; the bar's state is the new one then, and is neither saved nor drawn yet.
bool CustomiseButtonBar(HWND owner);
