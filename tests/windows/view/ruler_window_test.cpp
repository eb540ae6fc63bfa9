// What the ruler shows, pixel for pixel.
#include "app/open_sequence.h"
#include "base/text.h"
#include "harness/picture.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/gdi_holders.h"
#include "view/screen_font.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace {

// The colours of the ruler as it is set up at first: letters and background.
constexpr COLORREF Letters = RGB(0, 0, 0);
constexpr COLORREF Paper = RGB(255, 255, 0);

class Ruler : public RunningProgram {
protected:
    Ruler() : File("ruler.txt", Wide())
    {
        SetWindowPos(Windows.Main, nullptr, 0, 0, 800, 600, SWP_NOZORDER | SWP_NOACTIVATE);
        ViewOptions.Ruler = 1;
        Choose("Courier");
        OpenSequence(Windows.Main, File.Path());
    }

    ~Ruler() override
    {
        ViewOptions.Ruler = 0;
        LayOutFrameAnew();
    }

    static std::string Wide()
    {
        std::string content;
        for (int line = 0; line < 50; ++line) {
            content += std::string(400, 'x') + "\n";
        }
        return content;
    }

    static void Choose(const char* face)
    {
        CopyText(ViewOptions.FontName, face);
        CreateScreenFont(false);
    }

    static RECT Area()
    {
        RECT area = {};
        GetClientRect(Windows.Ruler, &area);
        return area;
    }

    static Picture RulerPicture()
    {
        RedrawWindow(Windows.Ruler, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
        return PictureOf(Windows.Ruler, Area());
    }

    // The ruler with these characters, of the view's font, from its left edge on.
    static Picture WithCharacters(const std::string& characters)
    {
        const RECT area = Area();
        return Drawn(area.right, area.bottom, [&](HDC dc) {
            FillRect(dc, &area, Drawing.RulerBrush);
            SelectedObject font(dc, Drawing.ScreenFont);
            SetTextColor(dc, Letters);
            SetBkColor(dc, Paper);
            TextOutA(dc, 0, 0, characters.c_str(), static_cast<int>(characters.size()));
        });
    }

    static void ScrollTo(std::int32_t column)
    {
        SendMessageA(Windows.View, WM_HSCROLL, MAKEWPARAM(SB_THUMBPOSITION, column), 0);
        ASSERT_EQ(column, View.LeftColumn);
    }

    static std::uint32_t PixelAt(const Picture& picture, int x, int y)
    {
        return picture.Pixels[static_cast<std::size_t>(y * picture.Width + x)];
    }

    static bool IsInk(const Picture& picture, int x, int y)
    {
        return PixelAt(picture, x, y) == 0; // black
    }

    // How far a tick at x reaches up from the bottom line at 20, that line not included; 0 = there is none.
    static int TickHeight(const Picture& picture, int x)
    {
        int height = 0;
        while (height < 20 && IsInk(picture, x, 19 - height)) {
            ++height;
        }
        return height;
    }

    ScratchFile File;
};

} // namespace

TEST_F(Ruler, IsAsHighAsACharacterOfAFixedFontAnd21PixelsOtherwise)
{
    ASSERT_TRUE(View.FontIsFixed);
    EXPECT_EQ(View.LineHeight, Area().bottom);
    Choose("Tahoma");
    ASSERT_FALSE(View.FontIsFixed);
    EXPECT_EQ(21, Area().bottom);
    RECT frame;
    GetClientRect(Windows.Main, &frame);
    EXPECT_EQ(frame.right, Area().right);
}

TEST_F(Ruler, CountsTheColumnsFromBesideTheMarginOn)
{
    const std::string marks =
        " ....*....1....*....2....*....3....*....4....*....5....*....6....*....7....*....8....*....9....*...10"
        "....*...11";
    const Picture picture = RulerPicture();
    EXPECT_EQ(0, DifferentPixels(WithCharacters(marks.substr(0, 110)), picture));
    EXPECT_EQ(2, ColoursIn(picture));
}

TEST_F(Ruler, FollowsTheFirstColumnShown)
{
    const std::string counts =
        "....*....1....*....2....*....3....*....4....*....5....*....6....*....7....*....8....*....9....*...10"
        "....*...11....*...12....*...13....*...14....*...15....*...16....*...17....*...18....*...19....*...20"
        "....*...21....*...22....*...23....*...24....*...25....*...26....*...27....*...28....*...29....*...30";
    for (const std::int32_t column : {1, 5, 9, 10, 11, 37, 99, 100, 123}) {
        SCOPED_TRACE(column);
        ScrollTo(column);
        // Over the margin stands what belongs to the column before the first one shown.
        const std::string marks = counts.substr(static_cast<std::size_t>(column) - 1, 110);
        EXPECT_EQ(0, DifferentPixels(WithCharacters(marks), RulerPicture()));
    }
}

TEST_F(Ruler, ReturnsToItsBeginning)
{
    const Picture first = RulerPicture();
    ScrollTo(37);
    EXPECT_LT(0, DifferentPixels(first, RulerPicture()));
    ScrollTo(0);
    EXPECT_EQ(0, DifferentPixels(first, RulerPicture()));
}

