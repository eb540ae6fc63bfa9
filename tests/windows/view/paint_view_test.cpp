// What the view shows, pixel for pixel, and what it reads to show it.
#include "view/paint_view.h"

#include "app/mode_switch.h"
#include "app/open_sequence.h"
#include "base/text.h"
#include "document/block_cache.h"
#include "document/document_state.h"
#include "harness/picture.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/gdi_holders.h"
#include "view/palette.h"
#include "view/screen_font.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

constexpr COLORREF White = RGB(255, 255, 255);
constexpr COLORREF Blue = RGB(0, 0, 255);
constexpr COLORREF Black = RGB(0, 0, 0);
constexpr COLORREF Yellow = RGB(255, 255, 0);
constexpr COLORREF DarkBlue = RGB(0, 0, 128);

class PaintedView : public RunningProgram {
protected:
    PaintedView()
    {
        SetWindowPos(Windows.Main, nullptr, 0, 0, 800, 600, SWP_NOZORDER | SWP_NOACTIVATE);
        Choose("Courier");
    }

    static void Choose(const char* face)
    {
        CopyText(ViewOptions.FontName, face);
        CreateScreenFont(false);
    }

    static void Open(const ScratchFile& file)
    {
        OpenSequence(Windows.Main, file.Path());
        ASSERT_TRUE(View.FileShown);
        UpdateWindow(Windows.View);
    }

    static void PaintAll()
    {
        InvalidateRect(Windows.View, nullptr, FALSE);
        UpdateWindow(Windows.View);
    }

    static RECT Rows(int first, int count)
    {
        return {0, first * View.LineHeight, View.ClientWidth, (first + count) * View.LineHeight};
    }

    static void PaintRows(int first, int count)
    {
        const RECT area = Rows(first, count);
        InvalidateRect(Windows.View, &area, FALSE);
        UpdateWindow(Windows.View);
    }

    static Picture RowPicture(int row) { return PictureOf(Windows.View, Rows(row, 1)); }

    // A row of one colour, with text written on it.
    struct Written {
        std::int32_t X;
        std::string Text;
        COLORREF Foreground;
        COLORREF Background;
    };

    static Picture ExpectedRow(COLORREF background, const std::vector<Written>& texts)
    {
        return Drawn(View.ClientWidth, View.LineHeight, [&](HDC dc) {
            const RECT row = {0, 0, View.ClientWidth, View.LineHeight};
            const HBRUSH brush = CreateSolidBrush(background);
            FillRect(dc, &row, brush);
            DeleteObject(brush);
            SelectedObject font(dc, Drawing.ScreenFont);
            for (const Written& written : texts) {
                SetTextColor(dc, written.Foreground);
                SetBkColor(dc, written.Background);
                TextOutA(dc, written.X, 0, written.Text.c_str(), static_cast<int>(written.Text.size()));
            }
        });
    }

    static void ExpectRow(int row, COLORREF background, const std::vector<Written>& texts)
    {
        const Picture expected = ExpectedRow(background, texts);
        EXPECT_EQ(0, DifferentPixels(expected, RowPicture(row))) << "row " << row;
        EXPECT_EQ(!texts.empty(), ColoursIn(expected) > 1);
    }

    static void ExpectNormalRow(int row, const std::string& text, std::int32_t x = 8)
    {
        SCOPED_TRACE(text);
        ExpectRow(row, Blue, {{x, text, White, Blue}});
    }

    // With LockCols: the locked columns' background ends where the scrolled ones begin.
    static std::int32_t Border() { return 8 + View.LockCols * View.CharWidth; }

    static void ExpectRowWithLockedColumns(int row, const std::vector<Written>& texts)
    {
        Picture expected = ExpectedRow(Blue, texts);
        const Picture locked = ExpectedRow(DarkBlue, texts);
        for (std::int32_t y = 0; y < expected.Height; ++y) {
            const std::int32_t start = y * expected.Width;
            std::copy_n(locked.Pixels.begin() + start, Border(), expected.Pixels.begin() + start);
        }
        EXPECT_EQ(0, DifferentPixels(expected, RowPicture(row))) << "row " << row;
    }

