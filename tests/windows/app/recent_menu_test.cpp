#include "app/recent_menu.h"

#include "app/app_state.h"
#include "app/menu_state.h"
#include "app/open_sequence.h"
#include "document/file_list.h"
#include "files/build_file_list.h"
#include "harness/dialogs.h"
#include "harness/folder.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

class RecentMenu : public RunningProgram {
protected:
    RecentMenu() { Clear(); }

    ~RecentMenu() override
    {
        Clear();
        ClearFileList();
        SetListMenuState();
    }

    static void Clear()
    {
        App.Recent = RecentFiles{};
        BuildRecentMenu(Windows.Main);
    }

    static HMENU FileMenu() { return GetSubMenu(Windows.MainMenu, 0); }

    // The texts behind the File menu's last separator.
    static Texts Entries()
    {
        Texts texts;
        const int count = GetMenuItemCount(FileMenu());
        for (int i = 0; i < count; ++i) {
            char text[MaxPathSize + 20] = "";
            GetMenuStringA(FileMenu(), static_cast<UINT>(i), text, sizeof text, MF_BYPOSITION);
            if (text[0] == '\0') {
                texts.clear(); // a separator
            } else {
                texts.push_back(text);
            }
        }
        return texts;
    }

    static void Add(const std::string& path)
    {
        CopyText(App.CurrentPath, path.c_str());
        AddRecentFile(Windows.Main);
    }

    static void Choose(int number)
    {
        SendMessageA(Windows.Main, WM_COMMAND, static_cast<WPARAM>(IDM_RECENT_FIRST + number - 1), 0);
    }
};

} // namespace

TEST_F(RecentMenu, IsEmptyWithoutRecentFiles)
{
    EXPECT_EQ(Texts{}, Entries());
}

TEST_F(RecentMenu, EntriesAreNumberedOldestFirstBehindTheLastSeparator)
{
    Add("c:\\one.txt");
    Add("c:\\two.txt");
    Add("c:\\three.txt");
    EXPECT_EQ((Texts{"&1 c:\\one.txt", "&2 c:\\two.txt", "&3 c:\\three.txt"}), Entries());
    const int count = GetMenuItemCount(FileMenu());
    EXPECT_EQ(240u, GetMenuItemID(FileMenu(), count - 3));
    EXPECT_EQ(241u, GetMenuItemID(FileMenu(), count - 2));
    EXPECT_EQ(242u, GetMenuItemID(FileMenu(), count - 1));
}

TEST_F(RecentMenu, AFileThatIsThereKeepsItsPlace)
{
    Add("c:\\one.txt");
    Add("c:\\two.txt");
    Add("c:\\one.txt");
    EXPECT_EQ((Texts{"&1 c:\\one.txt", "&2 c:\\two.txt"}), Entries());
}

TEST_F(RecentMenu, TheTenthFileTakesTheOldestOnesPlace)
{
    const int before = GetMenuItemCount(FileMenu());
    for (int i = 1; i <= 10; ++i) {
        Add("c:\\" + std::to_string(i));
    }
    Texts expected;
    for (int i = 2; i <= 10; ++i) {
        expected.push_back("&" + std::to_string(i - 1) + " c:\\" + std::to_string(i));
    }
    EXPECT_EQ(expected, Entries());
    EXPECT_EQ(before + 9, GetMenuItemCount(FileMenu()));
}

TEST_F(RecentMenu, ATextOfThirtyCharactersIsShownWholeAndALongerOneShortened)
{
    const std::string thirty = "c:\\directory\\file name.txt1"; // and the number before it
    ASSERT_EQ(27u, thirty.size());
    Add(thirty);
    Add("c:\\some\\directory\\far\\down\\name.txt");
    const Texts entries = Entries();
    ASSERT_EQ(2u, entries.size());
    EXPECT_EQ("&1 " + thirty, entries[0]);
    EXPECT_EQ("&2 c:\\...\\far\\down\\name.txt", entries[1]);
}

TEST_F(RecentMenu, RebuildingLeavesNoOldEntryAndNothingElseChanged)
{
    const int before = GetMenuItemCount(FileMenu());
    Add("c:\\one.txt");
    Add("c:\\two.txt");
    BuildRecentMenu(Windows.Main);
    EXPECT_EQ(before + 2, GetMenuItemCount(FileMenu()));
    Clear();
    EXPECT_EQ(before, GetMenuItemCount(FileMenu()));
}

TEST_F(RecentMenu, IsBuiltAlsoWhileTheMenuBarIsHidden)
{
    SetMenu(Windows.Main, nullptr);
    Add("c:\\one.txt");
    SetMenu(Windows.Main, Windows.MainMenu);
    EXPECT_EQ((Texts{"&1 c:\\one.txt"}), Entries());
}

TEST_F(RecentMenu, AnEntryOpensItsFileAndEmptiesTheList)
{
    const ScratchFile one("one.txt", "1");
    const ScratchFile two("two.txt", "2");
    Add(one.Path());
    Add(two.Path());
    AddFileToList(nullptr, "c:\\list", "file");
    AddFileToList(nullptr, "c:\\list", "other");
    WalkFileList(1);
    SetListMenuState();
    ASSERT_TRUE(IsCommandPossible(IDM_FILE_NEXT));
    Choose(2);
    EXPECT_TRUE(View.FileShown);
    EXPECT_STREQ("two.txt", App.FileTitle);
    EXPECT_EQ(0, FileList.ListTotal);
    EXPECT_EQ(0, FileListSize());
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_NEXT));
    Choose(1);
    EXPECT_STREQ("one.txt", App.FileTitle);
    EXPECT_EQ(2, App.Recent.Count);
}

TEST_F(RecentMenu, TheNinthEntryOpens)
{
    const ScratchFile file("nine.txt", "9");
    for (int i = 1; i <= 8; ++i) {
        Add("c:\\" + std::to_string(i));
    }
    Add(file.Path());
    Choose(9);
    EXPECT_STREQ("nine.txt", App.FileTitle);
}

TEST_F(RecentMenu, AnEntryThatIsNotThereOpensNothing)
{
    const ScratchFile file("one.txt", "1");
    AddFileToList(nullptr, "c:\\list", "file");
    Add(file.Path());
    Choose(2);
    Choose(9);
    EXPECT_FALSE(View.FileShown);
    EXPECT_EQ(1, FileListSize());
}

TEST_F(RecentMenu, AFileThatIsGoneIsReportedAndKept)
{
    Add(ScratchPath("gone.txt"));
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    Choose(1);
    EXPECT_EQ("Unable to open the file\n\ngone.txt", answers.OnlyText());
    EXPECT_EQ(1u, Entries().size());
}

TEST_F(RecentMenu, OnlyFilesOfTheOpenDialogAreAdded)
{
    const ScratchFile file("named.txt", "text");
    OpenSequence(Windows.Main, file.Path());
    EXPECT_TRUE(View.FileShown);
    EXPECT_EQ(Texts{}, Entries());
}
