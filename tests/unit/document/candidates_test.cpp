#include "document/candidates.h"

#include "document/document_fixture.h"

#include <cstring>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

class Candidates : public DocumentFixture {
protected:
    // Bytes as lines show them.
    static Needle NeedleOf(std::string_view wanted)
    {
        ByteTable reads;
        for (unsigned byte = 0; byte < reads.size(); ++byte) {
            reads[byte] = static_cast<std::uint8_t>(byte);
        }
        reads[0] = ' ';
        return MakeNeedle(reads, wanted.data(), static_cast<std::int32_t>(wanted.size()));
    }

    // Lines of dots, 60 to a block and a few in the next, with text over the end of the first block: its first
    // before bytes are in block 1, the others in block 2.
    static Bytes Dots(std::string_view text, std::size_t before)
    {
        Bytes content(BlockBytes + 2000, '.');
        for (std::size_t end = 499; end < content.size(); end += 500) {
            content[end] = '\n';
        }
        memcpy(content.data() + BlockBytes - before, text.data(), text.size());
        return content;
    }

    static Bytes Records(std::size_t size)
    {
        return Bytes(size, '.'); // without line ends: no text
    }

    static std::string Text(const LineText& line)
    {
        return std::string(line.Text, static_cast<std::size_t>(line.Length));
    }

    // Every line, one after the other: entry 0 is line 1.
    static Texts LinesInTurn()
    {
        Texts lines;
        SeekLine(1, 0);
        for (std::int32_t line = 1; line <= Document.LineCount; ++line) {
            lines.push_back(Text(ReadLine()));
        }
        return lines;
    }

    // Every line, each found by its number.
    static Texts LinesByNumber()
    {
        Texts lines;
        for (std::int32_t line = 1; line <= Document.LineCount; ++line) {
            SeekLine(line, 0);
            lines.push_back(Text(ReadLine()));
        }
        return lines;
    }

    static void ExpectNone(const Texts& lines, std::int32_t first, std::int32_t last, std::string_view wanted)
    {
        for (std::int32_t line = first; line <= last; ++line) {
            if (lines[static_cast<std::size_t>(line) - 1].find(wanted) != std::string::npos) {
                ADD_FAILURE() << "line " << line << " holds [" << wanted << "] and was skipped";
                return;
            }
        }
    }

    // Goes through the document line by line, as far as there are candidates; returns how many lines were read.
    static int ReadForwards(std::string_view wanted)
    {
        const Needle needle = NeedleOf(wanted);
        const Texts lines = LinesInTurn();
        int read = 0;
        for (std::int32_t line = 1; line <= Document.LineCount;) {
            EXPECT_EQ(TextOfLine(line), lines[static_cast<std::size_t>(line) - 1]) << line;
            ++read;
            const std::int32_t next = line < Document.LineCount ? NextCandidateLine(needle, line + 1) : line + 1;
            EXPECT_GT(next, line);
            ExpectNone(lines, line + 1, std::min(next - 1, Document.LineCount), wanted);
            if (HasFailure()) {
                break;
            }
            line = next;
        }
        return read;
    }

    static int ReadBackwards(std::string_view wanted)
    {
        const Needle needle = NeedleOf(wanted);
        const Texts lines = LinesByNumber();
        int read = 0;
        for (std::int32_t line = Document.LineCount; line >= 1; --line) {
            const std::int32_t candidate = PreviousCandidateLine(needle, line);
            EXPECT_LE(candidate, line);
            EXPECT_GE(candidate, 0);
            ExpectNone(lines, candidate + 1, line, wanted);
            if (HasFailure() || candidate == 0) {
                break;
            }
            EXPECT_EQ(TextOfLine(candidate), lines[static_cast<std::size_t>(candidate) - 1]) << candidate;
            ++read;
            line = candidate;
        }
        return read;
    }

    static void ReadBothWays(std::string_view wanted)
    {
        ReadForwards(wanted);
        ReadBackwards(wanted);
    }

    // From each of the last lines, while the read position is behind them.
    static void LookBackFromTheLastLines(std::string_view wanted)
    {
        const Needle needle = NeedleOf(wanted);
        const Texts lines = LinesByNumber();
        for (std::int32_t line = Document.LineCount; line >= std::max(Document.LineCount - 7, 1); --line) {
            SeekLine(Document.LineCount, 0);
            ExpectNone(lines, PreviousCandidateLine(needle, line) + 1, line, wanted);
        }
    }

