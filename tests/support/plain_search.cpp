#include "support/plain_search.h"

#include "document/document_state.h"
#include "search/find_state.h"
#include "search/search_hex.h"
#include "search/search_origin.h"
#include "search/search_pattern.h"
#include "search/search_text.h"
#include "view/view_state.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

constexpr std::int64_t RowBytes = 16;
constexpr std::int64_t WindowRows = 32;

std::int64_t LengthOf(const std::string& text)
{
    return static_cast<std::int64_t>(text.size());
}

char FromEbcdic(char character)
{
    static constexpr struct {
        std::uint8_t Byte;
        const char* Characters; // of Byte and the bytes behind it
    } Runs[] = {
        {0x40, " "},        {0x4A, "\xA2.<(+"}, {0x50, "&"},          {0x5A, "!$*);"},      {0x60, "-/"},
        {0x6A, "|,%_>?"},   {0x7A, ":#@'"},     {0x7F, "\""},         {0x81, "abcdefghi"},  {0x91, "jklmnopqr"},
        {0xA2, "stuvwxyz"}, {0xAD, "["},        {0xBD, "]"},          {0xC0, "{ABCDEFGHI"}, {0xD0, "}JKLMNOPQR"},
        {0xE0, "\\"},       {0xE2, "STUVWXYZ"}, {0xF0, "0123456789"},
    };
    const auto byte = static_cast<std::uint8_t>(character);
    for (const auto& run : Runs) {
        if (byte >= run.Byte && byte - run.Byte < static_cast<int>(strlen(run.Characters))) {
            return run.Characters[byte - run.Byte];
        }
    }
    return character;
}

bool StandsAt(const std::string& text, std::int64_t at, const std::string& pattern)
{
    if (at < 0 || at + LengthOf(pattern) > LengthOf(text)) {
        return false;
    }
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (text[static_cast<std::size_t>(at) + i] != pattern[i]) {
            return false;
        }
    }
    return true;
}

// Where pattern begins in text: the first time at start or behind it, or the last time that it ends at start
// or before it; -1 = not at all.
std::int64_t FindIn(const std::string& text, const std::string& pattern, std::int64_t start, bool backwards)
{
    if (backwards) {
        const std::int64_t end = std::min(start, LengthOf(text) - 1);
        for (std::int64_t at = end - (LengthOf(pattern) - 1); at >= 0; --at) {
            if (StandsAt(text, at, pattern)) {
                return at;
            }
        }
        return -1;
    }
    if (start < 0) {
        return -1;
    }
    for (std::int64_t at = start; at + LengthOf(pattern) <= LengthOf(text); ++at) {
        if (StandsAt(text, at, pattern)) {
            return at;
        }
    }
    return -1;
}

int DigitOf(char digit)
{
    return digit <= '9' ? digit - '0' : digit - 'A' + 10;
}

} // namespace

std::int32_t PlainSearch::RowCount() const
{
    return Options.HexMode ? (Document.Size() + 15) / 16 : Document.LineCount;
}

std::string PlainSearch::DisplayLine(std::int32_t line)
{
    std::string text = Document.ReadLineText(line);
    if (Options.Ebcdic) {
        std::transform(text.begin(), text.end(), text.begin(), FromEbcdic);
    }
    return text;
}

std::string PlainSearch::Capitals(std::string text) const
{
    if (!Options.MatchCase) {
        ToCapitals(text.data(), static_cast<std::int32_t>(text.size()));
    }
    return text;
}

std::string PlainSearch::Pattern() const
{
    if (Options.Hex.empty()) {
        return Capitals(Options.Text);
    }
    std::string bytes;
    for (std::size_t i = 0; i + 1 < Options.Hex.size(); i += 2) {
        bytes += static_cast<char>(DigitOf(Options.Hex[i]) * 16 + DigitOf(Options.Hex[i + 1]));
    }
    return Capitals(bytes);
}

bool PlainSearch::SearchTextLines(const std::string& pattern, std::int64_t line, std::int64_t column)
{
    for (bool first = true; line >= 1 && line <= Document.LineCount; first = false) {
        const std::int32_t number = static_cast<std::int32_t>(line);
        const std::string text = Options.Hex.empty() ? Capitals(DisplayLine(number)) : Document.ReadLineText(number);
        if (!first) {
            column = Options.Backwards ? LengthOf(text) - 1 : 0;
        }
        const std::int64_t at = FindIn(text, pattern, column, Options.Backwards);
        if (at >= 0) {
            Match = {number, static_cast<std::int32_t>(at), static_cast<std::int32_t>(pattern.size())};
            return true;
        }
        line += Options.Backwards ? -1 : 1;
    }
    return false;
}

