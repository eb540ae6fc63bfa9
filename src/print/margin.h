// Margins as they are typed, and on the paper.
#pragma once

#include <cstdint>

constexpr std::int32_t NoMargin = -1;

// text in device units: digits with at most one point among them, in inches or in centimetres; the third and later
// decimals are cut. An empty text is 0, anything else NoMargin. logPixelsY is the printer's resolution down the page,
// which counts for all four margins: what is printed with others would move.
std::int32_t MarginToDevice(const char* text, std::int32_t logPixelsY, bool inches);

// Whether margins above and below (device units) leave room on a page of that height.
bool MarginsFitPage(std::int32_t top, std::int32_t bottom, std::int32_t pageHeight);
