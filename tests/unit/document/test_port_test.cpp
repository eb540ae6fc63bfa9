#include "support/test_port.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

namespace {

class TestPortTest : public testing::Test {
protected:
    void SetUp() override { TestPort::Reset(); }

    void TearDown() override
    {
        EXPECT_EQ(TestPort::LiveObjects(), 0);
        EXPECT_EQ(TestPort::OpenFiles(), 0);
        TestPort::Reset();
    }
};

} // namespace

TEST_F(TestPortTest, ReadsAFileOfTheDisk)
{
    const char* const path = "unit_tests_port.tmp";
    FILE* file = fopen(path, "wb");
    ASSERT_NE(file, nullptr);
    fwrite("ab\r\ncd\x1A"
           "e\0f",
           1, 10, file);
    fclose(file);

    FileStatus status{};
    ASSERT_TRUE(GetFileStatus(path, status));
    EXPECT_EQ(status.Size, 10);
    EXPECT_GT(status.Time, 1000000000);
    const int handle = OpenForReading(path);
    ASSERT_NE(handle, 0);
    char read[16] = {};
    EXPECT_EQ(ReadFileAt(handle, 2, read, 16), 8);
    EXPECT_EQ(memcmp(read,
                     "\r\ncd\x1A"
                     "e\0f",
                     8),
              0);
    EXPECT_EQ(ReadFileAt(handle, 0, read, 2), 2);
    EXPECT_EQ(ReadFileAt(handle, 10, read, 16), 0);
    CloseOpenFile(handle);
    remove(path);
    EXPECT_EQ(OpenForReading(path), 0);
    EXPECT_FALSE(GetFileStatus(path, status));
}

TEST_F(TestPortTest, SeesChangesOfAFileInMemoryThroughAnOpenHandle)
{
    TestFile& file = TestPort::AddFile("f", Bytes{1, 2, 3});
    const int handle = OpenForReading("f");
    std::uint8_t read[4] = {};
    EXPECT_EQ(ReadFileAt(handle, 1, read, 4), 2);
    file.Content.resize(1);
    EXPECT_EQ(ReadFileAt(handle, 1, read, 4), 0);
    TestPort::RemoveFile("f");
    EXPECT_EQ(ReadFileAt(handle, 0, read, 4), 0);
    EXPECT_EQ(TestPort::FileReads(), 3);
    CloseOpenFile(handle);
    EXPECT_EQ(OpenForReading("f"), 0);
}

TEST_F(TestPortTest, FailsTheAllocationAskedForAndNoOther)
{
    TestPort::FailAllocation(2);
    const MemoryHandle first = AllocateMemory(1);
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(AllocateMemory(1), nullptr);
    const MemoryHandle third = AllocateMemory(1);
    EXPECT_NE(third, nullptr);
    FreeMemory(first);
    FreeMemory(third);
}

TEST_F(TestPortTest, DiscardsOnlyWhatMayBeDiscarded)
{
    const MemoryHandle memory = AllocateMemory(8);
    EXPECT_FALSE(TestPort::Discard(memory));
    SetMemoryDiscardable(memory, true);
    EXPECT_NE(LockMemory(memory), nullptr);
    EXPECT_FALSE(TestPort::Discard(memory));
    UnlockMemory(memory);
    EXPECT_TRUE(TestPort::Discard(memory));
    EXPECT_EQ(LockMemory(memory), nullptr);
    FreeMemory(memory);
}

TEST_F(TestPortTest, NoticesMisuse)
{
    const MemoryHandle memory = AllocateMemory(8);
    UnlockMemory(memory);
    EXPECT_EQ(TestPort::Misuses(), 1);
    FreeMemory(memory);
    EXPECT_EQ(TestPort::Misuses(), 2);
    CloseOpenFile(12345);
    EXPECT_EQ(TestPort::Misuses(), 3);
}
