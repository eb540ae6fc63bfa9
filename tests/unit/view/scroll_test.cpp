#include "view/scroll.h"

#include "document/document_state.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>

namespace {

class Scroll : public testing::Test {
protected:
    void SetUp() override
    {
        View = ViewState{};
        ViewOptions = ViewSettings{};
        Document = DocumentState{};
        View.FileShown = true;
        View.LineHeight = 10;
        View.CharWidth = 8;
        View.MaxCharWidth = 8;
        View.ClientHeight = 400; // 40 rows
        View.ClientWidth = 640;  // 80 columns
        Document.LineCount = 1000;
        Document.LongestLine = 200;
    }

    void TearDown() override
    {
        View = ViewState{};
        ViewOptions = ViewSettings{};
        Document = DocumentState{};
    }

    static std::int32_t Lines(int code, std::int32_t thumb = 0, std::int32_t target = 0)
    {
        const ScrollStep step = VerticalStep(code, thumb, target);
        EXPECT_TRUE(step.Asked) << code;
        return step.Distance;
    }

    static std::int32_t Columns(int code, std::int32_t thumb = 0)
    {
        const ScrollStep step = HorizontalStep(code, thumb);
        EXPECT_TRUE(step.Asked) << code;
        return step.Distance;
    }
};

} // namespace

TEST_F(Scroll, HundredThousandLinesOn40RowsScaleByFour)
{
    Document.LineCount = 100000;
    const ScrollBarValues values = MeasureScrolling();
    EXPECT_EQ(View.MaxTop, 99960);
    EXPECT_EQ(View.ScrollScale, 4);
    EXPECT_EQ(values.VerticalMin, 0);
    EXPECT_EQ(values.VerticalMax, 24990);
    EXPECT_EQ(values.VerticalPosition, 0);
}

TEST_F(Scroll, ThumbWithFewerThanAScaleOfLinesBelowGoesToTheEnd)
{
    Document.LineCount = 100000;
    MeasureScrolling();
    EXPECT_EQ(ThumbTarget(24990), 99960);
    EXPECT_EQ(Lines(ScrollThumbPosition, 24990), 99960);
    // Exactly four lines remain below.
    EXPECT_EQ(ThumbTarget(24989), 99956);
    EXPECT_EQ(ThumbTarget(0), 0);
    EXPECT_EQ(ThumbTarget(30000), 99960);
}

TEST_F(Scroll, ThumbEndOfAnUnevenRangeIsTheEnd)
{
    Document.LineCount = 100002; // MaxTop 99962, scale 4, thumb at most 24990
    MeasureScrolling();
    EXPECT_EQ(View.ScrollScale, 4);
    EXPECT_EQ(ThumbTarget(24989), 99956);
    EXPECT_EQ(ThumbTarget(24990), 99962);
}

TEST_F(Scroll, ScaleOfOneFollowsTheThumbExactly)
{
    MeasureScrolling();
    EXPECT_EQ(View.ScrollScale, 1);
    EXPECT_EQ(ThumbTarget(959), 959);
    EXPECT_EQ(ThumbTarget(958), 958);
}

TEST_F(Scroll, ScaleGrowsAt32000Lines)
{
    Document.LineCount = 32039;
    MeasureScrolling();
    EXPECT_EQ(View.ScrollScale, 1);
    Document.LineCount = 32040;
    MeasureScrolling();
    EXPECT_EQ(View.ScrollScale, 2);
}

TEST_F(Scroll, DocumentThatFitsDoesNotScroll)
{
    Document.LineCount = 40;
    Document.LongestLine = 70;
    const ScrollBarValues values = MeasureScrolling();
    EXPECT_EQ(View.MaxTop, 0);
    EXPECT_EQ(View.MaxLeft, 0);
    EXPECT_EQ(values.VerticalMax, 0);
    EXPECT_EQ(values.HorizontalMax, 0);
    Document.LineCount = 41;
    MeasureScrolling();
    EXPECT_EQ(View.MaxTop, 1);
}

TEST_F(Scroll, LongestLineScrollsTwoColumnsPastItsEnd)
{
    MeasureScrolling();
    EXPECT_EQ(View.MaxLeft, 200 - 80 + 2);
    Document.LongestLine = 79;
    MeasureScrolling();
    EXPECT_EQ(View.MaxLeft, 1);
    Document.LongestLine = 78;
    MeasureScrolling();
    EXPECT_EQ(View.MaxLeft, 0);
}

