#include "view/choose_font.h"

#include "base/text.h"
#include "view/font_metrics.h"
#include "view/screen_font.h"
#include "view/view_state.h"

#include <commdlg.h>

namespace {

LOGFONTA ChosenFont()
{
    LOGFONTA font = {};
    font.lfHeight = FontHeight(ViewOptions.FontSize);
    font.lfWeight = ViewOptions.FontWeight;
    font.lfItalic = ViewOptions.FontItalic != 0;
    CopyText(font.lfFaceName, ViewOptions.FontName);
    return font;
}

void KeepFont(const LOGFONTA& font)
{
    ViewOptions.FontSize = HeldFontSize(font.lfHeight);
    ViewOptions.FontWeight = font.lfWeight;
    ViewOptions.FontItalic = font.lfItalic != 0;
    CopyText(ViewOptions.FontName, font.lfFaceName);
}

} // namespace

void ChooseScreenFont(HWND owner, HDC printer)
{
    LOGFONTA font = ChosenFont();
    CHOOSEFONTA dialog = {};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.lpLogFont = &font;
    dialog.Flags = CF_SCREENFONTS | CF_INITTOLOGFONTSTRUCT;
    if (printer != nullptr) {
        dialog.hDC = printer;
        dialog.Flags |= CF_PRINTERFONTS | CF_FORCEFONTEXIST;
    }
    if (View.LockCols != 0) {
        dialog.Flags |= CF_FIXEDPITCHONLY; // locked columns have to line up
    }
    if (ChooseFontA(&dialog)) {
        KeepFont(font);
        UseChosenFont();
    }
}
