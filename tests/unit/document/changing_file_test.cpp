// Files that another program rewrites while they are shown: nothing is promised about what is seen, but
// it stays within the buffers, and the work stays bounded.
#include "document/document_fixture.h"

#include <string>

namespace {

class ChangingFile : public DocumentFixture {
protected:
    // Opens 4 blocks of text, then gives the file another content.
    static TestFile& OpenAndReplace(Bytes content)
    {
        OpenBytes(Lines(4 * BlockBytes - 50, 99));
        TestFile& file = TestPort::AddFile(TestPath, std::move(content));
        DiscardParkedBlocks();
        return file;
    }

    // Reads everything in every way there is; fails when that takes more reads than there are blocks to
    // load.
    static void ReadAllWays()
    {
        const int before = TestPort::FileReads();
        int loads = 0;
        for (std::int32_t line = 1; line <= Document.LineCount; line += 37, ++loads) {
            EXPECT_LE(TextOfLine(line).size(), static_cast<std::size_t>(LineBufferBytes));
        }
        for (std::int32_t line = Document.LineCount; line >= 1; line -= 41, ++loads) {
            TextOfLine(line);
            EXPECT_GE(HexRowOfLine(line), 0);
        }
        for (std::int32_t offset = 0; offset <= Document.FileSize; offset += 4999, ++loads) {
            EXPECT_LE(TextOfBytes(offset, 16).size(), 16u);
        }
        EXPECT_LE(TestPort::FileReads() - before, loads * (Document.BlockCount + 1));
    }
};

} // namespace

TEST_F(ChangingFile, ShrunkFileReadsAsMuchAsIsLeft)
{
    OpenAndReplace(Lines(35000, 99));
    ReadAllWays();
    EXPECT_EQ(TextOfBytes(34996, 16).size(), 4u);
    EXPECT_EQ(TextOfBytes(90000, 16), "");
    EXPECT_EQ(TextOfLine(1), std::string(99, 'a'));
}

TEST_F(ChangingFile, FileShrunkToNothingReadsAsEmpty)
{
    OpenAndReplace({});
    ReadAllWays();
    EXPECT_EQ(TextOfBytes(90000, 16), "");
    EXPECT_EQ(TextOfLine(1000), "");
}

TEST_F(ChangingFile, VanishedFileReadsAsEmpty)
{
    OpenAndReplace({});
    TestPort::RemoveFile(TestPath);
    ReadAllWays();
}

TEST_F(ChangingFile, GrownFileShowsItsFirstBlocks)
{
    OpenAndReplace(Lines(1000000, 99));
    ReadAllWays();
    EXPECT_EQ(TextOfLine(300), std::string(99, 'a' + 299 % 26));
}

TEST_F(ChangingFile, TextRewrittenWithoutLineEndsDoesNotFillMoreThanTheLineBuffer)
{
    OpenAndReplace(Bytes(4 * BlockBytes, 'x'));
    ReadAllWays();
    EXPECT_EQ(TextOfLine(301), std::string(LineBufferBytes, 'x'));
}

TEST_F(ChangingFile, TextRewrittenAsLineEndsOnly)
{
    OpenAndReplace(Bytes(4 * BlockBytes, '\n'));
    ReadAllWays();
    OpenAndReplace(Bytes(4 * BlockBytes, '\r'));
    ReadAllWays();
}

TEST_F(ChangingFile, LinesThatRunOnIntoTheNextBlockAreNotSampledThere)
{
    OpenBytes(Lines(4 * BlockBytes, 99));
    LoadBlock(1);
    TestPort::AddFile(TestPath, Lines(4 * BlockBytes, 500)); // a fifth of the lines
    DiscardParkedBlocks();
    TextOfLine(600); // its block holds 60 lines now, and 299 are skipped
    for (std::int32_t block = 3; block <= 4; ++block) {
        if (Document.CurBlock != block) {
            LoadBlock(block);
        }
        for (std::int32_t i = 0; i < SamplesPerBlock; ++i) {
            ASSERT_EQ(LineSamples()[i], 0u) << block << " " << i;
        }
    }
}

TEST_F(ChangingFile, RecordsOfAShrunkFile)
{
    OpenBytes(Bytes(4 * BlockBytes, 'x'));
    TestPort::AddFile(TestPath, Bytes(100, 'y'));
    DiscardParkedBlocks();
    ReadAllWays();
}

TEST_F(ChangingFile, FileThatShrinksBetweenStatusAndReading)
{
    TestPort::AddFile(TestPath, Lines(20000, 99)).StatedSize = 100000;
    EXPECT_EQ(OpenTestFile(), OpenResult::Opened);
    EXPECT_EQ(Document.LineCount, 200);
    EXPECT_LE(TestPort::FileReads(), 8);
    ReadAllWays();
    EXPECT_EQ(TextOfBytes(99990, 16), "");
}

