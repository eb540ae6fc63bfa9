#include "support/input.h"
#include "support/ui_test.h"

namespace {

class FrameTest : public UiTest {
protected:
    void TearDown() override
    {
        UiTest::TearDown();
        DeleteFileA(ScratchPath("kept.txt").c_str());
        DeleteFileA(ScratchPath("moved.txt").c_str());
    }
};

// More than a block, so that the program keeps the file open.
std::string WriteLargeFile()
{
    return WriteScratch("kept.txt", NumberedLines(5000));
}

void Minimise(const Program& program)
{
    program.Post(WM_SYSCOMMAND, SC_MINIMIZE);
    EXPECT_TRUE(WaitUntil([&] { return IsIconic(program.Frame()) != FALSE; }));
}

void Restore(const Program& program)
{
    program.Post(WM_SYSCOMMAND, SC_RESTORE);
}

bool WaitUntilRestored(const Program& program)
{
    return WaitUntil([&] { return !IsIconic(program.Frame()); });
}

bool CanBeMovedAway(const std::string& path)
{
    const std::string other = ScratchPath("moved.txt");
    return MoveFileA(path.c_str(), other.c_str()) && MoveFileA(other.c_str(), path.c_str());
}

int HeightOfStatusLine()
{
    const HDC screen = GetDC(nullptr);
    const int height = MulDiv(-10, GetDeviceCaps(screen, LOGPIXELSY), 72);
    ReleaseDC(nullptr, screen);
    const TEXTMETRICA metrics = MeasureFont("MS Sans Serif", height);
    return metrics.tmHeight + metrics.tmExternalLeading + 8 * GetSystemMetrics(SM_CYBORDER);
}

// The children fill the frame from the top: buttons, ruler, view, status line.
void ExpectLayout(const Program& program, int bar, int ruler, int status)
{
    const SIZE client = ClientSize(program.Frame());
    const auto expectPlace = [&](const char* name, HWND window, int top, int bottom) {
        const RECT place = PlaceOf(window);
        EXPECT_EQ(place.left, 0) << name;
        EXPECT_EQ(place.right, client.cx) << name;
        EXPECT_EQ(place.top, top) << name;
        EXPECT_EQ(place.bottom, bottom) << name;
    };
    expectPlace("buttons", program.Buttons(), 0, bar);
    expectPlace("ruler", program.Ruler(), bar, bar + ruler);
    expectPlace("view", program.View(), bar + ruler, client.cy - status);
    expectPlace("status line", program.Status(), client.cy - status, client.cy);
}

} // namespace

TEST_F(FrameTest, EscClosesTheFileAndIconisesTheWindow)
{
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.Menu(IDM_FILE_CLOSE).Text, "Close &File\tEsc");
    EXPECT_EQ(program.Menu(IDM_FILE_EXIT).Text, "E&xit");
    Key(program, VK_ESCAPE);
    EXPECT_TRUE(WaitUntil([&] { return IsIconic(program.Frame()) != FALSE; }));
    EXPECT_EQ(program.Title(), "Kestovar");
    EXPECT_TRUE(program.Menu(IDM_FILE_CLOSE).Greyed);
    EXPECT_EQ(program.Menu(IDM_FILE_CLOSE).Text, "Close &File\tEsc");
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(FrameTest, EscWithoutAFileLeavesTheProgramRunning)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    Key(program, VK_ESCAPE);
    EXPECT_TRUE(program.Answers());
    EXPECT_FALSE(IsIconic(program.Frame()));
    EXPECT_EQ(program.Title(), "Kestovar");
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(FrameTest, EscEndsTheProgramWhenItShallExitOnEsc)
{
    WriteSettings("ExitOnEsc=1\n");
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.Menu(IDM_FILE_CLOSE).Text, "Close &File");
    EXPECT_EQ(program.Menu(IDM_FILE_EXIT).Text, "E&xit\tEsc");
    EXPECT_FALSE(program.Menu(IDM_FILE_EXIT).Greyed);
    program.Post(WM_KEYDOWN, VK_ESCAPE);
    EXPECT_EQ(program.WaitForExit(), 0u);
}

