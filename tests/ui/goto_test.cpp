#include "support/dialogs.h"
#include "support/find_dialog.h"
#include "support/input.h"
#include "support/marks.h"
#include "support/ui_test.h"

namespace {

// Goto as a person uses it: by the menu or the status line, with real keys.
class GotoTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }
};

constexpr char Refusal[] = "Goto target invalid or not within file";

using Texts = std::vector<std::string>;

void GoTo(const Program& program, const std::string& text)
{
    const HWND dialog = ShowGoto(program);
    ASSERT_NE(dialog, nullptr);
    TypeText(text); // over the one before
    ExpectText(dialog, IDC_GOTO_TEXT, text);
    Accept(program, dialog);
}

void ExpectTop(Program& program, int top)
{
    EXPECT_TRUE(WaitUntil([&] { return program.Top() == top; })) << program.Top() << " instead of " << top;
}

void ShowHex(Program& program)
{
    EXPECT_TRUE(BringToForeground(program.Frame()));
    PressKeys({VK_CONTROL, 'H'});
    EXPECT_TRUE(WaitUntil([&] { return program.Menu(IDM_VIEW_HEX).Checked; }));
}

void Cancel(const Program& program, HWND dialog)
{
    PressKeys({VK_ESCAPE});
    EXPECT_TRUE(WaitUntilClosed(dialog));
    EXPECT_TRUE(program.Answers());
}

std::string OffsetAtTop(Program& program)
{
    return program.TopText().substr(0, 8);
}

} // namespace

TEST_F(GotoTest, ADoubleClickOfTheMouseOnTheStatusLineAsksAndEnterGoes)
{
    Program program(WriteScratch("one.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    ASSERT_TRUE(MovePointer(program.Status(), 60, 8));
    DoubleClickLeft();
    const HWND dialog = WaitForDialog(program, GotoTitle);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, IDC_GOTO_PROMPT), "Enter new line No.:");
    EXPECT_TRUE(IsTypedInto(dialog, IDC_GOTO_TEXT));
    TypeText("123");
    ExpectText(dialog, IDC_GOTO_TEXT, "123");
    Accept(program, dialog);
    ExpectTop(program, 122);
    EXPECT_EQ(program.TopText(), "Line 123");
    EXPECT_EQ(program.StatusText().substr(0, 14), "Line 123 Col 1");
}

