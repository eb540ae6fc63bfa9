#include "view/hex_row.h"

#include "view/translate.h"
#include "view/view_state.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

constexpr int CharsColumn = 60;

} // namespace

void FormatHexRow(char* bytes, std::int32_t count, std::int32_t row, bool translate, char (&text)[HexRowLength + 1])
{
    memset(text, ' ', HexRowLength);
    text[HexRowLength] = '\0';
    char offset[HexPairsColumn + 1];
    snprintf(offset, sizeof offset, "%.8X  ", static_cast<unsigned>(row) * HexRowBytes);
    memcpy(text, offset, HexPairsColumn);

    const std::int32_t shown = std::clamp<std::int32_t>(count, 0, HexRowBytes);
    char digits[2 * HexRowBytes];
    std::int32_t digitCount = shown;
    HexPairs(bytes, digitCount, digits);
    for (std::int32_t i = 0; i < shown; ++i) {
        memcpy(text + HexPairsColumn + HexPairWidth * i, digits + 2 * i, 2);
        if (i == 7) {
            text[HexPairsColumn + HexPairWidth * i + 2] = '-';
        }
    }
    if (translate) {
        EbcdicToAscii(bytes);
    }
    for (std::int32_t i = 0; i < shown; ++i) {
        text[CharsColumn + i] = HexDumpChar(static_cast<std::uint8_t>(bytes[i]));
    }
}

char HexDumpChar(std::uint8_t byte)
{
    return byte >= 0x1F && byte <= 0x80 ? static_cast<char>(byte) : '.';
}

void HexPairs(const char* bytes, std::int32_t& count, char* digits)
{
    constexpr char Digits[] = "0123456789ABCDEF";
    for (std::int32_t i = 0; i < count; ++i) {
        const std::uint8_t byte = static_cast<std::uint8_t>(bytes[i]);
        digits[2 * i] = Digits[byte >> 4];
        digits[2 * i + 1] = Digits[byte & 15];
    }
    count *= 2;
}
