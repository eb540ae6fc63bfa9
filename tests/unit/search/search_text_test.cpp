#include "search/search_text.h"

#include "search/search_origin.h"
#include "unit/search/search_fixture.h"
#include "view/view_state.h"

#include <cstring>
#include <string>
#include <vector>

namespace {

using Places = std::vector<std::string>;

class SearchText : public SearchFixture {
protected:
    static void Open(std::string_view text) { OpenBytes(BytesOf(text)); }

    // "line:column" of the match, or "none".
    static std::string From(std::int32_t line, std::int32_t column)
    {
        const SearchPattern pattern = PreparePattern(Find.LastFindText);
        if (!SearchTextLines(pattern, line, column)) {
            return "none";
        }
        EXPECT_EQ(Find.FoundLen, pattern.Length);
        return std::to_string(Find.FoundLine) + ":" + std::to_string(Find.FoundCol);
    }

    static void LookForText(const std::string& text)
    {
        Find.FindHex[0] = '\0';
        CopyText(Find.LastFindText, text.c_str());
    }

    static void LookForHex(const char* digits) { CopyText(Find.FindHex, digits); }

    // The next or previous match.
    static std::string Again()
    {
        const SearchOrigin origin = OriginOfRepeat();
        return From(origin.Line, origin.Column);
    }

    static std::string FirstPlace()
    {
        Find.Backwards = false;
        return From(1, 0);
    }

    static std::string LastPlace()
    {
        Find.Backwards = true;
        const SearchOrigin origin = OriginOfSearch();
        return From(origin.Line, origin.Column);
    }

    static std::string First(const std::string& text)
    {
        LookForText(text);
        return FirstPlace();
    }

    static std::string Last(const std::string& text)
    {
        LookForText(text);
        return LastPlace();
    }

    // Where it is found in both directions, when that is the same place.
    static std::string Only(const std::string& text)
    {
        LookForText(text);
        return OnlyPlace();
    }

    static std::string OnlyHex(const char* digits)
    {
        LookForHex(digits);
        return OnlyPlace();
    }

    // All matches, one after the other.
    static Places All(bool backwards)
    {
        Places places;
        for (std::string place = backwards ? LastPlace() : FirstPlace(); place != "none" && places.size() < 100;
             place = Again()) {
            places.push_back(place);
        }
        return places;
    }

    // 60 lines of 499 dots to a block, with text over the end of the first block: its first before bytes are in
    // block 1, the others in block 2.
    static Bytes Dots(std::string_view text, std::size_t before)
    {
        Bytes content(2 * BlockBytes + 1000, '.');
        for (std::size_t end = 499; end < content.size(); end += 500) {
            content[end] = '\n';
        }
        memcpy(content.data() + BlockBytes - before, text.data(), text.size());
        return content;
    }

    static Bytes Records(std::size_t size, std::int32_t recordLength)
    {
        DocumentOptions.FixedLineLen = recordLength;
        return Bytes(size, '.');
    }

    static void Put(Bytes& content, std::int32_t at, std::string_view text)
    {
        memcpy(content.data() + at, text.data(), text.size());
    }

    static int ReadsOf(std::string (*search)(const std::string&), const std::string& text)
    {
        const int before = TestPort::FileReads();
        EXPECT_EQ(search(text), "none");
        return TestPort::FileReads() - before;
    }

private:
    static std::string OnlyPlace()
    {
        const std::string first = FirstPlace();
        const std::string last = LastPlace();
        return first == last ? first : first + " to " + last;
    }
};

} // namespace

TEST_F(SearchText, ForwardsTheFirstAndBackwardsTheLastMatchOfTheDocument)
{
    Open("one\ntwo one two\nthree one");
    EXPECT_EQ(First("one"), "1:0");
    EXPECT_EQ(Last("one"), "3:6");
    EXPECT_EQ(First("two"), "2:0");
    EXPECT_EQ(Last("two"), "2:8");
    EXPECT_EQ(Only("four"), "none");
}

TEST_F(SearchText, LastCharactersOfALineAreFound)
{
    Open("abc xyz\r\ndef\r\n");
    EXPECT_EQ(Only("xyz"), "1:4");
    EXPECT_EQ(Only("z"), "1:6");
    EXPECT_EQ(Only("def"), "2:0");
}

TEST_F(SearchText, LastLineWithoutALineEndIsSearched)
{
    Open("abc\nxyz");
    EXPECT_EQ(Only("xyz"), "2:0");
    EXPECT_EQ(Only("z"), "2:2");
}

