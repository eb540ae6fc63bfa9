#include "app/selection_commands.h"

#include "app/app_state.h"
#include "app/menu_state.h"
#include "app/open_sequence.h"
#include "base/text.h"
#include "document/document_state.h"
#include "document/file_list.h"
#include "document/line_index.h"
#include "harness/dialogs.h"
#include "harness/folder.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "harness/system_calls.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/hex_row.h"
#include "view/selection.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cderr.h>
#include <commdlg.h>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <vector>
#include <windows.h>

namespace {

using Names = std::vector<std::string>;

constexpr char NoStorage[] = "Unable to acquire clipboard storage";
constexpr char Truncated[] = "Too much data for clipboard\nText was truncated";
constexpr char SaveFailed[] = "Save of selected text failed or was incomplete";

template <typename Function> Function SystemFunction(const char* library, const char* name)
{
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(library), name)));
}

HGLOBAL TextMemory; // what the program got for the text of the selection

HGLOBAL WINAPI NoteMemory(UINT flags, SIZE_T bytes)
{
    using Function = HGLOBAL(WINAPI*)(UINT, SIZE_T);
    static const auto real = SystemFunction<Function>("kernel32", "GlobalAlloc");
    TextMemory = real(flags, bytes);
    return TextMemory;
}

HANDLE WINAPI RefuseData(UINT, HANDLE)
{
    return nullptr;
}

std::vector<UINT> Writes;
UINT WritesThatSucceed;

// Writes one byte less than it should once that many writes have succeeded.
UINT WINAPI NoteWrite(HFILE file, LPCCH bytes, UINT count)
{
    using Function = UINT(WINAPI*)(HFILE, LPCCH, UINT);
    static const auto real = SystemFunction<Function>("kernel32", "_lwrite");
    Writes.push_back(count);
    return real(file, bytes, Writes.size() > WritesThatSucceed && count > 0 ? count - 1 : count);
}

BOOL WINAPI RefuseToReplace(LPCSTR, LPCSTR, LPCSTR, DWORD, LPVOID, LPVOID)
{
    SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
}

std::string ChosenName; // empty when the dialog is cancelled
std::function<void()> WhileChoosing;

BOOL WINAPI ChooseName(LPOPENFILENAMEA chosen)
{
    if (WhileChoosing) {
        WhileChoosing();
    }
    if (ChosenName.empty()) {
        return FALSE;
    }
    strcpy(chosen->lpstrFile, ChosenName.c_str());
    return TRUE;
}

DWORD WINAPI DialogError()
{
    return FNERR_BUFFERTOOSMALL;
}

// Another program that has the clipboard open for as long as the object lives.
class ClipboardKeeper {
public:
    ClipboardKeeper()
        : IsOpen(CreateEventA(nullptr, TRUE, FALSE, nullptr)), IsOver(CreateEventA(nullptr, TRUE, FALSE, nullptr)),
          Thread(CreateThread(nullptr, 0, Keep, this, 0, nullptr))
    {
        EXPECT_EQ(WAIT_OBJECT_0, WaitForSingleObject(IsOpen, 10000));
    }

    ~ClipboardKeeper()
    {
        SetEvent(IsOver);
        EXPECT_EQ(WAIT_OBJECT_0, WaitForSingleObject(Thread, 10000));
        CloseHandle(Thread);
        CloseHandle(IsOver);
        CloseHandle(IsOpen);
    }

    ClipboardKeeper(const ClipboardKeeper&) = delete;
    ClipboardKeeper& operator=(const ClipboardKeeper&) = delete;

private:
    static DWORD WINAPI Keep(void* keeper)
    {
        const ClipboardKeeper& self = *static_cast<ClipboardKeeper*>(keeper);
        const HWND window = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
        EXPECT_TRUE(OpenClipboard(window));
        SetEvent(self.IsOpen);
        EXPECT_EQ(WAIT_OBJECT_0, WaitForSingleObject(self.IsOver, 10000));
        CloseClipboard();
        DestroyWindow(window);
        return 0;
    }

    HANDLE IsOpen;
    HANDLE IsOver;
    HANDLE Thread;
};

class SelectedText : public RunningProgram {
protected:
    SelectedText() : Folder("selected") {}

    ~SelectedText() override
    {
        CloseDocument();
        CheckCommand(IDM_VIEW_HEX, false);
        CheckCommand(IDM_VIEW_TEXT, true);
        ClearFileList();
        SetListMenuState();
        WhileChoosing = nullptr;
    }

    static void Command(UINT id) { SendMessageA(Windows.Main, WM_COMMAND, id, 0); }

    // Opens a file of the folder; returns its path.
    std::string Open(const std::string& name, const std::string& content)
    {
        CloseDocument(); // which may be of this very file
        Folder.Add(name, content);
        EXPECT_TRUE(OpenNamedFile(Windows.Main, Folder.Path(name).c_str())) << name;
        return Folder.Path(name);
    }

    void OpenHex(const std::string& content)
    {
        Open("source.bin", content);
        Command(IDM_VIEW_HEX);
        ASSERT_TRUE(View.HexMode);
    }

    // From where the selection began to where it was led.
    static void Select(int line, int column, int lastLine, int lastColumn)
    {
        View.SelLineA = View.SelAnchorLine = line;
        View.SelColA = column;
        View.SelLineB = lastLine;
        View.SelColB = lastColumn;
        SetSelectionMenuState(true);
    }

    static void SelectLines(int first, int last) { Select(first, 0, last, INT32_MAX); }

