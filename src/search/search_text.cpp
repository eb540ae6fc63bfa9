#include "search/search_text.h"

#include "base/text.h"
#include "document/candidates.h"
#include "document/document_state.h"
#include "document/port.h"
#include "search/find_bytes.h"
#include "view/selection.h"
#include "view/text_row.h"
#include "view/translate.h"
#include "view/view_state.h"

namespace {

// Index of the pattern in the line, from column on or up to it; -1 when it is not there.
std::int32_t FindInLine(const SearchPattern& pattern, const LineText& line, std::int32_t column)
{
    if (pattern.ByteCount > 0) {
        return FindInBuffer(line.Text, line.Length, pattern.Bytes, pattern.ByteCount, column, Find.Backwards);
    }
    if (!Find.MatchCase) {
        ToUpperCase(line.Text, line.Length);
    }
    return FindInString(line.Text, pattern.Bytes, column, Find.Backwards);
}

// Where a search enters a line.
std::int32_t EdgeOf(const LineText& line)
{
    return Find.Backwards ? line.Length - 1 : 0;
}

// The next line to look at; 0 when there is none.
std::int32_t NextLine(const Needle& needle, std::int32_t line)
{
    if (line == (Find.Backwards ? 1 : Document.LineCount)) {
        return 0;
    }
    if (needle.Length == 0) {
        return Find.Backwards ? line - 1 : line + 1;
    }
    return Find.Backwards ? PreviousCandidateLine(needle, line - 1) : NextCandidateLine(needle, line + 1);
}

// Nothing is left of the file where the line was: it has shrunk.
bool IsBeyondFile(const LineText& line)
{
    return line.Length == 0 && Document.CurBlockBytes == 0;
}

} // namespace

LineText ReadSearchedLine(std::int32_t line)
{
    const LineText text = ReadLineText(line);
    if (ViewOptions.EbcdicToAscii) {
        EbcdicToAscii(text.Text);
    }
    return text;
}

bool TakeSelectedText(char (&text)[FindTextSize])
{
    if (View.HexMode || !HasSelection() || View.SelLineA != View.SelLineB) {
        return false;
    }
    const LineText line = ReadSearchedLine(View.SelLineA);
    const ColumnRun run = CutRun(SelectedRun(View.SelLineA, line.Length), line.Length);
    if (run.Length == 0) {
        return false;
    }
    line.Text[run.Start + run.Length] = '\0';
    CopyText(text, line.Text + run.Start);
    return true;
}

bool SearchTextLines(const SearchPattern& pattern, std::int32_t line, std::int32_t column)
{
    const Needle needle = NeedleForLines(pattern);
    if (!needle.Possible) {
        return false;
    }
    for (bool first = true; line >= 1 && line <= Document.LineCount; first = false) {
        const LineText text = pattern.ByteCount > 0 ? ReadLineText(line) : ReadSearchedLine(line);
        const std::int32_t hit = FindInLine(pattern, text, first ? column : EdgeOf(text));
        if (hit >= 0) {
            Find.FoundLine = line;
            Find.FoundCol = hit;
            Find.FoundLen = pattern.Length;
            return true;
        }
        if (IsBeyondFile(text)) {
            return false;
        }
        line = NextLine(needle, line);
    }
    return false;
}
