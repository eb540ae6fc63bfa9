#include "files/list_date.h"

#include <cstdio>

namespace {

void FormatDate(const FileDate& date, const IntlSettings& intl, char* text, std::size_t size)
{
    const int year = date.Year - 1900;
    const int orders[3][3] = {
        {date.Month, date.Day, year},
        {date.Day, date.Month, year},
        {year, date.Month, date.Day},
    };
    const int order = intl.Order == DayMonthYear || intl.Order == YearMonthDay ? intl.Order : MonthDayYear;
    const int(&parts)[3] = orders[order];
    snprintf(text, size, "%02d%s%02d%s%02d", parts[0], intl.DateSeparator, parts[1], intl.DateSeparator, parts[2]);
}

int ShownHour(int hour, const IntlSettings& intl)
{
    if (intl.TimeFormat == 1) {
        return hour;
    }
    return hour % 12 == 0 ? 12 : hour % 12;
}

} // namespace

void FormatFileDate(const FileDate& date, const IntlSettings& intl, char (&text)[FileDateSize])
{
    char day[FileDateSize / 2];
    FormatDate(date, intl, day, sizeof day);
    snprintf(text, sizeof text, "%s  %02d%s%02d", day, ShownHour(date.Hour, intl), intl.TimeSeparator, date.Minute);
}
