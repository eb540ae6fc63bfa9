// Where the view goes to show a match.
#pragma once

#include <cstdint>

// Whether the columns of the view reach just past a match that begins at column (or byte within a hex row).
bool IsMatchInColumns(std::int32_t column, std::int32_t length);

// The top line that shows line (or 1-based row) as Find's scrolling switches ask; the present one when
// nothing has to move. May lie beyond what the view can scroll to.
std::int32_t TopLineForMatch(std::int32_t line);
