#include "print/page_layout.h"

#include <gtest/gtest.h>

namespace {

// Of 600 dots per inch; the margins leave 5800 in height.
PageLayout Paper()
{
    PageLayout page;
    page.LogPixelsY = 600;
    page.PageWidth = 4800;
    page.PageHeight = 6400;
    page.MarginLeft = 600;
    page.MarginRight = 200;
    page.MarginTop = 350;
    page.MarginBottom = 250;
    page.PrintLineHeight = 100;
    page.HFLineHeight = 120;
    return page;
}

PageLayout LaidOut(PageLayout page, bool hasHeader = false, bool hasFooter = false)
{
    LayOutPage(page, hasHeader, hasFooter);
    return page;
}

// With margins that leave room for the body.
PageLayout WithRoom(std::int32_t room)
{
    PageLayout page = Paper();
    page.PageHeight = page.MarginTop + page.MarginBottom + room;
    return page;
}

// Everything of that size.
PageLayout Absurd(std::int32_t size)
{
    return {size, size, size, size, size, size, size, size, size, size, size};
}

void ExpectBand(const PageBand& band, std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom)
{
    EXPECT_EQ(band.Left, left);
    EXPECT_EQ(band.Top, top);
    EXPECT_EQ(band.Right, right);
    EXPECT_EQ(band.Bottom, bottom);
}

void ExpectRange(const DumpRange& range, std::int64_t start, std::int64_t end)
{
    EXPECT_EQ(range.Start, start);
    EXPECT_EQ(range.End, end);
}

std::int64_t RowsIn(const DumpRange& range)
{
    std::int64_t rows = 0;
    for (std::int64_t offset = range.Start; offset < range.End; offset += 16) {
        ++rows;
    }
    return rows;
}

} // namespace

TEST(PageLayout, BodyTakesWhatTheMarginsLeave)
{
    const PageLayout page = LaidOut(Paper());
    EXPECT_EQ(page.FirstLineY, 350);
    EXPECT_EQ(page.LinesPerPage, 58);
}

TEST(PageLayout, HeaderTakesItsLineAndOneOfTheBodyAbove)
{
    const PageLayout page = LaidOut(Paper(), true, false);
    EXPECT_EQ(page.FirstLineY, 350 + 100 + 120);
    EXPECT_EQ(page.LinesPerPage, 55); // 5580
}

TEST(PageLayout, FooterTakesItsLineAndOneOfTheBodyBelow)
{
    const PageLayout page = LaidOut(Paper(), false, true);
    EXPECT_EQ(page.FirstLineY, 350);
    EXPECT_EQ(page.LinesPerPage, 55);
}

TEST(PageLayout, HeaderAndFooterTakeTheirRoomEach)
{
    const PageLayout page = LaidOut(Paper(), true, true);
    EXPECT_EQ(page.FirstLineY, 570);
    EXPECT_EQ(page.LinesPerPage, 53); // 5360
}

TEST(PageLayout, OnlyWholeLinesCount)
{
    EXPECT_EQ(LaidOut(WithRoom(5799)).LinesPerPage, 57);
    EXPECT_EQ(LaidOut(WithRoom(5800)).LinesPerPage, 58);
    EXPECT_EQ(LaidOut(WithRoom(5899)).LinesPerPage, 58);
    EXPECT_EQ(LaidOut(WithRoom(199)).LinesPerPage, 1);
    EXPECT_EQ(LaidOut(WithRoom(200)).LinesPerPage, 2);
}

TEST(PageLayout, IsTheSameWhenLaidOutAgain)
{
    PageLayout page = LaidOut(Paper(), true, true);
    LayOutPage(page, true, true);
    EXPECT_EQ(page.FirstLineY, 570);
    EXPECT_EQ(page.LinesPerPage, 53);
    LayOutPage(page, false, false);
    EXPECT_EQ(page.FirstLineY, 350);
    EXPECT_EQ(page.LinesPerPage, 58);
}

TEST(PageLayout, ChangesNothingElse)
{
    const PageLayout page = LaidOut(Paper(), true, true);
    EXPECT_EQ(page.PageHeight, 6400);
    EXPECT_EQ(page.MarginTop, 350);
    EXPECT_EQ(page.MarginBottom, 250);
    EXPECT_EQ(page.PrintLineHeight, 100);
    EXPECT_EQ(page.HFLineHeight, 120);
}

TEST(PageLayout, HasALineHoweverLittleRoomThereIs)
{
    for (const std::int32_t room : {99, 1, 0, -1, -99, -100, -101, -100000}) {
        EXPECT_EQ(LaidOut(WithRoom(room)).LinesPerPage, 1) << room;
    }
    EXPECT_EQ(LaidOut(WithRoom(400), true, true).LinesPerPage, 1);
    EXPECT_EQ(LaidOut(WithRoom(640), true, true).LinesPerPage, 2);
}

