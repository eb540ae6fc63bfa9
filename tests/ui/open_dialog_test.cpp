#include "support/dialogs.h"
#include "support/file_list.h"
#include "support/input.h"
#include "support/ui_test.h"

namespace {

using Names = std::vector<std::string>;

class OpenDialogTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }

    TestDirectory Files{"dialog"};
};

std::string RecentText(Program& program, int number)
{
    return program.Menu(static_cast<UINT>(IDM_RECENT_FIRST + number - 1)).Text;
}

} // namespace

TEST_F(OpenDialogTest, CtrlOShowsIt)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    PressKeys({VK_CONTROL, 'O'});
    const HWND dialog = WaitForDialog(program, OpenTitle);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), program.Frame());
    EXPECT_NE(GetDlgItem(dialog, OpenFiles), nullptr);
    PressControl(dialog, IDCANCEL);
    EXPECT_TRUE(WaitUntilClosed(dialog));
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(OpenDialogTest, TheMenuItemShowsIt)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    ASSERT_TRUE(OpenMenu(program, 'F'));
    PressKeys({'O'});
    const HWND dialog = WaitForDialog(program, OpenTitle);
    ASSERT_NE(dialog, nullptr);
    PressControl(dialog, IDCANCEL);
    EXPECT_TRUE(WaitUntilClosed(dialog));
    EXPECT_FALSE(IsInMenu(program));
}

