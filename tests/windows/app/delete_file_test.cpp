#include "app/delete_file.h"

#include "app/app_state.h"
#include "app/confirm_delete.h"
#include "app/finding.h"
#include "app/menu_state.h"
#include "app/open_sequence.h"
#include "document/document_state.h"
#include "document/file_list.h"
#include "document/line_index.h"
#include "files/build_file_list.h"
#include "harness/dialogs.h"
#include "harness/folder.h"
#include "harness/picture.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "harness/system_calls.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/gdi_holders.h"
#include "view/selection.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

constexpr char DeleteFailed[] = "Deletion request failed. The file may be write protected or on a read-only device.";
constexpr char CannotReopen[] = "File being browsed could not be re-opened";

BOOL ReallyDelete(const char* path)
{
    using Function = BOOL(WINAPI*)(LPCSTR);
    static const auto real = reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32"), "DeleteFileA")));
    return real(path);
}

// Somebody else was faster.
BOOL WINAPI FindItDeleted(LPCSTR path)
{
    ReallyDelete(path);
    SetLastError(ERROR_FILE_NOT_FOUND);
    return FALSE;
}

bool HandleOpenAtDelete;
bool FlagAtDelete;

BOOL WINAPI NoteStateAtDelete(LPCSTR path)
{
    HandleOpenAtDelete = Document.FileHandle != 0;
    FlagAtDelete = App.FileReleased;
    return ReallyDelete(path);
}

class DeletingFiles : public RunningProgram {
protected:
    DeletingFiles() : Folder("delete") {}

    ~DeletingFiles() override
    {
        CloseDocument();
        ClearFileList();
        SetListMenuState();
        App.FileReleased = false;
    }

    static void Command(UINT id) { SendMessageA(Windows.Main, WM_COMMAND, id, 0); }

    // Opens a file of the folder by name.
    std::string Open(const std::string& name, const std::string& content = "text\n")
    {
        Folder.Add(name, content);
        EXPECT_TRUE(OpenNamedFile(Windows.Main, Folder.Path(name).c_str()));
        return Folder.Path(name);
    }

    // Opens the list of the folder's files and then the one at that place, from 1.
    void OpenList(const Names& names, int position)
    {
        for (const std::string& name : names) {
            Folder.Add(name, name + "\n");
        }
        OpenSequence(Windows.Main, Folder.Path("*").c_str());
        ASSERT_EQ(names, ListedNames());
        for (int i = 1; i < position; ++i) {
            Command(IDM_FILE_NEXT);
        }
        ASSERT_EQ(names[static_cast<std::size_t>(position - 1)], App.FileTitle);
    }

    static void DeleteWith(int button)
    {
        DialogAnswers answers;
        answers.ThenPress(button);
        Command(IDM_FILE_DELETE);
    }

    static void Delete() { DeleteWith(IDC_DELETE_YES); }

    // Answers Yes where the file is not deleted; returns what is said, box after box.
    static Names DeleteInVain(int boxes = 1)
    {
        DialogAnswers answers;
        answers.ThenPress(IDC_DELETE_YES);
        for (int i = 0; i < boxes; ++i) {
            answers.ThenPress(IDOK);
        }
        Command(IDM_FILE_DELETE);
        Names texts;
        for (std::size_t i = 1; i < answers.Seen().size(); ++i) {
            texts.push_back(answers.Seen()[i].Text);
        }
        return texts;
    }

    // Does something while the question is open, and then answers it with Yes.
    static void DeleteMeanwhile(const std::function<void()>& meanwhile)
    {
        DialogAnswers answers;
        answers.Then([&meanwhile](HWND dialog) {
            meanwhile();
            PressButton(dialog, IDC_DELETE_YES);
        });
        Command(IDM_FILE_DELETE);
    }

    // The command that the frame has posted itself; 0 when there is none. Takes it off the queue.
    static UINT Posted()
    {
        MSG message;
        return PeekMessageA(&message, Windows.Main, WM_COMMAND, WM_COMMAND, PM_REMOVE)
                   ? static_cast<UINT>(message.wParam)
                   : 0;
    }