bool PlainSearch::SearchHexRows(const std::string& pattern, std::int64_t row, std::int64_t column)
{
    const std::int64_t size = Document.Size();
    const std::int64_t length = LengthOf(pattern);
    std::int64_t position = (row - 1) * RowBytes + column;
    if (position < 0 || position > size || (Options.Backwards && length > position)) {
        return false;
    }
    for (;;) {
        const std::int64_t rowOfPosition = position / RowBytes;
        const std::int64_t firstRow =
            Options.Backwards ? std::max<std::int64_t>(rowOfPosition - (WindowRows - 1), 0) : rowOfPosition;
        const std::int64_t rows = Options.Backwards ? rowOfPosition - firstRow + 1 : WindowRows;
        Document.SeekLine(0, firstRow * RowBytes);
        std::string window = Document.ReadBytes(static_cast<std::int32_t>(rows * RowBytes));
        if (window.empty()) {
            return false;
        }
        if (!Options.Backwards) {
            window.erase(0, static_cast<std::size_t>(position - firstRow * RowBytes));
        }
        // Backwards the byte at position stands behind those that count and are turned into capitals.
        const std::int64_t count = Options.Backwards ? position - firstRow * RowBytes : LengthOf(window);
        const std::size_t folded = static_cast<std::size_t>(count);
        window = Capitals(window.substr(0, folded)) + window.substr(folded);
        const std::int64_t at = FindIn(window, pattern, Options.Backwards ? count : 0, Options.Backwards);
        if (at >= 0) {
            const std::int64_t offset = Options.Backwards ? position - (count - at) : position + at;
            Match = {static_cast<std::int32_t>(offset / RowBytes + 1), static_cast<std::int32_t>(offset % RowBytes),
                     static_cast<std::int32_t>(length)};
            return true;
        }
        if (Options.Backwards) {
            position = position - count + length - 1;
            if (length > position) {
                return false;
            }
        } else {
            position = position + count - length + 1;
            if (position > size - length) {
                return false;
            }
        }
    }
}

void PlainSearch::Run(std::int32_t line, std::int32_t column)
{
    const std::string pattern = Pattern();
    const bool found = Options.HexMode ? SearchHexRows(pattern, line, column) : SearchTextLines(pattern, line, column);
    if (!found) {
        Match = {};
    }
}

void PlainSearch::Start()
{
    if (!Options.Backwards) {
        Run((Options.FromCurrent ? Options.TopLine : Options.LockTopLine) + 1, 0);
        return;
    }
    const std::int32_t rowsOnScreen = Options.ClientHeight / Options.LineHeight;
    const std::int32_t line = Options.FromCurrent ? std::min(Options.TopLine + rowsOnScreen, RowCount()) : RowCount();
    if (Options.HexMode) {
        const std::int32_t bytes = std::min(Document.Size() - 16 * (line - 1), 16);
        Run(line, bytes - 1);
    } else {
        const std::size_t length = Document.ReadLineText(line).size();
        Run(line, static_cast<std::int32_t>(length) - 1);
    }
}

void PlainSearch::Repeat()
{
    if (Match.Line == 0) {
        return;
    }
    const std::size_t length = Options.Hex.empty() ? Options.Text.size() : Options.Hex.size() / 2;
    const std::int32_t back = static_cast<std::int32_t>(length) + Match.Column - 2;
    Run(Match.Line, Options.Backwards ? back : Match.Column + 1);
}

void PlainSearch::Next()
{
    Repeat();
}

void PlainSearch::Previous()
{
    Options.Backwards = !Options.Backwards;
    Repeat();
    Options.Backwards = !Options.Backwards;
}