TEST_F(ChangingFile, PositionedReadTakesOnlyWhatHasArrived)
{
    TestPort::AddFile(TestPath, Lines(20000, 99)).StatedSize = 100000;
    ASSERT_EQ(OpenTestFile(), OpenResult::Opened);
    ASSERT_EQ(Document.FileHandle, 0);
    for (const std::int32_t offset : {19997, 25000, 29999, 31000, 99996}) {
        char read[6] = "-----";
        ReadAt(offset, read, 4);
        EXPECT_STREQ(read, "-----") << offset;
    }
    char read[6] = "-----";
    ReadAt(19996, read, 4);
    EXPECT_STREQ(read, "rrr\n-");
}

TEST_F(ChangingFile, FileThatVanishesBetweenStatusAndReading)
{
    TestPort::AddFile(TestPath, Lines(100000, 99));
    TestPort::BeforeEachRead([] { TestPort::RemoveFile(TestPath); });
    EXPECT_EQ(OpenTestFile(), OpenResult::Opened);
    EXPECT_EQ(Document.LineCount, 1);
    EXPECT_EQ(Document.BlockCount, 1);
    EXPECT_EQ(TextOfLine(1), "");
    ReadAllWays();
}

TEST_F(ChangingFile, FileThatGrowsBetweenStatusAndReading)
{
    for (const std::int64_t stated : {100, 29999, 30000, 30001, 60000}) {
        StartDocuments(2);
        TestPort::AddFile(TestPath, Lines(200000, 99)).StatedSize = stated;
        EXPECT_EQ(OpenTestFile(), OpenResult::Opened);
        EXPECT_EQ(Document.BlockCount, (stated + 29999) / 30000) << stated;
        EXPECT_LE(TestPort::FileReads(), 12) << stated;
        ReadAllWays();
    }
}

TEST_F(ChangingFile, FileThatShrinksAtEachRead)
{
    for (int step : {1, 10000, 31000, 50000}) {
        StartDocuments(1);
        TestFile& file = TestPort::AddFile(TestPath, Lines(200000, 99));
        TestPort::BeforeEachRead([&file, step] {
            file.Content.resize(file.Content.size() -
                                std::min<std::size_t>(file.Content.size(), static_cast<std::size_t>(step)));
        });
        EXPECT_EQ(OpenTestFile(), OpenResult::Opened);
        EXPECT_GE(Document.LineCount, 1);
        EXPECT_LE(TestPort::FileReads(), 30);
        ReadAllWays();
    }
}

TEST_F(ChangingFile, EmptyFileThatGrows)
{
    TestPort::AddFile(TestPath, Lines(50000, 99)).StatedSize = 0;
    EXPECT_EQ(OpenTestFile(), OpenResult::Opened);
    EXPECT_EQ(Document.LineCount, 1);
    EXPECT_EQ(TextOfLine(1), "");
}

TEST_F(ChangingFile, FileOverTheLimitThatVanishes)
{
    DocumentOptions.MaxTextSize = 0;
    TestPort::AddFile(TestPath, Lines(100000, 99));
    TestPort::BeforeEachRead([] { TestPort::RemoveFile(TestPath); });
    EXPECT_EQ(OpenTestFile(), OpenResult::Opened);
    EXPECT_EQ(Document.CurBlockBytes, 0);
    ReadAllWays();
}

TEST_F(ChangingFile, ReleasedFileReadsAsEmptyWithBoundedWork)
{
    OpenBytes(Lines(4 * BlockBytes, 99));
    CloseFileHandle();
    DiscardParkedBlocks();
    ReadAllWays();
    EXPECT_EQ(TextOfLine(900), "");
    EXPECT_EQ(HexRowOfLine(900), 0);
    EXPECT_EQ(TextOfBytes(45000, 16), "");
}

TEST_F(ChangingFile, WhatCouldNotBeReadIsReadAgainAfterReopening)
{
    for (std::int32_t slots = 0; slots <= 5; ++slots) {
        StartDocuments(slots);
        OpenBytes(Lines(4 * BlockBytes, 99));
        CloseFileHandle();
        DiscardParkedBlocks();
        ReadAllWays();
        EXPECT_EQ(ReopenFile(TestPath), ReopenResult::Unchanged);
        for (const std::int32_t line : {900, 1, 301, 600, 1200}) {
            EXPECT_EQ(TextOfLine(line), std::string(99, static_cast<char>('a' + (line - 1) % 26))) << slots;
        }
        ReadAllWays();
    }
}
