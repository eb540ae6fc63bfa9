#include "buttonbar/buttons.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace {

// The table is the program's own: each test leaves it as it was.
class Buttons : public testing::Test {
protected:
    void SetUp() override { std::copy(std::begin(ButtonTable), std::end(ButtonTable), Kept); }
    void TearDown() override { std::copy(std::begin(Kept), std::end(Kept), ButtonTable); }

private:
    ButtonInfo Kept[ButtonTotal];
};

} // namespace

TEST_F(Buttons, EachStandsForItsCommand)
{
    const int commands[] = {220, 225, 226, 229, 232, 250, 260, 261, 270, 271, 272, 280,
                            283, 290, 223, 273, 222, 233, 263, 252, 224, 274, 275, 276};
    ASSERT_EQ(std::size(commands), 24u);
    ASSERT_EQ(std::size(ButtonTable), 24u);
    for (int button = 0; button < ButtonTotal; ++button) {
        EXPECT_EQ(ButtonTable[button].Command, commands[button]) << button;
    }
}

TEST_F(Buttons, ThoseThatNeedNoFileCanBePressedFromTheStart)
{
    const int enabled[] = {0, 8, 9, 11, 12, 13, 16, 17};
    for (int button = 0; button < ButtonTotal; ++button) {
        const bool expected = std::count(std::begin(enabled), std::end(enabled), button) != 0;
        EXPECT_EQ(ButtonTable[button].Enabled, expected) << button;
    }
}

TEST_F(Buttons, NamedNumbersAreThoseOfTheirCommands)
{
    const struct {
        ButtonNumber Button;
        int Command;
    } named[] = {
        {ButtonPrevious, 225}, {ButtonNext, 226},        {ButtonPrint, 229},        {ButtonInformation, 232},
        {ButtonCopy, 250},     {ButtonFind, 260},        {ButtonRepeatFind, 261},   {ButtonViewZip, 272},
        {ButtonLaunch, 223},   {ButtonPreviousZip, 273}, {ButtonGoto, 263},         {ButtonEdit, 252},
        {ButtonDelete, 224},   {ButtonLock, 274},        {ButtonFontIncrease, 275}, {ButtonFontDecrease, 276},
    };
    for (const auto& button : named) {
        EXPECT_EQ(ButtonTable[button.Button].Command, button.Command) << button.Button;
    }
}

TEST_F(Buttons, OnlyRepeatFindDoesSomethingElseWithShift)
{
    for (int button = 0; button < ButtonTotal; ++button) {
        EXPECT_EQ(ButtonTable[button].HasShiftVariant, button == ButtonRepeatFind) << button;
    }
}
