#include "document/byte_scan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <random>
#include <string>
#include <vector>

namespace {

ByteTable AsIs()
{
    ByteTable table;
    for (unsigned byte = 0; byte < table.size(); ++byte) {
        table[byte] = static_cast<std::uint8_t>(byte);
    }
    return table;
}

ByteTable Capitals()
{
    ByteTable table = AsIs();
    for (unsigned letter = 'a'; letter <= 'z'; ++letter) {
        table[letter] = static_cast<std::uint8_t>(letter - 0x20);
    }
    return table;
}

// Only the high half of each byte counts: 16 values stand for each one.
ByteTable HighHalves()
{
    ByteTable table = AsIs();
    for (std::uint8_t& value : table) {
        value &= 0xF0;
    }
    return table;
}

// A heap copy of exactly the bytes, so that a look past them is an error a sanitizer sees.
struct Exact {
    explicit Exact(const std::string& text)
        : Data(text.begin(), text.end()), Count(static_cast<std::int32_t>(text.size()))
    {
    }

    std::vector<std::uint8_t> Data;
    std::int32_t Count;
};

Needle NeedleOf(const ByteTable& reads, const std::string& wanted)
{
    return MakeNeedle(reads, wanted.data(), static_cast<std::int32_t>(wanted.size()));
}

std::int32_t First(const Needle& needle, const std::string& text)
{
    const Exact exact(text);
    return FindNeedle(needle, exact.Data.data(), 0, exact.Count);
}

std::int32_t Last(const Needle& needle, const std::string& text)
{
    const Exact exact(text);
    return FindLastNeedle(needle, exact.Data.data(), 0, exact.Count);
}

bool StandsThere(const ByteTable& reads, const std::string& wanted, const Exact& exact, std::int32_t at)
{
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (reads[exact.Data[static_cast<std::size_t>(at) + i]] != static_cast<std::uint8_t>(wanted[i])) {
            return false;
        }
    }
    return true;
}

// Both directions over [start, end) against one look at each place.
void CompareRange(const ByteTable& reads, const std::string& wanted, const Needle& needle, const Exact& exact,
                  std::int32_t start, std::int32_t end)
{
    std::int32_t first = -1;
    std::int32_t last = -1;
    for (std::int32_t at = start; at + static_cast<std::int32_t>(wanted.size()) <= end; ++at) {
        if (StandsThere(reads, wanted, exact, at)) {
            first = first < 0 ? at : first;
            last = at;
        }
    }
    ASSERT_EQ(FindNeedle(needle, exact.Data.data(), start, end), first)
        << "[" << wanted << "] in " << start << ".." << end << " of " << exact.Count;
    ASSERT_EQ(FindLastNeedle(needle, exact.Data.data(), start, end), last)
        << "[" << wanted << "] in " << start << ".." << end << " of " << exact.Count;
}

std::string RandomText(std::mt19937& random, std::size_t size, const std::string& alphabet)
{
    std::string text(size, ' ');
    for (char& byte : text) {
        byte = alphabet[random() % alphabet.size()];
    }
    return text;
}

// A wanted text that often stands in text, as the table reads it.
std::string WantedFrom(std::mt19937& random, const ByteTable& reads, const std::string& text, std::size_t length)
{
    std::string wanted =
        length <= text.size() ? text.substr(random() % (text.size() - length + 1), length) : std::string(length, 'A');
    for (char& byte : wanted) {
        byte = static_cast<char>(reads[static_cast<std::uint8_t>(byte)]);
    }
    if (random() % 3 == 0) {
        wanted[random() % length] = static_cast<char>(reads['b']);
    }
    return wanted;
}

