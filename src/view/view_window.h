// The view window: scrolling, selecting, mouse.
#pragma once

#include "view/menu_help.h"
#include "view/selection.h"

#include <cstdint>
#include <windows.h>

// What the view asks of the rest of the program; handed in once at start.
struct ViewHooks {
    void (*SelectionChanged)(bool hasSelection); // commands that need a selection follow
    bool (*ShowFileList)();                      // false: there is no list to show
    ProgramKind (*CurrentProgram)();             // whether the file is itself a program
};

extern ViewHooks ViewCalls;

LRESULT CALLBACK ViewWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Removes the selection between two lines and its colouring.
void ClearSelection(HWND view, std::int32_t lineA, std::int32_t lineB);

// Ends a selection by mouse that is under way, as when its document goes away.
void EndSelecting(HWND view);

// Scrolls so that TopLine becomes line, as far as the document allows.
void ScrollToLine(HWND view, std::int32_t line);

// Has lines (or rows, from 1) painted anew as far as they are on screen, headings among them.
void InvalidateLines(HWND view, LineBand lines, bool erase);
