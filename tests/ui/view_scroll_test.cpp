#include "support/input.h"
#include "support/ui_test.h"

namespace {

class ViewScrollTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }
};

// The pop-up that shows where the thumb points; nullptr while there is none.
HWND ThumbPopUp(const Program& program)
{
    return FindWindowExA(program.View(), nullptr, "KstvSb", nullptr);
}

int Beeps(Program& program)
{
    return program.Inside().Use().Beeps;
}

// Lines of 300 characters, wider than the view.
std::string WideLines(int count)
{
    std::string text;
    for (int i = 1; i <= count; ++i) {
        char line[16];
        snprintf(line, sizeof line, "%08d", i);
        text += line + Repeated("0123456789", 292) + "\r\n";
    }
    return text;
}

// What is left of the first text line when the view is scrolled sideways: where it begins.
int FirstX(Program& program)
{
    const std::vector<ProbeText> texts = program.ViewTexts();
    return texts.empty() ? INT_MIN : texts[0].X;
}

} // namespace

TEST_F(ViewScrollTest, KeysScrollByLinesAndPages)
{
    Program program(WriteScratch("lines.txt", NumberedLines(1000)));
    ASSERT_TRUE(program.WaitForFrame());
    const int rows = RowsOf(program);
    ASSERT_GT(rows, 5);
    EXPECT_EQ(program.Vertical().Max, 1000 - rows);
    const struct {
        int Key;
        int Top;
    } steps[] = {{VK_DOWN, 1},           {VK_DOWN, 2},         {VK_NEXT, 2 + rows},   {VK_NEXT, 2 + 2 * rows},
                 {VK_UP, 1 + 2 * rows},  {VK_PRIOR, 1 + rows}, {VK_END, 1000 - rows}, {VK_UP, 999 - rows},
                 {VK_NEXT, 1000 - rows}, {VK_HOME, 0},         {VK_PRIOR, 0}};
    for (const auto& step : steps) {
        Key(program, static_cast<WPARAM>(step.Key));
        EXPECT_EQ(program.Top(), step.Top) << "key " << step.Key;
        EXPECT_EQ(program.TopText(), "Line " + std::to_string(step.Top + 1));
    }
}

TEST_F(ViewScrollTest, KeysScrollByPagesOfEightColumns)
{
    Program program(WriteScratch("wide.txt", WideLines(50)));
    ASSERT_TRUE(program.WaitForFrame());
    const TEXTMETRICA font = MeasureFont();
    const int maxLeft = (font.tmMaxCharWidth * 300 - ClientSize(program.View()).cx) / font.tmMaxCharWidth + 2;
    EXPECT_EQ(program.Horizontal().Max, maxLeft);
    EXPECT_EQ(FirstX(program), 8);
    Key(program, VK_RIGHT);
    EXPECT_EQ(program.Horizontal().Position, 8);
    EXPECT_EQ(FirstX(program), 8 - 8 * CellWidth());
    Key(program, VK_RIGHT);
    EXPECT_EQ(program.Horizontal().Position, 16);
    EXPECT_EQ(program.StatusText().substr(0, 13), "Line 1 Col 17");
    Key(program, VK_LEFT);
    EXPECT_EQ(program.Horizontal().Position, 8);
    Key(program, VK_LEFT);
    Key(program, VK_LEFT);
    EXPECT_EQ(program.Horizontal().Position, 0);
    for (int i = 0; i <= maxLeft / 8 + 1; ++i) {
        Key(program, VK_RIGHT);
    }
    EXPECT_EQ(program.Horizontal().Position, maxLeft);
}

