// The dialog that says what is known about the current document.
#pragma once

#include "document/file_info.h"

#include <windows.h>

struct ShownFile {
    const char* Path;
    const FileInfo* Info;
    const char* TypeDescription; // what files of its extension are called; empty when that is not known
    bool FromArchive;            // it was expanded from an archive to be shown
};

void ShowFileInfo(HWND owner, const ShownFile& file);
