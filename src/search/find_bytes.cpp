#include "search/find_bytes.h"

#include <algorithm>
#include <cstring>

namespace {

std::int32_t LengthOf(const char* string)
{
    return static_cast<std::int32_t>(strlen(string));
}

std::int32_t LastEndingBy(const char* buffer, std::int32_t length, const char* pattern, std::int32_t patternLength,
                          std::int32_t end)
{
    std::int32_t at = std::min(std::max(end, -1), length - 1) - (patternLength - 1);
    while (at >= 0 && memcmp(buffer + at, pattern, static_cast<std::size_t>(patternLength)) != 0) {
        --at;
    }
    return std::max(at, -1);
}

} // namespace

std::int32_t FindInString(const char* string, const char* pattern, std::int32_t start, bool backwards)
{
    const std::int32_t length = LengthOf(string);
    const std::int32_t patternLength = LengthOf(pattern);
    if (backwards) {
        return LastEndingBy(string, length, pattern, patternLength, start);
    }
    if (start < 0 || patternLength > length - start) {
        return -1;
    }
    const char* const hit = strstr(string + start, pattern);
    return hit != nullptr ? static_cast<std::int32_t>(hit - string) : -1;
}

std::int32_t FindInBuffer(const char* buffer, std::int32_t bufferLength, const char* pattern,
                          std::int32_t patternLength, std::int32_t start, bool backwards)
{
    if (backwards) {
        return LastEndingBy(buffer, bufferLength, pattern, patternLength, start);
    }
    std::int32_t at = start;
    while (at >= 0 && at <= bufferLength - patternLength) {
        const std::size_t places = static_cast<std::size_t>(bufferLength - at - patternLength + 1);
        const void* const hit = memchr(buffer + at, pattern[0], places);
        if (hit == nullptr) {
            return -1;
        }
        at = static_cast<std::int32_t>(static_cast<const char*>(hit) - buffer);
        if (memcmp(buffer + at, pattern, static_cast<std::size_t>(patternLength)) == 0) {
            return at;
        }
        ++at;
    }
    return -1;
}
