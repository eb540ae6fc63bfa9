// What is selected, part by part and gathered; at the end compared with a selection cut out of the whole file,
// over random files and selections.
//
//   KESTOVAR_TEST_SEED   another seed than the fixed one
//   KESTOVAR_TEST_FILES  another number of files
#include "view/selected_text.h"

#include "unit/document/document_fixture.h"
#include "view/selection.h"
#include "view/translate.h"
#include "view/view_state.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

constexpr std::int32_t SmallestLimit = MaxPartBytes + 2;
constexpr std::int32_t SavedAtOnce = 32000;
constexpr std::int32_t CopiedAtMost = 64000;
constexpr std::int32_t Unlimited = 1000000;

// From column anchorColumn of line anchor to column endColumn of line end.
void Select(std::int32_t anchor, std::int32_t anchorColumn, std::int32_t end, std::int32_t endColumn)
{
    View.SelLineA = View.SelAnchorLine = anchor;
    View.SelLineB = end;
    View.SelColA = anchorColumn;
    View.SelColB = endColumn;
}

std::string TextOf(const SelectedPart& part)
{
    return std::string(part.Text, static_cast<std::size_t>(part.Length));
}

// The parts; "|" stands behind one that is not its whole line, "!" behind that of the last line.
Texts Parts()
{
    Texts parts;
    for (SelectionWalk walk = StartSelectionWalk(); !IsOver(walk); ++walk.NextLine) {
        const SelectedPart part = ReadSelectedPart(walk);
        parts.push_back(TextOf(part) + (part.IsCutShort ? "|" : "") + (part.IsLast ? "!" : ""));
    }
    return parts;
}

// One call, into a buffer of exactly limit bytes.
std::string GatherOnce(SelectionWalk& walk, GatherFor target, std::int32_t limit)
{
    std::vector<char> buffer(static_cast<std::size_t>(limit));
    const std::int32_t used = GatherSelection(walk, target, buffer.data(), limit);
    EXPECT_GE(used, 0);
    EXPECT_LE(used, limit);
    return std::string(buffer.data(), static_cast<std::size_t>(used));
}

// What each call gives until there is no more.
Texts GatherInCalls(GatherFor target, std::int32_t limit)
{
    Texts calls;
    for (SelectionWalk walk = StartSelectionWalk(); !IsOver(walk);) {
        const std::int32_t before = walk.NextLine;
        calls.push_back(GatherOnce(walk, target, limit));
        if (walk.NextLine == before) {
            ADD_FAILURE() << "line " << before << " is never taken";
            break;
        }
    }
    return calls;
}

std::string Joined(const Texts& texts)
{
    std::string all;
    for (const std::string& text : texts) {
        all += text;
    }
    return all;
}

std::string Gathered(GatherFor target, std::int32_t limit = Unlimited)
{
    return Joined(GatherInCalls(target, limit));
}

Bytes Repeated(std::string_view text, std::size_t size)
{
    Bytes content(size);
    for (std::size_t i = 0; i < size; ++i) {
        content[i] = static_cast<std::uint8_t>(text[i % text.size()]);
    }
    return content;
}

class SelectedText : public DocumentFixture {
protected:
    void SetUp() override
    {
        DocumentFixture::SetUp();
        ResetView();
    }

    void TearDown() override
    {
        ResetView();
        DocumentFixture::TearDown();
    }

    static void Open(std::string_view text) { ASSERT_EQ(OpenBytes(BytesOf(text)), OpenResult::Opened); }

    static void OpenRecords(std::string_view text, std::int32_t recordLength)
    {
        DocumentOptions.MaxTextSize = 0;
        DocumentOptions.FixedLineLen = recordLength;
        Open(text);
        ASSERT_FALSE(Document.IsText);
    }

    static void OpenHex(const Bytes& content)
    {
        View.HexMode = true;
        ASSERT_EQ(OpenBytes(content), OpenResult::Opened);
    }

private:
    static void ResetView()
    {
        View = ViewState{};
        ViewOptions = ViewSettings{};
    }
};

constexpr char Greek[] = "alpha\nbravo\ncharlie\ndelta\necho\n";

} // namespace

TEST_F(SelectedText, NothingSelectedIsOverAtOnce)
{
    Open(Greek);
    EXPECT_TRUE(IsOver(StartSelectionWalk()));
    EXPECT_EQ(Gathered(GatherFor::File), "");
    EXPECT_EQ(Gathered(GatherFor::Clipboard), "");
    SelectionWalk walk = StartSelectionWalk();
    EXPECT_EQ(GatherOnce(walk, GatherFor::Clipboard, SmallestLimit), "");
}

TEST_F(SelectedText, OneEndAloneIsNoSelection)
{
    Open(Greek);
    View.SelLineA = View.SelAnchorLine = 2;
    EXPECT_TRUE(IsOver(StartSelectionWalk()));
    View.SelLineA = 0;
    View.SelLineB = 2;
    EXPECT_TRUE(IsOver(StartSelectionWalk()));
}

TEST_F(SelectedText, WalkGoesFromTheUpperToTheLowerEnd)
{
    Open(Greek);
    Select(2, 0, 4, 0);
    EXPECT_EQ(StartSelectionWalk().NextLine, 2);
    EXPECT_EQ(StartSelectionWalk().LastLine, 4);
    Select(4, 0, 2, 0);
    EXPECT_EQ(StartSelectionWalk().NextLine, 2);
    EXPECT_EQ(StartSelectionWalk().LastLine, 4);
}

TEST_F(SelectedText, OneLineIsTakenBetweenItsColumnsInEitherDirection)
{
    Open(Greek);
    Select(3, 1, 3, 4);
    EXPECT_EQ(Parts(), Texts{"har|!"});
    Select(3, 4, 3, 1);
    EXPECT_EQ(Parts(), Texts{"har|!"});
    Select(3, 0, 3, 7);
    EXPECT_EQ(Parts(), Texts{"charlie!"});
    Select(3, 7, 3, 0);
    EXPECT_EQ(Parts(), Texts{"charlie!"});
    Select(3, 2, 3, 2);
    EXPECT_EQ(Parts(), Texts{"|!"});
}

