// How a match is shown: where the view goes for it, what is painted, and what is left of it afterwards.
#include "app/show_match.h"

#include "app/finding.h"
#include "document/document_state.h"
#include "harness/system_calls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace {

class ShownMatch : public FindCommand {
protected:
    static void Show(std::int32_t column, std::int32_t line, std::int32_t length)
    {
        Find.FoundLen = length;
        SendMessageA(Windows.Main, WM_USER + 2, static_cast<WPARAM>(column), line);
    }

    static void Remove(std::int32_t column, std::int32_t line)
    {
        SendMessageA(Windows.Main, WM_USER + 3, static_cast<WPARAM>(column), line);
    }

    static std::int32_t Columns() { return View.ClientWidth / View.CharWidth; }

    // The columns that the view starts at when it shows a match from a view that starts at left.
    static std::int32_t LeftAfter(std::int32_t left, std::int32_t column, std::int32_t length)
    {
        const BeepCounter silence;
        View.LeftColumn = left;
        View.BeepedAtEnd = false;
        Show(column, View.TopLine + 1, length);
        return View.LeftColumn;
    }

    static std::int32_t TopAfter(std::int32_t top, std::int32_t line)
    {
        GoToTop(top);
        const BeepCounter beeps;
        Show(0, line, 3);
        EXPECT_EQ(0, beeps.Count());
        return View.TopLine;
    }

    // What the view paints for it, in rows of the window; the whole width.
    struct PaintedRows {
        int Count; // paints
        std::int32_t First;
        std::int32_t Rows;
        bool operator==(const PaintedRows& other) const
        {
            return Count == other.Count && First == other.First && Rows == other.Rows;
        }
    };

    static PaintedRows Painted()
    {
        PaintedRows painted = {};
        for (const Noted& noted : Log) {
            if (noted.Window == Windows.View && noted.Message == WM_PAINT) {
                ++painted.Count;
                EXPECT_EQ(0, noted.ToPaint.left);
                EXPECT_EQ(View.ClientWidth, noted.ToPaint.right);
                EXPECT_EQ(0, noted.ToPaint.top % View.LineHeight);
                painted.First = noted.ToPaint.top / View.LineHeight;
                painted.Rows = (noted.ToPaint.bottom - noted.ToPaint.top) / View.LineHeight;
            }
        }
        return painted;
    }
};

} // namespace

TEST_F(ShownMatch, IsTheHighlightedRun)
{
    const ScratchFile file("find.txt", Lines(300, {}));
    Open(file);
    Show(3, 20, 5);
    EXPECT_EQ(20, View.HiliteLine);
    EXPECT_EQ(3, View.HiliteCol);
    EXPECT_EQ(5, View.HiliteLen);
}

TEST_F(ShownMatch, WithinTheColumnsOnScreenMovesNothingSideways)
{
    const ScratchFile file("find.txt", Lines(30, {}, 400));
    Open(file);
    ASSERT_LT(150, View.MaxLeft);
    // Its end is one column behind its last character.
    EXPECT_EQ(100, LeftAfter(100, 120, 6));
    EXPECT_EQ(100, LeftAfter(100, 100 - 6 - 1, 6));
    EXPECT_EQ(100, LeftAfter(100, 100 + Columns() - 6 - 1, 6));
}

TEST_F(ShownMatch, OutsideTheColumnsOnScreenTakesTheViewBackToItsFirstColumn)
{
    const ScratchFile file("find.txt", Lines(30, {}, 400));
    Open(file);
    EXPECT_EQ(0, LeftAfter(100, 10, 6));
    EXPECT_EQ(0, LeftAfter(100, 100 - 6 - 2, 6));
    EXPECT_EQ(0, LeftAfter(100, 100 + Columns() - 6, 6));
    EXPECT_EQ(0, LeftAfter(100, 390, 6)) << "also to the right, where it is not to be seen then";
}

TEST_F(ShownMatch, OutsideTheColumnsOnScreenTakesTheViewBackToTheFirstLockedColumn)
{
    const ScratchFile file("find.txt", Lines(30, {}, 400));
    Open(file);
    View.LockColStart = 5;
    EXPECT_EQ(5, LeftAfter(100, 10, 6));
    EXPECT_EQ(5, LeftAfter(100, 390, 6));
}

TEST_F(ShownMatch, OutsideTheColumnsOnScreenIsAskedForAsAThumbPositionOf0)
{
    const ScratchFile file("find.txt", Lines(30, {}, 400));
    Open(file);
    const BeepCounter silence;
    for (const std::int32_t column : {3, 300}) {
        View.LeftColumn = 100;
        const Watch watch({Windows.View});
        Show(column, 1, 6);
        const Noted* const scroll = Watch::Last(Windows.View, WM_HSCROLL);
        ASSERT_NE(nullptr, scroll);
        EXPECT_EQ(MAKELONG(SB_THUMBPOSITION, 0), scroll->WParam);
        EXPECT_EQ(std::max(column + 6 + 1 - Columns() / 2, 0), scroll->LParam) << "what the view does not look at";
    }
    const Watch watch({Windows.View});
    View.LeftColumn = 100;
    Show(120, 1, 6);
    EXPECT_EQ(nullptr, Watch::Last(Windows.View, WM_HSCROLL));
}

