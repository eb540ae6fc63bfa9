#include "support/file_list.h"
#include "support/input.h"
#include "support/marks.h"
#include "support/ui_test.h"

#include <algorithm>

namespace {

// The status line's picture, and the position that it tells while real keys and the real mouse scroll.
class StatusLineTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }
};

Pixels ReadStatus(Program& program)
{
    EXPECT_TRUE(WaitUntil([&] { return IsPainted(program, program.Status()); }));
    const SIZE size = ClientSize(program.Status());
    return program.Inside().Read(program.Status(), 0, 0, size.cx, size.cy);
}

std::uint32_t SystemColour(int index)
{
    const COLORREF colour = GetSysColor(index);
    return static_cast<std::uint32_t>(GetRValue(colour) << 16 | GetGValue(colour) << 8 | GetBValue(colour));
}

// The colour that a sunken panel with a light line above it has at a place outside the text.
std::uint32_t PanelColour(int x, int y, int width, int height)
{
    const int left = 8;
    const int right = width - 8;
    const int top = 3;
    const int bottom = height - 3;
    const bool acrossPanel = x >= left && x <= right;
    const bool alongPanel = y >= top && y <= bottom;
    if (y == 0 || (y == bottom && acrossPanel && x != right) || (x == right && alongPanel && y != top)) {
        return SystemColour(COLOR_BTNHIGHLIGHT);
    }
    if ((y == top && acrossPanel) || (x == left && alongPanel)) {
        return SystemColour(COLOR_BTNSHADOW);
    }
    return LightGrey;
}

void ExpectSunkenPanel(const Pixels& line)
{
    int wrong = 0;
    for (int y = 0; y < line.Height; ++y) {
        for (int x = 0; x < line.Width; ++x) {
            const bool text = x >= 10 && x < line.Width - 9 && y >= 4 && y < line.Height - 3;
            const std::uint32_t colour = line.At(x, y);
            const bool good =
                text ? colour == Black || colour == LightGrey : colour == PanelColour(x, y, line.Width, line.Height);
            wrong += good ? 0 : 1;
            EXPECT_TRUE(good || wrong > 3) << std::hex << colour << std::dec << " at " << x << ", " << y;
        }
    }
    EXPECT_EQ(wrong, 0);
}

void ExpectPosition(Program& program, const std::string& text)
{
    EXPECT_TRUE(WaitUntil([&] { return program.Answers() && program.StatusText() == text; }))
        << program.StatusText() << " instead of " << text;
}

// What has been drawn since the line was painted is what painting it shows.
void ExpectAsPaintedAnew(Program& program)
{
    const Pixels now = ReadStatus(program);
    program.StatusText(); // repaints
    EXPECT_TRUE(ReadStatus(program).Values == now.Values);
}

std::string Position(int line, int column, int percent)
{
    return "Line " + std::to_string(line) + " Col " + std::to_string(column) + "  " + std::to_string(percent) + "%";
}

std::string WideText(int count)
{
    return Repeated(Repeated("0123456789", 200) + "\r\n", static_cast<std::size_t>(202 * count));
}

void PressUntilTop(Program& program, WORD key, int top)
{
    PressKeys({key});
    EXPECT_TRUE(WaitUntil([&] { return program.Top() == top && program.Answers(); }))
        << program.Top() << " instead of " << top;
}

// The pop-up that shows where the thumb points; nullptr while there is none.
HWND ThumbPopUp(const Program& program)
{
    return FindWindowExA(program.View(), nullptr, "KstvSb", nullptr);
}

// Presses the left button on the vertical thumb, which stands at its upper end, and waits until it is held.
bool GrabThumb(const Program& program)
{
    const int x = ClientSize(program.View()).cx + GetSystemMetrics(SM_CXVSCROLL) / 2;
    if (!BringToForeground(program.Frame()) || !MovePointer(program.View(), x, GetSystemMetrics(SM_CYVSCROLL) + 5)) {
        return false;
    }
    PressLeft();
    return WaitUntil([&] { return CaptureOf(program) == program.View(); });
}

bool DragThumbTo(const Program& program, int y)
{
    return MovePointer(program.View(), ClientSize(program.View()).cx + GetSystemMetrics(SM_CXVSCROLL) / 2, y);
}

