#include "search/search_pattern.h"

#include "base/text.h"
#include "document/document_state.h"
#include "document/port.h"
#include "view/translate.h"
#include "view/view_state.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr char HexDigits[] = "0123456789ABCDEF";

int DigitValue(char digit)
{
    const char* const place = digit != '\0' ? strchr(HexDigits, digit) : nullptr;
    return place != nullptr ? static_cast<int>(place - HexDigits) : -1;
}

ByteTable EveryByte()
{
    ByteTable table;
    for (unsigned byte = 0; byte < table.size(); ++byte) {
        table[byte] = static_cast<std::uint8_t>(byte);
    }
    return table;
}

// Only where each character is one byte: there the system's capitals are a table.
ByteTable FoldedBytes(ByteTable table)
{
    ToUpperCase(reinterpret_cast<char*>(table.data()), static_cast<std::int32_t>(table.size()));
    return table;
}

// Whether capitals can be told from the bytes alone. A capital must be its own capital: what a backward search
// compared in capitals it may compare once more as it is.
bool FoldsByteByByte()
{
    if (!HasOneByteCharacters()) {
        return false;
    }
    const ByteTable folded = FoldedBytes(EveryByte());
    return FoldedBytes(folded) == folded;
}

// Expanding tabs makes spaces, and moves what stands behind them: only a part without spaces stands in the
// line byte by byte.
void TakeLongestWord(const char*& text, std::int32_t& length)
{
    const char* best = text;
    std::int32_t bestLength = 0;
    for (std::int32_t start = 0; start < length;) {
        const char* const space =
            static_cast<const char*>(memchr(text + start, ' ', static_cast<std::size_t>(length - start)));
        const std::int32_t end = space != nullptr ? static_cast<std::int32_t>(space - text) : length;
        if (end - start > bestLength) {
            best = text + start;
            bestLength = end - start;
        }
        start = end + 1;
    }
    text = best;
    length = bestLength;
}

bool HoldsLineEnd(const SearchPattern& pattern)
{
    return std::any_of(pattern.Bytes, pattern.Bytes + pattern.Length,
                       [](char byte) { return byte == '\r' || byte == '\n'; });
}

} // namespace

std::int32_t ParseHexString(char* text)
{
    std::int32_t count = 0;
    for (const char* pair = text; pair[0] != '\0' && pair[1] != '\0'; pair += 2) {
        text[count++] = static_cast<char>(DigitValue(pair[0]) << 4 | DigitValue(pair[1]));
    }
    return count;
}

bool IsHexString(const char* text)
{
    const std::size_t length = strlen(text);
    return length % 2 == 0 && strspn(text, HexDigits) == length;
}

SearchPattern PreparePattern(const char* text)
{
    SearchPattern pattern;
    if (Find.FindHex[0] != '\0') {
        CopyText(pattern.Bytes, Find.FindHex);
        pattern.Length = pattern.ByteCount = ParseHexString(pattern.Bytes);
    } else {
        CopyText(pattern.Bytes, text);
        pattern.Length = static_cast<std::int32_t>(strlen(pattern.Bytes));
    }
    if (!Find.MatchCase) {
        ToUpperCase(pattern.Bytes, pattern.Length);
    }
    return pattern;
}

Needle NeedleForLines(const SearchPattern& pattern)
{
    ByteTable reads = EveryByte();
    reads[0] = ' ';
    if (pattern.ByteCount == 0) {
        if (ViewOptions.EbcdicToAscii) {
            std::transform(reads.begin(), reads.end(), reads.begin(), [](std::uint8_t b) { return EbcdicToAscii(b); });
        }
        if (!Find.MatchCase) {
            if (!FoldsByteByByte()) {
                return {};
            }
            reads = FoldedBytes(reads);
        }
    }
    const char* text = pattern.Bytes;
    std::int32_t length = pattern.Length;
    if (DocumentOptions.Ptabs != 0) {
        TakeLongestWord(text, length);
    }
    Needle needle = MakeNeedle(reads, text, length);
    // Every line would be a candidate for its end.
    needle.Possible = needle.Possible && !(Document.IsText && HoldsLineEnd(pattern));
    return needle;
}

Needle NeedleForBytes(const SearchPattern& pattern)
{
    if (Find.MatchCase) {
        return MakeNeedle(EveryByte(), pattern.Bytes, pattern.Length);
    }
    if (!FoldsByteByByte()) {
        return {};
    }
    return MakeNeedle(FoldedBytes(EveryByte()), pattern.Bytes, pattern.Length);
}