TEST_F(ShownMatch, OfADumpEndsWhereItsPairsDo)
{
    SetWindowPos(Windows.Main, nullptr, 0, 0, 400, 600, SWP_NOZORDER | SWP_NOACTIVATE);
    const ScratchFile file("find.bin", std::string(2000, 'x'));
    OpenHex(file);
    ASSERT_GT(50, Columns());
    // 3 * 9 + 4 + 10
    EXPECT_EQ(41, LeftAfter(41, 9, 4));
    EXPECT_EQ(0, LeftAfter(42, 9, 4));
    EXPECT_EQ(41 - Columns(), LeftAfter(41 - Columns(), 9, 4));
    EXPECT_EQ(0, LeftAfter(40 - Columns(), 9, 4)) << "beyond the right edge";
    // No row is longer than 76 characters.
    EXPECT_EQ(76 - Columns(), LeftAfter(76 - Columns(), 15, 22));
    EXPECT_EQ(0, LeftAfter(75 - Columns(), 15, 22));
}

TEST_F(ShownMatch, OnScreenMovesNothing)
{
    const ScratchFile file("find.txt", Lines(300, {}));
    Open(file);
    EXPECT_EQ(100, TopAfter(100, 101));
    EXPECT_EQ(100, TopAfter(100, 100 + RowsOnScreen()));
}

TEST_F(ShownMatch, OffScreenComesSecondOnScreen)
{
    const ScratchFile file("find.txt", Lines(300, {}));
    Open(file);
    EXPECT_EQ(100 + RowsOnScreen() + 1 - 2, TopAfter(100, 100 + RowsOnScreen() + 1));
    EXPECT_EQ(98, TopAfter(100, 100));
    EXPECT_EQ(48, TopAfter(100, 50));
    EXPECT_EQ(0, TopAfter(100, 1));
    EXPECT_EQ(0, TopAfter(100, 2));
    EXPECT_EQ(View.MaxTop, TopAfter(0, 300));
}

TEST_F(ShownMatch, OffScreenComesSecondBelowTheHeadings)
{
    const ScratchFile file("find.txt", Lines(300, {}));
    Open(file);
    Lock(3);
    EXPECT_EQ(200 - 2 - 3, TopAfter(100, 200));
    EXPECT_EQ(0, TopAfter(100, 4));
}

TEST_F(ShownMatch, CanBeScrolledToTheTop)
{
    const ScratchFile file("find.txt", Lines(300, {}));
    Open(file);
    Find.ScrollToOn = true;
    EXPECT_EQ(110, TopAfter(100, 111)) << "although it is on screen";
    EXPECT_EQ(110, TopAfter(110, 111));
    EXPECT_EQ(0, TopAfter(100, 1));
    EXPECT_EQ(View.MaxTop, TopAfter(100, 300));
    Lock(3);
    EXPECT_EQ(150 - 1 - 3, TopAfter(100, 150));
    EXPECT_EQ(0, TopAfter(100, 2));
}

TEST_F(ShownMatch, CanBeScrolledToTheMiddle)
{
    const ScratchFile file("find.txt", Lines(300, {}));
    Open(file);
    Find.ScrollToOn = true;
    Find.ScrollToTop = false;
    EXPECT_EQ(120 - RowsOnScreen() / 2, TopAfter(100, 120));
    EXPECT_EQ(0, TopAfter(100, 3));
    EXPECT_EQ(View.MaxTop, TopAfter(100, 298));
    Lock(3);
    EXPECT_EQ(150 - RowsOnScreen() / 2, TopAfter(100, 150));
}

TEST_F(ShownMatch, IsNotScrolledToWhereItStandsAlready)
{
    const ScratchFile file("find.txt", Lines(300, {}));
    Open(file);
    for (const bool scrollTo : {false, true}) {
        Find.ScrollToOn = scrollTo;
        GoToTop(100);
        const Watch watch({Windows.View});
        Show(0, 101, 3);
        EXPECT_EQ(nullptr, Watch::Last(Windows.View, WM_USER + 12));
        Show(0, 200, 3);
        const Noted* const scroll = Watch::Last(Windows.View, WM_USER + 12);
        ASSERT_NE(nullptr, scroll);
        EXPECT_EQ(99, scroll->WParam);
        EXPECT_EQ(scrollTo ? 199 : 198, scroll->LParam);
    }
}

