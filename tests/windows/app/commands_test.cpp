#include "app/commands.h"

#include "app/app_state.h"
#include "app/menu_state.h"
#include "app/open_sequence.h"
#include "base/help.h"
#include "buttonbar/buttons.h"
#include "document/document_state.h"
#include "document/file_list.h"
#include "files/build_file_list.h"
#include "harness/dialogs.h"
#include "harness/folder.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "harness/system_calls.h"
#include "resources/ids.h"
#include "search/find_state.h"
#include "search/goto_target.h"
#include "view/frame_windows.h"
#include "view/lock_region.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace {

struct DefaultCall {
    UINT Message;
    WPARAM WParam;
};

std::vector<DefaultCall> DefaultCalls;

LRESULT WINAPI NoteDefault(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_COMMAND || message == WM_SYSCOMMAND) {
        DefaultCalls.push_back({message, wParam});
        return 77;
    }
    static const auto real = reinterpret_cast<WNDPROC>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("user32"), "DefWindowProcA")));
    return real(window, message, wParam, lParam);
}

class Commands : public RunningProgram {
protected:
    Commands() { Goto = GotoState{}; }

    ~Commands() override
    {
        ShowWindow(Windows.Main, SW_SHOWNORMAL);
        ClearLock();
        ClearFileList();
        SetListMenuState();
        EnableCommandAndButton(IDM_VIEW_REDISPLAY_ZIP, ButtonPreviousZip, false);
        CheckCommand(IDM_VIEW_HEX, false);
        CheckCommand(IDM_VIEW_TEXT, true);
        Goto = GotoState{};
        App.RedisplayZip = false;
        App.ArchivePath[0] = '\0';
        Help.Used = false;
    }

    static LRESULT Command(UINT id) { return SendMessageA(Windows.Main, WM_COMMAND, id, 0); }

    static void Open(const ScratchFile& file) { ASSERT_TRUE(OpenSequence(Windows.Main, file.Path())); }

    static bool IsChecked(UINT id) { return (GetMenuState(Windows.MainMenu, id, MF_BYCOMMAND) & MF_CHECKED) != 0; }

    // Goto through its dialog.
    static void GoTo(const char* text)
    {
        DialogAnswers answers;
        answers.Then([text](HWND dialog) {
            SetDlgItemTextA(dialog, IDC_GOTO_TEXT, text);
            PressButton(dialog, IDOK);
        });
        Command(IDM_SEARCH_GOTO);
    }

    // The same where the target is not accepted; returns what is said.
    static std::string GoToNowhere(const char* text)
    {
        DialogAnswers answers;
        answers
            .Then([text](HWND dialog) {
                SetDlgItemTextA(dialog, IDC_GOTO_TEXT, text);
                PressButton(dialog, IDOK);
            })
            .ThenPress(IDOK);
        Command(IDM_SEARCH_GOTO);
        return answers.Seen().empty() ? "" : answers.Seen().back().Text;
    }

    // Whether the frame has posted itself that command; takes it off the queue.
    static bool WasPosted(UINT id)
    {
        MSG message;
        return PeekMessageA(&message, Windows.Main, WM_COMMAND, WM_COMMAND, PM_REMOVE) && message.wParam == id;
    }

    static void EndAndRestart()
    {
        PumpMessages(); // the quit message too
        EndProgram();
        StartProgramOnce();
    }
};

std::string Lines(int count)
{
    std::string content;
    for (int i = 0; i < count; ++i) {
        content += "this is line " + std::to_string(i + 1) + " of a text\r\n";
    }
    return content;
}

constexpr char ArchiveContent[] = "member PK\5\6\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0";

std::string Archive()
{
    return std::string(ArchiveContent, sizeof ArchiveContent - 1);
}

// As another process would: from another thread, once the choice has begun.
DWORD WINAPI SendCloseWhilePicking(void*)
{
    const DWORD start = GetTickCount();
    while (!*const_cast<volatile bool*>(&View.PickingLock) && GetTickCount() - start < 5000) {
        SwitchToThread();
    }
    SendMessageA(Windows.Main, WM_COMMAND, 300, 0);
    PostMessageA(Windows.View, WM_NULL, 0, 0);
    return 0;
}

