#include "document/port.h"
#include "harness/scratch.h"
#include "harness/system_calls.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>
#include <windows.h>

namespace {

// size bytes that tell their position; seed makes one file differ from another.
std::string Pattern(std::size_t size, unsigned seed)
{
    std::string content(size, '\0');
    for (std::size_t i = 0; i < size; ++i) {
        content[i] = static_cast<char>((i * 2654435761u + seed * 40503u) >> 13);
    }
    return content;
}

std::string ReadFrom(int file, std::int32_t offset, std::int32_t count)
{
    std::string bytes(static_cast<std::size_t>(count), '?');
    const std::int32_t read = ReadFileAt(file, offset, bytes.data(), count);
    bytes.resize(static_cast<std::size_t>(read));
    return bytes;
}

std::string Part(const std::string& content, std::int32_t offset, std::int32_t count)
{
    const std::size_t start = static_cast<std::size_t>(offset);
    return start < content.size() ? content.substr(start, static_cast<std::size_t>(count)) : std::string();
}

// Opens a file and closes it with the object.
class OpenedFile {
public:
    explicit OpenedFile(const char* path) : File(OpenForReading(path)) {}
    ~OpenedFile()
    {
        if (File != 0) {
            CloseOpenFile(File);
        }
    }
    OpenedFile(const OpenedFile&) = delete;
    OpenedFile& operator=(const OpenedFile&) = delete;
    operator int() const { return File; }

private:
    int File;
};

// Maps a file and unmaps it with the object.
class Mapped {
public:
    explicit Mapped(const char* path) : File(MapWholeFile(path)) {}
    ~Mapped() { UnmapFile(File); }
    Mapped(const Mapped&) = delete;
    Mapped& operator=(const Mapped&) = delete;
    bool IsThere() const { return File.Bytes != nullptr; }
    std::size_t Size() const { return File.Size; }
    std::string Content() const { return std::string(reinterpret_cast<const char*>(File.Bytes), File.Size); }

private:
    MappedFile File;
};

// A text in the system's code page, in room for 40 bytes.
std::string Ansi(const char16_t* text)
{
    char ansi[40] = "as before";
    ToAnsiText(text, ansi, sizeof ansi);
    return ansi;
}

std::string Capitals(std::string text)
{
    ToUpperCase(text.data(), static_cast<std::int32_t>(text.size()));
    return text;
}

BOOL WINAPI DescribeTwoBytePage(UINT, LPCPINFO page)
{
    *page = CPINFO{};
    page->MaxCharSize = 2;
    return TRUE;
}

BOOL WINAPI DescribeNoPage(UINT, LPCPINFO)
{
    return FALSE;
}

} // namespace

TEST(OpenForReadingTest, AMissingFileIsNotOpened)
{
    EXPECT_EQ(0, OpenForReading(ScratchPath("missing.txt").c_str()));
    EXPECT_EQ(0, OpenForReading(ScratchPath("missing\\file.txt").c_str()));
    EXPECT_EQ(0, OpenForReading(""));
}

TEST(OpenForReadingTest, ADirectoryIsNotOpened)
{
    char directory[MAX_PATH];
    GetWindowsDirectoryA(directory, sizeof directory);
    EXPECT_EQ(0, OpenForReading(directory));
}

