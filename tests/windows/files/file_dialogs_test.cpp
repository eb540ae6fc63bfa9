#include "files/file_dialogs.h"

#include "app/app_state.h"
#include "app/menu_state.h"
#include "app/open_sequence.h"
#include "app/recent_menu.h"
#include "document/file_list.h"
#include "files/build_file_list.h"
#include "harness/dialogs.h"
#include "harness/folder.h"
#include "harness/program.h"
#include "harness/system_calls.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <commdlg.h>
#include <cstring>
#include <dlgs.h>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

// In a directory of three files, which is the current one.
class FileDialogs : public RunningProgram {
protected:
    FileDialogs() : Folder("dialogs"), Current(Folder.Name())
    {
        for (const char* name : {"zebra.txt", "Apple.TXT", "mango.ini"}) {
            Folder.Add(name, name);
        }
    }

    ~FileDialogs() override
    {
        // The dialogs keep the filter that was chosen last.
        if (FilterChosen) {
            DialogAnswers answers;
            answers.Then([](HWND dialog) { ChooseFilter(dialog, 0); }).Then([](HWND dialog) {
                Enter(dialog, "any.txt");
            });
            Open();
        }
        App.Recent = RecentFiles{};
        BuildRecentMenu(Windows.Main);
        ClearFileList();
        SetListMenuState();
    }

    // Shows the Open dialog; returns the path chosen, empty when cancelled.
    static std::string Open(const char* filter = "")
    {
        char path[MaxPathSize] = "";
        return ShowOpenDialog(Windows.Main, filter, path) ? path : "";
    }

    static void Enter(HWND dialog, const std::string& name)
    {
        SetWindowTextA(NameField(dialog), name.c_str());
        PressButton(dialog, IDOK);
    }

    // A combo box in newer dialogs.
    static HWND NameField(HWND dialog)
    {
        const HWND comboBox = GetDlgItem(dialog, cmb13);
        return comboBox != nullptr ? comboBox : GetDlgItem(dialog, edt1);
    }

    static void ChooseFilter(HWND dialog, int index)
    {
        SendDlgItemMessageA(dialog, cmb1, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
        PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(cmb1, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, cmb1)));
    }

    static void ChooseTextFiles(HWND dialog)
    {
        ChooseFilter(dialog, 1);
        FilterChosen = true;
    }

    // The Open dialog with that name entered; shown is what its list box held.
    static std::string OpenNamed(const std::string& name, Names* shown = nullptr)
    {
        DialogAnswers answers;
        answers.Then([&name, shown](HWND dialog) {
            if (shown != nullptr) {
                *shown = ListTexts(dialog, lst1);
            }
            Enter(dialog, name);
        });
        return Open();
    }

    static Names LowerCaseOf(Names names)
    {
        for (std::string& name : names) {
            name = LowerCase(name);
        }
        return names;
    }

    ScratchFolder Folder;
    CurrentDirectory Current;

private:
    static inline bool FilterChosen = false;
};

// What a file dialog is asked for.
struct DialogRequest {
    OPENFILENAMEA Record = {};
    std::string Suggestion;
    std::string Filter; // all of it
};

DialogRequest Request;

BOOL WINAPI NoteDialog(OPENFILENAMEA* record)
{
    Request.Record = *record;
    Request.Suggestion = record->lpstrFile;
    Request.Filter.clear();
    for (const char* text = record->lpstrFilter; *text != '\0'; text += strlen(text) + 1) {
        Request.Filter += text + std::string("|");
    }
    return FALSE;
}

} // namespace

TEST_F(FileDialogs, TheFilesShownBesideTheChosenOneAreTheListInTheDialogsOrder)
{
    Names shown;
    const std::string chosen = OpenNamed("mango.ini", &shown);
    EXPECT_EQ(LowerCase(Folder.Path("mango.ini")), LowerCase(chosen));
    ASSERT_EQ(3u, shown.size());
    EXPECT_EQ(LowerCaseOf(shown), ListedNames());
    const auto place = std::find(shown.begin(), shown.end(), "mango.ini");
    ASSERT_NE(shown.end(), place);
    EXPECT_EQ(place - shown.begin() + 1, FileList.ListPosition);
    EXPECT_EQ(3, FileList.ListTotal);
    EXPECT_EQ(0, FileList.ListAdjust);
    for (const std::string& path : ListedPaths()) {
        EXPECT_EQ(0u, path.find(LowerCase(Folder.Path()))) << path;
    }
}

