#include "app/launch_file.h"

#include "app/app_state.h"
#include "app/menu_state.h"
#include "app/open_sequence.h"
#include "base/text.h"
#include "document/document_state.h"
#include "document/file_list.h"
#include "document/line_index.h"
#include "files/associations.h"
#include "files/build_file_list.h"
#include "harness/dialogs.h"
#include "harness/folder.h"
#include "harness/picture.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "harness/system_calls.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>
#include <windows.h>

namespace {

using Names = std::vector<std::string>;

constexpr char ProgramFailed[] = "Launch of Windows program failed. Ensure all associated DLL's are available.";
constexpr char EditorFailed[] = "The launch of the editor failed. Please ensure that the Editor name is valid";
constexpr char AssociatedFailed[] =
    "The associated application could not be launched. Check the association using  File Manager";
constexpr char CannotReopen[] = "File being browsed could not be re-opened";

// Something that was to be started, and how things stood then.
struct Start {
    std::string Function;
    std::string Command; // or the file
    int Show;
    HWND Window;
    bool HasMore; // a verb, parameters or a directory
    bool Busy;
    bool HandleOpen;
    bool Released;
    bool Iconic;
};

std::vector<Start> Starts;
UINT Result;
std::function<void()> During;

UINT Note(Start start)
{
    start.Busy = App.BusyCursor;
    start.HandleOpen = Document.FileHandle != 0;
    start.Released = App.FileReleased;
    start.Iconic = IsIconic(Windows.Main) != 0;
    Starts.push_back(start);
    if (During) {
        During();
    }
    return Result;
}

UINT WINAPI NoteWinExec(LPCSTR command, UINT show)
{
    return Note({"WinExec", command, static_cast<int>(show), nullptr, false, false, false, false, false});
}

HINSTANCE WINAPI NoteShellExecute(HWND window, LPCSTR verb, LPCSTR file, LPCSTR parameters, LPCSTR directory, INT show)
{
    const bool hasMore = verb != nullptr || parameters != nullptr || directory != nullptr;
    const UINT_PTR result = Note({"ShellExecute", file, show, window, hasMore, false, false, false, false});
    return reinterpret_cast<HINSTANCE>(result);
}

// With nothing really started: what would have been is noted.
class LaunchingFiles : public RunningProgram {
protected:
    LaunchingFiles()
        : Folder("launching"), Run("WinExec", reinterpret_cast<void*>(NoteWinExec)),
          Open("ShellExecuteA", reinterpret_cast<void*>(NoteShellExecute))
    {
        Starts.clear();
        Result = 33;
        During = nullptr;
        WriteProfileStringA("Extensions", "kva", "notepad.exe ^.kva");
        BuildAssociations();
        CopyText(AppOptions.EditorName, "an editor");
    }

    ~LaunchingFiles() override
    {
        During = nullptr;
        ShowWindow(Windows.Main, SW_SHOWNORMAL);
        CloseDocument();
        ClearFileList();
        SetListMenuState();
        App.FileReleased = false;
        App.Info = FileInfo{.WantDetails = true};
        Details = FileDetails{};
        WriteProfileStringA("Extensions", "kva", nullptr);
        BuildAssociations();
    }

    static void Command(UINT id) { SendMessageA(Windows.Main, WM_COMMAND, id, 0); }

    // Opens a file of the folder.
    void OpenFile(const std::string& name, const std::string& content = "text\n")
    {
        Folder.Add(name, content);
        ASSERT_TRUE(OpenNamedFile(Windows.Main, Folder.Path(name).c_str())) << name;
    }

    // This program, which can be run, under that name.
    void OpenProgram(const std::string& name)
    {
        ASSERT_TRUE(CopyFileA(KESTOVAR_EXE, Folder.Path(name).c_str(), FALSE));
        ASSERT_TRUE(OpenNamedFile(Windows.Main, Folder.Path(name).c_str()));
        ASSERT_EQ(LaunchMode::Program, App.Launch);
    }

