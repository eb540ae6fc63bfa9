#include "support/dialogs.h"
#include "support/file_list.h"
#include "support/find_dialog.h"
#include "support/input.h"
#include "support/marks.h"
#include "support/ui_test.h"

#include <map>

namespace {

// Searches with real keys and the real mouse; what is found is told from the colours on the screen.
class FindTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }
};

// What makes bytes no text.
const std::string Zero(1, '\0');

using Texts = std::vector<std::string>;

// Lines that say nothing, but for some of them, counted from 1.
std::string Lines(int count, const std::map<int, std::string>& special)
{
    std::string text;
    for (int i = 1; i <= count; ++i) {
        const auto line = special.find(i);
        text += (line != special.end() ? line->second : "--------") + "\r\n";
    }
    return text;
}

// Bytes of 'a', but for some places.
std::string Bytes(std::size_t count, const std::map<std::size_t, std::string>& special)
{
    std::string bytes(count, 'a');
    for (const auto& [place, text] : special) {
        bytes.replace(place, text.size(), text);
    }
    return bytes;
}

// The view has come to this top line, and this is all that is highlighted.
void ExpectMatch(Program& program, int top, const std::string& mark)
{
    EXPECT_TRUE(WaitUntil([&] { return program.Top() == top; })) << program.Top() << " instead of " << top;
    ExpectMarks(program, {mark});
}

bool CanRepeat(Program& program)
{
    const bool next = !program.Menu(IDM_SEARCH_FIND_NEXT).Greyed;
    EXPECT_EQ(!program.Menu(IDM_SEARCH_FIND_PREVIOUS).Greyed, next);
    return next;
}

int Beeps(Program& program)
{
    return program.Inside().Use().Beeps;
}

// Presses keys that have no effect, and one behind them that beeps when it is its turn.
void PressInVain(Program& program, std::initializer_list<WORD> keys)
{
    const int beeps = Beeps(program);
    for (const WORD key : keys) {
        PressKeys({key});
    }
    PressKeys({VK_CONTROL, VK_NEXT}); // there is no list of files
    EXPECT_TRUE(WaitUntil([&] { return Beeps(program) > beeps; }));
    EXPECT_FALSE(program.ShowsBox());
}

void Cancel(const Program& program, HWND dialog)
{
    PressKeys({VK_ESCAPE});
    EXPECT_TRUE(WaitUntilClosed(dialog));
    EXPECT_TRUE(program.Answers());
}

// Empties what has the focus.
void EraseText(int characters)
{
    PressKeys({VK_END});
    for (int i = 0; i < characters; ++i) {
        PressKeys({VK_BACK});
    }
}

// Opens the dialog, changes these switches and looks for the text.
void FindWith(const Program& program, std::initializer_list<int> switches, const std::string& text)
{
    const HWND dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    for (const int control : switches) {
        ChangeSwitch(dialog, control);
    }
    EnterText(dialog, text);
    Accept(program, dialog);
}

} // namespace

TEST_F(FindTest, CtrlFAsksForATextAndEnterShowsItHighlighted)
{
    Program program(WriteScratch("one.txt", Lines(500, {{300, "in this line there is a needle ."}})));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_FALSE(CanRepeat(program));
    const HWND dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(IsTypedInto(dialog, IDC_FIND_TEXT));
    TypeText("needle");
    ExpectText(dialog, IDC_FIND_TEXT, "needle");
    Accept(program, dialog);
    ExpectMatch(program, 298, Mark(1, 24, 30)); // one line of context above it
    const int x = ColumnX(24);
    const int end = ColumnX(30);
    const Pixels row = ReadRow(program, 1);
    EXPECT_EQ(row.At(x - 1, 0), Blue);
    EXPECT_EQ(row.At(end, 0), Blue);
    EXPECT_GT(row.CountOf(Black), 30);
    EXPECT_EQ(row.CountOf(Yellow) + row.CountOf(Black), (end - x) * CellHeight());
    EXPECT_TRUE(CanRepeat(program));
    EXPECT_EQ(program.StatusText().substr(0, 8), "Line 299");
    PressKeys({VK_DOWN}); // it moves with its line
    ExpectMatch(program, 299, Mark(0, 24, 30));
}

TEST_F(FindTest, AMatchInAProportionalFontIsHighlightedWhereItIsWritten)
{
    WriteSettings("WindowSize=40 30 700 500\nFontName=Arial\nFontSize=30\n");
    Program program(WriteScratch("one.txt", Lines(100, {{1, "milli needle mill"}})));
    ASSERT_TRUE(program.WaitForFrame());
    FindText(program, "needle");
    const HDC screen = GetDC(nullptr);
    const HFONT font = CreateFontA(-30, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, "Arial");
    const HGDIOBJ former = SelectObject(screen, font);
    SIZE before = {};
    SIZE match = {};
    GetTextExtentPoint32A(screen, "milli ", 6, &before);
    GetTextExtentPoint32A(screen, "needle", 6, &match);
    SelectObject(screen, former);
    DeleteObject(font);
    ReleaseDC(nullptr, screen);
    ASSERT_NE(before.cx, match.cx);
    EXPECT_TRUE(WaitUntil([&] { return program.Answers() && ReadRow(program, 0).At(8 + before.cx, 0) == Yellow; }));
    const Pixels top = program.Inside().Read(program.View(), 0, 0, ClientSize(program.View()).cx, 1);
    EXPECT_EQ(top.CountOf(Yellow), match.cx);
    EXPECT_EQ(top.At(8 + before.cx - 1, 0), Blue);
    EXPECT_EQ(top.At(8 + before.cx, 0), Yellow);
    EXPECT_EQ(top.At(8 + before.cx + match.cx - 1, 0), Yellow);
    EXPECT_EQ(top.At(8 + before.cx + match.cx, 0), Blue);
}

