#include "support/dialogs.h"
#include "support/input.h"
#include "support/ui_test.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <set>

namespace {

class CommandsTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }
};

constexpr char GotoTitle[] = "Goto";
constexpr char LockPrompt[] = "Select the area to lock. Enter or Click to select, Esc to cancel";

// Where a menu item can be chosen.
struct ItemState {
    UINT Id;
    bool WithoutFile;
    bool WithText;
    bool WithBinary;
};

constexpr ItemState Items[] = {
    {IDM_FILE_OPEN, true, true, true},
    {IDM_FILE_SAVE_AS, false, false, false},
    {IDM_FILE_CLOSE, false, true, true},
    {IDM_FILE_LAUNCH, false, true, false},
    {IDM_FILE_DELETE, false, true, true},
    {IDM_FILE_PREVIOUS, false, false, false},
    {IDM_FILE_NEXT, false, false, false},
    {IDM_FILE_PRINT, false, true, true},
    {IDM_FILE_PRINTER_SETUP, true, true, true},
    {IDM_FILE_PAGE_SETUP, true, true, true},
    {IDM_FILE_INFORMATION, false, true, true},
    {IDM_FILE_EXIT, true, true, true},
    {IDM_EDIT_COPY, false, false, false},
    {IDM_EDIT_SELECT_ALL, false, true, true},
    {IDM_EDIT_FILE, false, true, true},
    {IDM_SEARCH_FIND, false, true, true},
    {IDM_SEARCH_FIND_NEXT, false, false, false},
    {IDM_SEARCH_FIND_PREVIOUS, false, false, false},
    {IDM_SEARCH_GOTO, false, true, true},
    {IDM_VIEW_TEXT, true, true, true},
    {IDM_VIEW_HEX, true, true, true},
    {IDM_VIEW_ZIP, false, false, false},
    {IDM_VIEW_REDISPLAY_ZIP, false, false, false},
    {IDM_VIEW_LOCK, false, true, false},
    {IDM_FONT_INCREASE, false, true, true},
    {IDM_FONT_DECREASE, false, true, true},
    {IDM_OPTIONS_FONT, true, true, true},
    {IDM_OPTIONS_PREFERENCES, true, true, true},
    {IDM_OPTIONS_BUTTON_BAR, true, true, true},
    {IDM_OPTIONS_COLOURS, true, true, true},
    {IDM_OPTIONS_LINE_LENGTH, true, true, true},
    {IDM_OPTIONS_SAVE, true, true, true},
    {IDM_HELP_CONTENTS, true, true, true},
    {IDM_HELP_KEYBOARD, true, true, true},
    {IDM_HELP_USING, true, true, true},
    {IDM_HELP_ABOUT, true, true, true},
};

void ExpectItems(Program& program, bool ItemState::*possible)
{
    for (const ItemState& item : Items) {
        const MenuItem shown = program.Menu(item.Id);
        EXPECT_TRUE(shown.Exists) << item.Id;
        EXPECT_EQ(!shown.Greyed, item.*possible) << item.Id;
    }
}

void ExpectMode(Program& program, UINT id)
{
    EXPECT_EQ(program.Menu(IDM_VIEW_TEXT).Checked, id == IDM_VIEW_TEXT);
    EXPECT_EQ(program.Menu(IDM_VIEW_HEX).Checked, id == IDM_VIEW_HEX);
}

HWND OpenGoto(const Program& program)
{
    program.Post(WM_COMMAND, IDM_SEARCH_GOTO);
    return WaitForDialog(program, GotoTitle);
}

void Close(const Program& program, HWND dialog, int button)
{
    PressControl(dialog, button);
    WaitUntilClosed(dialog);
    EXPECT_TRUE(program.Answers());
}

void Goto(const Program& program, const std::string& text)
{
    const HWND dialog = OpenGoto(program);
    ASSERT_NE(dialog, nullptr);
    SetControlText(dialog, IDC_GOTO_TEXT, text);
    Close(program, dialog, IDOK);
}

// Enters the text and expects the view's top line.
void ExpectGoto(Program& program, const std::string& text, int top)
{
    SetTop(program, 77);
    Goto(program, text);
    EXPECT_TRUE(WaitUntil([&] { return program.Top() == top; })) << text << ": " << program.Top();
}