    // Where wanted begins in content.
    static std::vector<std::int32_t> PlacesIn(const Bytes& content, std::string_view wanted)
    {
        const std::string text(content.begin(), content.end());
        std::vector<std::int32_t> places;
        for (std::size_t at = text.find(wanted); at != std::string::npos; at = text.find(wanted, at + 1)) {
            places.push_back(static_cast<std::int32_t>(at));
        }
        return places;
    }

    static void ExpectNoneBetween(const std::vector<std::int32_t>& places, std::int32_t first, std::int32_t end)
    {
        for (const std::int32_t place : places) {
            ASSERT_FALSE(first <= place && place < end) << place << " in " << first << ".." << end << " was skipped";
        }
    }

    // Calls one of the two with every word of that length over the letters.
    template <class Call> static void ForEachWord(std::string_view letters, std::size_t length, Call call)
    {
        std::vector<std::size_t> digits(length, 0);
        for (;;) {
            std::string word;
            for (const std::size_t digit : digits) {
                word += letters[digit];
            }
            call(word);
            if (HasFailure()) {
                ADD_FAILURE() << "in " << testing::PrintToString(word);
                return;
            }
            std::size_t i = 0;
            while (i < length && ++digits[i] == letters.size()) {
                digits[i++] = 0;
            }
            if (i == length) {
                return;
            }
        }
    }
};

} // namespace

TEST_F(Candidates, LineThatHoldsTheNeedleIsTheNextCandidate)
{
    OpenBytes(BytesOf("one\ntwo\nthree\nfour\nfive\n"));
    TextOfLine(1);
    EXPECT_EQ(NextCandidateLine(NeedleOf("fo"), 2), 4);
    EXPECT_EQ(Document.CurLine, 4);
    EXPECT_EQ(TextOfLine(4), "four");
}

TEST_F(Candidates, LineAskedForMayBeTheNextCandidateItself)
{
    OpenBytes(BytesOf("one\ntwo\nthree\n"));
    TextOfLine(1);
    EXPECT_EQ(NextCandidateLine(NeedleOf("wo"), 2), 2);
    EXPECT_EQ(TextOfLine(2), "two");
}

TEST_F(Candidates, BehindTheLastLineThereIsNoNextCandidate)
{
    OpenBytes(BytesOf("one\ntwo\nthree\n"));
    TextOfLine(1);
    // What follows the last needle is the last line of the block, which might go on in a next one.
    EXPECT_EQ(NextCandidateLine(NeedleOf("zz"), 2), 3);
    TextOfLine(3);
    EXPECT_GT(NextCandidateLine(NeedleOf("zz"), 4), Document.LineCount);
}

TEST_F(Candidates, ReadPositionElsewhereMakesTheLineItselfTheNextCandidate)
{
    OpenBytes(BytesOf("one\ntwo\nthree\nfour\n"));
    TextOfLine(3);
    EXPECT_EQ(NextCandidateLine(NeedleOf("fo"), 2), 2);
    SeekLine(0, 5);
    EXPECT_EQ(NextCandidateLine(NeedleOf("fo"), 2), 2);
}

TEST_F(Candidates, LineThatHoldsTheNeedleIsThePreviousCandidate)
{
    OpenBytes(BytesOf("one\ntwo\nthree\nfour\nfive\n"));
    EXPECT_EQ(PreviousCandidateLine(NeedleOf("on"), 5), 1);
    EXPECT_EQ(PreviousCandidateLine(NeedleOf("o"), 5), 4);
    EXPECT_EQ(PreviousCandidateLine(NeedleOf("o"), 4), 4);
    EXPECT_EQ(PreviousCandidateLine(NeedleOf("o"), 3), 2);
    EXPECT_EQ(PreviousCandidateLine(NeedleOf("zz"), 5), 0);
    EXPECT_EQ(PreviousCandidateLine(NeedleOf("five"), 4), 0);
}

