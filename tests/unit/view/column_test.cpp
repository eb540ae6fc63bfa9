#include "view/column.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

struct Line {
    std::vector<std::int32_t> Ends; // width of the first 0, 1, 2, ... characters
    int Measured = 0;
};

std::int32_t Measure(void* context, std::int32_t count)
{
    Line& line = *static_cast<Line*>(context);
    ++line.Measured;
    return line.Ends.at(static_cast<std::size_t>(count));
}

Line LineOf(const std::vector<std::int32_t>& widths)
{
    Line line;
    line.Ends.push_back(0);
    for (const std::int32_t width : widths) {
        line.Ends.push_back(line.Ends.back() + width);
    }
    return line;
}

std::int32_t ColumnIn(Line& line, std::int32_t width)
{
    return ColumnAtWidth(static_cast<std::int32_t>(line.Ends.size()) - 1, width, Measure, &line);
}

// The boundary found by trying each character in turn.
std::int32_t ExpectedColumn(const Line& line, std::int32_t width)
{
    const std::int32_t length = static_cast<std::int32_t>(line.Ends.size()) - 1;
    for (std::int32_t count = 1; count <= length; ++count) {
        const std::int32_t before = line.Ends[static_cast<std::size_t>(count - 1)];
        const std::int32_t after = line.Ends[static_cast<std::size_t>(count)];
        if (width <= after) {
            return width == after || width >= before + (after - before) / 2 ? count : count - 1;
        }
    }
    return length;
}

} // namespace

TEST(ColumnAtWidth, MiddleOfACharacterCountsAsBehindIt)
{
    Line line = LineOf({8, 8, 8, 8});
    EXPECT_EQ(ColumnIn(line, 16), 2);
    EXPECT_EQ(ColumnIn(line, 19), 2);
    EXPECT_EQ(ColumnIn(line, 20), 3);
    EXPECT_EQ(ColumnIn(line, 3), 0);
    EXPECT_EQ(ColumnIn(line, 4), 1);
}

TEST(ColumnAtWidth, OddCharacterRoundsItsMiddleDown)
{
    Line line = LineOf({7});
    EXPECT_EQ(ColumnIn(line, 2), 0);
    EXPECT_EQ(ColumnIn(line, 3), 1);
}

TEST(ColumnAtWidth, BeyondTheLineIsItsLength)
{
    Line line = LineOf({8, 8, 8});
    EXPECT_EQ(ColumnIn(line, 25), 3);
    EXPECT_EQ(ColumnIn(line, 1000000), 3);
    EXPECT_EQ(ColumnIn(line, 24), 3);
}

TEST(ColumnAtWidth, EmptyLineIsColumnZero)
{
    Line line = LineOf({});
    EXPECT_EQ(ColumnIn(line, 5), 0);
    EXPECT_EQ(ColumnIn(line, 0), 0);
}

TEST(ColumnAtWidth, FindsEveryPointOfProportionalLines)
{
    std::mt19937 random(7);
    for (std::size_t length = 1; length < 40; ++length) {
        std::vector<std::int32_t> widths(length);
        for (std::int32_t& width : widths) {
            width = static_cast<std::int32_t>(random() % 20) + 2;
        }
        Line line = LineOf(widths);
        for (std::int32_t width = 0; width <= line.Ends.back() + 2; ++width) {
            ASSERT_EQ(ColumnIn(line, width), ExpectedColumn(line, width)) << length << " " << width;
        }
    }
}

TEST(ColumnAtWidth, CharactersWithoutWidthDoNotLeadAstray)
{
    Line line = LineOf({8, 0, 0, 8, 0});
    for (std::int32_t width = 0; width <= 20; ++width) {
        const std::int32_t column = ColumnIn(line, width);
        EXPECT_GE(column, 0);
        EXPECT_LE(column, 5);
    }
}

TEST(ColumnAtWidth, MeasuresALongLineFewTimes)
{
    Line line = LineOf(std::vector<std::int32_t>(2048, 8));
    EXPECT_EQ(ColumnIn(line, 8 * 1000 + 1), 1000);
    EXPECT_LE(line.Measured, 30);
}
