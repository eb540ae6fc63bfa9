// Lines of the document, found by number.
//
// A text document is navigated by the line ends counted in each block and, within a block, by samples
// of every tenth line's start that fill in as lines are skipped. A non-text document is cut into
// records of RecordLength() bytes: line n is the record at byte (n - 1) * RecordLength().
// Lines count from 1. Every reader of the file's text goes through these operations.
#pragma once

#include <cstdint>

// The longest text line that is kept: two blocks may each hold a part of MaxLineLen bytes, at most
// 1024. Bytes beyond it (a file rewritten while it is shown) are passed over.
constexpr std::int32_t LineBufferBytes = 2048;

// A record of a non-text document is never longer.
constexpr std::int32_t MaxRecordLength = 1024;

// A tab-expanded line is cut here.
constexpr std::int32_t ExpandedLineBytes = 1024;

// Text in one of this module's buffers, zero-terminated behind Length bytes; valid, and free to be
// translated in place, until the next read.
struct LineText {
    char* Text;
    std::int32_t Length;
};

// Reads every block once, counts its line ends and measures its lines; clears IsText when a part of
// a line within one block is longer than MaxLineLen.
void IndexLines();

// Counts block's line ends (count bytes at bytes) into the line-count table and LineCount.
void CountBlockLines(const std::uint8_t* bytes, std::int32_t count, std::int32_t block);

// The block in which line (1..LineCount) of a text starts, going by the counts; BlockFirstLine is then the
// block's. The block need not be in memory, and the read position stays.
std::int32_t FindBlockOfLine(std::int32_t line);

// Sets the read position: to the start of line when it is 1 or more, else to byte offset. A line or
// an offset past the end of the file is taken as the end.
void SeekLine(std::int32_t line, std::int32_t offset);

// Reads count lines forward, sampling their starts.
void SkipLines(std::int32_t count);

// Reads the line at the read position and steps past its end. A zero byte reads as a space. At the
// end of the file the line is empty.
LineText ReadLine();

// Reads line, positioning on it unless the read position is already there, and expands its tabs when
// that is switched on.
LineText ReadLineText(std::int32_t line);

// Reads the next count bytes (at most LineBufferBytes) at the read position, crossing blocks; fewer at
// the end of the file.
LineText ReadBytes(std::int32_t count);

// Sets the record length; an open non-text document is measured anew.
void SetFixedLineLength(std::int32_t length);

// The 16-byte row, from 0, in which line starts.
std::int32_t HexRowOfLine(std::int32_t line);

// Lines of a non-text document of size bytes; at least 1.
std::int32_t RecordCount(std::int32_t size);
