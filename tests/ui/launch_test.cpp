#include "support/associations.h"
#include "support/dialogs.h"
#include "support/file_list.h"
#include "support/input.h"
#include "support/launched.h"
#include "support/ui_test.h"

namespace {

constexpr char ProgramFailed[] = "Launch of Windows program failed. Ensure all associated DLL's are available.";
constexpr char EditorFailed[] = "The launch of the editor failed. Please ensure that the Editor name is valid";
constexpr char AssociatedFailed[] =
    "The associated application could not be launched. Check the association using  File Manager";
constexpr char Changed[] = "The current file has changed and will be reopened";
constexpr char Lost[] = "File being browsed could not be re-opened";

constexpr std::size_t LongestPath = 259;

// More blocks than the program keeps: to show them all it has to read.
constexpr int ManyLines = 30000;

// In lower case, as the program has its paths.
std::string Shown(std::string path)
{
    CharLowerA(path.data());
    return path;
}

std::string NameOf(const std::string& path)
{
    return Shown(path.substr(path.find_last_of('\\') + 1));
}

class LaunchTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        CopyLaunchedTo(Editor);
        CopyLaunchedTo(Application);
        UseSettings();
    }

    // With an editor that can be started.
    void UseSettings(const std::string& more = "") const { UseEditor(Editor, more); }
    static void UseEditor(const std::string& editor, const std::string& more = "")
    {
        WriteSettings(std::string(FixedFont) + "EditorName=" + editor + "\n" + more);
    }

    std::string Write(const std::string& name, const std::string& content) const
    {
        return Shown(Files.Write(name, content));
    }
    std::string WriteManyLines() const { return Write("many.kvq", NumberedLines(ManyLines)); }

    // A name in the directory that makes the full path as long as one can be.
    std::string LongestName(const std::string& extension) const
    {
        const std::size_t others = Files.PathOf("").size() + extension.size();
        return std::string(LongestPath - others, 'l') + extension;
    }

    Association ForClass(const std::string& command) const
    {
        return {"kvq", "Kestovar.Test", "A file for the tests", command};
    }
    std::string OpenWith(const std::string& program) const { return program + " \"%1\""; }

    const TestDirectory Files{"launch"};
    const std::string Editor = Files.PathOf("editor.exe");
    const std::string Application = Files.PathOf("application.exe");
};

// Opens the file, whatever its path.
void Show(Program& program, const std::string& path)
{
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().Drop(program.Frame(), path);
    ASSERT_TRUE(program.WaitForTitle(NameOf(path)));
}

// Waits until the program has done what was posted to it: no list goes on from here, so that the command beeps.
void WaitUntilDone(Program& program)
{
    const int beeps = program.Inside().Use().Beeps;
    program.Post(WM_COMMAND, IDM_KEY_NEXT);
    EXPECT_TRUE(WaitUntil([&] { return program.Inside().Use().Beeps > beeps; }));
}

LaunchRecord Launch(Program& program, Launches& launches, UINT id = IDM_FILE_LAUNCH)
{
    program.Post(WM_COMMAND, id);
    const LaunchRecord record = launches.Wait();
    WaitUntilDone(program);
    EXPECT_FALSE(program.ShowsBox());
    return record;
}

// Opens the file and launches it.
LaunchRecord Launch(const std::string& path, UINT id = IDM_FILE_LAUNCH)
{
    Launches launches;
    Program program;
    Show(program, path);
    EXPECT_FALSE(program.Menu(id).Greyed);
    const LaunchRecord record = Launch(program, launches, id);
    EXPECT_EQ(program.Title(), "Kestovar-" + NameOf(path));
    return record;
}

void ExpectShow(const LaunchRecord& record, WORD show)
{
    EXPECT_TRUE((record.Flags & STARTF_USESHOWWINDOW) != 0);
    EXPECT_EQ(record.Show, show);
}

// Whether nobody has the file open.
bool IsFree(const std::string& path)
{
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        CloseHandle(file);
    }
    return file != INVALID_HANDLE_VALUE;
}

bool WaitUntilMinimised(const Program& program)
{
    return WaitUntil([&] { return IsIconic(program.Frame()) != FALSE; });
}

bool WaitUntilRestored(const Program& program)
{
    return WaitUntil([&] { return !IsIconic(program.Frame()); });
}

void Restore(const Program& program)
{
    program.Post(WM_SYSCOMMAND, SC_RESTORE);
}

// Goes to the end of what is shown.
std::string LastText(Program& program)
{
    Key(program, VK_END);
    EXPECT_EQ(program.Vertical().Position, program.Vertical().Max);
    const std::vector<ProbeText> texts = program.ViewTexts();
    return texts.empty() ? "(none)" : texts.back().Text;
}

