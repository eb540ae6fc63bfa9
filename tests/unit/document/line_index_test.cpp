#include "document/document_fixture.h"

#include <cstring>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

class LineIndex : public DocumentFixture {
protected:
    static Texts AllLines()
    {
        Texts lines;
        for (std::int32_t line = 1; line <= Document.LineCount; ++line) {
            lines.push_back(TextOfLine(line));
        }
        return lines;
    }

    static Texts LinesOf(std::string_view text)
    {
        OpenBytes(BytesOf(text));
        return AllLines();
    }

    // Whole lines of 100 bytes with text over the end of the first block: its bytes before before
    // boundary are in block 1, the others in block 2.
    static Bytes AtBoundary(std::string_view before, std::string_view after)
    {
        Bytes content = Lines(2 * BlockBytes - 500, 99);
        memcpy(content.data() + BlockBytes - before.size(), before.data(), before.size());
        memcpy(content.data() + BlockBytes, after.data(), after.size());
        return content;
    }

    static std::string Expanded(std::string_view line, std::int32_t tabSize)
    {
        DocumentOptions.Ptabs = 1;
        DocumentOptions.TabSize = tabSize;
        OpenBytes(BytesOf(line));
        return TextOfLine(1);
    }
};

} // namespace

TEST_F(LineIndex, EachKindOfLineEndEndsOneLine)
{
    EXPECT_EQ(LinesOf("one\r\ntwo\rthree\nfour\r\n"), (Texts{"one", "two", "three", "four"}));
}

TEST_F(LineIndex, LineFeedThenCarriageReturnAreTwoLineEnds)
{
    EXPECT_EQ(LinesOf("a\n\rb"), (Texts{"a", "", "b"}));
}

TEST_F(LineIndex, EmptyLinesCount)
{
    EXPECT_EQ(LinesOf("\n\r\n\r\r\n"), (Texts{"", "", "", ""}));
}

TEST_F(LineIndex, LastLineWithoutALineEndCounts)
{
    EXPECT_EQ(LinesOf("a\nb"), (Texts{"a", "b"}));
    EXPECT_EQ(LinesOf("a"), (Texts{"a"}));
}

TEST_F(LineIndex, TextAfterTheLastLineEndIsNoLineWhenThereIsNone)
{
    EXPECT_EQ(LinesOf("a\nb\n"), (Texts{"a", "b"}));
}

TEST_F(LineIndex, ZeroBytesReadAsSpacesAndCount)
{
    EXPECT_EQ(LinesOf(std::string_view("a\0b\0\nc", 6)), (Texts{"a b ", "c"}));
    EXPECT_EQ(Document.LongestLine, 4);
}

TEST_F(LineIndex, OtherControlBytesAreContent)
{
    EXPECT_EQ(LinesOf("a\f\v\x1A\x7F\x85\nb"), (Texts{"a\f\v\x1A\x7F\x85", "b"}));
    EXPECT_TRUE(Document.IsText);
}

TEST_F(LineIndex, LongestLineIsMeasuredInBytesWithTabsAsOne)
{
    OpenBytes(BytesOf("abc\n\t\t\t\t\t\nab"));
    EXPECT_EQ(Document.LongestLine, 5);
}

TEST_F(LineIndex, PairSplitByTheBlockBoundaryCountsOnce)
{
    OpenBytes(AtBoundary("\r", "\n"));
    // 595 lines of 100 bytes, and the first line of block 2 lost its first letter to the LF.
    EXPECT_EQ(Document.LineCount, 595);
    EXPECT_EQ(Document.LineTable[1], 299u);
    EXPECT_EQ(TextOfLine(300), std::string(99, 'a' + 299 % 26));
    EXPECT_EQ(TextOfLine(301), std::string(98, 'a' + 300 % 26));
    EXPECT_EQ(TextOfLine(595), std::string(99, 'a' + 594 % 26));
}

