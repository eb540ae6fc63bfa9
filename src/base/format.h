// Numbers and paths as the program's windows show them.
#pragma once

#include <cstddef>
#include <cstdint>

// Room for a grouped number: ten digits, a sign, two commas and the terminator.
constexpr std::size_t GroupedSize = 16;

// number in decimal with a comma before its last three digits and, from seven characters on, a second
// one three digits further left. Never a third: ten digits keep four before the first comma. The
// comma is used whatever the user's international settings say.
void FormatGrouped(std::int32_t number, char (&text)[GroupedSize]);

// Shortens a path in place to about maxLength characters: its head up to and including the first
// separator, "...", and a tail that starts at a directory boundary when there is one. A path that is
// not longer than maxLength stays as it is. One that is only just longer may even grow by the dots, for
// what they replace; it stays as it is when the size bytes at path have no room for that.
void ShortenPath(char* path, std::size_t size, std::size_t maxLength, char separator);

template <std::size_t Size> void ShortenPath(char (&path)[Size], std::size_t maxLength, char separator)
{
    ShortenPath(path, Size, maxLength, separator);
}
