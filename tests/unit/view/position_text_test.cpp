#include "view/position_text.h"

#include "document/document_state.h"
#include "document/file_list.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr PositionFormats Formats = {"Line %s Col %i  %i%%", "  [File %i of %i]"};

class PositionText : public testing::Test {
protected:
    void SetUp() override
    {
        View = ViewState{};
        Document = DocumentState{};
        View.FileShown = true;
        View.LineHeight = 16;
        View.ClientHeight = 16 * 20;
        Document.LineCount = 1000;
    }

    void TearDown() override
    {
        View = ViewState{};
        Document = DocumentState{};
        ClearFileList();
    }

    static std::string Text()
    {
        char text[StatusTextSize];
        FormatPosition(Formats, text);
        return text;
    }

    static std::int32_t HexPercent(std::int32_t size, std::int32_t topRow)
    {
        View.HexMode = true;
        Document.FileSize = size;
        View.TopLine = topRow;
        return PositionPercent();
    }
};

} // namespace

TEST_F(PositionText, IsEmptyWithoutAFile)
{
    View.FileShown = false;
    EXPECT_EQ(Text(), "");
}

TEST_F(PositionText, SaysTopLineColumnAndPercent)
{
    View.TopLine = 479;
    View.LeftColumn = 7;
    EXPECT_EQ(Text(), "Line 480 Col 8  50%");
}

TEST_F(PositionText, LineIsGrouped)
{
    Document.LineCount = 3000000;
    View.TopLine = 1234566;
    EXPECT_EQ(Text(), "Line 1,234,567 Col 1  41%");
}

TEST_F(PositionText, HexModeCountsRows)
{
    View.HexMode = true;
    Document.FileSize = 160000;
    View.TopLine = 4979;
    EXPECT_EQ(Text(), "Line 4,980 Col 1  50%");
}

TEST_F(PositionText, NamesTheFileWhileAListIsWalked)
{
    FileList.ListTotal = 12;
    FileList.ListPosition = 3;
    EXPECT_EQ(Text(), "Line 1 Col 1  2%  [File 3 of 12]");
}

TEST_F(PositionText, WithoutAListNoFileIsNumbered)
{
    FileList.ListPosition = 1; // as after a wildcard that matched one file
    EXPECT_EQ(Text(), "Line 1 Col 1  2%");
}

TEST_F(PositionText, LongestTextFits)
{
    Document.LineCount = INT32_MAX;
    View.TopLine = INT32_MAX - 1;
    View.LeftColumn = INT32_MAX - 1;
    EXPECT_EQ(Text(), "Line 2147,483,647 Col 2147483647  100%");
}

TEST_F(PositionText, TextPercentCountsTheLineBelowTheWindow)
{
    // 20 rows on screen and one more.
    EXPECT_EQ(PositionPercent(), 2);
    Document.LineCount = 210;
    EXPECT_EQ(PositionPercent(), 10);
}

TEST_F(PositionText, AtTheEndTextIs100Percent)
{
    View.TopLine = 979;
    EXPECT_EQ(PositionPercent(), 100);
    View.TopLine = 980;
    EXPECT_EQ(PositionPercent(), 100);
    View.TopLine = 978;
    EXPECT_EQ(PositionPercent(), 99);
}

TEST_F(PositionText, DocumentShorterThanTheWindowIs100Percent)
{
    Document.LineCount = 1;
    EXPECT_EQ(PositionPercent(), 100);
}

TEST_F(PositionText, ManyLinesDoNotOverflow)
{
    Document.LineCount = 120000000;
    View.TopLine = 60000000 - 21;
    EXPECT_EQ(PositionPercent(), 50);
}

TEST_F(PositionText, EmptyFileInHexModeIs100Percent)
{
    EXPECT_EQ(HexPercent(0, 0), 100);
}

TEST_F(PositionText, HexPercentIsCappedAt100)
{
    EXPECT_EQ(HexPercent(16, 0), 100);
    EXPECT_EQ(HexPercent(10000000, 10000000 / 16), 100);
    EXPECT_EQ(HexPercent(20000000, 20000000 / 16), 100);
}

TEST_F(PositionText, HexPercentOfASmallFileIsMultipliedFirst)
{
    // 21 rows are 336 bytes.
    EXPECT_EQ(HexPercent(33600, 0), 1);
    EXPECT_EQ(HexPercent(33601, 0), 0);
    EXPECT_EQ(HexPercent(12000000, 375000 - 21), 50);
}

TEST_F(PositionText, HexPercentOfALargeFileDividesTheSizeFirst)
{
    // 7500 rows are 120000 bytes: as much as 12000001 / 100, but less than 1 % of the size.
    EXPECT_EQ(HexPercent(12000001, 7500 - 21), 1);
}

TEST_F(PositionText, SizeIsNotDividedFirstBelow12000001Bytes)
{
    // 119999 rows are 16 times 11999999 / 100, but less than 16 % of the size.
    EXPECT_EQ(HexPercent(11999999, 119999 - 21), 15);
    EXPECT_EQ(HexPercent(12000000, 7500 - 21), 1);
    EXPECT_EQ(HexPercent(12000000, 7499 - 21), 0);
}

TEST_F(PositionText, LargestFileDoesNotOverflow)
{
    EXPECT_EQ(HexPercent(INT32_MAX, INT32_MAX / 16), 100);
    EXPECT_EQ(HexPercent(INT32_MAX, INT32_MAX / 32), 50);
}
