#include "support/input.h"
#include "support/marks.h"
#include "support/ui_test.h"

#include <algorithm>

namespace {

// The ruler's picture. What it is written with is in paint_test.cpp.
class RulerTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(std::string(FixedFont) + "Ruler=1\n");
    }
};

std::string WideText(int count, int columns = 300)
{
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += Repeated("0123456789", static_cast<std::size_t>(columns)) + "\r\n";
    }
    return text;
}

Pixels ReadRuler(Program& program)
{
    EXPECT_TRUE(WaitUntil([&] { return IsPainted(program, program.Ruler()); }));
    const SIZE size = ClientSize(program.Ruler());
    return program.Inside().Read(program.Ruler(), 0, 0, size.cx, size.cy);
}

// The pixels of a character cell of the ruler.
std::vector<std::uint32_t> Cell(const Pixels& ruler, int cell)
{
    const int width = CellWidth();
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < ruler.Height; ++y) {
        for (int x = cell * width; x < (cell + 1) * width; ++x) {
            pixels.push_back(ruler.At(x, y));
        }
    }
    return pixels;
}

void PressUntilLeft(Program& program, WORD key, int left)
{
    PressKeys({key});
    EXPECT_TRUE(WaitUntil([&] { return program.Horizontal().Position == left; })) << left;
}

} // namespace

TEST_F(RulerTest, AStarStandsOverEveryFifthColumnAndACountOverEveryTenth)
{
    Program program(WriteScratch("wide.txt", WideText(50)));
    ASSERT_TRUE(program.WaitForFrame());
    const Pixels ruler = ReadRuler(program);
    const auto dot = Cell(ruler, 1);
    const auto star = Cell(ruler, 5);
    EXPECT_NE(dot, star);
    for (int cell = 1; cell < ruler.Width / CellWidth(); ++cell) { // over the columns from 1 on
        if (cell % 10 == 5) {
            EXPECT_EQ(Cell(ruler, cell), star) << cell;
        } else if (cell % 10 == 0) {
            EXPECT_NE(Cell(ruler, cell), dot) << cell;
            EXPECT_NE(Cell(ruler, cell), star) << cell;
            EXPECT_NE(Cell(ruler, cell), Cell(ruler, cell % 20 == 0 ? 10 : 20)) << cell; // 1, 2, 3 ...
        } else {
            EXPECT_EQ(Cell(ruler, cell), dot) << cell;
        }
    }
    const auto blank = Cell(ruler, 0);
    EXPECT_EQ(std::count(blank.begin(), blank.end(), Yellow), static_cast<std::ptrdiff_t>(blank.size()));
}

