// Where the view stands in the document, as the status line says it.
#pragma once

#include <cstddef>
#include <cstdint>

constexpr std::size_t StatusTextSize = 80;

// How far the last row on screen is into the document, 0..100.
std::int32_t PositionPercent();

struct PositionFormats {
    char LineFormat[30] = ""; // "Line %s Col %i  %i%%": top line, column, percentage
    char FileFormat[30] = ""; // "  [File %i of %i]": appended while a list of files is walked
};

// The position text. In hex mode "Line" counts hex rows. Empty when no file is shown.
void FormatPosition(const PositionFormats& formats, char (&text)[StatusTextSize]);
