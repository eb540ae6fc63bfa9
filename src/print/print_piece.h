// Long lines, cut into pieces that fit the page.
#pragma once

#include <cstdint>

struct TextSpan {
    const char* Text; // not terminated
    std::int32_t Length;
};

// How wide the first length bytes of a text are in the font they are printed in.
struct TextMeasure {
    std::int32_t (*Width)(const void* context, const char* text, std::int32_t length);
    const void* Context;
};

// Takes the next piece from what is left of a line; the line is used up when nothing is left. With wrap a piece that
// does not fit width ends with the last word that does, and the blanks behind it go. A word that is too wide is cut one
// character before it would fill the width, but behind its first at the earliest.
TextSpan NextPrintPiece(TextSpan& rest, std::int32_t width, bool wrap, const TextMeasure& measure);