TEST_F(FindTest, F3GoesOnAndF9GoesBack)
{
    Program program(WriteScratch("one.txt", Lines(500, {{2, "needle..needle"}, {5, "a needle"}, {400, "needle"}})));
    ASSERT_TRUE(program.WaitForFrame());
    FindText(program, "needle");
    ExpectMatch(program, 0, Mark(1, 0, 6));
    const struct {
        WORD Key;
        int Top;
        std::string Mark;
    } steps[] = {{VK_F3, 0, Mark(1, 8, 14)}, {VK_F3, 0, Mark(4, 2, 8)},  {VK_F3, 398, Mark(1, 0, 6)},
                 {VK_F9, 3, Mark(1, 2, 8)},  {VK_F9, 0, Mark(1, 8, 14)}, {VK_F9, 0, Mark(1, 0, 6)},
                 {VK_F3, 0, Mark(1, 8, 14)}};
    for (const auto& step : steps) {
        PressKeys({step.Key});
        ExpectMatch(program, step.Top, step.Mark); // and nothing is left of the highlight before
    }
}

TEST_F(FindTest, TheMenuFindsTheNextAndThePrevious)
{
    Program program(WriteScratch("one.txt", Lines(100, {{2, "needle..needle"}, {5, "a needle"}})));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    ASSERT_TRUE(OpenMenu(program, 'S'));
    PressKeys({'F'});
    const HWND dialog = WaitForDialog(program, FindTitle);
    ASSERT_NE(dialog, nullptr);
    TypeText("needle");
    Accept(program, dialog);
    ExpectMatch(program, 0, Mark(1, 0, 6));
    const struct {
        WORD Letter;
        std::string Mark;
    } steps[] = {{'N', Mark(1, 8, 14)}, {'N', Mark(4, 2, 8)}, {'P', Mark(1, 8, 14)}};
    for (const auto& step : steps) {
        ASSERT_TRUE(OpenMenu(program, 'S'));
        PressKeys({step.Letter});
        ExpectMatch(program, 0, step.Mark);
    }
}

