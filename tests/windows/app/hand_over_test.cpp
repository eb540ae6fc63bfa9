#include "app/hand_over.h"

#include "app/app_state.h"
#include "app/menu_state.h"
#include "app/open_sequence.h"
#include "document/file_list.h"
#include "files/build_file_list.h"
#include "harness/dialogs.h"
#include "harness/folder.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "harness/system_calls.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

constexpr char MemoryName[] = "KV_shared_memory";
constexpr char ListTruncated[] = "Too many files/directories or insufficient storage\nList has been truncated";
constexpr std::size_t MemoryBytes = 4096; // memory is shared in pages

// The memory through which another process hands names over.
class SharedMemory {
public:
    SharedMemory()
        : Mapping(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, MemoryBytes, MemoryName)),
          Bytes(static_cast<char*>(MapViewOfFile(Mapping, FILE_MAP_WRITE, 0, 0, 0)))
    {
    }
    ~SharedMemory() { Close(); }
    SharedMemory(const SharedMemory&) = delete;
    SharedMemory& operator=(const SharedMemory&) = delete;

    void Write(const std::string& path) { memcpy(Bytes, path.c_str(), path.size() + 1); }
    char* All() { return Bytes; }

    void Close()
    {
        if (Mapping != nullptr) {
            UnmapViewOfFile(Bytes);
            CloseHandle(Mapping);
            Mapping = nullptr;
        }
    }

private:
    HANDLE Mapping;
    char* Bytes;
};

LPVOID WINAPI MapNothing(HANDLE, DWORD, DWORD, DWORD, SIZE_T)
{
    return nullptr;
}

class HandingOver : public RunningProgram {
protected:
    HandingOver() : Folder("hand")
    {
        for (const char* name : {"a.txt", "b.txt", "c.dat"}) {
            Folder.Add(name, name);
        }
    }

    ~HandingOver() override
    {
        ShowWindow(Windows.Main, SW_SHOWNORMAL);
        ClearFileList();
        SetListMenuState();
    }

    LRESULT HandFirst(const std::string& path)
    {
        Memory.Write(path);
        return SendMessageA(Windows.Main, WM_USER + 10, 0, 0);
    }

    LRESULT HandNext(const std::string& path)
    {
        Memory.Write(path);
        return SendMessageA(Windows.Main, WM_USER + 10, 1, 0);
    }

    static LRESULT End() { return SendMessageA(Windows.Main, WM_USER + 11, 0, 0); }

    static bool MemoryExists()
    {
        const HANDLE mapping = OpenFileMappingA(FILE_MAP_READ, FALSE, MemoryName);
        if (mapping != nullptr) {
            CloseHandle(mapping);
        }
        return mapping != nullptr;
    }

    ScratchFolder Folder;
    SharedMemory Memory;
};

} // namespace

TEST_F(HandingOver, SeveralNamesBecomeTheListAndTheFirstIsOpened)
{
    EXPECT_EQ(0, HandFirst(Folder.Path("C.dat")));
    EXPECT_EQ(0, HandNext(Folder.Path("A.TXT")));
    EXPECT_FALSE(View.FileShown) << "not before the end";
    EXPECT_EQ(0, End());
    EXPECT_STREQ("c.dat", App.FileTitle);
    EXPECT_EQ((Names{"c.dat", "a.txt"}), ListedNames());
    EXPECT_EQ(1, FileList.ListPosition);
    EXPECT_EQ(2, FileList.ListTotal);
    EXPECT_TRUE(IsCommandPossible(IDM_FILE_NEXT));
}

TEST_F(HandingOver, ASingleFileIsOpenedWithoutAList)
{
    HandFirst(Folder.Path("b.txt"));
    End();
    EXPECT_STREQ("b.txt", App.FileTitle);
    EXPECT_EQ(0, FileListSize());
    EXPECT_EQ(0, FileList.ListTotal);
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_NEXT));
}

TEST_F(HandingOver, WildcardNamesAreExpandedInTheirPlace)
{
    HandFirst(Folder.Path("c.dat"));
    HandNext(Folder.Path("*.txt"));
    End();
    EXPECT_EQ((Names{"c.dat", "a.txt", "b.txt"}), ListedNames());
    EXPECT_STREQ("c.dat", App.FileTitle);
}

TEST_F(HandingOver, AWildcardNameOfOneFileMakesNoList)
{
    HandFirst(Folder.Path("*.dat"));
    End();
    EXPECT_STREQ("c.dat", App.FileTitle);
    EXPECT_EQ(0, FileList.ListTotal);
}

TEST_F(HandingOver, NothingThatMatchesIsReportedAndTheFileBeforeStays)
{
    OpenSequence(Windows.Main, Folder.Path("a.txt").c_str());
    EXPECT_EQ(0, HandFirst(Folder.Path("*.none")));
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    End();
    EXPECT_EQ("No files were found that matched the command line file spec", answers.OnlyText());
    EXPECT_STREQ("a.txt", App.FileTitle);
    EXPECT_TRUE(View.FileShown);
}

