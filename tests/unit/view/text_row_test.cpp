#include "view/text_row.h"

#include "document/document_state.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

namespace {

class TextRow : public testing::Test {
protected:
    void SetUp() override
    {
        View = ViewState{};
        Document = DocumentState{};
        View.LineHeight = 10;
        Document.LineCount = 100;
    }

    void TearDown() override
    {
        View = ViewState{};
        Document = DocumentState{};
    }

    static void ExpectRun(ColumnRun run, std::int32_t start, std::int32_t length)
    {
        EXPECT_EQ(run.Start, start);
        EXPECT_EQ(run.Length, length);
    }

    static void ExpectBand(LineBand band, std::int32_t first, std::int32_t last)
    {
        EXPECT_EQ(band.First, first);
        EXPECT_EQ(band.Last, last);
    }

    static void Highlight(std::int32_t line, std::int32_t column, std::int32_t length)
    {
        View.HiliteLine = line;
        View.HiliteCol = column;
        View.HiliteLen = length;
    }
};

} // namespace

TEST_F(TextRow, RowsShowTheScrolledLines)
{
    View.TopLine = 41;
    EXPECT_EQ(LineOfRow(0), 42);
    EXPECT_EQ(LineOfRow(9), 51);
}

TEST_F(TextRow, FirstRowsShowTheLockedLinesAndTheRestScrolls)
{
    View.LockTopLine = 2;
    View.LockRows = 3;
    View.TopLine = 40;
    EXPECT_EQ(LineOfRow(0), 3);
    EXPECT_EQ(LineOfRow(2), 5);
    EXPECT_EQ(LineOfRow(3), 44);
}

TEST_F(TextRow, RowPastTheLargestLineDoesNotOverflow)
{
    View.TopLine = INT32_MAX;
    EXPECT_EQ(LineOfRow(100), static_cast<std::int64_t>(INT32_MAX) + 101);
    View.LockTopLine = INT32_MAX;
    View.LockRows = 10;
    EXPECT_TRUE(IsLockedLine(INT32_MAX));
}

TEST_F(TextRow, LineColoursAreNormalWithoutSelectionAndLock)
{
    EXPECT_EQ(ColoursOfLine(1), RowColours::Normal);
    EXPECT_FALSE(IsLockedLine(1));
}

TEST_F(TextRow, LinesUpToTheLastLockedOneAreLocked)
{
    View.LockTopLine = 2;
    View.LockRows = 3;
    EXPECT_EQ(ColoursOfLine(1), RowColours::Locked);
    EXPECT_EQ(ColoursOfLine(5), RowColours::Locked);
    EXPECT_EQ(ColoursOfLine(6), RowColours::Normal);
}

TEST_F(TextRow, WhollySelectedLineIsMarkedEvenWhenLocked)
{
    View.LockRows = 10;
    View.SelLineA = 3;
    View.SelLineB = 6;
    EXPECT_EQ(ColoursOfLine(3), RowColours::Locked);
    EXPECT_EQ(ColoursOfLine(4), RowColours::Marked);
    EXPECT_EQ(ColoursOfLine(5), RowColours::Marked);
    EXPECT_EQ(ColoursOfLine(6), RowColours::Locked);
}

TEST_F(TextRow, RunIsCutToItsLine)
{
    ExpectRun(CutRun({3, 5}, 20), 3, 5);
    ExpectRun(CutRun({18, 5}, 20), 18, 2);
    ExpectRun(CutRun({25, 5}, 20), 20, 0);
    ExpectRun(CutRun({-3, 5}, 20), 0, 5);
    ExpectRun(CutRun({3, -5}, 20), 3, 0);
    ExpectRun(CutRun({0, INT32_MAX}, 0), 0, 0);
    ExpectRun(CutRun({INT32_MAX, INT32_MAX}, 20), 20, 0);
}

TEST_F(TextRow, LockedColumnsShowTheirPartOfTheLine)
{
    View.LockColStart = 4;
    View.LockCols = 6;
    ExpectRun(LockedPart(20), 4, 6);
    ExpectRun(LockedPart(7), 4, 3);
    ExpectRun(LockedPart(4), 4, 0);
    ExpectRun(LockedPart(0), 4, 0);
}