TEST_F(SearchText, MatchNeverSpansTwoLines)
{
    for (const char* text : {"ab\ncd", "ab\rcd", "ab\r\ncd"}) {
        Open(text);
        EXPECT_EQ(Only("abcd"), "none");
        EXPECT_EQ(Only("bc"), "none");
        EXPECT_EQ(OnlyHex("6263"), "none");
    }
}

TEST_F(SearchText, LineEndsAreNoPartOfATextsLines)
{
    Find.MatchCase = true;
    Open("ab\ncd\r\nef\rgh");
    for (const char* digits : {"0A", "0D", "0D0A", "620A", "0A63"}) {
        EXPECT_EQ(OnlyHex(digits), "none") << digits;
    }
    EXPECT_EQ(Only("\n"), "none");
    EXPECT_EQ(Only("b\nc"), "none");
}

TEST_F(SearchText, CaseIsFoldedUnlessItMatters)
{
    Open("xx ABC\nxx aBc\n");
    LookForText("abc");
    EXPECT_EQ(All(false), (Places{"1:3", "2:3"}));
    EXPECT_EQ(All(true), (Places{"2:3", "1:3"}));
    LookForText("Abc");
    EXPECT_EQ(All(false).size(), 2u);
    Find.MatchCase = true;
    EXPECT_EQ(Only("abc"), "none");
    EXPECT_EQ(Only("aBc"), "2:3");
    EXPECT_EQ(Only("ABC"), "1:3");
}

TEST_F(SearchText, AccentedLettersAreFoldedAsTheSystemDoes)
{
    Open("gr\xFC\xDF"
         "e\nGR\xDC\xDF"
         "E\n");
    LookForText("r\xFC\xDF");
    EXPECT_EQ(All(false), (Places{"1:1", "2:1"}));
    LookForText("R\xDC\xDF");
    EXPECT_EQ(All(true), (Places{"2:1", "1:1"}));
    Find.MatchCase = true;
    EXPECT_EQ(Only("r\xFC"), "1:1");
    EXPECT_EQ(Only("R\xDC"), "2:1");
}

TEST_F(SearchText, LineThatFoldingLeftInCapitalsIsReadAnewForTheNextSearch)
{
    Open("abc");
    EXPECT_EQ(Only("abc"), "1:0");
    Find.MatchCase = true;
    EXPECT_EQ(Only("abc"), "1:0");
    EXPECT_EQ(Only("ABC"), "none");
}

TEST_F(SearchText, MatchesOverlap)
{
    Open("aaaa\nbaa");
    LookForText("aa");
    EXPECT_EQ(All(false), (Places{"1:0", "1:1", "1:2", "2:1"}));
    EXPECT_EQ(All(true), (Places{"2:1", "1:2", "1:1", "1:0"}));
}

TEST_F(SearchText, PreviousMatchIsAnEarlierOneAndNotTheSame)
{
    Open("ab ab\nab");
    EXPECT_EQ(First("ab"), "1:0");
    EXPECT_EQ(Again(), "1:3");
    EXPECT_EQ(Again(), "2:0");
    Find.Backwards = true;
    EXPECT_EQ(Again(), "1:3");
    EXPECT_EQ(Again(), "1:0");
    EXPECT_EQ(Again(), "none");
}

TEST_F(SearchText, SingleCharacterIsFoundEverywhere)
{
    Open("xax\nx\n\nax");
    LookForText("x");
    EXPECT_EQ(All(false), (Places{"1:0", "1:2", "2:0", "4:1"}));
    EXPECT_EQ(All(true), (Places{"4:1", "2:0", "1:2", "1:0"}));
}

TEST_F(SearchText, LongestPatternIsFound)
{
    const std::string longest = "abcdefghijklmnopqrstuvwxyz012";
    ASSERT_EQ(longest.size(), FindTextSize - 1);
    Open("abcdefghijklmnopqrstuvwxyz01\nxx" + longest + "yy\n");
    EXPECT_EQ(Only(longest), "2:2");
    LookForHex("6162636465666768696A6B6C6D6E"); // 14 bytes
    Find.MatchCase = true;
    EXPECT_EQ(All(false), (Places{"1:0", "2:2"}));
}

TEST_F(SearchText, PatternLongerThanALineGoesOnToTheNext)
{
    Open("a\nab\nabc\n\nb");
    EXPECT_EQ(Only("abc"), "3:0");
}

TEST_F(SearchText, StartColumnCountsOnTheFirstLineOnly)
{
    Open("ab..ab..ab\nab..ab..ab\nab");
    LookForText("ab");
    EXPECT_EQ(From(2, 0), "2:0");
    EXPECT_EQ(From(2, 1), "2:4");
    EXPECT_EQ(From(2, 8), "2:8");
    EXPECT_EQ(From(2, 9), "3:0");
    Find.Backwards = true;
    EXPECT_EQ(From(2, 9), "2:8");
    EXPECT_EQ(From(2, 8), "2:4");
    EXPECT_EQ(From(2, 1), "2:0");
    EXPECT_EQ(From(2, 0), "1:8");
}

