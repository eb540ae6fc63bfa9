#include "search/text_history.h"

#include <cstring>

void RememberText(char* entries, std::size_t size, int& count, const char* text)
{
    if (text[0] == '\0') {
        return;
    }
    for (int i = 0; i < count; ++i) {
        if (strcmp(entries + static_cast<std::size_t>(i) * size, text) == 0) {
            return;
        }
    }
    if (count < MaxHistory) {
        ++count;
    }
    memmove(entries + size, entries, static_cast<std::size_t>(count - 1) * size);
    CopyText(entries, size, text);
}
