#include "document/line_scan.h"

#include "document/vector_bytes.h"

#include <bit>

// Opening a file is one pass of these functions over all of it, so they decide how fast a large file opens.

namespace {

// 0xFF in each byte that is a CR or an LF.
__m128i LineEndBytes(__m128i bytes)
{
    return _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('\n')), _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\r')));
}

// Bit i set: byte i is a CR or an LF.
std::uint32_t LineEndMask(const std::uint8_t* bytes)
{
    return static_cast<std::uint32_t>(_mm_movemask_epi8(LineEndBytes(LoadBytes(bytes))));
}

// 0xFF in each byte that ends a line: an LF, or a CR that no LF follows. Reads one byte past the vector.
__m128i CountedEnds(const std::uint8_t* bytes)
{
    const __m128i lf = _mm_set1_epi8('\n');
    const __m128i here = LoadBytes(bytes);
    const __m128i isLf = _mm_cmpeq_epi8(here, lf);
    const __m128i isCr = _mm_cmpeq_epi8(here, _mm_set1_epi8('\r'));
    const __m128i lfFollows = _mm_cmpeq_epi8(LoadBytes(bytes + 1), lf);
    return _mm_or_si128(isLf, _mm_andnot_si128(lfFollows, isCr));
}

std::int32_t SumBytes(__m128i counts)
{
    const __m128i sums = _mm_sad_epu8(counts, _mm_setzero_si128());
    return _mm_cvtsi128_si32(sums) + _mm_cvtsi128_si32(_mm_srli_si128(sums, 8));
}

bool IsCountedEnd(const std::uint8_t* bytes, std::int32_t index, std::int32_t count)
{
    const bool pair = bytes[index] == '\r' && index + 1 < count && bytes[index + 1] == '\n';
    return IsLineEnd(bytes[index]) && !pair;
}

// Counts the line ends; WithMasks also notes where each CR and LF stands, one bit a byte, one mask for
// VectorBytes of them. Bits behind the last byte are set, as if the bytes ended in line ends.
template <bool WithMasks> std::int32_t CountEnds(const std::uint8_t* bytes, std::int32_t count, std::uint16_t* masks)
{
    std::int32_t total = 0;
    std::int32_t index = 0;
    while (index + VectorBytes < count) {
        // A byte counter overflows after 255 additions.
        const std::int32_t left = (count - 1 - index) / VectorBytes;
        const std::int32_t vectors = left < 255 ? left : 255;
        __m128i counts = _mm_setzero_si128();
#pragma GCC unroll 4
        for (std::int32_t vector = 0; vector < vectors; ++vector, index += VectorBytes) {
            counts = _mm_sub_epi8(counts, CountedEnds(bytes + index));
            if constexpr (WithMasks) {
                *masks++ = static_cast<std::uint16_t>(LineEndMask(bytes + index));
            }
        }
        total += SumBytes(counts);
    }
    std::uint32_t lastMask = 0xFFFF;
    for (std::int32_t bit = 0; index < count; ++index, ++bit) {
        total += IsCountedEnd(bytes, index, count);
        lastMask &= IsLineEnd(bytes[index]) ? 0xFFFF : ~(1u << bit);
    }
    if constexpr (WithMasks) {
        *masks = static_cast<std::uint16_t>(lastMask);
    }
    return total;
}

// Runs are looked for in windows of 64 bits, that is 4 masks. Windows two masks apart hold every run of
// up to 33 bytes, windows one mask apart every one of up to 49.
constexpr std::int32_t MasksPerWindow = 4;
constexpr std::int32_t MaskBits = 16;

constexpr std::int32_t LongestInWindows(std::int32_t step)
{
    return (MasksPerWindow - step) * MaskBits + 1;
}

__m128i LoadWindow(const std::uint16_t* masks)
{
    return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(masks));
}

