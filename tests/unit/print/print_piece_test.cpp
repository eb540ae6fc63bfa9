#include "print/print_piece.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <vector>

namespace {

using Pieces = std::vector<std::string>;

// A line on the heap and not a byte more, and how wide its characters are.
struct MeasuredLine {
    explicit MeasuredLine(const std::string& text) : Bytes(text.begin(), text.end()) { Widths.fill(10); }

    TextSpan Whole() const { return {Bytes.data(), static_cast<std::int32_t>(Bytes.size())}; }

    std::vector<char> Bytes;
    std::array<std::int32_t, 256> Widths; // of each character
    std::int32_t Noise = 0;               // up to which a width can be wrong
};

std::int32_t WidthInLine(const void* context, const char* text, std::int32_t length)
{
    const auto& line = *static_cast<const MeasuredLine*>(context);
    const char* const end = line.Bytes.data() + line.Bytes.size();
    EXPECT_TRUE(length >= 0 && text >= line.Bytes.data() && length <= end - text) << "measured beyond the line";
    std::int32_t width = 0;
    for (std::int32_t i = 0; i < length; ++i) {
        width += line.Widths[static_cast<std::uint8_t>(text[i])];
    }
    return line.Noise > 0 ? width + (length * 7919 + width) % (2 * line.Noise) - line.Noise : width;
}

// A line whose first measurements fail, as if everything was too wide, while nothing is later.
struct FailingLine {
    MeasuredLine Line;
    mutable int Failures;
};

std::int32_t FailingWidth(const void* context, const char* text, std::int32_t length)
{
    const auto& line = *static_cast<const FailingLine*>(context);
    WidthInLine(&line.Line, text, length);
    return line.Failures-- > 0 ? INT32_MAX : 0;
}

std::string TextOf(const TextSpan& span)
{
    return std::string(span.Text, static_cast<std::size_t>(span.Length));
}

// Piece by piece up to the end, and no further than a line can need.
Pieces PiecesOf(const MeasuredLine& line, std::int32_t width, bool wrap)
{
    const TextMeasure measure = {WidthInLine, &line};
    Pieces pieces;
    TextSpan rest = line.Whole();
    do {
        pieces.push_back(TextOf(NextPrintPiece(rest, width, wrap, measure)));
    } while (rest.Length > 0 && pieces.size() <= line.Bytes.size());
    EXPECT_EQ(rest.Length, 0) << "there is no end";
    return pieces;
}

// With characters that are 10 wide each.
Pieces Wrapped(const std::string& text, std::int32_t width)
{
    return PiecesOf(MeasuredLine(text), width, true);
}

std::string RandomLine(std::mt19937& random)
{
    static const std::string Alphabets[] = {"ab   ", "abcdefgh ", "abcdefghijklmnopqrstuvwxyz \t", " ", "m"};
    const std::string& alphabet = Alphabets[random() % std::size(Alphabets)];
    std::string text(random() % 60, ' ');
    for (char& byte : text) {
        byte = alphabet[random() % alphabet.size()];
    }
    return text;
}

// Measured by widths of 0 to 20.
MeasuredLine RandomMeasuredLine(std::mt19937& random)
{
    MeasuredLine line(RandomLine(random));
    for (std::int32_t& width : line.Widths) {
        width = static_cast<std::int32_t>(random() % 21);
    }
    return line;
}

bool EndsAWord(const TextSpan& text, std::int32_t end)
{
    return text.Text[end - 1] != ' ' && (end == text.Length || text.Text[end] == ' ');
}

bool FirstWordFits(const TextSpan& text, std::int32_t width, const TextMeasure& measure)
{
    for (std::int32_t end = 1; end <= text.Length; ++end) {
        if (EndsAWord(text, end)) {
            return measure.Width(measure.Context, text.Text, end) <= width;
        }
    }
    return false;
}

// Whether a piece of that length leaves out another word that fits.
bool LeavesOutAWord(const TextSpan& before, std::int32_t length, std::int32_t width, const TextMeasure& measure)
{
    std::int32_t end = length;
    while (end < before.Length && before.Text[end] == ' ') {
        ++end;
    }
    const std::int32_t word = end;
    while (end < before.Length && before.Text[end] != ' ') {
        ++end;
    }
    return end > word && measure.Width(measure.Context, before.Text, end) <= width;
}

void CheckPiece(const MeasuredLine& line, const TextSpan& before, const TextSpan& piece, const TextSpan& rest,
                std::int32_t width)
{
    const TextMeasure measure = {WidthInLine, &line};
    ASSERT_EQ(piece.Text, before.Text) << "something in front is lost";
    ASSERT_GE(piece.Length, 1);
    ASSERT_EQ(rest.Text + rest.Length, before.Text + before.Length);
    for (const char* skipped = piece.Text + piece.Length; skipped < rest.Text; ++skipped) {
        ASSERT_EQ(*skipped, ' ');
    }
    ASSERT_GE(rest.Text, piece.Text + piece.Length) << "something is printed twice";
    ASSERT_TRUE(rest.Length == 0 || rest.Text[0] != ' ') << "blanks begin the next piece";
    ASSERT_TRUE(piece.Length == 1 || line.Noise > 0 || WidthInLine(&line, piece.Text, piece.Length) <= width);
    ASSERT_TRUE(line.Noise > 0 || piece.Length == before.Length || EndsAWord(before, piece.Length) ||
                !FirstWordFits(before, width, measure));
    ASSERT_TRUE(line.Noise > 0 || !LeavesOutAWord(before, piece.Length, width, measure));
}

void CheckAllPieces(const MeasuredLine& line, std::int32_t width)
{
    const TextMeasure measure = {WidthInLine, &line};
    TextSpan rest = line.Whole();
    while (rest.Length > 0 && !testing::Test::HasFatalFailure()) {
        const TextSpan before = rest;
        const TextSpan piece = NextPrintPiece(rest, width, true, measure);
        ASSERT_LT(rest.Length, before.Length) << "there is no end";
        CheckPiece(line, before, piece, rest, width);
    }
}

} // namespace

