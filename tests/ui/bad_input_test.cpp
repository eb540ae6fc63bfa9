#include "support/ui_test.h"

namespace {

class BadInputTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }
};

constexpr char CannotOpen[] = "Unable to open the file\n\n";

// Everything that a reader does with the keyboard; each key paints what it uncovers.
void ReadAround(Program& program)
{
    for (const int key : {VK_END, VK_UP, VK_PRIOR, VK_HOME, VK_NEXT, VK_DOWN, VK_RIGHT, VK_LEFT, VK_END}) {
        Key(program, static_cast<WPARAM>(key));
    }
    program.ViewTexts(); // paints all of it
    EXPECT_TRUE(program.Answers());
}

void ReadAroundInBothModes(Program& program)
{
    ReadAround(program);
    program.Command(IDM_VIEW_HEX);
    ReadAround(program);
    program.Command(IDM_VIEW_TEXT);
    ReadAround(program);
    program.Command(IDM_EDIT_SELECT_ALL);
    ReadAround(program);
}

// Starts with a file that cannot be shown: the message, then an empty window.
void ExpectRefusal(const std::string& argument, const std::string& message)
{
    Program program(argument);
    EXPECT_EQ(program.AnswerBox(), message);
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.Title(), "Kestovar");
    EXPECT_TRUE(program.Menu(IDM_FILE_CLOSE).Greyed);
    EXPECT_TRUE(program.ViewTexts().empty());
    EXPECT_EQ(program.Close(), 0u);
}

void ExpectSomethingShown(Program& program)
{
    Key(program, VK_HOME);
    EXPECT_FALSE(program.ViewTexts().empty());
}

// Starts with these settings, reads a text and a binary file in both modes, and ends.
void ExpectUsable(const std::string& settings)
{
    SCOPED_TRACE(settings.substr(0, 60));
    WriteSettings(settings);
    Program program(WriteScratch("lines.txt", NumberedLines(5000) + "\ta\tb\r\n"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.Title(), "Kestovar-lines.txt");
    ReadAroundInBothModes(program);
    ExpectSomethingShown(program);
    program.Inside().Drop(program.Frame(), WriteScratch("data.bin", std::string(70000, '\x81')));
    ASSERT_TRUE(program.WaitForTitle("data.bin"));
    ReadAroundInBothModes(program);
    ExpectSomethingShown(program);
    program.Command(IDM_OPTIONS_SAVE);
    EXPECT_EQ(program.Close(), 0u);
}

} // namespace

TEST_F(BadInputTest, AMissingFileIsReported)
{
    ExpectRefusal(ScratchPath("Missing.TXT"), CannotOpen + std::string("missing.txt"));
}

TEST_F(BadInputTest, AMissingDirectoryIsReported)
{
    ExpectRefusal("Q:\\nowhere\\file.txt", CannotOpen + std::string("file.txt"));
}

TEST_F(BadInputTest, ADirectoryIsReported)
{
    const std::string path = ScratchPath("dir");
    ASSERT_TRUE(CreateDirectoryA(path.c_str(), nullptr));
    ExpectRefusal(path, CannotOpen + std::string("dir"));
    RemoveDirectoryA(path.c_str());
}

TEST_F(BadInputTest, ALockedFileIsReported)
{
    const std::string path = WriteScratch("locked.txt", "text");
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    ExpectRefusal(path, CannotOpen + std::string("locked.txt"));
    CloseHandle(file);
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.TopText(), "text");
}

TEST_F(BadInputTest, AFileOverTwoGigabytesIsReported)
{
    const std::string path = WriteSparse("huge.bin", 3LL << 30);
    ExpectRefusal(path, "Unable to obtain stats for file huge.bin");
    DeleteFileA(path.c_str());
}

