#include "view/scroll.h"

#include "document/document_state.h"
#include "view/view_state.h"

#include <algorithm>

namespace {

constexpr std::int32_t ScrollBarSteps = 32000;
constexpr std::int32_t PageColumns = 8;

std::int32_t AtLeastZero(std::int64_t value)
{
    return static_cast<std::int32_t>(std::max<std::int64_t>(value, 0));
}

void MeasureVertical()
{
    const std::int64_t below = static_cast<std::int64_t>(RowCount()) - RowsOnScreen();
    View.MaxTop = AtLeastZero(std::min<std::int64_t>(below, INT32_MAX - 1)); // the line at the top has a number
    View.ScrollScale = View.MaxTop / ScrollBarSteps + 1;
    View.TopLine = std::max(std::min(View.TopLine, View.MaxTop), View.LockTopLine);
}

void MeasureHexColumns()
{
    View.MaxLeft = AtLeastZero((View.MaxCharWidth * HexRowShown - View.ClientWidth) / View.MaxCharWidth);
    View.LeftColumn = std::min(View.LeftColumn, View.MaxLeft);
}

void MeasureTextColumns()
{
    const std::int64_t width = static_cast<std::int64_t>(View.MaxCharWidth) * Document.LongestLine;
    View.MaxLeft = AtLeastZero((width - View.ClientWidth) / View.MaxCharWidth + 2);
    View.LeftColumn = std::max(std::min(View.LeftColumn, View.MaxLeft), View.LockColStart);
}

// The nearest step within low..high; low wins, so that the lock holds in a document that it does not fit.
std::int32_t Within(std::int64_t step, std::int64_t low, std::int64_t high)
{
    return static_cast<std::int32_t>(std::max(std::min(step, high), low));
}

std::int64_t PageBack()
{
    const std::int32_t step = View.LockRows - RowsOnScreen();
    return step < 0 ? step : -1;
}

std::int64_t PageForward()
{
    return std::max(RowsOnScreen() - View.LockRows, 1);
}

} // namespace

ScrollBarValues MeasureScrolling()
{
    View.LockedHeight = View.LineHeight * View.LockRows;
    MeasureVertical();
    if (View.HexMode) {
        MeasureHexColumns();
    } else {
        MeasureTextColumns();
    }
    if (ViewOptions.ScrollBars == 0) {
        return {};
    }
    ScrollBarValues values;
    // The lower end is not scaled: a bar over a locked heading starts at the heading's line number.
    values.VerticalMin = View.HexMode ? 0 : View.LockTopLine;
    values.VerticalMax = View.MaxTop / View.ScrollScale;
    values.VerticalPosition = ScaledTop();
    values.HorizontalMin = View.HexMode ? 0 : View.LockColStart;
    values.HorizontalMax = View.MaxLeft;
    values.HorizontalPosition = View.LeftColumn;
    return values;
}

std::int32_t ScaledTop()
{
    return View.TopLine / View.ScrollScale;
}

std::int32_t ThumbTarget(std::int32_t thumb)
{
    const std::int64_t line = static_cast<std::int64_t>(thumb) * View.ScrollScale;
    // With less than one position's lines below, the end is meant.
    return line > View.MaxTop - View.ScrollScale ? View.MaxTop : static_cast<std::int32_t>(line);
}

std::int32_t ClampVertical(std::int64_t lines)
{
    return Within(lines, static_cast<std::int64_t>(View.LockTopLine) - View.TopLine,
                  static_cast<std::int64_t>(View.MaxTop) - View.TopLine);
}

std::int32_t ClampHorizontal(std::int64_t columns)
{
    return Within(columns, View.LockColStart - View.LeftColumn, View.MaxLeft - View.LeftColumn);
}

ScrollStep VerticalStep(int code, std::int32_t thumb, std::int32_t target)
{
    std::int64_t lines = 0;
    switch (code) {
    case ScrollLineBack: lines = -1; break;
    case ScrollLineForward: lines = 1; break;
    case ScrollPageBack: lines = PageBack(); break;
    case ScrollPageForward: lines = PageForward(); break;
    case ScrollThumbPosition:
    case ScrollThumbTrack:
        lines = static_cast<std::int64_t>(ThumbTarget(thumb)) - View.TopLine;
        if (lines == 0) {
            return {false, 0};
        }
        break;
    case ScrollToStart: lines = -static_cast<std::int64_t>(View.TopLine); break;
    case ScrollToEnd: lines = static_cast<std::int64_t>(View.MaxTop) - View.TopLine; break;
    case ScrollToTarget: lines = static_cast<std::int64_t>(target) - View.TopLine; break;
    default: return {false, 0};
    }
    return {true, ClampVertical(lines)};
}

ScrollStep HorizontalStep(int code, std::int32_t thumb)
{
    std::int64_t columns = 0;
    switch (code) {
    case ScrollLineBack: columns = -1; break;
    case ScrollLineForward: columns = 1; break;
    case ScrollPageBack: columns = -PageColumns; break;
    case ScrollPageForward: columns = PageColumns; break;
    // The thumb moves the text only when it is released.
    case ScrollThumbPosition: columns = static_cast<std::int64_t>(thumb) - View.LeftColumn; break;
    default: return {false, 0};
    }
    return {true, ClampHorizontal(columns)};
}