TEST_F(RulerTest, ItScrollsWithTheColumnsBelowIt)
{
    Program program(WriteScratch("wide.txt", WideText(50)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    const Pixels beginning = ReadRuler(program);
    Pixels before = beginning;
    for (int left = 8; left <= 48; left += 8) {
        PressUntilLeft(program, VK_RIGHT, left);
        const Pixels after = ReadRuler(program);
        for (int cell = 0; cell < after.Width / CellWidth() - 8; ++cell) {
            EXPECT_EQ(Cell(after, cell), Cell(before, cell + 8)) << cell << " at " << left;
        }
        before = after;
    }
    for (int left = 40; left >= 0; left -= 8) {
        PressUntilLeft(program, VK_LEFT, left);
    }
    EXPECT_TRUE(ReadRuler(program).Values == beginning.Values);
}

TEST_F(RulerTest, ItReachesAsFarToTheRightAsTheText)
{
    Program program(WriteScratch("wide.txt", WideText(50)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    const Pixels beginning = ReadRuler(program);
    PressUntilLeft(program, VK_RIGHT, 8);
    for (int left = 16; left <= 200; left += 8) {
        PressUntilLeft(program, VK_RIGHT, left);
    }
    const Pixels ruler = ReadRuler(program);
    for (int cell = 0; cell < ruler.Width / CellWidth(); ++cell) {
        const int column = 200 + cell; // the one below the cell, from 1
        if (column % 10 == 5) {
            EXPECT_EQ(Cell(ruler, cell), Cell(beginning, 5)) << cell;
        } else if (column % 10 > 0 && column % 10 < 8) {
            EXPECT_EQ(Cell(ruler, cell), Cell(beginning, 1)) << cell;
        }
    }
}

TEST_F(RulerTest, VerticalScrollingLeavesItAlone)
{
    Program program(WriteScratch("wide.txt", WideText(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    const Pixels before = ReadRuler(program);
    PressKeys({VK_NEXT});
    ASSERT_TRUE(WaitUntil([&] { return program.Top() > 0; }));
    EXPECT_TRUE(ReadRuler(program).Values == before.Values);
}

TEST_F(RulerTest, HexModeGivesItsPlaceToTheView)
{
    Program program(WriteScratch("wide.txt", WideText(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    const Pixels before = ReadRuler(program);
    const RECT place = PlaceOf(program.View());
    EXPECT_EQ(PlaceOf(program.Ruler()).bottom, place.top);
    PressKeys({VK_CONTROL, 'H'});
    ASSERT_TRUE(WaitUntil([&] { return program.Menu(IDM_VIEW_HEX).Checked && program.Answers(); }));
    EXPECT_EQ(PlaceOf(program.View()).top, place.top - CellHeight());
    EXPECT_EQ(PlaceOf(program.View()).bottom, place.bottom);
    // The row of pixels below the button bar is the view's now.
    EXPECT_TRUE(WaitUntil([&] {
        const Pixels row = ReadRow(program, 0);
        return row.CountOf(White) > 100 && row.CountOf(White) + row.CountOf(Blue) == row.Width * row.Height;
    }));
    PressKeys({VK_CONTROL, 'T'});
    ASSERT_TRUE(WaitUntil([&] { return program.Menu(IDM_VIEW_TEXT).Checked && program.Answers(); }));
    EXPECT_EQ(PlaceOf(program.View()).top, place.top);
    EXPECT_TRUE(WaitUntil([&] { return ReadRuler(program).Values == before.Values; }));
}

TEST_F(RulerTest, AnInchIsDividedIntoSixteenths)
{
    WriteSettings("WindowSize=40 30 700 500\nFontName=Arial\nFontSize=15\nRuler=1\n");
    Program program(WriteScratch("wide.txt", WideText(50)));
    ASSERT_TRUE(program.WaitForFrame());
    const Pixels ruler = ReadRuler(program);
    ASSERT_EQ(ruler.Height, 21);
    const int left = MeasureFont("Arial", -15).tmAveCharWidth;
    const HDC screen = GetDC(nullptr);
    const int sixteenth = GetDeviceCaps(screen, LOGPIXELSX) / 16;
    ReleaseDC(nullptr, screen);
    const int right = ClientSize(program.Frame()).cx - 1; // of the box round it
    ASSERT_EQ(ruler.Width, right + 1);
    constexpr int Heights[] = {20, 3, 5, 3, 9, 3, 5, 3, 16, 3, 5, 3, 9, 3, 5, 3};
    for (int x = left; x < ruler.Width; ++x) {
        const bool tick = (x - left) % sixteenth == 0;
        const int height = tick ? Heights[(x - left) / sixteenth % 16] : 0;
        for (int y = 0; y <= 20; ++y) {
            const bool black = y == 0 || y == 20 || x == left || x == right || 20 - y < height;
            EXPECT_EQ(ruler.At(x, y), black ? Black : Yellow) << x << ", " << y;
        }
    }
    for (int x = 0; x < left; ++x) {
        EXPECT_EQ(ruler.At(x, 10), Yellow) << x;
    }
}

TEST_F(RulerTest, TheInchesStayWhileTheTextScrolls)
{
    WriteSettings("WindowSize=40 30 700 500\nFontName=Arial\nFontSize=15\nRuler=1\n");
    Program program(WriteScratch("wide.txt", WideText(50)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    const Pixels before = ReadRuler(program);
    PressUntilLeft(program, VK_RIGHT, 8);
    EXPECT_TRUE(ReadRuler(program).Values == before.Values);
}

TEST_F(RulerTest, ItHasTheColoursOfTheSettings)
{
    WriteSettings(std::string(FixedFont) + "Ruler=1\nRlFcolour=7\nRlBcolour=9\n");
    Program program(WriteScratch("wide.txt", WideText(50)));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectTextOn(ReadRuler(program), White, DarkBlue);
}
