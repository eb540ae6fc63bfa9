#include "search/match_place.h"

#include "search/find_state.h"
#include "view/view_state.h"

#include <algorithm>

std::int32_t EndColumnOfMatch(std::int32_t column, std::int32_t length)
{
    return View.HexMode ? std::min(3 * column + length + 10, HexRowShown) : column + length + 1;
}

bool IsColumnInView(std::int32_t column)
{
    return View.LeftColumn <= column && column <= View.LeftColumn + View.ClientWidth / View.CharWidth;
}

bool TopLineForMatch(std::int32_t line, std::int32_t& topLine)
{
    const std::int32_t rows = RowsOnScreen();
    if (Find.ScrollToOn) {
        const std::int32_t top = Find.ScrollToTop ? line - 1 - View.LockRows : line - rows / 2;
        topLine = std::clamp(top, 0, View.MaxTop);
        return topLine != View.TopLine;
    }
    // One line of context above the match.
    topLine = std::max(line - 2 - View.LockRows, 0);
    return line <= View.TopLine || line > static_cast<std::int64_t>(View.TopLine) + rows;
}
