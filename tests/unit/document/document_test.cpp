#include "document/document_fixture.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

namespace {

constexpr std::int32_t DefaultTextLimit = 12582912;

class OpenDocumentTest : public DocumentFixture {
protected:
    static std::string Zeros(std::size_t count) { return std::string(count, '\0'); }

    // A file over the text limit as the limit of zero makes any file.
    static void OpenOverLimit(std::int32_t slots, std::size_t size)
    {
        StartDocuments(slots);
        DocumentOptions.MaxTextSize = 0;
        OpenBytes(Lines(size, 99));
    }
};

} // namespace

TEST_F(OpenDocumentTest, MissingFileCannotBeOpened)
{
    ASSERT_TRUE(InitBuffers());
    FileInfo info;
    EXPECT_EQ(OpenDocument("c:\\nowhere", info), OpenResult::CannotOpen);
    EXPECT_EQ(Document.FileHandle, 0);
}

TEST_F(OpenDocumentTest, FileWithoutStatusIsClosedAgain)
{
    TestPort::AddFile(TestPath, BytesOf("abc")).StatusFails = true;
    EXPECT_EQ(OpenTestFile(), OpenResult::NoStatus);
    EXPECT_EQ(Document.FileHandle, 0);
    EXPECT_EQ(TestPort::OpenFiles(), 0);
}

TEST_F(OpenDocumentTest, FileOfTwoGigabytesIsRefused)
{
    TestPort::AddFile(TestPath, BytesOf("abc")).StatedSize = 0x80000000LL;
    EXPECT_EQ(OpenTestFile(), OpenResult::NoStatus);
}

TEST_F(OpenDocumentTest, TellsSizeTimeAndAttributes)
{
    TestFile& file = TestPort::AddFile(TestPath, BytesOf("abc\n"));
    file.Time = 1234567890;
    file.Attributes = 33;
    ASSERT_TRUE(InitBuffers());
    FileInfo info;
    info.ZipDirOffset = 77;
    info.FileType = 5;
    ASSERT_EQ(OpenDocument(TestPath, info), OpenResult::Opened);
    EXPECT_EQ(info.Size, 4);
    EXPECT_EQ(info.Time, 1234567890);
    EXPECT_EQ(info.Attributes, 33);
    EXPECT_EQ(info.ZipDirOffset, 0);
    EXPECT_EQ(info.FileType, 0);
    EXPECT_EQ(Document.FileTime, 1234567890);
}

TEST_F(OpenDocumentTest, EmptyFileIsATextOfOneEmptyLine)
{
    EXPECT_EQ(OpenBytes({}), OpenResult::Opened);
    EXPECT_TRUE(Document.IsText);
    EXPECT_EQ(Document.BlockCount, 1);
    EXPECT_EQ(Document.LineCount, 1);
    EXPECT_EQ(Document.LongestLine, 0);
    EXPECT_EQ(Document.FileHandle, 0);
    EXPECT_EQ(TextOfLine(1), "");
    EXPECT_EQ(TextOfLine(1), "");
    EXPECT_EQ(TextOfBytes(0, 16), "");
    EXPECT_EQ(HexRowOfLine(1), 0);
}

TEST_F(OpenDocumentTest, EmptyFileAfterALargeOneShowsNothingOfIt)
{
    OpenBytes(Lines(3 * BlockBytes, 99));
    OpenBytes({});
    EXPECT_EQ(TextOfLine(1), "");
    EXPECT_EQ(TextOfBytes(0, 16), "");
    EXPECT_EQ(Document.LineTable[1], 1u);
}

TEST_F(OpenDocumentTest, EmptyFileOverAnyLimitIsText)
{
    DocumentOptions.MaxTextSize = -1;
    OpenBytes({});
    EXPECT_TRUE(Document.IsText);
}

TEST_F(OpenDocumentTest, FileOfOneBlockIsReadOnceAndClosed)
{
    for (const std::size_t size : {1u, 29999u, 30000u}) {
        StartDocuments(MaxCacheSlots);
        OpenBytes(Lines(size, 99));
        EXPECT_EQ(Document.BlockCount, 1) << size;
        EXPECT_EQ(Document.FileHandle, 0) << size;
        EXPECT_EQ(TestPort::OpenFiles(), 0) << size;
        EXPECT_EQ(ReadingsAnnounced(), 1) << size;
        EXPECT_EQ(Document.CurBlockBytes, static_cast<std::int32_t>(size));
        TestPort::RemoveFile(TestPath);
        EXPECT_EQ(TextOfLine(1), std::string(size == 1 ? 1 : 99, 'a')) << size;
        EXPECT_EQ(TextOfBytes(0, 1), "a") << size;
        EXPECT_EQ(ReadingsAnnounced(), 1) << size;
    }
}

