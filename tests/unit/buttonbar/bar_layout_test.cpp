#include "buttonbar/bar_layout.h"

#include "buttonbar/button_order.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

class BarLayout : public testing::Test {
protected:
    BarLayout() : Before(ButtonBar) { ButtonBar.ButtonCount = 17; }
    ~BarLayout() override { ButtonBar = Before; }

private:
    ButtonBarState Before;
};

constexpr BubbleSpace Space = {100, 50, 84, 1024, 768};

} // namespace

TEST_F(BarLayout, SlotsAre35PixelsApart)
{
    EXPECT_EQ(SlotLeft(0), 0);
    EXPECT_EQ(SlotLeft(16), 560);
    EXPECT_EQ(SlotAt(0), 0);
    EXPECT_EQ(SlotAt(34), 0);
    EXPECT_EQ(SlotAt(35), 1);
    EXPECT_EQ(SlotAt(594), 16);
}

TEST_F(BarLayout, ThereIsNoSlotRightOfTheLastButton)
{
    EXPECT_EQ(SlotAt(595), NoSlot);
    EXPECT_EQ(SlotAt(INT_MAX), NoSlot);
}

// While a button is held the pointer may be anywhere.
TEST_F(BarLayout, ThereIsNoSlotLeftOfTheBar)
{
    EXPECT_EQ(SlotAt(-1), NoSlot);
    EXPECT_EQ(SlotAt(-36), NoSlot);
    EXPECT_EQ(SlotAt(INT_MIN), NoSlot);
}

TEST_F(BarLayout, AnEmptyBarHasNoSlots)
{
    ButtonBar.ButtonCount = 0;
    EXPECT_EQ(SlotAt(0), NoSlot);
    EXPECT_EQ(SlotsBetween(0, 1000).Last, 0);
}

TEST_F(BarLayout, WhatIsPaintedIsWhatTheAreaReaches)
{
    const SlotRange some = SlotsBetween(70, 104);
    EXPECT_EQ(some.First, 2);
    EXPECT_EQ(some.Last, 3);
    const SlotRange all = SlotsBetween(0, 5000);
    EXPECT_EQ(all.First, 0);
    EXPECT_EQ(all.Last, 17);
    const SlotRange none = SlotsBetween(700, 800);
    EXPECT_GE(none.First, none.Last);
}

TEST_F(BarLayout, ABubbleHangsBelowTheMiddleOfItsButton)
{
    const BubblePlace place = PlaceBubble(3, 90, 22, Space);
    EXPECT_EQ(place.Left, 100 + 105 + 17);
    EXPECT_EQ(place.Top, 85);
}

TEST_F(BarLayout, ABubbleIsMovedLeftWhereTheScreenEnds)
{
    const BubbleSpace space = {900, 50, 84, 1024, 768};
    EXPECT_EQ(PlaceBubble(3, 90, 22, space).Left, 1024 - 90);
    EXPECT_EQ(PlaceBubble(0, 107, 22, space).Left, 917) << "it just fits";
    EXPECT_EQ(PlaceBubble(0, 108, 22, space).Left, 916);
}

TEST_F(BarLayout, ABubbleNeverBeginsLeftOfTheScreen)
{
    EXPECT_EQ(PlaceBubble(0, 90, 22, {-200, 50, 84, 1024, 768}).Left, 0);
    EXPECT_EQ(PlaceBubble(0, 2000, 22, Space).Left, 0);
}

TEST_F(BarLayout, ABubbleIsAboveTheBarWhereTheScreenEndsBelow)
{
    EXPECT_EQ(PlaceBubble(0, 90, 22, {100, 712, 745, 1024, 768}).Top, 746) << "it just fits";
    EXPECT_EQ(PlaceBubble(0, 90, 22, {100, 713, 746, 1024, 768}).Top, 713 - 22);
}