TEST_F(Ruler, OfAProportionalFontCountsInches)
{
    Choose("Tahoma");
    ASSERT_FALSE(View.FontIsFixed);
    const Picture picture = RulerPicture();
    ASSERT_EQ(21, picture.Height);
    EXPECT_EQ(2, ColoursIn(picture));
    const int heights[16] = {20, 3, 5, 3, 9, 3, 5, 3, 16, 3, 5, 3, 9, 3, 5, 3};
    const int step = Drawing.LogPixelsX / 16;
    ASSERT_LT(1, step);
    int ticks = 0;
    for (int x = View.CharWidth; x < picture.Width - 1; x += step) {
        // The line's end itself is not drawn, and at its inches it meets the upper edge.
        const int expected = heights[ticks % 16];
        EXPECT_EQ(expected == 20 ? 20 : expected - 1, TickHeight(picture, x)) << "tick " << ticks;
        if (x + 1 < picture.Width - 1) {
            EXPECT_EQ(0, TickHeight(picture, x + 1)) << "behind tick " << ticks;
        }
        ++ticks;
    }
    EXPECT_LT(64, ticks);
}

TEST_F(Ruler, OfInchesIsABoxFromOneCharacterOnToTheRightEdge)
{
    Choose("Tahoma");
    const Picture picture = RulerPicture();
    for (int x = 0; x < picture.Width; ++x) {
        const bool inBox = x >= View.CharWidth;
        EXPECT_EQ(inBox, IsInk(picture, x, 0)) << x;
        EXPECT_EQ(inBox, IsInk(picture, x, 20)) << x;
    }
    for (int y = 0; y < picture.Height; ++y) {
        EXPECT_TRUE(IsInk(picture, View.CharWidth, y)) << y;
        EXPECT_TRUE(IsInk(picture, picture.Width - 1, y)) << y;
        EXPECT_FALSE(IsInk(picture, View.CharWidth - 1, y)) << y;
    }
}

TEST_F(Ruler, OfInchesIsTheSameWhateverColumnIsShown)
{
    Choose("Tahoma");
    const Picture before = RulerPicture();
    ScrollTo(30);
    EXPECT_EQ(0, DifferentPixels(before, RulerPicture()));
}

TEST_F(Ruler, IsEmptyWhenSwitchedOffOrOfADump)
{
    // The window is shown at its height all the same.
    View.HexMode = true;
    EXPECT_EQ(1, ColoursIn(RulerPicture()));
    View.HexMode = false;
    EXPECT_EQ(2, ColoursIn(RulerPicture()));
    ViewOptions.Ruler = 0;
    const Picture empty = RulerPicture();
    EXPECT_EQ(1, ColoursIn(empty));
    EXPECT_EQ(0xFFFF00u, PixelAt(empty, 0, 0));
}

TEST_F(Ruler, HasNoHeightWhenSwitchedOffOrOfADump)
{
    SendMessageA(Windows.Main, WM_COMMAND, IDM_VIEW_HEX, 0);
    EXPECT_EQ(0, Area().bottom);
    SendMessageA(Windows.Main, WM_COMMAND, IDM_VIEW_TEXT, 0);
    EXPECT_EQ(View.LineHeight, Area().bottom);
    ViewOptions.Ruler = 0;
    LayOutFrameAnew();
    EXPECT_EQ(0, Area().bottom);
}

TEST_F(Ruler, ErasesWithItsBrush)
{
    const Picture erased = Drawn(Area().right, Area().bottom, [](HDC dc) {
        EXPECT_EQ(1, SendMessageA(Windows.Ruler, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0));
    });
    EXPECT_EQ(1, ColoursIn(erased));
    EXPECT_EQ(0xFFFF00u, PixelAt(erased, 0, 0));
}

TEST_F(Ruler, IsInTheColoursOfItsRegion)
{
    LOGBRUSH brush = {};
    GetObjectA(Drawing.RulerBrush, sizeof brush, &brush);
    EXPECT_EQ(Paper, brush.lbColor);
    LOGPEN pen = {};
    GetObjectA(Drawing.RulerPen, sizeof pen, &pen);
    EXPECT_EQ(Letters, pen.lopnColor);
    EXPECT_GE(1, pen.lopnWidth.x);
}

TEST_F(Ruler, FollowsAMatchThatTakesTheViewBack)
{
    const Picture first = RulerPicture();
    ScrollTo(100);
    RulerPicture();
    SendMessageA(Windows.Main, WM_SHOW_MATCH, 3, 1);
    ASSERT_EQ(0, View.LeftColumn);
    EXPECT_TRUE(GetUpdateRect(Windows.Ruler, nullptr, FALSE));
    UpdateWindow(Windows.Ruler);
    EXPECT_EQ(0, DifferentPixels(first, PictureOf(Windows.Ruler, Area())));
    View.HiliteLine = 0;
}
