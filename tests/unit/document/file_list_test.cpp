#include "document/file_list.h"
#include "support/test_port.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr std::size_t LongestPath = MaxPathSize - 1;

class FileListTest : public testing::Test {
protected:
    void SetUp() override
    {
        ClearFileList();
        TestPort::Reset();
    }

    void TearDown() override
    {
        ClearFileList();
        EXPECT_EQ(TestPort::LiveObjects(), 0);
        EXPECT_EQ(TestPort::Misuses(), 0);
        TestPort::Reset();
    }

    static ListAddition Add(const std::string& directory, const std::string& name)
    {
        return AppendToFileList(directory.c_str(), name.c_str());
    }

    static ListAddition AddPath(const std::string& path) { return AppendToFileList(path.c_str(), ""); }

    static void AddNames(int count, std::size_t length = 1)
    {
        for (int i = 0; i < count; ++i) {
            ASSERT_EQ(Add("c:", std::string(length, 'n')), ListAddition::Added) << i;
        }
    }

    static std::string Path(std::int32_t position)
    {
        char path[MaxPathSize];
        return GetListEntry(position, path) ? path : "none";
    }

    // Directory and name, with a bar between.
    static std::string Parts(std::int32_t position)
    {
        char directory[MaxPathSize];
        char name[MaxPathSize];
        return GetListEntry(position, directory, name) ? std::string(directory) + "|" + name : "none";
    }

    // The parts of a path that is added whole.
    static std::string PartsOfWhole(const std::string& path)
    {
        ClearFileList();
        AddPath(path);
        return Parts(1);
    }

    static std::vector<std::string> Paths()
    {
        std::vector<std::string> paths;
        for (std::int32_t position = 1; position <= FileListSize(); ++position) {
            paths.push_back(Path(position));
        }
        return paths;
    }

    static void Walk(int count, std::int32_t position)
    {
        for (int i = 1; i <= count; ++i) {
            Add("c:", std::to_string(i));
        }
        WalkFileList(position);
    }

    static void MoveTo(std::int32_t position)
    {
        FileList.ListPosition = position;
        FileList.ListAdjust = 0;
    }

    // As when the current file was deleted.
    static void DeleteCurrent()
    {
        RemoveListEntry(FileList.ListPosition);
        --FileList.ListTotal;
        --FileList.ListPosition;
        FileList.ListAdjust = 1;
    }

    static void ExpectFullAndUnchanged(std::int32_t count)
    {
        EXPECT_TRUE(FileList.ListFull);
        EXPECT_EQ(Add("c:", "x"), ListAddition::Rejected);
        EXPECT_EQ(Add("c:", "x"), ListAddition::Rejected);
        EXPECT_EQ(FileListSize(), count);
    }
};

using Strings = std::vector<std::string>;

} // namespace

TEST_F(FileListTest, IsEmptyAtFirst)
{
    EXPECT_EQ(FileListSize(), 0);
    EXPECT_FALSE(FileList.ListFull);
    EXPECT_EQ(FileList.ListTotal, 0);
    EXPECT_EQ(TestPort::LiveObjects(), 0);
    EXPECT_FALSE(HasNextFile());
    EXPECT_FALSE(HasPreviousFile());
}

TEST_F(FileListTest, AllocatesItsThreeStoresWithTheFirstEntry)
{
    Add("c:\\dir", "a.txt");
    EXPECT_EQ(TestPort::LiveObjects(), 3);
    EXPECT_EQ(TestPort::ObjectBytes(FileList.EntryStore), 32258u);
    EXPECT_EQ(TestPort::ObjectBytes(FileList.DirectoryStore), 10240u);
    EXPECT_EQ(TestPort::ObjectBytes(FileList.OrderTable), 4000u);
    Add("d:\\dir", "b.txt");
    EXPECT_EQ(TestPort::LiveObjects(), 3);
}

