#include "app/recent_files.h"

#include "base/format.h"

#include <cstdio>
#include <cstring>

void CompactRecentFiles(RecentFiles& recent)
{
    int destination = 0;
    int source = 1;
    while (source < MaxRecentFiles) {
        if (recent.Paths[destination][0] != '\0') {
            ++destination;
        } else {
            memcpy(recent.Paths[destination], recent.Paths[source], MaxPathSize);
            recent.Paths[source][0] = '\0';
        }
        ++source;
    }
    recent.Count = 0;
    while (recent.Count < MaxRecentFiles && recent.Paths[recent.Count][0] != '\0') {
        ++recent.Count;
    }
}

bool AddRecentPath(RecentFiles& recent, const char* path)
{
    for (int i = 0; i < recent.Count; ++i) {
        if (strcmp(recent.Paths[i], path) == 0) {
            return false;
        }
    }
    if (recent.Count == MaxRecentFiles) {
        memmove(recent.Paths[0], recent.Paths[1], (MaxRecentFiles - 1) * MaxPathSize);
        --recent.Count;
    }
    CopyText(recent.Paths[recent.Count], path);
    ++recent.Count;
    return true;
}

void FormatRecentText(const RecentFiles& recent, int index, char* text, std::size_t size)
{
    snprintf(text, size, "&%i %s", index + 1, recent.Paths[index]);
    ShortenPath(text, size, RecentMenuTextLength, '\\');
}
