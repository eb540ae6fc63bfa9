#include "support/associations.h"
#include "support/button_bar.h"
#include "support/dialogs.h"
#include "support/file_list.h"
#include "support/find_dialog.h"
#include "support/input.h"
#include "support/launched.h"
#include "support/marks.h"

#include <set>

namespace {

// Which buttons can be pressed, all the way through the program's states: those whose menu items can be chosen.
class ButtonStatesTest : public BarTest {
protected:
    std::string Write(const std::string& name, const std::string& content) const { return Files.Write(name, content); }

    const TestDirectory Files{"barstates"};
};

using Buttons = std::set<int>;

// These can be pressed whatever happens.
const Buttons Always = {BarOpen, BarText, BarHex, BarFont, BarColours, BarHelp, BarClose, BarExit};

// What any file gives.
const Buttons WithFile = {BarPrint, BarInformation, BarFind, BarGoto, BarDelete, BarLarger, BarSmaller, BarEdit};

Buttons operator+(Buttons buttons, const Buttons& others)
{
    buttons.insert(others.begin(), others.end());
    return buttons;
}

const Buttons WithText = WithFile + Buttons{BarLaunch, BarLock};

std::string LooksWith(const Buttons& possible)
{
    std::string looks;
    for (int button = 0; button < BarButtonCount; ++button) {
        looks += possible.contains(button) || Always.contains(button) ? '+' : '-';
    }
    return looks;
}

// How the buttons would look by their menu items.
std::string LooksOfItems(Program& program)
{
    std::string looks;
    for (int button = 0; button < BarButtonCount; ++button) {
        const MenuItem item = program.Menu(BarButtons[button].Command);
        looks += Always.contains(button) ? '+' : !item.Exists ? '?' : item.Greyed ? '-' : '+';
    }
    return looks;
}

void ExpectButtons(Program& program, const Buttons& possible)
{
    const std::string looks = LooksWith(possible);
    EXPECT_TRUE(WaitUntil([&] { return LooksOfButtons(program) == looks; }))
        << LooksOfButtons(program) << " instead of\n"
        << looks;
}

// Waits until these can be pressed, besides the ones that always can, and their items chosen.
void ExpectState(Program& program, const Buttons& possible)
{
    ExpectButtons(program, possible);
    EXPECT_EQ(LooksOfItems(program), LooksWith(possible));
}

void Show(Program& program, const std::string& path)
{
    program.Inside().Drop(program.Frame(), path);
    ASSERT_TRUE(program.WaitForTitle(path.substr(path.find_last_of('\\') + 1)));
}

// Nothing in it but its end, behind a byte of its own.
std::string Archive()
{
    return "xPK\x05\x06" + std::string(18, '\0');
}

void SwitchMode(Program& program, UINT mode)
{
    ASSERT_TRUE(WaitForKeyboard(program));
    PressKeys({VK_CONTROL, static_cast<WORD>(mode == IDM_VIEW_HEX ? 'H' : 'T')});
    ASSERT_TRUE(WaitUntil([&] { return program.Menu(mode).Checked; }));
}

// Empties the editor's name in the preferences, or puts another there.
void ChangeEditor(const Program& program, const std::string& name)
{
    program.Post(WM_COMMAND, IDM_OPTIONS_PREFERENCES);
    const HWND dialog = WaitForDialog(program, "Preferences");
    ASSERT_NE(dialog, nullptr);
    SetControlText(dialog, IDC_PREFER_EDITOR, name);
    PressControl(dialog, IDOK);
    ASSERT_TRUE(WaitUntilClosed(dialog));
}

void Restore(const Program& program)
{
    program.Post(WM_SYSCOMMAND, SC_RESTORE);
    ASSERT_TRUE(WaitUntil([&] { return !IsIconic(program.Frame()); }));
}

void WaitUntilMinimised(const Program& program)
{
    ASSERT_TRUE(WaitUntil([&] { return IsIconic(program.Frame()) != FALSE; }));
}

void DeleteFileShown(Program& program)
{
    program.Post(WM_COMMAND, IDM_FILE_DELETE);
    const HWND dialog = WaitForDialog(program, "Confirm File Delete");
    ASSERT_NE(dialog, nullptr);
    PressControl(dialog, IDC_DELETE_YES);
    ASSERT_TRUE(WaitUntilClosed(dialog));
}

} // namespace