TEST_F(FileListTest, KeepsTheOrderInWhichFilesCame)
{
    Add("c:\\z", "b");
    Add("c:\\a", "z");
    Add("c:\\z", "a");
    Add("c:\\z", "a");
    EXPECT_EQ(Paths(), (Strings{"c:\\z\\b", "c:\\a\\z", "c:\\z\\a", "c:\\z\\a"}));
}

TEST_F(FileListTest, TextIsKeptAsItComes)
{
    // The caller writes it in lower case; directories are compared exactly.
    Add("c:\\Dir", "A \xE4.txt");
    Add("c:\\dir", "b");
    EXPECT_EQ(Paths(), (Strings{"c:\\Dir\\A \xE4.txt", "c:\\dir\\b"}));
    EXPECT_EQ(FileList.DirCount, 2);
}

TEST_F(FileListTest, EachDirectoryIsKeptOnce)
{
    Add("c:\\one", "a");
    Add("c:\\two", "b");
    Add("c:\\one", "c");
    Add("c:\\one\\", "d");
    AddPath("c:\\two\\e");
    Add("c:\\on", "f");
    EXPECT_EQ(FileList.DirCount, 3);
    EXPECT_EQ(FileList.DirectoryBytes, 7 + 7 + 6);
    EXPECT_EQ(Paths(), (Strings{"c:\\one\\a", "c:\\two\\b", "c:\\one\\c", "c:\\one\\d", "c:\\two\\e", "c:\\on\\f"}));
}

TEST_F(FileListTest, EntryTakesThreeBytesMoreThanItsName)
{
    Add("c:", "a");
    EXPECT_EQ(FileList.EntryBytes, 4);
    Add("c:", "abcdefgh.txt");
    EXPECT_EQ(FileList.EntryBytes, 4 + 15);
}

TEST_F(FileListTest, OneTrailingBackslashOfTheDirectoryIsDropped)
{
    Add("c:\\dir\\", "a");
    Add("c:\\", "b");
    Add("c:\\dir\\\\", "c");
    EXPECT_EQ(Parts(1), "c:\\dir|a");
    EXPECT_EQ(Parts(2), "c:|b");
    EXPECT_EQ(Parts(3), "c:\\dir\\|c");
}

TEST_F(FileListTest, NameIsNotTakenApart)
{
    Add("c:\\dir", "sub\\a");
    EXPECT_EQ(Parts(1), "c:\\dir|sub\\a");
}

TEST_F(FileListTest, WholePathIsSplitAtItsLastBackslashOrColon)
{
    EXPECT_EQ(PartsOfWhole("c:\\dir\\sub\\a.txt"), "c:\\dir\\sub|a.txt");
    EXPECT_EQ(PartsOfWhole("c:\\a.txt"), "c:|a.txt");
    EXPECT_EQ(PartsOfWhole("dir\\a"), "dir|a");
    EXPECT_EQ(PartsOfWhole("c:\\dir\\a:b"), "c:\\dir\\a:|b");
}

TEST_F(FileListTest, DriveOfAWholePathKeepsItsColon)
{
    EXPECT_EQ(PartsOfWhole("a:file"), "a:|file");
}

TEST_F(FileListTest, WholePathIsSearchedBackToItsSecondCharacter)
{
    EXPECT_EQ(PartsOfWhole("x\\a"), "x|a");
    EXPECT_EQ(PartsOfWhole("\\a"), "|\\a");
    EXPECT_EQ(PartsOfWhole(":a"), "|:a");
    EXPECT_EQ(PartsOfWhole("\\\\a"), "\\|a");
    EXPECT_EQ(PartsOfWhole("name"), "|name");
}

TEST_F(FileListTest, WholePathThatEndsWithItsDirectoryHasNoName)
{
    EXPECT_EQ(PartsOfWhole("c:\\dir\\"), "c:\\dir|");
    EXPECT_EQ(PartsOfWhole("c:"), "c:|");
    EXPECT_EQ(PartsOfWhole(""), "|");
}

TEST_F(FileListTest, PathIsDirectoryBackslashAndName)
{
    Add("c:\\dir", "a.txt");
    Add("c:", "a.txt");
    EXPECT_EQ(Path(1), "c:\\dir\\a.txt");
    EXPECT_EQ(Path(2), "c:\\a.txt");
}

