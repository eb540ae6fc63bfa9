#include "print/page_layout.h"

#include <algorithm>

namespace {

constexpr std::int64_t RowBytes = 16;

// Margins come from outside and can be of any size.
std::int32_t Bounded(std::int64_t value)
{
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
}

} // namespace

void LayOutPage(PageLayout& page, bool hasHeader, bool hasFooter)
{
    const std::int64_t partHeight = static_cast<std::int64_t>(page.PrintLineHeight) + page.HFLineHeight;
    const std::int64_t header = hasHeader ? partHeight : 0;
    const std::int64_t footer = hasFooter ? partHeight : 0;
    const std::int64_t usable =
        page.PageHeight - header - footer - (static_cast<std::int64_t>(page.MarginTop) + page.MarginBottom);
    page.FirstLineY = Bounded(page.MarginTop + header);
    page.LinesPerPage = Bounded(std::max<std::int64_t>(usable / std::max(page.PrintLineHeight, 1), 1));
}

std::int32_t RowY(const PageLayout& page, std::int32_t row)
{
    return Bounded(static_cast<std::int64_t>(row) * page.PrintLineHeight + page.FirstLineY);
}

std::int32_t LineWidth(const PageLayout& page)
{
    return Bounded(page.PageWidth - (static_cast<std::int64_t>(page.MarginLeft) + page.MarginRight));
}

PageBand BandOf(PagePart part, const PageLayout& page)
{
    const std::int64_t height = page.HFLineHeight;
    const std::int64_t top = part == PagePart::Header ? page.MarginTop : page.PageHeight - (page.MarginBottom + height);
    return {page.MarginLeft, Bounded(top), Bounded(static_cast<std::int64_t>(page.PageWidth) - page.MarginRight),
            Bounded(top + height)};
}

std::int32_t RuleY(PagePart part, const PageLayout& page)
{
    const PageBand band = BandOf(part, page);
    return part == PagePart::Header ? band.Bottom
                                    : Bounded(static_cast<std::int64_t>(band.Top) - page.HFLineHeight / 4);
}

DumpRange RowsToPrint(std::int32_t first, std::int32_t last, std::int32_t fileSize)
{
    if (first == 0) {
        return {0, fileSize};
    }
    // One byte into the last row is enough to print it.
    return {(first - 1) * RowBytes, std::min<std::int64_t>((last - 1) * RowBytes + 1, fileSize)};
}