TEST_F(ButtonStatesTest, WithoutAFileOnlyWhatNeedsNone)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ExpectState(program, {});
}

TEST_F(ButtonStatesTest, FilesOfEachKindHaveTheirButtons)
{
    CopyLaunchedTo(Files.PathOf("app.exe"));
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    Show(program, Write("text.kvb", "text"));
    ExpectState(program, WithText);
    Show(program, Write("binary.kvb", Repeated(std::string("\0\1\2\3", 4), 4000)));
    ExpectState(program, WithFile);
    Show(program, Files.PathOf("app.exe"));
    ExpectState(program, WithFile + Buttons{BarLaunch});
    Show(program, Write("archive.kvb", Archive()));
    ExpectState(program, WithFile + Buttons{BarZip});
    Show(program, Write("empty.kvb", ""));
    ExpectState(program, WithText);
    Show(program, Files.PathOf("text.kvb"));
    ExpectState(program, WithText);
    program.Command(IDM_INTERNAL_CLOSE);
    ExpectState(program, {});
}

TEST_F(ButtonStatesTest, AnAssociationAloneMakesAFileOneToLaunch)
{
    const RegisteredExtension association({"kvq", "Kestovar.Test", "A file for the tests", "nothing.exe \"%1\""});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    Show(program, Write("binary.kvq", Repeated(std::string("\0\1\2\3", 4), 4000)));
    ExpectState(program, WithFile + Buttons{BarLaunch});
    Show(program, Write("binary.kvb", Repeated(std::string("\0\1\2\3", 4), 4000)));
    ExpectState(program, WithFile);
}

