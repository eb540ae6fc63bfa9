// What is looked for, how, and where it was found last.
#pragma once

#include "search/text_history.h"

#include <cstddef>
#include <cstdint>

// At most 29 characters; as hex digits at most 14 bytes.
constexpr std::size_t FindTextSize = 30;

struct FindState {
    // At most one of the two is not empty.
    char FindText[FindTextSize] = "";
    char FindHex[FindTextSize] = "";      // pairs of hex digits
    char LastFindText[FindTextSize] = ""; // of the last search: it is repeated, and offered again

    RecentTexts<FindTextSize> TextHistory;
    RecentTexts<FindTextSize> HexHistory;

    bool MatchCase = false;
    bool Backwards = false;
    bool FromCurrent = false; // from what is on screen; else the entire document

    // Where a match is scrolled to. Switched off, one that is on screen already moves nothing.
    bool ScrollToOn = false;
    bool ScrollToTop = true; // else to the middle

    std::int32_t FoundLine = 0; // line, or 1-based hex row, of the last match; 0 = none
    std::int32_t FoundCol = 0;  // column in the display line, or byte within the row
    std::int32_t FoundLen = 0;  // characters, or bytes

    bool FindSucceeded = false; // the last search found something; only then it can be repeated
};

extern FindState Find;
