#include "document/line_scan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

// A heap copy of exactly the bytes, so that a look past them is an error a sanitizer sees.
struct Exact {
    explicit Exact(const std::string& text)
        : Data(text.begin(), text.end()), Count(static_cast<std::int32_t>(text.size()))
    {
    }

    std::vector<std::uint8_t> Data;
    std::int32_t Count;
};

std::int32_t EndsOneByOne(const std::string& text)
{
    std::int32_t ends = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' || text[i] == '\n') {
            ++ends;
            i += text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
        }
    }
    return ends;
}

std::int32_t LongestOneByOne(const std::string& text, std::int32_t atLeast)
{
    std::int32_t longest = atLeast;
    std::int32_t run = 0;
    for (const char byte : text) {
        run = byte == '\r' || byte == '\n' ? 0 : run + 1;
        longest = std::max(longest, run);
    }
    return longest;
}

std::int32_t FindOneByOne(const std::string& text, std::size_t start)
{
    return static_cast<std::int32_t>(std::min(text.find_first_of("\r\n", start), text.size()));
}

// Start - 1 when there is none.
std::int32_t FindLastOneByOne(const std::string& text, std::size_t start, std::size_t end)
{
    while (end > start && text[end - 1] != '\r' && text[end - 1] != '\n') {
        --end;
    }
    return static_cast<std::int32_t>(end) - 1;
}

std::int32_t Count(const std::string& text)
{
    const Exact exact(text);
    return CountLineEnds(exact.Data.data(), exact.Count);
}

// Bytes next to the line ends' values, and those whose sign differs, come up often.
std::string RandomText(std::mt19937& random, std::size_t size, unsigned endsInTen)
{
    static constexpr char Others[] = {0, 9, 11, 12, 14, ' ', 'a', '\x8A', '\x8D', '\xFF'};
    std::string text(size, ' ');
    for (char& byte : text) {
        const bool end = random() % 10 < endsInTen;
        byte = end ? (random() % 2 != 0 ? '\r' : '\n') : Others[random() % sizeof Others];
    }
    return text;
}

void CompareScan(const std::string& text, std::int32_t atLeast)
{
    const Exact exact(text);
    const LineScan scan = ScanLines(exact.Data.data(), exact.Count, atLeast);
    ASSERT_EQ(scan.LineEnds, EndsOneByOne(text)) << atLeast;
    ASSERT_EQ(scan.LongestRun, LongestOneByOne(text, atLeast)) << atLeast;
}

void CompareAll(const std::string& text, std::mt19937& random)
{
    const Exact exact(text);
    for (const std::int32_t atLeast : {0, 1, static_cast<std::int32_t>(random() % 60), 1000}) {
        CompareScan(text, atLeast);
    }
    ASSERT_EQ(CountLineEnds(exact.Data.data(), exact.Count), EndsOneByOne(text));
    for (const std::int32_t atLeast : {0, 1, static_cast<std::int32_t>(random() % 40), 1000}) {
        ASSERT_EQ(LongestRun(exact.Data.data(), exact.Count, atLeast), LongestOneByOne(text, atLeast)) << atLeast;
    }
    for (std::size_t start = 0; start <= text.size(); start += 1 + random() % 5) {
        ASSERT_EQ(FindLineEnd(exact.Data.data(), static_cast<std::int32_t>(start), exact.Count),
                  FindOneByOne(text, start))
            << start;
    }
    for (std::size_t end = 0; end <= text.size(); end += 1 + random() % 5) {
        const std::size_t start = random() % (end + 1);
        ASSERT_EQ(FindLastLineEnd(exact.Data.data(), static_cast<std::int32_t>(start), static_cast<std::int32_t>(end)),
                  FindLastOneByOne(text, start, end))
            << start << " " << end;
    }
}

} // namespace

