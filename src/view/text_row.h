// What one screen row of text or hex shows, before anything is drawn.
#pragma once

#include "view/selection.h"

#include <cstdint>

enum class RowColours { Normal, Marked, Locked };

// The line on screen row row (from 0): the locked heading lines first, then the scrolled ones. May lie
// beyond the document.
std::int64_t LineOfRow(std::int32_t row);

// The colours a line is drawn in, from edge to edge, before its selected and found runs.
RowColours ColoursOfLine(std::int32_t line);

bool IsLockedLine(std::int32_t line);

// A run cut to a line of length characters.
ColumnRun CutRun(ColumnRun run, std::int32_t length);

// With locked columns a row has two parts; these are the columns of a line of length characters in each.
ColumnRun LockedPart(std::int32_t length);
ColumnRun ScrolledPart(std::int32_t length);

// The columns that run and part share.
ColumnRun Overlap(ColumnRun run, ColumnRun part);

// The found run in a hex row, distance rows below the row it starts in, as characters of the row text:
// only the hex digits are highlighted. Length 0 when the run does not reach the row.
ColumnRun HexHighlight(std::int32_t distance);

// Hex rows first..last (from 0) to paint for a band of the window from pixel top up to, not including,
// bottom; first > last when there is none.
LineBand HexRowsInBand(std::int32_t top, std::int32_t bottom);

// Whether hex row row (from 0) is selected: whole rows are.
bool IsHexRowSelected(std::int32_t row);

// Whether the found run reaches hex row row (from 0).
bool IsHexRowHighlighted(std::int32_t row);

// The lines (or rows, from 1) that a found run reaches that begins on line.
LineBand LinesOfRun(std::int32_t line);
