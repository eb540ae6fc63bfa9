// What is marked in the view, told from the colours on the screen, and the real mouse that marks it.
// Everything has the font FixedFont and the colours that the program starts with.
#pragma once

#include "support/program.h"

#include <string>
#include <vector>

// The pixels of the view, and of its rows.
int ColumnX(int column);
int RowY(int row);
Pixels ReadView(Program& program);
Pixels ReadRow(Program& program, int row);

// Whether all that was to be painted in a window has been: no answer comes while a command or the painting is
// under way.
bool IsPainted(const Program& program, HWND window);

// The columns first to last - 1 of a text row, and the digits of the bytes first to last - 1 of a hex row, as
// MarksShown gives them.
std::string Mark(int row, int first, int last);
std::string HexMark(int row, int first, int last);

using Marks = std::vector<std::string>;

// The runs of pixels that have Marked Text colours, row by row: "row: first..last", and what else is wrong there.
Marks MarksShown(Program& program);

// Waits until these are the ones shown.
void ExpectMarks(Program& program, const Marks& marks);

// Nothing but text in one colour on another, and some of both.
void ExpectTextOn(const Pixels& pixels, std::uint32_t text, std::uint32_t background);

// A point just behind the left edge of a column's character: the pointer there means this column.
POINT PointOf(int row, int column);

// The window that holds the mouse.
HWND CaptureOf(const Program& program);

// Drags from one point of the view to another.
bool DragInView(const Program& program, POINT from, POINT to);