TEST_F(Candidates, WhatStandsBehindTheLineIsNoPreviousCandidate)
{
    OpenBytes(BytesOf("one\ntwo\ntwo\ntwo\n"));
    EXPECT_EQ(PreviousCandidateLine(NeedleOf("one"), 4), 1);
    EXPECT_EQ(PreviousCandidateLine(NeedleOf("two"), 2), 2);
    EXPECT_EQ(PreviousCandidateLine(NeedleOf("two"), 1), 0);
}

TEST_F(Candidates, LinesAreReadRightAfterLookingBack)
{
    OpenBytes(Lines(4 * BlockBytes, 99));
    for (const std::int32_t line : {450, 750, 1200}) {
        EXPECT_EQ(PreviousCandidateLine(NeedleOf("xy"), line), 0);
        EXPECT_EQ(TextOfLine(line), std::string(99, static_cast<char>('a' + (line - 1) % 26)));
    }
}

TEST_F(Candidates, NeedleThatNoByteReadsAsSkipsEverything)
{
    ByteTable reads = {};
    const Needle needle = MakeNeedle(reads, "a", 1);
    OpenBytes(Lines(3 * BlockBytes, 99));
    TextOfLine(1);
    EXPECT_EQ(NextCandidateLine(needle, 2), 300); // might go on in the next block
    EXPECT_EQ(PreviousCandidateLine(needle, 900), 0);
}

TEST_F(Candidates, LinesWithoutTheNeedleAreSkippedForwards)
{
    OpenBytes(Lines(10 * BlockBytes, 99));
    EXPECT_LE(ReadForwards("ab"), 2 * 10);
}

TEST_F(Candidates, LinesWithoutTheNeedleAreSkippedBackwards)
{
    OpenBytes(Lines(10 * BlockBytes, 99));
    EXPECT_LE(ReadBackwards("ab"), 2);
}

TEST_F(Candidates, RecordsWithoutTheNeedleAreSkippedBothWays)
{
    OpenBytes(Records(10 * BlockBytes));
    ASSERT_FALSE(Document.IsText);
    EXPECT_LE(ReadForwards("ab"), 3 * 10);
    EXPECT_LE(ReadBackwards("ab"), 3 * 10);
}

TEST_F(Candidates, SkippingReadsEachBlockOnce)
{
    for (const bool backwards : {false, true}) {
        StartDocuments(1);
        OpenBytes(Lines(10 * BlockBytes, 99));
        const Needle needle = NeedleOf("ab");
        const int before = TestPort::FileReads();
        if (backwards) {
            for (std::int32_t line = Document.LineCount; line > 0; --line) {
                line = PreviousCandidateLine(needle, line);
                if (line > 0) {
                    TextOfLine(line);
                }
            }
            EXPECT_LE(TestPort::FileReads() - before, 10);
        } else {
            TextOfLine(1);
            for (std::int32_t line = 1; line < Document.LineCount;) {
                line = NextCandidateLine(needle, line + 1);
                TextOfLine(line);
            }
            EXPECT_LE(TestPort::FileReads() - before, 10);
        }
    }
}

TEST_F(Candidates, NeedleOverTheEndOfABlockIsNotSkipped)
{
    for (std::size_t before = 0; before <= 5; ++before) {
        OpenBytes(Dots("\nabab\n", before));
        ASSERT_TRUE(Document.IsText);
        ReadBothWays("abab");
        ReadBothWays("b");
    }
}

TEST_F(Candidates, PartOfALineInTheNextBlockIsLookedAtBackwards)
{
    OpenBytes(Dots("cd.ab\nab", 2)); // line 60 goes on in block 2, and a candidate follows it there
    const Needle needle = NeedleOf("ab");
    EXPECT_EQ(PreviousCandidateLine(needle, Document.LineCount), 61);
    TextOfLine(61);
    EXPECT_EQ(PreviousCandidateLine(needle, 60), 60);
    OpenBytes(Dots(".\rab\nab", 2)); // line 61 begins where block 2 does
    EXPECT_EQ(PreviousCandidateLine(needle, Document.LineCount), 62);
    TextOfLine(62);
    EXPECT_EQ(PreviousCandidateLine(needle, 61), 61);
}