TEST_F(FindTest, WhatIsNotThereIsReportedAndEndsTheRepeating)
{
    Program program(WriteScratch("one.txt", Lines(100, {{2, "needle"}})));
    ASSERT_TRUE(program.WaitForFrame());
    FindText(program, "needle");
    ExpectMatch(program, 0, Mark(1, 0, 6));
    EXPECT_TRUE(CanRepeat(program));
    EXPECT_TRUE(FindsNothing(program, "needles"));
    ExpectMarks(program, {});
    EXPECT_FALSE(CanRepeat(program));
    PressInVain(program, {VK_F3, VK_F9});
    ExpectMarks(program, {});
    // Going on behind the last match is no other thing.
    FindText(program, "needle");
    ExpectMatch(program, 0, Mark(1, 0, 6));
    PressKeys({VK_F3});
    EXPECT_TRUE(SaysNotFound(program));
    ExpectMarks(program, {});
    EXPECT_FALSE(CanRepeat(program));
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(FindTest, TheDialogOffersWhatWasLookedForLast)
{
    Program program(WriteScratch("one.txt", Lines(100, {{2, "needle"}})));
    ASSERT_TRUE(program.WaitForFrame());
    HWND dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    ExpectText(dialog, IDC_FIND_TEXT, "");
    ExpectEnabled(dialog, IDOK, false);
    TypeText("needle");
    ExpectEnabled(dialog, IDOK, true);
    Accept(program, dialog);
    dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    ExpectText(dialog, IDC_FIND_TEXT, "needle");
    ExpectEnabled(dialog, IDOK, true);
    Accept(program, dialog);
    ExpectMatch(program, 0, Mark(1, 0, 6));
}

TEST_F(FindTest, EnteringOneTextEmptiesTheOther)
{
    Program program(WriteScratch("one.txt", Lines(100, {})));
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    TypeText("ab");
    ExpectText(dialog, IDC_FIND_TEXT, "ab");
    PressKeys({VK_TAB});
    ASSERT_TRUE(WaitUntil([&] { return IsTypedInto(dialog, IDC_FIND_HEX); }));
    EXPECT_EQ(ControlText(dialog, IDC_FIND_TEXT), "ab");
    TypeText("4");
    ExpectText(dialog, IDC_FIND_HEX, "4");
    ExpectText(dialog, IDC_FIND_TEXT, "");
    ExpectEnabled(dialog, IDOK, true);
    ClickControl(dialog, IDC_FIND_TEXT);
    ASSERT_TRUE(WaitUntil([&] { return IsTypedInto(dialog, IDC_FIND_TEXT); }));
    TypeText("c");
    ExpectText(dialog, IDC_FIND_TEXT, "c");
    ExpectText(dialog, IDC_FIND_HEX, "");
    Cancel(program, dialog);
}

TEST_F(FindTest, WithoutATextThereIsNothingToLookFor)
{
    Program program(WriteScratch("one.txt", Lines(100, {})));
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    ExpectEnabled(dialog, IDOK, false);
    PressKeys({VK_RETURN}); // there is no button for it to press
    TypeText("ab");
    ExpectEnabled(dialog, IDOK, true);
    EraseText(1);
    ExpectText(dialog, IDC_FIND_TEXT, "a");
    EXPECT_TRUE(IsEnabled(dialog, IDOK));
    EraseText(1);
    ExpectEnabled(dialog, IDOK, false);
    PressKeys({VK_TAB});
    TypeText("4");
    ExpectEnabled(dialog, IDOK, true);
    EraseText(1);
    ExpectEnabled(dialog, IDOK, false);
    Cancel(program, dialog);
}

TEST_F(FindTest, NoMoreThan29CharactersCanBeEntered)
{
    const std::string longest = "abcdefghijklmnopqrstuvwxyz012";
    Program program(WriteScratch("one.txt", Lines(100, {{3, longest + "345"}})));
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    TypeText("0123456789abcdef0123456789abcdef");
    ExpectText(dialog, IDC_FIND_TEXT, "0123456789abcdef0123456789abc");
    PressKeys({VK_TAB});
    TypeText("0123456789abcdef0123456789abcdef");
    ExpectText(dialog, IDC_FIND_HEX, "0123456789abcdef0123456789abc");
    PressKeys({VK_MENU, 'T'});
    TypeText(longest + "999");
    ExpectText(dialog, IDC_FIND_TEXT, longest);
    Accept(program, dialog);
    ExpectMatch(program, 0, Mark(2, 0, 29));
}

TEST_F(FindTest, AStringThatIsNotHexKeepsTheDialogOpen)
{
    Program program(WriteScratch("one.txt", Lines(100, {{3, "the LINE"}})));
    ASSERT_TRUE(program.WaitForFrame());
    HWND dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    PressKeys({VK_TAB});
    int beeps = Beeps(program);
    for (const char* text : {"4c494", "4c49g5", "4c 4"}) {
        TypeText(text);
        ExpectText(dialog, IDC_FIND_HEX, text);
        PressKeys({VK_RETURN});
        EXPECT_TRUE(WaitUntil([&] { return Beeps(program) == beeps + 1; })) << text;
        beeps = Beeps(program);
        EXPECT_TRUE(IsWindow(dialog)) << text;
        EXPECT_EQ(ControlText(dialog, IDC_FIND_HEX), text);
        EraseText(6);
    }
    TypeText("4c494e45");
    ExpectText(dialog, IDC_FIND_HEX, "4c494e45");
    Accept(program, dialog);
    ExpectMatch(program, 0, Mark(2, 4, 8));
    EXPECT_EQ(Beeps(program), beeps);
    dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    ExpectText(dialog, IDC_FIND_HEX, "4C494E45"); // in upper case from now on
    EXPECT_EQ(ControlText(dialog, IDC_FIND_TEXT), "");
    EXPECT_EQ(ComboTexts(dialog, IDC_FIND_HEX), Texts{"4C494E45"});
    EXPECT_TRUE(ComboTexts(dialog, IDC_FIND_TEXT).empty());
    Cancel(program, dialog);
}

TEST_F(FindTest, AltAndALetterReachTheSwitches)
{
    Program program(WriteScratch("one.txt", Lines(100, {})));
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    const auto press = [](char letter) { PressKeys({VK_MENU, static_cast<WORD>(letter)}); };
    EXPECT_TRUE(IsChecked(dialog, IDC_FIND_FORWARDS));
    EXPECT_TRUE(IsChecked(dialog, IDC_FIND_ENTIRE));
    EXPECT_FALSE(IsChecked(dialog, IDC_FIND_CASE));
    EXPECT_FALSE(IsChecked(dialog, IDC_FIND_SCROLL));
    press('B');
    ExpectChecked(dialog, IDC_FIND_BACKWARDS, true);
    ExpectChecked(dialog, IDC_FIND_FORWARDS, false);
    press('F');
    ExpectChecked(dialog, IDC_FIND_FORWARDS, true);
    ExpectChecked(dialog, IDC_FIND_BACKWARDS, false);
    press('C');
    ExpectChecked(dialog, IDC_FIND_CURRENT, true);
    ExpectChecked(dialog, IDC_FIND_ENTIRE, false);
    press('E');
    ExpectChecked(dialog, IDC_FIND_ENTIRE, true);
    ExpectChecked(dialog, IDC_FIND_CURRENT, false);
    press('M');
    ExpectChecked(dialog, IDC_FIND_CASE, true);
    press('M');
    ExpectChecked(dialog, IDC_FIND_CASE, false);
    EXPECT_FALSE(IsEnabled(dialog, IDC_FIND_TOP));
    EXPECT_FALSE(IsEnabled(dialog, IDC_FIND_MIDDLE));
    press('S');
    ExpectChecked(dialog, IDC_FIND_SCROLL, true);
    ExpectEnabled(dialog, IDC_FIND_TOP, true);
    ExpectEnabled(dialog, IDC_FIND_MIDDLE, true);
    press('S');
    ExpectChecked(dialog, IDC_FIND_SCROLL, false);
    ExpectEnabled(dialog, IDC_FIND_TOP, false);
    ExpectEnabled(dialog, IDC_FIND_MIDDLE, false);
    EXPECT_FALSE(IsTypedInto(dialog, IDC_FIND_TEXT));
    press('T');
    EXPECT_TRUE(WaitUntil([&] { return IsTypedInto(dialog, IDC_FIND_TEXT); }));
    Cancel(program, dialog);
}

TEST_F(FindTest, TheSwitchesAreOfferedAsTheyWereLeft)
{
    Program program(WriteScratch("one.txt", Lines(100, {{2, "needle"}})));
    ASSERT_TRUE(program.WaitForFrame());
    FindWith(program, {IDC_FIND_BACKWARDS, IDC_FIND_CASE, IDC_FIND_SCROLL}, "needle");
    ExpectMatch(program, 1, Mark(0, 0, 6));
    HWND dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    for (const int control : {IDC_FIND_BACKWARDS, IDC_FIND_ENTIRE, IDC_FIND_CASE, IDC_FIND_SCROLL, IDC_FIND_TOP}) {
        EXPECT_TRUE(IsChecked(dialog, control)) << control;
    }
    for (const int control : {IDC_FIND_FORWARDS, IDC_FIND_CURRENT, IDC_FIND_MIDDLE}) {
        EXPECT_FALSE(IsChecked(dialog, control)) << control;
    }
    ClickControl(dialog, IDC_FIND_MIDDLE);
    ExpectChecked(dialog, IDC_FIND_MIDDLE, true);
    ClickControl(dialog, IDC_FIND_CURRENT);
    ExpectChecked(dialog, IDC_FIND_CURRENT, true);
    Accept(program, dialog);
    dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(IsChecked(dialog, IDC_FIND_MIDDLE));
    EXPECT_TRUE(IsChecked(dialog, IDC_FIND_CURRENT));
    EXPECT_FALSE(IsChecked(dialog, IDC_FIND_TOP));
    Cancel(program, dialog);
}

TEST_F(FindTest, EscLooksForNothingAndLeavesTheFileOpen)
{
    Program program(WriteScratch("one.txt", Lines(100, {{2, "needle"}, {60, "pin"}})));
    ASSERT_TRUE(program.WaitForFrame());
    FindText(program, "needle");
    ExpectMatch(program, 0, Mark(1, 0, 6));
    HWND dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    TypeText("pin");
    ExpectText(dialog, IDC_FIND_TEXT, "pin");
    Cancel(program, dialog);
    ExpectMatch(program, 0, Mark(1, 0, 6));
    EXPECT_EQ(program.Title(), "Kestovar-one.txt");
    EXPECT_FALSE(IsIconic(program.Frame()));
    dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    ExpectText(dialog, IDC_FIND_TEXT, "needle");
    EXPECT_EQ(ComboTexts(dialog, IDC_FIND_TEXT), Texts{"needle"});
    Cancel(program, dialog);
}

TEST_F(FindTest, TheListsOfferTheLatestNineTextsNewestFirst)
{
    Program program(WriteScratch("one.txt", Lines(100, {{2, "k1k2k3k4k5k6k7k8k9k0"}})));
    ASSERT_TRUE(program.WaitForFrame());
    Texts latest;
    for (const char digit : std::string("1234567890")) {
        const std::string text = std::string("k") + digit;
        FindText(program, text);
        latest.insert(latest.begin(), text);
    }
    latest.pop_back();
    FindText(program, "k5"); // it stays where it is
    FindHex(program, "6B31");
    EXPECT_TRUE(SaysNotFound(program)); // the bytes are folded, the line is not
    const HWND dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ComboTexts(dialog, IDC_FIND_TEXT), latest);
    EXPECT_EQ(ComboTexts(dialog, IDC_FIND_HEX), Texts{"6B31"});
    // The list drops down, and the third entry is chosen.
    PressKeys({VK_MENU, VK_DOWN});
    for (int i = 0; i < 3; ++i) {
        PressKeys({VK_DOWN});
    }
    ExpectText(dialog, IDC_FIND_TEXT, "k8");
    PressKeys({VK_RETURN}); // closes the list
    Accept(program, dialog);
    ExpectMatch(program, 0, Mark(1, 14, 16));
}

