#include "document/line_index.h"

#include "document/block_cache.h"
#include "document/document_state.h"
#include "document/line_scan.h"

#include <algorithm>
#include <cstring>

namespace {

char LineBuffer[LineBufferBytes + 1];
char ExpandedLine[ExpandedLineBytes + 1];

// Goes on to the next block. False at the end of the file, when the next block came back empty because
// the file has shrunk, and when no block is held because the file is released.
bool LoadNextBlock()
{
    if (Document.CurBlock == 0 || Document.CurBlock >= Document.BlockCount) {
        return false;
    }
    LoadBlock(Document.CurBlock + 1);
    return Document.CurBlockBytes > 0;
}

// Appends count bytes of the working buffer from offset on to LineBuffer as far as they fit; returns
// the new length.
std::int32_t KeepBytes(std::int32_t length, std::int32_t offset, std::int32_t count)
{
    const std::int32_t kept = std::min(count, LineBufferBytes - length);
    memcpy(LineBuffer + length, Document.WorkData + offset, static_cast<std::size_t>(kept));
    return length + kept;
}

// A line can then be handled as a zero-terminated string.
LineText FinishLine(std::int32_t length)
{
    std::replace(LineBuffer, LineBuffer + length, '\0', ' ');
    LineBuffer[length] = '\0';
    return {LineBuffer, length};
}

void StepPastLineEnd()
{
    const std::uint8_t end = Document.WorkData[Document.CurOffset];
    ++Document.CurOffset;
    if (AtDataEnd()) {
        LoadNextBlock();
    }
    if (end == '\r' && !AtDataEnd() && Document.WorkData[Document.CurOffset] == '\n') {
        ++Document.CurOffset;
    }
}

// Steps past the line at the read position and, if wanted, keeps its bytes in LineBuffer; returns how many
// are kept.
std::int32_t PassTextLine(bool keep)
{
    std::int32_t length = 0;
    if (Document.LineCount == 0) {
        return length; // no document
    }
    for (;;) {
        if (AtDataEnd() && !LoadNextBlock()) {
            break;
        }
        const std::int32_t end = FindLineEnd(Document.WorkData, Document.CurOffset, Document.CurBlockBytes);
        if (keep) {
            length = KeepBytes(length, Document.CurOffset, end - Document.CurOffset);
        }
        Document.CurOffset = end;
        if (!AtDataEnd()) {
            StepPastLineEnd();
            break;
        }
    }
    if (Document.CurLine != 0) {
        ++Document.CurLine; // what follows an unknown line is unknown too
    }
    return length;
}

// Goes to the nearest line start at or before line that the current block's samples know.
void UseSamples(std::int32_t line)
{
    const std::int32_t index = (line - Document.BlockFirstLine) / SampleInterval;
    if (index >= SamplesPerBlock) {
        return;
    }
    const std::uint32_t* samples = LineSamples();
    for (std::int32_t i = index; i >= 1; --i) {
        if (samples[i] != 0) {
            Document.CurOffset = static_cast<std::int32_t>(samples[i]);
            Document.CurLine = Document.BlockFirstLine + SampleInterval * i;
            return;
        }
    }
}

// Goes from the line sought last, when that is nearer to line than what the samples know: a block of very
// short lines has more of them than samples.
void UseSoughtLine(std::int32_t line)
{
    if (Document.SoughtBlock != Document.CurBlock) {
        return;
    }
    const std::int32_t back = Document.SoughtLine - line;
    if (back >= line - Document.CurLine || Document.SoughtLine < Document.CurLine) {
        return;
    }
    Document.CurOffset = Document.SoughtOffset;
    Document.CurLine = Document.SoughtLine;
    // A block that came back shorter may hold fewer lines than were sought in it.
    for (; Document.CurLine > line && Document.CurOffset > 0; --Document.CurLine) {
        Document.CurOffset = FindLineStart(Document.WorkData, 0, Document.CurOffset - 1);
    }
    Document.CurLine = std::min(Document.CurLine, line);
}

void SeekTextLine(std::int32_t line)
{
    const std::int32_t block = FindBlockOfLine(line);
    Document.CurLine = Document.BlockFirstLine;
    if (block != Document.CurBlock) {
        LoadBlock(block);
    }
    Document.CurOffset = 0;
    UseSamples(line);
    UseSoughtLine(line);
    if (line > Document.CurLine) {
        SkipLines(line - Document.CurLine);
    }
    Document.SoughtBlock = Document.CurBlock == block ? block : 0;
    Document.SoughtLine = line;
    Document.SoughtOffset = Document.CurOffset;
}

void SeekByte(std::int64_t position)
{
    Document.CurLine = 0; // whichever line this lies in
    const std::int64_t inside = std::clamp<std::int64_t>(position, 0, Document.FileSize);
    const std::int32_t block = static_cast<std::int32_t>(inside / BlockBytes) + 1;
    // A file whose size is a multiple of BlockBytes ends at the end of a block, not in one of its own.
    const std::int32_t held = std::min(block, Document.BlockCount);
    if (held != Document.CurBlock) {
        LoadBlock(held);
    }
    Document.CurOffset = static_cast<std::int32_t>(inside - static_cast<std::int64_t>(held - 1) * BlockBytes);
}

LineText ExpandTabs(const LineText& line)
{
    const std::int32_t width = TabWidth();
    std::int32_t column = 0;
    for (std::int32_t i = 0; i < line.Length && column < ExpandedLineBytes; ++i) {
        if (line.Text[i] != '\t') {
            ExpandedLine[column++] = line.Text[i];
            continue;
        }
        // The remainder itself, not the distance to the next stop: files laid out for it depend on this.
        const std::int32_t remainder = column % width;
        const std::int32_t spaces = std::min(remainder != 0 ? remainder : width, ExpandedLineBytes - column);
        memset(ExpandedLine + column, ' ', static_cast<std::size_t>(spaces));
        column += spaces;
    }
    ExpandedLine[column] = '\0';
    return {ExpandedLine, column};
}

} // namespace

