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

std::size_t DirectoryEnd(const char* path)
{
    for (std::size_t i = strlen(path); i-- > 1;) {
        if (path[i] == '\\') {
            return i;
        }
        if (path[i] == ':') {
            return i + 1;
        }
    }
    return 0;
}

const char* NameBehind(const char* path, std::size_t end)
{
    return path[end] == '\\' && end > 0 ? path + end + 1 : path + end;
}

const char* NamePart(const char* path)
{
    return NameBehind(path, DirectoryEnd(path));
}

const char* ExtensionOf(const char* path)
{
    const char* const name = NamePart(path);
    const char* const dot = strrchr(name, '.');
    return dot != nullptr ? dot : name + strlen(name);
}