TEST_F(FrameTest, ADroppedFileIsOpened)
{
    WriteSettings(FixedFont);
    Program program(WriteScratch("one.txt", "first file"));
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().Drop(program.Frame(), WriteScratch("Dropped.TXT", "second file"));
    ASSERT_TRUE(program.WaitForTitle("dropped.txt"));
    EXPECT_EQ(program.TopText(), "second file");
    // One file makes no list to walk.
    EXPECT_TRUE(program.Menu(IDM_FILE_NEXT).Greyed);
    EXPECT_TRUE(program.Menu(IDM_FILE_PREVIOUS).Greyed);
    EXPECT_EQ(program.StatusText(), "Line 1 Col 1  100%");
}

TEST_F(FrameTest, ADroppedFileBringsTheWindowBackFromItsIcon)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    Minimise(program);
    program.Inside().Drop(program.Frame(), WriteScratch("dropped.txt", "text"));
    EXPECT_TRUE(program.WaitForTitle("dropped.txt"));
    EXPECT_TRUE(WaitUntilRestored(program));
}

TEST_F(FrameTest, ADroppedFileWithBlanksInItsNameIsOpened)
{
    const std::string path = WriteScratch("with some blanks.txt", "text");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().Drop(program.Frame(), path);
    EXPECT_TRUE(program.WaitForTitle("with some blanks.txt"));
}

TEST_F(FrameTest, MinimisingReleasesTheFile)
{
    const std::string path = WriteLargeFile();
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_FALSE(CanBeMovedAway(path));
    Minimise(program);
    EXPECT_TRUE(WaitUntil([&] { return CanBeMovedAway(path); }));
    Restore(program);
    ASSERT_TRUE(WaitUntilRestored(program));
    EXPECT_EQ(program.Title(), "Kestovar-kept.txt");
    EXPECT_FALSE(program.ShowsBox());
    EXPECT_FALSE(CanBeMovedAway(path)); // open again
    Key(program, VK_END);
    EXPECT_EQ(program.Vertical().Position, program.Vertical().Max);
}

TEST_F(FrameTest, RestoringAfterTheFileWasDeletedReportsItAndClosesIt)
{
    const std::string path = WriteLargeFile();
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    Minimise(program);
    ASSERT_TRUE(WaitUntil([&] { return DeleteFileA(path.c_str()) != FALSE; }));
    Restore(program);
    EXPECT_EQ(program.AnswerBox(), "File being browsed could not be re-opened");
    EXPECT_TRUE(WaitUntilRestored(program));
    EXPECT_TRUE(program.WaitForTitle(""));
    EXPECT_TRUE(program.Menu(IDM_FILE_CLOSE).Greyed);
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(FrameTest, RestoringAfterTheFileWasChangedReportsItAndOpensItAnew)
{
    WriteSettings(FixedFont);
    const std::string path = WriteLargeFile();
    SetFileAge(path, 3600);
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    SetTop(program, 1000);
    Minimise(program);
    WriteScratch("kept.txt", "another text\r\n" + NumberedLines(5000));
    SetFileAge(path, 60);
    Restore(program);
    EXPECT_EQ(program.AnswerBox(), "The current file has changed and will be reopened");
    EXPECT_TRUE(WaitUntilRestored(program));
    EXPECT_TRUE(program.WaitForTitle("kept.txt"));
    EXPECT_EQ(program.Top(), 0);
    EXPECT_EQ(program.TopText(), "another text");
    EXPECT_EQ(program.Vertical().Max, 5001 - RowsOf(program));
}

TEST_F(FrameTest, RestoringAfterOnlyTheSizeChangedSaysNothing)
{
    const std::string path = WriteLargeFile();
    SetFileAge(path, 3600);
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    Minimise(program);
    ASSERT_TRUE(WaitUntil([&] { return CanBeMovedAway(path); }));
    WIN32_FILE_ATTRIBUTE_DATA before;
    ASSERT_TRUE(GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &before));
    AppendToFile(path, "more\r\n");
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    SetFileTime(file, nullptr, nullptr, &before.ftLastWriteTime);
    CloseHandle(file);
    Restore(program);
    EXPECT_TRUE(WaitUntilRestored(program));
    EXPECT_TRUE(program.Answers());
    EXPECT_FALSE(program.ShowsBox());
    EXPECT_EQ(program.Title(), "Kestovar-kept.txt");
}