TEST_F(FileListTest, PathWithoutADirectoryIsItsName)
{
    AddPath("a.txt");
    EXPECT_EQ(Path(1), "a.txt");
}

TEST_F(FileListTest, NoSuchPositionHasAnEmptyPath)
{
    const auto expectNone = [](std::int32_t position) {
        char path[MaxPathSize] = "path";
        char directory[MaxPathSize] = "directory";
        char name[MaxPathSize] = "name";
        EXPECT_FALSE(GetListEntry(position, path));
        EXPECT_FALSE(GetListEntry(position, directory, name));
        EXPECT_STREQ(path, "");
        EXPECT_STREQ(directory, "");
        EXPECT_STREQ(name, "");
    };
    expectNone(1);
    AddNames(2);
    for (const std::int32_t position : {-1, 0, 3, INT32_MIN, INT32_MAX}) {
        expectNone(position);
    }
    RemoveListEntry(2);
    expectNone(2);
}

TEST_F(FileListTest, LastOf2000EntriesIsStillAdded)
{
    AddNames(1999);
    EXPECT_FALSE(FileList.ListFull);
    EXPECT_EQ(Add("c:\\last", "last"), ListAddition::AddedLast);
    EXPECT_EQ(FileListSize(), 2000);
    EXPECT_EQ(Path(2000), "c:\\last\\last");
    ExpectFullAndUnchanged(2000);
}

TEST_F(FileListTest, EntriesOf32000BytesDoNotFillTheList)
{
    AddNames(125, 253);
    EXPECT_EQ(FileList.EntryBytes, 32000);
    EXPECT_FALSE(FileList.ListFull);
}

TEST_F(FileListTest, EntryThatBringsTheBytesTo32001IsTheLast)
{
    AddNames(124, 253);
    ASSERT_EQ(Add("c:", std::string(250, 'x')), ListAddition::Added); // 31997
    EXPECT_EQ(Add("c:", "a"), ListAddition::AddedLast);
    EXPECT_EQ(FileList.EntryBytes, 32001);
    EXPECT_EQ(Path(126), "c:\\a");
    ExpectFullAndUnchanged(126);
}

TEST_F(FileListTest, LongestEntryFitsBehind32000Bytes)
{
    AddNames(125, 253);
    const std::string name(255, 'l');
    EXPECT_EQ(Add("c:", name), ListAddition::AddedLast);
    EXPECT_EQ(FileList.EntryBytes, EntryStoreBytes);
    EXPECT_EQ(Path(126), "c:\\" + name);
    ExpectFullAndUnchanged(126);
}

TEST_F(FileListTest, Holds255Directories)
{
    for (int i = 1; i <= 255; ++i) {
        ASSERT_EQ(Add("c:\\" + std::to_string(i), "f"), ListAddition::Added) << i;
    }
    EXPECT_EQ(FileList.DirCount, 255);
    EXPECT_EQ(Add("c:\\255", "g"), ListAddition::Added);
    EXPECT_EQ(Path(255), "c:\\255\\f");
    EXPECT_EQ(Path(256), "c:\\255\\g");
    EXPECT_EQ(Path(1), "c:\\1\\f");

    EXPECT_EQ(Add("c:\\256", "f"), ListAddition::Rejected);
    EXPECT_EQ(FileList.DirCount, 255);
    ExpectFullAndUnchanged(256);
    EXPECT_EQ(Add("c:\\1", "g"), ListAddition::Rejected);
}

TEST_F(FileListTest, DirectoriesTakeLessThan10240Bytes)
{
    for (int i = 0; i < 40; ++i) {
        ASSERT_EQ(Add(std::string(254, 'a') + static_cast<char>('0' + i), "f"),
                  i < 39 ? ListAddition::Added : ListAddition::Rejected);
    }
    EXPECT_EQ(FileList.DirectoryBytes, 39 * 256);
    ExpectFullAndUnchanged(39);
}