// The extent of a text in the status line's font.
SIZE MeasureStatusText(const std::string& text)
{
    const HDC screen = GetDC(nullptr);
    const HFONT font = CreateFontA(MulDiv(-10, GetDeviceCaps(screen, LOGPIXELSY), 72), 0, 0, 0, FW_NORMAL, 0, 0, 0, 0,
                                   0, 0, 0, VARIABLE_PITCH | FF_SWISS, "MS Sans Serif");
    const HGDIOBJ former = SelectObject(screen, font);
    SIZE size = {};
    GetTextExtentPoint32A(screen, text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(screen, former);
    DeleteObject(font);
    ReleaseDC(nullptr, screen);
    return size;
}

Pixels ReadWindow(Program& program, HWND window)
{
    const SIZE size = ClientSize(window);
    return program.Inside().Read(window, 0, 0, size.cx, size.cy);
}

// A frame of one pixel, and text on light grey within it.
bool IsDrawnPopUp(const Pixels& popUp)
{
    int frame = 0;
    int grey = 0;
    int black = 0;
    for (int y = 0; y < popUp.Height; ++y) {
        for (int x = 0; x < popUp.Width; ++x) {
            const bool edge = x == 0 || y == 0 || x == popUp.Width - 1 || y == popUp.Height - 1;
            const std::uint32_t colour = popUp.At(x, y);
            frame += edge && colour == Black ? 1 : 0;
            black += !edge && colour == Black ? 1 : 0;
            grey += !edge && colour == LightGrey ? 1 : 0;
        }
    }
    return frame == 2 * (popUp.Width + popUp.Height) - 4 && black > 20 &&
           black + grey == (popUp.Width - 2) * (popUp.Height - 2);
}

} // namespace

