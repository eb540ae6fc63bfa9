// The one way in which the program reports and asks.
#pragma once

#include <windows.h>

// Shows string stringId, formatted with the further arguments (printf conversions), in a box with
// an exclamation mark.
void ReportMessage(HWND owner, UINT stringId, ...);

// Asks string stringId, formatted with one argument, as a yes/no question with No as the default.
// Returns IDYES or IDNO.
int AskMessage(HWND owner, UINT stringId, const char* argument);
int AskMessage(HWND owner, UINT stringId, int argument);
