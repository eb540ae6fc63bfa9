// Headers and footers: the codes they are written in, and what is printed for them.
//
// "&f" stands for the file's name, "&d" for the date, "&t" for the time, "&p" for the page's number and "&l" for a
// line across the page, in either case; "/" goes on in the next of three sections.
#pragma once

#include "base/intl.h"

#include <cstdint>

enum HeaderSection { LeftSection, CentreSection, RightSection, HeaderSectionCount };

constexpr int HeaderSectionSize = 60; // bytes, with the terminator

struct HeaderFooter {
    char Sections[HeaderSectionCount][HeaderSectionSize] = {};
    bool Rule = false; // a line is drawn across the page
};

// A moment on the user's clock.
struct ClockTime {
    int Year;
    int Month; // from 1
    int Day;
    int Weekday; // from 0 for Sunday
    int Hour;    // from 0 to 23
    int Minute;
    int Second;
};

constexpr int PrintDateSize = 24;
constexpr int PrintTimeSize = 24;

// Such as "Sun 3/09/95", in the user's order and with the user's separator; the first number has no leading zero.
void FormatPrintDate(const ClockTime& time, const IntlSettings& intl, char (&text)[PrintDateSize]);

// Such as "17:05:09" or "5:05:09 PM".
void FormatPrintTime(const ClockTime& time, const IntlSettings& intl, char (&text)[PrintTimeSize]);

// What the codes stand for in a job.
struct HeaderTexts {
    const char* DocName;
    const char* Date;
    const char* Time;
};

// Expands codes; a section is cut where it is full. The page's number is still a code then, "&P", and so is a "&" in
// front of any other character.
void ExpandHeaderFooter(const char* codes, const HeaderTexts& texts, HeaderFooter& part);

// Room for a section in which everything is page numbers.
constexpr int PrintedSectionSize = HeaderSectionSize / 2 * 11 + 1;

// The section's text on a page: every "&P" becomes the page's number.
void SubstitutePage(const char (&section)[HeaderSectionSize], std::int32_t page, char (&text)[PrintedSectionSize]);
