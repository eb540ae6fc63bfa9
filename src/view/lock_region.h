// The rows and columns at the top left that stay in place as headings.
#pragma once

#include <windows.h>

void ClearLock();

// Lets the user choose the headings of the view, which shows the beginning of its document, by mouse or key.
// The view is not laid out anew.
void PickLockRegion(HWND view);