TEST_F(SelectedText, DownwardsFromTheAnchor)
{
    Open(Greek);
    Select(2, 3, 4, 2);
    EXPECT_EQ(Parts(), (Texts{"vo|", "charlie", "de|!"}));
    Select(2, 0, 4, 5);
    EXPECT_EQ(Parts(), (Texts{"bravo", "charlie", "delta!"}));
    Select(2, 3, 3, 2);
    EXPECT_EQ(Parts(), (Texts{"vo|", "ch|!"}));
}

TEST_F(SelectedText, UpwardsFromTheAnchor)
{
    Open(Greek);
    Select(4, 2, 2, 3);
    EXPECT_EQ(Parts(), (Texts{"vo|", "charlie", "de|!"}));
    Select(4, 5, 2, 0);
    EXPECT_EQ(Parts(), (Texts{"bravo", "charlie", "delta!"}));
}

TEST_F(SelectedText, FirstColumnBelongsToTheAnchorHoweverTheEndsAreNamed)
{
    Open(Greek);
    Select(2, 2, 4, 3);
    View.SelAnchorLine = 4;
    EXPECT_EQ(Parts(), (Texts{"vo|", "charlie", "de|!"}));
}

TEST_F(SelectedText, ColumnsBehindALineAreItsEnd)
{
    Open(Greek);
    Select(2, 99, 4, 99);
    EXPECT_EQ(Parts(), (Texts{"|", "charlie", "delta!"}));
    Select(2, 5, 4, 5);
    EXPECT_EQ(Parts(), (Texts{"|", "charlie", "delta!"}));
    Select(3, 2, 3, 99);
    EXPECT_EQ(Parts(), Texts{"arlie|!"});
    Select(3, 8, 3, 99);
    EXPECT_EQ(Parts(), Texts{"|!"});
    Select(3, INT32_MAX, 3, 0);
    EXPECT_EQ(Parts(), Texts{"charlie!"});
}

TEST_F(SelectedText, EmptyLinesAreEmptyParts)
{
    Open("\n\nx\n\n\ny\n\n");
    Select(1, 0, 7, 0);
    EXPECT_EQ(Parts(), (Texts{"", "", "x", "", "", "y", "!"}));
    Select(2, 5, 2, 9);
    EXPECT_EQ(Parts(), Texts{"!"});
}

TEST_F(SelectedText, LineEndsOfEveryKindAreNotPartOfIt)
{
    Open("one\rtwo\r\nthree\nfour\r\rsix");
    Select(1, 0, 6, 99);
    EXPECT_EQ(Parts(), (Texts{"one", "two", "three", "four", "", "six!"}));
}

TEST_F(SelectedText, ReadingAPartLeavesTheWalkAndTheDocumentAsTheyAre)
{
    Open(std::string_view("a\0b\nc\0d\ne\0f\n", 12));
    Select(1, 1, 3, 2);
    SelectionWalk walk = StartSelectionWalk();
    for (int time = 0; time < 3; ++time) {
        EXPECT_EQ(TextOf(ReadSelectedPart(walk)), " b") << time;
    }
    EXPECT_EQ(walk.NextLine, 1);
    ++walk.NextLine;
    TextOfLine(3);
    EXPECT_EQ(TextOf(ReadSelectedPart(walk)), "c d");
    EXPECT_EQ(TextOfBytes(0, 12), std::string("a\0b\nc\0d\ne\0f\n", 12));
}

TEST_F(SelectedText, ZeroBytesAreBlanksAndTabsStayInText)
{
    Open(std::string_view("\0a\0\tb\0\n\t\0\t\n", 11));
    Select(1, 0, 2, 3);
    EXPECT_EQ(Parts(), (Texts{" a \tb ", "\t \t!"}));
}

TEST_F(SelectedText, ColumnsCountInTheLineWithItsTabsExpanded)
{
    DocumentOptions.Ptabs = 1;
    Open("\tx\nabc\td\te\nlast\n");
    Select(1, 8, 3, 4);
    // A tab behind column 3 is three blanks, one behind column 7 seven.
    EXPECT_EQ(Parts(), (Texts{"x|", "abc   d       e", "last!"}));
    Select(2, 4, 2, 7);
    EXPECT_EQ(Parts(), Texts{"  d|!"});
    DocumentOptions.Ptabs = 0;
    EXPECT_EQ(Parts(), Texts{"d\te|!"});
}

TEST_F(SelectedText, ExpandedLineThatIsCutIsNotCutShortByTheSelection)
{
    DocumentOptions.Ptabs = 1;
    DocumentOptions.TabSize = 20;
    Open(std::string(60, '\t') + "\nx\n");
    Select(1, 0, 1, INT32_MAX);
    EXPECT_EQ(Parts(), Texts{std::string(1024, ' ') + "!"});
    Select(1, 0, 1, 1023);
    EXPECT_EQ(Parts(), Texts{std::string(1023, ' ') + "|!"});
}

TEST_F(SelectedText, TextIsTakenAsTheFileHasItWhateverIsTranslatedOnScreen)
{
    ViewOptions.EbcdicToAscii = true;
    ViewOptions.OemToAnsi = 1;
    Open("\xC8\xC5\xD3\xD3\xD6\x84\n");
    Select(1, 0, 1, 6);
    EXPECT_EQ(Parts(), Texts{"\xC8\xC5\xD3\xD3\xD6\x84!"});
}

TEST_F(SelectedText, RecordsOfANonTextAreItsLines)
{
    OpenRecords("0123456789abcdefghijABCDE", 10);
    Select(1, 4, 3, 3);
    EXPECT_EQ(Parts(), (Texts{"456789|", "abcdefghij", "ABC|!"}));
    Select(3, 5, 2, 9);
    EXPECT_EQ(Parts(), (Texts{"j|", "ABCDE!"}));
    Select(2, 2, 2, 5);
    EXPECT_EQ(Parts(), Texts{"cde|!"});
}

