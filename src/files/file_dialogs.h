// The dialogs that ask for a file.
#pragma once

#include "base/text.h"

#include <windows.h>

// Asks for a file to open, with the filter given (empty: the standard one). True: path is the file's full
// path, and the files that the dialog showed beside it are the list that is walked. Without others there is
// no list. False when cancelled; path and list stay.
bool ShowOpenDialog(HWND owner, const char* filterText, char (&path)[MaxPathSize]);

// Asks for a file to save in, with path as the suggestion, and before an existing one is taken. False when
// cancelled.
bool ShowSaveDialog(HWND owner, const char* filterText, char (&path)[MaxPathSize]);
