// What the two rulers show.
#pragma once

#include <cstdint>

constexpr int RulerLength = 200; // characters of the character ruler that are drawn

// The character ruler for a view whose first column is leftColumn: a space over the text margin, then
// a "*" over every column that ends in 5 and the tens count ending over every column divisible by 10
// (columns from 1).
void FormatRuler(std::int32_t leftColumn, char (&text)[RulerLength + 1]);

// Height in pixels of the inch ruler's tick number tick, a sixteenth of an inch apart.
std::int32_t InchTickHeight(std::int32_t tick);