TEST_F(SelectedText, LineEndsAndZerosWithinRecordsAreBlanksAndTabsAreNot)
{
    OpenRecords(std::string_view("a\rb\nc\r\nd\0e\tf\0\r\n", 15), 8);
    Select(1, 0, 2, 8);
    EXPECT_EQ(Parts(), (Texts{"a b c  d", " e\tf   !"}));
    Select(2, 1, 2, 4);
    EXPECT_EQ(Parts(), Texts{"e\tf|!"});
}

TEST_F(SelectedText, TabsInRecordsAreExpandedToo)
{
    DocumentOptions.Ptabs = 1;
    DocumentOptions.TabSize = 4;
    OpenRecords("\tabc\n\tde", 5);
    Select(1, 0, 2, 99);
    EXPECT_EQ(Parts(), (Texts{"    abc ", "    de!"}));
}

TEST_F(SelectedText, RecordsOfTheLargestLengthAreTakenOverBlocks)
{
    DocumentOptions.FixedLineLen = 1024;
    const Bytes content = Repeated("0123456789abcdefghijklmnopqrstuvwxyz_", 2 * BlockBytes + 100);
    OpenBytes(content);
    ASSERT_FALSE(Document.IsText); // for want of line ends
    Select(1, 0, Document.LineCount, INT32_MAX);
    ASSERT_EQ(Document.LineCount, 59);
    const Texts parts = Parts();
    EXPECT_EQ(parts[0].size(), 1024u);
    EXPECT_EQ(Joined(parts), std::string(content.begin(), content.end()) + "!");
}

TEST_F(SelectedText, HexRowsAreWholeRowsOf76Characters)
{
    OpenHex(BytesOf("0123456789ABCDEF0123456789ABCDEFxyz"));
    Select(1, 7, 2, 3);
    EXPECT_EQ(Parts(), (Texts{"00000000  30 31 32 33 34 35 36 37-38 39 41 42 43 44 45 46   0123456789ABCDEF",
                              "00000010  30 31 32 33 34 35 36 37-38 39 41 42 43 44 45 46   0123456789ABCDEF!"}));
    Select(2, 5, 2, 5);
    EXPECT_EQ(Parts(), Texts{"00000010  30 31 32 33 34 35 36 37-38 39 41 42 43 44 45 46   0123456789ABCDEF!"});
}

TEST_F(SelectedText, LastHexRowIsFilledUpWithBlanks)
{
    OpenHex(BytesOf("0123456789ABCDEFxyz"));
    Select(2, 0, 1, 0);
    const Texts parts = Parts();
    ASSERT_EQ(parts.size(), 2u);
    EXPECT_EQ(parts[1], "00000010  78 79 7A                                          xyz             !");
    EXPECT_EQ(parts[1].size(), 77u);
}

TEST_F(SelectedText, HexRowsAreTranslatedFromEbcdicAsTheyAreShown)
{
    ViewOptions.EbcdicToAscii = true;
    OpenHex(BytesOf("\xC8\xC5\xD3\xD3\xD6"));
    Select(1, 0, 1, 0);
    EXPECT_EQ(Parts(), Texts{"00000000  C8 C5 D3 D3 D6                                    HELLO           !"});
    ViewOptions.EbcdicToAscii = false;
    EXPECT_EQ(Parts(), Texts{"00000000  C8 C5 D3 D3 D6                                    .....           !"});
}

TEST_F(SelectedText, NoByteInAHexRowEndsALineOrAText)
{
    Bytes content(256);
    for (std::size_t i = 0; i < content.size(); ++i) {
        content[i] = static_cast<std::uint8_t>(i);
    }
    OpenHex(content);
    SelectEverything();
    for (const bool ebcdic : {false, true}) {
        ViewOptions.EbcdicToAscii = ebcdic;
        const std::string all = Joined(Parts());
        EXPECT_EQ(all.size(), 16u * 76 + 1);
        EXPECT_EQ(all.find_first_of(std::string_view("\0\r\n\t", 4)), std::string::npos) << ebcdic;
    }
}

TEST_F(SelectedText, HexRowsOfATextDocumentAreItsBytes)
{
    OpenHex(BytesOf("ab\r\ncd\n"));
    Select(1, 0, 1, 0);
    EXPECT_EQ(Parts(), Texts{"00000000  61 62 0D 0A 63 64 0A                              ab..cd.         !"});
}

TEST_F(SelectedText, HexRowsGoOnOverBlocks)
{
    OpenHex(Repeated("0123456789abcdefghijk", 2 * BlockBytes + 5));
    Select(1874, 0, 1877, 0);
    const Texts parts = Parts();
    ASSERT_EQ(parts.size(), 4u);
    EXPECT_EQ(parts[0].substr(0, 10), "00007510  ");
    EXPECT_EQ(parts[1].substr(0, 10), "00007520  ");
    EXPECT_EQ(parts[1].substr(60), "hijk0123456789ab");
    EXPECT_EQ(parts[2].substr(0, 10), "00007530  ");
    EXPECT_EQ(parts[2].substr(60), "cdefghijk0123456");
    SelectEverything();
    EXPECT_EQ(Parts().size(), 3751u);
    EXPECT_EQ(Parts().back(), "0000EA60  33 34 35 36 37                                    34567           !");
}

