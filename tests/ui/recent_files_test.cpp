#include "support/dialogs.h"
#include "support/file_list.h"
#include "support/input.h"
#include "support/ui_test.h"

namespace {

using Texts = std::vector<std::string>;

class RecentFilesTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }

    // "SavedFile1=" and so on, as the program leaves them.
    static void SaveRecentFiles(const std::vector<std::string>& paths)
    {
        std::string keys = FixedFont;
        for (std::size_t i = 0; i < paths.size(); ++i) {
            keys += "SavedFile" + std::to_string(i + 1) + "=" + paths[i] + "\n";
        }
        WriteSettings(keys);
    }

    TestDirectory Files{"r"};
};

// What the File menu shows behind its last separator.
Texts RecentTexts(Program& program)
{
    const Texts all = program.Inside().PopupTexts(program.Frame(), 0);
    std::size_t begin = all.size();
    while (begin > 0 && all[begin - 1] != "-") {
        --begin;
    }
    return {all.begin() + static_cast<std::ptrdiff_t>(begin), all.end()};
}

// The menu is made anew at the very end of the opening.
void ExpectRecent(Program& program, const Texts& expected)
{
    Texts texts;
    EXPECT_TRUE(WaitUntil([&] {
        texts = RecentTexts(program);
        return texts == expected;
    })) << testing::PrintToString(texts)
        << " instead of " << testing::PrintToString(expected);
}

// The keys of the settings file that tell of recent files.
Texts SavedFiles()
{
    Texts keys;
    for (const auto& [name, value] : ReadSettings()) {
        if (name.starts_with("SavedFile")) {
            keys.push_back(name + "=" + value);
        }
    }
    return keys;
}

} // namespace

