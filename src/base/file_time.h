// Times of files: the system counts ticks of 100 ns since 1601, the program seconds since 1970.
#pragma once

#include <cstdint>

constexpr std::uint64_t TicksPerSecond = 10000000;
constexpr std::uint64_t SecondsFrom1601To1970 = 11644473600;

// A time that does not fit counts as negative, and negative times as 0.
constexpr std::int32_t SecondsOfTicks(std::uint64_t ticks)
{
    const std::uint64_t seconds = ticks / TicksPerSecond;
    const bool fits = seconds >= SecondsFrom1601To1970 && seconds - SecondsFrom1601To1970 <= INT32_MAX;
    return fits ? static_cast<std::int32_t>(seconds - SecondsFrom1601To1970) : 0;
}

// seconds: 0 or more.
constexpr std::uint64_t TicksOfSeconds(std::int32_t seconds)
{
    return (static_cast<std::uint64_t>(seconds) + SecondsFrom1601To1970) * TicksPerSecond;
}
