#include "view/text_row.h"

#include "view/hex_row.h"
#include "view/view_state.h"

#include <algorithm>

namespace {

// Rows that the found run spills over below its first.
std::int32_t SpilledRows()
{
    return (View.HiliteLen - (HexRowBytes - View.HiliteCol) + HexRowBytes - 1) / HexRowBytes;
}

ColumnRun PairsRun(std::int32_t startByte, std::int32_t bytes)
{
    const std::int32_t firstByte = std::clamp<std::int32_t>(startByte, 0, HexRowBytes);
    const std::int32_t shown = std::clamp<std::int32_t>(bytes, 0, HexRowBytes - firstByte);
    return {HexPairsColumn + HexPairWidth * firstByte, shown > 0 ? shown * HexPairWidth - 1 : 0};
}

} // namespace

std::int64_t LineOfRow(std::int32_t row)
{
    const std::int64_t above = row < View.LockRows ? View.LockTopLine : View.TopLine;
    return above + row + 1;
}

bool IsLockedLine(std::int32_t line)
{
    return line <= static_cast<std::int64_t>(View.LockTopLine) + View.LockRows;
}

RowColours ColoursOfLine(std::int32_t line)
{
    if (IsWhollySelected(line)) {
        return RowColours::Marked;
    }
    return IsLockedLine(line) ? RowColours::Locked : RowColours::Normal;
}

ColumnRun CutRun(ColumnRun run, std::int32_t length)
{
    const std::int32_t start = std::clamp(run.Start, 0, length);
    return {start, std::clamp(run.Length, 0, length - start)};
}

ColumnRun LockedPart(std::int32_t length)
{
    return {View.LockColStart, std::min(std::max(length - View.LockColStart, 0), View.LockCols)};
}

ColumnRun ScrolledPart(std::int32_t length)
{
    const std::int32_t start = View.LeftColumn + View.LockCols;
    return {start, std::max(length - start, 0)};
}

ColumnRun Overlap(ColumnRun run, ColumnRun part)
{
    const std::int32_t start = std::max(run.Start, part.Start);
    const std::int32_t end = std::min(run.Start + run.Length, part.Start + part.Length);
    return {start, std::max(end - start, 0)};
}

ColumnRun HexHighlight(std::int32_t distance)
{
    if (distance == 0) {
        return PairsRun(View.HiliteCol, View.HiliteLen);
    }
    return PairsRun(0, View.HiliteLen - (HexRowBytes - View.HiliteCol) - HexRowBytes * (distance - 1));
}

LineBand HexRowsInBand(std::int32_t top, std::int32_t bottom)
{
    const std::int32_t rows = HexRowCount();
    const std::int64_t first =
        std::max<std::int64_t>(static_cast<std::int64_t>(View.TopLine) + top / View.LineHeight, 0);
    const std::int64_t last =
        std::min<std::int64_t>(static_cast<std::int64_t>(View.TopLine) + (bottom - 1) / View.LineHeight, rows - 1);
    return {static_cast<std::int32_t>(std::min<std::int64_t>(first, INT32_MAX)), static_cast<std::int32_t>(last)};
}

bool IsHexRowSelected(std::int32_t row)
{
    return HasSelection() && FirstSelectedLine() - 1 <= row && row <= LastSelectedLine() - 1;
}

bool IsHexRowHighlighted(std::int32_t row)
{
    return View.HiliteLine > 0 && View.HiliteLen > 0 && View.HiliteLine <= row + 1 &&
           row + 1 <= static_cast<std::int64_t>(View.HiliteLine) + SpilledRows();
}

LineBand LinesOfRun(std::int32_t line)
{
    return {line, View.HexMode ? line + SpilledRows() : line};
}