    static std::string TextOf(std::int32_t number)
    {
        const LineText line = ReadLineText(number);
        return std::string(line.Text, static_cast<std::size_t>(line.Length));
    }

    Names FilesInFolder() const
    {
        Names names;
        WIN32_FIND_DATAA found;
        const HANDLE search = FindFirstFileA(Folder.Path("*").c_str(), &found);
        do {
            if (found.cFileName[0] != '.') {
                names.push_back(found.cFileName);
            }
        } while (FindNextFileA(search, &found));
        FindClose(search);
        std::sort(names.begin(), names.end());
        return names;
    }

    // The rows of a dump, with what stands behind each but the last.
    static std::string Rows(const std::string& content, int first, int last, const std::string& behindLast)
    {
        std::string rows;
        for (int row = first; row <= last; ++row) {
            std::string bytes = content.substr(static_cast<std::size_t>(row - 1) * 16, 16);
            const auto count = static_cast<std::int32_t>(bytes.size());
            bytes += '\0';
            char text[HexRowLength + 1];
            FormatHexRow(bytes.data(), count, row - 1, false, text);
            rows += std::string(text, 76) + (row < last ? "\r\n" : behindLast);
        }
        return rows;
    }

    ScratchFolder Folder;
};

class CopyingSelections : public SelectedText {
protected:
    CopyingSelections() { PutOnClipboard("before"); }

    static void PutOnClipboard(const std::string& text)
    {
        const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
        memcpy(GlobalLock(memory), text.c_str(), text.size() + 1);
        GlobalUnlock(memory);
        ASSERT_TRUE(OpenClipboard(Windows.Main));
        EmptyClipboard();
        SetClipboardData(CF_TEXT, memory);
        CloseClipboard();
    }

    static std::string ClipboardText()
    {
        if (!OpenClipboard(Windows.Main)) {
            return "clipboard is open";
        }
        std::string text = "no text";
        const HGLOBAL memory = GetClipboardData(CF_TEXT);
        if (memory != nullptr) {
            text = static_cast<const char*>(GlobalLock(memory));
            GlobalUnlock(memory);
        }
        CloseClipboard();
        return text;
    }

    // What a copy without a report leaves on the clipboard.
    static std::string Copied()
    {
        const DialogAnswers none;
        Command(250);
        return ClipboardText();
    }

    static std::string CopiedOf(int line, int column, int lastLine, int lastColumn)
    {
        Select(line, column, lastLine, lastColumn);
        return Copied();
    }

    // What a copy reports.
    static std::string CopyInVain()
    {
        DialogAnswers answers;
        answers.ThenPress(IDOK);
        Command(250);
        return answers.OnlyText();
    }
};

class SavingSelections : public SelectedText {
protected:
    SavingSelections()
    {
        Writes.clear();
        WritesThatSucceed = 1000;
    }

    static bool Save(const std::string& path) { return SaveSelection(Windows.Main, path.c_str()); }

    // What a save leaves in a new file.
    std::string Saved()
    {
        Folder.Remove("saved.txt");
        EXPECT_TRUE(Save(Folder.Path("saved.txt")));
        return FileContent(Folder.Path("saved.txt"));
    }

    std::string SavedOf(int line, int column, int lastLine, int lastColumn)
    {
        Select(line, column, lastLine, lastColumn);
        return Saved();
    }

    static std::string ManyBlocks()
    {
        std::string content;
        for (int i = 0; content.size() < 200000; ++i) {
            content += "line " + std::to_string(i + 1) + "\n";
        }
        return content;
    }

    static std::string LinesOf(int first, int last)
    {
        std::string lines = "line " + std::to_string(first);
        for (int i = first + 1; i <= last; ++i) {
            lines += "\r\nline " + std::to_string(i);
        }
        return lines;
    }
};

// Lines of 98 letters that differ, with LF.
std::string Lines98(int count)
{
    std::string content;
    for (int i = 0; i < count; ++i) {
        content += std::string(88, static_cast<char>('a' + i % 26)) + std::to_string(1000000000 + i) + "\n";
    }
    return content;
}

std::string WithCrLf(const std::string& text)
{
    std::string converted;
    for (const char byte : text) {
        converted += byte == '\n' ? std::string("\r\n") : std::string(1, byte);
    }
    return converted;
}

} // namespace

TEST_F(CopyingSelections, ATextSelectedWholeEndsWithALineEnd)
{
    Open("source.txt", "one\ntwo\nthree\n");
    Command(251);
    EXPECT_EQ("one\r\ntwo\r\nthree\r\n", Copied());
    Open("source.txt", "one\r\ntwo\r\nthree");
    Command(251);
    EXPECT_EQ("one\r\ntwo\r\nthree\r\n", Copied());
}

TEST_F(CopyingSelections, ThePartialEndOfTheLastLineHasNoLineEndBehind)
{
    Open("source.txt", "one\ntwo\nthree\n");
    EXPECT_EQ("ne\r\ntwo\r\nth", CopiedOf(1, 1, 3, 2));
    EXPECT_EQ("ne\r\ntwo\r\nthree\r\n", CopiedOf(1, 1, 3, 5));
    EXPECT_EQ("ne\r\ntwo\r\nthree\r\n", CopiedOf(1, 1, 3, 100));
    EXPECT_EQ("ne\r\n", CopiedOf(1, 1, 2, 0)) << "nothing of the last line";
}

TEST_F(CopyingSelections, ASelectionLedUpwardsIsTheSame)
{
    Open("source.txt", "one\ntwo\nthree\n");
    EXPECT_EQ("ne\r\ntwo\r\nth", CopiedOf(3, 2, 1, 1));
    EXPECT_EQ("ne\r\ntwo\r\nthree\r\n", CopiedOf(3, 5, 1, 1));
}

