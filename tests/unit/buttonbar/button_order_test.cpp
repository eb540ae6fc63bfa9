#include "buttonbar/button_order.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

TEST(ButtonOrder, EmptyTextGivesTheFirstSeventeenButtonsInOrder)
{
    ButtonBarState bar;
    ParseButtonOrder("", bar);
    ASSERT_EQ(bar.ButtonCount, 17);
    for (int slot = 0; slot < 17; ++slot) {
        EXPECT_EQ(bar.ButtonOrder[slot], slot);
        EXPECT_EQ(bar.Position[slot], slot + 1);
    }
    for (int button = 17; button < ButtonTotal; ++button) {
        EXPECT_EQ(bar.Position[button], 0);
    }
}

TEST(ButtonOrder, SingleDigitCountsAsEmpty)
{
    ButtonBarState bar;
    ParseButtonOrder("5", bar);
    EXPECT_EQ(bar.ButtonCount, 17);
}

TEST(ButtonOrder, ReadsTwoDigitNumbers)
{
    ButtonBarState bar;
    ParseButtonOrder("230007", bar);
    ASSERT_EQ(bar.ButtonCount, 3);
    EXPECT_EQ(bar.ButtonOrder[0], 23);
    EXPECT_EQ(bar.ButtonOrder[1], 0);
    EXPECT_EQ(bar.ButtonOrder[2], 7);
    EXPECT_EQ(bar.Position[23], 1);
    EXPECT_EQ(bar.Position[0], 2);
    EXPECT_EQ(bar.Position[7], 3);
    EXPECT_EQ(bar.Position[1], 0);
}

TEST(ButtonOrder, OddDigitAtTheEndIsIgnored)
{
    ButtonBarState bar;
    ParseButtonOrder("0102030", bar);
    ASSERT_EQ(bar.ButtonCount, 3);
    EXPECT_EQ(bar.ButtonOrder[2], 3);
}

TEST(ButtonOrder, NumberOf24OrMoreIsNotPlaced)
{
    ButtonBarState bar;
    ParseButtonOrder("022499", bar);
    EXPECT_EQ(bar.ButtonCount, 3);
    EXPECT_EQ(bar.ButtonOrder[0], 2);
    EXPECT_EQ(bar.ButtonOrder[1], 0);
    EXPECT_EQ(bar.Position[0], 0);
    EXPECT_EQ(bar.Position[2], 1);
}

TEST(ButtonOrder, ReadsAtMost24Buttons)
{
    std::string text;
    for (int i = 0; i < 29; ++i) {
        char digits[12];
        snprintf(digits, sizeof digits, "%02i", (i + 3) % ButtonTotal);
        text += digits;
    }
    ButtonBarState bar;
    ParseButtonOrder(text.c_str(), bar);
    ASSERT_EQ(bar.ButtonCount, ButtonTotal);
    EXPECT_EQ(bar.ButtonOrder[0], 3);
    EXPECT_EQ(bar.ButtonOrder[23], 2);
}

TEST(ButtonOrder, RubbishIsHarmless)
{
    for (const char* text : {"-1-2-3", "abcdef", "  9 8", "\xFF\xFE\xFD\xFC", "%s%n%x", "1e2e", "++--", "0x0x"}) {
        ButtonBarState bar;
        ParseButtonOrder(text, bar);
        EXPECT_LE(bar.ButtonCount, ButtonTotal);
        for (const std::int16_t button : bar.ButtonOrder) {
            EXPECT_GE(button, 0) << text;
            EXPECT_LT(button, ButtonTotal) << text;
        }
    }
}

TEST(ButtonOrder, ButtonNamedTwiceRemembersItsLastSlot)
{
    ButtonBarState bar;
    ParseButtonOrder("0404", bar);
    EXPECT_EQ(bar.ButtonCount, 2);
    EXPECT_EQ(bar.ButtonOrder[0], 4);
    EXPECT_EQ(bar.ButtonOrder[1], 4);
    EXPECT_EQ(bar.Position[4], 2);
}
