#include "search/search_pattern.h"

#include "base/text.h"
#include "document/document_state.h"
#include "support/test_port.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

class PatternToFind : public testing::Test {
protected:
    void SetUp() override { Reset(); }
    void TearDown() override { Reset(); }

    static void Reset()
    {
        TestPort::Reset();
        Find = FindState{};
        ViewOptions = ViewSettings{};
        DocumentOptions = DocumentSettings{};
    }

    // The bytes that the digits stand for.
    static std::string Parsed(const char* digits)
    {
        char text[FindTextSize];
        CopyText(text, digits);
        const std::int32_t count = ParseHexString(text);
        return std::string(text, static_cast<std::size_t>(count));
    }

    static SearchPattern TextPattern(const char* text) { return PreparePattern(text); }

    static SearchPattern HexPattern(const char* digits)
    {
        CopyText(Find.FindHex, digits);
        return PreparePattern("not this");
    }

    static std::string Wanted(const Needle& needle)
    {
        return std::string(reinterpret_cast<const char*>(needle.Wanted), static_cast<std::size_t>(needle.Length));
    }

    // Whether the bytes of a line that reads as text says hold the needle.
    static bool Holds(const Needle& needle, const std::string& line)
    {
        return FindNeedle(needle, reinterpret_cast<const std::uint8_t*>(line.data()), 0,
                          static_cast<std::int32_t>(line.size())) >= 0;
    }
};

} // namespace

TEST_F(PatternToFind, PairsOfHexDigitsAreBytes)
{
    EXPECT_EQ(Parsed("41"), "A");
    EXPECT_EQ(Parsed("0D0A"), "\r\n");
    EXPECT_EQ(Parsed("0123456789ABCDEF"), "\x01\x23\x45\x67\x89\xAB\xCD\xEF");
    EXPECT_EQ(Parsed("00FF00"), std::string("\x00\xFF\x00", 3));
    EXPECT_EQ(Parsed(""), "");
}

TEST_F(PatternToFind, LongestHexStringIsFourteenBytes)
{
    EXPECT_EQ(Parsed("0102030405060708090A0B0C0D0E").size(), 14u);
    EXPECT_EQ(Parsed("0102030405060708090A0B0C0D0E0").size(), 14u); // the last digit has no other
}

TEST_F(PatternToFind, HexStringIsPairsOfCapitalDigits)
{
    EXPECT_TRUE(IsHexString(""));
    EXPECT_TRUE(IsHexString("00"));
    EXPECT_TRUE(IsHexString("0123456789ABCDEF"));
    EXPECT_FALSE(IsHexString("0"));
    EXPECT_FALSE(IsHexString("012"));
    EXPECT_FALSE(IsHexString("0G"));
    EXPECT_FALSE(IsHexString("G0"));
    EXPECT_FALSE(IsHexString("ab"));
    EXPECT_FALSE(IsHexString("0 "));
    EXPECT_FALSE(IsHexString(" 0"));
    EXPECT_FALSE(IsHexString("-1"));
    EXPECT_FALSE(IsHexString("\xC4\xC4"));
    EXPECT_FALSE(IsHexString("000000000000000000000000000Z"));
}

TEST_F(PatternToFind, TextIsFoldedUnlessCaseMatters)
{
    SearchPattern pattern = TextPattern("aBc\xE4 1");
    EXPECT_STREQ(pattern.Bytes, "ABC\xC4 1");
    EXPECT_EQ(pattern.Length, 6);
    EXPECT_EQ(pattern.ByteCount, 0);
    Find.MatchCase = true;
    pattern = TextPattern("aBc\xE4 1");
    EXPECT_STREQ(pattern.Bytes, "aBc\xE4 1");
}

TEST_F(PatternToFind, HexStringIsUsedWhenThereIsOne)
{
    const SearchPattern pattern = HexPattern("3031");
    EXPECT_EQ(pattern.ByteCount, 2);
    EXPECT_EQ(pattern.Length, 2);
    EXPECT_EQ(std::string(pattern.Bytes, 2), "01");
    EXPECT_STREQ(Find.FindHex, "3031"); // repeated later
}

TEST_F(PatternToFind, BytesAreFoldedUnlessCaseMatters)
{
    EXPECT_EQ(std::string(HexPattern("61004162").Bytes, 4), std::string("A\0AB", 4));
    Find.MatchCase = true;
    EXPECT_EQ(std::string(HexPattern("61004162").Bytes, 4), std::string("a\0Ab", 4));
}

TEST_F(PatternToFind, TextOf29CharactersIsWhole)
{
    const SearchPattern pattern = TextPattern("01234567890123456789012345678");
    EXPECT_EQ(pattern.Length, 29);
    EXPECT_STREQ(pattern.Bytes, "01234567890123456789012345678");
    EXPECT_EQ(TextPattern("012345678901234567890123456789").Length, 29);
    EXPECT_EQ(TextPattern("x").Length, 1);
    EXPECT_EQ(TextPattern("").Length, 0);
}

TEST_F(PatternToFind, CharactersOfTwoBytesAreFoldedAsTheSystemDoes)
{
    TestPort::SetTwoByteCharacters(true);
    EXPECT_STREQ(TextPattern("a\x81"
                             "bb")
                     .Bytes,
                 "A\x81"
                 "bB");
}