    std::string PathOf(const std::string& name) const { return LowerCase(Folder.Path(name)); }

    // What a command starts, one thing.
    static Start StartedBy(UINT id)
    {
        Starts.clear();
        const DialogAnswers none;
        Command(id);
        EXPECT_EQ(1u, Starts.size());
        return Starts.empty() ? Start{} : Starts.back();
    }

    // The same where it fails; returns what is said, box after box.
    static Names LaunchInVain(UINT id, int boxes = 1, UINT result = 31)
    {
        Result = result;
        Starts.clear();
        DialogAnswers answers;
        for (int i = 0; i < boxes; ++i) {
            answers.ThenPress(IDOK);
        }
        Command(id);
        EXPECT_EQ(1u, Starts.size());
        Names texts;
        for (const SeenDialog& seen : answers.Seen()) {
            texts.push_back(seen.Text);
        }
        return texts;
    }

    static void ExpectNoDocument()
    {
        EXPECT_FALSE(View.FileShown);
        EXPECT_STREQ("", App.FileTitle);
        EXPECT_EQ(0, Document.FileHandle);
        EXPECT_FALSE(App.FileReleased);
        EXPECT_FALSE(IsCommandPossible(223));
        EXPECT_FALSE(IsCommandPossible(252));
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

    // The whole large document can be read.
    static void ExpectReadable()
    {
        EXPECT_EQ("line 1", TextOf(1));
        EXPECT_EQ("line 19000", TextOf(19000));
        EXPECT_EQ("line 9000", TextOf(9000));
    }

    static void SetTime(const std::string& path)
    {
        const FILETIME time = {0, 0x01C00000};
        const HANDLE file = CreateFileA(path.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                        nullptr, OPEN_EXISTING, 0, nullptr);
        EXPECT_TRUE(SetFileTime(file, nullptr, nullptr, &time));
        CloseHandle(file);
    }

    ScratchFolder Folder;

private:
    ReplacedCall Run;
    ReplacedCall Open;
};

} // namespace

TEST_F(LaunchingFiles, AnAssociatedFileIsOpenedByTheSystem)
{
    OpenFile("Launch.KVA");
    const Start start = StartedBy(223);
    EXPECT_EQ("ShellExecute", start.Function);
    EXPECT_EQ(App.CurrentPath, start.Command);
    EXPECT_EQ(PathOf("launch.kva"), start.Command);
    EXPECT_EQ(1, start.Show);
    EXPECT_EQ(Windows.Main, start.Window);
    EXPECT_FALSE(start.HasMore) << "the default verb, no parameters, no directory";
}

TEST_F(LaunchingFiles, AnAssociatedFileIsOpenedMaximisedWhenAskedFor)
{
    AppOptions.MaxLaunchApp = 1;
    OpenFile("launch.kva");
    EXPECT_EQ(3, StartedBy(223).Show);
}

TEST_F(LaunchingFiles, AProgramIsRunByItsPath)
{
    OpenProgram("launch.exe");
    AppOptions.MaxLaunchApp = 1; // which is not meant for it
    const Start start = StartedBy(223);
    EXPECT_EQ("WinExec", start.Function);
    EXPECT_EQ(PathOf("launch.exe"), start.Command);
    EXPECT_EQ(5, start.Show);
}

TEST_F(LaunchingFiles, AProgramsPathWithABlankIsQuoted)
{
    OpenProgram("launch it.exe");
    EXPECT_EQ('"' + PathOf("launch it.exe") + '"', StartedBy(223).Command);
}

TEST_F(LaunchingFiles, AnotherTextIsOpenedInTheEditor)
{
    OpenFile("launch.kv1");
    AppOptions.MaxLaunchApp = 1;
    const Start start = StartedBy(223);
    EXPECT_EQ("WinExec", start.Function);
    EXPECT_EQ("an editor " + PathOf("launch.kv1"), start.Command);
    EXPECT_EQ(5, start.Show);
}

TEST_F(LaunchingFiles, EditTakesTheEditorWhateverTheFileIs)
{
    OpenFile("launch.kva");
    EXPECT_EQ("an editor " + PathOf("launch.kva"), StartedBy(252).Command);
    OpenFile("launch.kv1");
    EXPECT_EQ("an editor " + PathOf("launch.kv1"), StartedBy(252).Command);
    OpenFile("nontext.kv1", std::string(3000, 'x'));
    EXPECT_EQ("an editor " + PathOf("nontext.kv1"), StartedBy(252).Command);
    OpenProgram("launch.exe");
    const Start start = StartedBy(252);
    EXPECT_EQ("WinExec", start.Function);
    EXPECT_EQ("an editor " + PathOf("launch.exe"), start.Command);
    EXPECT_EQ(5, start.Show);
}

TEST_F(LaunchingFiles, TheEditorGetsEveryKindOfNameAsOneArgument)
{
    const struct {
        const char* Name;
        const char* Before;
        const char* Behind;
    } names[] = {
        {"a name.kv1", "\"", "\""},       {"name", "", "."},       {"a name", "\"", ".\""},
        {"name.with.dots.kv1", "", ""},   {"a&b.kv1", "\"", "\""}, {"gr\xFC\xDF.kv1", "", ""},
        {"a name.with dots", "\"", "\""},
    };
    for (const auto& name : names) {
        OpenFile(name.Name);
        EXPECT_EQ("an editor " + (name.Before + PathOf(name.Name)) + name.Behind, StartedBy(252).Command);
    }
}

TEST_F(LaunchingFiles, APathOf259CharactersIsPassedWhole)
{
    const std::string name(255 - Folder.Path().size(), 'n');
    CopyText(AppOptions.EditorName, std::string(259, 'e').c_str());
    OpenFile(name + ".kva");
    EXPECT_EQ(259u, strlen(App.CurrentPath));
    EXPECT_EQ(PathOf(name + ".kva"), StartedBy(223).Command);
    EXPECT_EQ(std::string(259, 'e') + " " + PathOf(name + ".kva"), StartedBy(252).Command);
    OpenFile("a b" + name + 'n');
    EXPECT_EQ(std::string(259, 'e') + " \"" + PathOf("a b" + name + 'n') + ".\"", StartedBy(252).Command);
}

TEST_F(LaunchingFiles, TheSystemGetsEveryKindOfNameAsItIs)
{
    for (const std::string name : {"a name.kva", "name.with.dots.kva", "gr\xFC\xDF.kva", "a&b%c.kva"}) {
        OpenFile(name);
        EXPECT_EQ(PathOf(name), StartedBy(223).Command);
    }
}

TEST_F(LaunchingFiles, NothingIsStartedWhereNothingApplies)
{
    Command(223);
    Command(252);
    OpenFile("nontext.kv1", std::string(3000, 'x'));
    Command(223);
    AppOptions.EditorName[0] = '\0';
    OpenFile("launch.kv1");
    Command(223);
    Command(252);
    EXPECT_TRUE(Starts.empty());
}

TEST_F(LaunchingFiles, TheBusyCursorIsShownDuringTheStart)
{
    OpenFile("launch.kva");
    EXPECT_TRUE(StartedBy(223).Busy);
    EXPECT_FALSE(App.BusyCursor);
    EXPECT_TRUE(StartedBy(252).Busy);
    EXPECT_FALSE(App.BusyCursor);
    Result = 2;
    DialogAnswers answers;
    answers.Then([](HWND box) {
        EXPECT_FALSE(App.BusyCursor) << "not behind the report";
        PressButton(box, IDOK);
    });
    Command(223);
    EXPECT_TRUE(Starts.back().Busy);
}

TEST_F(LaunchingFiles, AResultFrom32OnIsASuccess)
{
    OpenFile("launch.kv1");
    for (const UINT result : {32u, 33u, 42u, 0x10000u}) {
        Result = result;
        StartedBy(223);
        StartedBy(252);
    }
    for (const UINT result : {31u, 2u, 0u}) {
        EXPECT_EQ(Names{EditorFailed}, LaunchInVain(223, 1, result)) << result;
    }
    OpenFile("launch.kva");
    for (const UINT result : {32u, 33u}) {
        Result = result;
        StartedBy(223);
    }
    for (const UINT result : {31u, 5u, 0u}) {
        EXPECT_EQ(Names{AssociatedFailed}, LaunchInVain(223, 1, result)) << result;
    }
}

TEST_F(LaunchingFiles, EachKindOfLaunchReportsItsFailure)
{
    OpenFile("launch.kva");
    EXPECT_EQ(Names{AssociatedFailed}, LaunchInVain(223));
    EXPECT_EQ(Names{EditorFailed}, LaunchInVain(252));
    OpenFile("launch.kv1");
    EXPECT_EQ(Names{EditorFailed}, LaunchInVain(223));
    OpenProgram("launch.exe");
    EXPECT_EQ(Names{ProgramFailed}, LaunchInVain(223));
    EXPECT_EQ(Names{EditorFailed}, LaunchInVain(252));
}

TEST_F(LaunchingFiles, WithoutMinimisingTheFileStaysOpen)
{
    OpenFile("launch.kva", ManyBlocks());
    const int handle = Document.FileHandle;
    ASSERT_NE(0, handle);
    for (const bool success : {true, false}) {
        if (success) {
            StartedBy(223);
        } else {
            LaunchInVain(223);
        }
        EXPECT_TRUE(Starts.back().HandleOpen);
        EXPECT_FALSE(Starts.back().Released);
        EXPECT_EQ(handle, Document.FileHandle);
        EXPECT_FALSE(App.FileReleased);
        EXPECT_FALSE(IsIconic(Windows.Main));
        EXPECT_TRUE(View.FileShown);
    }
}

TEST_F(LaunchingFiles, WithoutMinimisingAFailureDoesNotLookAtTheFile)
{
    OpenFile("launch.kva");
    During = [this] { Folder.Remove("launch.kva"); };
    EXPECT_EQ(Names{AssociatedFailed}, LaunchInVain(223));
    EXPECT_TRUE(View.FileShown);
}

TEST_F(LaunchingFiles, MinimisingReleasesTheFileUntilTheWindowIsBack)
{
    AppOptions.MinOnLaunch = 1;
    OpenFile("launch.kva", ManyBlocks());
    for (const UINT id : {223, 252}) {
        ASSERT_NE(0, Document.FileHandle);
        const Start start = StartedBy(id);
        EXPECT_FALSE(start.HandleOpen);
        EXPECT_TRUE(start.Released);
        EXPECT_FALSE(start.Iconic) << "only when it has been started";
        EXPECT_TRUE(IsIconic(Windows.Main));
        EXPECT_EQ(0, Document.FileHandle);
        EXPECT_TRUE(App.FileReleased);
        EXPECT_TRUE(View.FileShown);
        ShowWindow(Windows.Main, SW_RESTORE);
        EXPECT_FALSE(IsIconic(Windows.Main));
        EXPECT_FALSE(App.FileReleased);
        EXPECT_NE(0, Document.FileHandle);
        ExpectReadable();
    }
}

TEST_F(LaunchingFiles, MinimisingWithASmallFileHasNothingToRelease)
{
    AppOptions.MinOnLaunch = 1;
    OpenFile("launch.kva");
    const Start start = StartedBy(223);
    EXPECT_FALSE(start.HandleOpen);
    EXPECT_FALSE(start.Released);
    EXPECT_TRUE(IsIconic(Windows.Main));
    ShowWindow(Windows.Main, SW_RESTORE);
    EXPECT_TRUE(View.FileShown);
    EXPECT_FALSE(App.FileReleased);
    EXPECT_EQ("text", TextOf(1));
}

TEST_F(LaunchingFiles, AChangeByWhatWasStartedIsShownWhenTheWindowIsBack)
{
    AppOptions.MinOnLaunch = 1;
    for (const std::string& content : {std::string("before\n"), ManyBlocks()}) {
        OpenFile("launch.kva", content);
        StartedBy(223);
        Folder.Add("launch.kva", "after\n");
        SetTime(Folder.Path("launch.kva"));
        DialogAnswers answers;
        answers.ThenPress(IDOK);
        ShowWindow(Windows.Main, SW_RESTORE);
        EXPECT_EQ("The current file has changed and will be reopened", answers.OnlyText());
        EXPECT_EQ("after", TextOf(1));
        CloseDocument();
    }
}

TEST_F(LaunchingFiles, WhatIsStartedCanWriteTheFileMeanwhile)
{
    AppOptions.MinOnLaunch = 1;
    OpenFile("launch.kva", ManyBlocks());
    bool written = false;
    During = [this, &written] {
        const HANDLE file = CreateFileA(Folder.Path("launch.kva").c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                        OPEN_EXISTING, 0, nullptr);
        written = file != INVALID_HANDLE_VALUE;
        CloseHandle(file);
    };
    StartedBy(223);
    EXPECT_TRUE(written) << "it is nobody else's";
}

TEST_F(LaunchingFiles, AFailureToMinimiseForTakesTheFileBack)
{
    AppOptions.MinOnLaunch = 1;
    OpenFile("launch.kva", ManyBlocks());
    EXPECT_EQ(Names{AssociatedFailed}, LaunchInVain(223));
    EXPECT_FALSE(Starts.back().HandleOpen);
    EXPECT_TRUE(Starts.back().Released);
    EXPECT_NE(0, Document.FileHandle);
    EXPECT_FALSE(App.FileReleased);
    EXPECT_FALSE(IsIconic(Windows.Main));
    ExpectReadable();
    EXPECT_EQ(Names{EditorFailed}, LaunchInVain(252));
    EXPECT_NE(0, Document.FileHandle);
    ExpectReadable();
}

TEST_F(LaunchingFiles, AFailureLeavesASmallFileClosedAsItWas)
{
    AppOptions.MinOnLaunch = 1;
    OpenFile("launch.kva", "first\nsecond\n");
    EXPECT_EQ(Names{AssociatedFailed}, LaunchInVain(223));
    EXPECT_EQ(0, Document.FileHandle);
    EXPECT_FALSE(App.FileReleased);
    EXPECT_TRUE(View.FileShown);
    EXPECT_EQ("second", TextOf(2));
}

TEST_F(LaunchingFiles, AFileLostMeanwhileIsClosedBeforeTheFailureIsReported)
{
    AppOptions.MinOnLaunch = 1;
    Folder.Add("a.kva", "text");
    OpenFile("b.kva", ManyBlocks());
    const std::string lost = Folder.Path("b.kva");
    for (const bool removed : {true, false}) {
        Folder.Add("b.kva", ManyBlocks());
        OpenSequence(Windows.Main, Folder.Path("*").c_str());
        Command(IDM_FILE_NEXT);
        ASSERT_STREQ("b.kva", App.FileTitle);
        ASSERT_TRUE(IsCommandPossible(IDM_FILE_PREVIOUS));
        During = [removed, &lost] {
            if (removed) {
                EXPECT_TRUE(DeleteFileA(lost.c_str()));
            } else {
                SetTime(lost);
            }
        };
        EXPECT_EQ((Names{CannotReopen, AssociatedFailed}), LaunchInVain(223, 2));
        ExpectNoDocument();
        EXPECT_EQ(0, FileListSize());
        EXPECT_EQ(0, FileList.ListTotal);
        EXPECT_FALSE(IsCommandPossible(IDM_FILE_PREVIOUS));
        EXPECT_FALSE(IsIconic(Windows.Main));
    }
}

TEST_F(LaunchingFiles, ASmallFileLostMeanwhileStaysInView)
{
    AppOptions.MinOnLaunch = 1;
    OpenFile("launch.kv1");
    During = [this] { Folder.Remove("launch.kv1"); };
    EXPECT_EQ(Names{EditorFailed}, LaunchInVain(223));
    EXPECT_TRUE(View.FileShown) << "it is held whole";
    EXPECT_EQ("text", TextOf(1));
    EXPECT_FALSE(App.FileReleased);
}

TEST_F(LaunchingFiles, AProgramLostMeanwhileIsReportedAsProgramAfterTheLoss)
{
    AppOptions.MinOnLaunch = 1;
    OpenProgram("launch.exe");
    ASSERT_NE(0, Document.FileHandle);
    During = [this] { Folder.Remove("launch.exe"); };
    EXPECT_EQ((Names{CannotReopen, ProgramFailed}), LaunchInVain(223, 2));
    ExpectNoDocument();
}

TEST_F(LaunchingFiles, ALostFileIsNoLongerToBeSeen)
{
    AppOptions.MinOnLaunch = 1;
    OpenFile("launch.kva", ManyBlocks());
    RedrawWindow(Windows.View, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    ASSERT_LT(1, ColoursIn(PictureOf(Windows.View, {0, 0, View.ClientWidth, View.LineHeight})));
    During = [this] { Folder.Remove("launch.kva"); };
    LaunchInVain(223, 2);
    UpdateWindow(Windows.View);
    EXPECT_EQ(1, ColoursIn(PictureOf(Windows.View, {0, 0, View.ClientWidth, View.LineHeight})));
    EXPECT_EQ(0, View.MaxTop) << "and nothing to scroll";
}

TEST_F(LaunchingFiles, AnotherDocumentOpenedMeanwhileStaysAfterAFailure)
{
    AppOptions.MinOnLaunch = 1;
    for (const std::string& content : {std::string("another\n"), ManyBlocks()}) {
        OpenFile("launch.kva", ManyBlocks());
        During = [this, &content] {
            OpenFile("other.kv1", content);
            Folder.Remove("launch.kva");
        };
        EXPECT_EQ(Names{AssociatedFailed}, LaunchInVain(223));
        EXPECT_TRUE(View.FileShown);
        EXPECT_STREQ("other.kv1", App.FileTitle);
        EXPECT_EQ(content.size() > 30000, Document.FileHandle != 0);
        EXPECT_FALSE(App.FileReleased);
        EXPECT_EQ(content.substr(0, content.find('\n')), TextOf(1));
        CloseDocument();
    }
}

TEST_F(LaunchingFiles, AnotherDocumentOpenedMeanwhileStaysAfterASuccess)
{
    AppOptions.MinOnLaunch = 1;
    OpenFile("launch.kva", ManyBlocks());
    During = [this] { OpenFile("other.kv1", "another\n"); };
    StartedBy(223);
    EXPECT_TRUE(IsIconic(Windows.Main));
    ShowWindow(Windows.Main, SW_RESTORE);
    EXPECT_STREQ("other.kv1", App.FileTitle);
    EXPECT_TRUE(View.FileShown);
    EXPECT_EQ("another", TextOf(1));
}

TEST_F(LaunchingFiles, ADocumentClosedMeanwhileIsNotLost)
{
    AppOptions.MinOnLaunch = 1;
    OpenFile("launch.kva", ManyBlocks());
    During = [] { Command(300); };
    EXPECT_EQ(Names{AssociatedFailed}, LaunchInVain(223));
    ExpectNoDocument();
}

TEST_F(LaunchingFiles, ADocumentHandedOverWhileTheLossIsReportedStays)
{
    AppOptions.MinOnLaunch = 1;
    OpenFile("launch.kva", ManyBlocks());
    During = [this] { Folder.Remove("launch.kva"); };
    Result = 2;
    DialogAnswers answers;
    answers
        .Then([this](HWND box) {
            ExpectNoDocument();
            OpenFile("other.kv1", "another\n");
            PressButton(box, IDOK);
        })
        .ThenPress(IDOK);
    Command(223);
    EXPECT_TRUE(View.FileShown);
    EXPECT_STREQ("other.kv1", App.FileTitle);
    EXPECT_FALSE(App.FileReleased);
}