TEST_F(LineIndex, LfAtBlockStartCancelsACountOfTheBlockBefore)
{
    // After an LF: an empty line of its own, and yet 595 lines as above.
    OpenBytes(AtBoundary("\n", "\n"));
    EXPECT_EQ(Document.LineCount, 595);
    EXPECT_EQ(Document.LineTable[1], 299u);
    EXPECT_EQ(Document.LineTable[2], 296u);
    EXPECT_EQ(TextOfLine(300), std::string(99, 'a' + 299 % 26));
    // Found by its number, line 301 is what follows the empty line ...
    EXPECT_EQ(TextOfLine(5), std::string(99, 'a' + 4));
    EXPECT_EQ(TextOfLine(301), std::string(98, 'a' + 300 % 26));
    // ... read on from line 300, it is the empty line itself.
    TextOfLine(5);
    TextOfLine(300);
    EXPECT_EQ(TextOfLine(301), "");
}

TEST_F(LineIndex, LfAtBlockStartInMidLineCancelsACountToo)
{
    OpenBytes(AtBoundary("x", "\n"));
    EXPECT_EQ(Document.LineCount, 594);
    EXPECT_EQ(Document.LineTable[1], 298u);
    // The last line that block 1 ends counts as the line in progress at its end.
    EXPECT_EQ(TextOfLine(299), std::string(99, 'a' + 298 % 26));
    EXPECT_EQ(TextOfLine(5), std::string(99, 'a' + 4));
    EXPECT_EQ(TextOfLine(300), std::string(98, 'a' + 300 % 26));
}

TEST_F(LineIndex, LfAsTheFirstByteOfTheFileCancelsNothing)
{
    EXPECT_EQ(LinesOf("\na"), (Texts{"", "a"}));
}

TEST_F(LineIndex, LineOverTheBoundaryIsReadWhole)
{
    OpenBytes(AtBoundary("12345", "67890\n"));
    EXPECT_EQ(TextOfLine(300), std::string(95, 'a' + 299 % 26) + "1234567890");
    TextOfLine(1);
    EXPECT_EQ(TextOfLine(300), std::string(95, 'a' + 299 % 26) + "1234567890");
}

TEST_F(LineIndex, CarriageReturnAtTheEndOfABlockAloneIsALineEnd)
{
    OpenBytes(AtBoundary("\r", "x"));
    EXPECT_EQ(Document.LineCount, 595);
    std::string expected(99, 'a' + 300 % 26);
    expected[0] = 'x';
    EXPECT_EQ(TextOfLine(301), expected);
}

TEST_F(LineIndex, LineOfMaxLineLenAndOneInsideABlockMakesNonText)
{
    DocumentOptions.MaxLineLen = 80;
    OpenBytes(Lines(1000, 80));
    EXPECT_TRUE(Document.IsText);
    EXPECT_EQ(Document.LongestLine, 80);
    OpenBytes(Lines(1000, 81));
    EXPECT_FALSE(Document.IsText);
    EXPECT_EQ(Document.LineCount, 14);
}

TEST_F(LineIndex, LineSplitOverTheBoundaryIsMeasuredInTwoParts)
{
    DocumentOptions.MaxLineLen = 100;
    Bytes content = Lines(2 * BlockBytes, 99);
    std::fill(content.begin() + BlockBytes - 100, content.begin() + BlockBytes + 99, 'x');
    OpenBytes(content);
    EXPECT_TRUE(Document.IsText);
    EXPECT_EQ(Document.LongestLine, 100);
    EXPECT_EQ(TextOfLine(300), std::string(199, 'x'));
    content[BlockBytes + 99] = 'x';
    content[BlockBytes + 100] = '\n';
    OpenBytes(content);
    EXPECT_TRUE(Document.IsText);
    content[BlockBytes + 100] = 'x';
    OpenBytes(content);
    EXPECT_FALSE(Document.IsText);
}

TEST_F(LineIndex, LongestTextLinePossibleIsReadWhole)
{
    DocumentOptions.MaxLineLen = 1024;
    Bytes content = Lines(2 * BlockBytes, 99);
    content[BlockBytes - 1025] = '\n';
    std::fill(content.begin() + BlockBytes - 1024, content.begin() + BlockBytes + 1024, 'x');
    content[BlockBytes + 1024] = '\n';
    OpenBytes(content);
    ASSERT_TRUE(Document.IsText);
    const std::int32_t line = static_cast<std::int32_t>(Document.LineTable[1]) + 1;
    EXPECT_EQ(TextOfLine(line), std::string(2048, 'x'));
}

