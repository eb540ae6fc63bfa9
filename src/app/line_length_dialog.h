// The dialog that asks how long the lines of a file are that is not text.
#pragma once

#include <windows.h>

// True when it was confirmed; the document has the new length then, and is not drawn with it yet.
bool AskLineLength(HWND owner);
