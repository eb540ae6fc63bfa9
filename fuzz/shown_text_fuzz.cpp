// Texts that are shown or handed on: shortened paths, sizes, dates, attributes and command lines.
//
// Input: a path, an editor and four attribute words, each with a zero byte behind it, then numbers.
#include "fuzz_input.h"

#include "base/format.h"
#include "base/text.h"
#include "files/attribute_text.h"
#include "files/info_text.h"
#include "files/launch_command.h"
#include "files/list_date.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

namespace {

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

// In a buffer that has room for so many more characters.
void CheckShortened(const std::string& path, std::size_t limit, char separator, std::size_t room)
{
    std::vector<char> text(path.c_str(), path.c_str() + path.size() + 1);
    text.resize(text.size() + room);
    ShortenPath(text.data(), text.size(), limit, separator);
    std::string expected = path;
    const std::size_t headLength = path.find(separator) + 1; // 0 = there is no head
    if (path.size() > limit && headLength > 0) {
        const std::size_t skipped = std::clamp(path.size() - limit + 3, headLength, path.size());
        const std::size_t boundary = path.find(separator, skipped);
        expected.resize(headLength);
        expected += "..." + path.substr(boundary != std::string::npos ? boundary : skipped);
    }
    Require(text.data() == (expected.size() > path.size() + room ? path : expected), "a path is shortened by the rule");
}

std::string WithoutCommas(std::string text)
{
    text.erase(std::remove(text.begin(), text.end(), ','), text.end());
    return text;
}

std::string Grouped(std::int32_t number)
{
    return Written<GroupedSize>([number](char(&text)[GroupedSize]) { FormatGrouped(number, text); });
}

void CheckGrouped(std::int32_t number)
{
    const std::string text = Grouped(number);
    const std::string digits = std::to_string(number);
    Require(WithoutCommas(text) == digits, "commas leave the number as it is");
    const std::size_t commas = (digits.size() > 3) + (digits.size() >= 7);
    Require(text.size() == digits.size() + commas, "a number has none, one or two commas");
    for (std::size_t comma = 1; comma <= commas; ++comma) {
        Require(text[text.size() - 4 * comma] == ',', "a comma stands before each of the last groups");
    }
}

void CheckFileSize(std::int32_t number)
{
    const auto format = [](std::int32_t bytes) {
        return Written<FileSizeTextSize>([bytes](char(&text)[FileSizeTextSize]) { FormatFileSize(bytes, text); });
    };
    format(number);
    const std::int32_t bytes = number & INT32_MAX;
    const std::int64_t kilobytes = (static_cast<std::int64_t>(bytes) + 513) / 1024;
    Require(format(bytes) == Grouped(bytes) + " Bytes (" + Grouped(static_cast<std::int32_t>(kilobytes)) + "K)",
            "a size has its bytes and kilobytes");
}

void CheckAttributes(std::uint16_t attributes, const AttributeWords& words)
{
    const std::string text = Written<AttributeTextSize>(
        [&](char(&written)[AttributeTextSize]) { FormatAttributes(attributes, words, written); });
    std::string expected;
    for (const auto& [bit, word] : {std::pair{1, words.ReadOnly}, std::pair{32, words.Archive},
                                    std::pair{4, words.System}, std::pair{2, words.Hidden}}) {
        if ((attributes & bit) != 0) {
            expected += std::string(word) + " ";
        }
    }
    Require(text == expected, "attributes are their words");
}

bool HasExtension(const std::string& path)
{
    const std::size_t dot = path.rfind('.');
    // The first character is no separator.
    const std::size_t separator = path.find_last_of("\\:");
    return dot != std::string::npos && (separator == std::string::npos || separator == 0 || dot > separator);
}

void CheckCommands(const std::string& editor, const std::string& path)
{
    const std::string quote = path.find_first_of(" &()[]{}^=;!'+,`~%") != std::string::npos ? "\"" : "";
    const std::string run =
        Written<LaunchCommandSize>([&](char(&command)[LaunchCommandSize]) { RunCommand(path.c_str(), command); });
    Require(run == quote + path + quote, "a program is run by its path");
    const std::string edit = Written<LaunchCommandSize>(
        [&](char(&command)[LaunchCommandSize]) { EditCommand(editor.c_str(), path.c_str(), command); });
    const std::string dot = HasExtension(path) ? "" : ".";
    Require(edit == editor + " " + quote + path + dot + quote, "an editor is given the path");
}

// Longer texts than there are, which are cut.
void CheckLongCommands(const std::string& editor, const std::string& path)
{
    Written<LaunchCommandSize>([&](char(&command)[LaunchCommandSize]) { RunCommand(path.c_str(), command); });
    Written<LaunchCommandSize>(
        [&](char(&command)[LaunchCommandSize]) { EditCommand(editor.c_str(), path.c_str(), command); });
}

std::string TwoDigits(int number)
{
    const std::string digits = std::to_string(number);
    return digits.size() < 2 ? "0" + digits : digits;
}

std::string ListDate(const FileDate& date, const IntlSettings& intl)
{
    return Written<FileDateSize>([&](char(&text)[FileDateSize]) { FormatFileDate(date, intl, text); });
}

void CheckListDate(FuzzInput& input)
{
    IntlSettings intl;
    intl.Order = input.Byte() - 1;
    intl.TimeFormat = input.Byte() % 3;
    intl.DateSeparator[0] = static_cast<char>(input.Byte());
    intl.TimeSeparator[0] = static_cast<char>(input.Byte());
    const FileDate any = {std::max(input.Number32(), INT32_MIN + 1900), input.Number32(), input.Number32(),
                          input.Number32(), input.Number32()};
    ListDate(any, intl);
    const FileDate date = {1900 + (any.Year & 4095), 1 + (any.Month & 7), 1 + (any.Day & 15), any.Hour & 15,
                           any.Minute & 31};
    const std::string year = TwoDigits(date.Year - 1900);
    const std::string month = TwoDigits(date.Month);
    const std::string day = TwoDigits(date.Day);
    const std::string between = intl.DateSeparator;
    std::string expected = month + between + day + between + year;
    if (intl.Order == DayMonthYear) {
        expected = day + between + month + between + year;
    } else if (intl.Order == YearMonthDay) {
        expected = year + between + month + between + day;
    }
    const int hour = intl.TimeFormat == 1 ? date.Hour : (date.Hour + 11) % 12 + 1;
    expected += "  " + TwoDigits(hour) + intl.TimeSeparator + TwoDigits(date.Minute);
    Require(ListDate(date, intl) == expected, "a date is written in the user's order");
}

void CheckLongDate(std::int32_t seconds)
{
    const std::time_t moment = seconds & INT32_MAX;
    const std::tm time = *gmtime(&moment);
    const std::string date = Written<LongDateSize>([&time](char(&text)[LongDateSize]) { FormatLongDate(time, text); });
    Require(date.size() == 16 && date.substr(12) == std::to_string(time.tm_year + 1900) &&
                date.substr(4, 2) == TwoDigits(time.tm_mday),
            "a long date has day and year");
    const std::string clock = Written<LongTimeSize>([&time](char(&text)[LongTimeSize]) { FormatLongTime(time, text); });
    Require(clock == "at " + TwoDigits((time.tm_hour + 11) % 12 + 1) + ":" + TwoDigits(time.tm_min) + ":" +
                         TwoDigits(time.tm_sec) + (time.tm_hour < 12 ? " AM" : " PM"),
            "a long time is that of a twelve-hour clock");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const std::string path = input.Text();
    const std::string editor = input.Text();
    AttributeWords words;
    for (auto* word : {&words.ReadOnly, &words.Archive, &words.System, &words.Hidden}) {
        CopyText(*word, input.Text().c_str());
    }
    const std::size_t limit = input.Number16() % 300;
    CheckShortened(path, limit, '\\', 3);
    CheckShortened(path, limit, '/', 0);
    CheckCommands(editor.substr(0, MaxPathSize - 1), path.substr(0, MaxPathSize - 1));
    CheckLongCommands(editor, path);
    CheckAttributes(static_cast<std::uint16_t>(input.Number16()), words);
    const std::int32_t number = input.Number32();
    CheckGrouped(number);
    CheckGrouped(number % 10000);
    CheckFileSize(number);
    CheckLongDate(number);
    CheckListDate(input);
    return 0;
}