TEST_F(FindTest, ChoosingAnEarlierTextEmptiesTheOther)
{
    Program program(WriteScratch("one.txt", Lines(100, {{2, "needle"}})));
    ASSERT_TRUE(program.WaitForFrame());
    FindText(program, "needle");
    const HWND dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    EraseText(6);
    ExpectEnabled(dialog, IDOK, false);
    PressKeys({VK_TAB});
    TypeText("41");
    ExpectText(dialog, IDC_FIND_HEX, "41");
    PressKeys({VK_MENU, 'T'});
    PressKeys({VK_DOWN});
    ExpectText(dialog, IDC_FIND_TEXT, "needle");
    ExpectText(dialog, IDC_FIND_HEX, "");
    ExpectEnabled(dialog, IDOK, true);
    Accept(program, dialog);
    ExpectMatch(program, 0, Mark(1, 0, 6));
}

TEST_F(FindTest, WithoutScrollToAMatchOnTheScreenMovesNothing)
{
    Program program(WriteScratch("one.txt", Lines(500, {{1, "ape"}, {20, "bee"}, {60, "cat"}, {499, "dog"}})));
    ASSERT_TRUE(program.WaitForFrame());
    const int rows = RowsOf(program);
    const int maxTop = 500 - rows;
    const struct {
        int Before;
        const char* Text;
        int After;
        int Row;
    } steps[] = {
        {50, "cat", 50, 9},
        {59, "cat", 59, 0},                      // the first row
        {60 - rows, "cat", 60 - rows, rows - 1}, // the last whole one
        {59 - rows, "cat", 58, 1},               // the one that is cut off is not on the screen
        {60, "cat", 58, 1},                      // one line of context above it
        {100, "bee", 18, 1},
        {100, "ape", 0, 0},
        {100, "dog", maxTop, 498 - maxTop},
    };
    for (const auto& step : steps) {
        SetTop(program, step.Before);
        FindText(program, step.Text);
        ExpectMatch(program, step.After, Mark(step.Row, 0, 3));
    }
}