TEST_F(FrameTest, LaysOutBarViewAndStatusLine)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ExpectLayout(program, 34, 0, HeightOfStatusLine());
}

TEST_F(FrameTest, LaysOutAgainWhenTheSizeChanges)
{
    Program program(WriteScratch("one.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    SetWindowPos(program.Frame(), nullptr, 20, 20, 500, 350, SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_TRUE(WaitUntil([&] { return PlaceOf(program.View()).right == ClientSize(program.Frame()).cx; }));
    ExpectLayout(program, 34, 0, HeightOfStatusLine());
}

TEST_F(FrameTest, LaysOutTheViewAloneWhenAllElseIsSwitchedOff)
{
    WriteSettings("ButtonBar=0\nStatusLine=0\nRuler=0\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ExpectLayout(program, 0, 0, 0);
}

TEST_F(FrameTest, ARulerOverAFixedFontIsOneLineHigh)
{
    WriteSettings(std::string(FixedFont) + "Ruler=1\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ExpectLayout(program, 34, CellHeight(), HeightOfStatusLine());
}

TEST_F(FrameTest, ARulerOverAProportionalFontIs21PixelsHigh)
{
    WriteSettings("FontName=Arial\nRuler=1\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ExpectLayout(program, 34, 21, HeightOfStatusLine());
}

TEST_F(FrameTest, HexModeNeverShowsTheRuler)
{
    WriteSettings(std::string(FixedFont) + "Ruler=1\n");
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectLayout(program, 34, CellHeight(), HeightOfStatusLine());
    program.Command(IDM_VIEW_HEX);
    ExpectLayout(program, 34, 0, HeightOfStatusLine());
    program.Command(IDM_VIEW_TEXT);
    ExpectLayout(program, 34, CellHeight(), HeightOfStatusLine());
}

TEST_F(FrameTest, ALongOperationShowsTheWaitCursor)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    ASSERT_TRUE(MovePointer(program.View(), 50, 50));
    ASSERT_TRUE(WaitUntil([&] { return program.Inside().Cursor() == ProbeCursorShape::Arrow; }));
    program.Send(program.Frame(), WM_USER);
    EXPECT_EQ(program.Inside().Cursor(), ProbeCursorShape::Wait);
    // It stays while the pointer moves.
    ASSERT_TRUE(MovePointer(program.View(), 60, 60));
    EXPECT_EQ(program.Send(program.Frame(), WM_SETCURSOR, reinterpret_cast<WPARAM>(program.View()),
                           MAKELPARAM(HTCLIENT, WM_MOUSEMOVE)),
              1);
    EXPECT_EQ(program.Inside().Cursor(), ProbeCursorShape::Wait);
    program.Send(program.Frame(), WM_USER + 1);
    EXPECT_EQ(program.Inside().Cursor(), ProbeCursorShape::Arrow);
}

TEST_F(FrameTest, TheCursorIsAnArrowAgainOnceAFileIsOpen)
{
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    ASSERT_TRUE(MovePointer(program.View(), 50, 50));
    EXPECT_TRUE(WaitUntil([&] { return program.Inside().Cursor() == ProbeCursorShape::Arrow; }));
}

TEST_F(FrameTest, CtrlMHidesAndShowsTheMenuBar)
{
    WriteSettings(FixedFont);
    Program program(WriteScratch("one.txt", NumberedLines(100)));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.SystemMenu(IDM_SYSTEM_MENU_BAR).Text, "&Hide menu bar");
    EXPECT_FALSE(program.SystemMenu(IDM_SYSTEM_MENU_BAR).Checked);
    const int height = ClientSize(program.Frame()).cy;
    ASSERT_TRUE(BringToForeground(program.Frame()));
    PressKeys({VK_CONTROL, 'M'});
    EXPECT_TRUE(WaitUntil([&] { return !program.Menu(IDM_FILE_EXIT).HasMenu; }));
    EXPECT_TRUE(WaitUntil([&] { return program.SystemMenu(IDM_SYSTEM_MENU_BAR).Checked; }));
    EXPECT_EQ(ClientSize(program.Frame()).cy, height + GetSystemMetrics(SM_CYMENU));
    PressKeys({VK_CONTROL, 'M'});
    EXPECT_TRUE(WaitUntil([&] { return program.Menu(IDM_FILE_EXIT).Exists; }));
    EXPECT_TRUE(WaitUntil([&] { return !program.SystemMenu(IDM_SYSTEM_MENU_BAR).Checked; }));
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_EQ(SettingValue("SuppressMenu"), "(none)"); // not saved
}

TEST_F(FrameTest, TheSystemMenuItemTogglesTheMenuBar)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Send(program.Frame(), WM_SYSCOMMAND, IDM_SYSTEM_MENU_BAR);
    EXPECT_FALSE(program.Menu(IDM_FILE_EXIT).HasMenu);
    EXPECT_TRUE(program.SystemMenu(IDM_SYSTEM_MENU_BAR).Checked);
    EXPECT_EQ(program.Close(), 0u); // with the bar hidden
}

TEST_F(FrameTest, ASeparatorStandsBeforeTheSystemMenusOwnItem)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const std::vector<std::string> texts = program.Inside().PopupTexts(program.Frame(), -1, ProbeMenuKind::System);
    ASSERT_GE(texts.size(), 2u);
    EXPECT_EQ(texts[texts.size() - 2], "-");
    EXPECT_EQ(texts.back(), "&Hide menu bar");
}

TEST_F(FrameTest, StartsWithoutTheMenuBarWhenItIsSuppressed)
{
    WriteSettings("SuppressMenu=1\nExitOnEsc=1\n");
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_FALSE(program.Menu(IDM_FILE_EXIT).HasMenu);
    EXPECT_TRUE(program.SystemMenu(IDM_SYSTEM_MENU_BAR).Checked);
    program.Send(program.Frame(), WM_SYSCOMMAND, IDM_SYSTEM_MENU_BAR);
    // The menu kept its state while it was hidden.
    EXPECT_EQ(program.Menu(IDM_FILE_EXIT).Text, "E&xit\tEsc");
    EXPECT_FALSE(program.Menu(IDM_FILE_CLOSE).Greyed);
    EXPECT_FALSE(program.SystemMenu(IDM_SYSTEM_MENU_BAR).Checked);
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(FrameTest, CtrlHAndCtrlTSwitchTheMode)
{
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    PressKeys({VK_CONTROL, 'H'});
    EXPECT_TRUE(WaitUntil([&] { return program.Menu(IDM_VIEW_HEX).Checked; }));
    EXPECT_FALSE(program.Menu(IDM_VIEW_TEXT).Checked);
    PressKeys({VK_CONTROL, 'T'});
    EXPECT_TRUE(WaitUntil([&] { return program.Menu(IDM_VIEW_TEXT).Checked; }));
    EXPECT_FALSE(program.Menu(IDM_VIEW_HEX).Checked);
}

TEST_F(FrameTest, CtrlSSavesTheSettings)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    EXPECT_TRUE(ReadSettings().empty());
    PressKeys({VK_CONTROL, 'S'});
    EXPECT_TRUE(WaitUntil([] { return SettingValue("WindowSize") != "(none)"; }));
}

TEST_F(FrameTest, CtrlSKeepsTheMenuBarHiddenForTheNextStart)
{
    {
        Program program;
        ASSERT_TRUE(program.WaitForFrame());
        ASSERT_TRUE(BringToForeground(program.Frame()));
        PressKeys({VK_CONTROL, 'M'});
        ASSERT_TRUE(WaitUntil([&] { return !program.Menu(IDM_FILE_EXIT).HasMenu; }));
        PressKeys({VK_CONTROL, 'S'});
        EXPECT_TRUE(WaitUntil([] { return SettingValue("SuppressMenu") == "1"; })) << SettingValue("SuppressMenu");
        EXPECT_EQ(program.Close(), 0u);
    }
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_FALSE(program.Menu(IDM_FILE_EXIT).HasMenu);
}

TEST_F(FrameTest, WithoutAFileWhatNeedsOneIsGreyed)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    for (const UINT id :
         {221, 222, 223, 224, 225, 226, 229, 232, 250, 251, 252, 260, 261, 262, 263, 272, 273, 274, 275, 276}) {
        EXPECT_TRUE(program.Menu(id).Exists) << id;
        EXPECT_TRUE(program.Menu(id).Greyed) << id;
    }
    for (const UINT id : {220, 230, 231, 233, 270, 271, 280, 281, 282, 283, 284, 285, 290, 291, 292, 293}) {
        EXPECT_TRUE(program.Menu(id).Exists) << id;
        EXPECT_FALSE(program.Menu(id).Greyed) << id;
    }
    EXPECT_TRUE(program.Menu(IDM_VIEW_TEXT).Checked);
    EXPECT_FALSE(program.Menu(IDM_VIEW_HEX).Checked);
}

