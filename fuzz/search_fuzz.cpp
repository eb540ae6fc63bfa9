// Searching a file and repeating the search: what is reported must be there, what was passed over must not
// hold the pattern, and each repeat must go on.
//
// Input: options, pattern, start, repeats up to their end mark, and the file as runs of a byte and of the
// pattern, so that a short input makes a file of several blocks with matches at their ends.
#include "fuzz_input.h"
#include "support/document_setup.h"

#include "base/text.h"
#include "document/block_cache.h"
#include "document/document_state.h"
#include "document/line_index.h"
#include "search/search_hex.h"
#include "search/search_origin.h"
#include "search/search_pattern.h"
#include "search/search_text.h"
#include "view/view_state.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::size_t LargestFile = 3 * BlockBytes + 2000;
constexpr std::size_t MostRepeats = 24;
constexpr std::uint8_t EndOfRepeats = 8;
constexpr std::int32_t MostLines = 4000; // of more and shorter ones each is found by going through many others

enum StartKind { StartAnywhere, StartInDocument, StartOfScope, StartOfScreen, StartKinds };

struct Start {
    StartKind Kind;
    std::int32_t Line;
    std::int32_t Column;
};

// What may change between a search and its repeat.
struct Repeat {
    bool TurnRound;
    bool Shrink;
    bool Release;
    std::uint32_t Left; // of the file when it shrinks
};

struct SearchInput {
    std::int32_t CacheSlots;
    bool TwoByteCharacters;
    Start From;
    std::vector<Repeat> Repeats;
    Bytes File;
};

// The document as it is now, for what can be said of it.
struct Situation {
    Bytes File;
    bool Unchanged;  // what is read is what the file holds
    bool LinesAgree; // lines read in turn have the numbers by which they are found
};

void TakeOptions(FuzzInput& input)
{
    const std::uint8_t switches = input.Byte();
    Find.MatchCase = (switches & 1) != 0;
    Find.Backwards = (switches & 2) != 0;
    View.HexMode = (switches & 4) != 0;
    ViewOptions.EbcdicToAscii = (switches & 8) != 0;
    DocumentOptions.Ptabs = (switches & 16) != 0;
    DocumentOptions.MaxTextSize = (switches & 32) != 0 ? 0 : 12;
    DocumentOptions.TabSize = 1 + input.Byte() % 20;
    DocumentOptions.MaxLineLen = 80 + static_cast<std::int32_t>(input.Number16() % 945);
    DocumentOptions.FixedLineLen = 1 + static_cast<std::int32_t>(input.Number16() % 1024);
}

// Returns the bytes that were entered.
std::string TakePattern(FuzzInput& input)
{
    const std::uint8_t kind = input.Byte();
    const bool hex = (kind & 0x80) != 0;
    const std::size_t length = 1 + kind % (hex ? (FindTextSize - 1) / 2 : FindTextSize - 1);
    std::string bytes;
    for (std::size_t i = 0; i < length; ++i) {
        bytes += static_cast<char>(input.Byte());
    }
    if (!hex) {
        std::replace(bytes.begin(), bytes.end(), '\0', ' ');
        CopyText(Find.LastFindText, bytes.c_str());
        return bytes;
    }
    static constexpr char Digits[] = "0123456789ABCDEF";
    std::string digits;
    for (const char byte : bytes) {
        digits += Digits[static_cast<std::uint8_t>(byte) >> 4];
        digits += Digits[static_cast<std::uint8_t>(byte) & 15];
    }
    CopyText(Find.FindHex, digits.c_str());
    return bytes;
}

Start TakeStart(FuzzInput& input)
{
    Start start;
    start.Kind = static_cast<StartKind>(input.Byte() % StartKinds);
    start.Line = input.Number32();
    start.Column = input.Number32() / 2; // no column is near the largest number
    return start;
}

std::vector<Repeat> TakeRepeats(FuzzInput& input)
{
    std::vector<Repeat> repeats;
    while (repeats.size() < MostRepeats) {
        const std::uint8_t kind = input.Byte();
        if (kind >= EndOfRepeats) {
            break;
        }
        const bool shrink = (kind & 2) != 0;
        repeats.push_back({(kind & 1) != 0, shrink, (kind & 4) != 0, shrink ? input.Number16() * 2 : 0});
    }
    return repeats;
}