TEST_F(Scroll, HexModeMeasuresRowsOf76Characters)
{
    View.HexMode = true;
    Document.FileSize = 100001;
    View.ClientWidth = 400;
    MeasureScrolling();
    EXPECT_EQ(View.MaxTop, 6251 - 40);
    EXPECT_EQ(View.MaxLeft, 26);
    View.ClientWidth = 640;
    MeasureScrolling();
    EXPECT_EQ(View.MaxLeft, 0);
}

TEST_F(Scroll, MeasuringBringsTheScrollPositionWithinTheDocument)
{
    View.TopLine = 5000;
    View.LeftColumn = 500;
    const ScrollBarValues values = MeasureScrolling();
    EXPECT_EQ(View.TopLine, 960);
    EXPECT_EQ(View.LeftColumn, 122);
    EXPECT_EQ(values.VerticalPosition, 960);
    EXPECT_EQ(values.HorizontalPosition, 122);
    View.HexMode = true;
    Document.FileSize = 0;
    MeasureScrolling();
    EXPECT_EQ(View.TopLine, 0);
    EXPECT_EQ(View.LeftColumn, 0);
}

TEST_F(Scroll, LockBoundsTheBarsFromBelowUnscaled)
{
    Document.LineCount = 100000;
    View.LockTopLine = 100;
    View.LockRows = 3;
    View.LockColStart = 5;
    View.TopLine = 200;
    const ScrollBarValues values = MeasureScrolling();
    EXPECT_EQ(values.VerticalMin, 100);
    EXPECT_EQ(values.VerticalMax, 24990);
    EXPECT_EQ(values.VerticalPosition, 50);
    EXPECT_EQ(values.HorizontalMin, 5);
    EXPECT_EQ(View.LeftColumn, 5);
    EXPECT_EQ(View.LockedHeight, 30);
}

TEST_F(Scroll, LockBehindTheLastBarPositionIsItsLowerEndAllTheSame)
{
    Document.LineCount = 100000;
    View.LockTopLine = 30000;
    View.LockRows = 2;
    for (const std::int32_t top : {0, 30000, 30003, 99960}) {
        View.TopLine = top;
        const ScrollBarValues values = MeasureScrolling();
        EXPECT_EQ(View.ScrollScale, 4);
        EXPECT_EQ(View.TopLine, std::max(top, 30000));
        EXPECT_EQ(values.VerticalMin, 30000);
        EXPECT_EQ(values.VerticalMax, 24990);
        EXPECT_EQ(values.VerticalPosition, std::max(top, 30000) / 4);
    }
    View.TopLine = 40000;
    EXPECT_EQ(Lines(ScrollThumbPosition, 10000 - 1), -4);
    EXPECT_EQ(Lines(ScrollThumbPosition, 0), -10000);
    EXPECT_EQ(Lines(ScrollThumbPosition, 24990), 59960);
}

TEST_F(Scroll, HexModeBarsStartAtZeroWhateverTheLock)
{
    View.HexMode = true;
    Document.FileSize = 100000;
    View.LockTopLine = 100;
    View.LockColStart = 5;
    const ScrollBarValues values = MeasureScrolling();
    EXPECT_EQ(values.VerticalMin, 0);
    EXPECT_EQ(values.HorizontalMin, 0);
}

TEST_F(Scroll, BarsSwitchedOffHaveEmptyRangesWhileTheViewStillScrolls)
{
    ViewOptions.ScrollBars = 0;
    View.TopLine = 7;
    const ScrollBarValues values = MeasureScrolling();
    EXPECT_EQ(values.VerticalMin, 0);
    EXPECT_EQ(values.VerticalMax, 0);
    EXPECT_EQ(values.HorizontalMax, 0);
    EXPECT_EQ(values.VerticalPosition, 0);
    EXPECT_EQ(View.MaxTop, 960);
}

TEST_F(Scroll, LineStepsMoveOne)
{
    MeasureScrolling();
    View.TopLine = 5;
    EXPECT_EQ(Lines(ScrollLineBack), -1);
    EXPECT_EQ(Lines(ScrollLineForward), 1);
}

TEST_F(Scroll, PageStepsMoveTheRowsOnScreen)
{
    MeasureScrolling();
    View.TopLine = 500;
    EXPECT_EQ(Lines(ScrollPageForward), 40);
    EXPECT_EQ(Lines(ScrollPageBack), -40);
}

