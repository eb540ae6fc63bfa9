// Names of files that another process hands over: it puts each path, zero-terminated, into the shared memory
// KV_shared_memory and sends WM_REMOTE_FILE, with 0 for the first of a batch; at the end WM_REMOTE_END.
#pragma once

#include <windows.h>

// Takes the name. 1: no more names are wanted, because the list is full, a batch is under way already, or
// the memory cannot be read.
LRESULT OnRemoteFile(HWND mainWindow, bool isFirst);

// Opens the files of the batch.
void OnRemoteEnd(HWND mainWindow);