void CompareRandom(std::mt19937& random, const ByteTable& reads, const std::string& alphabet)
{
    for (std::size_t length = 1; length <= MaxNeedle; ++length) {
        for (int round = 0; round < 12; ++round) {
            const std::size_t size = random() % (round < 4 ? 40 : 160);
            const Exact exact(RandomText(random, size, alphabet));
            const std::string text(exact.Data.begin(), exact.Data.end());
            const std::string wanted = WantedFrom(random, reads, text, length);
            const Needle needle = NeedleOf(reads, wanted);
            CompareRange(reads, wanted, needle, exact, 0, exact.Count);
            const auto start = static_cast<std::int32_t>(random() % (size + 1));
            const auto end = static_cast<std::int32_t>(static_cast<std::size_t>(start) +
                                                       random() % (size - static_cast<std::size_t>(start) + 1));
            CompareRange(reads, wanted, needle, exact, start, end);
            if (testing::Test::HasFatalFailure()) {
                return;
            }
        }
    }
}

} // namespace

TEST(ByteScan, FindsTheFirstAndTheLastPlace)
{
    const Needle needle = NeedleOf(AsIs(), "ab");
    EXPECT_EQ(First(needle, "xabyabz"), 1);
    EXPECT_EQ(Last(needle, "xabyabz"), 4);
    EXPECT_EQ(First(needle, "ab"), 0);
    EXPECT_EQ(Last(needle, "ab"), 0);
}

TEST(ByteScan, NothingIsFoundInFewerBytesThanTheNeedle)
{
    const Needle needle = NeedleOf(AsIs(), "abc");
    for (const char* text : {"", "a", "ab", "xbc"}) {
        EXPECT_EQ(First(needle, text), -1) << text;
        EXPECT_EQ(Last(needle, text), -1) << text;
    }
}

TEST(ByteScan, WhatLiesOnlyPartlyInTheRangeIsNotFound)
{
    const Needle needle = NeedleOf(AsIs(), "abc");
    const Exact exact(std::string(40, '.') + "abc" + std::string(40, '.'));
    const std::uint8_t* const bytes = exact.Data.data();
    EXPECT_EQ(FindNeedle(needle, bytes, 0, 42), -1);
    EXPECT_EQ(FindNeedle(needle, bytes, 0, 43), 40);
    EXPECT_EQ(FindNeedle(needle, bytes, 40, 43), 40);
    EXPECT_EQ(FindNeedle(needle, bytes, 41, exact.Count), -1);
    EXPECT_EQ(FindLastNeedle(needle, bytes, 41, exact.Count), -1);
    EXPECT_EQ(FindLastNeedle(needle, bytes, 40, 43), 40);
    EXPECT_EQ(FindLastNeedle(needle, bytes, 0, 42), -1);
}

TEST(ByteScan, OverlappingPlacesAllCount)
{
    const Needle needle = NeedleOf(AsIs(), "aaa");
    EXPECT_EQ(First(needle, std::string(50, 'a')), 0);
    EXPECT_EQ(Last(needle, std::string(50, 'a')), 47);
}

TEST(ByteScan, LetterStandsForItsCapital)
{
    const Needle needle = NeedleOf(Capitals(), "ABC");
    EXPECT_EQ(First(needle, "..aBc..AbC"), 2);
    EXPECT_EQ(Last(needle, "..aBc..AbC"), 7);
}

TEST(ByteScan, NeedleThatNoByteReadsAsIsNeverFound)
{
    for (const char* wanted : {"a", "aBC", "BaC", "BCa"}) {
        const Needle needle = NeedleOf(Capitals(), wanted);
        EXPECT_FALSE(needle.Possible);
        EXPECT_EQ(First(needle, "abcABCBACbcaBCA" + std::string(40, 'a')), -1) << wanted;
        EXPECT_EQ(Last(needle, "abcABCBACbcaBCA" + std::string(40, 'a')), -1) << wanted;
    }
    EXPECT_TRUE(NeedleOf(Capitals(), "ABC").Possible);
}

TEST(ByteScan, PositionThatManyBytesReadAsIsNotProbed)
{
    ByteTable reads = Capitals();
    reads['1'] = reads['2'] = 'X'; // X, x, 1 and 2
    const Needle needle = NeedleOf(reads, "XaXbX");
    EXPECT_FALSE(needle.Possible); // 'a' and 'b' read as capitals
    const Needle mixed = NeedleOf(reads, "XAXBX");
    ASSERT_TRUE(mixed.HasProbes);
    EXPECT_EQ(mixed.Probes[0].Position, 1);
    EXPECT_EQ(mixed.Probes[1].Position, 3);
    EXPECT_EQ(First(mixed, std::string(30, '.') + "1a2Bx"), 30);
}

