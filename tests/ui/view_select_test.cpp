#include "support/input.h"
#include "support/ui_test.h"

namespace {

// The selection in the view, made by real mouse input and told from the colours on the screen. All lines
// have a fixed-pitch font; a column is a cell right of a margin.
class ViewSelectTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }
};

constexpr int Margin = 8;

int ColumnX(int column)
{
    return Margin + column * CellWidth();
}

int RowY(int row)
{
    return row * CellHeight();
}

// A point just behind the left edge of a column's character: the pointer there means this column.
POINT PointOf(int row, int column)
{
    return {ColumnX(column) + 1, RowY(row) + CellHeight() / 2};
}

// "first..last" of the pixel columns of a row with the marked background, at a height where letters
// hardly are; "" when there are none.
std::string MarkedPixels(Program& program, int row)
{
    const int width = ClientSize(program.View()).cx;
    const Pixels line = program.Inside().Read(program.View(), 0, RowY(row), width, 1);
    int first = -1;
    int last = -1;
    for (int x = 0; x < width; ++x) {
        if (line.At(x, 0) == Yellow) {
            first = first < 0 ? x : first;
            last = x;
        }
    }
    return first < 0 ? "" : std::to_string(first) + ".." + std::to_string(last);
}

// The same for columns first to last - 1.
std::string Columns(int first, int last)
{
    return std::to_string(first == 0 ? 0 : ColumnX(first)) + ".." + std::to_string(ColumnX(last) - 1);
}

std::string WholeRow(const Program& program)
{
    return "0.." + std::to_string(ClientSize(program.View()).cx - 1);
}

// A file of lines of 40 characters each.
std::string Lines(int count)
{
    std::string text;
    for (int i = 1; i <= count; ++i) {
        char line[16];
        snprintf(line, sizeof line, "%08d", i);
        text += line + Repeated("abcdefgh", 32) + "\r\n";
    }
    return text;
}

// Whether the view holds the mouse.
bool HasCapture(const Program& program)
{
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetWindowThreadProcessId(program.Frame(), nullptr), &info) &&
           info.hwndCapture == program.View();
}

bool PressAt(Program& program, POINT point)
{
    if (!MovePointer(program.View(), point.x, point.y)) {
        return false;
    }
    PressLeft();
    return WaitUntil([&] { return HasCapture(program); });
}

bool Release(Program& program)
{
    ReleaseLeft();
    return WaitUntil([&] { return !HasCapture(program); });
}

// Drags from one point to another with the real mouse.
bool Drag(Program& program, POINT from, POINT to)
{
    return BringToForeground(program.Frame()) && PressAt(program, from) && MovePointer(program.View(), to.x, to.y) &&
           Release(program);
}

void ExpectMarked(Program& program, int row, const std::string& pixels)
{
    EXPECT_TRUE(WaitUntil([&] { return MarkedPixels(program, row) == pixels; }, 3000))
        << "row " << row << ": " << MarkedPixels(program, row) << ", not " << pixels;
}

void ExpectNothingMarked(Program& program)
{
    EXPECT_TRUE(WaitUntil(
        [&] {
            const SIZE view = ClientSize(program.View());
            return program.Inside().Read(program.View(), 0, 0, view.cx, view.cy).CountOf(Yellow) == 0;
        },
        3000));
}

} // namespace

TEST_F(ViewSelectTest, TheTestFontIsFixedPitch)
{
    ASSERT_EQ(MeasureFont().tmPitchAndFamily & TMPF_FIXED_PITCH, 0);
    ASSERT_EQ(MeasureFont().tmAveCharWidth, MeasureFont().tmMaxCharWidth);
}

