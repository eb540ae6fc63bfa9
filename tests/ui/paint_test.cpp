#include "support/ui_test.h"

namespace {

class PaintTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }
};

Pixels WholeView(Program& program)
{
    const SIZE view = ClientSize(program.View());
    return program.Inside().Read(program.View(), 0, 0, view.cx, view.cy);
}

// Pixels of a row, from x on.
Pixels Row(Program& program, int row, int x = 0, int width = 0)
{
    const int all = ClientSize(program.View()).cx;
    return program.Inside().Read(program.View(), x, row * CellHeight(), width != 0 ? width : all - x, CellHeight());
}

void ExpectAll(const Pixels& pixels, std::uint32_t colour)
{
    EXPECT_EQ(pixels.CountOf(colour), pixels.Width * pixels.Height)
        << std::hex << colour << ", not " << pixels.At(0, 0);
}

// Nothing but text in one colour on another, and some of both.
void ExpectTextOn(const Pixels& pixels, std::uint32_t text, std::uint32_t background)
{
    EXPECT_GT(pixels.CountOf(text), 10);
    EXPECT_EQ(pixels.CountOf(text) + pixels.CountOf(background), pixels.Width * pixels.Height);
}

// What the view shows now is what it shows when it is painted as a whole.
void ExpectAsPaintedAnew(Program& program)
{
    // Scrolling sideways leaves the painting to the message loop.
    ASSERT_TRUE(WaitUntil([&] { return !GetUpdateRect(program.View(), nullptr, FALSE) && program.Answers(); }));
    const Pixels now = WholeView(program);
    program.ViewTexts(); // repaints
    const Pixels anew = WholeView(program);
    EXPECT_TRUE(now.Values == anew.Values);
}

} // namespace

TEST_F(PaintTest, AnEmptyViewIsAllBackground)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ExpectAll(WholeView(program), Blue);
}

TEST_F(PaintTest, TextIsWhiteOnBlue)
{
    Program program(WriteScratch("one.txt", "HHHHHHHH\r\n\r\nend"));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectTextOn(Row(program, 0), White, Blue);
    ExpectAll(Row(program, 0, 0, 8), Blue); // the margin
    ExpectTextOn(Row(program, 0, 8, 8 * CellWidth()), White, Blue);
    ExpectAll(Row(program, 0, 8 + 8 * CellWidth()), Blue);
    ExpectAll(Row(program, 1), Blue);
    ExpectTextOn(Row(program, 2), White, Blue);
    const Pixels below = program.Inside().Read(program.View(), 0, 3 * CellHeight(), ClientSize(program.View()).cx,
                                               ClientSize(program.View()).cy - 3 * CellHeight());
    ExpectAll(below, Blue); // beyond the last line
}