// Pairs of a byte and a length: below 0xA0, a run of up to 212 bytes; below 0xC0, the pattern once or more;
// from there on, lines of 60 bytes up to less than 64 bytes from the next block boundary.
Bytes TakeFile(FuzzInput& input, const std::string& pattern)
{
    Bytes content;
    while (!input.AtEnd() && content.size() < LargestFile) {
        const std::uint8_t byte = input.Byte();
        const std::uint8_t length = input.Byte();
        if (length < 0xA0) {
            content.insert(content.end(), static_cast<std::size_t>(length) * 4 / 3 + 1, byte);
        } else if (length < 0xC0) {
            for (int i = 0; i <= length % 4; ++i) {
                content.insert(content.end(), pattern.begin(), pattern.end());
            }
        } else {
            const std::size_t boundary = (content.size() / BlockBytes + 1) * BlockBytes;
            const std::size_t end = boundary - length % 64;
            while (content.size() < end) {
                content.push_back(content.size() % 60 == 59 ? '\n' : byte | 0x20); // no other line ends
            }
        }
    }
    return content;
}

SearchInput TakeInput(FuzzInput& input)
{
    SearchInput search;
    const std::uint8_t kind = input.Byte();
    search.CacheSlots = kind % 6;
    search.TwoByteCharacters = kind >= 128;
    StartDocuments(search.CacheSlots);
    View = ViewState{};
    ViewOptions = ViewSettings{};
    Find = FindState{};
    TakeOptions(input);
    const std::string pattern = TakePattern(input);
    search.From = TakeStart(input);
    search.Repeats = TakeRepeats(input);
    search.File = TakeFile(input, pattern);
    return search;
}

// An LF that opens a block, other than the second half of a pair, gives the lines behind it two numbers: one
// when they are counted in turn, another when they are found.
bool DoLinesAgree(const Bytes& file)
{
    for (std::size_t at = BlockBytes; at < file.size(); at += BlockBytes) {
        if (file[at] == '\n' && file[at - 1] != '\r') {
            return false;
        }
    }
    return true;
}

std::int32_t Within(std::int32_t number, std::int32_t count)
{
    const std::int64_t wrapped = static_cast<std::int64_t>(number) % count;
    return static_cast<std::int32_t>(wrapped < 0 ? wrapped + count : wrapped);
}

SearchOrigin OriginOf(const Start& start)
{
    const std::int32_t rows = std::max(RowCount(), 1);
    switch (start.Kind) {
    case StartAnywhere: return {start.Line, start.Column};
    case StartInDocument: return {Within(start.Line, rows) + 1, Within(start.Column, 80)};
    case StartOfScreen:
        View.TopLine = Within(start.Line, rows);
        View.ClientHeight = Within(start.Column, 1000);
        Find.FromCurrent = true;
        return OriginOfSearch();
    default:
        View.LockTopLine = Within(start.Line, std::min(rows, 11));
        Find.FromCurrent = false;
        return OriginOfSearch();
    }
}

// Matches differ from what is reported in case only.
bool StandsAt(const SearchPattern& pattern, const char* bytes)
{
    for (std::int32_t i = 0; i < pattern.Length; ++i) {
        char folded = bytes[i];
        if (!Find.MatchCase) {
            ToUpperCase(&folded, 1);
        }
        if (bytes[i] != pattern.Bytes[i] && folded != pattern.Bytes[i]) {
            return false;
        }
    }
    return true;
}

// The line as the search compares it.
std::string ComparedLine(const SearchPattern& pattern, std::int32_t line)
{
    const bool text = pattern.ByteCount == 0;
    const LineText read = text ? ReadSearchedLine(line) : ReadLineText(line);
    if (text && !Find.MatchCase) {
        ToUpperCase(read.Text, read.Length);
    }
    return std::string(read.Text, static_cast<std::size_t>(read.Length));
}

std::string BytesOfPattern(const SearchPattern& pattern)
{
    return std::string(pattern.Bytes, static_cast<std::size_t>(pattern.Length));
}

void CheckLineMatch(const SearchPattern& pattern)
{
    const std::string line = ComparedLine(pattern, Find.FoundLine);
    Require(line.compare(static_cast<std::size_t>(Find.FoundCol), static_cast<std::size_t>(pattern.Length),
                         BytesOfPattern(pattern)) == 0,
            "the line holds the match where it is reported");
}

// None of the lines first..last holds the pattern.
void CheckNoLine(const SearchPattern& pattern, std::int32_t first, std::int32_t last)
{
    first = std::max(first, 1);
    last = std::min(last, Document.LineCount);
    const std::string wanted = BytesOfPattern(pattern);
    for (std::int32_t line = first; line <= last; ++line) {
        Require(ComparedLine(pattern, line).find(wanted) == std::string::npos, "no line with a match is passed over");
    }
}

void CheckLines(const SearchPattern& pattern, const SearchOrigin& origin, bool found, const Situation& now)
{
    if (found) {
        Require(1 <= Find.FoundLine && Find.FoundLine <= Document.LineCount && Find.FoundCol >= 0,
                "a match lies in the document");
    }
    if (!now.Unchanged || !now.LinesAgree || origin.Line < 1 || origin.Line > Document.LineCount) {
        return;
    }
    if (found) {
        CheckLineMatch(pattern);
    }
    if (Find.Backwards) {
        CheckNoLine(pattern, found ? Find.FoundLine + 1 : 1, origin.Line - 1);
    } else {
        CheckNoLine(pattern, origin.Line + 1, found ? Find.FoundLine - 1 : Document.LineCount);
    }
}

