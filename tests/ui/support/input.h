// Real input, as the keyboard and the mouse make it: it goes to whatever is in the foreground.
#pragma once

#include <initializer_list>
#include <windows.h>

// Brings a top-level window to the foreground and waits until it is there.
bool BringToForeground(HWND window);

// Presses the keys in order and releases them the other way round, in one go: nothing can come between
// a modifier and its key.
void PressKeys(std::initializer_list<WORD> keys);

// Moves the pointer to a point of the window's client area and waits until it is there and stays.
bool MovePointer(HWND window, int x, int y);

// The buttons, where the pointer is.
void PressLeft();
void ReleaseLeft();
void DoubleClickLeft();
void ClickRight();
void DoubleClickRight();
