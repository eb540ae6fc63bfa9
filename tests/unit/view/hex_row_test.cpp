#include "view/hex_row.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

// bytes as a row; the buffer is exactly as large as FormatHexRow asks for.
std::string Row(const std::string& bytes, std::int32_t row, bool translate)
{
    std::string buffer = bytes;
    char text[HexRowLength + 1];
    memset(text, '#', sizeof text);
    FormatHexRow(buffer.data(), static_cast<std::int32_t>(bytes.size()), row, translate, text);
    EXPECT_EQ(text[HexRowLength], '\0');
    return std::string(text, HexRowLength);
}

std::string Chars(const std::string& bytes, bool translate)
{
    return Row(bytes, 0, translate).substr(60, bytes.size());
}

} // namespace

TEST(HexRow, FullRowHasEveryColumnInItsPlace)
{
    EXPECT_EQ(Row("0123456789ABCDEF", 0x12345, false),
              "00123450  30 31 32 33 34 35 36 37-38 39 41 42 43 44 45 46   0123456789ABCDEF    ");
}

TEST(HexRow, OnlyTheEighthByteIsFollowedByADash)
{
    const std::string row = Row(std::string(16, '-'), 0, false);
    for (int byte = 0; byte < 16; ++byte) {
        EXPECT_EQ(row[static_cast<std::size_t>(12 + 3 * byte)], byte == 7 ? '-' : ' ') << byte;
    }
}

TEST(HexRow, ShortLastRowIsBlankPastItsEnd)
{
    EXPECT_EQ(Row("AB", 1, false), "00000010  41 42                                             AB                  ");
    EXPECT_EQ(Row("", 2, false), "00000020" + std::string(72, ' '));
}

TEST(HexRow, EighthByteKeepsItsDashWhenItIsTheLast)
{
    EXPECT_EQ(Row("12345678", 0, false)[33], '-');
    EXPECT_EQ(Row("1234567", 0, false)[33], ' ');
}

TEST(HexRow, OffsetsAreEightUpperCaseDigits)
{
    EXPECT_EQ(Row("", 0, false).substr(0, 10), "00000000  ");
    EXPECT_EQ(Row("", 0xABCDEF, false).substr(0, 10), "0ABCDEF0  ");
    // The last row of the largest file.
    EXPECT_EQ(Row("", INT32_MAX / 16, false).substr(0, 10), "7FFFFFF0  ");
}

TEST(HexRow, CountOverSixteenIsCut)
{
    EXPECT_EQ(Row("0123456789ABCDEFxyz", 0, false), Row("0123456789ABCDEF", 0, false));
}

TEST(HexRow, CharacterColumnIsTranslatedFromEbcdicAndTheDigitsAreNot)
{
    const std::string row = Row("\xC1\xC2\xC3", 0, true);
    EXPECT_EQ(row.substr(10, 9), "C1 C2 C3 ");
    EXPECT_EQ(row.substr(60, 3), "ABC");
}

TEST(HexRow, EbcdicTranslationStopsAtAZeroByte)
{
    EXPECT_EQ(Chars(std::string("\xC1\x00\xC2", 3), true), "A..");
    // A byte that shows as itself either way.
    EXPECT_EQ(Chars(std::string("\x5B\x00\x5B", 3), true), "$.[");
}

TEST(HexRow, WithoutTranslationBytesStandForThemselves)
{
    EXPECT_EQ(Chars("\x5B\x6B", false), "[k");
}

TEST(HexDumpChar, BytesFrom1FTo80AreShownAsThemselves)
{
    for (int byte = 0; byte < 256; ++byte) {
        const char shown = HexDumpChar(static_cast<std::uint8_t>(byte));
        EXPECT_EQ(shown, byte >= 0x1F && byte <= 0x80 ? static_cast<char>(byte) : '.') << byte;
    }
    EXPECT_EQ(HexDumpChar(0x1E), '.');
    EXPECT_EQ(HexDumpChar(0x1F), '\x1F');
    EXPECT_EQ(HexDumpChar(0x7F), '\x7F');
    EXPECT_EQ(HexDumpChar(0x80), '\x80');
    EXPECT_EQ(HexDumpChar(0x81), '.');
}

TEST(HexPairs, WritesTwoDigitsPerByteAndDoublesTheCount)
{
    char digits[] = "########";
    std::int32_t count = 3;
    HexPairs("\x00\x9F\xFA", count, digits);
    EXPECT_EQ(count, 6);
    EXPECT_STREQ(digits, "009FFA##");
}

TEST(HexPairs, NothingStaysNothing)
{
    char digits[] = "##";
    std::int32_t count = 0;
    HexPairs("", count, digits);
    EXPECT_EQ(count, 0);
    EXPECT_STREQ(digits, "##");
}
