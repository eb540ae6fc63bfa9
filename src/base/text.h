// Zero-terminated byte strings in fixed buffers: every copy is bounded by the buffer it goes into.
#pragma once

#include <cstddef>

// Paths are at most 259 characters.
constexpr std::size_t MaxPathSize = 260;

// Copies source into destination (size bytes, at least 1), cutting what does not fit; the result is
// always terminated.
void CopyText(char* destination, std::size_t size, const char* source);

// Appends to the text that destination (size bytes) already holds, cutting what does not fit.
void AppendText(char* destination, std::size_t size, const char* source);

template <std::size_t Size> void CopyText(char (&destination)[Size], const char* source)
{
    CopyText(destination, Size, source);
}

template <std::size_t Size> void AppendText(char (&destination)[Size], const char* source)
{
    AppendText(destination, Size, source);
}

// Where the directory of path ends: before its last backslash or behind its last colon. The very first
// character is not looked at. Without either the directory is empty.
std::size_t DirectoryEnd(const char* path);

// What follows the directory that ends at end.
const char* NameBehind(const char* path, std::size_t end);

// The name that follows path's directory.
const char* NamePart(const char* path);

// The extension of path's name with its dot; empty when the name has no dot.
const char* ExtensionOf(const char* path);