TEST_F(OpenDocumentTest, FileOfTwoBlocksStaysOpen)
{
    OpenBytes(Lines(30001, 99));
    EXPECT_EQ(Document.BlockCount, 2);
    EXPECT_NE(Document.FileHandle, 0);
    EXPECT_EQ(Document.CurBlock, 1);
    EXPECT_EQ(Document.CurOffset, 0);
    EXPECT_EQ(Document.CurLine, 1);
}

TEST_F(OpenDocumentTest, TextOfAMultipleOfABlockHasNoExtraBlock)
{
    OpenBytes(Lines(60000, 99));
    EXPECT_TRUE(Document.IsText);
    EXPECT_EQ(Document.BlockCount, 2);
    EXPECT_EQ(Document.LineCount, 600);
    EXPECT_EQ(TextOfLine(600), std::string(99, 'a' + 599 % 26));
}

TEST_F(OpenDocumentTest, NonTextOfAMultipleOfABlockHasAnExtraBlockThatReadsAsEmpty)
{
    OpenBytes(Bytes(60000, 'x'));
    EXPECT_FALSE(Document.IsText);
    EXPECT_EQ(Document.BlockCount, 3);
    LoadBlock(3);
    EXPECT_EQ(Document.CurBlockBytes, 0);
    EXPECT_EQ(TextOfBytes(59990, 16), std::string(10, 'x'));
}

TEST_F(OpenDocumentTest, NonTextOfExactlyOneBlockStaysOpenForItsExtraBlock)
{
    OpenBytes(Bytes(30000, 'x'));
    EXPECT_EQ(Document.BlockCount, 2);
    EXPECT_NE(Document.FileHandle, 0);
    EXPECT_EQ(TextOfLine(400), std::string(75, 'x'));
}

TEST_F(OpenDocumentTest, LineTableIsShrunkToTheBlocksOfAText)
{
    OpenBytes(Lines(70000, 99));
    EXPECT_EQ(TestPort::ObjectBytes(Document.LineTableMemory), 4u * sizeof(std::uint32_t));
    EXPECT_EQ(Document.LineTable[0], 0u);
    EXPECT_EQ(Document.LineTable[1], 300u);
    EXPECT_EQ(Document.LineTable[3], 100u);
}

TEST_F(OpenDocumentTest, LineTableThatCannotBeShrunkServesAsItIs)
{
    TestPort::FailShrinking(true);
    OpenBytes(Lines(70000, 99));
    EXPECT_EQ(TextOfLine(650), std::string(99, 'a' + 649 % 26));
}

TEST_F(OpenDocumentTest, NonTextHasNoLineTable)
{
    OpenBytes(Bytes(40000, 'x'));
    EXPECT_EQ(Document.LineTable, nullptr);
    EXPECT_EQ(Document.LineTableMemory, nullptr);
}

TEST_F(OpenDocumentTest, LineLongerThanMaxLineLenMakesRecords)
{
    OpenBytes(Bytes(513, 'x'));
    EXPECT_FALSE(Document.IsText);
    EXPECT_EQ(Document.LineCount, 7);
    EXPECT_EQ(Document.LongestLine, 75);
    EXPECT_EQ(TextOfLine(7), std::string(513 - 6 * 75, 'x'));
    OpenBytes(Bytes(512, 'x'));
    EXPECT_TRUE(Document.IsText);
    EXPECT_EQ(Document.LongestLine, 512);
}

TEST_F(OpenDocumentTest, LongLineFarDownIsFoundToo)
{
    Bytes content = Lines(4 * BlockBytes, 99);
    std::fill(content.begin() + 100000, content.begin() + 100513 + 1, 'x');
    OpenBytes(content);
    EXPECT_FALSE(Document.IsText);
    EXPECT_EQ(Document.BlockCount, 5);
    EXPECT_EQ(Document.LineCount, 1600);
    EXPECT_EQ(Document.CurBlock, 1);
    EXPECT_EQ(TextOfLine(1), std::string(75, 'a'));
}

TEST_F(OpenDocumentTest, IndexingStopsAtTheFirstLongLine)
{
    Bytes content = Lines(4 * BlockBytes, 99);
    std::fill(content.begin(), content.begin() + 600, 'x');
    OpenBytes(content);
    EXPECT_EQ(ReadingsAnnounced(), 1);
}

TEST_F(OpenDocumentTest, RecordLengthBelowOneCountsAsTheDefault)
{
    for (const std::int32_t length : {0, -1, INT32_MIN}) {
        StartDocuments(MaxCacheSlots);
        DocumentOptions.FixedLineLen = length;
        OpenBytes(Bytes(750, 'x'));
        EXPECT_EQ(Document.LineCount, 10) << length;
        EXPECT_EQ(Document.LongestLine, 75) << length;
        EXPECT_EQ(TextOfLine(10), std::string(75, 'x')) << length;
    }
}