TEST_F(CopyingSelections, OfOneLineThePartBetweenTheColumnsIsTaken)
{
    Open("source.txt", "one\ntwo\nthree\n");
    EXPECT_EQ("hre", CopiedOf(3, 1, 3, 4));
    EXPECT_EQ("hre", CopiedOf(3, 4, 3, 1));
    EXPECT_EQ("three\r\n", CopiedOf(3, 0, 3, 5));
    EXPECT_EQ("three\r\n", CopiedOf(3, 0, 3, 99));
    EXPECT_EQ("ree", CopiedOf(3, 2, 3, 99));
}

TEST_F(CopyingSelections, AnEmptyLineIsALineEnd)
{
    Open("source.txt", "one\n\n\nfour\n");
    Command(251);
    EXPECT_EQ("one\r\n\r\n\r\nfour\r\n", Copied());
    EXPECT_EQ("\r\n", CopiedOf(2, 0, 2, INT32_MAX));
    EXPECT_EQ("\r\n\r\n", CopiedOf(2, 0, 3, 5));
}

TEST_F(CopyingSelections, TabsAndOtherLettersArePassedOn)
{
    Open("source.txt", "a\tb\n\xE4\xF6\xFC \x80\n");
    Command(251);
    EXPECT_EQ("a\tb\r\n\xE4\xF6\xFC \x80\r\n", Copied());
}

TEST_F(CopyingSelections, AZeroByteIsABlank)
{
    Open("source.txt", std::string("a\0b\nc\n", 6));
    Command(251);
    EXPECT_EQ("a b\r\nc\r\n", Copied());
}

TEST_F(CopyingSelections, OfADumpWholeRowsAreTaken)
{
    const std::string content = "0123456789abcdef\tgh\r\nij" + std::string(3, '\0') + "0123456789abcdef?";
    OpenHex(content);
    Command(251);
    EXPECT_EQ(Rows(content, 1, 3, "\r\n"), Copied());
    Select(3, 7, 2, 40);
    EXPECT_EQ(Rows(content, 2, 3, "\r\n"), Copied());
    Select(2, 3, 2, 3);
    EXPECT_EQ(Rows(content, 2, 2, "\r\n"), Copied());
    EXPECT_EQ(78u, Copied().size());
}

TEST_F(CopyingSelections, ALongSelectionComesFromEveryBlock)
{
    const std::string content = Lines98(620);
    Open("source.txt", content);
    ASSERT_LT(2, Document.BlockCount);
    Command(251);
    EXPECT_EQ(WithCrLf(content), Copied());
}

TEST_F(CopyingSelections, SixtyFourThousandBytesFit)
{
    const std::string content = Lines98(641);
    Open("source.txt", content);
    SelectLines(1, 640);
    const std::string copied = Copied();
    EXPECT_EQ(64000u, copied.size());
    EXPECT_EQ(WithCrLf(content.substr(0, 640 * 99)), copied);
}

TEST_F(CopyingSelections, OneLineMoreIsReportedAndLeftOut)
{
    const std::string content = Lines98(1000);
    Open("source.txt", content);
    SelectLines(1, 641);
    EXPECT_EQ(Truncated, CopyInVain());
    EXPECT_EQ(WithCrLf(content.substr(0, 640 * 99)), ClipboardText());
    Command(251);
    EXPECT_EQ(Truncated, CopyInVain());
    EXPECT_EQ(WithCrLf(content.substr(0, 640 * 99)), ClipboardText());
}

TEST_F(CopyingSelections, ALineEndHasToFitBehindThePartialEndToo)
{
    const std::string content = Lines98(639) + std::string(200, 'z') + "\n";
    Open("source.txt", content);
    const std::string whole = WithCrLf(Lines98(639));
    EXPECT_EQ(whole + std::string(98, 'z'), CopiedOf(1, 0, 640, 98));
    Select(1, 0, 640, 99);
    EXPECT_EQ(Truncated, CopyInVain());
    EXPECT_EQ(whole, ClipboardText());
}

TEST_F(CopyingSelections, ATruncatedDumpHoldsWholeRows)
{
    const std::string content(16 * 1000, 'x');
    OpenHex(content);
    SelectLines(1, 821);
    EXPECT_EQ(Truncated, CopyInVain());
    EXPECT_EQ(Rows(content, 1, 820, "\r\n"), ClipboardText()) << "63960 bytes";
    SelectLines(1, 820);
    EXPECT_EQ(Rows(content, 1, 820, "\r\n"), Copied());
}

TEST_F(CopyingSelections, ADocumentHandedOverWhileTheTruncationIsReportedChangesNothingAboutTheText)
{
    Folder.Add("other.txt", "another\n");
    const std::string content = Lines98(700);
    Open("source.txt", content);
    Command(251);
    DialogAnswers answers;
    answers.Then([this](HWND box) {
        EXPECT_EQ("before", ClipboardText()) << "the report comes first";
        OpenNamedFile(Windows.Main, Folder.Path("other.txt").c_str());
        PressButton(box, IDOK);
    });
    Command(250);
    EXPECT_EQ(WithCrLf(content.substr(0, 640 * 99)), ClipboardText());
    EXPECT_STREQ("other.txt", App.FileTitle);
}

