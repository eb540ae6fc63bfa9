#include "support/file_list.h"
#include "support/find_dialog.h"
#include "support/input.h"
#include "support/marks.h"
#include "support/ui_test.h"

#include <map>

namespace {

// Locked headings on the screen. What is locked by which choice is in commands_test.cpp.
class LockTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }
};

constexpr int Columns = 19; // that Enter locks at once, with four rows
constexpr int Rows = 4;

std::string LineNumber(int line)
{
    return std::to_string(1000 + line).substr(1);
}

// Lines of two hundred columns that begin with their number, and look differently in each column. Some have
// "needle" in a column.
std::string WideText(int count, const std::map<int, std::size_t>& needles = {})
{
    std::string text;
    for (int i = 1; i <= count; ++i) {
        std::string line = LineNumber(i) + Repeated("abcdefghijklmnopqrstuvwxyz0123456789ABCDEFGHIJKLM", 197);
        if (const auto needle = needles.find(i); needle != needles.end()) {
            line.replace(needle->second, 6, "needle");
        }
        text += line + "\r\n";
    }
    return text;
}

int Beeps(Program& program)
{
    return program.Inside().Use().Beeps;
}

// Waits until what is to be painted has been painted.
bool Settle(const Program& program)
{
    return WaitUntil([&] { return IsPainted(program, program.View()); });
}

// The command, by real keys. The pointer waits where the choice puts it: a movement that comes in late
// changes nothing then.
bool StartLock(const Program& program)
{
    if (!BringToForeground(program.Frame()) || !MovePointer(program.View(), 20 * CellWidth(), 4 * CellHeight()) ||
        !OpenMenu(program, 'V')) {
        return false;
    }
    PressKeys({'L'});
    return WaitUntil([&] { return CaptureOf(program) == program.View(); });
}

bool EndLock(const Program& program, WORD key)
{
    PressKeys({key});
    return WaitUntil([&] { return CaptureOf(program) == nullptr; }) && Settle(program);
}

bool LockAtOnce(const Program& program)
{
    return StartLock(program) && EndLock(program, VK_RETURN);
}

void ExpectTop(Program& program, int top)
{
    EXPECT_TRUE(WaitUntil([&] { return program.Top() == top; })) << program.Top() << " instead of " << top;
}

// Presses the key and waits until the view stands on this line.
void PressUntilTop(Program& program, WORD key, int top)
{
    PressKeys({key});
    ExpectTop(program, top);
    EXPECT_TRUE(Settle(program));
}

void PressUntilLeft(Program& program, WORD key, int left)
{
    PressKeys({key});
    EXPECT_TRUE(WaitUntil([&] { return program.Horizontal().Position == left; })) << program.Horizontal().Position;
    EXPECT_TRUE(Settle(program));
}

Pixels ReadPart(Program& program, int x, int row, int width, int rows)
{
    return program.Inside().Read(program.View(), x, RowY(row), width, rows * CellHeight());
}

// The right end of the locked columns.
int Border(int columns)
{
    return ColumnX(columns);
}

constexpr int NoBar = -1;

// The picture with the two bars, of two pixels each. What both invert is as before.
Pixels WithBars(Pixels picture, int x, int y)
{
    const auto invert = [&](int left, int top, int width, int height) {
        for (int i = 0; i < width * height; ++i) {
            picture.Values[static_cast<std::size_t>((top + i / width) * picture.Width + left + i % width)] ^= White;
        }
    };
    invert(0, y, picture.Width, 2);
    if (x != NoBar) {
        invert(x, 0, 2, picture.Height);
    }
    return picture;
}

// Where two pictures differ; "" for nowhere.
std::string Difference(const Pixels& a, const Pixels& b)
{
    int count = 0;
    int first = 0;
    for (int i = a.Width * a.Height - 1; i >= 0; --i) {
        if (a.Values[static_cast<std::size_t>(i)] != b.Values[static_cast<std::size_t>(i)]) {
            ++count;
            first = i;
        }
    }
    return count == 0 ? ""
                      : std::to_string(count) + " pixels, the first at " + std::to_string(first % a.Width) + ", " +
                            std::to_string(first / a.Width);
}