// Whether a run of wanted bytes (at most LongestInWindows(Step)) shows in count masks. Reads up to
// MasksPerWindow + 2 * Step masks past the last.
template <std::int32_t Step> bool HasRun(const std::uint16_t* masks, std::int32_t count, std::int32_t wanted)
{
    // A bit that survives "and with itself shifted" stands at the start of a run as long as the shifts add
    // up to, plus one. Six shifts reach 64; those not needed are by 0.
    __m128i shifts[6];
    std::int32_t reached = 1;
    for (__m128i& shift : shifts) {
        const std::int32_t further = reached < wanted - reached ? reached : wanted - reached;
        shift = _mm_cvtsi32_si128(further);
        reached += further;
    }
    const __m128i ones = _mm_set1_epi32(-1);
    __m128i found = _mm_setzero_si128();
    for (std::int32_t i = 0; i < count; i += 2 * Step) {
        const __m128i ends = _mm_unpacklo_epi64(LoadWindow(masks + i), LoadWindow(masks + i + Step));
        __m128i runs = _mm_andnot_si128(ends, ones);
        for (const __m128i& shift : shifts) {
            runs = _mm_and_si128(runs, _mm_srl_epi64(runs, shift));
        }
        found = _mm_or_si128(found, runs);
    }
    return _mm_movemask_epi8(_mm_cmpeq_epi8(found, _mm_setzero_si128())) != 0xFFFF;
}

} // namespace

std::int32_t CountLineEnds(const std::uint8_t* bytes, std::int32_t count)
{
    return CountEnds<false>(bytes, count, nullptr);
}

std::int32_t LongestRun(const std::uint8_t* bytes, std::int32_t count, std::int32_t atLeast)
{
    std::int32_t longest = atLeast;
    std::int32_t start = 0; // of the run under test
    while (start + longest < count) {
        // Only a run that has no line end in bytes start..start+longest is longer than the longest; any
        // other leaves the next run to start behind the last line end found there. Where all lines are
        // of one length that is the probed byte itself: one look per line.
        const std::int32_t probe = start + longest;
        if (bytes[probe] == '\n') {
            start = probe + 1;
            continue;
        }
        if (bytes[probe] == '\r') {
            start = probe + 1;
            if (start < count && bytes[start] == '\n') {
                start = probe + 2; // or the next probe would fall short of its line end
            }
            continue;
        }
        const std::int32_t lastEnd = FindLastLineEnd(bytes, start, probe);
        if (lastEnd >= start) {
            start = lastEnd + 1;
            continue;
        }
        const std::int32_t runEnd = FindLineEnd(bytes, probe, count);
        longest = runEnd - start;
        start = runEnd + 1;
    }
    return longest;
}

LineScan ScanLines(const std::uint8_t* bytes, std::int32_t count, std::int32_t atLeast)
{
    const std::int32_t longer = atLeast + 1;
    if (longer > LongestInWindows(1)) {
        return {CountLineEnds(bytes, count), LongestRun(bytes, count, atLeast)};
    }
    // Short lines of all lengths are too many to go through one by one: one look at the masks tells that
    // none of them is longer, which is what most blocks have to say.
    constexpr std::int32_t Padding = MasksPerWindow + 4;
    std::uint16_t masks[LargestScan / VectorBytes + 1 + Padding];
    const std::int32_t lineEnds = CountEnds<true>(bytes, count, masks);
    const std::int32_t maskCount = (count + VectorBytes - 1) / VectorBytes;
    for (std::int32_t i = 0; i < Padding; ++i) {
        masks[maskCount + i] = 0xFFFF;
    }
    const bool hasLonger =
        longer > LongestInWindows(2) ? HasRun<1>(masks, maskCount, longer) : HasRun<2>(masks, maskCount, longer);
    return {lineEnds, hasLonger ? LongestRun(bytes, count, atLeast) : atLeast};
}

std::int32_t FindLastLineEnd(const std::uint8_t* bytes, std::int32_t start, std::int32_t end)
{
    while (end - start >= VectorBytes) {
        const std::uint32_t mask = LineEndMask(bytes + end - VectorBytes);
        if (mask != 0) {
            return end - VectorBytes + std::bit_width(mask) - 1;
        }
        end -= VectorBytes;
    }
    while (end > start && !IsLineEnd(bytes[end - 1])) {
        --end;
    }
    return end - 1;
}

std::int32_t FindLineEnd(const std::uint8_t* bytes, std::int32_t start, std::int32_t count)
{
    std::int32_t index = start;
    for (; index + VectorBytes <= count; index += VectorBytes) {
        const std::uint32_t mask = LineEndMask(bytes + index);
        if (mask != 0) {
            return index + std::countr_zero(mask);
        }
    }
    while (index < count && !IsLineEnd(bytes[index])) {
        ++index;
    }
    return index;
}

std::int32_t FindLineStart(const std::uint8_t* bytes, std::int32_t from, std::int32_t index)
{
    const bool pair = bytes[index] == '\n' && index > from && bytes[index - 1] == '\r';
    return FindLastLineEnd(bytes, from, pair ? index - 1 : index) + 1;
}