TEST_F(HandingOver, TheListBeforeIsGoneWithTheFirstName)
{
    OpenSequence(Windows.Main, Folder.Path("*").c_str());
    ASSERT_EQ(3, FileList.ListTotal);
    SendMessageA(Windows.Main, WM_COMMAND, IDM_FILE_NEXT, 0);
    ASSERT_TRUE(IsCommandPossible(IDM_FILE_NEXT));
    ASSERT_TRUE(IsCommandPossible(IDM_FILE_PREVIOUS));
    HandFirst(Folder.Path("b.txt"));
    EXPECT_EQ((Names{"b.txt"}), ListedNames());
    EXPECT_EQ(0, FileList.ListTotal);
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_NEXT));
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_PREVIOUS));
    End();
}

TEST_F(HandingOver, AnotherBatchIsRefusedWhileOneIsReceived)
{
    HandFirst(Folder.Path("a.txt"));
    EXPECT_EQ(1, HandFirst(Folder.Path("b.txt")));
    EXPECT_EQ((Names{"a.txt"}), ListedNames());
    EXPECT_EQ(0, HandNext(Folder.Path("c.dat")));
    End();
    EXPECT_EQ((Names{"a.txt", "c.dat"}), ListedNames());
}

TEST_F(HandingOver, AnotherBatchIsRefusedWhileOneIsOpened)
{
    HandFirst(Folder.Path("gone1.txt"));
    HandNext(Folder.Path("gone2.txt"));
    DialogAnswers answers;
    answers.Then([this](HWND box) {
        EXPECT_EQ(1, HandFirst(Folder.Path("a.txt")));
        PressButton(box, IDOK);
    });
    End();
    EXPECT_EQ("Unable to open the file\n\ngone1.txt", answers.OnlyText());
    EXPECT_EQ((Names{"gone1.txt", "gone2.txt"}), ListedNames());
    Memory.Close();
    EXPECT_FALSE(MemoryExists()) << "its end may never come";
}

TEST_F(HandingOver, AnotherBatchIsTakenAfterTheEnd)
{
    HandFirst(Folder.Path("a.txt"));
    End();
    EXPECT_EQ(0, HandFirst(Folder.Path("b.txt")));
    End();
    EXPECT_STREQ("b.txt", App.FileTitle);
}

TEST_F(HandingOver, AnEndWithoutABatchOpensNothing)
{
    OpenSequence(Windows.Main, Folder.Path("*.txt").c_str());
    const DialogAnswers none;
    EXPECT_EQ(0, End());
    EXPECT_STREQ("a.txt", App.FileTitle);
    EXPECT_EQ(2, FileList.ListTotal);
}

TEST_F(HandingOver, TheEndLetsGoOfTheMemory)
{
    HandFirst(Folder.Path("a.txt"));
    Memory.Close();
    EXPECT_TRUE(MemoryExists()) << "the program holds it";
    End();
    EXPECT_FALSE(MemoryExists());
}

TEST_F(HandingOver, MemoryThatIsMissingIsReportedOnceForEachName)
{
    Memory.Close();
    DialogAnswers answers;
    answers.ThenPress(IDOK).ThenPress(IDOK);
    EXPECT_EQ(1, SendMessageA(Windows.Main, WM_USER + 10, 0, 0));
    EXPECT_EQ(1, SendMessageA(Windows.Main, WM_USER + 10, 1, 0));
    ASSERT_EQ(2u, answers.Seen().size());
    for (const SeenDialog& box : answers.Seen()) {
        EXPECT_EQ("Kestovar", box.Caption);
        EXPECT_EQ("Unable to open shared memory", box.Text);
        EXPECT_EQ(nullptr, box.Icon);
        EXPECT_EQ(Windows.Main, box.Owner);
    }
    const SharedMemory again;
    EXPECT_EQ(0, End()) << "no batch had begun";
    EXPECT_FALSE(View.FileShown);
}

TEST_F(HandingOver, MemoryThatCannotBeMappedIsReportedAndLetGo)
{
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    {
        const ReplacedCall replaced("MapViewOfFile", reinterpret_cast<void*>(MapNothing));
        EXPECT_EQ(1, HandFirst(Folder.Path("a.txt")));
    }
    EXPECT_EQ("ERROR: MapViewOfFile was not successful.", answers.OnlyText());
    EXPECT_EQ("Kestovar", answers.Seen()[0].Caption);
    EXPECT_EQ(nullptr, answers.Seen()[0].Icon);
    EXPECT_EQ(Windows.Main, answers.Seen()[0].Owner);
    EXPECT_EQ(0, FileListSize());
    Memory.Close();
    EXPECT_FALSE(MemoryExists());
}

TEST_F(HandingOver, ABatchIsTakenAfterOneWhoseMemoryCouldNotBeMapped)
{
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    {
        const ReplacedCall replaced("MapViewOfFile", reinterpret_cast<void*>(MapNothing));
        HandFirst(Folder.Path("a.txt"));
    }
    EXPECT_EQ(0, HandFirst(Folder.Path("b.txt")));
    End();
    EXPECT_STREQ("b.txt", App.FileTitle);
}