TEST_F(CopyingSelections, TheTextIsTheOnlyThingOnTheClipboard)
{
    ASSERT_TRUE(OpenClipboard(Windows.Main));
    SetClipboardData(RegisterClipboardFormatA("KestovarTest"), GlobalAlloc(GMEM_MOVEABLE, 8));
    CloseClipboard();
    Open("source.txt", "one\n");
    Command(251);
    EXPECT_EQ("one\r\n", Copied());
    EXPECT_FALSE(IsClipboardFormatAvailable(RegisterClipboardFormatA("KestovarTest")));
    EXPECT_EQ(Windows.Main, GetClipboardOwner());
}

TEST_F(CopyingSelections, TheSelectionAndTheFileStay)
{
    Open("source.txt", "one\ntwo\n");
    Command(251);
    Copied();
    EXPECT_EQ(1, View.SelLineA);
    EXPECT_EQ(2, View.SelLineB);
    EXPECT_TRUE(IsCommandPossible(250));
    EXPECT_EQ("one\r\ntwo\r\n", Copied()) << "and once more";
}

TEST_F(CopyingSelections, WithoutMemoryTheClipboardStays)
{
    Open("source.txt", "one\n");
    Command(251);
    {
        const NoMemoryObjects none;
        EXPECT_EQ(NoStorage, CopyInVain());
    }
    EXPECT_EQ("before", ClipboardText());
    EXPECT_EQ("one\r\n", Copied());
}

TEST_F(CopyingSelections, AClipboardThatAnotherProgramKeepsOpenIsReported)
{
    Open("source.txt", "one\n");
    Command(251);
    {
        const ClipboardKeeper keeper;
        const ReplacedCall memory("GlobalAlloc", reinterpret_cast<void*>(NoteMemory));
        TextMemory = nullptr;
        EXPECT_EQ(NoStorage, CopyInVain());
        ASSERT_NE(nullptr, TextMemory);
        EXPECT_EQ(static_cast<UINT>(GMEM_INVALID_HANDLE), GlobalFlags(TextMemory)) << "the text is freed";
    }
    EXPECT_EQ("before", ClipboardText());
    EXPECT_EQ("one\r\n", Copied()) << "when it is free again";
}

TEST_F(CopyingSelections, ATruncatedTextThatCannotBePutThereIsReportedTwice)
{
    Open("source.txt", Lines98(700));
    Command(251);
    const ClipboardKeeper keeper;
    DialogAnswers answers;
    answers.ThenPress(IDOK).ThenPress(IDOK);
    Command(250);
    ASSERT_EQ(2u, answers.Seen().size());
    EXPECT_EQ(Truncated, answers.Seen()[0].Text);
    EXPECT_EQ(NoStorage, answers.Seen()[1].Text);
}

TEST_F(CopyingSelections, ATextThatTheClipboardDoesNotTakeIsFreed)
{
    Open("source.txt", "one\n");
    Command(251);
    const ReplacedCall data("SetClipboardData", reinterpret_cast<void*>(RefuseData));
    const ReplacedCall memory("GlobalAlloc", reinterpret_cast<void*>(NoteMemory));
    TextMemory = nullptr;
    EXPECT_EQ(NoStorage, CopyInVain());
    ASSERT_NE(nullptr, TextMemory);
    EXPECT_EQ(static_cast<UINT>(GMEM_INVALID_HANDLE), GlobalFlags(TextMemory));
    EXPECT_TRUE(OpenClipboard(Windows.Main)) << "it is not kept open";
    CloseClipboard();
}

TEST_F(CopyingSelections, WithoutASelectionTheClipboardStays)
{
    const DialogAnswers none;
    Open("source.txt", "one\n");
    Command(250);
    EXPECT_EQ("before", ClipboardText());
    EnableCommand(250, true);
    Command(250);
    EXPECT_EQ("before", ClipboardText());
}

TEST_F(CopyingSelections, OfAReleasedFileNothingIsCopied)
{
    Open("source.txt", Lines98(620));
    Command(251);
    ShowWindow(Windows.Main, SW_MINIMIZE);
    ASSERT_TRUE(App.FileReleased);
    const DialogAnswers none;
    Command(250);
    EXPECT_EQ("before", ClipboardText());
    ShowWindow(Windows.Main, SW_RESTORE);
    EXPECT_EQ(WithCrLf(Lines98(620)), Copied());
}

TEST_F(CopyingSelections, TheFilesNameDoesNotMatter)
{
    for (const std::string& name : {std::string("a name.with dots.txt"), std::string("name"),
                                    std::string("gr\xFC\xDF.txt"), std::string(259 - Folder.Path().size(), 'n')}) {
        PutOnClipboard("before");
        Open(name, "one\n");
        Command(251);
        EXPECT_EQ("one\r\n", Copied()) << name;
    }
}

TEST_F(SavingSelections, ATextNeverEndsWithALineEnd)
{
    Open("source.txt", "one\ntwo\nthree\n");
    Command(251);
    EXPECT_EQ("one\r\ntwo\r\nthree", Saved());
    EXPECT_EQ("ne\r\ntwo\r\nth", SavedOf(1, 1, 3, 2));
    EXPECT_EQ("ne\r\ntwo\r\nth", SavedOf(3, 2, 1, 1));
    EXPECT_EQ("ne\r\n", SavedOf(1, 1, 2, 0)) << "but an empty part of the last line stands behind one";
    EXPECT_EQ("hre", SavedOf(3, 4, 3, 1));
    EXPECT_EQ("three", SavedOf(3, 0, 3, 99));
    Open("source.txt", "one\n\n");
    EXPECT_EQ("", SavedOf(2, 0, 2, INT32_MAX));
}

