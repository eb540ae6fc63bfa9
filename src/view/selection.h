// The selected lines and columns: where a point lies, what a moving end repaints, which part of a line is
// selected.
#pragma once

#include <cstdint>

// Lines first..last, or none when first > last.
struct LineBand {
    std::int32_t First;
    std::int32_t Last;
};

// A run of characters within a line.
struct ColumnRun {
    std::int32_t Start;
    std::int32_t Length; // 0 = nothing
};

bool HasSelection();

// From the beginning to the end of the file; false when there is nothing, as in the dump of an empty file.
bool SelectEverything();

std::int32_t FirstSelectedLine();
std::int32_t LastSelectedLine();

// The line (or row, from 1) under client y; at most the last one.
std::int32_t LineAtPoint(std::int32_t y);

// The line a selection reaches when the pointer is below or above the view's client area.
std::int32_t LineBelowView();
std::int32_t LineAboveView();

// The lines whose colouring changes when the moving end goes from oldEnd to newEnd while anchor stays.
LineBand ChangedLines(std::int32_t anchor, std::int32_t oldEnd, std::int32_t newEnd);

// The part of a band that is on screen.
LineBand OnScreen(LineBand band);

// A released mouse leaves nothing selected when it never moved, or in text mode came back to its start.
bool SelectionIsEmpty();

// Whole lines strictly between the two ends are coloured from edge to edge.
bool IsWhollySelected(std::int32_t line);
bool IsSelectionEnd(std::int32_t line);

// The selected run of a first or last selection line of the given length.
ColumnRun SelectedRun(std::int32_t line, std::int32_t length);
