#include "app/frame_window.h"

#include "app/app_state.h"
#include "app/menu_state.h"
#include "app/open_sequence.h"
#include "document/document_state.h"
#include "document/file_list.h"
#include "files/build_file_list.h"
#include "harness/dialogs.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

class FrameWindow : public RunningProgram {
protected:
    static std::string Title()
    {
        char title[300] = "";
        GetWindowTextA(Windows.Main, title, sizeof title);
        return title;
    }
};

std::string ThreeBlocks()
{
    std::string content;
    while (content.size() < 80000) {
        content += "a line of a larger file\n";
    }
    return content;
}

} // namespace

TEST_F(FrameWindow, StartingAndEndingLeavesNoObjectBehind)
{
    EndProgram();
    StartProgramOnce(); // what the system makes once and keeps
    EndProgram();
    const int before = FreeGdiObjects();
    StartProgramOnce();
    EXPECT_LT(FreeGdiObjects(), before);
    EndProgram();
    EXPECT_EQ(before, FreeGdiObjects());
    StartProgramOnce();
}

TEST_F(FrameWindow, EndingPostsTheQuitMessageAndWritesTheRecentFiles)
{
    App.Recent = RecentFiles{};
    App.Start = ParseCommandLine("-Itest");
    App.Recent.Count = 1;
    strcpy(App.Recent.Paths[0], "c:\\recent.txt");
    DestroyWindow(Windows.Main);
    MSG message = {};
    EXPECT_TRUE(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(0u, message.wParam);
    char text[100] = "";
    GetPrivateProfileStringA("test", "SavedFile1", "", text, sizeof text, "KESTOVAR.INI");
    EXPECT_STREQ("c:\\recent.txt", text);
    RemoveSettingsFile();
    App.Recent = RecentFiles{};
    EndProgram();
    StartProgramOnce();
}

TEST_F(FrameWindow, ARunThatPrintsLivesUntilItsPrintCommandIsServed)
{
    const ScratchFile file("printed.txt", "text");
    EndProgram();
    StartProgramWith("-Itest -P " + std::string(file.Path()));
    const HWND window = Windows.Main;
    EXPECT_TRUE(IsWindow(window));
    EXPECT_STREQ("printed.txt", App.FileTitle);
    MSG message = {};
    EXPECT_TRUE(PeekMessageA(&message, window, WM_COMMAND, WM_COMMAND, PM_NOREMOVE));
    EXPECT_EQ(229u, message.wParam);
    DialogAnswers answers; // that there is no printer
    answers.ThenPress(IDOK);
    PumpMessages();
    EXPECT_FALSE(IsWindow(window));
    EndProgram();
    StartProgramOnce();
}

TEST_F(FrameWindow, IsNamedAfterTheFileInLowerCase)
{
    EXPECT_EQ("Kestovar", Title());
    const ScratchFile file("Some Name.TXT", "text");
    OpenSequence(Windows.Main, file.Path());
    EXPECT_EQ("Kestovar-some name.txt", Title());
    CloseDocument();
    EXPECT_EQ("Kestovar", Title());
}

TEST_F(FrameWindow, MinimizingReleasesTheFileAndRestoringTakesItBack)
{
    const ScratchFile file("iconized.txt", ThreeBlocks());
    OpenSequence(Windows.Main, file.Path());
    ASSERT_NE(0, Document.FileHandle);
    SendMessageA(Windows.Main, WM_SIZE, SIZE_MINIMIZED, 0);
    EXPECT_EQ(0, Document.FileHandle);
    EXPECT_EQ(1, SendMessageA(Windows.Main, WM_QUERYOPEN, 0, 0));
    EXPECT_NE(0, Document.FileHandle);
    EXPECT_TRUE(View.FileShown);
    EXPECT_FALSE(App.FileReleased);
}

TEST_F(FrameWindow, APathOf259CharactersOpens)
{
    std::string path = ScratchPath("");
    const std::string name = std::string(259 - path.size(), 'n');
    const ScratchFile file(name, "far");
    OpenSequence(Windows.Main, file.Path());
    ASSERT_TRUE(View.FileShown);
    EXPECT_EQ("Kestovar-" + name, Title());
    EXPECT_EQ(259u, strlen(App.CurrentPath));
}

TEST_F(FrameWindow, AKeyWithoutAMeaningDoesNothing)
{
    std::string content;
    for (int line = 0; line < 300; ++line) {
        content += std::string(300, 'x') + "\n";
    }
    const ScratchFile file("keys.txt", content);
    OpenSequence(Windows.Main, file.Path());
    SendMessageA(Windows.View, WM_VSCROLL, SB_PAGEDOWN, 0);
    SendMessageA(Windows.View, WM_HSCROLL, SB_PAGERIGHT, 0);
    const std::int32_t top = View.TopLine;
    ASSERT_LT(0, top);
    ASSERT_LT(0, View.LeftColumn);
    for (const WPARAM key : {WPARAM{'A'}, WPARAM{VK_F5}, WPARAM{VK_SPACE}, WPARAM{VK_TAB}, WPARAM{VK_RETURN}}) {
        EXPECT_EQ(0, SendMessageA(Windows.Main, WM_KEYDOWN, key, 0)) << key;
        EXPECT_EQ(top, View.TopLine) << key;
        EXPECT_EQ(8, View.LeftColumn) << key;
        EXPECT_TRUE(View.FileShown) << key;
    }
    SendMessageA(Windows.Main, WM_KEYDOWN, VK_DOWN, 0);
    EXPECT_EQ(top + 1, View.TopLine);
}

TEST_F(FrameWindow, AcceptsDroppedFiles)
{
    EXPECT_NE(0, GetWindowLongA(Windows.Main, GWL_EXSTYLE) & WS_EX_ACCEPTFILES);
}

TEST_F(FrameWindow, CommandsThatNeedAFileDoNothingWithoutOne)
{
    ASSERT_FALSE(View.FileShown);
    EXPECT_EQ(0, SendMessageA(Windows.Main, WM_COMMAND, IDM_EDIT_SELECT_ALL, 0));
    EXPECT_EQ(0, View.SelLineA);
    EXPECT_EQ(0, View.SelLineB);
    SendMessageA(Windows.Main, WM_KEYDOWN, VK_ESCAPE, 0);
    EXPECT_FALSE(IsIconic(Windows.Main));
}

// Its button says so, and is never greyed.
TEST_F(FrameWindow, CloseFileIconizesAlsoWithoutAFile)
{
    ASSERT_FALSE(View.FileShown);
    EXPECT_EQ(0, SendMessageA(Windows.Main, WM_COMMAND, IDM_FILE_CLOSE, 0));
    EXPECT_TRUE(IsIconic(Windows.Main));
    ShowWindow(Windows.Main, SW_SHOWNORMAL);
}

TEST_F(FrameWindow, AFileThatChangedWhileItWasAnIconIsReportedAndOpenedAnew)
{
    ScratchFile file("iconized.txt", "one\n");
    OpenSequence(Windows.Main, file.Path());
    SendMessageA(Windows.Main, WM_SIZE, SIZE_MINIMIZED, 0);
    file.Append("two\n");
    file.SetTime(1000000000);
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    EXPECT_EQ(1, SendMessageA(Windows.Main, WM_QUERYOPEN, 0, 0));
    EXPECT_EQ("The current file has changed and will be reopened", answers.OnlyText());
    EXPECT_TRUE(View.FileShown);
    EXPECT_EQ(2, Document.LineCount);
    EXPECT_FALSE(App.FileReleased);
}

TEST_F(FrameWindow, AFileOpenedWhileTheChangeIsReportedStays)
{
    ScratchFile file("iconized.txt", "one\n");
    const ScratchFile other("other.txt", "text");
    OpenSequence(Windows.Main, file.Path());
    SendMessageA(Windows.Main, WM_SIZE, SIZE_MINIMIZED, 0);
    file.Append("two\n");
    file.SetTime(1000000000);
    DialogAnswers answers;
    answers.Then([&other](HWND box) {
        OpenSequence(Windows.Main, other.Path());
        PressButton(box, IDOK);
    });
    SendMessageA(Windows.Main, WM_QUERYOPEN, 0, 0);
    EXPECT_EQ("Kestovar-other.txt", Title());
}

TEST_F(FrameWindow, AFileThatIsGoneWhenTheIconIsRestoredIsReportedAndClosed)
{
    const ScratchFile file("iconized.txt", "one\n");
    OpenSequence(Windows.Main, file.Path());
    AddFileToList(nullptr, "c:\\a\\list", "");
    AddFileToList(nullptr, "c:\\of\\two", "");
    WalkFileList(1);
    SetListMenuState();
    SendMessageA(Windows.Main, WM_SIZE, SIZE_MINIMIZED, 0);
    ASSERT_TRUE(DeleteFileA(file.Path()));
    DialogAnswers answers;
    answers.Then([](HWND box) {
        EXPECT_FALSE(View.FileShown) << "nothing to paint behind the box";
        PressButton(box, IDOK);
    });
    EXPECT_EQ(1, SendMessageA(Windows.Main, WM_QUERYOPEN, 0, 0));
    EXPECT_EQ("File being browsed could not be re-opened", answers.OnlyText());
    EXPECT_FALSE(View.FileShown);
    EXPECT_EQ("Kestovar", Title());
    EXPECT_TRUE(IsCommandPossible(IDM_FILE_NEXT)) << "the list stays";
    ClearFileList();
    SetListMenuState();
}

TEST_F(FrameWindow, RestoringAnIconWithoutAFileAsksNothing)
{
    const DialogAnswers none;
    SendMessageA(Windows.Main, WM_SIZE, SIZE_MINIMIZED, 0);
    EXPECT_FALSE(App.FileReleased);
    EXPECT_EQ(1, SendMessageA(Windows.Main, WM_QUERYOPEN, 0, 0));
}

TEST_F(FrameWindow, EscClosesTheFileOrEndsTheProgram)
{
    const ScratchFile file("esc.txt", "text");
    OpenSequence(Windows.Main, file.Path());
    SendMessageA(Windows.Main, WM_KEYDOWN, VK_ESCAPE, 0);
    EXPECT_FALSE(View.FileShown);
    EXPECT_TRUE(IsIconic(Windows.Main));
    ShowWindow(Windows.Main, SW_SHOWNORMAL);
    AppOptions.ExitOnEsc = 1;
    const HWND window = Windows.Main;
    SendMessageA(window, WM_KEYDOWN, VK_ESCAPE, 0);
    EXPECT_FALSE(IsWindow(window));
    PumpMessages();
    EndProgram();
    StartProgramOnce();
}

TEST_F(FrameWindow, EscWithoutAFileLeavesTheWindowAsItIs)
{
    SendMessageA(Windows.Main, WM_KEYDOWN, VK_ESCAPE, 0);
    EXPECT_FALSE(IsIconic(Windows.Main)) << "there is nothing to close";
}

TEST_F(FrameWindow, TheBusyCursorIsShownFromItsBeginningToItsEnd)
{
    SendMessageA(Windows.Main, WM_USER, 0, 0);
    EXPECT_EQ(Drawing.WaitCursor, GetCursor());
    SetCursor(Drawing.ArrowCursor);
    EXPECT_EQ(1, SendMessageA(Windows.Main, WM_SETCURSOR, reinterpret_cast<WPARAM>(Windows.Main), HTCLIENT));
    EXPECT_EQ(Drawing.WaitCursor, GetCursor());
    SendMessageA(Windows.Main, WM_USER + 1, 0, 0);
    EXPECT_EQ(Drawing.ArrowCursor, GetCursor());
    SendMessageA(Windows.Main, WM_SETCURSOR, reinterpret_cast<WPARAM>(Windows.Main), HTCLIENT);
    EXPECT_NE(Drawing.WaitCursor, GetCursor());
}