TEST_F(LineIndex, EveryTenthLineOfABlockIsSampled)
{
    OpenBytes(Lines(2 * BlockBytes, 99));
    TextOfLine(95);
    EXPECT_EQ(LineSamples()[1], 1000u);
    EXPECT_EQ(LineSamples()[9], 9000u);
    EXPECT_EQ(LineSamples()[10], 0u);
    TextOfLine(338);
    EXPECT_EQ(Document.BlockFirstLine, 301);
    EXPECT_EQ(LineSamples()[1], 1000u);
    EXPECT_EQ(LineSamples()[3], 3000u);
    EXPECT_EQ(LineSamples()[4], 0u);
}

TEST_F(LineIndex, SampleIsTakenAsTheLinesStart)
{
    OpenBytes(Lines(2 * BlockBytes, 99));
    TextOfLine(95);
    LineSamples()[4] = 7; // a byte inside line 1 instead of line 41
    LineSamples()[9] = 0;
    for (std::int32_t i = 5; i < 10; ++i) {
        LineSamples()[i] = 0;
    }
    EXPECT_EQ(TextOfLine(40), std::string(99, 'a' + 39 % 26));
    TextOfLine(20); // so that line 41 has to be sought
    EXPECT_EQ(TextOfLine(41), std::string(92, 'a'));
}

TEST_F(LineIndex, NeighbourOfTheLineSoughtLastIsFoundFromIt)
{
    OpenBytes(Lines(2 * BlockBytes, 1));
    TextOfLine(14000); // far behind the last sample, which is of line 1991
    Document.WorkData[2 * 5000] = '\n'; // a line more, as somebody who counts from the sample would notice
    EXPECT_EQ(TextOfLine(13999), std::string(1, static_cast<char>('a' + 13998 % 26)));
    EXPECT_EQ(TextOfLine(14001), std::string(1, static_cast<char>('a' + 14000 % 26)));
}

TEST_F(LineIndex, LineSoughtLastMeansNothingInABlockReadAnew)
{
    StartDocuments(0); // no slots: every change of block reads
    OpenBytes(Lines(2 * BlockBytes, 1));
    TextOfLine(14000);
    TestPort::AddFile(TestPath, Lines(2 * BlockBytes, 3));
    TextOfLine(29000);
    EXPECT_EQ(TextOfLine(2000), std::string(3, static_cast<char>('a' + 1999 % 26)));
}

TEST_F(LineIndex, BlockOfMoreLinesThanSamplesIsFoundThrough)
{
    OpenBytes(Lines(2 * BlockBytes, 1));
    EXPECT_EQ(Document.LineCount, 30000);
    for (const std::int32_t line : {14999, 2000, 2001, 1990, 1991, 15000, 15001, 29999, 30000, 1}) {
        EXPECT_EQ(TextOfLine(line), std::string(1, static_cast<char>('a' + (line - 1) % 26))) << line;
    }
    SeekLine(14000, 0);
    EXPECT_EQ(Document.CurLine, 14000);
    EXPECT_NE(LineSamples()[199], 0u);
}

TEST_F(LineIndex, LinesAreFoundInAnyOrderWithAnySlots)
{
    for (std::int32_t slots = 0; slots <= 5; ++slots) {
        StartDocuments(slots);
        OpenBytes(Lines(5 * BlockBytes + 1234, 99));
        for (const std::int32_t line : {1512, 1, 300, 301, 302, 1513, 600, 601, 599, 299, 1200, 2, 1499, 1501}) {
            EXPECT_EQ(TextOfLine(line).front(), 'a' + (line - 1) % 26) << slots << " " << line;
        }
    }
}

TEST_F(LineIndex, LineIsOnlySoughtWhenTheReadPositionIsElsewhere)
{
    OpenBytes(BytesOf("one\ntwo\nthree\n"));
    EXPECT_EQ(TextOfLine(1), "one");
    EXPECT_EQ(Document.CurLine, 2);
    // The read position is taken at its word.
    Document.CurOffset = 1;
    EXPECT_EQ(TextOfLine(2), "ne");
    EXPECT_EQ(TextOfLine(2), "two");
}

