#include "document/candidates.h"

#include "document/document_state.h"
#include "document/line_index.h"
#include "document/line_scan.h"

#include <algorithm>

namespace {

std::int32_t BlockStart()
{
    return (Document.CurBlock - 1) * BlockBytes;
}

bool AtDataEnd()
{
    return Document.CurOffset >= Document.CurBlockBytes;
}

// Where the line that holds the byte at index, or ends with it, starts; no further back than at from.
std::int32_t LineStart(std::int32_t from, std::int32_t index)
{
    const std::uint8_t* const bytes = Document.WorkData;
    const bool pair = bytes[index] == '\n' && index > from && bytes[index - 1] == '\r';
    return FindLastLineEnd(bytes, from, pair ? index - 1 : index) + 1;
}

std::int32_t NoLine()
{
    return Document.LineCount + 1;
}

std::int32_t NextTextLine(const Needle& needle, std::int32_t line)
{
    if (Document.CurLine != line) {
        return line;
    }
    if (AtDataEnd()) {
        return NoLine(); // reading has gone on to the last block already
    }
    const std::int32_t hit = FindNeedle(needle, Document.WorkData, Document.CurOffset, Document.CurBlockBytes);
    const std::int32_t start = LineStart(Document.CurOffset, hit >= 0 ? hit : Document.CurBlockBytes - 1);
    Document.CurLine += CountLineEnds(Document.WorkData + Document.CurOffset, start - Document.CurOffset);
    Document.CurOffset = start;
    return Document.CurLine;
}

std::int32_t PreviousTextLine(const Needle& needle, std::int32_t line)
{
    SeekLine(line, 0);
    const std::uint8_t* const bytes = Document.WorkData;
    const std::int32_t start = Document.CurOffset;
    // A line that begins exactly where a block does is found by way of the block before.
    const bool inBlock = line - Document.BlockFirstLine == CountLineEnds(bytes, start);
    const std::int32_t end = FindLineEnd(bytes, start, Document.CurBlockBytes);
    const bool goesOn = end == Document.CurBlockBytes && Document.CurBlock < Document.BlockCount;
    if (!inBlock || goesOn) {
        return line;
    }
    const std::int32_t hit = FindLastNeedle(needle, bytes, 0, end);
    if (hit < 0) {
        return Document.CurBlock > 1 ? Document.BlockFirstLine : 0; // that one began in the block before
    }
    const std::int32_t hitStart = LineStart(0, hit);
    return line - CountLineEnds(bytes + hitStart, start - hitStart);
}

std::int32_t RecordAt(std::int32_t offset)
{
    return (BlockStart() + offset) / RecordLength() + 1;
}

std::int32_t NextRecord(const Needle& needle, std::int32_t line)
{
    SeekLine(line, 0);
    if (AtDataEnd()) {
        return line;
    }
    const std::int32_t hit = FindNeedle(needle, Document.WorkData, Document.CurOffset, Document.CurBlockBytes);
    return RecordAt(hit >= 0 ? hit : Document.CurBlockBytes - 1);
}

std::int32_t PreviousRecord(const Needle& needle, std::int32_t line)
{
    SeekLine(line, 0);
    const std::int32_t end = Document.CurOffset + RecordLength();
    if (end > Document.CurBlockBytes) {
        return line;
    }
    const std::int32_t hit = FindLastNeedle(needle, Document.WorkData, 0, end);
    if (hit < 0) {
        return Document.CurBlock > 1 ? RecordAt(0) : 0;
    }
    return RecordAt(hit);
}

} // namespace

std::int32_t NextCandidateLine(const Needle& needle, std::int32_t line)
{
    return Document.IsText ? NextTextLine(needle, line) : NextRecord(needle, line);
}

std::int32_t PreviousCandidateLine(const Needle& needle, std::int32_t line)
{
    return Document.IsText ? PreviousTextLine(needle, line) : PreviousRecord(needle, line);
}

std::int32_t NextCandidateOffset(const Needle& needle, std::int32_t offset)
{
    SeekLine(0, offset);
    if (AtDataEnd()) {
        return offset;
    }
    const std::int32_t hit = FindNeedle(needle, Document.WorkData, Document.CurOffset, Document.CurBlockBytes);
    if (hit >= 0) {
        return BlockStart() + hit;
    }
    return std::max(offset, BlockStart() + Document.CurBlockBytes - (needle.Length - 1));
}

std::int32_t PreviousCandidateOffset(const Needle& needle, std::int32_t offset)
{
    SeekLine(0, offset);
    const std::int32_t end = std::min(Document.CurOffset + 1, Document.CurBlockBytes);
    const std::int32_t hit = FindLastNeedle(needle, Document.WorkData, 0, end);
    if (hit < 0) {
        return Document.CurBlock > 1 ? std::min(offset, BlockStart() + needle.Length - 1) : 0;
    }
    return std::min(offset, BlockStart() + hit + needle.Length);
}