TEST_F(GotoTest, NoMoreThanTenCharactersCanBeEntered)
{
    Program program(WriteScratch("one.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowGoto(program);
    ASSERT_NE(dialog, nullptr);
    TypeText("000000012345");
    ExpectText(dialog, IDC_GOTO_TEXT, "0000000123");
    Accept(program, dialog);
    ExpectTop(program, 122);
}

TEST_F(GotoTest, WhatIsTypedCountsUpToWhatIsNoDigit)
{
    Program program(WriteScratch("one.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    GoTo(program, "12abc");
    ExpectTop(program, 11);
    GoTo(program, "-7");
    ExpectTop(program, 0);
    GoTo(program, "99999");
    ExpectTop(program, 500 - RowsOf(program));
    EXPECT_EQ(program.StatusText(), "Line " + std::to_string(501 - RowsOf(program)) + " Col 1  100%");
    ShowHex(program);
    GoTo(program, "1aFg9"); // 1AF lies within the row of 1A0
    ExpectTop(program, 0x1A);
    EXPECT_EQ(OffsetAtTop(program), "000001A0");
}

TEST_F(GotoTest, ALineOfALargeTextIsGoneTo)
{
    Program program(WriteScratch("lines.txt", NumberedLines(200000)));
    ASSERT_TRUE(program.WaitForFrame());
    GoTo(program, "123457");
    EXPECT_TRUE(WaitUntil([&] { return program.StatusText().starts_with("Line 123,457 "); }));
    EXPECT_EQ(program.TopText(), "Line 123457");
}

TEST_F(GotoTest, AnOffsetOutsideTheFileIsRefusedAndTheViewStays)
{
    Program program(WriteScratch("data.bin", std::string(0x2000, '\x02')));
    ASSERT_TRUE(program.WaitForFrame());
    GoTo(program, "345");
    ExpectTop(program, 0x34);
    for (const char* text : {"2001", "-1", "7fffffff"}) {
        GoTo(program, text);
        EXPECT_EQ(program.AnswerBox(), Refusal) << text;
        EXPECT_EQ(program.Top(), 0x34) << text;
        EXPECT_EQ(OffsetAtTop(program), "00000340");
    }
    const HWND dialog = ShowGoto(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, IDC_GOTO_PROMPT), "Enter new offset:");
    EXPECT_EQ(ControlText(dialog, IDC_GOTO_TEXT), "7fffffff");
    TypeText("2000"); // the size
    Accept(program, dialog);
    ExpectTop(program, 0x200 - RowsOf(program));
    EXPECT_FALSE(program.ShowsBox());
}

TEST_F(GotoTest, AFileThatFitsStaysWhereItIs)
{
    Program program(WriteScratch("one.txt", NumberedLines(5)));
    ASSERT_TRUE(program.WaitForFrame());
    GoTo(program, "4");
    ExpectTop(program, 0);
    EXPECT_EQ(program.TopText(), "Line 1");
    ShowHex(program);
    GoTo(program, "10");
    ExpectTop(program, 0);
    EXPECT_EQ(OffsetAtTop(program), "00000000");
}

TEST_F(GotoTest, EarlierTargetsOfTheModeAreChosenFromTheList)
{
    Program program(WriteScratch("one.txt", NumberedLines(2000)));
    ASSERT_TRUE(program.WaitForFrame());
    Texts latest;
    for (int line = 10; line < 110; line += 10) {
        GoTo(program, std::to_string(line));
        latest.insert(latest.begin(), std::to_string(line));
    }
    latest.pop_back(); // the oldest of ten
    HWND dialog = ShowGoto(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ComboTexts(dialog, IDC_GOTO_TEXT), latest);
    PressKeys({VK_MENU, VK_DOWN}); // the list drops down with "100" chosen
    for (int i = 0; i < 3; ++i) {
        PressKeys({VK_DOWN});
    }
    ExpectText(dialog, IDC_GOTO_TEXT, "70");
    PressKeys({VK_RETURN}); // closes the list
    Accept(program, dialog);
    ExpectTop(program, 69);
    ShowHex(program);
    GoTo(program, "1F0");
    ExpectTop(program, 0x1F);
    dialog = ShowGoto(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ComboTexts(dialog, IDC_GOTO_TEXT), Texts{"1F0"});
    Cancel(program, dialog);
    PressKeys({VK_CONTROL, 'T'});
    ASSERT_TRUE(WaitUntil([&] { return program.Menu(IDM_VIEW_TEXT).Checked; }));
    dialog = ShowGoto(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ComboTexts(dialog, IDC_GOTO_TEXT), latest);
    Cancel(program, dialog);
}

TEST_F(GotoTest, TheColumnsAndTheHighlightStayAsTheyAre)
{
    const std::string line = "0123456789needle" + Repeated("-", 300) + "\r\n";
    Program program(WriteScratch("wide.txt", Repeated(line, line.size() * 300)));
    ASSERT_TRUE(program.WaitForFrame());
    FindText(program, "needle");
    ExpectMarks(program, {Mark(0, 10, 16)});
    Key(program, VK_RIGHT);
    GoTo(program, "200");
    ExpectTop(program, 199);
    EXPECT_EQ(program.Horizontal().Position, 8);
    ExpectMarks(program, {});
    GoTo(program, "1");
    ExpectTop(program, 0);
    ExpectMarks(program, {Mark(0, 2, 8)});
    PressKeys({VK_F3}); // goes on from the match, not from the screen
    ExpectMarks(program, {Mark(1, 2, 8)});
}

TEST_F(GotoTest, ASearchFromTheCurrentPositionBeginsWhereGotoWent)
{
    std::string text = NumberedLines(99);
    text = text + "needle\r\n" + text + "needle\r\n" + text;
    Program program(WriteScratch("one.txt", text));
    ASSERT_TRUE(program.WaitForFrame());
    GoTo(program, "101");
    ExpectTop(program, 100);
    const HWND dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    ChangeSwitch(dialog, IDC_FIND_CURRENT);
    EnterText(dialog, "needle");
    Accept(program, dialog);
    ExpectMarks(program, {Mark(1, 0, 6)});
    ExpectTop(program, 198);
}
