#include "print/printer_selection.h"

#include "base/messages.h"
#include "resources/ids.h"

#include <commdlg.h>
#include <cstdio>
#include <cstring>
#include <utility>

namespace {

// As the print dialogs hand them out; kept for the run.
struct PrinterSelection {
    HGLOBAL Mode = nullptr;  // DEVMODE
    HGLOBAL Names = nullptr; // DEVNAMES
};

PrinterSelection Selection;

// Runs the print dialog on the selection; it may hand out other handles, even when it is cancelled. They are the
// dialog's until it ends: other windows' messages come in meanwhile.
bool RunSetup(HWND owner, DWORD flags)
{
    PRINTDLGA dialog = {};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.hDevMode = std::exchange(Selection.Mode, nullptr);
    dialog.hDevNames = std::exchange(Selection.Names, nullptr);
    dialog.Flags = PD_PRINTSETUP | PD_NOWARNING | flags;
    const bool confirmed = PrintDlgA(&dialog) != FALSE;
    FreePrinterSelection(); // what somebody has asked for meanwhile
    Selection = {dialog.hDevMode, dialog.hDevNames};
    return confirmed;
}

// The selection's names, locked for as long as the object lives.
class PrinterNames {
public:
    PrinterNames()
        : Memory(Selection.Names), Names(Memory != nullptr ? static_cast<const char*>(GlobalLock(Memory)) : nullptr)
    {
        if (Names != nullptr) {
            memcpy(&Places, Names, sizeof Places);
        }
    }
    ~PrinterNames()
    {
        if (Names != nullptr) {
            GlobalUnlock(Memory);
        }
    }
    PrinterNames(const PrinterNames&) = delete;
    PrinterNames& operator=(const PrinterNames&) = delete;

    bool Exist() const { return Names != nullptr; }
    const char* Driver() const { return Names + Places.wDriverOffset; }
    const char* Device() const { return Names + Places.wDeviceOffset; }
    const char* Output() const { return Names + Places.wOutputOffset; }

private:
    HGLOBAL Memory;
    const char* Names; // begin with the DEVNAMES that says where each lies
    DEVNAMES Places = {};
};

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
        FreePrinterSelection(); // the default is handed out only to who has nothing
        RunSetup(nullptr, PD_RETURNDEFAULT);
    }
    const PrinterNames names;
    if (!names.Exist()) {
        return nullptr;
    }
    const HGLOBAL memory = Selection.Mode;
    const auto* const mode = memory != nullptr ? static_cast<const DEVMODEA*>(GlobalLock(memory)) : nullptr;
    const HDC printer = CreateDCA(names.Driver(), names.Device(), names.Output(), mode);
    if (mode != nullptr) {
        GlobalUnlock(memory);
    }
    return printer;
}

bool PrinterSetup(HWND owner)
{
    {
        const PrinterDc printer;
        if (printer == nullptr) {
            ReportMessage(owner, IDS_NO_PRINTER);
            return false;
        }
    }
    return RunSetup(owner, 0);
}

void ShowPrinterName(HWND dialog)
{
    const PrinterNames names;
    if (names.Exist()) {
        char text[MAX_PATH + CCHDEVICENAME + 8];
        snprintf(text, sizeof text, "%s on %s", names.Device(), names.Output());
        SetDlgItemTextA(dialog, IDC_PRINT_PRINTER, text);
    }
}

void FreePrinterSelection()
{
    FreeHandle(Selection.Mode);
    FreeHandle(Selection.Names);
}