TEST(ByteScan, EachOfThreeBytesThatReadAlikeIsFound)
{
    ByteTable reads = Capitals();
    reads['~'] = 'X'; // X, x and this
    const Needle needle = NeedleOf(reads, "X");
    for (const char* text : {"X", "x", "~"}) {
        EXPECT_EQ(First(needle, std::string(30, '.') + text + std::string(30, '.')), 30) << text;
        EXPECT_EQ(Last(needle, std::string(30, '.') + text + std::string(30, '.')), 30) << text;
    }
}

TEST(ByteScan, FirstAndLastPositionAreProbed)
{
    const Needle needle = NeedleOf(Capitals(), "AB-CD");
    ASSERT_TRUE(needle.HasProbes);
    EXPECT_EQ(needle.Probes[0].Position, 0);
    EXPECT_EQ(needle.Probes[1].Position, 4);
    EXPECT_EQ(needle.Probes[0].Values[0], 'A');
    EXPECT_EQ(needle.Probes[0].Values[1], 'a');
}

TEST(ByteScan, NeedleWithoutProbesIsFoundPlaceByPlace)
{
    const Needle needle = NeedleOf(HighHalves(), "\x40\x50");
    EXPECT_FALSE(needle.HasProbes);
    EXPECT_EQ(First(needle, std::string(50, '.') + "AZbz" + std::string(50, '.')), 50);
    EXPECT_EQ(Last(needle, std::string(50, '.') + "AZBX" + std::string(50, '.')), 52);
}

TEST(ByteScan, BytesAboveTheSignAndZeroBytesAreBytesLikeOthers)
{
    const std::string wanted("\xFF\x00\x80", 3);
    const Needle needle = NeedleOf(AsIs(), wanted);
    EXPECT_EQ(First(needle, std::string(33, '\x7F') + wanted + wanted), 33);
    EXPECT_EQ(Last(needle, std::string(33, '\x7F') + wanted + wanted), 36);
}

TEST(ByteScan, LongestNeedleIsFound)
{
    const std::string wanted = "0123456789abcdefghijklmnopqrstuv";
    ASSERT_EQ(wanted.size(), static_cast<std::size_t>(MaxNeedle));
    const Needle needle = NeedleOf(AsIs(), wanted);
    for (std::size_t before = 0; before < 40; ++before) {
        const std::string text = std::string(before, '0') + wanted + std::string(7, 'v');
        EXPECT_EQ(First(needle, text), static_cast<std::int32_t>(before));
        EXPECT_EQ(Last(needle, text), static_cast<std::int32_t>(before));
    }
}

TEST(ByteScan, SinglePlaceIsFoundWhereverItStands)
{
    const ByteTable reads = Capitals();
    for (const std::string& wanted : {std::string("A"), std::string("AB"), std::string("ABABABABABABABABABABABA")}) {
        const Needle needle = NeedleOf(reads, wanted);
        for (std::size_t size = wanted.size(); size < 80; size += 1 + size / 20) {
            for (std::size_t at = 0; at + wanted.size() <= size; ++at) {
                std::string text(size, '.');
                text.replace(at, wanted.size(), wanted);
                const Exact exact(text);
                CompareRange(reads, wanted, needle, exact, 0, exact.Count);
            }
        }
    }
}

TEST(ByteScan, AgreesWithALookAtEachPlace)
{
    std::mt19937 random(20240715);
    CompareRandom(random, AsIs(), "ab");
    CompareRandom(random, AsIs(), std::string("a\0b\xFF", 4));
    CompareRandom(random, Capitals(), "abAB");
    CompareRandom(random, Capitals(), "abcdefghijABCDEFGHIJ");
    CompareRandom(random, HighHalves(), "abyzAB");
}