TEST_F(BadInputTest, AFileJustBelowTwoGigabytesIsShown)
{
    const std::string path = WriteSparse("large.bin", 0x7FFFFFFF);
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.Title(), "Kestovar-large.bin");
    ReadAround(program);
    const std::vector<ProbeText> texts = program.ViewTexts();
    ASSERT_FALSE(texts.empty());
    EXPECT_EQ(std::string(texts.back().Text, 12), "7FFFFFF0  00");
    EXPECT_EQ(program.Close(), 0u);
    DeleteFileA(path.c_str());
}

TEST_F(BadInputTest, AFailedOpeningClosesTheFileBefore)
{
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().Drop(program.Frame(), ScratchPath("missing.txt"));
    EXPECT_EQ(program.AnswerBox(), CannotOpen + std::string("missing.txt"));
    EXPECT_TRUE(program.WaitForTitle(""));
    EXPECT_TRUE(program.Menu(IDM_FILE_CLOSE).Greyed);
    EXPECT_TRUE(program.ViewTexts().empty());
    program.Inside().Drop(program.Frame(), WriteScratch("two.txt", "text"));
    EXPECT_TRUE(program.WaitForTitle("two.txt"));
}

TEST_F(BadInputTest, ADropOfAnOverlongNameIsReported)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().Drop(program.Frame(), "C:\\" + std::string(255, 'x'));
    EXPECT_EQ(program.AnswerBox().substr(0, sizeof CannotOpen - 1), CannotOpen);
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(BadInputTest, AFileTruncatedWhileItIsShownCanBeReadOn)
{
    for (const int size : {0, 100, 45000, 60000}) {
        const std::string path = WriteScratch("changing.txt", NumberedLines(50000));
        Program program(path);
        ASSERT_TRUE(program.WaitForFrame());
        SetTop(program, 10000);
        TruncateFile(path, size);
        ReadAroundInBothModes(program);
        EXPECT_EQ(program.Close(), 0u);
    }
}

TEST_F(BadInputTest, ABinaryFileTruncatedWhileItIsShownCanBeReadOn)
{
    for (const int size : {0, 100, 45000}) {
        const std::string path = WriteScratch("changing.bin", std::string(500000, '\x02'));
        Program program(path);
        ASSERT_TRUE(program.WaitForFrame());
        TruncateFile(path, size);
        ReadAroundInBothModes(program);
        EXPECT_EQ(program.Close(), 0u);
    }
}

