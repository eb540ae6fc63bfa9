#include "print/header_footer.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

// Where what is expanded goes to.
struct SectionWriter {
    HeaderFooter& Part;
    int Section = LeftSection;
    int Length = 0;
};

void Put(SectionWriter& writer, char character)
{
    if (writer.Length < HeaderSectionSize - 1) {
        writer.Part.Sections[writer.Section][writer.Length++] = character;
    }
}

void Put(SectionWriter& writer, const char* text)
{
    for (; *text != '\0'; ++text) {
        Put(writer, *text);
    }
}

void GoOnInNextSection(SectionWriter& writer)
{
    if (writer.Section < RightSection) {
        ++writer.Section;
        writer.Length = 0;
    }
}

char UpperCase(char character)
{
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

void PutCode(SectionWriter& writer, char code, const HeaderTexts& texts)
{
    switch (UpperCase(code)) {
    case 'F': Put(writer, texts.DocName); break;
    case 'D': Put(writer, texts.Date); break;
    case 'T': Put(writer, texts.Time); break;
    case 'L': writer.Part.Rule = true; break;
    default:
        Put(writer, '&');
        Put(writer, UpperCase(code));
        break;
    }
}

} // namespace

void FormatPrintDate(const ClockTime& time, const IntlSettings& intl, char (&text)[PrintDateSize])
{
    static const char* const Weekdays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    const int year = time.Year % 100;
    int parts[3] = {time.Month, time.Day, year};
    if (intl.Order == DayMonthYear) {
        parts[0] = time.Day;
        parts[1] = time.Month;
    } else if (intl.Order == YearMonthDay) {
        parts[0] = year;
        parts[1] = time.Month;
        parts[2] = time.Day;
    }
    snprintf(text, sizeof text, "%s %d%s%02d%s%02d", Weekdays[std::clamp(time.Weekday, 0, 6)], parts[0],
             intl.DateSeparator, parts[1], intl.DateSeparator, parts[2]);
}

void FormatPrintTime(const ClockTime& time, const IntlSettings& intl, char (&text)[PrintTimeSize])
{
    constexpr int HalfDay = 12;
    const char* const separator = intl.TimeSeparator;
    if (intl.TimeFormat == 1) {
        snprintf(text, sizeof text, "%02d%s%02d%s%02d", time.Hour, separator, time.Minute, separator, time.Second);
        return;
    }
    const int hour = time.Hour % HalfDay;
    snprintf(text, sizeof text, "%d%s%02d%s%02d %s", hour == 0 ? HalfDay : hour, separator, time.Minute, separator,
             time.Second, time.Hour >= HalfDay ? intl.Afternoon : intl.Morning);
}

void ExpandHeaderFooter(const char* codes, const HeaderTexts& texts, HeaderFooter& part)
{
    part = {};
    SectionWriter writer{part};
    for (const char* at = codes; *at != '\0'; ++at) {
        if (*at == '/') {
            GoOnInNextSection(writer);
        } else if (*at != '&') {
            Put(writer, *at);
        } else if (at[1] != '\0') {
            PutCode(writer, *++at, texts);
        } else {
            Put(writer, '&');
        }
    }
}

void SubstitutePage(const char (&section)[HeaderSectionSize], std::int32_t page, char (&text)[PrintedSectionSize])
{
    char number[12];
    snprintf(number, sizeof number, "%d", static_cast<int>(page));
    const std::size_t digits = strlen(number);
    std::size_t length = 0;
    for (const char* at = section; *at != '\0'; ++at) {
        if (at[0] == '&' && at[1] == 'P') {
            memcpy(text + length, number, digits);
            length += digits;
            ++at;
        } else {
            text[length++] = *at;
        }
    }
    text[length] = '\0';
}
