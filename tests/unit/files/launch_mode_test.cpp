#include "files/launch_mode.h"

#include "document/file_info.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

constexpr std::uint16_t OtherMachine = 0x8664;

LaunchMode Decide(bool hasExtension, bool canEdit, std::int16_t type, std::uint16_t machine, bool isAssociated)
{
    return DecideLaunch({hasExtension, canEdit, type, machine, isAssociated});
}

// The rules one after the other; the first that applies decides.
LaunchMode ByTheRules(const LaunchFacts& facts)
{
    const LaunchMode edited = facts.CanEdit ? LaunchMode::Edit : LaunchMode::None;
    if (!facts.HasExtension) {
        return edited;
    }
    if (facts.FileType == 1 || (facts.FileType == 5 && facts.ImageMachine == 332)) {
        return LaunchMode::Program;
    }
    if (facts.IsAssociated) {
        return LaunchMode::Associated;
    }
    return edited;
}

} // namespace

TEST(LaunchMode, FileWithoutAnExtensionIsOnlyEdited)
{
    for (const std::int16_t type : {NotRecognised, Windows16Program, Windows32Program, DosProgram}) {
        for (const bool isAssociated : {false, true}) {
            EXPECT_EQ(Decide(false, true, type, MachineI386, isAssociated), LaunchMode::Edit) << type;
            EXPECT_EQ(Decide(false, false, type, MachineI386, isAssociated), LaunchMode::None) << type;
        }
    }
}

TEST(LaunchMode, SixteenBitWindowsProgramIsRunWhateverItsMachine)
{
    EXPECT_EQ(Decide(true, false, Windows16Program, 0, false), LaunchMode::Program);
    EXPECT_EQ(Decide(true, false, Windows16Program, OtherMachine, false), LaunchMode::Program);
}

TEST(LaunchMode, ThirtyTwoBitWindowsProgramIsRunWhenItIsForThe386)
{
    EXPECT_EQ(Decide(true, false, Windows32Program, 332, false), LaunchMode::Program);
    EXPECT_EQ(Decide(true, false, Windows32Program, OtherMachine, false), LaunchMode::None);
    EXPECT_EQ(Decide(true, false, Windows32Program, 0, false), LaunchMode::None);
    EXPECT_EQ(Decide(true, false, Windows32Program, 331, true), LaunchMode::Associated);
}

TEST(LaunchMode, ProgramIsRunEvenWhenItsExtensionIsAssociated)
{
    EXPECT_EQ(Decide(true, true, Windows16Program, 0, true), LaunchMode::Program);
    EXPECT_EQ(Decide(true, true, Windows32Program, MachineI386, true), LaunchMode::Program);
}

TEST(LaunchMode, AssociationComesBeforeTheEditor)
{
    EXPECT_EQ(Decide(true, true, NotRecognised, 0, true), LaunchMode::Associated);
    EXPECT_EQ(Decide(true, false, ZipFile, 0, true), LaunchMode::Associated);
}

TEST(LaunchMode, TextWithAnyOtherExtensionIsEdited)
{
    EXPECT_EQ(Decide(true, true, NotRecognised, 0, false), LaunchMode::Edit);
    EXPECT_EQ(Decide(true, false, NotRecognised, 0, false), LaunchMode::None);
}

TEST(LaunchMode, DecidesEveryCaseByTheRules)
{
    std::vector<LaunchFacts> cases;
    for (std::int16_t type = NotRecognised; type <= CompressedFile; ++type) {
        for (const std::uint16_t machine : {std::uint16_t{0}, MachineI386, OtherMachine}) {
            for (int bits = 0; bits < 8; ++bits) {
                cases.push_back({(bits & 1) != 0, (bits & 2) != 0, type, machine, (bits & 4) != 0});
            }
        }
    }
    ASSERT_EQ(cases.size(), 12u * 3 * 8);
    for (const LaunchFacts& facts : cases) {
        EXPECT_EQ(DecideLaunch(facts), ByTheRules(facts))
            << facts.HasExtension << facts.CanEdit << facts.IsAssociated << " type " << facts.FileType << " machine "
            << facts.ImageMachine;
    }
}