TEST_F(ShownMatch, HasOnlyItsRowPainted)
{
    const ScratchFile file("find.txt", Lines(300, {}));
    Open(file);
    GoToTop(100);
    const Watch watch({Windows.View});
    Show(3, 108, 4);
    EXPECT_EQ((PaintedRows{1, 7, 1}), Painted());
    Log.clear();
    Remove(3, 108);
    EXPECT_EQ((PaintedRows{1, 7, 1}), Painted());
    EXPECT_EQ(0, View.HiliteLine);
    EXPECT_EQ(0, View.HiliteLen);
}

TEST_F(ShownMatch, OfADumpHasAllItsRowsPainted)
{
    const ScratchFile file("find.bin", std::string(5000, 'x'));
    OpenHex(file);
    GoToTop(100);
    const struct {
        std::int32_t Column;
        std::int32_t Length;
        std::int32_t Rows;
    } runs[] = {{0, 14, 1}, {2, 14, 1}, {3, 14, 2}, {15, 14, 2}, {0, 17, 2}, {4, 29, 3}, {3, 29, 2}, {15, 29, 3}};
    for (const auto& run : runs) {
        SCOPED_TRACE(run.Column);
        SCOPED_TRACE(run.Length);
        const Watch watch({Windows.View});
        Show(run.Column, 108, run.Length);
        EXPECT_EQ((PaintedRows{1, 7, run.Rows}), Painted());
        Log.clear();
        Remove(run.Column, 108);
        EXPECT_EQ((PaintedRows{1, 7, run.Rows}), Painted());
    }
}

TEST_F(ShownMatch, ThatIsScrolledAwayIsRemovedWithoutPainting)
{
    const ScratchFile file("find.txt", Lines(300, {}));
    Open(file);
    Show(3, 8, 4);
    GoToTop(100);
    const Watch watch({Windows.View});
    Remove(3, 8);
    EXPECT_EQ(0, Painted().Count);
    EXPECT_EQ(0, View.HiliteLine);
    EXPECT_EQ(0, View.HiliteLen);
}

TEST_F(ShownMatch, OutsideTheDocumentIsIgnored)
{
    const ScratchFile file("find.txt", Lines(300, {}));
    Open(file);
    GoToTop(100);
    Show(3, 108, 4);
    const Watch watch({Windows.View});
    for (const std::int32_t line : {0, -1, 301, INT32_MIN, INT32_MAX}) {
        Show(3, line, 4);
        EXPECT_EQ(108, View.HiliteLine);
    }
    Show(-1, 110, 4);
    Show(INT32_MAX, 110, 4);
    EXPECT_EQ(108, View.HiliteLine);
    EXPECT_EQ(100, View.TopLine);
    EXPECT_EQ(0, Painted().Count);
    Remove(3, INT32_MAX);
    EXPECT_EQ(0, View.HiliteLine);
    EXPECT_EQ(0, View.HiliteLen);
}

TEST_F(ShownMatch, StandsOutInItsRowOnlyAndLeavesNoTrace)
{
    const ScratchFile file("find.txt", Lines(300, {{8, "some words in a line"}}));
    for (const bool hex : {false, true}) {
        Open(file);
        Command(hex ? IDM_VIEW_HEX : IDM_VIEW_TEXT);
        const Picture before = ViewPicture();
        const Picture rowBefore = RowPicture(7);
        const Picture nextBefore = RowPicture(8);
        Show(14, 8, 4); // of a dump: spills over
        const int inRow = DifferentPixels(rowBefore, RowPicture(7));
        const int inNext = DifferentPixels(nextBefore, RowPicture(8));
        EXPECT_LT(0, inRow);
        EXPECT_EQ(hex, inNext > 0);
        EXPECT_EQ(inRow + inNext, DifferentPixels(before, ViewPicture()));
        Remove(14, 8);
        EXPECT_EQ(0, DifferentPixels(before, ViewPicture()));
    }
}

TEST_F(ShownMatch, InAHeadingIsHighlightedThereAndGoesAlsoWhenTheTextIsScrolledAway)
{
    const ScratchFile file("find.txt", Lines(300, {{2, "some words in a line"}}));
    Open(file);
    Lock(3);
    const Picture heading = RowPicture(1);
    GoToTop(100);
    const Picture before = ViewPicture();
    LookFor("words");
    ExpectFound(2, 5);
    EXPECT_EQ(0, View.TopLine);
    EXPECT_LT(0, DifferentPixels(heading, RowPicture(1)));
    GoToTop(100);
    EXPECT_LT(0, DifferentPixels(heading, RowPicture(1))) << "headings stay";
    EXPECT_EQ(NotFound, CommandInVain(IDM_SEARCH_FIND_NEXT));
    EXPECT_EQ(0, DifferentPixels(before, ViewPicture()));
}