constexpr char InvalidTarget[] = "Goto target invalid or not within file";

} // namespace

TEST_F(Commands, CloseClosesTheFileEmptiesTheListAndMinimises)
{
    ScratchFolder folder("commands");
    folder.Add("a.txt");
    folder.Add("b.txt");
    OpenSequence(Windows.Main, folder.Path("*").c_str());
    ASSERT_EQ(2, FileList.ListTotal);
    EXPECT_EQ(0, Command(222));
    EXPECT_FALSE(View.FileShown);
    EXPECT_EQ(0, FileListSize());
    EXPECT_EQ(0, FileList.ListTotal);
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_NEXT));
    EXPECT_TRUE(IsIconic(Windows.Main));
}

TEST_F(Commands, TheInternalCloseKeepsTheListAndTheWindow)
{
    ScratchFolder folder("commands");
    folder.Add("a.txt");
    folder.Add("b.txt");
    OpenSequence(Windows.Main, folder.Path("*").c_str());
    Command(300);
    EXPECT_FALSE(View.FileShown);
    EXPECT_EQ(2, FileList.ListTotal);
    EXPECT_TRUE(IsCommandPossible(IDM_FILE_NEXT));
    EXPECT_FALSE(IsIconic(Windows.Main));
}

TEST_F(Commands, ReopenOpensTheCurrentPathAgain)
{
    ScratchFile file("reopen.txt", "one line\n");
    Open(file);
    file.Append("two lines\n");
    ASSERT_EQ(1, Document.LineCount);
    Command(301);
    EXPECT_EQ(2, Document.LineCount);
    EXPECT_TRUE(View.FileShown);
    Command(300);
    Command(301);
    EXPECT_TRUE(View.FileShown) << "also after it was closed";
    EXPECT_STREQ("reopen.txt", App.FileTitle);
}

TEST_F(Commands, ReopenWithoutACurrentPathOpensAndReportsNothing)
{
    const DialogAnswers none;
    App.CurrentPath[0] = '\0';
    EXPECT_EQ(0, Command(301));
    EXPECT_FALSE(View.FileShown);
    EXPECT_STREQ("", App.FileTitle);
}

TEST_F(Commands, ExitClosesTheWindow)
{
    const HWND window = Windows.Main;
    Command(233);
    EXPECT_FALSE(IsWindow(window));
    EndAndRestart();
}

TEST_F(Commands, PrintEndsARunThatWasStartedToPrint)
{
    const ScratchFile file("print.txt", "text");
    Open(file);
    const HWND window = Windows.Main;
    DialogAnswers answers; // that there is no printer
    answers.ThenPress(IDOK).ThenPress(IDOK);
    Command(229);
    ASSERT_TRUE(IsWindow(window));
    App.Start.PrintAndExit = true;
    Command(229);
    EXPECT_FALSE(IsWindow(window));
    EndAndRestart();
}

TEST_F(Commands, SelectAllSelectsEveryLine)
{
    const ScratchFile file("all.txt", Lines(12));
    Open(file);
    Command(251);
    EXPECT_EQ(1, View.SelLineA);
    EXPECT_EQ(12, View.SelLineB);
    EXPECT_EQ(0, View.SelColA);
    EXPECT_TRUE(IsCommandPossible(IDM_EDIT_COPY));
    EXPECT_TRUE(IsCommandPossible(IDM_FILE_SAVE_AS));
}

TEST_F(Commands, SelectAllSelectsEveryRowOfADump)
{
    const ScratchFile file("all.txt", std::string(33, 'x'));
    Open(file);
    Command(271);
    Command(251);
    EXPECT_EQ(1, View.SelLineA);
    EXPECT_EQ(3, View.SelLineB);
}

