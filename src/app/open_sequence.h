// The one way in which a document is opened, and the one in which it is closed.
#pragma once

#include <windows.h>

// Opens path in place of the current document and brings view, menus and title up to date. A wildcard
// specification makes the file list and opens its first file; without a path (nullptr) the Open dialog asks
// for one. A failure is reported; the document before is closed all the same, unless no file matched or the
// dialog was cancelled. Returns whether the document is open.
bool OpenSequence(HWND mainWindow, const char* path);

void CloseDocument();

// The title names the current file.
void UpdateTitle(HWND mainWindow);
