// The commands that print and that set printing up.
#pragma once

#include <windows.h>

// Prints the file that is shown; a run that was started to print ends with it.
void PrintShownFile(HWND mainWindow, UINT id);

void SetUpPrinter(HWND mainWindow, UINT id);
void SetUpPage(HWND mainWindow, UINT id);