TEST_F(ViewScrollTest, RealKeysScroll)
{
    Program program(WriteScratch("lines.txt", NumberedLines(1000)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    const int rows = RowsOf(program);
    const struct {
        WORD Key;
        int Top;
    } steps[] = {{VK_DOWN, 1}, {VK_NEXT, 1 + rows}, {VK_UP, rows}, {VK_PRIOR, 0}, {VK_END, 1000 - rows}, {VK_HOME, 0}};
    for (const auto& step : steps) {
        PressKeys({step.Key});
        EXPECT_TRUE(WaitUntil([&] { return program.Top() == step.Top; })) << "key " << step.Key;
    }
}

TEST_F(ViewScrollTest, KeysScrollHexRows)
{
    Program program(WriteScratch("data.bin", std::string(50000, '\x02')));
    ASSERT_TRUE(program.WaitForFrame());
    const int rows = RowsOf(program);
    EXPECT_EQ(program.Vertical().Max, 50000 / 16 - rows);
    Key(program, VK_NEXT);
    EXPECT_EQ(program.Top(), rows);
    Key(program, VK_DOWN);
    char offset[16];
    snprintf(offset, sizeof offset, "%08X", (rows + 1) * 16);
    EXPECT_EQ(program.TopText().substr(0, 8), offset);
    Key(program, VK_END);
    EXPECT_EQ(program.Top(), 50000 / 16 - rows);
}

TEST_F(ViewScrollTest, HexRowsScrollSidewaysInANarrowWindow)
{
    WriteSettings("WindowSize=40 30 300 400\nFontName=Courier\nFontSize=15\n");
    Program program(WriteScratch("data.bin", std::string(5000, '\x02')));
    ASSERT_TRUE(program.WaitForFrame());
    const TEXTMETRICA font = MeasureFont();
    const int maxLeft = (font.tmMaxCharWidth * 76 - ClientSize(program.View()).cx) / font.tmMaxCharWidth;
    ASSERT_GT(maxLeft, 8);
    EXPECT_EQ(program.Horizontal().Max, maxLeft);
    EXPECT_EQ(FirstX(program), CellWidth());
    Key(program, VK_RIGHT);
    EXPECT_EQ(program.Horizontal().Position, 8);
    EXPECT_EQ(FirstX(program), -7 * CellWidth());
}

TEST_F(ViewScrollTest, BeepsOnceForAGestureBeyondAnEnd)
{
    Program program(WriteScratch("lines.txt", NumberedLines(1000)));
    ASSERT_TRUE(program.WaitForFrame());
    const int before = Beeps(program);
    Scroll(program, WM_VSCROLL, SB_LINEUP);
    EXPECT_EQ(Beeps(program), before + 1);
    Scroll(program, WM_VSCROLL, SB_LINEUP);
    Scroll(program, WM_VSCROLL, SB_PAGEUP);
    EXPECT_EQ(Beeps(program), before + 1);
    Scroll(program, WM_VSCROLL, SB_ENDSCROLL);
    Scroll(program, WM_VSCROLL, SB_LINEUP);
    EXPECT_EQ(Beeps(program), before + 2);
    Scroll(program, WM_VSCROLL, SB_ENDSCROLL);
    Scroll(program, WM_VSCROLL, SB_BOTTOM);
    EXPECT_EQ(Beeps(program), before + 2);
    Scroll(program, WM_VSCROLL, SB_LINEDOWN);
    EXPECT_EQ(Beeps(program), before + 3);
    Scroll(program, WM_HSCROLL, SB_ENDSCROLL);
    Scroll(program, WM_HSCROLL, SB_LINELEFT);
    EXPECT_EQ(Beeps(program), before + 4);
}

TEST_F(ViewScrollTest, ScrollBarMessagesScroll)
{
    Program program(WriteScratch("wide.txt", WideLines(1000)));
    ASSERT_TRUE(program.WaitForFrame());
    const int rows = RowsOf(program);
    const struct {
        int Code;
        int Top;
    } vertical[] = {{SB_LINEDOWN, 1}, {SB_PAGEDOWN, 1 + rows},  {SB_LINEUP, rows},
                    {SB_PAGEUP, 0},   {SB_BOTTOM, 1000 - rows}, {SB_TOP, 0}};
    for (const auto& step : vertical) {
        Scroll(program, WM_VSCROLL, step.Code);
        EXPECT_EQ(program.Top(), step.Top) << "code " << step.Code;
    }
    const struct {
        int Code;
        int Left;
    } horizontal[] = {{SB_LINERIGHT, 1}, {SB_PAGERIGHT, 9}, {SB_LINELEFT, 8}, {SB_PAGELEFT, 0}};
    for (const auto& step : horizontal) {
        Scroll(program, WM_HSCROLL, step.Code);
        EXPECT_EQ(program.Horizontal().Position, step.Left) << "code " << step.Code;
    }
}

TEST_F(ViewScrollTest, TheHorizontalThumbScrollsOnlyWhenItIsReleased)
{
    Program program(WriteScratch("wide.txt", WideLines(10)));
    ASSERT_TRUE(program.WaitForFrame());
    Scroll(program, WM_HSCROLL, SB_THUMBTRACK, 40);
    EXPECT_EQ(program.Horizontal().Position, 0);
    Scroll(program, WM_HSCROLL, SB_THUMBPOSITION, 40);
    EXPECT_EQ(program.Horizontal().Position, 40);
    Scroll(program, WM_HSCROLL, SB_TOP);
    Scroll(program, WM_HSCROLL, SB_BOTTOM);
    EXPECT_EQ(program.Horizontal().Position, 40);
    Scroll(program, WM_HSCROLL, SB_THUMBPOSITION, 30000);
    EXPECT_EQ(program.Horizontal().Position, program.Horizontal().Max);
}

TEST_F(ViewScrollTest, TheThumbOfASmallFileScrollsAtOnce)
{
    Program program(WriteScratch("lines.txt", NumberedLines(1000)));
    ASSERT_TRUE(program.WaitForFrame());
    Scroll(program, WM_VSCROLL, SB_THUMBTRACK, 123);
    EXPECT_EQ(program.Top(), 123);
    EXPECT_EQ(ThumbPopUp(program), nullptr);
    Scroll(program, WM_VSCROLL, SB_THUMBPOSITION, 456);
    EXPECT_EQ(program.Top(), 456);
    EXPECT_EQ(program.TopText(), "Line 457");
}

TEST_F(ViewScrollTest, TheThumbOfALargeFileShowsWhereItPoints)
{
    Program program(WriteScratch("lines.txt", NumberedLines(100000)));
    ASSERT_TRUE(program.WaitForFrame());
    const int maxTop = 100000 - RowsOf(program);
    ASSERT_EQ(maxTop / 32000 + 1, 4);
    EXPECT_EQ(program.Vertical().Max, maxTop / 4);
    program.Inside().StartRecording();
    Scroll(program, WM_VSCROLL, SB_THUMBTRACK, 1234);
    const HWND popUp = ThumbPopUp(program);
    ASSERT_NE(popUp, nullptr);
    EXPECT_TRUE(IsWindowVisible(popUp));
    EXPECT_EQ(program.Top(), 0); // the view stays
    const std::vector<ProbeText> texts = program.Inside().TakeRecorded();
    ASSERT_FALSE(texts.empty());
    EXPECT_STREQ(texts.back().Text, "Line: 4,937");
    EXPECT_EQ(texts.back().Window, popUp);
    const RECT place = PlaceOf(popUp);
    const SIZE view = ClientSize(program.View());
    EXPECT_EQ(place.right, view.cx - GetSystemMetrics(SM_CXVSCROLL));
    EXPECT_NEAR((place.top + place.bottom) / 2.0, view.cy / 2.0, 1.0);
    Scroll(program, WM_VSCROLL, SB_THUMBTRACK, 2000);
    EXPECT_EQ(ThumbPopUp(program), popUp);
    Scroll(program, WM_VSCROLL, SB_THUMBPOSITION, 2000);
    EXPECT_EQ(ThumbPopUp(program), nullptr);
    EXPECT_FALSE(IsWindow(popUp));
    EXPECT_EQ(program.TopText(), "Line 8001");
}

TEST_F(ViewScrollTest, TheThumbAtItsEndMeansTheEndOfALargeFile)
{
    Program program(WriteScratch("lines.txt", NumberedLines(100000)));
    ASSERT_TRUE(program.WaitForFrame());
    const int maxTop = 100000 - RowsOf(program);
    Scroll(program, WM_VSCROLL, SB_THUMBPOSITION, maxTop / 4);
    EXPECT_EQ(program.TopText(), "Line " + std::to_string(maxTop + 1));
}

TEST_F(ViewScrollTest, TheThumbOfALargeHexFileShowsTheOffset)
{
    Program program(WriteScratch("data.bin", std::string(200000, '\x02')));
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().StartRecording();
    Scroll(program, WM_VSCROLL, SB_THUMBTRACK, 1000);
    EXPECT_NE(ThumbPopUp(program), nullptr);
    const std::vector<ProbeText> texts = program.Inside().TakeRecorded();
    ASSERT_FALSE(texts.empty());
    EXPECT_STREQ(texts.back().Text, "Offset: 3E80");
    Scroll(program, WM_VSCROLL, SB_THUMBPOSITION, 1000);
    EXPECT_EQ(ThumbPopUp(program), nullptr);
    EXPECT_EQ(program.TopText().substr(0, 8), "00003E80");
}

TEST_F(ViewScrollTest, DraggingTheRealThumbShowsThePopUpAndScrollsWhenReleased)
{
    Program program(WriteScratch("lines.txt", NumberedLines(100000)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    const int width = GetSystemMetrics(SM_CXVSCROLL);
    const SIZE view = ClientSize(program.View());
    const int x = view.cx + width / 2;
    const int thumb = GetSystemMetrics(SM_CYVSCROLL) + 5; // just below the arrow
    ASSERT_TRUE(MovePointer(program.View(), x, thumb));
    PressLeft();
    // The press is taken when the arrow keys of the bar have been ruled out: wait for the drag to take.
    ASSERT_TRUE(WaitUntil([&] {
        GUITHREADINFO info = {};
        info.cbSize = sizeof info;
        return GetGUIThreadInfo(GetWindowThreadProcessId(program.Frame(), nullptr), &info) &&
               info.hwndCapture == program.View();
    }));
    ASSERT_TRUE(MovePointer(program.View(), x, view.cy / 2));
    EXPECT_TRUE(WaitUntil([&] { return ThumbPopUp(program) != nullptr; }));
    EXPECT_EQ(program.Top(), 0);
    ReleaseLeft();
    EXPECT_TRUE(WaitUntil([&] { return ThumbPopUp(program) == nullptr; }));
    EXPECT_TRUE(WaitUntil([&] { return program.Top() > 5000; }));
    EXPECT_LT(program.Top(), 20000);
}

TEST_F(ViewScrollTest, ADoubleClickBringsTheLineToTheTop)
{
    Program program(WriteScratch("lines.txt", NumberedLines(1000)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    ASSERT_TRUE(MovePointer(program.View(), 100, 7 * CellHeight() + 3));
    DoubleClickLeft();
    EXPECT_TRUE(WaitUntil([&] { return program.Top() == 7; }));
    EXPECT_EQ(program.TopText(), "Line 8");
    // The top row is there already.
    program.Send(program.View(), WM_LBUTTONDBLCLK, 0, MAKELPARAM(100, 2));
    EXPECT_EQ(program.Top(), 7);
}

TEST_F(ViewScrollTest, ADoubleClickTooFarDownBeeps)
{
    Program program(WriteScratch("lines.txt", NumberedLines(1000)));
    ASSERT_TRUE(program.WaitForFrame());
    Key(program, VK_END);
    Key(program, VK_UP);
    const int top = program.Top();
    const int beeps = Beeps(program);
    program.Send(program.View(), WM_LBUTTONDBLCLK, 0, MAKELPARAM(100, 2 * CellHeight() + 2));
    EXPECT_EQ(program.Top(), top);
    EXPECT_EQ(Beeps(program), beeps + 1);
    program.Send(program.View(), WM_LBUTTONDBLCLK, 0, MAKELPARAM(100, CellHeight() + 2));
    EXPECT_EQ(program.Top(), top + 1);
}

TEST_F(ViewScrollTest, ARightDoubleClickTogglesBetweenTwoPlaces)
{
    Program program(WriteScratch("lines.txt", NumberedLines(1000)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    // The double click remembers the place that it scrolls to.
    program.Send(program.View(), WM_LBUTTONDBLCLK, 0, MAKELPARAM(100, 5 * CellHeight() + 2));
    ASSERT_EQ(program.Top(), 5);
    SetTop(program, 500);
    ASSERT_TRUE(MovePointer(program.View(), 100, 100));
    DoubleClickRight();
    EXPECT_TRUE(WaitUntil([&] { return program.Top() == 5; }));
    program.Send(program.View(), WM_RBUTTONDBLCLK, 0, MAKELPARAM(100, 100));
    EXPECT_EQ(program.Top(), 500);
    program.Send(program.View(), WM_RBUTTONDBLCLK, 0, MAKELPARAM(100, 100));
    EXPECT_EQ(program.Top(), 5);
}

TEST_F(ViewScrollTest, ARightClickWithoutAListBeeps)
{
    Program program(WriteScratch("lines.txt", NumberedLines(1000)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    const int beeps = Beeps(program);
    ASSERT_TRUE(MovePointer(program.View(), 100, 100));
    ClickRight();
    EXPECT_TRUE(WaitUntil([&] { return Beeps(program) == beeps + 1; }));
    EXPECT_EQ(program.Top(), 0);
}

TEST_F(ViewScrollTest, ARequestForATopLineIsHeldWithinTheFile)
{
    Program program(WriteScratch("lines.txt", NumberedLines(1000)));
    ASSERT_TRUE(program.WaitForFrame());
    const int maxTop = 1000 - RowsOf(program);
    for (const auto& [wanted, top] : {std::pair(500, 500), std::pair(5000, maxTop), std::pair(-7, 0),
                                      std::pair(INT_MAX, maxTop), std::pair(INT_MIN, 0)}) {
        SetTop(program, wanted);
        EXPECT_EQ(program.Top(), top) << wanted;
    }
}

TEST_F(ViewScrollTest, LockedRowsShortenThePage)
{
    Program program("-L 1 5 0 3 " + WriteScratch("lines.txt", NumberedLines(1000)));
    ASSERT_TRUE(program.WaitForFrame());
    const int rows = RowsOf(program);
    EXPECT_EQ(program.Top(), 4);
    Key(program, VK_NEXT);
    EXPECT_EQ(program.Top(), 4 + rows - 3);
    Key(program, VK_NEXT);
    EXPECT_EQ(program.Top(), 4 + 2 * (rows - 3));
    Key(program, VK_PRIOR);
    Key(program, VK_PRIOR);
    EXPECT_EQ(program.Top(), 4);
    Key(program, VK_PRIOR);
    SetTop(program, 0);
    EXPECT_EQ(program.Top(), 4); // never above the headings
    EXPECT_EQ(program.TopText(), "Line 5");
}

TEST_F(ViewScrollTest, ADoubleClickInLockedRowsDoesNothing)
{
    Program program("-L 1 1 0 3 " + WriteScratch("lines.txt", NumberedLines(1000)));
    ASSERT_TRUE(program.WaitForFrame());
    for (int row = 0; row <= 3; ++row) {
        program.Send(program.View(), WM_LBUTTONDBLCLK, 0, MAKELPARAM(100, row * CellHeight() + 2));
        EXPECT_EQ(program.Top(), 0) << row;
    }
    program.Send(program.View(), WM_LBUTTONDBLCLK, 0, MAKELPARAM(100, 5 * CellHeight() + 2));
    EXPECT_EQ(program.Top(), 2);
}

TEST_F(ViewScrollTest, AnotherWindowSizeGivesAnotherRange)
{
    Program program(WriteScratch("lines.txt", NumberedLines(1000)));
    ASSERT_TRUE(program.WaitForFrame());
    Key(program, VK_END);
    SetWindowPos(program.Frame(), nullptr, 40, 30, 700, 300, SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_TRUE(WaitUntil([&] { return program.Vertical().Max == 1000 - RowsOf(program); }));
    const int smallTop = program.Top();
    SetWindowPos(program.Frame(), nullptr, 40, 30, 700, 600, SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_TRUE(WaitUntil([&] { return program.Vertical().Max == 1000 - RowsOf(program); }));
    EXPECT_LT(program.Top(), smallTop); // the end is still at the bottom
    EXPECT_EQ(program.Top(), program.Vertical().Max);
}

TEST_F(ViewScrollTest, AWindowTooSmallForALineStillScrolls)
{
    Program program(WriteScratch("lines.txt", NumberedLines(1000)));
    ASSERT_TRUE(program.WaitForFrame());
    SetWindowPos(program.Frame(), nullptr, 40, 30, 120, 20, SWP_NOZORDER | SWP_NOACTIVATE);
    for (const int key : {VK_NEXT, VK_DOWN, VK_END, VK_PRIOR, VK_UP, VK_HOME, VK_RIGHT, VK_LEFT}) {
        Key(program, static_cast<WPARAM>(key));
    }
    program.Command(IDM_VIEW_HEX);
    Key(program, VK_NEXT);
    EXPECT_TRUE(program.Answers());
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(ViewScrollTest, WithoutScrollBarsTheRangesAreEmptyAndKeysScroll)
{
    WriteSettings(std::string(FixedFont) + "ScrollBars=0\n");
    Program program(WriteScratch("wide.txt", WideLines(1000)));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.Vertical().Max, 0);
    EXPECT_EQ(program.Horizontal().Max, 0);
    Key(program, VK_DOWN);
    EXPECT_EQ(program.TopText().substr(0, 8), "00000002");
    Key(program, VK_RIGHT);
    EXPECT_EQ(FirstX(program), 8 - 8 * CellWidth());
    EXPECT_EQ(program.Vertical().Position, 0);
}

TEST_F(ViewScrollTest, TheStatusLineFollows)
{
    Program program(WriteScratch("lines.txt", NumberedLines(1000)));
    ASSERT_TRUE(program.WaitForFrame());
    const int rows = RowsOf(program);
    EXPECT_EQ(program.StatusText(), "Line 1 Col 1  " + std::to_string((rows + 1) / 10) + "%");
    SetTop(program, 500);
    EXPECT_EQ(program.StatusText(), "Line 501 Col 1  " + std::to_string((rows + 501) / 10) + "%");
    Key(program, VK_END);
    EXPECT_EQ(program.StatusText(), "Line " + std::to_string(1001 - rows) + " Col 1  100%");
}

TEST_F(ViewScrollTest, AFileThatFitsDoesNotScroll)
{
    Program program(WriteScratch("lines.txt", NumberedLines(3)));
    ASSERT_TRUE(program.WaitForFrame());
    for (const int key : {VK_NEXT, VK_DOWN, VK_END}) {
        Key(program, static_cast<WPARAM>(key));
    }
    EXPECT_EQ(program.Vertical().Max, 0);
    EXPECT_EQ(program.TopText(), "Line 1");
    EXPECT_EQ(program.ViewTexts().size(), 3u);
}
