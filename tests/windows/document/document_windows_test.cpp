// The document on real files and real global memory.
#include "document/block_cache.h"
#include "document/document.h"
#include "document/document_state.h"
#include "document/line_index.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "support/plain_document.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>
#include <windows.h>

namespace {

std::int32_t Slots;

std::int32_t AnswerSlots()
{
    return Slots;
}

class RealDocument : public testing::Test {
protected:
    RealDocument() : CallsBefore(DocumentCalls)
    {
        FreeBuffers();
        Document = DocumentState{};
        DocumentOptions = DocumentSettings{};
        DocumentCalls.ReadBufferCount = AnswerSlots;
        Slots = MaxCacheSlots;
    }

    ~RealDocument() override
    {
        FreeBuffers();
        Document = DocumentState{};
        DocumentOptions = DocumentSettings{};
        DocumentCalls.ReadBufferCount = CallsBefore.ReadBufferCount;
    }

    // Opens a file as the first one of a run: which slot takes its turn first tells in what is read again.
    static OpenResult Open(const ScratchFile& file)
    {
        FreeBuffers();
        Document = DocumentState{};
        FileInfo info;
        return InitBuffers() ? OpenDocument(file.Path(), info) : OpenResult::CannotOpen;
    }

    DocumentHooks CallsBefore;
    ReadingCounter Readings;
};

std::string LineOf(std::int32_t number)
{
    const LineText line = ReadLineText(number);
    return std::string(line.Text, static_cast<std::size_t>(line.Length));
}

std::string BytesAt(std::int32_t offset, std::int32_t count)
{
    SeekLine(0, offset);
    const LineText bytes = ReadBytes(count);
    return std::string(bytes.Text, static_cast<std::size_t>(bytes.Length));
}

// Discards what the system may discard; how many blocks that were.
int DiscardParked()
{
    int discarded = 0;
    for (const CacheSlot& slot : Document.Slots) {
        discarded += slot.Memory != nullptr && GlobalDiscard(slot.Memory) != nullptr;
    }
    return discarded;
}

// size bytes of numbered lines of different lengths.
std::string Lines(std::size_t size, const char* end)
{
    std::string content;
    for (int line = 1; content.size() < size; ++line) {
        content.append(std::to_string(line)).append(static_cast<std::size_t>(line * 7 % 90), '.').append(end);
    }
    content.resize(size);
    return content;
}

Bytes BytesOf(const std::string& text)
{
    return Bytes(text.begin(), text.end());
}

struct Content {
    const char* Name;
    std::string Text;
};

std::vector<Content> Contents()
{
    return {
        {"empty", ""},
        {"one line without end", "only"},
        {"CR LF", Lines(200000, "\r\n")},
        {"LF", Lines(200000, "\n")},
        {"CR", Lines(200000, "\r")},
        {"one block exactly", Lines(30000, "\r\n")},
        {"two blocks exactly", Lines(60000, "\n")},
        {"one byte more than a block", Lines(30001, "\n")},
        {"CR LF split by the block's end", std::string(500, 'a') + "\n" + Lines(29498, "\n") + "\r\nnext\r\n"},
        {"longest line allowed", Lines(100000, "\n") + "\n" + std::string(512, 'x') + "\nend"},
        {"line over the limit", Lines(100000, "\n") + "\n" + std::string(513, 'x') + "\nend"},
        {"binary", std::string(95000, '\0') + std::string("\x01\x02\x03", 3)},
        {"only line ends", std::string(65000, '\n')},
        {"zero bytes in lines", std::string("a\0b\nc\0d", 7)},
    };
}

// What the document says, beside what the plain one does.
void ExpectSameMeasures(const PlainDocument& plain)
{
    EXPECT_EQ(plain.IsText, Document.IsText);
    EXPECT_EQ(plain.LineCount, Document.LineCount);
    EXPECT_EQ(plain.LongestLine, Document.LongestLine);
    EXPECT_EQ(plain.BlockCount, Document.BlockCount);
}

} // namespace

class RealDocumentContent : public RealDocument, public testing::WithParamInterface<std::int32_t> {};

TEST_P(RealDocumentContent, EveryLineReadsAsInThePlainDocument)
{
    Slots = GetParam();
    for (const Content& content : Contents()) {
        SCOPED_TRACE(content.Name);
        const ScratchFile file("content.txt", content.Text);
        ASSERT_EQ(OpenResult::Opened, Open(file));
        PlainOptions options;
        options.CacheSlots = Slots;
        PlainDocument plain(options);
        plain.Open(BytesOf(content.Text));
        ExpectSameMeasures(plain);
        for (std::int32_t line = 1; line <= Document.LineCount; ++line) {
            ASSERT_EQ(plain.ReadLineText(line), LineOf(line)) << "line " << line;
        }
    }
}

