#include "view/font_metrics.h"

#include <gtest/gtest.h>

namespace {

void ExpectMended(FontMeasures reported, std::int32_t width, std::int32_t maxWidth, std::int32_t height)
{
    const FontMeasures mended = MendMeasures(reported);
    EXPECT_EQ(mended.CharWidth, width);
    EXPECT_EQ(mended.MaxCharWidth, maxWidth);
    EXPECT_EQ(mended.LineHeight, height);
}

} // namespace

TEST(MendMeasures, SoundFontStaysAsReported)
{
    ExpectMended({7, 14, 16}, 7, 14, 16);
}

TEST(MendMeasures, ZeroWidthsAndHeightBecome12And12And8)
{
    ExpectMended({0, 0, 0}, 12, 12, 8);
}

TEST(MendMeasures, ZeroWidthTakesTheOtherWidth)
{
    ExpectMended({0, 14, 16}, 14, 14, 16);
    ExpectMended({7, 0, 16}, 7, 7, 16);
}

TEST(MendMeasures, ZeroHeightAloneBecomes8)
{
    ExpectMended({7, 14, 0}, 7, 14, 8);
}

TEST(MendMeasures, NegativeCountsAsZero)
{
    ExpectMended({-7, -14, -16}, 12, 12, 8);
    ExpectMended({-7, 14, 16}, 14, 14, 16);
    ExpectMended({INT32_MIN, INT32_MIN, INT32_MIN}, 12, 12, 8);
}

TEST(HeldFontSize, IsNeverPositive)
{
    EXPECT_EQ(HeldFontSize(13), -13);
    EXPECT_EQ(HeldFontSize(-13), -13);
    EXPECT_EQ(HeldFontSize(0), 0);
    EXPECT_EQ(HeldFontSize(INT32_MAX), -INT32_MAX);
    EXPECT_EQ(HeldFontSize(INT32_MIN), -INT32_MAX); // so that it can be turned positive
}

TEST(FontHeight, CutsWhatNoScreenCouldShow)
{
    EXPECT_EQ(FontHeight(-13), -13);
    EXPECT_EQ(FontHeight(-400), -400);
    EXPECT_EQ(FontHeight(-401), -400);
    EXPECT_EQ(FontHeight(INT32_MIN), -400);
    EXPECT_EQ(FontHeight(INT32_MAX), 400);
}
