#include "document/document_fixture.h"

#include <cstring>
#include <string>

namespace {

class BlockCache : public DocumentFixture {
protected:
    // A document of blocks blocks, the last one short, open at block 1.
    static void OpenBlocks(int blocks, std::int32_t slots)
    {
        StartDocuments(slots);
        OpenBytes(Lines(static_cast<std::size_t>(blocks) * BlockBytes - 100, 99));
    }

    // Loads the blocks one after the other; returns how many of them were read from the file.
    static int ReadingsOf(std::initializer_list<std::int32_t> blocks)
    {
        const int before = ReadingsAnnounced();
        for (const std::int32_t block : blocks) {
            LoadBlock(block);
            EXPECT_EQ(Document.CurBlock, block);
            EXPECT_EQ(Document.CurOffset, 0);
            // The first line that starts in a block; the letter is the line's number within 26.
            EXPECT_EQ(Document.WorkData[0], 'a' + (block - 1) * 300 % 26);
        }
        return ReadingsAnnounced() - before;
    }

    static std::int32_t LimitFor(std::int32_t megabytes)
    {
        StartDocuments(0);
        DocumentOptions.MaxTextSize = megabytes;
        EXPECT_TRUE(InitBuffers());
        return Document.MaxTextBytes;
    }

    static std::int32_t SlotsFor(std::int32_t setting)
    {
        StartDocuments(setting);
        EXPECT_TRUE(InitBuffers());
        return Document.BufferCount;
    }
};

} // namespace

TEST_F(BlockCache, WorkingBufferIsOneZeroFilledObjectOf30800Bytes)
{
    ASSERT_TRUE(InitBuffers());
    EXPECT_EQ(TestPort::ObjectBytes(Document.WorkMemory), 30800u);
    for (std::int32_t i = 0; i < BlockObjectBytes; ++i) {
        ASSERT_EQ(Document.WorkData[i], 0);
    }
    EXPECT_EQ(TestPort::LiveObjects(), 2);
}

TEST_F(BlockCache, LineTableHoldsEveryBlockOfTheLargestText)
{
    ASSERT_TRUE(InitBuffers());
    EXPECT_GE(TestPort::ObjectBytes(Document.LineTableMemory), 4002u * sizeof(std::uint32_t));
    EXPECT_EQ(Document.LineTable[0], 0u);
}

TEST_F(BlockCache, NoMemoryForTheWorkingBufferLeavesNothingBehind)
{
    TestPort::FailAllocation(1);
    EXPECT_FALSE(InitBuffers());
    EXPECT_EQ(TestPort::LiveObjects(), 0);
    EXPECT_TRUE(InitBuffers());
}

TEST_F(BlockCache, NoMemoryForTheLineTableLeavesNothingBehind)
{
    TestPort::FailAllocation(2);
    EXPECT_FALSE(InitBuffers());
    EXPECT_EQ(TestPort::LiveObjects(), 0);
    EXPECT_TRUE(InitBuffers());
}

TEST_F(BlockCache, NoMemoryForTheNextDocumentsLineTableLeavesNothingBehind)
{
    OpenBlocks(3, 5);
    TestPort::FailAllocation(1);
    EXPECT_FALSE(InitBuffers());
    EXPECT_EQ(TestPort::LiveObjects(), 0);
    EXPECT_EQ(TestPort::OpenFiles(), 0);
    EXPECT_EQ(Document.LineCount, 0);
}

TEST_F(BlockCache, BuffersSettingIsBoundTo0To5)
{
    EXPECT_EQ(SlotsFor(9), 5);
    EXPECT_EQ(SlotsFor(-1), 0);
    EXPECT_EQ(SlotsFor(0), 0);
    EXPECT_EQ(SlotsFor(5), 5);
    EXPECT_EQ(SlotsFor(INT32_MAX), 5);
    EXPECT_EQ(SlotsFor(INT32_MIN), 0);
}

TEST_F(BlockCache, BuffersSettingIsAskedForOnce)
{
    ASSERT_TRUE(InitBuffers());
    FreeBuffers();
    ASSERT_TRUE(InitBuffers());
    ASSERT_TRUE(InitBuffers());
    EXPECT_EQ(BufferCountQueries(), 1);
}

