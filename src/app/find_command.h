// Finding text or bytes, and finding them again.
#pragma once

#include <cstdint>
#include <windows.h>

// Asks what to find and finds it.
void DoFind(HWND mainWindow);

// Finds the next match of the last search, if that found something.
void RepeatFind(HWND mainWindow);

// Finds text, or the bytes of Find.FindHex when there are any, from line (or 1-based hex row) and column (or
// byte) on, and shows the match, or says that there is none.
void RunSearch(HWND mainWindow, const char* text, std::int32_t line, std::int32_t column);
