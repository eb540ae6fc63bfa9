// The current file, given out of hand for a while.
#pragma once

#include <windows.h>

// Closes the file, if it is open, so that somebody else can have it. The document is still shown.
void ReleaseFile();

// The same of the file of a window that is now an icon, also when it is held whole: it is looked at anew when the
// window returns.
void ReleaseFileOfIcon();

// The released file is read from again. When it has changed or cannot be opened any more, that is reported, and
// it is opened anew or the document closed. Nothing happens to a document that was opened since.
void TakeFileBack(HWND mainWindow);

// The released file cannot be read again: the document is closed, and that is reported.
void CloseLostFile(HWND mainWindow);
