#include "files/info_text.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {

// The moment that many seconds after the beginning of 1970, in Greenwich.
std::tm Moment(std::time_t seconds)
{
    return *gmtime(&seconds);
}

std::tm AtTime(int hour, int minute, int second)
{
    std::tm time = Moment(0);
    time.tm_hour = hour;
    time.tm_min = minute;
    time.tm_sec = second;
    return time;
}

std::string LongDate(const std::tm& time)
{
    char text[LongDateSize];
    FormatLongDate(time, text);
    return text;
}

std::string LongTime(const std::tm& time)
{
    char text[LongTimeSize];
    FormatLongTime(time, text);
    return text;
}

std::string FileSize(std::int32_t bytes)
{
    char text[FileSizeTextSize];
    FormatFileSize(bytes, text);
    return text;
}

constexpr std::time_t LastMoment = INT32_MAX; // that a file's time can be

} // namespace

TEST(LongDate, HasDayOfTheWeekDayMonthAndYear)
{
    EXPECT_EQ(LongDate(Moment(1795287900)), "Sat 21 Nov, 2026");
    EXPECT_EQ(LongDate(Moment(826000000)), "Tue 05 Mar, 1996");
}

TEST(LongDate, HasFourDigitsForTheYearInEveryCentury)
{
    EXPECT_EQ(LongDate(Moment(0)), "Thu 01 Jan, 1970");
    EXPECT_EQ(LongDate(Moment(946684799)), "Fri 31 Dec, 1999");
    EXPECT_EQ(LongDate(Moment(946684800)), "Sat 01 Jan, 2000");
    EXPECT_EQ(LongDate(Moment(951782400)), "Tue 29 Feb, 2000");
    EXPECT_EQ(LongDate(Moment(LastMoment)), "Tue 19 Jan, 2038");
}

TEST(LongDate, NamesEveryDayOfTheWeekAndEveryMonth)
{
    std::string days;
    std::string months;
    for (std::time_t day = 0; day < 7; ++day) {
        days += LongDate(Moment(86400 * day)).substr(0, 4);
    }
    EXPECT_EQ(days, "Thu Fri Sat Sun Mon Tue Wed ");
    for (int month = 0; month < 12; ++month) {
        std::tm time = Moment(0);
        time.tm_mon = month;
        months += LongDate(time).substr(7, 4);
    }
    EXPECT_EQ(months, "Jan,Feb,Mar,Apr,May,Jun,Jul,Aug,Sep,Oct,Nov,Dec,");
}

TEST(LongTime, HasATwelveHourClockWithAMark)
{
    EXPECT_EQ(LongTime(AtTime(7, 5, 9)), "at 07:05:09 AM");
    EXPECT_EQ(LongTime(AtTime(19, 5, 0)), "at 07:05:00 PM");
    EXPECT_EQ(LongTime(AtTime(23, 59, 59)), "at 11:59:59 PM");
    EXPECT_EQ(LongTime(AtTime(11, 59, 59)), "at 11:59:59 AM");
}

TEST(LongTime, MidnightAndNoonAreTwelve)
{
    EXPECT_EQ(LongTime(AtTime(0, 0, 0)), "at 12:00:00 AM");
    EXPECT_EQ(LongTime(AtTime(0, 59, 1)), "at 12:59:01 AM");
    EXPECT_EQ(LongTime(AtTime(12, 0, 0)), "at 12:00:00 PM");
    EXPECT_EQ(LongTime(AtTime(13, 0, 0)), "at 01:00:00 PM");
}

TEST(LongTime, FirstAndLastMomentOfAFileHaveOne)
{
    EXPECT_EQ(LongTime(Moment(0)), "at 12:00:00 AM");
    EXPECT_EQ(LongTime(Moment(LastMoment)), "at 03:14:07 AM");
}

TEST(FileSizeText, HasBytesAndKilobytes)
{
    EXPECT_EQ(FileSize(0), "0 Bytes (0K)");
    EXPECT_EQ(FileSize(1), "1 Bytes (0K)");
    EXPECT_EQ(FileSize(1024), "1,024 Bytes (1K)");
    EXPECT_EQ(FileSize(30000), "30,000 Bytes (29K)");
}

TEST(FileSizeText, HalfAKilobyteLessOneByteCountsAsOne)
{
    EXPECT_EQ(FileSize(510), "510 Bytes (0K)");
    EXPECT_EQ(FileSize(511), "511 Bytes (1K)");
    EXPECT_EQ(FileSize(1534), "1,534 Bytes (1K)");
    EXPECT_EQ(FileSize(1535), "1,535 Bytes (2K)");
    EXPECT_EQ(FileSize(1024 * 1000 - 514), "1,023,486 Bytes (999K)");
    EXPECT_EQ(FileSize(1024 * 1000 - 513), "1,023,487 Bytes (1,000K)");
}

TEST(FileSizeText, BothNumbersAreGrouped)
{
    EXPECT_EQ(FileSize(999), "999 Bytes (1K)");
    EXPECT_EQ(FileSize(1000), "1,000 Bytes (1K)");
    EXPECT_EQ(FileSize(999999), "999,999 Bytes (977K)");
    EXPECT_EQ(FileSize(1234567), "1,234,567 Bytes (1,206K)");
    EXPECT_EQ(FileSize(1073741824), "1073,741,824 Bytes (1,048,576K)");
}

TEST(FileSizeText, LargestFileHasItsKilobytesWithoutOverflow)
{
    EXPECT_EQ(FileSize(INT32_MAX), "2147,483,647 Bytes (2,097,152K)");
    EXPECT_EQ(FileSize(INT32_MAX - 513), "2147,483,134 Bytes (2,097,151K)");
}
