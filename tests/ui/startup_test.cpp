#include "support/ui_test.h"

namespace {

class StartupTest : public UiTest {};

constexpr char CommandLineError[] = "Error in command line construction has been ignored";

int ScreenWidth()
{
    return GetSystemMetrics(SM_CXSCREEN);
}

int ScreenHeight()
{
    return GetSystemMetrics(SM_CYSCREEN);
}

RECT DefaultPlace()
{
    return {0, 0, ScreenWidth(), ScreenHeight() - GetSystemMetrics(SM_CYICON) - 2 * GetSystemMetrics(SM_CYCAPTION)};
}

void ExpectPlace(HWND window, const RECT& expected)
{
    RECT place = {};
    GetWindowRect(window, &place);
    EXPECT_EQ(place.left, expected.left);
    EXPECT_EQ(place.top, expected.top);
    EXPECT_EQ(place.right, expected.right);
    EXPECT_EQ(place.bottom, expected.bottom);
}

// A file of the Windows directory, which is one of those where the system looks for a bare name; removed at the
// end of the test.
class FileOfTheWindowsDirectory {
public:
    FileOfTheWindowsDirectory(const std::string& name, const std::string& content) : Path(WindowsDirectory() + name)
    {
        const HANDLE file = CreateFileA(Path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        EXPECT_NE(file, INVALID_HANDLE_VALUE) << Path << ", error " << GetLastError();
        CloseHandle(file);
        AppendToFile(Path, content);
    }
    ~FileOfTheWindowsDirectory() { DeleteFileA(Path.c_str()); }
    FileOfTheWindowsDirectory(const FileOfTheWindowsDirectory&) = delete;
    FileOfTheWindowsDirectory& operator=(const FileOfTheWindowsDirectory&) = delete;

private:
    static std::string WindowsDirectory()
    {
        char directory[MAX_PATH] = "";
        GetWindowsDirectoryA(directory, sizeof directory);
        return directory + std::string("\\");
    }

    std::string Path;
};

// Starts with a command line in error and expects the message and an empty window.
void ExpectError(const std::string& arguments)
{
    Program program(arguments);
    EXPECT_EQ(program.AnswerBox(), CommandLineError) << arguments;
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.Title(), "Kestovar") << arguments;
    EXPECT_EQ(program.Close(), 0u);
}

} // namespace