TEST_F(SavingSelections, TabsAndOtherLettersArePassedOnAndAZeroByteIsABlank)
{
    Open("source.txt", std::string("a\tb\n\xE4\xF6\xFC \x80\nc\0d\n", 14));
    Command(251);
    EXPECT_EQ("a\tb\r\n\xE4\xF6\xFC \x80\r\nc d", Saved());
}

TEST_F(SavingSelections, OfADumpWholeRowsAreTaken)
{
    const std::string content = "0123456789abcdef\tgh\r\nij" + std::string(3, '\0') + "0123456789abcdef?";
    OpenHex(content);
    Command(251);
    EXPECT_EQ(Rows(content, 1, 3, ""), Saved());
    EXPECT_EQ(Rows(content, 2, 3, ""), SavedOf(3, 7, 2, 40));
}

TEST_F(SavingSelections, TakeTheRoomOfAFileThatIsThere)
{
    Folder.Add("target.txt", std::string(5000, 'x'));
    Open("source.txt", "one\ntwo\n");
    Command(251);
    EXPECT_TRUE(Save(Folder.Path("target.txt")));
    EXPECT_EQ("one\r\ntwo", FileContent(Folder.Path("target.txt")));
    EXPECT_EQ((Names{"source.txt", "target.txt"}), FilesInFolder());
}

TEST_F(SavingSelections, AreWholeAtEveryEdgeOfTheBuffer)
{
    const ReplacedCall writes("_lwrite", reinterpret_cast<void*>(NoteWrite));
    for (const int size : {31998, 31999, 32000, 32001, 32002, 63998, 63999, 64000, 64001, 64002, 96000, 100001}) {
        // All lines but the last make 100 bytes with their line end; the last one is what is missing.
        const int lines = (size - 1) / 100 - 1;
        const std::string content = Lines98(lines) + std::string(static_cast<std::size_t>(size - lines * 100), 'z');
        Open("source.txt", content);
        Command(251);
        Writes.clear();
        const std::string saved = Saved();
        EXPECT_EQ(static_cast<std::size_t>(size), saved.size());
        EXPECT_TRUE(WithCrLf(content) == saved) << size;
        for (const UINT count : Writes) {
            EXPECT_GE(32000u, count) << size;
        }
    }
}

TEST_F(SavingSelections, AreWrittenWhenThePartAndALineEndDoNotFit)
{
    const ReplacedCall writes("_lwrite", reinterpret_cast<void*>(NoteWrite));
    Open("source.txt", Lines98(319) + std::string(98, 'y') + "\n");
    Command(251);
    Saved();
    EXPECT_EQ((std::vector<UINT>{31998}), Writes);
    Writes.clear();
    Open("source.txt", Lines98(319) + std::string(99, 'y') + "\n");
    Command(251);
    Saved();
    EXPECT_EQ((std::vector<UINT>{31900, 99}), Writes);
    Writes.clear();
    Open("source.txt", Lines98(321));
    Command(251);
    Saved();
    EXPECT_EQ((std::vector<UINT>{32000, 98}), Writes);
}

TEST_F(SavingSelections, ALargeOneComesFromEveryBlock)
{
    Open("source.txt", ManyBlocks());
    Command(251);
    EXPECT_EQ(LinesOf(1, Document.LineCount), Saved());
    SelectLines(5000, 18000);
    EXPECT_EQ(LinesOf(5000, 18000), Saved());
}

TEST_F(SavingSelections, LeaveTheDocumentAndTheSelection)
{
    Open("source.txt", "one\ntwo\n");
    Command(251);
    Saved();
    EXPECT_STREQ("source.txt", App.FileTitle);
    EXPECT_TRUE(HasSelection());
    EXPECT_EQ("one\ntwo\n", FileContent(Folder.Path("source.txt")));
}

TEST_F(SavingSelections, FailWhereNoFileCanBe)
{
    Open("source.txt", "one\n");
    Command(251);
    EXPECT_FALSE(Save(Folder.Path("no such directory\\file.txt")));
    EXPECT_FALSE(Save(Folder.Name())) << "a directory";
    EXPECT_FALSE(Save(Folder.Path("")));
    EXPECT_FALSE(Save(""));
    EXPECT_EQ(Names{"source.txt"}, FilesInFolder());
    EXPECT_TRUE(View.FileShown);
}

TEST_F(SavingSelections, FailOverAFileThatIsReadOnlyWhichStays)
{
    Folder.Add("target.txt", "precious");
    ASSERT_TRUE(SetFileAttributesA(Folder.Path("target.txt").c_str(), FILE_ATTRIBUTE_READONLY));
    Open("source.txt", "one\n");
    Command(251);
    EXPECT_FALSE(Save(Folder.Path("target.txt")));
    EXPECT_EQ("precious", FileContent(Folder.Path("target.txt")));
}

TEST_F(SavingSelections, FailWithoutMemory)
{
    Open("source.txt", "one\n");
    Command(251);
    {
        const NoMemoryObjects none;
        EXPECT_FALSE(Save(Folder.Path("target.txt")));
    }
    EXPECT_EQ("", FileContent(Folder.Path("target.txt")));
    EXPECT_TRUE(DeleteFileA(Folder.Path("target.txt").c_str())) << "it is not kept open";
}