TEST_F(BlockCache, TextLimitIsTheSettingInMegabytesButNeverMoreThan120000000)
{
    EXPECT_EQ(LimitFor(12), 12582912);
    EXPECT_EQ(LimitFor(1), 1048576);
    EXPECT_EQ(LimitFor(114), 119537664);
    EXPECT_EQ(LimitFor(115), 120000000);
    EXPECT_EQ(LimitFor(4096), 120000000);
    EXPECT_EQ(LimitFor(INT32_MAX), 120000000);
}

TEST_F(BlockCache, AbsurdTextLimitBelowZeroIsZero)
{
    EXPECT_EQ(LimitFor(0), 0);
    EXPECT_EQ(LimitFor(-1), 0);
    EXPECT_EQ(LimitFor(INT32_MIN), 0);
}

TEST_F(BlockCache, InitBuffersResetsWhatADocumentLeft)
{
    OpenBlocks(4, 3);
    TextOfLine(500);
    const MemoryHandle work = Document.WorkMemory;
    ASSERT_TRUE(InitBuffers());
    EXPECT_EQ(Document.WorkMemory, work);
    EXPECT_EQ(Document.FileHandle, 0);
    EXPECT_EQ(Document.FileSize, 0);
    EXPECT_EQ(Document.LineCount, 0);
    for (std::int32_t slot = 1; slot <= 3; ++slot) {
        EXPECT_EQ(Document.Slots[slot].BlockNumber, 0);
        EXPECT_EQ(Document.Slots[slot].Memory, nullptr);
    }
    for (std::int32_t i = 0; i < SamplesPerBlock; ++i) {
        ASSERT_EQ(LineSamples()[i], 0u);
    }
    EXPECT_EQ(TestPort::LiveObjects(), 2);
}

TEST_F(BlockCache, FreeBuffersFreesAllAndMayBeRepeated)
{
    OpenBlocks(4, 3);
    FreeBuffers();
    FreeBuffers();
    EXPECT_EQ(TestPort::LiveObjects(), 0);
    EXPECT_EQ(TestPort::OpenFiles(), 0);
    EXPECT_EQ(Document.FileSize, 0);
    EXPECT_EQ(Document.LineCount, 0);
}

TEST_F(BlockCache, AtMostSixBlocksAreInMemory)
{
    OpenBlocks(9, 5);
    for (std::int32_t block = 1; block <= 9; ++block) {
        LoadBlock(block);
    }
    EXPECT_EQ(TestPort::LiveObjects(), 6 + 1); // and the line table
}

TEST_F(BlockCache, OpeningLeavesTheLastBlocksCached)
{
    StartDocuments(5);
    OpenBytes(Lines(6 * BlockBytes, 99));
    const int before = ReadingsAnnounced();
    EXPECT_EQ(before, 6);
    for (const std::int32_t block : {2, 3, 4, 5, 6, 3, 1}) {
        LoadBlock(block);
    }
    EXPECT_EQ(ReadingsAnnounced(), before);
}

TEST_F(BlockCache, NothingIsReadTwiceWhileItFits)
{
    OpenBlocks(6, 5);
    EXPECT_EQ(ReadingsOf({2, 3, 4, 5, 6, 1, 6, 3, 5, 2, 4, 1}), 0);
}

TEST_F(BlockCache, WithoutSlotsEveryBlockChangeReadsTheFile)
{
    OpenBlocks(3, 0);
    EXPECT_EQ(ReadingsOf({2, 1, 2, 3, 3}), 5);
    EXPECT_EQ(TestPort::LiveObjects(), 2);
}

TEST_F(BlockCache, OneSlotSwapsTwoBlocks)
{
    OpenBlocks(3, 1);
    EXPECT_EQ(ReadingsOf({2, 1, 2, 1}), 1);
    EXPECT_EQ(ReadingsOf({3, 1, 3}), 1);
}

