// Finding a run of bytes among many, where a byte may stand for another, as a letter for its capital.
#pragma once

#include <array>
#include <cstdint>

// For each byte, what it reads as.
using ByteTable = std::array<std::uint8_t, 256>;

constexpr std::int32_t MaxNeedle = 32;

struct Needle {
    std::int32_t Length = 0;             // 0 = nothing is known about the bytes
    bool Possible = true;                // false: there is a position that no byte can fill
    ByteTable Reads = {};                // of each byte
    std::uint8_t Wanted[MaxNeedle] = {}; // what each position must read as

    // Two positions that only one or two byte values can fill: only places where both are right are compared
    // in full. Without such positions every place is.
    struct Probe {
        std::int32_t Position;
        std::uint8_t Values[2];
    };
    bool HasProbes = false;
    Probe Probes[2] = {};
};

// length is 0 to MaxNeedle.
Needle MakeNeedle(const ByteTable& reads, const char* wanted, std::int32_t length);

// Index of the first (or last) place within [start, end) of bytes where the needle stands, all of it; -1 when
// there is none. Its length is at least 1.
std::int32_t FindNeedle(const Needle& needle, const std::uint8_t* bytes, std::int32_t start, std::int32_t end);
std::int32_t FindLastNeedle(const Needle& needle, const std::uint8_t* bytes, std::int32_t start, std::int32_t end);