TEST(PageLayout, LinesWithoutHeightAreTakenAsOneUnitHigh)
{
    PageLayout page = Paper();
    page.PrintLineHeight = page.HFLineHeight = 0;
    EXPECT_EQ(LaidOut(page, true, true).LinesPerPage, 5800);
    page.PrintLineHeight = -100;
    EXPECT_GE(LaidOut(page).LinesPerPage, 1);
}

TEST(PageLayout, AbsurdSizesDoNotOverflow)
{
    PageLayout page = Paper();
    page.MarginTop = page.MarginBottom = INT32_MAX;
    page = LaidOut(page, true, true);
    EXPECT_EQ(page.FirstLineY, INT32_MAX);
    EXPECT_EQ(page.LinesPerPage, 1);

    page = Paper();
    page.PrintLineHeight = page.HFLineHeight = INT32_MAX;
    page = LaidOut(page, true, true);
    EXPECT_EQ(page.FirstLineY, INT32_MAX);
    EXPECT_EQ(page.LinesPerPage, 1);

    page = Paper();
    page.PageHeight = INT32_MIN;
    EXPECT_EQ(LaidOut(page, true, true).LinesPerPage, 1);
    page.PageHeight = INT32_MAX;
    page.MarginTop = page.MarginBottom = INT32_MIN;
    page.PrintLineHeight = 1;
    EXPECT_EQ(LaidOut(page).LinesPerPage, INT32_MAX);
    EXPECT_EQ(LaidOut(page).FirstLineY, INT32_MIN);
}

TEST(PageLayout, NothingDerivedFromAbsurdSizesOverflows)
{
    for (const std::int32_t size : {INT32_MIN, INT32_MIN + 1, -1, 0, 1, INT32_MAX - 1, INT32_MAX}) {
        const PageLayout page = LaidOut(Absurd(size), true, true);
        EXPECT_GE(page.LinesPerPage, 1) << size;
        RowY(page, INT32_MAX);
        RowY(page, INT32_MIN);
        LineWidth(page);
        for (const PagePart part : {PagePart::Header, PagePart::Footer}) {
            BandOf(part, page);
            RuleY(part, page);
        }
    }
}

TEST(PageLayout, RowsFollowEachOtherFromTheFirstLine)
{
    const PageLayout page = LaidOut(Paper(), true, false);
    EXPECT_EQ(RowY(page, 0), 570);
    EXPECT_EQ(RowY(page, 1), 670);
    EXPECT_EQ(RowY(page, 54), 5970);
}

TEST(PageLayout, LastRowStaysAboveTheBottomMarginAndTheFooter)
{
    for (std::int32_t room = 700; room < 1000; ++room) {
        const PageLayout page = LaidOut(WithRoom(room), true, true);
        const std::int32_t end = RowY(page, page.LinesPerPage);
        const std::int32_t limit = BandOf(PagePart::Footer, page).Top - page.PrintLineHeight;
        EXPECT_LE(end, limit) << room;
        EXPECT_GT(end + page.PrintLineHeight, limit) << room;
    }
}

TEST(PageLayout, RowFarDownDoesNotOverflow)
{
    PageLayout page = LaidOut(Paper());
    EXPECT_EQ(RowY(page, INT32_MAX), INT32_MAX);
    EXPECT_EQ(RowY(page, INT32_MIN), INT32_MIN);
    page.FirstLineY = INT32_MAX;
    EXPECT_EQ(RowY(page, 1), INT32_MAX);
}

TEST(PageLayout, LineTakesWhatTheMarginsLeaveInWidth)
{
    EXPECT_EQ(LineWidth(Paper()), 4000);
}

TEST(PageLayout, LineHasNoWidthBetweenMarginsThatMeet)
{
    PageLayout page = Paper();
    page.MarginRight = 4200;
    EXPECT_EQ(LineWidth(page), 0);
    page.MarginRight = 4201;
    EXPECT_EQ(LineWidth(page), -1);
    page.MarginLeft = page.MarginRight = INT32_MAX;
    EXPECT_EQ(LineWidth(page), INT32_MIN);
    page.MarginLeft = page.MarginRight = INT32_MIN;
    EXPECT_EQ(LineWidth(page), INT32_MAX);
}

TEST(PageLayout, HeaderStandsBelowTheTopMargin)
{
    ExpectBand(BandOf(PagePart::Header, Paper()), 600, 350, 4600, 470);
}

