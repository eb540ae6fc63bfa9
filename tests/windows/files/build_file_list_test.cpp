#include "files/build_file_list.h"

#include "harness/dialogs.h"
#include "harness/folder.h"
#include "harness/program.h"
#include "harness/system_calls.h"
#include "view/frame_windows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

constexpr char ListTruncated[] = "Too many files/directories or insufficient storage\nList has been truncated";
constexpr char NoMatches[] = "No files were found that matched the command line file spec";

using Names = std::vector<std::string>;

class BuildingTheFileList : public RunningProgram {
protected:
    BuildingTheFileList() { ClearFileList(); }
    ~BuildingTheFileList() override { ClearFileList(); }

    // Builds the list; returns what became of the pattern.
    static std::string Build(const std::string& pattern)
    {
        char path[MaxPathSize];
        CopyText(path, pattern.c_str());
        BuildFileList(Windows.Main, path);
        return path;
    }

    // The files as the file system itself lists them, in lower case.
    static Names FilesOf(const std::string& pattern)
    {
        Names names;
        WIN32_FIND_DATAA found;
        const HANDLE search = FindFirstFileA(pattern.c_str(), &found);
        if (search != INVALID_HANDLE_VALUE) {
            do {
                if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
                    names.push_back(LowerCase(found.cFileName));
                }
            } while (FindNextFileA(search, &found));
            FindClose(search);
        }
        return names;
    }
};

} // namespace

TEST_F(BuildingTheFileList, ListsWhatMatchesInTheOrderOfTheFileSystem)
{
    ScratchFolder folder("build");
    for (const char* name : {"zebra.txt", "apple.txt", "Mango.TXT", "banana.txt", "other.dat", "1.txt"}) {
        folder.Add(name);
    }
    const Names expected = FilesOf(folder.Path("*.txt"));
    ASSERT_EQ(5u, expected.size());
    const std::string first = Build(folder.Path("*.txt"));
    EXPECT_EQ(expected, ListedNames());
    EXPECT_EQ(LowerCase(folder.Path(expected[0])), first);
    EXPECT_EQ(1, FileList.ListPosition);
    EXPECT_EQ(5, FileList.ListTotal);
    EXPECT_EQ(0, FileList.ListAdjust);
}

TEST_F(BuildingTheFileList, PathsAreInLowerCaseWithTheDirectoryOfThePattern)
{
    ScratchFolder folder("BUILD");
    folder.Add("One.TXT");
    folder.Add("TWO.txt");
    Build(folder.Path("*.TXT"));
    ASSERT_EQ(2, FileListSize());
    for (const std::string& path : ListedPaths()) {
        EXPECT_EQ(0u, path.find(LowerCase(folder.Path()))) << path;
        EXPECT_EQ(LowerCase(path), path);
    }
}

TEST_F(BuildingTheFileList, DirectoriesHiddenAndSystemFilesAreNotListed)
{
    ScratchFolder folder("build");
    folder.Add("a.txt");
    folder.Add("b.txt");
    folder.Add("hidden.txt");
    folder.Add("system.txt");
    CreateDirectoryA(folder.Path("directory.txt").c_str(), nullptr);
    ASSERT_TRUE(SetFileAttributesA(folder.Path("hidden.txt").c_str(), FILE_ATTRIBUTE_HIDDEN));
    ASSERT_TRUE(SetFileAttributesA(folder.Path("system.txt").c_str(), FILE_ATTRIBUTE_SYSTEM));
    Build(folder.Path("*.*"));
    EXPECT_EQ((Names{"a.txt", "b.txt"}), ListedNames());
}

TEST_F(BuildingTheFileList, ReadOnlyAndArchiveFilesAreListed)
{
    ScratchFolder folder("build");
    folder.Add("archive.txt");
    folder.Add("normal.txt");
    folder.Add("read-only.txt");
    SetFileAttributesA(folder.Path("archive.txt").c_str(), FILE_ATTRIBUTE_ARCHIVE);
    SetFileAttributesA(folder.Path("normal.txt").c_str(), FILE_ATTRIBUTE_NORMAL);
    SetFileAttributesA(folder.Path("read-only.txt").c_str(), FILE_ATTRIBUTE_READONLY);
    Build(folder.Path("*"));
    EXPECT_EQ((Names{"archive.txt", "normal.txt", "read-only.txt"}), ListedNames());
}

TEST_F(BuildingTheFileList, OneMatchMakesNoList)
{
    ScratchFolder folder("build");
    folder.Add("Only.txt");
    folder.Add("other.dat");
    EXPECT_EQ(LowerCase(folder.Path("only.txt")), Build(folder.Path("*.txt")));
    EXPECT_EQ(0, FileListSize());
    EXPECT_EQ(0, FileList.ListTotal);
    EXPECT_EQ(1, FileList.ListPosition);
}