TEST_F(Scroll, PageDownWithThreeLockedRowsOn20RowsMoves17)
{
    View.ClientHeight = 200;
    View.LockRows = 3;
    MeasureScrolling();
    View.TopLine = 500;
    EXPECT_EQ(Lines(ScrollPageForward), 17);
    EXPECT_EQ(Lines(ScrollPageBack), -17);
}

TEST_F(Scroll, PageOfAWindowFullOfLockedRowsMovesOne)
{
    View.ClientHeight = 200;
    for (const std::int32_t rows : {20, 25}) {
        View.LockRows = rows;
        MeasureScrolling();
        View.TopLine = 500;
        EXPECT_EQ(Lines(ScrollPageForward), 1) << rows;
        EXPECT_EQ(Lines(ScrollPageBack), -1) << rows;
    }
}

TEST_F(Scroll, PageOfAWindowLowerThanARowMovesOne)
{
    View.ClientHeight = 9;
    MeasureScrolling();
    View.TopLine = 500;
    EXPECT_EQ(Lines(ScrollPageForward), 1);
    EXPECT_EQ(Lines(ScrollPageBack), -1);
}

TEST_F(Scroll, StepsStopAtBothEnds)
{
    MeasureScrolling();
    EXPECT_EQ(Lines(ScrollLineBack), 0);
    EXPECT_EQ(Lines(ScrollPageBack), 0);
    View.TopLine = 10;
    EXPECT_EQ(Lines(ScrollPageBack), -10);
    View.TopLine = 950;
    EXPECT_EQ(Lines(ScrollPageForward), 10);
    View.TopLine = 960;
    EXPECT_EQ(Lines(ScrollLineForward), 0);
}

TEST_F(Scroll, NeverGoesAboveTheLockedLines)
{
    View.LockTopLine = 100;
    View.LockRows = 2;
    View.TopLine = 110;
    MeasureScrolling();
    EXPECT_EQ(Lines(ScrollPageBack), -10);
    EXPECT_EQ(Lines(ScrollToStart), -10);
    EXPECT_EQ(Lines(ScrollToTarget, 0, 3), -10);
    EXPECT_EQ(Lines(ScrollThumbPosition, 0), -10);
    View.TopLine = 100;
    EXPECT_EQ(Lines(ScrollLineBack), 0);
}

TEST_F(Scroll, StartAndEndGoAllTheWay)
{
    MeasureScrolling();
    View.TopLine = 300;
    EXPECT_EQ(Lines(ScrollToStart), -300);
    EXPECT_EQ(Lines(ScrollToEnd), 660);
}

TEST_F(Scroll, TargetBecomesTheTop)
{
    MeasureScrolling();
    View.TopLine = 300;
    EXPECT_EQ(Lines(ScrollToTarget, 0, 120), -180);
    EXPECT_EQ(Lines(ScrollToTarget, 0, 300), 0);
    EXPECT_EQ(Lines(ScrollToTarget, 0, INT32_MAX), 660);
    EXPECT_EQ(Lines(ScrollToTarget, 0, INT32_MIN), -300);
}

TEST_F(Scroll, ThumbAtThePositionShownAsksForNothing)
{
    MeasureScrolling();
    View.TopLine = 300;
    EXPECT_FALSE(VerticalStep(ScrollThumbPosition, 300, 0).Asked);
    EXPECT_FALSE(VerticalStep(ScrollThumbTrack, 300, 0).Asked);
    EXPECT_EQ(Lines(ScrollThumbTrack, 301), 1);
}

TEST_F(Scroll, EndOfTheGestureAndUnknownCodesAskForNothing)
{
    MeasureScrolling();
    for (const int code : {static_cast<int>(ScrollEnd), 9, 42, -1, 98, 100}) {
        EXPECT_FALSE(VerticalStep(code, 5, 5).Asked) << code;
        EXPECT_FALSE(HorizontalStep(code, 5).Asked) << code;
    }
}

TEST_F(Scroll, ColumnsMoveByOneAndPagesByEight)
{
    MeasureScrolling();
    View.LeftColumn = 50;
    EXPECT_EQ(Columns(ScrollLineBack), -1);
    EXPECT_EQ(Columns(ScrollLineForward), 1);
    EXPECT_EQ(Columns(ScrollPageBack), -8);
    EXPECT_EQ(Columns(ScrollPageForward), 8);
    EXPECT_EQ(Columns(ScrollThumbPosition, 20), -30);
}

