#include "support/dialogs.h"
#include "support/input.h"
#include "support/ui_test.h"
#include "support/windows_path.h"

namespace {

class HandOverTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }
    void TearDown() override
    {
        UiTest::TearDown();
        for (const std::string& path : Written) {
            DeleteFileA(path.c_str());
        }
    }

    // A file that is there for this test only.
    std::string Write(const std::string& name, const std::string& content)
    {
        Written.push_back(WriteScratch(name, content));
        return Written.back();
    }

private:
    std::vector<std::string> Written;
};

std::string Quoted(const std::string& name)
{
    return " \"" + name + "\"";
}

// A process that hands over; the arguments are those of the sender.
class Sender {
public:
    explicit Sender(const std::string& arguments)
    {
        SECURITY_ATTRIBUTES inherited = {};
        inherited.nLength = sizeof inherited;
        inherited.bInheritHandle = TRUE;
        EXPECT_TRUE(CreatePipe(&Output, &OutputEnd, &inherited, 0));
        const std::string path = WindowsPath(KESTOVAR_HAND_OVER_SENDER);
        std::string commandLine = "\"" + path + "\" " + arguments;
        STARTUPINFOA startup = {};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdOutput = OutputEnd;
        startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
        EXPECT_TRUE(CreateProcessA(path.c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                   &startup, &Process))
            << path << ", error " << GetLastError();
        CloseHandle(OutputEnd);
    }
    ~Sender()
    {
        if (!HasEnded()) {
            TerminateProcess(Process.hProcess, 1);
            WaitForSingleObject(Process.hProcess, DefaultWaitLimit);
        }
        CloseHandle(Output);
        CloseHandle(Process.hThread);
        CloseHandle(Process.hProcess);
    }
    Sender(const Sender&) = delete;
    Sender& operator=(const Sender&) = delete;

    bool HasEnded() const { return WaitForSingleObject(Process.hProcess, 0) == WAIT_OBJECT_0; }

    // What it says in the end; the test fails when it does not come to one.
    std::string Answer() const
    {
        if (WaitForSingleObject(Process.hProcess, DefaultWaitLimit) != WAIT_OBJECT_0) {
            ADD_FAILURE() << "the sender gets no answer";
            return "(none)";
        }
        char text[200] = "";
        DWORD length = 0;
        ReadFile(Output, text, sizeof text - 1, &length, nullptr);
        return text;
    }

private:
    PROCESS_INFORMATION Process = {};
    HANDLE Output = nullptr;
    HANDLE OutputEnd = nullptr;
};

std::string HandOver(const std::string& arguments)
{
    return Sender(arguments).Answer();
}

void ExpectNoList(Program& program)
{
    EXPECT_TRUE(program.Menu(IDM_FILE_NEXT).Greyed);
    EXPECT_TRUE(program.Menu(IDM_FILE_PREVIOUS).Greyed);
    EXPECT_EQ(program.StatusText(), "Line 1 Col 1  100%");
}

// The first of count files stands in the window, and the others follow.
void ExpectList(Program& program, int count)
{
    EXPECT_FALSE(program.Menu(IDM_FILE_NEXT).Greyed);
    EXPECT_TRUE(program.Menu(IDM_FILE_PREVIOUS).Greyed);
    EXPECT_EQ(program.StatusText(), "Line 1 Col 1  100%  [File 1 of " + std::to_string(count) + "]");
}

// Opens the next file of the list and expects its text.
void ExpectNext(Program& program, const std::string& text)
{
    program.Command(IDM_FILE_NEXT);
    EXPECT_EQ(program.TopText(), text);
}

void Minimise(const Program& program)
{
    program.Post(WM_SYSCOMMAND, SC_MINIMIZE);
    EXPECT_TRUE(WaitUntil([&] { return IsIconic(program.Frame()) != FALSE; }));
}