TEST_F(SearchText, StartColumnBehindTheLineGoesOnForwardsAndMeansItsEndBackwards)
{
    Open("ab\nab\nab");
    LookForText("ab");
    for (const std::int32_t column : {2, 3, 1000, 2047, 2048, 1000000}) {
        Find.Backwards = false;
        EXPECT_EQ(From(2, column), "3:0") << column;
        Find.Backwards = true;
        EXPECT_EQ(From(2, column), "2:0") << column;
    }
}

TEST_F(SearchText, StartColumnBeforeTheLineFindsNothingOnIt)
{
    Open("ab\nab\nab");
    LookForText("ab");
    for (const std::int32_t column : {-1, -2, -1000, -1000000}) {
        Find.Backwards = false;
        EXPECT_EQ(From(2, column), "3:0") << column;
        Find.Backwards = true;
        EXPECT_EQ(From(2, column), "1:0") << column;
    }
}

TEST_F(SearchText, SearchFromALineOutsideTheDocumentFindsNothing)
{
    Open("ab\nab\nab");
    LookForText("ab");
    for (const bool backwards : {false, true}) {
        Find.Backwards = backwards;
        for (const std::int32_t line : {0, -1, 4, 1000, INT32_MAX, INT32_MIN}) {
            EXPECT_EQ(From(line, 0), "none") << line;
        }
    }
}

TEST_F(SearchText, FailedSearchLeavesTheLastMatchAsItWas)
{
    Open("ab\ncd");
    EXPECT_EQ(First("cd"), "2:0");
    EXPECT_EQ(First("xyz"), "none");
    EXPECT_EQ(Find.FoundLine, 2);
    EXPECT_EQ(Find.FoundCol, 0);
    EXPECT_EQ(Find.FoundLen, 2);
}

TEST_F(SearchText, EmptyFileHoldsNothing)
{
    Open("");
    EXPECT_EQ(Only("a"), "none");
    EXPECT_EQ(Only(" "), "none");
    EXPECT_EQ(OnlyHex("00"), "none");
}

TEST_F(SearchText, EmptyLinesAreGoneOver)
{
    Open("\n\n\nab\n\n\n");
    EXPECT_EQ(Only("ab"), "4:0");
}

TEST_F(SearchText, ZeroBytesAreSearchedAsSpaces)
{
    Open(std::string_view("xx\na\0b\n\0\n", 9));
    EXPECT_EQ(Only("a b"), "2:0");
    EXPECT_EQ(Only("b"), "2:2"); // the zero byte ends nothing
    LookForText(" ");
    EXPECT_EQ(All(false), (Places{"2:1", "3:0"}));
    EXPECT_EQ(OnlyHex("612062"), "none"); // folded
    Find.MatchCase = true;
    EXPECT_EQ(OnlyHex("612062"), "2:0");
    EXPECT_EQ(OnlyHex("610062"), "none");
    EXPECT_EQ(OnlyHex("00"), "none");
}

TEST_F(SearchText, ZeroByteInHexIsGivenUpWithoutReading)
{
    OpenBytes(Bytes(10 * BlockBytes, 0));
    LookForHex("0000");
    Find.Backwards = false;
    const int before = TestPort::FileReads();
    EXPECT_EQ(From(1, 0), "none");
    Find.Backwards = true;
    EXPECT_EQ(From(1000, 74), "none");
    EXPECT_EQ(TestPort::FileReads(), before);
}

TEST_F(SearchText, HexPatternIsFoldedAndTheLineIsNot)
{
    Open("abc\nABC\n");
    EXPECT_EQ(OnlyHex("616263"), "2:0");
    EXPECT_EQ(OnlyHex("414243"), "2:0");
    Find.MatchCase = true;
    EXPECT_EQ(OnlyHex("616263"), "1:0");
    EXPECT_EQ(OnlyHex("414243"), "2:0");
}

TEST_F(SearchText, EbcdicIsTranslatedForATextPattern)
{
    ViewOptions.EbcdicToAscii = true;
    Open("\xC1\x82\x83\n.\xA7\xA8\x40\xF1\n");
    EXPECT_EQ(Only("abc"), "1:0");
    EXPECT_EQ(Only("xy 1"), "2:1");
    Find.MatchCase = true;
    EXPECT_EQ(Only("abc"), "none");
    EXPECT_EQ(Only("Abc"), "1:0");
    EXPECT_EQ(Only("bc"), "1:1");
}

