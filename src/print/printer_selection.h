// The printer that jobs go to: the system's default one until another is chosen.
#pragma once

#include <windows.h>

// A device context of the selected printer, to be deleted by the caller; nullptr when there is no printer.
HDC GetPrinterDC();

// Forgets the selection and frees what it holds.
void FreePrinterSelection();
