// Where the view stands in the document, as the status line says it.
#pragma once

#include <cstddef>
#include <cstdint>

constexpr std::size_t StatusTextSize = 80;

// How far the last row on screen is into the document, 0..100.
std::int32_t PositionPercent();

// The position text: lineFormat ("Line %s Col %i  %i%%") with the top line, column and percentage. In
// hex mode "Line" counts hex rows. Empty when no file is shown.
void FormatPosition(const char* lineFormat, char (&text)[StatusTextSize]);
