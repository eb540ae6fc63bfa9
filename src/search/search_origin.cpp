#include "search/search_origin.h"

#include "document/document_state.h"
#include "document/line_index.h"
#include "search/find_state.h"
#include "view/view_state.h"

#include <algorithm>
#include <cstring>

namespace {

std::int32_t LastColumnOf(std::int32_t line)
{
    if (!View.HexMode) {
        return ReadLineText(line).Length - 1;
    }
    return std::min(Document.FileSize - (line - 1) * HexRowBytes, HexRowBytes) - 1;
}

std::int32_t LengthOfPattern()
{
    const std::size_t digits = strlen(Find.FindHex);
    return static_cast<std::int32_t>(digits != 0 ? digits / 2 : strlen(Find.LastFindText));
}

} // namespace

std::int32_t FirstVisibleLine()
{
    return std::max(View.TopLine + 1, 1);
}

std::int32_t LastVisibleLine()
{
    return static_cast<std::int32_t>(
        std::min<std::int64_t>(static_cast<std::int64_t>(View.TopLine) + RowsOnScreen(), RowCount()));
}

SearchOrigin OriginOfSearch()
{
    if (!Find.Backwards) {
        return {Find.FromCurrent ? FirstVisibleLine() : View.LockTopLine + 1, 0};
    }
    const std::int32_t line = Find.FromCurrent ? LastVisibleLine() : RowCount();
    return {line, LastColumnOf(line)};
}

SearchOrigin OriginOfRepeat()
{
    return {Find.FoundLine, Find.Backwards ? LengthOfPattern() + Find.FoundCol - 2 : Find.FoundCol + 1};
}
