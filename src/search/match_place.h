// Where the view goes to show a match.
#pragma once

#include <cstdint>

// The column just past a match of length that begins at column (or byte within a hex row).
std::int32_t EndColumnOfMatch(std::int32_t column, std::int32_t length);

// Whether a column is in the view.
bool IsColumnInView(std::int32_t column);

// The top line that shows line (or 1-based row) as Find's scrolling switches ask; may lie beyond what the view
// can scroll to. False: nothing has to move.
bool TopLineForMatch(std::int32_t line, std::int32_t& topLine);