// Enters an offset that lies outside the file.
void ExpectGotoRefused(Program& program, const std::string& text)
{
    SetTop(program, 77);
    Goto(program, text);
    EXPECT_EQ(program.AnswerBox(), "Goto target invalid or not within file") << text;
    EXPECT_EQ(program.Top(), 77) << text;
}

// What the dialog offers when it comes up: the text, then the earlier ones.
std::vector<std::string> GotoOffer(const Program& program)
{
    const HWND dialog = OpenGoto(program);
    if (dialog == nullptr) {
        return {};
    }
    std::vector<std::string> texts = {ControlText(dialog, IDC_GOTO_TEXT)};
    const auto ask = [&](UINT message, WPARAM wParam, LPARAM lParam) {
        DWORD_PTR answer = 0; // the texts cross from process to process in Unicode only
        SendMessageTimeoutW(GetDlgItem(dialog, IDC_GOTO_TEXT), message, wParam, lParam, SMTO_NORMAL, DefaultWaitLimit,
                            &answer);
        return answer;
    };
    const DWORD_PTR count = ask(CB_GETCOUNT, 0, 0);
    for (DWORD_PTR i = 0; i < count; ++i) {
        wchar_t text[50] = L"";
        ask(CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text));
        texts.emplace_back(text, text + wcslen(text)); // digits and letters only
    }
    Close(program, dialog, IDCANCEL);
    return texts;
}

using Texts = std::vector<std::string>;

// Three digits, which are within any lock of the tests.
std::string LineNumber(int line)
{
    return std::to_string(1000 + line).substr(1);
}

// Lines of two hundred columns that begin with their number.
std::string WideLines(int count)
{
    std::string text;
    for (int i = 1; i <= count; ++i) {
        text += LineNumber(i) + Repeated("abcdefghij", 197) + "\r\n";
    }
    return text;
}

// The window that holds the mouse.
HWND CaptureOf(const Program& program)
{
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(program.Frame(), nullptr), &info);
    return info.hwndCapture;
}

bool WasDrawn(const ProbeText& text, HWND window, const std::string& beginning)
{
    return text.Window == window && std::string(text.Text).starts_with(beginning);
}

bool AnyDrawn(const std::vector<ProbeText>& texts, HWND window, const std::string& beginning)
{
    return std::any_of(texts.begin(), texts.end(),
                       [&](const ProbeText& text) { return WasDrawn(text, window, beginning); });
}

// Starts the choice of headings, which holds the mouse until it is over. The pointer is already where the
// choice puts it: a movement that comes in late changes nothing then. Returns what is painted before the
// choice, since it throws away what is to be painted later; nothing when it does not come about.
std::vector<ProbeText> StartLock(Program& program)
{
    if (!BringToForeground(program.Frame()) || !MovePointer(program.View(), 20 * CellWidth(), 4 * CellHeight())) {
        return {};
    }
    program.Inside().StartRecording();
    program.Post(WM_COMMAND, IDM_VIEW_LOCK);
    if (!WaitUntil([&] { return CaptureOf(program) == program.View(); })) {
        return {};
    }
    std::vector<ProbeText> texts = program.Inside().TakeRecorded();
    EXPECT_TRUE(AnyDrawn(texts, program.Status(), LockPrompt));
    return texts;
}

bool WaitForEndOfLock(const Program& program)
{
    return WaitUntil([&] { return CaptureOf(program) == nullptr; }) && program.Answers();
}

// Scrolled down, the first rows still stand on top, and so do the first columns at the left. The rows
// are followed by the line that the view is scrolled to.
void ExpectLock(Program& program, int rows, int columns)
{
    SetTop(program, 100);
    const std::vector<ProbeText> texts = program.ViewTexts();
    const std::size_t textsOfRow = columns > 0 ? 2 : 1;
    ASSERT_GT(texts.size(), static_cast<std::size_t>(rows + 1) * textsOfRow);
    for (int row = 0; row <= rows; ++row) {
        const ProbeText& first = texts[static_cast<std::size_t>(row) * textsOfRow];
        const int line = row < rows ? row + 1 : 100 + rows + 1;
        EXPECT_EQ(std::string(first.Text, 3), LineNumber(line)) << row;
        EXPECT_EQ(first.Y, row * CellHeight());
        if (columns > 0) {
            EXPECT_EQ(first.Length, columns) << row;
        }
    }
}

void ExpectNoLock(Program& program)
{
    SetTop(program, 100);
    EXPECT_EQ(program.TopText().substr(0, 3), LineNumber(101));
}

