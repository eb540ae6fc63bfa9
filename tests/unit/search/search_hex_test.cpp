#include "search/search_hex.h"

#include "search/search_origin.h"
#include "unit/search/search_fixture.h"
#include "view/view_state.h"

#include <cstring>
#include <string>
#include <vector>

namespace {

using Offsets = std::vector<std::int32_t>;

constexpr std::int32_t None = -1;

class SearchHex : public SearchFixture {
protected:
    void SetUp() override
    {
        SearchFixture::SetUp();
        View.HexMode = true;
    }

    static void LookForText(const char* text)
    {
        Find.FindHex[0] = '\0';
        CopyText(Find.LastFindText, text);
    }

    static void LookForHex(const char* digits) { CopyText(Find.FindHex, digits); }

    // The offset of the match, or None.
    static std::int32_t FromRow(std::int32_t row, std::int32_t column)
    {
        const SearchPattern pattern = PreparePattern(Find.LastFindText);
        if (!SearchHexRows(pattern, row, column)) {
            return None;
        }
        EXPECT_EQ(Find.FoundLen, pattern.Length);
        EXPECT_GE(Find.FoundCol, 0);
        EXPECT_LT(Find.FoundCol, HexRowBytes);
        return (Find.FoundLine - 1) * HexRowBytes + Find.FoundCol;
    }

    static std::int32_t From(std::int32_t offset) { return FromRow(offset / HexRowBytes + 1, offset % HexRowBytes); }

    static std::int32_t Forwards(std::int32_t offset)
    {
        Find.Backwards = false;
        return From(offset);
    }

    static std::int32_t Backwards(std::int32_t offset)
    {
        Find.Backwards = true;
        return From(offset);
    }

    static std::int32_t First()
    {
        Find.Backwards = false;
        return FromRow(1, 0);
    }

    static std::int32_t Last()
    {
        Find.Backwards = true;
        const SearchOrigin origin = OriginOfSearch();
        return FromRow(origin.Line, origin.Column);
    }

    // Where it is found in both directions, when that is the same place.
    static std::int32_t Only()
    {
        const std::int32_t first = First();
        EXPECT_EQ(Last(), first);
        return first;
    }

    static std::int32_t Again()
    {
        const SearchOrigin origin = OriginOfRepeat();
        return FromRow(origin.Line, origin.Column);
    }

    // All matches, one after the other.
    static Offsets All(bool backwards)
    {
        Offsets offsets;
        for (std::int32_t offset = backwards ? Last() : First(); offset != None && offsets.size() < 100;
             offset = Again()) {
            offsets.push_back(offset);
        }
        return offsets;
    }

    // Size dots with text at each of the offsets.
    static Bytes Dots(std::int32_t size, std::string_view text, const Offsets& offsets)
    {
        Bytes content(static_cast<std::size_t>(size), '.');
        for (const std::int32_t offset : offsets) {
            memcpy(content.data() + offset, text.data(), text.size());
        }
        return content;
    }

    static int Reads(std::int32_t (*search)())
    {
        const int before = TestPort::FileReads();
        EXPECT_EQ(search(), None);
        return TestPort::FileReads() - before;
    }
};

// The system's characters of one byte, which are looked for in whole blocks, and those of two, for which
// every window is read.
class SearchHexBothWays : public SearchHex, public testing::WithParamInterface<bool> {
protected:
    void SetUp() override
    {
        SearchHex::SetUp();
        TestPort::SetTwoByteCharacters(GetParam());
    }

