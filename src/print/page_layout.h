// Where lines, header and footer stand on a page. All in the printer's device units.
#pragma once

#include <cstdint>

struct PageLayout {
    std::int32_t LogPixelsY = 0; // resolution down the page
    std::int32_t PageWidth = 0;
    std::int32_t PageHeight = 0;
    std::int32_t MarginLeft = 0;
    std::int32_t MarginRight = 0;
    std::int32_t MarginTop = 0;
    std::int32_t MarginBottom = 0;
    std::int32_t PrintLineHeight = 1; // of the body
    std::int32_t HFLineHeight = 1;    // of header and footer
    // What follows from the others:
    std::int32_t FirstLineY = 0;   // of the body
    std::int32_t LinesPerPage = 1; // of the body
};

// A rectangle; right and bottom lie outside.
struct PageBand {
    std::int32_t Left;
    std::int32_t Top;
    std::int32_t Right;
    std::int32_t Bottom;
};

// Computes FirstLineY and LinesPerPage, which is at least 1 however little room the margins leave. A header or footer
// takes its own line and one of the body.
void LayOutPage(PageLayout& page, bool hasHeader, bool hasFooter);

// y of the body's row, from 0.
std::int32_t RowY(const PageLayout& page, std::int32_t row);

// Pixels that a line of the body has.
std::int32_t LineWidth(const PageLayout& page);

enum class PagePart { Header, Footer };

PageBand BandOf(PagePart part, const PageLayout& page);

// y of the line that can be drawn below the header and above the footer.
std::int32_t RuleY(PagePart part, const PageLayout& page);

// Bytes of a dump that are printed: row by row from Start while the row's offset lies before End.
struct DumpRange {
    std::int64_t Start;
    std::int64_t End;
};

// Rows first to last (from 1) of a file; all of it when first is 0.
DumpRange RowsToPrint(std::int32_t first, std::int32_t last, std::int32_t fileSize);
