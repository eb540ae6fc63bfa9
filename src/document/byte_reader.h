// Numbers in the headers of files, little-endian, out of bytes nobody vouches for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

using ByteSpan = std::span<const std::uint8_t>;

// Whether count bytes stand at offset.
constexpr bool HasBytes(ByteSpan bytes, std::uint64_t offset, std::uint64_t count)
{
    return offset <= bytes.size() && count <= bytes.size() - offset;
}

// The bytes at offset, at most count; fewer or none where the data ends.
constexpr ByteSpan BytesAt(ByteSpan bytes, std::uint64_t offset, std::uint64_t count)
{
    if (offset >= bytes.size()) {
        return {};
    }
    const std::uint64_t left = bytes.size() - offset;
    return bytes.subspan(static_cast<std::size_t>(offset), static_cast<std::size_t>(count < left ? count : left));
}

// A byte beyond the data reads as 0.
constexpr std::uint8_t ReadU8(ByteSpan bytes, std::uint64_t offset)
{
    return offset < bytes.size() ? bytes[static_cast<std::size_t>(offset)] : std::uint8_t{0};
}

constexpr std::uint16_t ReadU16(ByteSpan bytes, std::uint64_t offset)
{
    return static_cast<std::uint16_t>(ReadU8(bytes, offset) | (ReadU8(bytes, offset + 1) << 8));
}

constexpr std::uint32_t ReadU32(ByteSpan bytes, std::uint64_t offset)
{
    return ReadU16(bytes, offset) | (static_cast<std::uint32_t>(ReadU16(bytes, offset + 2)) << 16);
}
