// A file's attributes in words.
#pragma once

#include <cstddef>
#include <cstdint>

struct AttributeWords {
    char ReadOnly[10] = "";
    char Archive[10] = "";
    char System[10] = "";
    char Hidden[10] = "";
};

constexpr std::size_t AttributeTextSize = 4 * sizeof(AttributeWords::ReadOnly) + 1;

// The word of each DOS attribute bit that is set, each followed by a blank; empty when there is none.
void FormatAttributes(std::uint16_t attributes, const AttributeWords& words, char (&text)[AttributeTextSize]);