TEST_F(PatternToFind, LineHoldsATextWhateverItsCase)
{
    const Needle needle = NeedleForLines(TextPattern("ab"));
    EXPECT_EQ(Wanted(needle), "AB");
    EXPECT_TRUE(Holds(needle, "xaBx"));
    EXPECT_FALSE(Holds(needle, "xaxBx"));
    Find.MatchCase = true;
    EXPECT_FALSE(Holds(NeedleForLines(TextPattern("ab")), "xaBx"));
    EXPECT_TRUE(Holds(NeedleForLines(TextPattern("aB")), "xaBx"));
}

TEST_F(PatternToFind, LineHoldsBytesAsTheyAre)
{
    const Needle needle = NeedleForLines(HexPattern("6162")); // in capitals now
    EXPECT_TRUE(Holds(needle, "xABx"));
    EXPECT_FALSE(Holds(needle, "xabx"));
    ViewOptions.EbcdicToAscii = true;
    EXPECT_TRUE(Holds(NeedleForLines(HexPattern("C1C2")), "\xC1\xC2"));
    EXPECT_FALSE(Holds(NeedleForLines(HexPattern("4142")), "\xC1\xC2"));
}

TEST_F(PatternToFind, ZeroByteStandsForASpaceInALineAndNotInTheFile)
{
    const std::string zero("a\0b", 3);
    EXPECT_TRUE(Holds(NeedleForLines(TextPattern("a b")), zero));
    EXPECT_FALSE(Holds(NeedleForBytes(TextPattern("a b")), zero));
    EXPECT_TRUE(Holds(NeedleForBytes(HexPattern("610062")), zero));
    EXPECT_FALSE(NeedleForLines(HexPattern("610062")).Possible);
    EXPECT_TRUE(NeedleForBytes(HexPattern("610062")).Possible);
}

TEST_F(PatternToFind, LineInEbcdicHoldsTheTextItReadsAs)
{
    ViewOptions.EbcdicToAscii = true;
    EXPECT_TRUE(Holds(NeedleForLines(TextPattern("ab 1")), std::string("\x81\xC2\0\xF1", 4)));
    EXPECT_TRUE(Holds(NeedleForLines(TextPattern("b 1")), "\x82\x40\xF1"));
    EXPECT_FALSE(Holds(NeedleForLines(TextPattern("a")), "a")); // that is a stroke
    Find.MatchCase = true;
    EXPECT_FALSE(Holds(NeedleForLines(TextPattern("a")), "\xC1"));
    EXPECT_TRUE(Holds(NeedleForLines(TextPattern("A")), "\xC1"));
    EXPECT_FALSE(NeedleForLines(TextPattern("\x81")).Possible);
    EXPECT_TRUE(NeedleForBytes(TextPattern("\x81")).Possible); // the file is not translated
}

TEST_F(PatternToFind, ExpandedTabsLeaveTheLongestWord)
{
    DocumentOptions.Ptabs = 1;
    EXPECT_EQ(Wanted(NeedleForLines(TextPattern("a longer word"))), "LONGER");
    EXPECT_EQ(Wanted(NeedleForLines(TextPattern("one two"))), "ONE");
    EXPECT_EQ(Wanted(NeedleForLines(TextPattern("of three"))), "THREE");
    EXPECT_EQ(Wanted(NeedleForLines(TextPattern("  word  "))), "WORD");
    EXPECT_EQ(Wanted(NeedleForLines(TextPattern("word"))), "WORD");
    EXPECT_EQ(Wanted(NeedleForLines(HexPattern("4120424320"))), "BC");
    EXPECT_EQ(Wanted(NeedleForBytes(HexPattern("4120424320"))), "A BC ");
}

TEST_F(PatternToFind, SpacesThatATabMayMakeTellNothing)
{
    DocumentOptions.Ptabs = 1;
    const Needle needle = NeedleForLines(TextPattern("   "));
    EXPECT_EQ(needle.Length, 0);
    EXPECT_TRUE(needle.Possible);
    EXPECT_EQ(NeedleForLines(HexPattern("2020")).Length, 0);
    DocumentOptions.Ptabs = 0;
    EXPECT_EQ(NeedleForLines(HexPattern("2020")).Length, 2);
}

TEST_F(PatternToFind, CharactersOfTwoBytesTellNothingWhenTheyAreFolded)
{
    TestPort::SetTwoByteCharacters(true);
    for (const Needle& needle :
         {NeedleForLines(TextPattern("ab")), NeedleForBytes(TextPattern("ab")), NeedleForBytes(HexPattern("6162"))}) {
        EXPECT_EQ(needle.Length, 0);
        EXPECT_TRUE(needle.Possible);
    }
    EXPECT_EQ(NeedleForLines(HexPattern("6162")).Length, 2); // the line is not folded for it
    Find.FindHex[0] = '\0';
    Find.MatchCase = true;
    EXPECT_EQ(NeedleForLines(TextPattern("ab")).Length, 2);
    EXPECT_EQ(NeedleForBytes(TextPattern("ab")).Length, 2);
}

TEST_F(PatternToFind, FileHoldsATextWhateverItsCase)
{
    const Needle needle = NeedleForBytes(TextPattern("ab"));
    EXPECT_TRUE(Holds(needle, "xaBx"));
    EXPECT_FALSE(Holds(needle, "xacx"));
    EXPECT_TRUE(Holds(NeedleForBytes(HexPattern("6162")), "xAbx"));
    Find.MatchCase = true;
    EXPECT_FALSE(Holds(NeedleForBytes(HexPattern("6162")), "xAbx"));
    EXPECT_TRUE(Holds(NeedleForBytes(HexPattern("4162")), "xAbx"));
}
