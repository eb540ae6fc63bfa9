#include "support/plain_document.h"

#include <algorithm>

namespace {

constexpr std::int32_t BytesPerBlock = 30000;
constexpr std::size_t LongestExpandedLine = 1024;

} // namespace

PlainDocument::PlainDocument(const PlainOptions& options)
    : Options(options), Slots(static_cast<std::size_t>(options.CacheSlots))
{
}

std::int32_t PlainDocument::Size() const
{
    return static_cast<std::int32_t>(Content.size());
}

std::int32_t PlainDocument::BytesIn(std::int32_t block) const
{
    return std::clamp(Size() - (block - 1) * BytesPerBlock, 0, BytesPerBlock);
}

std::uint8_t PlainDocument::ByteAt(std::int32_t offset) const
{
    return CurIsGap ? 0 : Content[static_cast<std::size_t>((CurBlock - 1) * BytesPerBlock + offset)];
}

bool PlainDocument::AtDataEnd() const
{
    return CurOffset >= BytesIn(CurBlock);
}

void PlainDocument::Open(const Bytes& content)
{
    Content = content;
    std::fill(Slots.begin(), Slots.end(), Slot{});
    CurIsGap = false;
    IsText = true;
    LineEnds.assign(static_cast<std::size_t>(Size() / BytesPerBlock + 3), 0);
    if (Size() > Options.MaxTextBytes) {
        IsText = false;
        CurBlock = 2;
        CurIsGap = true;
    } else if (Size() == 0) {
        BlockCount = 1;
        LineCount = 0;
        CurBlock = 1;
        LongestLine = 0;
    } else {
        Index();
    }
    if (!IsText) {
        BlockCount = Size() / BytesPerBlock + 1;
        LineCount = (Size() + Options.RecordLength - 1) / Options.RecordLength;
        LongestLine = Options.RecordLength;
    }
    if (LineCount == 0) {
        LineCount = 1;
        LineEnds[1] = 1;
    }
    Walked.assign(static_cast<std::size_t>(LineCount) + 1, Place{});
    CurLine = 1;
    if (CurBlock != 1) {
        LoadBlock(1);
    }
    CurOffset = 0;
}

void PlainDocument::Index()
{
    BlockCount = 0;
    LineCount = 0;
    LongestLine = 0;
    LastLineOpen = false;
    CurBlock = 0;
    for (std::int32_t block = 1; BytesIn(block) > 0; ++block) {
        LoadBlock(block);
        ++BlockCount;
        CountBlock(block);
        if (!IsText) {
            return;
        }
    }
    LineCount += LastLineOpen;
}

void PlainDocument::CountBlock(std::int32_t block)
{
    const std::size_t index = static_cast<std::size_t>(block);
    if (ByteAt(0) == '\n' && block >= 2) {
        --LineEnds[index - 1];
        --LineCount;
    }
    std::int32_t column = 0;
    std::int32_t ends = 0;
    for (std::int32_t i = 0; i < BytesIn(block); ++i) {
        const std::uint8_t byte = ByteAt(i);
        if (byte == '\r' || byte == '\n') {
            if (byte == '\r' && i + 1 < BytesIn(block) && ByteAt(i + 1) == '\n') {
                ++i;
            }
            ++LineCount;
            ++ends;
            column = 0;
            LastLineOpen = false;
            continue;
        }
        LastLineOpen = true;
        ++column;
        LongestLine = std::max(LongestLine, column);
        if (column > Options.MaxLineLen) {
            IsText = false;
            return;
        }
    }
    LineEnds[index] = ends;
}

void PlainDocument::LoadBlock(std::int32_t block)
{
    if (CurBlock != 0) {
        Swap(block);
    }
    if (CurBlock == 0) {
        ++Readings;
        CurBlock = block;
        CurIsGap = false;
    }
    CurOffset = 0;
}

void PlainDocument::Swap(std::int32_t block)
{
    if (Slots.empty()) {
        CurBlock = 0;
        return;
    }
    std::size_t chosen = 0;
    while (chosen < Slots.size() && Slots[chosen].Block != 0 && Slots[chosen].Block != block) {
        ++chosen;
    }
    if (chosen == Slots.size()) {
        ++NextVictim;
        if (NextVictim > Slots.size()) {
            NextVictim = 1;
        }
        chosen = NextVictim - 1;
    }
    Slot& slot = Slots[chosen];
    if (slot.Discarded) {
        slot = Slot{};
    }
    if (!slot.HasObject && NoMemory) {
        CurBlock = 0;
        return;
    }
    const bool hit = slot.Block == block;
    const bool gap = slot.IsGap;
    slot = {CurBlock, true, false, CurIsGap};
    CurBlock = hit ? block : 0;
    CurIsGap = hit && gap;
}