TEST_P(RealDocumentContent, AnyOrderOfReadsGivesTheSameThoughParkedBlocksAreDiscarded)
{
    Slots = GetParam();
    std::mt19937 random(4711);
    const auto below = [&](std::int32_t limit) {
        return static_cast<std::int32_t>(random() % static_cast<unsigned>(limit));
    };
    int discarded = 0;
    for (const Content& content : Contents()) {
        SCOPED_TRACE(content.Name);
        const ScratchFile file("content.txt", content.Text);
        ASSERT_EQ(OpenResult::Opened, Open(file));
        PlainOptions options;
        options.CacheSlots = Slots;
        PlainDocument plain(options);
        plain.Open(BytesOf(content.Text));
        for (int step = 0; step < 400; ++step) {
            if (below(6) == 0) {
                discarded += DiscardParked();
                plain.DiscardParked();
            }
            const std::int32_t line = 1 + below(Document.LineCount);
            ASSERT_EQ(plain.ReadLineText(line), LineOf(line)) << "step " << step << ", line " << line;
            if (below(4) == 0) {
                const std::int32_t offset = below(Document.FileSize + 1);
                plain.SeekLine(0, offset);
                ASSERT_EQ(plain.ReadBytes(16), BytesAt(offset, 16)) << "step " << step << ", offset " << offset;
            }
        }
        EXPECT_EQ(plain.Readings, Readings.Count());
        Readings.Reset();
    }
    EXPECT_EQ(Slots != 0, discarded != 0);
}

INSTANTIATE_TEST_SUITE_P(Slots, RealDocumentContent, testing::Range(0, 6));

TEST_F(RealDocument, AFileOfOneBlockIsClosedAndCanBeDeleted)
{
    for (const std::size_t size : {std::size_t{0}, std::size_t{10}, std::size_t{30000}}) {
        const ScratchFile file("small.txt", Lines(size, "\n"));
        ASSERT_EQ(OpenResult::Opened, Open(file));
        EXPECT_EQ(0, Document.FileHandle);
        EXPECT_TRUE(DeleteFileA(file.Path())) << size;
        EXPECT_FALSE(FileExists(file.Path()));
        EXPECT_EQ(Lines(size, "\n").substr(0, 16), BytesAt(0, 16));
    }
}

TEST_F(RealDocument, ALargerFileStaysOpenUntilItIsClosed)
{
    const ScratchFile file("larger.txt", Lines(30001, "\n"));
    ASSERT_EQ(OpenResult::Opened, Open(file));
    EXPECT_NE(0, Document.FileHandle);
    EXPECT_FALSE(DeleteFileA(file.Path()));
    CloseFileHandle();
    EXPECT_EQ(0, Document.FileHandle);
    EXPECT_TRUE(DeleteFileA(file.Path()));
}

TEST_F(RealDocument, FreeBuffersGivesBackFileAndMemory)
{
    const ScratchFile file("freed.txt", Lines(200000, "\n"));
    ASSERT_EQ(OpenResult::Opened, Open(file));
    const MemoryHandle work = Document.WorkMemory;
    const MemoryHandle table = Document.LineTableMemory;
    const MemoryHandle parked = Document.Slots[1].Memory;
    FreeBuffers();
    EXPECT_EQ(static_cast<UINT>(GMEM_INVALID_HANDLE), GlobalFlags(work));
    EXPECT_EQ(static_cast<UINT>(GMEM_INVALID_HANDLE), GlobalFlags(table));
    EXPECT_EQ(static_cast<UINT>(GMEM_INVALID_HANDLE), GlobalFlags(parked));
    EXPECT_TRUE(DeleteFileA(file.Path()));
}

TEST_F(RealDocument, ParkedBlocksAreDiscardableAndTheWorkingBufferIsLocked)
{
    const ScratchFile file("parked.txt", Lines(200000, "\n"));
    ASSERT_EQ(OpenResult::Opened, Open(file));
    EXPECT_EQ(1u, GlobalFlags(Document.WorkMemory) & GMEM_LOCKCOUNT);
    for (int slot = 1; slot <= MaxCacheSlots; ++slot) {
        EXPECT_NE(0u, GlobalFlags(Document.Slots[slot].Memory) & GMEM_DISCARDABLE) << slot;
        EXPECT_EQ(0u, GlobalFlags(Document.Slots[slot].Memory) & GMEM_LOCKCOUNT) << slot;
    }
}

TEST_F(RealDocument, TheLineTableIsShrunkToTheBlocksOfTheDocument)
{
    const ScratchFile file("table.txt", Lines(200000, "\n"));
    ASSERT_EQ(OpenResult::Opened, Open(file));
    EXPECT_GE(GlobalSize(Document.LineTableMemory), 8u * 4u);
    EXPECT_LT(GlobalSize(Document.LineTableMemory), 1000u);
}

