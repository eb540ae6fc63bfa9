#include "app/settings_table.h"

#include "app/app_state.h"
#include "document/document_state.h"
#include "print/print_settings.h"
#include "view/font_metrics.h"
#include "view/view_state.h"

#include <algorithm>

const SettingRow SettingsTable[SettingRowCount] = {
    {"Fcolour", 7, &ViewOptions.Foreground[OutputRegion]},
    {"Bcolour", 1, &ViewOptions.Background[OutputRegion]},
    {"RlFcolour", 0, &ViewOptions.Foreground[RulerRegion]},
    {"RlBcolour", 6, &ViewOptions.Background[RulerRegion]},
    {"MkFcolour", 0, &ViewOptions.Foreground[MarkedRegion]},
    {"MkBcolour", 6, &ViewOptions.Background[MarkedRegion]},
    {"StFcolour", 0, &ViewOptions.Foreground[StatusRegion]},
    {"StBcolour", 8, &ViewOptions.Background[StatusRegion]},
    {"LkFcolour", 7, &ViewOptions.Foreground[LockedRegion]},
    {"LkBcolour", 9, &ViewOptions.Background[LockedRegion]},
    {"Ptabs", 0, &DocumentOptions.Ptabs},
    {"Ruler", 0, &ViewOptions.Ruler},
    {"FontSize", -13, &ViewOptions.FontSize},
    {"FontWeight", 400, &ViewOptions.FontWeight},
    {"FontItalic", 0, &ViewOptions.FontItalic},
    {"UseHeadFont", 0, &PrintOptions.HeadFont.Use},
    {"HdFontSize", 0, &PrintOptions.HeadFont.Size},
    {"HdFontWeight", 0, &PrintOptions.HeadFont.Weight},
    {"HdFontItalic", 0, &PrintOptions.HeadFont.Italic},
    {"UseBodyFont", 0, &PrintOptions.BodyFont.Use},
    {"BdFontSize", 0, &PrintOptions.BodyFont.Size},
    {"BdFontWeight", 0, &PrintOptions.BodyFont.Weight},
    {"BdFontItalic", 0, &PrintOptions.BodyFont.Italic},
    {"StatusLine", 1, &ViewOptions.StatusLine},
    {"ButtonBar", 1, &ViewOptions.ButtonBar},
    {"ScrollBars", 1, &ViewOptions.ScrollBars},
    {"SuppressMenu", 0, &AppOptions.SuppressMenu},
    {"ExitOnEsc", 0, &AppOptions.ExitOnEsc},
    {"OemToAnsi", 0, &ViewOptions.OemToAnsi},
    {"FixedLineLen", 75, &DocumentOptions.FixedLineLen},
    {"AutoZip", 0, &AppOptions.AutoZip},
    {"MaxTextSize", 12, &DocumentOptions.MaxTextSize},
    {"TabSize", 8, &DocumentOptions.TabSize},
    {"MinOnLaunch", 0, &AppOptions.MinOnLaunch},
    {"MaxLaunchApp", 0, &AppOptions.MaxLaunchApp},
    {"MaxLineLen", 512, &DocumentOptions.MaxLineLen},
    {"LoadOnDelete", 0, &AppOptions.LoadOnDelete},
};

namespace {

void NormalizePrintFont(PrintFont& font)
{
    font.Size = font.Size != 0 ? HeldFontSize(font.Size) : ViewOptions.FontSize;
}

} // namespace

void NormalizeSettings()
{
    ViewOptions.FontSize = HeldFontSize(ViewOptions.FontSize);
    NormalizePrintFont(PrintOptions.HeadFont);
    NormalizePrintFont(PrintOptions.BodyFont);
    DocumentOptions.MaxLineLen = std::clamp(DocumentOptions.MaxLineLen, 80, 1024);
}
