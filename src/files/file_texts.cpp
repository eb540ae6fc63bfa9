#include "files/file_texts.h"

#include "base/file_time.h"
#include "base/load_text.h"
#include "base/text.h"
#include "files/associations.h"
#include "resources/ids.h"

#include <windows.h>

namespace {

AttributeWords Words; // loaded when they are needed first

void LoadAttributeWords()
{
    LoadText(IDS_ATTRIBUTE_READ_ONLY, Words.ReadOnly);
    LoadText(IDS_ATTRIBUTE_ARCHIVE, Words.Archive);
    LoadText(IDS_ATTRIBUTE_SYSTEM, Words.System);
    LoadText(IDS_ATTRIBUTE_HIDDEN, Words.Hidden);
}

// By the rules for summer time of that day, not of today.
SYSTEMTIME LocalTimeOf(std::int32_t secondsSince1970)
{
    const std::uint64_t ticks = TicksOfSeconds(secondsSince1970);
    const FILETIME time = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    SYSTEMTIME utc = {};
    SYSTEMTIME local = {};
    FileTimeToSystemTime(&time, &utc);
    return SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local) ? local : utc;
}

std::tm LocalParts(const FileInfo& info)
{
    const SYSTEMTIME time = LocalTimeOf(info.Time);
    std::tm parts = {};
    parts.tm_year = time.wYear - 1900;
    parts.tm_mon = time.wMonth - 1;
    parts.tm_mday = time.wDay;
    parts.tm_wday = time.wDayOfWeek;
    parts.tm_hour = time.wHour;
    parts.tm_min = time.wMinute;
    parts.tm_sec = time.wSecond;
    return parts;
}

} // namespace

void AttributeText(const FileInfo& info, char (&text)[AttributeTextSize])
{
    if (Words.ReadOnly[0] == '\0') {
        LoadAttributeWords();
    }
    FormatAttributes(info.Attributes, Words, text);
}

void ModificationText(const FileInfo& info, char (&text)[FileDateSize])
{
    const SYSTEMTIME time = LocalTimeOf(info.Time);
    FormatFileDate({time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute}, Intl, text);
}

void LongDateText(const FileInfo& info, char (&text)[LongDateSize])
{
    FormatLongDate(LocalParts(info), text);
}

void LongTimeText(const FileInfo& info, char (&text)[LongTimeSize])
{
    FormatLongTime(LocalParts(info), text);
}

bool TypeText(const FileInfo& info, const char* path, char (&text)[TypeTextSize])
{
    if (info.FileType != NotRecognised) {
        LoadText(static_cast<UINT>(IDS_FILE_TYPE + info.FileType), text);
        return true;
    }
    text[0] = '\0';
    const char* const extension = ExtensionOf(path);
    return extension[0] != '\0' && LookupAssociation(extension + 1, text);
}