TEST_F(TextRow, ScrolledPartStartsBehindTheLockedColumns)
{
    View.LeftColumn = 10;
    View.LockCols = 6;
    ExpectRun(ScrolledPart(20), 16, 4);
    ExpectRun(ScrolledPart(16), 16, 0);
    ExpectRun(ScrolledPart(3), 16, 0);
}

TEST_F(TextRow, FoundRunIsSplitBetweenLockedAndScrolledPart)
{
    View.LockColStart = 4;
    View.LockCols = 6;
    View.LeftColumn = 4;
    ExpectRun(Overlap({8, 5}, LockedPart(30)), 8, 2);
    ExpectRun(Overlap({8, 5}, ScrolledPart(30)), 10, 3);
    EXPECT_EQ(Overlap({0, 4}, LockedPart(30)).Length, 0);
    EXPECT_EQ(Overlap({0, 4}, ScrolledPart(30)).Length, 0);
    ExpectRun(Overlap({0, 30}, LockedPart(30)), 4, 6);
}

TEST_F(TextRow, HexHighlightOfARunWithinARow)
{
    Highlight(1, 2, 3);
    ExpectRun(HexHighlight(0), 16, 8);
    EXPECT_EQ(HexHighlight(1).Length, 0);
    Highlight(1, 0, 1);
    ExpectRun(HexHighlight(0), 10, 2);
    Highlight(1, 15, 1);
    ExpectRun(HexHighlight(0), 55, 2);
}

TEST_F(TextRow, HexHighlightSpillsOverIntoTheRowsBelow)
{
    Highlight(1, 14, 20); // 2 bytes, 16 bytes, 2 bytes
    ExpectRun(HexHighlight(0), 52, 5);
    ExpectRun(HexHighlight(1), 10, 47);
    ExpectRun(HexHighlight(2), 10, 5);
    EXPECT_EQ(HexHighlight(3).Length, 0);
}

TEST_F(TextRow, HexRowIsHighlightedAsFarAsTheRunReaches)
{
    Highlight(5, 14, 20);
    EXPECT_FALSE(IsHexRowHighlighted(3));
    EXPECT_TRUE(IsHexRowHighlighted(4));
    EXPECT_TRUE(IsHexRowHighlighted(5));
    EXPECT_TRUE(IsHexRowHighlighted(6));
    EXPECT_FALSE(IsHexRowHighlighted(7));
    Highlight(5, 14, 18); // ends with its second row
    EXPECT_TRUE(IsHexRowHighlighted(5));
    EXPECT_FALSE(IsHexRowHighlighted(6));
    Highlight(5, 0, 1);
    EXPECT_TRUE(IsHexRowHighlighted(4));
    EXPECT_FALSE(IsHexRowHighlighted(5));
}

TEST_F(TextRow, WithoutARunNoHexRowIsHighlighted)
{
    Highlight(0, 0, 5);
    EXPECT_FALSE(IsHexRowHighlighted(0));
    Highlight(1, 0, 0);
    EXPECT_FALSE(IsHexRowHighlighted(0));
}

TEST_F(TextRow, FoundRunReachesOneLineInTextMode)
{
    Highlight(5, 14, 20);
    ExpectBand(LinesOfRun(5), 5, 5);
    Highlight(5, 500, 29);
    ExpectBand(LinesOfRun(5), 5, 5);
}

TEST_F(TextRow, FoundRunReachesTheHexRowsThatItSpillsOverInto)
{
    View.HexMode = true;
    Highlight(5, 2, 3);
    ExpectBand(LinesOfRun(5), 5, 5);
    Highlight(5, 0, 16);
    ExpectBand(LinesOfRun(5), 5, 5);
    Highlight(5, 15, 1);
    ExpectBand(LinesOfRun(5), 5, 5);
    Highlight(5, 15, 2);
    ExpectBand(LinesOfRun(5), 5, 6);
    Highlight(5, 14, 18); // ends with its second row
    ExpectBand(LinesOfRun(5), 5, 6);
    Highlight(5, 14, 19);
    ExpectBand(LinesOfRun(5), 5, 7);
    Highlight(5, 15, 29);
    ExpectBand(LinesOfRun(5), 5, 7);
}

