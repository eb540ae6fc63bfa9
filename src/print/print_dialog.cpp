#include "print/print_dialog.h"

#include "base/help.h"
#include "print/page_setup.h"
#include "print/print_settings.h"
#include "print/printer_selection.h"
#include "resources/ids.h"

namespace {

constexpr ULONG_PTR PrintTopic = 365; // of the help file

struct PrintQuestion {
    HDC Printer;
    bool SelectionOnly;
};

PrintQuestion Question;

struct OptionBox {
    int Control;
    std::int32_t PrintSettings::*Setting;
};

constexpr OptionBox OptionBoxes[] = {{IDC_PRINT_DEFAULT_FONT, &PrintSettings::PrintDefFont},
                                     {IDC_PRINT_FORM_FEEDS, &PrintSettings::ProcFF},
                                     {IDC_PRINT_WRAP, &PrintSettings::WrapOutput},
                                     {IDC_PRINT_HEADERS, &PrintSettings::PrintHF}};

void Fill(HWND dialog)
{
    ShowPrinterName(dialog);
    CheckRadioButton(dialog, IDC_PRINT_ENTIRE, IDC_PRINT_SELECTION,
                     Question.SelectionOnly ? IDC_PRINT_SELECTION : IDC_PRINT_ENTIRE);
    EnableWindow(GetDlgItem(dialog, IDC_PRINT_SELECTION), Question.SelectionOnly);
    for (const OptionBox& box : OptionBoxes) {
        CheckDlgButton(dialog, box.Control, PrintOptions.*box.Setting != 0 ? BST_CHECKED : BST_UNCHECKED);
    }
}

void Take(HWND dialog)
{
    Question.SelectionOnly = IsDlgButtonChecked(dialog, IDC_PRINT_SELECTION) == BST_CHECKED;
    for (const OptionBox& box : OptionBoxes) {
        PrintOptions.*box.Setting = IsDlgButtonChecked(dialog, box.Control) == BST_CHECKED;
    }
}

INT_PTR OnCommand(HWND dialog, int id)
{
    switch (id) {
    case IDC_PRINT_PRINTER_SETUP:
        PrinterSetup(dialog);
        ShowPrinterName(dialog);
        return TRUE;
    case IDC_PRINT_PRINTER: // the system's settings have changed, and with them the selected printer
        if (const PrinterDc selected; selected != nullptr) {
            ShowPrinterName(dialog);
        }
        return TRUE;
    case IDC_PRINT_PAGE_SETUP: PageSetup(dialog, Question.Printer); return TRUE;
    case IDC_ASK_HELP: ShowHelp(dialog, HELP_CONTEXT, PrintTopic); return TRUE;
    case IDOK:
        Take(dialog);
        EndDialog(dialog, 1);
        return TRUE;
    case IDCANCEL: EndDialog(dialog, 0); return TRUE;
    default: return FALSE;
    }
}

INT_PTR CALLBACK PrintItDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM)
{
    switch (message) {
    case WM_INITDIALOG: Fill(dialog); return TRUE;
    case WM_WININICHANGE: PostMessageA(dialog, WM_COMMAND, IDC_PRINT_PRINTER, 0); return TRUE; // behind the frame
    case WM_COMMAND: return OnCommand(dialog, LOWORD(wParam));
    default: return FALSE;
    }
}

} // namespace

bool AskHowToPrint(HWND owner, HDC printer, bool& selectionOnly)
{
    Question = {printer, selectionOnly};
    const bool confirmed = DialogBoxParamA(GetModuleHandleA(nullptr), "PRINTIT", owner, PrintItDlgProc, 0) == 1;
    selectionOnly = Question.SelectionOnly;
    return confirmed;
}
