#include "app/walk_list.h"

#include "app/app_state.h"
#include "app/menu_state.h"
#include "app/open_sequence.h"
#include "document/file_list.h"
#include "files/build_file_list.h"
#include "harness/dialogs.h"
#include "harness/folder.h"
#include "harness/program.h"
#include "harness/system_calls.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/view_state.h"
#include "view/view_window.h"

#include <gtest/gtest.h>

#include <cstring>
#include <shlobj.h>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

// A list of three files, the first of them open.
class WalkingTheList : public RunningProgram {
protected:
    WalkingTheList() : Folder("walk")
    {
        for (const char* name : {"a.txt", "b.txt", "c.txt"}) {
            Folder.Add(name, name);
        }
        OpenSequence(Windows.Main, Folder.Path("*.txt").c_str());
        EXPECT_STREQ("a.txt", App.FileTitle);
    }

    ~WalkingTheList() override
    {
        ShowWindow(Windows.Main, SW_SHOWNORMAL);
        ClearFileList();
        SetListMenuState();
    }

    static void Command(UINT id) { SendMessageA(Windows.Main, WM_COMMAND, id, 0); }

    // As the system hands over files that were dropped.
    static WPARAM Dropped(const Names& paths)
    {
        std::string names;
        for (const std::string& path : paths) {
            names += path + '\0';
        }
        names += '\0';
        const HGLOBAL memory = GlobalAlloc(GHND, sizeof(DROPFILES) + names.size());
        DROPFILES* const drop = static_cast<DROPFILES*>(GlobalLock(memory));
        drop->pFiles = sizeof *drop;
        memcpy(reinterpret_cast<char*>(drop + 1), names.data(), names.size());
        GlobalUnlock(memory);
        return reinterpret_cast<WPARAM>(memory);
    }

    static void Drop(const Names& paths) { SendMessageA(Windows.Main, WM_DROPFILES, Dropped(paths), 0); }

    ScratchFolder Folder;
};

} // namespace

TEST_F(WalkingTheList, NextAndPreviousOpenTheNeighbours)
{
    Command(IDM_FILE_NEXT);
    EXPECT_STREQ("b.txt", App.FileTitle);
    EXPECT_EQ(2, FileList.ListPosition);
    Command(IDM_FILE_NEXT);
    EXPECT_STREQ("c.txt", App.FileTitle);
    Command(IDM_FILE_PREVIOUS);
    EXPECT_STREQ("b.txt", App.FileTitle);
    EXPECT_EQ(2, FileList.ListPosition);
    EXPECT_EQ(3, FileList.ListTotal);
}

TEST_F(WalkingTheList, TheItemsAreGreyAtTheEndsOfTheList)
{
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_PREVIOUS));
    EXPECT_TRUE(IsCommandPossible(IDM_FILE_NEXT));
    Command(IDM_FILE_NEXT);
    EXPECT_TRUE(IsCommandPossible(IDM_FILE_PREVIOUS));
    EXPECT_TRUE(IsCommandPossible(IDM_FILE_NEXT));
    Command(IDM_FILE_NEXT);
    EXPECT_TRUE(IsCommandPossible(IDM_FILE_PREVIOUS));
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_NEXT));
    const BeepCounter beeps;
    Command(IDM_FILE_NEXT);
    EXPECT_STREQ("c.txt", App.FileTitle) << "a grey item does nothing";
    EXPECT_EQ(0, beeps.Count());
}

TEST_F(WalkingTheList, ByKeyTheEndsOfTheListBeep)
{
    const BeepCounter beeps;
    Command(IDM_KEY_PREVIOUS);
    EXPECT_EQ(1, beeps.Count());
    EXPECT_STREQ("a.txt", App.FileTitle);
    EXPECT_EQ(1, FileList.ListPosition);
    Command(IDM_KEY_NEXT);
    Command(IDM_KEY_NEXT);
    EXPECT_STREQ("c.txt", App.FileTitle);
    EXPECT_EQ(1, beeps.Count());
    Command(IDM_KEY_NEXT);
    EXPECT_EQ(2, beeps.Count());
    EXPECT_STREQ("c.txt", App.FileTitle);
    Command(IDM_KEY_PREVIOUS);
    EXPECT_STREQ("b.txt", App.FileTitle);
    EXPECT_EQ(2, beeps.Count());
}

TEST_F(WalkingTheList, ByKeyBeepsWithoutAList)
{
    ClearFileList();
    SetListMenuState();
    const BeepCounter beeps;
    Command(IDM_KEY_PREVIOUS);
    Command(IDM_KEY_NEXT);
    EXPECT_EQ(2, beeps.Count());
    EXPECT_STREQ("a.txt", App.FileTitle);
}