TEST_F(RealDocument, ABlockStillParkedIsNotReadAgain)
{
    const ScratchFile file("cached.txt", Lines(150000, "\n"));
    ASSERT_EQ(OpenResult::Opened, Open(file));
    Readings.Reset();
    for (const std::int32_t offset : {0, 140000, 70000, 100000, 40000, 0, 140000}) {
        BytesAt(offset, 16);
    }
    EXPECT_EQ(0, Readings.Count());
    EXPECT_EQ(4, DiscardParked());
    BytesAt(0, 16);
    EXPECT_EQ(1, Readings.Count());
}

TEST_F(RealDocument, WithoutSlotsEveryChangeOfBlockReadsTheFile)
{
    Slots = 0;
    const ScratchFile file("uncached.txt", Lines(150000, "\n"));
    ASSERT_EQ(OpenResult::Opened, Open(file));
    Readings.Reset();
    for (const std::int32_t offset : {0, 140000, 0, 16, 140000}) {
        BytesAt(offset, 16);
    }
    EXPECT_EQ(3, Readings.Count());
}

TEST_F(RealDocument, PositionedReadsComeFromTheFileOrFromMemoryAlike)
{
    for (const std::size_t size : {std::size_t{30000}, std::size_t{90000}}) {
        const std::string content = Lines(size, "\n");
        const ScratchFile file("positioned.txt", content);
        ASSERT_EQ(OpenResult::Opened, Open(file));
        EXPECT_EQ(size > 30000, Document.FileHandle != 0);
        std::string bytes(100, '?');
        for (const std::size_t offset : {std::size_t{0}, size / 2, size - 100}) {
            ReadAt(static_cast<std::int32_t>(offset), bytes.data(), 100);
            EXPECT_EQ(content.substr(offset, 100), bytes);
        }
        std::string untouched(100, '?');
        ReadAt(static_cast<std::int32_t>(size - 99), untouched.data(), 100);
        ReadAt(-1, untouched.data(), 100);
        EXPECT_EQ(std::string(100, '?'), untouched);
        // The readers of lines go on where they were.
        EXPECT_EQ(content.substr(0, content.find('\n')), LineOf(1));
        EXPECT_EQ(0, content.compare(content.find('\n') + 1, LineOf(2).size(), LineOf(2)));
    }
}

TEST_F(RealDocument, AFileOverTheTextLimitIsNotTextAndHasAGapInItsSecondBlock)
{
    DocumentOptions.MaxTextSize = 1;
    const std::string content = Lines(1048577, "\n");
    const ScratchFile file("over.txt", content);
    ASSERT_EQ(OpenResult::Opened, Open(file));
    EXPECT_FALSE(Document.IsText);
    EXPECT_EQ(35, Document.BlockCount);
    EXPECT_EQ((1048577 + 74) / 75, Document.LineCount);
    EXPECT_EQ(content.substr(29990, 10) + std::string(6, '\0'), BytesAt(29990, 16));
    EXPECT_EQ(std::string(16, '\0'), BytesAt(45000, 16));
    EXPECT_EQ(content.substr(60000, 16), BytesAt(60000, 16));
}

TEST_F(RealDocument, AFileAtTheTextLimitIsText)
{
    DocumentOptions.MaxTextSize = 1;
    const ScratchFile file("limit.txt", Lines(1048576, "\n"));
    ASSERT_EQ(OpenResult::Opened, Open(file));
    EXPECT_TRUE(Document.IsText);
}

TEST_F(RealDocument, WithATextLimitOfZeroOnlyAnEmptyFileIsText)
{
    DocumentOptions.MaxTextSize = 0;
    const ScratchFile file("one.txt", "x");
    ASSERT_EQ(OpenResult::Opened, Open(file));
    EXPECT_FALSE(Document.IsText);
    EXPECT_EQ(1, Document.LineCount);
    EXPECT_EQ("x", LineOf(1));
    EXPECT_EQ(0, Document.FileHandle);
    const ScratchFile empty("none.txt", "");
    ASSERT_EQ(OpenResult::Opened, Open(empty));
    EXPECT_TRUE(Document.IsText);
    EXPECT_EQ(1, Document.LineCount);
    EXPECT_EQ("", LineOf(1));
}

TEST_F(RealDocument, TheLargestFileOpensAndItsLastBytesAreRead)
{
    ScratchFile file("largest.bin", "begin");
    file.Truncate(2147483642);
    file.Append("final");
    ASSERT_EQ(OpenResult::Opened, Open(file));
    EXPECT_EQ(2147483647, Document.FileSize);
    EXPECT_EQ(71583, Document.BlockCount);
    EXPECT_EQ(2147483647 / 75 + 1, Document.LineCount);
    EXPECT_EQ(std::string("\0\0final", 7), BytesAt(2147483640, 16));
    EXPECT_EQ("final", LineOf(Document.LineCount).substr(LineOf(Document.LineCount).size() - 5));
    EXPECT_EQ("begin", BytesAt(0, 5));
}