TEST_F(FileListTest, DirectoriesMayTake10239Bytes)
{
    for (int i = 0; i < 39; ++i) {
        ASSERT_EQ(Add(std::string(254, 'a') + static_cast<char>('0' + i), "f"), ListAddition::Added);
    }
    const std::string last(254, 'z');
    EXPECT_EQ(Add(last, "f"), ListAddition::Added);
    EXPECT_EQ(FileList.DirectoryBytes, 10239);
    EXPECT_EQ(Path(40), last + "\\f");
    EXPECT_EQ(Add(last, "g"), ListAddition::Added);
    EXPECT_EQ(Add("", "g"), ListAddition::Rejected);
    ExpectFullAndUnchanged(41);
}

TEST_F(FileListTest, LongestPathIsKeptWhole)
{
    const std::string directory = "c:\\" + std::string(200, 'd');
    const std::string name(LongestPath - directory.size() - 1, 'n');
    EXPECT_EQ(Add(directory, name), ListAddition::Added);
    EXPECT_EQ(AddPath(directory + "\\" + name), ListAddition::Added);
    EXPECT_EQ(Add(directory + "\\", name), ListAddition::Added);
    EXPECT_EQ(Path(1).size(), LongestPath);
    EXPECT_EQ(Paths(), Strings(3, directory + "\\" + name));
    EXPECT_EQ(FileList.DirCount, 1);
}

TEST_F(FileListTest, NameOf255CharactersIsKeptWhole)
{
    const std::string name(255, 'n');
    EXPECT_EQ(Add("c:", name), ListAddition::Added);
    EXPECT_EQ(AddPath(name), ListAddition::Added);
    EXPECT_EQ(Paths(), (Strings{"c:\\" + name, name}));
}

TEST_F(FileListTest, PathTooLongIsRejectedWithoutFillingTheList)
{
    const std::string directory = "c:\\" + std::string(200, 'd');
    const std::string name(LongestPath - directory.size(), 'n'); // one too many
    const std::string long256(256, 'n');
    EXPECT_EQ(Add(directory, name), ListAddition::Rejected);
    EXPECT_EQ(AddPath(directory + "\\" + name), ListAddition::Rejected);
    EXPECT_EQ(Add("", long256), ListAddition::Rejected);
    EXPECT_EQ(AddPath(long256), ListAddition::Rejected);
    EXPECT_EQ(FileListSize(), 0);
    EXPECT_EQ(FileList.DirCount, 0);
    EXPECT_FALSE(FileList.ListFull);
    EXPECT_EQ(Add("c:", "a"), ListAddition::Added);
    EXPECT_EQ(Paths(), Strings{"c:\\a"});
}

TEST_F(FileListTest, PathOfAnyLengthIsRejected)
{
    for (std::size_t length = LongestPath - 3; length < 3 * LongestPath; ++length) {
        for (const char fill : {'p', '\\', ':'}) {
            EXPECT_EQ(AddPath("c:\\" + std::string(length, fill) + "\\f"), ListAddition::Rejected) << length;
            EXPECT_EQ(Add("c:\\" + std::string(length, fill), "f"), ListAddition::Rejected) << length;
        }
        EXPECT_EQ(Add("c:", "f" + std::string(length, 'n')), ListAddition::Rejected) << length;
    }
    EXPECT_EQ(FileListSize(), 0);
    EXPECT_FALSE(FileList.ListFull);
}

TEST_F(FileListTest, RemovedEntriesLetThoseBehindThemMoveUp)
{
    for (const char* name : {"a", "b", "c", "d", "e"}) {
        AddPath(name);
    }
    RemoveListEntry(3);
    EXPECT_EQ(Paths(), (Strings{"a", "b", "d", "e"}));
    RemoveListEntry(1);
    EXPECT_EQ(Paths(), (Strings{"b", "d", "e"}));
    RemoveListEntry(3);
    EXPECT_EQ(Paths(), (Strings{"b", "d"}));
    RemoveListEntry(1);
    RemoveListEntry(1);
    EXPECT_EQ(FileListSize(), 0);
}

