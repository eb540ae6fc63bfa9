// Filling the file list, with what the user is told about it.
#pragma once

#include "base/text.h"
#include "document/file_list.h"

#include <windows.h>

// Appends a file in lower case; with an empty name, directory is the whole path. Tells owner, if there is
// one, when the list is full or becomes so: once for each file that does not fit. False when the list was
// replaced by another one meanwhile.
bool AddFileToList(HWND owner, const char* directory, const char* name);

// Whether path is a wildcard pattern.
bool HasWildcards(const char* path);

// Appends the files that a wildcard pattern matches, in the order in which the file system has them:
// ordinary files only, no directories, hidden or system ones. Returns how many there are; fewer, when the list
// is replaced by another one meanwhile.
int AddMatchesToList(HWND owner, const char* pattern);

// Makes the files that a wildcard pattern matches the list that is walked. The pattern becomes
// the path of the first one; when there is none, owner is told and it becomes empty. One file alone makes
// no list.
void BuildFileList(HWND owner, char (&pattern)[MaxPathSize]);
