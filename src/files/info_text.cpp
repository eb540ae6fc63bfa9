#include "files/info_text.h"

#include "base/format.h"

#include <cstdio>

void FormatLongDate(const std::tm& time, char (&text)[LongDateSize])
{
    strftime(text, sizeof text, "%a %d %b, %Y", &time);
}

void FormatLongTime(const std::tm& time, char (&text)[LongTimeSize])
{
    strftime(text, sizeof text, "at %I:%M:%S %p", &time);
}

void FormatFileSize(std::int32_t bytes, char (&text)[FileSizeTextSize])
{
    // 513 and not 512: a file of half a kilobyte less one byte already counts as one.
    const std::int64_t kilobytes = (static_cast<std::int64_t>(bytes) + 513) / 1024;
    char groupedBytes[GroupedSize];
    char groupedKilobytes[GroupedSize];
    FormatGrouped(bytes, groupedBytes);
    FormatGrouped(static_cast<std::int32_t>(kilobytes), groupedKilobytes);
    snprintf(text, sizeof text, "%s Bytes (%sK)", groupedBytes, groupedKilobytes);
}
