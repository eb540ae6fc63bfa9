#include "support/clipboard.h"
#include "support/file_list.h"
#include "support/find_dialog.h"
#include "support/input.h"
#include "support/marks.h"
#include "support/ui_test.h"

#include <algorithm>
#include <cstdio>

namespace {

// What copying leaves on the clipboard, of a selection that is made by real mouse input.
class CopyTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }
};

constexpr std::size_t MostCopied = 64000;
constexpr char Truncated[] = "Too much data for clipboard\nText was truncated";
constexpr char NoStorage[] = "Unable to acquire clipboard storage";

// 40 characters.
std::string Line(int number)
{
    char line[16];
    snprintf(line, sizeof line, "%08d", number);
    return line + Repeated("abcdefgh", 32);
}

// The lines first to last, each with its line end.
std::string Lines(int first, int last)
{
    std::string text;
    for (int number = first; number <= last; ++number) {
        text += Line(number) + "\r\n";
    }
    return text;
}

// All bytes that there are, again and again: but lines so long are no text's.
std::string AnyBytes(int count)
{
    std::string bytes;
    for (int i = 0; i < count; ++i) {
        const bool endsLine = i % 256 == '\r' || i % 256 == '\n';
        bytes += static_cast<char>(i > 256 && endsLine ? 'n' : i);
    }
    return bytes;
}

// The rows first to last of the hex dump, from 0, each with its line end.
std::string HexRows(const std::string& bytes, std::size_t first, std::size_t last)
{
    std::string rows;
    for (std::size_t row = first; row <= last; ++row) {
        char offset[16];
        snprintf(offset, sizeof offset, "%08X", static_cast<unsigned>(row * 16));
        std::string text = offset + std::string(68, ' ');
        const std::string shown = bytes.substr(row * 16, 16);
        for (std::size_t i = 0; i < shown.size(); ++i) {
            const unsigned byte = static_cast<unsigned char>(shown[i]);
            char digits[4];
            snprintf(digits, sizeof digits, "%02X%c", byte, i == 7 ? '-' : ' ');
            text.replace(10 + 3 * i, 3, digits);
            text[60 + i] = byte >= 0x1F && byte <= 0x80 ? shown[i] : '.';
        }
        rows += text + "\r\n";
    }
    return rows;
}

// Copies as the menu does, without its menu, and says what is on the clipboard then.
std::string Copied(Program& program)
{
    EXPECT_TRUE(WaitForFreeClipboard());
    const DWORD before = GetClipboardSequenceNumber();
    program.Command(IDM_EDIT_COPY);
    EXPECT_NE(GetClipboardSequenceNumber(), before) << "nothing has been copied";
    return ClipboardText();
}

// The same for more than the clipboard takes: the program says so first.
std::string CopiedInPart(Program& program)
{
    EXPECT_TRUE(WaitForFreeClipboard());
    const DWORD before = GetClipboardSequenceNumber();
    program.Post(WM_COMMAND, IDM_EDIT_COPY);
    EXPECT_EQ(program.AnswerBox(), Truncated);
    EXPECT_TRUE(WaitUntil([&] { return GetClipboardSequenceNumber() != before; })) << "nothing has been copied";
    return ClipboardText();
}

// Selects in the view, from one point to another, and copies. A point near that of the drag before would be a
// double click.
std::string CopiedAfterDrag(Program& program, POINT from, POINT to)
{
    EXPECT_TRUE(DragInView(program, from, to));
    return Copied(program);
}

std::string CopiedAll(Program& program)
{
    program.Command(IDM_EDIT_SELECT_ALL);
    return Copied(program);
}

// A line at a time, since a difference in long texts says nothing.
void ExpectSame(const std::string& text, const std::string& expected)
{
    EXPECT_EQ(text.size(), expected.size());
    const auto differ = std::mismatch(text.begin(), text.end(), expected.begin(), expected.end());
    const auto place = static_cast<std::size_t>(differ.first - text.begin());
    EXPECT_TRUE(text == expected) << "from byte " << place << " on: \"" << text.substr(place, 60) << "\" instead of \""
                                  << expected.substr(place, 60) << '"';
}

