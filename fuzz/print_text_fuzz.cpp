// What is printed: margins, the layout of a page, headers and footers, and lines cut into pieces.
//
// Input: codes, the document's name and four margins, each with a zero byte behind it, then numbers, then a line.
#include "fuzz_input.h"

#include "print/header_footer.h"
#include "print/margin.h"
#include "print/page_layout.h"
#include "print/print_piece.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

namespace {

constexpr std::size_t LongestSection = HeaderSectionSize - 1;
constexpr std::size_t LongestLine = 1024;
constexpr std::size_t CountedDigits = 9; // that a sum of does not overflow

// A text on the heap and not a byte more, so that the byte behind it is not ours.
template <std::size_t Size> struct HeapText {
    char Text[Size];
};

// What format writes into a buffer of Size bytes that held something else before.
template <std::size_t Size, typename Format> std::string Written(Format format)
{
    const auto buffer = std::make_unique<HeapText<Size>>();
    memset(buffer->Text, '#', Size);
    format(buffer->Text);
    Require(memchr(buffer->Text, '\0', Size) != nullptr, "a text ends within its buffer");
    return buffer->Text;
}

std::string TwoDigits(int number)
{
    const std::string digits = std::to_string(number);
    return digits.size() < 2 ? "0" + digits : digits;
}

std::string PrintDate(const ClockTime& time, const IntlSettings& intl)
{
    return Written<PrintDateSize>([&](char(&text)[PrintDateSize]) { FormatPrintDate(time, intl, text); });
}

std::string PrintTime(const ClockTime& time, const IntlSettings& intl)
{
    return Written<PrintTimeSize>([&](char(&text)[PrintTimeSize]) { FormatPrintTime(time, intl, text); });
}

void CheckDate(const ClockTime& time, const IntlSettings& intl)
{
    std::vector<int> numbers = {time.Month, time.Day, time.Year % 100};
    if (intl.Order == DayMonthYear) {
        std::swap(numbers[0], numbers[1]);
    } else if (intl.Order == YearMonthDay) {
        std::rotate(numbers.begin(), numbers.end() - 1, numbers.end());
    }
    const std::string weekday =
        std::string("SunMonTueWedThuFriSat").substr(static_cast<std::size_t>(time.Weekday) * 3, 3);
    Require(PrintDate(time, intl) == weekday + " " + std::to_string(numbers[0]) + intl.DateSeparator +
                                         TwoDigits(numbers[1]) + intl.DateSeparator + TwoDigits(numbers[2]),
            "a date is written in the user's order");
}

void CheckTime(const ClockTime& time, const IntlSettings& intl)
{
    const bool wholeDay = intl.TimeFormat == 1;
    const std::string hour = wholeDay ? TwoDigits(time.Hour) : std::to_string((time.Hour + 11) % 12 + 1);
    const std::string half = wholeDay ? "" : std::string(" ") + (time.Hour < 12 ? intl.Morning : intl.Afternoon);
    Require(PrintTime(time, intl) ==
                hour + intl.TimeSeparator + TwoDigits(time.Minute) + intl.TimeSeparator + TwoDigits(time.Second) + half,
            "a time is that of the user's clock");
}

// Any numbers, then those that a clock can have; what they are written as goes into the texts.
void CheckMoment(FuzzInput& input, std::string& date, std::string& clock)
{
    IntlSettings intl;
    intl.Order = input.Byte() - 1;
    intl.TimeFormat = input.Byte() % 3;
    intl.DateSeparator[0] = static_cast<char>(input.Byte());
    intl.TimeSeparator[0] = static_cast<char>(input.Byte());
    intl.Afternoon[3] = static_cast<char>(input.Byte());
    intl.Afternoon[2] = 'm';
    const ClockTime any = {input.Number32(), input.Number32(), input.Number32(), input.Number32(),
                           input.Number32(), input.Number32(), input.Number32()};
    date = PrintDate(any, intl);
    clock = PrintTime(any, intl);
    const auto within = [](int number, int count) { return static_cast<int>(static_cast<unsigned>(number) % count); };
    const ClockTime time = {within(any.Year, 30000), within(any.Month, 12) + 1, within(any.Day, 31) + 1,
                            within(any.Weekday, 7),  within(any.Hour, 24),      within(any.Minute, 60),
                            within(any.Second, 60)};
    CheckDate(time, intl);
    CheckTime(time, intl);
}

std::string Replaced(std::string text, const std::string& code, const std::string& by)
{
    for (std::size_t at = text.find(code); at != std::string::npos; at = text.find(code, at + by.size())) {
        text.replace(at, code.size(), by);
    }
    return text;
}

void CheckPage(const std::string& section, std::int32_t page)
{
    HeapText<HeaderSectionSize> exact = {};
    memcpy(exact.Text, section.data(), section.size());
    const std::string text = Written<PrintedSectionSize>(
        [&](char(&printed)[PrintedSectionSize]) { SubstitutePage(exact.Text, page, printed); });
    Require(text == Replaced(section, "&P", std::to_string(page)), "every page code becomes the number");
}

// What codes stand for, without a limit.
struct ExpectedPart {
    std::string Sections[HeaderSectionCount];
    bool Rule = false;
};

ExpectedPart ExpandWithoutLimit(const std::string& codes, const HeaderTexts& texts)
{
    ExpectedPart part;
    std::string* section = part.Sections;
    for (std::size_t at = 0; at < codes.size(); ++at) {
        const bool isCode = codes[at] == '&' && at + 1 < codes.size();
        const char code = isCode ? codes[++at] : codes[at];
        if (!isCode && code == '/') {
            section += section < part.Sections + RightSection ? 1 : 0;
        } else if (!isCode) {
            *section += code;
        } else if (code == 'f' || code == 'F') {
            *section += texts.DocName;
        } else if (code == 'd' || code == 'D') {
            *section += texts.Date;
        } else if (code == 't' || code == 'T') {
            *section += texts.Time;
        } else if (code == 'l' || code == 'L') {
            part.Rule = true;
        } else {
            *section += {'&', static_cast<char>(code >= 'a' && code <= 'z' ? code - 'a' + 'A' : code)};
        }
    }
    return part;
}

void CheckHeader(const std::string& codes, const HeaderTexts& texts, std::int32_t page)
{
    const auto part = std::make_unique<HeaderFooter>();
    memset(part->Sections, '#', sizeof part->Sections);
    part->Rule = true;
    ExpandHeaderFooter(codes.c_str(), texts, *part);
    const ExpectedPart expected = ExpandWithoutLimit(codes, texts);
    Require(part->Rule == expected.Rule, "a rule is drawn when its code is there");
    for (int section = 0; section < HeaderSectionCount; ++section) {
        const std::string whole = expected.Sections[section].substr(0, LongestSection);
        Require(memcmp(part->Sections[section], whole.c_str(), whole.size() + 1) == 0,
                "a section is what its codes say, cut where it is full");
        CheckPage(whole, page);
    }
}

bool IsMargin(const std::string& text)
{
    return text.find_first_not_of("0123456789.") == std::string::npos && std::count(text.begin(), text.end(), '.') <= 1;
}

// For texts of CountedDigits at most.
std::int64_t Hundredths(const std::string& text)
{
    const std::size_t point = std::min(text.find('.'), text.size());
    std::int64_t hundredths = 0;
    for (std::size_t at = 0; at < point + 3; ++at) {
        if (at != point) {
            hundredths = hundredths * 10 + (at < text.size() ? text[at] - '0' : 0);
        }
    }
    return hundredths;
}

std::int32_t CheckedMargin(const std::string& text, std::int32_t logPixelsY, bool inches)
{
    constexpr std::int64_t MostHundredths = 100000000;
    const std::int32_t margin = MarginToDevice(text.c_str(), logPixelsY, inches);
    Require((margin == NoMargin) == !IsMargin(text), "a margin is a number without a sign");
    Require(margin >= NoMargin, "no margin is negative");
    if (IsMargin(text) && text.size() <= CountedDigits && Hundredths(text) <= MostHundredths && logPixelsY >= 0) {
        const std::int64_t device = logPixelsY * Hundredths(text) / (inches ? 100 : 254);
        Require(margin == std::min<std::int64_t>(device, INT32_MAX), "a margin is what it says, cut to its hundredths");
    }
    return std::max(margin, 0);
}

void CheckMarginsFit(std::int32_t top, std::int32_t bottom, std::int32_t pageHeight)
{
    const std::int64_t least = static_cast<std::int64_t>(top) + bottom + 20;
    Require(MarginsFitPage(top, bottom, pageHeight) == (least <= pageHeight), "margins that fit leave a bit");
    if (least <= INT32_MAX) {
        const auto height = static_cast<std::int32_t>(least);
        Require(MarginsFitPage(top, bottom, height) && !MarginsFitPage(top, bottom, height - 1), "and no more");
    }
}

// Nothing overflows, and what lies within the page does not lie upon each other.
void CheckLayout(PageLayout page, bool hasHeader, bool hasFooter)
{
    LayOutPage(page, hasHeader, hasFooter);
    const PageBand header = BandOf(PagePart::Header, page);
    const PageBand footer = BandOf(PagePart::Footer, page);
    const std::int32_t headerRule = RuleY(PagePart::Header, page);
    const std::int32_t footerRule = RuleY(PagePart::Footer, page);
    const std::int32_t bodyEnd = RowY(page, page.LinesPerPage);
    Require(page.LinesPerPage >= 1, "a page has a line at least");
    Require(header.Left == footer.Left && header.Right == footer.Right, "header and footer are as wide");
    const std::int64_t width = static_cast<std::int64_t>(header.Right) - header.Left;
    Require(page.PageWidth < 0 || LineWidth(page) == std::max<std::int64_t>(width, INT32_MIN), "so is the body");
    const bool isPaper = page.PageHeight > 0 && page.PageHeight < 100000 && page.PrintLineHeight > 0 &&
                         page.HFLineHeight >= 0 && page.MarginTop < 100000 && page.MarginBottom < 100000;
    if (!isPaper || page.LinesPerPage == 1) {
        return;
    }
    Require(page.FirstLineY == (hasHeader ? header.Bottom + page.PrintLineHeight : page.MarginTop),
            "a header has a line between it and the body");
    Require(headerRule == header.Bottom && footerRule <= footer.Top, "rules are drawn towards the body");
    Require(footer.Bottom == page.PageHeight - page.MarginBottom, "a footer stands upon the margin");
    const std::int32_t limit = hasFooter ? footer.Top - page.PrintLineHeight : footer.Bottom;
    Require(bodyEnd <= limit && bodyEnd > limit - page.PrintLineHeight, "the body fills what is left");
    Require(RowY(page, 0) == page.FirstLineY, "the body begins with its first line");
}

void CheckRows(std::int32_t first, std::int32_t last, std::int32_t fileSize)
{
    const DumpRange range = RowsToPrint(first, last, fileSize);
    Require(range.Start >= 0 && range.Start % 16 == 0 && range.End <= fileSize, "rows are those of the file");
    const std::int64_t rows = range.End > range.Start ? (range.End - range.Start + 15) / 16 : 0;
    const std::int64_t fileRows = (fileSize + 15LL) / 16;
    const std::int64_t end = first == 0 ? fileRows : std::min<std::int64_t>(last, fileRows);
    Require(rows == std::max<std::int64_t>(end - std::max(first - 1, 0), 0), "just the selected rows are printed");
}

// A line on the heap and not a byte more.
struct MeasuredLine {
    std::vector<char> Bytes;
    std::int32_t Widest;
    std::int32_t Noise; // up to which a width is wrong
};

std::int32_t WidthInLine(const void* context, const char* text, std::int32_t length)
{
    const auto& line = *static_cast<const MeasuredLine*>(context);
    Require(length >= 0 && text >= line.Bytes.data() && text + length <= line.Bytes.data() + line.Bytes.size(),
            "nothing but the line is measured");
    std::int32_t width = 0;
    for (std::int32_t i = 0; i < length; ++i) {
        width += static_cast<std::uint8_t>(text[i]) * 31 % (line.Widest + 1);
    }
    return line.Noise > 0 ? width - length * 7919 % line.Noise : width;
}

// By the rule, for a line that is not empty.
std::int32_t ExpectedLength(const TextSpan& rest, std::int32_t width, const TextMeasure& measure)
{
    const auto fits = [&](std::int32_t length) { return measure.Width(measure.Context, rest.Text, length) <= width; };
    if (fits(rest.Length)) {
        return rest.Length;
    }
    std::int32_t fitting = 0;
    for (std::int32_t end = 1; end <= rest.Length; ++end) {
        const bool endsWord = rest.Text[end - 1] != ' ' && (end == rest.Length || rest.Text[end] == ' ');
        if (endsWord && !fits(end)) {
            break;
        }
        fitting = endsWord ? end : fitting;
    }
    std::int32_t characters = 0;
    while (fitting == 0 && characters + 1 < rest.Length && fits(characters + 1)) {
        ++characters;
    }
    return std::max({fitting, characters - 1, 1});
}

void CheckPieces(const MeasuredLine& line, std::int32_t width, bool wrap)
{
    const TextMeasure measure = {WidthInLine, &line};
    TextSpan rest = {line.Bytes.data(), static_cast<std::int32_t>(line.Bytes.size())};
    do {
        const TextSpan before = rest;
        const TextSpan piece = NextPrintPiece(rest, width, wrap, measure);
        const bool whole = !wrap || before.Length == 0;
        Require(piece.Text == before.Text &&
                    piece.Length == (whole ? before.Length : ExpectedLength(before, width, measure)),
                "a piece is cut by the rule");
        Require(rest.Length >= 0 && rest.Text + rest.Length == before.Text + before.Length, "the line ends as before");
        const char* const end = piece.Text + piece.Length;
        Require(rest.Text >= end && std::all_of(end, rest.Text, [](char byte) { return byte == ' '; }),
                "only blanks are skipped");
        Require(rest.Length == 0 || (rest.Text[0] != ' ' && rest.Length < before.Length), "the line comes to its end");
    } while (rest.Length > 0);
}

void CheckPaper(FuzzInput& input, const std::string (&margins)[4])
{
    const std::uint8_t switches = input.Byte();
    PageLayout page;
    page.LogPixelsY = input.Number32();
    page.PageWidth = input.Number32();
    page.PageHeight = input.Number32();
    page.PrintLineHeight = (switches & 1) != 0 ? input.Number32() : input.Byte();
    page.HFLineHeight = (switches & 1) != 0 ? input.Number32() : input.Byte();
    const bool inches = (switches & 2) != 0;
    page.MarginLeft = CheckedMargin(margins[0], page.LogPixelsY, inches);
    page.MarginRight = CheckedMargin(margins[1], page.LogPixelsY, inches);
    page.MarginTop = CheckedMargin(margins[2], page.LogPixelsY, inches);
    page.MarginBottom = CheckedMargin(margins[3], page.LogPixelsY, inches);
    CheckMarginsFit(page.MarginTop, page.MarginBottom, page.PageHeight);
    CheckLayout(page, (switches & 4) != 0, (switches & 8) != 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const std::string codes = input.Text();
    const std::string name = input.Text();
    std::string margins[4];
    for (std::string& margin : margins) {
        margin = input.Text();
    }
    CheckPaper(input, margins);
    std::string date;
    std::string clock;
    CheckMoment(input, date, clock);
    CheckHeader(codes, {name.c_str(), date.c_str(), clock.c_str()}, input.Number32());
    const std::int32_t first = input.Number32() & INT32_MAX;
    const std::int32_t last = input.Number32() & INT32_MAX;
    CheckRows(first, last, input.Number32() & INT32_MAX);

    const std::uint8_t switches = input.Byte();
    const std::int32_t width = static_cast<std::int32_t>(input.Number16() % 1000) - 10;
    MeasuredLine line = {{}, input.Byte(), (switches & 1) != 0 ? 1 + input.Byte() * 4 : 0};
    while (!input.AtEnd() && line.Bytes.size() < LongestLine) {
        line.Bytes.push_back(static_cast<char>(input.Byte()));
    }
    line.Bytes.shrink_to_fit();
    CheckPieces(line, width, (switches & 2) == 0);
    return 0;
}