TEST_F(RecentFilesTest, FilesOpenedByTheDialogAreAddedAtTheEnd)
{
    Files.WriteAll({"b.txt", "A.TXT", "c.txt"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ExpectRecent(program, Texts{});
    OpenThroughDialog(program, Files.PathOf("b.txt"));
    OpenThroughDialog(program, Files.PathOf("a.txt"));
    OpenThroughDialog(program, Files.PathOf("C.TXT"));
    ExpectRecent(program, (Texts{"&1 c:\\kvtest\\r\\b.txt", "&2 c:\\kvtest\\r\\a.txt", "&3 c:\\kvtest\\r\\c.txt"}));
    EXPECT_EQ(SavedFiles(), Texts{}); // written at the end
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_EQ(SavedFiles(), (Texts{"SavedFile1=c:\\kvtest\\r\\b.txt", "SavedFile2=c:\\kvtest\\r\\a.txt",
                                   "SavedFile3=c:\\kvtest\\r\\c.txt"}));
    Program next;
    ASSERT_TRUE(next.WaitForFrame());
    ExpectRecent(next, (Texts{"&1 c:\\kvtest\\r\\b.txt", "&2 c:\\kvtest\\r\\a.txt", "&3 c:\\kvtest\\r\\c.txt"}));
}

TEST_F(RecentFilesTest, TheTenthFileDropsTheOldest)
{
    Files.WriteAll({"new.txt", "newer.txt"});
    SaveRecentFiles({"c:\\1", "c:\\2", "c:\\3", "c:\\4", "c:\\5", "c:\\6", "c:\\7", "c:\\8"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    OpenThroughDialog(program, Files.PathOf("new.txt"));
    ExpectRecent(program, (Texts{"&1 c:\\1", "&2 c:\\2", "&3 c:\\3", "&4 c:\\4", "&5 c:\\5", "&6 c:\\6", "&7 c:\\7",
                                 "&8 c:\\8", "&9 c:\\kvtest\\r\\new.txt"}));
    OpenThroughDialog(program, Files.PathOf("newer.txt"));
    const Texts nine = {"&1 c:\\2",
                        "&2 c:\\3",
                        "&3 c:\\4",
                        "&4 c:\\5",
                        "&5 c:\\6",
                        "&6 c:\\7",
                        "&7 c:\\8",
                        "&8 c:\\kvtest\\r\\new.txt",
                        "&9 c:\\kvtest\\r\\newer.txt"};
    ExpectRecent(program, nine);
    program.Command(IDM_RECENT_LAST - 1);
    EXPECT_TRUE(program.WaitForTitle("new.txt"));
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_EQ(SavedFiles(), (Texts{"SavedFile1=c:\\2", "SavedFile2=c:\\3", "SavedFile3=c:\\4", "SavedFile4=c:\\5",
                                   "SavedFile5=c:\\6", "SavedFile6=c:\\7", "SavedFile7=c:\\8",
                                   "SavedFile8=c:\\kvtest\\r\\new.txt", "SavedFile9=c:\\kvtest\\r\\newer.txt"}));
}

TEST_F(RecentFilesTest, AFileOpenedAgainStaysInItsPlace)
{
    Files.WriteAll({"a.txt", "b.txt"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    OpenThroughDialog(program, Files.PathOf("a.txt"));
    OpenThroughDialog(program, Files.PathOf("b.txt"));
    OpenThroughDialog(program, Files.PathOf("A.TXT"));
    ASSERT_TRUE(WaitForFile(program, "a.txt", "[File 1 of 2]"));
    ExpectRecent(program, (Texts{"&1 c:\\kvtest\\r\\a.txt", "&2 c:\\kvtest\\r\\b.txt"}));
}

TEST_F(RecentFilesTest, OnlyTheDialogAddsFiles)
{
    Files.WriteAll({"a.txt", "b.txt", "c.txt", "d.txt"});
    SaveRecentFiles({Files.PathOf("d.txt")});
    const Texts before = {"&1 c:\\kvtest\\r\\d.txt"};
    {
        Program named(Files.PathOf("a.txt"));
        ASSERT_TRUE(named.WaitForFrame());
        ExpectRecent(named, before);
        named.Inside().Drop(named.Frame(), Files.PathOf("b.txt"));
        ASSERT_TRUE(WaitForFile(named, "b.txt", ""));
        ExpectRecent(named, before);
        named.Command(IDM_RECENT_FIRST);
        ASSERT_TRUE(WaitForFile(named, "d.txt", ""));
        ExpectRecent(named, before);
        named.Inside().DropFiles(named.Frame(), {Files.PathOf("c.txt"), Files.PathOf("a.txt")});
        ASSERT_TRUE(WaitForFile(named, "c.txt", "[File 1 of 2]"));
        named.Command(IDM_FILE_NEXT);
        ASSERT_TRUE(WaitForFile(named, "a.txt", "[File 2 of 2]"));
        ExpectRecent(named, before);
        EXPECT_EQ(named.Close(), 0u);
    }
    EXPECT_EQ(SavedFiles(), Texts{"SavedFile1=c:\\kvtest\\r\\d.txt"});
    Program listed(Files.PathOf("*.txt"));
    ASSERT_TRUE(listed.WaitForFrame());
    listed.Command(IDM_FILE_NEXT);
    EXPECT_EQ(ListPart(listed), "[File 2 of 4]");
    ExpectRecent(listed, before);
}

TEST_F(RecentFilesTest, WalkingTheListOfTheDialogAddsNothing)
{
    Files.WriteAll({"a.txt", "b.txt", "c.txt"});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    OpenThroughDialog(program, Files.PathOf("b.txt"));
    program.Command(IDM_FILE_NEXT);
    ASSERT_TRUE(WaitForFile(program, "c.txt", "[File 3 of 3]"));
    ExpectRecent(program, Texts{"&1 c:\\kvtest\\r\\b.txt"});
}

TEST_F(RecentFilesTest, TextsOfMoreThanThirtyCharactersAreShortened)
{
    SaveRecentFiles({
        "c:\\first\\second\\name567.txt", // with its number just thirty
        "c:\\first\\second\\name5678.txt",
        "c:\\first\\second\\third\\fourth\\name.txt",      // the tail begins with a directory
        "c:\\" + std::string(40, 'x') + "\\n.txt",         // of which the name may be all that is left
        "c:\\" + std::string(30, 'x') + "1234567890",      // the tail of a name
        "\\\\server\\share\\directory\\another\\name.txt", // the head ends with the first backslash
    });
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const Texts texts = RecentTexts(program);
    ASSERT_EQ(texts.size(), 6u);
    EXPECT_EQ(texts[0].size(), 30u);
    EXPECT_EQ(texts[0], "&1 c:\\first\\second\\name567.txt");
    EXPECT_EQ(texts[1], "&2 c:\\...\\second\\name5678.txt");
    EXPECT_EQ(texts[2], "&3 c:\\...\\third\\fourth\\name.txt");
    EXPECT_EQ(texts[3], "&4 c:\\...\\n.txt");
    EXPECT_EQ(texts[4], "&5 c:\\..." + std::string(17, 'x') + "1234567890");
    EXPECT_EQ(texts[5], "&6 \\...\\directory\\another\\name.txt");
}

TEST_F(RecentFilesTest, AGapAtTheStartIsClosedInOnePassAndSavedThatWay)
{
    WriteSettings("SavedFile1=c:\\a\nSavedFile3=c:\\b\nSavedFile4=c:\\c\nSavedFile5=c:\\d\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ExpectRecent(program, (Texts{"&1 c:\\a", "&2 c:\\b", "&3 c:\\d", "&4 c:\\c"}));
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_EQ(SettingValue("SavedFile1"), "c:\\a");
    EXPECT_EQ(SettingValue("SavedFile2"), "c:\\b");
    EXPECT_EQ(SettingValue("SavedFile3"), "c:\\d");
    EXPECT_EQ(SettingValue("SavedFile4"), "c:\\c");
    EXPECT_EQ(SettingValue("SavedFile5"), "c:\\d"); // a key beyond the count stays
}

TEST_F(RecentFilesTest, AFileBehindARemainingGapIsNotCounted)
{
    WriteSettings("SavedFile1=c:\\a\nSavedFile4=c:\\b\nSavedFile5=c:\\c\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ExpectRecent(program, (Texts{"&1 c:\\a", "&2 c:\\b"}));
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_EQ(SavedFiles(), (Texts{"SavedFile1=c:\\a", "SavedFile4=c:\\b", "SavedFile5=c:\\c", "SavedFile2=c:\\b"}));
}

TEST_F(RecentFilesTest, AMenuItemOpensTheFileAndEmptiesTheList)
{
    Files.WriteAll({"a.txt", "b.txt", "c.txt"});
    const TestDirectory other("other");
    SaveRecentFiles({other.Write("1.txt", "first"), other.Write("2.txt", "second")});
    Program program(Files.PathOf("*.txt"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_EQ(ListPart(program), "[File 1 of 3]");
    // By the real menu: the number is the item's key.
    ASSERT_TRUE(BringToForeground(program.Frame()));
    ASSERT_TRUE(OpenMenu(program, 'F'));
    PressKeys({'2'});
    EXPECT_TRUE(WaitForFile(program, "2.txt", ""));
    EXPECT_EQ(program.TopText(), "second");
    EXPECT_FALSE(CanGoOn(program));
    EXPECT_FALSE(CanGoBack(program));
    EXPECT_EQ(program.StatusText(), "Line 1 Col 1  100%");
    EXPECT_EQ(RecentTexts(program).size(), 2u);
}

TEST_F(RecentFilesTest, AFileThatIsGoneIsReportedAndStaysInTheMenu)
{
    Files.WriteAll({"a.txt", "b.txt"});
    SaveRecentFiles({Files.PathOf("gone.txt"), Files.PathOf("b.txt")});
    Program program(Files.PathOf("*.txt"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(CanGoOn(program));
    program.Post(WM_COMMAND, IDM_RECENT_FIRST);
    EXPECT_EQ(program.AnswerBox(), "Unable to open the file\n\ngone.txt");
    ASSERT_TRUE(program.Answers());
    EXPECT_EQ(program.Title(), "Kestovar");
    ExpectRecent(program, (Texts{"&1 c:\\kvtest\\r\\gone.txt", "&2 c:\\kvtest\\r\\b.txt"}));
    EXPECT_FALSE(CanGoOn(program)); // the list is gone all the same
    EXPECT_FALSE(CanGoBack(program));
    program.Command(IDM_RECENT_FIRST + 1);
    EXPECT_TRUE(WaitForFile(program, "b.txt", ""));
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_EQ(SavedFiles(), (Texts{"SavedFile1=c:\\kvtest\\r\\gone.txt", "SavedFile2=c:\\kvtest\\r\\b.txt"}));
}

TEST_F(RecentFilesTest, KeysBeyondTheCountAreLeftAlone)
{
    Files.WriteAll({"a.txt"});
    WriteSettings("SavedFile3=c:\\x\nSavedFile9=c:\\y\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const Texts loaded = RecentTexts(program);
    EXPECT_EQ(loaded, (Texts{"&1 c:\\x", "&2 c:\\y"}));
    OpenThroughDialog(program, Files.PathOf("a.txt"));
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_EQ(SettingValue("SavedFile1"), "c:\\x");
    EXPECT_EQ(SettingValue("SavedFile2"), "c:\\y");
    EXPECT_EQ(SettingValue("SavedFile3"), Files.PathOf("a.txt"));
    EXPECT_EQ(SettingValue("SavedFile4"), "(none)");
    EXPECT_EQ(SettingValue("SavedFile9"), "c:\\y");
}

TEST_F(RecentFilesTest, FilesOfANamedSectionAreItsOwn)
{
    Files.WriteAll({"a.txt"});
    WriteSettingsFile("[Kestovar]\nSavedFile1=c:\\x\n");
    {
        Program program("-Iother");
        ASSERT_TRUE(program.WaitForFrame());
        ExpectRecent(program, Texts{});
        OpenThroughDialog(program, Files.PathOf("a.txt"));
        EXPECT_EQ(program.Close(), 0u);
    }
    EXPECT_EQ(SavedFiles(), Texts{"SavedFile1=c:\\x"});
    EXPECT_EQ(SettingValue("SavedFile1", "other"), Files.PathOf("a.txt"));
}

TEST_F(RecentFilesTest, TheMenuBarKeepsItsRecentFilesWhileItIsHidden)
{
    Files.WriteAll({"a.txt"});
    WriteSettings(std::string(FixedFont) + "SuppressMenu=1\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    OpenThroughDialog(program, Files.PathOf("a.txt"));
    program.Send(program.Frame(), WM_SYSCOMMAND, IDM_SYSTEM_MENU_BAR);
    ExpectRecent(program, Texts{"&1 c:\\kvtest\\r\\a.txt"});
}