TEST_F(SearchText, EbcdicIsNotTranslatedForAHexPattern)
{
    ViewOptions.EbcdicToAscii = true;
    Find.MatchCase = true;
    Open("\x81\x82\n");
    EXPECT_EQ(OnlyHex("8182"), "1:0");
    EXPECT_EQ(OnlyHex("6162"), "none");
    ViewOptions.EbcdicToAscii = false;
    EXPECT_EQ(Only("ab"), "none");
    EXPECT_EQ(Only("\x81\x82"), "1:0");
}

TEST_F(SearchText, BytesThatTheTranslationLeavesAreFoundAsTheyAre)
{
    ViewOptions.EbcdicToAscii = true;
    Open(std::string_view("01\0\x81\x20", 5));
    EXPECT_EQ(Only("01 a "), "1:0");
}

TEST_F(SearchText, LetterThatNothingTranslatesToIsGivenUpWithoutReading)
{
    ViewOptions.EbcdicToAscii = true;
    OpenBytes(Lines(10 * BlockBytes, 99));
    EXPECT_EQ(ReadsOf(First, "\x81"), 0);
}

TEST_F(SearchText, SecondTranslationOfPaintingIsNotMade)
{
    ViewOptions.OemToAnsi = 1;
    Find.MatchCase = true;
    Open("\x84\n");
    EXPECT_EQ(Only("\x84"), "1:0");
    EXPECT_EQ(Only("\xE4"), "none");
}

TEST_F(SearchText, TabsAreExpandedByTheRemainder)
{
    DocumentOptions.Ptabs = 1;
    DocumentOptions.TabSize = 8;
    Open("abc\tx\n\ty\nabcdefgh\tz");
    EXPECT_EQ(Only("c   x"), "1:2"); // column 3: three spaces, not five
    EXPECT_EQ(Only("c     x"), "none");
    EXPECT_EQ(Only("y"), "2:8");
    EXPECT_EQ(Only("h        z"), "3:7");
    EXPECT_EQ(Only("\t"), "none");
    EXPECT_EQ(OnlyHex("09"), "none");
    EXPECT_EQ(OnlyHex("20202058"), "none");
    EXPECT_EQ(OnlyHex("2020202059"), "none");
    Find.MatchCase = true;
    EXPECT_EQ(OnlyHex("63202020"), "1:2");
}

TEST_F(SearchText, TabsThatAreNotExpandedAreBytesLikeOthers)
{
    Open("abc\tx\n");
    EXPECT_EQ(Only("c\tx"), "1:2");
    EXPECT_EQ(Only("x"), "1:4");
    EXPECT_EQ(OnlyHex("09"), "1:3");
    EXPECT_EQ(Only("c   x"), "none");
}

TEST_F(SearchText, SpacesOfATabAloneAreFound)
{
    DocumentOptions.Ptabs = 1;
    DocumentOptions.TabSize = 4;
    Open("abcd\n\nabcd\t\n");
    EXPECT_EQ(Only("    "), "3:4");
    EXPECT_EQ(Only("     "), "none");
    EXPECT_EQ(OnlyHex("20202020"), "3:4");
}

TEST_F(SearchText, PatternWithSpacesMayStandOverTabs)
{
    DocumentOptions.Ptabs = 1;
    DocumentOptions.TabSize = 2;
    OpenBytes(Dots("\nx\tlongest y\n", 6));
    EXPECT_EQ(Only("x longest y"), "61:0");
    EXPECT_EQ(Only("longest y"), "61:2");
    EXPECT_EQ(Only("x longest  y"), "none");
}

TEST_F(SearchText, ExpandedLineIsSearchedUpToItsCut)
{
    DocumentOptions.Ptabs = 1;
    DocumentOptions.TabSize = 8;
    const std::string tabs(127, '\t'); // 1016 columns
    Open(tabs + "abcdefghi\n");
    EXPECT_EQ(Only("abcdefgh"), "1:1016");
    EXPECT_EQ(Only("h"), "1:1023");
    EXPECT_EQ(Only("hi"), "none");
    EXPECT_EQ(Only("i"), "none");
    DocumentOptions.Ptabs = 0;
    EXPECT_EQ(Only("hi"), "1:134");
}

