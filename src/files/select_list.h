// The dialog that shows the file list and lets the user pick from it.
#pragma once

#include "base/text.h"

#include <windows.h>

// Shows the list with its current file selected. True: a file was chosen; it is the list's current one and
// path is its path.
bool ChooseFromFileList(HWND owner, char (&path)[MaxPathSize]);
