#include "support/input.h"
#include "support/ui_test.h"

#include <algorithm>

namespace {

class MenuHelpTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }
};

constexpr char Position[] = "Line 1 Col 1  100%";

struct Help {
    UINT Id;
    const char* Text;
};

using HelpTexts = std::vector<Help>;

const HelpTexts FileHelp = {
    {IDM_FILE_OPEN, "Open a new file"},
    {IDM_FILE_SAVE_AS, "Save selected text in a file"},
    {IDM_FILE_CLOSE, "Close the current file and Iconize"},
    {IDM_FILE_LAUNCH, "Launch the current file with it's associated application "},
    {IDM_FILE_DELETE, "Delete the curent file"},
    {IDM_FILE_PREVIOUS, "View the previous file"},
    {IDM_FILE_NEXT, "View the next file"},
    {IDM_FILE_PRINT, "Print from the current file"},
    {IDM_FILE_PRINTER_SETUP, "Select and setup a printer"},
    {IDM_FILE_PAGE_SETUP, ""},
    {IDM_FILE_INFORMATION, "Display information about the current file"},
    {IDM_FILE_EXIT, "Exit Kestovar !"},
};

const HelpTexts EditHelp = {
    {IDM_EDIT_COPY, "Copy selected text to the clipboard"},
    {IDM_EDIT_SELECT_ALL, "Select the entire file"},
    {IDM_EDIT_FILE, "Edit the current file"},
};

const HelpTexts SearchHelp = {
    {IDM_SEARCH_FIND, "Search the file for a character string"},
    {IDM_SEARCH_FIND_NEXT, "Find the next match"},
    {IDM_SEARCH_FIND_PREVIOUS, "Find the previous match"},
    {IDM_SEARCH_GOTO, "Goto to a specified file position"},
};

const HelpTexts ViewHelp = {
    {IDM_VIEW_TEXT, "Select the text viewing mode"},
    {IDM_VIEW_HEX, "Select the hex viewing mode"},
    {IDM_VIEW_ZIP, "View information about files contained within a ZIP file"},
    {IDM_VIEW_REDISPLAY_ZIP, "Redisplay the previous ZIP file"},
    {IDM_VIEW_LOCK, "Lock/Unlock row and column headings"},
    {IDM_FONT_INCREASE, "Increase current font size"},
    {IDM_FONT_DECREASE, "Decrease current font size"},
};

const HelpTexts OptionsHelp = {
    {IDM_OPTIONS_FONT, "Select from a list of available fonts"},
    {IDM_OPTIONS_PREFERENCES, "Set various Kestovar options"},
    {IDM_OPTIONS_BUTTON_BAR, "Customize the Button Bar"},
    {IDM_OPTIONS_COLOURS, "Define your colour preferences"},
    {IDM_OPTIONS_LINE_LENGTH, "Set the line length for non-text files"},
    {IDM_OPTIONS_SAVE, "Save the selected options"},
};

const HelpTexts HelpHelp = {
    {IDM_HELP_CONTENTS, "Display the Kestovar help contents"},
    {IDM_HELP_KEYBOARD, "Display Kestovar keyboard usage help"},
    {IDM_HELP_USING, "Display how to use the help system"},
    {IDM_HELP_ABOUT, "Display information about Kestovar"},
};

const HelpTexts SystemHelp = {
    {SC_RESTORE, "Restore Kestovar to it's previous size"},
    {SC_MOVE, "Move the Kestovar window on the desktop"},
    {SC_SIZE, "Change the size of the Kestovar window"},
    {SC_MINIMIZE, "Iconize the Kestovar window"},
    {SC_MAXIMIZE, "Enlarge the Kestovar window to it's maximum size"},
    {SC_CLOSE, "Exit Kestovar !"},
    {SC_TASKLIST, "Switch to another Application"},
    {IDM_SYSTEM_MENU_BAR, "Remove the menu bar"},
};

