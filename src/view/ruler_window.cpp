#include "view/ruler_window.h"

#include "view/frame_windows.h"
#include "view/gdi_holders.h"
#include "view/palette.h"
#include "view/ruler_marks.h"
#include "view/view_state.h"

#include <algorithm>

namespace {

void DrawCharacterRuler(HDC dc)
{
    char marks[RulerLength + 1];
    FormatRuler(View.LeftColumn, marks);
    SelectedObject font(dc, Drawing.ScreenFont);
    SetTextColor(dc, ForegroundColour(RulerRegion));
    SetBkColor(dc, BackgroundColour(RulerRegion));
    TextOutA(dc, 0, 0, marks, RulerLength);
}

void DrawInchRuler(HDC dc)
{
    constexpr int Bottom = 20;
    RECT frame;
    GetClientRect(Windows.Main, &frame);
    SelectedObject pen(dc, Drawing.RulerPen);
    SelectedObject brush(dc, GetStockObject(NULL_BRUSH));
    Rectangle(dc, View.CharWidth, 0, frame.right, Bottom + 1);
    const int sixteenth = std::max(Drawing.LogPixelsX / 16, 1);
    int tick = 0;
    for (int x = View.CharWidth; x <= frame.right; x += sixteenth, ++tick) {
        MoveToEx(dc, x, Bottom, nullptr);
        LineTo(dc, x, Bottom - InchTickHeight(tick));
    }
}

void OnPaint(HWND window)
{
    PaintDc paint(window);
    if (View.HexMode || ViewOptions.Ruler == 0) {
        return;
    }
    if (View.FontIsFixed) {
        DrawCharacterRuler(paint);
    } else {
        DrawInchRuler(paint);
    }
}

LRESULT OnErase(HWND window, HDC dc)
{
    UnrealizeObject(Drawing.RulerBrush);
    RECT client;
    GetClientRect(window, &client);
    FillRect(dc, &client, Drawing.RulerBrush);
    return 1;
}

} // namespace

LRESULT CALLBACK RulerWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_PAINT: OnPaint(window); return 0;
    case WM_ERASEBKGND: return OnErase(window, reinterpret_cast<HDC>(wParam));
    default: return DefWindowProcA(window, message, wParam, lParam);
    }
}
