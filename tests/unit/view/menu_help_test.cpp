#include "view/menu_help.h"

#include <gtest/gtest.h>

namespace {

unsigned Help(unsigned id)
{
    return CommandHelp(id, ProgramKind::None);
}

} // namespace

TEST(MenuHelp, SystemCommandsHaveStringsOfTheirOwn)
{
    EXPECT_EQ(Help(0xF120), 10u); // restore
    EXPECT_EQ(Help(0xF010), 11u); // move
    EXPECT_EQ(Help(0xF000), 12u); // size
    EXPECT_EQ(Help(0xF020), 13u); // minimise
    EXPECT_EQ(Help(0xF030), 14u); // maximise
    EXPECT_EQ(Help(0xF060), 15u); // close
    EXPECT_EQ(Help(0xF130), 16u); // task list
    EXPECT_EQ(Help(100), 17u);
    EXPECT_EQ(Help(101), 18u);
}

TEST(MenuHelp, NoItemHasNoHelp)
{
    EXPECT_EQ(Help(0xFFFF), 0u);
    EXPECT_EQ(Help(0), 0u);
}

TEST(MenuHelp, CommandsBelow200HaveNoneOtherwise)
{
    for (unsigned id = 0; id < 200; ++id) {
        if (id != 100 && id != 101) {
            EXPECT_EQ(Help(id), 0u) << id;
        }
    }
}

TEST(MenuHelp, CommandsHaveTheStringOfTheirNumberLess200)
{
    const struct {
        unsigned Id;
        unsigned String;
    } commands[] = {
        {220, 20}, {221, 21}, {222, 22}, {224, 24}, {225, 25}, {226, 26}, {229, 29}, {230, 30}, {231, 31},
        {232, 32}, {233, 33}, {250, 50}, {251, 51}, {252, 52}, {260, 60}, {261, 61}, {262, 62}, {263, 63},
        {270, 70}, {271, 71}, {272, 72}, {273, 73}, {274, 74}, {275, 75}, {276, 76}, {280, 80}, {281, 81},
        {282, 82}, {283, 83}, {284, 84}, {285, 85}, {290, 90}, {291, 91}, {292, 92}, {293, 93},
    };
    for (const auto& command : commands) {
        EXPECT_EQ(Help(command.Id), command.String) << command.Id;
        EXPECT_EQ(CommandHelp(command.Id, ProgramKind::OfWindows), command.String) << command.Id;
        EXPECT_EQ(CommandHelp(command.Id, ProgramKind::OfDos), command.String) << command.Id;
    }
}

TEST(MenuHelp, NumbersFrom200OnAreCommands)
{
    EXPECT_EQ(Help(199), 0u);
    EXPECT_EQ(Help(200), 0u);
    EXPECT_EQ(Help(201), 1u);
    EXPECT_EQ(Help(0xEFFF), 0xEFFFu - 200);
    EXPECT_EQ(Help(0xF121), 0xF121u - 200);
}

TEST(MenuHelp, RecentFilesShareOneString)
{
    for (unsigned id = 240; id <= 249; ++id) {
        EXPECT_EQ(Help(id), 40u) << id;
    }
    EXPECT_EQ(Help(239), 39u);
    EXPECT_EQ(Help(250), 50u);
}

TEST(MenuHelp, LaunchDependsOnTheKindOfProgram)
{
    EXPECT_EQ(CommandHelp(223, ProgramKind::None), 23u);
    EXPECT_EQ(CommandHelp(223, ProgramKind::OfWindows), 134u);
    EXPECT_EQ(CommandHelp(223, ProgramKind::OfDos), 52u);
}
