// Where a search starts.
#pragma once

#include <cstdint>

struct SearchOrigin {
    std::int32_t Line;   // or 1-based hex row
    std::int32_t Column; // or byte within the row; backwards a match ends there at the latest
};

// The first and the last line (or row, from 1) on screen.
std::int32_t FirstVisibleLine();
std::int32_t LastVisibleLine();

// For a search as Find says.
SearchOrigin OriginOfSearch();

// For repeating the last search, just past its match.
SearchOrigin OriginOfRepeat();