TEST_F(FindTest, ScrollToBringsTheMatchToTheTopOrTheMiddle)
{
    Program program(WriteScratch("one.txt", Lines(500, {{2, "ape"}, {60, "cat"}, {499, "dog"}})));
    ASSERT_TRUE(program.WaitForFrame());
    const int half = RowsOf(program) / 2;
    const int maxTop = 500 - RowsOf(program);
    FindWith(program, {IDC_FIND_SCROLL}, "cat");
    ExpectMatch(program, 59, Mark(0, 0, 3));
    SetTop(program, 50); // it is on the screen, and moves nevertheless
    FindText(program, "cat");
    ExpectMatch(program, 59, Mark(0, 0, 3));
    FindText(program, "dog");
    ExpectMatch(program, maxTop, Mark(498 - maxTop, 0, 3));
    const HWND dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    ClickControl(dialog, IDC_FIND_MIDDLE);
    ExpectChecked(dialog, IDC_FIND_MIDDLE, true);
    EnterText(dialog, "cat");
    Accept(program, dialog);
    ExpectMatch(program, 60 - half, Mark(half - 1, 0, 3));
    FindText(program, "ape");
    ExpectMatch(program, 0, Mark(1, 0, 3));
    FindText(program, "dog");
    ExpectMatch(program, maxTop, Mark(498 - maxTop, 0, 3));
}

TEST_F(FindTest, MatchCaseTellsUpperFromLowerCase)
{
    Program program(WriteScratch("one.txt", Lines(100, {{2, "NEEDLE nEEdLe needle"}})));
    ASSERT_TRUE(program.WaitForFrame());
    FindText(program, "needle");
    ExpectMarks(program, {Mark(1, 0, 6)});
    PressKeys({VK_F3});
    ExpectMarks(program, {Mark(1, 7, 13)});
    FindWith(program, {IDC_FIND_CASE}, "needle");
    ExpectMarks(program, {Mark(1, 14, 20)});
    FindText(program, "nEEdLe");
    ExpectMarks(program, {Mark(1, 7, 13)});
    EXPECT_TRUE(FindsNothing(program, "Needle"));
}

TEST_F(FindTest, BackwardsBeginsAtTheEndAndF9ThenGoesForwards)
{
    Program program(WriteScratch("one.txt", Lines(500, {{2, "needle"}, {300, "needle.needle"}, {500, "a needle"}})));
    ASSERT_TRUE(program.WaitForFrame());
    const int maxTop = 500 - RowsOf(program);
    FindWith(program, {IDC_FIND_BACKWARDS}, "needle");
    ExpectMatch(program, maxTop, Mark(499 - maxTop, 2, 8));
    const struct {
        WORD Key;
        int Top;
        std::string Mark;
    } steps[] = {{VK_F3, 298, Mark(1, 7, 13)}, {VK_F3, 298, Mark(1, 0, 6)},  {VK_F3, 0, Mark(1, 0, 6)},
                 {VK_F9, 298, Mark(1, 0, 6)},  {VK_F9, 298, Mark(1, 7, 13)}, {VK_F9, maxTop, Mark(499 - maxTop, 2, 8)}};
    for (const auto& step : steps) {
        PressKeys({step.Key});
        ExpectMatch(program, step.Top, step.Mark);
    }
    PressKeys({VK_F9});
    EXPECT_TRUE(SaysNotFound(program));
}