TEST_F(FileDialogs, TheChosenFilesPlaceIsFoundWhateverTheCase)
{
    Names shown;
    OpenNamed("aPPLE.txt", &shown);
    char path[MaxPathSize];
    ASSERT_TRUE(GetListEntry(FileList.ListPosition, path));
    EXPECT_EQ(LowerCase(Folder.Path("apple.txt")), path);
}

TEST_F(FileDialogs, TheChosenFilesPlaceCountsOnlyFilesThatAreListed)
{
    DialogAnswers answers;
    answers
        .Then([](HWND dialog) {
            const std::string tooLong(250, 'a'); // with the directory in front of it
            SendDlgItemMessageA(dialog, lst1, LB_INSERTSTRING, 0, reinterpret_cast<LPARAM>(tooLong.c_str()));
            Enter(dialog, "mango.ini");
        })
        .ThenPress(IDOK);
    EXPECT_NE("", Open());
    EXPECT_EQ((Names{"apple.txt", "mango.ini", "zebra.txt"}), ListedNames());
    EXPECT_EQ(2, FileList.ListPosition);
    EXPECT_EQ(3, FileList.ListTotal);
}

TEST_F(FileDialogs, AChosenFileBehindAFullListHasTheWholeListBeforeIt)
{
    Folder.AddMany(202, 157); // of 32000 bytes, each takes 160, and the one before them 12
    DialogAnswers answers;
    answers.Then([](HWND dialog) { Enter(dialog, "zebra.txt"); }).ThenPress(IDOK);
    SendMessageA(Windows.Main, WM_COMMAND, IDM_FILE_OPEN, 0);
    ASSERT_EQ(2u, answers.Seen().size());
    EXPECT_EQ("Too many files/directories or insufficient storage\nList has been truncated", answers.Seen()[1].Text);
    EXPECT_STREQ("zebra.txt", App.FileTitle);
    EXPECT_EQ(201, FileList.ListTotal);
    EXPECT_EQ(205, FileList.ListPosition) << "its place in the dialog";
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_NEXT));
    EXPECT_TRUE(IsCommandPossible(IDM_FILE_PREVIOUS));
    SendMessageA(Windows.Main, WM_COMMAND, IDM_FILE_PREVIOUS, 0);
    EXPECT_EQ(201, FileList.ListPosition);
    EXPECT_EQ(ListedNames().back(), App.FileTitle);
}

TEST_F(FileDialogs, OnlyTheFilesOfTheChosenFilterAreTheList)
{
    DialogAnswers answers;
    answers.Then(ChooseTextFiles).Then([](HWND dialog) { Enter(dialog, "zebra.txt"); });
    EXPECT_NE("", Open());
    EXPECT_EQ((Names{"apple.txt", "zebra.txt"}), ListedNames());
    EXPECT_EQ(2, FileList.ListPosition);
}

TEST_F(FileDialogs, AFileAloneMakesNoList)
{
    AddFileToList(nullptr, "c:\\before", "");
    AddFileToList(nullptr, "c:\\also before", "");
    WalkFileList(2);
    Folder.Remove("zebra.txt");
    Folder.Remove("mango.ini");
    EXPECT_NE("", OpenNamed("apple.txt"));
    EXPECT_EQ(0, FileListSize());
    EXPECT_EQ(0, FileList.ListTotal);
    EXPECT_EQ(1, FileList.ListPosition);
}

TEST_F(FileDialogs, AFileThatTheFilterHidesMakesNoList)
{
    AddFileToList(nullptr, "c:\\before", "");
    AddFileToList(nullptr, "c:\\also before", "");
    WalkFileList(2);
    DialogAnswers answers;
    answers.Then(ChooseTextFiles).Then([](HWND dialog) { Enter(dialog, "mango.ini"); });
    EXPECT_EQ(LowerCase(Folder.Path("mango.ini")), LowerCase(Open()));
    EXPECT_EQ(0, FileListSize());
    EXPECT_EQ(0, FileList.ListTotal);
}

