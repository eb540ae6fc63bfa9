// Walking the file list, and making one of the files that were dropped.
#pragma once

#include <windows.h>

#include <shellapi.h>

// Commands: the previous or next file of the list.
void OpenPreviousFile(HWND mainWindow, UINT id);
void OpenNextFile(HWND mainWindow, UINT id);

// The same by key, which beeps when there is none.
void PreviousFileByKey(HWND mainWindow, UINT id);
void NextFileByKey(HWND mainWindow, UINT id);

// Shows the list and opens the file chosen from it. False when there is no list.
bool RunSelectList();

// The list is complete: it is walked from its first file on, which is opened. Of an empty one nothing is opened.
void OpenNewList(HWND mainWindow);

// Opens what was dropped: one file, or several as a list. The list before is gone either way.
void OpenDropped(HWND mainWindow, HDROP drop);
