#include "files/list_date.h"

#include "base/text.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {

IntlSettings Settings(std::int32_t order, std::int32_t timeFormat)
{
    IntlSettings intl;
    intl.Order = order;
    intl.TimeFormat = timeFormat;
    return intl;
}

std::string Format(const FileDate& date, const IntlSettings& intl)
{
    char text[FileDateSize];
    FormatFileDate(date, intl, text);
    return text;
}

std::string Date(const FileDate& date, std::int32_t order)
{
    const std::string text = Format(date, Settings(order, 1));
    return text.substr(0, text.find(' '));
}

std::string Time(int hour, int minute, std::int32_t timeFormat)
{
    const std::string text = Format({1995, 3, 9, hour, minute}, Settings(MonthDayYear, timeFormat));
    return text.substr(text.find("  ") + 2);
}

constexpr FileDate Winter = {1995, 12, 31, 8, 5};

} // namespace

TEST(ListDate, OrderOfTheDateIsTheUsers)
{
    EXPECT_EQ(Date(Winter, 0), "12/31/95");
    EXPECT_EQ(Date(Winter, 1), "31/12/95");
    EXPECT_EQ(Date(Winter, 2), "95/12/31");
}

TEST(ListDate, UnknownOrderIsMonthDayYear)
{
    for (const std::int32_t order : {-1, 3, 99, INT_MIN, INT_MAX}) {
        EXPECT_EQ(Date(Winter, order), "12/31/95") << order;
    }
}

TEST(ListDate, NumbersHaveTwoDigits)
{
    EXPECT_EQ(Date({1995, 1, 2, 0, 0}, 0), "01/02/95");
    EXPECT_EQ(Date({1995, 1, 2, 0, 0}, 1), "02/01/95");
    EXPECT_EQ(Date({1995, 1, 2, 0, 0}, 2), "95/01/02");
}

TEST(ListDate, YearIsThatSince1900)
{
    EXPECT_EQ(Date({1980, 1, 1, 0, 0}, 0), "01/01/80");
    EXPECT_EQ(Date({1999, 1, 1, 0, 0}, 0), "01/01/99");
    EXPECT_EQ(Date({2000, 1, 1, 0, 0}, 0), "01/01/100");
    EXPECT_EQ(Date({2026, 11, 5, 0, 0}, 0), "11/05/126");
    EXPECT_EQ(Date({2026, 11, 5, 0, 0}, 2), "126/11/05");
    EXPECT_EQ(Date({1905, 1, 1, 0, 0}, 0), "01/01/05");
}

TEST(ListDate, TwentyFourHourClockShowsTheHourAsItIs)
{
    EXPECT_EQ(Time(0, 0, 1), "00:00");
    EXPECT_EQ(Time(8, 5, 1), "08:05");
    EXPECT_EQ(Time(12, 30, 1), "12:30");
    EXPECT_EQ(Time(13, 7, 1), "13:07");
    EXPECT_EQ(Time(23, 59, 1), "23:59");
}

TEST(ListDate, TwelveHourClockHasNoZeroAndNoMark)
{
    EXPECT_EQ(Time(0, 0, 0), "12:00");
    EXPECT_EQ(Time(1, 9, 0), "01:09");
    EXPECT_EQ(Time(11, 59, 0), "11:59");
    EXPECT_EQ(Time(12, 30, 0), "12:30");
    EXPECT_EQ(Time(13, 7, 0), "01:07");
    EXPECT_EQ(Time(23, 59, 0), "11:59");
}

TEST(ListDate, SeparatorsAreTheUsers)
{
    IntlSettings intl = Settings(DayMonthYear, 1);
    CopyText(intl.DateSeparator, ".");
    CopyText(intl.TimeSeparator, "h");
    EXPECT_EQ(Format({2026, 1, 2, 3, 4}, intl), "02.01.126  03h04");
    CopyText(intl.DateSeparator, "");
    CopyText(intl.TimeSeparator, "");
    EXPECT_EQ(Format({2026, 1, 2, 3, 4}, intl), "0201126  0304");
}

TEST(ListDate, TwoBlanksStandBetweenDateAndTime)
{
    EXPECT_EQ(Format({1995, 3, 9, 14, 5}, Settings(YearMonthDay, 0)), "95/03/09  02:05");
}

TEST(ListDate, AnyYearFits)
{
    EXPECT_EQ(Format({30827, 12, 31, 23, 59}, Settings(YearMonthDay, 1)), "28927/12/31  23:59");
    EXPECT_EQ(Format({INT_MAX, 12, 31, 23, 59}, Settings(MonthDayYear, 1)), "12/31/2147481747  23:59");
}
