// The modules an executable imports, in a list box.
#pragma once

#include <windows.h>

// Fills a dialog's list box with the modules that the current document imports. Those of 16-bit programs
// are shown in lower case with ".dll" behind them, each once.
void FillImportList(HWND dialog, int listBox, const char* path);
