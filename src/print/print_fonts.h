// The fonts of a print job.
#pragma once

#include "print/print_settings.h"

#include <windows.h>

// The chosen font for the printer, to be deleted by the caller; nullptr when there is none to be had.
HFONT CreatePrintFont(const PrintFont& font, HDC printer);

// The screen's font, as large on the paper; to be deleted by the caller.
HFONT CreateFontLike(HFONT screenFont, HDC printer);

// The height of a line in the font that is selected into the printer.
int PrintedLineHeight(HDC printer);

enum class PrintFontKind { HeaderFooter, Body };

// Asks for one of the two fonts and keeps it in the print settings.
void ChooseHFFont(HWND dialog, HDC printer, PrintFontKind which);