TEST_F(LineIndex, ByteReadLeavesTheLineUnknown)
{
    OpenBytes(BytesOf("one\ntwo\nthree\n"));
    TextOfLine(1);
    EXPECT_EQ(TextOfBytes(5, 2), "wo");
    EXPECT_EQ(Document.CurLine, 0);
    EXPECT_EQ(TextOfLine(2), "two");
}

TEST_F(LineIndex, ByteReadOnFromALineLeavesTheLineUnknownToo)
{
    OpenBytes(BytesOf("one\ntwo\nthree\n"));
    TextOfLine(1);
    EXPECT_EQ(ReadBytes(2).Length, 2);
    EXPECT_EQ(TextOfLine(2), "two");
}

TEST_F(LineIndex, LinePastTheEndIsEmptyWhenReadOn)
{
    OpenBytes(BytesOf("one\ntwo"));
    EXPECT_EQ(TextOfLine(2), "two");
    EXPECT_EQ(TextOfLine(3), "");
    EXPECT_EQ(TextOfLine(4), "");
}

TEST_F(LineIndex, LinePastTheEndIsSoughtAsTheLast)
{
    OpenBytes(Lines(3 * BlockBytes, 99));
    EXPECT_EQ(TextOfLine(INT32_MAX), std::string(99, 'a' + 899 % 26));
    SeekLine(901, 0);
    EXPECT_EQ(Document.CurLine, 900);
}

TEST_F(LineIndex, TabAtColumnZeroBecomesTabSizeSpaces)
{
    EXPECT_EQ(Expanded("\tx", 8), std::string(8, ' ') + "x");
}

TEST_F(LineIndex, TabBecomesTheRemainderNotTheDistance)
{
    EXPECT_EQ(Expanded("abc\tx", 8), "abc   x");
    EXPECT_EQ(Expanded("123456789\tx", 8), "123456789 x");
    EXPECT_EQ(Expanded("1234567\tx", 8), "1234567       x");
    EXPECT_EQ(Expanded("12345678\tx", 8), "12345678        x");
    EXPECT_EQ(Expanded("abc\tx", 5), "abc   x");
    EXPECT_EQ(Expanded("abcd\t\tx", 3), "abcd "
                                        "  x");
}

TEST_F(LineIndex, TabsStayWithoutPtabs)
{
    OpenBytes(BytesOf("a\tb"));
    EXPECT_EQ(TextOfLine(1), "a\tb");
}

TEST_F(LineIndex, ExpandedLineIsCutAt1024Characters)
{
    DocumentOptions.MaxLineLen = 1024;
    EXPECT_EQ(Expanded(std::string(1020, 'a') + "\tx", 8).size(), 1024u);
    EXPECT_EQ(Expanded(std::string(1023, 'a') + "\t", 8), std::string(1023, 'a') + " ");
    EXPECT_EQ(Expanded(std::string(1024, '\t'), 8), std::string(1024, ' '));
    EXPECT_EQ(Expanded(std::string(1022, 'a') + "\tx", 7).size(), 1024u);
    EXPECT_EQ(Expanded(std::string(1023, 'a') + "x", 8).size(), 1024u);
}

TEST_F(LineIndex, LineOverTheBoundaryIsCutAt1024OnlyWhenExpanded)
{
    DocumentOptions.MaxLineLen = 1024;
    DocumentOptions.Ptabs = 1;
    Bytes content = Lines(2 * BlockBytes, 99);
    std::fill(content.begin() + BlockBytes - 1000, content.begin() + BlockBytes + 1000, 'x');
    content[BlockBytes - 1001] = '\n';
    content[BlockBytes + 1000] = '\n';
    OpenBytes(content);
    ASSERT_TRUE(Document.IsText);
    const std::int32_t line = static_cast<std::int32_t>(Document.LineTable[1]) + 1;
    EXPECT_EQ(TextOfLine(line), std::string(1024, 'x'));
    DocumentOptions.Ptabs = 0;
    EXPECT_EQ(TextOfLine(line), std::string(2000, 'x'));
}