TEST_F(HandingOver, APathWithoutATerminatorIsNotTaken)
{
    for (std::size_t i = 0; i < MemoryBytes; ++i) {
        Memory.All()[i] = i % 10 == 9 ? '\\' : 'a'; // which would make a path wherever it is cut
    }
    EXPECT_EQ(0, SendMessageA(Windows.Main, WM_USER + 10, 0, 0));
    EXPECT_EQ(0, FileListSize());
    Memory.All()[260] = '\0'; // one too late
    EXPECT_EQ(0, SendMessageA(Windows.Main, WM_USER + 10, 1, 0));
    EXPECT_EQ(0, FileListSize());
    EXPECT_EQ(0, HandNext(Folder.Path("b.txt"))) << "the batch goes on";
    End();
    EXPECT_STREQ("b.txt", App.FileTitle);
}

TEST_F(HandingOver, AnEmptyPathIsNotTaken)
{
    EXPECT_EQ(0, HandFirst(""));
    EXPECT_EQ(0, FileListSize());
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    End();
    EXPECT_EQ("No files were found that matched the command line file spec", answers.OnlyText());
}

TEST_F(HandingOver, ANameWithoutABatchIsRefusedAndTheMemoryLetGo)
{
    EXPECT_EQ(1, HandNext(Folder.Path("a.txt")));
    EXPECT_EQ(0, FileListSize());
    Memory.Close();
    EXPECT_FALSE(MemoryExists());
}

TEST_F(HandingOver, APathThatFillsTheMemoryOfAPathIsTakenWhole)
{
    std::string path = "c:\\";
    while (path.size() < 250) {
        path += "directory\\";
    }
    path.resize(250);
    path += "\\name.txt";
    ASSERT_EQ(259u, path.size());
    HandFirst(path);
    EXPECT_EQ((Names{path}), ListedPaths());
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    End();
    EXPECT_EQ("Unable to open the file\n\nname.txt", answers.OnlyText());
}

TEST_F(HandingOver, AFullListStopsTheSenderAndIsReportedAtTheEnd)
{
    EXPECT_EQ(0, HandFirst(Folder.Path("b.txt")));
    LRESULT result = 0;
    int handed = 1;
    const DialogAnswers none;
    while (result == 0 && handed < 300) {
        result = HandNext("c:\\" + std::to_string(handed) + "\\file");
        ++handed;
    }
    EXPECT_EQ(1, result);
    EXPECT_EQ(MaxListDirectories + 1, handed);
    EXPECT_EQ(1, HandNext(Folder.Path("a.txt"))) << "nothing fits any more";
    EXPECT_TRUE(none.Seen().empty()) << "the sender is told, not the user";
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    End();
    EXPECT_EQ(ListTruncated, answers.OnlyText());
    EXPECT_STREQ("b.txt", App.FileTitle);
    EXPECT_EQ(MaxListDirectories, FileList.ListTotal);
}

TEST_F(HandingOver, AWildcardNameCanFillTheList)
{
    ScratchFolder many("many");
    many.AddMany(220, 157); // of 32000 bytes, each takes 160
    EXPECT_EQ(1, HandFirst(many.Path("*")));
    EXPECT_EQ(201, FileListSize());
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    End();
    EXPECT_EQ(ListTruncated, answers.OnlyText());
    EXPECT_EQ(201, FileList.ListTotal);
    EXPECT_TRUE(View.FileShown);
}

TEST_F(HandingOver, FilesDroppedWhileTheFullListIsReportedStay)
{
    HandFirst(Folder.Path("a.txt"));
    for (int i = 0; i < MaxListDirectories; ++i) {
        HandNext("c:\\" + std::to_string(i) + "\\file");
    }
    ASSERT_TRUE(FileList.ListFull);
    DialogAnswers answers;
    answers.Then([this](HWND box) {
        OpenSequence(Windows.Main, Folder.Path("*.txt").c_str());
        PressButton(box, IDOK);
    });
    End();
    EXPECT_EQ((Names{"a.txt", "b.txt"}), ListedNames());
    EXPECT_EQ(2, FileList.ListTotal);
}

TEST_F(HandingOver, AnIconWithAFileIsRestored)
{
    ShowWindow(Windows.Main, SW_MINIMIZE);
    HandFirst(Folder.Path("a.txt"));
    EXPECT_TRUE(IsIconic(Windows.Main));
    End();
    EXPECT_FALSE(IsIconic(Windows.Main));
    EXPECT_STREQ("a.txt", App.FileTitle);
}

TEST_F(HandingOver, AnIconStaysOneWhenNothingCouldBeOpened)
{
    ShowWindow(Windows.Main, SW_MINIMIZE);
    HandFirst(Folder.Path("gone.txt"));
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    End();
    EXPECT_TRUE(IsIconic(Windows.Main));
    EXPECT_FALSE(View.FileShown);
}
