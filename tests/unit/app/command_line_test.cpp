#include "app/command_line.h"

#include <gtest/gtest.h>

#include <string>

namespace {

void ExpectDropped(const CommandLine& line)
{
    EXPECT_TRUE(line.Error);
    EXPECT_STREQ(line.FileName, "");
    EXPECT_STREQ(line.Rectangle, "");
    EXPECT_STREQ(line.SectionName, "");
}

} // namespace

TEST(CommandLine, EmptyGivesTheDefaultSectionAndNothingElse)
{
    for (const char* text : {"", " ", "      "}) {
        const CommandLine line = ParseCommandLine(text);
        EXPECT_FALSE(line.Error);
        EXPECT_STREQ(line.FileName, "");
        EXPECT_STREQ(line.Rectangle, "");
        EXPECT_STREQ(line.SectionName, "Kestovar");
        EXPECT_FALSE(line.PrintAndExit);
        EXPECT_EQ(line.Lock.ColStart, 0);
        EXPECT_EQ(line.Lock.TopLine, 0);
        EXPECT_EQ(line.Lock.Cols, 0);
        EXPECT_EQ(line.Lock.Rows, 0);
    }
}

TEST(CommandLine, TokenWithoutDashIsTheFile)
{
    EXPECT_STREQ(ParseCommandLine("c:\\dir\\file.txt").FileName, "c:\\dir\\file.txt");
    EXPECT_STREQ(ParseCommandLine("   *.txt  ").FileName, "*.txt");
}

TEST(CommandLine, SecondFileNameReplacesTheFirst)
{
    EXPECT_STREQ(ParseCommandLine("first.txt second.txt").FileName, "second.txt");
}

TEST(CommandLine, FileNameNeverContainsABlank)
{
    EXPECT_STREQ(ParseCommandLine("\"c:\\a b.txt\"").FileName, "b.txt\"");
}

TEST(CommandLine, OnlyBlanksSeparateTokens)
{
    EXPECT_STREQ(ParseCommandLine("a\tb").FileName, "a\tb");
}

TEST(CommandLine, DashInsideATokenIsNoSwitch)
{
    EXPECT_STREQ(ParseCommandLine("file-P.txt").FileName, "file-P.txt");
}

TEST(CommandLine, SectionNameOf19CharactersIsTaken)
{
    const CommandLine line = ParseCommandLine("-Iabcdefghijklmnopqrs file.txt");
    EXPECT_FALSE(line.Error);
    EXPECT_STREQ(line.SectionName, "abcdefghijklmnopqrs");
    EXPECT_STREQ(line.FileName, "file.txt");
}

TEST(CommandLine, SectionNameOf20CharactersIsAnErrorAndDropsTheFile)
{
    ExpectDropped(ParseCommandLine("file.txt -Iabcdefghijklmnopqrst"));
}

TEST(CommandLine, SectionSwitchWithNothingJoinedIsIgnored)
{
    const CommandLine line = ParseCommandLine("-I file.txt");
    EXPECT_FALSE(line.Error);
    EXPECT_STREQ(line.SectionName, "Kestovar");
    EXPECT_STREQ(line.FileName, "file.txt");
}

TEST(CommandLine, EmptySectionSwitchKeepsTheNameGivenBefore)
{
    EXPECT_STREQ(ParseCommandLine("-Ixyz -I").SectionName, "xyz");
}

TEST(CommandLine, LastSectionNameWins)
{
    EXPECT_STREQ(ParseCommandLine("-Ione -Itwo").SectionName, "two");
}

TEST(CommandLine, SwitchLettersAreTakenInEitherCase)
{
    EXPECT_STREQ(ParseCommandLine("-ixyz").SectionName, "xyz");
    EXPECT_TRUE(ParseCommandLine("-p").PrintAndExit);
    EXPECT_TRUE(ParseCommandLine("-P").PrintAndExit);
    EXPECT_EQ(ParseCommandLine("-l 3 5 2 4").Lock.ColStart, 2);
}

TEST(CommandLine, LockNumbersAreKeptWithTheFirstTwoReducedByOne)
{
    const CommandLine line = ParseCommandLine("-L 3 5 2 4 file.txt");
    EXPECT_FALSE(line.Error);
    EXPECT_EQ(line.Lock.ColStart, 2);
    EXPECT_EQ(line.Lock.TopLine, 4);
    EXPECT_EQ(line.Lock.Cols, 2);
    EXPECT_EQ(line.Lock.Rows, 4);
    EXPECT_STREQ(line.FileName, "file.txt");
}

TEST(CommandLine, LockWithTooFewNumbersIsAnError)
{
    ExpectDropped(ParseCommandLine("file.txt -L 3 5"));
    ExpectDropped(ParseCommandLine("-L"));
    ExpectDropped(ParseCommandLine("-L 1 2 3"));
}

TEST(CommandLine, LockWithTooFewNumbersSwallowsTheFileName)
{
    // The file name counts as the fourth number: it is a token like any other.
    const CommandLine line = ParseCommandLine("-L 3 5 2 file.txt");
    EXPECT_FALSE(line.Error);
    EXPECT_STREQ(line.FileName, "");
    EXPECT_EQ(line.Lock.Rows, 0);
}

