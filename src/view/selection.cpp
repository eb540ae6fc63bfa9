#include "view/selection.h"

#include "view/view_state.h"

#include <algorithm>

namespace {

std::int32_t AtMostLast(std::int64_t line)
{
    return static_cast<std::int32_t>(std::min<std::int64_t>(line, RowCount()));
}

// The selection column of the end that lies on line.
std::int32_t EndColumn(std::int32_t line)
{
    return line == View.SelAnchorLine ? View.SelColA : View.SelColB;
}

} // namespace

bool HasSelection()
{
    return View.SelLineA != 0 && View.SelLineB != 0;
}

bool SelectEverything()
{
    if (RowCount() == 0) {
        return false;
    }
    View.SelLineA = View.SelAnchorLine = 1;
    View.SelLineB = RowCount();
    View.SelColA = 0;
    // More than any line holds: each reader cuts it to the line.
    View.SelColB = INT32_MAX;
    return true;
}

std::int32_t FirstSelectedLine()
{
    return std::min(View.SelLineA, View.SelLineB);
}

std::int32_t LastSelectedLine()
{
    return std::max(View.SelLineA, View.SelLineB);
}

std::int32_t LineAtPoint(std::int32_t y)
{
    return AtMostLast(static_cast<std::int64_t>(View.TopLine) + y / View.LineHeight + 1);
}

std::int32_t LineBelowView()
{
    return AtMostLast(static_cast<std::int64_t>(View.TopLine) + RowsTouched() + 1);
}

std::int32_t LineAboveView()
{
    return AtMostLast(static_cast<std::int64_t>(View.TopLine) + 1);
}

LineBand ChangedLines(std::int32_t anchor, std::int32_t oldEnd, std::int32_t newEnd)
{
    const std::int32_t oldFirst = std::min(anchor, oldEnd);
    const std::int32_t oldLast = std::max(anchor, oldEnd);
    const std::int32_t newFirst = std::min(anchor, newEnd);
    const std::int32_t newLast = std::max(anchor, newEnd);
    if (oldFirst == newFirst && oldLast == newLast) {
        return {newEnd, newEnd};
    }
    if (oldFirst == newFirst) {
        return {std::min(oldLast, newLast), std::max(oldLast, newLast)};
    }
    if (oldLast == newLast) {
        return {std::min(oldFirst, newFirst), std::max(oldFirst, newFirst)};
    }
    return {std::min(oldFirst, newFirst), std::max(oldLast, newLast)};
}

LineBand OnScreen(LineBand band)
{
    const std::int64_t lastOnScreen = static_cast<std::int64_t>(View.TopLine) + RowsTouched();
    return {std::max(band.First, View.TopLine + 1),
            static_cast<std::int32_t>(std::min<std::int64_t>(band.Last, lastOnScreen))};
}

bool SelectionIsEmpty()
{
    if (View.SelLineB == 0) {
        return true;
    }
    return !View.HexMode && View.SelLineA == View.SelLineB && View.SelColA == View.SelColB;
}

bool IsWhollySelected(std::int32_t line)
{
    return HasSelection() && FirstSelectedLine() < line && line < LastSelectedLine();
}

bool IsSelectionEnd(std::int32_t line)
{
    return HasSelection() && (line == View.SelLineA || line == View.SelLineB);
}

ColumnRun SelectedRun(std::int32_t line, std::int32_t length)
{
    if (View.SelLineA == View.SelLineB) {
        const std::int32_t start = std::min(View.SelColA, View.SelColB);
        return {start, std::max(View.SelColA, View.SelColB) - start};
    }
    const std::int32_t end = std::min(EndColumn(line), length);
    if (line == LastSelectedLine()) {
        return {0, end};
    }
    return {end, length - end};
}
