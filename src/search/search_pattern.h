// What a search looks for, made ready to be compared.
#pragma once

#include "document/byte_scan.h"
#include "search/find_state.h"

#include <cstdint>

struct SearchPattern {
    char Bytes[FindTextSize] = ""; // in capitals unless case matters
    std::int32_t ByteCount = 0;    // of a pattern given in hex; 0 = it is a zero-terminated text
    std::int32_t Length = 0;       // characters or bytes
};

// Turns pairs of hex digits into bytes in place; returns how many bytes there are.
std::int32_t ParseHexString(char* text);

// Whether text is pairs of hex digits, in capitals.
bool IsHexString(const char* text);

// The pattern that Find asks for: FindHex if there is one, else text.
SearchPattern PreparePattern(const char* text);

// What the bytes of a line, or of the file in hex mode, must hold for the pattern to be found there; Length 0
// when they cannot tell.
Needle NeedleForLines(const SearchPattern& pattern);
Needle NeedleForBytes(const SearchPattern& pattern);