TEST_F(FileDialogs, CancellingLeavesListAndPath)
{
    AddFileToList(nullptr, "c:\\one", "");
    AddFileToList(nullptr, "c:\\two", "");
    WalkFileList(2);
    char path[MaxPathSize] = "as before";
    DialogAnswers answers;
    answers.ThenPress(IDCANCEL);
    EXPECT_FALSE(ShowOpenDialog(Windows.Main, "", path));
    EXPECT_STREQ("as before", path);
    EXPECT_EQ((Names{"c:\\one", "c:\\two"}), ListedPaths());
    EXPECT_EQ(2, FileList.ListPosition);
    ASSERT_EQ(1u, answers.Seen().size());
    EXPECT_EQ(Windows.Main, answers.Seen()[0].Owner);
}

TEST_F(FileDialogs, OpenAsksForAFileThatExistsAndOffersNoReadOnlyBox)
{
    const ReplacedCall replaced("GetOpenFileNameA", reinterpret_cast<void*>(NoteDialog));
    EXPECT_EQ("", Open());
    const OPENFILENAMEA& record = Request.Record;
    EXPECT_EQ(static_cast<DWORD>(OPENFILENAME_SIZE_VERSION_400A), record.lStructSize);
    EXPECT_EQ(Windows.Main, record.hwndOwner);
    EXPECT_EQ(static_cast<DWORD>(OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_ENABLEHOOK | OFN_HIDEREADONLY),
              record.Flags);
    EXPECT_EQ(260u, record.nMaxFile);
    EXPECT_EQ(260u, record.nMaxFileTitle);
    EXPECT_NE(nullptr, record.lpstrFileTitle);
    EXPECT_EQ("", Request.Suggestion);
    EXPECT_EQ("All Files (*.*)|*.*|Text Files (*.TXT)|*.TXT|INI Files (*.INI)|*.INI|ZIP Files (*.ZIP)|*.ZIP|",
              Request.Filter);
}

TEST_F(FileDialogs, SaveAsksBeforeOverwritingAndWritesIntoTheCallersPath)
{
    const ReplacedCall replaced("GetSaveFileNameA", reinterpret_cast<void*>(NoteDialog));
    char path[MaxPathSize] = "suggested.txt";
    EXPECT_FALSE(ShowSaveDialog(Windows.Main, "", path));
    const OPENFILENAMEA& record = Request.Record;
    EXPECT_EQ(Windows.Main, record.hwndOwner);
    EXPECT_EQ(static_cast<DWORD>(OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY), record.Flags);
    EXPECT_EQ(path, record.lpstrFile);
    EXPECT_EQ(260u, record.nMaxFile);
    EXPECT_EQ(nullptr, record.lpstrFileTitle);
    EXPECT_EQ("suggested.txt", Request.Suggestion);
}

TEST_F(FileDialogs, TheChosenFilterIsOfferedAgainTheNextTime)
{
    DialogAnswers answers;
    answers.Then(ChooseTextFiles).Then([](HWND dialog) { Enter(dialog, "zebra.txt"); }).Then([](HWND dialog) {
        EXPECT_EQ(1, SendDlgItemMessageA(dialog, cmb1, CB_GETCURSEL, 0, 0));
        PressButton(dialog, IDCANCEL);
    });
    Open();
    Open();
}

// The dialog's record is made once per run, and the other tests use the standard filter.
TEST_F(FileDialogs, TheStandardFilterIsOfferedAndStaysForTheRun)
{
    const Names standard = {"All Files (*.*)", "Text Files (*.TXT)", "INI Files (*.INI)", "ZIP Files (*.ZIP)"};
    DialogAnswers answers;
    const auto check = [&standard](HWND dialog) {
        EXPECT_EQ(standard, ComboTexts(dialog, cmb1));
        EXPECT_EQ(0, SendDlgItemMessageA(dialog, cmb1, CB_GETCURSEL, 0, 0));
        PressButton(dialog, IDCANCEL);
    };
    answers.Then(check).Then(check);
    Open();
    Open("Another (*.x)|*.x|");
}

