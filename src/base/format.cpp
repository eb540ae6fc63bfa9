#include "base/format.h"

#include <cstdio>
#include <cstring>

namespace {

void InsertComma(char* text, std::size_t position)
{
    memmove(text + position + 1, text + position, strlen(text + position) + 1);
    text[position] = ',';
}

} // namespace

void FormatGrouped(std::int32_t number, char (&text)[GroupedSize])
{
    snprintf(text, sizeof text, "%li", static_cast<long>(number));
    const std::size_t length = strlen(text);
    if (length > 3) {
        InsertComma(text, length - 3);
    }
    if (length >= 7) {
        InsertComma(text, length - 6);
    }
}

void ShortenPath(char* path, std::size_t size, std::size_t maxLength, char separator)
{
    const std::size_t length = strlen(path);
    char* const head = length > maxLength ? strchr(path, separator) : nullptr;
    if (head == nullptr) {
        return;
    }
    char* const headEnd = head + 1;
    const std::size_t headLength = static_cast<std::size_t>(headEnd - path);
    // What is left out makes room for the dots; a head as long as the limit leaves out nothing more.
    const std::size_t wanted = length - maxLength + 3;
    const std::size_t skip = wanted > headLength ? wanted - headLength : 0;
    char* tail = headEnd + (skip < length - headLength ? skip : length - headLength);
    char* const boundary = strchr(tail, separator);
    if (boundary != nullptr) {
        tail = boundary;
    }
    constexpr char Dots[] = "...";
    constexpr std::size_t DotsLength = sizeof Dots - 1;
    const std::size_t tailLength = strlen(tail);
    if (headLength + DotsLength + tailLength >= size) {
        return;
    }
    memmove(headEnd + DotsLength, tail, tailLength + 1);
    memcpy(headEnd, Dots, DotsLength);
}