int Beeps(Program& program)
{
    return program.Inside().Use().Beeps;
}

} // namespace

TEST_F(CommandsTest, ThePopupsHaveTheirItemsInTheirOrder)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const auto popup = [&](int place) { return program.Inside().PopupTexts(program.Frame(), place); };
    EXPECT_EQ(popup(0), (Texts{"&Open...\tCtrl+O", "Save &As...", "Close &File\tEsc", "&Launch", "&Delete...", "-",
                               "P&revious\tCtrl+PGUP", "&Next\tCtrl+PGDN", "-", "&Print...\tCtrl+P",
                               "Printer &Setup...", "Page Se&tup...", "-", "Show &Information...", "-", "E&xit", "-"}));
    EXPECT_EQ(popup(1), (Texts{"&Copy\tCtrl+C", "&Select All", "-", "&Edit File"}));
    EXPECT_EQ(popup(2), (Texts{"&Find...\tCtrl+F", "Find &Next\tF3", "Find &Previous\tF9", "-", "&Goto..."}));
    EXPECT_EQ(popup(3), (Texts{"&Text Mode\tCtrl+T", "&Hex Mode\tCtrl+H", "-", "View &Zip File contents...",
                               "&Redisplay Zip file", "-", "&Lock/Unlock text", "-", "&Increase font size\tNum+",
                               "&Decrease font size\tNum-"}));
    EXPECT_EQ(popup(4), (Texts{"Select &Font...", "&Preferences...", "Customize &Button Bar...", "&Colours...",
                               "Set Line &Length...", "-", "&Save Settings\tCtrl+S"}));
    EXPECT_EQ(popup(5), (Texts{"&Contents\tF1", "&Keyboard", "&Using Help", "-", "&About Kestovar..."}));
}

TEST_F(CommandsTest, ATextFileMakesItsItemsPossibleAndClosingItTakesThemBack)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ExpectItems(program, &ItemState::WithoutFile);
    ExpectMode(program, IDM_VIEW_TEXT);
    program.Inside().Drop(program.Frame(), WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForTitle("one.txt"));
    ExpectItems(program, &ItemState::WithText);
    ExpectMode(program, IDM_VIEW_TEXT);
    program.Command(IDM_FILE_CLOSE);
    ExpectItems(program, &ItemState::WithoutFile);
    EXPECT_TRUE(IsIconic(program.Frame()));
}

TEST_F(CommandsTest, ABinaryFileMakesItsItemsPossibleAndClosingItTakesThemBack)
{
    Program program(WriteScratch("one.kvb", std::string(2000, '\x01')));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectItems(program, &ItemState::WithBinary);
    ExpectMode(program, IDM_VIEW_HEX);
    program.Command(IDM_INTERNAL_CLOSE);
    ExpectItems(program, &ItemState::WithoutFile);
}