TEST_F(PaintTest, TextLinesAreWrittenBelowEachOther)
{
    Program program(WriteScratch("lines.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    const std::vector<ProbeText> texts = program.ViewTexts();
    const int height = ClientSize(program.View()).cy;
    ASSERT_EQ(static_cast<int>(texts.size()), (height + CellHeight() - 1) / CellHeight()); // with the one cut off
    for (int row = 0; row < static_cast<int>(texts.size()); ++row) {
        const ProbeText& text = texts[static_cast<std::size_t>(row)];
        EXPECT_EQ(text.X, 8);
        EXPECT_EQ(text.Y, row * CellHeight());
        EXPECT_EQ(std::string(text.Text), "Line " + std::to_string(row + 1));
    }
}

TEST_F(PaintTest, UsesTheColoursOfTheSettings)
{
    WriteSettings(std::string(FixedFont) + "Fcolour=0\nBcolour=8\nMkFcolour=7\nMkBcolour=1\n");
    Program program(WriteScratch("one.txt", "HHHHHHHH\r\nHHHHHHHH\r\nHHHHHHHH"));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectTextOn(Row(program, 0), Black, LightGrey);
    program.Command(IDM_EDIT_SELECT_ALL);
    program.ViewTexts();
    ExpectTextOn(Row(program, 1), White, Blue);
}

TEST_F(PaintTest, HexRowsShowOffsetBytesAndCharacters)
{
    std::string bytes;
    for (int i = 0; i < 256 + 5; ++i) {
        bytes += static_cast<char>(i);
    }
    Program program(WriteScratch("data.txt", bytes));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_VIEW_HEX);
    const std::vector<ProbeText> texts = program.ViewTexts();
    ASSERT_EQ(texts.size(), 17u);
    EXPECT_STREQ(texts[0].Text, "00000000  00 01 02 03 04 05 06 07-08 09 0A 0B 0C 0D 0E 0F   ................");
    EXPECT_STREQ(texts[1].Text, "00000010  10 11 12 13 14 15 16 17-18 19 1A 1B 1C 1D 1E 1F   ...............\x1F");
    EXPECT_STREQ(texts[4].Text, "00000040  40 41 42 43 44 45 46 47-48 49 4A 4B 4C 4D 4E 4F   @ABCDEFGHIJKLMNO");
    EXPECT_STREQ(texts[7].Text, "00000070  70 71 72 73 74 75 76 77-78 79 7A 7B 7C 7D 7E 7F   pqrstuvwxyz{|}~\x7F");
    EXPECT_STREQ(texts[8].Text, "00000080  80 81 82 83 84 85 86 87-88 89 8A 8B 8C 8D 8E 8F   \x80...............");
    EXPECT_STREQ(texts[16].Text, "00000100  00 01 02 03 04                                    .....           ");
    for (int row = 0; row < 17; ++row) {
        EXPECT_EQ(texts[static_cast<std::size_t>(row)].X, CellWidth());
        EXPECT_EQ(texts[static_cast<std::size_t>(row)].Y, row * CellHeight());
    }
    ExpectTextOn(Row(program, 4), White, Blue);
    ExpectAll(Row(program, 17), Blue);
    ExpectAll(Row(program, RowsOf(program) - 1), Blue);
}

TEST_F(PaintTest, AProportionalFontGivesWayToAFixedOneInHexMode)
{
    WriteSettings("WindowSize=40 30 800 500\nFontName=Arial\nFontSize=30\n");
    Program program(WriteScratch("lines.txt", NumberedLines(1000)));
    ASSERT_TRUE(program.WaitForFrame());
    const int textRows = 1000 - program.Vertical().Max;
    program.Command(IDM_VIEW_HEX);
    const std::vector<ProbeText> rows = program.ViewTexts();
    ASSERT_GT(rows.size(), 2u);
    const HDC screen = GetDC(nullptr);
    const HGDIOBJ former = SelectObject(screen, GetStockObject(ANSI_FIXED_FONT));
    TEXTMETRICA stock = {};
    GetTextMetricsA(screen, &stock);
    SelectObject(screen, former);
    ReleaseDC(nullptr, screen);
    EXPECT_EQ(rows[1].Y - rows[0].Y, stock.tmHeight + stock.tmExternalLeading);
    EXPECT_EQ(rows[0].X, stock.tmAveCharWidth);
    program.Command(IDM_VIEW_TEXT);
    EXPECT_EQ(1000 - program.Vertical().Max, textRows); // the chosen font again
}

TEST_F(PaintTest, LockedRowsAreWhiteOnDarkBlueToTheRightEdge)
{
    Program program("-L 1 2 0 2 " + WriteScratch("lines.txt", NumberedLines(200)));
    ASSERT_TRUE(program.WaitForFrame());
    SetTop(program, 50);
    for (const int row : {0, 1}) {
        ExpectTextOn(Row(program, row), White, DarkBlue);
    }
    ExpectTextOn(Row(program, 2), White, Blue);
    const std::vector<ProbeText> texts = program.ViewTexts();
    EXPECT_STREQ(texts[0].Text, "Line 2");
    EXPECT_STREQ(texts[1].Text, "Line 3");
    EXPECT_STREQ(texts[2].Text, "Line 53");
    ExpectAsPaintedAnew(program);
}

TEST_F(PaintTest, LockedColumnsAreWhiteOnDarkBlue)
{
    Program program("-L 1 1 4 0 " + WriteScratch("wide.txt", Repeated(Repeated("HHHHIIII", 296) + "\r\n", 298 * 100)));
    ASSERT_TRUE(program.WaitForFrame());
    Key(program, VK_RIGHT);
    const int border = 8 + 4 * CellWidth();
    for (const int row : {0, 3, 9}) {
        ExpectTextOn(Row(program, row, 0, border), White, DarkBlue);
        ExpectTextOn(Row(program, row, border), White, Blue);
    }
    const std::vector<ProbeText> texts = program.ViewTexts();
    ASSERT_GT(texts.size(), 2u);
    EXPECT_STREQ(texts[0].Text, "HHHH");
    EXPECT_EQ(texts[1].X, border);
    EXPECT_EQ(texts[1].Length, 296 - 8 - 4); // from the first column behind the scrolled ones
    ExpectAsPaintedAnew(program);
}

TEST_F(PaintTest, ScrollingShowsWhatPaintingAnewShows)
{
    std::string text;
    for (int i = 1; i <= 400; ++i) {
        text += std::to_string(i * 7919) + Repeated("the quick brown fox ", static_cast<std::size_t>(i % 230)) + "\r\n";
    }
    Program program(WriteScratch("lines.txt", text));
    ASSERT_TRUE(program.WaitForFrame());
    for (const int key :
         {VK_DOWN, VK_NEXT, VK_UP, VK_RIGHT, VK_DOWN, VK_PRIOR, VK_RIGHT, VK_LEFT, VK_END, VK_UP, VK_HOME}) {
        Key(program, static_cast<WPARAM>(key));
        ExpectAsPaintedAnew(program);
    }
    for (const int line : {1, 6, 3, 30, 28, 200, 199}) {
        SetTop(program, line);
        ExpectAsPaintedAnew(program);
    }
    program.Command(IDM_VIEW_HEX);
    for (const int key : {VK_DOWN, VK_NEXT, VK_UP, VK_END, VK_UP}) {
        Key(program, static_cast<WPARAM>(key));
        ExpectAsPaintedAnew(program);
    }
}

TEST_F(PaintTest, ScrollingUnderALockShowsWhatPaintingAnewShows)
{
    Program program("-L 3 2 6 3 " +
                    WriteScratch("wide.txt", Repeated(Repeated("0123456789abcdefghijklm", 297) + "\r\n", 299 * 300)));
    ASSERT_TRUE(program.WaitForFrame());
    for (const int key : {VK_DOWN, VK_DOWN, VK_RIGHT, VK_NEXT, VK_UP, VK_LEFT, VK_END, VK_HOME}) {
        Key(program, static_cast<WPARAM>(key));
        ExpectAsPaintedAnew(program);
    }
}

TEST_F(PaintTest, AFixedFontHasARulerOfCharacters)
{
    WriteSettings(std::string(FixedFont) + "Ruler=1\n");
    Program program(WriteScratch("wide.txt", Repeated("0123456789", 300)));
    ASSERT_TRUE(program.WaitForFrame());
    std::vector<ProbeText> texts = program.Inside().Repaint(program.Ruler());
    ASSERT_FALSE(texts.empty());
    EXPECT_EQ(std::string(texts[0].Text, 31), " ....*....1....*....2....*....3");
    EXPECT_EQ(texts[0].X, 0); // its leading blank stands over the margin
    EXPECT_EQ(texts[0].Background, RGB(255, 255, 0));
    const SIZE size = ClientSize(program.Ruler());
    ExpectTextOn(program.Inside().Read(program.Ruler(), 0, 0, size.cx, size.cy), Black, Yellow);
    Key(program, VK_RIGHT); // to column 9
    texts = program.Inside().Repaint(program.Ruler());
    ASSERT_FALSE(texts.empty());
    EXPECT_EQ(std::string(texts[0].Text, 14), "..1....*....2.");
}

TEST_F(PaintTest, AProportionalFontHasARulerOfInches)
{
    WriteSettings("WindowSize=40 30 700 500\nFontName=Arial\nRuler=1\n");
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_TRUE(program.Inside().Repaint(program.Ruler()).empty());
    const SIZE size = ClientSize(program.Ruler());
    const Pixels ruler = program.Inside().Read(program.Ruler(), 0, 0, size.cx, size.cy);
    ExpectTextOn(ruler, Black, Yellow);
    const int left = MeasureFont("Arial", -13).tmAveCharWidth;
    EXPECT_EQ(ruler.At(left, 10), Black);
    EXPECT_EQ(ruler.At(left - 1, 10), Yellow);
    const int sixteenth = GetDeviceCaps(GetDC(nullptr), LOGPIXELSX) / 16;
    const int inch = left + 16 * sixteenth;
    for (int y = 1; y < 20; ++y) {
        EXPECT_EQ(ruler.At(inch, y), Black) << y;
    }
    EXPECT_EQ(ruler.At(inch + sixteenth, 19), Black); // a tick of three pixels
    EXPECT_EQ(ruler.At(inch + sixteenth, 15), Yellow);
}

TEST_F(PaintTest, TheStatusLineIsBlackOnLightGrey)
{
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    const std::vector<ProbeText> texts = program.Inside().Repaint(program.Status());
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0].Foreground, RGB(0, 0, 0));
    EXPECT_EQ(texts[0].Background, RGB(192, 192, 192));
    const SIZE size = ClientSize(program.Status());
    const Pixels panel = program.Inside().Read(program.Status(), 10, 4, size.cx - 20, size.cy - 8);
    ExpectTextOn(panel, Black, LightGrey);
    EXPECT_EQ(program.Inside().Read(program.Status(), 2, 2, 4, size.cy - 4).CountOf(LightGrey), 4 * (size.cy - 4));
}

TEST_F(PaintTest, AnUncoveredViewIsPaintedAgain)
{
    Program program(WriteScratch("lines.txt", NumberedLines(200)));
    ASSERT_TRUE(program.WaitForFrame());
    const Pixels before = WholeView(program);
    program.Post(WM_SYSCOMMAND, SC_MINIMIZE);
    ASSERT_TRUE(WaitUntil([&] { return IsIconic(program.Frame()) != FALSE; }));
    program.Post(WM_SYSCOMMAND, SC_RESTORE);
    EXPECT_TRUE(WaitUntil([&] { return !IsIconic(program.Frame()) && WholeView(program).Values == before.Values; }));
}