TEST_F(WalkingTheList, AfterADeletionNextIsTheFileBehindAndPreviousTheOneBefore)
{
    Command(IDM_FILE_NEXT); // b, which is then taken out
    RemoveListEntry(2);
    FileList.ListPosition = 1;
    FileList.ListTotal = 2;
    FileList.ListAdjust = 1;
    SetListMenuState();
    Command(IDM_FILE_NEXT);
    EXPECT_STREQ("c.txt", App.FileTitle);
    EXPECT_EQ(2, FileList.ListPosition);
    EXPECT_EQ(0, FileList.ListAdjust);

    FileList.ListPosition = 1;
    FileList.ListAdjust = 1;
    SetListMenuState();
    Command(IDM_FILE_PREVIOUS);
    EXPECT_STREQ("a.txt", App.FileTitle);
    EXPECT_EQ(1, FileList.ListPosition);
    EXPECT_EQ(0, FileList.ListAdjust);
}

TEST_F(WalkingTheList, AFileThatIsGoneIsReportedAndCanBeWalkedOver)
{
    Folder.Remove("b.txt");
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    Command(IDM_FILE_NEXT);
    EXPECT_EQ("Unable to open the file\n\nb.txt", answers.OnlyText());
    EXPECT_FALSE(View.FileShown);
    EXPECT_EQ(2, FileList.ListPosition);
    Command(IDM_FILE_NEXT);
    EXPECT_STREQ("c.txt", App.FileTitle);
}

TEST_F(WalkingTheList, OpeningByNameLeavesTheListAsItWas)
{
    Command(IDM_FILE_NEXT);
    const ScratchFile other("other.txt", "text");
    OpenSequence(Windows.Main, other.Path());
    EXPECT_EQ(2, FileList.ListPosition);
    EXPECT_EQ(3, FileList.ListTotal);
    Command(IDM_FILE_NEXT);
    EXPECT_STREQ("c.txt", App.FileTitle);
}

TEST_F(WalkingTheList, TheListsDialogOpensTheFileChosen)
{
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        SendDlgItemMessageA(dialog, IDC_SELECT_FILES, LB_SETCURSEL, 2, 0);
        PressButton(dialog, IDOK);
    });
    EXPECT_TRUE(RunSelectList());
    EXPECT_STREQ("c.txt", App.FileTitle);
    EXPECT_EQ(3, FileList.ListPosition);
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_NEXT));
    EXPECT_TRUE(IsCommandPossible(IDM_FILE_PREVIOUS));
}

TEST_F(WalkingTheList, CancellingTheListsDialogLeavesTheFileOpen)
{
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        SendDlgItemMessageA(dialog, IDC_SELECT_FILES, LB_SETCURSEL, 2, 0);
        PressButton(dialog, IDCANCEL);
    });
    EXPECT_TRUE(RunSelectList());
    EXPECT_STREQ("a.txt", App.FileTitle);
    EXPECT_EQ(1, FileList.ListPosition);
}

TEST_F(WalkingTheList, WithoutAListThereIsNoDialog)
{
    ClearFileList();
    const DialogAnswers none;
    EXPECT_FALSE(RunSelectList());
    EXPECT_STREQ("a.txt", App.FileTitle);
}

TEST_F(WalkingTheList, ADroppedFileIsOpenedWithoutAList)
{
    const ScratchFile file("Dropped.TXT", "text");
    Drop({file.Path()});
    EXPECT_STREQ("dropped.txt", App.FileTitle);
    EXPECT_EQ(0, FileListSize());
    EXPECT_EQ(0, FileList.ListTotal);
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_NEXT));
}

TEST_F(WalkingTheList, SeveralDroppedFilesAreTheListInTheirOrderAndTheFirstIsOpened)
{
    Drop({Folder.Path("C.txt"), Folder.Path("A.txt")});
    EXPECT_STREQ("c.txt", App.FileTitle);
    EXPECT_EQ((Names{"c.txt", "a.txt"}), ListedNames());
    EXPECT_EQ(1, FileList.ListPosition);
    EXPECT_EQ(2, FileList.ListTotal);
    EXPECT_TRUE(IsCommandPossible(IDM_FILE_NEXT));
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_PREVIOUS));
    Command(IDM_FILE_NEXT);
    EXPECT_STREQ("a.txt", App.FileTitle);
}