TEST(PrintPiece, LineThatFitsIsOnePiece)
{
    EXPECT_EQ(Wrapped("ab cd", 1000), Pieces{"ab cd"});
    EXPECT_EQ(Wrapped("a", 1000), Pieces{"a"});
}

TEST(PrintPiece, LineThatFitsExactlyIsOnePiece)
{
    EXPECT_EQ(Wrapped("ab cd", 50), Pieces{"ab cd"});
    EXPECT_EQ(Wrapped("abcde", 50), Pieces{"abcde"});
    EXPECT_EQ(Wrapped("ab   ", 50), Pieces{"ab   "});
}

TEST(PrintPiece, LineThatIsOneUnitTooWideIsSplit)
{
    EXPECT_EQ(Wrapped("ab cd", 49), (Pieces{"ab", "cd"}));
}

TEST(PrintPiece, EmptyLineIsAnEmptyPiece)
{
    for (const std::int32_t width : {-1, 0, 50}) {
        EXPECT_EQ(Wrapped("", width), Pieces{""}) << width;
        EXPECT_EQ(PiecesOf(MeasuredLine(""), width, false), Pieces{""}) << width;
    }
}

TEST(PrintPiece, LineStaysWholeWithoutWrapping)
{
    for (const std::int32_t width : {-1, 0, 1, 30, 1000}) {
        EXPECT_EQ(PiecesOf(MeasuredLine("ab cd  ef "), width, false), Pieces{"ab cd  ef "}) << width;
    }
}

TEST(PrintPiece, UsedUpLineLeavesItsEnd)
{
    const MeasuredLine line("ab cd");
    TextSpan rest = line.Whole();
    NextPrintPiece(rest, 1000, true, {WidthInLine, &line});
    EXPECT_EQ(rest.Text, line.Bytes.data() + line.Bytes.size());
    EXPECT_EQ(rest.Length, 0);
}

TEST(PrintPiece, PieceIsATextOfTheLine)
{
    const MeasuredLine line("ab  cd");
    TextSpan rest = line.Whole();
    const TextSpan piece = NextPrintPiece(rest, 30, true, {WidthInLine, &line});
    EXPECT_EQ(piece.Text, line.Bytes.data());
    EXPECT_EQ(piece.Length, 2);
    EXPECT_EQ(rest.Text, line.Bytes.data() + 4);
    EXPECT_EQ(rest.Length, 2);
}