TEST_F(SavingSelections, FailAtAnyShortWrite)
{
    Open("source.txt", Lines98(700));
    Command(251);
    const ReplacedCall writes("_lwrite", reinterpret_cast<void*>(NoteWrite));
    for (WritesThatSucceed = 0; WritesThatSucceed < 3; ++WritesThatSucceed) {
        Writes.clear();
        EXPECT_FALSE(Save(Folder.Path("target.txt")));
        EXPECT_EQ(WritesThatSucceed + 1, Writes.size()) << "nothing is written behind a gap";
        EXPECT_TRUE(DeleteFileA(Folder.Path("target.txt").c_str())) << "it is not kept open";
    }
    Writes.clear();
    EXPECT_TRUE(Save(Folder.Path("target.txt")));
    EXPECT_EQ(3u, Writes.size());
}

TEST_F(SavingSelections, FailWithoutASelection)
{
    Open("source.txt", "one\n");
    Folder.Add("target.txt", "precious");
    EXPECT_FALSE(Save(Folder.Path("target.txt")));
    EXPECT_FALSE(Save(Folder.Path("new.txt")));
    EXPECT_FALSE(Save(Folder.Path("source.txt")));
    EXPECT_EQ("precious", FileContent(Folder.Path("target.txt")));
    EXPECT_EQ("one\n", FileContent(Folder.Path("source.txt")));
    EXPECT_EQ((Names{"source.txt", "target.txt"}), FilesInFolder());
}

TEST_F(SavingSelections, GoIntoFilesOfEveryKindOfName)
{
    Open("source.txt", "one\ntwo\n");
    Command(251);
    for (const std::string& name : {std::string("a name.txt"), std::string("name.with.dots"), std::string("name"),
                                    std::string("gr\xFC\xDF.txt"), std::string(259 - Folder.Path().size(), 'n')}) {
        EXPECT_TRUE(Save(Folder.Path(name))) << name;
        EXPECT_EQ("one\r\ntwo", FileContent(Folder.Path(name))) << name;
    }
    EXPECT_EQ(6u, FilesInFolder().size());
}

TEST_F(SavingSelections, OverTheFileShownReplaceItAndItIsShownAnew)
{
    const std::string path = Open("source.txt", "one\ntwo\nthree\nfour\n");
    SelectLines(2, 3);
    EXPECT_TRUE(Save(path));
    EXPECT_EQ("two\r\nthree", FileContent(path));
    EXPECT_EQ(Names{"source.txt"}, FilesInFolder());
    EXPECT_TRUE(View.FileShown);
    EXPECT_STREQ("source.txt", App.FileTitle);
    EXPECT_EQ(2, Document.LineCount);
    EXPECT_EQ("two", TextOf(1));
    EXPECT_EQ("three", TextOf(2));
    EXPECT_FALSE(HasSelection());
    EXPECT_FALSE(IsCommandPossible(221));
    EXPECT_FALSE(App.FileReleased);
}

TEST_F(SavingSelections, OverALargeFileShownReplaceItAndItIsShownAnew)
{
    const std::string path = Open("source.txt", ManyBlocks());
    SendMessageA(Windows.View, WM_SCROLL_VIEW, 99, 5000);
    ASSERT_EQ(5000, View.TopLine);
    SelectLines(5000, 18000);
    EXPECT_TRUE(Save(path));
    EXPECT_EQ(LinesOf(5000, 18000), FileContent(path));
    EXPECT_EQ(Names{"source.txt"}, FilesInFolder());
    EXPECT_EQ(13001, Document.LineCount);
    EXPECT_EQ("line 5000", TextOf(1));
    EXPECT_EQ("line 18000", TextOf(13001));
    EXPECT_NE(0, Document.FileHandle);
    EXPECT_EQ(0, View.TopLine);
    SelectLines(13000, 13001);
    EXPECT_TRUE(Save(path)) << "and once more";
    EXPECT_EQ("line 17999\r\nline 18000", FileContent(path));
    EXPECT_EQ(0, Document.FileHandle);
}

TEST_F(SavingSelections, OverTheFileShownADumpIsATextThen)
{
    const std::string content(100, '\x01');
    OpenHex(content);
    SelectLines(2, 3);
    EXPECT_TRUE(Save(Folder.Path("source.bin")));
    EXPECT_EQ(Rows(content, 2, 3, ""), FileContent(Folder.Path("source.bin")));
    EXPECT_TRUE(Document.IsText);
    EXPECT_EQ(2, Document.LineCount);
}

TEST_F(SavingSelections, OverTheFileShownLeaveTheListAsItIs)
{
    for (const char* const name : {"a.txt", "b.txt", "c.txt"}) {
        Folder.Add(name, "one\ntwo\n");
    }
    OpenSequence(Windows.Main, Folder.Path("*").c_str());
    Command(IDM_FILE_NEXT);
    SelectLines(2, 2);
    EXPECT_TRUE(Save(Folder.Path("b.txt")));
    EXPECT_STREQ("b.txt", App.FileTitle);
    EXPECT_EQ(3, FileList.ListTotal);
    EXPECT_EQ(2, FileList.ListPosition);
    EXPECT_TRUE(IsCommandPossible(IDM_FILE_NEXT));
    EXPECT_TRUE(IsCommandPossible(IDM_FILE_PREVIOUS));
}