TEST_F(SearchText, LongestTextLineIsSearchedToItsEnd)
{
    DocumentOptions.MaxLineLen = 1024;
    Bytes content = Lines(2 * BlockBytes, 99);
    content[BlockBytes - 1025] = '\n';
    std::fill(content.begin() + BlockBytes - 1024, content.begin() + BlockBytes + 1024, '.');
    content[BlockBytes + 1024] = '\n';
    Put(content, BlockBytes - 1024, "[");
    Put(content, BlockBytes + 1021, "+-]");
    OpenBytes(content);
    ASSERT_TRUE(Document.IsText);
    const std::string line = std::to_string(Document.LineTable[1] + 1);
    EXPECT_EQ(Only("["), line + ":0");
    EXPECT_EQ(Only("+-]"), line + ":2045");
}

TEST_F(SearchText, MatchOverTheEndOfABlockIsFoundInALine)
{
    for (std::size_t before = 0; before <= 5; ++before) {
        OpenBytes(Dots("aXbXc", before));
        ASSERT_TRUE(Document.IsText);
        // The line end that stood before the boundary is gone unless nothing of the text is before it.
        const std::string place = before == 0 ? "61:0" : "60:" + std::to_string(500 - before);
        EXPECT_EQ(Only("axbxc"), place);
        EXPECT_EQ(Only("axbxd"), "none");
        Find.MatchCase = true;
        EXPECT_EQ(Only("aXbXc"), place);
        EXPECT_EQ(OnlyHex("6158625863"), place);
        Find.MatchCase = false;
        LookForText("x");
        EXPECT_EQ(All(false).size(), 2u) << before;
        EXPECT_EQ(All(true).size(), 2u) << before;
    }
}

TEST_F(SearchText, LinesBesideOneOverTheEndOfABlockAreSearchedToo)
{
    OpenBytes(Dots("ab\nx...ab\nab", 6)); // the second of the three lines goes on in block 2
    LookForText("ab");
    EXPECT_EQ(All(false), (Places{"60:494", "61:4", "62:0"}));
    EXPECT_EQ(All(true), (Places{"62:0", "61:4", "60:494"}));
}

TEST_F(SearchText, PairSplitByTheBlockBoundaryIsOneLineEnd)
{
    OpenBytes(Dots("ab\r\nab", 3));
    LookForText("ab");
    EXPECT_EQ(All(false), (Places{"60:497", "61:0"}));
    EXPECT_EQ(All(true), (Places{"61:0", "60:497"}));
}

TEST_F(SearchText, LineThatBeginsWithABlockIsFoundBothWays)
{
    for (const char* text : {"ab\nab\nab", "ab\rab\nab"}) {
        OpenBytes(Dots(text, 3));
        LookForText("ab");
        EXPECT_EQ(All(false), (Places{"60:497", "61:0", "62:0"}));
        EXPECT_EQ(All(true), (Places{"62:0", "61:0", "60:497"}));
    }
}

TEST_F(SearchText, LineFeedThatOpensABlockCountsForwardsAndNotBackwards)
{
    // The boundary stands between two line feeds: read in turn, an empty line 61 lies between them; by the
    // counts, line 61 is the one behind.
    OpenBytes(Dots("ab\n\nab", 3));
    LookForText("ab");
    EXPECT_EQ(All(false), (Places{"60:497", "62:0"}));
    EXPECT_EQ(All(true), (Places{"61:0", "60:497"}));
}

TEST_F(SearchText, MatchesInSeveralBlocksAreFoundWithAnySlots)
{
    Bytes content = Lines(200000, 70);
    Places forwards;
    for (const std::int32_t at : {10, 29998, 30005, 59998, 60010, 89997, 120000, 149999, 199990}) {
        Put(content, at, "MARK");
        forwards.push_back(std::to_string(at / 71 + 1) + ":" + std::to_string(at % 71));
    }
    for (std::int32_t slots = 0; slots <= 5; ++slots) {
        StartDocuments(slots);
        OpenBytes(content);
        ASSERT_EQ(Document.LineCount, 2817);
        LookForText("mark");
        EXPECT_EQ(All(false), forwards) << slots;
        EXPECT_EQ(All(true), Places(forwards.rbegin(), forwards.rend())) << slots;
    }
}

