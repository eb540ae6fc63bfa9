// Looking for bytes in memory, exactly as they are.
#pragma once

#include <cstdint>

// Both look forwards for the first occurrence that begins at start or behind it, backwards for the last one
// that ends at start or before it, and return the index where it begins, or -1. A start outside what there is
// finds nothing forwards; backwards one behind the end means the end.

std::int32_t FindInString(const char* string, const char* pattern, std::int32_t start, bool backwards);

std::int32_t FindInBuffer(const char* buffer, std::int32_t bufferLength, const char* pattern,
                          std::int32_t patternLength, std::int32_t start, bool backwards);
