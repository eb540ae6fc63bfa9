// The command line:  [FILE] [-Iname] [-P] [-L a b c d] [-x y w h]
#pragma once

#include "base/text.h"

#include <cstddef>
#include <cstdint>

// A settings section's name is at most 19 characters.
constexpr std::size_t SectionNameSize = 20;

// "left top width height" as text.
constexpr std::size_t RectangleTextSize = 80;

// The heading lock that a command line asks for.
struct LockSpec {
    std::int32_t ColStart = 0; // first locked column, from 0
    std::int32_t TopLine = 0;  // the line above the first locked row
    std::int32_t Cols = 0;
    std::int32_t Rows = 0;
};

struct CommandLine {
    char FileName[MaxPathSize] = "";        // file or wildcard pattern to open
    char Rectangle[RectangleTextSize] = ""; // window rectangle, empty = none given
    char SectionName[SectionNameSize] = ""; // section of the settings file
    LockSpec Lock;
    bool PrintAndExit = false;
    bool Error = false; // reported once there is a window to report on
};

// Parses text, of which the first 259 characters count. After an error the file name, the rectangle
// and the section name are empty; the settings then come from, and go to, the section without a name.
CommandLine ParseCommandLine(const char* text);
