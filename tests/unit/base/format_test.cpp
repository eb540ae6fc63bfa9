#include "base/format.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

std::string Grouped(std::int32_t number)
{
    char text[GroupedSize];
    FormatGrouped(number, text);
    return text;
}

std::string Shortened(const char* path, std::size_t maxLength, char separator)
{
    char text[512];
    strcpy(text, path);
    ShortenPath(text, maxLength, separator);
    return text;
}

} // namespace

TEST(FormatGrouped, LeavesUpToThreeCharactersAlone)
{
    EXPECT_EQ(Grouped(0), "0");
    EXPECT_EQ(Grouped(999), "999");
    EXPECT_EQ(Grouped(-12), "-12");
}

TEST(FormatGrouped, PutsOneCommaBeforeTheLastThreeDigits)
{
    EXPECT_EQ(Grouped(1000), "1,000");
    EXPECT_EQ(Grouped(999999), "999,999");
}

TEST(FormatGrouped, PutsASecondCommaFromSevenCharactersOn)
{
    EXPECT_EQ(Grouped(1000000), "1,000,000");
    EXPECT_EQ(Grouped(123456789), "123,456,789");
}

TEST(FormatGrouped, NeverPutsAThirdComma)
{
    EXPECT_EQ(Grouped(INT32_MAX), "2147,483,647");
}

TEST(FormatGrouped, CountsTheSignAsACharacter)
{
    EXPECT_EQ(Grouped(-123), "-,123");
    EXPECT_EQ(Grouped(-1234), "-1,234");
    EXPECT_EQ(Grouped(-123456), "-,123,456");
    EXPECT_EQ(Grouped(INT32_MIN), "-2147,483,648");
}

TEST(ShortenPath, LeavesAPathOfTheLimitAlone)
{
    EXPECT_EQ(Shortened("c:\\aaaaaaaaaa\\bbbbbbbbbbbb.txt", 30, '\\'), "c:\\aaaaaaaaaa\\bbbbbbbbbbbb.txt");
    EXPECT_EQ(Shortened("", 30, '\\'), "");
}

TEST(ShortenPath, KeepsTheHeadAndATailFromADirectoryBoundary)
{
    // 45 characters: 45 - 30 + 3 - 3 = 15 are skipped behind the head.
    EXPECT_EQ(Shortened("c:\\winnt\\system\\longdirectory\\drivers\\etc.txt", 30, '\\'), "c:\\...\\drivers\\etc.txt");
}

TEST(ShortenPath, BoundaryAtTheSkipPositionItselfIsTaken)
{
    // 38 characters: 8 are skipped, and the ninth is a separator.
    EXPECT_EQ(Shortened("c:\\12345678\\0123456789012345678901.txt", 30, '\\'), "c:\\...\\0123456789012345678901.txt");
}

TEST(ShortenPath, WithoutAFurtherBoundaryTheTailStartsAtTheSkipPosition)
{
    // 43 characters: 13 are skipped.
    EXPECT_EQ(Shortened("c:\\0123456789012345678901234567890123456789", 30, '\\'),
              "c:\\...345678901234567890123456789");
}

TEST(ShortenPath, ObeysTheSeparatorAskedFor)
{
    EXPECT_EQ(Shortened("a/bbbbbbbbbb/cccccccccc/d.txt", 20, '/'), "a/.../cccccccccc/d.txt");
    EXPECT_EQ(Shortened("a\\bbbbbbbbbb\\cccccccccc\\d.txt", 20, '/'), "a\\bbbbbbbbbb\\cccccccccc\\d.txt");
}

TEST(ShortenPath, WithoutAnySeparatorStaysAsItIs)
{
    EXPECT_EQ(Shortened("0123456789012345678901234567890123456789", 30, '\\'),
              "0123456789012345678901234567890123456789");
}

TEST(ShortenPath, ANameInTheRootStaysWholeWhileTheDotsWouldTakeMoreRoom)
{
    for (std::size_t length = 31; length <= 32; ++length) {
        const std::string path = "c:\\" + std::string(length - 3, 'n');
        EXPECT_EQ(Shortened(path.c_str(), 30, '\\'), path) << length;
    }
    const std::string path = "c:\\" + std::string(30, 'n');
    EXPECT_EQ(Shortened(path.c_str(), 30, '\\'), "c:\\..." + std::string(27, 'n'));
}

TEST(ShortenPath, StaysAsItIsWhenTheDotsWouldTakeMoreRoomThanWhatTheyReplace)
{
    // The head is longer than the limit; what follows it is shorter than the dots.
    const std::string path = std::string(40, 'h') + "\\ab";
    EXPECT_EQ(Shortened(path.c_str(), 30, '\\'), path);
    const std::string boundaryNext = std::string(40, 'h') + "\\a\\name";
    EXPECT_EQ(Shortened(boundaryNext.c_str(), 30, '\\'), boundaryNext);
    const std::string boundaryAtOnce = std::string(30, 'h') + "\\\\name";
    EXPECT_EQ(Shortened(boundaryAtOnce.c_str(), 30, '\\'), boundaryAtOnce);
}

TEST(ShortenPath, HeadLongerThanTheLimitSkipsNothingMore)
{
    const std::string head = std::string(35, 'h') + "\\";
    EXPECT_EQ(Shortened((head + "first\\second").c_str(), 30, '\\'), head + "...\\second");
}