// Moves the pointer there and expects the bars. A place that it was at before can come in late from the screen:
// then it moves once more.
void ExpectBarsAt(Program& program, POINT pointer, const Pixels& picture)
{
    EXPECT_TRUE(WaitUntil([&] {
        return MovePointer(program.View(), pointer.x, pointer.y) && Difference(ReadView(program), picture).empty();
    })) << pointer.x
        << ", " << pointer.y << ": " << Difference(ReadView(program), picture);
}

void ExpectPicture(Program& program, const Pixels& picture)
{
    EXPECT_TRUE(WaitUntil([&] { return Difference(ReadView(program), picture).empty(); }, 3000))
        << Difference(ReadView(program), picture);
}

} // namespace

TEST_F(LockTest, TheBarsInvertWhatLiesBelowThemWhereTheChoiceBegins)
{
    Program program(WriteScratch("wide.txt", WideText(300)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(Settle(program));
    const Pixels before = ReadView(program);
    SetTop(program, 70); // it goes to the beginning for the choice
    Key(program, VK_RIGHT);
    ASSERT_TRUE(StartLock(program));
    ExpectPicture(program, WithBars(before, 20 * CellWidth(), 4 * CellHeight()));
    EXPECT_TRUE(WaitUntil([&] { return program.Inside().Cursor() == ProbeCursorShape::Other; })); // four arrows
    ASSERT_TRUE(EndLock(program, VK_ESCAPE));
    EXPECT_TRUE(WaitUntil([&] { return program.Inside().Cursor() == ProbeCursorShape::Arrow; }));
    ExpectPicture(program, before);
    EXPECT_EQ(program.Top(), 0);
    EXPECT_EQ(program.StatusText().substr(0, 12), "Line 1 Col 1"); // no longer what to do
}

TEST_F(LockTest, TheBarsFollowTheMouseFromCellToCell)
{
    Program program(WriteScratch("wide.txt", WideText(300)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(Settle(program));
    const Pixels before = ReadView(program);
    const int cell = CellWidth();
    const int height = CellHeight();
    const SIZE view = ClientSize(program.View());
    const int lastX = (view.cx - 20 * cell) / cell * cell; // twenty columns are free beside it
    ASSERT_TRUE(StartLock(program));
    const struct {
        POINT Pointer;
        int X;
        int Y;
    } steps[] = {
        {{10 * cell + 3, 7 * height + 5}, 10 * cell, 7 * height},
        {{3 * cell, 2 * height - 1}, 3 * cell, height},
        {{3 * cell - 1, 2 * height}, 2 * cell, 2 * height},
        {{-5, -5}, 0, 0},
        {{5 * cell, 10 * height + 1}, 5 * cell, 10 * height},
        {{5 * cell, 15 * height}, 5 * cell, 10 * height},
        {{lastX + cell - 1, height}, lastX, height},
        {{lastX + cell, height}, NoBar, height},
        {{view.cx + 5, 2 * height}, NoBar, 2 * height},
        {{7 * cell, 3 * height}, 7 * cell, 3 * height},
    };
    for (const auto& step : steps) {
        ExpectBarsAt(program, step.Pointer, WithBars(before, step.X, step.Y));
    }
    ASSERT_TRUE(EndLock(program, VK_ESCAPE));
    ExpectPicture(program, before);
}

TEST_F(LockTest, AProportionalFontHasABarForRowsOnly)
{
    WriteSettings("WindowSize=40 30 700 500\nFontName=Arial\nFontSize=15\n");
    Program program(WriteScratch("wide.txt", WideText(300)));
    ASSERT_TRUE(program.WaitForFrame());
    const TEXTMETRICA font = MeasureFont("Arial", -15);
    const int height = font.tmHeight + font.tmExternalLeading;
    const Pixels before = ReadView(program);
    ASSERT_TRUE(BringToForeground(program.Frame()));
    ASSERT_TRUE(MovePointer(program.View(), 20 * font.tmAveCharWidth, 4 * height));
    ASSERT_TRUE(OpenMenu(program, 'V'));
    PressKeys({'L'});
    ASSERT_TRUE(WaitUntil([&] { return CaptureOf(program) == program.View(); }));
    ExpectPicture(program, WithBars(before, NoBar, 4 * height));
    ExpectBarsAt(program, {50, 6 * height + 2}, WithBars(before, NoBar, 6 * height));
    ASSERT_TRUE(EndLock(program, VK_ESCAPE));
    ExpectPicture(program, before);
}

TEST_F(LockTest, OnlyEnterEscAndAClickEndTheChoice)
{
    Program program(WriteScratch("wide.txt", WideText(300)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(Settle(program));
    const Pixels before = ReadView(program);
    ASSERT_TRUE(StartLock(program));
    const int beeps = Beeps(program);
    PressKeys({VK_MENU, VK_F4});
    PressKeys({VK_NEXT});
    PressKeys({VK_F3});
    ClickRight();
    EXPECT_TRUE(WaitUntil([&] { return Beeps(program) >= beeps + 2; }));
    EXPECT_EQ(CaptureOf(program), program.View());
    ExpectPicture(program, WithBars(before, 20 * CellWidth(), 4 * CellHeight()));
    PressLeft();
    EXPECT_TRUE(WaitUntil([&] { return CaptureOf(program) == nullptr; }));
    ReleaseLeft();
    ASSERT_TRUE(Settle(program));
    EXPECT_EQ(Beeps(program), beeps + 2);
    ExpectTextOn(ReadRow(program, 0), White, DarkBlue);
}

TEST_F(LockTest, LockedRowsAndColumnsHaveTheirColoursAndStayInPlace)
{
    Program program(WriteScratch("wide.txt", WideText(300)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(LockAtOnce(program));
    const int width = ClientSize(program.View()).cx;
    const int rows = RowsOf(program);
    const int border = Border(Columns);
    ExpectTextOn(ReadPart(program, 0, 0, width, Rows), White, DarkBlue);
    ExpectTextOn(ReadPart(program, 0, Rows, border, rows - Rows), White, DarkBlue);
    ExpectTextOn(ReadPart(program, border, Rows, width - border, rows - Rows), White, Blue);

    const Pixels heading = ReadPart(program, 0, 0, width, Rows);
    const Pixels secondRow = ReadRow(program, Rows + 1);
    PressUntilTop(program, VK_DOWN, 1);
    EXPECT_EQ(Difference(ReadPart(program, 0, 0, width, Rows), heading), "");
    EXPECT_EQ(Difference(ReadRow(program, Rows), secondRow), "");
    PressUntilTop(program, VK_NEXT, 1 + rows - Rows);
    EXPECT_EQ(Difference(ReadPart(program, 0, 0, width, Rows), heading), "");

    const Pixels before = ReadView(program);
    PressUntilLeft(program, VK_RIGHT, 8);
    const Pixels after = ReadView(program);
    const int scrolled = 8 * CellWidth();
    const int height = rows * CellHeight();
    int wrong = 0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width - scrolled; ++x) {
            wrong += after.At(x, y) != before.At(x < border ? x : x + scrolled, y) ? 1 : 0;
        }
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_NE(Difference(after, before), "");
    ExpectTextOn(ReadPart(program, 0, 0, width, Rows), White, DarkBlue);
    ExpectTextOn(ReadPart(program, 0, Rows, border, rows - Rows), White, DarkBlue);
    ExpectTextOn(ReadPart(program, border, Rows, width - border, rows - Rows), White, Blue);
    PressUntilLeft(program, VK_LEFT, 0);
    EXPECT_EQ(Difference(ReadView(program), before), "");
}

TEST_F(LockTest, UnlockingLeavesNoTraceOfIt)
{
    Program program(WriteScratch("wide.txt", WideText(300)));
    ASSERT_TRUE(program.WaitForFrame());
    SetTop(program, 40);
    ASSERT_TRUE(Settle(program));
    const Pixels before = ReadView(program);
    ASSERT_TRUE(LockAtOnce(program));
    SetTop(program, 40);
    ASSERT_TRUE(Settle(program));
    EXPECT_NE(Difference(ReadView(program), before), "");
    ASSERT_TRUE(OpenMenu(program, 'V'));
    PressKeys({'L'});
    ExpectPicture(program, before);
    EXPECT_EQ(CaptureOf(program), nullptr); // nothing is to be chosen
    EXPECT_EQ(program.Top(), 40);
}

TEST_F(LockTest, NothingIsSelectedWhileLocked)
{
    Program program(WriteScratch("wide.txt", WideText(300)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(LockAtOnce(program));
    const Pixels before = ReadView(program);
    const POINT from = PointOf(8, 25);
    const POINT to = PointOf(10, 35);
    ASSERT_TRUE(MovePointer(program.View(), from.x, from.y));
    PressLeft();
    ASSERT_TRUE(MovePointer(program.View(), to.x, to.y));
    ReleaseLeft();
    const int beeps = Beeps(program);
    PressKeys({VK_PRIOR}); // beeps when all that has been dealt with
    EXPECT_TRUE(WaitUntil([&] { return Beeps(program) > beeps; }));
    EXPECT_EQ(Difference(ReadView(program), before), "");
    EXPECT_TRUE(program.Menu(IDM_EDIT_COPY).Greyed);
    ASSERT_TRUE(OpenMenu(program, 'V'));
    PressKeys({'L'});
    EXPECT_TRUE(WaitUntil([&] { return Difference(ReadView(program), before) != ""; }));
    ASSERT_TRUE(Settle(program));
    EXPECT_TRUE(DragInView(program, PointOf(9, 25), PointOf(9, 35))); // elsewhere: no double click
    ExpectMarks(program, {Mark(9, 25, 35)});
}

TEST_F(LockTest, AMatchIsShownWithinOrBelowTheHeadings)
{
    Program program(WriteScratch("wide.txt", WideText(300, {{2, 30}, {12, 25}, {200, 25}})));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(LockAtOnce(program));
    SetTop(program, 100);
    FindText(program, "needle"); // of the whole text, so also of the headings
    ExpectMarks(program, {Mark(1, 30, 36)});
    ExpectTop(program, 0);
    PressKeys({VK_F3});
    ExpectMarks(program, {Mark(11, 25, 31)});
    ExpectTop(program, 0);
    PressKeys({VK_F3});
    ExpectMarks(program, {Mark(Rows + 1, 25, 31)}); // one line of context between
    ExpectTop(program, 200 - 2 - Rows);
    const HWND dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    ChangeSwitch(dialog, IDC_FIND_SCROLL);
    ChangeSwitch(dialog, IDC_FIND_BACKWARDS);
    Accept(program, dialog);
    ExpectMarks(program, {Mark(Rows, 25, 31)});
    ExpectTop(program, 200 - 1 - Rows);
}

TEST_F(LockTest, TheWholeTextBeginsAtTheHeadings)
{
    Program program("-L 1 3 0 1 " + WriteScratch("wide.txt", WideText(300, {{2, 30}, {3, 30}, {4, 30}})));
    ASSERT_TRUE(program.WaitForFrame());
    FindText(program, "needle");
    ExpectMarks(program, {Mark(0, 30, 36)});
    PressKeys({VK_F3});
    ExpectMarks(program, {Mark(1, 30, 36)});
    PressKeys({VK_F3});
    EXPECT_TRUE(SaysNotFound(program));
    ExpectMarks(program, {});
}

TEST_F(LockTest, ARunAcrossTheBorderIsHighlightedOnBothSides)
{
    Program program(WriteScratch("wide.txt", WideText(300, {{7, 15}})));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(LockAtOnce(program));
    FindText(program, "needle");
    ExpectMarks(program, {Mark(6, 15, 21)});
    PressUntilLeft(program, VK_RIGHT, 8); // columns 27 and up follow the locked ones
    ExpectMarks(program, {Mark(6, 15, 19)});
    PressUntilLeft(program, VK_LEFT, 0);
    ExpectMarks(program, {Mark(6, 15, 21)});
}