    static std::int32_t Width(const std::string& text)
    {
        WindowDc dc(Windows.View);
        SelectedObject font(dc, Drawing.ScreenFont);
        SIZE size = {};
        GetTextExtentPoint32A(dc, text.c_str(), static_cast<int>(text.size()), &size);
        return size.cx;
    }
};

std::string NumberedLines(int count, std::size_t length)
{
    std::string content;
    for (int line = 1; line <= count; ++line) {
        std::string text = std::to_string(line) + " ";
        text.resize(length, 'x');
        content += text + "\n";
    }
    return content;
}

} // namespace

TEST_F(PaintedView, TextRowsShowTheLinesFromTheMarginOn)
{
    const ScratchFile file("rows.txt", "first line\r\nsecond\r\n\r\nfourth");
    Open(file);
    ExpectNormalRow(0, "first line");
    ExpectNormalRow(1, "second");
    ExpectRow(2, Blue, {});
    ExpectNormalRow(3, "fourth");
    ExpectRow(4, Blue, {});
}

TEST_F(PaintedView, TextRowsAreTheSameInAProportionalFont)
{
    Choose("Tahoma");
    const ScratchFile file("rows.txt", "Wide and illicit\r\nsecond");
    Open(file);
    ExpectNormalRow(0, "Wide and illicit");
    ExpectNormalRow(1, "second");
}

TEST_F(PaintedView, ScrolledRowsShowTheLinesFromTopLineAndLeftColumnOn)
{
    const ScratchFile file("scrolled.txt", NumberedLines(200, 300));
    Open(file);
    SendMessageA(Windows.View, WM_VSCROLL, SB_LINEDOWN, 0);
    SendMessageA(Windows.View, WM_VSCROLL, SB_LINEDOWN, 0);
    SendMessageA(Windows.View, WM_HSCROLL, SB_LINERIGHT, 0);
    UpdateWindow(Windows.View);
    ASSERT_EQ(2, View.TopLine);
    ASSERT_EQ(1, View.LeftColumn);
    std::string text = "3 ";
    text.resize(300, 'x');
    ExpectNormalRow(0, text, 8 - View.CharWidth);
}

TEST_F(PaintedView, TheTableOfColoursIsThatOfTheSettings)
{
    const ScratchFile file("colours.txt", "coloured");
    ViewOptions.Foreground[OutputRegion] = 0;
    ViewOptions.Background[OutputRegion] = 6;
    Open(file);
    ExpectRow(0, Yellow, {{8, "coloured", Black, Yellow}});
}

TEST_F(PaintedView, TabsAreExpandedOnlyWhenAskedFor)
{
    const ScratchFile file("tabs.txt", "\tab\tc\tdefghi\tj");
    Open(file);
    ExpectNormalRow(0, "\tab\tc\tdefghi\tj");
    DocumentOptions.Ptabs = 1;
    PaintAll();
    // To 8; at column 10 by 2, at 13 by 5, at 24 by 8.
    ExpectNormalRow(0, "        ab  c     defghi        j");
    DocumentOptions.TabSize = 4;
    PaintAll();
    // To 4; at 6 by 2, at 9 by 1, at 16 by 4.
    ExpectNormalRow(0, "    ab  c defghi    j");
}

TEST_F(PaintedView, EbcdicIsShownAsAscii)
{
    const ScratchFile file("ebcdic.txt", "\xC8\x85\x93\x93\x96\x40\xF1\x5A");
    Open(file);
    ExpectNormalRow(0, "\xC8\x85\x93\x93\x96\x40\xF1\x5A");
    ViewOptions.EbcdicToAscii = true;
    PaintAll();
    ExpectNormalRow(0, "Hello 1!");
}