bool WaitForStatus(Program& program, const std::string& text)
{
    const bool shown = WaitUntil([&] { return program.StatusText() == text; });
    EXPECT_TRUE(shown) << "not \"" << text << "\" but \"" << program.StatusText() << '"';
    return shown;
}

// As the menu does when the selection comes to an item. Id 0xFFFF with no flags is no item.
void Select(const Program& program, UINT id, UINT flags = 0)
{
    program.Send(program.Frame(), WM_MENUSELECT, MAKEWPARAM(id, flags));
}

// Opening a file leaves a message behind that shows the position. Once a command posted after it has beeped
// the line stays as it is.
void WaitForQuietLine(Program& program)
{
    const int beeps = program.Inside().Use().Beeps;
    program.Post(WM_COMMAND, IDM_KEY_NEXT); // there is no list
    EXPECT_TRUE(WaitUntil([&] { return program.Inside().Use().Beeps > beeps; }));
}

void ExpectHelp(Program& program, UINT id, const std::string& text)
{
    program.Send(program.Status(), WM_USER + 5, IDS_SELECT_LOCK_AREA); // what is to be replaced
    Select(program, id);
    EXPECT_EQ(program.StatusText(), text) << id;
}

void LeaveMenu(Program& program)
{
    PressKeys({VK_ESCAPE});
    PressKeys({VK_ESCAPE});
    EXPECT_TRUE(WaitForStatus(program, Position));
}

// Opens the popup with Alt and the letter and goes down through its items.
void WalkPopup(Program& program, WORD letter, const HelpTexts& items)
{
    PressKeys({VK_MENU, letter});
    for (const Help& item : items) {
        if (!WaitForStatus(program, item.Text)) {
            break;
        }
        PressKeys({VK_DOWN});
    }
    LeaveMenu(program);
}

} // namespace

TEST_F(MenuHelpTest, EachPopupIsExplainedWhileItsTitleIsSelected)
{
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    PressKeys({VK_F10});
    for (const char* const text :
         {"Open, Print, Display Information or Exit", "Perform Editing commands",
          "Find, Repeat Find or set file location", "Select viewing options", "Select or save program options",
          "Obtain program help", "Move, Size or Close application window",
          "Open, Print, Display Information or Exit"}) {
        ASSERT_TRUE(WaitForStatus(program, text));
        PressKeys({VK_RIGHT});
    }
    PressKeys({VK_ESCAPE});
    EXPECT_TRUE(WaitForStatus(program, Position));
}