TEST_F(SearchText, ReadPositionLeftElsewhereMakesNoDifference)
{
    OpenBytes(Dots("ab\nab", 3));
    LookForText("ab");
    const auto leaveElsewhere = [](int where) {
        switch (where) {
        case 0: SeekLine(0, 12345); break;
        case 1: SeekLine(0, Document.FileSize); break;
        case 2: TextOfLine(60); break;
        case 3: TextOfLine(1); break;
        case 4: TextOfBytes(BlockBytes - 10, 20); break;
        case 5: TextOfLine(Document.LineCount); break;
        default: DiscardParkedBlocks(); break;
        }
    };
    for (int where = 0; where <= 6; ++where) {
        Find.Backwards = false;
        leaveElsewhere(where);
        EXPECT_EQ(From(1, 0), "60:497") << where;
        leaveElsewhere(where);
        EXPECT_EQ(From(60, 498), "61:0") << where;
        leaveElsewhere(where);
        EXPECT_EQ(From(61, 1), "none") << where;
        Find.Backwards = true;
        leaveElsewhere(where);
        EXPECT_EQ(From(Document.LineCount, 0), "61:0") << where;
        leaveElsewhere(where);
        EXPECT_EQ(From(61, 0), "60:497") << where;
        leaveElsewhere(where);
        EXPECT_EQ(From(60, 497), "none") << where;
    }
}

TEST_F(SearchText, RecordsAreSearchedAsLines)
{
    Bytes content = Records(1000, 10);
    Put(content, 123, "abc");
    Put(content, 997, "abc");
    OpenBytes(content);
    ASSERT_FALSE(Document.IsText);
    LookForText("ABC");
    EXPECT_EQ(All(false), (Places{"13:3", "100:7"}));
    EXPECT_EQ(All(true), (Places{"100:7", "13:3"}));
}

TEST_F(SearchText, LineEndsInARecordAreBytesLikeOthers)
{
    Bytes content = Records(1000, 10);
    Put(content, 121, "a\r\nb");
    OpenBytes(content);
    ASSERT_FALSE(Document.IsText);
    EXPECT_EQ(OnlyHex("0D0A"), "13:2");
    EXPECT_EQ(OnlyHex("0D"), "13:2");
    EXPECT_EQ(OnlyHex("0A"), "13:3");
    EXPECT_EQ(Only("a\r\nb"), "13:1");
    Find.MatchCase = true;
    EXPECT_EQ(OnlyHex("610D0A62"), "13:1");
}

TEST_F(SearchText, MatchNeverSpansTwoRecords)
{
    Bytes content = Records(1000, 10);
    Put(content, 129, "ab");
    OpenBytes(content);
    EXPECT_EQ(Only("ab"), "none");
    EXPECT_EQ(Only("a"), "13:9");
    EXPECT_EQ(Only("b"), "14:0");
}

TEST_F(SearchText, ShortLastRecordIsSearched)
{
    Bytes content = Records(1003, 10);
    Put(content, 1000, "abc");
    OpenBytes(content);
    EXPECT_EQ(Only("abc"), "101:0");
    EXPECT_EQ(Only("c"), "101:2");
}

TEST_F(SearchText, RecordOfOneByteHoldsOneByte)
{
    Bytes content = Records(600, 1);
    Put(content, 100, "ab");
    OpenBytes(content);
    EXPECT_EQ(Only("a"), "101:0");
    EXPECT_EQ(Only("b"), "102:0");
    EXPECT_EQ(Only("ab"), "none");
}

TEST_F(SearchText, MatchOverTheEndOfABlockIsFoundInARecord)
{
    for (const std::int32_t length : {70, 75, 1024}) {
        for (std::int32_t at = BlockBytes - 5; at <= BlockBytes; ++at) {
            Bytes content = Records(3 * BlockBytes, length);
            Put(content, at, "aXbXc");
            OpenBytes(content);
            ASSERT_FALSE(Document.IsText);
            const bool whole = at % length + 5 <= length;
            const std::string place = std::to_string(at / length + 1) + ":" + std::to_string(at % length);
            EXPECT_EQ(Only("axbxc"), whole ? place : "none") << length << " " << at;
            Find.MatchCase = true;
            EXPECT_EQ(OnlyHex("6158625863"), whole ? place : "none") << length << " " << at;
            Find.MatchCase = false;
        }
    }
}

TEST_F(SearchText, ZeroBytesInRecordsAreSearchedAsSpaces)
{
    Bytes content = Records(1000, 10);
    Put(content, 121, std::string_view("a\0b", 3));
    OpenBytes(content);
    EXPECT_EQ(Only("a b"), "13:1");
    EXPECT_EQ(OnlyHex("20"), "13:2");
    EXPECT_EQ(OnlyHex("00"), "none");
}

TEST_F(SearchText, CharactersOfTwoBytesAreFoldedAsTheSystemDoes)
{
    TestPort::SetTwoByteCharacters(true);
    Open("x\n\x81"
         "b\nxb\n");
    EXPECT_EQ(Only("b"), "3:1"); // the b of line 2 is half a character, which has no capital
    EXPECT_EQ(Only("\x81"
                   "b"),
              "2:0");
    EXPECT_EQ(Only("X"), "1:0 to 3:0");
    Find.MatchCase = true;
    EXPECT_EQ(Only("b"), "2:1 to 3:1");
}

