// Texts entered lately, newest first.
#pragma once

#include "base/text.h"

#include <cstddef>

constexpr int MaxHistory = 9;

// An entry has room for Size - 1 characters.
template <std::size_t Size> struct RecentTexts {
    char Entries[MaxHistory][Size] = {};
    int Count = 0;
};

// Puts text to the front of count entries of size bytes each; the oldest makes room. A text that is there
// already stays where it is, and an empty one is not kept.
void RememberText(char* entries, std::size_t size, int& count, const char* text);

template <std::size_t Size> void RememberText(RecentTexts<Size>& history, const char* text)
{
    RememberText(&history.Entries[0][0], Size, history.Count, text);
}
