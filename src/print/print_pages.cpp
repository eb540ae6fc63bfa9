#include "print/print_pages.h"

#include "document/document_state.h"
#include "document/line_index.h"
#include "print/print_job.h"
#include "print/print_piece.h"
#include "print/print_settings.h"
#include "print/print_status.h"
#include "view/gdi_holders.h"
#include "view/hex_row.h"
#include "view/translate.h"
#include "view/view_state.h"

#include <cstring>

namespace {

constexpr char FormFeed = 12;

// A line of the document, kept while others may be read.
struct PrintedLine {
    char Text[LineBufferBytes];
    TextSpan Rest;           // what is not printed yet
    bool BeginsWithFormFeed; // which is not printed
};

void FetchLine(std::int32_t number, PrintedLine& line)
{
    const LineText text = ReadLineText(number);
    memcpy(line.Text, text.Text, static_cast<std::size_t>(text.Length));
    line.BeginsWithFormFeed = text.Length > 0 && line.Text[0] == FormFeed;
    const int skipped = line.BeginsWithFormFeed ? 1 : 0;
    line.Rest = {line.Text + skipped, text.Length - skipped};
}

std::int32_t PrintedWidth(const void* context, const char* text, std::int32_t length)
{
    SIZE size = {};
    GetTextExtentPoint32A(*static_cast<const HDC*>(context), text, length, &size);
    return size.cx;
}

void DrawRule(HDC printer, PagePart part)
{
    constexpr int RuleWidth = 2;
    const HPEN pen = CreatePen(PS_SOLID, RuleWidth, RGB(0, 0, 0));
    {
        const SelectedObject selected(printer, pen);
        const PageBand band = BandOf(part, PrintJob.Page);
        const int y = RuleY(part, PrintJob.Page);
        MoveToEx(printer, band.Left, y, nullptr);
        LineTo(printer, band.Right, y);
    }
    DeleteObject(pen);
}

void DrawSections(HDC printer, PagePart part, const HeaderFooter& texts, std::int32_t page)
{
    constexpr UINT Alignment[HeaderSectionCount] = {DT_LEFT, DT_CENTER, DT_RIGHT};
    for (int section = 0; section < HeaderSectionCount; ++section) {
        if (texts.Sections[section][0] != '\0') {
            char text[PrintedSectionSize];
            SubstitutePage(texts.Sections[section], page, text);
            const PageBand band = BandOf(part, PrintJob.Page);
            RECT place = {band.Left, band.Top, band.Right, band.Bottom};
            DrawTextA(printer, text, -1, &place, Alignment[section]);
        }
    }
}

void DrawHeaderFooter(HDC printer, PagePart part, std::int32_t page)
{
    const HeaderFooter& texts = part == PagePart::Header ? PrintJob.Header : PrintJob.Footer;
    const bool ownFont = PrintJob.HeadFont != nullptr && PrintOptions.PrintDefFont == 0;
    const HGDIOBJ font = ownFont ? PrintJob.HeadFont : GetCurrentObject(printer, OBJ_FONT);
    const SelectedObject selected(printer, font);
    DrawSections(printer, part, texts, page);
    if (texts.Rule) {
        DrawRule(printer, part);
    }
}

bool BeginPage(HDC printer)
{
    if (StartPage(printer) <= 0) {
        PrintJob.PrintError = true;
        return false;
    }
    ShowPrintedPage();
    if (PrintOptions.PrintHF != 0 && PrintOptions.Header[0] != '\0') {
        DrawHeaderFooter(printer, PagePart::Header, PrintJob.PageNumber);
    }
    return true;
}

// False when no page may follow.
bool FinishPage(HDC printer, HFONT font)
{
    if (PrintOptions.PrintHF != 0 && PrintOptions.Footer[0] != '\0') {
        DrawHeaderFooter(printer, PagePart::Footer, PrintJob.PageNumber);
    }
    if (EndPage(printer) < 0) {
        PrintJob.PrintError = true;
        return false;
    }
    if (font != nullptr) {
        SelectObject(printer, font); // a new page begins with the printer's own
    }
    ++PrintJob.PageNumber;
    return !PrintJob.PrintAborted;
}

void EndDocument(HDC printer)
{
    if (!PrintJob.PrintError) {
        EndDoc(printer);
    }
}

// The words were measured as they stand in the file.
void PrintPiece(HDC printer, const TextSpan& piece, std::int32_t row)
{
    char text[LineBufferBytes];
    for (std::int32_t i = 0; i < piece.Length; ++i) {
        const auto byte = static_cast<std::uint8_t>(piece.Text[i]);
        text[i] = static_cast<char>(ViewOptions.EbcdicToAscii ? EbcdicToAscii(byte) : byte);
    }
    if (ViewOptions.OemToAnsi != 0 && View.FontIsAnsi) {
        OemToCharBuffA(text, text, static_cast<DWORD>(piece.Length));
    }
    TextOutA(printer, PrintJob.Page.MarginLeft, RowY(PrintJob.Page, row), text, piece.Length);
}

// Prints row of the dump at the read position.
void PrintDumpRow(HDC printer, std::int32_t number, std::int32_t row)
{
    const LineText bytes = ReadBytes(HexRowBytes);
    char text[HexRowLength + 1];
    FormatHexRow(bytes.Text, bytes.Length, number, ViewOptions.EbcdicToAscii, text);
    TextOutA(printer, PrintJob.Page.MarginLeft, RowY(PrintJob.Page, row), text, HexRowShown);
}

} // namespace

void PrintText(HDC printer, HFONT font, std::int32_t first, std::int32_t last)
{
    const TextMeasure measure = {PrintedWidth, &printer};
    std::int32_t number = first != 0 ? first : 1;
    const std::int32_t lastNumber = first != 0 ? last : Document.LineCount;
    PrintedLine line;
    FetchLine(number, line);
    std::int32_t row = 0;
    while (number <= lastNumber) {
        if (row == 0 && !BeginPage(printer)) {
            break;
        }
        PrintPiece(printer, NextPrintPiece(line.Rest, LineWidth(PrintJob.Page), PrintOptions.WrapOutput != 0, measure),
                   row);
        if (line.Rest.Length == 0 && ++number <= lastNumber) {
            FetchLine(number, line);
            if (line.BeginsWithFormFeed && PrintOptions.ProcFF != 0) {
                row = PrintJob.Page.LinesPerPage - 1; // this page ends here
            }
        }
        if (++row == PrintJob.Page.LinesPerPage || number > lastNumber) {
            if (!FinishPage(printer, font)) {
                break;
            }
            row = 0;
        }
    }
    EndDocument(printer);
}

// A whole dump whose length is a multiple of 16 bytes ends without ending its last page, unless that is full: there is
// no footer then, and the document's end is the page's.
void PrintHex(HDC printer, HFONT font, std::int32_t first, std::int32_t last)
{
    const DumpRange range = RowsToPrint(first, last, Document.FileSize);
    std::int64_t offset = range.Start;
    std::int32_t number = first != 0 ? first - 1 : 0; // from 0
    std::int32_t row = 0;
    SeekLine(0, static_cast<std::int32_t>(offset));
    while (offset < range.End) {
        if (row == 0) {
            if (!BeginPage(printer)) {
                break;
            }
            SeekLine(0, static_cast<std::int32_t>(offset)); // somebody else may have read meanwhile
        }
        PrintDumpRow(printer, number, row);
        offset += HexRowBytes;
        ++number;
        if (++row == PrintJob.Page.LinesPerPage || offset > range.End) {
            if (!FinishPage(printer, font)) {
                break;
            }
            row = 0;
        }
    }
    EndDocument(printer);
}
