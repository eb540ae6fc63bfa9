// The one way in which a document is opened, and the one in which it is closed.
#pragma once

#include <windows.h>

// Opens path in place of the current document and brings view, menus and title up to date. A failure is
// reported; the document before is closed all the same.
void OpenSequence(HWND mainWindow, const char* path);

void CloseDocument();

// The title names the current file.
void UpdateTitle(HWND mainWindow);