TEST_F(TextRow, LinesOfARunAreCountedFromTheLineAskedFor)
{
    View.HexMode = true;
    Highlight(0, 15, 2); // removed from where it was
    ExpectBand(LinesOfRun(9), 9, 10);
}

TEST_F(TextRow, HexHighlightBeyondTheRowIsHarmless)
{
    Highlight(1, 99, 1000000);
    EXPECT_EQ(HexHighlight(0).Length, 0);
    Highlight(1, -5, 3);
    EXPECT_GE(HexHighlight(0).Start, 10);
}

TEST_F(TextRow, HexRowsOfABand)
{
    Document.FileSize = 161; // 11 rows
    View.TopLine = 3;
    ExpectBand(HexRowsInBand(0, 45), 3, 7);
    ExpectBand(HexRowsInBand(20, 29), 5, 5);
    ExpectBand(HexRowsInBand(0, 1000), 3, 10);
}

TEST_F(TextRow, BandBelowTheLastHexRowIsEmpty)
{
    Document.FileSize = 32;
    const LineBand band = HexRowsInBand(50, 80);
    EXPECT_GT(band.First, band.Last);
}

TEST_F(TextRow, EmptyFileHasNoHexRows)
{
    const LineBand band = HexRowsInBand(0, 1000);
    EXPECT_GT(band.First, band.Last);
    EXPECT_EQ(HexRowCount(), 0);
}

TEST_F(TextRow, LargestFileHasItsRowsCountedWithoutOverflow)
{
    Document.FileSize = INT32_MAX;
    EXPECT_EQ(HexRowCount(), 134217728);
    View.TopLine = INT32_MAX;
    const LineBand band = HexRowsInBand(0, 1000);
    EXPECT_GT(band.First, band.Last);
}

TEST_F(TextRow, WholeHexRowsAreSelected)
{
    View.SelLineA = 6;
    View.SelLineB = 4;
    EXPECT_FALSE(IsHexRowSelected(2));
    EXPECT_TRUE(IsHexRowSelected(3));
    EXPECT_TRUE(IsHexRowSelected(5));
    EXPECT_FALSE(IsHexRowSelected(6));
    View.SelLineB = 0;
    EXPECT_FALSE(IsHexRowSelected(3));
}

TEST_F(TextRow, AnyOfTheFourLockNumbersIsALock)
{
    EXPECT_FALSE(AnyLock());
    for (std::int32_t ViewState::*number :
         {&ViewState::LockTopLine, &ViewState::LockRows, &ViewState::LockColStart, &ViewState::LockCols}) {
        View = ViewState{};
        View.*number = 1;
        EXPECT_TRUE(AnyLock());
    }
}

TEST_F(TextRow, RowsOnScreenAreWholeRows)
{
    View.ClientHeight = 109;
    EXPECT_EQ(RowsOnScreen(), 10);
    View.ClientHeight = 9;
    EXPECT_EQ(RowsOnScreen(), 0);
}

TEST_F(TextRow, RowShownInPartIsTouched)
{
    View.ClientHeight = 109;
    EXPECT_EQ(RowsTouched(), 11);
    View.ClientHeight = 110;
    EXPECT_EQ(RowsTouched(), 11);
    View.ClientHeight = 111;
    EXPECT_EQ(RowsTouched(), 12);
    View.ClientHeight = 0;
    EXPECT_EQ(RowsTouched(), 0);
}

TEST_F(TextRow, RowsAreLinesInTextModeAndSixteenBytesInHexMode)
{
    Document.FileSize = 33;
    EXPECT_EQ(RowCount(), 100);
    View.HexMode = true;
    EXPECT_EQ(RowCount(), 3);
}