TEST_F(PaintedView, OemTextIsTranslatedOnlyForAnAnsiFont)
{
    const ScratchFile file("oem.txt", "K\x84se");
    Open(file);
    ASSERT_TRUE(View.FontIsAnsi);
    ExpectNormalRow(0, "K\x84se");
    ViewOptions.OemToAnsi = 1;
    PaintAll();
    ExpectNormalRow(0, "K\xE4se");
    View.FontIsAnsi = false;
    PaintAll();
    ExpectNormalRow(0, "K\x84se");
}

TEST_F(PaintedView, ADisplayLineIsTranslatedFromEbcdicFirst)
{
    const ScratchFile file("both.txt", "\xC1\x84");
    Open(file);
    ViewOptions.EbcdicToAscii = true;
    ViewOptions.OemToAnsi = 1;
    EXPECT_STREQ("Ad", ReadDisplayLine(1).Text);
}

TEST_F(PaintedView, AZeroByteIsShownAsASpace)
{
    const ScratchFile file("zero.txt", std::string("a\0b", 3));
    Open(file);
    ExpectNormalRow(0, "a b");
}

TEST_F(PaintedView, HexRowsShowOffsetPairsAndCharacters)
{
    const ScratchFile file("hex.txt", "0123456789ABCDEF\x1F\x7F\x80\x81 end");
    Open(file);
    SwitchMode(true);
    UpdateWindow(Windows.View);
    ExpectNormalRow(0, "00000000  30 31 32 33 34 35 36 37-38 39 41 42 43 44 45 46   0123456789ABCDEF", View.CharWidth);
    ExpectNormalRow(1, "00000010  1F 7F 80 81 20 65 6E 64-                          \x1F\x7F\x80. end", View.CharWidth);
    ExpectRow(2, Blue, {});
}

TEST_F(PaintedView, HexCharactersAreTranslatedFromEbcdicUpToAZeroByte)
{
    const ScratchFile file("hex.txt", std::string("\xC1\0\xC2", 3));
    Open(file);
    SwitchMode(true);
    ViewOptions.EbcdicToAscii = true;
    PaintAll();
    ExpectNormalRow(0, "00000000  C1 00 C2                                          A..", View.CharWidth);
}

TEST_F(PaintedView, OemTranslationLeavesTheHexDumpAlone)
{
    const ScratchFile file("oem.txt", "a\x80\x84z");
    Open(file);
    SwitchMode(true);
    ASSERT_TRUE(View.FontIsAnsi);
    ViewOptions.OemToAnsi = 1;
    PaintAll();
    ExpectNormalRow(0, "00000000  61 80 84 7A                                       a\x80.z", View.CharWidth);
}

TEST_F(PaintedView, HexRowsAreShiftedByTheLeftColumn)
{
    SetWindowPos(Windows.Main, nullptr, 0, 0, 400, 300, SWP_NOZORDER | SWP_NOACTIVATE);
    const ScratchFile file("hex.txt", "0123456789ABCDEF");
    Open(file);
    SwitchMode(true);
    SendMessageA(Windows.View, WM_HSCROLL, SB_PAGERIGHT, 0);
    PaintAll();
    ASSERT_EQ(8, View.LeftColumn);
    ExpectNormalRow(0, "00000000  30 31 32 33 34 35 36 37-38 39 41 42 43 44 45 46   0123456789ABCDEF",
                    -7 * View.CharWidth);
}

TEST_F(PaintedView, HexModeInAProportionalFontUsesTheStockFont)
{
    Choose("Tahoma");
    const ScratchFile file("hex.txt", "text");
    Open(file);
    SwitchMode(true);
    UpdateWindow(Windows.View);
    EXPECT_EQ(GetStockObject(ANSI_FIXED_FONT), Drawing.ScreenFont);
    ExpectNormalRow(0, "00000000  74 65 78 74                                       text", View.CharWidth);
    SwitchMode(false);
    UpdateWindow(Windows.View);
    EXPECT_FALSE(View.FontIsFixed);
    ExpectNormalRow(0, "text");
}