// Reads the file anew, block by block.
void ExpectManyLines(Program& program)
{
    EXPECT_EQ(LastText(program), "Line " + std::to_string(ManyLines));
    for (int line = 0; line < ManyLines; line += 2000) {
        SetTop(program, line);
        EXPECT_EQ(program.TopText(), "Line " + std::to_string(line + 1));
    }
}

// Of the dump's top row.
int FirstByteShown(Program& program)
{
    constexpr std::size_t OffsetWidth = sizeof "00000000 " - 1;
    return static_cast<int>(strtol(program.TopText().substr(OffsetWidth).c_str(), nullptr, 16));
}

// A launch that is refused: the file is still shown, in a window as before.
void ExpectFailure(Program& program, UINT id, const std::string& message, const std::string& path)
{
    program.Post(WM_COMMAND, id);
    EXPECT_EQ(program.AnswerBox(), message);
    WaitUntilDone(program);
    EXPECT_FALSE(program.ShowsBox());
    EXPECT_FALSE(IsIconic(program.Frame()));
    EXPECT_EQ(program.Title(), "Kestovar-" + NameOf(path));
    EXPECT_FALSE(program.Menu(id).Greyed); // to be tried again
}

// What the file information dialog says the file is.
std::string TypeShown(Program& program)
{
    program.Post(WM_COMMAND, IDM_FILE_INFORMATION);
    const HWND dialog = WaitForDialog(program, "File Information");
    if (dialog == nullptr) {
        return "(none)";
    }
    const std::string type = ControlText(dialog, IDC_INFO_TYPE);
    PressControl(dialog, IDOK);
    WaitUntilClosed(dialog);
    return type;
}

std::string TypeOf(const std::string& path)
{
    Program program;
    Show(program, path);
    return TypeShown(program);
}

// A program that no system runs: what says how its headers are laid out is wrong. It is told by other parts of
// them.
std::string BrokenProgram()
{
    constexpr std::size_t NewHeaderOffset = 60;
    constexpr std::size_t LayoutOffset = 24; // behind signature and file header
    std::string bytes = ReadWholeFile(LaunchedProgram());
    const std::size_t header = static_cast<std::uint8_t>(bytes[NewHeaderOffset]) +
                               256u * static_cast<std::uint8_t>(bytes[NewHeaderOffset + 1]);
    bytes.replace(header + LayoutOffset, 2, 2, '\0');
    return bytes;
}

// The current directory, for as long as this exists.
class InDirectory {
public:
    explicit InDirectory(const std::string& path)
    {
        GetCurrentDirectoryA(sizeof Former, Former);
        EXPECT_TRUE(SetCurrentDirectoryA(path.c_str())) << path;
    }
    ~InDirectory() { SetCurrentDirectoryA(Former); }
    InDirectory(const InDirectory&) = delete;
    InDirectory& operator=(const InDirectory&) = delete;

private:
    char Former[MAX_PATH] = "";
};

} // namespace

TEST_F(LaunchTest, EditFileStartsTheEditorWithTheFile)
{
    const std::string path = Write("one.kvq", "text");
    const LaunchRecord record = Launch(path, IDM_EDIT_FILE);
    EXPECT_EQ(record.CommandLine, Editor + " " + path);
    EXPECT_EQ(record.File, "free");
    ExpectShow(record, SW_SHOW);
}

TEST_F(LaunchTest, LaunchStartsTheEditorForATextThatNothingIsAssociatedWith)
{
    const std::string path = Write("one.kvq", "text");
    const LaunchRecord record = Launch(path);
    EXPECT_EQ(record.CommandLine, Editor + " " + path);
    ExpectShow(record, SW_SHOW);
}

TEST_F(LaunchTest, ToTheEditorAFileWithoutAnExtensionEndsInADot)
{
    const std::string path = Write("noext", "text");
    for (const UINT id : {IDM_FILE_LAUNCH, IDM_EDIT_FILE}) {
        const LaunchRecord record = Launch(path, id);
        EXPECT_EQ(record.CommandLine, Editor + " " + path + ".") << id;
        EXPECT_EQ(record.File, "free") << id; // it still means the file
        ExpectShow(record, SW_SHOW);
    }
}

TEST_F(LaunchTest, ADotInTheDirectoryMakesNoExtension)
{
    const TestDirectory dotted("launch.kvq");
    const RegisteredExtension registered(ForClass(OpenWith(Application)));
    const std::string path = Shown(dotted.Write("noext", "text"));
    EXPECT_EQ(Launch(path).CommandLine, Editor + " " + path + ".");
}