TEST(PrintPiece, EndsWithTheLastWordThatFits)
{
    EXPECT_EQ(Wrapped("one two three four", 100), (Pieces{"one two", "three four"}));
    EXPECT_EQ(Wrapped("one two three four", 130), (Pieces{"one two three", "four"}));
    EXPECT_EQ(Wrapped("one two three four", 129), (Pieces{"one two", "three four"}));
    EXPECT_EQ(Wrapped("one two three four", 50), (Pieces{"one", "two", "three", "four"}));
}

TEST(PrintPiece, FirstWordThatFitsExactlyIsNotSplit)
{
    EXPECT_EQ(Wrapped("abcde fg", 50), (Pieces{"abcde", "fg"}));
}

TEST(PrintPiece, WordOfOneLetterThatFitsIsAPiece)
{
    EXPECT_EQ(Wrapped("a bcdef", 30), (Pieces{"a", "bc", "def"}));
}

TEST(PrintPiece, BlanksBehindAPieceAreSkipped)
{
    EXPECT_EQ(Wrapped("ab     cd", 50), (Pieces{"ab", "cd"}));
    EXPECT_EQ(Wrapped("ab   cd    ef", 50), (Pieces{"ab", "cd", "ef"}));
}

TEST(PrintPiece, BlanksWithinAPieceStay)
{
    EXPECT_EQ(Wrapped("a  b  c", 40), (Pieces{"a  b", "c"}));
}

TEST(PrintPiece, LineIsUsedUpWhenOnlyBlanksAreLeft)
{
    EXPECT_EQ(Wrapped("abcde ", 50), Pieces{"abcde"});
    EXPECT_EQ(Wrapped("ab      ", 50), Pieces{"ab"});
    EXPECT_EQ(Wrapped("ab cd      ", 50), Pieces{"ab cd"});
}

TEST(PrintPiece, LeadingBlanksBelongToTheFirstWord)
{
    EXPECT_EQ(Wrapped("  ab cd", 40), (Pieces{"  ab", "cd"}));
    EXPECT_EQ(Wrapped("  ab cd", 60), (Pieces{"  ab", "cd"}));
}

TEST(PrintPiece, LeadingBlanksCountWhenTheFirstWordIsTooWide)
{
    EXPECT_EQ(Wrapped("  abcdef", 50), (Pieces{"  ab", "cdef"}));
    EXPECT_EQ(Wrapped("  ab cd", 39), (Pieces{"  ", "ab", "cd"}));
}

TEST(PrintPiece, LeadingBlanksThatFillAPieceGoWithTheRestOfThem)
{
    EXPECT_EQ(Wrapped("      ab", 30), (Pieces{"  ", "ab"}));
    EXPECT_EQ(Wrapped("      ab", 20), (Pieces{" ", "ab"}));
}

TEST(PrintPiece, BlanksAloneAreOnePiece)
{
    EXPECT_EQ(Wrapped("     ", 50), Pieces{"     "});
    EXPECT_EQ(Wrapped("     ", 30), Pieces{"  "});
    EXPECT_EQ(Wrapped("     ", 10), Pieces{" "});
    EXPECT_EQ(Wrapped("     ", 0), Pieces{" "});
}

TEST(PrintPiece, WordThatIsTooWideIsCutACharacterBeforeItFillsTheWidth)
{
    EXPECT_EQ(Wrapped("abcdefghijk", 50), (Pieces{"abcd", "efgh", "ijk"}));
    EXPECT_EQ(Wrapped("abcdefghijk", 59), (Pieces{"abcd", "efgh", "ijk"}));
    EXPECT_EQ(Wrapped("abcdefghijk", 60), (Pieces{"abcde", "fghijk"}));
}

TEST(PrintPiece, CutWordHasOneCharacterAtLeast)
{
    EXPECT_EQ(Wrapped("abcdef", 30), (Pieces{"ab", "cd", "ef"}));
    EXPECT_EQ(Wrapped("abcd", 20), (Pieces{"a", "b", "cd"}));
    EXPECT_EQ(Wrapped("abcd", 10), (Pieces{"a", "b", "c", "d"}));
    EXPECT_EQ(Wrapped("abcd", 9), (Pieces{"a", "b", "c", "d"}));
}

TEST(PrintPiece, WithoutWidthThereIsOneCharacterToAPiece)
{
    for (const std::int32_t width : {0, -1, INT32_MIN}) {
        EXPECT_EQ(Wrapped("abc", width), (Pieces{"a", "b", "c"})) << width;
        EXPECT_EQ(Wrapped("a  b ", width), (Pieces{"a", "b"})) << width;
        EXPECT_EQ(Wrapped("x", width), Pieces{"x"}) << width;
    }
}

