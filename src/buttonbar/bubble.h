// The bubble below the bar that names a button.
#pragma once

#include <windows.h>

// Shows the name of the button in a slot of the bar, in place of a bubble that is shown.
void ShowBubble(HWND bar, int slot);

// Takes the bubble away, if there is one; with restore the screen beneath it comes back as it was.
void HideBubble(bool restore);

bool IsBubbleShown();

LRESULT CALLBACK BubbleWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