TEST_F(OpenDocumentTest, RecordLengthIsAtMost1024)
{
    for (const std::int32_t length : {1024, 1025, 1000000, INT32_MAX}) {
        StartDocuments(MaxCacheSlots);
        DocumentOptions.FixedLineLen = length;
        OpenBytes(Bytes(2049, 'x'));
        EXPECT_EQ(Document.LineCount, 3) << length;
        EXPECT_EQ(Document.LongestLine, 1024) << length;
        EXPECT_EQ(TextOfLine(2).size(), 1024u) << length;
        EXPECT_EQ(TextOfLine(3), "x") << length;
    }
}

TEST_F(OpenDocumentTest, FileOfTheTextLimitIsTextAndOneByteMoreIsNot)
{
    OpenBytes(Lines(DefaultTextLimit, 99));
    EXPECT_TRUE(Document.IsText);
    EXPECT_EQ(Document.LineCount, 125830);
    OpenBytes(Lines(DefaultTextLimit + 1, 99));
    EXPECT_FALSE(Document.IsText);
    EXPECT_EQ(Document.LineCount, (DefaultTextLimit + 1 + 74) / 75);
    EXPECT_EQ(Document.LongestLine, 75);
    EXPECT_EQ(Document.BlockCount, DefaultTextLimit / BlockBytes + 1);
}

TEST_F(OpenDocumentTest, FileOverTheLimitIsNotReadToTheEnd)
{
    OpenBytes(Lines(DefaultTextLimit + 1, 99));
    EXPECT_EQ(ReadingsAnnounced(), 1);
    EXPECT_EQ(Document.CurBlock, 1);
}

TEST_F(OpenDocumentTest, BlockTwoOfAFileOverTheLimitReadsAsZeroBytesWithAnySlots)
{
    for (std::int32_t slots = 1; slots <= 5; ++slots) {
        StartDocuments(slots);
        OpenBytes(Lines(DefaultTextLimit + 1, 99));
        EXPECT_EQ(TextOfBytes(29990, 30), std::string(9, 'a' + 299 % 26) + "\n" + Zeros(20)) << slots;
        EXPECT_EQ(TextOfBytes(45000, 16), Zeros(16)) << slots;
        EXPECT_EQ(TextOfBytes(59990, 11), Zeros(10) + static_cast<char>('a' + 600 % 26)) << slots;
        EXPECT_EQ(ReadingsAnnounced(), 2) << slots;
    }
}

TEST_F(OpenDocumentTest, BlockTwoOfAFileOverTheLimitReadsAsZeroBytesAfterAnotherDocument)
{
    for (const std::size_t before : {0u, 10u, 40000u, 200000u}) {
        StartDocuments(3);
        OpenBytes(Lines(before, 99));
        OpenBytes(Lines(DefaultTextLimit + 1, 99));
        EXPECT_EQ(TextOfBytes(30000, 100), Zeros(100)) << before;
        EXPECT_EQ(TextOfBytes(59984, 16), Zeros(16)) << before;
    }
}

TEST_F(OpenDocumentTest, BlockTwoShowsNothingOfADocumentWhoseBuffersAreReset)
{
    OpenBytes(Lines(200000, 99));
    TestPort::AddFile(TestPath, Lines(DefaultTextLimit + 1, 99));
    ASSERT_TRUE(InitBuffers());
    FileInfo info;
    ASSERT_EQ(OpenDocument(TestPath, info), OpenResult::Opened);
    EXPECT_EQ(TextOfBytes(30000, 100), Zeros(100));
    EXPECT_EQ(TextOfBytes(59984, 16), Zeros(16));
}

TEST_F(OpenDocumentTest, BlockTwoOfAFileOverTheLimitIsReadProperlyWithoutSlots)
{
    StartDocuments(0);
    OpenBytes(Lines(DefaultTextLimit + 1, 99));
    EXPECT_EQ(TextOfBytes(30000, 3), std::string(3, 'a' + 300 % 26));
    EXPECT_EQ(TextOfBytes(59999, 1), "\n");
}

TEST_F(OpenDocumentTest, RecordsInBlockTwoOfAFileOverTheLimitAreBlank)
{
    OpenBytes(Lines(DefaultTextLimit + 1, 99));
    EXPECT_EQ(TextOfLine(500), std::string(75, ' '));
}

TEST_F(OpenDocumentTest, BlockTwoIsReadOnceItsPlaceInTheCacheIsGone)
{
    OpenOverLimit(1, 4 * BlockBytes);
    EXPECT_EQ(TextOfBytes(60000, 1), std::string(1, 'a' + 600 % 26));
    EXPECT_EQ(TextOfBytes(30000, 1), std::string(1, 'a' + 300 % 26));
}