// A window of the tests' own, of no use but to be in front.
class OtherWindow {
public:
    OtherWindow()
        : Window(CreateWindowA("STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr, nullptr, nullptr, nullptr))
    {
    }
    ~OtherWindow() { DestroyWindow(Window); }
    OtherWindow(const OtherWindow&) = delete;
    OtherWindow& operator=(const OtherWindow&) = delete;
    HWND Handle() const { return Window; }

private:
    HWND Window;
};

} // namespace

TEST_F(HandOverTest, OneFileIsOpenedWithoutAList)
{
    Program program(Write("before.txt", "before"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(HandOver(Quoted(Write("Handed.TXT", "handed over"))), "1 sent, answered 0, ended 0");
    EXPECT_EQ(program.Title(), "Kestovar-handed.txt");
    EXPECT_EQ(program.TopText(), "handed over");
    ExpectNoList(program);
}

TEST_F(HandOverTest, ThreeFilesMakeAListOfWhichTheFirstIsShown)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const std::string arguments =
        Quoted(Write("one.txt", "first")) + Quoted(Write("two.txt", "second")) + Quoted(Write("three.txt", "third"));
    EXPECT_EQ(HandOver(arguments), "3 sent, answered 0, ended 0");
    EXPECT_EQ(program.Title(), "Kestovar-one.txt");
    EXPECT_EQ(program.TopText(), "first");
    ExpectList(program, 3);
    ExpectNext(program, "second");
    EXPECT_EQ(program.StatusText(), "Line 1 Col 1  100%  [File 2 of 3]");
    ExpectNext(program, "third");
    EXPECT_TRUE(program.Menu(IDM_FILE_NEXT).Greyed);
    EXPECT_FALSE(program.Menu(IDM_FILE_PREVIOUS).Greyed);
}

TEST_F(HandOverTest, AWildcardIsReplacedByWhatMatches)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    Write("wild1.kvt", "a match");
    Write("wild2.kvt", "a match");
    Write("wild3.kvt", "a match");
    EXPECT_EQ(HandOver(Quoted(ScratchPath("wild?.kvt"))), "1 sent, answered 0, ended 0");
    EXPECT_EQ(program.TopText(), "a match");
    ExpectList(program, 3);
}

TEST_F(HandOverTest, AWildcardThatOneFileMatchesMakesNoList)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    Write("wild1.kvt", "the match");
    HandOver(Quoted(ScratchPath("*.kvt")));
    EXPECT_EQ(program.Title(), "Kestovar-wild1.kvt");
    ExpectNoList(program);
}

TEST_F(HandOverTest, AWildcardThatNothingMatchesIsReported)
{
    Program program(Write("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    const Sender sender(Quoted(ScratchPath("*.kvt")));
    EXPECT_EQ(program.AnswerBox(), "No files were found that matched the command line file spec");
    EXPECT_EQ(sender.Answer(), "1 sent, answered 0, ended 0");
    ExpectNoList(program);
}

TEST_F(HandOverTest, NamesAndWildcardsMakeOneListInTheirOrder)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    Write("wild1.kvt", "a match");
    Write("wild2.kvt", "a match");
    const std::string arguments =
        Quoted(Write("one.txt", "first")) + Quoted(ScratchPath("wild*.kvt")) + Quoted(Write("two.txt", "last"));
    EXPECT_EQ(HandOver(arguments), "3 sent, answered 0, ended 0");
    EXPECT_EQ(program.TopText(), "first");
    ExpectList(program, 4);
    ExpectNext(program, "a match");
    ExpectNext(program, "a match");
    ExpectNext(program, "last");
}

TEST_F(HandOverTest, AListTakes2000FilesAndTellsTheSenderToStop)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    std::string names = Write("n0.txt", "first") + "\n";
    for (int i = 1; i < 2100; ++i) {
        names += ScratchPath("n" + std::to_string(i) + ".txt") + "\n";
    }
    const Sender sender(Quoted("@" + Write("names.lst", names)));
    EXPECT_EQ(program.AnswerBox(), "Too many files/directories or insufficient storage\nList has been truncated");
    EXPECT_EQ(sender.Answer(), "2000 sent, answered 1, ended 0");
    EXPECT_EQ(program.Title(), "Kestovar-n0.txt");
    ExpectList(program, 2000);
}

TEST_F(HandOverTest, AListIsReplacedByWhatIsHandedOver)
{
    Write("walk1.kvt", "walked");
    Write("walk2.kvt", "walked");
    Write("walk3.kvt", "walked");
    Program program(ScratchPath("walk*.kvt"));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectList(program, 3);
    ExpectNext(program, "walked");
    HandOver(Quoted(Write("one.txt", "first")) + Quoted(Write("two.txt", "second")));
    EXPECT_EQ(program.TopText(), "first");
    ExpectList(program, 2);
    HandOver(Quoted(Write("three.txt", "third")));
    EXPECT_EQ(program.TopText(), "third");
    ExpectNoList(program);
}

TEST_F(HandOverTest, ASecondBatchIsRefusedWhileOneIsReceived)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(HandOver("--no-end" + Quoted(Write("one.txt", "first"))), "1 sent, answered 0");
    EXPECT_EQ(program.Title(), "Kestovar"); // nothing is opened before the end
    EXPECT_EQ(HandOver("--no-end" + Quoted(Write("other.txt", "refused"))), "1 sent, answered 1");
    EXPECT_EQ(HandOver("--continue" + Quoted(Write("two.txt", "second"))), "1 sent, answered 0, ended 0");
    EXPECT_EQ(program.TopText(), "first");
    ExpectList(program, 2);
    ExpectNext(program, "second");
    // The next batch is welcome again.
    EXPECT_EQ(HandOver(Quoted(ScratchPath("other.txt"))), "1 sent, answered 0, ended 0");
    EXPECT_EQ(program.TopText(), "refused");
}