    static void ExpectList(const Names& names, int position, int adjust)
    {
        EXPECT_EQ(names, ListedNames());
        EXPECT_EQ(static_cast<int>(names.size()), FileList.ListTotal);
        EXPECT_EQ(position, FileList.ListPosition);
        EXPECT_EQ(adjust, FileList.ListAdjust);
    }

    static void ExpectNoDocument()
    {
        EXPECT_FALSE(View.FileShown);
        EXPECT_STREQ("", App.FileTitle);
        EXPECT_EQ(0, Document.FileHandle);
        EXPECT_FALSE(App.FileReleased);
        for (const UINT id : {222, 223, 224, 232, 251, 252, 260, 263}) {
            EXPECT_FALSE(IsCommandPossible(id)) << id;
        }
    }

    // All of it, not only what a dialog has covered.
    static bool WholeViewIsToBePainted()
    {
        RECT client;
        RECT update;
        GetClientRect(Windows.View, &client);
        GetUpdateRect(Windows.View, &update, FALSE);
        return EqualRect(&client, &update) != 0;
    }

    static void SetAttributes(const std::string& path, DWORD attributes)
    {
        ASSERT_TRUE(SetFileAttributesA(path.c_str(), attributes));
    }

    static void SetTime(const std::string& path, DWORD high)
    {
        const FILETIME time = {0, high};
        const HANDLE file = CreateFileA(path.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                        nullptr, OPEN_EXISTING, 0, nullptr);
        EXPECT_TRUE(SetFileTime(file, nullptr, nullptr, &time));
        CloseHandle(file);
    }

    static std::string ManyBlocks()
    {
        std::string content;
        for (int i = 0; content.size() < 200000; ++i) {
            content += "line " + std::to_string(i + 1) + "\n";
        }
        return content;
    }

    static std::string TextOf(std::int32_t number)
    {
        const LineText line = ReadLineText(number);
        return std::string(line.Text, static_cast<std::size_t>(line.Length));
    }

    ScratchFolder Folder;
};

// The question alone.
class ConfirmingDeletion : public RunningProgram {
protected:
    static bool Confirm(const char* path, const std::function<void(HWND)>& step)
    {
        DialogAnswers answers;
        answers.Then(step);
        return ConfirmDelete(Windows.Main, path);
    }

    static bool ConfirmByKey(UINT message, WPARAM key)
    {
        return Confirm("c:\\file", [message, key](HWND) { PostMessageA(GetFocus(), message, key, 0); });
    }

    static std::string ShownPath(const std::string& path)
    {
        std::string shown;
        Confirm(path.c_str(), [&shown](HWND dialog) {
            shown = ControlText(dialog, 330);
            PressButton(dialog, 2);
        });
        return shown;
    }

    static Names ChildTexts(HWND dialog)
    {
        Names texts;
        for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
            char text[200] = "";
            GetWindowTextA(child, text, sizeof text);
            texts.push_back(text);
        }
        return texts;
    }

    static Picture PictureOfControl(HWND control)
    {
        RECT area;
        GetClientRect(control, &area);
        return PictureOf(control, area);
    }

    // The exclamation mark on ground of that colour.
    static Picture Warning(const Picture& size, COLORREF ground)
    {
        return Drawn(size.Width, size.Height, [&size, ground](HDC canvas) {
            const RECT all = {0, 0, size.Width, size.Height};
            SetBkColor(canvas, ground);
            ExtTextOutA(canvas, 0, 0, ETO_OPAQUE, &all, "", 0, nullptr);
            DrawIcon(canvas, 0, 0, LoadIconA(nullptr, reinterpret_cast<LPCSTR>(IDI_EXCLAMATION)));
        });
    }

    static void PaintOver(HWND control)
    {
        WindowDc dc(control);
        RECT area;
        GetClientRect(control, &area);
        SetBkColor(dc, RGB(1, 2, 3));
        ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &area, "", 0, nullptr);
    }
};

} // namespace