TEST_F(PaintedView, AnEmptyFileIsAllBackgroundInBothModes)
{
    const ScratchFile file("empty.txt", "");
    Open(file);
    ExpectRow(0, Blue, {});
    SwitchMode(true);
    PaintAll();
    ExpectRow(0, Blue, {});
    ExpectRow(5, Blue, {});
}

TEST_F(PaintedView, WithoutAFileTheBackgroundIsErased)
{
    const ScratchFile file("closed.txt", "still here");
    Open(file);
    CloseDocument();
    InvalidateRect(Windows.View, nullptr, TRUE);
    UpdateWindow(Windows.View);
    ExpectRow(0, Blue, {});
}

TEST_F(PaintedView, NothingIsPaintedWhileAPrintJobRuns)
{
    const ScratchFile file("printing.txt", "before");
    Open(file);
    View.Printing = true;
    View.TopLine = 1;
    PaintAll();
    ExpectNormalRow(0, "before");
    EXPECT_FALSE(GetUpdateRect(Windows.View, nullptr, FALSE));
}

TEST_F(PaintedView, WholeLinesBetweenTheEndsOfASelectionAreMarkedFromEdgeToEdge)
{
    const ScratchFile file("selected.txt", "one\ntwo\nthree\nfour");
    Open(file);
    View.SelLineA = View.SelAnchorLine = 1;
    View.SelLineB = 3;
    View.SelColA = 1;
    View.SelColB = 2;
    PaintAll();
    ExpectRow(0, Blue, {{8, "one", White, Blue}, {8 + Width("o"), "ne", Black, Yellow}});
    // The whole row has the marked background.
    ExpectRow(1, Yellow, {{8, "two", Black, Yellow}});
    ExpectNormalRow(3, "four");
}

TEST_F(PaintedView, APaintedSelectionEndLeavesItsRunAsTheFoundOne)
{
    const ScratchFile file("selected.txt", "one\ntwo\nthree\nfour");
    Open(file);
    View.SelLineA = View.SelAnchorLine = 1;
    View.SelLineB = 3;
    View.SelColA = 1;
    View.SelColB = 4;
    View.HiliteCol = View.HiliteLen = 77;
    PaintRows(1, 1);
    EXPECT_EQ(77, View.HiliteCol) << "a line between the ends";
    EXPECT_EQ(77, View.HiliteLen);
    PaintRows(0, 1);
    EXPECT_EQ(1, View.HiliteCol);
    EXPECT_EQ(2, View.HiliteLen);
    PaintRows(2, 1);
    EXPECT_EQ(0, View.HiliteCol);
    EXPECT_EQ(4, View.HiliteLen);
}

TEST_F(PaintedView, TheEndsOfASelectionAreNotMarkedUnderLockedColumns)
{
    const ScratchFile file("selected.txt", "one line\ntwo\nthree more");
    Open(file);
    SendMessageA(Windows.Main, WM_COMMAND, IDM_EDIT_SELECT_ALL, 0);
    ASSERT_EQ(3, View.SelLineB);
    View.LockCols = 3;
    View.HiliteCol = View.HiliteLen = 77;
    PaintAll();
    ExpectRowWithLockedColumns(0, {{8, "one", White, DarkBlue}, {Border(), " line", White, Blue}});
    ExpectRowWithLockedColumns(2, {{8, "thr", White, DarkBlue}, {Border(), "ee more", White, Blue}});
    EXPECT_EQ(77, View.HiliteLen);
}

TEST_F(PaintedView, ALineWithinASelectionKeepsItsColoursUnderLockedColumns)
{
    const ScratchFile file("selected.txt", "one line\ntwo lines\nthree more");
    Open(file);
    View.SelLineA = View.SelAnchorLine = 1;
    View.SelLineB = 3;
    View.SelColA = 1;
    View.SelColB = 2;
    View.LockCols = 3;
    PaintAll();
    ExpectRowWithLockedColumns(1, {{8, "two", White, DarkBlue}, {Border(), " lines", White, Blue}});
    View.LockRows = 2;
    PaintAll();
    ExpectRow(1, DarkBlue, {{8, "two lines", White, DarkBlue}});
}

