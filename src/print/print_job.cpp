#include "print/print_job.h"

#include "base/intl.h"
#include "base/messages.h"
#include "base/text.h"
#include "print/margin.h"
#include "print/page_setup.h"
#include "print/print_dialog.h"
#include "print/print_fonts.h"
#include "print/print_pages.h"
#include "print/print_settings.h"
#include "print/print_status.h"
#include "print/printer_selection.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/gdi_holders.h"
#include "view/selection.h"
#include "view/view_state.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

PrintJobState PrintJob;

namespace {

struct PrintRange {
    bool HexMode;
    std::int32_t First; // 0 = all
    std::int32_t Last;
};

// A font that a job made for itself; nullptr = none.
class JobFont {
public:
    explicit JobFont(HFONT font) : Font(font) {}
    ~JobFont()
    {
        if (Font != nullptr) {
            DeleteObject(Font);
        }
    }
    JobFont(const JobFont&) = delete;
    JobFont& operator=(const JobFont&) = delete;
    operator HFONT() const { return Font; }

private:
    HFONT Font;
};

// 26 characters of a longer name have to do.
void NameDocument(const char* name, bool selectionOnly)
{
    constexpr std::size_t MostShown = 26;
    CopyText(PrintJob.PrintDocName, name);
    if (strlen(name) > MostShown) {
        PrintJob.PrintDocName[MostShown] = '\0';
        AppendText(PrintJob.PrintDocName, "...");
    }
    if (selectionOnly) {
        AppendText(PrintJob.PrintDocName, " (Selection)");
    }
}

// What the settings file says of them may be anything: what is no margin counts as none.
void ReadMargins()
{
    PageLayout& page = PrintJob.Page;
    const auto inDevice = [&page](const char* text) {
        return std::max(MarginToDevice(text, page.LogPixelsY, Intl.Measure != 0), 0);
    };
    page.MarginLeft = inDevice(PrintOptions.LeftMargin);
    page.MarginRight = inDevice(PrintOptions.RightMargin);
    page.MarginTop = inDevice(PrintOptions.TopMargin);
    page.MarginBottom = inDevice(PrintOptions.BottomMargin);
}

void ExpandHeaderAndFooter()
{
    SYSTEMTIME now;
    GetLocalTime(&now);
    const ClockTime time = {now.wYear, now.wMonth, now.wDay, now.wDayOfWeek, now.wHour, now.wMinute, now.wSecond};
    char date[PrintDateSize];
    char clock[PrintTimeSize];
    FormatPrintDate(time, Intl, date);
    FormatPrintTime(time, Intl, clock);
    const HeaderTexts texts = {PrintJob.PrintDocName, date, clock};
    ExpandHeaderFooter(PrintOptions.Header, texts, PrintJob.Header);
    ExpandHeaderFooter(PrintOptions.Footer, texts, PrintJob.Footer);
}

// The line heights, as they are in the fonts, and the layout.
void MeasurePage(HDC printer)
{
    PageLayout& page = PrintJob.Page;
    page.PrintLineHeight = page.HFLineHeight = PrintedLineHeight(printer);
    if (PrintJob.HeadFont != nullptr && PrintOptions.PrintDefFont == 0) {
        const SelectedObject selected(printer, PrintJob.HeadFont);
        page.HFLineHeight = PrintedLineHeight(printer);
    }
    const bool parts = PrintOptions.PrintHF != 0;
    LayOutPage(page, parts && PrintOptions.Header[0] != '\0', parts && PrintOptions.Footer[0] != '\0');
}

void PrintDocument(HDC printer, HFONT font, const PrintRange& range)
{
    char name[PrintDocNameSize + 16] = "Kestovar - ";
    AppendText(name, PrintJob.PrintDocName);
    DOCINFOA document = {};
    document.cbSize = offsetof(DOCINFOA, lpszDatatype); // what every Windows knows of it
    document.lpszDocName = name;
    SetAbortProc(printer, PrintAbortProc);
    if (StartDocA(printer, &document) < 1) {
        PrintJob.PrintError = true;
    } else if (range.HexMode) {
        PrintHex(printer, font, range.First, range.Last);
    } else {
        PrintText(printer, font, range.First, range.Last);
    }
}

// Runs the job in the font that is given, nullptr for the printer's own.
void PrintInFont(HWND owner, HDC printer, HFONT font, const PrintRange& range)
{
    const SelectedObject selected(printer, font != nullptr ? font : GetCurrentObject(printer, OBJ_FONT));
    MeasurePage(printer);
    PrintJob.PageNumber = 1;
    RedrawWindow(owner, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN); // where the question stood
    View.Printing = true;
    ShowPrintStatus(owner);
    PrintDocument(printer, font, range);
    ClosePrintStatus();
    View.Printing = false;
    RepaintView();
}

void RunJob(HWND owner, HDC printer, HFONT screenFont, const PrintRange& range)
{
    const bool ownFonts = PrintOptions.PrintDefFont == 0;
    const JobFont head(PrintOptions.HeadFont.Use != 0 ? CreatePrintFont(PrintOptions.HeadFont, printer) : nullptr);
    const JobFont body(PrintOptions.BodyFont.Use != 0 ? CreatePrintFont(PrintOptions.BodyFont, printer) : nullptr);
    const JobFont like(ownFonts && body == nullptr ? CreateFontLike(screenFont, printer) : nullptr);
    const HFONT chosen = body != nullptr ? body : like;
    PrintJob.HeadFont = head;
    PrintInFont(owner, printer, ownFonts ? chosen : nullptr, range);
    PrintJob.HeadFont = nullptr;
}

// The choice may be another printer than the question was asked for. Its device context is gone when this returns, and
// a job that has failed with it.
void PrintOnSelectedPrinter(HWND owner, HFONT screenFont, const PrintRange& range)
{
    PrintJob.PrintAborted = PrintJob.PrintError = false;
    const PrinterDc printer;
    if (printer == nullptr) {
        ReportMessage(owner, IDS_NO_PRINTER);
        return;
    }
    ReadPrinterPage(printer);
    ReadMargins();
    PrintCalls.SaveSettings();
    if (PrintOptions.PrintHF != 0) {
        ExpandHeaderAndFooter();
    }
    RunJob(owner, printer, screenFont, range);
}

// Asks on behalf of the selected printer; false when nothing is to be printed.
bool Ask(HWND owner, bool& selectionOnly)
{
    const PrinterDc printer;
    if (printer == nullptr) {
        ReportMessage(owner, IDS_NO_PRINTER);
        return false;
    }
    LoadPrintSettingsOnce();
    ReadPrinterPage(printer);
    return AskHowToPrint(owner, printer, selectionOnly);
}

} // namespace

void LoadPrintSettingsOnce()
{
    if (PrintOptions.Header[0] == '\0') {
        PrintCalls.LoadSettings();
    }
}

void PrintFile(HWND owner, const char* path, const HFONT& screenFont, bool hexMode, std::int32_t selectionFirst,
               std::int32_t selectionLast)
{
    char asked[MaxPathSize];
    CopyText(asked, path);
    bool selectionOnly = selectionFirst > 0;
    if (!Ask(owner, selectionOnly)) {
        return;
    }
    const bool sameSelection = FirstSelectedLine() == selectionFirst && LastSelectedLine() == selectionLast;
    const bool same = View.FileShown && strcmp(asked, path) == 0 && View.HexMode == hexMode;
    if (!same || (selectionOnly && !sameSelection)) {
        return;
    }
    NameDocument(NamePart(asked), selectionOnly);
    PrintOnSelectedPrinter(owner, screenFont, {hexMode, selectionOnly ? selectionFirst : 0, selectionLast});
    if (PrintJob.PrintError && !PrintJob.PrintAborted) {
        ReportMessage(owner, IDS_PRINT_FAILED);
    }
}