// What the view shows in its rows.
std::vector<std::string> ShownRows(Program& program)
{
    std::vector<std::string> rows;
    for (const ProbeText& text : program.ViewTexts()) {
        rows.emplace_back(text.Text);
    }
    return rows;
}

} // namespace

TEST_F(CopyTest, ADragWithinALineCopiesTheColumnsBetween)
{
    Program program(WriteScratch("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(CopiedAfterDrag(program, PointOf(3, 5), PointOf(3, 12)), Line(4).substr(5, 7));
    EXPECT_EQ(CopiedAfterDrag(program, PointOf(4, 30), PointOf(4, 2)), Line(5).substr(2, 28)); // to the left
}

TEST_F(CopyTest, ADragOverLinesCopiesFromOneEndToTheOther)
{
    Program program(WriteScratch("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    const std::string expected = Line(3).substr(10) + "\r\n" + Lines(4, 5) + Line(6).substr(0, 4);
    EXPECT_EQ(CopiedAfterDrag(program, PointOf(2, 10), PointOf(5, 4)), expected);
}

TEST_F(CopyTest, ADragUpwardsCopiesTheSame)
{
    Program program(WriteScratch("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    const std::string expected = Line(3).substr(10) + "\r\n" + Lines(4, 5) + Line(6).substr(0, 4);
    EXPECT_EQ(CopiedAfterDrag(program, PointOf(5, 4), PointOf(2, 10)), expected);
}

TEST_F(CopyTest, TheEndsKeepTheirColumnsWhicheverIsFurtherRight)
{
    Program program(WriteScratch("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    const std::string expected = Line(3).substr(4) + "\r\n" + Line(4).substr(0, 30);
    EXPECT_EQ(CopiedAfterDrag(program, PointOf(2, 4), PointOf(3, 30)), expected);
    EXPECT_EQ(CopiedAfterDrag(program, PointOf(3, 30), PointOf(2, 4)), expected);
}

TEST_F(CopyTest, AWholeLastLineIsCopiedWithItsLineEnd)
{
    Program program(WriteScratch("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(CopiedAfterDrag(program, PointOf(2, 0), PointOf(5, 50)), Lines(3, 6));
    EXPECT_EQ(CopiedAfterDrag(program, PointOf(5, 50), PointOf(2, 0)), Lines(3, 6));
    EXPECT_EQ(CopiedAfterDrag(program, PointOf(7, 0), PointOf(7, 40)), Lines(8, 8)); // a line of its own
}

TEST_F(CopyTest, ALastLineOfWhichAColumnIsMissingIsCopiedWithoutALineEnd)
{
    Program program(WriteScratch("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(CopiedAfterDrag(program, PointOf(2, 0), PointOf(3, 39)), Lines(3, 3) + Line(4).substr(0, 39));
    EXPECT_EQ(CopiedAfterDrag(program, PointOf(5, 0), PointOf(6, 0)), Lines(6, 6));
    EXPECT_EQ(CopiedAfterDrag(program, PointOf(9, 1), PointOf(9, 50)), Line(10).substr(1));
}

TEST_F(CopyTest, AFirstLineEnteredBehindItsEndGivesItsLineEndOnly)
{
    Program program(WriteScratch("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(CopiedAfterDrag(program, PointOf(2, 50), PointOf(3, 5)), "\r\n" + Line(4).substr(0, 5));
}

TEST_F(CopyTest, EmptyLinesAreCopiedAsLineEnds)
{
    Program program(WriteScratch("gaps.txt", "one\r\n\r\n\r\nfour\r\n"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(CopiedAfterDrag(program, PointOf(0, 1), PointOf(3, 2)), "ne\r\n\r\n\r\nfo");
    EXPECT_EQ(CopiedAll(program), "one\r\n\r\n\r\nfour\r\n");
}

TEST_F(CopyTest, AllOfAFileIsCopiedWithALineEndAfterEachLine)
{
    Program program(WriteScratch("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectSame(CopiedAll(program), Lines(1, 100));
}

TEST_F(CopyTest, ACopyTakesNoMoreMemoryThanItsTextAndTheZeroByteBehindIt)
{
    EmptyTheClipboard();
    EXPECT_EQ(ClipboardText(), NoClipboardText);
    Program program(WriteScratch("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(CopiedAfterDrag(program, PointOf(3, 5), PointOf(3, 12)), Line(4).substr(5, 7));
    EXPECT_EQ(ClipboardBytes(), 8u);
}

TEST_F(CopyTest, ALastLineWithoutALineEndGetsOne)
{
    Program program(WriteScratch("open.txt", Lines(1, 99) + Line(100)));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectSame(CopiedAll(program), Lines(1, 100));
}

TEST_F(CopyTest, LinesThatEndInABareLineFeedAreCopiedWithCrLf)
{
    Program program(WriteScratch("bare.txt", "one\ntwo\nthree\n"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(CopiedAll(program), "one\r\ntwo\r\nthree\r\n");
}

TEST_F(CopyTest, ZeroBytesOfATextAreCopiedAsBlanks)
{
    Program program(WriteScratch("zeros.txt", std::string("on\0e\r\ntwo\r\n", 11)));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_VIEW_TEXT);
    EXPECT_EQ(CopiedAll(program), "on e\r\ntwo\r\n");
}

TEST_F(CopyTest, LettersOutsideAsciiAreCopiedAsTheyAre)
{
    const std::string text = "Gr\xFC\xDF"
                             "e aus K\xF6ln \x80 \xFF\r\n";
    Program program(WriteScratch("letters.txt", text));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(CopiedAll(program), text);
}

TEST_F(CopyTest, ExpandedTabsAreCopiedAsTheBlanksThatAreShown)
{
    WriteSettings(std::string(FixedFont) + "Ptabs=1\n");
    Program program(WriteScratch("tabs.txt", "\tx\r\nabc\tx\r\nabcdefghi\tx\r\n"));
    ASSERT_TRUE(program.WaitForFrame());
    const std::vector<std::string> shown = ShownRows(program);
    ASSERT_EQ(shown.size(), 3u);
    ASSERT_EQ(shown[1].find("\t"), std::string::npos);
    EXPECT_EQ(CopiedAll(program), shown[0] + "\r\n" + shown[1] + "\r\n" + shown[2] + "\r\n");
    // A column is one of the line as it is shown.
    EXPECT_EQ(CopiedAfterDrag(program, PointOf(1, 2), PointOf(2, 10)),
              shown[1].substr(2) + "\r\n" + shown[2].substr(0, 10));
}

TEST_F(CopyTest, TabsThatAreNotExpandedAreCopiedAsTabs)
{
    Program program(WriteScratch("tabs.txt", "\tx\r\nabc\tx\r\n"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(CopiedAll(program), "\tx\r\nabc\tx\r\n");
}

TEST_F(CopyTest, HexRowsAreCopiedWhole)
{
    const std::string bytes = AnyBytes(1000);
    Program program(WriteScratch("data.bin", bytes));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_EQ(HexRows(bytes, 0, 0).size(), 78u);
    ExpectSame(CopiedAfterDrag(program, PointOf(2, 30), PointOf(4, 3)), HexRows(bytes, 2, 4));
    ExpectSame(CopiedAfterDrag(program, PointOf(7, 3), PointOf(6, 30)), HexRows(bytes, 6, 7));
    ExpectSame(CopiedAfterDrag(program, PointOf(9, 20), PointOf(9, 22)), HexRows(bytes, 9, 9));
    ExpectSame(CopiedAll(program), HexRows(bytes, 0, 62)); // the last one is of eight bytes
}

TEST_F(CopyTest, ATextIsCopiedAsHexRowsInHexMode)
{
    const std::string text = "one\ttwo\r\nthree\r\n" + Lines(1, 10);
    Program program(WriteScratch("lines.txt", text));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_VIEW_HEX);
    ExpectSame(CopiedAll(program), HexRows(text, 0, (text.size() - 1) / 16));
}

TEST_F(CopyTest, ABinaryFileInTextModeIsCopiedInItsRecords)
{
    constexpr std::size_t RecordBytes = 75;
    const std::string bytes = AnyBytes(1000);
    Program program(WriteScratch("data.bin", bytes));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_VIEW_TEXT);
    std::string expected;
    for (std::size_t start = 0; start < bytes.size(); start += RecordBytes) {
        std::string record = bytes.substr(start, RecordBytes);
        std::replace_if(
            record.begin(), record.end(), [](char byte) { return byte == '\0' || byte == '\r' || byte == '\n'; }, ' ');
        expected += record + "\r\n";
    }
    ExpectSame(CopiedAll(program), expected);
    ExpectSame(CopiedAfterDrag(program, PointOf(3, 4), PointOf(5, 9)),
               expected.substr(3 * 77 + 4, 73) + expected.substr(4 * 77, 77) + expected.substr(5 * 77, 9));
}

TEST_F(CopyTest, ASelectionAcrossABlockBorderIsWhole)
{
    // Lines of 42 bytes: line 715 is the one in which the first block of 30000 ends.
    Program program(WriteScratch("big.txt", Lines(1, 5000)));
    ASSERT_TRUE(program.WaitForFrame());
    SetTop(program, 710);
    ExpectSame(CopiedAfterDrag(program, PointOf(2, 5), PointOf(8, 10)),
               Line(713).substr(5) + "\r\n" + Lines(714, 718) + Line(719).substr(0, 10));
    // Within the line itself.
    ExpectSame(CopiedAfterDrag(program, PointOf(4, 3), PointOf(4, 38)), Line(715).substr(3, 35));
}

TEST_F(CopyTest, ASelectionOfSeveralBlocksIsWhole)
{
    Program program(WriteScratch("big.txt", Lines(1, 2200)));
    ASSERT_TRUE(program.WaitForFrame());
    SetTop(program, 700); // from the first block to the end of the fourth
    ASSERT_TRUE(BringToForeground(program.Frame()));
    ASSERT_TRUE(MovePointer(program.View(), PointOf(2, 5).x, PointOf(2, 5).y));
    PressLeft();
    ASSERT_TRUE(WaitUntil([&] { return CaptureOf(program) == program.View(); }));
    ASSERT_TRUE(MovePointer(program.View(), PointOf(4, 5).x, PointOf(4, 5).y));
    Key(program, VK_END);
    ReleaseLeft();
    ASSERT_TRUE(WaitUntil([&] { return CaptureOf(program) == nullptr; }));
    const int last = program.Top() + 5;
    ASSERT_GT(last, 2150);
    ExpectSame(Copied(program), Line(703).substr(5) + "\r\n" + Lines(704, last - 1) + Line(last).substr(0, 5));
}

TEST_F(CopyTest, MoreThanTheClipboardTakesIsCopiedUpToTheLastLineThatFits)
{
    const std::string text = Lines(1, 5000);
    Program program(WriteScratch("big.txt", text));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    const std::size_t fitting = MostCopied / 42 * 42;
    ExpectSame(CopiedInPart(program), text.substr(0, fitting));
    EXPECT_FALSE(program.ShowsBox());
    EXPECT_EQ(program.Title(), "Kestovar-big.txt");
}

TEST_F(CopyTest, MoreHexRowsThanTheClipboardTakesAreCopiedUpToTheLastOneThatFits)
{
    const std::string bytes = Repeated("\x01\x02\x03 hex ", 16 * 900);
    Program program(WriteScratch("data.bin", bytes));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    ExpectSame(CopiedInPart(program), HexRows(bytes, 0, MostCopied / 78 - 1));
}

TEST_F(CopyTest, AsMuchAsTheClipboardTakesIsCopiedWithoutAWord)
{
    // Lines of 40 bytes with their ends.
    const std::string text = Repeated("a line of 38 characters, and no more .\r\n", MostCopied);
    Program program(WriteScratch("full.txt", text));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectSame(CopiedAll(program), text);
}

TEST_F(CopyTest, OneLineMoreThanTheClipboardTakesIsLeftOut)
{
    const std::string text = Repeated("a line of 38 characters, and no more .\r\n", MostCopied);
    Program program(WriteScratch("over.txt", text + "\r\n"));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    ExpectSame(CopiedInPart(program), text);
}

TEST_F(CopyTest, WithoutASelectionTheClipboardStaysAsItIs)
{
    Program program(WriteScratch("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    PutTextOnClipboard("something else");
    const DWORD before = GetClipboardSequenceNumber();
    EXPECT_TRUE(program.Menu(IDM_EDIT_COPY).Greyed);
    program.Command(IDM_EDIT_COPY);
    ASSERT_TRUE(WaitForKeyboard(program));
    PressKeys({VK_CONTROL, 'C'});
    PressKeys({VK_CONTROL, VK_INSERT});
    PressKeys({VK_CONTROL, 'H'}); // by this the others have been done
    EXPECT_TRUE(WaitUntil([&] { return program.Menu(IDM_VIEW_HEX).Checked; }));
    EXPECT_FALSE(program.ShowsBox());
    EXPECT_EQ(GetClipboardSequenceNumber(), before);
    EXPECT_EQ(ClipboardText(), "something else");
}

TEST_F(CopyTest, WhatIsNoLongerSelectedIsNotCopied)
{
    Program program(WriteScratch("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_EQ(CopiedAfterDrag(program, PointOf(2, 10), PointOf(2, 14)), Line(3).substr(10, 4));
    const DWORD before = GetClipboardSequenceNumber();
    ASSERT_TRUE(MovePointer(program.View(), PointOf(8, 5).x, PointOf(8, 5).y));
    PressLeft();
    ASSERT_TRUE(WaitUntil([&] { return CaptureOf(program) == program.View(); }));
    program.Command(IDM_EDIT_COPY); // while the button is down
    ReleaseLeft();
    ASSERT_TRUE(WaitUntil([&] { return CaptureOf(program) == nullptr; }));
    EXPECT_TRUE(program.Menu(IDM_EDIT_COPY).Greyed);
    program.Command(IDM_EDIT_COPY);
    EXPECT_FALSE(program.ShowsBox());
    EXPECT_EQ(GetClipboardSequenceNumber(), before);
}

TEST_F(CopyTest, KeysAndTheMenuCopy)
{
    Program program(WriteScratch("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    const auto copiesBy = [&](int row, const std::function<void()>& input) {
        ASSERT_TRUE(DragInView(program, PointOf(row, 0), PointOf(row, 8)));
        ASSERT_TRUE(WaitForKeyboard(program));
        ASSERT_TRUE(WaitUntil([&] { return !program.Menu(IDM_EDIT_COPY).Greyed; }));
        EXPECT_TRUE(WaitForFreeClipboard());
        const DWORD before = GetClipboardSequenceNumber();
        input();
        EXPECT_TRUE(WaitUntil([&] { return GetClipboardSequenceNumber() != before; })) << row;
        EXPECT_EQ(ClipboardText(), Line(row + 1).substr(0, 8));
    };
    copiesBy(2, [] { PressKeys({VK_CONTROL, 'C'}); });
    copiesBy(3, [] { PressKeys({VK_CONTROL, VK_INSERT}); });
    copiesBy(4, [&] {
        EXPECT_TRUE(OpenMenu(program, 'E'));
        PressKeys({'C'});
    });
}

TEST_F(CopyTest, AClipboardThatAnotherProgramKeepsOpenIsReported)
{
    Program program(WriteScratch("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    PutTextOnClipboard("something else");
    ASSERT_TRUE(DragInView(program, PointOf(2, 10), PointOf(5, 4)));
    const Marks marks = MarksShown(program);
    {
        const BusyClipboard busy;
        program.Post(WM_COMMAND, IDM_EDIT_COPY);
        EXPECT_EQ(program.AnswerBox(), NoStorage);
        EXPECT_TRUE(program.Answers());
        EXPECT_FALSE(program.ShowsBox());
    }
    EXPECT_EQ(ClipboardText(), "something else");
    ExpectMarks(program, marks);
    // It is no longer: nothing is left of the failure.
    EXPECT_EQ(Copied(program), Line(3).substr(10) + "\r\n" + Lines(4, 5) + Line(6).substr(0, 4));
}

TEST_F(CopyTest, BothMessagesComeWhenThereIsTooMuchForABusyClipboard)
{
    Program program(WriteScratch("big.txt", Lines(1, 5000)));
    ASSERT_TRUE(program.WaitForFrame());
    PutTextOnClipboard("something else");
    program.Command(IDM_EDIT_SELECT_ALL);
    {
        const BusyClipboard busy;
        program.Post(WM_COMMAND, IDM_EDIT_COPY);
        EXPECT_EQ(program.AnswerBox(), Truncated);
        EXPECT_EQ(program.AnswerBox(), NoStorage);
    }
    EXPECT_TRUE(program.Answers());
    EXPECT_EQ(ClipboardText(), "something else");
}

TEST_F(CopyTest, CopyingLeavesTheViewAndTheSelectionAsTheyAre)
{
    Program program(WriteScratch("big.txt", Lines(1, 5000)));
    ASSERT_TRUE(program.WaitForFrame());
    SetTop(program, 1000);
    ASSERT_TRUE(DragInView(program, PointOf(2, 10), PointOf(5, 4)));
    const Marks marks = MarksShown(program);
    ASSERT_EQ(marks.size(), 4u);
    const std::string status = program.StatusText();
    EXPECT_EQ(Copied(program), Line(1003).substr(10) + "\r\n" + Lines(1004, 1005) + Line(1006).substr(0, 4));
    EXPECT_EQ(program.Top(), 1000);
    ExpectMarks(program, marks);
    EXPECT_FALSE(program.Menu(IDM_EDIT_COPY).Greyed);
    EXPECT_EQ(program.StatusText(), status);
    EXPECT_EQ(program.Title(), "Kestovar-big.txt");
    // And again the same.
    EXPECT_EQ(Copied(program), Line(1003).substr(10) + "\r\n" + Lines(1004, 1005) + Line(1006).substr(0, 4));
}

TEST_F(CopyTest, WhatIsPaintedAfterCopyingIsTheTextOfItsLines)
{
    // The selected lines lie in other blocks of the file than those on the screen.
    Program program(WriteScratch("big.txt", Lines(1, 60000)));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    SetTop(program, 40000);
    const std::vector<std::string> before = ShownRows(program);
    ASSERT_EQ(before[0], Line(40001));
    ExpectSame(CopiedInPart(program), Lines(1, MostCopied / 42));
    EXPECT_EQ(ShownRows(program), before);
    Key(program, VK_DOWN);
    EXPECT_EQ(ShownRows(program)[0], Line(40002));
    Key(program, VK_NEXT);
    EXPECT_EQ(ShownRows(program)[0], Line(40002 + RowsOf(program)));
    Key(program, VK_HOME);
    EXPECT_EQ(ShownRows(program)[0], Line(1));
}

TEST_F(CopyTest, HexRowsPaintedAfterCopyingAreThoseOfTheirPlace)
{
    const std::string bytes = Lines(1, 3000);
    Program program(WriteScratch("big.txt", bytes));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_VIEW_HEX);
    program.Command(IDM_EDIT_SELECT_ALL);
    SetTop(program, 5000);
    const std::vector<std::string> before = ShownRows(program);
    ExpectSame(CopiedInPart(program), HexRows(bytes, 0, MostCopied / 78 - 1));
    EXPECT_EQ(ShownRows(program), before);
    EXPECT_EQ(program.TopText().substr(0, 8), "00013880");
}

TEST_F(CopyTest, AFileCutShortMeanwhileLeavesTheProgramUsable)
{
    const std::string path = WriteScratch("big.txt", Lines(1, 60000));
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    TruncateFile(path, 100);
    EXPECT_EQ(CopiedInPart(program).substr(0, 84), Lines(1, 2)); // that much is still there
    EXPECT_EQ(program.Title(), "Kestovar-big.txt");
    EXPECT_EQ(program.TopText(), Line(1));
    EXPECT_EQ(program.Close(), 0u);
}
