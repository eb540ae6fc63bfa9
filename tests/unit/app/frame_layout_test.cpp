#include "app/frame_layout.h"

#include "view/view_state.h"

#include <gtest/gtest.h>

namespace {

class Layout : public testing::Test {
protected:
    void SetUp() override
    {
        View = ViewState{};
        ViewOptions = ViewSettings{};
        View.LineHeight = 16;
    }

    void TearDown() override
    {
        View = ViewState{};
        ViewOptions = ViewSettings{};
    }
};

} // namespace

TEST_F(Layout, StandsFromTopToBottom)
{
    ViewOptions.Ruler = 1;
    const FrameLayout layout = LayOutFrame(500, 25);
    EXPECT_EQ(layout.BarHeight, 34);
    EXPECT_EQ(layout.RulerHeight, 16);
    EXPECT_EQ(layout.ViewTop, 50);
    EXPECT_EQ(layout.ViewHeight, 500 - 50 - 25);
    EXPECT_EQ(layout.StatusTop, 475);
    EXPECT_EQ(layout.StatusHeight, 25);
}

TEST_F(Layout, HiddenElementsHaveNoHeight)
{
    ViewOptions.ButtonBar = 0;
    ViewOptions.StatusLine = 0;
    const FrameLayout layout = LayOutFrame(500, 25);
    EXPECT_EQ(layout.BarHeight, 0);
    EXPECT_EQ(layout.RulerHeight, 0);
    EXPECT_EQ(layout.ViewTop, 0);
    EXPECT_EQ(layout.ViewHeight, 500);
    EXPECT_EQ(layout.StatusTop, 500);
    EXPECT_EQ(layout.StatusHeight, 0);
}

TEST_F(Layout, InchRulerIs21PixelsHigh)
{
    ViewOptions.Ruler = 1;
    View.FontIsFixed = false;
    EXPECT_EQ(LayOutFrame(500, 25).RulerHeight, 21);
}

TEST_F(Layout, HexModeHasNoRuler)
{
    ViewOptions.Ruler = 1;
    View.HexMode = true;
    EXPECT_EQ(LayOutFrame(500, 25).RulerHeight, 0);
}

TEST_F(Layout, FrameTooLowLeavesAViewWithoutHeight)
{
    for (const std::int32_t height : {0, 10, 34, 58, 59, 60}) {
        const FrameLayout layout = LayOutFrame(height, 25);
        EXPECT_EQ(layout.ViewHeight, height > 59 ? height - 59 : 0);
        EXPECT_EQ(layout.StatusTop, height - 25);
    }
}