TEST_F(LineIndex, TabSizeOutOfRangeIsHarmless)
{
    EXPECT_EQ(Expanded("a\tb\t", 1), "a b ");
    EXPECT_EQ(Expanded("\tx", 0), std::string(8, ' ') + "x");
    EXPECT_EQ(Expanded("\tx", -5), std::string(8, ' ') + "x");
    EXPECT_EQ(Expanded("\tx", INT32_MIN), std::string(8, ' ') + "x");
    EXPECT_EQ(Expanded("\tx", INT32_MAX), std::string(1024, ' '));
    EXPECT_EQ(Expanded("abc\tx", INT32_MAX), "abc   x");
}

TEST_F(LineIndex, TabsOfRecordsAreExpandedToo)
{
    DocumentOptions.MaxTextSize = 0;
    EXPECT_EQ(Expanded("abc\tx", 8), "abc   x");
}

TEST_F(LineIndex, RecordsAreCutAtTheirLengthWhateverTheyHold)
{
    DocumentOptions.MaxTextSize = 0;
    DocumentOptions.FixedLineLen = 4;
    EXPECT_EQ(LinesOf(std::string_view("ab\r\ncd\0efg", 10)), (Texts{"ab\r\n", "cd e", "fg"}));
}

TEST_F(LineIndex, RecordOverTheBoundaryIsReadWhole)
{
    DocumentOptions.FixedLineLen = 7;
    Bytes content(2 * BlockBytes, 'x');
    memcpy(content.data() + 29995, "1234567", 7);
    OpenBytes(content);
    EXPECT_EQ(TextOfLine(29995 / 7 + 1), "1234567");
}

TEST_F(LineIndex, BytesAreReadAcrossBlocksAndFewerAtTheEnd)
{
    OpenBytes(AtBoundary("12345", "67890"));
    EXPECT_EQ(TextOfBytes(29995, 10), "1234567890");
    EXPECT_EQ(TextOfBytes(Document.FileSize - 3, 16).size(), 3u);
    EXPECT_EQ(TextOfBytes(Document.FileSize, 16), "");
}

TEST_F(LineIndex, BytesKeepZerosAndLineEnds)
{
    OpenBytes(BytesOf(std::string_view("a\0\r\n\tb", 6)));
    EXPECT_EQ(TextOfBytes(0, 16), std::string("a\0\r\n\tb", 6));
}

TEST_F(LineIndex, ByteReadAtTheEndLeavesTheReadPosition)
{
    OpenBytes(BytesOf("0123456789"));
    EXPECT_EQ(TextOfBytes(7, 16), "789");
    EXPECT_EQ(Document.CurOffset, 7);
    EXPECT_EQ(TextOfBytes(4, 2), "45");
    EXPECT_EQ(Document.CurOffset, 6);
}

TEST_F(LineIndex, ByteReadIsBoundedByTheLineBuffer)
{
    OpenBytes(Lines(2 * BlockBytes, 99));
    EXPECT_EQ(TextOfBytes(0, INT32_MAX).size(), static_cast<std::size_t>(LineBufferBytes));
    EXPECT_EQ(Document.CurOffset, LineBufferBytes);
    EXPECT_EQ(TextOfBytes(0, 0), "");
    EXPECT_EQ(TextOfBytes(0, -5), "");
}

TEST_F(LineIndex, OffsetsOutsideTheFileAreItsEnds)
{
    OpenBytes(Lines(2 * BlockBytes, 99));
    EXPECT_EQ(TextOfBytes(-1, 1), "a");
    EXPECT_EQ(TextOfBytes(INT32_MIN, 1), "a");
    EXPECT_EQ(TextOfBytes(INT32_MAX, 1), "");
    EXPECT_EQ(Document.CurBlock, 2);
}

TEST_F(LineIndex, HexRowOfATextLineIsTheRowOfItsFirstByte)
{
    OpenBytes(Lines(2 * BlockBytes, 99));
    EXPECT_EQ(HexRowOfLine(1), 0);
    EXPECT_EQ(HexRowOfLine(2), 6);
    EXPECT_EQ(HexRowOfLine(301), 30000 / 16);
    EXPECT_EQ(HexRowOfLine(600), 59900 / 16);
}