TEST_F(StatusLineTest, ItIsASunkenPanelBelowALightLine)
{
    Program program(WriteScratch("one.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectSunkenPanel(ReadStatus(program));
    ASSERT_TRUE(BringToForeground(program.Frame()));
    PressKeys({VK_DOWN}); // the text is drawn into it
    ASSERT_TRUE(WaitUntil([&] { return program.Top() == 1 && program.Answers(); }));
    ExpectSunkenPanel(ReadStatus(program));
    for (const int width : {900, 420}) { // it moves with the window's edge
        SetWindowPos(program.Frame(), nullptr, 0, 0, width, 500, SWP_NOZORDER | SWP_NOMOVE | SWP_NOACTIVATE);
        ASSERT_TRUE(WaitUntil([&] { return ClientSize(program.Status()).cx == ClientSize(program.Frame()).cx; }));
        ExpectSunkenPanel(ReadStatus(program));
    }
}

TEST_F(StatusLineTest, AnotherBackgroundHasNoPanel)
{
    WriteSettings(std::string(FixedFont) + "StFcolour=6\nStBcolour=9\n");
    Program program(WriteScratch("one.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectTextOn(ReadStatus(program), Yellow, DarkBlue);
}

TEST_F(StatusLineTest, WithoutAFileItIsEmpty)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ExpectSunkenPanel(ReadStatus(program));
    EXPECT_EQ(ReadStatus(program).CountOf(Black), 0);
    program.Inside().Drop(program.Frame(), WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForTitle("one.txt"));
    EXPECT_TRUE(WaitUntil([&] { return ReadStatus(program).CountOf(Black) > 20; }));
    ASSERT_TRUE(BringToForeground(program.Frame()));
    PressKeys({VK_ESCAPE});
    ASSERT_TRUE(program.WaitForTitle(""));
    ASSERT_TRUE(WaitUntil([&] { return IsIconic(program.Frame()) != FALSE; }));
    program.Post(WM_SYSCOMMAND, SC_RESTORE);
    EXPECT_TRUE(WaitUntil([&] {
        const Pixels line = ReadStatus(program);
        return !IsIconic(program.Frame()) && line.CountOf(LightGrey) > 1000 && line.CountOf(Black) == 0;
    }));
}

TEST_F(StatusLineTest, ItTellsLineColumnAndPercent)
{
    Program program(WriteScratch("wide.txt", WideText(1000)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    const int rows = RowsOf(program);
    const auto percent = [&](int top) { return std::min((rows + top + 1) * 100 / 1000, 100); };
    ExpectPosition(program, Position(1, 1, percent(0)));
    PressUntilTop(program, VK_DOWN, 1);
    ExpectAsPaintedAnew(program);
    ExpectPosition(program, Position(2, 1, percent(1)));
    PressUntilTop(program, VK_NEXT, 1 + rows);
    ExpectAsPaintedAnew(program);
    ExpectPosition(program, Position(2 + rows, 1, percent(1 + rows)));
    PressKeys({VK_RIGHT});
    ASSERT_TRUE(WaitUntil([&] { return program.Horizontal().Position == 8 && program.Answers(); }));
    ExpectAsPaintedAnew(program);
    ExpectPosition(program, Position(2 + rows, 9, percent(1 + rows)));
    PressUntilTop(program, VK_END, 1000 - rows);
    ExpectAsPaintedAnew(program);
    ExpectPosition(program, Position(1001 - rows, 9, 100));
    SetTop(program, 989 - rows);
    ExpectPosition(program, Position(990 - rows, 9, 99));
    SetTop(program, 988 - rows);
    ExpectPosition(program, Position(989 - rows, 9, 98));
}

TEST_F(StatusLineTest, AFileThatFitsIsShownToItsEnd)
{
    Program program(WriteScratch("one.txt", NumberedLines(3)));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectPosition(program, Position(1, 1, 100));
}

TEST_F(StatusLineTest, HexModeCountsRows)
{
    Program program(WriteScratch("data.bin", std::string(16000, '\x02')));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    const int rows = RowsOf(program);
    ExpectPosition(program, Position(1, 1, (rows + 1) / 10));
    PressUntilTop(program, VK_NEXT, rows);
    ExpectAsPaintedAnew(program);
    ExpectPosition(program, Position(rows + 1, 1, (2 * rows + 1) / 10));
    SetTop(program, 989 - rows);
    ExpectPosition(program, Position(990 - rows, 1, 99));
    PressUntilTop(program, VK_END, 1000 - rows);
    ExpectPosition(program, Position(1001 - rows, 1, 100));
}

TEST_F(StatusLineTest, ThePercentageOfALargeFileIsOfItsHundredthPart)
{
    // The end of what is shown lies just behind one half of the file less than it takes to be 50 percent.
    const struct {
        std::int32_t Size;
        int LastRow;
        const char* Percent;
    } files[] = {{11999950, 374997, "49%"}, {12000099, 375000, "50%"}, {12000099, 374999, "49%"}};
    for (const auto& file : files) {
        Program program(WriteSparse("large.bin", file.Size));
        ASSERT_TRUE(program.WaitForFrame());
        SetTop(program, file.LastRow - RowsOf(program) - 1);
        EXPECT_TRUE(program.StatusText().ends_with("Col 1  " + std::string(file.Percent))) << program.StatusText();
        EXPECT_EQ(program.StatusText().substr(0, 8), "Line 374") << file.LastRow;
    }
}

TEST_F(StatusLineTest, AListIsToldBehindThePosition)
{
    const TestDirectory directory("statlist");
    directory.Write("a.txt", NumberedLines(500));
    directory.Write("b.txt", "b");
    directory.Write("c.txt", "c");
    Program program(directory.PathOf("*.txt"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    ASSERT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 3]"));
    const std::string percent = std::to_string((RowsOf(program) + 2) / 5);
    PressUntilTop(program, VK_DOWN, 1);
    ExpectAsPaintedAnew(program);
    ExpectPosition(program, "Line 2 Col 1  " + percent + "%  [File 1 of 3]");
    PressKeys({VK_CONTROL, VK_NEXT});
    ASSERT_TRUE(program.WaitForTitle("b.txt"));
    ExpectPosition(program, "Line 1 Col 1  100%  [File 2 of 3]");
}

TEST_F(StatusLineTest, AMenuShowsItsHelpInThePanelAndGivesThePositionBack)
{
    Program program(WriteScratch("one.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    const Pixels position = ReadStatus(program);
    ASSERT_TRUE(OpenMenu(program, 'S'));
    EXPECT_TRUE(WaitUntil([&] { return program.StatusText() == "Search the file for a character string"; }));
    PressKeys({VK_UP}); // round to the last item
    EXPECT_TRUE(WaitUntil([&] { return program.StatusText() == "Goto to a specified file position"; }));
    ExpectSunkenPanel(ReadStatus(program));
    EXPECT_GT(ReadStatus(program).CountOf(Black), position.CountOf(Black));
    PressKeys({VK_ESCAPE});
    PressKeys({VK_ESCAPE});
    EXPECT_TRUE(WaitUntil([&] { return !IsInMenu(program) && ReadStatus(program).Values == position.Values; }));
}

TEST_F(StatusLineTest, ADraggedThumbShowsItsLineInAFrameUntilItIsReleased)
{
    Program program(WriteScratch("lines.txt", NumberedLines(100000)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_EQ(ThumbPopUp(program), nullptr);
    const SIZE view = ClientSize(program.View());
    ASSERT_TRUE(GrabThumb(program));
    ASSERT_TRUE(DragThumbTo(program, view.cy / 3));
    ASSERT_TRUE(WaitUntil([&] { return ThumbPopUp(program) != nullptr; }));
    const HWND popUp = ThumbPopUp(program);
    EXPECT_TRUE(WaitUntil([&] { return IsDrawnPopUp(ReadWindow(program, popUp)); }));
    const SIZE text = MeasureStatusText("Line: 100,000");
    const RECT place = PlaceOf(popUp);
    EXPECT_EQ(place.right - place.left, text.cx + 10);
    EXPECT_EQ(place.bottom - place.top, text.cy * 3 / 2);
    EXPECT_EQ(place.right, view.cx - GetSystemMetrics(SM_CXVSCROLL));
    const Pixels before = ReadWindow(program, popUp);
    ASSERT_TRUE(DragThumbTo(program, view.cy * 2 / 3));
    EXPECT_TRUE(WaitUntil([&] {
        const Pixels now = ReadWindow(program, popUp);
        return now.Values != before.Values && IsDrawnPopUp(now);
    }));
    EXPECT_EQ(ThumbPopUp(program), popUp);
    EXPECT_EQ(program.StatusText().substr(0, 12), "Line 1 Col 1"); // the view waits
    ReleaseLeft();
    EXPECT_TRUE(WaitUntil([&] { return ThumbPopUp(program) == nullptr; }));
    EXPECT_TRUE(WaitUntil([&] { return program.Top() > 0 && IsPainted(program, program.View()); }));
    EXPECT_NE(program.StatusText().substr(0, 12), "Line 1 Col 1");
    const Pixels now = ReadView(program);
    program.ViewTexts();                                 // repaints
    EXPECT_TRUE(ReadView(program).Values == now.Values); // nothing of the pop-up is left
}

TEST_F(StatusLineTest, ADraggedThumbInHexModeShowsItsOffset)
{
    Program program(WriteScratch("data.bin", std::string(200000, '\x02')));
    ASSERT_TRUE(program.WaitForFrame());
    const SIZE view = ClientSize(program.View());
    ASSERT_TRUE(GrabThumb(program));
    program.Inside().StartRecording();
    ASSERT_TRUE(DragThumbTo(program, view.cy / 2));
    ASSERT_TRUE(WaitUntil([&] { return ThumbPopUp(program) != nullptr; }));
    const HWND popUp = ThumbPopUp(program);
    EXPECT_TRUE(WaitUntil([&] { return IsDrawnPopUp(ReadWindow(program, popUp)); }));
    const std::vector<ProbeText> texts = program.Inside().TakeRecorded();
    EXPECT_TRUE(std::any_of(texts.begin(), texts.end(), [&](const ProbeText& text) {
        return text.Window == popUp && std::string(text.Text).starts_with("Offset: ") && text.X == 4;
    }));
    const SIZE text = MeasureStatusText("Offset: 30D40");
    const RECT place = PlaceOf(popUp);
    EXPECT_EQ(place.right - place.left, text.cx + 10 + (text.cx + 10) / 6);
    ReleaseLeft();
    EXPECT_TRUE(WaitUntil([&] { return ThumbPopUp(program) == nullptr && program.Top() > 0; }));
}

TEST_F(StatusLineTest, TheThumbOfASmallFileShowsNoPopUp)
{
    Program program(WriteScratch("lines.txt", NumberedLines(1000)));
    ASSERT_TRUE(program.WaitForFrame());
    const SIZE view = ClientSize(program.View());
    ASSERT_TRUE(GrabThumb(program));
    ASSERT_TRUE(DragThumbTo(program, view.cy / 2));
    EXPECT_TRUE(WaitUntil([&] { return program.Top() > 100; })); // it scrolls at once
    EXPECT_EQ(ThumbPopUp(program), nullptr);
    ReleaseLeft();
    EXPECT_TRUE(WaitUntil([&] { return CaptureOf(program) == nullptr; }));
    EXPECT_EQ(ThumbPopUp(program), nullptr);
}
