// The texts of a version resource. Layout: Microsoft's published "VS_VERSIONINFO" and the structures below
// it. Read here and not by the system's own functions: those trust the lengths in the block.
#pragma once

#include "document/byte_reader.h"

#include <cstddef>

struct VersionTexts {
    char16_t FileDescription[80] = {};
    char16_t FileVersion[30] = {};
    char16_t CompanyName[40] = {};
};

// Reads the texts of the language that the block's own translation names, either half of it first; without
// a translation those of American English. What is missing or damaged stays empty; what is longer is cut.
void ReadVersionTexts(ByteSpan block, VersionTexts& texts);