std::int32_t RecordLength()
{
    constexpr std::int32_t DefaultLength = 75;
    const std::int32_t length = DocumentOptions.FixedLineLen;
    return length < 1 ? DefaultLength : std::min(length, MaxRecordLength);
}

std::int32_t TabWidth()
{
    constexpr std::int32_t DefaultWidth = 8;
    return DocumentOptions.TabSize < 1 ? DefaultWidth : DocumentOptions.TabSize;
}

std::int32_t RecordCount(std::int32_t size)
{
    const std::int32_t length = RecordLength();
    const std::int32_t count = size / length + (size % length != 0);
    return std::max(count, 1);
}

void IndexLines()
{
    Document.BlockCount = 0;
    Document.LineCount = 0;
    Document.LineTable[0] = 0;
    Document.LongestLine = 0;
    Document.LastLineOpen = false;
    Document.CurBlock = 0;
    Document.CurBlockBytes = BlockBytes;
    // A full block that ends the file is not followed by another: there is nothing to read in it, and
    // a file of one block must still be in the working buffer when its handle is closed.
    while (Document.CurBlockBytes == BlockBytes &&
           static_cast<std::int64_t>(Document.CurBlock) * BlockBytes < Document.FileSize) {
        LoadBlock(Document.CurBlock + 1);
        if (Document.CurBlockBytes > 0) {
            ++Document.BlockCount;
            CountBlockLines(Document.WorkData, Document.CurBlockBytes, Document.CurBlock);
        }
        if (!Document.IsText) {
            return;
        }
    }
    Document.BlockCount = std::max(Document.BlockCount, 1);
    if (Document.LastLineOpen) {
        Document.LineTable[Document.BlockCount + 1] = 1;
        ++Document.LineCount;
    }
}

