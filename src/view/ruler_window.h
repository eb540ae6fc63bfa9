// The ruler above the view: characters for a fixed-pitch font, inches for a proportional one.
#pragma once

#include <windows.h>

LRESULT CALLBACK RulerWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
