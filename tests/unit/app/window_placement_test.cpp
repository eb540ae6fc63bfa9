#include "app/window_placement.h"

#include "app/command_line.h"

#include <gtest/gtest.h>

namespace {

constexpr ScreenMeasures Screen = {1024, 768, 32, 19};

void ExpectRectangle(const WindowRectangle& r, std::int32_t left, std::int32_t top, std::int32_t width,
                     std::int32_t height)
{
    EXPECT_EQ(r.Left, left);
    EXPECT_EQ(r.Top, top);
    EXPECT_EQ(r.Width, width);
    EXPECT_EQ(r.Height, height);
}

} // namespace

TEST(WindowPlacement, WithoutAnySettingLeavesRoomForARowOfIcons)
{
    const WindowPlacement placement = PlaceWindow("", true, "", Screen);
    ExpectRectangle(placement.Rectangle, 0, 0, 1024, 768 - 32 - 2 * 19);
    EXPECT_FALSE(placement.Maximized);
    EXPECT_FALSE(placement.Minimized);
}

TEST(WindowPlacement, SavedRectangleIsTaken)
{
    const WindowPlacement placement = PlaceWindow("10 20 300 400", true, "", Screen);
    ExpectRectangle(placement.Rectangle, 10, 20, 300, 400);
    EXPECT_FALSE(placement.Maximized);
    EXPECT_FALSE(placement.Minimized);
}

TEST(WindowPlacement, SavedFullScreenOpensMaximized)
{
    const WindowPlacement placement = PlaceWindow("0 0 1024 768", true, "", Screen);
    EXPECT_TRUE(placement.Maximized);
    EXPECT_FALSE(placement.Minimized);
}

TEST(WindowPlacement, SavedMaximizedWindowIsClampedToFullScreen)
{
    // As a maximised window's borders lie outside the screen.
    const WindowPlacement placement = PlaceWindow("-4 -4 1032 776", true, "", Screen);
    EXPECT_TRUE(placement.Maximized);
}

TEST(WindowPlacement, FourZerosOpenMinimizedOverTheDefaultRectangle)
{
    const WindowPlacement placement = PlaceWindow("0 0 0 0", true, "", Screen);
    EXPECT_TRUE(placement.Minimized);
    EXPECT_FALSE(placement.Maximized);
    ExpectRectangle(placement.Rectangle, 0, 0, 1024, 698);
}

TEST(WindowPlacement, WithoutExtentTheDefaultRectangleIsTaken)
{
    const WindowPlacement placement = PlaceWindow("100 100 0 0", true, "", Screen);
    EXPECT_FALSE(placement.Minimized);
    ExpectRectangle(placement.Rectangle, 0, 0, 1024, 698);
}

TEST(WindowPlacement, ExtentInOneDirectionIsEnough)
{
    ExpectRectangle(PlaceWindow("10 20 0 400", true, "", Screen).Rectangle, 10, 20, 0, 400);
    ExpectRectangle(PlaceWindow("10 20 300 0", true, "", Screen).Rectangle, 10, 20, 300, 0);
}

TEST(WindowPlacement, FullExtentElsewhereIsNotMaximized)
{
    EXPECT_FALSE(PlaceWindow("1 0 1024 768", true, "", Screen).Maximized);
    EXPECT_FALSE(PlaceWindow("0 1 1024 768", true, "", Screen).Maximized);
    EXPECT_FALSE(PlaceWindow("0 0 1023 768", true, "", Screen).Maximized);
    EXPECT_FALSE(PlaceWindow("0 0 1024 767", true, "", Screen).Maximized);
}

TEST(WindowPlacement, EveryValueIsClampedToTheScreen)
{
    ExpectRectangle(PlaceWindow("2000 2000 2000 2000", true, "", Screen).Rectangle, 1024, 768, 1024, 768);
    ExpectRectangle(PlaceWindow("-5 -5 100 -5", true, "", Screen).Rectangle, 0, 0, 100, 0);
    ExpectRectangle(PlaceWindow("99999999999999999999 -99999999999999999999 5 6", true, "", Screen).Rectangle, 1024, 0,
                    5, 6);
}

TEST(WindowPlacement, SavedRectangleReplacesTheCommandLines)
{
    ExpectRectangle(PlaceWindow("10 20 300 400", true, "1 2 3 4", Screen).Rectangle, 10, 20, 300, 400);
}

TEST(WindowPlacement, CommandLinesRectangleDoesNotHoldWithASection)
{
    ExpectRectangle(PlaceWindow("", true, "1 2 3 4", Screen).Rectangle, 0, 0, 1024, 698);
}

TEST(WindowPlacement, WithoutASectionTheCommandLinesRectangleHolds)
{
    ExpectRectangle(PlaceWindow("", false, "1 2 3 4", Screen).Rectangle, 1, 2, 3, 4);
    ExpectRectangle(PlaceWindow("10 20 300 400", false, "1 2 3 4", Screen).Rectangle, 1, 2, 3, 4);
}

TEST(WindowPlacement, WithoutASectionAndARectangleAllIsZero)
{
    const WindowPlacement placement = PlaceWindow("10 20 300 400", false, "", Screen);
    EXPECT_TRUE(placement.Minimized);
    ExpectRectangle(placement.Rectangle, 0, 0, 1024, 698);
}

TEST(WindowPlacement, CommandLineInErrorHasNoRectangle)
{
    const CommandLine line = ParseCommandLine("-10 20 300 400 -");
    const WindowPlacement placement = PlaceWindow("", line.SectionName[0] != '\0', line.Rectangle, Screen);
    EXPECT_TRUE(placement.Minimized);
}

TEST(WindowPlacement, UnreadableSavedTextCountsAsNone)
{
    for (const char* saved : {"abc", "1 2 3", "1 2 x 4", " ", "1,2,3,4"}) {
        ExpectRectangle(PlaceWindow(saved, true, "", Screen).Rectangle, 0, 0, 1024, 698);
    }
}

TEST(WindowPlacement, DefaultOnATinyScreenIsAsTheArithmeticGivesIt)
{
    ExpectRectangle(DefaultRectangle({100, 50, 32, 19}), 0, 0, 100, -20);
}

TEST(ParseRectangle, ReadsFourNumbers)
{
    WindowRectangle r{};
    EXPECT_TRUE(ParseRectangle("  1\t-2 +3 4rest", r));
    ExpectRectangle(r, 1, -2, 3, 4);
}

TEST(ParseRectangle, LeavesTheRectangleAloneWhenANumberIsMissing)
{
    WindowRectangle r{5, 6, 7, 8};
    EXPECT_FALSE(ParseRectangle("1 2 3", r));
    EXPECT_FALSE(ParseRectangle("", r));
    ExpectRectangle(r, 5, 6, 7, 8);
}