TEST_F(SearchText, WithCharactersOfTwoBytesEveryLineIsRead)
{
    TestPort::SetTwoByteCharacters(true);
    OpenBytes(Dots("aXbXc", 3));
    EXPECT_EQ(Only("axbxc"), "60:497");
    EXPECT_EQ(Only("nothing"), "none");
    OpenBytes(Records(3 * BlockBytes, 75));
    EXPECT_EQ(Only("nothing"), "none");
}

TEST_F(SearchText, SearchThroughTheDocumentReadsEachBlockOnce)
{
    for (const std::int32_t slots : {0, 1, 5}) {
        StartDocuments(slots);
        OpenBytes(Lines(10 * BlockBytes, 70));
        TextOfLine(Document.LineCount);
        EXPECT_LE(ReadsOf(First, "xyz"), 10 + 1) << slots;
        EXPECT_LE(ReadsOf(First, "a b"), 10 + 1) << slots;
    }
    StartDocuments(1);
    OpenBytes(Lines(10 * BlockBytes, 70));
    TextOfLine(1);
    EXPECT_LE(ReadsOf(Last, "xyz"), 10);
    OpenBytes(Records(10 * BlockBytes, 75));
    TextOfLine(1);
    EXPECT_LE(ReadsOf(First, "xyz"), 10);
    EXPECT_LE(ReadsOf(Last, "xyz"), 10);
}

TEST_F(SearchText, MatchInTheBlockHeldNeedsNoRead)
{
    OpenBytes(Lines(10 * BlockBytes, 99));
    TextOfLine(1);
    const int before = TestPort::FileReads();
    EXPECT_EQ(First("bb"), "2:0");
    EXPECT_EQ(Again(), "2:1");
    EXPECT_EQ(TestPort::FileReads(), before);
}

TEST_F(SearchText, ShrunkFileEndsTheSearchWithoutAMatch)
{
    for (const std::size_t left : {std::size_t{0}, std::size_t{100}, std::size_t{BlockBytes}, std::size_t{45000}}) {
        for (std::int32_t slots = 0; slots <= 5; slots += 5) {
            StartDocuments(slots);
            OpenBytes(Lines(4 * BlockBytes, 99));
            TestPort::AddFile(TestPath, Lines(left, 99));
            DiscardParkedBlocks();
            for (const char* text : {"zz9", "a b", " "}) {
                EXPECT_LE(ReadsOf(First, text), 10) << left << " " << slots;
                EXPECT_LE(ReadsOf(Last, text), 10) << left << " " << slots;
            }
            LookForHex("0102");
            EXPECT_EQ(FirstPlace(), "none");
            EXPECT_EQ(LastPlace(), "none");
        }
    }
}

TEST_F(SearchText, ShrunkFileIsSearchedAsFarAsItIsLeft)
{
    OpenBytes(Lines(4 * BlockBytes, 99));
    TestPort::AddFile(TestPath, Lines(45000, 99));
    DiscardParkedBlocks();
    LookForText("zz");
    EXPECT_EQ(FirstPlace(), "26:0");
    EXPECT_EQ(From(430, 0), "442:0");
    EXPECT_EQ(From(443, 0), "none");
}

TEST_F(SearchText, ShrunkFileOfRecordsEndsTheSearchWithoutAMatch)
{
    for (const std::size_t left : {std::size_t{0}, std::size_t{100}, std::size_t{BlockBytes}, std::size_t{45000}}) {
        for (std::int32_t slots = 0; slots <= 5; slots += 5) {
            StartDocuments(slots);
            OpenBytes(Records(4 * BlockBytes, 75));
            TestPort::AddFile(TestPath, Bytes(left, '.'));
            DiscardParkedBlocks();
            EXPECT_LE(ReadsOf(First, "ab"), 10) << left << " " << slots;
            EXPECT_LE(ReadsOf(Last, "ab"), 10) << left << " " << slots;
        }
    }
}

TEST_F(SearchText, FileThatShrinksAtEachReadEndsTheSearch)
{
    for (const std::size_t step : {std::size_t{1}, std::size_t{10000}, std::size_t{31000}, std::size_t{70000}}) {
        for (const bool backwards : {false, true}) {
            for (const bool text : {false, true}) {
                StartDocuments(1);
                OpenBytes(text ? Lines(6 * BlockBytes, 99) : Records(6 * BlockBytes, 75));
                DiscardParkedBlocks();
                TestFile& file = TestPort::AddFile(TestPath, Lines(6 * BlockBytes, 99));
                TestPort::BeforeEachRead(
                    [&file, step] { file.Content.resize(file.Content.size() - std::min(file.Content.size(), step)); });
                EXPECT_LE(ReadsOf(backwards ? Last : First, "xyz"), 20) << step << backwards << text;
            }
        }
    }
}