TEST_F(ConfirmingDeletion, NamesTheFileAndOffersYesAndNo)
{
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        EXPECT_EQ((Names{"", "Are you sure you want to delete:", "c:\\dir\\a&b.txt", "&Yes", "&No"}),
                  ChildTexts(dialog));
        EXPECT_EQ("c:\\dir\\a&b.txt", ControlText(dialog, 330));
        EXPECT_EQ("&Yes", ControlText(dialog, 1));
        EXPECT_EQ("&No", ControlText(dialog, 2));
        EXPECT_NE(0, GetWindowLongA(GetDlgItem(dialog, 330), GWL_STYLE) & SS_NOPREFIX);
        PressButton(dialog, 2);
    });
    ConfirmDelete(Windows.Main, "c:\\dir\\a&b.txt");
    ASSERT_EQ(1u, answers.Seen().size());
    EXPECT_EQ("Confirm File Delete", answers.Seen()[0].Caption);
    EXPECT_EQ(Windows.Main, answers.Seen()[0].Owner);
}

TEST_F(ConfirmingDeletion, NoHasTheFocusAndIsTheDefaultButton)
{
    Confirm("c:\\file", [](HWND dialog) {
        EXPECT_EQ(GetDlgItem(dialog, 2), GetFocus());
        EXPECT_EQ(static_cast<LRESULT>(MAKELONG(2, DC_HASDEFID)), SendMessageA(dialog, DM_GETDEFID, 0, 0));
        EXPECT_EQ(BS_DEFPUSHBUTTON, GetWindowLongA(GetDlgItem(dialog, 2), GWL_STYLE) & BS_TYPEMASK);
        EXPECT_EQ(BS_PUSHBUTTON, GetWindowLongA(GetDlgItem(dialog, 1), GWL_STYLE) & BS_TYPEMASK);
        PressButton(dialog, 2);
    });
}

TEST_F(ConfirmingDeletion, OnlyYesConfirms)
{
    EXPECT_TRUE(Confirm("c:\\file", [](HWND dialog) { PressButton(dialog, 1); }));
    EXPECT_FALSE(Confirm("c:\\file", [](HWND dialog) { PressButton(dialog, 2); }));
    EXPECT_FALSE(Confirm("c:\\file", [](HWND dialog) { PostMessageA(dialog, WM_CLOSE, 0, 0); }));
    EXPECT_FALSE(Confirm("c:\\file", [](HWND dialog) { PostMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); }));
}

TEST_F(ConfirmingDeletion, ByKeyEnterAndEscMeanNoAndTheLettersWhatTheyStandFor)
{
    EXPECT_FALSE(ConfirmByKey(WM_KEYDOWN, VK_RETURN));
    EXPECT_FALSE(ConfirmByKey(WM_KEYDOWN, VK_ESCAPE));
    EXPECT_TRUE(ConfirmByKey(WM_CHAR, 'y'));
    EXPECT_FALSE(ConfirmByKey(WM_CHAR, 'n'));
}

TEST_F(ConfirmingDeletion, APathOf35CharactersIsShownWholeAndALongerOneShortened)
{
    const std::string head = "c:\\first\\second\\third\\";
    ASSERT_EQ(35u, (head + "abcdefghi.txt").size());
    EXPECT_EQ(head + "abcdefghi.txt", ShownPath(head + "abcdefghi.txt"));
    EXPECT_EQ("c:\\...\\second\\third\\abcdefghij.txt", ShownPath(head + "abcdefghij.txt"));
}

TEST_F(ConfirmingDeletion, APathOf259CharactersIsShownByItsEnds)
{
    const std::string path = "c:\\" + std::string(240, 'd') + "\\end of it.txt";
    EXPECT_EQ("c:\\...\\end of it.txt", ShownPath(path + std::string(259 - path.size(), 'x')).substr(0, 20));
}