TEST(LineScan, EachKindOfLineEndCountsOnce)
{
    EXPECT_EQ(Count(""), 0);
    EXPECT_EQ(Count("abc"), 0);
    EXPECT_EQ(Count("a\nb\n"), 2);
    EXPECT_EQ(Count("a\rb\r"), 2);
    EXPECT_EQ(Count("a\r\nb\r\n"), 2);
    EXPECT_EQ(Count("a\n\rb"), 2);
    EXPECT_EQ(Count("\r\r\n\n"), 3);
}

TEST(LineScan, CarriageReturnAsTheLastByteCounts)
{
    EXPECT_EQ(Count("\r"), 1);
    for (std::size_t length = 0; length < 70; ++length) {
        EXPECT_EQ(Count(std::string(length, 'a') + "\r"), 1) << length;
    }
}

TEST(LineScan, PairSplitBetweenTwoVectorsCountsOnce)
{
    for (std::size_t length = 0; length < 70; ++length) {
        EXPECT_EQ(Count(std::string(length, 'a') + "\r\n" + std::string(20, 'b')), 1) << length;
    }
}

TEST(LineScan, CountersDoNotOverflowInALongRunOfLineEnds)
{
    // A vector's byte counters hold 255; 30000 bytes are 1875 vectors.
    EXPECT_EQ(Count(std::string(30000, '\n')), 30000);
    EXPECT_EQ(Count(std::string(30000, '\r')), 30000);
    EXPECT_EQ(Count(std::string(255 * 16 + 1, '\n')), 255 * 16 + 1);
    EXPECT_EQ(Count(std::string(256 * 16 + 1, '\n')), 256 * 16 + 1);
}

TEST(LineScan, LongestRunIsOnlyWhatIsLongerThanAtLeast)
{
    const Exact text("aaa\nbbbbb\rcc");
    EXPECT_EQ(LongestRun(text.Data.data(), text.Count, 0), 5);
    EXPECT_EQ(LongestRun(text.Data.data(), text.Count, 4), 5);
    EXPECT_EQ(LongestRun(text.Data.data(), text.Count, 5), 5);
    EXPECT_EQ(LongestRun(text.Data.data(), text.Count, 9), 9);
}

TEST(LineScan, LongestRunMayBeTheFirstOrTheLast)
{
    const Exact first("aaaaa\nbb\n");
    EXPECT_EQ(LongestRun(first.Data.data(), first.Count, 0), 5);
    const Exact last("a\nbb\nccccc");
    EXPECT_EQ(LongestRun(last.Data.data(), last.Count, 0), 5);
    const Exact whole("abcde");
    EXPECT_EQ(LongestRun(whole.Data.data(), whole.Count, 0), 5);
}

TEST(LineScan, FindsTheFirstLineEndFromStartOn)
{
    const Exact text("ab\rcd\nef");
    EXPECT_EQ(FindLineEnd(text.Data.data(), 0, text.Count), 2);
    EXPECT_EQ(FindLineEnd(text.Data.data(), 2, text.Count), 2);
    EXPECT_EQ(FindLineEnd(text.Data.data(), 3, text.Count), 5);
    EXPECT_EQ(FindLineEnd(text.Data.data(), 6, text.Count), 8);
    EXPECT_EQ(FindLineEnd(text.Data.data(), 8, text.Count), 8);
}

TEST(LineScan, FindsTheLastLineEndBeforeEnd)
{
    const Exact text("ab\rcd\nef");
    EXPECT_EQ(FindLastLineEnd(text.Data.data(), 0, text.Count), 5);
    EXPECT_EQ(FindLastLineEnd(text.Data.data(), 0, 6), 5);
    EXPECT_EQ(FindLastLineEnd(text.Data.data(), 0, 5), 2);
    EXPECT_EQ(FindLastLineEnd(text.Data.data(), 5, text.Count), 5);
}