TEST_F(Commands, TheDumpOfAnEmptyFileHasNothingToSelect)
{
    const ScratchFile file("empty.txt", "");
    Open(file);
    Command(271);
    Command(251);
    EXPECT_EQ(0, View.SelLineB);
    EXPECT_FALSE(IsCommandPossible(IDM_EDIT_COPY));
}

TEST_F(Commands, GotoBringsTheLineToTheTop)
{
    const ScratchFile file("goto.txt", Lines(500));
    Open(file);
    GoTo("100");
    EXPECT_EQ(99, View.TopLine);
    EXPECT_STREQ("100", Goto.GotoText);
    GoTo("1");
    EXPECT_EQ(0, View.TopLine);
}

TEST_F(Commands, GotoTakesALineOutsideTheTextToTheNearestOne)
{
    const ScratchFile file("goto.txt", Lines(500));
    Open(file);
    ASSERT_LT(0, View.MaxTop);
    GoTo("99999");
    EXPECT_EQ(View.MaxTop, View.TopLine);
    GoTo("0");
    EXPECT_EQ(0, View.TopLine);
    GoTo("99999");
    GoTo("-5");
    EXPECT_EQ(0, View.TopLine);
}

TEST_F(Commands, GotoGoesToTheRowOfAnOffset)
{
    const ScratchFile file("goto.txt", Lines(500));
    Open(file);
    Command(271);
    GoTo("123");
    EXPECT_EQ(0x12, View.TopLine);
    GoTo("0");
    EXPECT_EQ(0, View.TopLine);
}

TEST_F(Commands, AnOffsetOfTheFilesSizeIsAcceptedAndOneBehindIsNot)
{
    const ScratchFile file("goto.bin", std::string(0x1000, 'x'));
    Open(file);
    Command(271);
    GoTo("1000");
    const std::int32_t last = View.TopLine;
    EXPECT_EQ(View.MaxTop, last);
    GoTo("80");
    EXPECT_EQ(8, View.TopLine);
    EXPECT_EQ(InvalidTarget, GoToNowhere("1001"));
    EXPECT_EQ(8, View.TopLine);
    EXPECT_EQ(InvalidTarget, GoToNowhere("-1"));
    EXPECT_EQ(8, View.TopLine);
}

TEST_F(Commands, CancellingGotoGoesNowhere)
{
    const ScratchFile file("goto.txt", Lines(500));
    Open(file);
    GoTo("100");
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        EXPECT_EQ((std::vector<std::string>{"100"}), ComboTexts(dialog, IDC_GOTO_TEXT));
        SetDlgItemTextA(dialog, IDC_GOTO_TEXT, "200");
        PressButton(dialog, IDCANCEL);
    });
    Command(263);
    EXPECT_EQ(99, View.TopLine);
    EXPECT_STREQ("100", Goto.GotoText);
}

TEST_F(Commands, GotoGoesNowhereWhenTheModeHasChangedMeanwhile)
{
    const ScratchFile file("goto.txt", Lines(500));
    Open(file);
    for (const UINT meanwhile : {271, 300}) {
        DialogAnswers answers;
        answers.Then([meanwhile](HWND dialog) {
            SetDlgItemTextA(dialog, IDC_GOTO_TEXT, "100");
            Command(meanwhile);
            PressButton(dialog, IDOK);
        });
        Command(263);
        EXPECT_EQ(0, View.TopLine) << meanwhile;
    }
}

TEST_F(Commands, GotoAsksNothingWithoutAFile)
{
    const DialogAnswers none;
    Command(263);
    EXPECT_TRUE(none.Seen().empty());
}

TEST_F(Commands, TheModesAreCheckedAndChangeWithTheirCommands)
{
    const ScratchFile file("mode.txt", Lines(100));
    Open(file);
    EXPECT_TRUE(IsChecked(270));
    EXPECT_FALSE(IsChecked(271));
    Command(271);
    EXPECT_TRUE(View.HexMode);
    EXPECT_FALSE(IsChecked(270));
    EXPECT_TRUE(IsChecked(271));
    Command(270);
    EXPECT_FALSE(View.HexMode);
    EXPECT_TRUE(IsChecked(270));
    EXPECT_FALSE(IsChecked(271));
}