TEST_F(SearchText, VanishedFileEndsTheSearchWithoutAMatch)
{
    for (std::int32_t slots = 0; slots <= 5; slots += 5) {
        StartDocuments(slots);
        OpenBytes(Lines(4 * BlockBytes, 99));
        TestPort::RemoveFile(TestPath);
        DiscardParkedBlocks();
        EXPECT_LE(ReadsOf(First, "xyz"), 10) << slots;
        EXPECT_LE(ReadsOf(Last, "xyz"), 10) << slots;
        EXPECT_LE(ReadsOf(First, " "), 10) << slots;
    }
}

TEST_F(SearchText, ReleasedDocumentIsSearchedAsFarAsItIsHeld)
{
    OpenBytes(Lines(4 * BlockBytes, 99));
    TextOfLine(1);
    CloseFileHandle();
    DiscardParkedBlocks();
    LookForText("bb");
    EXPECT_EQ(FirstPlace(), "2:0");
    EXPECT_LE(ReadsOf(First, "xyz"), 4);
    EXPECT_LE(ReadsOf(Last, "xyz"), 4);
    EXPECT_LE(ReadsOf(First, " "), 4);
}

TEST_F(SearchText, ReleasedSmallDocumentIsSearchedWhole)
{
    Open("one\ntwo\nthree");
    CloseFileHandle();
    EXPECT_EQ(Only("two"), "2:0");
    EXPECT_EQ(Only("four"), "none");
}

TEST_F(SearchText, SearchedLineIsTranslatedAndExpanded)
{
    DocumentOptions.Ptabs = 1;
    ViewOptions.EbcdicToAscii = true;
    ViewOptions.OemToAnsi = 1;
    Open("\xC1\t\x82\x84");
    const LineText line = ReadSearchedLine(1);
    EXPECT_STREQ(line.Text, "A bd");
    EXPECT_EQ(line.Length, 4);
}

TEST_F(SearchText, SelectionOfOneLineIsTaken)
{
    Open("one\ntwo three four\nfive");
    char text[FindTextSize] = "before";
    View.SelLineA = View.SelLineB = 2;
    View.SelColA = 4;
    View.SelColB = 9;
    EXPECT_TRUE(TakeSelectedText(text));
    EXPECT_STREQ(text, "three");
    std::swap(View.SelColA, View.SelColB);
    EXPECT_TRUE(TakeSelectedText(text));
    EXPECT_STREQ(text, "three");
    View.SelColA = 10;
    View.SelColB = 99; // behind the line's end
    EXPECT_TRUE(TakeSelectedText(text));
    EXPECT_STREQ(text, "four");
}

TEST_F(SearchText, SelectionIsTakenUpTo29Characters)
{
    Open("0123456789012345678901234567890123456789");
    char text[FindTextSize] = "";
    View.SelLineA = View.SelLineB = 1;
    View.SelColA = 1;
    View.SelColB = 40;
    EXPECT_TRUE(TakeSelectedText(text));
    EXPECT_STREQ(text, "12345678901234567890123456789");
}

TEST_F(SearchText, SelectionIsTakenAsTheLineIsDisplayed)
{
    DocumentOptions.Ptabs = 1;
    ViewOptions.EbcdicToAscii = true;
    Open("\xC1\t\x82\x84");
    char text[FindTextSize] = "";
    View.SelLineA = View.SelLineB = 1;
    View.SelColB = 4;
    EXPECT_TRUE(TakeSelectedText(text));
    EXPECT_STREQ(text, "A bd");
}

TEST_F(SearchText, SelectionThatIsNotOfOneTextLineIsNotTaken)
{
    Open("one\ntwo three four\nfive");
    char text[FindTextSize] = "before";
    EXPECT_FALSE(TakeSelectedText(text)); // there is none
    View.SelLineA = 2;
    View.SelLineB = 3;
    View.SelColB = 2;
    EXPECT_FALSE(TakeSelectedText(text));
    View.SelLineB = 2;
    View.HexMode = true;
    EXPECT_FALSE(TakeSelectedText(text));
    View.HexMode = false;
    View.SelColA = View.SelColB = 2;
    EXPECT_FALSE(TakeSelectedText(text));
    View.SelColA = 50;
    View.SelColB = 60; // behind the line's end
    EXPECT_FALSE(TakeSelectedText(text));
    EXPECT_STREQ(text, "before");
}
