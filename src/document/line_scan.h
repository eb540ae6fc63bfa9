// Finding line ends in a run of bytes. A line ends at LF, at CR, or at CR LF.
#pragma once

#include <cstdint>

inline bool IsLineEnd(std::uint8_t byte)
{
    return byte == '\r' || byte == '\n';
}

// Line ends among count bytes. A CR LF pair counts once; a CR that is the last byte counts.
std::int32_t CountLineEnds(const std::uint8_t* bytes, std::int32_t count);

// The longest run of bytes that are neither CR nor LF, if it is longer than atLeast; else atLeast.
// Looks at few bytes when no run is longer.
std::int32_t LongestRun(const std::uint8_t* bytes, std::int32_t count, std::int32_t atLeast);

// Both at once: the line ends among count bytes (at most LargestScan), and LongestRun of them. The way
// to measure a block: faster than one after the other where lines are short.
struct LineScan {
    std::int32_t LineEnds;
    std::int32_t LongestRun;
};

constexpr std::int32_t LargestScan = 30000;

LineScan ScanLines(const std::uint8_t* bytes, std::int32_t count, std::int32_t atLeast);

// Index of the first CR or LF from start on; count when there is none.
std::int32_t FindLineEnd(const std::uint8_t* bytes, std::int32_t start, std::int32_t count);

// Where the line that holds the byte at index, or ends with it, starts; from when it began there or before.
std::int32_t FindLineStart(const std::uint8_t* bytes, std::int32_t from, std::int32_t index);

// Index of the last CR or LF in [start, end); start - 1 when there is none.
std::int32_t FindLastLineEnd(const std::uint8_t* bytes, std::int32_t start, std::int32_t end);