TEST_F(ConfirmingDeletion, TheExclamationMarkIsDrawnWheneverItsControlIsPainted)
{
    Confirm("c:\\file", [](HWND dialog) {
        const HWND icon = GetDlgItem(dialog, 331);
        UpdateWindow(icon);
        const Picture first = PictureOfControl(icon);
        const std::uint32_t corner = first.Pixels[0];
        const COLORREF ground = RGB((corner >> 16) & 255, (corner >> 8) & 255, corner & 255);
        EXPECT_LT(2, ColoursIn(first));
        EXPECT_LE(32, first.Width);
        EXPECT_LE(32, first.Height);
        EXPECT_EQ(0, DifferentPixels(Warning(first, ground), first));
        for (int paint = 0; paint < 2; ++paint) {
            PaintOver(icon);
            ASSERT_NE(0, DifferentPixels(first, PictureOfControl(icon)));
            RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
            EXPECT_EQ(0, DifferentPixels(first, PictureOfControl(icon)));
        }
        PressButton(dialog, 2);
    });
}

TEST_F(ConfirmingDeletion, LeavesNoDrawingObjectBehind)
{
    const auto paintAndDecline = [](HWND dialog) {
        RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        PressButton(dialog, 2);
    };
    Confirm("c:\\file", paintAndDecline); // what the system makes once and keeps
    const int before = FreeGdiObjects();
    for (int i = 0; i < 3; ++i) {
        Confirm("c:\\file", paintAndDecline);
    }
    EXPECT_EQ(before, FreeGdiObjects());
}

TEST_F(DeletingFiles, TheQuestionIsAboutTheCurrentFile)
{
    const std::string path = Open("asked.txt");
    DialogAnswers answers;
    answers.Then([&path](HWND dialog) {
        const std::string shown = ControlText(dialog, 330);
        EXPECT_EQ("\\asked.txt", shown.substr(shown.size() - 10)) << path;
        EXPECT_TRUE(FileExists(path)) << "nothing has happened yet";
        EXPECT_TRUE(View.FileShown);
        PressButton(dialog, IDC_DELETE_NO);
    });
    Command(224);
}

TEST_F(DeletingFiles, NoLeavesEverythingAsItIs)
{
    OpenList({"a.txt", "b.txt"}, 1);
    Command(251);
    for (const int button : {IDC_DELETE_NO, 2}) {
        DeleteWith(button);
        EXPECT_TRUE(FileExists(Folder.Path("a.txt")));
        EXPECT_TRUE(View.FileShown);
        EXPECT_STREQ("a.txt", App.FileTitle);
        EXPECT_TRUE(HasSelection());
        EXPECT_FALSE(App.FileReleased);
        ExpectList({"a.txt", "b.txt"}, 1, 0);
        EXPECT_EQ(0u, Posted());
    }
}

TEST_F(DeletingFiles, NoLeavesALargeFileOpen)
{
    const std::string path = Open("large.txt", ManyBlocks());
    const int handle = Document.FileHandle;
    ASSERT_NE(0, handle);
    DeleteWith(IDC_DELETE_NO);
    EXPECT_EQ(handle, Document.FileHandle);
    EXPECT_TRUE(FileExists(path));
}

TEST_F(DeletingFiles, YesDeletesTheFileAndClosesTheDocument)
{
    const std::string path = Open("gone.txt");
    Delete();
    EXPECT_FALSE(FileExists(path));
    ExpectNoDocument();
    char title[100] = "";
    GetWindowTextA(Windows.Main, title, sizeof title);
    EXPECT_STREQ("Kestovar", title);
}

TEST_F(DeletingFiles, ALargeFileIsLetGoOfBeforeItIsDeleted)
{
    const std::string path = Open("gone.txt", ManyBlocks());
    ASSERT_NE(0, Document.FileHandle);
    const ReplacedCall replaced("DeleteFileA", reinterpret_cast<void*>(NoteStateAtDelete));
    HandleOpenAtDelete = true;
    FlagAtDelete = false;
    Delete();
    EXPECT_FALSE(HandleOpenAtDelete);
    EXPECT_TRUE(FlagAtDelete);
    EXPECT_FALSE(FileExists(path));
    ExpectNoDocument();
}