TEST_F(SelectedText, LineOverTheEndOfABlockIsOnePart)
{
    Bytes content = Lines(2 * BlockBytes + 500, 70);
    std::fill_n(content.begin() + BlockBytes - 100, 200, std::uint8_t{'x'});
    content[BlockBytes - 101] = '\n';
    content[BlockBytes + 100] = '\n';
    content[BlockBytes - 1] = 'y';
    content[BlockBytes] = 'z';
    OpenBytes(content);
    std::int32_t line = 1;
    while (line < Document.LineCount && TextOfLine(line).size() != 200) {
        ++line;
    }
    Select(line, 99, line, 101);
    EXPECT_EQ(Parts(), Texts{"yz|!"});
    Select(line, 98, line + 1, 0);
    EXPECT_EQ(Parts(), (Texts{"xyz" + std::string(99, 'x') + "|", "|!"}));
    Select(line, 100, line - 1, 99);
    EXPECT_EQ(Parts()[1], std::string(99, 'x') + "y|!");
}

TEST_F(SelectedText, LineEndInTwoBlocksIsOne)
{
    Bytes content = Lines(BlockBytes + 200, 99);
    content[BlockBytes - 2] = 'e';
    content[BlockBytes - 1] = '\r';
    content[BlockBytes] = '\n';
    OpenBytes(content);
    Select(299, 98, 302, 1);
    const Texts parts = Parts();
    ASSERT_EQ(parts.size(), 4u);
    EXPECT_EQ(parts[1].back(), 'e');
    EXPECT_EQ(parts[1].size(), 99u);
    EXPECT_EQ(parts[2].size(), 98u);
    EXPECT_EQ(parts[3].size(), 3u);
}

TEST_F(SelectedText, EverythingOfSeveralBlocksIsTheWholeFile)
{
    const Bytes content = Lines(4 * BlockBytes - 50, 98);
    OpenBytes(content);
    ASSERT_TRUE(SelectEverything());
    std::string expected;
    for (const std::uint8_t byte : content) {
        expected += byte == '\n' ? "\r\n" : std::string(1, static_cast<char>(byte));
    }
    EXPECT_EQ(Gathered(GatherFor::File), expected);
    EXPECT_EQ(Gathered(GatherFor::Clipboard), expected + "\r\n");
}

TEST_F(SelectedText, EverythingOfAnEmptyDocumentIsOneEmptyLine)
{
    Open("");
    ASSERT_TRUE(SelectEverything());
    EXPECT_EQ(Parts(), Texts{"!"});
    EXPECT_EQ(Gathered(GatherFor::File), "");
    EXPECT_EQ(Gathered(GatherFor::Clipboard), "\r\n");
}

TEST_F(SelectedText, EmptyDocumentHasNoHexRowToSelect)
{
    OpenHex({});
    EXPECT_FALSE(SelectEverything());
    EXPECT_TRUE(IsOver(StartSelectionWalk()));
}

TEST_F(SelectedText, EverythingEndsWithTheLastLineWithOrWithoutALineEnd)
{
    Open("one\ntwo");
    SelectEverything();
    EXPECT_EQ(Parts(), (Texts{"one", "two!"}));
    Open("one\ntwo\n");
    SelectEverything();
    EXPECT_EQ(Parts(), (Texts{"one", "two!"}));
    Open("one\ntwo\n\n");
    SelectEverything();
    EXPECT_EQ(Parts(), (Texts{"one", "two", "!"}));
}

TEST_F(SelectedText, SavedPartsHaveALineEndBetweenThemAndNoneAtTheEnd)
{
    Open(Greek);
    Select(2, 3, 4, 5);
    EXPECT_EQ(Gathered(GatherFor::File), "vo\r\ncharlie\r\ndelta");
    Select(2, 3, 4, 2);
    EXPECT_EQ(Gathered(GatherFor::File), "vo\r\ncharlie\r\nde");
    Select(2, 3, 4, 0);
    EXPECT_EQ(Gathered(GatherFor::File), "vo\r\ncharlie\r\n");
    Select(2, 5, 4, 0);
    EXPECT_EQ(Gathered(GatherFor::File), "\r\ncharlie\r\n");
    Select(3, 0, 3, 7);
    EXPECT_EQ(Gathered(GatherFor::File), "charlie");
    Select(3, 1, 3, 3);
    EXPECT_EQ(Gathered(GatherFor::File), "ha");
}

TEST_F(SelectedText, CopiedPartsEndWithALineEndUnlessTheLastLineIsCutShort)
{
    Open(Greek);
    Select(2, 3, 4, 5);
    EXPECT_EQ(Gathered(GatherFor::Clipboard), "vo\r\ncharlie\r\ndelta\r\n");
    Select(2, 3, 4, 99);
    EXPECT_EQ(Gathered(GatherFor::Clipboard), "vo\r\ncharlie\r\ndelta\r\n");
    Select(2, 3, 4, 4);
    EXPECT_EQ(Gathered(GatherFor::Clipboard), "vo\r\ncharlie\r\ndelt");
    Select(2, 3, 4, 0);
    EXPECT_EQ(Gathered(GatherFor::Clipboard), "vo\r\ncharlie\r\n");
}

TEST_F(SelectedText, CopiedPieceOfOneLineHasNoLineEnd)
{
    Open(Greek);
    Select(3, 0, 3, 6);
    EXPECT_EQ(Gathered(GatherFor::Clipboard), "charli");
    Select(3, 1, 3, 7);
    EXPECT_EQ(Gathered(GatherFor::Clipboard), "harlie");
    Select(3, 7, 3, 99);
    EXPECT_EQ(Gathered(GatherFor::Clipboard), "");
    Select(3, 0, 3, 7);
    EXPECT_EQ(Gathered(GatherFor::Clipboard), "charlie\r\n");
}

TEST_F(SelectedText, EmptyLastLineIsTakenWhole)
{
    Open("one\n\nthree\n");
    Select(1, 0, 2, 0);
    EXPECT_EQ(Gathered(GatherFor::File), "one\r\n");
    EXPECT_EQ(Gathered(GatherFor::Clipboard), "one\r\n\r\n");
    Select(2, 0, 2, 4);
    EXPECT_EQ(Gathered(GatherFor::File), "");
    EXPECT_EQ(Gathered(GatherFor::Clipboard), "\r\n");
}

