#include "app/show_match.h"

#include "app/menu_state.h"
#include "document/line_index.h"
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

// The view takes the thumb's position out of wParam, where it is 0, and does not look at lParam: a match far
// to the right only brings the view back to its left edge. That is kept on purpose.
void ScrollSideways(std::int32_t column)
{
    if (IsColumnInView(column)) {
        return;
    }
    const std::int32_t columns = View.ClientWidth / View.CharWidth;
    SendMessageA(Windows.View, WM_HSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 0), std::max(column - columns / 2, 0));
}

bool IsInDocument(std::int32_t column, std::int32_t line)
{
    return line >= 1 && line <= RowCount() && column >= 0 && column <= LineBufferBytes;
}

} // namespace

void ShowMatch(std::int32_t column, std::int32_t line)
{
    if (!IsInDocument(column, line)) {
        return; // no search of ours sends that
    }
    RemoveSelection();
    View.HiliteLine = line;
    View.HiliteCol = column;
    View.HiliteLen = Find.FoundLen;
    ScrollSideways(EndColumnOfMatch(column, View.HiliteLen));
    std::int32_t top = 0;
    if (TopLineForMatch(line, top)) {
        ScrollToLine(Windows.View, top);
    }
    InvalidateLines(Windows.View, LinesOfRun(line), false);
    UpdateWindow(Windows.View);
}

void RemoveMatch(std::int32_t line)
{
    View.HiliteLine = 0;
    if (IsInDocument(0, line)) {
        InvalidateLines(Windows.View, LinesOfRun(line), true);
        UpdateWindow(Windows.View);
    }
    ForgetHighlight();
}