TEST_F(FindTest, TheOriginIsTheWholeTextOrWhatIsOnTheScreen)
{
    Program program(WriteScratch("one.txt", Lines(500, {{20, "needle"}, {110, "needle"}, {300, "needle"}})));
    ASSERT_TRUE(program.WaitForFrame());
    SetTop(program, 100);
    FindText(program, "needle");
    ExpectMatch(program, 18, Mark(1, 0, 6));
    SetTop(program, 100);
    FindWith(program, {IDC_FIND_CURRENT}, "needle");
    ExpectMatch(program, 100, Mark(9, 0, 6));
    SetTop(program, 110); // the line above the screen
    FindText(program, "needle");
    ExpectMatch(program, 298, Mark(1, 0, 6));
    SetTop(program, 109 - RowsOf(program)); // the line is below the last whole row
    FindWith(program, {IDC_FIND_BACKWARDS}, "needle");
    ExpectMatch(program, 18, Mark(1, 0, 6));
    SetTop(program, 110 - RowsOf(program));
    FindText(program, "needle");
    ExpectMatch(program, 110 - RowsOf(program), Mark(RowsOf(program) - 1, 0, 6));
    SetTop(program, 100);
    FindWith(program, {IDC_FIND_ENTIRE}, "needle");
    ExpectMatch(program, 298, Mark(1, 0, 6));
}

TEST_F(FindTest, TextSelectedOnOneLineIsOfferedAndGivesWayToTheMatch)
{
    Program program(WriteScratch("one.txt", Lines(100, {{2, "0123needle"}, {60, "needle"}})));
    ASSERT_TRUE(program.WaitForFrame());
    FindHex(program, "2D2D");
    ExpectMarks(program, {Mark(0, 0, 2)});
    ASSERT_TRUE(DragInView(program, PointOf(1, 4), PointOf(1, 10)));
    ExpectMarks(program, {Mark(1, 4, 10)});
    EXPECT_FALSE(program.Menu(IDM_EDIT_COPY).Greyed);
    HWND dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    ExpectText(dialog, IDC_FIND_TEXT, "needle");
    EXPECT_EQ(ControlText(dialog, IDC_FIND_HEX), "");
    ChangeSwitch(dialog, IDC_FIND_CURRENT);
    Accept(program, dialog);
    ExpectMatch(program, 0, Mark(1, 4, 10));
    EXPECT_TRUE(program.Menu(IDM_EDIT_COPY).Greyed);
    PressKeys({VK_F3});
    ExpectMatch(program, 58, Mark(1, 0, 6));
    // More than one line is no text to look for.
    ASSERT_TRUE(DragInView(program, PointOf(0, 2), PointOf(2, 4)));
    EXPECT_GT(MarksShown(program).size(), 2u);
    dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    ExpectText(dialog, IDC_FIND_TEXT, "needle");
    Accept(program, dialog);
    ExpectMatch(program, 58, Mark(1, 0, 6));
}

TEST_F(FindTest, ADragRemovesTheHighlight)
{
    Program program(WriteScratch("one.txt", Lines(100, {{2, "needle"}})));
    ASSERT_TRUE(program.WaitForFrame());
    FindText(program, "needle");
    ExpectMarks(program, {Mark(1, 0, 6)});
    ASSERT_TRUE(DragInView(program, PointOf(4, 2), PointOf(4, 5)));
    ExpectMarks(program, {Mark(4, 2, 5)});
}

TEST_F(FindTest, AMatchRightOfTheWindowBringsTheViewBackToTheLeft)
{
    const std::string wide = Repeated("-", 30) + "near" + Repeated("-", 166) + "far" + Repeated("-", 90);
    Program program(WriteScratch("wide.txt", Lines(500, {{2, wide}, {90, "----------left"}})));
    ASSERT_TRUE(program.WaitForFrame());
    Key(program, VK_RIGHT);
    Key(program, VK_RIGHT);
    ASSERT_EQ(program.Horizontal().Position, 16);
    FindText(program, "near");
    ExpectMatch(program, 0, Mark(1, 30 - 16, 34 - 16));
    EXPECT_EQ(program.Horizontal().Position, 16);
    FindText(program, "far");
    ExpectMarks(program, {}); // the match itself stays out of sight
    EXPECT_EQ(program.Horizontal().Position, 0);
    EXPECT_TRUE(CanRepeat(program));
    for (int i = 0; i < 3; ++i) {
        Key(program, VK_RIGHT);
    }
    ASSERT_EQ(program.Horizontal().Position, 24);
    FindText(program, "left"); // left of the window
    ExpectMatch(program, 88, Mark(1, 10, 14));
    EXPECT_EQ(program.Horizontal().Position, 0);
}

TEST_F(FindTest, OneMatchInWideTextCanBeScrolledIntoSight)
{
    const std::string wide = Repeated("-", 200) + "far" + Repeated("-", 90);
    Program program(WriteScratch("wide.txt", Lines(100, {{2, wide}})));
    ASSERT_TRUE(program.WaitForFrame());
    FindText(program, "far");
    ExpectMarks(program, {});
    for (int i = 0; i < 20; ++i) {
        Key(program, VK_RIGHT);
    }
    ASSERT_EQ(program.Horizontal().Position, 160);
    ExpectMarks(program, {Mark(1, 200 - 160, 203 - 160)});
}

