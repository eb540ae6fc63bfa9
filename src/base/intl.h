// The user's international settings: how dates, times and measures are written.
#pragma once

#include <cstdint>

enum DateOrder { MonthDayYear = 0, DayMonthYear = 1, YearMonthDay = 2 };

struct IntlSettings {
    std::int32_t TimeFormat = 0; // 0 = 12-hour clock, 1 = 24-hour
    std::int32_t Order = MonthDayYear;
    std::int32_t Measure = 0; // 0 = centimetres, 1 = inches
    char DateSeparator[2] = "/";
    char TimeSeparator[2] = ":";
    char Morning[5] = "AM";
    char Afternoon[5] = "PM";
};

inline IntlSettings Intl;
