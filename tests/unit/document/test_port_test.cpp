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

TEST_F(TestPortTest, TurnsTextIntoCapitalsAsTheWesternCodePageHasThem)
{
    const std::string small = "azAZ09[`{\xE0\xFE\xF7\xD7\xFF\x9A\x9C\x9E\xDF\x80\xB5";
    const std::string capital = "AZAZ09[`{\xC0\xDE\xF7\xD7\x9F\x8A\x8C\x8E\xDF\x80\xB5";
    std::string text = small;
    ToUpperCase(text.data(), static_cast<std::int32_t>(text.size()));
    EXPECT_EQ(text, capital);
    EXPECT_TRUE(HasOneByteCharacters());
}

TEST_F(TestPortTest, TurnsAsManyBytesIntoCapitalsAsAskedFor)
{
    std::string text("ab\0cdef", 7);
    ToUpperCase(text.data(), 5);
    EXPECT_EQ(text, std::string("AB\0CDef", 7));
    ToUpperCase(text.data() + 5, 0);
    EXPECT_EQ(text, std::string("AB\0CDef", 7));
}

TEST_F(TestPortTest, EveryCapitalIsItsOwn)
{
    char all[256];
    for (int i = 0; i < 256; ++i) {
        all[i] = static_cast<char>(i);
    }
    ToUpperCase(all, 256);
    const std::string once(all, 256);
    ToUpperCase(all, 256);
    EXPECT_EQ(std::string(all, 256), once);
}

TEST_F(TestPortTest, CharacterOfTwoBytesHasNoCapital)
{
    TestPort::SetTwoByteCharacters(true);
    EXPECT_FALSE(HasOneByteCharacters());
    std::string text = "a\x81"
                       "ab\xFF\xE0"
                       "c\x80"
                       "d\x81";
    ToUpperCase(text.data(), static_cast<std::int32_t>(text.size())); // the last one is cut off
    EXPECT_EQ(text, "A\x81"
                    "aB\xFF\xE0"
                    "C\x80"
                    "D\x81");
    TestPort::SetTwoByteCharacters(false);
    EXPECT_TRUE(HasOneByteCharacters());
    ToUpperCase(text.data(), 4);
    EXPECT_EQ(text.substr(0, 4), "A\x81"
                                 "AB");
}

TEST_F(TestPortTest, CharactersOfOneByteAreThoseAtFirst)
{
    TestPort::SetTwoByteCharacters(true);
    TestPort::Reset();
    EXPECT_TRUE(HasOneByteCharacters());
}
