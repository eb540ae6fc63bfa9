// The text of one row of the hex dump.
#pragma once

#include <cstdint>

constexpr int HexRowLength = 80;
constexpr int HexPairsColumn = 10; // of the first byte's pair
constexpr int HexPairWidth = 3;    // a pair and what separates it from the next

// Builds the row text: offset, up to 16 byte pairs with "-" behind the eighth, and the characters.
// bytes (count of them, at most 16) must have room for a terminating zero at bytes[count]: they are
// translated from EBCDIC in place when translate is set, which stops at the first zero byte.
void FormatHexRow(char* bytes, std::int32_t count, std::int32_t row, bool translate, char (&text)[HexRowLength + 1]);

// The character shown for a byte: itself from 0x1F to 0x80, both included, else ".".
char HexDumpChar(std::uint8_t byte);

// Writes two upper-case hex digits per byte to digits and doubles count; no terminating zero.
void HexPairs(const char* bytes, std::int32_t& count, char* digits);
