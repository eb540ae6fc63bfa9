#include "document/candidates.h"

#include "document/block_cache.h"
#include "document/document_state.h"
#include "document/line_index.h"
#include "document/line_scan.h"

#include <algorithm>

namespace {

std::int32_t BlockStart()
{
    return OffsetOfBlock(Document.CurBlock);
}

// In the working buffer.
std::int32_t LineStart(std::int32_t from, std::int32_t index)
{
    return FindLineStart(Document.WorkData, from, index);
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
        return Document.CurBlock < Document.BlockCount ? line : NoLine();
    }
    const std::int32_t hit = FindNeedle(needle, Document.WorkData, Document.CurOffset, Document.CurBlockBytes);
    const std::int32_t start = LineStart(Document.CurOffset, hit >= 0 ? hit : Document.CurBlockBytes - 1);
    Document.CurLine += CountLineEnds(Document.WorkData + Document.CurOffset, start - Document.CurOffset);
    Document.CurOffset = start;
    return Document.CurLine;
}

// Whether line is the last one that begins in block, going by the counts: it goes on into the next block.
bool EndsBlock(std::int32_t line, std::int32_t block)
{
    return block < Document.BlockCount &&
           line == Document.BlockFirstLine + static_cast<std::int32_t>(Document.LineTable[block]);
}

// The last line up to line that may hold the needle and begins in block, which is line's; 0 when there is none.
std::int32_t PreviousInBlock(const Needle& needle, std::int32_t line, std::int32_t block)
{
    SeekLine(line, 0);
    if (Document.CurBlock != block) {
        // The line begins where the next block does; or else the block has become too short for it.
        return EndsBlock(line, block) ? line : 0;
    }
    const std::uint8_t* const bytes = Document.WorkData;
    const std::int32_t start = Document.CurOffset;
    const std::int32_t end = FindLineEnd(bytes, start, Document.CurBlockBytes);
    const bool goesOn = end == Document.CurBlockBytes && block < Document.BlockCount;
    if (goesOn || line - Document.BlockFirstLine != CountLineEnds(bytes, start)) {
        return line;
    }
    const std::int32_t hit = FindLastNeedle(needle, bytes, 0, end);
    if (hit < 0) {
        return 0;
    }
    const std::int32_t hitStart = LineStart(0, hit);
    return line - CountLineEnds(bytes + hitStart, start - hitStart);
}

// Goes from a block to the one before; whether a needle lies across the boundary.
bool StepBackAcross(const Needle& needle)
{
    std::uint8_t seam[2 * MaxNeedle];
    const std::int32_t reach = needle.Length - 1;
    const std::int32_t behind = std::min(reach, Document.CurBlockBytes);
    std::copy_n(Document.WorkData, behind, seam + reach);
    LoadBlock(Document.CurBlock - 1);
    Document.CurLine = 0; // the read position is the block's start, in whichever line
    const std::int32_t before = std::min(reach, Document.CurBlockBytes);
    std::copy_n(Document.WorkData + Document.CurBlockBytes - before, before, seam + reach - before);
    return FindNeedle(needle, seam, reach - before, reach + behind) >= 0;
}

// Block after block. Once a block has been looked through from its start, so has the end of the line that
// goes on into it, and the block before can be looked through as a whole; the line that the search enters by
// has to be found first.
std::int32_t PreviousTextLine(const Needle& needle, std::int32_t line)
{
    for (bool nextLookedThrough = false;; nextLookedThrough = true) {
        const std::int32_t block = FindBlockOfLine(line);
        std::int32_t found = 0;
        if (!nextLookedThrough || Document.CurBlock != block + 1 || !EndsBlock(line, block)) {
            found = PreviousInBlock(needle, line, block);
        } else if (StepBackAcross(needle)) {
            found = line;
        } else {
            const std::int32_t hit = FindLastNeedle(needle, Document.WorkData, 0, Document.CurBlockBytes);
            found = hit >= 0 ? Document.BlockFirstLine + CountLineEnds(Document.WorkData, LineStart(0, hit)) : 0;
        }
        if (found != 0) {
            return std::min(found, line); // a line that the counts do not know is passed over
        }
        if (block == 1 || Document.CurBlockBytes == 0) {
            return 0; // all is looked through, or the file has shrunk
        }
        line = Document.BlockFirstLine; // it began in the block before
    }
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