TEST_F(OpenDocumentTest, ShortBlockTwoOverTheLimitEndsWithTheFile)
{
    OpenOverLimit(5, 40010);
    EXPECT_EQ(Document.BlockCount, 2);
    EXPECT_EQ(TextOfBytes(40000, 16), Zeros(10));
    EXPECT_EQ(TextOfLine(Document.LineCount), std::string(40010 % 75, ' '));
}

TEST_F(OpenDocumentTest, SmallFileOverTheLimitIsReadAndClosed)
{
    OpenOverLimit(5, 100);
    EXPECT_FALSE(Document.IsText);
    EXPECT_EQ(Document.BlockCount, 1);
    EXPECT_EQ(Document.FileHandle, 0);
    EXPECT_EQ(TextOfBytes(0, 3), "aaa");
}

TEST_F(OpenDocumentTest, LargestPossibleFileIsReadAtItsEnd)
{
    // Its bytes are not there; its positions must be computed without overflow all the same.
    TestPort::AddFile(TestPath, BytesOf("x")).StatedSize = INT32_MAX;
    ASSERT_EQ(OpenTestFile(), OpenResult::Opened);
    EXPECT_EQ(Document.BlockCount, INT32_MAX / BlockBytes + 1);
    EXPECT_EQ(Document.LineCount, 28633116);
    EXPECT_EQ(TextOfLine(Document.LineCount), "");
    EXPECT_EQ(TextOfBytes(INT32_MAX, 16), "");
    EXPECT_EQ(TextOfBytes(INT32_MIN, 1), "x");
    EXPECT_EQ(HexRowOfLine(Document.LineCount), 134217726);
}

TEST_F(OpenDocumentTest, ReopenedFileWithTheSameTimeIsUnchanged)
{
    OpenBytes(Lines(70000, 99));
    CloseFileHandle();
    EXPECT_EQ(ReopenFile(TestPath), ReopenResult::Unchanged);
    EXPECT_NE(Document.FileHandle, 0);
    EXPECT_EQ(TextOfLine(650), std::string(99, 'a' + 649 % 26));
}

TEST_F(OpenDocumentTest, OnlyTheTimeTellsAChange)
{
    OpenBytes(Lines(70000, 99));
    CloseFileHandle();
    TestFile& file = TestPort::AddFile(TestPath, Lines(80000, 99));
    EXPECT_EQ(ReopenFile(TestPath), ReopenResult::Unchanged);
    CloseFileHandle();
    file.Content = Lines(70000, 99);
    ++file.Time;
    EXPECT_EQ(ReopenFile(TestPath), ReopenResult::Changed);
    EXPECT_EQ(Document.FileHandle, 0);
    EXPECT_EQ(TestPort::OpenFiles(), 0);
}

TEST_F(OpenDocumentTest, VanishedFileCannotBeReopened)
{
    OpenBytes(Lines(70000, 99));
    CloseFileHandle();
    TestPort::RemoveFile(TestPath);
    EXPECT_EQ(ReopenFile(TestPath), ReopenResult::CannotOpen);
    EXPECT_EQ(Document.FileHandle, 0);
}

TEST_F(OpenDocumentTest, FileWithoutStatusCannotBeReopened)
{
    OpenBytes(Lines(70000, 99));
    CloseFileHandle();
    TestPort::AddFile(TestPath, Lines(70000, 99)).StatusFails = true;
    EXPECT_EQ(ReopenFile(TestPath), ReopenResult::CannotOpen);
    EXPECT_EQ(Document.FileHandle, 0);
    EXPECT_EQ(TestPort::OpenFiles(), 0);
}

TEST_F(OpenDocumentTest, OneDocumentFollowsAnotherWithoutTraces)
{
    for (const std::size_t size : {200000u, 10u, 0u, 60000u, 30000u, 100001u}) {
        OpenBytes(Lines(size, 99));
        EXPECT_EQ(Document.FileSize, static_cast<std::int32_t>(size));
        EXPECT_EQ(Document.LineCount, size == 0 ? 1 : static_cast<std::int32_t>((size + 99) / 100)) << size;
        OpenBytes(Bytes(size, 'x'));
        EXPECT_EQ(Document.IsText, size <= 512) << size;
    }
}

TEST_F(OpenDocumentTest, FileOfTheDiskIsReadAsOneInMemory)
{
    const char* const path = "unit_tests_document.tmp";
    const Bytes content = Lines(70000, 99);
    FILE* file = fopen(path, "wb");
    ASSERT_NE(file, nullptr);
    fwrite(content.data(), 1, content.size(), file);
    fclose(file);
    ASSERT_TRUE(InitBuffers());
    FileInfo info;
    EXPECT_EQ(OpenDocument(path, info), OpenResult::Opened);
    EXPECT_EQ(Document.LineCount, 700);
    EXPECT_EQ(TextOfLine(700), std::string(99, 'a' + 699 % 26));
    FreeBuffers();
    remove(path);
}