TEST_F(FileListTest, RemovingNoEntryChangesNothing)
{
    RemoveListEntry(1);
    EXPECT_EQ(FileListSize(), 0);
    AddNames(2);
    for (const std::int32_t position : {-1, 0, 3, INT32_MIN, INT32_MAX}) {
        RemoveListEntry(position);
        EXPECT_EQ(FileListSize(), 2);
    }
}

TEST_F(FileListTest, FullOrderTableIsRemovedFromItsFrontAndEnd)
{
    AddNames(1998);
    AddPath("before");
    AddPath("last");
    ASSERT_EQ(FileListSize(), 2000);
    RemoveListEntry(2000);
    EXPECT_EQ(Path(1999), "before");
    RemoveListEntry(1);
    EXPECT_EQ(Path(1998), "before");
    EXPECT_EQ(FileListSize(), 1998);
}

TEST_F(FileListTest, RemovedEntryLeavesItsBytesInUse)
{
    AddNames(3, 10);
    RemoveListEntry(2);
    EXPECT_EQ(FileList.EntryBytes, 3 * 13);
    EXPECT_EQ(Add("c:", "next"), ListAddition::Added);
    EXPECT_EQ(Path(3), "c:\\next");
}

TEST_F(FileListTest, RemovingMakesNoRoomInAFullList)
{
    AddNames(1999);
    AddPath("last");
    RemoveListEntry(1);
    EXPECT_EQ(AddPath("more"), ListAddition::Rejected);
    EXPECT_TRUE(FileList.ListFull);
    EXPECT_EQ(FileListSize(), 1999);
}

TEST_F(FileListTest, OnlyClearingEndsAFullList)
{
    AddNames(1999);
    AddPath("last");
    TrimFileList();
    WalkFileList(1);
    RemoveListEntry(1);
    EXPECT_TRUE(FileList.ListFull);
    ClearFileList();
    EXPECT_FALSE(FileList.ListFull);
    EXPECT_EQ(Add("c:", "a"), ListAddition::Added);
    EXPECT_EQ(Paths(), Strings{"c:\\a"});
}

TEST_F(FileListTest, ClearingFreesTheStoresAndResetsTheCounts)
{
    Walk(5, 3);
    DeleteCurrent();
    ClearFileList();
    EXPECT_EQ(TestPort::LiveObjects(), 0);
    EXPECT_EQ(FileListSize(), 0);
    EXPECT_EQ(FileList.DirCount, 0);
    EXPECT_EQ(FileList.EntryBytes, 0);
    EXPECT_EQ(FileList.DirectoryBytes, 0);
    EXPECT_EQ(FileList.ListTotal, 0);
    EXPECT_EQ(FileList.ListAdjust, 0);
    EXPECT_FALSE(HasNextFile());
    EXPECT_FALSE(HasPreviousFile());
    ClearFileList();
    EXPECT_EQ(TestPort::Misuses(), 0);
}

TEST_F(FileListTest, ClearingBeginsAnotherGeneration)
{
    Walk(3, 1);
    const std::uint32_t generation = FileList.Generation;
    TrimFileList();
    RemoveListEntry(1);
    WalkFileList(1);
    EXPECT_EQ(FileList.Generation, generation);
    ClearFileList();
    EXPECT_NE(FileList.Generation, generation);
    const std::uint32_t second = FileList.Generation;
    ClearFileList();
    EXPECT_NE(FileList.Generation, second);
    EXPECT_NE(FileList.Generation, generation);
}

TEST_F(FileListTest, TrimmingLeavesTheStoresWhatTheyUse)
{
    Add("c:\\dir", "a.txt");
    Add("c:\\dir2", "b.txt");
    TrimFileList();
    EXPECT_EQ(TestPort::ObjectBytes(FileList.EntryStore), 8u + 8u);
    EXPECT_EQ(TestPort::ObjectBytes(FileList.DirectoryStore), 7u + 8u);
    EXPECT_EQ(TestPort::ObjectBytes(FileList.OrderTable), 4000u);
    EXPECT_EQ(Paths(), (Strings{"c:\\dir\\a.txt", "c:\\dir2\\b.txt"}));
    TrimFileList();
    EXPECT_EQ(Paths(), (Strings{"c:\\dir\\a.txt", "c:\\dir2\\b.txt"}));
}

