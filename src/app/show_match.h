// Showing in the view what a search has found.
#pragma once

#include <cstdint>

// Marks the match of Find.FoundLen characters (or bytes) at column of line (or 1-based row) and scrolls until
// it is in view.
void ShowMatch(std::int32_t column, std::int32_t line);

// Removes the mark of a match on line.
void RemoveMatch(std::int32_t line);
