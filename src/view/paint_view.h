// Painting the view, and reading a line the way it is shown.
#pragma once

#include "document/line_index.h"

#include <windows.h>

// The body of the paint handler: only rows that intersect the update rectangle are read and drawn.
void PaintView(HWND view);

// The display text of a line: read, tabs expanded, translated.
LineText ReadDisplayLine(std::int32_t line);

// The character column of line under client x; 0 in hex mode and beyond the last line.
std::int32_t ColumnFromPoint(HWND view, std::int32_t line, std::int32_t x);

// Forgets the line that ColumnFromPoint measured last: the next one is read anew.
void ForgetMeasuredLine();
