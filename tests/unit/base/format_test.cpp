#include "base/format.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
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
    EXPECT_EQ(Grouped(10000), "10,000");
    EXPECT_EQ(Grouped(999999), "999,999");
    EXPECT_EQ(Grouped(-12345), "-12,345");
}

TEST(FormatGrouped, PutsASecondCommaFromSevenCharactersOn)
{
    EXPECT_EQ(Grouped(1000000), "1,000,000");
    EXPECT_EQ(Grouped(12345678), "12,345,678");
    EXPECT_EQ(Grouped(123456789), "123,456,789");
}

TEST(FormatGrouped, NeverPutsAThirdComma)
{
    EXPECT_EQ(Grouped(1000000000), "1000,000,000");
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

TEST(ShortenPath, NameInTheRootLosesItsBeginning)
{
    const std::string path = "c:\\" + std::string(30, 'n');
    EXPECT_EQ(Shortened(path.c_str(), 30, '\\'), "c:\\..." + std::string(27, 'n'));
}

TEST(ShortenPath, PathOnlyJustTooLongIsElidedAlthoughItGrows)
{
    EXPECT_EQ(Shortened(("c:\\" + std::string(30, 'n')).c_str(), 32, '\\'), "c:\\..." + std::string(29, 'n'));
    EXPECT_EQ(Shortened("c:\\a\\0123456789012345678901234567", 32, '\\'), "c:\\...\\0123456789012345678901234567");
    const std::string boundaryAtOnce = std::string(30, 'h') + "\\";
    EXPECT_EQ(Shortened((boundaryAtOnce + "\\name").c_str(), 30, '\\'), boundaryAtOnce + "...\\name");
}

TEST(ShortenPath, PathStaysAsItIsWhereThereIsNoRoomForTheDots)
{
    char path[] = "c:\\a\\0123456789012345678901234567";
    const std::string whole = path;
    ShortenPath(path, 32, '\\');
    EXPECT_EQ(path, whole);
    char roomy[sizeof path + 2] = "c:\\a\\0123456789012345678901234567";
    ShortenPath(roomy, 32, '\\');
    EXPECT_STREQ(roomy, "c:\\...\\0123456789012345678901234567");
}

TEST(ShortenPath, HeadLongerThanTheLimitSkipsNothingMore)
{
    const std::string head = std::string(35, 'h') + "\\";
    EXPECT_EQ(Shortened((head + "first\\second").c_str(), 30, '\\'), head + "...\\second");
}

TEST(ShortenPath, PathOfTheLimitIsWholeAndOneOfACharacterMoreIsElidedBehindItsDrive)
{
    const std::string head = "c:\\windows\\system32\\";
    for (const std::size_t limit : {std::size_t{30}, std::size_t{32}, std::size_t{35}}) {
        const std::string name(limit - head.size(), 'n');
        EXPECT_EQ(Shortened((head + name).c_str(), limit, '\\'), head + name);
        EXPECT_EQ(Shortened((head + name + "n").c_str(), limit, '\\'), "c:\\...\\system32\\" + name + "n");
    }
}

TEST(ShortenPath, OtherSeparatorIsALetter)
{
    EXPECT_EQ(Shortened("a/b\\cccccccccc/dddddddddd\\e.txt", 20, '\\'), "a/b\\...\\e.txt");
    EXPECT_EQ(Shortened("a\\b/cccccccccc\\dddddddddd/e.txt", 20, '/'), "a\\b/.../e.txt");
}

TEST(ShortenPath, ServerPathHasOneBackslashForItsHead)
{
    EXPECT_EQ(Shortened("\\\\server\\share\\directory\\name.txt", 30, '\\'), "\\...\\share\\directory\\name.txt");
}

TEST(ShortenPath, LeavesOutWhatTheRuleSays)
{
    std::mt19937 random(19960305);
    int shortened = 0;
    for (int i = 0; i < 4000; ++i) {
        std::string path(random() % 120, '\0');
        for (char& character : path) {
            character = "\\/abcdefghij"[random() % (i % 2 == 0 ? 12 : 4)];
        }
        const char separator = i % 3 == 0 ? '/' : '\\';
        const std::size_t limit = random() % 60;
        std::string expected = path;
        const std::size_t headLength = path.find(separator) + 1; // 0 = there is no head
        if (path.size() > limit && headLength > 0) {
            const std::size_t skipped = std::clamp(path.size() - limit + 3, headLength, path.size());
            const std::size_t boundary = path.find(separator, skipped);
            expected.resize(headLength);
            expected += "..." + path.substr(boundary != std::string::npos ? boundary : skipped);
            shortened += expected != path;
        }
        ASSERT_EQ(Shortened(path.c_str(), limit, separator), expected) << path << ", " << limit;
    }
    EXPECT_GT(shortened, 1000);
}
