// Skipping what cannot hold a needle: the blocks' bytes are looked at as they lie in memory, and only the
// lines or places where the needle might stand are left to be read.
//
// A needle may go on from one block in the next: what crosses into another block is a candidate whatever it
// holds, unless both sides of the boundary have been looked at.
#pragma once

#include "document/byte_scan.h"

#include <cstdint>

// The first line from line on that may hold the needle, and the read position goes there; behind the last
// line when there is none. Only from where the read position is, as after reading the line before: if it is
// elsewhere in a text, line itself.
std::int32_t NextCandidateLine(const Needle& needle, std::int32_t line);

// The last line up to line that may hold the needle; 0 when there is none. The read position may be anywhere
// then.
std::int32_t PreviousCandidateLine(const Needle& needle, std::int32_t line);

// The first offset from offset on where the needle may begin; no needle stands between the two.
std::int32_t NextCandidateOffset(const Needle& needle, std::int32_t offset);

// The offset just behind the last needle that ends at offset or before it, but not above offset; 0 when there
// is none.
std::int32_t PreviousCandidateOffset(const Needle& needle, std::int32_t offset);
