// The question before a file is deleted.
#pragma once

#include <windows.h>

// No is the default.
bool ConfirmDelete(HWND owner, const char* path);
