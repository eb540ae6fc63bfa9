#include "print/print_fonts.h"

#include "base/load_text.h"
#include "base/text.h"
#include "resources/ids.h"
#include "view/font_metrics.h"
#include "view/gdi_holders.h"
#include "view/view_state.h"

#include <algorithm>
#include <commdlg.h>
#include <cstdlib>

namespace {

// A height in pixels of the screen as one of the printer's.
LONG HeightOnPrinter(LONG height, HDC printer)
{
    const WindowDc screen(nullptr);
    return -MulDiv(std::abs(FontHeight(height)), GetDeviceCaps(printer, LOGPIXELSY), GetDeviceCaps(screen, LOGPIXELSY));
}

PrintFont& FontOf(PrintFontKind which)
{
    return which == PrintFontKind::HeaderFooter ? PrintOptions.HeadFont : PrintOptions.BodyFont;
}

// Without a size none has been chosen yet: the screen's font is where to begin.
LOGFONTA FontToBeginWith(const PrintFont& chosen)
{
    const bool none = chosen.Size == 0;
    LOGFONTA font = {};
    font.lfHeight = FontHeight(none ? ViewOptions.FontSize : chosen.Size);
    font.lfWeight = none ? ViewOptions.FontWeight : chosen.Weight;
    font.lfItalic = (none ? ViewOptions.FontItalic : chosen.Italic) != 0;
    CopyText(font.lfFaceName, none ? ViewOptions.FontName : chosen.Name);
    return font;
}

UINT_PTR CALLBACK SetChooserCaption(HWND dialog, UINT message, WPARAM, LPARAM lParam)
{
    if (message == WM_INITDIALOG) {
        char caption[64];
        LoadText(static_cast<UINT>(reinterpret_cast<const CHOOSEFONTA*>(lParam)->lCustData), caption);
        SetWindowTextA(dialog, caption);
    }
    return 0;
}

} // namespace

HFONT CreatePrintFont(const PrintFont& font, HDC printer)
{
    LOGFONTA wanted = {};
    wanted.lfHeight = HeightOnPrinter(font.Size, printer);
    wanted.lfWeight = font.Weight;
    wanted.lfItalic = font.Italic != 0;
    wanted.lfCharSet = DEFAULT_CHARSET;
    CopyText(wanted.lfFaceName, font.Name);
    return CreateFontIndirectA(&wanted);
}

HFONT CreateFontLike(HFONT screenFont, HDC printer)
{
    LOGFONTA wanted = {};
    GetObjectA(screenFont, sizeof wanted, &wanted);
    wanted.lfHeight = HeightOnPrinter(wanted.lfHeight, printer);
    wanted.lfWidth = 0;
    return CreateFontIndirectA(&wanted);
}

int PrintedLineHeight(HDC printer)
{
    TEXTMETRICA metrics = {};
    GetTextMetricsA(printer, &metrics);
    return std::max<int>(metrics.tmHeight + metrics.tmExternalLeading, 1);
}

void ChooseHFFont(HWND dialog, HDC printer, PrintFontKind which)
{
    PrintFont& chosen = FontOf(which);
    LOGFONTA font = FontToBeginWith(chosen);
    CHOOSEFONTA chooser = {};
    chooser.lStructSize = sizeof chooser;
    chooser.hwndOwner = dialog;
    chooser.hDC = printer;
    chooser.lpLogFont = &font;
    chooser.Flags = CF_SCREENFONTS | CF_PRINTERFONTS | CF_ENABLEHOOK | CF_INITTOLOGFONTSTRUCT | CF_FORCEFONTEXIST;
    chooser.lCustData = which == PrintFontKind::HeaderFooter ? IDS_HEADER_FONT : IDS_BODY_FONT;
    chooser.lpfnHook = SetChooserCaption;
    if (ChooseFontA(&chooser)) {
        chosen.Size = HeldFontSize(font.lfHeight);
        chosen.Weight = font.lfWeight;
        chosen.Italic = font.lfItalic != 0;
        CopyText(chosen.Name, font.lfFaceName);
    }
}
