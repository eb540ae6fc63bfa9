// Margins, header, footer and fonts of what is printed.
#pragma once

#include <windows.h>

// Asks for them, for the given printer or, without one, for the selected printer; what is confirmed is saved. What goes
// wrong is reported.
void PageSetup(HWND owner, HDC printer);

// Reads the printer's resolution and page height into the layout that the margins are for.
void ReadPrinterPage(HDC printer);