TEST_F(SelectedText, LastLineTakenWholeGetsALineEndEvenIfTheFileHasNone)
{
    Open("one\ntwo");
    Select(1, 2, 2, 3);
    EXPECT_EQ(Gathered(GatherFor::File), "e\r\ntwo");
    EXPECT_EQ(Gathered(GatherFor::Clipboard), "e\r\ntwo\r\n");
    Select(1, 2, 2, 2);
    EXPECT_EQ(Gathered(GatherFor::Clipboard), "e\r\ntw");
}

TEST_F(SelectedText, HexRowsAreWholeLines)
{
    OpenHex(BytesOf("0123456789ABCDEFxyz"));
    Select(1, 3, 2, 1);
    const std::string rows = "00000000  30 31 32 33 34 35 36 37-38 39 41 42 43 44 45 46   0123456789ABCDEF\r\n"
                             "00000010  78 79 7A                                          xyz             ";
    EXPECT_EQ(Gathered(GatherFor::File), rows);
    EXPECT_EQ(Gathered(GatherFor::Clipboard), rows + "\r\n");
}

TEST_F(SelectedText, RecordsAreGatheredLikeLines)
{
    OpenRecords("0123456789abcdefghijABCDE", 10);
    SelectEverything();
    EXPECT_EQ(Gathered(GatherFor::File), "0123456789\r\nabcdefghij\r\nABCDE");
    EXPECT_EQ(Gathered(GatherFor::Clipboard), "0123456789\r\nabcdefghij\r\nABCDE\r\n");
}

namespace {

// Lines that take 100 bytes each with their line end, but for line number odd, which is longer or shorter by
// more, and for any line ends the file itself has.
void OpenHundreds(std::int32_t lines, std::int32_t odd, std::int32_t more)
{
    std::string content;
    for (std::int32_t line = 1; line <= lines; ++line) {
        const std::int32_t length = 98 + (line == odd ? more : 0);
        content += std::string(static_cast<std::size_t>(length), static_cast<char>('a' + line % 26)) + "\n";
    }
    OpenBytes(BytesOf(content));
    ASSERT_EQ(Document.LineCount, lines);
    SelectEverything();
}

std::size_t BytesOfFirstCall(GatherFor target, std::int32_t limit)
{
    SelectionWalk walk = StartSelectionWalk();
    return GatherOnce(walk, target, limit).size();
}

} // namespace

TEST_F(SelectedText, PartThatEndsAtTheLimitWithItsLineEndFits)
{
    for (const std::int32_t limit : {SavedAtOnce, CopiedAtMost, 2100}) {
        const std::int32_t last = limit / 100;
        for (const GatherFor target : {GatherFor::File, GatherFor::Clipboard}) {
            OpenHundreds(last + 5, last, 0);
            SelectionWalk walk = StartSelectionWalk();
            EXPECT_EQ(GatherOnce(walk, target, limit).size(), static_cast<std::size_t>(limit));
            EXPECT_EQ(walk.NextLine, last + 1);
        }
    }
}

TEST_F(SelectedText, PartThatIsOneByteTooLongIsLeftToTheNextCall)
{
    for (const std::int32_t limit : {SavedAtOnce, CopiedAtMost, 2100}) {
        const std::int32_t last = limit / 100;
        for (const GatherFor target : {GatherFor::File, GatherFor::Clipboard}) {
            OpenHundreds(last + 5, last, 1);
            SelectionWalk walk = StartSelectionWalk();
            EXPECT_EQ(GatherOnce(walk, target, limit).size(), static_cast<std::size_t>(limit) - 100);
            EXPECT_EQ(walk.NextLine, last);
            const std::string rest = GatherOnce(walk, target, limit);
            EXPECT_EQ(rest.substr(0, 101), std::string(99, static_cast<char>('a' + last % 26)) + "\r\n");
            EXPECT_TRUE(IsOver(walk));
        }
    }
}

TEST_F(SelectedText, LastPartNeedsRoomForALineEndEvenWhenItGetsNone)
{
    for (const std::int32_t limit : {SavedAtOnce, CopiedAtMost, 2100}) {
        const std::int32_t last = limit / 100;
        const auto whole = static_cast<std::size_t>(limit);
        OpenHundreds(last, last, 0);
        EXPECT_EQ(BytesOfFirstCall(GatherFor::File, limit), whole - 2);
        EXPECT_EQ(BytesOfFirstCall(GatherFor::Clipboard, limit), whole);
        for (const std::int32_t more : {1, 2}) {
            OpenHundreds(last, last, more);
            EXPECT_EQ(BytesOfFirstCall(GatherFor::File, limit), whole - 100);
            EXPECT_EQ(BytesOfFirstCall(GatherFor::Clipboard, limit), whole - 100);
        }
        // The same for a last part that is cut short.
        OpenHundreds(last, last, 10);
        View.SelColB = 98;
        EXPECT_EQ(BytesOfFirstCall(GatherFor::Clipboard, limit), whole - 2);
        View.SelColB = 99;
        EXPECT_EQ(BytesOfFirstCall(GatherFor::Clipboard, limit), whole - 100);
    }
}

TEST_F(SelectedText, EmptyPartsNeedRoomForTheirLineEnd)
{
    OpenBytes(Bytes(5000, '\n'));
    SelectEverything();
    EXPECT_EQ(BytesOfFirstCall(GatherFor::File, SmallestLimit), 2050u);
    EXPECT_EQ(BytesOfFirstCall(GatherFor::File, SmallestLimit + 1), 2050u);
    EXPECT_EQ(BytesOfFirstCall(GatherFor::File, SmallestLimit + 2), 2052u);
}