TEST_F(FrameTest, CommandsThatNeedAFileFollowTheFile)
{
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_FALSE(program.Menu(IDM_FILE_CLOSE).Greyed);
    EXPECT_FALSE(program.Menu(IDM_EDIT_SELECT_ALL).Greyed);
    EXPECT_TRUE(program.Menu(IDM_EDIT_COPY).Greyed); // nothing is selected
    program.Command(IDM_INTERNAL_CLOSE);
    EXPECT_EQ(program.Title(), "Kestovar");
    EXPECT_TRUE(program.Menu(IDM_FILE_CLOSE).Greyed);
    EXPECT_TRUE(program.Menu(IDM_EDIT_SELECT_ALL).Greyed);
    EXPECT_TRUE(program.ViewTexts().empty());
}

TEST_F(FrameTest, TheStatusLineIsEmptyOnceTheFileIsClosed)
{
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.StatusText(), "Line 1 Col 1  100%");
    program.Command(IDM_FILE_CLOSE);
    Restore(program);
    ASSERT_TRUE(WaitUntilRestored(program));
    EXPECT_TRUE(WaitUntil([&] { return program.StatusText() == ""; }));
}

TEST_F(FrameTest, TheCurrentFileIsOpenedAnewOnDemand)
{
    WriteSettings(FixedFont);
    Program program(WriteScratch("one.txt", "before"));
    ASSERT_TRUE(program.WaitForFrame());
    WriteScratch("one.txt", "after");
    program.Command(IDM_INTERNAL_REOPEN);
    EXPECT_EQ(program.Title(), "Kestovar-one.txt");
    EXPECT_EQ(program.TopText(), "after");
}