namespace {

void CopyInto(char (&field)[FindTextSize], const std::string& text)
{
    snprintf(field, sizeof field, "%s", text.c_str());
}

void HandToProgram(const PlainSearch& plain)
{
    const PlainFind& options = plain.Options;
    CopyInto(Find.FindText, options.Text);
    CopyInto(Find.LastFindText, options.Text);
    CopyInto(Find.FindHex, options.Hex);
    Find.MatchCase = options.MatchCase;
    Find.Backwards = options.Backwards;
    Find.FromCurrent = options.FromCurrent;
    Find.FoundLine = plain.Match.Line;
    Find.FoundCol = plain.Match.Column;
    Find.FoundLen = plain.Match.Length;
    Find.FindSucceeded = plain.Match.Line != 0;
    View.HexMode = options.HexMode;
    View.TopLine = options.TopLine;
    View.ClientHeight = options.ClientHeight;
    View.LineHeight = options.LineHeight;
    View.LockTopLine = options.LockTopLine;
    ViewOptions.EbcdicToAscii = options.Ebcdic;
    DocumentOptions.Ptabs = plain.Document.Options.ExpandTabs;
    DocumentOptions.TabSize = plain.Document.Options.TabWidth;
}

SearchOrigin OriginOf(const SearchStep& step)
{
    switch (step.From) {
    case SearchFrom::Origin: return OriginOfSearch();
    case SearchFrom::Place: return {step.Line, step.Column};
    case SearchFrom::Next: return OriginOfRepeat();
    case SearchFrom::Previous: break;
    }
    Find.Backwards = !Find.Backwards;
    return OriginOfRepeat();
}

PlainMatch SearchProgram(const SearchStep& step)
{
    const SearchOrigin origin = OriginOf(step);
    const SearchPattern pattern = PreparePattern(Find.LastFindText);
    const bool found = View.HexMode ? SearchHexRows(pattern, origin.Line, origin.Column)
                                    : SearchTextLines(pattern, origin.Line, origin.Column);
    return found ? PlainMatch{Find.FoundLine, Find.FoundCol, Find.FoundLen} : PlainMatch{};
}

void SearchPlain(PlainSearch& plain, const SearchStep& step)
{
    switch (step.From) {
    case SearchFrom::Origin: plain.Start(); break;
    case SearchFrom::Place: plain.Run(step.Line, step.Column); break;
    case SearchFrom::Next: plain.Next(); break;
    case SearchFrom::Previous: plain.Previous(); break;
    }
}

std::string Describe(const PlainMatch& match)
{
    if (match.Line == 0) {
        return "nothing";
    }
    return std::to_string(match.Length) + " at line " + std::to_string(match.Line) + ", column " +
           std::to_string(match.Column);
}

} // namespace

std::string CompareSearch(PlainSearch& plain, const SearchStep& step)
{
    HandToProgram(plain);
    const PlainMatch found = SearchProgram(step);
    SearchPlain(plain, step);
    const std::string real = Describe(found);
    const std::string expected = Describe(plain.Match);
    return real == expected ? "" : "found " + real + ", expected " + expected + "\n";
}

std::string DescribeSearch(const PlainSearch& plain, const SearchStep& step)
{
    static constexpr const char* Steps[] = {"origin", "place", "next", "previous"};
    const PlainFind& options = plain.Options;
    std::string hexOfText;
    for (const char character : options.Text) {
        char digits[8];
        snprintf(digits, sizeof digits, " %02X", static_cast<std::uint8_t>(character));
        hexOfText += digits;
    }
    std::string text = options.HexMode ? "hex mode" : "text mode";
    text += options.Hex.empty() ? ", text" + hexOfText : ", bytes " + options.Hex;
    text += options.MatchCase ? ", match case" : "";
    text += options.Backwards ? ", backwards" : ", forwards";
    text += options.Ebcdic ? ", EBCDIC" : "";
    text += plain.Document.Options.ExpandTabs ? ", tabs of " + std::to_string(plain.Document.Options.TabWidth) : "";
    text += options.FromCurrent ? ", current" : ", entire";
    text += ", top " + std::to_string(options.TopLine) + ", height " + std::to_string(options.ClientHeight) +
            ", lock " + std::to_string(options.LockTopLine) + ", from " + Steps[static_cast<int>(step.From)];
    if (step.From == SearchFrom::Place) {
        text += " " + std::to_string(step.Line) + ":" + std::to_string(step.Column);
    }
    return text;
}

void SetPattern(PlainFind& find, const std::string& pattern, bool bytes, char forZero)
{
    static constexpr char Digits[] = "0123456789ABCDEF";
    find.Text.clear();
    find.Hex.clear();
    for (const char character : pattern) {
        if (bytes) {
            find.Hex += Digits[static_cast<std::uint8_t>(character) / 16];
            find.Hex += Digits[static_cast<std::uint8_t>(character) % 16];
        } else {
            find.Text += character != '\0' ? character : forZero;
        }
    }
}
