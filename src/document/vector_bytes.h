// Sixteen bytes at a time: every processor that runs a supported Windows has SSE2.
#pragma once

#include <cstdint>
#include <emmintrin.h>

constexpr std::int32_t VectorBytes = 16;

inline __m128i LoadBytes(const std::uint8_t* bytes)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}