TEST_F(MenuHelpTest, ItemsAreExplainedWhileTheSelectionMovesThroughThem)
{
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    WalkPopup(program, 'F', FileHelp);
    WalkPopup(program, 'E', EditHelp);
    WalkPopup(program, 'S', SearchHelp);
    WalkPopup(program, 'V', ViewHelp);
    WalkPopup(program, 'O', OptionsHelp);
    WalkPopup(program, 'H', HelpHelp);
    EXPECT_EQ(program.Title(), "Kestovar-one.txt");
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(MenuHelpTest, ItemsOfTheSystemMenuAreExplained)
{
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    WalkPopup(program, VK_SPACE,
              {{SC_RESTORE, "Restore Kestovar to it's previous size"},
               {SC_MOVE, "Move the Kestovar window on the desktop"},
               {SC_SIZE, "Change the size of the Kestovar window"},
               {SC_MINIMIZE, "Iconize the Kestovar window"},
               {SC_MAXIMIZE, "Enlarge the Kestovar window to it's maximum size"},
               {SC_CLOSE, "Exit Kestovar !"}});
    PressKeys({VK_MENU, VK_SPACE});
    ASSERT_TRUE(WaitForStatus(program, "Restore Kestovar to it's previous size"));
    PressKeys({VK_UP}); // to the last one
    EXPECT_TRUE(WaitForStatus(program, "Remove the menu bar"));
    LeaveMenu(program);
}

TEST_F(MenuHelpTest, RecentFilesAreExplainedAlike)
{
    WriteSettings(std::string(FixedFont) + "SavedFile1=c:\\a.txt\nSavedFile2=c:\\b.txt\n");
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    PressKeys({VK_MENU, 'F'});
    ASSERT_TRUE(WaitForStatus(program, "Open a new file"));
    for (const char* const text :
         {"Reopen a closed file", "Reopen a closed file", "Exit Kestovar !"}) { // upwards from the end
        PressKeys({VK_UP});
        ASSERT_TRUE(WaitForStatus(program, text));
    }
    LeaveMenu(program);
    for (UINT id = IDM_RECENT_FIRST; id <= IDM_RECENT_LAST + 1; ++id) {
        ExpectHelp(program, id, "Reopen a closed file");
    }
}

TEST_F(MenuHelpTest, EveryCommandHasItsText)
{
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    WaitForQuietLine(program);
    for (const HelpTexts& items : {FileHelp, EditHelp, SearchHelp, ViewHelp, OptionsHelp, HelpHelp, SystemHelp}) {
        for (const Help& item : items) {
            ExpectHelp(program, item.Id, item.Text);
        }
    }
}

TEST_F(MenuHelpTest, WhatIsNoCommandHasNoText)
{
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    WaitForQuietLine(program);
    for (const UINT id : {0u, 1u, 99u, static_cast<UINT>(IDM_SYSTEM_SPARE), 0xFFFFu}) {
        ExpectHelp(program, id, "");
    }
}

TEST_F(MenuHelpTest, LaunchingIsExplainedByTheKindOfProgram)
{
    std::string dos = "MZ" + std::string(200, '\0');
    Program program(WriteScratch("dos.exe", dos));
    ASSERT_TRUE(program.WaitForFrame());
    WaitForQuietLine(program);
    ExpectHelp(program, IDM_FILE_LAUNCH, "Edit the current file");
    dos.replace(24, 1, "\x40").replace(60, 1, "\x40").replace(64, 2, "NE").replace(64 + 54, 1, "\x02");
    program.Inside().Drop(program.Frame(), WriteScratch("windows.exe", dos));
    ASSERT_TRUE(program.WaitForTitle("windows.exe"));
    WaitForQuietLine(program);
    ExpectHelp(program, IDM_FILE_LAUNCH, "Launch the current Windows program");
    program.Command(IDM_INTERNAL_CLOSE);
    ExpectHelp(program, IDM_FILE_LAUNCH, "Launch the current file with it's associated application ");
}

TEST_F(MenuHelpTest, TheTextIsDrawnAtOnce)
{
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    WaitForQuietLine(program);
    program.Inside().StartRecording();
    Select(program, IDM_FILE_OPEN);
    Select(program, 0xFFFF, 0xFFFF);
    const std::vector<ProbeText> texts = program.Inside().TakeRecorded();
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_EQ(texts[0].Window, program.Status());
    EXPECT_STREQ(texts[0].Text, "Open a new file");
    EXPECT_EQ(texts[1].Window, program.Status());
    EXPECT_STREQ(texts[1].Text, Position);
}

TEST_F(MenuHelpTest, AClosedMenuLeavesTheLineEmptyWithoutAFile)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    PressKeys({VK_MENU, 'E'});
    ASSERT_TRUE(WaitForStatus(program, "Copy selected text to the clipboard"));
    PressKeys({VK_ESCAPE});
    PressKeys({VK_ESCAPE});
    EXPECT_TRUE(WaitForStatus(program, ""));
}

TEST_F(MenuHelpTest, NothingIsExplainedWithoutAStatusLine)
{
    WriteSettings(std::string(FixedFont) + "StatusLine=0\n");
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    WaitForQuietLine(program);
    program.Inside().StartRecording();
    Select(program, IDM_FILE_OPEN);
    Select(program, 0xFFFF, 0xFFFF);
    const std::vector<ProbeText> texts = program.Inside().TakeRecorded();
    EXPECT_TRUE(std::none_of(texts.begin(), texts.end(),
                             [&](const ProbeText& text) { return text.Window == program.Status(); }));
}
