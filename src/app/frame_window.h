// The main window: it makes, places and destroys what the others share, and turns keys, drops and
// messages into actions.
#pragma once

#include <windows.h>

LRESULT CALLBACK FrameWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