TEST_F(CommandsTest, WithoutAnEditorThereIsNoEditing)
{
    WriteSettings("EditorName=\n");
    Program program(WriteScratch("noext", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_TRUE(program.Menu(IDM_EDIT_FILE).Greyed);
    EXPECT_TRUE(program.Menu(IDM_FILE_LAUNCH).Greyed); // nothing else could launch it
    EXPECT_FALSE(program.Menu(IDM_FILE_DELETE).Greyed);
}

TEST_F(CommandsTest, AFileWithoutAnExtensionIsLaunchedOnlyWhenItIsText)
{
    Program program(WriteScratch("noext", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_FALSE(program.Menu(IDM_FILE_LAUNCH).Greyed);
    program.Inside().Drop(program.Frame(), WriteScratch("noextbin", std::string(2000, '\x01')));
    ASSERT_TRUE(program.WaitForTitle("noextbin"));
    EXPECT_TRUE(program.Menu(IDM_FILE_LAUNCH).Greyed);
}

TEST_F(CommandsTest, SelectingAllMakesCopyingAndSavingPossible)
{
    Program program(WriteScratch("one.txt", NumberedLines(10)));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    EXPECT_FALSE(program.Menu(IDM_EDIT_COPY).Greyed);
    EXPECT_FALSE(program.Menu(IDM_FILE_SAVE_AS).Greyed);
    program.Inside().Drop(program.Frame(), WriteScratch("two.txt", "text"));
    ASSERT_TRUE(program.WaitForTitle("two.txt"));
    EXPECT_TRUE(program.Menu(IDM_EDIT_COPY).Greyed);
    EXPECT_TRUE(program.Menu(IDM_FILE_SAVE_AS).Greyed);
}

TEST_F(CommandsTest, CtrlPgUpAndCtrlPgDnBeepWithoutAList)
{
    Program program(WriteScratch("one.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    SetTop(program, 100);
    EXPECT_EQ(Beeps(program), 0);
    PressKeys({VK_CONTROL, VK_NEXT});
    EXPECT_TRUE(WaitUntil([&] { return Beeps(program) == 1; }));
    PressKeys({VK_CONTROL, VK_PRIOR});
    EXPECT_TRUE(WaitUntil([&] { return Beeps(program) == 2; }));
    EXPECT_EQ(program.Title(), "Kestovar-one.txt");
    EXPECT_EQ(program.Top(), 100);
}

TEST_F(CommandsTest, CtrlPgUpAndCtrlPgDnWalkAListAndBeepAtItsEnds)
{
    WriteScratch("list1.kvl", "text");
    WriteScratch("list2.kvl", "text");
    Program program(ScratchPath("list?.kvl"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    const std::string first = program.Title();
    EXPECT_EQ(Beeps(program), 0);
    PressKeys({VK_CONTROL, VK_PRIOR});
    EXPECT_TRUE(WaitUntil([&] { return Beeps(program) == 1; }));
    EXPECT_EQ(program.Title(), first);
    PressKeys({VK_CONTROL, VK_NEXT});
    EXPECT_TRUE(WaitUntil([&] { return program.Title() != first; }));
    const std::string second = program.Title();
    PressKeys({VK_CONTROL, VK_NEXT});
    EXPECT_TRUE(WaitUntil([&] { return Beeps(program) == 2; }));
    EXPECT_EQ(program.Title(), second);
    PressKeys({VK_CONTROL, VK_PRIOR});
    EXPECT_TRUE(WaitUntil([&] { return program.Title() == first; }));
    EXPECT_EQ(Beeps(program), 2);
}

TEST_F(CommandsTest, ClosingTheFileForgetsTheList)
{
    WriteScratch("list1.kvl", "text");
    WriteScratch("list2.kvl", "text");
    Program program(ScratchPath("list?.kvl"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_FALSE(program.Menu(IDM_FILE_NEXT).Greyed);
    program.Command(IDM_FILE_CLOSE);
    EXPECT_TRUE(program.Menu(IDM_FILE_NEXT).Greyed);
    program.Inside().Drop(program.Frame(), WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForTitle("one.txt"));
    EXPECT_TRUE(program.Menu(IDM_FILE_NEXT).Greyed);
    EXPECT_EQ(program.StatusText(), "Line 1 Col 1  100%");
}

TEST_F(CommandsTest, TheListOutlivesAFileThatIsOnlyPutAway)
{
    WriteScratch("list1.kvl", "text");
    WriteScratch("list2.kvl", "text");
    Program program(ScratchPath("list?.kvl"));
    ASSERT_TRUE(program.WaitForFrame());
    const std::string first = program.Title();
    program.Command(IDM_INTERNAL_CLOSE);
    EXPECT_EQ(program.Title(), "Kestovar");
    EXPECT_FALSE(IsIconic(program.Frame()));
    program.Command(IDM_FILE_NEXT);
    EXPECT_NE(program.Title(), "Kestovar");
    EXPECT_NE(program.Title(), first);
    EXPECT_TRUE(program.Menu(IDM_FILE_NEXT).Greyed);
}

TEST_F(CommandsTest, ADoubleClickOnTheStatusLineAsksWhereToGo)
{
    Program program(WriteScratch("one.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    PostMessageA(program.Status(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(20, 5));
    const HWND dialog = WaitForDialog(program, GotoTitle);
    ASSERT_NE(dialog, nullptr);
    Close(program, dialog, IDCANCEL);
}

TEST_F(CommandsTest, ADoubleClickOnTheStatusLineDoesNothingWithoutAFile)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Send(program.Status(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(20, 5));
    EXPECT_EQ(FindDialog(program, GotoTitle), nullptr);
}

TEST_F(CommandsTest, GotoShowsALineOfText)
{
    Program program(WriteScratch("one.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectGoto(program, "5", 4);
    EXPECT_EQ(program.TopText(), "Line 5");
    ExpectGoto(program, "0", 0);
    ExpectGoto(program, "-3", 0);
    ExpectGoto(program, "", 0);
    ExpectGoto(program, "nothing", 0);
    ExpectGoto(program, "12abc", 11);
    ExpectGoto(program, "501", program.Vertical().Max);
    ExpectGoto(program, "4000000000", program.Vertical().Max);
    ExpectGoto(program, "00000000123", 11); // ten characters count
}

TEST_F(CommandsTest, GotoShowsAnOffsetInHexMode)
{
    Program program(WriteScratch("one.txt", std::string(8000, 'a'))); // 1F40 bytes
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_VIEW_HEX);
    ExpectGoto(program, "200", 0x20);
    EXPECT_EQ(program.TopText().substr(0, 8), "00000200");
    ExpectGoto(program, "4Fz", 0x4);
    ExpectGoto(program, "", 0);
    ExpectGoto(program, "1f40", program.Vertical().Max); // just behind the last byte
    ExpectGotoRefused(program, "1F41");
    ExpectGotoRefused(program, "-1");
    ExpectGotoRefused(program, "FFFFFFFFFF");
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(CommandsTest, GotoTakesRealKeysAndEscCancelsIt)
{
    Program program(WriteScratch("one.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    PressKeys({VK_MENU, 'S'});
    PressKeys({'G'});
    HWND dialog = WaitForDialog(program, GotoTitle);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, IDC_GOTO_PROMPT), "Enter new line No.:");
    TypeText("42");
    PressKeys({VK_RETURN});
    WaitUntilClosed(dialog);
    EXPECT_TRUE(WaitUntil([&] { return program.Top() == 41; }));
    dialog = OpenGoto(program);
    ASSERT_NE(dialog, nullptr);
    TypeText("99");
    PressKeys({VK_ESCAPE});
    WaitUntilClosed(dialog);
    EXPECT_TRUE(program.Answers());
    EXPECT_EQ(program.Top(), 41);
    EXPECT_EQ(program.Title(), "Kestovar-one.txt"); // the file is not closed by that Esc
    EXPECT_EQ(GotoOffer(program), (Texts{"42", "42"}));
}

TEST_F(CommandsTest, GotoOffersEarlierTextsOfTheMode)
{
    Program program(WriteScratch("one.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(GotoOffer(program), (Texts{""}));
    Goto(program, "5");
    Goto(program, "12");
    Goto(program, "");
    EXPECT_EQ(GotoOffer(program), (Texts{"", "12", "5"}));
    Goto(program, "5");
    EXPECT_EQ(GotoOffer(program), (Texts{"5", "12", "5"})); // it stays where it is
    program.Command(IDM_VIEW_HEX);
    EXPECT_EQ(GotoOffer(program), (Texts{""}));
    Goto(program, "1F");
    EXPECT_EQ(GotoOffer(program), (Texts{"1F", "1F"}));
    program.Command(IDM_VIEW_TEXT);
    EXPECT_EQ(GotoOffer(program), (Texts{"", "12", "5"})); // the text is forgotten, the earlier ones are not
    program.Command(IDM_VIEW_HEX);
    EXPECT_EQ(GotoOffer(program), (Texts{"", "1F"}));
}

TEST_F(CommandsTest, TheGotoDialogAsksForWhatTheModeCounts)
{
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_VIEW_HEX);
    const HWND dialog = OpenGoto(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, IDC_GOTO_PROMPT), "Enter new offset:");
    Close(program, dialog, IDCANCEL);
}

TEST_F(CommandsTest, TheModeAlreadyShownOnlyRefreshesTheStatusLine)
{
    Program program(WriteScratch("one.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    Goto(program, "100");
    ASSERT_TRUE(WaitUntil([&] { return program.Top() == 99; }));
    program.Command(IDM_EDIT_SELECT_ALL);
    program.ViewTexts(); // nothing is left to be painted
    program.Inside().StartRecording();
    program.Command(IDM_VIEW_TEXT);
    EXPECT_TRUE(program.Answers());
    const std::vector<ProbeText> texts = program.Inside().TakeRecorded();
    EXPECT_TRUE(AnyDrawn(texts, program.Status(), "Line 100 "));
    EXPECT_FALSE(AnyDrawn(texts, program.View(), ""));
    EXPECT_EQ(program.Top(), 99);
    EXPECT_FALSE(program.Menu(IDM_EDIT_COPY).Greyed);
    EXPECT_EQ(GotoOffer(program), (Texts{"100", "100"}));
}

TEST_F(CommandsTest, HexModeShowsTheRowOfTheTopLineAndTextModeTheBeginning)
{
    Program program(WriteScratch("one.txt", Repeated("0123456789abcdefghijklmnopqrs\r\n", 31 * 2000)));
    ASSERT_TRUE(program.WaitForFrame());
    Key(program, VK_RIGHT);
    SetTop(program, 1000);
    program.Command(IDM_VIEW_HEX);
    ExpectMode(program, IDM_VIEW_HEX);
    EXPECT_EQ(program.Top(), 31 * 1000 / 16);
    EXPECT_EQ(program.Horizontal().Position, 0);
    SetTop(program, 300);
    program.Command(IDM_VIEW_TEXT);
    ExpectMode(program, IDM_VIEW_TEXT);
    EXPECT_EQ(program.Top(), 0);
    EXPECT_EQ(program.TopText().substr(0, 10), "0123456789");
}

TEST_F(CommandsTest, ABinaryFileIsShownFromItsBeginningInEachMode)
{
    Program program(WriteScratch("one.kvb", std::string(40000, '\x01')));
    ASSERT_TRUE(program.WaitForFrame());
    SetTop(program, 300);
    program.Command(IDM_VIEW_TEXT);
    EXPECT_EQ(program.Top(), 0);
    SetTop(program, 100);
    program.Command(IDM_VIEW_HEX);
    EXPECT_EQ(program.Top(), 0);
}

TEST_F(CommandsTest, AModeSwitchDropsSelectionAndLock)
{
    Program program("-L 0 0 5 3 " + WriteScratch("one.txt", WideLines(300)));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectLock(program, 3, 5);
    program.Command(IDM_EDIT_SELECT_ALL);
    program.Command(IDM_VIEW_HEX);
    EXPECT_TRUE(program.Menu(IDM_VIEW_LOCK).Greyed);
    EXPECT_TRUE(program.Menu(IDM_EDIT_COPY).Greyed);
    EXPECT_TRUE(program.Menu(IDM_SEARCH_FIND_NEXT).Greyed);
    program.Command(IDM_VIEW_TEXT);
    EXPECT_FALSE(program.Menu(IDM_VIEW_LOCK).Greyed);
    EXPECT_TRUE(program.Menu(IDM_EDIT_COPY).Greyed);
    ExpectNoLock(program);
}

TEST_F(CommandsTest, ABinaryFileCannotBeLockedInTextModeEither)
{
    Program program(WriteScratch("one.kvb", std::string(40000, '\x01')));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_VIEW_TEXT);
    ExpectMode(program, IDM_VIEW_TEXT);
    EXPECT_TRUE(program.Menu(IDM_VIEW_LOCK).Greyed);
}

TEST_F(CommandsTest, WithoutAFileTheModeStays)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_VIEW_HEX);
    ExpectMode(program, IDM_VIEW_TEXT);
}

TEST_F(CommandsTest, KeysWorkWhileTheMenuBarIsHidden)
{
    Program program(WriteScratch("one.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    PressKeys({VK_CONTROL, 'M'});
    ASSERT_TRUE(WaitUntil([&] { return !program.Menu(IDM_FILE_EXIT).HasMenu; }));
    PressKeys({VK_NEXT});
    EXPECT_TRUE(WaitUntil([&] { return program.Top() > 0; }));
    PressKeys({VK_CONTROL, VK_NEXT});
    EXPECT_TRUE(WaitUntil([&] { return Beeps(program) == 1; }));
    PressKeys({VK_CONTROL, 'H'});
    EXPECT_TRUE(WaitUntil([&] { return program.TopText().substr(0, 4) == "0000"; }));
    PressKeys({VK_CONTROL, 'M'});
    EXPECT_TRUE(WaitUntil([&] { return program.Menu(IDM_FILE_EXIT).HasMenu; }));
    ExpectMode(program, IDM_VIEW_HEX); // the hidden bar has kept up
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(CommandsTest, WhatIsGreyedStaysImpossibleWhileTheMenuBarIsHidden)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_SYSTEM_MENU_BAR);
    ASSERT_FALSE(program.Menu(IDM_FILE_EXIT).HasMenu);
    for (const ItemState& item : Items) {
        // The button that closes and iconizes can always be pressed, and it sends no more than this command.
        if (!item.WithoutFile && item.Id != IDM_FILE_CLOSE) {
            program.Command(item.Id);
        }
    }
    EXPECT_FALSE(IsIconic(program.Frame()));
    EXPECT_EQ(FindDialog(program, GotoTitle), nullptr);
    EXPECT_FALSE(program.ShowsBox());
    program.Command(IDM_SYSTEM_MENU_BAR);
    ExpectItems(program, &ItemState::WithoutFile);
}

TEST_F(CommandsTest, AFileOpenedWhileTheMenuBarIsHiddenMakesItsItemsPossible)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_SYSTEM_MENU_BAR);
    program.Inside().Drop(program.Frame(), WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForTitle("one.txt"));
    program.Command(IDM_SYSTEM_MENU_BAR);
    ExpectItems(program, &ItemState::WithText);
}

TEST_F(CommandsTest, EnterAtOnceLocksFourRowsAndNineteenColumns)
{
    Program program(WriteScratch("wide.txt", WideLines(300)));
    ASSERT_TRUE(program.WaitForFrame());
    SetTop(program, 50);
    Key(program, VK_RIGHT);
    // The headings are chosen among the first lines and columns.
    const std::vector<ProbeText> texts = StartLock(program);
    EXPECT_TRUE(std::any_of(texts.begin(), texts.end(), [&](const ProbeText& text) {
        return WasDrawn(text, program.View(), LineNumber(1)) && text.Y == 0 && text.X >= 0;
    }));
    PressKeys({VK_RETURN});
    ASSERT_TRUE(WaitForEndOfLock(program));
    ExpectLock(program, 4, 19);
    Key(program, VK_HOME);
    const int beeps = Beeps(program);
    Key(program, VK_PRIOR);
    EXPECT_EQ(Beeps(program), beeps + 1);
    EXPECT_EQ(program.Top(), 0);
}

TEST_F(CommandsTest, LockingAgainUnlocks)
{
    Program program(WriteScratch("wide.txt", WideLines(300)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_FALSE(StartLock(program).empty());
    PressKeys({VK_RETURN});
    ASSERT_TRUE(WaitForEndOfLock(program));
    ExpectLock(program, 4, 19);
    program.Command(IDM_VIEW_LOCK);
    EXPECT_EQ(program.Top(), 100); // unlocking does not scroll
    ExpectNoLock(program);
}

TEST_F(CommandsTest, EscCancelsALockAndLeavesTheFileOpen)
{
    Program program(WriteScratch("wide.txt", WideLines(300)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_FALSE(StartLock(program).empty());
    PressKeys({VK_ESCAPE});
    ASSERT_TRUE(WaitForEndOfLock(program));
    EXPECT_EQ(program.Title(), "Kestovar-wide.txt");
    EXPECT_FALSE(IsIconic(program.Frame()));
    ExpectNoLock(program);
}

TEST_F(CommandsTest, AnotherKeyBeepsAndLeavesTheLockChoiceOpen)
{
    Program program(WriteScratch("wide.txt", WideLines(300)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_FALSE(StartLock(program).empty());
    PressKeys({'X'});
    EXPECT_TRUE(WaitUntil([&] { return Beeps(program) == 1; }));
    EXPECT_EQ(CaptureOf(program), program.View());
    PressKeys({VK_RETURN});
    ASSERT_TRUE(WaitForEndOfLock(program));
    ExpectLock(program, 4, 19);
}

TEST_F(CommandsTest, AClickLocksWhatLiesAboveAndBesideIt)
{
    Program program(WriteScratch("wide.txt", WideLines(300)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_FALSE(StartLock(program).empty());
    ASSERT_TRUE(MovePointer(program.View(), 10 * CellWidth() + 3, 2 * CellHeight() + 3));
    PressLeft();
    ASSERT_TRUE(WaitForEndOfLock(program));
    ReleaseLeft();
    ExpectLock(program, 2, 9);
}

TEST_F(CommandsTest, NoMoreThanTenRowsAreLocked)
{
    Program program(WriteScratch("wide.txt", WideLines(300)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_FALSE(StartLock(program).empty());
    ASSERT_TRUE(MovePointer(program.View(), 5 * CellWidth(), 15 * CellHeight()));
    PressLeft();
    ASSERT_TRUE(WaitForEndOfLock(program));
    ReleaseLeft();
    ExpectLock(program, 10, 4);
}

TEST_F(CommandsTest, ALowWindowLocksNoMoreThanItsWholeRows)
{
    WriteSettings("WindowSize=20 20 700 215\nFontName=Courier\nFontSize=15\n");
    Program program(WriteScratch("wide.txt", WideLines(300)));
    ASSERT_TRUE(program.WaitForFrame());
    const int height = ClientSize(program.View()).cy;
    const int rows = (height - 2) / CellHeight();
    ASSERT_LT(rows, 10);
    ASSERT_GT(rows, 4);
    ASSERT_FALSE(StartLock(program).empty());
    ASSERT_TRUE(MovePointer(program.View(), 5 * CellWidth(), height + 30)); // on the status line
    PressLeft();
    ASSERT_TRUE(WaitForEndOfLock(program));
    ReleaseLeft();
    SetWindowPos(program.Frame(), nullptr, 20, 20, 700, 500, SWP_NOZORDER | SWP_NOACTIVATE);
    ASSERT_TRUE(WaitUntil([&] { return RowsOf(program) > 15; }));
    ExpectLock(program, rows, 4);
}

TEST_F(CommandsTest, TwentyColumnsStayFreeBesideLockedOnes)
{
    Program program(WriteScratch("wide.txt", WideLines(300)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_FALSE(StartLock(program).empty());
    ASSERT_TRUE(MovePointer(program.View(), ClientSize(program.View()).cx - 10 * CellWidth(), 2 * CellHeight()));
    PressLeft();
    ASSERT_TRUE(WaitForEndOfLock(program));
    ReleaseLeft();
    ExpectLock(program, 2, 0);
}

TEST_F(CommandsTest, AProportionalFontLocksRowsOnly)
{
    WriteSettings("FontName=Arial\n");
    Program program(WriteScratch("wide.txt", WideLines(300)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_FALSE(StartLock(program).empty());
    PressKeys({VK_RETURN});
    ASSERT_TRUE(WaitForEndOfLock(program));
    SetTop(program, 100);
    const std::vector<ProbeText> texts = program.ViewTexts();
    std::set<std::string> headings;
    for (const ProbeText& text : texts) {
        EXPECT_EQ(text.Length, 200); // nothing is cut off for locked columns
        headings.insert(std::string(text.Text, 3));
    }
    EXPECT_TRUE(headings.contains(LineNumber(1)));
    EXPECT_TRUE(headings.contains(LineNumber(105)));
    EXPECT_FALSE(headings.contains(LineNumber(101)));
}

TEST_F(CommandsTest, CommandsWithoutAMeaningDoNothing)
{
    std::set<UINT> meant = {IDM_SYSTEM_MENU_BAR, IDM_KEY_PREVIOUS, IDM_KEY_NEXT, IDM_INTERNAL_CLOSE,
                            IDM_INTERNAL_REOPEN};
    for (const ItemState& item : Items) {
        meant.insert(item.Id);
    }
    for (UINT id = IDM_RECENT_FIRST; id <= IDM_RECENT_LAST; ++id) {
        meant.insert(id);
    }
    Program program(WriteScratch("one.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    SetTop(program, 100);
    for (UINT id = 0; id < 1000; ++id) {
        if (!meant.contains(id)) {
            program.Command(id);
        }
    }
    program.Send(program.Frame(), WM_SYSCOMMAND, IDM_SYSTEM_SPARE);
    EXPECT_EQ(program.Title(), "Kestovar-one.txt");
    EXPECT_EQ(program.Top(), 100);
    EXPECT_EQ(Beeps(program), 0);
    EXPECT_FALSE(program.ShowsBox());
    EXPECT_TRUE(program.Menu(IDM_FILE_EXIT).HasMenu);
    ExpectItems(program, &ItemState::WithText);
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(CommandsTest, WithoutAHelpFileTheProgramStaysUsable)
{
    Program program(WriteScratch("one.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    PressKeys({VK_F1});
    AnswerMissingHelp(program);
    EXPECT_TRUE(program.Answers());
    for (const UINT id : {IDM_HELP_KEYBOARD, IDM_HELP_USING}) {
        program.Post(WM_COMMAND, id);
        AnswerMissingHelp(program);
        EXPECT_TRUE(program.Answers());
    }
    EXPECT_EQ(program.Title(), "Kestovar-one.txt");
    EXPECT_EQ(program.StatusText().substr(0, 6), "Line 1");
    Key(program, VK_END);
    EXPECT_GT(program.Top(), 0);
    EXPECT_EQ(program.Close(), 0u);
}