TEST_F(BadInputTest, AFileThatGrowsWhileItIsShownCanBeReadOn)
{
    const std::string path = WriteScratch("changing.txt", NumberedLines(50000));
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    const int max = program.Vertical().Max;
    AppendToFile(path, NumberedLines(50000));
    ReadAroundInBothModes(program);
    EXPECT_EQ(program.Vertical().Max, max); // as it was when it was opened
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(BadInputTest, AFileThatLosesItsLineEndsWhileItIsShownCanBeReadOn)
{
    const std::string text = NumberedLines(50000);
    const std::string path = WriteScratch("changing.txt", text);
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    WriteScratch("changing.txt", std::string(text.size(), 'x'));
    ReadAroundInBothModes(program);
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(BadInputTest, AFileDeletedWhileItIsShownCanBeReadOn)
{
    const std::string path = WriteScratch("gone.txt", Repeated("a line of text\r\n", 25000));
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(DeleteFileA(path.c_str())); // one block: not kept open
    ReadAroundInBothModes(program);
    EXPECT_EQ(program.TopText().substr(0, 6), "a line");
    // It cannot be opened anew.
    program.Post(WM_COMMAND, IDM_INTERNAL_REOPEN);
    EXPECT_EQ(program.AnswerBox(), CannotOpen + std::string("gone.txt"));
    EXPECT_TRUE(program.WaitForTitle(""));
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(BadInputTest, AFileReplacedByADirectoryIsReportedWhenItIsOpenedAnew)
{
    const std::string path = WriteScratch("gone.txt", "text");
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    DeleteFileA(path.c_str());
    CreateDirectoryA(path.c_str(), nullptr);
    program.Post(WM_COMMAND, IDM_INTERNAL_REOPEN);
    EXPECT_EQ(program.AnswerBox(), CannotOpen + std::string("gone.txt"));
    EXPECT_TRUE(program.WaitForTitle(""));
    RemoveDirectoryA(path.c_str());
}

TEST_F(BadInputTest, ColoursBeyondThePaletteAreUsable)
{
    ExpectUsable("Fcolour=99\nBcolour=-1\nMkFcolour=16\nMkBcolour=2147483647\nStFcolour=-2147483648\nStBcolour=99\n"
                 "RlFcolour=99\nRlBcolour=-5\nLkFcolour=1000\nLkBcolour=-1000\nRuler=1\n");
}

TEST_F(BadInputTest, AbsurdSizesAreUsable)
{
    ExpectUsable("TabSize=0\nPtabs=1\nFixedLineLen=0\nMaxTextSize=-1\nMaxLineLen=5000\n");
    ExpectUsable("TabSize=-3\nPtabs=1\nFixedLineLen=-5\nMaxTextSize=99999999\nMaxLineLen=-5000\nBuffers=-77\n");
    ExpectUsable("TabSize=99999999\nPtabs=1\nFixedLineLen=99999999\n");
}

TEST_F(BadInputTest, AbsurdFontsAreUsable)
{
    ExpectUsable("FontSize=100000\nFontWeight=-5\nFontItalic=77\nRuler=1\nFontName=" + std::string(5000, 'f') + "\n");
    ExpectUsable("FontSize=-2147483648\nHdFontSize=-2147483648\n");
    ExpectUsable("FontSize=0\nFontName=\nRuler=7\n");
}

TEST_F(BadInputTest, AbsurdWindowSizesAreUsable)
{
    for (const char* const size : {"rubbish", "1 2 3", "99999999999 99999999999", "-1 -1 -1 -1", "1024 768 1 1"}) {
        WriteSettings("WindowSize=" + std::string(size) + "\n");
        Program program(WriteScratch("lines.txt", NumberedLines(5000)));
        ASSERT_TRUE(program.WaitForFrame()) << size;
        EXPECT_EQ(program.Title(), "Kestovar-lines.txt");
        ReadAround(program);
        EXPECT_EQ(program.Close(), 0u);
    }
}

TEST_F(BadInputTest, OverlongAndRubbishTextsAreUsable)
{
    ExpectUsable("EditorName=" + std::string(5000, 'e') + "\nFilterSpec=" + std::string(5000, '|') +
                 "\nButtons=" + std::string(5000, '9') + "\nSavedFile1=" + std::string(5000, 's') + "\n");
    ExpectUsable("SavedFile9=" + std::string(5000, 't') +
                 "\nButtons=0x-1??%s%n\nShowBubbles=-9\n"
                 "LinesXXX=1\n=\n[\n]\nKestovar\nFontName\n%s%s%s=%n\n");
}

TEST_F(BadInputTest, OverlongSettingsAreCut)
{
    WriteSettings("FontName=" + std::string(5000, 'f') + "\nEditorName=" + std::string(5000, 'e') + "\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_OPTIONS_SAVE);
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_EQ(SettingValue("FontName"), std::string(31, 'f'));
    EXPECT_EQ(SettingValue("EditorName"), std::string(259, 'e'));
}

TEST_F(BadInputTest, ASettingsFileOfRandomBytesIsUsable)
{
    std::string bytes;
    unsigned value = 12345;
    for (int i = 0; i < 20000; ++i) {
        value = value * 1103515245u + 12345u;
        bytes += static_cast<char>(value >> 16);
    }
    WriteSettingsFile(bytes);
    Program program(WriteScratch("lines.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ReadAroundInBothModes(program);
    EXPECT_EQ(program.Close(), 0u);
}
