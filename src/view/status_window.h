// The status line below the view, and the pop-up that follows the thumb of a large document.
#pragma once

#include <windows.h>

// Makes the status font and the window; its height is known from then on.
HWND CreateStatusWindow(HWND mainWindow);

// Pixels the status line needs.
int StatusHeight();

// The font of the status line, and the size of a text in it.
HFONT StatusFont();
SIZE MeasureStatusText(const char* text);

// Shows "Reading...". Cheap while that already stands there: indexing announces every block.
void AnnounceReading();

LRESULT CALLBACK StatusWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// The thumb pop-up: opens it if need be and shows the line or offset the thumb stands for.
void ShowThumbPosition(HWND view, int thumb);
void CloseThumbPosition();
LRESULT CALLBACK ScrollWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