TEST_F(FileListTest, TrimmingAnEmptyListDoesNothing)
{
    TrimFileList();
    EXPECT_EQ(TestPort::LiveObjects(), 0);
    Add("", std::string(300, 'n')); // has its stores now, but no entry
    TrimFileList();
    EXPECT_EQ(AddPath("a"), ListAddition::Added);
    EXPECT_EQ(Paths(), Strings{"a"});
}

TEST_F(FileListTest, TrimmedListCanGrow)
{
    Strings expected;
    for (int i = 0; i < 50; ++i) {
        const std::string path = "c:\\" + std::to_string(i / 5) + "\\" + std::to_string(i);
        ASSERT_EQ(AddPath(path), ListAddition::Added);
        expected.push_back(path);
        TrimFileList();
    }
    EXPECT_EQ(Paths(), expected);
    EXPECT_EQ(FileList.DirCount, 10);
    EXPECT_EQ(TestPort::LiveObjects(), 3);
}

TEST_F(FileListTest, TrimmedStoreOfAnySizeCanGrow)
{
    AddNames(40, 253);
    ASSERT_EQ(FileList.EntryBytes, DirectoryStoreBytes);
    TrimFileList();
    EXPECT_EQ(Add("d:\\other", "f"), ListAddition::Added);
    EXPECT_EQ(Path(41), "d:\\other\\f");
}

TEST_F(FileListTest, TrimmedListFillsUpToItsLimits)
{
    AddNames(1000);
    TrimFileList();
    AddNames(999);
    EXPECT_EQ(AddPath("last"), ListAddition::AddedLast);
    ClearFileList();

    AddNames(60, 253);
    TrimFileList();
    AddNames(65, 253);
    EXPECT_EQ(Add("c:", std::string(255, 'l')), ListAddition::AddedLast);
    EXPECT_EQ(FileList.EntryBytes, EntryStoreBytes);
    TrimFileList();
    EXPECT_EQ(Path(126), "c:\\" + std::string(255, 'l'));
}

TEST_F(FileListTest, ListWorksOnWhenNothingCanBeTrimmed)
{
    TestPort::FailShrinking(true);
    AddPath("c:\\a");
    TrimFileList();
    EXPECT_EQ(Paths(), Strings{"c:\\a"});
    AddPath("d:\\b");
    EXPECT_EQ(Paths(), (Strings{"c:\\a", "d:\\b"}));
    EXPECT_EQ(TestPort::LiveObjects(), 3);
}

TEST_F(FileListTest, StoreThatCannotBeAllocatedLeavesAFullEmptyList)
{
    for (const int number : {1, 2, 3}) {
        TestPort::FailAllocation(number);
        EXPECT_EQ(AddPath("c:\\a"), ListAddition::Rejected);
        EXPECT_EQ(TestPort::LiveObjects(), 0);
        EXPECT_EQ(FileListSize(), 0);
        ExpectFullAndUnchanged(0);
        ClearFileList();
        EXPECT_EQ(AddPath("c:\\a"), ListAddition::Added) << number;
        ClearFileList();
    }
}

TEST_F(FileListTest, WithoutMemoryTrimmedListIsFull)
{
    for (const int number : {1, 2}) {
        AddPath("c:\\a");
        TrimFileList();
        TestPort::FailAllocation(number);
        EXPECT_EQ(AddPath("c:\\b"), ListAddition::Rejected) << number;
        EXPECT_TRUE(FileList.ListFull);
        EXPECT_EQ(AddPath("c:\\c"), ListAddition::Rejected);
        EXPECT_EQ(Paths(), Strings{"c:\\a"});
        TrimFileList();
        EXPECT_EQ(Paths(), Strings{"c:\\a"});
        ClearFileList();
    }
}

