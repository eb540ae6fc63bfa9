// The file that holds one damaged copy after the other: in memory, or, for the program's own port, on the
// disk.
#pragma once

#include <cstdint>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

// Makes content the sample's; returns its path.
const char* PutSample(const Bytes& content);
