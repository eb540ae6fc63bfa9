#include "base/text.h"

#include <cstring>

void CopyText(char* destination, std::size_t size, const char* source)
{
    const std::size_t length = strnlen(source, size - 1);
    memcpy(destination, source, length);
    destination[length] = '\0';
}

void AppendText(char* destination, std::size_t size, const char* source)
{
    const std::size_t used = strnlen(destination, size - 1);
    CopyText(destination + used, size - used, source);
}