TEST_F(FileListTest, FullListDoesNotAskForMemory)
{
    AddNames(1999);
    AddPath("last");
    TrimFileList();
    const std::size_t bytes = TestPort::ObjectBytes(FileList.EntryStore);
    EXPECT_EQ(AddPath("more"), ListAddition::Rejected);
    EXPECT_EQ(TestPort::ObjectBytes(FileList.EntryStore), bytes);
    ClearFileList();

    TestPort::FailAllocation(1);
    AddPath("a");
    EXPECT_EQ(AddPath("b"), ListAddition::Rejected);
    EXPECT_EQ(TestPort::LiveObjects(), 0);
}

TEST_F(FileListTest, WalkTakesInTheWholeList)
{
    Walk(3, 2);
    EXPECT_EQ(FileList.ListPosition, 2);
    EXPECT_EQ(FileList.ListTotal, 3);
    EXPECT_EQ(FileList.ListAdjust, 0);
    DeleteCurrent();
    WalkFileList(1);
    EXPECT_EQ(FileList.ListTotal, 2);
    EXPECT_EQ(FileList.ListAdjust, 0);
}

TEST_F(FileListTest, ListThatIsNotWalkedHasNoNextOrPreviousFile)
{
    AddNames(3);
    for (const std::int32_t position : {-1, 0, 1, 2, 3}) {
        FileList.ListPosition = position;
        EXPECT_FALSE(HasNextFile()) << position;
        EXPECT_FALSE(HasPreviousFile()) << position;
    }
}

TEST_F(FileListTest, FirstMiddleAndLastFileHaveTheirNeighbours)
{
    Walk(3, 1);
    EXPECT_FALSE(HasPreviousFile());
    ASSERT_TRUE(HasNextFile());
    EXPECT_EQ(NextPosition(), 2);
    MoveTo(2);
    ASSERT_TRUE(HasPreviousFile());
    EXPECT_EQ(PreviousPosition(), 1);
    ASSERT_TRUE(HasNextFile());
    EXPECT_EQ(NextPosition(), 3);
    MoveTo(3);
    ASSERT_TRUE(HasPreviousFile());
    EXPECT_EQ(PreviousPosition(), 2);
    EXPECT_FALSE(HasNextFile());
}

TEST_F(FileListTest, OnlyFileHasNoNeighbours)
{
    Walk(1, 1);
    EXPECT_FALSE(HasNextFile());
    EXPECT_FALSE(HasPreviousFile());
}

TEST_F(FileListTest, AfterDeletingAFileItsNeighboursAreWhatFollowedAndPrecededIt)
{
    Walk(5, 3);
    DeleteCurrent();
    ASSERT_TRUE(HasNextFile());
    EXPECT_EQ(Path(NextPosition()), "c:\\4");
    ASSERT_TRUE(HasPreviousFile());
    EXPECT_EQ(Path(PreviousPosition()), "c:\\2");
}

TEST_F(FileListTest, AfterDeletingTheFirstFileOnlyTheNextIsLeft)
{
    Walk(3, 1);
    DeleteCurrent();
    EXPECT_FALSE(HasPreviousFile());
    ASSERT_TRUE(HasNextFile());
    EXPECT_EQ(Path(NextPosition()), "c:\\2");
}

TEST_F(FileListTest, AfterDeletingTheLastFileOnlyThePreviousIsLeft)
{
    Walk(3, 3);
    DeleteCurrent();
    EXPECT_FALSE(HasNextFile());
    ASSERT_TRUE(HasPreviousFile());
    EXPECT_EQ(Path(PreviousPosition()), "c:\\2");
    MoveTo(PreviousPosition());
    DeleteCurrent();
    EXPECT_EQ(Path(PreviousPosition()), "c:\\1");
}