TEST_F(SavingSelections, OverTheFileShownUnderAnotherSpellingReplaceItToo)
{
    const std::string path = Folder.Path("a long name of it.txt");
    Open("a long name of it.txt", "one\n");
    char shortPath[MAX_PATH];
    ASSERT_NE(0u, GetShortPathNameA(path.c_str(), shortPath, sizeof shortPath));
    std::string upper = path;
    CharUpperA(upper.data());
    std::string slashes = path;
    std::replace(slashes.begin() + 3, slashes.end(), '\\', '/');
    const std::string detour = Folder.Path("..\\selected\\a long name of it.txt");
    for (const std::string& spelling : {path, upper, slashes, detour, std::string(shortPath)}) {
        for (const std::string& content : {std::string("one\ntwo\nthree\n"), ManyBlocks()}) {
            Folder.Remove("a long name of it.txt");
            Open("a long name of it.txt", content);
            const std::string expected = TextOf(2) + "\r\n" + TextOf(3);
            SelectLines(2, 3);
            const DialogAnswers none;
            EXPECT_TRUE(Save(spelling)) << spelling;
            EXPECT_EQ(expected, FileContent(path).substr(0, 100)) << spelling;
            ASSERT_EQ(1u, FilesInFolder().size()) << spelling;
            EXPECT_EQ("a long name of it.txt", LowerCase(FilesInFolder()[0])) << spelling;
            EXPECT_EQ(2, Document.LineCount) << spelling;
            EXPECT_TRUE(View.FileShown);
            CloseDocument();
        }
    }
}

TEST_F(SavingSelections, OverTheFileShownKeepTheNameAsItIsSpelled)
{
    const std::string path = Open("Some Name.TXT", "one\ntwo\n");
    SelectLines(2, 2);
    EXPECT_TRUE(Save(path));
    EXPECT_EQ(Names{"Some Name.TXT"}, FilesInFolder());
}

TEST_F(SavingSelections, OverAnotherNameOfTheFileShownAreFoundUnderThatName)
{
    for (const std::string& content : {std::string("one\ntwo\nthree\n"), ManyBlocks()}) {
        const std::string path = Open("source.txt", content);
        const std::string link = Folder.Path("link.txt");
        ASSERT_TRUE(CreateHardLinkA(link.c_str(), path.c_str(), nullptr));
        const std::string expected = TextOf(2) + "\r\n" + TextOf(3);
        SelectLines(2, 3);
        EXPECT_TRUE(Save(link));
        EXPECT_EQ(expected, FileContent(link).substr(0, 100));
        EXPECT_EQ((Names{"link.txt", "source.txt"}), FilesInFolder());
        EXPECT_TRUE(View.FileShown);
        CloseDocument();
        Folder.Remove("link.txt");
    }
}

TEST_F(SavingSelections, OverTheFileShownNeedNoParticularName)
{
    const std::string longest(259 - Folder.Path().size(), 'n');
    for (const std::string& name : {std::string("a"), std::string("0"), std::string("file.9"), std::string("file.5"),
                                    std::string("a name"), std::string("gr\xFC\xDF"), longest}) {
        const std::string path = Open(name, "one\ntwo\n");
        SelectLines(2, 2);
        EXPECT_TRUE(Save(path)) << name;
        EXPECT_EQ("two", FileContent(path)) << name;
        EXPECT_EQ(Names{name}, FilesInFolder());
        CloseDocument();
        Folder.Remove(name);
    }
}

TEST_F(SavingSelections, OverTheFileShownDoNotTouchItsNeighbours)
{
    for (int i = 0; i < 9; ++i) {
        Folder.Add("file.tx" + std::to_string(i), "precious");
    }
    const std::string path = Open("file.txt", "one\ntwo\n");
    SelectLines(2, 2);
    EXPECT_TRUE(Save(path));
    Folder.Add("file.tx9", "precious");
    Open("file.txt", "one\ntwo\n");
    SelectLines(2, 2);
    Save(path);
    EXPECT_EQ(11u, FilesInFolder().size());
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ("precious", FileContent(Folder.Path("file.tx" + std::to_string(i)))) << i;
    }
    EXPECT_TRUE(View.FileShown);
}

TEST_F(SavingSelections, AFailureOverTheFileShownLeavesFileViewAndFolderAsTheyWere)
{
    for (const std::string& content : {std::string("line 1\nline 2\nline 3\n"), ManyBlocks()}) {
        const bool isLarge = content.size() > 30000;
        const std::string path = Open("source.txt", content);
        SelectLines(2, 3);
        const auto expectAsBefore = [&](const char* what) {
            EXPECT_EQ(content, FileContent(path)) << what;
            EXPECT_EQ(Names{"source.txt"}, FilesInFolder()) << what;
            EXPECT_TRUE(View.FileShown) << what;
            EXPECT_EQ(isLarge, Document.FileHandle != 0) << what;
            EXPECT_FALSE(App.FileReleased) << what;
            EXPECT_EQ(2, View.SelLineA) << what;
            EXPECT_EQ(3, View.SelLineB) << what;
            EXPECT_TRUE(IsCommandPossible(221)) << what;
            EXPECT_EQ("line 1", TextOf(1)) << what;
            EXPECT_EQ("line " + std::to_string(Document.LineCount), TextOf(Document.LineCount)) << what;
        };
        const DialogAnswers none;
        {
            const ReplacedCall replace("ReplaceFileA", reinterpret_cast<void*>(RefuseToReplace));
            EXPECT_FALSE(Save(path));
            expectAsBefore("the file is not replaced");
        }
        {
            const ReplacedCall writes("_lwrite", reinterpret_cast<void*>(NoteWrite));
            WritesThatSucceed = 0;
            Writes.clear();
            EXPECT_FALSE(Save(path));
            expectAsBefore("a short write");
        }
        {
            const NoMemoryObjects memory;
            EXPECT_FALSE(Save(path));
        }
        expectAsBefore("no memory");
        ASSERT_TRUE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY));
        EXPECT_FALSE(Save(path));
        expectAsBefore("a read-only file");
        ASSERT_TRUE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL));
        CloseDocument();
    }
}

