// The current file, given out of hand for a while.
#pragma once

#include <windows.h>

// Closes the file, as an icon does, so that somebody else can have it. The document is still shown.
void ReleaseFile();

// What the file was released for has failed: it is read from again. When it is no longer what it was, the
// document and the file list are closed, and that is reported. Nothing happens to a document that was opened
// since.
void TakeFileBack(HWND mainWindow);

// The released file cannot be read again: the document is closed, and that is reported.
void CloseLostFile(HWND mainWindow);