TEST(OpenForReadingTest, AFileThatAnotherProgramKeepsForItselfIsNotOpened)
{
    const ScratchFile scratch("locked.txt", "content");
    const HANDLE keeper = CreateFileA(scratch.Path(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, keeper);
    EXPECT_EQ(0, OpenForReading(scratch.Path()));
    CloseHandle(keeper);
    EXPECT_NE(0, OpenedFile(scratch.Path()));
}

TEST(OpenForReadingTest, AnOpenFileCanStillBeWrittenByOthers)
{
    const ScratchFile scratch("shared.txt", "content");
    const OpenedFile file(scratch.Path());
    const HANDLE writer = CreateFileA(scratch.Path(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, 0, nullptr);
    EXPECT_NE(INVALID_HANDLE_VALUE, writer);
    CloseHandle(writer);
}

TEST(OpenForReadingTest, AReadOnlyFileIsOpened)
{
    const ScratchFile scratch("read-only.txt", "content");
    SetFileAttributesA(scratch.Path(), FILE_ATTRIBUTE_READONLY);
    const OpenedFile file(scratch.Path());
    EXPECT_EQ("content", ReadFrom(file, 0, 20));
}

TEST(OpenForReadingTest, APathOf259CharactersIsOpened)
{
    std::vector<std::string> directories;
    std::string path = ScratchPath("");
    while (path.size() < 200) {
        path += std::string(20, 'd');
        directories.push_back(path);
        CreateDirectoryA(path.c_str(), nullptr);
        path += "\\";
    }
    path += std::string(259 - path.size(), 'f');
    {
        const ScratchFile scratch(path.substr(ScratchPath("").size()), "far down");
        const OpenedFile file(path.c_str());
        EXPECT_EQ("far down", ReadFrom(file, 0, 20));
        FileStatus status;
        EXPECT_TRUE(GetFileStatus(path.c_str(), status));
        EXPECT_EQ(8, status.Size);
    }
    while (!directories.empty()) {
        RemoveDirectoryA(directories.back().c_str());
        directories.pop_back();
    }
}

TEST(ReadFileAtTest, ReadsWhatStandsAtTheOffset)
{
    const std::string content = Pattern(100000, 1);
    const ScratchFile scratch("pattern.bin", content);
    const OpenedFile file(scratch.Path());
    EXPECT_EQ(Part(content, 0, 30000), ReadFrom(file, 0, 30000));
    EXPECT_EQ(Part(content, 30000, 30000), ReadFrom(file, 30000, 30000));
    EXPECT_EQ(Part(content, 12345, 7), ReadFrom(file, 12345, 7));
    EXPECT_EQ(Part(content, 12345, 7), ReadFrom(file, 12345, 7));
}

TEST(ReadFileAtTest, DeliversWhatIsLeftAtTheEndAndNothingBehindIt)
{
    const std::string content = Pattern(1000, 2);
    const ScratchFile scratch("short.bin", content);
    const OpenedFile file(scratch.Path());
    EXPECT_EQ(Part(content, 900, 100), ReadFrom(file, 900, 30000));
    EXPECT_EQ("", ReadFrom(file, 1000, 30000));
    EXPECT_EQ("", ReadFrom(file, 5000, 30000));
    EXPECT_EQ(Part(content, 999, 1), ReadFrom(file, 999, 2));
}

TEST(ReadFileAtTest, ReadsNothingWithoutAFile)
{
    char byte = 'x';
    EXPECT_EQ(0, ReadFileAt(0, 0, &byte, 1));
    EXPECT_EQ('x', byte);
}

TEST(ReadFileAtTest, ANegativeOffsetReadsNothingAndDoesNoHarm)
{
    const std::string content = Pattern(1000, 3);
    const ScratchFile scratch("negative.bin", content);
    const OpenedFile file(scratch.Path());
    EXPECT_EQ(Part(content, 0, 100), ReadFrom(file, 0, 100));
    EXPECT_EQ("", ReadFrom(file, -1, 10));
    EXPECT_EQ(Part(content, 100, 100), ReadFrom(file, 100, 100));
}

// The file pointer is remembered from one read to the next; a new file begins anew, also under the number
// of one closed before.
TEST(ReadFileAtTest, AnotherFileAtTheSameHandleIsReadFromItsOwnPlace)
{
    const std::string first = Pattern(1000, 4);
    const std::string second = Pattern(1000, 5);
    const ScratchFile firstFile("first.bin", first);
    const ScratchFile secondFile("second.bin", second);
    const int before = OpenForReading(firstFile.Path());
    EXPECT_EQ(Part(first, 0, 100), ReadFrom(before, 0, 100));
    CloseOpenFile(before);
    const int after = OpenForReading(secondFile.Path());
    ASSERT_EQ(before, after) << "the system gave out another number: this run tells nothing";
    EXPECT_EQ(Part(second, 100, 100), ReadFrom(after, 100, 100));
    CloseOpenFile(after);
}

TEST(ReadFileAtTest, TwoFilesReadInTurnsFromTheSamePlacesAreKeptApart)
{
    const std::string first = Pattern(1000, 9);
    const std::string second = Pattern(1000, 10);
    const ScratchFile firstFile("first.bin", first);
    const ScratchFile secondFile("second.bin", second);
    const OpenedFile a(firstFile.Path());
    const OpenedFile b(secondFile.Path());
    EXPECT_EQ(Part(first, 0, 100), ReadFrom(a, 0, 100));
    EXPECT_EQ(Part(second, 100, 100), ReadFrom(b, 100, 100));
    EXPECT_EQ(Part(first, 200, 100), ReadFrom(a, 200, 100));
    EXPECT_EQ(Part(second, 300, 100), ReadFrom(b, 300, 100));
}

TEST(ReadFileAtTest, AFileClosedBehindItsBackReadsNothingAndItsSuccessorIsReadRight)
{
    const std::string content = Pattern(1000, 6);
    const ScratchFile scratch("closed.bin", content);
    const int before = OpenForReading(scratch.Path());
    EXPECT_EQ(Part(content, 0, 100), ReadFrom(before, 0, 100));
    _lclose(before);
    EXPECT_EQ("", ReadFrom(before, 100, 100));
    const HFILE after = _lopen(scratch.Path(), OF_READ);
    ASSERT_EQ(before, after) << "the system gave out another number: this run tells nothing";
    EXPECT_EQ(Part(content, 100, 100), ReadFrom(after, 100, 100));
    CloseOpenFile(after);
}

TEST(ReadFileAtTest, SeesWhatWasAppendedBehindTheLastRead)
{
    ScratchFile scratch("growing.bin", "first,");
    const OpenedFile file(scratch.Path());
    EXPECT_EQ("first,", ReadFrom(file, 0, 100));
    scratch.Append("second");
    EXPECT_EQ("second", ReadFrom(file, 6, 100));
}

TEST(ReadFileAtTest, AFileGrownBeyondTheLastPositionIsReadUpToThereAndOn)
{
    ScratchFile scratch("grown.bin", "start");
    scratch.Truncate(2147483700);
    const OpenedFile file(scratch.Path());
    EXPECT_EQ(std::string(60, '\0'), ReadFrom(file, 2147483640, 30000));
    EXPECT_EQ("start", ReadFrom(file, 0, 5));
}

TEST(ReadFileAtTest, AnyOrderOfReadsOpensAndClosesGivesTheFilesContent)
{
    constexpr std::int32_t Size = 70000;
    const std::string content[2] = {Pattern(Size, 7), Pattern(Size, 8)};
    const ScratchFile scratch[2] = {{"a.bin", content[0]}, {"b.bin", content[1]}};
    int file[2] = {0, 0};
    std::int32_t next[2] = {0, 0}; // where the read before ended, to hit the remembered place often
    std::mt19937 random(20240607);
    const auto below = [&](int limit) { return static_cast<std::int32_t>(random() % static_cast<unsigned>(limit)); };
    for (int step = 0; step < 3000; ++step) {
        const int which = below(2);
        if (file[which] == 0) {
            file[which] = OpenForReading(scratch[which].Path());
            ASSERT_NE(0, file[which]);
        } else if (below(8) == 0) {
            CloseOpenFile(file[which]);
            file[which] = 0;
            continue;
        }
        const std::int32_t offset = below(3) == 0 ? below(Size + 2000) - 1000 : next[which];
        const std::int32_t count = below(4) == 0 ? 30000 : below(500);
        const std::string read = ReadFrom(file[which], offset, count);
        const std::string expected = offset < 0 ? std::string() : Part(content[which], offset, count);
        ASSERT_EQ(expected.size(), read.size()) << "step " << step << ", offset " << offset;
        ASSERT_EQ(0, memcmp(expected.data(), read.data(), read.size())) << "step " << step << ", offset " << offset;
        if (offset >= 0) {
            next[which] = offset + static_cast<std::int32_t>(read.size());
        }
    }
    for (int open : file) {
        if (open != 0) {
            CloseOpenFile(open);
        }
    }
}

TEST(GetFileStatusTest, SaysSizeAndTime)
{
    ScratchFile scratch("status.txt", "12345");
    scratch.SetTime(1234567890);
    FileStatus status;
    ASSERT_TRUE(GetFileStatus(scratch.Path(), status));
    EXPECT_EQ(5, status.Size);
    EXPECT_EQ(1234567890, status.Time);
}

TEST(GetFileStatusTest, TimesThatDoNotFitCountAsZero)
{
    ScratchFile scratch("time.txt", "");
    FileStatus status;
    const struct {
        std::int64_t Written;
        std::int32_t Said;
    } times[] = {{-1, 0}, {-86400, 0}, {0, 0}, {1, 1}, {INT32_MAX, INT32_MAX}, {std::int64_t{INT32_MAX} + 1, 0}};
    for (const auto& time : times) {
        scratch.SetTime(time.Written);
        status.Time = 77;
        ASSERT_TRUE(GetFileStatus(scratch.Path(), status));
        EXPECT_EQ(time.Said, status.Time) << time.Written;
    }
}

TEST(GetFileStatusTest, SaysTheDosAttributes)
{
    const ScratchFile scratch("attributes.txt", "");
    FileStatus status;
    const struct {
        DWORD Set;
        std::uint16_t Said;
    } attributes[] = {
        {FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE, 1 | 32},
        {FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE, 2 | 32},
        {FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE, 4 | 32},
        {FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE, 39},
    };
    for (const auto& attribute : attributes) {
        ASSERT_TRUE(SetFileAttributesA(scratch.Path(), attribute.Set));
        ASSERT_TRUE(GetFileStatus(scratch.Path(), status));
        EXPECT_EQ(attribute.Said, status.Attributes);
    }
}

TEST(GetFileStatusTest, OnlyDosAttributesAreSaid)
{
    char directory[MAX_PATH];
    GetWindowsDirectoryA(directory, sizeof directory);
    FileStatus status;
    ASSERT_TRUE(GetFileStatus(directory, status));
    EXPECT_EQ(0, status.Attributes & ~39);
}

TEST(GetFileStatusTest, FailsForAMissingFile)
{
    FileStatus status;
    EXPECT_FALSE(GetFileStatus(ScratchPath("missing.txt").c_str(), status));
}

TEST(GetFileStatusTest, AcceptsTheLargestSizeOf31Bits)
{
    ScratchFile scratch("largest.bin", "start");
    scratch.Truncate(2147483647);
    FileStatus status;
    ASSERT_TRUE(GetFileStatus(scratch.Path(), status));
    EXPECT_EQ(2147483647, status.Size);
    const OpenedFile file(scratch.Path());
    EXPECT_EQ(std::string(7, '\0'), ReadFrom(file, 2147483640, 30000));
    EXPECT_EQ("", ReadFrom(file, 2147483647, 1));
    EXPECT_EQ("start", ReadFrom(file, 0, 5));
}

TEST(GetFileStatusTest, RefusesALargerSize)
{
    ScratchFile scratch("too-large.bin", "");
    FileStatus status;
    for (const std::int64_t size : {2147483648, 4294967295, 4294967296, 4294967300}) {
        scratch.Truncate(size);
        EXPECT_FALSE(GetFileStatus(scratch.Path(), status)) << size;
    }
}

TEST(MemoryObjects, AreMovableZeroFilledAndLargeEnough)
{
    constexpr std::size_t Size = 30800;
    const MemoryHandle memory = AllocateMemory(Size);
    ASSERT_NE(nullptr, memory);
    EXPECT_EQ(0u, GlobalFlags(memory) & (GMEM_DISCARDABLE | GMEM_DISCARDED | GMEM_LOCKCOUNT));
    EXPECT_GE(GlobalSize(memory), Size);
    const char* const bytes = static_cast<const char*>(LockMemory(memory));
    ASSERT_NE(nullptr, bytes);
    EXPECT_NE(static_cast<const void*>(bytes), memory); // a fixed object's handle is its address
    EXPECT_EQ(1u, GlobalFlags(memory) & GMEM_LOCKCOUNT);
    EXPECT_EQ(std::string(Size, '\0'), std::string(bytes, Size));
    UnlockMemory(memory);
    EXPECT_EQ(0u, GlobalFlags(memory) & GMEM_LOCKCOUNT);
    FreeMemory(memory);
}

TEST(MemoryObjects, AreDiscardableFromTheTimeTheyAreParked)
{
    const MemoryHandle memory = AllocateMemory(1000);
    EXPECT_EQ(0u, GlobalFlags(memory) & GMEM_DISCARDABLE);
    SetMemoryDiscardable(memory, true);
    EXPECT_NE(0u, GlobalFlags(memory) & GMEM_DISCARDABLE);
    FreeMemory(memory);
}

TEST(MemoryObjects, KeepTheirContentWhileParked)
{
    const MemoryHandle memory = AllocateMemory(1000);
    strcpy(static_cast<char*>(LockMemory(memory)), "kept");
    UnlockMemory(memory);
    SetMemoryDiscardable(memory, true);
    EXPECT_STREQ("kept", static_cast<const char*>(LockMemory(memory)));
    UnlockMemory(memory);
    SetMemoryDiscardable(memory, false);
    EXPECT_STREQ("kept", static_cast<const char*>(LockMemory(memory)));
    UnlockMemory(memory);
    FreeMemory(memory);
}

TEST(MemoryObjects, ADiscardedObjectCannotBeLocked)
{
    const MemoryHandle memory = AllocateMemory(1000);
    SetMemoryDiscardable(memory, true);
    ASSERT_EQ(memory, GlobalDiscard(memory));
    EXPECT_EQ(nullptr, LockMemory(memory));
    FreeMemory(memory);
    EXPECT_EQ(static_cast<UINT>(GMEM_INVALID_HANDLE), GlobalFlags(memory));
}

TEST(MemoryObjects, ShrinkingKeepsTheBeginning)
{
    const MemoryHandle memory = AllocateMemory(16000);
    strcpy(static_cast<char*>(LockMemory(memory)), "beginning");
    UnlockMemory(memory);
    const MemoryHandle shrunk = ShrinkMemory(memory, 40);
    ASSERT_NE(nullptr, shrunk);
    EXPECT_LT(GlobalSize(shrunk), 16000u);
    EXPECT_GE(GlobalSize(shrunk), 40u);
    EXPECT_EQ(0u, GlobalFlags(shrunk) & GMEM_DISCARDABLE);
    EXPECT_STREQ("beginning", static_cast<const char*>(LockMemory(shrunk)));
    UnlockMemory(shrunk);
    FreeMemory(shrunk);
}

TEST(MapWholeFileTest, AllBytesAreThere)
{
    for (const std::size_t size : {1u, 4095u, 4096u, 4097u, 200000u}) {
        const std::string content = Pattern(size, 11);
        const ScratchFile scratch("mapped.bin", content);
        const Mapped mapped(scratch.Path());
        ASSERT_TRUE(mapped.IsThere()) << size;
        EXPECT_EQ(size, mapped.Size());
        EXPECT_TRUE(mapped.Content() == content) << size;
    }
}

TEST(MapWholeFileTest, AMissingFileIsNotMapped)
{
    const Mapped mapped(ScratchPath("missing.bin").c_str());
    EXPECT_FALSE(mapped.IsThere());
    EXPECT_EQ(0u, mapped.Size());
    EXPECT_FALSE(Mapped("").IsThere());
}

TEST(MapWholeFileTest, ADirectoryIsNotMapped)
{
    char directory[MAX_PATH];
    GetWindowsDirectoryA(directory, sizeof directory);
    EXPECT_FALSE(Mapped(directory).IsThere());
}

TEST(MapWholeFileTest, AnEmptyFileIsNotMapped)
{
    const ScratchFile scratch("empty.bin", "");
    const Mapped mapped(scratch.Path());
    EXPECT_FALSE(mapped.IsThere());
    EXPECT_EQ(0u, mapped.Size());
}

TEST(MapWholeFileTest, AFileThatAnotherProgramKeepsForItselfIsNotMapped)
{
    const ScratchFile scratch("locked.bin", "content");
    const HANDLE keeper = CreateFileA(scratch.Path(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, keeper);
    EXPECT_FALSE(Mapped(scratch.Path()).IsThere());
    CloseHandle(keeper);
    EXPECT_EQ("content", Mapped(scratch.Path()).Content());
}

TEST(MapWholeFileTest, TheOpenDocumentCanBeMappedToo)
{
    const ScratchFile scratch("open.bin", "content");
    const OpenedFile file(scratch.Path());
    ASSERT_NE(0, file);
    EXPECT_EQ("content", Mapped(scratch.Path()).Content());
    EXPECT_EQ("content", ReadFrom(file, 0, 20));
}

TEST(MapWholeFileTest, AReadOnlyFileIsMapped)
{
    const ScratchFile scratch("read-only.bin", "content");
    SetFileAttributesA(scratch.Path(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ("content", Mapped(scratch.Path()).Content());
}

TEST(MapWholeFileTest, NothingIsHeldAfterwards)
{
    const ScratchFile scratch("released.bin", "content");
    DWORD before = 0;
    DWORD after = 0;
    GetProcessHandleCount(GetCurrentProcess(), &before);
    for (int i = 0; i < 20; ++i) {
        EXPECT_TRUE(Mapped(scratch.Path()).IsThere());
    }
    GetProcessHandleCount(GetCurrentProcess(), &after);
    EXPECT_EQ(before, after);
    const HANDLE keeper = CreateFileA(scratch.Path(), GENERIC_WRITE, 0, nullptr, TRUNCATE_EXISTING, 0, nullptr);
    EXPECT_NE(INVALID_HANDLE_VALUE, keeper) << "a mapped file cannot be truncated";
    CloseHandle(keeper);
}

TEST(ToAnsiTextTest, LettersOfTheCodePageAreKept)
{
    ASSERT_EQ(1252u, GetACP()) << "this run tells nothing";
    EXPECT_EQ("Text 1", Ansi(u"Text 1"));
    EXPECT_EQ("\xA9 \xC4\xD6\xDC \xE9 \x80", Ansi(u"\u00A9 \u00C4\u00D6\u00DC \u00E9 \u20AC"));
    EXPECT_EQ("", Ansi(u""));
}

TEST(ToAnsiTextTest, OtherLettersHaveAStandIn)
{
    EXPECT_EQ("a?b", Ansi(u"a\u65E5b"));
}

TEST(ToAnsiTextTest, ALongTextIsCut)
{
    const std::u16string text(100, u'x');
    EXPECT_EQ(std::string(39, 'x'), Ansi(text.c_str()));
    char one[1] = {'y'};
    ToAnsiText(text.c_str(), one, sizeof one);
    EXPECT_EQ('\0', one[0]);
    char exact[101];
    ToAnsiText(text.c_str(), exact, sizeof exact);
    EXPECT_EQ(std::string(100, 'x'), exact);
}

TEST(ToAnsiTextTest, ATextLongerThanAnyThatIsConvertedBecomesEmpty)
{
    EXPECT_EQ("", Ansi(std::u16string(600, u'x').c_str()));
}

TEST(ToAnsiTextTest, NothingBehindTheRoomIsTouched)
{
    char room[6] = {'1', '2', '3', '4', '5', '6'};
    ToAnsiText(u"abcdefgh", room, 4);
    EXPECT_STREQ("abc", room);
    EXPECT_EQ('5', room[4]);
    EXPECT_EQ('6', room[5]);
}

TEST(UserLanguageTest, IsTheLanguageOfTheUsersTexts)
{
    char number[9] = "";
    GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_ILANGUAGE, number, sizeof number);
    EXPECT_EQ(strtoul(number, nullptr, 16), UserLanguage());
    EXPECT_NE(0, UserLanguage());
}

TEST(ToUpperCaseTest, SmallLettersBecomeCapitalsAndAllElseStays)
{
    EXPECT_EQ("ABC XYZ 019 @[`{ABC", Capitals("abc xyz 019 @[`{ABC"));
    EXPECT_EQ("", Capitals(""));
}

TEST(ToUpperCaseTest, LettersOfTheCodePageHaveTheirCapitals)
{
    ASSERT_EQ(1252u, GetACP()) << "this run tells nothing";
    EXPECT_EQ("\xC4\xD6\xDC \xC9 \x8A \x9F \xDF \xC4", Capitals("\xE4\xF6\xFC \xE9 \x9A \xFF \xDF \xC4"));
}

TEST(ToUpperCaseTest, AZeroByteEndsNothing)
{
    EXPECT_EQ(std::string("A\0B\0", 4), Capitals(std::string("a\0b\0", 4)));
}

TEST(ToUpperCaseTest, NothingBehindTheCountIsTouched)
{
    char text[] = "abcdef";
    ToUpperCase(text, 3);
    EXPECT_STREQ("ABCdef", text);
    ToUpperCase(text + 3, 0);
    EXPECT_STREQ("ABCdef", text);
}

TEST(ToUpperCaseTest, EachByteHasTheSameCapitalWhateverStandsBesideIt)
{
    ASSERT_TRUE(HasOneByteCharacters()) << "this run tells nothing";
    std::string all;
    std::string expected;
    for (int byte = 255; byte >= 0; --byte) {
        all += static_cast<char>(byte);
        expected += Capitals(std::string(1, static_cast<char>(byte)));
    }
    EXPECT_EQ(expected, Capitals(all));
}

TEST(ToUpperCaseTest, ABlockIsTurnedWhole)
{
    const std::string capitals = Capitals(std::string(30000, 'z'));
    EXPECT_EQ(std::string(30000, 'Z'), capitals);
}

TEST(HasOneByteCharactersTest, FollowsTheSystemsCodePage)
{
    CPINFO page = {};
    ASSERT_TRUE(GetCPInfo(GetACP(), &page));
    EXPECT_EQ(page.MaxCharSize == 1, HasOneByteCharacters());
    const ReplacedCall replaced("GetCPInfo", reinterpret_cast<void*>(DescribeTwoBytePage));
    EXPECT_FALSE(HasOneByteCharacters());
}

TEST(HasOneByteCharactersTest, IsNotTakenForGrantedOfAnUnknownCodePage)
{
    const ReplacedCall replaced("GetCPInfo", reinterpret_cast<void*>(DescribeNoPage));
    EXPECT_FALSE(HasOneByteCharacters());
}
