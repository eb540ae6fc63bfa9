#include "print/header_footer.h"

#include "base/text.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

namespace {

constexpr std::size_t Longest = HeaderSectionSize - 1;
constexpr HeaderTexts Texts = {"REPORT.TXT", "Thu 3/09/95", "5:05:09 PM"};

HeaderFooter Expanded(const std::string& codes, const HeaderTexts& texts = Texts)
{
    HeaderFooter part;
    ExpandHeaderFooter(codes.c_str(), texts, part);
    return part;
}

std::string Left(const std::string& codes, const HeaderTexts& texts = Texts)
{
    return Expanded(codes, texts).Sections[LeftSection];
}

void ExpectSections(const HeaderFooter& part, const std::string& left, const std::string& centre,
                    const std::string& right)
{
    EXPECT_EQ(part.Sections[LeftSection], left);
    EXPECT_EQ(part.Sections[CentreSection], centre);
    EXPECT_EQ(part.Sections[RightSection], right);
}

std::string Repeated(const std::string& text, std::size_t times)
{
    std::string all;
    for (std::size_t i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

// section on that page, in a buffer on the heap that holds something else before.
std::string OnPage(const std::string& section, std::int32_t page)
{
    struct Buffers {
        char Section[HeaderSectionSize];
        char Text[PrintedSectionSize];
    };
    const auto buffers = std::make_unique<Buffers>();
    memset(buffers->Section, '#', sizeof buffers->Section);
    memset(buffers->Text, '#', sizeof buffers->Text);
    CopyText(buffers->Section, section.c_str());
    SubstitutePage(buffers->Section, page, buffers->Text);
    EXPECT_NE(memchr(buffers->Text, '\0', sizeof buffers->Text), nullptr);
    return std::string(buffers->Text, strnlen(buffers->Text, sizeof buffers->Text));
}

// A Thursday's, nine minutes past five.
constexpr ClockTime Afternoon = {1995, 3, 9, 4, 17, 9, 5};

IntlSettings Settings(std::int32_t order, std::int32_t timeFormat)
{
    IntlSettings intl;
    intl.Order = order;
    intl.TimeFormat = timeFormat;
    return intl;
}

std::string Date(const ClockTime& time, const IntlSettings& intl)
{
    char text[PrintDateSize];
    FormatPrintDate(time, intl, text);
    return text;
}

std::string Time(const ClockTime& time, const IntlSettings& intl)
{
    char text[PrintTimeSize];
    FormatPrintTime(time, intl, text);
    return text;
}

std::string TimeAt(int hour, std::int32_t timeFormat)
{
    ClockTime time = Afternoon;
    time.Hour = hour;
    return Time(time, Settings(MonthDayYear, timeFormat));
}

} // namespace

TEST(HeaderFooter, CodesStandForNameDateAndTimeInEitherCase)
{
    EXPECT_EQ(Left("&f"), "REPORT.TXT");
    EXPECT_EQ(Left("&F"), "REPORT.TXT");
    EXPECT_EQ(Left("&d"), "Thu 3/09/95");
    EXPECT_EQ(Left("&D"), "Thu 3/09/95");
    EXPECT_EQ(Left("&t"), "5:05:09 PM");
    EXPECT_EQ(Left("&T"), "5:05:09 PM");
}

TEST(HeaderFooter, CodesMayFollowEachOtherAndOtherText)
{
    EXPECT_EQ(Left("a&f&d b&tc"), "aREPORT.TXTThu 3/09/95 b5:05:09 PMc");
}

TEST(HeaderFooter, RuleIsSetByItsCodeAndPrintsNothing)
{
    for (const char* codes : {"a&lb", "a&Lb", "a&l&lb", "ab&l"}) {
        const HeaderFooter part = Expanded(codes);
        EXPECT_TRUE(part.Rule) << codes;
        ExpectSections(part, "ab", "", "");
    }
}

TEST(HeaderFooter, RuleMayBeAskedForInAnySection)
{
    EXPECT_TRUE(Expanded("/&l").Rule);
    EXPECT_TRUE(Expanded("//&l").Rule);
    EXPECT_TRUE(Expanded("////&l").Rule);
}

TEST(HeaderFooter, NoRuleWithoutItsCode)
{
    for (const char* codes : {"", "l", "L", "&", "&f", "&&l", "&/l", "& l"}) {
        EXPECT_FALSE(Expanded(codes).Rule) << codes;
    }
}

TEST(HeaderFooter, NothingOfAnEarlierExpansionIsLeft)
{
    HeaderFooter part;
    ExpandHeaderFooter("left/centre/right&l", Texts, part);
    ExpandHeaderFooter("L", Texts, part);
    EXPECT_FALSE(part.Rule);
    ExpectSections(part, "L", "", "");
    ExpandHeaderFooter("", Texts, part);
    ExpectSections(part, "", "", "");
}

TEST(HeaderFooter, SlashesPartLeftCentreAndRight)
{
    ExpectSections(Expanded("left/centre/right"), "left", "centre", "right");
    ExpectSections(Expanded("left"), "left", "", "");
    ExpectSections(Expanded("/centre"), "", "centre", "");
    ExpectSections(Expanded("//right"), "", "", "right");
    ExpectSections(Expanded("left//right"), "left", "", "right");
    ExpectSections(Expanded("left/"), "left", "", "");
}

TEST(HeaderFooter, ThirdAndFurtherSlashesAreDropped)
{
    ExpectSections(Expanded("left/centre/right/more"), "left", "centre", "rightmore");
    ExpectSections(Expanded("left/centre/right/more/and//more"), "left", "centre", "rightmoreandmore");
    ExpectSections(Expanded("/////"), "", "", "");
}

TEST(HeaderFooter, SlashesInNameDateAndTimeArePrinted)
{
    ExpectSections(Expanded("&f/&d/&t", {"a/b", "3/09", "5/05"}), "a/b", "3/09", "5/05");
}

TEST(HeaderFooter, CodesInNameDateAndTimeAreNotExpanded)
{
    const HeaderFooter part = Expanded("&f&d&t", {"&l&f", "&d", "&t"});
    EXPECT_FALSE(part.Rule);
    ExpectSections(part, "&l&f&d&t", "", "");
}

TEST(HeaderFooter, PageStaysACodeInUpperCase)
{
    EXPECT_EQ(Left("-&p-"), "-&P-");
    EXPECT_EQ(Left("-&P-"), "-&P-");
}

TEST(HeaderFooter, TwoAmpersandsStayTwo)
{
    EXPECT_EQ(Left("&&"), "&&");
    EXPECT_EQ(Left("A&&B"), "A&&B");
    EXPECT_EQ(Left("&&f"), "&&f");
    EXPECT_EQ(Left("&&&f"), "&&REPORT.TXT");
}

TEST(HeaderFooter, AmpersandAtTheEndIsPrinted)
{
    EXPECT_EQ(Left("&"), "&");
    EXPECT_EQ(Left("a&"), "a&");
    EXPECT_EQ(Left("&&&"), "&&&");
    ExpectSections(Expanded("//a&"), "", "", "a&");
}

TEST(HeaderFooter, AmpersandBeforeASlashKeepsBoth)
{
    ExpectSections(Expanded("a&/b/c"), "a&/b", "c", "");
}

TEST(HeaderFooter, UnknownCodesArePrintedInUpperCase)
{
    for (int byte = 1; byte < 256; ++byte) {
        const char code = static_cast<char>(byte);
        if (strchr("fdtlFDTL", code) == nullptr) {
            const char upper = static_cast<char>(code >= 'a' && code <= 'z' ? code - 32 : code);
            EXPECT_EQ(Left(std::string("<&") + code + ">"), std::string("<&") + upper + ">") << byte;
        }
    }
}

TEST(HeaderFooter, OtherCharactersAreCopied)
{
    for (int byte = 1; byte < 256; ++byte) {
        const char character = static_cast<char>(byte);
        if (character != '&' && character != '/') {
            EXPECT_EQ(Left(std::string(1, character)), std::string(1, character)) << byte;
        }
    }
}

TEST(HeaderFooter, SectionIsCutWhereItIsFull)
{
    for (std::size_t length = 50; length < 200; ++length) {
        const std::string text(length, 'x');
        const std::string cut = text.substr(0, Longest);
        ExpectSections(Expanded(text + "/b/c"), cut, "b", "c");
        ExpectSections(Expanded("a/" + text + "/c"), "a", cut, "c");
        ExpectSections(Expanded("a/b/" + text + "/" + text), "a", "b", std::string(Longest, 'x'));
        ExpectSections(Expanded("&f/&d/&t", {text.c_str(), text.c_str(), text.c_str()}), cut, cut, cut);
    }
}

TEST(HeaderFooter, EveryCodeIsCutWhereTheSectionIsFull)
{
    for (const std::string code : {"&f", "&d", "&t", "&p", "&&", "&x", "&/", "&l"}) {
        for (std::size_t before = Longest - 15; before <= Longest + 1; ++before) {
            const std::string text(before, 'x');
            const std::string expected = (text + Left(code)).substr(0, Longest);
            ExpectSections(Expanded(text + code + "/b/c"), expected, "b", "c");
            ExpectSections(Expanded("//" + text + code), "", "", expected);
        }
    }
}

TEST(HeaderFooter, AmpersandAtTheEndOfAFullSectionIsCut)
{
    EXPECT_EQ(Left(std::string(Longest - 1, 'x') + "&"), std::string(Longest - 1, 'x') + "&");
    EXPECT_EQ(Left(std::string(Longest, 'x') + "&"), std::string(Longest, 'x'));
}

TEST(HeaderFooter, ManyLongCodesFillTheSectionsAndNoMore)
{
    const std::string name(1000, 'n');
    const HeaderTexts texts = {name.c_str(), Texts.Date, Texts.Time};
    const std::string full(Longest, 'n');
    ExpectSections(Expanded(Repeated("&f", 29), texts), full, "", "");
    ExpectSections(Expanded(Repeated("&f", 9) + "/" + Repeated("&f", 9) + "/" + Repeated("&f", 9), texts), full, full,
                   full);
    ExpectSections(Expanded(Repeated("&f/", 100), texts), full, full, full);
}

TEST(HeaderFooter, FullSectionsAreFollowedByTheRule)
{
    EXPECT_TRUE(Expanded(std::string(100, 'x') + "&l").Rule);
}

TEST(HeaderFooter, DefaultsAreTheNameWithARuleAndThePage)
{
    const HeaderFooter header = Expanded("&f&l");
    EXPECT_TRUE(header.Rule);
    ExpectSections(header, "REPORT.TXT", "", "");
    const HeaderFooter footer = Expanded("/-&p-");
    EXPECT_FALSE(footer.Rule);
    ExpectSections(footer, "", "-&P-", "");
    EXPECT_EQ(OnPage(footer.Sections[CentreSection], 3), "-3-");
}

TEST(SubstitutePage, EveryPageCodeBecomesTheNumber)
{
    EXPECT_EQ(OnPage("&P", 1), "1");
    EXPECT_EQ(OnPage("-&P-", 12), "-12-");
    EXPECT_EQ(OnPage("&P&P of &P", 7), "77 of 7");
}

TEST(SubstitutePage, TextWithoutPageCodesIsCopied)
{
    for (const char* section : {"", "P", "plain", "&", "&&", "P&", "a&X b& P", "&p", "&\xD0"}) {
        EXPECT_EQ(OnPage(section, 5), section);
    }
}

TEST(SubstitutePage, CodeBehindAnAmpersandIsOneToo)
{
    EXPECT_EQ(OnPage("&&P", 5), "&5");
    EXPECT_EQ(OnPage("&P&", 5), "5&");
    EXPECT_EQ(OnPage("&PP", 5), "5P");
    EXPECT_EQ(OnPage("&&PP", 5), "&5P");
}

TEST(SubstitutePage, LargePageNumbersAreWritten)
{
    EXPECT_EQ(OnPage("&P", 2147483647), "2147483647");
    EXPECT_EQ(OnPage("&P", INT32_MIN), "-2147483648");
    EXPECT_EQ(OnPage("&P", 0), "0");
}

TEST(SubstitutePage, SectionFullOfPageCodesFits)
{
    const std::string section = Repeated("&P", Longest / 2) + "&";
    ASSERT_EQ(section.size(), Longest);
    EXPECT_EQ(OnPage(section, 2147483647), Repeated("2147483647", Longest / 2) + "&");
    EXPECT_EQ(OnPage(section, INT32_MIN), Repeated("-2147483648", Longest / 2) + "&");
}

TEST(SubstitutePage, FullSectionWithoutCodesIsCopied)
{
    const std::string section(Longest, 'x');
    EXPECT_EQ(OnPage(section, 1), section);
}

TEST(SubstitutePage, CodeThatWasCutIsPrintedAsAnAmpersand)
{
    const std::string cut = Left(std::string(Longest - 1, 'x') + "&p");
    EXPECT_EQ(OnPage(cut, 3), std::string(Longest - 1, 'x') + "&");
}

TEST(PrintDate, IsInTheUsersOrder)
{
    const ClockTime winter = {1994, 11, 30, 3, 0, 0, 0};
    EXPECT_EQ(Date(winter, Settings(MonthDayYear, 0)), "Wed 11/30/94");
    EXPECT_EQ(Date(winter, Settings(DayMonthYear, 0)), "Wed 30/11/94");
    EXPECT_EQ(Date(winter, Settings(YearMonthDay, 0)), "Wed 94/11/30");
}

TEST(PrintDate, UnknownOrderIsMonthDayYear)
{
    for (const std::int32_t order : {-1, 3, 99, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(Date(Afternoon, Settings(order, 0)), "Thu 3/09/95") << order;
    }
}

TEST(PrintDate, OnlyTheFirstNumberHasNoLeadingZero)
{
    const ClockTime spring = {2005, 3, 9, 3, 0, 0, 0};
    EXPECT_EQ(Date(spring, Settings(MonthDayYear, 0)), "Wed 3/09/05");
    EXPECT_EQ(Date(spring, Settings(DayMonthYear, 0)), "Wed 9/03/05");
    EXPECT_EQ(Date(spring, Settings(YearMonthDay, 0)), "Wed 5/03/09");
}

TEST(PrintDate, YearHasItsLastTwoDigits)
{
    ClockTime time = Afternoon;
    for (const auto& [year, shown] : {std::pair{1999, "99"}, {2000, "00"}, {2010, "10"}, {2101, "01"}}) {
        time.Year = year;
        EXPECT_EQ(Date(time, Settings(MonthDayYear, 0)), std::string("Thu 3/09/") + shown);
    }
    time.Year = 2000;
    EXPECT_EQ(Date(time, Settings(YearMonthDay, 0)), "Thu 0/03/09");
}

TEST(PrintDate, WeekdaysBeginWithSunday)
{
    const char* const names[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    ClockTime time = Afternoon;
    for (int day = 0; day < 7; ++day) {
        time.Weekday = day;
        EXPECT_EQ(Date(time, Settings(MonthDayYear, 0)), std::string(names[day]) + " 3/09/95");
    }
}

TEST(PrintDate, SeparatorIsTheUsers)
{
    IntlSettings intl = Settings(DayMonthYear, 0);
    CopyText(intl.DateSeparator, ".");
    EXPECT_EQ(Date(Afternoon, intl), "Thu 9.03.95");
    CopyText(intl.DateSeparator, "%");
    EXPECT_EQ(Date(Afternoon, intl), "Thu 9%03%95");
    CopyText(intl.DateSeparator, "");
    EXPECT_EQ(Date(Afternoon, intl), "Thu 90395");
}

TEST(PrintDate, AbsurdNumbersStayWithinTheText)
{
    for (const int number : {INT32_MIN, -1, 7, INT32_MAX}) {
        const ClockTime time = {number, number, number, number, number, number, number};
        for (const std::int32_t order : {MonthDayYear, DayMonthYear, YearMonthDay}) {
            EXPECT_LT(Date(time, Settings(order, 0)).size(), std::size_t{PrintDateSize});
        }
        for (const std::int32_t format : {0, 1}) {
            EXPECT_LT(Time(time, Settings(MonthDayYear, format)).size(), std::size_t{PrintTimeSize});
        }
    }
}

TEST(PrintTime, HasTwoDigitsEachOnA24HourClock)
{
    EXPECT_EQ(TimeAt(0, 1), "00:09:05");
    EXPECT_EQ(TimeAt(5, 1), "05:09:05");
    EXPECT_EQ(TimeAt(12, 1), "12:09:05");
    EXPECT_EQ(TimeAt(17, 1), "17:09:05");
    EXPECT_EQ(TimeAt(23, 1), "23:09:05");
}

TEST(PrintTime, HourHasNoLeadingZeroOnA12HourClock)
{
    EXPECT_EQ(TimeAt(1, 0), "1:09:05 AM");
    EXPECT_EQ(TimeAt(11, 0), "11:09:05 AM");
    EXPECT_EQ(TimeAt(13, 0), "1:09:05 PM");
    EXPECT_EQ(TimeAt(23, 0), "11:09:05 PM");
}

TEST(PrintTime, MidnightAndNoonAreTwelve)
{
    EXPECT_EQ(TimeAt(0, 0), "12:09:05 AM");
    EXPECT_EQ(TimeAt(12, 0), "12:09:05 PM");
}

TEST(PrintTime, SeparatorAndHalvesOfTheDayAreTheUsers)
{
    IntlSettings intl = Settings(MonthDayYear, 0);
    CopyText(intl.TimeSeparator, ".");
    CopyText(intl.Morning, "a.m.");
    CopyText(intl.Afternoon, "nach");
    EXPECT_EQ(Time(Afternoon, intl), "5.09.05 nach");
    EXPECT_EQ(Time({1995, 3, 9, 4, 11, 59, 59}, intl), "11.59.59 a.m.");
    intl.TimeFormat = 1;
    EXPECT_EQ(Time(Afternoon, intl), "17.09.05");
}

TEST(PrintTime, LongestTextIsWhole)
{
    IntlSettings intl = Settings(MonthDayYear, 0);
    CopyText(intl.Afternoon, "pm%s");
    EXPECT_EQ(Time({1995, 3, 9, 4, 22, 58, 59}, intl), "10:58:59 pm%s");
}
