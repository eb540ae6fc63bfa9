#include "print/page_setup.h"

#include "base/help.h"
#include "base/intl.h"
#include "base/messages.h"
#include "base/text.h"
#include "print/margin.h"
#include "print/print_fonts.h"
#include "print/print_job.h"
#include "print/print_settings.h"
#include "print/printer_selection.h"
#include "resources/ids.h"

namespace {

constexpr ULONG_PTR PageSetupTopic = 300; // of the help file

HDC Printer; // that the dialog is about

struct MarginField {
    int Control;
    char (PrintSettings::*Text)[6];
    std::int32_t PageLayout::*Device;
};

constexpr MarginField MarginFields[] = {
    {IDC_PAGE_LEFT, &PrintSettings::LeftMargin, &PageLayout::MarginLeft},
    {IDC_PAGE_RIGHT, &PrintSettings::RightMargin, &PageLayout::MarginRight},
    {IDC_PAGE_TOP, &PrintSettings::TopMargin, &PageLayout::MarginTop},
    {IDC_PAGE_BOTTOM, &PrintSettings::BottomMargin, &PageLayout::MarginBottom},
};

template <std::size_t Size> void FillField(HWND dialog, int control, const char (&text)[Size])
{
    SendDlgItemMessageA(dialog, control, EM_LIMITTEXT, Size - 1, 0);
    SetDlgItemTextA(dialog, control, text);
}

template <std::size_t Size> void TakeField(HWND dialog, int control, char (&text)[Size])
{
    GetDlgItemTextA(dialog, control, text, Size);
}

void Fill(HWND dialog)
{
    FillField(dialog, IDC_PAGE_HEADER, PrintOptions.Header);
    FillField(dialog, IDC_PAGE_FOOTER, PrintOptions.Footer);
    for (const MarginField& field : MarginFields) {
        FillField(dialog, field.Control, PrintOptions.*field.Text);
    }
    CheckDlgButton(dialog, IDC_PAGE_USE_HEAD_FONT, PrintOptions.HeadFont.Use != 0);
    CheckDlgButton(dialog, IDC_PAGE_USE_BODY_FONT, PrintOptions.BodyFont.Use != 0);
}

// Codes and boxes count from here on, even if the margins are refused and the dialog is cancelled then.
void TakeCodesAndFonts(HWND dialog)
{
    TakeField(dialog, IDC_PAGE_HEADER, PrintOptions.Header);
    TakeField(dialog, IDC_PAGE_FOOTER, PrintOptions.Footer);
    PrintOptions.HeadFont.Use = IsDlgButtonChecked(dialog, IDC_PAGE_USE_HEAD_FONT) == BST_CHECKED;
    PrintOptions.BodyFont.Use = IsDlgButtonChecked(dialog, IDC_PAGE_USE_BODY_FONT) == BST_CHECKED;
}

// False, and nothing is taken, when they are no numbers or too large for the page.
bool TakeMargins(HWND dialog)
{
    PrintSettings texts;
    PageLayout page = PrintJob.Page;
    for (const MarginField& field : MarginFields) {
        TakeField(dialog, field.Control, texts.*field.Text);
        page.*field.Device = MarginToDevice(texts.*field.Text, page.LogPixelsY, Intl.Measure != 0);
        if (page.*field.Device == NoMargin) {
            return false;
        }
    }
    if (!MarginsFitPage(page.MarginTop, page.MarginBottom, page.PageHeight)) {
        return false;
    }
    for (const MarginField& field : MarginFields) {
        CopyText(PrintOptions.*field.Text, texts.*field.Text);
    }
    PrintJob.Page = page;
    return true;
}

INT_PTR OnCommand(HWND dialog, int id)
{
    switch (id) {
    case IDC_PAGE_HEAD_FONT: ChooseHFFont(dialog, Printer, PrintFontKind::HeaderFooter); return TRUE;
    case IDC_PAGE_BODY_FONT: ChooseHFFont(dialog, Printer, PrintFontKind::Body); return TRUE;
    case IDC_ASK_HELP: ShowHelp(dialog, HELP_CONTEXT, PageSetupTopic); return TRUE;
    case IDOK:
        TakeCodesAndFonts(dialog);
        if (TakeMargins(dialog)) {
            EndDialog(dialog, 1);
        } else {
            ReportMessage(dialog, IDS_MARGINS_INVALID);
        }
        return TRUE;
    case IDCANCEL: EndDialog(dialog, 0); return TRUE;
    default: return FALSE;
    }
}

INT_PTR CALLBACK PageSetupDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM)
{
    switch (message) {
    case WM_INITDIALOG: Fill(dialog); return TRUE;
    case WM_COMMAND: return OnCommand(dialog, LOWORD(wParam));
    default: return FALSE;
    }
}

} // namespace

void ReadPrinterPage(HDC printer)
{
    PrintJob.Page.LogPixelsY = GetDeviceCaps(printer, LOGPIXELSY);
    PrintJob.Page.PageHeight = GetDeviceCaps(printer, VERTRES);
    PrintJob.Page.PageWidth = GetDeviceCaps(printer, HORZRES);
}

void PageSetup(HWND owner, HDC printer)
{
    if (printer == nullptr) {
        const PrinterDc selected;
        if (selected == nullptr) {
            ReportMessage(owner, IDS_NO_PRINTER);
        } else {
            PageSetup(owner, selected);
        }
        return;
    }
    ReadPrinterPage(printer);
    LoadPrintSettingsOnce();
    Printer = printer;
    if (DialogBoxParamA(GetModuleHandleA(nullptr), "PAGESETUP", owner, PageSetupDlgProc, 0) == 1) {
        PrintCalls.SaveSettings();
    }
}
