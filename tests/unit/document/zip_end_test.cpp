#include "document/zip_end.h"

#include "document/file_images.h"

#include <gtest/gtest.h>

namespace {

// A tail of size bytes with a record at each of the positions.
FileImage Tail(std::size_t size, const std::vector<std::size_t>& positions)
{
    FileImage tail(size);
    for (const std::size_t position : positions) {
        tail.Text(position, "PK\x05\x06");
    }
    EXPECT_EQ(tail.Content.size(), size);
    return tail;
}

} // namespace

TEST(ZipEnd, RecordMayStandAnywhereInTheTail)
{
    for (std::size_t position = 0; position <= 78; ++position) {
        EXPECT_EQ(FindZipEnd(Tail(100, {position}).Content), static_cast<std::int32_t>(position));
    }
}

TEST(ZipEnd, RecordNeedsRoomForAllOfItself)
{
    for (std::size_t position = 79; position <= 96; ++position) {
        EXPECT_EQ(FindZipEnd(Tail(100, {position}).Content), -1) << position;
    }
}

TEST(ZipEnd, TailMayBeJustTheRecord)
{
    EXPECT_EQ(FindZipEnd(Tail(22, {0}).Content), 0);
    EXPECT_EQ(FindZipEnd(Tail(21, {0}).Content), -1);
    EXPECT_EQ(FindZipEnd(Tail(4, {0}).Content), -1);
    EXPECT_EQ(FindZipEnd({}), -1);
}

TEST(ZipEnd, EachByteOfTheSignatureCounts)
{
    for (std::size_t byte = 0; byte < 4; ++byte) {
        FileImage tail = Tail(22, {0});
        tail.Content[byte] ^= 0x20;
        EXPECT_EQ(FindZipEnd(tail.Content), -1) << byte;
    }
}

TEST(ZipEnd, LastRecordIsTheOne)
{
    EXPECT_EQ(FindZipEnd(Tail(100, {0, 30, 60}).Content), 60);
}

TEST(ZipEnd, TooShortARecordHidesNoneBeforeIt)
{
    EXPECT_EQ(FindZipEnd(Tail(100, {30, 79}).Content), 30);
}

TEST(ZipEnd, RecordsMayOverlap)
{
    EXPECT_EQ(FindZipEnd(Tail(100, {30, 40}).Content), 40);
}

TEST(ZipEnd, NumberOfADiskOtherThan0MakesItNoArchive)
{
    for (std::size_t byte = 4; byte < 8; ++byte) {
        EXPECT_EQ(FindZipEnd(Tail(50, {10}).U8(10 + byte, 1).Content), -1) << byte;
        EXPECT_EQ(FindZipEnd(Tail(50, {10}).U8(10 + byte, 0x80).Content), -1) << byte;
    }
}

TEST(ZipEnd, OtherFieldsDoNotMatter)
{
    FileImage tail(Bytes(50, 0xFF));
    EXPECT_EQ(FindZipEnd(tail.Text(10, "PK\x05\x06").U32(14, 0).Content), 10);
}

TEST(ZipEnd, ArchiveOfSeveralDisksIsNotReplacedByAnEarlierRecord)
{
    EXPECT_EQ(FindZipEnd(Tail(100, {0, 40}).U16(44, 1).Content), -1);
    EXPECT_EQ(FindZipEnd(Tail(100, {0, 40}).U16(4, 1).Content), 40);
}

TEST(ZipEnd, RecordTellsMembersAndTheDirectorysPlace)
{
    FileImage image(22);
    for (std::uint32_t i = 0; i < 22; ++i) {
        image.U8(i, 0xC0 + i);
    }
    const ZipEndRecord record = ReadZipEndRecord(image.Content);
    EXPECT_EQ(record.EntryCount, 0xCBCA);
    EXPECT_EQ(record.DirectoryBytes, 0xCFCECDCCu);
    EXPECT_EQ(record.DirectoryPosition, 0xD3D2D1D0u);
}

TEST(ZipEnd, MissingBytesOfARecordReadAs0)
{
    const ZipEndRecord record = ReadZipEndRecord(Bytes(14, 0x11));
    EXPECT_EQ(record.EntryCount, 0x1111);
    EXPECT_EQ(record.DirectoryBytes, 0x1111u);
    EXPECT_EQ(record.DirectoryPosition, 0u);
}
