// The files opened lately through the Open dialog, oldest first.
#pragma once

#include "base/text.h"

#include <cstddef>

constexpr int MaxRecentFiles = 9;

// Menu texts of recent files are cut to this many characters.
constexpr std::size_t RecentMenuTextLength = 30;

struct RecentFiles {
    char Paths[MaxRecentFiles][MaxPathSize] = {}; // full paths in lower case
    int Count = 0;                                // the leading ones in use
};

// Closes gaps in the paths as loaded, in a single pass, and counts the leading ones. The pass is kept as
// it is: a gap can reorder what follows, and what stays behind a remaining gap does not count.
void CompactRecentFiles(RecentFiles& recent);

// Adds path as the newest, dropping the oldest when the list is full. False when it is in the list
// already; the list then stays as it is.
bool AddRecentPath(RecentFiles& recent, const char* path);

// The menu text of entry index (from 0), numbered from 1: "&1 c:\...\name".
void FormatRecentText(const RecentFiles& recent, int index, char* text, std::size_t size);