TEST_F(PaintedView, ALineShorterThanTheLockedColumnsLeavesTheRestOfThemEmpty)
{
    const ScratchFile file("short.txt", "ab\n\nexact\nlonger");
    Open(file);
    View.LockCols = 5;
    for (const std::int32_t left : {0, 1, 30}) {
        View.LeftColumn = left;
        View.HiliteLine = 1;
        View.HiliteCol = 1;
        View.HiliteLen = 9; // more than there is
        PaintAll();
        ExpectRowWithLockedColumns(0, {{8, "ab", White, DarkBlue}, {8 + View.CharWidth, "b", Black, Yellow}});
        ExpectRowWithLockedColumns(1, {});
        ExpectRowWithLockedColumns(2, {{8, "exact", White, DarkBlue}});
        const std::string behind = left == 0 ? "r" : "";
        ExpectRowWithLockedColumns(3, {{8, "longe", White, DarkBlue}, {Border(), behind, White, Blue}});
    }
}

TEST_F(PaintedView, LockedColumnsWiderThanTheWindowFillIt)
{
    const ScratchFile file("wide.txt", NumberedLines(3, 300) + "short");
    Open(file);
    std::string text = "1 ";
    text.resize(300, 'x');
    const std::int32_t columns = View.ClientWidth / View.CharWidth;
    for (const std::int32_t locked : {columns + 1, 250, 1024}) {
        View.LockCols = locked;
        View.LeftColumn = 5;
        PaintAll();
        ExpectRow(0, DarkBlue, {{8, text, White, DarkBlue}});
        ExpectRow(3, DarkBlue, {{8, "short", White, DarkBlue}});
        ExpectRow(4, Blue, {});
    }
}