TEST_F(WalkingTheList, ADropThatOverflowsTheListIsCutThere)
{
    Names paths;
    for (int i = 0; i < 300; ++i) {
        paths.push_back("c:\\" + std::to_string(i) + "\\file");
    }
    paths[0] = Folder.Path("b.txt");
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    Drop(paths);
    EXPECT_EQ("Too many files/directories or insufficient storage\nList has been truncated", answers.OnlyText());
    EXPECT_STREQ("b.txt", App.FileTitle);
    EXPECT_TRUE(FileList.ListFull);
    EXPECT_EQ(MaxListDirectories, FileListSize());
    EXPECT_EQ(MaxListDirectories, FileList.ListTotal);
}

TEST_F(WalkingTheList, ADropOfNothingButPathsTooLongIsReportedAndLeavesNoList)
{
    Drop({Folder.Path("a.txt"), Folder.Path("b.txt")});
    ASSERT_TRUE(IsCommandPossible(IDM_FILE_NEXT));
    const std::string tooLong = Folder.Path(std::string(260, 'n'));
    DialogAnswers answers;
    answers.ThenPress(IDOK).ThenPress(IDOK);
    Drop({tooLong, tooLong});
    EXPECT_EQ(2u, answers.Seen().size());
    EXPECT_EQ(0, FileListSize());
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_NEXT));
    EXPECT_STREQ("a.txt", App.FileTitle);
}

TEST_F(WalkingTheList, ADropOnTheIconRestoresTheWindow)
{
    ShowWindow(Windows.Main, SW_MINIMIZE);
    ASSERT_TRUE(IsIconic(Windows.Main));
    Drop({Folder.Path("b.txt")});
    EXPECT_FALSE(IsIconic(Windows.Main));
    EXPECT_STREQ("b.txt", App.FileTitle);
    EXPECT_TRUE(View.FileShown);
}

TEST_F(WalkingTheList, ADropGivesTheWindowTheFocus)
{
    SetFocus(nullptr);
    Drop({Folder.Path("b.txt")});
    EXPECT_EQ(Windows.Main, GetFocus());
}

TEST_F(WalkingTheList, WhatWasDroppedIsFreed)
{
    const WPARAM drop = Dropped({Folder.Path("b.txt")});
    SendMessageA(Windows.Main, WM_DROPFILES, drop, 0);
    EXPECT_EQ(static_cast<UINT>(GMEM_INVALID_HANDLE), GlobalFlags(reinterpret_cast<HGLOBAL>(drop)));
}

TEST_F(WalkingTheList, ADroppedFileThatIsGoneIsReported)
{
    Command(IDM_FILE_NEXT);
    ASSERT_TRUE(IsCommandPossible(IDM_FILE_NEXT));
    ASSERT_TRUE(IsCommandPossible(IDM_FILE_PREVIOUS));
    DialogAnswers answers;
    answers.Then([](HWND box) {
        EXPECT_FALSE(IsCommandPossible(IDM_FILE_NEXT));
        EXPECT_FALSE(IsCommandPossible(IDM_FILE_PREVIOUS));
        PressButton(box, IDOK);
    });
    Drop({Folder.Path("gone.txt")});
    EXPECT_EQ("Unable to open the file\n\ngone.txt", answers.OnlyText());
    EXPECT_FALSE(View.FileShown);
    EXPECT_EQ(0, FileListSize());
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_NEXT));
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_PREVIOUS));
}

TEST_F(WalkingTheList, ADroppedPathLongerThanAnyFilesIsRefusedAndNotCut)
{
    const std::string name(259 - Folder.Path().size(), 'n');
    Folder.Add(name, "the path cut");
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    Drop({Folder.Path(name + "n")});
    EXPECT_EQ("Unable to open the file\n\n" + name + "n", answers.OnlyText());
    EXPECT_STREQ("a.txt", App.FileTitle);
    EXPECT_TRUE(View.FileShown);
    EXPECT_EQ(0, FileListSize());
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_NEXT));
}

TEST_F(WalkingTheList, ADroppedPathOf259CharactersIsOpened)
{
    const std::string name(259 - Folder.Path().size(), 'n');
    Folder.Add(name, "far");
    const DialogAnswers none;
    Drop({Folder.Path(name)});
    EXPECT_EQ(name, App.FileTitle);
}

TEST_F(WalkingTheList, ADropWithoutAFileOnlyEmptiesTheList)
{
    Drop({Folder.Path("a.txt"), Folder.Path("b.txt")});
    ASSERT_TRUE(IsCommandPossible(IDM_FILE_NEXT));
    Drop({});
    EXPECT_EQ(0, FileListSize());
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_NEXT));
    EXPECT_STREQ("a.txt", App.FileTitle);
    EXPECT_TRUE(View.FileShown);
}