TEST(LineScan, WithoutALineEndTheLastOneIsBeforeStart)
{
    const Exact text("ab\rcd\nef");
    EXPECT_EQ(FindLastLineEnd(text.Data.data(), 0, 2), -1);
    EXPECT_EQ(FindLastLineEnd(text.Data.data(), 3, 5), 2);
    EXPECT_EQ(FindLastLineEnd(text.Data.data(), 6, text.Count), 5); // the one at 5 is before start
    EXPECT_EQ(FindLastLineEnd(text.Data.data(), 4, 4), 3);
    EXPECT_EQ(FindLastLineEnd(text.Data.data(), 0, 0), -1);
    const Exact plain(std::string(100, 'x'));
    EXPECT_EQ(FindLastLineEnd(plain.Data.data(), 0, plain.Count), -1);
    EXPECT_EQ(FindLastLineEnd(plain.Data.data(), 17, plain.Count), 16);
}

TEST(LineScan, AgreesWithByteLoopsForEveryLengthUpTo200)
{
    std::mt19937 random(1);
    for (std::size_t size = 0; size <= 200; ++size) {
        for (const unsigned endsInTen : {0u, 1u, 1u, 3u, 7u, 10u}) {
            CompareAll(RandomText(random, size, endsInTen), random);
        }
    }
}

TEST(LineScan, AgreesWithByteLoopsWithASingleLineEndAnywhere)
{
    for (std::size_t size = 1; size <= 80; ++size) {
        for (std::size_t at = 0; at < size; ++at) {
            std::string text(size, 'x');
            text[at] = at % 2 != 0 ? '\r' : '\n';
            const Exact exact(text);
            ASSERT_EQ(CountLineEnds(exact.Data.data(), exact.Count), 1);
            ASSERT_EQ(LongestRun(exact.Data.data(), exact.Count, 0), LongestOneByOne(text, 0));
            ASSERT_EQ(FindLineEnd(exact.Data.data(), 0, exact.Count), static_cast<std::int32_t>(at));
            ASSERT_EQ(FindLastLineEnd(exact.Data.data(), 0, exact.Count), static_cast<std::int32_t>(at));
        }
    }
}

TEST(LineScan, AgreesWithByteLoopsOnWholeBlocks)
{
    std::mt19937 random(2);
    for (int i = 0; i < 4; ++i) {
        const std::string text = RandomText(random, 30000 - static_cast<std::size_t>(i), 1);
        const Exact exact(text);
        ASSERT_EQ(CountLineEnds(exact.Data.data(), exact.Count), EndsOneByOne(text));
        ASSERT_EQ(LongestRun(exact.Data.data(), exact.Count, 0), LongestOneByOne(text, 0));
    }
}

TEST(LineScan, FindsARunOneLongerThanAtLeastWhereverItStands)
{
    // Lines of atLeast bytes with a single longer one among them, at every place within the windows.
    for (std::int32_t atLeast = 1; atLeast <= 70; ++atLeast) {
        for (std::int32_t shift = 0; shift < 70; ++shift) {
            const std::string line = std::string(static_cast<std::size_t>(atLeast), 'x') + "\n";
            std::string text = std::string(static_cast<std::size_t>(shift % (atLeast + 1)), 'x') + "\n";
            while (static_cast<std::int32_t>(text.size()) < shift) {
                text += line;
            }
            CompareScan(text + line + line, atLeast);
            CompareScan(text + "x" + line + line, atLeast);
            CompareScan(text + line + "x" + line.substr(0, line.size() - 1), atLeast);
        }
    }
}

TEST(LineScan, MeasuresAWholeBlockOfAnyBytes)
{
    std::mt19937 random(20240711);
    for (const unsigned endsInTen : {0u, 1u, 5u, 10u}) {
        const std::string text = RandomText(random, LargestScan, endsInTen);
        for (std::int32_t atLeast = 0; atLeast < 60; atLeast += 7) {
            CompareScan(text, atLeast);
        }
    }
}