TEST(PageLayout, FooterStandsAboveTheBottomMargin)
{
    ExpectBand(BandOf(PagePart::Footer, Paper()), 600, 6030, 4600, 6150);
}

TEST(PageLayout, RuleOfTheHeaderIsAtItsBottom)
{
    EXPECT_EQ(RuleY(PagePart::Header, Paper()), 470);
}

TEST(PageLayout, RuleOfTheFooterIsAQuarterOfItsLineAbove)
{
    PageLayout page = Paper();
    EXPECT_EQ(RuleY(PagePart::Footer, page), 6030 - 30);
    page.HFLineHeight = 123;
    EXPECT_EQ(RuleY(PagePart::Footer, page), 6027 - 30);
    page.HFLineHeight = 3;
    EXPECT_EQ(RuleY(PagePart::Footer, page), 6147);
}

TEST(PageLayout, BandsOfAbsurdMarginsDoNotOverflow)
{
    PageLayout page = Paper();
    page.MarginTop = page.MarginRight = page.MarginBottom = INT32_MAX;
    ExpectBand(BandOf(PagePart::Header, page), 600, INT32_MAX, 4800 - INT32_MAX, INT32_MAX);
    EXPECT_EQ(RuleY(PagePart::Header, page), INT32_MAX);
    page.PageHeight = page.PageWidth = -2;
    ExpectBand(BandOf(PagePart::Footer, page), 600, INT32_MIN, INT32_MIN, INT32_MIN);
    EXPECT_EQ(RuleY(PagePart::Footer, page), INT32_MIN);
}

TEST(RowsToPrint, WithoutASelectionIsTheWholeFile)
{
    ExpectRange(RowsToPrint(0, 0, 100), 0, 100);
    ExpectRange(RowsToPrint(0, 3, 100), 0, 100);
    ExpectRange(RowsToPrint(0, 0, INT32_MAX), 0, INT32_MAX);
    EXPECT_EQ(RowsIn(RowsToPrint(0, 0, 96)), 6);
    EXPECT_EQ(RowsIn(RowsToPrint(0, 0, 97)), 7);
}

TEST(RowsToPrint, OfAnEmptyFileAreNone)
{
    EXPECT_EQ(RowsIn(RowsToPrint(0, 0, 0)), 0);
    EXPECT_EQ(RowsIn(RowsToPrint(1, 1, 0)), 0);
}

TEST(RowsToPrint, SelectionEndsOneByteIntoItsLastRow)
{
    ExpectRange(RowsToPrint(2, 4, 100), 16, 49);
    EXPECT_EQ(RowsIn(RowsToPrint(2, 4, 100)), 3);
}

TEST(RowsToPrint, OneSelectedRowIsPrintedAlone)
{
    ExpectRange(RowsToPrint(1, 1, 100), 0, 1);
    ExpectRange(RowsToPrint(7, 7, 100), 96, 97);
    EXPECT_EQ(RowsIn(RowsToPrint(1, 1, 100)), 1);
    EXPECT_EQ(RowsIn(RowsToPrint(7, 7, 100)), 1);
}

TEST(RowsToPrint, SelectionUpToTheLastRowTakesIt)
{
    for (const std::int32_t size : {33, 40, 47, 48}) {
        ExpectRange(RowsToPrint(2, 3, size), 16, 33);
    }
}

TEST(RowsToPrint, SelectionEndsWithTheFile)
{
    ExpectRange(RowsToPrint(2, 4, 48), 16, 48);
    ExpectRange(RowsToPrint(2, 100, 40), 16, 40);
    ExpectRange(RowsToPrint(2, INT32_MAX, 40), 16, 40);
    EXPECT_EQ(RowsIn(RowsToPrint(2, 100, 40)), 2);
}

TEST(RowsToPrint, SelectionBehindTheFileIsEmpty)
{
    EXPECT_EQ(RowsIn(RowsToPrint(4, 5, 48)), 0);
    EXPECT_EQ(RowsIn(RowsToPrint(INT32_MAX, INT32_MAX, 48)), 0);
}

TEST(RowsToPrint, RowsOfTheLargestFileDoNotOverflow)
{
    constexpr std::int32_t LastRow = INT32_MAX / 16 + 1;
    constexpr std::int64_t LastOffset = INT32_MAX - 15;
    ExpectRange(RowsToPrint(LastRow, LastRow, INT32_MAX), LastOffset, LastOffset + 1);
    ExpectRange(RowsToPrint(INT32_MAX, INT32_MAX, INT32_MAX), (INT32_MAX - 1LL) * 16, INT32_MAX);
}