TEST_F(Candidates, NoLineAroundTheEndOfABlockIsSkipped)
{
    // Every way in which letters and line ends can lie there, a pair split by the boundary and line feeds that
    // open the second block among them.
    ForEachWord("a\r\n", 5, [](const std::string& word) {
        OpenBytes(Dots(word, 2));
        for (const std::string_view wanted : {"a", "aa"}) {
            ReadBothWays(wanted);
            LookBackFromTheLastLines(wanted);
        }
    });
}

TEST_F(Candidates, NoLineOfASmallFileIsSkipped)
{
    ForEachWord("ab\r\n", 5, [](const std::string& word) {
        OpenBytes(BytesOf(word));
        for (const std::string_view wanted : {"a", "ab", "ba"}) {
            ReadBothWays(wanted);
        }
    });
}

TEST_F(Candidates, LineFeedThatOpensABlockCountsForwardsAndNotBackwards)
{
    // The boundary stands between two line feeds. Read in turn, line 61 is the empty one between them; found by
    // its number, it is the one behind that.
    OpenBytes(Dots("..\n\nab", 3));
    const Needle needle = NeedleOf("ab");
    TextOfLine(1);
    EXPECT_EQ(NextCandidateLine(needle, 2), 60);
    TextOfLine(60);
    EXPECT_EQ(NextCandidateLine(needle, 61), 62);
    EXPECT_EQ(TextOfLine(62).substr(0, 2), "ab");
    EXPECT_EQ(PreviousCandidateLine(needle, Document.LineCount), 61);
    EXPECT_EQ(TextOfLine(61).substr(0, 2), "ab");
}

TEST_F(Candidates, LinesOfSeveralBlocksAreFoundWithAnySlots)
{
    for (std::int32_t slots = 0; slots <= 5; ++slots) {
        StartDocuments(slots);
        OpenBytes(Lines(4 * BlockBytes + 1234, 70));
        ReadBothWays("cc");
    }
}

TEST_F(Candidates, NoRecordAroundTheEndOfABlockIsSkipped)
{
    for (const std::int32_t length : {1, 2, 3, 7, 16, 75, 1024}) {
        DocumentOptions.FixedLineLen = length;
        const std::int32_t around = std::min(length, 80);
        for (std::int32_t at = BlockBytes - around; at < BlockBytes + around; ++at) {
            Bytes content = Records(BlockBytes + 2500);
            memcpy(content.data() + at, "ab", 2);
            OpenBytes(content);
            ASSERT_FALSE(Document.IsText);
            if (at % 8 == 7) {
                ReadBothWays("ab");
            }
            // Near the place on its own: the rest of the file tells nothing about it.
            const Needle needle = NeedleOf("ab");
            const std::int32_t record = at / length + 1;
            if (at % length < length - 1) {
                for (std::int32_t from = std::max(record - 3, 1); from <= record; ++from) {
                    EXPECT_LE(NextCandidateLine(needle, from), record) << length << " " << at << " " << from;
                    EXPECT_GE(NextCandidateLine(needle, from), from);
                }
                for (std::int32_t from = record; from <= std::min(record + 3, Document.LineCount); ++from) {
                    EXPECT_GE(PreviousCandidateLine(needle, from), record) << length << " " << at << " " << from;
                    EXPECT_LE(PreviousCandidateLine(needle, from), from);
                }
            }
        }
    }
}

TEST_F(Candidates, NextOffsetIsWhereTheNeedleBegins)
{
    Bytes content = Records(1000);
    memcpy(content.data() + 500, "abc", 3);
    OpenBytes(content);
    const Needle needle = NeedleOf("abc");
    EXPECT_EQ(NextCandidateOffset(needle, 0), 500);
    EXPECT_EQ(NextCandidateOffset(needle, 500), 500);
    // Behind it, only what might go on in a next block.
    EXPECT_EQ(NextCandidateOffset(needle, 501), 998);
    EXPECT_EQ(NextCandidateOffset(needle, 999), 999);
    EXPECT_EQ(NextCandidateOffset(needle, 1000), 1000);
}

TEST_F(Candidates, PreviousOffsetIsJustBehindTheNeedle)
{
    Bytes content = Records(1000);
    memcpy(content.data() + 500, "abc", 3);
    OpenBytes(content);
    const Needle needle = NeedleOf("abc");
    EXPECT_EQ(PreviousCandidateOffset(needle, 1000), 503);
    EXPECT_EQ(PreviousCandidateOffset(needle, 503), 503);
    EXPECT_EQ(PreviousCandidateOffset(needle, 502), 502); // its last byte is the one at 502
    EXPECT_EQ(PreviousCandidateOffset(needle, 501), 0);
}

