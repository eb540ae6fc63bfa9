#include "support/dialogs.h"
#include "support/file_list.h"
#include "support/input.h"
#include "support/ui_test.h"

#include <algorithm>

namespace {

using Names = std::vector<std::string>;

constexpr char Truncated[] = "Too many files/directories or insufficient storage\nList has been truncated";
constexpr char NoMatches[] = "No files were found that matched the command line file spec";
constexpr char CannotOpen[] = "Unable to open the file\n\n";
constexpr int MostFiles = 2000; // of a list

class FileListTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }

    Names PathsOf(const Names& names) const
    {
        Names paths;
        for (const std::string& name : names) {
            paths.push_back(Files.PathOf(name));
        }
        return paths;
    }

    TestDirectory Files{"list"};
};

int Beeps(Program& program)
{
    return program.Inside().Use().Beeps;
}

bool WaitForBeeps(Program& program, int count)
{
    return WaitUntil([&] { return Beeps(program) == count; });
}

void Minimise(const Program& program)
{
    program.Post(WM_SYSCOMMAND, SC_MINIMIZE);
    EXPECT_TRUE(WaitUntil([&] { return IsIconic(program.Frame()) != FALSE; }));
}

bool WaitUntilRestored(const Program& program)
{
    return WaitUntil([&] { return !IsIconic(program.Frame()); });
}

int HeightOf(HWND window)
{
    RECT place = {};
    GetWindowRect(window, &place);
    return place.bottom - place.top;
}

Names ManyNames(int count)
{
    Names names;
    for (int i = 1; i <= count; ++i) {
        char name[16];
        snprintf(name, sizeof name, "f%04d.txt", i);
        names.push_back(name);
    }
    return names;
}

} // namespace

TEST_F(FileListTest, AWildcardListsWhatItMatches)
{
    Files.WriteAll({"One.TXT", "two.txt", "three.txt", "four.log"});
    Files.Write("hidden.txt", "hidden");
    SetFileAttributesA(Files.PathOf("hidden.txt").c_str(), FILE_ATTRIBUTE_HIDDEN);
    CreateDirectoryA(Files.PathOf("sub.txt").c_str(), nullptr);
    Program program(Files.PathOf("*.txt"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.StatusText(), "Line 1 Col 1  100%  [File 1 of 3]");
    EXPECT_TRUE(CanGoOn(program));
    EXPECT_FALSE(CanGoBack(program));
    const HWND dialog = ShowSelectList(program);
    ASSERT_NE(dialog, nullptr);
    Names names = ListTexts(dialog, IDC_SELECT_FILES);
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (Names{"one.txt", "three.txt", "two.txt"}));
    PressControl(dialog, IDCANCEL);
    EXPECT_TRUE(WaitUntilClosed(dialog));
}

