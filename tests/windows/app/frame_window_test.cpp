#include "app/frame_window.h"

#include "app/app_state.h"
#include "app/open_sequence.h"
#include "document/document_state.h"
#include "harness/program.h"
#include "harness/scratch.h"
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