TEST_F(FrameTest, ANonTextFileChecksHexMode)
{
    Program program(WriteScratch("one.bin", std::string(2000, '\x01')));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_TRUE(program.Menu(IDM_VIEW_HEX).Checked);
    EXPECT_FALSE(program.Menu(IDM_VIEW_TEXT).Checked);
}

TEST_F(FrameTest, TheFileMenuListsTheRecentFiles)
{
    WriteSettings("SavedFile1=c:\\a.txt\nSavedFile2=c:\\one_directory\\two_directory\\three.txt\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const std::vector<std::string> texts = program.Inside().PopupTexts(program.Frame(), 0);
    ASSERT_GE(texts.size(), 4u);
    EXPECT_EQ(texts[texts.size() - 4], "E&xit");
    EXPECT_EQ(texts[texts.size() - 3], "-");
    EXPECT_EQ(texts[texts.size() - 2], "&1 c:\\a.txt");
    EXPECT_EQ(texts[texts.size() - 1], "&2 c:\\...\\two_directory\\three.txt");
}

TEST_F(FrameTest, ClosesGapsAmongTheRecentFilesInOnePass)
{
    WriteSettings("SavedFile1=c:\\a\nSavedFile3=c:\\b\nSavedFile4=c:\\c\nSavedFile5=c:\\d\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const std::vector<std::string> texts = program.Inside().PopupTexts(program.Frame(), 0);
    ASSERT_GE(texts.size(), 4u);
    const std::vector<std::string> recent(texts.end() - 4, texts.end());
    EXPECT_EQ(recent, (std::vector<std::string>{"&1 c:\\a", "&2 c:\\b", "&3 c:\\d", "&4 c:\\c"}));
}

TEST_F(FrameTest, ARecentFileIsOpenedFromTheMenu)
{
    const std::string first = WriteScratch("first.txt", "text");
    const std::string second = WriteScratch("second.txt", "text");
    WriteSettings("SavedFile1=" + first + "\nSavedFile2=" + second + "\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_RECENT_FIRST + 1);
    EXPECT_EQ(program.Title(), "Kestovar-second.txt");
    program.Command(IDM_RECENT_FIRST);
    EXPECT_EQ(program.Title(), "Kestovar-first.txt");
    program.Command(IDM_RECENT_FIRST + 2); // there is none
    EXPECT_EQ(program.Title(), "Kestovar-first.txt");
    EXPECT_TRUE(program.Answers());
}

TEST_F(FrameTest, ARecentFileThatIsGoneIsReported)
{
    WriteSettings("SavedFile1=" + ScratchPath("gone.txt") + "\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Post(WM_COMMAND, IDM_RECENT_FIRST);
    EXPECT_EQ(program.AnswerBox(), "Unable to open the file\n\ngone.txt");
    EXPECT_EQ(program.Title(), "Kestovar");
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(FrameTest, TheEndOfTheProgramWritesNothingWithoutRecentFiles)
{
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_TRUE(ReadSettings().empty());
}

TEST_F(FrameTest, TheEndOfTheProgramWritesTheRecentFilesOnly)
{
    WriteSettings("SavedFile2=c:\\b.txt\nFontSize=20\n");
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_EQ(ReadSettings(),
              (SettingsKeys{{"SavedFile2", "c:\\b.txt"}, {"FontSize", "20"}, {"SavedFile1", "c:\\b.txt"}}));
}

TEST_F(FrameTest, TheExitCommandEndsTheProgram)
{
    Program program(WriteLargeFile());
    ASSERT_TRUE(program.WaitForFrame());
    program.Post(WM_COMMAND, IDM_FILE_EXIT);
    EXPECT_EQ(program.WaitForExit(), 0u);
}

TEST_F(FrameTest, UnknownCommandsAndMessagesAreLeftAlone)
{
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    for (const UINT id : {0u, 1u, 99u, 199u, 299u, 999u, 0xFFFFu}) {
        program.Command(id);
    }
    program.Send(program.Frame(), WM_SYSCOMMAND, IDM_SYSTEM_MENU_BAR + 1);
    program.Send(program.Frame(), WM_KEYDOWN, 'A');
    EXPECT_EQ(program.Title(), "Kestovar-one.txt");
    EXPECT_EQ(program.Close(), 0u);
}
