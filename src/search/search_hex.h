// Searching the bytes of the document, in hex mode.
#pragma once

#include "search/search_pattern.h"

#include <cstdint>

// Looks from byte column of row, from 1, in Find's direction; backwards a match ends at that byte at the
// latest. The column may lie outside the row: it counts from the row's first byte. True: Find.FoundLine, FoundCol and
// FoundLen tell where it is.
//
// Unless case matters, letters are compared as capitals, but for the byte a backward search starts at:
// that one is compared as it is.
bool SearchHexRows(const SearchPattern& pattern, std::int32_t row, std::int32_t column);