TEST_F(FindTest, TabsAreSearchedAsTheyAreShown)
{
    WriteSettings(std::string(FixedFont) + "Ptabs=1\n");
    Program program(WriteScratch("tabs.txt", Lines(100, {{2, "ab\tneedle"}})));
    ASSERT_TRUE(program.WaitForFrame());
    FindText(program, "needle");
    ExpectMarks(program, {Mark(1, 4, 10)}); // the tab became two blanks
    FindText(program, "b  n");
    ExpectMarks(program, {Mark(1, 1, 5)});
}

TEST_F(FindTest, AMatchEndsWithItsLine)
{
    Program program(WriteScratch("one.txt", Lines(100, {{2, "abcneedle"}, {3, "needle"}})));
    ASSERT_TRUE(program.WaitForFrame());
    FindText(program, "needle");
    ExpectMarks(program, {Mark(1, 3, 9)});
    EXPECT_TRUE(FindsNothing(program, "needleneedle"));
    FindHex(program, "0D0A");
    EXPECT_TRUE(SaysNotFound(program));
}

TEST_F(FindTest, ALineThatLiesAcrossTwoBlocksIsSearched)
{
    // Lines of 100 bytes, but for a shorter one at the beginning: byte 30000 stands within a line.
    std::string text = Repeated(Repeated("x", 98) + "\r\n", 60000);
    text.replace(0, 100, Repeated("x", 37) + "\r\n");
    text.replace(29998, 4, "pins");
    Program program(WriteScratch("blocks.txt", text));
    ASSERT_TRUE(program.WaitForFrame());
    FindText(program, "pins");
    const int line = (29998 - 39) / 100; // of the lines behind the first
    const int column = (29998 - 39) % 100;
    ExpectMatch(program, line, Mark(1, column, column + 4));
    FindWith(program, {IDC_FIND_BACKWARDS}, "pins");
    ExpectMatch(program, line, Mark(1, column, column + 4));
}

TEST_F(FindTest, HexModeHighlightsTheDigitsOnly)
{
    Program program(WriteScratch("one.txt", Bytes(8000, {{0x1004, "needle"}, {0x1100, "Needle"}})));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    PressKeys({VK_CONTROL, 'H'});
    ASSERT_TRUE(WaitUntil([&] { return program.Menu(IDM_VIEW_HEX).Checked; }));
    FindText(program, "needle");
    ExpectMatch(program, 0xFF, HexMark(1, 4, 10));
    EXPECT_EQ(program.TopText().substr(0, 8), "00000FF0");
    PressKeys({VK_F3});
    ExpectMatch(program, 0xFF, HexMark(0x11, 0, 6));
    FindHex(program, "6e6565"); // without regard to case
    ExpectMatch(program, 0xFF, HexMark(1, 4, 7));
    const HWND dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    ChangeSwitch(dialog, IDC_FIND_CASE);
    EraseText(dialog, IDC_FIND_HEX);
    TypeText("4E6565");
    ExpectText(dialog, IDC_FIND_HEX, "4E6565");
    Accept(program, dialog);
    ExpectMatch(program, 0xFF, HexMark(0x11, 0, 3));
}

TEST_F(FindTest, HexModeHighlightsARunOverTwoRows)
{
    Program program(WriteScratch("data.bin", Bytes(8000, {{0, Zero}, {0x2D, "needle"}, {0x58, "pin"}})));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(program.Menu(IDM_VIEW_HEX).Checked);
    FindText(program, "needle");
    ExpectMarks(program, {HexMark(2, 13, 16), HexMark(3, 0, 3)});
    FindText(program, "pin");
    ExpectMarks(program, {HexMark(5, 8, 11)}); // both rows are as before
    FindText(program, "needle");
    ExpectMarks(program, {HexMark(2, 13, 16), HexMark(3, 0, 3)});
    Key(program, VK_DOWN);
    ExpectMarks(program, {HexMark(1, 13, 16), HexMark(2, 0, 3)});
    EXPECT_TRUE(FindsNothing(program, "pins"));
    ExpectMarks(program, {});
}

TEST_F(FindTest, HexModeFindsWhatLiesAcrossWindowsAndBlocks)
{
    Program program(WriteScratch("data.bin", Bytes(65000, {{0, Zero}, {509, "needle"}, {29997, "needle"}})));
    ASSERT_TRUE(program.WaitForFrame());
    const Marks marks = {HexMark(0, 13, 16), HexMark(1, 0, 3)}; // of both: 509 and 29997 leave 13 on 16
    const auto expectAt = [&](int top) {
        EXPECT_TRUE(WaitUntil([&] { return program.Top() == top; })) << program.Top() << " instead of " << top;
        ExpectMarks(program, marks);
    };
    FindWith(program, {IDC_FIND_SCROLL}, "needle");
    expectAt(509 / 16);
    PressKeys({VK_F3});
    expectAt(29997 / 16);
    PressKeys({VK_F9});
    expectAt(509 / 16);
    FindWith(program, {IDC_FIND_BACKWARDS}, "needle");
    expectAt(29997 / 16);
    PressKeys({VK_F3});
    expectAt(509 / 16);
    PressKeys({VK_F3});
    EXPECT_TRUE(SaysNotFound(program));
}

