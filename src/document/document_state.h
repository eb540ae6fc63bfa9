// The one open document: its file, its blocks in memory and its lines.
//
// A file is read in blocks of BlockBytes, numbered from 1; byte position p lies in block
// p / BlockBytes + 1 at in-block offset p % BlockBytes. One block is in the working buffer, up to
// five more are parked in cache slots. The read position (CurBlock, CurOffset) is shared by every
// reader, so every reader positions before it reads.
#pragma once

#include "document/port.h"

#include <cstdint>

constexpr std::int32_t BlockBytes = 30000;

// Behind the data of a block stand its line samples: sample i is the in-block offset at which line
// BlockFirstLine + SampleInterval * i starts; 0 = not known yet. They live in the block's own memory
// object, so that a parked block keeps them.
constexpr std::int32_t SamplesPerBlock = 200;
constexpr std::int32_t SampleInterval = 10;
constexpr std::int32_t BlockObjectBytes = BlockBytes + SamplesPerBlock * 4;

// The largest text in bytes, whatever the settings say: 4000 blocks. The line-count table has an entry
// for each of them, entry 0, and one for an unterminated last line.
constexpr std::int32_t LargestTextBytes = 120000000;
constexpr std::int32_t LineTableEntries = LargestTextBytes / BlockBytes + 2;

constexpr int MaxCacheSlots = 5;

struct CacheSlot {
    std::int32_t BlockNumber; // 0 = empty
    std::int32_t ByteCount;   // valid data bytes
    MemoryHandle Memory;      // BlockObjectBytes, discardable while parked; nullptr = none
};

struct DocumentState {
    int FileHandle = 0;            // 0 = closed
    std::int32_t FileSize = 0;     // bytes
    std::int32_t FileTime = 0;     // modification, seconds since 1970; compared on reopen
    bool IsText = false;           // lines indexed, or else records of a fixed length
    std::int32_t LineCount = 0;    // at least 1 once open
    std::int32_t MaxTextBytes = 0; // a larger file is not text
    std::int32_t BlockCount = 0;
    std::int32_t CurBlock = 0;      // block in the working buffer; 0 = it holds nothing usable
    std::int32_t CurBlockBytes = 0; // valid data bytes in the working buffer
    std::int32_t CurOffset = 0;     // read position inside the working buffer
    std::int32_t BufferCount = -1;  // cache slots in use, 0..MaxCacheSlots; -1 = not read yet
    std::int32_t NextVictim = 0;    // round-robin cursor over the slots, 1..BufferCount

    MemoryHandle WorkMemory = nullptr; // the working buffer, locked while it exists
    std::uint8_t* WorkData = nullptr;  // its bytes: data, then samples
    MemoryHandle LineTableMemory = nullptr;
    std::uint32_t* LineTable = nullptr;      // entry b: line ends counted in block b; entry 0 is 0
    CacheSlot Slots[MaxCacheSlots + 1] = {}; // numbered from 1

    std::int32_t CurLine = 0;        // number, from 1, of the line at the read position; 0 = not known
    std::int32_t BlockFirstLine = 1; // line taken for offset 0 of the block the last SeekLine settled on
    // Where the last SeekLine by line number settled, for finding its neighbours.
    std::int32_t SoughtBlock = 0; // 0 = nowhere
    std::int32_t SoughtLine = 0;
    std::int32_t SoughtOffset = 0; // in the block

    std::int32_t LongestLine = 0; // bytes; the record length for a non-text document
    bool LastLineOpen = false;    // while indexing: the last byte seen was not a line end
    bool ReadShort = false;       // a block could not be read whole, since somebody cleared this
};

extern DocumentState Document;

// Settings, as read from the settings file: unchecked, so their users bound them.
struct DocumentSettings {
    std::int32_t Ptabs = 0;         // expand tabs
    std::int32_t TabSize = 8;       // columns
    std::int32_t FixedLineLen = 75; // bytes of a line of a non-text document
    std::int32_t MaxTextSize = 12;  // megabytes
    std::int32_t MaxLineLen = 512;  // a longer line makes a document non-text; clamped to 80..1024 on load
};

extern DocumentSettings DocumentOptions;

// How the document speaks to the rest of the program; handed in once at start.
struct DocumentHooks {
    void (*AnnounceReading)();         // a block is about to be read from the file
    std::int32_t (*ReadBufferCount)(); // the Buffers setting, asked for once
};

extern DocumentHooks DocumentCalls;

// The settings made safe to compute with.
std::int32_t RecordLength(); // FixedLineLen, 75 when it is below 1, at most MaxRecordLength
std::int32_t TabWidth();     // TabSize, 8 when it is below 1
