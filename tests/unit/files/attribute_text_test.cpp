#include "files/attribute_text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr AttributeWords Words = {"Read-only", "Archive", "System", "Hidden"};

std::string Text(unsigned attributes, const AttributeWords& words = Words)
{
    char text[AttributeTextSize];
    FormatAttributes(static_cast<std::uint16_t>(attributes), words, text);
    return text;
}

} // namespace

TEST(AttributeText, EachBitHasItsWordAndABlankBehindIt)
{
    EXPECT_EQ(Text(1), "Read-only ");
    EXPECT_EQ(Text(32), "Archive ");
    EXPECT_EQ(Text(4), "System ");
    EXPECT_EQ(Text(2), "Hidden ");
}

TEST(AttributeText, IsEmptyWithoutABit)
{
    EXPECT_EQ(Text(0), "");
}

TEST(AttributeText, OtherBitsHaveNoWord)
{
    EXPECT_EQ(Text(8), "");
    EXPECT_EQ(Text(16), "");
    EXPECT_EQ(Text(0xFFFFu & ~(1u | 2u | 4u | 32u)), "");
    EXPECT_EQ(Text(0xFFFF), Text(1 | 2 | 4 | 32));
}

TEST(AttributeText, WordsStandInOneOrderForAllBits)
{
    for (unsigned bits = 0; bits < 64; ++bits) {
        std::string expected;
        expected += (bits & 1) != 0 ? "Read-only " : "";
        expected += (bits & 32) != 0 ? "Archive " : "";
        expected += (bits & 4) != 0 ? "System " : "";
        expected += (bits & 2) != 0 ? "Hidden " : "";
        EXPECT_EQ(Text(bits), expected) << bits;
    }
}

TEST(AttributeText, LongestWordsFit)
{
    const AttributeWords words = {"123456789", "abcdefghi", "ABCDEFGHI", "987654321"};
    EXPECT_EQ(Text(1 | 2 | 4 | 32, words), "123456789 abcdefghi ABCDEFGHI 987654321 ");
}

TEST(AttributeText, MissingWordLeavesItsBlank)
{
    EXPECT_EQ(Text(1 | 32, AttributeWords{}), "  ");
}