// No match begins at first..last. Where characters have two bytes, what is a capital depends on where a
// window begins.
void CheckNoPlace(const SearchPattern& pattern, std::int64_t first, std::int64_t last, const Bytes& file)
{
    if (!Find.MatchCase && !HasOneByteCharacters()) {
        return;
    }
    std::string text(file.begin(), file.end());
    if (!Find.MatchCase) {
        ToUpperCase(text.data(), static_cast<std::int32_t>(text.size()));
    }
    const std::size_t at = text.find(BytesOfPattern(pattern), static_cast<std::size_t>(first));
    Require(first > last || at == std::string::npos || static_cast<std::int64_t>(at) > last,
            "no place with a match is passed over");
}

void CheckRows(const SearchPattern& pattern, const SearchOrigin& origin, bool found, const Situation& now)
{
    const std::int64_t from = (static_cast<std::int64_t>(origin.Line) - 1) * HexRowBytes + origin.Column;
    const std::int64_t hit = (static_cast<std::int64_t>(Find.FoundLine) - 1) * HexRowBytes + Find.FoundCol;
    const std::int64_t size = Document.FileSize;
    if (found) {
        Require(0 <= from && from <= size, "a search from outside the file finds nothing");
        Require(0 <= hit && hit + pattern.Length <= size && 0 <= Find.FoundCol && Find.FoundCol < HexRowBytes,
                "a match lies in the file");
    }
    if (!now.Unchanged || from < 0 || from > size) {
        return;
    }
    if (found) {
        Require(StandsAt(pattern, reinterpret_cast<const char*>(now.File.data()) + hit),
                "the file holds the match where it is reported");
    }
    if (!Find.Backwards) {
        CheckNoPlace(pattern, from, found ? hit - 1 : size, now.File);
    } else if (from >= pattern.Length) {
        CheckNoPlace(pattern, found ? hit + 1 : 0, from - pattern.Length, now.File);
    }
}

bool SearchAndCheck(const SearchOrigin& origin, const Situation& now)
{
    const SearchPattern pattern = PreparePattern(Find.LastFindText);
    const int reads = TestPort::FileReads();
    const bool found = View.HexMode ? SearchHexRows(pattern, origin.Line, origin.Column)
                                    : SearchTextLines(pattern, origin.Line, origin.Column);
    Require(TestPort::FileReads() - reads <= 6 * (Document.BlockCount + 1), "a search reads each block a few times");
    Require(!found || Find.FoundLen == pattern.Length, "a match is as long as the pattern");
    if (View.HexMode) {
        CheckRows(pattern, origin, found, now);
    } else {
        CheckLines(pattern, origin, found, now);
    }
    return found;
}

void Change(const Repeat& repeat, Situation& now)
{
    Find.Backwards ^= repeat.TurnRound;
    if (repeat.Shrink && repeat.Left < now.File.size()) {
        now.File.resize(repeat.Left);
        now.Unchanged = false;
        TestPort::AddFile(TestPath, now.File);
        DiscardParkedBlocks();
    }
    if (repeat.Release) {
        CloseFileHandle();
        now.Unchanged = false;
    }
}

void CheckProgress(std::int32_t line, std::int32_t column)
{
    const bool behind = Find.FoundLine > line || (Find.FoundLine == line && Find.FoundCol > column);
    const bool same = Find.FoundLine == line && Find.FoundCol == column;
    Require(!same && behind != Find.Backwards, "a repeat goes on in its direction");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const SearchInput search = TakeInput(input);
    if (OpenBytes(search.File) != OpenResult::Opened || (Document.IsText && Document.LineCount > MostLines)) {
        return 0;
    }
    TestPort::SetTwoByteCharacters(search.TwoByteCharacters);
    // Of a file over the limit for texts, the block behind the first is not what the file holds.
    const bool asRead = DocumentOptions.MaxTextSize != 0;
    Situation now = {search.File, asRead, !Document.IsText || DoLinesAgree(search.File)};
    bool found = SearchAndCheck(OriginOf(search.From), now);
    for (std::size_t i = 0; found && i < search.Repeats.size(); ++i) {
        Change(search.Repeats[i], now);
        const std::int32_t line = Find.FoundLine;
        const std::int32_t column = Find.FoundCol;
        found = SearchAndCheck(OriginOfRepeat(), now);
        if (found) {
            CheckProgress(line, column);
        }
    }
    Require(TestPort::Misuses() == 0, "memory and files are used by their rules");
    return 0;
}
