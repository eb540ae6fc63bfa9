// The commands of the Options menu, and the font steps, which are commands too.
#pragma once

#include <windows.h>

void IncreaseFontSize(HWND mainWindow, UINT id);
void DecreaseFontSize(HWND mainWindow, UINT id);
void SelectFont(HWND mainWindow, UINT id);
void SetPreferences(HWND mainWindow, UINT id);
void CustomiseButtons(HWND mainWindow, UINT id);
void SetColours(HWND mainWindow, UINT id);
void SetLineLength(HWND mainWindow, UINT id);
