// Searching the lines of the document, as they are displayed in text mode.
#pragma once

#include "document/line_index.h"
#include "search/search_pattern.h"

#include <cstdint>

// A line as a search for a text sees it: tabs expanded and EBCDIC translated where that is on. The second
// translation that painting may make is not made. Valid until the next read.
LineText ReadSearchedLine(std::int32_t line);

// Puts into text what is selected of one line in text mode, as far as it fits. False: nothing is.
bool TakeSelectedText(char (&text)[FindTextSize]);

// Looks from line and column on in Find's direction; backwards a match ends at column at the latest. True:
// Find.FoundLine, FoundCol and FoundLen tell where it is. A match never spans two lines.
//
// A pattern given in hex is compared with the line as it is, neither translated nor in capitals, although
// its own letters were turned into capitals. That is kept on purpose.
bool SearchTextLines(const SearchPattern& pattern, std::int32_t line, std::int32_t column);
