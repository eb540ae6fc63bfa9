#include "support/ui_test.h"

const char FixedFont[] = "WindowSize=40 30 700 500\nFontName=Courier\nFontSize=15\n";

TEXTMETRICA MeasureFont(const char* face, int height)
{
    const HDC screen = GetDC(nullptr);
    const HFONT font = CreateFontA(height, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, face);
    const HGDIOBJ former = SelectObject(screen, font);
    TEXTMETRICA metrics = {};
    GetTextMetricsA(screen, &metrics);
    SelectObject(screen, former);
    DeleteObject(font);
    ReleaseDC(nullptr, screen);
    return metrics;
}
