#include "view/font_step.h"

#include <gtest/gtest.h>

#include <climits>
#include <vector>

namespace {

constexpr std::int32_t PixelsPerInch = 96;

std::int32_t SizeOf(std::int32_t points, std::int32_t pixelsPerInch = PixelsPerInch)
{
    return -((points * pixelsPerInch + 36) / 72);
}

// The size after a step; 0 when there was none.
std::int32_t After(std::int32_t size, FontStep step, std::int32_t pixelsPerInch = PixelsPerInch)
{
    const std::int32_t before = size;
    if (StepFontSize(size, step, pixelsPerInch)) {
        return size;
    }
    EXPECT_EQ(size, before) << "no step, no other size";
    return 0;
}

constexpr std::int32_t NoStep = 0;

} // namespace

TEST(FontStep, AStepIsTwoPoints)
{
    EXPECT_EQ(After(SizeOf(10), FontStep::Larger), SizeOf(12));
    EXPECT_EQ(After(SizeOf(10), FontStep::Smaller), SizeOf(8));
}

TEST(FontStep, TheLastStepsEndAtTheLimits)
{
    EXPECT_EQ(After(SizeOf(31), FontStep::Larger), SizeOf(32));
    EXPECT_EQ(After(SizeOf(30), FontStep::Larger), SizeOf(32));
    EXPECT_EQ(After(SizeOf(7), FontStep::Smaller), SizeOf(6));
    EXPECT_EQ(After(SizeOf(8), FontStep::Smaller), SizeOf(6));
}

TEST(FontStep, ThereIsNoStepBeyondTheLimits)
{
    EXPECT_EQ(After(SizeOf(32), FontStep::Larger), NoStep);
    EXPECT_EQ(After(SizeOf(33), FontStep::Larger), NoStep);
    EXPECT_EQ(After(SizeOf(6), FontStep::Smaller), NoStep);
}

// Its target would be 6 points, which is no smaller.
TEST(FontStep, AFontBelowTheLimitCannotBeMadeSmaller)
{
    EXPECT_EQ(After(SizeOf(5), FontStep::Smaller), NoStep);
    EXPECT_EQ(After(0, FontStep::Smaller), NoStep);
}

TEST(FontStep, AFontBeyondALimitComesBackToIt)
{
    EXPECT_EQ(After(SizeOf(100), FontStep::Smaller), SizeOf(32));
    EXPECT_EQ(After(SizeOf(2), FontStep::Larger), SizeOf(6));
    EXPECT_EQ(After(0, FontStep::Larger), SizeOf(6));
}

TEST(FontStep, PointsAreThoseOfTheScreen)
{
    for (const std::int32_t pixels : {72, 96, 100, 120, 144, 192}) {
        EXPECT_EQ(After(SizeOf(20, pixels), FontStep::Larger, pixels), SizeOf(22, pixels)) << pixels;
        EXPECT_EQ(After(SizeOf(20, pixels), FontStep::Smaller, pixels), SizeOf(18, pixels)) << pixels;
    }
}

TEST(FontStep, StepsUpAndDownPassTheSameSizes)
{
    std::vector<std::int32_t> up;
    for (std::int32_t size = SizeOf(6); size != NoStep; size = After(size, FontStep::Larger)) {
        up.push_back(size);
    }
    std::vector<std::int32_t> down;
    for (std::int32_t size = up.back(); size != NoStep; size = After(size, FontStep::Smaller)) {
        down.insert(down.begin(), size);
    }
    EXPECT_EQ(up.size(), 14u);
    EXPECT_EQ(up, down);
}

TEST(FontStep, AnAbsurdSizeOfTheSettingsFileComesBackToTheLimit)
{
    EXPECT_EQ(After(INT_MIN, FontStep::Smaller), SizeOf(32));
    EXPECT_EQ(After(INT_MIN, FontStep::Larger), NoStep);
    EXPECT_EQ(After(-INT_MAX, FontStep::Smaller), SizeOf(32));
}
