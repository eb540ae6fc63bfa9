#include "app/show_match.h"

#include "app/menu_state.h"
#include "search/find_state.h"
#include "search/match_place.h"
#include "view/frame_windows.h"
#include "view/selection.h"
#include "view/text_row.h"
#include "view/view_state.h"
#include "view/view_window.h"

#include <algorithm>

namespace {

void RemoveSelection()
{
    if (HasSelection()) {
        ClearSelection(Windows.View, View.SelLineA, View.SelLineB);
        SetSelectionMenuState(false);
    }
}

// The column goes along, but the view reads a thumb position, and that is 0: a match far to the right only
// brings the view back to the left. Users count on the left edge there; it is kept.
void ScrollSideways(std::int32_t column)
{
    if (IsMatchInColumns(column, View.HiliteLen)) {
        return;
    }
    const std::int32_t columns = View.ClientWidth / View.CharWidth;
    SendMessageA(Windows.View, WM_HSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 0), std::max(column - columns / 2, 0));
}

} // namespace

void ShowMatch(std::int32_t column, std::int32_t line)
{
    RemoveSelection();
    View.HiliteLine = line;
    View.HiliteCol = column;
    View.HiliteLen = Find.FoundLen;
    ScrollSideways(column);
    const std::int32_t top = TopLineForMatch(line);
    if (top != View.TopLine) {
        ScrollToLine(Windows.View, top);
    }
    InvalidateLines(Windows.View, LinesOfRun(line), false);
    UpdateWindow(Windows.View);
}

void RemoveMatch(std::int32_t line)
{
    View.HiliteLine = 0;
    InvalidateLines(Windows.View, LinesOfRun(line), true);
    UpdateWindow(Windows.View);
    View.HiliteLen = 0;
}