TEST_F(FindTest, AnotherModeOrFileEndsTheRepeating)
{
    const std::string path = WriteScratch("one.txt", Lines(100, {{2, "needle"}, {3, "needle"}}));
    const std::string other = WriteScratch("two.txt", Lines(100, {{2, "needle"}}));
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    FindText(program, "needle");
    ExpectMarks(program, {Mark(1, 0, 6)});
    EXPECT_TRUE(CanRepeat(program));
    PressKeys({VK_CONTROL, 'H'});
    ASSERT_TRUE(WaitUntil([&] { return program.Menu(IDM_VIEW_HEX).Checked; }));
    ExpectMarks(program, {});
    EXPECT_FALSE(CanRepeat(program));
    PressInVain(program, {VK_F3, VK_F9});
    FindText(program, "needle");
    ExpectMarks(program, {HexMark(0, 10, 16)});
    EXPECT_TRUE(CanRepeat(program));
    PressKeys({VK_CONTROL, 'T'});
    ASSERT_TRUE(WaitUntil([&] { return program.Menu(IDM_VIEW_TEXT).Checked; }));
    ExpectMarks(program, {});
    EXPECT_FALSE(CanRepeat(program));
    FindText(program, "needle");
    ExpectMarks(program, {Mark(1, 0, 6)});
    program.Inside().Drop(program.Frame(), other);
    ASSERT_TRUE(program.WaitForTitle("two.txt"));
    ExpectMarks(program, {});
    EXPECT_FALSE(CanRepeat(program));
    PressInVain(program, {VK_F3, VK_F9});
    ExpectMarks(program, {});
}

TEST_F(FindTest, ALargeTextIsSearchedToItsEnd)
{
    WriteSettings(std::string(FixedFont) + "MaxTextSize=60\n");
    constexpr int Count = 500000;
    std::string text = Repeated(Repeated("the needl of the haystack ", 78) + "\r\n", 80 * Count); // 40 MB
    text.replace(80 * 498999 + 70, 6, "needle");                                                  // in line 499000
    Program program(WriteScratch("large.txt", text));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(program.Menu(IDM_VIEW_TEXT).Checked);
    FindText(program, "needle");
    ExpectMarks(program, {Mark(1, 70, 76)});
    EXPECT_EQ(program.StatusText(), "Line 498,999 Col 1  99%");
    EXPECT_TRUE(FindsNothing(program, "absent"));
    EXPECT_TRUE(FindsNothing(program, "needles"));
    FindWith(program, {IDC_FIND_BACKWARDS, IDC_FIND_CASE}, "absent");
    EXPECT_TRUE(SaysNotFound(program));
    DeleteFileA(ScratchPath("large.txt").c_str());
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(FindTest, TextThatTheFileHasLostIsNotFound)
{
    std::string text = NumberedLines(200000);
    text.replace(1900000, 6, "needle");
    const std::string path = WriteScratch("shrinks.txt", text);
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    TruncateFile(path, 1000);
    EXPECT_TRUE(FindsNothing(program, "needle"));
    FindText(program, "line 90");
    ExpectMarks(program, {Mark(1, 0, 7)});
    EXPECT_EQ(program.StatusText().substr(0, 8), "Line 89 ");
    FindWith(program, {IDC_FIND_BACKWARDS}, "needle");
    EXPECT_TRUE(SaysNotFound(program));
    PressKeys({VK_CONTROL, 'H'});
    ASSERT_TRUE(WaitUntil([&] { return program.Menu(IDM_VIEW_HEX).Checked; }));
    FindText(program, "needle");
    EXPECT_TRUE(SaysNotFound(program));
    FindWith(program, {IDC_FIND_FORWARDS}, "needle");
    EXPECT_TRUE(SaysNotFound(program));
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(FindTest, TheKeysWorkWithoutAMenuBar)
{
    WriteSettings(std::string(FixedFont) + "SuppressMenu=1\n");
    Program program(WriteScratch("one.txt", Lines(100, {{2, "needle"}, {5, "a needle"}})));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_FALSE(program.Menu(IDM_SEARCH_FIND).HasMenu);
    ASSERT_TRUE(BringToForeground(program.Frame()));
    PressInVain(program, {VK_F3, VK_F9});
    FindText(program, "needle");
    ExpectMarks(program, {Mark(1, 0, 6)});
    PressKeys({VK_F3});
    ExpectMarks(program, {Mark(4, 2, 8)});
    PressKeys({VK_F9});
    ExpectMarks(program, {Mark(1, 0, 6)});
}

TEST_F(FindTest, AnEmptyFileHasNothingToFind)
{
    Program program(WriteScratch("empty.txt", ""));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_TRUE(FindsNothing(program, "needle"));
    FindWith(program, {IDC_FIND_BACKWARDS, IDC_FIND_CURRENT}, "needle");
    EXPECT_TRUE(SaysNotFound(program));
    PressKeys({VK_CONTROL, 'H'});
    EXPECT_TRUE(FindsNothing(program, "needle"));
    EXPECT_EQ(program.Close(), 0u);
}