TEST_F(DeletingFiles, TheStatusLineSaysSoAndTheViewIsPaintedAnew)
{
    Open("gone.txt");
    UpdateWindow(Windows.View);
    const Watch watch({Windows.Status});
    Delete();
    EXPECT_TRUE(WholeViewIsToBePainted());
    ASSERT_FALSE(Log.empty());
    const Noted* const shown = Watch::Last(Windows.Status, WM_USER + 5);
    ASSERT_NE(nullptr, shown);
    EXPECT_EQ(141, shown->WParam);
    const Noted* const position = Watch::Last(Windows.Status, WM_USER + 4);
    EXPECT_TRUE(position == nullptr || position < shown) << "it stays there";
}

TEST_F(DeletingFiles, ASelectionInTheFileIsForgotten)
{
    Open("gone.txt");
    Command(251);
    ASSERT_TRUE(IsCommandPossible(250));
    Delete();
    EXPECT_FALSE(IsCommandPossible(250));
    EXPECT_FALSE(IsCommandPossible(221));
    EXPECT_FALSE(HasSelection());
}

TEST_F(DeletingFiles, WithoutADocumentNothingIsAsked)
{
    const DialogAnswers none;
    Command(224);
    EXPECT_TRUE(none.Seen().empty());
}

TEST_F(DeletingFiles, AReadOnlyFileOfOneBlockIsReportedAndStays)
{
    const std::string path = Open("kept.txt", "first\nsecond\n");
    SetAttributes(path, FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(Names{DeleteFailed}, DeleteInVain());
    EXPECT_EQ("first\nsecond\n", FileContent(path));
    EXPECT_TRUE(View.FileShown);
    EXPECT_EQ(0, Document.FileHandle) << "as before";
    EXPECT_FALSE(App.FileReleased);
    EXPECT_EQ("second", TextOf(2));
    EXPECT_TRUE(IsCommandPossible(224));
}

TEST_F(DeletingFiles, AReadOnlyFileOfManyBlocksIsReadFromAgain)
{
    const std::string path = Open("kept.txt", ManyBlocks());
    SetAttributes(path, FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(Names{DeleteFailed}, DeleteInVain());
    EXPECT_EQ(ManyBlocks(), FileContent(path));
    EXPECT_TRUE(View.FileShown);
    EXPECT_NE(0, Document.FileHandle);
    EXPECT_FALSE(App.FileReleased);
    const std::int32_t lines = Document.LineCount;
    EXPECT_EQ("line 1", TextOf(1));
    EXPECT_EQ("line " + std::to_string(lines), TextOf(lines));
    EXPECT_EQ("line 9000", TextOf(9000));
}

TEST_F(DeletingFiles, AFailureLeavesTheListAsItIs)
{
    AppOptions.LoadOnDelete = 1;
    OpenList({"a.txt", "b.txt", "c.txt"}, 2);
    SetAttributes(Folder.Path("b.txt"), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(Names{DeleteFailed}, DeleteInVain());
    ExpectList({"a.txt", "b.txt", "c.txt"}, 2, 0);
    EXPECT_EQ(0u, Posted());
    EXPECT_STREQ("b.txt", App.FileTitle);
}

TEST_F(DeletingFiles, ASmallFileThatIsGoneAlreadyIsReportedAndStaysInView)
{
    OpenList({"a.txt", "b.txt", "c.txt"}, 2);
    Folder.Remove("b.txt");
    EXPECT_EQ(Names{DeleteFailed}, DeleteInVain());
    EXPECT_TRUE(View.FileShown) << "it is held whole";
    EXPECT_EQ("b.txt", TextOf(1));
    EXPECT_FALSE(App.FileReleased);
    ExpectList({"a.txt", "b.txt", "c.txt"}, 2, 0);
}

TEST_F(DeletingFiles, ALargeFileThatIsGoneAlreadyIsReportedAsLostAndAsNotDeleted)
{
    Open("gone.txt", ManyBlocks());
    const ReplacedCall replaced("DeleteFileA", reinterpret_cast<void*>(FindItDeleted));
    EXPECT_EQ((Names{CannotReopen, DeleteFailed}), DeleteInVain(2));
    ExpectNoDocument();
}

TEST_F(DeletingFiles, ALostFileIsClosedBeforeThatIsReported)
{
    Open("gone.txt", ManyBlocks());
    const ReplacedCall replaced("DeleteFileA", reinterpret_cast<void*>(FindItDeleted));
    DialogAnswers answers;
    answers.ThenPress(IDC_DELETE_YES)
        .Then([](HWND box) {
            ExpectNoDocument();
            PressButton(box, IDOK);
        })
        .ThenPress(IDOK);
    Command(224);
}

TEST_F(DeletingFiles, ALostFileIsNoLongerToBeSeen)
{
    Open("gone.txt", ManyBlocks());
    RedrawWindow(Windows.View, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    ASSERT_LT(1, ColoursIn(PictureOf(Windows.View, {0, 0, View.ClientWidth, View.LineHeight})));
    const ReplacedCall replaced("DeleteFileA", reinterpret_cast<void*>(FindItDeleted));
    DeleteInVain(2);
    UpdateWindow(Windows.View);
    EXPECT_EQ(1, ColoursIn(PictureOf(Windows.View, {0, 0, View.ClientWidth, View.LineHeight})));
}

TEST_F(DeletingFiles, ALostFileLeavesNothingToScroll)
{
    Open("gone.txt", ManyBlocks());
    ASSERT_LT(0, View.MaxTop);
    const ReplacedCall replaced("DeleteFileA", reinterpret_cast<void*>(FindItDeleted));
    DeleteInVain(2);
    EXPECT_EQ(0, View.MaxTop);
}

TEST_F(DeletingFiles, ADeletedFileLeavesNothingToScroll)
{
    Open("gone.txt", ManyBlocks());
    ASSERT_LT(0, View.MaxTop);
    Delete();
    EXPECT_EQ(0, View.MaxTop);
}

TEST_F(DeletingFiles, ALargeFileChangedMeanwhileThatCannotBeDeletedIsShownAnew)
{
    const std::string path = Open("changed.txt", ManyBlocks());
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    DWORD written = 0;
    WriteFile(file, "LINE", 4, &written, nullptr);
    CloseHandle(file);
    SetTime(path, 0x01C00000);
    SetAttributes(path, FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ((Names{"The current file has changed and will be reopened", DeleteFailed}), DeleteInVain(2));
    EXPECT_TRUE(View.FileShown);
    EXPECT_NE(0, Document.FileHandle);
    EXPECT_FALSE(App.FileReleased);
    EXPECT_EQ("LINE 1", TextOf(1));
    EXPECT_TRUE(FileExists(path));
}

TEST_F(DeletingFiles, AFileChangedMeanwhileIsDeletedAllTheSame)
{
    const std::string path = Open("changed.txt", ManyBlocks());
    SetTime(path, 0x01C00000);
    Delete();
    EXPECT_FALSE(FileExists(path));
    ExpectNoDocument();
}

TEST_F(DeletingFiles, ADocumentHandedOverWhileTheReportIsOpenStays)
{
    const std::string other = Folder.Path("other.txt");
    Folder.Add("other.txt", "another\n");
    Open("gone.txt", ManyBlocks());
    const ReplacedCall replaced("DeleteFileA", reinterpret_cast<void*>(FindItDeleted));
    DialogAnswers answers;
    answers.ThenPress(IDC_DELETE_YES)
        .Then([&other](HWND box) {
            OpenNamedFile(Windows.Main, other.c_str());
            PressButton(box, IDOK);
        })
        .ThenPress(IDOK);
    Command(224);
    EXPECT_TRUE(View.FileShown);
    EXPECT_STREQ("other.txt", App.FileTitle);
    EXPECT_EQ("another", TextOf(1));
}

TEST_F(DeletingFiles, TheFirstOfAListMakesTheNextOneTheNeighbour)
{
    OpenList({"a.txt", "b.txt", "c.txt"}, 1);
    Delete();
    EXPECT_FALSE(FileExists(Folder.Path("a.txt")));
    ExpectList({"b.txt", "c.txt"}, 0, 1);
    EXPECT_EQ(0u, Posted()) << "nothing is loaded unless it is asked for";
    EXPECT_TRUE(IsCommandPossible(IDM_FILE_NEXT));
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_PREVIOUS));
    Command(IDM_FILE_NEXT);
    EXPECT_STREQ("b.txt", App.FileTitle);
    ExpectList({"b.txt", "c.txt"}, 1, 0);
}

TEST_F(DeletingFiles, OneInTheMiddleHasItsNeighboursOnBothSides)
{
    for (const bool next : {true, false}) {
        OpenList({"a.txt", "b.txt", "c.txt"}, 2);
        Delete();
        ExpectList({"a.txt", "c.txt"}, 1, 1);
        EXPECT_TRUE(IsCommandPossible(IDM_FILE_NEXT));
        EXPECT_TRUE(IsCommandPossible(IDM_FILE_PREVIOUS));
        Command(next ? IDM_FILE_NEXT : IDM_FILE_PREVIOUS);
        EXPECT_STREQ(next ? "c.txt" : "a.txt", App.FileTitle);
        ExpectList({"a.txt", "c.txt"}, next ? 2 : 1, 0);
    }
}

TEST_F(DeletingFiles, TheLastOfAListHasOnlyAPreviousOne)
{
    OpenList({"a.txt", "b.txt", "c.txt"}, 3);
    Delete();
    ExpectList({"a.txt", "b.txt"}, 2, 1);
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_NEXT));
    EXPECT_TRUE(IsCommandPossible(IDM_FILE_PREVIOUS));
    Command(IDM_FILE_PREVIOUS);
    EXPECT_STREQ("b.txt", App.FileTitle);
    ExpectList({"a.txt", "b.txt"}, 2, 0);
}

TEST_F(DeletingFiles, TheOnlyOneOfAListLeavesNoList)
{
    AppOptions.LoadOnDelete = 1;
    Folder.Add("a.txt", "text");
    AddFileToList(nullptr, Folder.Name().c_str(), "a.txt");
    WalkFileList(1);
    ASSERT_TRUE(OpenNamedFile(Windows.Main, Folder.Path("a.txt").c_str()));
    Delete();
    ExpectList({}, 0, 0);
    EXPECT_EQ(0u, Posted());
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_NEXT));
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_PREVIOUS));
}