TEST(CommandLine, LockWithSomethingJoinedIsAnErrorThatStopsParsing)
{
    const CommandLine line = ParseCommandLine("-Lx 1 2 3 4 -P");
    ExpectDropped(line);
    EXPECT_FALSE(line.PrintAndExit);
}

TEST(CommandLine, RunningShortOfNumbersDoesNotStopParsing)
{
    const CommandLine line = ParseCommandLine("-P -L 1 2");
    ExpectDropped(line);
    EXPECT_TRUE(line.PrintAndExit);
}

TEST(CommandLine, AbsurdLockNumbersAreBounded)
{
    const CommandLine high =
        ParseCommandLine("-L 99999999999999999999 99999999999999999999 99999999999999999999 2147483648");
    EXPECT_EQ(high.Lock.ColStart, INT32_MAX - 1);
    EXPECT_EQ(high.Lock.TopLine, INT32_MAX - 1);
    EXPECT_EQ(high.Lock.Cols, INT32_MAX);
    EXPECT_EQ(high.Lock.Rows, INT32_MAX);
    const CommandLine low = ParseCommandLine("-L -99999999999999999999 -2147483648 -9223372036854775808 -1");
    EXPECT_EQ(low.Lock.ColStart, INT32_MIN);
    EXPECT_EQ(low.Lock.TopLine, INT32_MIN);
    EXPECT_EQ(low.Lock.Cols, INT32_MIN);
    EXPECT_EQ(low.Lock.Rows, -1);
}

TEST(CommandLine, RectangleIsTheTextBehindTheDashAndThreeTokens)
{
    const CommandLine line = ParseCommandLine("-10   20 300   400 file.txt");
    EXPECT_FALSE(line.Error);
    EXPECT_STREQ(line.Rectangle, "10 20 300 400");
    EXPECT_STREQ(line.FileName, "file.txt");
}

TEST(CommandLine, AnyOtherLetterIsARectangleToo)
{
    EXPECT_STREQ(ParseCommandLine("-x 1 2 3").Rectangle, "x 1 2 3");
}

TEST(CommandLine, RectangleWithTooFewNumbersIsAnError)
{
    ExpectDropped(ParseCommandLine("-10 20 300"));
    ExpectDropped(ParseCommandLine("file.txt -10"));
}

TEST(CommandLine, OverlongRectangleIsCut)
{
    const std::string number(70, '1');
    const CommandLine line = ParseCommandLine(("-" + number + " " + number + " 3 4").c_str());
    EXPECT_FALSE(line.Error);
    EXPECT_EQ(std::string(line.Rectangle), (number + " " + number).substr(0, RectangleTextSize - 1));
}

TEST(CommandLine, DashAloneTakesTheNextTokenAsSwitch)
{
    EXPECT_TRUE(ParseCommandLine("- P").PrintAndExit);
    EXPECT_STREQ(ParseCommandLine("- Ixyz").SectionName, "xyz");
    EXPECT_EQ(ParseCommandLine("- L 3 5 2 4").Lock.TopLine, 4);
    EXPECT_STREQ(ParseCommandLine("- 1 2 3 4").Rectangle, "1 2 3 4");
}

TEST(CommandLine, DashAsTheLastTokenIsAnError)
{
    ExpectDropped(ParseCommandLine("file.txt -"));
    ExpectDropped(ParseCommandLine("-  "));
}

TEST(CommandLine, ParsingStopsAtTheFirstHardError)
{
    const CommandLine line = ParseCommandLine("-Iabcdefghijklmnopqrst -P");
    ExpectDropped(line);
    EXPECT_FALSE(line.PrintAndExit);
}

TEST(CommandLine, ErrorClearsTheSectionAfterTheDefaultWasSet)
{
    // Not "Kestovar": settings of a run in error come from the section without a name.
    EXPECT_STREQ(ParseCommandLine("-").SectionName, "");
    EXPECT_STREQ(ParseCommandLine("-Ixyz -L 1").SectionName, "");
}

TEST(CommandLine, ErrorKeepsWhatElseWasSaid)
{
    const CommandLine line = ParseCommandLine("-P -L 3 5 2 4 -1 2");
    ExpectDropped(line);
    EXPECT_TRUE(line.PrintAndExit);
    EXPECT_EQ(line.Lock.ColStart, 2);
}

TEST(CommandLine, OnlyTheFirst259CharactersCount)
{
    const std::string name(259, 'n');
    EXPECT_EQ(std::string(ParseCommandLine(name.c_str()).FileName), name);
    EXPECT_EQ(std::string(ParseCommandLine((name + "xyz -P").c_str()).FileName), name);
    EXPECT_FALSE(ParseCommandLine((name + " -P").c_str()).PrintAndExit);
    // A switch that the cut leaves a dash of is a dash alone.
    ExpectDropped(ParseCommandLine((std::string(257, 'n') + " -P").c_str()));
}