void PlainDocument::SeekPosition(std::int64_t position)
{
    CurLine = 0;
    const std::int32_t inside = static_cast<std::int32_t>(std::clamp<std::int64_t>(position, 0, Size()));
    const std::int32_t block = std::min(inside / BytesPerBlock + 1, BlockCount);
    if (block != CurBlock) {
        LoadBlock(block);
    }
    CurOffset = inside - (block - 1) * BytesPerBlock;
}

void PlainDocument::SeekLine(std::int32_t line, std::int64_t offset)
{
    if (line < 1) {
        SeekPosition(offset);
        return;
    }
    if (!IsText) {
        SeekPosition(static_cast<std::int64_t>(line - 1) * Options.RecordLength);
        return;
    }
    const std::int32_t wanted = std::min(line, LineCount);
    std::int32_t block = 1;
    std::int64_t before = 0;
    while (block < BlockCount && wanted > before + LineEnds[static_cast<std::size_t>(block)] + 1) {
        before += LineEnds[static_cast<std::size_t>(block)];
        ++block;
    }
    if (block != CurBlock) {
        LoadBlock(block);
    }
    CurOffset = 0;
    CurLine = static_cast<std::int32_t>(before) + 1;
    const Place known = Walked[static_cast<std::size_t>(wanted)];
    if (known.Block != 0) {
        if (known.Block != CurBlock) {
            LoadBlock(known.Block);
        }
        CurOffset = known.Offset;
        CurLine = wanted;
    }
    while (CurLine < wanted) {
        ReadLine();
        Walked[static_cast<std::size_t>(CurLine)] = {CurBlock, CurOffset};
    }
}

std::string PlainDocument::ReadLine()
{
    std::string line;
    if (!IsText) {
        line = ReadBytes(Options.RecordLength);
        std::replace(line.begin(), line.end(), '\0', ' ');
        return line;
    }
    for (;;) {
        if (AtDataEnd()) {
            if (CurBlock >= BlockCount) {
                break;
            }
            LoadBlock(CurBlock + 1);
            continue;
        }
        const std::uint8_t byte = ByteAt(CurOffset);
        ++CurOffset;
        if (byte == '\r' || byte == '\n') {
            if (AtDataEnd() && CurBlock < BlockCount) {
                LoadBlock(CurBlock + 1);
            }
            if (byte == '\r' && !AtDataEnd() && ByteAt(CurOffset) == '\n') {
                ++CurOffset;
            }
            break;
        }
        line += byte != 0 ? static_cast<char>(byte) : ' ';
    }
    if (CurLine != 0) {
        ++CurLine;
    }
    return line;
}

std::string PlainDocument::ReadLineText(std::int32_t line)
{
    if (line != CurLine) {
        SeekLine(line, 0);
    }
    const std::string raw = ReadLine();
    if (!Options.ExpandTabs) {
        return raw;
    }
    std::string expanded;
    for (const char character : raw) {
        if (character != '\t') {
            expanded += character;
            continue;
        }
        const std::size_t width = static_cast<std::size_t>(Options.TabWidth);
        const std::size_t remainder = expanded.size() % width;
        // No more than what is cut off below: a tab may be wider than any memory.
        expanded.append(std::min(remainder != 0 ? remainder : width, LongestExpandedLine + 1), ' ');
        if (expanded.size() > LongestExpandedLine) {
            break;
        }
    }
    return expanded.substr(0, LongestExpandedLine);
}

std::string PlainDocument::ReadBytes(std::int32_t count)
{
    std::string read;
    CurLine = 0;
    std::int32_t offset = CurOffset;
    while (static_cast<std::int32_t>(read.size()) < count) {
        if (offset < BytesIn(CurBlock)) {
            read += static_cast<char>(ByteAt(offset));
            ++offset;
            continue;
        }
        if (CurBlock >= BlockCount) {
            return read;
        }
        LoadBlock(CurBlock + 1);
        offset = 0;
    }
    CurOffset = offset;
    return read;
}

std::int32_t PlainDocument::HexRowOfLine(std::int32_t line)
{
    SeekLine(line, 0);
    return ((CurBlock - 1) * BytesPerBlock + CurOffset) / 16;
}

std::int64_t PlainDocument::FirstLineOf(std::int32_t block) const
{
    std::int64_t line = 1;
    for (std::int32_t before = 1; before < block; ++before) {
        line += LineEnds[static_cast<std::size_t>(before)];
    }
    return line;
}

void PlainDocument::DiscardParked()
{
    for (Slot& slot : Slots) {
        slot.Discarded = slot.HasObject;
    }
}

void PlainDocument::SetNoMemory(bool noMemory)
{
    NoMemory = noMemory;
}