TEST_F(DeletingFiles, WithoutAListNothingIsLoaded)
{
    AppOptions.LoadOnDelete = 1;
    const std::string path = Open("gone.txt");
    Delete();
    EXPECT_FALSE(FileExists(path));
    ExpectList({}, 0, 0);
    EXPECT_EQ(0u, Posted());
}

TEST_F(DeletingFiles, WhenAskedForTheNextFileIsLoaded)
{
    AppOptions.LoadOnDelete = 1;
    OpenList({"a.txt", "b.txt", "c.txt"}, 2);
    Delete();
    EXPECT_FALSE(View.FileShown) << "not before the frame serves its messages";
    EXPECT_EQ(226u, Posted());
    PostMessageA(Windows.Main, WM_COMMAND, 226, 0);
    PumpMessages();
    EXPECT_STREQ("c.txt", App.FileTitle);
    ExpectList({"a.txt", "c.txt"}, 2, 0);
}

TEST_F(DeletingFiles, WhenAskedForAfterTheFirstTheNextFileIsLoaded)
{
    AppOptions.LoadOnDelete = 1;
    OpenList({"a.txt", "b.txt"}, 1);
    Delete();
    PumpMessages();
    EXPECT_STREQ("b.txt", App.FileTitle);
    ExpectList({"b.txt"}, 1, 0);
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_NEXT));
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_PREVIOUS));
}