TEST_F(StartupTest, OpensAcrossTheScreenAboveARowOfIconsWhenNothingIsSaved)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ExpectPlace(program.Frame(), DefaultPlace());
    EXPECT_FALSE(IsZoomed(program.Frame()));
    EXPECT_FALSE(IsIconic(program.Frame()));
    EXPECT_EQ(program.Title(), "Kestovar");
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(StartupTest, OpensWhereItWasSaved)
{
    WriteSettings("WindowSize=60 50 640 480\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ExpectPlace(program.Frame(), {60, 50, 700, 530});
}

TEST_F(StartupTest, ClampsASavedRectangleToTheScreen)
{
    WriteSettings("WindowSize=-50 20 5000 300\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ExpectPlace(program.Frame(), {0, 20, ScreenWidth(), 320});
    EXPECT_FALSE(IsZoomed(program.Frame()));
}

TEST_F(StartupTest, OpensMaximisedWhenTheSavedRectangleIsTheScreen)
{
    WriteSettings("WindowSize=0 0 " + std::to_string(ScreenWidth()) + " " + std::to_string(ScreenHeight()) + "\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_TRUE(IsZoomed(program.Frame()));
}

TEST_F(StartupTest, AMaximisedStartIsRestoredToTheDefaultRectangle)
{
    WriteSettings("WindowSize=0 0 " + std::to_string(ScreenWidth()) + " " + std::to_string(ScreenHeight()) + "\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Post(WM_SYSCOMMAND, SC_RESTORE);
    RECT place = {};
    // The style changes before the rectangle does.
    EXPECT_TRUE(WaitUntil([&] {
        GetWindowRect(program.Frame(), &place);
        return !IsZoomed(program.Frame()) && place.left == 0;
    }));
    EXPECT_EQ(place.top, 0);
    EXPECT_EQ(place.right, ScreenWidth());
    EXPECT_LT(place.bottom, ScreenHeight());
}

TEST_F(StartupTest, AParentThatAsksForAnIconGetsOneWhateverRectangleIsSaved)
{
    WriteSettings("WindowSize=0 0 " + std::to_string(ScreenWidth()) + " " + std::to_string(ScreenHeight()) + "\n");
    Program program("", SW_SHOWMINIMIZED);
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_TRUE(IsIconic(program.Frame()));
}

TEST_F(StartupTest, TheShowCommandCountsWhetherOrNotItIsMarkedAsGiven)
{
    Program program("", SW_SHOWMAXIMIZED, 0);
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_TRUE(IsZoomed(program.Frame()));
}

TEST_F(StartupTest, AParentThatSaysNothingGetsAWindow)
{
    Program program("", SW_HIDE, 0);
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_TRUE(IsWindowVisible(program.Frame()));
}

TEST_F(StartupTest, ShowsTheDefaultRectangleWhenFourZerosWereSaved)
{
    WriteSettings("WindowSize=0 0 0 0\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_FALSE(IsZoomed(program.Frame()));
    WINDOWPLACEMENT placement = {};
    placement.length = sizeof placement;
    ASSERT_TRUE(GetWindowPlacement(program.Frame(), &placement));
    const RECT restored = DefaultPlace();
    EXPECT_EQ(placement.rcNormalPosition.left, restored.left);
    EXPECT_EQ(placement.rcNormalPosition.right, restored.right);
    EXPECT_EQ(placement.rcNormalPosition.bottom, restored.bottom);
    ExpectPlace(program.Frame(), restored);
}

TEST_F(StartupTest, StartsMinimisedWhenTheParentAsksForIt)
{
    Program program(WriteScratch("one.txt", "text"), SW_SHOWMINNOACTIVE);
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_TRUE(IsIconic(program.Frame()));
    EXPECT_EQ(program.Title(), "Kestovar-one.txt");
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(StartupTest, IgnoresTheRectangleOfTheCommandLineWhileThereIsASection)
{
    Program program("-100 100 300 200");
    ASSERT_TRUE(program.WaitForFrame());
    ExpectPlace(program.Frame(), DefaultPlace());
}

TEST_F(StartupTest, OpensTheNamedFile)
{
    Program program(WriteScratch("Named.TXT", "first line\r\nsecond line\r\n"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.Title(), "Kestovar-named.txt");
    EXPECT_EQ(program.TopText(), "first line");
}

TEST_F(StartupTest, OpensTheSecondOfTwoNames)
{
    const std::string first = WriteScratch("first.txt", "first");
    const std::string second = WriteScratch("second.txt", "second");
    Program program(first + " " + second);
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.Title(), "Kestovar-second.txt");
    EXPECT_EQ(program.TopText(), "second");
}

TEST_F(StartupTest, ANameWithoutADirectoryIsFoundWhereTheSystemLooksForFiles)
{
    const FileOfTheWindowsDirectory file("kvsearch.txt", "found");
    Program program("kvsearch.txt");
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.Title(), "Kestovar-kvsearch.txt");
    EXPECT_EQ(program.TopText(), "found");
}

TEST_F(StartupTest, ReadsTheSectionThatIsNamed)
{
    WriteSettingsFile("[Kestovar]\nWindowSize=10 10 500 400\n[abcdefghijklmnopqrs]\nWindowSize=30 40 600 300\n");
    Program program("-Iabcdefghijklmnopqrs"); // 19 characters: the longest name
    ASSERT_TRUE(program.WaitForFrame());
    ExpectPlace(program.Frame(), {30, 40, 630, 340});
}

TEST_F(StartupTest, ASectionNameOfTwentyCharactersIsAnError)
{
    ExpectError("-Iabcdefghijklmnopqrst " + WriteScratch("one.txt", "text"));
}

TEST_F(StartupTest, AnErrorDropsAFileNamedBeforeIt)
{
    ExpectError(WriteScratch("one.txt", "text") + " -Iabcdefghijklmnopqrst");
}

TEST_F(StartupTest, AnErrorLeavesTheSettingsOfTheSectionAside)
{
    WriteSettings("WindowSize=10 10 500 400\n");
    Program program("-L 3 5");
    EXPECT_EQ(program.AnswerBox(), CommandLineError);
    ASSERT_TRUE(program.WaitForFrame());
    ExpectPlace(program.Frame(), DefaultPlace());
}

TEST_F(StartupTest, ALockOfTooFewNumbersIsAnError)
{
    ExpectError(WriteScratch("one.txt", "text") + " -L 3 5");
}

TEST_F(StartupTest, ALockWithLettersJoinedIsAnError)
{
    ExpectError("-Lx 3 5 2 4 " + WriteScratch("one.txt", "text"));
}

TEST_F(StartupTest, ARectangleOfTooFewNumbersIsAnError)
{
    ExpectError(WriteScratch("one.txt", "text") + " -10 20 300");
}

TEST_F(StartupTest, ADashAtTheEndIsAnError)
{
    ExpectError(WriteScratch("one.txt", "text") + " -");
}

TEST_F(StartupTest, LocksTheRowsAndColumnsOfTheCommandLine)
{
    WriteSettings(FixedFont);
    std::string lines;
    for (int i = 1; i <= 200; ++i) {
        lines += "ab" + std::to_string(1000 + i) +
                 "efghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuv"
                 "wxyzabcdefghijklmnopqrstuvwxyz\r\n";
    }
    Program program("-L 3 5 2 4 " + WriteScratch("lock.txt", lines));
    ASSERT_TRUE(program.WaitForFrame());
    // Columns 3 and 4, lines 5 to 8; the view scrolls no further back than the headings' first line.
    EXPECT_EQ(program.Vertical().Min, 4);
    EXPECT_EQ(program.Horizontal().Min, 2);
    EXPECT_EQ(program.Top(), 4);
    SetTop(program, 100);
    EXPECT_EQ(program.Top(), 100);
    const std::vector<ProbeText> texts = program.ViewTexts();
    ASSERT_GT(texts.size(), 12u);
    const char* const headings[] = {"10", "10", "10", "10"};
    for (int row = 0; row < 4; ++row) {
        const ProbeText& locked = texts[static_cast<std::size_t>(2 * row)];
        const ProbeText& scrolled = texts[static_cast<std::size_t>(2 * row) + 1];
        EXPECT_STREQ(locked.Text, headings[row]);
        EXPECT_EQ(locked.Length, 2);
        EXPECT_EQ(std::string(scrolled.Text, 4), "0" + std::to_string(row + 5) + "ef");
        EXPECT_EQ(locked.Background, RGB(0, 0, 128));
        EXPECT_EQ(scrolled.Background, RGB(0, 0, 128));
        EXPECT_EQ(locked.Y, row * CellHeight());
    }
    // The first row below the headings: only its locked columns are coloured as such.
    EXPECT_EQ(texts[8].Background, RGB(0, 0, 128));
    EXPECT_EQ(texts[9].Background, RGB(0, 0, 255));
    EXPECT_EQ(std::string(texts[9].Text, 4), "05ef"); // line 105 = top line 100 + row 4 + 1
    Key(program, VK_HOME);
    EXPECT_EQ(program.Top(), 4);
    Key(program, VK_UP);
    EXPECT_EQ(program.Top(), 4);
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(StartupTest, TheLockOfTheCommandLineHoldsForTheFirstFileOnly)
{
    WriteSettings(FixedFont);
    Program program("-L 1 5 0 2 " + WriteScratch("lock.txt", NumberedLines(200)));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.Vertical().Min, 4);
    program.Inside().Drop(program.Frame(), WriteScratch("other.txt", NumberedLines(200)));
    ASSERT_TRUE(program.WaitForTitle("other.txt"));
    EXPECT_EQ(program.Vertical().Min, 0);
    EXPECT_EQ(program.Top(), 0);
}

TEST_F(StartupTest, PrintAndExitEndsTheProgramWhenTheFileCannotBeOpened)
{
    Program program("-P " + ScratchPath("missing.txt"));
    EXPECT_EQ(program.AnswerBox(), "Unable to open the file\n\nmissing.txt");
    EXPECT_EQ(program.WaitForExit(), 0u);
}

TEST_F(StartupTest, PrintAndExitReportsAWildcardOfNothingBeforeItEnds)
{
    Program program("-P " + ScratchPath("*.none"));
    EXPECT_EQ(program.AnswerBox(), "No files were found that matched the command line file spec");
    EXPECT_EQ(program.WaitForExit(), 0u);
}

TEST_F(StartupTest, PrintAndExitWithoutAFileEndsTheProgram)
{
    Program program("-P");
    EXPECT_EQ(program.WaitForExit(), 0u);
}

TEST_F(StartupTest, PrintAndExitReportsAnErrorInTheCommandLineBeforeItEnds)
{
    Program program("-P -Lx");
    EXPECT_EQ(program.AnswerBox(), "Error in command line construction has been ignored");
    EXPECT_EQ(program.WaitForExit(), 0u);
}

TEST_F(StartupTest, ADashStandingAloneTakesTheNextTokenAsTheSwitch)
{
    Program program("- P " + ScratchPath("missing.txt"));
    EXPECT_EQ(program.AnswerBox(), "Unable to open the file\n\nmissing.txt");
    EXPECT_EQ(program.WaitForExit(), 0u);
}

TEST_F(StartupTest, IgnoresWhatLiesBeyond259CharactersOfTheCommandLine)
{
    const std::string first = WriteScratch("first.txt", "first");
    const std::string second = WriteScratch("second.txt", "second");
    Program program(first + std::string(300, ' ') + second);
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.Title(), "Kestovar-first.txt");
}

TEST_F(StartupTest, SurvivesACommandLineOfThousandsOfCharacters)
{
    Program program(std::string(6000, 'a'));
    const std::string text = program.AnswerBox();
    EXPECT_EQ(text.substr(0, 25), "Unable to open the file\n\n");
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.Title(), "Kestovar");
    EXPECT_EQ(program.Close(), 0u);
}