TEST_F(LaunchTest, ToTheEditorAPathWithBlanksIsOneArgument)
{
    const std::string path = Write("two words.v1.kvq", "text");
    const LaunchRecord record = Launch(path, IDM_EDIT_FILE);
    EXPECT_EQ(record.CommandLine, Editor + " \"" + path + "\"");
    EXPECT_EQ(record.File, "free");
}

TEST_F(LaunchTest, TheDotOfAPathWithBlanksStandsInsideItsQuotationMarks)
{
    const TestDirectory blanks("launch here");
    const std::string path = Shown(blanks.Write("noext", "text"));
    const LaunchRecord record = Launch(path, IDM_EDIT_FILE);
    EXPECT_EQ(record.CommandLine, Editor + " \"" + path + ".\"");
    EXPECT_EQ(record.File, "free");
}

TEST_F(LaunchTest, ToTheEditorAPathThatMeansSomethingToTheCommandInterpreterIsOneArgument)
{
    for (const char* const name : {"you&me.kvq", "a(1).kvq", "50%.kvq", "a,b.kvq", "a^b.kvq"}) {
        const std::string path = Write(name, "text");
        const LaunchRecord record = Launch(path, IDM_EDIT_FILE);
        EXPECT_EQ(record.CommandLine, Editor + " \"" + path + "\"");
        EXPECT_EQ(record.File, "free");
    }
}

TEST_F(LaunchTest, AnEditorThatIsABatchFileGetsTheFileWhole)
{
    const std::string batch = Write("edit.bat", "@" + Editor + " -r %*\r\n");
    UseEditor(batch);
    for (const char* const name : {"one.kvq", "two words.kvq", "you&me.kvq"}) {
        const std::string path = Write(name, "text");
        const LaunchRecord record = Launch(path, IDM_EDIT_FILE);
        EXPECT_EQ(record.File, "free") << record.CommandLine;
    }
    EXPECT_TRUE(WaitUntil([&] { return IsFree(batch); })); // it can be removed once it has been read to its end
}

TEST_F(LaunchTest, AFileWithLettersBeyondAsciiReachesTheEditor)
{
    Write("\xC4rger.KVQ", "text");
    const LaunchRecord record = Launch(Files.PathOf("\xC4rger.KVQ"), IDM_EDIT_FILE);
    EXPECT_EQ(record.CommandLine, Editor + " " + Files.PathOf("\xE4rger.kvq"));
    EXPECT_EQ(record.File, "free");
}

TEST_F(LaunchTest, TheLongestPathReachesTheEditor)
{
    const std::string path = Write(LongestName(".kvq"), "text");
    EXPECT_EQ(path.size(), LongestPath);
    const LaunchRecord record = Launch(path, IDM_EDIT_FILE);
    EXPECT_EQ(record.CommandLine, Editor + " " + path);
    EXPECT_EQ(record.File, "free");
}

TEST_F(LaunchTest, TheLongestPathWithBlanksAndWithoutAnExtensionReachesTheEditorWhole)
{
    const TestDirectory blanks("launch here");
    const std::string name(LongestPath - blanks.PathOf("").size(), 'l');
    const std::string path = Shown(blanks.Write(name, "text"));
    EXPECT_EQ(Launch(path, IDM_EDIT_FILE).CommandLine, Editor + " \"" + path + ".\"");
}

TEST_F(LaunchTest, ArgumentsOfTheEditorStandBeforeTheFile)
{
    UseEditor(Editor + " -r /line=1");
    const std::string path = Write("one.kvq", "text");
    EXPECT_EQ(Launch(path, IDM_EDIT_FILE).CommandLine, Editor + " -r /line=1 " + path);
}

TEST_F(LaunchTest, AnEditorWithBlanksInItsPathIsStarted)
{
    const std::string editor = Files.PathOf("my editor.exe");
    CopyLaunchedTo(editor);
    const std::string path = Write("one.kvq", "text");
    UseEditor("\"" + editor + "\" -r");
    LaunchRecord record = Launch(path, IDM_EDIT_FILE);
    EXPECT_EQ(NameOf(record.Program), "my editor.exe");
    EXPECT_EQ(record.Arguments, "-r " + path);
    UseEditor(editor); // without quotation marks
    record = Launch(path, IDM_EDIT_FILE);
    EXPECT_EQ(NameOf(record.Program), "my editor.exe");
    EXPECT_EQ(record.File, "free");
}