TEST_F(DeletingFiles, WhenAskedForAfterTheLastOfTwoTheRemainingFileIsLoaded)
{
    AppOptions.LoadOnDelete = 1;
    OpenList({"a.txt", "b.txt"}, 2);
    Delete();
    EXPECT_EQ(225u, Posted());
    ExpectList({"a.txt"}, 1, 1);
    PostMessageA(Windows.Main, WM_COMMAND, 225, 0);
    PumpMessages();
    EXPECT_STREQ("a.txt", App.FileTitle);
    ExpectList({"a.txt"}, 1, 0);
}

TEST_F(DeletingFiles, AWholeListCanBeDeletedFileByFile)
{
    AppOptions.LoadOnDelete = 1;
    OpenList({"a.txt", "b.txt", "c.txt", "d.txt"}, 3);
    for (const char* const next : {"d.txt", "b.txt", "a.txt", ""}) {
        Delete();
        PumpMessages();
        EXPECT_STREQ(next, App.FileTitle);
    }
    ExpectList({}, 0, 0);
    for (const char* const name : {"a.txt", "b.txt", "c.txt", "d.txt"}) {
        EXPECT_FALSE(FileExists(Folder.Path(name))) << name;
    }
}

TEST_F(DeletingFiles, TheListsDialogSelectsTheFileThatTookTheDeletedOnesPlace)
{
    OpenList({"a.txt", "b.txt", "c.txt"}, 2);
    Delete();
    EXPECT_EQ(2, FileList.ListPosition + FileList.ListAdjust);
}