TEST_F(LineIndex, HexRowOfARecordIsTheRowOfItsFirstByte)
{
    OpenBytes(Bytes(70000, 'x'));
    EXPECT_EQ(HexRowOfLine(1), 0);
    EXPECT_EQ(HexRowOfLine(401), 30000 / 16);
    EXPECT_EQ(HexRowOfLine(900), 899 * 75 / 16);
}

TEST_F(LineIndex, FixedLineLengthMeasuresAnOpenNonTextAnew)
{
    OpenBytes(Bytes(1000, 'x'));
    SetFixedLineLength(100);
    EXPECT_EQ(Document.LineCount, 10);
    EXPECT_EQ(Document.LongestLine, 100);
    SetFixedLineLength(99);
    EXPECT_EQ(Document.LineCount, 11);
    EXPECT_EQ(TextOfLine(11), std::string(10, 'x'));
}

TEST_F(LineIndex, FixedLineLengthDoesNotTouchATextOrNoDocument)
{
    OpenBytes(BytesOf("a\nb\n"));
    SetFixedLineLength(1);
    EXPECT_EQ(Document.LineCount, 2);
    EXPECT_EQ(Document.LongestLine, 1);
    FreeBuffers();
    SetFixedLineLength(10);
    EXPECT_EQ(Document.LineCount, 0);
    EXPECT_EQ(DocumentOptions.FixedLineLen, 10);
}

TEST_F(LineIndex, FixedLineLengthOutOfRangeIsBounded)
{
    OpenBytes(Bytes(3000, 'x'));
    SetFixedLineLength(0);
    EXPECT_EQ(Document.LineCount, 40);
    SetFixedLineLength(1000000);
    EXPECT_EQ(Document.LineCount, 3);
    EXPECT_EQ(Document.LongestLine, 1024);
}

TEST_F(LineIndex, RecordCountIsRoundedUpAndAtLeastOne)
{
    DocumentOptions.FixedLineLen = 10;
    EXPECT_EQ(RecordCount(0), 1);
    EXPECT_EQ(RecordCount(1), 1);
    EXPECT_EQ(RecordCount(10), 1);
    EXPECT_EQ(RecordCount(11), 2);
    EXPECT_EQ(RecordCount(INT32_MAX), 214748365);
}

TEST_F(LineIndex, WithoutADocumentEverythingReadsAsEmpty)
{
    const auto readAll = [] {
        EXPECT_EQ(TextOfLine(1), "");
        EXPECT_EQ(TextOfLine(5), "");
        EXPECT_EQ(TextOfBytes(0, 16), "");
        EXPECT_EQ(TextOfBytes(30000, 16), "");
        EXPECT_EQ(ReadLine().Length, 0);
        HexRowOfLine(3);
    };
    readAll();
    OpenBytes(Lines(3 * BlockBytes, 99));
    TextOfLine(500);
    FreeBuffers();
    readAll();
    OpenBytes(Bytes(3 * BlockBytes, 'x'));
    FreeBuffers();
    readAll();
}

TEST_F(LineIndex, WhatFollowsAnUnknownLineIsUnknown)
{
    OpenBytes(BytesOf("one\ntwo\nthree\n"));
    EXPECT_EQ(TextOfBytes(2, 2), "e\n");
    EXPECT_EQ(ReadLine().Length, 3);
    EXPECT_EQ(Document.CurLine, 0);
    EXPECT_EQ(TextOfLine(1), "one");
}

TEST_F(LineIndex, SeekToAByteLeavesTheLineUnknown)
{
    OpenBytes(Bytes(1000, 'x'));
    HexRowOfLine(5);
    EXPECT_EQ(Document.CurLine, 0);
    OpenBytes(BytesOf("one\ntwo\n"));
    SeekLine(0, 5);
    EXPECT_EQ(TextOfLine(1), "one");
}

TEST_F(LineIndex, SkippingStopsAtTheEndOfTheFile)
{
    OpenBytes(BytesOf("a\nb\n"));
    SeekLine(1, 0);
    SkipLines(5);
    EXPECT_EQ(TextOfBytes(0, 4), "a\nb\n");
    SeekLine(1, 0);
    SkipLines(1);
    EXPECT_EQ(Document.CurLine, 2);
    EXPECT_EQ(TextOfLine(2), "b");
}
