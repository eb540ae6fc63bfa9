// Dialogs whose lower part can be out of sight.
#pragma once

#include <windows.h>

// The height at which a dialog ends at the top of one of its controls, in pixels.
LONG HeightDownTo(HWND dialog, int control);

// The dialog keeps its place and width.
void SetDialogHeight(HWND dialog, LONG height);