TEST(PrintPiece, BlanksBehindACutWordAreSkipped)
{
    EXPECT_EQ(Wrapped("ab  cd", 10), (Pieces{"a", "b", "c", "d"}));
    EXPECT_EQ(Wrapped("ab    ", 10), (Pieces{"a", "b"}));
}

TEST(PrintPiece, WhatIsLeftOfACutWordIsFollowedByTheNextWord)
{
    EXPECT_EQ(Wrapped("abcdef hi", 50), (Pieces{"abcd", "ef hi"}));
    EXPECT_EQ(Wrapped("abcdefg hi", 50), (Pieces{"abcd", "efg", "hi"}));
}

TEST(PrintPiece, WideWordBehindOneThatFitsBeginsItsOwnPiece)
{
    EXPECT_EQ(Wrapped("ab cdefghijk", 50), (Pieces{"ab", "cdef", "ghijk"}));
}

TEST(PrintPiece, TabIsNoBlank)
{
    EXPECT_EQ(Wrapped("ab\tcd", 40), (Pieces{"ab\t", "cd"}));
    EXPECT_EQ(Wrapped("ab \tcd", 40), (Pieces{"ab", "\tcd"}));
}

TEST(PrintPiece, ZeroByteDoesNotEndALine)
{
    const std::string text("a\0b cd", 6);
    EXPECT_EQ(Wrapped(text, 50), (Pieces{text.substr(0, 3), "cd"}));
    EXPECT_EQ(Wrapped(text.substr(1), 40), (Pieces{text.substr(1, 2), "cd"}));
}

TEST(PrintPiece, WidthsAreThoseOfTheCharacters)
{
    MeasuredLine line("iiii mm iiii mm");
    line.Widths['i'] = 3;
    line.Widths['m'] = 20;
    line.Widths[' '] = 5;
    EXPECT_EQ(PiecesOf(line, 57, true), (Pieces{"iiii mm", "iiii mm"}));
    EXPECT_EQ(PiecesOf(line, 56, true), (Pieces{"iiii", "mm", "iiii", "mm"}));
    EXPECT_EQ(PiecesOf(line, 20, true), (Pieces{"iiii", "m", "m", "iiii", "m", "m"}));
}

TEST(PrintPiece, CharactersWithoutWidthFitAnyPiece)
{
    MeasuredLine line("aaaab");
    line.Widths['a'] = 0;
    EXPECT_EQ(PiecesOf(line, 10, true), Pieces{"aaaab"});
    EXPECT_EQ(PiecesOf(line, 0, true), (Pieces{"aaa", "a", "b"}));
}

TEST(PrintPiece, PiecesAndSkippedBlanksAreTheLineForAnyWidths)
{
    std::mt19937 random(20240716);
    for (int i = 0; i < 3000 && !HasFatalFailure(); ++i) {
        const MeasuredLine line = RandomMeasuredLine(random);
        CheckAllPieces(line, static_cast<std::int32_t>(random() % 300) - 5);
    }
}

TEST(PrintPiece, MeasureThatErrsLosesNothingAndComesToAnEnd)
{
    std::mt19937 random(20240717);
    for (int i = 0; i < 3000 && !HasFatalFailure(); ++i) {
        MeasuredLine line = RandomMeasuredLine(random);
        line.Noise = 1 + static_cast<std::int32_t>(random() % 200);
        CheckAllPieces(line, static_cast<std::int32_t>(random() % 300) - 5);
    }
}

TEST(PrintPiece, MeasureThatFailsNowAndThenKeepsToTheLine)
{
    for (const std::string text : {"a", "abc", "abc  ", "    ", "ab cd", "  ab cd  "}) {
        for (int failures = 1; failures <= 6; ++failures) {
            const FailingLine line = {MeasuredLine(text), failures};
            TextSpan rest = line.Line.Whole();
            const TextSpan piece = NextPrintPiece(rest, 50, true, {FailingWidth, &line});
            EXPECT_GE(piece.Length, 1) << text << " " << failures;
            EXPECT_LE(piece.Length + rest.Length, static_cast<std::int32_t>(text.size())) << text << " " << failures;
            EXPECT_EQ(rest.Text + rest.Length, line.Line.Whole().Text + text.size()) << text << " " << failures;
        }
    }
}