void CountBlockLines(const std::uint8_t* bytes, std::int32_t count, std::int32_t block)
{
    // An LF that opens a block takes one count off the block before. That is meant for a CR LF pair
    // split by the boundary, but any LF there does so, deliberately: line numbers noted from one run
    // must mean the same lines in the next.
    if (bytes[0] == '\n' && block >= 2) {
        --Document.LineTable[block - 1];
        --Document.LineCount;
    }
    static_assert(BlockBytes <= LargestScan);
    const LineScan scan = ScanLines(bytes, count, Document.LongestLine);
    Document.LongestLine = scan.LongestRun;
    if (Document.LongestLine > DocumentOptions.MaxLineLen) {
        Document.IsText = false;
        Document.LongestLine = RecordLength();
        return;
    }
    Document.LineTable[block] = static_cast<std::uint32_t>(scan.LineEnds);
    Document.LineCount += scan.LineEnds;
    Document.LastLineOpen = !IsLineEnd(bytes[count - 1]);
}

std::int32_t FindBlockOfLine(std::int32_t line)
{
    const std::uint32_t wanted = static_cast<std::uint32_t>(line);
    std::int32_t block = 1;
    std::uint32_t linesBefore = 0;
    while (block < Document.BlockCount && wanted > linesBefore + Document.LineTable[block] + 1) {
        linesBefore += Document.LineTable[block];
        ++block;
    }
    Document.BlockFirstLine = static_cast<std::int32_t>(linesBefore) + 1;
    return block;
}

void SeekLine(std::int32_t line, std::int32_t offset)
{
    if (Document.LineCount == 0) {
        return; // no document
    }
    if (line < 1) {
        SeekByte(offset);
    } else if (Document.IsText) {
        SeekTextLine(std::min(line, Document.LineCount));
    } else {
        SeekByte(static_cast<std::int64_t>(line - 1) * RecordLength());
    }
}

void SkipLines(std::int32_t count)
{
    const std::int32_t block = Document.CurBlock;
    for (std::int32_t i = 0; i < count; ++i) {
        const std::int32_t distance = Document.CurLine - Document.BlockFirstLine;
        // In a file rewritten since it was indexed the lines may run on into the next block.
        const bool inBlock = Document.CurBlock == block;
        if (inBlock && distance % SampleInterval == 0 && distance / SampleInterval < SamplesPerBlock) {
            LineSamples()[distance / SampleInterval] = static_cast<std::uint32_t>(Document.CurOffset);
        }
        PassTextLine(false);
    }
}

LineText ReadLine()
{
    if (Document.IsText) {
        return FinishLine(PassTextLine(true));
    }
    return FinishLine(ReadBytes(RecordLength()).Length);
}

LineText ReadLineText(std::int32_t line)
{
    if (line != Document.CurLine) {
        SeekLine(line, 0);
    }
    const LineText raw = ReadLine();
    return DocumentOptions.Ptabs != 0 ? ExpandTabs(raw) : raw;
}

LineText ReadBytes(std::int32_t count)
{
    const std::int32_t wanted = std::clamp(count, 0, LineBufferBytes);
    Document.CurLine = 0;
    std::int32_t length = 0;
    std::int32_t offset = Document.CurOffset;
    while (length < wanted && Document.LineCount > 0) {
        if (offset >= Document.CurBlockBytes) {
            if (!LoadNextBlock()) {
                LineBuffer[length] = '\0';
                return {LineBuffer, length}; // the read position stays where the last block's data was entered
            }
            offset = 0;
        }
        const std::int32_t taken = std::min(wanted - length, Document.CurBlockBytes - offset);
        length = KeepBytes(length, offset, taken);
        offset += taken;
    }
    Document.CurOffset = offset;
    LineBuffer[length] = '\0';
    return {LineBuffer, length};
}

void SetFixedLineLength(std::int32_t length)
{
    DocumentOptions.FixedLineLen = length;
    if (Document.LineCount > 0 && !Document.IsText) {
        Document.LineCount = RecordCount(Document.FileSize);
        Document.LongestLine = RecordLength();
    }
}

std::int32_t HexRowOfLine(std::int32_t line)
{
    SeekLine(line, 0);
    return Document.CurBlock > 0 ? (OffsetOfBlock(Document.CurBlock) + Document.CurOffset) / 16 : 0;
}
