// EBCDIC to ASCII.
#pragma once

#include <cstdint>

// The character shown for an EBCDIC byte. The table is partial on purpose: bytes it does not name
// stand for themselves.
std::uint8_t EbcdicToAscii(std::uint8_t byte);

// Translates a zero-terminated string in place. Bytes behind a zero stay as they are.
void EbcdicToAscii(char* text);