TEST_F(PaintedView, HeadingsBeyondTheLastLineAreBackground)
{
    const ScratchFile file("few.txt", "one\ntwo");
    Open(file);
    View.LockRows = 5;
    for (const std::int32_t columns : {0, 2}) {
        View.LockCols = columns;
        {
            WindowDc dc(Windows.View);
            const RECT whole = Rows(0, RowsTouched());
            FillRect(dc, &whole, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
        }
        PaintAll();
        for (const int row : {2, 4, 5, 8}) {
            ExpectRow(row, Blue, {});
        }
        ExpectRow(1, DarkBlue, {{8, "two", White, DarkBlue}});
    }
}

TEST_F(PaintedView, AFoundRunIsSplitOverLockedAndScrolledColumns)
{
    const ScratchFile file("found.txt", "0123456789ABCDEF");
    Open(file);
    View.LockCols = 5;
    View.LeftColumn = 2; // column 7 is the first scrolled one
    View.HiliteLine = 1;
    View.HiliteCol = 3;
    View.HiliteLen = 6;
    PaintAll();
    ExpectRowWithLockedColumns(0, {{8, "01234", White, DarkBlue},
                                   {8 + 3 * View.CharWidth, "34", Black, Yellow},
                                   {Border(), "789ABCDEF", White, Blue},
                                   {Border(), "78", Black, Yellow}});
}

TEST_F(PaintedView, AFoundRunIsMarkedAndTheRestIsNot)
{
    Choose("Tahoma");
    const ScratchFile file("found.txt", "with a match here");
    Open(file);
    View.HiliteLine = 1;
    View.HiliteCol = 7;
    View.HiliteLen = 5;
    PaintAll();
    ExpectRow(0, Blue, {{8, "with a match here", White, Blue}, {8 + Width("with a "), "match", Black, Yellow}});
}

TEST_F(PaintedView, AHexRunSpillsIntoTheNextRow)
{
    const ScratchFile file("found.txt", "0123456789ABCDEF0123");
    Open(file);
    SwitchMode(true);
    View.HiliteLine = 1;
    View.HiliteCol = 14;
    View.HiliteLen = 3;
    PaintAll();
    const std::int32_t cell = View.CharWidth;
    ExpectRow(0, Blue,
              {{cell, "00000000  30 31 32 33 34 35 36 37-38 39 41 42 43 44 45 46   0123456789ABCDEF", White, Blue},
               {cell * 53, "45 46", Black, Yellow}});
    ExpectRow(1, Blue,
              {{cell, "00000010  30 31 32 33                                       0123", White, Blue},
               {cell * 11, "30", Black, Yellow}});
}

TEST_F(PaintedView, LockedRowsStayOnTopInTheirColours)
{
    const ScratchFile file("locked.txt", NumberedLines(200, 10));
    Open(file);
    View.LockRows = 1;
    View.TopLine = 20;
    PaintAll();
    ExpectRow(0, DarkBlue, {{8, "1 xxxxxxxx", White, DarkBlue}});
    ExpectNormalRow(1, "22 xxxxxxx");
}

// Lines of 999 characters: 30 to a block.
TEST_F(PaintedView, PaintingABandReadsOnlyItsOwnTextRows)
{
    DocumentOptions.MaxLineLen = 1024;
    Document.BufferCount = 0;
    const ScratchFile file("bands.txt", NumberedLines(300, 999));
    Open(file);
    View.TopLine = 28; // row 2 shows the first line of block 2
    PaintAll();
    LoadBlock(10);
    const ReadingCounter readings;
    PaintRows(5, 3);
    EXPECT_EQ(1, readings.Count());
    EXPECT_EQ(2, Document.CurBlock);
    EXPECT_EQ(28 + 5 + 3 + 1, Document.CurLine);
    PaintRows(10, 1);
    EXPECT_EQ(1, readings.Count());
    EXPECT_EQ(28 + 10 + 1 + 1, Document.CurLine);
    PaintRows(0, 4);
    EXPECT_EQ(3, readings.Count()) << "rows 0 and 1 lie in block 1, the others in block 2";
}

TEST_F(PaintedView, PaintingABandReadsOnlyItsOwnHexRows)
{
    Document.BufferCount = 0;
    const ScratchFile file("bands.txt", NumberedLines(300, 999));
    Open(file);
    SwitchMode(true);
    View.TopLine = 1873; // row 2 begins block 2
    PaintAll();
    LoadBlock(5);
    const ReadingCounter readings;
    PaintRows(5, 3);
    EXPECT_EQ(1, readings.Count());
    EXPECT_EQ(2, Document.CurBlock);
    EXPECT_EQ((5 - 2 + 3) * 16, Document.CurOffset);
    PaintRows(0, 4);
    EXPECT_EQ(3, readings.Count());
}

TEST_F(PaintedView, PaintingABandChangesNoPixelOutsideIt)
{
    const ScratchFile file("band.txt", NumberedLines(100, 20));
    Open(file);
    PaintAll();
    const Picture above = RowPicture(3);
    const Picture below = RowPicture(7);
    View.TopLine = 50;
    PaintRows(4, 3);
    EXPECT_EQ(0, DifferentPixels(above, RowPicture(3)));
    EXPECT_EQ(0, DifferentPixels(below, RowPicture(7)));
    ExpectNormalRow(4, "55 xxxxxxxxxxxxxxxxx");
    ExpectNormalRow(6, "57 xxxxxxxxxxxxxxxxx");
}

class ColumnOfPoint : public PaintedView, public testing::WithParamInterface<const char*> {
protected:
    // Widths of the first 0, 1, 2, ... characters.
    static std::vector<std::int32_t> Widths(const std::string& text)
    {
        std::vector<std::int32_t> widths;
        for (std::size_t count = 0; count <= text.size(); ++count) {
            widths.push_back(Width(text.substr(0, count)));
        }
        return widths;
    }

    // The rule in plain words: the first boundary at or behind the point; the one before it when the point
    // lies left of the character's middle.
    static std::int32_t ExpectedColumn(const std::vector<std::int32_t>& widths, std::int32_t x)
    {
        const std::int32_t target = View.CharWidth * View.LeftColumn - 8 + x;
        if (target < 8) {
            return 0;
        }
        for (std::size_t count = 1; count < widths.size(); ++count) {
            const std::int32_t before = widths[count - 1];
            const std::int32_t behind = widths[count];
            if (behind == target) {
                return static_cast<std::int32_t>(count);
            }
            if (behind > target) {
                return static_cast<std::int32_t>(target >= before + (behind - before) / 2 ? count : count - 1);
            }
        }
        return static_cast<std::int32_t>(widths.size() - 1);
    }
};

TEST_P(ColumnOfPoint, IsTheNearestCharacterBoundary)
{
    const std::string text = "Will it fit, mmm? iiiiii WWWWWW and so on to the end";
    Choose(GetParam());
    const ScratchFile file("columns.txt", text + "\nshort");
    Open(file);
    const std::vector<std::int32_t> widths = Widths(text);
    for (const std::int32_t left : {0, 3, 10}) {
        View.LeftColumn = left;
        for (std::int32_t x = -20; x < 500; ++x) {
            ASSERT_EQ(ExpectedColumn(widths, x), ColumnFromPoint(Windows.View, 1, x)) << "x " << x << ", left " << left;
        }
    }
    EXPECT_EQ(5, ColumnFromPoint(Windows.View, 2, 700));
}

INSTANTIATE_TEST_SUITE_P(Fonts, ColumnOfPoint, testing::Values("Courier", "Tahoma", "System"));

TEST_F(PaintedView, NoColumnIsUnderAPointOutsideTheTextOrInTheDump)
{
    const ScratchFile file("columns.txt", "some text\nmore");
    Open(file);
    EXPECT_LT(0, ColumnFromPoint(Windows.View, 2, 60));
    EXPECT_EQ(0, ColumnFromPoint(Windows.View, 0, 60));
    EXPECT_EQ(0, ColumnFromPoint(Windows.View, -1, 60));
    EXPECT_EQ(0, ColumnFromPoint(Windows.View, 3, 60));
    SwitchMode(true);
    EXPECT_EQ(0, ColumnFromPoint(Windows.View, 1, 60));
}

TEST_F(PaintedView, AColumnIsMeasuredInTheTranslatedText)
{
    Choose("Tahoma");
    const ScratchFile file("ebcdic.txt", "\xE6\xE6\x89\x89\x89\x89"); // WWiiii
    ViewOptions.EbcdicToAscii = true;
    Open(file);
    EXPECT_EQ(2, ColumnFromPoint(Windows.View, 1, 8 + Width("WW")));
    EXPECT_EQ(4, ColumnFromPoint(Windows.View, 1, 8 + Width("WWii")));
}

TEST_F(PaintedView, ManyRepaintsLeaveNoObjectBehind)
{
    const ScratchFile file("repainted.txt", NumberedLines(300, 90));
    Open(file);
    View.SelLineA = View.SelAnchorLine = 3;
    View.SelLineB = 6;
    View.HiliteLine = 8;
    View.HiliteLen = 3;
    PaintAll();
    PumpMessages();
    const int before = FreeGdiObjects();
    for (int round = 0; round < 250; ++round) {
        PaintAll();
        SendMessageA(Windows.View, WM_VSCROLL, round % 2 == 0 ? SB_LINEDOWN : SB_LINEUP, 0);
        ColumnFromPoint(Windows.View, 1, 50);
    }
    SwitchMode(true);
    for (int round = 0; round < 250; ++round) {
        PaintAll();
    }
    SwitchMode(false);
    PumpMessages();
    EXPECT_EQ(before, FreeGdiObjects());
}
