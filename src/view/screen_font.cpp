#include "view/screen_font.h"

#include "base/text.h"
#include "view/font_metrics.h"
#include "view/frame_windows.h"
#include "view/gdi_holders.h"
#include "view/view_state.h"

namespace {

HFONT CreateChosenFont()
{
    LOGFONTA font = {};
    font.lfHeight = FontHeight(ViewOptions.FontSize);
    font.lfWeight = ViewOptions.FontWeight;
    font.lfItalic = ViewOptions.FontItalic != 0;
    font.lfCharSet = DEFAULT_CHARSET;
    CopyText(font.lfFaceName, ViewOptions.FontName);
    return CreateFontIndirectA(&font);
}

} // namespace

void DeleteScreenFont()
{
    if (Drawing.ScreenFont != nullptr && Drawing.ScreenFont != Drawing.FallbackFont) {
        DeleteObject(Drawing.ScreenFont);
    }
    Drawing.ScreenFont = nullptr;
}

void FontMetrics()
{
    WindowDc dc(nullptr);
    SelectedObject font(dc, Drawing.ScreenFont);
    TEXTMETRICA metrics = {};
    GetTextMetricsA(dc, &metrics);
    const FontMeasures measures =
        MendMeasures({metrics.tmAveCharWidth, metrics.tmMaxCharWidth, metrics.tmHeight + metrics.tmExternalLeading});
    View.CharWidth = measures.CharWidth;
    View.MaxCharWidth = measures.MaxCharWidth;
    View.LineHeight = measures.LineHeight;
    View.FontIsFixed = (metrics.tmPitchAndFamily & TMPF_FIXED_PITCH) == 0; // the bit is set for a variable pitch
    View.FontIsAnsi = metrics.tmCharSet == ANSI_CHARSET;
}

void CreateScreenFont(bool useStock)
{
    DeleteScreenFont();
    Drawing.FallbackFont = static_cast<HFONT>(GetStockObject(ANSI_FIXED_FONT));
    Drawing.ScreenFont = useStock ? Drawing.FallbackFont : CreateChosenFont();
    if (Drawing.ScreenFont == nullptr) {
        Drawing.ScreenFont = Drawing.FallbackFont;
    }
    FontMetrics();
    if (Windows.View != nullptr) {
        LayOutFrameAnew();
        RepaintView();
    }
}

void SubstituteScreenFont()
{
    if (!View.FontIsFixed) {
        View.SubstituteFixedFont = true;
        CreateScreenFont(true);
    }
}

void RestoreScreenFont()
{
    if (View.SubstituteFixedFont) {
        View.SubstituteFixedFont = false;
        CreateScreenFont(false);
    }
}

void StepScreenFont(FontStep step)
{
    if (View.SubstituteFixedFont || !StepFontSize(ViewOptions.FontSize, step, Drawing.LogPixelsY)) {
        MessageBeep(0);
        return;
    }
    CreateScreenFont(false);
}

void UseChosenFont()
{
    View.SubstituteFixedFont = false;
    CreateScreenFont(false);
    if (View.FileShown && View.HexMode) {
        SubstituteScreenFont();
    }
}
