#include "view/selection.h"

#include "document/document_state.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

namespace {

class Selection : public testing::Test {
protected:
    void SetUp() override
    {
        View = ViewState{};
        Document = DocumentState{};
        View.LineHeight = 10;
        View.ClientHeight = 105; // ten rows and a half
        Document.LineCount = 100;
        Document.FileSize = 160;
    }

    void TearDown() override
    {
        View = ViewState{};
        Document = DocumentState{};
    }

    // From column anchorColumn of line anchor to column endColumn of line end.
    static void Select(std::int32_t anchor, std::int32_t anchorColumn, std::int32_t end, std::int32_t endColumn)
    {
        View.SelLineA = View.SelAnchorLine = anchor;
        View.SelLineB = end;
        View.SelColA = anchorColumn;
        View.SelColB = endColumn;
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
};

} // namespace

TEST_F(Selection, NeedsBothEnds)
{
    EXPECT_FALSE(HasSelection());
    View.SelLineA = 5;
    EXPECT_FALSE(HasSelection());
    View.SelLineB = 3;
    EXPECT_TRUE(HasSelection());
    EXPECT_EQ(FirstSelectedLine(), 3);
    EXPECT_EQ(LastSelectedLine(), 5);
}

TEST_F(Selection, PointLiesOnTheLineOfItsRow)
{
    View.TopLine = 20;
    EXPECT_EQ(LineAtPoint(0), 21);
    EXPECT_EQ(LineAtPoint(9), 21);
    EXPECT_EQ(LineAtPoint(10), 22);
    EXPECT_EQ(LineAtPoint(104), 31);
}

TEST_F(Selection, PointBelowTheLastLineCountsAsTheLastLine)
{
    View.TopLine = 95;
    EXPECT_EQ(LineAtPoint(104), 100);
    View.HexMode = true;
    View.TopLine = 5;
    EXPECT_EQ(LineAtPoint(104), 10);
    View.TopLine = INT32_MAX - 1;
    EXPECT_EQ(LineAtPoint(104), 10);
}

TEST_F(Selection, OutsideTheViewTheNextLineIsReached)
{
    View.TopLine = 20;
    EXPECT_EQ(LineBelowView(), 32); // eleven rows, the last one cut
    EXPECT_EQ(LineAboveView(), 21);
    View.ClientHeight = 100;
    EXPECT_EQ(LineBelowView(), 31);
    View.TopLine = 99;
    EXPECT_EQ(LineBelowView(), 100);
    EXPECT_EQ(LineAboveView(), 100);
}

TEST_F(Selection, GrowingRepaintsWhatIsNew)
{
    ExpectBand(ChangedLines(5, 8, 12), 8, 12);
    ExpectBand(ChangedLines(5, 3, 1), 1, 3);
}

TEST_F(Selection, ShrinkingRepaintsWhatIsGivenUp)
{
    ExpectBand(ChangedLines(5, 12, 8), 8, 12);
    ExpectBand(ChangedLines(5, 1, 3), 1, 3);
}

TEST_F(Selection, EndThatStaysRepaintsItsLineAlone)
{
    ExpectBand(ChangedLines(5, 8, 8), 8, 8);
    ExpectBand(ChangedLines(5, 5, 5), 5, 5);
}

TEST_F(Selection, EndThatPassesTheAnchorRepaintsBothSides)
{
    ExpectBand(ChangedLines(5, 8, 2), 2, 8);
    ExpectBand(ChangedLines(5, 2, 8), 2, 8);
}

TEST_F(Selection, BandIsCutToTheScreen)
{
    View.TopLine = 20;
    ExpectBand(OnScreen({1, 100}), 21, 31);
    ExpectBand(OnScreen({25, 27}), 25, 27);
    const LineBand above = OnScreen({1, 5});
    EXPECT_GT(above.First, above.Last);
    View.TopLine = INT32_MAX - 5;
    EXPECT_EQ(OnScreen({1, INT32_MAX}).Last, INT32_MAX);
}

TEST_F(Selection, ClickWithoutMovementIsEmpty)
{
    View.SelAnchorLine = 5;
    EXPECT_TRUE(SelectionIsEmpty());
}

TEST_F(Selection, TextSelectionThatCameBackIsEmpty)
{
    Select(5, 7, 5, 7);
    EXPECT_TRUE(SelectionIsEmpty());
    Select(5, 7, 5, 8);
    EXPECT_FALSE(SelectionIsEmpty());
    Select(5, 7, 6, 7);
    EXPECT_FALSE(SelectionIsEmpty());
}

TEST_F(Selection, HexSelectionOfOneRowIsNotEmpty)
{
    View.HexMode = true;
    Select(5, 0, 5, 0);
    EXPECT_FALSE(SelectionIsEmpty());
}

TEST_F(Selection, LinesBetweenTheEndsAreWhollySelected)
{
    Select(8, 3, 5, 2);
    EXPECT_FALSE(IsWhollySelected(5));
    EXPECT_TRUE(IsWhollySelected(6));
    EXPECT_TRUE(IsWhollySelected(7));
    EXPECT_FALSE(IsWhollySelected(8));
    EXPECT_TRUE(IsSelectionEnd(5));
    EXPECT_TRUE(IsSelectionEnd(8));
    EXPECT_FALSE(IsSelectionEnd(6));
    View.SelLineB = 0;
    EXPECT_FALSE(IsWhollySelected(6));
    EXPECT_FALSE(IsSelectionEnd(8));
}

TEST_F(Selection, OnOneLineItIsTheColumnsBetweenTheEnds)
{
    Select(5, 3, 5, 9);
    ExpectRun(SelectedRun(5, 20), 3, 6);
    Select(5, 9, 5, 3);
    ExpectRun(SelectedRun(5, 20), 3, 6);
}

TEST_F(Selection, DownwardsTheFirstLineRunsToItsEndAndTheLastFromItsStart)
{
    Select(5, 3, 8, 9);
    ExpectRun(SelectedRun(5, 20), 3, 17);
    ExpectRun(SelectedRun(8, 20), 0, 9);
}

TEST_F(Selection, UpwardsTheColumnsBelongToTheSameEnds)
{
    Select(8, 9, 5, 3);
    ExpectRun(SelectedRun(5, 20), 3, 17);
    ExpectRun(SelectedRun(8, 20), 0, 9);
}

TEST_F(Selection, AnchorColumnBelongsToTheAnchorLineHoweverTheEndsAreNamed)
{
    // Select All and the lock name the ends without an anchor on one of them.
    View.SelLineA = 1;
    View.SelLineB = 8;
    View.SelAnchorLine = 8;
    View.SelColA = 9;
    View.SelColB = 3;
    ExpectRun(SelectedRun(8, 20), 0, 9);
    ExpectRun(SelectedRun(1, 20), 3, 17);
}

TEST_F(Selection, ColumnsBeyondTheLineAreCut)
{
    Select(5, 30, 8, 40);
    ExpectRun(SelectedRun(5, 20), 20, 0);
    ExpectRun(SelectedRun(8, 20), 0, 20);
}