TEST_F(Commands, TheModeStaysWithoutAFile)
{
    Command(271);
    EXPECT_FALSE(View.HexMode);
    EXPECT_FALSE(IsChecked(271));
}

TEST_F(Commands, ANewModeForgetsGotoTextSelectionMatchAndLock)
{
    const ScratchFile file("mode.txt", Lines(500));
    Open(file);
    for (const UINT mode : {271, 270}) {
        strcpy(Goto.GotoText, "12");
        Find.FindSucceeded = true;
        EnableCommandAndButton(IDM_SEARCH_FIND_NEXT, ButtonRepeatFind, true);
        EnableCommand(IDM_SEARCH_FIND_PREVIOUS, true);
        Command(IDM_EDIT_SELECT_ALL);
        View.HiliteLine = 3;
        View.HiliteLen = 4;
        View.LockRows = 2;
        View.LockCols = 3;
        Command(mode);
        EXPECT_STREQ("", Goto.GotoText);
        EXPECT_FALSE(Find.FindSucceeded);
        EXPECT_FALSE(IsCommandPossible(IDM_SEARCH_FIND_NEXT));
        EXPECT_FALSE(IsCommandPossible(IDM_SEARCH_FIND_PREVIOUS));
        EXPECT_FALSE(ButtonTable[ButtonRepeatFind].Enabled);
        EXPECT_EQ(0, View.SelLineB);
        EXPECT_FALSE(IsCommandPossible(IDM_EDIT_COPY));
        EXPECT_EQ(0, View.HiliteLine);
        EXPECT_EQ(0, View.HiliteLen);
        EXPECT_FALSE(AnyLock());
    }
}

TEST_F(Commands, TheSameModeAgainChangesNothing)
{
    const ScratchFile file("mode.txt", Lines(500));
    Open(file);
    Command(IDM_EDIT_SELECT_ALL);
    strcpy(Goto.GotoText, "12");
    View.TopLine = 7;
    Command(270);
    EXPECT_STREQ("12", Goto.GotoText);
    EXPECT_EQ(500, View.SelLineB);
    EXPECT_EQ(7, View.TopLine);
}

TEST_F(Commands, OnlyATextInTextModeCanBeLocked)
{
    const ScratchFile text("mode.txt", Lines(10));
    Open(text);
    EXPECT_TRUE(IsCommandPossible(IDM_VIEW_LOCK));
    Command(271);
    EXPECT_FALSE(IsCommandPossible(IDM_VIEW_LOCK));
    EXPECT_FALSE(ButtonTable[ButtonLock].Enabled);
    Command(270);
    EXPECT_TRUE(IsCommandPossible(IDM_VIEW_LOCK));
    EXPECT_TRUE(ButtonTable[ButtonLock].Enabled);
    const ScratchFile other("mode.bin", std::string(3000, 'x'));
    Open(other);
    ASSERT_FALSE(Document.IsText);
    Command(270);
    EXPECT_FALSE(IsCommandPossible(IDM_VIEW_LOCK));
}

TEST_F(Commands, HexModeStartsAtTheRowOfTheTopLineAndTextModeAtTheBeginning)
{
    const ScratchFile file("mode.txt", Lines(500));
    Open(file);
    GoTo("100");
    std::size_t offset = Lines(99).size();
    Command(271);
    EXPECT_EQ(static_cast<std::int32_t>(offset / 16), View.TopLine);
    Command(270);
    EXPECT_EQ(0, View.TopLine);
    EXPECT_EQ(0, View.LeftColumn);
}

TEST_F(Commands, HexModeOfANonTextStartsAtItsBeginning)
{
    const ScratchFile file("mode.bin", std::string(30000, 'x'));
    Open(file);
    Command(270);
    GoTo("50");
    ASSERT_EQ(49, View.TopLine);
    Command(271);
    EXPECT_EQ(0, View.TopLine);
}