TEST_F(Scroll, HorizontalThumbMovesOnlyWhenReleased)
{
    MeasureScrolling();
    EXPECT_FALSE(HorizontalStep(ScrollThumbTrack, 20).Asked);
    EXPECT_FALSE(HorizontalStep(ScrollToStart, 0).Asked);
    EXPECT_FALSE(HorizontalStep(ScrollToEnd, 0).Asked);
    EXPECT_FALSE(HorizontalStep(ScrollToTarget, 20).Asked);
}

TEST_F(Scroll, ColumnsStopAtBothEndsAndAtTheLock)
{
    MeasureScrolling();
    View.LeftColumn = 3;
    EXPECT_EQ(Columns(ScrollPageBack), -3);
    View.LeftColumn = 120;
    EXPECT_EQ(Columns(ScrollPageForward), 2);
    EXPECT_EQ(Columns(ScrollThumbPosition, 32767), 2);
    View.LockColStart = 118;
    EXPECT_EQ(Columns(ScrollPageBack), -2);
}

TEST_F(Scroll, LockWinsInADocumentItDoesNotFit)
{
    Document.LineCount = 10;
    Document.LongestLine = 10;
    View.LockTopLine = 9;
    View.LockColStart = 1024;
    View.TopLine = 9;
    MeasureScrolling();
    EXPECT_EQ(View.MaxTop, 0);
    EXPECT_EQ(View.TopLine, 9);
    EXPECT_EQ(View.LeftColumn, 1024);
    EXPECT_EQ(ClampVertical(5), 0);
    EXPECT_EQ(ClampVertical(-5), 0);
    EXPECT_EQ(ClampHorizontal(5), 0);
    EXPECT_EQ(ClampHorizontal(-5), 0);
}

TEST_F(Scroll, AbsurdLockIsHarmless)
{
    View.LockTopLine = INT32_MAX;
    View.LockRows = 10;
    View.LockColStart = 1024;
    View.LockCols = 1024;
    MeasureScrolling();
    for (int code = 0; code <= 100; ++code) {
        const ScrollStep step = VerticalStep(code, 32000, INT32_MAX);
        EXPECT_GE(static_cast<std::int64_t>(View.TopLine) + step.Distance, 0);
        HorizontalStep(code, 32000);
    }
}

TEST_F(Scroll, LargestDocumentDoesNotOverflow)
{
    View.HexMode = true;
    Document.FileSize = INT32_MAX;
    MeasureScrolling();
    EXPECT_EQ(View.MaxTop, 134217728 - 40);
    EXPECT_EQ(ThumbTarget(INT32_MAX), View.MaxTop);
    View.HexMode = false;
    Document.LineCount = INT32_MAX;
    Document.LongestLine = 2048;
    View.MaxCharWidth = 4000;
    MeasureScrolling();
    EXPECT_EQ(View.MaxTop, INT32_MAX - 40);
    EXPECT_EQ(Lines(ScrollToEnd), INT32_MAX - 40);
    EXPECT_EQ(ThumbTarget(INT32_MAX), View.MaxTop);
}

TEST_F(Scroll, LineAtTheTopOfTheLargestDocumentHasANumberInAViewWithoutAWholeRow)
{
    Document.LineCount = INT32_MAX; // records of one byte
    Document.LongestLine = 1;
    for (const std::int32_t height : {0, 9, 10, 19, 20}) {
        View.ClientHeight = height;
        const std::int32_t last = INT32_MAX - std::max(height / 10, 1);
        View.TopLine = INT32_MAX;
        MeasureScrolling();
        EXPECT_EQ(View.MaxTop, last) << height;
        EXPECT_EQ(View.TopLine, last) << height;
        EXPECT_EQ(ClampVertical(1), 0);
        EXPECT_EQ(ThumbTarget(INT32_MAX), last);
        View.TopLine = 0;
        EXPECT_EQ(Lines(ScrollToEnd), last);
        EXPECT_EQ(Lines(ScrollToTarget, 0, INT32_MAX), last);
    }
}

TEST_F(Scroll, PositionForTheBarIsScaled)
{
    Document.LineCount = 100000;
    MeasureScrolling();
    View.TopLine = 99960;
    EXPECT_EQ(ScaledTop(), 24990);
    View.TopLine = 7;
    EXPECT_EQ(ScaledTop(), 1);
}