TEST_F(ViewSelectTest, ADragOnOneLineMarksExactlyTheColumnsBetween)
{
    Program program(WriteScratch("lines.txt", Lines(100)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(Drag(program, PointOf(3, 5), PointOf(3, 12)));
    ExpectMarked(program, 3, Columns(5, 12));
    ExpectMarked(program, 2, "");
    ExpectMarked(program, 4, "");
}

TEST_F(ViewSelectTest, ADragToTheLeftMarksTheSame)
{
    Program program(WriteScratch("lines.txt", Lines(100)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(Drag(program, PointOf(3, 12), PointOf(3, 5)));
    ExpectMarked(program, 3, Columns(5, 12));
}

TEST_F(ViewSelectTest, ADragOverLinesMarksTheLinesBetweenToTheRightEdge)
{
    Program program(WriteScratch("lines.txt", Lines(100)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(Drag(program, PointOf(2, 10), PointOf(5, 4)));
    ExpectMarked(program, 1, "");
    ExpectMarked(program, 2, Columns(10, 40));
    ExpectMarked(program, 3, WholeRow(program));
    ExpectMarked(program, 4, WholeRow(program));
    ExpectMarked(program, 5, Columns(0, 4));
    ExpectMarked(program, 6, "");
}

TEST_F(ViewSelectTest, ADragUpwardsMarksTheSame)
{
    Program program(WriteScratch("lines.txt", Lines(100)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(Drag(program, PointOf(5, 4), PointOf(2, 10)));
    ExpectMarked(program, 2, Columns(10, 40));
    ExpectMarked(program, 3, WholeRow(program));
    ExpectMarked(program, 4, WholeRow(program));
    ExpectMarked(program, 5, Columns(0, 4));
}

TEST_F(ViewSelectTest, ASelectionThatShrinksUnmarksWhatItLeaves)
{
    Program program(WriteScratch("lines.txt", Lines(100)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    ASSERT_TRUE(PressAt(program, PointOf(2, 10)));
    for (const POINT point : {PointOf(9, 30), PointOf(0, 3), PointOf(4, 20), PointOf(2, 30), PointOf(2, 15)}) {
        ASSERT_TRUE(MovePointer(program.View(), point.x, point.y));
    }
    ASSERT_TRUE(Release(program));
    for (const int row : {0, 1, 3, 4, 5, 9}) {
        ExpectMarked(program, row, "");
    }
    ExpectMarked(program, 2, Columns(10, 15));
}

TEST_F(ViewSelectTest, MarkedTextIsBlackOnYellow)
{
    Program program(WriteScratch("lines.txt", Lines(100)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(Drag(program, PointOf(3, 5), PointOf(3, 12)));
    ExpectMarked(program, 3, Columns(5, 12));
    const Pixels run = program.Inside().Read(program.View(), ColumnX(5), RowY(3), 7 * CellWidth(), CellHeight());
    EXPECT_GT(run.CountOf(Black), 20);
    EXPECT_EQ(run.CountOf(Blue), 0);
    EXPECT_EQ(run.CountOf(White), 0);
}

TEST_F(ViewSelectTest, SelectsInAScrolledView)
{
    Program program(WriteScratch("wide.txt", Repeated(Repeated("0123456789", 300) + "\r\n", 302 * 200)));
    ASSERT_TRUE(program.WaitForFrame());
    SetTop(program, 50);
    Key(program, VK_RIGHT);
    ASSERT_TRUE(Drag(program, PointOf(3, 5), PointOf(3, 12)));
    ExpectMarked(program, 3, Columns(5, 12));
    // What is selected is the text, not a place on the screen.
    Key(program, VK_LEFT);
    Key(program, VK_UP);
    ExpectMarked(program, 4, Columns(13, 20));
    ExpectMarked(program, 3, "");
}

TEST_F(ViewSelectTest, ASelectionStaysRightWhileItScrolls)
{
    Program program(WriteScratch("lines.txt", Lines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(Drag(program, PointOf(5, 3), PointOf(8, 7)));
    Key(program, VK_DOWN);
    Key(program, VK_DOWN);
    ExpectMarked(program, 3, Columns(3, 40));
    ExpectMarked(program, 4, WholeRow(program));
    ExpectMarked(program, 6, Columns(0, 7));
    Key(program, VK_NEXT);
    ExpectNothingMarked(program);
    Key(program, VK_HOME);
    ExpectMarked(program, 5, Columns(3, 40));
    ExpectMarked(program, 8, Columns(0, 7));
}

TEST_F(ViewSelectTest, AClickWithoutMovementLeavesNoSelection)
{
    Program program(WriteScratch("lines.txt", Lines(100)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    ASSERT_TRUE(PressAt(program, PointOf(3, 5)));
    ASSERT_TRUE(Release(program));
    ExpectNothingMarked(program);
    EXPECT_TRUE(program.Menu(IDM_EDIT_COPY).Greyed);
    EXPECT_TRUE(program.Menu(IDM_FILE_SAVE_AS).Greyed);
}

TEST_F(ViewSelectTest, CopyAndSaveAsAreGreyedAfterAClickAndPossibleAfterADrag)
{
    Program program(WriteScratch("lines.txt", Lines(100)));
    ASSERT_TRUE(program.WaitForFrame());
    const auto expectGreyed = [&](bool greyed) {
        EXPECT_EQ(program.Menu(IDM_EDIT_COPY).Greyed, greyed);
        EXPECT_EQ(program.Menu(IDM_FILE_SAVE_AS).Greyed, greyed);
    };
    expectGreyed(true);
    ASSERT_TRUE(Drag(program, PointOf(3, 5), PointOf(3, 12)));
    expectGreyed(false);
    ASSERT_TRUE(PressAt(program, PointOf(8, 5)));
    expectGreyed(true); // as soon as the selection is gone
    ASSERT_TRUE(Release(program));
    expectGreyed(true);
    ASSERT_TRUE(Drag(program, PointOf(5, 4), PointOf(2, 10)));
    expectGreyed(false);
}

TEST_F(ViewSelectTest, ADragBackToWhereItBeganLeavesNoSelection)
{
    Program program(WriteScratch("lines.txt", Lines(100)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    const POINT start = PointOf(3, 5);
    ASSERT_TRUE(PressAt(program, start));
    ASSERT_TRUE(MovePointer(program.View(), start.x + 5 * CellWidth(), start.y));
    ASSERT_TRUE(MovePointer(program.View(), start.x, start.y));
    ASSERT_TRUE(Release(program));
    ExpectNothingMarked(program);
    EXPECT_TRUE(program.Menu(IDM_EDIT_COPY).Greyed);
}

TEST_F(ViewSelectTest, APressRemovesTheSelection)
{
    Program program(WriteScratch("lines.txt", Lines(100)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(Drag(program, PointOf(2, 10), PointOf(5, 4)));
    ExpectMarked(program, 3, WholeRow(program));
    ASSERT_TRUE(PressAt(program, PointOf(8, 5)));
    ExpectNothingMarked(program);
    ASSERT_TRUE(Release(program));
    ExpectNothingMarked(program);
}

TEST_F(ViewSelectTest, TheStatusLineTellsOfTheSelecting)
{
    Program program(WriteScratch("lines.txt", Lines(100)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    ASSERT_TRUE(PressAt(program, PointOf(3, 5)));
    EXPECT_EQ(program.StatusText(), "Selecting: Use mouse or scroll keys to select text");
    EXPECT_EQ(program.Inside().Cursor(), ProbeCursorShape::Ibeam);
    ASSERT_TRUE(Release(program));
    EXPECT_EQ(program.StatusText().substr(0, 12), "Line 1 Col 1");
    EXPECT_TRUE(WaitUntil([&] { return program.Inside().Cursor() == ProbeCursorShape::Arrow; }));
}

TEST_F(ViewSelectTest, APressInALockedViewSelectsNothing)
{
    for (const char* const lock : {"-L 1 1 0 2 ", "-L 1 1 3 0 ", "-L 1 4 0 0 ", "-L 3 1 0 0 "}) {
        Program program(lock + WriteScratch("lines.txt", Lines(100)));
        ASSERT_TRUE(program.WaitForFrame());
        program.Send(program.View(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(100, RowY(4)));
        EXPECT_FALSE(HasCapture(program)) << lock;
        program.Send(program.View(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(200, RowY(8)));
        program.Send(program.View(), WM_LBUTTONUP, 0, MAKELPARAM(200, RowY(8)));
        ExpectNothingMarked(program);
    }
}

TEST_F(ViewSelectTest, APressWithoutAFileSelectsNothing)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Send(program.View(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(100, RowY(4)));
    EXPECT_FALSE(HasCapture(program));
    program.Send(program.View(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(200, RowY(8)));
    program.Send(program.View(), WM_LBUTTONUP, 0, MAKELPARAM(200, RowY(8)));
    ExpectNothingMarked(program);
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(ViewSelectTest, ThePointerHeldBelowTheWindowSelectsOn)
{
    Program program(WriteScratch("lines.txt", Lines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    ASSERT_TRUE(PressAt(program, PointOf(3, 5)));
    ASSERT_TRUE(MovePointer(program.View(), 100, ClientSize(program.View()).cy + 10));
    EXPECT_TRUE(WaitUntil([&] { return program.Top() >= 10; })); // without another movement
    ASSERT_TRUE(Release(program));
    const int top = program.Top();
    EXPECT_TRUE(StaysFalse([&] { return program.Top() != top; }, 200));
    ExpectMarked(program, 0, WholeRow(program)); // line 11 or later: inside the selection
    SetTop(program, 0);
    ExpectMarked(program, 2, "");
    ExpectMarked(program, 3, Columns(5, 40));
    ExpectMarked(program, 4, WholeRow(program));
    SetTop(program, 400);
    ExpectNothingMarked(program);
}

TEST_F(ViewSelectTest, ThePointerHeldAboveTheWindowSelectsUpwards)
{
    Program program(WriteScratch("lines.txt", Lines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    SetTop(program, 5);
    ASSERT_TRUE(PressAt(program, PointOf(3, 5)));
    ASSERT_TRUE(MovePointer(program.View(), 100, -10));
    EXPECT_TRUE(WaitUntil([&] { return program.Top() == 0; }));
    ExpectMarked(program, 1, WholeRow(program));
    ASSERT_TRUE(Release(program));
    ExpectMarked(program, 0, Columns(5, 40));
    ExpectMarked(program, 8, Columns(0, 5));
    ExpectMarked(program, 9, "");
}

TEST_F(ViewSelectTest, ThePointerHeldRightOfTheWindowScrollsSideways)
{
    Program program(WriteScratch("wide.txt", Repeated(Repeated("0123456789", 300) + "\r\n", 302 * 200)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    ASSERT_TRUE(PressAt(program, PointOf(3, 5)));
    ASSERT_TRUE(MovePointer(program.View(), ClientSize(program.View()).cx + 5, RowY(3) + 4));
    EXPECT_TRUE(WaitUntil([&] { return program.Horizontal().Position >= 5; }));
    ASSERT_TRUE(Release(program));
    EXPECT_EQ(program.Top(), 0);
    Scroll(program, WM_HSCROLL, SB_THUMBPOSITION, 0);
    ExpectMarked(program, 3, std::to_string(ColumnX(5)) + ".." + std::to_string(ClientSize(program.View()).cx - 1));
    ExpectMarked(program, 4, "");
}

TEST_F(ViewSelectTest, ScrollKeysExtendARunningSelection)
{
    Program program(WriteScratch("lines.txt", Lines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    ASSERT_TRUE(PressAt(program, PointOf(3, 5)));
    ASSERT_TRUE(MovePointer(program.View(), PointOf(6, 9).x, PointOf(6, 9).y));
    const int rows = RowsOf(program);
    Key(program, VK_NEXT);
    ExpectMarked(program, 0, WholeRow(program));
    ExpectMarked(program, 6, Columns(0, 9));
    ExpectMarked(program, 7, "");
    ASSERT_TRUE(Release(program));
    EXPECT_EQ(program.Top(), rows);
    Key(program, VK_HOME);
    ExpectMarked(program, 3, Columns(5, 40));
}

TEST_F(ViewSelectTest, SelectsNothingBelowTheLastLine)
{
    Program program(WriteScratch("lines.txt", Lines(5)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(Drag(program, PointOf(3, 5), PointOf(12, 8)));
    ExpectMarked(program, 3, Columns(5, 40));
    ExpectMarked(program, 4, Columns(0, 8));
    ExpectMarked(program, 5, "");
    ExpectMarked(program, 12, "");
}

TEST_F(ViewSelectTest, SelectAllMarksTheWholeText)
{
    Program program(WriteScratch("lines.txt", Lines(100)));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    ExpectMarked(program, 0, Columns(0, 40));
    ExpectMarked(program, 1, WholeRow(program));
    Key(program, VK_END);
    ExpectMarked(program, RowsOf(program) - 2, WholeRow(program));
    ExpectMarked(program, RowsOf(program) - 1, Columns(0, 40));
}

TEST_F(ViewSelectTest, SelectAllMarksAllHexRows)
{
    Program program(WriteScratch("data.bin", std::string(16 * 100 - 5, '\x02')));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    ExpectMarked(program, 0, WholeRow(program));
    Key(program, VK_END);
    ExpectMarked(program, RowsOf(program) - 1, WholeRow(program));
}

TEST_F(ViewSelectTest, HexModeSelectsWholeRows)
{
    Program program(WriteScratch("data.bin", std::string(16 * 100, '\x02')));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(Drag(program, PointOf(2, 30), PointOf(4, 3)));
    ExpectMarked(program, 1, "");
    for (const int row : {2, 3, 4}) {
        ExpectMarked(program, row, WholeRow(program));
    }
    ExpectMarked(program, 5, "");
}

TEST_F(ViewSelectTest, HexModeSelectsTheRowOfASmallMovement)
{
    Program program(WriteScratch("data.bin", std::string(16 * 100, '\x02')));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(Drag(program, PointOf(2, 30), PointOf(2, 32)));
    ExpectMarked(program, 1, "");
    ExpectMarked(program, 2, WholeRow(program));
    ExpectMarked(program, 3, "");
}

TEST_F(ViewSelectTest, AnotherModeRemovesTheSelection)
{
    Program program(WriteScratch("lines.txt", Lines(100)));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    program.Command(IDM_VIEW_HEX);
    ExpectNothingMarked(program);
    program.Command(IDM_VIEW_TEXT);
    ExpectNothingMarked(program);
}

TEST_F(ViewSelectTest, HexModeBeginsAtTheTopLineAndTextModeAtTheTop)
{
    Program program(WriteScratch("lines.txt", Lines(1000)));
    ASSERT_TRUE(program.WaitForFrame());
    SetTop(program, 200); // line 201 begins at byte 200 * 42 = 8400, row 525
    Key(program, VK_RIGHT);
    program.Command(IDM_VIEW_HEX);
    EXPECT_EQ(program.Top(), 525);
    EXPECT_EQ(program.TopText().substr(0, 8), "000020D0");
    EXPECT_EQ(program.Horizontal().Position, 0);
    program.Command(IDM_VIEW_TEXT);
    EXPECT_EQ(program.Top(), 0);
    EXPECT_EQ(program.TopText().substr(0, 8), "00000001");
}

TEST_F(ViewSelectTest, TheSameModeAgainChangesNothing)
{
    Program program(WriteScratch("lines.txt", Lines(1000)));
    ASSERT_TRUE(program.WaitForFrame());
    SetTop(program, 200);
    program.Command(IDM_VIEW_TEXT);
    EXPECT_EQ(program.Top(), 200);
    EXPECT_TRUE(program.Menu(IDM_VIEW_TEXT).Checked);
}

TEST_F(ViewSelectTest, OpeningAnotherFileRemovesTheSelection)
{
    Program program(WriteScratch("lines.txt", Lines(100)));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    ExpectMarked(program, 1, WholeRow(program));
    program.Inside().Drop(program.Frame(), WriteScratch("other.txt", Lines(100)));
    ASSERT_TRUE(program.WaitForTitle("other.txt"));
    ExpectNothingMarked(program);
}
