#include "print/printer_selection.h"

#include <commdlg.h>

namespace {

// As the print dialogs hand them out; kept for the run.
struct PrinterSelection {
    HGLOBAL Mode = nullptr;  // DEVMODE
    HGLOBAL Names = nullptr; // DEVNAMES
};

PrinterSelection Selection;

void SelectDefaultPrinter()
{
    PRINTDLGA dialog = {};
    dialog.lStructSize = sizeof dialog;
    dialog.Flags = PD_RETURNDEFAULT | PD_PRINTSETUP | PD_NOWARNING;
    PrintDlgA(&dialog);
    Selection.Mode = dialog.hDevMode;
    Selection.Names = dialog.hDevNames;
}

void FreeHandle(HGLOBAL& handle)
{
    if (handle != nullptr) {
        GlobalFree(handle);
        handle = nullptr;
    }
}

} // namespace

HDC GetPrinterDC()
{
    if (Selection.Names == nullptr) {
        SelectDefaultPrinter();
    }
    if (Selection.Names == nullptr) {
        return nullptr;
    }
    const auto* const names = static_cast<const DEVNAMES*>(GlobalLock(Selection.Names));
    const auto* const mode =
        Selection.Mode != nullptr ? static_cast<const DEVMODEA*>(GlobalLock(Selection.Mode)) : nullptr;
    HDC printer = nullptr;
    if (names != nullptr) {
        const char* const texts = reinterpret_cast<const char*>(names);
        printer =
            CreateDCA(texts + names->wDriverOffset, texts + names->wDeviceOffset, texts + names->wOutputOffset, mode);
        GlobalUnlock(Selection.Names);
    }
    if (mode != nullptr) {
        GlobalUnlock(Selection.Mode);
    }
    return printer;
}

void FreePrinterSelection()
{
    FreeHandle(Selection.Mode);
    FreeHandle(Selection.Names);
}
