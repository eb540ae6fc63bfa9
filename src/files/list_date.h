// Date and time of a file as the lists show them.
#pragma once

#include "base/intl.h"

#include <cstddef>

struct FileDate {
    int Year; // as in 1995
    int Month;
    int Day;
    int Hour; // 0..23
    int Minute;
};

// Two numbers of a few digits, separators and terminator, whatever the year.
constexpr std::size_t FileDateSize = 40;

// "date  time" in the user's order, with two blanks between. The year is that since 1900 in at least two
// digits, so 2026 shows as 126; the 12-hour clock has no mark for morning or afternoon.
void FormatFileDate(const FileDate& date, const IntlSettings& intl, char (&text)[FileDateSize]);
