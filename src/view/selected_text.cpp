#include "view/selected_text.h"

#include "document/line_index.h"
#include "view/hex_row.h"
#include "view/selection.h"
#include "view/text_row.h"
#include "view/view_state.h"

#include <algorithm>
#include <cstring>

namespace {

static_assert(LineBufferBytes <= MaxPartBytes && HexRowShown <= MaxPartBytes);

constexpr char LineEnd[] = {'\r', '\n'};
constexpr std::int32_t LineEndBytes = sizeof LineEnd;

void Soften(char* text, std::int32_t length, bool tabsToo)
{
    std::replace_if(
        text, text + length,
        [tabsToo](char byte) { return byte == '\0' || byte == '\r' || byte == '\n' || (tabsToo && byte == '\t'); },
        ' ');
}

SelectedPart ReadText(std::int32_t number)
{
    const LineText line = ReadLineText(number);
    ColumnRun run = {0, line.Length};
    if (IsSelectionEnd(number)) {
        run = CutRun(SelectedRun(number, line.Length), line.Length);
    }
    Soften(line.Text + run.Start, run.Length, false);
    return {line.Text + run.Start, run.Length, false, run.Length < line.Length};
}

SelectedPart ReadHexRow(std::int32_t number)
{
    static char text[HexRowLength + 1];
    SeekLine(0, (number - 1) * HexRowBytes);
    const LineText bytes = ReadBytes(HexRowBytes);
    FormatHexRow(bytes.Text, bytes.Length, number - 1, ViewOptions.EbcdicToAscii, text);
    Soften(text, HexRowShown, true);
    return {text, HexRowShown, false, false};
}

bool IsFollowedByLineEnd(const SelectedPart& part, GatherFor target)
{
    return !part.IsLast || (target == GatherFor::Clipboard && !part.IsCutShort);
}

} // namespace

SelectionWalk StartSelectionWalk()
{
    return HasSelection() ? SelectionWalk{FirstSelectedLine(), LastSelectedLine(), {}} : SelectionWalk{1, 0, {}};
}

SelectedPart ReadSelectedPart(const SelectionWalk& walk)
{
    SelectedPart part = View.HexMode ? ReadHexRow(walk.NextLine) : ReadText(walk.NextLine);
    part.IsLast = walk.NextLine == walk.LastLine;
    return part;
}

std::int32_t GatherSelection(SelectionWalk& walk, GatherFor target, char* buffer, std::int32_t limit)
{
    std::int32_t used = 0;
    while (!IsOver(walk)) {
        // What does not fit is held, not read again: a line found by its number need not be the next one in turn.
        if (walk.Held.Text == nullptr) {
            walk.Held = ReadSelectedPart(walk);
        }
        const SelectedPart& part = walk.Held;
        if (used + part.Length + LineEndBytes > limit) {
            break;
        }
        memcpy(buffer + used, part.Text, static_cast<std::size_t>(part.Length));
        used += part.Length;
        if (IsFollowedByLineEnd(part, target)) {
            memcpy(buffer + used, LineEnd, sizeof LineEnd);
            used += LineEndBytes;
        }
        walk.Held = {};
        ++walk.NextLine;
    }
    return used;
}
