// Which character of a line lies under a point.
#pragma once

#include <cstdint>

// Width in pixels of the first count characters of the line that context stands for.
using MeasureText = std::int32_t (*)(void* context, std::int32_t count);

// The character boundary (0..length) nearest to width pixels from the line's start: at or past the
// middle of a character counts as behind it. length when the whole line is narrower.
std::int32_t ColumnAtWidth(std::int32_t length, std::int32_t width, MeasureText measure, void* context);