TEST_F(RealDocument, AFileTooLargeForAPositionHasNoStatus)
{
    ScratchFile file("too-large.bin", "");
    file.Truncate(2147483648);
    EXPECT_EQ(OpenResult::NoStatus, Open(file));
    EXPECT_EQ(0, Document.FileHandle);
}

TEST_F(RealDocument, AMissingFileCannotBeOpened)
{
    InitBuffers();
    FileInfo info;
    EXPECT_EQ(OpenResult::CannotOpen, OpenDocument(ScratchPath("missing.txt").c_str(), info));
    EXPECT_EQ(0, Document.FileHandle);
}

TEST_F(RealDocument, TheInformationIsThatOfTheFile)
{
    ScratchFile file("info.txt", "12345");
    file.SetTime(1000000000);
    SetFileAttributesA(file.Path(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE);
    InitBuffers();
    FileInfo info;
    ASSERT_EQ(OpenResult::Opened, OpenDocument(file.Path(), info));
    EXPECT_EQ(5, info.Size);
    EXPECT_EQ(1000000000, info.Time);
    EXPECT_EQ(1000000000, Document.FileTime);
    EXPECT_EQ(33, info.Attributes);
}

TEST_F(RealDocument, AFileCutShortWhileOpenReadsAsShorterBlocks)
{
    Slots = 0;
    const std::string content = Lines(100000, "\n");
    ScratchFile file("cut.txt", content);
    ASSERT_EQ(OpenResult::Opened, Open(file));
    const std::int32_t lines = Document.LineCount;
    file.Truncate(40000);
    EXPECT_EQ(content.substr(39995, 5), BytesAt(39995, 16));
    EXPECT_EQ("", BytesAt(70000, 16));
    EXPECT_EQ("", LineOf(lines));
    for (std::int32_t line = 1; line <= lines; ++line) {
        ASSERT_LE(LineOf(line).size(), 512u);
    }
    EXPECT_EQ(content.substr(0, content.find('\n')), LineOf(1));
}

TEST_F(RealDocument, WhatIsAppendedToAnOpenFileDoesNotChangeItsLines)
{
    Slots = 0;
    const std::string content = Lines(70000, "\n");
    ScratchFile file("grown.txt", content);
    ASSERT_EQ(OpenResult::Opened, Open(file));
    const std::int32_t lines = Document.LineCount;
    const std::string line = LineOf(lines - 1);
    file.Append("\n");
    file.Append(Lines(70000, "\n"));
    EXPECT_EQ(line, LineOf(lines - 1));
    EXPECT_EQ(content.substr(0, content.find('\n')), LineOf(1));
    EXPECT_EQ(lines, Document.LineCount);
    EXPECT_EQ(70000, Document.FileSize);
}

class ReopenedFile : public RealDocument {
protected:
    ReopenedFile() : File("reopened.txt", Lines(90000, "\n"))
    {
        File.SetTime(1500000000);
        Open(File);
        CloseFileHandle();
    }

    ScratchFile File;
};

TEST_F(ReopenedFile, IsUnchangedAndOpenAgain)
{
    EXPECT_EQ(ReopenResult::Unchanged, ReopenFile(File.Path()));
    EXPECT_NE(0, Document.FileHandle);
    EXPECT_EQ(Lines(90000, "\n").substr(40000, 16), BytesAt(40000, 16));
}

TEST_F(ReopenedFile, WithAnotherTimeHasChangedAndIsClosed)
{
    for (const std::int64_t time : {1499999999, 1500000001}) {
        File.SetTime(time);
        EXPECT_EQ(ReopenResult::Changed, ReopenFile(File.Path()));
        EXPECT_EQ(0, Document.FileHandle);
        EXPECT_EQ(1500000000, Document.FileTime);
    }
}

TEST_F(ReopenedFile, WithAnotherSizeButTheSameTimeIsUnchanged)
{
    File.Append("more");
    File.SetTime(1500000000);
    EXPECT_EQ(ReopenResult::Unchanged, ReopenFile(File.Path()));
    EXPECT_EQ(90000, Document.FileSize);
}

TEST_F(ReopenedFile, CannotBeOpenedWhenItIsGoneOrTooLarge)
{
    File.Truncate(2147483648);
    EXPECT_EQ(ReopenResult::CannotOpen, ReopenFile(File.Path()));
    EXPECT_EQ(0, Document.FileHandle);
    DeleteFileA(File.Path());
    EXPECT_EQ(ReopenResult::CannotOpen, ReopenFile(File.Path()));
    EXPECT_EQ(0, Document.FileHandle);
}