TEST_F(BlockCache, SlotsTakeTurnsWhenAllAreFull)
{
    OpenBlocks(9, 2);
    ReadingsOf({2, 3, 4});
    Document.NextVictim = 2;
    ReadingsOf({5});
    EXPECT_EQ(Document.NextVictim, 1);
    EXPECT_EQ(Document.Slots[1].BlockNumber, 4);
    ReadingsOf({6});
    EXPECT_EQ(Document.NextVictim, 2);
    EXPECT_EQ(Document.Slots[1].BlockNumber, 4);
    EXPECT_EQ(Document.Slots[2].BlockNumber, 5);
    // Not the least recently used: a hit does not move the turn.
    ReadingsOf({4});
    EXPECT_EQ(Document.Slots[1].BlockNumber, 6);
    EXPECT_EQ(Document.NextVictim, 2);
    ReadingsOf({7});
    EXPECT_EQ(Document.NextVictim, 1);
    EXPECT_EQ(Document.Slots[1].BlockNumber, 4);
}

TEST_F(BlockCache, EmptySlotIsPreferredToTheNextVictim)
{
    OpenBlocks(6, 3);
    LoadBlock(2);
    DiscardParkedBlocks();
    const std::int32_t victim = Document.NextVictim;
    // Discarded slots are noticed one by one, as they are chosen.
    for (CacheSlot& slot : Document.Slots) {
        if (slot.Memory != nullptr) {
            FreeMemory(slot.Memory);
            slot = CacheSlot{};
        }
    }
    LoadBlock(3);
    EXPECT_EQ(Document.NextVictim, victim);
    EXPECT_EQ(Document.Slots[1].BlockNumber, 2);
    LoadBlock(4);
    EXPECT_EQ(Document.Slots[2].BlockNumber, 3);
    LoadBlock(5);
    EXPECT_EQ(Document.Slots[3].BlockNumber, 4);
    EXPECT_EQ(Document.NextVictim, victim);
}

TEST_F(BlockCache, ParkedBlocksMayBeDiscardedAndTheWorkingBufferMayNot)
{
    OpenBlocks(4, 5);
    LoadBlock(2);
    LoadBlock(3);
    EXPECT_FALSE(TestPort::IsDiscardable(Document.WorkMemory));
    for (std::int32_t slot = 1; slot <= 5; ++slot) {
        if (Document.Slots[slot].Memory != nullptr) {
            EXPECT_TRUE(TestPort::IsDiscardable(Document.Slots[slot].Memory));
        }
    }
}

TEST_F(BlockCache, DiscardedBlockIsReadAgain)
{
    OpenBlocks(3, 5);
    ReadingsOf({2, 3, 1});
    EXPECT_EQ(DiscardParkedBlocks(), 2);
    EXPECT_EQ(ReadingsOf({2, 3}), 2);
    EXPECT_EQ(ReadingsOf({1, 2, 3}), 0);
}

TEST_F(BlockCache, WithoutMemoryForASlotTheBlockIsReadIntoTheWorkingBuffer)
{
    StartDocuments(5);
    TestPort::AddFile(TestPath, Lines(3 * BlockBytes - 100, 99));
    ASSERT_TRUE(InitBuffers());
    FileInfo info;
    TestPort::FailAllAllocations(true);
    ASSERT_EQ(OpenDocument(TestPath, info), OpenResult::Opened);
    EXPECT_EQ(Document.LineCount, 899);
    EXPECT_EQ(ReadingsOf({2, 1, 2}), 3);
    EXPECT_EQ(Document.Slots[1].BlockNumber, 0);
    EXPECT_EQ(TestPort::LiveObjects(), 2);
    TestPort::FailAllAllocations(false);
    EXPECT_EQ(ReadingsOf({3, 2, 3}), 1);
}

TEST_F(BlockCache, SlotKeepsItsObjectWhenThereIsNoMemory)
{
    OpenBlocks(5, 1);
    ReadingsOf({2});
    TestPort::FailAllAllocations(true);
    EXPECT_EQ(ReadingsOf({1, 2, 1}), 0);
    EXPECT_EQ(ReadingsOf({4, 1}), 1);
}