TEST_F(FileListTest, PreviousPositionIsNeverBehindTheList)
{
    Walk(3, 3);
    FileList.ListPosition = 9;
    EXPECT_EQ(PreviousPosition(), 3);
    FileList.ListPosition = 4;
    EXPECT_EQ(PreviousPosition(), 3);
    FileList.ListPosition = 3;
    FileList.ListAdjust = 1;
    EXPECT_EQ(PreviousPosition(), 3);
}

TEST_F(FileListTest, WalkingToTheEndAndBackVisitsEveryFile)
{
    Walk(4, 1);
    Strings visited = {Path(1)};
    while (HasNextFile()) {
        MoveTo(NextPosition());
        visited.push_back(Path(FileList.ListPosition));
    }
    while (HasPreviousFile()) {
        MoveTo(PreviousPosition());
        visited.push_back(Path(FileList.ListPosition));
    }
    EXPECT_EQ(visited, (Strings{"c:\\1", "c:\\2", "c:\\3", "c:\\4", "c:\\3", "c:\\2", "c:\\1"}));
}

// Random walks and deletions: the neighbours are those of a list that knows what was deleted.
TEST_F(FileListTest, NeighboursAreRightAfterRandomMovesAndDeletions)
{
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        ClearFileList();
        const int count = 1 + static_cast<int>(random() % 8);
        Walk(count, 1 + static_cast<std::int32_t>(random() % static_cast<unsigned>(count)));
        Strings before; // what precedes the current place, its end next to it
        Strings after;  // what follows, in order
        for (int i = 1; i <= count; ++i) {
            if (i != FileList.ListPosition) {
                (i < FileList.ListPosition ? before : after).push_back("c:\\" + std::to_string(i));
            }
        }
        std::string current = Path(FileList.ListPosition);
        while (!before.empty() || !after.empty()) {
            ASSERT_EQ(HasNextFile(), !after.empty());
            ASSERT_EQ(HasPreviousFile(), !before.empty());
            const unsigned step = random() % 3;
            if (step == 0 && !after.empty()) {
                MoveTo(NextPosition());
                if (!current.empty()) {
                    before.push_back(current);
                }
                current = after.front();
                after.erase(after.begin());
            } else if (step == 1 && !before.empty()) {
                MoveTo(PreviousPosition());
                if (!current.empty()) {
                    after.insert(after.begin(), current);
                }
                current = before.back();
                before.pop_back();
            } else if (step == 2 && !current.empty()) {
                DeleteCurrent();
                current.clear();
                continue;
            }
            if (!current.empty()) {
                ASSERT_EQ(Path(FileList.ListPosition), current);
            }
        }
    }
}

// Random additions, removals and trims against a list of paths.
TEST_F(FileListTest, HoldsWhatAPlainListHolds)
{
    std::mt19937 random(11);
    Strings plain;
    for (int step = 0; step < 6000; ++step) {
        const unsigned kind = random() % 100;
        if (kind == 0) {
            ASSERT_EQ(Paths(), plain);
            if (random() % 4 == 0) {
                ClearFileList();
                plain.clear();
            }
        } else if (kind < 5) {
            TrimFileList();
        } else if (kind < 40) {
            const std::int32_t position = static_cast<std::int32_t>(random() % (plain.size() + 2));
            RemoveListEntry(position);
            if (position >= 1 && position <= static_cast<std::int32_t>(plain.size())) {
                plain.erase(plain.begin() + position - 1);
            }
        } else {
            const std::string directory = "c:\\" + std::to_string(random() % 30);
            const std::string name(1 + random() % 12, static_cast<char>('a' + random() % 26));
            const bool whole = random() % 2 == 0;
            ASSERT_EQ(whole ? AddPath(directory + "\\" + name) : Add(directory, name), ListAddition::Added);
            plain.push_back(directory + "\\" + name);
        }
        ASSERT_EQ(FileListSize(), static_cast<std::int32_t>(plain.size()));
        const std::int32_t position = static_cast<std::int32_t>(random() % (plain.size() + 1));
        ASSERT_EQ(Path(position), position == 0 ? "none" : plain[static_cast<std::size_t>(position - 1)]);
    }
    EXPECT_EQ(Paths(), plain);
}