TEST_F(OpenDialogTest, ATypedNameOpensTheFileAndListsItsNeighbours)
{
    Files.WriteAll({"Alpha.txt", "BETA.TXT", "gamma.txt"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    PressKeys({VK_CONTROL, 'O'});
    const HWND dialog = WaitForDialog(program, OpenTitle);
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(WaitUntil([&] { return FocusOf(dialog) == GetDlgItem(dialog, OpenName); }));
    TypeText(Files.PathOf("beta.txt"));
    ASSERT_TRUE(WaitUntil([&] { return ControlText(dialog, OpenName) == Files.PathOf("beta.txt"); }))
        << ControlText(dialog, OpenName);
    PressKeys({VK_RETURN});
    ASSERT_TRUE(WaitUntilClosed(dialog));
    ASSERT_TRUE(WaitForFile(program, "beta.txt", "[File 2 of 3]"));
    EXPECT_EQ(program.TopText(), "BETA.TXT");
    EXPECT_EQ(program.StatusText(), "Line 1 Col 1  100%  [File 2 of 3]");
    EXPECT_EQ(RecentText(program, 1), "&1 " + Files.PathOf("beta.txt"));
    program.Command(IDM_FILE_NEXT);
    EXPECT_TRUE(WaitForFile(program, "gamma.txt", "[File 3 of 3]"));
    EXPECT_FALSE(CanGoOn(program));
    program.Command(IDM_FILE_PREVIOUS);
    program.Command(IDM_FILE_PREVIOUS);
    EXPECT_TRUE(WaitForFile(program, "alpha.txt", "[File 1 of 3]"));
    EXPECT_FALSE(CanGoBack(program));
    EXPECT_TRUE(CanGoOn(program));
}

TEST_F(OpenDialogTest, ADoubleClickOpensTheFile)
{
    Files.WriteAll({"1.txt", "2.txt", "3.txt", "4.txt"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowOpenDialog(program);
    ASSERT_NE(dialog, nullptr);
    ShowDirectory(dialog, Files, {"1.txt", "2.txt", "3.txt", "4.txt"});
    DoubleClickEntry(dialog, OpenFiles, 2);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    EXPECT_TRUE(WaitForFile(program, "3.txt", "[File 3 of 4]"));
    EXPECT_EQ(program.TopText(), "3.txt");
}

TEST_F(OpenDialogTest, TheListIsWalkedInTheOrderOfTheDialog)
{
    // The dialog sorts; the system finds the files in another order.
    Files.WriteAll({"zeta.txt", "Eta.txt", "theta.txt", "iota.txt"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowOpenDialog(program);
    ASSERT_NE(dialog, nullptr);
    ShowDirectory(dialog, Files, {"Eta.txt", "iota.txt", "theta.txt", "zeta.txt"});
    SetControlText(dialog, OpenName, "eta.txt");
    PressControl(dialog, IDOK);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    EXPECT_TRUE(WaitForFile(program, "eta.txt", "[File 1 of 4]"));
    const HWND list = ShowSelectList(program);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(ListTexts(list, IDC_SELECT_FILES), (Names{"eta.txt", "iota.txt", "theta.txt", "zeta.txt"}));
    PressControl(list, IDCANCEL);
    ASSERT_TRUE(WaitUntilClosed(list));
    EXPECT_FALSE(CanGoBack(program));
    program.Command(IDM_FILE_NEXT);
    EXPECT_TRUE(WaitForFile(program, "iota.txt", "[File 2 of 4]"));
    program.Command(IDM_FILE_NEXT);
    EXPECT_TRUE(WaitForFile(program, "theta.txt", "[File 3 of 4]"));
    program.Command(IDM_FILE_NEXT);
    EXPECT_TRUE(WaitForFile(program, "zeta.txt", "[File 4 of 4]"));
    EXPECT_FALSE(CanGoOn(program));
}

TEST_F(OpenDialogTest, TheOnlyFileOfADirectoryMakesNoList)
{
    Files.WriteAll({"only.txt"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    OpenThroughDialog(program, Files.PathOf("only.txt"));
    EXPECT_TRUE(WaitUntil([&] { return RecentText(program, 1) == "&1 " + Files.PathOf("only.txt"); }));
    EXPECT_TRUE(WaitForFile(program, "only.txt", ""));
    EXPECT_EQ(program.StatusText(), "Line 1 Col 1  100%");
    EXPECT_FALSE(CanGoOn(program));
    EXPECT_FALSE(CanGoBack(program));
}

TEST_F(OpenDialogTest, TheOnlyFileOfADirectoryEndsAnEarlierList)
{
    const TestDirectory other("other");
    other.WriteAll({"1.txt", "2.txt"});
    Files.WriteAll({"only.txt"});
    Program program(other.PathOf("*.txt"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_EQ(ListPart(program), "[File 1 of 2]");
    OpenThroughDialog(program, Files.PathOf("only.txt"));
    EXPECT_TRUE(WaitForFile(program, "only.txt", ""));
    EXPECT_TRUE(WaitUntil([&] { return !CanGoOn(program); }));
}

TEST_F(OpenDialogTest, AChoiceReplacesAnEarlierList)
{
    const TestDirectory other("other");
    other.WriteAll({"1.txt", "2.txt"});
    Files.WriteAll({"a.txt", "b.txt", "c.txt"});
    Program program(other.PathOf("*.txt"));
    ASSERT_TRUE(program.WaitForFrame());
    OpenThroughDialog(program, Files.PathOf("b.txt"));
    EXPECT_TRUE(WaitForFile(program, "b.txt", "[File 2 of 3]"));
    program.Command(IDM_FILE_PREVIOUS);
    EXPECT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 3]"));
}

TEST_F(OpenDialogTest, CancellingChangesNothing)
{
    Files.WriteAll({"a.txt", "b.txt", "c.txt"});
    const TestDirectory other("other");
    other.WriteAll({"1.txt", "2.txt", "3.txt"});
    const std::vector<std::string> names = other.Find("*.txt");
    ASSERT_EQ(names.size(), 3u);
    Program program(other.PathOf("*.txt"));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_FILE_NEXT);
    ASSERT_TRUE(WaitForFile(program, names[1], "[File 2 of 3]"));
    HWND dialog = ShowOpenDialog(program);
    ASSERT_NE(dialog, nullptr);
    ShowDirectory(dialog, Files, {"a.txt", "b.txt", "c.txt"});
    SetControlText(dialog, OpenName, "b.txt");
    ASSERT_TRUE(BringToForeground(dialog));
    PressKeys({VK_ESCAPE});
    ASSERT_TRUE(WaitUntilClosed(dialog));
    EXPECT_TRUE(WaitForFile(program, names[1], "[File 2 of 3]"));
    EXPECT_EQ(program.TopText(), names[1]);
    EXPECT_EQ(RecentText(program, 1), "");
    program.Command(IDM_FILE_NEXT);
    EXPECT_TRUE(WaitForFile(program, names[2], "[File 3 of 3]"));
    EXPECT_FALSE(IsIconic(program.Frame())); // the Esc was the dialog's alone
}

TEST_F(OpenDialogTest, CancellingWithoutAFileChangesNothing)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowOpenDialog(program);
    ASSERT_NE(dialog, nullptr);
    PressControl(dialog, IDCANCEL);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    EXPECT_EQ(program.Title(), "Kestovar");
    EXPECT_TRUE(program.Menu(IDM_FILE_CLOSE).Greyed);
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_EQ(SettingValue("SavedFile1"), "(none)");
}

TEST_F(OpenDialogTest, ANameThatDoesNotExistIsNeitherOpenedNorAdded)
{
    Files.WriteAll({"a.txt", "b.txt"});
    Program program(Files.PathOf("*.txt"));
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowOpenDialog(program);
    ASSERT_NE(dialog, nullptr);
    SetControlText(dialog, OpenName, Files.PathOf("missing.txt"));
    PressControl(dialog, IDOK);
    ASSERT_TRUE(WaitUntil([&] { return !IsWindow(dialog) || !IsWindowEnabled(dialog); }));
    if (IsWindow(dialog)) {
        const HWND box = WaitForBoxOver(dialog);
        ASSERT_NE(box, nullptr);
        PressControl(box, IDOK);
        ASSERT_TRUE(WaitUntilClosed(box));
        PressControl(dialog, IDCANCEL);
        ASSERT_TRUE(WaitUntilClosed(dialog));
        EXPECT_NE(ListPart(program), "");
    } else {
        // A system's dialog that lets the name pass leaves it to the program to say so.
        EXPECT_EQ(program.AnswerBox(), "Unable to open the file\n\nmissing.txt");
        EXPECT_TRUE(program.WaitForTitle(""));
        EXPECT_FALSE(CanGoOn(program));
    }
    EXPECT_EQ(RecentText(program, 1), "");
    OpenThroughDialog(program, Files.PathOf("b.txt"));
    EXPECT_TRUE(WaitUntil([&] { return RecentText(program, 1) == "&1 " + Files.PathOf("b.txt"); }));
}

TEST_F(OpenDialogTest, TheFilterOfTheSettingsRestrictsTheList)
{
    WriteSettings(std::string(FixedFont) + "FilterSpec=Logs;*.LOG;Everything;*.*;\n");
    Files.WriteAll({"a.log", "b.txt", "c.LOG", "d.ini"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowOpenDialog(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, OpenTypes), "Logs");
    ShowDirectory(dialog, Files, {"a.log", "c.LOG"});
    SetControlText(dialog, OpenName, "c.log");
    PressControl(dialog, IDOK);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    EXPECT_TRUE(WaitForFile(program, "c.log", "[File 2 of 2]"));
    program.Command(IDM_FILE_PREVIOUS);
    EXPECT_TRUE(WaitForFile(program, "a.log", "[File 1 of 2]"));
}

TEST_F(OpenDialogTest, AFileOutsideTheFilterMakesNoList)
{
    WriteSettings(std::string(FixedFont) + "FilterSpec=Logs|*.LOG|\n");
    Files.WriteAll({"a.log", "b.txt", "c.log"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    OpenThroughDialog(program, Files.PathOf("b.txt"));
    EXPECT_TRUE(WaitForFile(program, "b.txt", ""));
    EXPECT_FALSE(CanGoOn(program));
    EXPECT_FALSE(CanGoBack(program));
}

TEST_F(OpenDialogTest, AnotherStandardFilterListsOtherFiles)
{
    Files.WriteAll({"a.ini", "b.txt", "c.zip", "d.txt"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowOpenDialog(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, OpenTypes), "All Files (*.*)");
    ShowDirectory(dialog, Files, {"a.ini", "b.txt", "c.zip", "d.txt"});
    ASSERT_TRUE(BringToForeground(dialog));
    const HWND types = GetDlgItem(dialog, OpenTypes);
    PostMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(types), TRUE);
    ASSERT_TRUE(WaitUntil([&] { return FocusOf(dialog) == types; }));
    PressKeys({VK_DOWN});
    EXPECT_TRUE(WaitUntil([&] {
        return ListTexts(dialog, OpenFiles) == Names{"b.txt", "d.txt"};
    })) << testing::PrintToString(ListTexts(dialog, OpenFiles));
    EXPECT_EQ(ControlText(dialog, OpenTypes), "Text Files (*.TXT)");
    SetControlText(dialog, OpenName, "d.txt");
    PressControl(dialog, IDOK);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    EXPECT_TRUE(WaitForFile(program, "d.txt", "[File 2 of 2]"));
}

TEST_F(OpenDialogTest, NamesWithBlanksAndOtherLettersOpen)
{
    Files.WriteAll({"two words.txt",
                    "\xC4rger \xFC\x62"
                    "er \xD6l.txt",
                    "plain.txt"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    HWND dialog = ShowOpenDialog(program);
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(BringToForeground(dialog));
    ASSERT_TRUE(WaitUntil([&] { return FocusOf(dialog) == GetDlgItem(dialog, OpenName); }));
    const std::string typed = Files.PathOf("\xC4rger \xFC\x62"
                                           "er \xD6l.txt");
    TypeText(typed);
    ASSERT_TRUE(WaitUntil([&] { return ControlText(dialog, OpenName) == typed; })) << ControlText(dialog, OpenName);
    PressKeys({VK_RETURN});
    ASSERT_TRUE(WaitUntilClosed(dialog));
    EXPECT_TRUE(program.WaitForTitle("\xE4rger \xFC\x62"
                                     "er \xF6l.txt"))
        << program.Title();
    EXPECT_TRUE(WaitUntil([&] { return ListPart(program).ends_with(" of 3]"); })) << ListPart(program);
    OpenThroughDialog(program, Files.PathOf("two words.txt"));
    EXPECT_EQ(program.TopText(), "two words.txt");
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_EQ(SettingValue("SavedFile1"), Files.PathOf("\xE4rger \xFC\x62"
                                                       "er \xF6l.txt"));
    EXPECT_EQ(SettingValue("SavedFile2"), Files.PathOf("two words.txt"));
}

TEST_F(OpenDialogTest, AFileThatCannotBeOpenedIsReportedAndItsNeighboursCanBeWalked)
{
    Files.WriteAll({"a.txt", "b.txt", "c.txt"});
    const HANDLE lock =
        CreateFileA(Files.PathOf("b.txt").c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(lock, INVALID_HANDLE_VALUE);
    Program program(Files.PathOf("a.txt"));
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowOpenDialog(program);
    ASSERT_NE(dialog, nullptr);
    ShowDirectory(dialog, Files, {"a.txt", "b.txt", "c.txt"});
    SetControlText(dialog, OpenName, "b.txt");
    PressControl(dialog, IDOK);
    EXPECT_EQ(program.AnswerBox(), "Unable to open the file\n\nb.txt");
    CloseHandle(lock);
    EXPECT_TRUE(program.WaitForTitle(""));
    EXPECT_EQ(RecentText(program, 1), "");
    EXPECT_TRUE(WaitUntil([&] { return CanGoOn(program) && CanGoBack(program); }));
    program.Command(IDM_FILE_NEXT);
    EXPECT_TRUE(WaitForFile(program, "c.txt", "[File 3 of 3]"));
    program.Command(IDM_FILE_PREVIOUS);
    EXPECT_TRUE(WaitForFile(program, "b.txt", "[File 2 of 3]"));
}

TEST_F(OpenDialogTest, ADirectoryOfMoreThanTheListHoldsIsReportedOnce)
{
    // Long names fill a list soon: 32000 bytes with three for each file.
    constexpr int NameLength = 200;
    constexpr int MostFiles = 32000 / (NameLength + 3) + 1;
    for (int i = 1; i <= MostFiles + 1; ++i) {
        char number[8];
        snprintf(number, sizeof number, "%03d", i);
        Files.Write(number + std::string(NameLength - 3, 'n'), "");
    }
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowOpenDialog(program);
    ASSERT_NE(dialog, nullptr);
    const std::string chosen = "006" + std::string(NameLength - 3, 'n');
    SetControlText(dialog, OpenName, Files.PathOf(chosen));
    PressControl(dialog, IDOK);
    EXPECT_EQ(program.AnswerBox(), "Too many files/directories or insufficient storage\nList has been truncated");
    ASSERT_TRUE(WaitUntilClosed(dialog));
    EXPECT_TRUE(WaitForFile(program, chosen, "[File 6 of " + std::to_string(MostFiles) + "]"));
    EXPECT_FALSE(program.ShowsBox());
}