TEST_F(ButtonStatesTest, AFileThatIsGivenAtTheStartHasItsButtonsAtOnce)
{
    Program program(Write("text.kvb", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectState(program, WithText);
}

TEST_F(ButtonStatesTest, InAListThereArePreviousAndNext)
{
    Files.WriteAll({"1.kvb", "2.kvb", "3.kvb"});
    const std::vector<std::string> names = Files.Find("*.kvb");
    Program program(Files.PathOf("*.kvb"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(WaitForFile(program, names[0], "[File 1 of 3]"));
    ExpectState(program, WithText + Buttons{BarNext});
    program.Command(IDM_FILE_NEXT);
    ASSERT_TRUE(WaitForFile(program, names[1], "[File 2 of 3]"));
    ExpectState(program, WithText + Buttons{BarPrevious, BarNext});
    program.Command(IDM_FILE_NEXT);
    ASSERT_TRUE(WaitForFile(program, names[2], "[File 3 of 3]"));
    ExpectState(program, WithText + Buttons{BarPrevious});
    program.Command(IDM_FILE_PREVIOUS);
    ASSERT_TRUE(WaitForFile(program, names[1], "[File 2 of 3]"));
    ExpectState(program, WithText + Buttons{BarPrevious, BarNext});
    Show(program, Write("alone.kvc", "alone"));
    ExpectState(program, WithText);
}

TEST_F(ButtonStatesTest, ADeletedFileLeavesItsNeighboursInTheList)
{
    Files.WriteAll({"1.kvb", "2.kvb", "3.kvb"});
    const std::vector<std::string> names = Files.Find("*.kvb");
    Program program(Files.PathOf("*.kvb"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(WaitForFile(program, names[0], "[File 1 of 3]"));
    program.Command(IDM_FILE_NEXT);
    ASSERT_TRUE(WaitForFile(program, names[1], "[File 2 of 3]"));
    DeleteFileShown(program);
    ExpectState(program, {BarPrevious, BarNext});
}

TEST_F(ButtonStatesTest, ADeletedFileTakesItsButtonsAway)
{
    Program program(Write("text.kvb", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectState(program, WithText);
    DeleteFileShown(program);
    ExpectState(program, {});
}

TEST_F(ButtonStatesTest, AClosedFileTakesItsButtonsAway)
{
    Files.WriteAll({"1.kvb", "2.kvb", "3.kvb"});
    Program program(Files.PathOf("*.kvb"));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectState(program, WithText + Buttons{BarNext});
    program.Command(IDM_EDIT_SELECT_ALL);
    ExpectState(program, WithText + Buttons{BarNext, BarCopy});
    program.Post(WM_COMMAND, IDM_FILE_CLOSE);
    WaitUntilMinimised(program);
    Restore(program);
    ExpectState(program, {});
}

TEST_F(ButtonStatesTest, ASelectionCanBeCopied)
{
    Program program(Write("text.kvb", NumberedLines(100)));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectState(program, WithText);
    ASSERT_TRUE(DragInView(program, PointOf(2, 1), PointOf(4, 3)));
    ExpectState(program, WithText + Buttons{BarCopy});
    ASSERT_TRUE(DragInView(program, PointOf(5, 1), PointOf(5, 1)));
    ExpectState(program, WithText);
    program.Command(IDM_EDIT_SELECT_ALL);
    ExpectState(program, WithText + Buttons{BarCopy});
    SwitchMode(program, IDM_VIEW_HEX);
    ExpectState(program, WithFile + Buttons{BarLaunch});
    program.Command(IDM_EDIT_SELECT_ALL);
    ExpectState(program, WithFile + Buttons{BarLaunch, BarCopy});
    Show(program, Write("other.kvb", "text"));
    ExpectButtons(program, WithText);
}

TEST_F(ButtonStatesTest, ASearchThatFoundSomethingCanBeRepeated)
{
    Program program(Write("text.kvb", NumberedLines(100)));
    ASSERT_TRUE(program.WaitForFrame());
    FindText(program, "Line 50");
    ExpectState(program, WithText + Buttons{BarRepeatFind});
    ASSERT_TRUE(FindsNothing(program, "nowhere"));
    ExpectState(program, WithText);
    FindText(program, "Line 60");
    ExpectState(program, WithText + Buttons{BarRepeatFind});
    Show(program, Write("other.kvb", "text"));
    ExpectState(program, WithText);
    FindText(program, "text");
    ExpectState(program, WithText + Buttons{BarRepeatFind});
    SwitchMode(program, IDM_VIEW_HEX);
    ExpectState(program, WithFile + Buttons{BarLaunch});
}

TEST_F(ButtonStatesTest, OnlyTextInTextModeCanBeLocked)
{
    Program program(Write("text.kvb", NumberedLines(100)));
    ASSERT_TRUE(program.WaitForFrame());
    SwitchMode(program, IDM_VIEW_HEX);
    ExpectState(program, WithFile + Buttons{BarLaunch});
    SwitchMode(program, IDM_VIEW_TEXT);
    ExpectState(program, WithText);
    ASSERT_TRUE(WaitForKeyboard(program));
    ASSERT_TRUE(MovePointer(program.View(), 20 * CellWidth(), 4 * CellHeight()));
    program.Post(WM_COMMAND, IDM_VIEW_LOCK);
    ASSERT_TRUE(WaitUntil([&] { return CaptureOf(program) == program.View(); }));
    PressKeys({VK_RETURN});
    ASSERT_TRUE(WaitUntil([&] { return CaptureOf(program) == nullptr; }));
    SetTop(program, 50);
    ASSERT_EQ(program.TopText(), "Line 1");
    ExpectState(program, WithText); // to be unlocked
    SwitchMode(program, IDM_VIEW_HEX);
    ExpectState(program, WithFile + Buttons{BarLaunch});
    Show(program, Write("binary.kvb", Repeated(std::string("\0\1\2\3", 4), 4000)));
    SwitchMode(program, IDM_VIEW_TEXT);
    ExpectState(program, WithFile);
}

TEST_F(ButtonStatesTest, ASubstituteFontLeavesTheFontButtons)
{
    WriteSettings("WindowSize=40 30 900 500\nFontName=Arial\nFontSize=16\nButtons=" +
                  OrderText(FirstButtons(BarButtonCount)) + "\n");
    Program program(Write("text.kvb", NumberedLines(100)));
    ASSERT_TRUE(program.WaitForFrame());
    SwitchMode(program, IDM_VIEW_HEX);
    ExpectState(program, WithFile + Buttons{BarLaunch});
    const int beeps = program.Inside().Use().Beeps;
    ASSERT_TRUE(ClickSlot(program, BarLarger)); // there is nothing to make larger
    EXPECT_TRUE(WaitUntil([&] { return program.Inside().Use().Beeps > beeps; }));
    ExpectState(program, WithFile + Buttons{BarLaunch});
    SwitchMode(program, IDM_VIEW_TEXT);
    ExpectState(program, WithText);
}

TEST_F(ButtonStatesTest, WithoutAnEditorThereIsNoEditing)
{
    UseSettings("EditorName=\n");
    Buttons without = WithText;
    without.erase(BarEdit);
    without.erase(BarLaunch);
    Program program(Write("text.kvb", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ChangeEditor(program, ""); // an empty setting can mean the default
    ExpectState(program, without);
    ChangeEditor(program, "some.exe");
    ExpectState(program, WithText);
    ChangeEditor(program, "");
    ExpectState(program, without);
    Show(program, Write("other.kvb", "text"));
    ExpectState(program, without);
    program.Command(IDM_INTERNAL_CLOSE);
    ExpectState(program, {});
    ChangeEditor(program, "some.exe");
    ExpectState(program, {});
}

TEST_F(ButtonStatesTest, TheyFollowWhileTheMenuBarIsHidden)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_SYSTEM_MENU_BAR);
    ASSERT_TRUE(WaitUntil([&] { return !program.Menu(IDM_FILE_OPEN).HasMenu; }));
    ExpectButtons(program, {});
    Show(program, Write("text.kvb", NumberedLines(100)));
    ExpectButtons(program, WithText);
    FindText(program, "Line 50");
    ExpectButtons(program, WithText + Buttons{BarRepeatFind});
    ASSERT_TRUE(DragInView(program, PointOf(2, 1), PointOf(4, 3)));
    ExpectButtons(program, WithText + Buttons{BarRepeatFind, BarCopy});
    program.Command(IDM_SYSTEM_MENU_BAR);
    ASSERT_TRUE(WaitUntil([&] { return program.Menu(IDM_FILE_OPEN).HasMenu; }));
    ExpectState(program, WithText + Buttons{BarRepeatFind, BarCopy});
    program.Command(IDM_SYSTEM_MENU_BAR);
    program.Command(IDM_INTERNAL_CLOSE);
    ExpectButtons(program, {});
    program.Command(IDM_SYSTEM_MENU_BAR);
    ExpectState(program, {});
}

TEST_F(ButtonStatesTest, AnIconKeepsItsStateAndFollowsInTheMeantime)
{
    Program program(Write("text.kvb", NumberedLines(100)));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectState(program, WithText);
    program.Post(WM_SYSCOMMAND, SC_MINIMIZE);
    WaitUntilMinimised(program);
    Restore(program);
    ExpectState(program, WithText);
    program.Post(WM_SYSCOMMAND, SC_MINIMIZE);
    WaitUntilMinimised(program);
    program.Command(IDM_INTERNAL_CLOSE);
    ASSERT_TRUE(program.WaitForTitle(""));
    Restore(program);
    ExpectState(program, {});
}