TEST_F(BuildingTheFileList, NoMatchIsReportedAndLeavesNeitherListNorPath)
{
    ScratchFolder folder("build");
    folder.Add("a.txt");
    folder.Add("b.txt");
    Build(folder.Path("*.txt"));
    ASSERT_EQ(2, FileListSize());
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    EXPECT_EQ("", Build(folder.Path("*.none")));
    EXPECT_EQ(NoMatches, answers.OnlyText());
    EXPECT_EQ(Windows.Main, answers.Seen()[0].Owner);
    EXPECT_EQ(0, FileListSize());
    EXPECT_EQ(0, FileList.ListTotal);
}

TEST_F(BuildingTheFileList, ADirectoryThatIsMissingHasNoMatches)
{
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    EXPECT_EQ("", Build(ScratchPath("missing\\*.*")));
    EXPECT_EQ(NoMatches, answers.OnlyText());
}

TEST_F(BuildingTheFileList, OnlyDirectoriesAndHiddenFilesAreNoMatch)
{
    ScratchFolder folder("build");
    folder.Add("hidden.txt");
    SetFileAttributesA(folder.Path("hidden.txt").c_str(), FILE_ATTRIBUTE_HIDDEN);
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    EXPECT_EQ("", Build(folder.Path("*.*")));
    EXPECT_EQ(NoMatches, answers.OnlyText());
}

TEST_F(BuildingTheFileList, WithoutADirectoryTheCurrentOneCounts)
{
    ScratchFolder folder("build");
    folder.Add("a.txt");
    folder.Add("b.txt");
    const CurrentDirectory current(folder.Name());
    EXPECT_EQ(LowerCase(folder.Path("a.txt")), Build("*.txt"));
    EXPECT_EQ((Names{LowerCase(folder.Path("a.txt")), LowerCase(folder.Path("b.txt"))}), ListedPaths());
}