TEST_F(Commands, RedisplayReturnsToTheRememberedArchiveAndAsksForItsListing)
{
    const ScratchFile archive("back.zip", Archive());
    const ScratchFile member("member.txt", "text");
    Open(member);
    CopyText(App.ArchivePath, archive.Path());
    EnableCommandAndButton(273, ButtonPreviousZip, true);
    Command(273);
    EXPECT_STREQ("back.zip", App.FileTitle);
    EXPECT_TRUE(App.RedisplayZip);
    EXPECT_TRUE(WasPosted(272));
    EXPECT_FALSE(IsCommandPossible(273));
    EXPECT_FALSE(ButtonTable[ButtonPreviousZip].Enabled);
    EXPECT_TRUE(IsCommandPossible(272));
}

TEST_F(Commands, RedisplayReturnsToTheCurrentEntryOfAList)
{
    const ScratchFile archive("back.zip", Archive());
    const ScratchFile other("other.zip", Archive());
    const ScratchFile member("member.txt", "text");
    AddFileToList(nullptr, other.Path(), "");
    AddFileToList(nullptr, archive.Path(), "");
    WalkFileList(2);
    Open(member);
    CopyText(App.ArchivePath, other.Path());
    EnableCommandAndButton(273, ButtonPreviousZip, true);
    Command(273);
    EXPECT_STREQ("back.zip", App.FileTitle);
    EXPECT_TRUE(WasPosted(272));
}

TEST_F(Commands, RedisplayAsksForNoListingOfAnArchiveThatIsGone)
{
    CopyText(App.ArchivePath, ScratchPath("gone.zip").c_str());
    EnableCommandAndButton(273, ButtonPreviousZip, true);
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    Command(273);
    EXPECT_EQ("Unable to open the file\n\ngone.zip", answers.OnlyText());
    EXPECT_FALSE(App.RedisplayZip);
    EXPECT_FALSE(WasPosted(272));
    EXPECT_FALSE(IsCommandPossible(273));
}

TEST_F(Commands, LockGoesToTheBeginningAndEnterTakesTheAreaOffered)
{
    const ScratchFile file("lock.txt", Lines(500));
    Open(file);
    GoTo("100");
    PostMessageA(Windows.View, WM_KEYDOWN, VK_RETURN, 0);
    Command(274);
    EXPECT_EQ(0, View.TopLine);
    EXPECT_EQ(0, View.LeftColumn);
    EXPECT_EQ(4, View.LockRows);
    EXPECT_TRUE(AnyLock());
    EXPECT_EQ(4 * View.LineHeight, View.LockedHeight) << "it is laid out anew";
    Command(274);
    EXPECT_FALSE(AnyLock());
    EXPECT_EQ(0, View.LockedHeight);
}

TEST_F(Commands, EscLocksNothingAndOtherKeysBeep)
{
    const ScratchFile file("lock.txt", Lines(500));
    Open(file);
    const BeepCounter beeps;
    PostMessageA(Windows.View, WM_KEYDOWN, 'A', 0);
    PostMessageA(Windows.View, WM_KEYDOWN, VK_ESCAPE, 0);
    Command(274);
    EXPECT_FALSE(AnyLock());
    EXPECT_EQ(1, beeps.Count());
    EXPECT_TRUE(View.FileShown) << "the key is not Close";
}

TEST_F(Commands, AnotherDocumentEndsTheChoiceOfTheAreaToLock)
{
    const ScratchFile file("lock.txt", Lines(500));
    Open(file);
    const HANDLE other = CreateThread(nullptr, 0, SendCloseWhilePicking, nullptr, 0, nullptr);
    Command(274);
    EXPECT_EQ(WAIT_OBJECT_0, WaitForSingleObject(other, 10000));
    CloseHandle(other);
    EXPECT_FALSE(View.FileShown);
    EXPECT_FALSE(AnyLock());
    EXPECT_FALSE(View.PickingLock);
}

