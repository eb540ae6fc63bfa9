// The printer that jobs go to: the system's default one until another is chosen.
#pragma once

#include <windows.h>

// A device context of the selected printer, to be deleted by the caller; nullptr when there is no printer.
HDC GetPrinterDC();

// A device context of the selected printer for as long as the object lives; nullptr when there is no printer.
class PrinterDc {
public:
    PrinterDc() : Dc(GetPrinterDC()) {}
    ~PrinterDc()
    {
        if (Dc != nullptr) {
            DeleteDC(Dc);
        }
    }
    PrinterDc(const PrinterDc&) = delete;
    PrinterDc& operator=(const PrinterDc&) = delete;
    operator HDC() const { return Dc; }

private:
    HDC Dc;
};

// Lets the user choose a printer and set it up; false when that is cancelled, or there is none, which is reported.
bool PrinterSetup(HWND owner);

// Names the selected printer and its port in the PRINTIT dialog.
void ShowPrinterName(HWND dialog);

// Forgets the selection and frees what it holds.
void FreePrinterSelection();
