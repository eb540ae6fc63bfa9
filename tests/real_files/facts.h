// What the program finds out about a file.
#pragma once

#include "document/file_info.h"

#include <string>
#include <vector>

struct Facts {
    FileInfo Document; // of the opened document; its Details stay until the next one
    FileInfo Pane;     // of the details pane, which wants no details
    std::vector<std::string> Imports;
};

// Before the first file.
void StartIdentifying();

// Opens path as the current document and lists its imports, and identifies it once more as the details pane
// does. False when it cannot be opened.
bool IdentifyAsProgramDoes(const char* path, Facts& facts);