TEST_F(LaunchTest, TheEditorIsNotepadUntilThereIsAnother)
{
    // One in the current directory comes before that of the system.
    const std::string notepad = Files.PathOf("notepad.exe");
    CopyLaunchedTo(notepad);
    WriteSettings(FixedFont);
    const std::string path = Write("one.kvq", "text");
    const InDirectory current(Files.Path());
    const LaunchRecord record = Launch(path);
    EXPECT_EQ(NameOf(record.Program), "notepad.exe");
    EXPECT_EQ(record.CommandLine, "notepad " + path);
    EXPECT_EQ(NameOf(record.Directory), NameOf(Files.Path())); // the program's own
}

TEST_F(LaunchTest, WithoutAnEditorNothingIsEdited)
{
    UseEditor("");
    Program program(Write("one.kvq", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_TRUE(program.Menu(IDM_EDIT_FILE).Greyed);
    EXPECT_TRUE(program.Menu(IDM_FILE_LAUNCH).Greyed);
    Show(program, Write("noext", "text"));
    EXPECT_TRUE(program.Menu(IDM_EDIT_FILE).Greyed);
    EXPECT_TRUE(program.Menu(IDM_FILE_LAUNCH).Greyed);
    Show(program, Application);
    EXPECT_TRUE(program.Menu(IDM_EDIT_FILE).Greyed);
    EXPECT_FALSE(program.Menu(IDM_FILE_LAUNCH).Greyed); // that needs none
}

TEST_F(LaunchTest, EditFileTakesWhatIsNoText)
{
    const std::string path = Write("data.kvq", std::string(2000, '\x01'));
    Launches launches;
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_TRUE(program.Menu(IDM_FILE_LAUNCH).Greyed);
    EXPECT_EQ(Launch(program, launches, IDM_EDIT_FILE).CommandLine, Editor + " " + path);
}

TEST_F(LaunchTest, EditFileEditsAProgramAndWhatIsAssociatedToo)
{
    const RegisteredExtension registered(ForClass(OpenWith(Application)));
    const std::string path = Write("one.kvq", "text");
    EXPECT_EQ(Launch(path, IDM_EDIT_FILE).CommandLine, Editor + " " + path);
    EXPECT_EQ(Launch(Application, IDM_EDIT_FILE).CommandLine, Editor + " " + Application);
}

TEST_F(LaunchTest, AnEditorThatIsNotThereIsReported)
{
    UseEditor(Files.PathOf("gone.exe"));
    const std::string path = WriteManyLines();
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    SetTop(program, 100);
    ExpectFailure(program, IDM_EDIT_FILE, EditorFailed, path);
    ExpectFailure(program, IDM_FILE_LAUNCH, EditorFailed, path);
    EXPECT_EQ(program.TopText(), "Line 101");
    ExpectManyLines(program);
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(LaunchTest, AWindowsProgramIsRunWithoutArguments)
{
    const LaunchRecord record = Launch(Application);
    EXPECT_EQ(record.CommandLine, Application);
    EXPECT_EQ(record.Program, Application);
    ExpectShow(record, SW_SHOW);
}

TEST_F(LaunchTest, AProgramWithBlanksInItsPathIsRunAndNoOther)
{
    const TestDirectory blanks("launch here");
    CopyLaunchedTo(blanks.PathOf("two words.exe"));
    CopyLaunchedTo(blanks.PathOf("two.exe"));
    const LaunchRecord record = Launch(blanks.PathOf("two words.exe"));
    EXPECT_EQ(record.Program, blanks.PathOf("two words.exe"));
    EXPECT_EQ(record.CommandLine, "\"" + blanks.PathOf("two words.exe") + "\"");
}

TEST_F(LaunchTest, AProgramIsRunWhateverItsExtension)
{
    for (const char* const name : {"tool.v1.2", "tool.kvq", "\xE4rger.exe"}) {
        CopyLaunchedTo(Files.PathOf(name));
        const LaunchRecord record = Launch(Files.PathOf(name));
        EXPECT_EQ(record.Program, Files.PathOf(name));
        EXPECT_EQ(record.CommandLine, Files.PathOf(name));
    }
}

TEST_F(LaunchTest, AProgramOfTheLongestPathIsRun)
{
    const std::string path = Files.PathOf(LongestName(".exe"));
    CopyLaunchedTo(path);
    const LaunchRecord record = Launch(path);
    EXPECT_EQ(record.Program, path);
    EXPECT_EQ(record.CommandLine, path);
}

TEST_F(LaunchTest, AProgramWithoutAnExtensionIsNotRun)
{
    CopyLaunchedTo(Files.PathOf("tool"));
    Program program(Files.PathOf("tool"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_TRUE(program.Menu(IDM_FILE_LAUNCH).Greyed);
    EXPECT_FALSE(program.Menu(IDM_EDIT_FILE).Greyed);
}

TEST_F(LaunchTest, AProgramIsRunThoughItsExtensionIsAssociated)
{
    const RegisteredExtension registered(ForClass(OpenWith(Application)));
    CopyLaunchedTo(Files.PathOf("tool.kvq"));
    EXPECT_EQ(Launch(Files.PathOf("tool.kvq")).Program, Files.PathOf("tool.kvq"));
}

TEST_F(LaunchTest, WhatIsLaunchedOutlivesTheProgram)
{
    Launches launches(Launches::Kind::Stay);
    Program program(Application);
    ASSERT_TRUE(program.WaitForFrame());
    const HWND first = Launch(program, launches).Window;
    const HWND second = Launch(program, launches).Window;
    EXPECT_NE(first, second);
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_TRUE(IsWindowVisible(first));
    EXPECT_TRUE(IsWindowVisible(second));
    launches.End();
    EXPECT_FALSE(IsWindow(first));
}

TEST_F(LaunchTest, AProgramThatCannotBeRunIsReported)
{
    const std::string content = BrokenProgram();
    const std::string path = Write("broken.exe", content);
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(TypeShown(program), "Windows 32 bit Executable");
    ExpectFailure(program, IDM_FILE_LAUNCH, ProgramFailed, path);
    EXPECT_EQ(program.TopText().substr(0, 15), "00000000  4D 5A");
    Scroll(program, WM_VSCROLL, SB_LINEDOWN);
    EXPECT_EQ(program.TopText().substr(0, 8), "00000010");
    ExpectFailure(program, IDM_FILE_LAUNCH, ProgramFailed, path);
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(LaunchTest, AProgramThatIsCutOffIsReported)
{
    const std::string path = Write("cut.exe", ReadWholeFile(LaunchedProgram()).substr(0, 512));
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(TypeShown(program), "Windows 32 bit Executable");
    ExpectFailure(program, IDM_FILE_LAUNCH, ProgramFailed, path);
    EXPECT_EQ(LastText(program).substr(0, 8), "000001F0");
}

TEST_F(LaunchTest, AProgramThatCannotBeRunIsReadOnWhenTheWindowWasToBeMinimised)
{
    UseSettings("MinOnLaunch=1\n");
    const std::string content = BrokenProgram() + Repeated("0123456789", 400000) + "the end";
    const std::string path = Write("broken.exe", content);
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    ExpectFailure(program, IDM_FILE_LAUNCH, ProgramFailed, path);
    EXPECT_FALSE(IsFree(path)); // taken back
    const std::string last = LastText(program);
    EXPECT_NE(last.find("the end"), std::string::npos) << last;
    for (int row = 20000; row >= 0; row -= 2000) {
        SetTop(program, row);
        EXPECT_EQ(FirstByteShown(program), static_cast<std::uint8_t>(content[static_cast<std::size_t>(row) * 16]));
    }
}

TEST_F(LaunchTest, AnAssociatedProgramIsStartedWithTheFile)
{
    const RegisteredExtension registered(ForClass(OpenWith(Application)));
    const std::string path = Write("one.kvq", "text");
    const LaunchRecord record = Launch(path);
    EXPECT_EQ(record.Program, Application);
    EXPECT_EQ(record.Arguments, "\"" + path + "\"");
    EXPECT_EQ(record.File, "free");
    ExpectShow(record, SW_SHOWNORMAL);
}

TEST_F(LaunchTest, WhatIsNoTextIsLaunchedByItsAssociation)
{
    const RegisteredExtension registered(ForClass(OpenWith(Application)));
    const std::string path = Write("data.kvq", std::string(2000, '\x01'));
    EXPECT_EQ(Launch(path).Arguments, "\"" + path + "\"");
}

TEST_F(LaunchTest, AnAssociatedProgramStartsMaximisedOnDemand)
{
    const RegisteredExtension registered(ForClass(OpenWith(Application)));
    const std::string path = Write("one.kvq", "text");
    for (const bool maximised : {true, false}) {
        UseSettings(maximised ? "MaxLaunchApp=1\n" : "MaxLaunchApp=0\n");
        Launches launches(Launches::Kind::Stay);
        Program program(path);
        ASSERT_TRUE(program.WaitForFrame());
        const LaunchRecord record = Launch(program, launches);
        ExpectShow(record, maximised ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL);
        EXPECT_EQ(IsZoomed(record.Window) != FALSE, maximised);
    }
}

TEST_F(LaunchTest, ProgramsAndTheEditorStartAsTheyAreEvenSo)
{
    UseSettings("MaxLaunchApp=1\n");
    ExpectShow(Launch(Application), SW_SHOW);
    ExpectShow(Launch(Write("one.kvq", "text")), SW_SHOW);
}

TEST_F(LaunchTest, AnAssociatedProgramGetsAnyPath)
{
    const RegisteredExtension registered(ForClass(OpenWith(Application)));
    const TestDirectory blanks("launch here");
    for (const std::string& path : {Shown(blanks.Write("two words.v1.kvq", "text")), Write("h\xFCll\xE9.kvq", "text"),
                                    Write("no dot but one.KVQ", "text"), Write(LongestName(".kvq"), "text")}) {
        const LaunchRecord record = Launch(path);
        EXPECT_EQ(record.Program, Application);
        EXPECT_EQ(record.Arguments, "\"" + path + "\"");
        EXPECT_EQ(record.File, "free");
    }
}

TEST_F(LaunchTest, ExtensionsOfUpToSevenCharactersAreLookedUp)
{
    const RegisteredExtension seven({"kvqqqqq", "Kestovar.Seven", "Seven", OpenWith(Application)});
    const RegisteredExtension eight({"kvqqqqqq", "Kestovar.Eight", "Eight", OpenWith(Application)});
    EXPECT_EQ(Launch(Write("one.kvqqqqq", "text")).Program, Application);
    EXPECT_EQ(Launch(Write("one.kvqqqqqq", "text")).Program, Editor);
}

TEST_F(LaunchTest, AnAssociationWithAProgramThatIsNotThereIsReported)
{
    const RegisteredExtension registered(ForClass(OpenWith(Files.PathOf("gone.exe"))));
    const std::string path = WriteManyLines();
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    ExpectFailure(program, IDM_FILE_LAUNCH, AssociatedFailed, path);
    ExpectManyLines(program);
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(LaunchTest, AnAssociationWithNoProgramIsReported)
{
    const RegisteredExtension registered(ForClass(""));
    const std::string path = Write("one.kvq", "text");
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    ExpectFailure(program, IDM_FILE_LAUNCH, AssociatedFailed, path);
    EXPECT_EQ(program.TopText(), "text");
}

TEST_F(LaunchTest, AnExtensionWithoutAClassIsKnownAllTheSame)
{
    const RegisteredExtension registered({"kvq", "", "", ""});
    const std::string path = Write("one.kvq", "text");
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(TypeShown(program), "KVQ File");
    // It is not the editor's, though nothing else can be started.
    ExpectFailure(program, IDM_FILE_LAUNCH, AssociatedFailed, path);
}

TEST_F(LaunchTest, TheProgramOfAnEntryOfWinIniIsStarted)
{
    const ProfileExtension entry("kvq", Application);
    const std::string path = Write("one.kvq", "text");
    const LaunchRecord record = Launch(path);
    EXPECT_EQ(record.Program, Application);
    ExpectShow(record, SW_SHOWNORMAL);
    EXPECT_EQ(TypeOf(path), "KVQ File");
}

TEST_F(LaunchTest, AnEntryOfWinIniThatTheSystemCannotStartIsReported)
{
    // Wine takes all of the entry for the program's name.
    const ProfileExtension entry("kvq", Application + " ^.kvq");
    const std::string path = Write("one.kvq", "text");
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(TypeShown(program), "KVQ File");
    ExpectFailure(program, IDM_FILE_LAUNCH, AssociatedFailed, path);
    EXPECT_EQ(program.TopText(), "text");
}

TEST_F(LaunchTest, AClassLendsItsDescriptionToItsFiles)
{
    const std::string path = Write("one.kvq", "text");
    const auto typeWith = [&](const std::string& friendlyName) {
        const RegisteredExtension registered({"kvq", "Kestovar.Test", friendlyName, OpenWith(Application)});
        return TypeOf(path);
    };
    EXPECT_EQ(TypeOf(path), "Text"); // nothing is known of the extension
    EXPECT_EQ(typeWith("A file for the tests"), "A file for the tests");
    EXPECT_EQ(typeWith("H\xFClle & Co"), "H\xFClle & Co");
    EXPECT_EQ(typeWith(std::string(39, 'f')), std::string(39, 'f'));
    EXPECT_EQ(typeWith(std::string(40, 'f')), "Kestovar.Test"); // too long
    EXPECT_EQ(typeWith(""), "Kestovar.Test");
}

TEST_F(LaunchTest, TheRegistryComesBeforeWinIni)
{
    const RegisteredExtension registered(ForClass(OpenWith(Application)));
    const ProfileExtension entry("kvq", Files.PathOf("gone.exe"));
    const std::string path = Write("one.kvq", "text");
    EXPECT_EQ(TypeOf(path), "A file for the tests");
    EXPECT_EQ(Launch(path).Program, Application);
}

TEST_F(LaunchTest, TheFileListTellsWhatItsFilesAre)
{
    const RegisteredExtension registered(ForClass(OpenWith(Application)));
    const std::string path = Write("one.kvq", "text");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().DropFiles(program.Frame(), {path, Write("two.kvq", "text")});
    ASSERT_TRUE(WaitForFile(program, "one.kvq", "[File 1 of 2]"));
    const HWND dialog = ShowSelectList(program);
    ASSERT_NE(dialog, nullptr);
    PressControl(dialog, IDC_SELECT_DETAILS);
    EXPECT_TRUE(WaitUntil([&] { return ControlText(dialog, IDC_SELECT_TYPE) == "A file for the tests"; }))
        << ControlText(dialog, IDC_SELECT_TYPE);
    PressControl(dialog, IDCANCEL);
    EXPECT_TRUE(WaitUntilClosed(dialog));
}

TEST_F(LaunchTest, TheMenuLaunchesByItsLetters)
{
    const std::string path = Write("one.kvq", "text");
    Launches launches;
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    ASSERT_TRUE(OpenMenu(program, 'F'));
    PressKeys({'L'});
    EXPECT_EQ(launches.Wait().CommandLine, Editor + " " + path);
    WaitUntilDone(program);
}

TEST_F(LaunchTest, ALaunchLeavesTheWindowAndTheFileAsTheyAre)
{
    const std::string path = WriteManyLines();
    Launches launches(Launches::Kind::Stay);
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    SetTop(program, 100);
    EXPECT_EQ(Launch(program, launches).File, "held");
    EXPECT_FALSE(IsIconic(program.Frame()));
    EXPECT_EQ(program.TopText(), "Line 101");
    ExpectManyLines(program);
}

TEST_F(LaunchTest, ALaunchMinimisesTheWindowOnDemand)
{
    UseSettings("MinOnLaunch=1\n");
    const RegisteredExtension registered({"kvr", "Kestovar.Other", "Another", OpenWith(Application)});
    for (const std::string& path : {Write("one.kvq", "text"), Write("one.kvr", "text"), Application}) {
        Launches launches;
        Program program;
        Show(program, path);
        Launch(program, launches);
        EXPECT_TRUE(WaitUntilMinimised(program)) << path;
        Restore(program);
        EXPECT_TRUE(WaitUntilRestored(program)) << path;
        EXPECT_TRUE(program.Answers());
        EXPECT_FALSE(program.ShowsBox()) << path;
        EXPECT_EQ(IsFree(path), path != Application) << "a file of one block is held whole";
        EXPECT_EQ(program.Title(), "Kestovar-" + NameOf(path));
    }
}

TEST_F(LaunchTest, WhatIsLaunchedFromAnIconHasTheFileForItself)
{
    UseSettings("MinOnLaunch=1\n");
    const RegisteredExtension registered({"kvr", "Kestovar.Other", "Another", OpenWith(Application)});
    const std::string text = NumberedLines(ManyLines);
    for (const std::string& path : {Write("many.kvq", text), Write("many.kvr", text)}) {
        Launches launches(Launches::Kind::Stay);
        Program program(path);
        ASSERT_TRUE(program.WaitForFrame());
        SetTop(program, 100);
        EXPECT_EQ(Launch(program, launches).File, "free") << path;
        EXPECT_TRUE(WaitUntilMinimised(program));
        EXPECT_TRUE(IsFree(path));
        Restore(program);
        EXPECT_TRUE(WaitUntilRestored(program));
        EXPECT_TRUE(program.Answers());
        EXPECT_FALSE(program.ShowsBox());
        EXPECT_FALSE(IsFree(path)); // read from again
        EXPECT_EQ(program.TopText(), "Line 101");
        ExpectManyLines(program);
    }
}

TEST_F(LaunchTest, AFileThatWhatWasLaunchedChangedIsOpenedAnew)
{
    UseSettings("MinOnLaunch=1\n");
    const std::string path = WriteManyLines();
    SetFileAge(path, 3600);
    Launches launches(Launches::Kind::Stay);
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    SetTop(program, 100);
    Launch(program, launches, IDM_EDIT_FILE);
    ASSERT_TRUE(WaitUntilMinimised(program));
    // As editors do: the old file goes, another takes its name.
    ASSERT_TRUE(DeleteFileA(path.c_str()));
    Write("many.kvq", "edited\r\n" + NumberedLines(ManyLines));
    SetFileAge(path, 60);
    Restore(program);
    EXPECT_EQ(program.AnswerBox(), Changed);
    EXPECT_TRUE(WaitUntilRestored(program));
    EXPECT_TRUE(program.WaitForTitle("many.kvq"));
    EXPECT_EQ(program.TopText(), "edited");
    EXPECT_EQ(LastText(program), "Line " + std::to_string(ManyLines));
}

TEST_F(LaunchTest, AFileOfOneBlockThatWhatWasLaunchedChangedIsOpenedAnew)
{
    UseSettings("MinOnLaunch=1\n");
    const std::string path = Write("one.kvq", "before");
    SetFileAge(path, 3600);
    Launches launches;
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    Launch(program, launches);
    ASSERT_TRUE(WaitUntilMinimised(program));
    Write("one.kvq", "after");
    SetFileAge(path, 60);
    Restore(program);
    EXPECT_EQ(program.AnswerBox(), Changed);
    EXPECT_TRUE(WaitUntilRestored(program));
    EXPECT_TRUE(program.WaitForTitle("one.kvq"));
    EXPECT_EQ(program.TopText(), "after");
}

TEST_F(LaunchTest, AFileThatWhatWasLaunchedDeletedIsReportedAndClosed)
{
    UseSettings("MinOnLaunch=1\n");
    const std::string path = WriteManyLines();
    Launches launches(Launches::Kind::Stay);
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    Launch(program, launches);
    ASSERT_TRUE(WaitUntilMinimised(program));
    ASSERT_TRUE(DeleteFileA(path.c_str()));
    Restore(program);
    EXPECT_EQ(program.AnswerBox(), Lost);
    EXPECT_TRUE(WaitUntilRestored(program));
    EXPECT_TRUE(program.WaitForTitle(""));
    EXPECT_TRUE(program.Menu(IDM_FILE_LAUNCH).Greyed);
    EXPECT_TRUE(program.Menu(IDM_EDIT_FILE).Greyed);
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(LaunchTest, TheFileListOutlastsALaunch)
{
    UseSettings("MinOnLaunch=1\n");
    Launches launches(Launches::Kind::Stay);
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const std::string last = Write("c.kvq", NumberedLines(ManyLines));
    program.Inside().DropFiles(program.Frame(), {Write("a.kvq", "a"), Write("b.kvq", "b"), last});
    ASSERT_TRUE(WaitForFile(program, "a.kvq", "[File 1 of 3]"));
    program.Command(IDM_FILE_NEXT);
    program.Command(IDM_FILE_NEXT);
    ASSERT_TRUE(WaitForFile(program, "c.kvq", "[File 3 of 3]"));
    EXPECT_EQ(Launch(program, launches).File, "free");
    ASSERT_TRUE(WaitUntilMinimised(program));
    Restore(program);
    EXPECT_TRUE(WaitUntilRestored(program));
    EXPECT_TRUE(WaitForFile(program, "c.kvq", "[File 3 of 3]"));
    ExpectManyLines(program);
    program.Command(IDM_FILE_PREVIOUS);
    EXPECT_TRUE(WaitForFile(program, "b.kvq", "[File 2 of 3]"));
    EXPECT_EQ(program.TopText(), "b");
}

TEST_F(LaunchTest, ALaunchThatFailsLeavesTheWindowAndTheListThoughItWasToBeMinimised)
{
    UseEditor(Files.PathOf("gone.exe"), "MinOnLaunch=1\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const std::string last = Write("b.kvq", NumberedLines(ManyLines));
    program.Inside().DropFiles(program.Frame(), {Write("a.kvq", "a"), last});
    ASSERT_TRUE(WaitForFile(program, "a.kvq", "[File 1 of 2]"));
    program.Command(IDM_FILE_NEXT);
    ASSERT_TRUE(WaitForFile(program, "b.kvq", "[File 2 of 2]"));
    SetTop(program, 100);
    ExpectFailure(program, IDM_EDIT_FILE, EditorFailed, last);
    EXPECT_EQ(program.TopText(), "Line 101");
    EXPECT_TRUE(WaitForFile(program, "b.kvq", "[File 2 of 2]"));
    ExpectManyLines(program);
    program.Command(IDM_FILE_PREVIOUS);
    EXPECT_TRUE(WaitForFile(program, "a.kvq", "[File 1 of 2]"));
}

TEST_F(LaunchTest, AFileOfOneBlockIsLeftToOthersEvenAfterALaunchThatFails)
{
    UseEditor(Files.PathOf("gone.exe"), "MinOnLaunch=1\n");
    const std::string path = Write("one.kvq", "text");
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    ExpectFailure(program, IDM_EDIT_FILE, EditorFailed, path);
    EXPECT_TRUE(IsFree(path));
    EXPECT_EQ(program.TopText(), "text");
}