TEST_F(SavingSelections, FailWhenTheirFileCannotBeReadWhole)
{
    const std::string path = Open("source.txt", ManyBlocks());
    Command(251);
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    SetFilePointer(file, 10, nullptr, FILE_BEGIN);
    EXPECT_TRUE(SetEndOfFile(file));
    CloseHandle(file);
    EXPECT_FALSE(Save(Folder.Path("target.txt")));
    Folder.Remove("target.txt");
    const FILETIME time = {0, 0x01C00000};
    const HANDLE changed = CreateFileA(path.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                       OPEN_EXISTING, 0, nullptr);
    EXPECT_TRUE(SetFileTime(changed, nullptr, nullptr, &time));
    CloseHandle(changed);
    EXPECT_FALSE(Save(path));
    EXPECT_EQ("line 1\nlin", FileContent(path)) << "what is left is not replaced";
    EXPECT_EQ(Names{"source.txt"}, FilesInFolder());
}

TEST_F(SavingSelections, AFileChangedMeanwhileThatCannotBeReplacedIsReportedAndShownAnew)
{
    const std::string path = Open("source.txt", ManyBlocks());
    SelectLines(2, 3);
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    const FILETIME time = {0, 0x01C00000};
    DWORD written = 0;
    WriteFile(file, "LINE", 4, &written, nullptr);
    EXPECT_TRUE(SetFileTime(file, nullptr, nullptr, &time));
    CloseHandle(file);
    const ReplacedCall replace("ReplaceFileA", reinterpret_cast<void*>(RefuseToReplace));
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    EXPECT_FALSE(Save(path));
    EXPECT_EQ("The current file has changed and will be reopened", answers.OnlyText());
    EXPECT_EQ("LINE 1", TextOf(1));
    EXPECT_NE(0, Document.FileHandle);
    EXPECT_EQ(Names{"source.txt"}, FilesInFolder());
}

TEST_F(SavingSelections, TheCommandAsksForTheNameAndIsBusyMeanwhile)
{
    const ReplacedCall dialog("GetSaveFileNameA", reinterpret_cast<void*>(ChooseName));
    const DialogAnswers none;
    Open("source.txt", "one\ntwo\n");
    Command(251);
    ChosenName = Folder.Path("saved.txt");
    WhileChoosing = [] { EXPECT_FALSE(App.BusyCursor); };
    Command(221);
    EXPECT_EQ("one\r\ntwo", FileContent(ChosenName));
    EXPECT_FALSE(App.BusyCursor);
}

TEST_F(SavingSelections, TheCommandSavesNothingWhenItIsCancelled)
{
    const ReplacedCall dialog("GetSaveFileNameA", reinterpret_cast<void*>(ChooseName));
    const DialogAnswers none;
    Open("source.txt", "one\n");
    Command(251);
    ChosenName.clear();
    Command(221);
    EXPECT_EQ(Names{"source.txt"}, FilesInFolder());
}

TEST_F(SavingSelections, TheCommandReportsADialogThatFails)
{
    const ReplacedCall dialog("GetSaveFileNameA", reinterpret_cast<void*>(ChooseName));
    const ReplacedCall error("CommDlgExtendedError", reinterpret_cast<void*>(DialogError));
    Open("source.txt", "one\n");
    Command(251);
    ChosenName.clear();
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    Command(221);
    EXPECT_EQ(SaveFailed, answers.OnlyText());
    EXPECT_EQ(Names{"source.txt"}, FilesInFolder());
}

TEST_F(SavingSelections, TheCommandReportsAFailure)
{
    const ReplacedCall dialog("GetSaveFileNameA", reinterpret_cast<void*>(ChooseName));
    Open("source.txt", "one\n");
    Command(251);
    ChosenName = Folder.Path("no such directory\\file.txt");
    DialogAnswers answers;
    answers.Then([](HWND box) {
        EXPECT_FALSE(App.BusyCursor);
        PressButton(box, IDOK);
    });
    Command(221);
    EXPECT_EQ(SaveFailed, answers.OnlyText());
    EXPECT_TRUE(HasSelection());
}

TEST_F(SavingSelections, TheCommandReportsADeviceThatIsFull)
{
    const ReplacedCall dialog("GetSaveFileNameA", reinterpret_cast<void*>(ChooseName));
    Open("source.txt", "one\n");
    Command(251);
    ChosenName = "Z:\\dev\\full";
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    Command(221);
    EXPECT_EQ(SaveFailed, answers.OnlyText());
}

TEST_F(SavingSelections, ADocumentHandedOverWhileTheNameIsAskedForIsNotSaved)
{
    const ReplacedCall dialog("GetSaveFileNameA", reinterpret_cast<void*>(ChooseName));
    Folder.Add("other.txt", "another\n");
    Folder.Add("target.txt", "precious");
    for (const char* const target : {"target.txt", "other.txt"}) {
        Open("source.txt", "one\n");
        Command(251);
        ChosenName = Folder.Path(target);
        WhileChoosing = [this] { OpenNamedFile(Windows.Main, Folder.Path("other.txt").c_str()); };
        DialogAnswers answers;
        answers.ThenPress(IDOK);
        Command(221);
        EXPECT_EQ(SaveFailed, answers.OnlyText());
        EXPECT_EQ("precious", FileContent(Folder.Path("target.txt")));
        EXPECT_EQ("another\n", FileContent(Folder.Path("other.txt")));
        EXPECT_STREQ("other.txt", App.FileTitle);
    }
}
