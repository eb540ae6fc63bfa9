// The one way in which a document is opened, and the one in which it is closed.
#pragma once

#include <windows.h>

// Opens path in place of the current document and brings view, menus, title and status line up to date. A
// wildcard pattern makes the file list and opens its first file. A failure is reported; the document
// before is closed all the same, unless no file matched. Returns whether the document is open.
bool OpenSequence(HWND mainWindow, const char* path);

// The same for the name of a file: a question mark in it stands for a letter that the code page does not have.
bool OpenNamedFile(HWND mainWindow, const char* path);

// Asks with the Open dialog first; nothing happens when it is cancelled. The file becomes a recent one.
bool OpenFromDialog(HWND mainWindow);

// Brings the commands and the status line into step with the file list.
void ShowListState();

void CloseDocument();

// The same, and commands, status line and view show that there is none.
void CloseAndClear();

// The title names the current file.
void UpdateTitle(HWND mainWindow);
