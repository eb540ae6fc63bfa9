#include "search/find_bytes.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

// Exactly the bytes on the heap, so that a look past them is an error a sanitizer sees.
std::int32_t InBuffer(const std::string& text, const std::string& pattern, std::int32_t start, bool backwards)
{
    const std::vector<char> buffer(text.begin(), text.end());
    const std::vector<char> wanted(pattern.begin(), pattern.end());
    return FindInBuffer(buffer.data(), static_cast<std::int32_t>(buffer.size()), wanted.data(),
                        static_cast<std::int32_t>(wanted.size()), start, backwards);
}

std::int32_t InString(const std::string& text, const std::string& pattern, std::int32_t start, bool backwards)
{
    std::vector<char> string(text.begin(), text.end());
    string.push_back('\0');
    return FindInString(string.data(), pattern.c_str(), start, backwards);
}

std::int32_t Forwards(const std::string& text, const std::string& pattern, std::int32_t start)
{
    const std::int32_t hit = InString(text, pattern, start, false);
    EXPECT_EQ(InBuffer(text, pattern, start, false), hit) << text << " " << pattern << " " << start;
    return hit;
}

std::int32_t Backwards(const std::string& text, const std::string& pattern, std::int32_t start)
{
    const std::int32_t hit = InString(text, pattern, start, true);
    EXPECT_EQ(InBuffer(text, pattern, start, true), hit) << text << " " << pattern << " " << start;
    return hit;
}

// One look at each place.
std::int32_t OneByOne(const std::string& text, const std::string& pattern, std::int32_t start, bool backwards)
{
    const auto length = static_cast<std::int32_t>(pattern.size());
    std::int32_t hit = -1;
    for (std::int32_t at = 0; at + length <= static_cast<std::int32_t>(text.size()); ++at) {
        const bool equal = text.compare(static_cast<std::size_t>(at), pattern.size(), pattern) == 0;
        if (backwards && equal && at + length - 1 <= start) {
            hit = at;
        }
        if (!backwards && equal && at >= start && start >= 0 && hit < 0) {
            hit = at;
        }
    }
    return hit;
}

} // namespace

TEST(FindBytes, ForwardsTheFirstThatBeginsAtStartOrBehindIt)
{
    EXPECT_EQ(Forwards("abcabc", "abc", 0), 0);
    EXPECT_EQ(Forwards("abcabc", "abc", 1), 3);
    EXPECT_EQ(Forwards("abcabc", "abc", 3), 3);
    EXPECT_EQ(Forwards("abcabc", "abc", 4), -1);
}

TEST(FindBytes, BackwardsTheLastThatEndsAtStartOrBeforeIt)
{
    EXPECT_EQ(Backwards("abcabc", "abc", 5), 3);
    EXPECT_EQ(Backwards("abcabc", "abc", 4), 0);
    EXPECT_EQ(Backwards("abcabc", "abc", 2), 0);
    EXPECT_EQ(Backwards("abcabc", "abc", 1), -1);
}

TEST(FindBytes, OverlappingOnesAreFoundOneAfterTheOther)
{
    EXPECT_EQ(Forwards("aaaa", "aa", 1), 1);
    EXPECT_EQ(Forwards("aaaa", "aa", 2), 2);
    EXPECT_EQ(Forwards("aaaa", "aa", 3), -1);
    EXPECT_EQ(Backwards("aaaa", "aa", 2), 1);
    EXPECT_EQ(Backwards("aaaa", "aa", 1), 0);
}

TEST(FindBytes, SearchGoesOnOneBehindAFailedFirstByte)
{
    EXPECT_EQ(Forwards("aaab", "aab", 0), 1);
    EXPECT_EQ(Forwards("ababac", "abac", 0), 2);
    EXPECT_EQ(Backwards("abbb", "abb", 3), 0);
}

TEST(FindBytes, PatternLongerThanWhatIsThereIsNotFound)
{
    EXPECT_EQ(Forwards("abc", "abcd", 0), -1);
    EXPECT_EQ(Forwards("abc", "bcd", 1), -1);
    EXPECT_EQ(Backwards("abc", "abcd", 2), -1);
    EXPECT_EQ(Backwards("abc", "abcd", 100), -1);
    EXPECT_EQ(Forwards("", "a", 0), -1);
    EXPECT_EQ(Backwards("", "a", -1), -1);
    EXPECT_EQ(Backwards("", "a", 0), -1);
}

TEST(FindBytes, WholeTextIsFound)
{
    EXPECT_EQ(Forwards("abc", "abc", 0), 0);
    EXPECT_EQ(Backwards("abc", "abc", 2), 0);
    EXPECT_EQ(Forwards("a", "a", 0), 0);
    EXPECT_EQ(Backwards("a", "a", 0), 0);
}

TEST(FindBytes, StartOutsideFindsNothingForwardsAndMeansTheEndBackwards)
{
    for (const std::int32_t start : {4, 5, 1000000, INT32_MAX - 100}) {
        EXPECT_EQ(Forwards("abcd", "d", start), -1) << start;
        EXPECT_EQ(Backwards("abcd", "cd", start), 2) << start;
    }
    for (const std::int32_t start : {-1, -2, -1000000, INT32_MIN + 100}) {
        EXPECT_EQ(Forwards("abcd", "a", start), -1) << start;
        EXPECT_EQ(Backwards("abcd", "a", start), -1) << start;
    }
}

TEST(FindBytes, CaseMattersHere)
{
    EXPECT_EQ(Forwards("abc", "B", 0), -1);
    EXPECT_EQ(Backwards("abc", "B", 2), -1);
}

TEST(FindBytes, ZeroBytesInABufferAreBytesLikeOthers)
{
    const std::string text("a\0b\0\0c", 6);
    EXPECT_EQ(InBuffer(text, std::string("\0\0", 2), 0, false), 3);
    EXPECT_EQ(InBuffer(text, std::string("\0b", 2), 0, false), 1);
    EXPECT_EQ(InBuffer(text, std::string("\0", 1), 5, true), 4);
    EXPECT_EQ(InBuffer(text, "c", 0, false), 5);
}

TEST(FindBytes, AgreesWithALookAtEachPlace)
{
    std::mt19937 random(20240716);
    for (int round = 0; round < 6000; ++round) {
        std::string text(random() % 24, ' ');
        for (char& byte : text) {
            byte = random() % 3 == 0 ? 'b' : 'a';
        }
        std::string pattern(1 + random() % 5, 'a');
        for (char& byte : pattern) {
            byte = random() % 3 == 0 ? 'b' : 'a';
        }
        const std::int32_t start = static_cast<std::int32_t>(random() % 30) - 3;
        ASSERT_EQ(Forwards(text, pattern, start), OneByOne(text, pattern, start, false)) << text << " " << pattern;
        ASSERT_EQ(Backwards(text, pattern, start), OneByOne(text, pattern, start, true)) << text << " " << pattern;
    }
}
