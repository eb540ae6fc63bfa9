#include "search/match_place.h"

#include "search/find_state.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

namespace {

class MatchPlace : public testing::Test {
protected:
    void SetUp() override
    {
        View = ViewState{};
        Find = FindState{};
        View.CharWidth = 8;
        View.ClientWidth = 325; // 40 columns and a half
        View.LineHeight = 10;
        View.ClientHeight = 205; // 20 rows and a half
        View.MaxTop = 1000;
    }

    void TearDown() override
    {
        View = ViewState{};
        Find = FindState{};
    }

    static void ScrollTo(bool top)
    {
        Find.ScrollToOn = true;
        Find.ScrollToTop = top;
    }
};

bool IsMatchInColumns(std::int32_t column, std::int32_t length)
{
    return IsColumnInView(EndColumnOfMatch(column, length));
}

// Where a match on line leaves the view.
std::int32_t TopAfter(std::int32_t line)
{
    std::int32_t top = 0;
    return TopLineForMatch(line, top) ? top : View.TopLine;
}

} // namespace

TEST_F(MatchPlace, MatchIsInColumnsWhenTheOneBehindItsEndIs)
{
    // The end is column + length + 1; the columns are 0 to 40.
    EXPECT_TRUE(IsMatchInColumns(0, 1));
    EXPECT_TRUE(IsMatchInColumns(34, 5));
    EXPECT_FALSE(IsMatchInColumns(35, 5));
    EXPECT_FALSE(IsMatchInColumns(34, 6));
    EXPECT_FALSE(IsMatchInColumns(1000, 5));
}

TEST_F(MatchPlace, ScrolledColumnsEndFurtherRight)
{
    View.LeftColumn = 100;
    EXPECT_FALSE(IsMatchInColumns(93, 5)); // ends at 99
    EXPECT_TRUE(IsMatchInColumns(94, 5));  // begins left of the window, and that does not matter
    EXPECT_TRUE(IsMatchInColumns(134, 5));
    EXPECT_FALSE(IsMatchInColumns(135, 5));
}

TEST_F(MatchPlace, MatchInAHexRowIsWhereItsPairsAre)
{
    View.HexMode = true;
    View.ClientWidth = 40 * 8;
    EXPECT_TRUE(IsMatchInColumns(0, 1));
    EXPECT_TRUE(IsMatchInColumns(9, 3)); // 27 + 3 + 10
    EXPECT_FALSE(IsMatchInColumns(9, 4));
    EXPECT_FALSE(IsMatchInColumns(10, 1));
    View.LeftColumn = 30;
    EXPECT_FALSE(IsMatchInColumns(6, 1)); // 29
    EXPECT_TRUE(IsMatchInColumns(6, 2));
}

TEST_F(MatchPlace, MatchInAHexRowEndsAtTheLastWithTheRow)
{
    View.HexMode = true;
    View.ClientWidth = 76 * 8;
    EXPECT_TRUE(IsMatchInColumns(15, 29)); // would be 84
    View.ClientWidth = 75 * 8;
    EXPECT_FALSE(IsMatchInColumns(15, 29));
    EXPECT_FALSE(IsMatchInColumns(15, 21)); // 76
    EXPECT_TRUE(IsMatchInColumns(15, 20));
}

TEST_F(MatchPlace, LineOnScreenMovesNothing)
{
    View.TopLine = 100;
    EXPECT_EQ(TopAfter(101), 100);
    EXPECT_EQ(TopAfter(120), 100);
}

TEST_F(MatchPlace, LineOffScreenComesUnderOneLineOfContext)
{
    View.TopLine = 100;
    EXPECT_EQ(TopAfter(100), 98);
    EXPECT_EQ(TopAfter(121), 119);
    EXPECT_EQ(TopAfter(500), 498);
    EXPECT_EQ(TopAfter(3), 1);
    EXPECT_EQ(TopAfter(2), 0);
    EXPECT_EQ(TopAfter(1), 0);
}

TEST_F(MatchPlace, LineShownInPartIsNotOnScreen)
{
    EXPECT_EQ(TopAfter(20), 0);
    EXPECT_EQ(TopAfter(21), 19);
}

TEST_F(MatchPlace, ContextStandsBelowTheLockedRows)
{
    View.TopLine = 100;
    View.LockRows = 3;
    EXPECT_EQ(TopAfter(500), 495);
    EXPECT_EQ(TopAfter(4), 0);
    EXPECT_EQ(TopAfter(110), 100);
}

TEST_F(MatchPlace, WithoutScrollToTheTargetMayLieBehindTheLargestTopLine)
{
    View.TopLine = 900;
    EXPECT_EQ(TopAfter(1020), 1018);
}

TEST_F(MatchPlace, ScrollToTopPutsTheLineFirst)
{
    ScrollTo(true);
    EXPECT_EQ(TopAfter(500), 499);
    EXPECT_EQ(TopAfter(1), 0);
    View.TopLine = 495;
    EXPECT_EQ(TopAfter(500), 499); // although it is on screen
}

TEST_F(MatchPlace, ScrollToTopPutsTheLineBelowTheLockedRows)
{
    ScrollTo(true);
    View.LockRows = 4;
    EXPECT_EQ(TopAfter(500), 495);
    EXPECT_EQ(TopAfter(3), 0);
}

TEST_F(MatchPlace, ScrollToMiddlePutsHalfTheRowsAboveTheLine)
{
    ScrollTo(false);
    EXPECT_EQ(TopAfter(500), 490);
    EXPECT_EQ(TopAfter(10), 0);
    EXPECT_EQ(TopAfter(3), 0);
    View.ClientHeight = 215; // 21 rows
    EXPECT_EQ(TopAfter(500), 490);
    View.LockRows = 4;
    EXPECT_EQ(TopAfter(500), 490);
}

TEST_F(MatchPlace, ScrollToStaysWithinTheScrollableLines)
{
    for (const bool top : {true, false}) {
        ScrollTo(top);
        EXPECT_EQ(TopAfter(1020), 1000);
        View.MaxTop = 0;
        EXPECT_EQ(TopAfter(15), 0);
        View.MaxTop = 1000;
    }
}

TEST_F(MatchPlace, LargestLineDoesNotOverflow)
{
    View.MaxTop = INT32_MAX;
    View.TopLine = INT32_MAX - 5;
    EXPECT_EQ(TopAfter(INT32_MAX), INT32_MAX - 5);
    View.TopLine = 0;
    EXPECT_EQ(TopAfter(INT32_MAX), INT32_MAX - 2);
    ScrollTo(true);
    EXPECT_EQ(TopAfter(INT32_MAX), INT32_MAX - 1);
}

TEST_F(MatchPlace, MatchOffScreenIsGoneToEvenWhereTheViewIsAlready)
{
    View.ClientHeight = 10; // a single row: the line of context takes it
    View.TopLine = 0;
    std::int32_t top = -1;
    EXPECT_TRUE(TopLineForMatch(2, top));
    EXPECT_EQ(top, 0);
}

TEST_F(MatchPlace, EndColumnIsWhatTheViewIsAskedFor)
{
    EXPECT_EQ(EndColumnOfMatch(10, 5), 16);
    View.HexMode = true;
    EXPECT_EQ(EndColumnOfMatch(3, 2), 21);
    EXPECT_EQ(EndColumnOfMatch(15, 29), 76);
}
