// The dialog that asks for a line or an offset.
#pragma once

#include <windows.h>

// Asks; true: Goto.GotoText is what was entered, and its history knows it.
bool AskGotoTarget(HWND owner, bool hexMode);
