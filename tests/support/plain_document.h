// The document once more, as plain as can be: the whole file in memory, walked byte by byte, without line
// samples and without any search. What it says is what the real one must say.
//
// Of the cache it keeps only which block stands where: enough to tell when a block is read from the file.
#pragma once

#include "support/test_port.h"

#include <cstdint>
#include <string>
#include <vector>

struct PlainOptions {
    std::int32_t CacheSlots = 5;
    std::int32_t MaxLineLen = 512;
    std::int64_t MaxTextBytes = 12582912;
    std::int32_t RecordLength = 75;
    std::int32_t TabWidth = 8;
    bool ExpandTabs = false;
};

class PlainDocument {
public:
    explicit PlainDocument(const PlainOptions& options);

    // Opens content; the document before is closed.
    void Open(const Bytes& content);

    void SeekLine(std::int32_t line, std::int64_t offset);
    std::string ReadLine();
    std::string ReadLineText(std::int32_t line);
    std::string ReadBytes(std::int32_t count);
    std::int32_t HexRowOfLine(std::int32_t line);

    // The line that stands at the start of block, going by the counts.
    std::int64_t FirstLineOf(std::int32_t block) const;

    std::int32_t Size() const;

    void DiscardParked();
    void SetNoMemory(bool noMemory);

    PlainOptions Options;
    bool IsText = false;
    std::int32_t LineCount = 0;
    std::int32_t LongestLine = 0;
    std::int32_t BlockCount = 0;
    std::int32_t CurLine = 0;
    std::int32_t CurBlock = 0;
    std::int32_t CurOffset = 0;
    int Readings = 0; // blocks read from the file

private:
    struct Slot {
        std::int32_t Block = 0;
        bool HasObject = false;
        bool Discarded = false;
        bool IsGap = false; // stands for block 2 of a file over the text limit: zero bytes
    };

    struct Place {
        std::int32_t Block = 0; // 0 = not known
        std::int32_t Offset = 0;
    };

    std::int32_t BytesIn(std::int32_t block) const;
    std::uint8_t ByteAt(std::int32_t offset) const;
    bool AtDataEnd() const;
    void CountBlock(std::int32_t block);
    void Index();
    void LoadBlock(std::int32_t block);
    void Swap(std::int32_t block);
    void SeekPosition(std::int64_t position);

    Bytes Content;
    std::vector<std::int64_t> LineEnds; // by block
    std::vector<Place> Walked;          // by line: where SeekLine came to, so that it is walked to once
    bool LastLineOpen = false;
    std::vector<Slot> Slots;
    std::size_t NextVictim = 0;
    bool CurIsGap = false;
    bool NoMemory = false;
};