TEST_F(FileListTest, TheOrderIsThatOfTheSystem)
{
    Files.WriteAll({"zeta.txt", "beta.txt", "eta.txt", "theta.txt", "alpha.txt"});
    const Names found = Files.Find("?eta.txt");
    ASSERT_EQ(found.size(), 2u);
    Program program(Files.PathOf("?eta.txt"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_TRUE(WaitForFile(program, found[0], "[File 1 of 2]"));
    program.Command(IDM_FILE_NEXT);
    EXPECT_TRUE(WaitForFile(program, found[1], "[File 2 of 2]"));
    EXPECT_EQ(program.TopText(), found[1]);
}

TEST_F(FileListTest, AWildcardWithoutADirectoryLooksInTheCurrentOne)
{
    Files.WriteAll({"one.txt", "two.txt"});
    char before[MAX_PATH] = "";
    GetCurrentDirectoryA(sizeof before, before);
    ASSERT_TRUE(SetCurrentDirectoryA(Files.Path().c_str()));
    {
        Program program("*.txt");
        EXPECT_TRUE(program.WaitForFrame());
        EXPECT_EQ(ListPart(program), "[File 1 of 2]");
        program.Command(IDM_FILE_NEXT);
        EXPECT_EQ(program.TopText(), Files.Find("*.txt")[1]);
    }
    SetCurrentDirectoryA(before);
}

TEST_F(FileListTest, AWildcardListsNamesOutsideTheCodePage)
{
    Files.WriteAll({"inside.txt"});
    Files.WriteNameOutsideTheCodePage();
    Program program(Files.PathOf("*.txt"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(ListPart(program), "[File 1 of 2]");
    Names texts = {program.TopText()};
    program.Command(IDM_FILE_NEXT);
    EXPECT_EQ(ListPart(program), "[File 2 of 2]");
    texts.push_back(program.TopText());
    std::sort(texts.begin(), texts.end());
    EXPECT_EQ(texts, (Names{"inside.txt", "outside"}));
}

TEST_F(FileListTest, AWildcardOfOneFileMakesNoList)
{
    Files.WriteAll({"one.txt", "two.log"});
    Program program(Files.PathOf("*.txt"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_TRUE(WaitForFile(program, "one.txt", ""));
    EXPECT_EQ(program.StatusText(), "Line 1 Col 1  100%");
    EXPECT_FALSE(CanGoOn(program));
    EXPECT_FALSE(CanGoBack(program));
}

TEST_F(FileListTest, AWildcardOfNothingIsReportedAndOpensNothing)
{
    Files.WriteAll({"two.log"});
    Program program(Files.PathOf("*.txt"));
    EXPECT_EQ(program.AnswerBox(), NoMatches);
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.Title(), "Kestovar");
    EXPECT_TRUE(program.Menu(IDM_FILE_CLOSE).Greyed);
    EXPECT_FALSE(CanGoOn(program));
    EXPECT_FALSE(CanGoBack(program));
    program.Inside().Drop(program.Frame(), Files.PathOf("two.log"));
    EXPECT_TRUE(WaitForFile(program, "two.log", ""));
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(FileListTest, AListHoldsTwoThousandFiles)
{
    for (const std::string& name : ManyNames(MostFiles)) {
        Files.Write(name, name);
    }
    {
        // The last that fits is reported as well.
        Program program(Files.PathOf("*.txt"));
        EXPECT_EQ(program.AnswerBox(), Truncated);
        ASSERT_TRUE(program.WaitForFrame());
        EXPECT_FALSE(program.ShowsBox());
        EXPECT_EQ(ListPart(program), "[File 1 of 2000]");
    }
    Files.Write("one more.txt", "one more");
    Program program(Files.PathOf("*.txt"));
    EXPECT_EQ(program.AnswerBox(), Truncated);
    EXPECT_EQ(program.AnswerBox(), Truncated); // of the file that does not fit
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_FALSE(program.ShowsBox());
    EXPECT_EQ(ListPart(program), "[File 1 of 2000]");
    const HWND dialog = ShowSelectList(program);
    ASSERT_NE(dialog, nullptr);
    const HWND list = GetDlgItem(dialog, IDC_SELECT_FILES);
    EXPECT_EQ(program.Send(list, LB_GETCOUNT), MostFiles);
    ASSERT_TRUE(WaitUntil([&] { return FocusOf(dialog) == list; }));
    PressKeys({VK_END});
    ASSERT_TRUE(WaitUntil([&] { return ListSelection(dialog, IDC_SELECT_FILES) == MostFiles - 1; }));
    PressKeys({VK_RETURN});
    ASSERT_TRUE(WaitUntilClosed(dialog));
    EXPECT_TRUE(WaitUntil([&] { return ListPart(program) == "[File 2000 of 2000]"; }));
    EXPECT_FALSE(CanGoOn(program));
    // The Open dialog can choose a file that the list has no room for: the last of the list stands before it.
    Files.Write("the last.txt", "the last");
    const HWND open = ShowOpenDialog(program);
    ASSERT_NE(open, nullptr);
    SetControlText(open, OpenName, Files.PathOf("the last.txt"));
    PressControl(open, IDOK);
    EXPECT_EQ(program.AnswerBox(), Truncated);
    ASSERT_TRUE(WaitUntilClosed(open));
    EXPECT_TRUE(WaitForFile(program, "the last.txt", "[File 2002 of 2000]"));
    EXPECT_FALSE(program.ShowsBox());
    EXPECT_FALSE(CanGoOn(program));
    program.Command(IDM_FILE_PREVIOUS);
    EXPECT_TRUE(WaitForFile(program, "f2000.txt", "[File 2000 of 2000]"));
}

TEST_F(FileListTest, TheKeysWalkAndBeepAtTheEnds)
{
    Files.WriteAll({"a.txt", "b.txt", "c.txt"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().DropFiles(program.Frame(), PathsOf({"a.txt", "b.txt", "c.txt"}));
    ASSERT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 3]"));
    ASSERT_TRUE(BringToForeground(program.Frame()));
    const int beeps = Beeps(program);
    PressKeys({VK_CONTROL, VK_NEXT});
    ASSERT_TRUE(WaitForFile(program, "b.txt", "[File 2 of 3]"));
    PressKeys({VK_CONTROL, VK_NEXT});
    ASSERT_TRUE(WaitForFile(program, "c.txt", "[File 3 of 3]"));
    EXPECT_EQ(Beeps(program), beeps);
    EXPECT_TRUE(program.Menu(IDM_FILE_NEXT).Greyed);
    EXPECT_FALSE(program.Menu(IDM_FILE_PREVIOUS).Greyed);
    PressKeys({VK_CONTROL, VK_NEXT});
    EXPECT_TRUE(WaitForBeeps(program, beeps + 1));
    EXPECT_TRUE(WaitForFile(program, "c.txt", "[File 3 of 3]"));
    PressKeys({VK_CONTROL, VK_PRIOR});
    ASSERT_TRUE(WaitForFile(program, "b.txt", "[File 2 of 3]"));
    EXPECT_FALSE(program.Menu(IDM_FILE_NEXT).Greyed);
    PressKeys({VK_CONTROL, VK_PRIOR});
    ASSERT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 3]"));
    EXPECT_TRUE(program.Menu(IDM_FILE_PREVIOUS).Greyed);
    EXPECT_EQ(Beeps(program), beeps + 1);
    PressKeys({VK_CONTROL, VK_PRIOR});
    EXPECT_TRUE(WaitForBeeps(program, beeps + 2));
    EXPECT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 3]"));
}

TEST_F(FileListTest, TheKeysBeepWithoutAList)
{
    Program program(Files.Write("a.txt", "a"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    const int beeps = Beeps(program);
    PressKeys({VK_CONTROL, VK_NEXT});
    EXPECT_TRUE(WaitForBeeps(program, beeps + 1));
    PressKeys({VK_CONTROL, VK_PRIOR});
    EXPECT_TRUE(WaitForBeeps(program, beeps + 2));
    EXPECT_EQ(program.Title(), "Kestovar-a.txt");
}

TEST_F(FileListTest, TheMenuItemsWalk)
{
    Files.WriteAll({"a.txt", "b.txt"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().DropFiles(program.Frame(), PathsOf({"a.txt", "b.txt"}));
    ASSERT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 2]"));
    ASSERT_TRUE(BringToForeground(program.Frame()));
    ASSERT_TRUE(OpenMenu(program, 'F'));
    PressKeys({'N'});
    EXPECT_TRUE(WaitForFile(program, "b.txt", "[File 2 of 2]"));
    ASSERT_TRUE(WaitUntil([&] { return !IsInMenu(program); }));
    ASSERT_TRUE(OpenMenu(program, 'F'));
    PressKeys({'R'});
    EXPECT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 2]"));
}

TEST_F(FileListTest, AGreyedMenuItemDoesNothing)
{
    Files.WriteAll({"a.txt", "b.txt"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().DropFiles(program.Frame(), PathsOf({"a.txt", "b.txt"}));
    ASSERT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 2]"));
    const int beeps = Beeps(program);
    program.Command(IDM_FILE_PREVIOUS);
    EXPECT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 2]"));
    program.Command(IDM_FILE_NEXT);
    program.Command(IDM_FILE_NEXT);
    EXPECT_TRUE(WaitForFile(program, "b.txt", "[File 2 of 2]"));
    EXPECT_EQ(Beeps(program), beeps);
}

TEST_F(FileListTest, AnOpenedFileBeginsAtItsTop)
{
    Files.Write("a.txt", NumberedLines(1000));
    Files.Write("b.txt", NumberedLines(900));
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().DropFiles(program.Frame(), PathsOf({"a.txt", "b.txt"}));
    ASSERT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 2]"));
    SetTop(program, 500);
    program.Command(IDM_FILE_NEXT);
    EXPECT_EQ(program.TopText(), "Line 1");
    EXPECT_EQ(program.Top(), 0);
    SetTop(program, 500);
    program.Command(IDM_FILE_PREVIOUS);
    EXPECT_EQ(program.TopText(), "Line 1");
}

TEST_F(FileListTest, AnOpenedFileBeginsAtItsFirstColumn)
{
    for (const char* const name : {"a.txt", "b.txt"}) {
        Files.Write(name, Repeated("0123456789", 300)); // wider than the view
    }
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().DropFiles(program.Frame(), PathsOf({"a.txt", "b.txt"}));
    ASSERT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 2]"));
    Key(program, VK_RIGHT);
    ASSERT_GT(program.Horizontal().Position, 0);
    program.Command(IDM_FILE_NEXT);
    ASSERT_TRUE(WaitForFile(program, "b.txt", "[File 2 of 2]"));
    EXPECT_EQ(program.Horizontal().Position, 0);
    EXPECT_EQ(program.StatusText().substr(0, 12), "Line 1 Col 1");
}

TEST_F(FileListTest, AFileThatVanishedIsReportedAndTheListCanBeWalkedOn)
{
    Files.WriteAll({"a.txt", "b.txt", "c.txt"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().DropFiles(program.Frame(), PathsOf({"a.txt", "b.txt", "c.txt"}));
    ASSERT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 3]"));
    ASSERT_TRUE(DeleteFileA(Files.PathOf("b.txt").c_str()));
    program.Post(WM_COMMAND, IDM_FILE_NEXT);
    EXPECT_EQ(program.AnswerBox(), CannotOpen + std::string("b.txt"));
    ASSERT_TRUE(program.WaitForTitle(""));
    EXPECT_TRUE(program.ViewTexts().empty());
    EXPECT_TRUE(program.Menu(IDM_FILE_CLOSE).Greyed);
    EXPECT_TRUE(CanGoOn(program));
    EXPECT_TRUE(CanGoBack(program));
    program.Command(IDM_FILE_NEXT);
    EXPECT_TRUE(WaitForFile(program, "c.txt", "[File 3 of 3]"));
    program.Post(WM_COMMAND, IDM_KEY_PREVIOUS);
    EXPECT_EQ(program.AnswerBox(), CannotOpen + std::string("b.txt"));
    ASSERT_TRUE(program.Answers());
    program.Command(IDM_KEY_PREVIOUS);
    EXPECT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 3]"));
    // Once it is back it opens.
    Files.WriteAll({"b.txt"});
    program.Command(IDM_FILE_NEXT);
    EXPECT_TRUE(WaitForFile(program, "b.txt", "[File 2 of 3]"));
}

TEST_F(FileListTest, SeveralDroppedFilesMakeAListInTheirOrder)
{
    Files.WriteAll({"a.txt", "B.TXT", "c.txt"});
    const TestDirectory other("other");
    other.WriteAll({"Elsewhere.txt"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().DropFiles(program.Frame(),
                               {Files.PathOf("c.txt"), other.PathOf("Elsewhere.txt"), Files.PathOf("B.TXT")});
    ASSERT_TRUE(WaitForFile(program, "c.txt", "[File 1 of 3]"));
    EXPECT_EQ(program.TopText(), "c.txt");
    EXPECT_FALSE(CanGoBack(program));
    program.Command(IDM_FILE_NEXT);
    EXPECT_TRUE(WaitForFile(program, "elsewhere.txt", "[File 2 of 3]"));
    EXPECT_EQ(program.TopText(), "Elsewhere.txt");
    program.Command(IDM_FILE_NEXT);
    EXPECT_TRUE(WaitForFile(program, "b.txt", "[File 3 of 3]"));
    EXPECT_FALSE(CanGoOn(program));
}

TEST_F(FileListTest, ADropReplacesTheList)
{
    Files.WriteAll({"a.txt", "b.txt", "c.txt"});
    Program program(Files.PathOf("*.txt"));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_FILE_NEXT);
    ASSERT_EQ(ListPart(program), "[File 2 of 3]");
    program.Inside().DropFiles(program.Frame(), PathsOf({"c.txt", "a.txt"}));
    EXPECT_TRUE(WaitForFile(program, "c.txt", "[File 1 of 2]"));
    program.Inside().Drop(program.Frame(), Files.PathOf("b.txt"));
    EXPECT_TRUE(WaitForFile(program, "b.txt", ""));
    EXPECT_FALSE(CanGoOn(program));
    EXPECT_FALSE(CanGoBack(program));
}

TEST_F(FileListTest, DroppedFilesBringTheWindowBackFromItsIcon)
{
    Files.WriteAll({"a.txt", "b.txt", "c.txt"});
    Program program(Files.PathOf("a.txt"));
    ASSERT_TRUE(program.WaitForFrame());
    Minimise(program);
    program.Inside().DropFiles(program.Frame(), PathsOf({"b.txt", "c.txt", "a.txt"}));
    EXPECT_TRUE(WaitUntilRestored(program));
    EXPECT_TRUE(WaitForFile(program, "b.txt", "[File 1 of 3]"));
    EXPECT_FALSE(program.ShowsBox());
}

TEST_F(FileListTest, ADropOfTooManyFilesIsReportedOnce)
{
    Files.WriteAll({"f0001.txt"}); // the others need not be there
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().DropFiles(program.Frame(), PathsOf(ManyNames(MostFiles + 1)));
    EXPECT_EQ(program.AnswerBox(), Truncated);
    EXPECT_TRUE(WaitForFile(program, "f0001.txt", "[File 1 of 2000]"));
    EXPECT_FALSE(program.ShowsBox());
}

TEST_F(FileListTest, ADropFromTooManyDirectoriesIsReportedOnce)
{
    constexpr int MostDirectories = 255;
    Names paths = {Files.Write("a.txt", "a")};
    for (int i = 1; i <= MostDirectories + 1; ++i) {
        paths.push_back(Files.PathOf(std::to_string(i) + "\\b.txt")); // they need not be there
    }
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().DropFiles(program.Frame(), paths);
    EXPECT_EQ(program.AnswerBox(), Truncated);
    EXPECT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 255]"));
    EXPECT_FALSE(program.ShowsBox());
}

TEST_F(FileListTest, ADroppedNameLongerThanAnyPathIsReportedAndLeftOut)
{
    Files.WriteAll({"a.txt", "b.txt"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().DropFiles(program.Frame(),
                               {Files.PathOf("a.txt"), Files.PathOf(std::string(300, 'x')), Files.PathOf("b.txt")});
    EXPECT_EQ(program.AnswerBox(), Truncated);
    ASSERT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 2]"));
    program.Command(IDM_FILE_NEXT);
    EXPECT_TRUE(WaitForFile(program, "b.txt", "[File 2 of 2]"));
}

TEST_F(FileListTest, ADropWhoseFirstFileIsGoneLeavesAListToWalk)
{
    Files.WriteAll({"b.txt"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().DropFiles(program.Frame(), PathsOf({"gone.txt", "b.txt"}));
    EXPECT_EQ(program.AnswerBox(), CannotOpen + std::string("gone.txt"));
    ASSERT_TRUE(program.Answers());
    program.Command(IDM_FILE_NEXT);
    EXPECT_TRUE(WaitForFile(program, "b.txt", "[File 2 of 2]"));
}

TEST_F(FileListTest, ClosingTheFileEmptiesTheList)
{
    Files.WriteAll({"a.txt", "b.txt", "c.txt"});
    Program program(Files.PathOf("*.txt"));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_FILE_NEXT);
    ASSERT_EQ(ListPart(program), "[File 2 of 3]");
    program.Command(IDM_FILE_CLOSE);
    EXPECT_EQ(program.Title(), "Kestovar");
    EXPECT_TRUE(IsIconic(program.Frame()));
    EXPECT_FALSE(CanGoOn(program));
    EXPECT_FALSE(CanGoBack(program));
    program.Post(WM_SYSCOMMAND, SC_RESTORE);
    ASSERT_TRUE(WaitUntilRestored(program));
    const int beeps = Beeps(program);
    program.Command(IDM_KEY_PREVIOUS);
    program.Command(IDM_KEY_NEXT);
    EXPECT_EQ(Beeps(program), beeps + 2);
    EXPECT_EQ(program.Title(), "Kestovar");
}

TEST_F(FileListTest, EscEmptiesTheList)
{
    Files.WriteAll({"a.txt", "b.txt", "c.txt"});
    Program program(Files.PathOf("*.txt"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(CanGoOn(program));
    ASSERT_TRUE(BringToForeground(program.Frame()));
    PressKeys({VK_ESCAPE});
    EXPECT_TRUE(WaitUntil([&] { return IsIconic(program.Frame()) != FALSE; }));
    EXPECT_TRUE(program.WaitForTitle(""));
    EXPECT_FALSE(CanGoOn(program));
    EXPECT_FALSE(CanGoBack(program));
}

TEST_F(FileListTest, TheListOutlivesAnIcon)
{
    for (const char* const name : {"a.txt", "b.txt", "c.txt"}) {
        Files.Write(name, name + std::string("\r\n") + NumberedLines(5000)); // kept open while it is shown
    }
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().DropFiles(program.Frame(), PathsOf({"a.txt", "b.txt", "c.txt"}));
    ASSERT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 3]"));
    program.Command(IDM_FILE_NEXT);
    Minimise(program);
    program.Post(WM_SYSCOMMAND, SC_RESTORE);
    ASSERT_TRUE(WaitUntilRestored(program));
    EXPECT_TRUE(WaitForFile(program, "b.txt", "[File 2 of 3]"));
    EXPECT_EQ(program.TopText(), "b.txt");
    program.Command(IDM_FILE_NEXT);
    EXPECT_TRUE(WaitForFile(program, "c.txt", "[File 3 of 3]"));
    // The file is gone when the window comes back: its neighbours are not.
    Minimise(program);
    ASSERT_TRUE(WaitUntil([&] { return DeleteFileA(Files.PathOf("c.txt").c_str()) != FALSE; })); // once it is released
    program.Post(WM_SYSCOMMAND, SC_RESTORE);
    EXPECT_EQ(program.AnswerBox(), "File being browsed could not be re-opened");
    ASSERT_TRUE(WaitUntilRestored(program));
    ASSERT_TRUE(program.WaitForTitle(""));
    program.Command(IDM_FILE_PREVIOUS);
    EXPECT_TRUE(WaitForFile(program, "b.txt", "[File 2 of 3]"));
}

TEST_F(FileListTest, ARightClickShowsTheList)
{
    Files.WriteAll({"First.txt", "second.txt", "THIRD.TXT"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().DropFiles(program.Frame(), PathsOf({"First.txt", "second.txt", "THIRD.TXT"}));
    ASSERT_TRUE(WaitForFile(program, "first.txt", "[File 1 of 3]"));
    program.Command(IDM_FILE_NEXT);
    const int beeps = Beeps(program);
    const HWND dialog = ShowSelectList(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ListTexts(dialog, IDC_SELECT_FILES), (Names{"first.txt", "second.txt", "third.txt"}));
    EXPECT_EQ(ListSelection(dialog, IDC_SELECT_FILES), 1);
    EXPECT_EQ(ControlText(dialog, IDC_SELECT_DETAILS), "&Details >>");
    EXPECT_EQ(Beeps(program), beeps);
    DoubleClickEntry(dialog, IDC_SELECT_FILES, 2);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    EXPECT_TRUE(WaitForFile(program, "third.txt", "[File 3 of 3]"));
    EXPECT_EQ(program.TopText(), "THIRD.TXT");
    EXPECT_FALSE(CanGoOn(program));
    EXPECT_TRUE(CanGoBack(program));
}

TEST_F(FileListTest, ARightClickBeepsOnceTheListIsGone)
{
    Files.WriteAll({"a.txt", "b.txt"});
    Program program(Files.PathOf("*.txt"));
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().Drop(program.Frame(), Files.PathOf("a.txt"));
    ASSERT_TRUE(WaitForFile(program, "a.txt", ""));
    const int beeps = Beeps(program);
    ASSERT_TRUE(BringToForeground(program.Frame()));
    ASSERT_TRUE(MovePointer(program.View(), 100, 100));
    ClickRight();
    EXPECT_TRUE(WaitForBeeps(program, beeps + 1));
    EXPECT_EQ(FindDialog(program, SelectTitle), nullptr);
}

TEST_F(FileListTest, TheListIsUsedByKeys)
{
    Files.WriteAll({"a.txt", "b.txt", "c.txt", "d.txt"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().DropFiles(program.Frame(), PathsOf({"a.txt", "b.txt", "c.txt", "d.txt"}));
    ASSERT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 4]"));
    HWND dialog = ShowSelectList(program);
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(WaitUntil([&] { return FocusOf(dialog) == GetDlgItem(dialog, IDC_SELECT_FILES); }));
    PressKeys({VK_DOWN});
    PressKeys({VK_DOWN});
    ASSERT_TRUE(WaitUntil([&] { return ListSelection(dialog, IDC_SELECT_FILES) == 2; }));
    EXPECT_EQ(program.Title(), "Kestovar-a.txt"); // not before Enter
    PressKeys({VK_RETURN});
    ASSERT_TRUE(WaitUntilClosed(dialog));
    ASSERT_TRUE(WaitForFile(program, "c.txt", "[File 3 of 4]"));
    // "View" is a button, too, and its letter works.
    dialog = ShowSelectList(program);
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(WaitUntil([&] { return FocusOf(dialog) == GetDlgItem(dialog, IDC_SELECT_FILES); }));
    PressKeys({VK_UP});
    ASSERT_TRUE(WaitUntil([&] { return ListSelection(dialog, IDC_SELECT_FILES) == 1; }));
    PressKeys({VK_MENU, 'V'});
    ASSERT_TRUE(WaitUntilClosed(dialog));
    EXPECT_TRUE(WaitForFile(program, "b.txt", "[File 2 of 4]"));
    program.Command(IDM_FILE_NEXT);
    EXPECT_TRUE(WaitForFile(program, "c.txt", "[File 3 of 4]"));
}

TEST_F(FileListTest, CancellingTheListKeepsTheFile)
{
    Files.Write("a.txt", NumberedLines(1000));
    Files.Write("b.txt", "b");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().DropFiles(program.Frame(), PathsOf({"a.txt", "b.txt"}));
    ASSERT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 2]"));
    SetTop(program, 300);
    for (const bool byKey : {true, false}) {
        const HWND dialog = ShowSelectList(program);
        ASSERT_NE(dialog, nullptr);
        program.Send(GetDlgItem(dialog, IDC_SELECT_FILES), LB_SETCURSEL, 1);
        if (byKey) {
            PressKeys({VK_ESCAPE});
        } else {
            PressControl(dialog, IDCANCEL);
        }
        ASSERT_TRUE(WaitUntilClosed(dialog));
        EXPECT_EQ(program.Title(), "Kestovar-a.txt");
        EXPECT_EQ(ListPart(program), "[File 1 of 2]");
        EXPECT_EQ(program.TopText(), "Line 301");
        EXPECT_TRUE(CanGoOn(program));
        EXPECT_FALSE(IsIconic(program.Frame()));
    }
    program.Command(IDM_FILE_NEXT);
    EXPECT_TRUE(WaitForFile(program, "b.txt", "[File 2 of 2]"));
}

TEST_F(FileListTest, ViewingNothingBeepsAndStays)
{
    Files.WriteAll({"a.txt", "b.txt"});
    Program program(Files.PathOf("*.txt"));
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowSelectList(program);
    ASSERT_NE(dialog, nullptr);
    program.Send(GetDlgItem(dialog, IDC_SELECT_FILES), LB_SETCURSEL, static_cast<WPARAM>(-1));
    const int beeps = Beeps(program);
    PressControl(dialog, IDOK);
    EXPECT_TRUE(WaitForBeeps(program, beeps + 1));
    EXPECT_TRUE(IsWindow(dialog));
    PressControl(dialog, IDCANCEL);
    EXPECT_TRUE(WaitUntilClosed(dialog));
    EXPECT_EQ(ListPart(program), "[File 1 of 2]");
}

TEST_F(FileListTest, TheListBeginsWithTheCurrentFile)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const Names names = ManyNames(100);
    Files.WriteAll({names[0], names[56]});
    program.Inside().DropFiles(program.Frame(), PathsOf(names));
    ASSERT_TRUE(WaitForFile(program, names[0], "[File 1 of 100]"));
    HWND dialog = ShowSelectList(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ListTop(dialog, IDC_SELECT_FILES), 0);
    program.Send(GetDlgItem(dialog, IDC_SELECT_FILES), LB_SETCURSEL, 56);
    PressControl(dialog, IDOK);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    ASSERT_TRUE(WaitForFile(program, names[56], "[File 57 of 100]"));
    dialog = ShowSelectList(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ListSelection(dialog, IDC_SELECT_FILES), 56);
    EXPECT_EQ(ListTop(dialog, IDC_SELECT_FILES), 56);
    PressControl(dialog, IDCANCEL);
    EXPECT_TRUE(WaitUntilClosed(dialog));
}

TEST_F(FileListTest, TheDetailsFollowTheSelection)
{
    Files.Write("a.qqq", std::string(1234567, 'x'));
    Files.Write("b.zip", "xPK\x05\x06" + std::string(18, '\0')); // an archive of nothing behind a byte of its own
    SetFileAttributesA(Files.PathOf("b.zip").c_str(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE);
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().DropFiles(program.Frame(), PathsOf({"a.qqq", "b.zip", "gone.txt"}));
    ASSERT_TRUE(WaitForFile(program, "a.qqq", "[File 1 of 3]"));
    const HWND dialog = ShowSelectList(program);
    ASSERT_NE(dialog, nullptr);
    const HWND list = GetDlgItem(dialog, IDC_SELECT_FILES);
    const int shortHeight = HeightOf(dialog);
    EXPECT_EQ(ControlText(dialog, IDC_SELECT_SIZE), "");
    ASSERT_TRUE(WaitUntil([&] { return FocusOf(dialog) == list; }));
    PressKeys({VK_MENU, 'D'});
    ASSERT_TRUE(WaitUntil([&] { return ControlText(dialog, IDC_SELECT_DETAILS) == "<< &Details"; }));
    ASSERT_TRUE(WaitUntil([&] { return FocusOf(dialog) == list; }));
    EXPECT_GT(HeightOf(dialog), shortHeight);
    EXPECT_EQ(ControlText(dialog, IDC_SELECT_PATH), Files.Path());
    EXPECT_EQ(ControlText(dialog, IDC_SELECT_TYPE), "Unknown");
    EXPECT_EQ(ControlText(dialog, IDC_SELECT_SIZE), "1,234,567 bytes");
    const std::string attributes = ControlText(dialog, IDC_SELECT_ATTRIBUTES);
    EXPECT_EQ(attributes.find("Read-only"), std::string::npos) << attributes;
    PressKeys({VK_DOWN});
    ASSERT_TRUE(WaitUntil([&] { return ControlText(dialog, IDC_SELECT_SIZE) == "23 bytes"; }));
    EXPECT_EQ(ControlText(dialog, IDC_SELECT_ATTRIBUTES).substr(0, 9), "Read-only");
    EXPECT_EQ(ControlText(dialog, IDC_SELECT_TYPE), "Zip File");
    // A file that is not there has a place, but nothing else.
    PressKeys({VK_DOWN});
    ASSERT_TRUE(WaitUntil([&] { return ControlText(dialog, IDC_SELECT_SIZE).empty(); }));
    EXPECT_EQ(ControlText(dialog, IDC_SELECT_PATH), Files.Path());
    EXPECT_EQ(ControlText(dialog, IDC_SELECT_TYPE), "");
    EXPECT_EQ(ControlText(dialog, IDC_SELECT_CHANGED), "");
    EXPECT_EQ(ControlText(dialog, IDC_SELECT_ATTRIBUTES), "");
    PressKeys({VK_MENU, 'D'});
    ASSERT_TRUE(WaitUntil([&] { return ControlText(dialog, IDC_SELECT_DETAILS) == "&Details >>"; }));
    EXPECT_TRUE(WaitUntil([&] { return HeightOf(dialog) == shortHeight; }));
    PressControl(dialog, IDCANCEL);
    EXPECT_TRUE(WaitUntilClosed(dialog));
}

TEST_F(FileListTest, TheDetailsStayAsTheyWereLeft)
{
    Files.WriteAll({"a.txt", "second.txt"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().DropFiles(program.Frame(), PathsOf({"a.txt", "second.txt"}));
    ASSERT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 2]"));
    HWND dialog = ShowSelectList(program);
    ASSERT_NE(dialog, nullptr);
    const int shortHeight = HeightOf(dialog);
    PressControl(dialog, IDC_SELECT_DETAILS);
    ASSERT_TRUE(WaitUntil([&] { return ControlText(dialog, IDC_SELECT_SIZE) == "5 bytes"; }));
    const int fullHeight = HeightOf(dialog);
    PressControl(dialog, IDCANCEL);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    program.Command(IDM_FILE_NEXT);
    dialog = ShowSelectList(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, IDC_SELECT_DETAILS), "<< &Details");
    EXPECT_EQ(HeightOf(dialog), fullHeight);
    EXPECT_EQ(ControlText(dialog, IDC_SELECT_SIZE), "10 bytes");
    PressControl(dialog, IDC_SELECT_DETAILS);
    ASSERT_TRUE(WaitUntil([&] { return HeightOf(dialog) == shortHeight; }));
    PressControl(dialog, IDOK);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    ASSERT_TRUE(WaitForFile(program, "second.txt", "[File 2 of 2]"));
    dialog = ShowSelectList(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, IDC_SELECT_DETAILS), "&Details >>");
    EXPECT_EQ(HeightOf(dialog), shortHeight);
    PressControl(dialog, IDCANCEL);
    EXPECT_TRUE(WaitUntilClosed(dialog));
}

TEST_F(FileListTest, TheDetailsTellWhenTheFileWasChanged)
{
    const std::string path = Files.Write("a.txt", "a");
    Files.WriteAll({"b.txt"});
    const SYSTEMTIME noon = {2026, 6, 0, 15, 12, 34, 0, 0};
    SYSTEMTIME universal = {};
    FILETIME changed = {};
    TzSpecificLocalTimeToSystemTime(nullptr, &noon, &universal);
    SystemTimeToFileTime(&universal, &changed);
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(SetFileTime(file, nullptr, nullptr, &changed));
    CloseHandle(file);
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().DropFiles(program.Frame(), PathsOf({"a.txt", "b.txt"}));
    ASSERT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 2]"));
    const HWND dialog = ShowSelectList(program);
    ASSERT_NE(dialog, nullptr);
    PressControl(dialog, IDC_SELECT_DETAILS);
    ASSERT_TRUE(WaitUntil([&] { return ControlText(dialog, IDC_SELECT_SIZE) == "1 bytes"; }));
    EXPECT_EQ(ControlText(dialog, IDC_SELECT_CHANGED), "06/15/126  12:34"); // the year counts from 1900
    PressControl(dialog, IDCANCEL);
    EXPECT_TRUE(WaitUntilClosed(dialog));
}

TEST_F(FileListTest, ADriveInTheDetailsEndsWithABackslash)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    Files.WriteAll({"a.txt"});
    program.Inside().DropFiles(program.Frame(), {Files.PathOf("a.txt"), "C:\\not there.txt"});
    ASSERT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 2]"));
    const HWND dialog = ShowSelectList(program);
    ASSERT_NE(dialog, nullptr);
    PressControl(dialog, IDC_SELECT_DETAILS);
    ASSERT_TRUE(WaitUntil([&] { return ControlText(dialog, IDC_SELECT_PATH) == Files.Path(); }));
    ASSERT_TRUE(BringToForeground(dialog));
    PressKeys({VK_DOWN});
    EXPECT_TRUE(WaitUntil([&] { return ControlText(dialog, IDC_SELECT_PATH) == "c:\\"; }))
        << ControlText(dialog, IDC_SELECT_PATH);
    PressControl(dialog, IDCANCEL);
    EXPECT_TRUE(WaitUntilClosed(dialog));
}

TEST_F(FileListTest, AChosenFileThatVanishedIsReportedAndTheListStays)
{
    Files.WriteAll({"a.txt", "b.txt"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().DropFiles(program.Frame(), PathsOf({"a.txt", "gone.txt", "b.txt"}));
    ASSERT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 3]"));
    HWND dialog = ShowSelectList(program);
    ASSERT_NE(dialog, nullptr);
    DoubleClickEntry(dialog, IDC_SELECT_FILES, 1);
    EXPECT_EQ(program.AnswerBox(), CannotOpen + std::string("gone.txt"));
    ASSERT_TRUE(program.WaitForTitle(""));
    // Even without a document the list is at hand.
    dialog = ShowSelectList(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ListSelection(dialog, IDC_SELECT_FILES), 1);
    DoubleClickEntry(dialog, IDC_SELECT_FILES, 2);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    EXPECT_TRUE(WaitForFile(program, "b.txt", "[File 3 of 3]"));
}
