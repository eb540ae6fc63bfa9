// The question how to print.
#pragma once

#include <windows.h>

// Asks, with a printer's device context for the page setup. selectionOnly goes in as whether there is a selection and
// comes out as whether only that is to be printed; the options go to the print settings. False when the user cancels.
bool AskHowToPrint(HWND owner, HDC printer, bool& selectionOnly);