TEST_F(Commands, LockingForgetsTheSelection)
{
    const ScratchFile file("lock.txt", Lines(500));
    Open(file);
    Command(251);
    PostMessageA(Windows.View, WM_KEYDOWN, VK_RETURN, 0);
    Command(274);
    ASSERT_TRUE(AnyLock());
    EXPECT_EQ(0, View.SelLineB);
    EXPECT_FALSE(IsCommandPossible(IDM_EDIT_COPY));
}

TEST_F(Commands, TheMenuBarIsHiddenAndShownAgain)
{
    ASSERT_EQ(Windows.MainMenu, GetMenu(Windows.Main));
    SendMessageA(Windows.Main, WM_SYSCOMMAND, 100, 0);
    EXPECT_EQ(nullptr, GetMenu(Windows.Main));
    EXPECT_EQ(1, AppOptions.SuppressMenu);
    EXPECT_NE(0u, GetMenuState(Windows.SystemMenu, 100, MF_BYCOMMAND) & MF_CHECKED);
    Command(100); // by key
    EXPECT_EQ(Windows.MainMenu, GetMenu(Windows.Main));
    EXPECT_EQ(0, AppOptions.SuppressMenu);
    EXPECT_EQ(0u, GetMenuState(Windows.SystemMenu, 100, MF_BYCOMMAND) & MF_CHECKED);
}

TEST_F(Commands, CommandsWorkWhileTheMenuBarIsHidden)
{
    const ScratchFile file("mode.txt", Lines(10));
    Open(file);
    Command(100);
    Command(271);
    EXPECT_TRUE(View.HexMode);
    Command(300);
    Command(251);
    EXPECT_EQ(0, View.SelLineB);
    Command(100);
    EXPECT_TRUE(IsChecked(271));
}

TEST_F(Commands, SaveSettingsWritesThem)
{
    RemoveSettingsFile();
    App.Start = ParseCommandLine("-Itest");
    DocumentOptions.TabSize = 13;
    Command(285);
    char text[20] = "";
    GetPrivateProfileStringA("test", "TabSize", "", text, sizeof text, "KESTOVAR.INI");
    EXPECT_STREQ("13", text);
    RemoveSettingsFile();
}

TEST_F(Commands, HelpIsAskedForByTopicAndRememberedAsUsed)
{
    const HelpRequests help;
    const struct {
        UINT Id;
        UINT Command;
    } topics[] = {{290, HELP_FINDER}, {291, HELP_CONTEXT}, {292, HELP_HELPONHELP}};
    for (const auto& topic : topics) {
        Help.Used = false;
        Command(topic.Id);
        EXPECT_TRUE(Help.Used);
        ASSERT_FALSE(help.Seen().empty());
        const HelpRequest& request = help.Seen().back();
        EXPECT_EQ(Windows.Main, request.Window);
        EXPECT_EQ(topic.Command, request.Command);
        EXPECT_EQ(topic.Id, request.Topic);
        char program[MAX_PATH];
        GetModuleFileNameA(nullptr, program, sizeof program);
        *(strrchr(program, '\\') + 1) = '\0';
        EXPECT_EQ(program + std::string("KESTOVAR.HLP"), request.File);
    }
    EXPECT_EQ(3u, help.Seen().size());
}

TEST_F(Commands, HelpIsToldToQuitOnlyWhenItWasUsed)
{
    const HelpRequests help;
    EndProgram();
    EXPECT_TRUE(help.Seen().empty());
    StartProgramOnce();
    Command(291);
    EndProgram();
    ASSERT_EQ(2u, help.Seen().size());
    EXPECT_EQ(static_cast<UINT>(HELP_QUIT), help.Seen()[1].Command);
    Help.Used = false;
    StartProgramOnce();
}