TEST_F(BlockCache, ParkedBlockKeepsItsSamples)
{
    OpenBlocks(3, 5);
    LoadBlock(2);
    LineSamples()[7] = 1234;
    LoadBlock(1);
    EXPECT_EQ(LineSamples()[7], 0u);
    LoadBlock(2);
    EXPECT_EQ(LineSamples()[7], 1234u);
}

TEST_F(BlockCache, BlockReadAfreshHasNoSamples)
{
    OpenBlocks(3, 0);
    LoadBlock(2);
    LineSamples()[7] = 1234;
    LineSamples()[199] = 5678;
    LoadBlock(2);
    EXPECT_EQ(LineSamples()[7], 0u);
    EXPECT_EQ(LineSamples()[199], 0u);
}

TEST_F(BlockCache, LastBlockHoldsOnlyItsBytes)
{
    OpenBlocks(3, 5);
    LoadBlock(3);
    EXPECT_EQ(Document.CurBlockBytes, BlockBytes - 100);
    LoadBlock(2);
    EXPECT_EQ(Document.CurBlockBytes, BlockBytes);
    LoadBlock(3);
    EXPECT_EQ(Document.CurBlockBytes, BlockBytes - 100);
}

TEST_F(BlockCache, ClosedFileGivesAnEmptyBlock)
{
    OpenBlocks(3, 0);
    CloseFileHandle();
    CloseFileHandle();
    EXPECT_EQ(TestPort::OpenFiles(), 0);
    LoadBlock(2);
    EXPECT_EQ(Document.CurBlockBytes, 0);
    EXPECT_EQ(TextOfBytes(BlockBytes, 10), "");
}

TEST_F(BlockCache, ReadAtTakesTheBytesFromTheFile)
{
    OpenBlocks(3, 5);
    char read[6] = "-----";
    ReadAt(BlockBytes - 2, read, 4);
    EXPECT_STREQ(read, std::string(reinterpret_cast<const char*>(Lines(2 * BlockBytes, 99).data()) + BlockBytes - 2, 4)
                           .append("-")
                           .c_str());
    EXPECT_EQ(Document.CurBlock, 1);
}

TEST_F(BlockCache, ReadAtOfADocumentOfOneBlockIsServedFromMemory)
{
    OpenBytes(BytesOf("0123456789"));
    ASSERT_EQ(Document.FileHandle, 0);
    const int reads = TestPort::FileReads();
    TestPort::RemoveFile(TestPath);
    char read[6] = "-----";
    ReadAt(6, read, 4);
    EXPECT_STREQ(read, "6789-");
    EXPECT_EQ(TestPort::FileReads(), reads);
}

TEST_F(BlockCache, ReadAtPastTheEndLeavesTheDestinationUntouched)
{
    OpenBytes(BytesOf("0123456789"));
    char read[6] = "-----";
    ReadAt(7, read, 4);
    ReadAt(INT32_MAX, read, INT32_MAX);
    ReadAt(-1, read, 4);
    ReadAt(0, read, -4);
    EXPECT_STREQ(read, "-----");
    OpenBlocks(3, 5);
    ReadAt(Document.FileSize - 3, read, 4);
    EXPECT_STREQ(read, "-----");
    ReadAt(Document.FileSize - 4, read, 4);
    EXPECT_STRNE(read, "-----");
}

TEST_F(BlockCache, ReadAtOfAReleasedFileTakesNothingFromAnotherBlock)
{
    OpenBlocks(3, 5);
    char read[6] = "-----";
    LoadBlock(2);
    CloseFileHandle();
    ReadAt(0, read, 4);
    EXPECT_STREQ(read, "-----");
    LoadBlock(1);
    ReadAt(0, read, 4);
    EXPECT_STREQ(read, "aaaa-");
    ReadAt(BlockBytes - 2, read, 4);
    EXPECT_STREQ(read, "aaaa-");
}

TEST_F(BlockCache, ReadAtWithoutADocumentDoesNothing)
{
    char read[6] = "-----";
    ReadAt(0, read, 4);
    EXPECT_STREQ(read, "-----");
}