TEST_F(SelectedText, HexRowsFillTheLimitWithWholeRows)
{
    OpenHex(Repeated("0123456789abcdefghijk", 16 * 900));
    SelectEverything();
    // A row and its line end are 78 bytes.
    EXPECT_EQ(BytesOfFirstCall(GatherFor::File, SavedAtOnce), 410u * 78);
    EXPECT_EQ(BytesOfFirstCall(GatherFor::Clipboard, CopiedAtMost), 820u * 78);
    EXPECT_EQ(BytesOfFirstCall(GatherFor::File, 30 * 78), 30u * 78);
    EXPECT_EQ(BytesOfFirstCall(GatherFor::File, 30 * 78 - 1), 29u * 78);
    Select(1, 0, 30, 0);
    EXPECT_EQ(BytesOfFirstCall(GatherFor::File, 30 * 78), 30u * 78 - 2);
    EXPECT_EQ(BytesOfFirstCall(GatherFor::Clipboard, 30 * 78), 30u * 78);
    EXPECT_EQ(BytesOfFirstCall(GatherFor::File, 30 * 78 - 1), 29u * 78);
}

TEST_F(SelectedText, CallsJoinToWhatOneCallGives)
{
    OpenBytes(Lines(3 * BlockBytes + 777, 61));
    Select(5, 20, Document.LineCount, 7);
    for (const bool hex : {false, true}) {
        View.HexMode = hex;
        for (const GatherFor target : {GatherFor::File, GatherFor::Clipboard}) {
            const std::string atOnce = Gathered(target);
            EXPECT_GT(atOnce.size(), static_cast<std::size_t>(CopiedAtMost));
            for (const std::int32_t limit : {SmallestLimit, SmallestLimit + 1, 3333, SavedAtOnce, CopiedAtMost}) {
                EXPECT_EQ(Gathered(target, limit), atOnce) << hex << limit;
            }
        }
    }
}

TEST_F(SelectedText, CallsJoinWithoutAGapEvenIfABlockOpensWithALineEnd)
{
    Bytes content = Lines(4 * BlockBytes, 61);
    for (std::size_t block = BlockBytes; block < content.size(); block += BlockBytes) {
        content[block] = '\n'; // what is found by its number is then another line than what is read in turn
    }
    OpenBytes(content);
    Select(1, 0, 1800, 30);
    const std::string atOnce = Gathered(GatherFor::File);
    for (const std::int32_t limit : {SmallestLimit, SavedAtOnce, CopiedAtMost}) {
        EXPECT_EQ(Gathered(GatherFor::File, limit), atOnce) << limit;
    }
}

TEST_F(SelectedText, ParkedBlocksMayBeDiscardedBetweenCalls)
{
    OpenBytes(Lines(3 * BlockBytes + 777, 61));
    SelectEverything();
    const std::string atOnce = Gathered(GatherFor::File);
    std::string all;
    for (SelectionWalk walk = StartSelectionWalk(); !IsOver(walk);) {
        all += GatherOnce(walk, GatherFor::File, SavedAtOnce);
        EXPECT_GT(DiscardParkedBlocks(), 0);
    }
    EXPECT_EQ(all, atOnce);
}

TEST_F(SelectedText, LongestPartFitsTheSmallestLimit)
{
    DocumentOptions.MaxLineLen = 1024;
    Bytes content(2 * BlockBytes, '\n');
    std::fill_n(content.begin() + BlockBytes - 1024, 2048, std::uint8_t{'x'});
    OpenBytes(content);
    ASSERT_TRUE(Document.IsText);
    const std::int32_t line = BlockBytes - 1024 + 1;
    Select(line, 0, line, MaxPartBytes);
    const std::string longest(MaxPartBytes, 'x');
    EXPECT_EQ(Parts(), Texts{longest + "!"});
    EXPECT_EQ(GatherInCalls(GatherFor::Clipboard, SmallestLimit), Texts{longest + "\r\n"});
    EXPECT_EQ(GatherInCalls(GatherFor::File, SmallestLimit), Texts{longest});
    Select(line - 1, 0, line + 1, 0);
    EXPECT_EQ(GatherInCalls(GatherFor::File, SmallestLimit), (Texts{"\r\n", longest + "\r\n", ""}));
    EXPECT_EQ(GatherInCalls(GatherFor::File, SmallestLimit + 2), (Texts{"\r\n" + longest + "\r\n", ""}));
    EXPECT_EQ(GatherInCalls(GatherFor::Clipboard, SmallestLimit + 4), (Texts{"\r\n" + longest + "\r\n\r\n"}));
}

TEST_F(SelectedText, ShrunkFileGivesEmptyPartsForWhatIsGone)
{
    OpenBytes(Lines(4 * BlockBytes - 50, 99));
    SelectEverything();
    ASSERT_EQ(Document.LineCount, 1200);
    TestPort::AddFile(TestPath, Lines(35000, 99));
    DiscardParkedBlocks();
    const Texts parts = Parts();
    ASSERT_EQ(parts.size(), 1200u);
    EXPECT_EQ(parts[0], std::string(99, 'a'));
    EXPECT_EQ(parts[349], std::string(99, 'a' + 349 % 26));
    for (std::size_t line = 350; line < 1199; ++line) {
        EXPECT_EQ(parts[line], "") << line;
    }
    EXPECT_EQ(parts[1199], "!");
    EXPECT_EQ(Gathered(GatherFor::File, SavedAtOnce).size(), 350u * 101 + 849u * 2);
}

TEST_F(SelectedText, ShrunkFileGivesHexRowsWithoutBytesForWhatIsGone)
{
    OpenHex(Lines(4 * BlockBytes - 50, 99));
    SelectEverything();
    TestPort::AddFile(TestPath, Bytes(35000, 'x'));
    DiscardParkedBlocks();
    const Texts parts = Parts();
    ASSERT_EQ(parts.size(), 7497u);
    EXPECT_EQ(parts[2186].substr(60), "xxxxxxxxxxxxxxxx");
    EXPECT_EQ(parts[2187], "000088B0  78 78 78 78 78 78 78 78-                          xxxxxxxx        ");
    EXPECT_EQ(parts[2188], "000088C0" + std::string(68, ' '));
    EXPECT_EQ(parts[7496], "0001D480" + std::string(68, ' ') + "!");
}