TEST_F(DeletingFiles, AnotherDocumentHandedOverDuringTheQuestionIsNotDeleted)
{
    Folder.Add("other.txt", "another\n");
    const std::string other = Folder.Path("other.txt");
    const std::string path = Open("asked.txt");
    DeleteMeanwhile([&other] { ASSERT_TRUE(OpenNamedFile(Windows.Main, other.c_str())); });
    EXPECT_TRUE(FileExists(path));
    EXPECT_TRUE(FileExists(other));
    EXPECT_STREQ("other.txt", App.FileTitle);
    EXPECT_TRUE(View.FileShown);
    EXPECT_FALSE(App.FileReleased);
}

TEST_F(DeletingFiles, ADocumentClosedDuringTheQuestionIsNotDeleted)
{
    const std::string path = Open("asked.txt");
    DeleteMeanwhile([] { Command(300); });
    EXPECT_TRUE(FileExists(path));
    EXPECT_FALSE(View.FileShown);
    EXPECT_FALSE(App.FileReleased);
}

TEST_F(DeletingFiles, AListHandedOverDuringTheQuestionKeepsItsFiles)
{
    AppOptions.LoadOnDelete = 1;
    OpenList({"a.txt", "b.txt", "c.txt"}, 1);
    const std::string directory = Folder.Name();
    DeleteMeanwhile([&directory] {
        ClearFileList();
        AddFileToList(nullptr, directory.c_str(), "c.txt");
        AddFileToList(nullptr, directory.c_str(), "b.txt");
        WalkFileList(1);
    });
    EXPECT_FALSE(FileExists(Folder.Path("a.txt"))) << "that is what was asked";
    ExpectList({"c.txt", "b.txt"}, 1, 0);
    EXPECT_EQ(0u, Posted());
    ExpectNoDocument();
    EXPECT_TRUE(IsCommandPossible(IDM_FILE_NEXT));
}

TEST_F(DeletingFiles, APathOf259CharactersIsDeleted)
{
    const std::string name(259 - Folder.Path().size(), 'n');
    const std::string path = Open(name);
    ASSERT_EQ(259u, path.size());
    Delete();
    EXPECT_FALSE(FileExists(path));
    ExpectNoDocument();
}

TEST_F(DeletingFiles, NamesWithBlanksDotsOrOtherLettersAreDeletedAndTheirNeighboursStay)
{
    const Names names = {"a name.txt", "a.name.with.dots", "name", "gr\xFC\xDF.txt", "name.txt"};
    for (const std::string& name : names) {
        Folder.Add(name, "text\n");
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        ASSERT_TRUE(OpenNamedFile(Windows.Main, Folder.Path(names[i]).c_str())) << names[i];
        Delete();
        for (std::size_t other = 0; other < names.size(); ++other) {
            EXPECT_EQ(other > i, FileExists(Folder.Path(names[other]))) << names[i] << ' ' << names[other];
        }
    }
}