TEST_F(BuildingTheFileList, ABackslashInFrontIsNoDirectoryAndTheCurrentOneCounts)
{
    ScratchFolder folder("build");
    const CurrentDirectory current(folder.Name());
    const std::string root = folder.Name().substr(0, 3);
    for (const char* name : {"kvfront1.txt", "kvfront2.txt"}) {
        CloseHandle(CreateFileA((root + name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    }
    EXPECT_EQ(LowerCase(folder.Path("kvfront1.txt")), Build("\\kvfront*.txt"));
    EXPECT_EQ((Names{LowerCase(folder.Path("kvfront1.txt")), LowerCase(folder.Path("kvfront2.txt"))}), ListedPaths());
    DeleteFileA((root + "kvfront1.txt").c_str());
    DeleteFileA((root + "kvfront2.txt").c_str());
}

TEST_F(BuildingTheFileList, ADriveAloneKeepsItsColonAndLosesNoLetter)
{
    const CurrentDirectory current("c:\\");
    for (const char* path : {"c:\\kvdrive.kv1", "c:\\kvdrive.kv2"}) {
        CloseHandle(CreateFileA(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    }
    EXPECT_EQ("c:\\kvdrive.kv1", Build("C:KVDRIVE.*"));
    EXPECT_EQ((Names{"c:\\kvdrive.kv1", "c:\\kvdrive.kv2"}), ListedPaths());
    char directory[MaxPathSize];
    char name[MaxPathSize];
    ASSERT_TRUE(GetListEntry(1, directory, name));
    EXPECT_STREQ("c:", directory);
    EXPECT_STREQ("kvdrive.kv1", name);
    DeleteFileA("c:\\kvdrive.kv1");
    DeleteFileA("c:\\kvdrive.kv2");
}

TEST_F(BuildingTheFileList, TheRootOfADriveIsADirectory)
{
    const std::string file = "c:\\kvroot.kv1";
    const std::string other = "c:\\kvroot.kv2";
    for (const std::string& path : {file, other}) {
        CloseHandle(CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    }
    EXPECT_EQ(file, Build("C:\\kvroot.kv?"));
    EXPECT_EQ((Names{file, other}), ListedPaths());
    DeleteFileA(file.c_str());
    DeleteFileA(other.c_str());
}

TEST_F(BuildingTheFileList, NamesWithBlanksSeveralDotsAndLettersOfOtherLanguages)
{
    ScratchFolder folder("build it");
    folder.Add("A Name With Blanks.txt");
    folder.Add("several.dots.in.it.TXT");
    folder.Add("\xC9t\xE9 \xDC"
               "ber.txt"); // É, é and Ü in the system's code page
    Build(folder.Path("*.txt"));
    Names names = ListedNames();
    std::sort(names.begin(), names.end());
    EXPECT_EQ((Names{"a name with blanks.txt", "several.dots.in.it.txt",
                     "\xE9t\xE9 \xFC"
                     "ber.txt"}),
              names);
}

TEST_F(BuildingTheFileList, ALongNameIsListedWhole)
{
    ScratchFolder folder("build");
    const std::string name(259 - folder.Path().size(), 'n');
    folder.Add(name);
    folder.Add("other");
    Build(folder.Path("*"));
    EXPECT_EQ((Names{name, "other"}), ListedNames());
    ASSERT_EQ(2, FileListSize());
    EXPECT_EQ(259u, ListedPaths()[0].size());
}

TEST_F(BuildingTheFileList, EveryFileFromThe2000thOnIsReportedAndThe2000thIsStillTaken)
{
    ScratchFolder folder("build");
    folder.AddMany(2003);
    DialogAnswers answers;
    answers.ThenPress(IDOK).ThenPress(IDOK).ThenPress(IDOK).ThenPress(IDOK);
    Build(folder.Path("*"));
    ASSERT_EQ(4u, answers.Seen().size());
    for (const SeenDialog& box : answers.Seen()) {
        EXPECT_EQ(ListTruncated, box.Text);
        EXPECT_EQ(Windows.Main, box.Owner);
    }
    EXPECT_EQ(2000, FileListSize());
    EXPECT_EQ(2000, FileList.ListTotal);
    EXPECT_TRUE(FileList.ListFull);
    const Names files = FilesOf(folder.Path("*"));
    EXPECT_EQ(Names(files.begin(), files.begin() + 2000), ListedNames());
}

TEST_F(BuildingTheFileList, LongNamesFillTheListEarlier)
{
    ScratchFolder folder("build");
    folder.AddMany(202, 157); // with 200 of them 32000 bytes are used, and one more is over
    DialogAnswers answers;
    answers.ThenPress(IDOK).ThenPress(IDOK);
    Build(folder.Path("*"));
    EXPECT_EQ(2u, answers.Seen().size());
    EXPECT_EQ(201, FileListSize());
}

TEST_F(BuildingTheFileList, AListThatComesWhileAnotherIsReportedAsFullReplacesIt)
{
    ScratchFolder folder("build");
    folder.AddMany(220, 157); // of 32000 bytes, each takes 160
    DialogAnswers answers;
    answers.Then([](HWND box) {
        ClearFileList();
        AddFileToList(nullptr, "c:\\other\\one", "");
        AddFileToList(nullptr, "c:\\other\\two", "");
        WalkFileList(2);
        PressButton(box, IDOK);
    });
    EXPECT_EQ("", Build(folder.Path("*")));
    EXPECT_EQ((Names{"one", "two"}), ListedNames());
    EXPECT_EQ(2, FileList.ListPosition);
    EXPECT_EQ(2, FileList.ListTotal);
}

TEST_F(BuildingTheFileList, AListThatWasFullCanBeBuiltAnew)
{
    for (int i = 0; i <= MaxListDirectories; ++i) {
        AddFileToList(nullptr, ("c:\\" + std::to_string(i)).c_str(), "name");
    }
    ASSERT_TRUE(FileList.ListFull);
    ScratchFolder folder("build");
    folder.Add("a.txt");
    folder.Add("b.txt");
    Build(folder.Path("*"));
    EXPECT_FALSE(FileList.ListFull);
    EXPECT_EQ((Names{"a.txt", "b.txt"}), ListedNames());
}

TEST_F(BuildingTheFileList, WithoutMemoryForTheListItIsFullAndEmpty)
{
    const NoMemoryObjects none;
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    AddFileToList(Windows.Main, "c:\\file.txt", "");
    EXPECT_EQ(ListTruncated, answers.OnlyText());
    EXPECT_TRUE(FileList.ListFull);
    EXPECT_EQ(0, FileListSize());
}

TEST_F(BuildingTheFileList, WithoutMemoryForTheListEveryMatchIsReportedAndThereIsNoPath)
{
    ScratchFolder folder("build");
    folder.Add("a.txt");
    folder.Add("b.txt");
    const NoMemoryObjects none;
    DialogAnswers answers;
    answers.ThenPress(IDOK).ThenPress(IDOK);
    EXPECT_EQ("", Build(folder.Path("*.txt")));
    ASSERT_EQ(2u, answers.Seen().size());
    EXPECT_EQ(ListTruncated, answers.Seen()[0].Text);
    EXPECT_EQ(ListTruncated, answers.Seen()[1].Text);
    EXPECT_EQ(0, FileListSize());
    EXPECT_EQ(0, FileList.ListTotal);
}

TEST_F(BuildingTheFileList, AListThatHadNoMemoryCanBeBuiltAnew)
{
    {
        const NoMemoryObjects none;
        AddFileToList(nullptr, "c:\\file.txt", "");
    }
    ASSERT_TRUE(FileList.ListFull);
    ScratchFolder folder("build");
    folder.Add("a.txt");
    folder.Add("b.txt");
    EXPECT_EQ(LowerCase(folder.Path("a.txt")), Build(folder.Path("*")));
    EXPECT_FALSE(FileList.ListFull);
    EXPECT_EQ((Names{"a.txt", "b.txt"}), ListedNames());
}

TEST_F(BuildingTheFileList, AddingWritesDirectoryAndNameInLowerCase)
{
    AddFileToList(nullptr, "C:\\Some Where\\", "File \xC4.TXT");
    AddFileToList(nullptr, "D:\\OTHER\\Path.Txt", "");
    EXPECT_EQ((Names{"c:\\some where\\file \xE4.txt", "d:\\other\\path.txt"}), ListedPaths());
}

TEST_F(BuildingTheFileList, APathLongerThanAnyFilesIsRefusedAndNotCut)
{
    const std::string path = "c:\\" + std::string(127, 'd') + "\\" + std::string(128, 'n');
    ASSERT_EQ(259u, path.size());
    EXPECT_TRUE(AddFileToList(nullptr, (path + "n").c_str(), ""));
    EXPECT_EQ(0, FileListSize());
    EXPECT_FALSE(FileList.ListFull);
    EXPECT_TRUE(AddFileToList(nullptr, path.c_str(), ""));
    EXPECT_EQ((Names{path}), ListedPaths());
}

TEST_F(BuildingTheFileList, AddingTellsWhetherTheListIsStillTheSame)
{
    for (int i = 0; i < MaxListDirectories; ++i) {
        EXPECT_TRUE(AddFileToList(Windows.Main, ("c:\\" + std::to_string(i)).c_str(), "name"));
    }
    DialogAnswers answers;
    answers.ThenPress(IDOK).Then([](HWND box) {
        ClearFileList();
        PressButton(box, IDOK);
    });
    EXPECT_TRUE(AddFileToList(Windows.Main, "c:\\more", "name"));
    EXPECT_FALSE(AddFileToList(Windows.Main, "c:\\more", "name"));
}

TEST_F(BuildingTheFileList, AFullListIsReportedToTheOwnerForEachFile)
{
    for (int i = 0; i < MaxListDirectories; ++i) {
        AddFileToList(Windows.Main, ("c:\\" + std::to_string(i)).c_str(), "name");
    }
    ASSERT_FALSE(FileList.ListFull);
    DialogAnswers answers;
    answers.ThenPress(IDOK).ThenPress(IDOK);
    AddFileToList(Windows.Main, "c:\\more", "name");
    EXPECT_TRUE(FileList.ListFull);
    AddFileToList(Windows.Main, "c:\\0", "name of a known directory");
    ASSERT_EQ(2u, answers.Seen().size());
    EXPECT_EQ(ListTruncated, answers.Seen()[0].Text);
    EXPECT_EQ(ListTruncated, answers.Seen()[1].Text);
    EXPECT_EQ(MaxListDirectories, FileListSize());
}

TEST_F(BuildingTheFileList, WithoutAnOwnerAFullListIsNotReported)
{
    const DialogAnswers none;
    for (int i = 0; i < MaxListDirectories + 3; ++i) {
        AddFileToList(nullptr, ("c:\\" + std::to_string(i)).c_str(), "name");
    }
    EXPECT_TRUE(FileList.ListFull);
    EXPECT_EQ(MaxListDirectories, FileListSize());
}

TEST_F(BuildingTheFileList, MatchesAreAppendedToWhatIsThere)
{
    ScratchFolder folder("build");
    folder.Add("a.txt");
    folder.Add("b.txt");
    AddFileToList(nullptr, "c:\\first.txt", "");
    EXPECT_EQ(2, AddMatchesToList(nullptr, folder.Path("*.txt").c_str()));
    EXPECT_EQ((Names{"first.txt", "a.txt", "b.txt"}), ListedNames());
    EXPECT_EQ(0, FileList.ListTotal) << "it is not walked yet";
}

TEST_F(BuildingTheFileList, AStarOrAQuestionMarkMakesAPattern)
{
    EXPECT_TRUE(HasWildcards("c:\\*.txt"));
    EXPECT_TRUE(HasWildcards("?"));
    EXPECT_FALSE(HasWildcards("c:\\plain.txt"));
    EXPECT_FALSE(HasWildcards(""));
}
