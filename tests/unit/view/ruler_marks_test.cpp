#include "view/ruler_marks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

std::string Ruler(std::int32_t leftColumn)
{
    char text[RulerLength + 1];
    FormatRuler(leftColumn, text);
    EXPECT_EQ(text[RulerLength], '\0');
    return std::string(text, RulerLength);
}

// The character over 1-based column: the ruler's first character is over the margin.
char Over(const std::string& ruler, std::int32_t leftColumn, std::int32_t column)
{
    return ruler[static_cast<std::size_t>(column - leftColumn)];
}

} // namespace

TEST(CharacterRuler, AtColumnZeroStartsWithASpaceOverTheMargin)
{
    EXPECT_EQ(Ruler(0).substr(0, 31), " ....*....1....*....2....*....3");
}

TEST(CharacterRuler, Is200CharactersLong)
{
    EXPECT_EQ(Ruler(0).substr(190), "9....*...2");
    EXPECT_EQ(Ruler(0).find('\0'), std::string::npos);
}

TEST(CharacterRuler, AtColumn37ItsSecondCharacterIsOverColumn38)
{
    EXPECT_EQ(Ruler(37).substr(0, 15), "...4....*....5.");
    EXPECT_EQ(Over(Ruler(37), 37, 40), '4');
}

TEST(CharacterRuler, StarsStandOverColumnsThatEndInFiveAndTensEndOverColumnsThatEndInZero)
{
    for (const std::int32_t leftColumn : {0, 1, 9, 10, 11, 19, 20, 37, 95, 99, 100, 101, 999, 1000, 2048}) {
        const std::string ruler = Ruler(leftColumn);
        for (std::int32_t column = std::max(leftColumn, 1); column < leftColumn + RulerLength; ++column) {
            const char shown = Over(ruler, leftColumn, column);
            if (column % 10 == 0) {
                EXPECT_EQ(shown, static_cast<char>('0' + column / 10 % 10)) << leftColumn << " " << column;
            } else if (column % 10 == 5) {
                EXPECT_EQ(shown, '*') << leftColumn << " " << column;
            } else {
                EXPECT_TRUE(shown == '.' || column % 10 > 5) << leftColumn << " " << column;
            }
        }
    }
}

TEST(CharacterRuler, OnlyTheMarginAtColumnZeroHoldsASpace)
{
    for (const std::int32_t leftColumn : {1, 9, 10, 37, 400}) {
        EXPECT_EQ(Ruler(leftColumn).find(' '), std::string::npos) << leftColumn;
    }
    EXPECT_EQ(Ruler(0).rfind(' '), 0u);
}

TEST(CharacterRuler, TensCountGrowsToTheLeft)
{
    EXPECT_EQ(Ruler(0).substr(85, 27), "*....9....*...10....*...11.");
    EXPECT_EQ(Ruler(999).substr(0, 12), "00....*..101");
}

TEST(CharacterRuler, HugeColumnIsHarmless)
{
    for (const std::int32_t leftColumn : {INT32_MAX, INT32_MAX - 7, 1000000}) {
        EXPECT_EQ(Ruler(leftColumn).size(), static_cast<std::size_t>(RulerLength));
    }
}

TEST(InchRuler, TicksOfAnInchRepeat)
{
    constexpr std::int32_t Heights[] = {20, 3, 5, 3, 9, 3, 5, 3, 16, 3, 5, 3, 9, 3, 5, 3};
    for (std::int32_t tick = 0; tick < 64; ++tick) {
        EXPECT_EQ(InchTickHeight(tick), Heights[tick % 16]) << tick;
    }
}