TEST_F(Candidates, NoOffsetAroundTheEndsOfBlocksIsSkipped)
{
    const std::string_view wanted = "abc";
    const auto length = static_cast<std::int32_t>(wanted.size());
    const Needle needle = NeedleOf(wanted);
    for (std::int32_t at = BlockBytes - 6; at <= BlockBytes + 3; ++at) {
        Bytes content = Records(2 * BlockBytes + 100);
        memcpy(content.data() + at, wanted.data(), wanted.size());
        memcpy(content.data() + BlockBytes + at, wanted.data(), std::min<std::size_t>(wanted.size(), 100));
        OpenBytes(content);
        const std::vector<std::int32_t> places = PlacesIn(content, wanted);
        ASSERT_EQ(places.size(), 2u);
        for (const std::int32_t edge : {0, BlockBytes, 2 * BlockBytes, Document.FileSize}) {
            for (std::int32_t offset = std::max(edge - 9, 0); offset <= std::min(edge + 9, Document.FileSize);
                 ++offset) {
                const std::int32_t next = NextCandidateOffset(needle, offset);
                ASSERT_GE(next, offset);
                ExpectNoneBetween(places, offset, next);
                const std::int32_t previous = PreviousCandidateOffset(needle, offset);
                ASSERT_LE(previous, offset);
                ASSERT_GE(previous, 0);
                // One that ends at offset or before it has its last byte at previous or before that.
                ExpectNoneBetween(places, previous - length + 2, offset - length + 2);
            }
        }
    }
}

TEST_F(Candidates, OffsetsWithoutTheNeedleAreSkippedByTheBlock)
{
    OpenBytes(Records(10 * BlockBytes));
    const Needle needle = NeedleOf("abc");
    int steps = 0;
    for (std::int32_t offset = 0; offset <= Document.FileSize - 3; ++steps) {
        offset = NextCandidateOffset(needle, offset) + 1;
    }
    EXPECT_LE(steps, 4 * 10);
    steps = 0;
    for (std::int32_t offset = Document.FileSize; offset >= 3; ++steps) {
        offset = PreviousCandidateOffset(needle, offset) - 1;
    }
    EXPECT_LE(steps, 4 * 10);
}

TEST_F(Candidates, ShrunkFileHasNoCandidatesToSkipTo)
{
    for (const std::size_t left : {std::size_t{0}, std::size_t{100}, std::size_t{45000}}) {
        OpenBytes(Lines(4 * BlockBytes, 99));
        TestPort::AddFile(TestPath, Lines(left, 99));
        DiscardParkedBlocks();
        const Needle needle = NeedleOf("ab");
        for (std::int32_t line = 1200; line >= 1; line -= 99) {
            const std::int32_t previous = PreviousCandidateLine(needle, line);
            EXPECT_LE(previous, line);
            EXPECT_GE(previous, 0);
            TextOfLine(line);
            EXPECT_GT(NextCandidateLine(needle, line + 1), line);
        }
        for (std::int32_t offset = 0; offset <= 4 * BlockBytes; offset += 4999) {
            EXPECT_GE(NextCandidateOffset(needle, offset), offset);
            EXPECT_LE(PreviousCandidateOffset(needle, offset), offset);
        }
    }
}

TEST_F(Candidates, ReleasedDocumentHasItsCandidatesWithinWhatIsHeld)
{
    OpenBytes(Lines(4 * BlockBytes, 99));
    CloseFileHandle();
    DiscardParkedBlocks();
    const Needle needle = NeedleOf("ab");
    for (std::int32_t line = 1; line <= 1200; line += 99) {
        EXPECT_LE(PreviousCandidateLine(needle, line), line);
        TextOfLine(line);
        EXPECT_GT(NextCandidateLine(needle, line + 1), line);
    }
    for (std::int32_t offset = 0; offset <= 4 * BlockBytes; offset += 4999) {
        EXPECT_GE(NextCandidateOffset(needle, offset), offset);
        EXPECT_LE(PreviousCandidateOffset(needle, offset), offset);
    }
}
