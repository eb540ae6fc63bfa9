// The windows and drawing objects that frame, view, ruler and status line share. The frame makes and
// destroys them; the others use them.
#pragma once

#include <windows.h>

struct FrameWindows {
    HINSTANCE Instance = nullptr;
    HWND Main = nullptr;
    HWND View = nullptr;
    HWND Ruler = nullptr;
    HWND Status = nullptr;
    HWND Buttons = nullptr;
    HMENU MainMenu = nullptr; // kept while the menu bar is hidden
    HMENU SystemMenu = nullptr;
    HACCEL Accelerators = nullptr;
    int ClientWidth = 0; // of the frame when it was sized last, pixels
    int ClientHeight = 0;
};

extern FrameWindows Windows;

struct DrawingObjects {
    HBRUSH OutputBrush = nullptr;
    HBRUSH RulerBrush = nullptr;
    HBRUSH MarkedBrush = nullptr;
    HBRUSH StatusBrush = nullptr;
    HBRUSH GreyBrush = nullptr; // none when the screen cannot show light grey exactly
    HPEN RulerPen = nullptr;
    HFONT FallbackFont = nullptr; // stock, never deleted
    HFONT ScreenFont = nullptr;
    HCURSOR ArrowCursor = nullptr;
    HCURSOR WaitCursor = nullptr;
    HCURSOR IbeamCursor = nullptr;
    int LogPixelsX = 96;
    int LogPixelsY = 96;
};

extern DrawingObjects Drawing;

// Private messages. Those to the frame:
constexpr UINT WM_BUSY_START = WM_USER;       // show the wait cursor
constexpr UINT WM_BUSY_END = WM_USER + 1;     // and the arrow again
constexpr UINT WM_SHOW_MATCH = WM_USER + 2;   // wParam column, lParam line
constexpr UINT WM_REMOVE_MATCH = WM_USER + 3; // the same of the match before
constexpr UINT WM_REMOTE_FILE = WM_USER + 10; // a name stands in the shared memory; wParam 0: the first one
constexpr UINT WM_REMOTE_END = WM_USER + 11;  // it was the last one
// To the status line:
constexpr UINT WM_SHOW_POSITION = WM_USER + 4;
constexpr UINT WM_SHOW_STRING = WM_USER + 5; // wParam string id
// To the view: a vertical scroll request; with code ScrollToTarget TopLine becomes lParam.
constexpr UINT WM_SCROLL_VIEW = WM_USER + 12;

// Has the status line show the position.
void RefreshStatus();

// Lays the frame's children out anew in the size it has.
void LayOutFrameAnew();

// Has the view painted anew as a whole.
void RepaintView();

// Has the view compute its scroll ranges anew in the size it has.
void MeasureViewAnew();