    static void Restart(std::int32_t slots)
    {
        StartDocuments(slots);
        TestPort::SetTwoByteCharacters(GetParam());
    }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Characters, SearchHexBothWays, testing::Values(false, true),
                         [](const testing::TestParamInfo<bool>& characters) {
                             return characters.param ? "OfTwoBytes" : "OfOneByte";
                         });

TEST_F(SearchHex, MatchIsARowFromOneAndAByteWithinIt)
{
    OpenBytes(Dots(100, "abc", {37}));
    LookForText("abc");
    EXPECT_EQ(First(), 37);
    EXPECT_EQ(Find.FoundLine, 3);
    EXPECT_EQ(Find.FoundCol, 5);
    EXPECT_EQ(Find.FoundLen, 3);
    LookForHex("62");
    EXPECT_EQ(Last(), 38);
    EXPECT_EQ(Find.FoundLine, 3);
    EXPECT_EQ(Find.FoundCol, 6);
    EXPECT_EQ(Find.FoundLen, 1);
}

TEST_F(SearchHex, ColumnSixteenIsTheNextRowsFirst)
{
    OpenBytes(Dots(100, "ab", {16, 32}));
    LookForText("ab");
    EXPECT_EQ(FromRow(1, 15), 16);
    EXPECT_EQ(FromRow(1, 16), 16);
    EXPECT_EQ(FromRow(1, 17), 32);
    EXPECT_EQ(FromRow(2, 16), 32);
    EXPECT_EQ(FromRow(2, 17), None);
}

TEST_F(SearchHex, ColumnsOfOtherRowsCountFromTheirRow)
{
    OpenBytes(Dots(100, "ab", {16, 32}));
    LookForText("ab");
    EXPECT_EQ(FromRow(2, -1), 16);
    EXPECT_EQ(FromRow(3, -15), 32);
    EXPECT_EQ(FromRow(3, -16), 16);
    EXPECT_EQ(FromRow(1, 40), None);
    Find.Backwards = true;
    EXPECT_EQ(FromRow(4, -1), 32);
    EXPECT_EQ(FromRow(1, 40), 32);
    EXPECT_EQ(FromRow(3, -10), 16);
}

TEST_F(SearchHex, SearchFromOutsideTheFileFindsNothing)
{
    OpenBytes(Dots(100, "a", {0, 50, 99}));
    LookForText("a");
    for (const bool backwards : {false, true}) {
        Find.Backwards = backwards;
        EXPECT_EQ(FromRow(1, -1), None);
        EXPECT_EQ(FromRow(0, 0), None);
        EXPECT_EQ(FromRow(-5, 3), None);
        EXPECT_EQ(FromRow(7, 5), None); // 101
        EXPECT_EQ(FromRow(8, 0), None);
        EXPECT_EQ(FromRow(INT32_MAX, INT32_MAX), None);
        EXPECT_EQ(FromRow(INT32_MIN, INT32_MIN), None);
    }
}

TEST_F(SearchHex, EndOfTheFileIsInside)
{
    OpenBytes(Dots(100, "a", {0, 50, 99}));
    LookForText("a");
    EXPECT_EQ(Forwards(100), None);
    EXPECT_EQ(Backwards(100), 99);
}

TEST_F(SearchHex, FirstAndLastByteAreFound)
{
    OpenBytes(Dots(100, "A", {0, 99}));
    LookForText("A");
    EXPECT_EQ(First(), 0);
    EXPECT_EQ(Again(), 99);
    EXPECT_EQ(Again(), None);
    EXPECT_EQ(Last(), 99);
    EXPECT_EQ(Again(), 0);
    EXPECT_EQ(Again(), None);
}

TEST_F(SearchHex, WholeFileIsFoundForwards)
{
    OpenBytes(BytesOf("ABCDE"));
    LookForText("abcde");
    EXPECT_EQ(Forwards(0), 0);
    EXPECT_EQ(Backwards(5), 0);
    LookForText("abcdef");
    EXPECT_EQ(Forwards(0), None);
    EXPECT_EQ(Backwards(5), None);
}

TEST_F(SearchHex, EmptyFileHoldsNothing)
{
    OpenBytes({});
    LookForText("a");
    EXPECT_EQ(First(), None);
    EXPECT_EQ(Last(), None);
    EXPECT_EQ(Backwards(0), None);
}

TEST_F(SearchHex, TextsAndBytesAreFoundWhateverTheirCase)
{
    OpenBytes(BytesOf("....aBc....AbC....."));
    for (const char* digits : {"", "616263", "414243", "614263"}) {
        LookForHex(digits);
        CopyText(Find.LastFindText, "abc");
        EXPECT_EQ(All(false), (Offsets{4, 11})) << digits;
        EXPECT_EQ(All(true), (Offsets{11, 4})) << digits;
    }
}

TEST_F(SearchHex, CaseCountsWhenItMatters)
{
    Find.MatchCase = true;
    OpenBytes(BytesOf("....aBc....AbC....."));
    LookForText("abc");
    EXPECT_EQ(Only(), None);
    LookForText("AbC");
    EXPECT_EQ(Only(), 11);
    LookForHex("614263");
    EXPECT_EQ(Only(), 4);
    LookForHex("414243");
    EXPECT_EQ(Only(), None);
}

TEST_F(SearchHex, AccentedLettersAreFoldedAsTheSystemDoes)
{
    OpenBytes(BytesOf("...\xE4\xC4..."));
    LookForHex("E4");
    EXPECT_EQ(All(false), (Offsets{3, 4}));
    Find.MatchCase = true;
    EXPECT_EQ(Only(), 3);
}

TEST_F(SearchHex, EveryByteIsFoundAsItIs)
{
    Bytes content(300, '.');
    for (std::size_t byte = 0; byte < 256; ++byte) {
        content[byte + 20] = static_cast<std::uint8_t>(byte);
    }
    OpenBytes(content);
    Find.MatchCase = true;
    LookForHex("0001");
    EXPECT_EQ(Only(), 20); // no space stands for the zero byte here
    LookForHex("0D0E");
    EXPECT_EQ(Only(), 33);
    LookForHex("090A");
    EXPECT_EQ(Only(), 29);
    LookForHex("FEFF");
    EXPECT_EQ(Only(), 274);
    LookForText(" ");
    EXPECT_EQ(Only(), 52);
}

TEST_F(SearchHex, LinesAndTabsAndTranslationsAreNoMatterHere)
{
    DocumentOptions.Ptabs = 1;
    ViewOptions.EbcdicToAscii = true;
    OpenBytes(BytesOf("ab\r\ncd\tef\x81\n"));
    ASSERT_TRUE(Document.IsText);
    LookForText("b\r\nc");
    EXPECT_EQ(Only(), 1);
    LookForText("d\te");
    EXPECT_EQ(Only(), 5);
    LookForText("a");
    EXPECT_EQ(Forwards(1), None);
    LookForHex("81");
    EXPECT_EQ(Only(), 9);
}

TEST_F(SearchHex, LongestPatternsAreFound)
{
    const std::string longest = "abcdefghijklmnopqrstuvwxyz012";
    ASSERT_EQ(longest.size(), FindTextSize - 1);
    OpenBytes(Dots(1000, longest, {500}));
    LookForText(longest.c_str());
    EXPECT_EQ(Only(), 500);
    LookForHex("6162636465666768696A6B6C6D6E");
    EXPECT_EQ(Only(), 500);
}

TEST_F(SearchHex, ByteABackwardSearchStartsAtMayEndTheMatch)
{
    OpenBytes(Dots(100, "AB", {40}));
    LookForText("ab");
    EXPECT_EQ(Backwards(41), 40);
    EXPECT_EQ(Backwards(40), None);
    EXPECT_EQ(Backwards(42), 40);
}

TEST_F(SearchHex, ByteABackwardSearchStartsAtIsNotFolded)
{
    OpenBytes(Dots(100, "ab", {40}));
    LookForText("ab");
    EXPECT_EQ(Backwards(41), None); // A and b
    EXPECT_EQ(Backwards(42), 40);
    OpenBytes(Dots(100, "aB", {40}));
    EXPECT_EQ(Backwards(41), 40);
    Find.MatchCase = true;
    LookForText("aB");
    EXPECT_EQ(Backwards(41), 40);
}

TEST_F(SearchHex, MatchAtTheFilesBeginningIsFoundBackwardsOnlyFromBehindIt)
{
    OpenBytes(BytesOf("ABC......"));
    LookForText("ABC");
    EXPECT_EQ(Backwards(8), 0);
    EXPECT_EQ(Backwards(3), 0);
    EXPECT_EQ(Backwards(2), None); // although the match ends there
    EXPECT_EQ(Backwards(0), None);
}

TEST_F(SearchHex, MatchesOverlap)
{
    Find.MatchCase = true;
    OpenBytes(BytesOf("..aaaa.."));
    LookForText("aa");
    EXPECT_EQ(All(false), (Offsets{2, 3, 4}));
    EXPECT_EQ(All(true), (Offsets{4, 3, 2}));
}

TEST_F(SearchHex, PreviousMatchIsAnEarlierOneAndNotTheSame)
{
    OpenBytes(Dots(2000, "AB", {10, 700, 1500}));
    LookForText("ab");
    EXPECT_EQ(Forwards(500), 700);
    EXPECT_EQ(Again(), 1500);
    Find.Backwards = true;
    EXPECT_EQ(Again(), 700);
    EXPECT_EQ(Again(), 10);
    EXPECT_EQ(Again(), None);
}

TEST_F(SearchHex, PatternThatTheFileCannotHoldIsGivenUpWithoutReading)
{
    OpenBytes(Bytes(10 * BlockBytes, 'a'));
    const ByteTable noByte = {};
    EXPECT_FALSE(MakeNeedle(noByte, "a", 1).Possible);
    LookForText("a");
    const int before = TestPort::FileReads();
    SearchPattern small;
    small.Bytes[0] = 'a'; // not in capitals, as no folded byte is
    small.Length = 1;
    EXPECT_FALSE(SearchHexRows(small, 1, 0));
    Find.Backwards = true;
    EXPECT_FALSE(SearchHexRows(small, 18000, 0));
    EXPECT_EQ(TestPort::FileReads(), before);
}

TEST_P(SearchHexBothWays, MatchAcrossTheEndOfAWindowIsFound)
{
    for (const std::int32_t around : {512, 1024, 1536}) {
        for (std::int32_t at = around - 6; at <= around + 1; ++at) {
            OpenBytes(Dots(3000, "aBcDe", {at}));
            LookForText("abcde");
            for (const std::int32_t start : {0, 1, 15, 16, 17, 300}) {
                EXPECT_EQ(Forwards(start), at) << start;
            }
            for (const std::int32_t start : {3000, 2999, 2993, 2992, 2991, 2048, 2047, 1800}) {
                EXPECT_EQ(Backwards(start), at) << start;
            }
        }
    }
}

TEST_P(SearchHexBothWays, MatchIsFoundFromAnyDistance)
{
    OpenBytes(Dots(3000, "aBc", {1500}));
    LookForText("abc");
    for (std::int32_t start = 0; start <= 1500; ++start) {
        ASSERT_EQ(Forwards(start), 1500) << start;
    }
    EXPECT_EQ(Forwards(1501), None);
    for (std::int32_t start = 1503; start <= 3000; ++start) {
        ASSERT_EQ(Backwards(start), 1500) << start;
    }
    EXPECT_EQ(Backwards(1501), None);
}

TEST_P(SearchHexBothWays, MatchAcrossTheEndOfABlockIsFound)
{
    for (std::int32_t at = BlockBytes - 6; at <= BlockBytes + 1; ++at) {
        OpenBytes(Dots(3 * BlockBytes, "aBcDe", {at, BlockBytes + at}));
        LookForText("abcde");
        EXPECT_EQ(All(false), (Offsets{at, BlockBytes + at}));
        EXPECT_EQ(All(true), (Offsets{BlockBytes + at, at}));
        Find.MatchCase = true;
        LookForHex("6142634465");
        EXPECT_EQ(All(false), (Offsets{at, BlockBytes + at}));
        EXPECT_EQ(All(true), (Offsets{BlockBytes + at, at}));
        LookForText("aBcDf");
        EXPECT_EQ(Only(), None);
        Find.MatchCase = false;
    }
}

TEST_P(SearchHexBothWays, FileOfWholeBlocksIsSearchedToItsEnd)
{
    OpenBytes(Dots(2 * BlockBytes, "AB", {2 * BlockBytes - 2}));
    LookForText("ab");
    EXPECT_EQ(Only(), 2 * BlockBytes - 2);
    EXPECT_EQ(Backwards(2 * BlockBytes), 2 * BlockBytes - 2);
    EXPECT_EQ(Forwards(2 * BlockBytes), None);
    EXPECT_EQ(Forwards(2 * BlockBytes - 1), None);
}

TEST_P(SearchHexBothWays, MatchesInSeveralBlocksAreFoundWithAnySlots)
{
    const Offsets offsets = {5, 29996, 29998 + 512, 59997, 60003, 89999, 120000, 149000};
    for (std::int32_t slots = 0; slots <= 5; ++slots) {
        Restart(slots);
        OpenBytes(Dots(5 * BlockBytes, "mArK", offsets));
        LookForText("mark");
        EXPECT_EQ(All(false), offsets) << slots;
        EXPECT_EQ(All(true), Offsets(offsets.rbegin(), offsets.rend())) << slots;
    }
}

TEST_P(SearchHexBothWays, ReadPositionLeftElsewhereMakesNoDifference)
{
    OpenBytes(Dots(3 * BlockBytes, "AB", {100, 50000}));
    LookForText("ab");
    for (int where = 0; where < 5; ++where) {
        const auto leaveElsewhere = [where] {
            switch (where) {
            case 0: SeekLine(0, 45000); break;
            case 1: SeekLine(0, Document.FileSize); break;
            case 2: TextOfLine(3); break;
            case 3: TextOfBytes(BlockBytes - 5, 20); break;
            default: DiscardParkedBlocks(); break;
            }
        };
        leaveElsewhere();
        EXPECT_EQ(Forwards(0), 100) << where;
        leaveElsewhere();
        EXPECT_EQ(Forwards(101), 50000) << where;
        leaveElsewhere();
        EXPECT_EQ(Backwards(Document.FileSize), 50000) << where;
        leaveElsewhere();
        EXPECT_EQ(Backwards(50000), 100) << where;
    }
}

TEST_P(SearchHexBothWays, SearchThroughTheFileReadsEachBlockOnce)
{
    for (const std::int32_t slots : {1, 2, 5}) {
        Restart(slots);
        OpenBytes(Dots(10 * BlockBytes, "ab", {0}));
        LookForText("abc");
        SeekLine(0, 9 * BlockBytes);
        EXPECT_LE(Reads(First), 10) << slots;
        SeekLine(0, 0);
        EXPECT_LE(Reads(Last), 10) << slots;
    }
}

TEST_P(SearchHexBothWays, MatchInTheBlockHeldNeedsNoRead)
{
    OpenBytes(Dots(3 * BlockBytes, "AB", {1000, 2000}));
    SeekLine(0, 0);
    LookForText("ab");
    const int before = TestPort::FileReads();
    EXPECT_EQ(Forwards(0), 1000);
    EXPECT_EQ(Again(), 2000);
    EXPECT_EQ(Backwards(2500), 2000);
    EXPECT_EQ(Again(), 1000);
    EXPECT_EQ(Again(), None);
    EXPECT_EQ(TestPort::FileReads(), before);
}

TEST_P(SearchHexBothWays, ShrunkFileEndsTheSearchWithoutAMatch)
{
    for (const std::int32_t left : {0, 1, 100, 511, 512, BlockBytes - 1, BlockBytes, BlockBytes + 1, 45000}) {
        for (std::int32_t slots = 0; slots <= 5; slots += 5) {
            Restart(slots);
            OpenBytes(Bytes(4 * BlockBytes, '.'));
            TestPort::AddFile(TestPath, Bytes(static_cast<std::size_t>(left), '.'));
            DiscardParkedBlocks();
            LookForText("abc");
            EXPECT_LE(Reads(First), 12) << left << " " << slots;
            EXPECT_LE(Reads(Last), 12) << left << " " << slots;
            LookForText("a");
            EXPECT_LE(Reads(First), 12) << left << " " << slots;
            EXPECT_LE(Reads(Last), 12) << left << " " << slots;
        }
    }
}

TEST_P(SearchHexBothWays, ShrunkFileIsSearchedAsFarAsItIsLeft)
{
    OpenBytes(Dots(4 * BlockBytes, "AB", {44990}));
    TestPort::AddFile(TestPath, Dots(45000, "AB", {44990, 44998}));
    SeekLine(0, 3 * BlockBytes);
    DiscardParkedBlocks();
    LookForText("ab");
    EXPECT_EQ(All(false), (Offsets{44990, 44998}));
    EXPECT_EQ(Backwards(44999), 44998);
    EXPECT_EQ(Again(), 44990);
    EXPECT_EQ(Again(), None);
    EXPECT_EQ(Forwards(44999), None);
}

TEST_P(SearchHexBothWays, FileThatShrinksAtEachReadEndsTheSearch)
{
    for (const std::size_t step : {std::size_t{1}, std::size_t{10000}, std::size_t{31000}, std::size_t{70000}}) {
        for (std::int32_t (*search)() : {First, Last}) {
            Restart(1);
            OpenBytes(Bytes(6 * BlockBytes, '.'));
            SeekLine(0, search == First ? Document.FileSize : 0);
            DiscardParkedBlocks();
            TestFile& file = TestPort::AddFile(TestPath, Bytes(6 * BlockBytes, '.'));
            TestPort::BeforeEachRead(
                [&file, step] { file.Content.resize(file.Content.size() - std::min(file.Content.size(), step)); });
            LookForText("abc");
            EXPECT_LE(Reads(search), 20) << step;
        }
    }
}

TEST_P(SearchHexBothWays, VanishedFileEndsTheSearchWithoutAMatch)
{
    for (std::int32_t slots = 0; slots <= 5; slots += 5) {
        Restart(slots);
        OpenBytes(Bytes(4 * BlockBytes, '.'));
        TestPort::RemoveFile(TestPath);
        DiscardParkedBlocks();
        LookForText("abc");
        EXPECT_LE(Reads(First), 12) << slots;
        EXPECT_LE(Reads(Last), 12) << slots;
    }
}

TEST_P(SearchHexBothWays, ReleasedDocumentIsSearchedAsFarAsItIsHeld)
{
    OpenBytes(Dots(4 * BlockBytes, "AB", {1000, 50000}));
    SeekLine(0, 0);
    CloseFileHandle();
    DiscardParkedBlocks();
    LookForText("ab");
    EXPECT_EQ(First(), 1000);
    EXPECT_EQ(Again(), None);
    EXPECT_EQ(Last(), None);
}

TEST_P(SearchHexBothWays, ReleasedSmallDocumentIsSearchedWhole)
{
    OpenBytes(Dots(1000, "AB", {700}));
    CloseFileHandle();
    LookForText("ab");
    EXPECT_EQ(Only(), 700);
    LookForText("cd");
    EXPECT_EQ(Only(), None);
}

TEST_P(SearchHexBothWays, LargestFileThatShrankIsSearchedWithoutOverflow)
{
    TestPort::AddFile(TestPath, Dots(100000, "AB", {70000})).StatedSize = INT32_MAX;
    ASSERT_EQ(OpenTestFile(), OpenResult::Opened);
    ASSERT_EQ(Document.FileSize, INT32_MAX);
    LookForText("ab");
    EXPECT_EQ(Forwards(0), 70000);
    EXPECT_EQ(Again(), None);
    EXPECT_EQ(Forwards(INT32_MAX), None);
    EXPECT_EQ(Forwards(INT32_MAX - 2), None);
    EXPECT_EQ(Forwards(INT32_MAX - 600), None);
    EXPECT_EQ(Backwards(INT32_MAX), None);
    EXPECT_EQ(Backwards(90000), 70000);
    EXPECT_EQ(Last(), None);
}

TEST_P(SearchHexBothWays, NothingIsReadBehindTheMatch)
{
    OpenBytes(Dots(6 * BlockBytes, "AB", {BlockBytes + 5, 4 * BlockBytes + 5000}));
    TextOfBytes(0, 1);
    LookForText("ab");
    std::int32_t before = ReadingsAnnounced();
    EXPECT_EQ(Forwards(0), BlockBytes + 5);
    EXPECT_LE(ReadingsAnnounced() - before, 1);
    DiscardParkedBlocks();
    before = ReadingsAnnounced();
    EXPECT_EQ(Backwards(6 * BlockBytes - 1), 4 * BlockBytes + 5000);
    EXPECT_LE(ReadingsAnnounced() - before, 2);
}

TEST_F(SearchHex, CharactersOfTwoBytesAreFoldedAsTheSystemDoes)
{
    TestPort::SetTwoByteCharacters(true);
    OpenBytes(BytesOf("....\x81"
                      "b...xb..."));
    LookForText("b");
    EXPECT_EQ(Forwards(0), 10); // the first is half a character, which has no capital
    Find.MatchCase = true;
    EXPECT_EQ(Forwards(0), 5);
    Find.MatchCase = false;
    LookForText("\x81"
                "b");
    EXPECT_EQ(Forwards(0), 4);
}
