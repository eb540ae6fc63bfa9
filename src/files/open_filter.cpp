#include "files/open_filter.h"

#include <cstring>

void MakeOpenFilter(const char* text, char (&filter)[FilterSize])
{
    memset(filter, 0, sizeof filter);
    const std::size_t length = strnlen(text, sizeof filter - 2); // two zero bytes stay
    if (length == 0) {
        return;
    }
    const char separator = text[length - 1];
    for (std::size_t i = 0; i < length; ++i) {
        filter[i] = text[i] == separator ? '\0' : text[i];
    }
}