TEST_F(SelectedText, FileRewrittenWithoutLineEndsGivesNoPartThatIsTooLong)
{
    OpenBytes(Lines(4 * BlockBytes - 50, 99));
    SelectEverything();
    TestPort::AddFile(TestPath, Bytes(4 * BlockBytes, 'x'));
    DiscardParkedBlocks();
    std::size_t longest = 0;
    for (const std::string& part : Parts()) {
        longest = std::max(longest, part.size());
    }
    EXPECT_EQ(longest, static_cast<std::size_t>(MaxPartBytes));
    for (const GatherFor target : {GatherFor::File, GatherFor::Clipboard}) {
        EXPECT_EQ(Gathered(target, SmallestLimit), Gathered(target));
    }
}

TEST_F(SelectedText, ReleasedFileGivesOnePartForEachLineAllTheSame)
{
    OpenBytes(Lines(4 * BlockBytes - 50, 99));
    SelectEverything();
    CloseFileHandle();
    DiscardParkedBlocks();
    EXPECT_EQ(Parts().size(), 1200u);
    View.HexMode = true;
    SelectEverything();
    EXPECT_EQ(Parts().size(), 7497u);
}

namespace {

struct PlainPart {
    std::string Text;
    bool IsCutShort;
};

// A selection as it is cut out of the whole file.
class PlainSelection {
public:
    PlainSelection(const Bytes& content, bool isText)
    {
        const std::string file(content.begin(), content.end());
        if (View.HexMode) {
            CutRows(file);
        } else if (isText) {
            CutLines(file);
        } else {
            CutRecords(file);
        }
        if (Rows.empty() && !View.HexMode) {
            Rows.push_back("");
        }
    }

    std::int32_t RowTotal() const { return static_cast<std::int32_t>(Rows.size()); }

    // Selected are the rows and columns from the first place up to the second, which is not above it.
    std::vector<PlainPart> Parts(std::int32_t firstRow, std::int32_t firstColumn, std::int32_t lastRow,
                                 std::int32_t lastColumn) const
    {
        std::vector<PlainPart> parts;
        for (std::int32_t row = firstRow; row <= lastRow; ++row) {
            const std::string& text = Rows[static_cast<std::size_t>(row) - 1];
            if (View.HexMode) {
                parts.push_back({text, false});
                continue;
            }
            std::string taken;
            for (std::size_t column = 0; column < text.size(); ++column) {
                const bool before = row == firstRow && column < static_cast<std::size_t>(firstColumn);
                const bool behind = row == lastRow && column >= static_cast<std::size_t>(lastColumn);
                if (!before && !behind) {
                    const char byte = text[column];
                    taken += byte == '\0' || byte == '\r' || byte == '\n' ? ' ' : byte;
                }
            }
            parts.push_back({taken, taken.size() < text.size()});
        }
        return parts;
    }

private:
    static std::string WithTabs(const std::string& line)
    {
        if (DocumentOptions.Ptabs == 0) {
            return line;
        }
        const std::size_t width = static_cast<std::size_t>(DocumentOptions.TabSize);
        std::string expanded;
        for (const char byte : line) {
            if (byte == '\t') {
                expanded.append(expanded.size() % width != 0 ? expanded.size() % width : width, ' ');
            } else {
                expanded += byte;
            }
        }
        return expanded.substr(0, 1024);
    }

    void CutLines(const std::string& file)
    {
        std::string line;
        for (std::size_t i = 0; i < file.size(); ++i) {
            if (file[i] != '\r' && file[i] != '\n') {
                line += file[i];
                continue;
            }
            if (file[i] == '\r' && i + 1 < file.size() && file[i + 1] == '\n') {
                ++i;
            }
            Rows.push_back(WithTabs(line));
            line.clear();
        }
        if (!line.empty()) {
            Rows.push_back(WithTabs(line));
        }
    }

    void CutRecords(const std::string& file)
    {
        const std::size_t length = static_cast<std::size_t>(DocumentOptions.FixedLineLen);
        for (std::size_t start = 0; start < file.size(); start += length) {
            Rows.push_back(WithTabs(file.substr(start, length)));
        }
    }

    void CutRows(const std::string& file)
    {
        for (std::size_t start = 0; start < file.size(); start += 16) {
            char offset[16];
            snprintf(offset, sizeof offset, "%08X  ", static_cast<unsigned>(start));
            std::string pairs;
            std::string shown;
            bool translated = ViewOptions.EbcdicToAscii;
            for (std::size_t i = start; i < std::min(start + 16, file.size()); ++i) {
                auto byte = static_cast<std::uint8_t>(file[i]);
                char pair[4];
                snprintf(pair, sizeof pair, "%02X%c", byte, i == start + 7 ? '-' : ' ');
                pairs += pair;
                translated = translated && byte != 0; // as far as the first zero
                byte = translated ? EbcdicToAscii(byte) : byte;
                shown += byte >= 0x1F && byte <= 0x80 ? static_cast<char>(byte) : '.';
            }
            pairs.resize(50, ' ');
            shown.resize(16, ' ');
            Rows.push_back(offset + pairs + shown);
        }
    }

    Texts Rows;
};

Texts PlainCalls(const std::vector<PlainPart>& parts, GatherFor target, std::size_t limit)
{
    Texts calls = {""};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (calls.back().size() + parts[i].Text.size() + 2 > limit) {
            calls.push_back("");
        }
        const bool isLast = i + 1 == parts.size();
        const bool ended = !isLast || (target == GatherFor::Clipboard && !parts[i].IsCutShort);
        calls.back() += parts[i].Text + (ended ? "\r\n" : "");
    }
    return calls;
}

class Generator {
public:
    explicit Generator(std::uint32_t seed) : Random(seed) {}

    std::size_t Below(std::size_t bound) { return Random() % bound; }
    bool OneIn(std::size_t bound) { return Below(bound) == 0; }

