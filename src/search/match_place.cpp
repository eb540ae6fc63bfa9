#include "search/match_place.h"

#include "search/find_state.h"
#include "view/view_state.h"

#include <algorithm>

bool IsMatchInColumns(std::int32_t column, std::int32_t length)
{
    const std::int32_t end = View.HexMode ? std::min(3 * column + length + 10, HexRowShown) : column + length + 1;
    return View.LeftColumn <= end && end <= View.LeftColumn + View.ClientWidth / View.CharWidth;
}

std::int32_t TopLineForMatch(std::int32_t line)
{
    const std::int32_t rows = RowsOnScreen();
    if (Find.ScrollToOn) {
        const std::int32_t top = Find.ScrollToTop ? line - 1 - View.LockRows : line - rows / 2;
        return std::clamp(top, 0, View.MaxTop);
    }
    const bool onScreen = View.TopLine < line && line <= static_cast<std::int64_t>(View.TopLine) + rows;
    // One line of context above the match.
    return onScreen ? View.TopLine : std::max(line - 2 - View.LockRows, 0);
}
