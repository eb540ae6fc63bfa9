#include "buttonbar/button_order.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

std::string Formatted(const ButtonBarState& bar)
{
    char text[ButtonTextSize];
    memset(text, 'x', sizeof text);
    FormatButtonOrder(bar, text);
    return text;
}

ButtonBarState BarOf(const std::vector<int>& buttons)
{
    ButtonBarState bar;
    SetButtonOrder(buttons.data(), static_cast<int>(buttons.size()), bar);
    return bar;
}

std::string AllDigits()
{
    return "000102030405060708091011121314151617181920212223";
}

} // namespace

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

TEST(ButtonOrder, IsSetInTheOrderGiven)
{
    const ButtonBarState bar = BarOf({23, 0, 7});
    ASSERT_EQ(bar.ButtonCount, 3);
    EXPECT_EQ(bar.ButtonOrder[0], 23);
    EXPECT_EQ(bar.ButtonOrder[1], 0);
    EXPECT_EQ(bar.ButtonOrder[2], 7);
    for (int button = 0; button < ButtonTotal; ++button) {
        EXPECT_EQ(bar.Position[button], button == 23 ? 1 : button == 0 ? 2 : button == 7 ? 3 : 0) << button;
    }
}

TEST(ButtonOrder, IsSetWithoutATraceOfTheOneBefore)
{
    ButtonBarState bar;
    ParseButtonOrder(AllDigits().c_str(), bar);
    bar.ShowBubbles = 0;
    const int buttons[] = {5};
    SetButtonOrder(buttons, 1, bar);
    EXPECT_EQ(bar.ButtonCount, 1);
    EXPECT_EQ(bar.ButtonOrder[0], 5);
    for (int i = 0; i < ButtonTotal; ++i) {
        EXPECT_EQ(bar.Position[i], i == 5 ? 1 : 0) << i;
        EXPECT_TRUE(i == 0 || bar.ButtonOrder[i] == 0) << i;
    }
    EXPECT_EQ(bar.ShowBubbles, 0) << "bubbles are no matter of the order";
}

TEST(ButtonOrder, NoButtonsEmptyTheBar)
{
    ButtonBarState bar;
    ParseButtonOrder("040506", bar);
    SetButtonOrder(nullptr, 0, bar);
    EXPECT_EQ(bar.ButtonCount, 0);
    for (int i = 0; i < ButtonTotal; ++i) {
        EXPECT_EQ(bar.Position[i], 0) << i;
        EXPECT_EQ(bar.ButtonOrder[i], 0) << i;
    }
    EXPECT_EQ(Formatted(bar), "");
}

TEST(ButtonOrder, TakesTheFirst24ButtonsOfMore)
{
    std::vector<int> buttons;
    for (int i = 0; i < 48; ++i) {
        buttons.push_back((i + 20) % ButtonTotal);
    }
    const ButtonBarState bar = BarOf(buttons);
    ASSERT_EQ(bar.ButtonCount, ButtonTotal);
    EXPECT_EQ(bar.ButtonOrder[0], 20);
    EXPECT_EQ(bar.ButtonOrder[23], 19);
    EXPECT_EQ(bar.Position[20], 1);
    EXPECT_EQ(bar.Position[19], 24);
}

TEST(ButtonOrder, ButtonSetTwiceRemembersItsLastSlot)
{
    const ButtonBarState bar = BarOf({4, 9, 4});
    ASSERT_EQ(bar.ButtonCount, 3);
    EXPECT_EQ(bar.ButtonOrder[0], 4);
    EXPECT_EQ(bar.ButtonOrder[2], 4);
    EXPECT_EQ(bar.Position[4], 3);
    EXPECT_EQ(bar.Position[9], 2);
    EXPECT_EQ(Formatted(bar), "040904");
}

TEST(ButtonOrder, IsWrittenWithTwoDigitsForEachButton)
{
    EXPECT_EQ(Formatted(BarOf({0})), "00");
    EXPECT_EQ(Formatted(BarOf({13, 7, 0, 23})), "13070023");
}

TEST(ButtonOrder, AFullBarIsWrittenWhole)
{
    ButtonBarState bar;
    ParseButtonOrder(AllDigits().c_str(), bar);
    EXPECT_EQ(Formatted(bar), AllDigits());
}

TEST(ButtonOrder, WhatIsWrittenIsReadBack)
{
    for (const std::vector<int>& buttons : std::vector<std::vector<int>>{{0}, {23, 0, 7}, {4, 9, 4}, {22, 22}}) {
        const ButtonBarState written = BarOf(buttons);
        ButtonBarState read;
        ParseButtonOrder(Formatted(written).c_str(), read);
        ASSERT_EQ(read.ButtonCount, written.ButtonCount);
        for (int i = 0; i < ButtonTotal; ++i) {
            EXPECT_EQ(read.ButtonOrder[i], written.ButtonOrder[i]) << i;
            EXPECT_EQ(read.Position[i], written.Position[i]) << i;
        }
    }
}