    std::int32_t From(std::int32_t low, std::int32_t high)
    {
        return low + static_cast<std::int32_t>(Below(static_cast<std::size_t>(high - low) + 1));
    }

    void TakeOptions()
    {
        DocumentOptions.MaxLineLen = OneIn(3) ? 80 : 1024; // with 80 many are no texts
        DocumentOptions.FixedLineLen = OneIn(2) ? 75 : From(1, 1024);
        DocumentOptions.Ptabs = OneIn(2);
        DocumentOptions.TabSize = From(1, 20);
        View.HexMode = OneIn(4);
        ViewOptions.EbcdicToAscii = OneIn(2);
    }

    // Mostly short; else up to three blocks and a bit, or about as long as whole blocks.
    Bytes File()
    {
        std::size_t size = Below(OneIn(4) ? 20 : 1500);
        if (OneIn(40)) {
            size = OneIn(2) ? BlockBytes * (1 + Below(3)) - 3 + Below(7) : 20000 + Below(75000);
        }
        static constexpr const char* Ends[] = {"\n", "\r\n", "\r", "\n\n", "\r\r\n", "\n\r"};
        static constexpr std::size_t Longest[] = {2, 30, 90, 500};
        const std::size_t longest = Longest[Below(4)];
        const std::size_t oneEnd = Below(9);
        Bytes content;
        while (content.size() < size) {
            const std::size_t length = OneIn(5) ? 0 : Below(longest + 1);
            const auto letter = static_cast<std::uint8_t>(OneIn(4) ? 0x80 + Below(128) : 'a' + Below(26));
            content.insert(content.end(), length, letter);
            if (length > 0 && OneIn(2)) {
                content[content.size() - 1 - Below(length)] = OneIn(2) ? '\t' : 0;
            }
            for (const char* end = Ends[oneEnd < 3 ? oneEnd : Below(6)]; *end != '\0'; ++end) {
                content.push_back(static_cast<std::uint8_t>(*end));
            }
        }
        content.resize(size);
        // Line numbers are those of the file only when no block opens with a line end of its own.
        for (std::size_t block = BlockBytes; block < content.size(); block += BlockBytes) {
            if (content[block] == '\n' && content[block - 1] != '\r') {
                content[block] = 'b';
            }
        }
        return content;
    }

    std::int32_t Column() { return OneIn(8) ? INT32_MAX : From(0, OneIn(2) ? 8 : 120); }

private:
    std::mt19937 Random;
};

std::uint32_t NumberFromEnvironment(const char* name, std::uint32_t fallback)
{
    const char* const text = getenv(name);
    return text != nullptr ? static_cast<std::uint32_t>(strtoul(text, nullptr, 10)) : fallback;
}

// Selects the rows and columns in one of the two directions in which it can be done.
void SelectFromOrTo(bool downwards, std::int32_t first, std::int32_t firstColumn, std::int32_t last,
                    std::int32_t lastColumn)
{
    if (downwards) {
        Select(first, firstColumn, last, lastColumn);
    } else {
        Select(last, lastColumn, first, firstColumn);
    }
}

} // namespace

TEST_F(SelectedText, AgreesWithWhatIsCutOutOfTheWholeFile)
{
    const std::uint32_t seed = NumberFromEnvironment("KESTOVAR_TEST_SEED", 19950309);
    const std::uint32_t files = NumberFromEnvironment("KESTOVAR_TEST_FILES", 1500);
    for (std::uint32_t file = 0; file < files; ++file) {
        Generator generator(seed + file);
        generator.TakeOptions();
        const Bytes content = generator.File();
        ASSERT_EQ(OpenBytes(content), OpenResult::Opened);
        const PlainSelection plain(content, Document.IsText);
        ASSERT_EQ(plain.RowTotal(), RowCount()) << "seed " << seed + file;
        for (int selection = 0; selection < 2 && RowCount() > 0; ++selection) {
            std::int32_t first = generator.From(1, RowCount());
            std::int32_t last = generator.OneIn(2) ? std::min(first + generator.From(0, 3), RowCount())
                                                   : generator.From(first, RowCount());
            std::int32_t firstColumn = generator.Column();
            std::int32_t lastColumn = generator.Column();
            if (generator.OneIn(6)) {
                first = 1;
                last = RowCount();
                firstColumn = 0;
                lastColumn = INT32_MAX;
            }
            if (first == last && firstColumn > lastColumn) {
                std::swap(firstColumn, lastColumn);
            }
            SelectFromOrTo(generator.OneIn(2), first, firstColumn, last, lastColumn);
            const std::string log = "seed " + std::to_string(seed + file) + ": from " + std::to_string(first) + ":" +
                                    std::to_string(firstColumn) + " to " + std::to_string(last) + ":" +
                                    std::to_string(lastColumn);
            TextOfLine(generator.From(1, Document.LineCount));
            const std::vector<PlainPart> parts = plain.Parts(first, firstColumn, last, lastColumn);
            SelectionWalk walk = StartSelectionWalk();
            for (const PlainPart& part : parts) {
                ASSERT_FALSE(IsOver(walk)) << log;
                const SelectedPart read = ReadSelectedPart(walk);
                ++walk.NextLine;
                ASSERT_EQ(TextOf(read), part.Text) << log;
                ASSERT_EQ(read.IsCutShort, part.IsCutShort) << log;
                ASSERT_EQ(read.IsLast, IsOver(walk)) << log;
            }
            ASSERT_TRUE(IsOver(walk)) << log;
            const std::int32_t limits[] = {SmallestLimit, generator.From(SmallestLimit, 5000), SavedAtOnce,
                                           CopiedAtMost};
            for (const GatherFor target : {GatherFor::File, GatherFor::Clipboard}) {
                const std::int32_t limit = limits[generator.Below(4)];
                ASSERT_EQ(GatherInCalls(target, limit), PlainCalls(parts, target, static_cast<std::size_t>(limit)))
                    << log << ", limit " << limit;
            }
        }
    }
}