TEST_F(FileDialogs, TheOpenCommandOpensTheFileAndAddsItToTheRecentOnes)
{
    DialogAnswers answers;
    answers.Then([](HWND dialog) { Enter(dialog, "mango.ini"); });
    SendMessageA(Windows.Main, WM_COMMAND, IDM_FILE_OPEN, 0);
    EXPECT_TRUE(View.FileShown);
    EXPECT_STREQ("mango.ini", App.FileTitle);
    ASSERT_EQ(1, App.Recent.Count);
    EXPECT_EQ(LowerCase(Folder.Path("mango.ini")), App.Recent.Paths[0]);
    EXPECT_EQ(3, FileList.ListTotal);
    EXPECT_EQ(FileList.ListPosition < 3, IsCommandPossible(IDM_FILE_NEXT));
    EXPECT_EQ(FileList.ListPosition > 1, IsCommandPossible(IDM_FILE_PREVIOUS));
}

TEST_F(FileDialogs, CancellingTheOpenCommandLeavesTheFileOpen)
{
    OpenSequence(Windows.Main, Folder.Path("zebra.txt").c_str());
    DialogAnswers answers;
    answers.ThenPress(IDCANCEL);
    SendMessageA(Windows.Main, WM_COMMAND, IDM_FILE_OPEN, 0);
    EXPECT_TRUE(View.FileShown);
    EXPECT_STREQ("zebra.txt", App.FileTitle);
    EXPECT_EQ(0, App.Recent.Count);
}

TEST_F(FileDialogs, SaveReturnsTheFullPathOfTheNameEntered)
{
    char path[MaxPathSize] = "suggested.txt";
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        char suggested[100] = "";
        GetWindowTextA(NameField(dialog), suggested, sizeof suggested);
        EXPECT_STREQ("suggested.txt", suggested);
        Enter(dialog, "new.txt");
    });
    EXPECT_TRUE(ShowSaveDialog(Windows.Main, "", path));
    EXPECT_EQ(LowerCase(Folder.Path("new.txt")), LowerCase(path));
    EXPECT_FALSE(FileExists(path)) << "nothing is written yet";
}

TEST_F(FileDialogs, SaveAsksBeforeAFileIsOverwritten)
{
    char path[MaxPathSize] = "";
    DialogAnswers answers;
    answers.Then([](HWND dialog) { Enter(dialog, "zebra.txt"); })
        .ThenPress(IDNO)
        .Then([](HWND dialog) { Enter(dialog, "zebra.txt"); })
        .ThenPress(IDYES);
    EXPECT_TRUE(ShowSaveDialog(Windows.Main, "", path));
    EXPECT_EQ(LowerCase(Folder.Path("zebra.txt")), LowerCase(path));
    ASSERT_EQ(4u, answers.Seen().size());
    EXPECT_NE(Windows.Main, answers.Seen()[1].Owner) << "the question is the dialog's";
    EXPECT_EQ(Windows.Main, answers.Seen()[2].Owner) << "after No it goes on";
}

TEST_F(FileDialogs, SaveCanBeCancelledAndLeavesTheList)
{
    AddFileToList(nullptr, "c:\\one", "");
    WalkFileList(1);
    char path[MaxPathSize] = "";
    DialogAnswers answers;
    answers.ThenPress(IDCANCEL);
    EXPECT_FALSE(ShowSaveDialog(Windows.Main, "", path));
    EXPECT_EQ((Names{"c:\\one"}), ListedPaths());
}

TEST_F(FileDialogs, SaveLeavesTheListAsItWas)
{
    AddFileToList(nullptr, "c:\\one", "");
    AddFileToList(nullptr, "c:\\two", "");
    WalkFileList(2);
    char path[MaxPathSize] = "";
    DialogAnswers answers;
    answers.Then([](HWND dialog) { Enter(dialog, "new.txt"); });
    EXPECT_TRUE(ShowSaveDialog(Windows.Main, "", path));
    EXPECT_EQ((Names{"c:\\one", "c:\\two"}), ListedPaths());
    EXPECT_EQ(2, FileList.ListPosition);
}

TEST_F(FileDialogs, AnOpenDialogAfterASaveDialogMakesTheListAgain)
{
    char path[MaxPathSize] = "";
    {
        DialogAnswers answers;
        answers.ThenPress(IDCANCEL);
        ShowSaveDialog(Windows.Main, "", path);
    }
    EXPECT_NE("", OpenNamed("zebra.txt"));
    EXPECT_EQ(3, FileList.ListTotal);
}
