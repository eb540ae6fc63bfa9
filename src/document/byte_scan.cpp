#include "document/byte_scan.h"

#include "document/vector_bytes.h"

#include <algorithm>
#include <bit>

namespace {

// The values of one probe, in every byte of a vector.
struct ProbeVector {
    __m128i First;
    __m128i Second;
    std::int32_t Position;
};

ProbeVector Spread(const Needle::Probe& probe)
{
    return {_mm_set1_epi8(static_cast<char>(probe.Values[0])), _mm_set1_epi8(static_cast<char>(probe.Values[1])),
            probe.Position};
}

// 0xFF for each of the places from bytes on at which the probe holds.
__m128i Probed(const ProbeVector& probe, const std::uint8_t* bytes)
{
    const __m128i there = LoadBytes(bytes + probe.Position);
    return _mm_or_si128(_mm_cmpeq_epi8(there, probe.First), _mm_cmpeq_epi8(there, probe.Second));
}

bool StandsAt(const Needle& needle, const std::uint8_t* bytes)
{
    std::int32_t i = 0;
    while (i < needle.Length && needle.Reads[bytes[i]] == needle.Wanted[i]) {
        ++i;
    }
    return i == needle.Length;
}

// How many byte values read as wanted; the first two of them in values.
int ValuesOf(const ByteTable& reads, std::uint8_t wanted, std::uint8_t (&values)[2])
{
    int count = 0;
    for (unsigned byte = 0; byte < reads.size(); ++byte) {
        if (reads[byte] != wanted) {
            continue;
        }
        if (count < 2) {
            values[count] = static_cast<std::uint8_t>(byte);
        }
        ++count;
    }
    if (count == 1) {
        values[1] = values[0];
    }
    return count;
}

// The first and the last position that can be probed: they depend on each other least.
void ChooseProbes(Needle& needle)
{
    for (std::int32_t i = 0; i < needle.Length; ++i) {
        Needle::Probe probe = {i, {0, 0}};
        const int values = ValuesOf(needle.Reads, needle.Wanted[i], probe.Values);
        if (values == 0) {
            needle.Possible = false;
        } else if (values <= 2) {
            if (!needle.HasProbes) {
                needle.Probes[0] = probe;
            }
            needle.Probes[1] = probe;
            needle.HasProbes = true;
        }
    }
}

} // namespace

Needle MakeNeedle(const ByteTable& reads, const char* wanted, std::int32_t length)
{
    Needle needle;
    needle.Length = length;
    needle.Reads = reads;
    std::copy_n(wanted, length, needle.Wanted);
    ChooseProbes(needle);
    return needle;
}

std::int32_t FindNeedle(const Needle& needle, const std::uint8_t* bytes, std::int32_t start, std::int32_t end)
{
    if (!needle.Possible) {
        return -1;
    }
    std::int32_t place = start;
    const std::int32_t last = end - needle.Length;
    if (needle.HasProbes) {
        const ProbeVector one = Spread(needle.Probes[0]);
        const ProbeVector other = Spread(needle.Probes[1]);
        // A probe of the sixteenth place lies within the needle there, so before end.
        for (; place + VectorBytes - 1 <= last; place += VectorBytes) {
            const __m128i both = _mm_and_si128(Probed(one, bytes + place), Probed(other, bytes + place));
            auto mask = static_cast<std::uint32_t>(_mm_movemask_epi8(both));
            for (; mask != 0; mask &= mask - 1) {
                const std::int32_t hit = place + std::countr_zero(mask);
                if (StandsAt(needle, bytes + hit)) {
                    return hit;
                }
            }
        }
    }
    for (; place <= last; ++place) {
        if (StandsAt(needle, bytes + place)) {
            return place;
        }
    }
    return -1;
}

std::int32_t FindLastNeedle(const Needle& needle, const std::uint8_t* bytes, std::int32_t start, std::int32_t end)
{
    if (!needle.Possible) {
        return -1;
    }
    std::int32_t place = end - needle.Length;
    if (needle.HasProbes) {
        const ProbeVector one = Spread(needle.Probes[0]);
        const ProbeVector other = Spread(needle.Probes[1]);
        for (; place - (VectorBytes - 1) >= start; place -= VectorBytes) {
            const std::int32_t first = place - (VectorBytes - 1);
            const __m128i both = _mm_and_si128(Probed(one, bytes + first), Probed(other, bytes + first));
            auto mask = static_cast<std::uint32_t>(_mm_movemask_epi8(both));
            while (mask != 0) {
                const std::int32_t bit = static_cast<std::int32_t>(std::bit_width(mask)) - 1;
                if (StandsAt(needle, bytes + first + bit)) {
                    return first + bit;
                }
                mask &= ~(1U << bit);
            }
        }
    }
    for (; place >= start; --place) {
        if (StandsAt(needle, bytes + place)) {
            return place;
        }
    }
    return -1;
}