TEST_F(Commands, AboutNamesTheProgramAndItsVersion)
{
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        EXPECT_EQ("OK", ControlText(dialog, IDOK));
        EXPECT_EQ(GetDlgItem(dialog, IDOK), GetFocus());
        EXPECT_EQ(BS_DEFPUSHBUTTON, GetWindowLongA(GetDlgItem(dialog, IDOK), GWL_STYLE) & BS_TYPEMASK);
        PressButton(dialog, IDOK);
    });
    EXPECT_EQ(0, Command(293));
    EXPECT_EQ("Kestovar Version 3.8 (32-bit)", answers.OnlyText());
    ASSERT_EQ(1u, answers.Seen().size());
    EXPECT_EQ("About Kestovar", answers.Seen()[0].Caption);
    EXPECT_EQ(Windows.Main, answers.Seen()[0].Owner);
    EXPECT_NE(nullptr, answers.Seen()[0].Icon);
}

TEST_F(Commands, AboutIsLeftByButtonKeyAndSystemMenu)
{
    const struct {
        UINT Message;
        WPARAM WParam;
    } ways[] = {{WM_COMMAND, IDOK},
                {WM_COMMAND, IDCANCEL},
                {WM_SYSCOMMAND, SC_CLOSE},
                {WM_KEYDOWN, VK_ESCAPE},
                {WM_KEYDOWN, VK_RETURN}};
    for (const auto& way : ways) {
        DialogAnswers answers;
        answers.Then([&way](HWND dialog) {
            SendMessageA(dialog, WM_COMMAND, 99, 0);
            EXPECT_TRUE(IsWindow(dialog)) << "another command does not";
            PostMessageA(way.Message == WM_KEYDOWN ? GetFocus() : dialog, way.Message, way.WParam, 0);
        });
        Command(293);
        EXPECT_EQ(1u, answers.Seen().size()) << way.Message << ' ' << way.WParam;
    }
}

TEST_F(Commands, AboutLeavesNoDrawingObjectBehind)
{
    const auto lookAtAbout = [] {
        DialogAnswers answers;
        answers.Then([](HWND dialog) {
            RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
            PressButton(dialog, IDOK);
        });
        Command(293);
    };
    lookAtAbout(); // what the system makes once and keeps
    const int before = FreeGdiObjects();
    for (int i = 0; i < 3; ++i) {
        lookAtAbout();
    }
    EXPECT_EQ(before, FreeGdiObjects());
}

TEST_F(Commands, AGreyCommandIsNotPassedOn)
{
    const ReplacedCall replaced("DefWindowProcA", reinterpret_cast<void*>(NoteDefault));
    DefaultCalls.clear();
    for (const UINT id : {225, 226, 229, 251, 263, 273, 274}) {
        EXPECT_EQ(0, Command(id)) << id;
    }
    EXPECT_TRUE(DefaultCalls.empty());
}

TEST_F(Commands, AnIdOfNoCommandGoesToTheDefaultProcedureWithItsMessage)
{
    const ReplacedCall replaced("DefWindowProcA", reinterpret_cast<void*>(NoteDefault));
    for (const UINT id : {1u, 99u, 101u, 219u, 234u, 239u, 249u, 302u, 65535u}) {
        DefaultCalls.clear();
        EXPECT_EQ(77, Command(id)) << id;
        ASSERT_EQ(1u, DefaultCalls.size()) << id;
        EXPECT_EQ(static_cast<UINT>(WM_COMMAND), DefaultCalls[0].Message);
        EXPECT_EQ(id, DefaultCalls[0].WParam);
    }
}

TEST_F(Commands, TheSystemMenusOtherCommandsGoToTheDefaultProcedure)
{
    const ReplacedCall replaced("DefWindowProcA", reinterpret_cast<void*>(NoteDefault));
    for (const WPARAM id : {WPARAM{101}, WPARAM{222}, WPARAM{SC_KEYMENU}}) {
        DefaultCalls.clear();
        EXPECT_EQ(77, SendMessageA(Windows.Main, WM_SYSCOMMAND, id, 0)) << id;
        ASSERT_EQ(1u, DefaultCalls.size()) << id;
        EXPECT_EQ(static_cast<UINT>(WM_SYSCOMMAND), DefaultCalls[0].Message);
        EXPECT_EQ(id, DefaultCalls[0].WParam);
    }
}
