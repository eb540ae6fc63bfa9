#include "support/marks.h"

#include "support/input.h"
#include "support/ui_test.h"

namespace {

constexpr int Margin = 8;
constexpr int HexDigitsColumn = 11; // with the one that the row begins at

std::string Run(int row, int first, int last)
{
    return std::to_string(row) + ": " + std::to_string(first) + ".." + std::to_string(last);
}

Pixels Part(const Pixels& pixels, int x, int y, int width, int height)
{
    Pixels part{width, height, {}};
    for (int i = 0; i < width * height; ++i) {
        part.Values.push_back(pixels.At(x + i % width, y + i / width));
    }
    return part;
}

// A run has no other colours, and some text unless it is of blanks.
std::string DescribeRun(const Pixels& view, int row, int first, int last)
{
    const Pixels run = Part(view, first, RowY(row), last - first + 1, std::min(CellHeight(), view.Height - RowY(row)));
    const int other = run.Width * run.Height - run.CountOf(Yellow) - run.CountOf(Black);
    return Run(row, first, last) + (other > 0 ? " with other colours" : "") +
           (run.CountOf(Black) == 0 ? " without text" : "");
}

} // namespace

int ColumnX(int column)
{
    return Margin + column * CellWidth();
}

int RowY(int row)
{
    return row * CellHeight();
}

Pixels ReadView(Program& program)
{
    const SIZE view = ClientSize(program.View());
    return program.Inside().Read(program.View(), 0, 0, view.cx, view.cy);
}

Pixels ReadRow(Program& program, int row)
{
    return program.Inside().Read(program.View(), 0, RowY(row), ClientSize(program.View()).cx, CellHeight());
}

bool IsPainted(const Program& program, HWND window)
{
    return program.Answers() && !GetUpdateRect(window, nullptr, FALSE) && program.Answers();
}

std::string Mark(int row, int first, int last)
{
    return Run(row, first == 0 ? 0 : ColumnX(first), ColumnX(last) - 1);
}

std::string HexMark(int row, int first, int last)
{
    return Run(row, (HexDigitsColumn + 3 * first) * CellWidth(), (HexDigitsColumn + 3 * last - 1) * CellWidth() - 1);
}

Marks MarksShown(Program& program)
{
    const Pixels view = ReadView(program);
    const int cell = CellHeight();
    Marks marks;
    for (int row = 0; row * cell < view.Height; ++row) {
        int first = -1;
        for (int x = 0; x <= view.Width; ++x) {
            bool marked = false;
            for (int y = row * cell; x < view.Width && y < std::min((row + 1) * cell, view.Height); ++y) {
                marked = marked || view.At(x, y) == Yellow;
            }
            if (marked && first < 0) {
                first = x;
            } else if (!marked && first >= 0) {
                marks.push_back(DescribeRun(view, row, first, x - 1));
                first = -1;
            }
        }
    }
    return marks;
}

void ExpectMarks(Program& program, const Marks& marks)
{
    EXPECT_TRUE(WaitUntil([&] { return MarksShown(program) == marks; }, 3000))
        << testing::PrintToString(MarksShown(program)) << " instead of " << testing::PrintToString(marks);
}

void ExpectTextOn(const Pixels& pixels, std::uint32_t text, std::uint32_t background)
{
    EXPECT_GT(pixels.CountOf(text), 10);
    EXPECT_EQ(pixels.CountOf(text) + pixels.CountOf(background), pixels.Width * pixels.Height);
}

POINT PointOf(int row, int column)
{
    return {ColumnX(column) + 1, RowY(row) + CellHeight() / 2};
}

HWND CaptureOf(const Program& program)
{
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(program.Frame(), nullptr), &info);
    return info.hwndCapture;
}

bool DragInView(const Program& program, POINT from, POINT to)
{
    if (!BringToForeground(program.Frame()) || !MovePointer(program.View(), from.x, from.y)) {
        return false;
    }
    PressLeft();
    const bool moved =
        WaitUntil([&] { return CaptureOf(program) == program.View(); }) && MovePointer(program.View(), to.x, to.y);
    ReleaseLeft();
    return moved && WaitUntil([&] { return CaptureOf(program) == nullptr; });
}