TEST_F(HandOverTest, ABatchIsRefusedWhileTheOneBeforeIsOpened)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const Sender sender(Quoted(ScratchPath("gone.txt")));
    ASSERT_TRUE(WaitUntil([&] { return program.ShowsBox(); }));
    EXPECT_EQ(HandOver("--no-end" + Quoted(Write("other.txt", "refused"))), "1 sent, answered 1");
    EXPECT_EQ(program.AnswerBox(), "Unable to open the file\n\ngone.txt");
    EXPECT_EQ(sender.Answer(), "1 sent, answered 0, ended 0");
    EXPECT_EQ(HandOver(Quoted(ScratchPath("other.txt"))), "1 sent, answered 0, ended 0");
    EXPECT_EQ(program.TopText(), "refused");
}

TEST_F(HandOverTest, AnEndWithoutABeginningOpensNothing)
{
    Program program(Write("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(HandOver("--no-mapping"), "0 sent, answered 0, ended 0");
    EXPECT_EQ(program.Title(), "Kestovar-one.txt");
    EXPECT_FALSE(program.ShowsBox());
    ExpectNoList(program);
}

TEST_F(HandOverTest, AContinuationWithoutABeginningIsRefused)
{
    Program program(Write("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(HandOver("--continue" + Quoted(Write("two.txt", "stray"))), "1 sent, answered 1, ended 0");
    EXPECT_EQ(program.Title(), "Kestovar-one.txt");
    ExpectNoList(program);
    EXPECT_EQ(HandOver(Quoted(ScratchPath("two.txt"))), "1 sent, answered 0, ended 0");
    EXPECT_EQ(program.Title(), "Kestovar-two.txt");
    ExpectNoList(program);
}

TEST_F(HandOverTest, AFileIsTakenWhileADialogIsOpen)
{
    Program program(Write("one.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    program.Post(WM_COMMAND, IDM_SEARCH_GOTO);
    const HWND dialog = WaitForDialog(program, "Goto");
    ASSERT_NE(dialog, nullptr);
    HandOver(Quoted(Write("two.txt", NumberedLines(300))));
    EXPECT_EQ(program.Title(), "Kestovar-two.txt");
    SetControlText(dialog, IDC_GOTO_TEXT, "30");
    PressControl(dialog, IDOK);
    WaitUntilClosed(dialog);
    EXPECT_TRUE(WaitUntil([&] { return program.Top() == 29; }));
    EXPECT_EQ(program.TopText(), "Line 30");
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(HandOverTest, AFileEndsTheChoiceOfHeadings)
{
    Program program(Write("one.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    const auto holdsTheMouse = [&] {
        GUITHREADINFO info = {};
        info.cbSize = sizeof info;
        GetGUIThreadInfo(GetWindowThreadProcessId(program.Frame(), nullptr), &info);
        return info.hwndCapture == program.View();
    };
    program.Post(WM_COMMAND, IDM_VIEW_LOCK);
    ASSERT_TRUE(WaitUntil(holdsTheMouse));
    EXPECT_EQ(HandOver(Quoted(Write("two.txt", NumberedLines(300)))), "1 sent, answered 0, ended 0");
    EXPECT_TRUE(WaitUntil([&] { return !holdsTheMouse(); }));
    EXPECT_EQ(program.Title(), "Kestovar-two.txt");
    SetTop(program, 100);
    EXPECT_EQ(program.TopText(), "Line 101"); // nothing is locked
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(HandOverTest, ASenderWithoutSharedMemoryIsReported)
{
    const std::string path = Write("one.txt", "text");
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    const Sender sender("--no-mapping" + Quoted(path));
    EXPECT_EQ(program.AnswerBox(), "Unable to open shared memory");
    EXPECT_EQ(sender.Answer(), "1 sent, answered 1, ended 0");
    EXPECT_EQ(program.Title(), "Kestovar-one.txt");
    EXPECT_EQ(HandOver(Quoted(Write("two.txt", "handed over"))), "1 sent, answered 0, ended 0");
    EXPECT_EQ(program.TopText(), "handed over");
}

TEST_F(HandOverTest, ANameMayFillTheSharedMemoryToItsEnd)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const std::string path = Write("one.txt", "handed over");
    const std::string size = "--size " + std::to_string(path.size() + 1);
    EXPECT_EQ(HandOver(size + Quoted(path)), "1 sent, answered 0, ended 0");
    EXPECT_EQ(program.TopText(), "handed over");
}

TEST_F(HandOverTest, SharedMemoryWithoutATerminatorIsNoName)
{
    for (const char* const size : {"--size 260", "--size 4096", "--size 65536"}) {
        SCOPED_TRACE(size);
        Program program;
        ASSERT_TRUE(program.WaitForFrame());
        const Sender sender(std::string(size) + " --unterminated C:\\");
        EXPECT_EQ(program.AnswerBox(), "No files were found that matched the command line file spec");
        EXPECT_EQ(sender.Answer(), "1 sent, answered 0, ended 0");
        EXPECT_EQ(program.Title(), "Kestovar");
        EXPECT_EQ(HandOver(Quoted(Write("one.txt", "handed over"))), "1 sent, answered 0, ended 0");
        EXPECT_EQ(program.TopText(), "handed over");
        EXPECT_EQ(program.Close(), 0u);
    }
}

TEST_F(HandOverTest, AnEmptyNameIsNone)
{
    Program program(Write("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    const Sender sender("\"\"");
    EXPECT_EQ(program.AnswerBox(), "No files were found that matched the command line file spec");
    EXPECT_EQ(sender.Answer(), "1 sent, answered 0, ended 0");
    EXPECT_EQ(program.Title(), "Kestovar-one.txt");
    ExpectNoList(program);
}

TEST_F(HandOverTest, AFileThatIsGoneIsReported)
{
    Program program(Write("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    const Sender sender(Quoted(ScratchPath("Gone.TXT")));
    EXPECT_EQ(program.AnswerBox(), "Unable to open the file\n\ngone.txt");
    EXPECT_EQ(sender.Answer(), "1 sent, answered 0, ended 0");
    EXPECT_EQ(program.Title(), "Kestovar");
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(HandOverTest, AListCanBeWalkedThoughItsFirstFileIsGone)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const Sender sender(Quoted(ScratchPath("gone.txt")) + Quoted(Write("two.txt", "second")));
    EXPECT_EQ(program.AnswerBox(), "Unable to open the file\n\ngone.txt");
    EXPECT_EQ(sender.Answer(), "2 sent, answered 0, ended 0");
    ExpectNext(program, "second");
    EXPECT_EQ(program.StatusText(), "Line 1 Col 1  100%  [File 2 of 2]");
}

TEST_F(HandOverTest, AFileBringsTheWindowBackFromItsIcon)
{
    Program program(Write("before.txt", NumberedLines(5000)));
    ASSERT_TRUE(program.WaitForFrame());
    Minimise(program);
    HandOver(Quoted(Write("one.txt", "handed over")));
    EXPECT_TRUE(WaitUntil([&] { return !IsIconic(program.Frame()); }));
    EXPECT_EQ(program.Title(), "Kestovar-one.txt");
    EXPECT_EQ(program.TopText(), "handed over");
    EXPECT_FALSE(program.ShowsBox());
}

TEST_F(HandOverTest, AnIconStaysOneWhenTheFileCannotBeOpened)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    Minimise(program);
    const Sender sender(Quoted(ScratchPath("gone.txt")));
    EXPECT_EQ(program.AnswerBox(), "Unable to open the file\n\ngone.txt");
    EXPECT_EQ(sender.Answer(), "1 sent, answered 0, ended 0");
    EXPECT_TRUE(program.Answers());
    EXPECT_TRUE(IsIconic(program.Frame()));
}

TEST_F(HandOverTest, TheProgramComesToTheForeground)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const OtherWindow other;
    ASSERT_TRUE(BringToForeground(other.Handle()));
    HandOver(Quoted(Write("one.txt", "handed over")));
    EXPECT_TRUE(WaitUntil([&] { return GetForegroundWindow() == program.Frame(); }));
}

TEST_F(HandOverTest, NamesWithBlanksAndLettersBeyondAsciiAreOpened)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const std::string arguments =
        Quoted(Write("with two blanks.txt", "first")) + Quoted(Write("H\xFCll\xE9.txt", "second"));
    EXPECT_EQ(HandOver(arguments), "2 sent, answered 0, ended 0");
    EXPECT_EQ(program.Title(), "Kestovar-with two blanks.txt");
    EXPECT_EQ(program.TopText(), "first");
    ExpectNext(program, "second");
    EXPECT_EQ(program.Title(), "Kestovar-h\xFCll\xE9.txt");
}

TEST_F(HandOverTest, ANameWithoutADirectoryIsOfTheProgramsOwn)
{
    Write("one.txt", "first");
    Write("two.txt", "second");
    char before[MAX_PATH] = "";
    GetCurrentDirectoryA(sizeof before, before);
    SetCurrentDirectoryA(ScratchPath("").c_str());
    Program program;
    SetCurrentDirectoryA(before);
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(HandOver(Quoted("one.txt") + Quoted("..\\kvtest\\two.txt")), "2 sent, answered 0, ended 0");
    EXPECT_EQ(program.TopText(), "first");
    ExpectList(program, 2);
    ExpectNext(program, "second");
}
