#include "buttonbar/bubble.h"

#include "base/load_text.h"
#include "buttonbar/bar_layout.h"
#include "buttonbar/button_order.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/gdi_holders.h"
#include "view/status_window.h"

#include <cstring>

namespace {

constexpr COLORREF BodyColour = 0x0080FFFF; // pale yellow
constexpr COLORREF ShadowColour = 0x00808080;
constexpr int Corner = 16;

struct BubbleState {
    HWND Window = nullptr;
    RECT Place = {};           // on the screen
    HBITMAP Beneath = nullptr; // the screen under it
    char Text[40] = "";
};

BubbleState Bubble;

SIZE MeasureBubble()
{
    const SIZE text = MeasureStatusText(Bubble.Text);
    return {text.cx + 14, text.cy + 9};
}

RECT PlaceOnScreen(HWND bar, int slot, SIZE size)
{
    RECT r;
    GetWindowRect(bar, &r);
    const BubbleSpace space = {r.left, r.top, r.bottom, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    const BubblePlace place = PlaceBubble(slot, size.cx, size.cy, space);
    return {place.Left, place.Top, place.Left + size.cx, place.Top + size.cy};
}

// Copies an area of the screen.
HBITMAP TakeScreen(const RECT& area)
{
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    WindowDc screen(nullptr);
    const HBITMAP bits = CreateCompatibleBitmap(screen, width, height);
    BitmapDc copy(screen, bits);
    BitBlt(copy, 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    return bits;
}

// What was beneath the bubble, with its top left corner at x, y.
void PutBack(HDC dc, int x, int y)
{
    BitmapDc copy(dc, Bubble.Beneath);
    BitBlt(dc, x, y, Bubble.Place.right - Bubble.Place.left, Bubble.Place.bottom - Bubble.Place.top, copy, 0, 0,
           SRCCOPY);
}

void DrawRound(HDC dc, int left, int top, int right, int bottom, COLORREF fill, COLORREF border)
{
    const HBRUSH brush = CreateSolidBrush(fill);
    const HPEN pen = CreatePen(PS_SOLID, 1, border);
    {
        SelectedObject selectedBrush(dc, brush);
        SelectedObject selectedPen(dc, pen);
        RoundRect(dc, left, top, right, bottom, Corner, Corner);
    }
    DeleteObject(pen);
    DeleteObject(brush);
}

LRESULT OnErase(HWND window, HDC dc)
{
    RECT r;
    GetClientRect(window, &r);
    PutBack(dc, 0, 0); // around the round corners
    DrawRound(dc, 2, 2, r.right, r.bottom, ShadowColour, ShadowColour);
    DrawRound(dc, 0, 0, r.right - 2, r.bottom - 2, BodyColour, RGB(0, 0, 0));
    return 1;
}

void OnPaint(HWND window)
{
    PaintDc dc(window);
    SelectedObject font(dc, StatusFont());
    SetBkMode(dc, TRANSPARENT);
    TextOutA(dc, 7, 4, Bubble.Text, static_cast<int>(strlen(Bubble.Text)));
}

} // namespace

void ShowBubble(HWND bar, int slot)
{
    HideBubble(true);
    LoadText(static_cast<UINT>(IDS_BUBBLE_FIRST + ButtonBar.ButtonOrder[slot]), Bubble.Text);
    Bubble.Window =
        CreateWindowExA(0, "KstvBb", "", WS_CHILD, 0, 0, 0, 0, bar,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(ID_CHILD_BUBBLE)), Windows.Instance, nullptr);
    if (Bubble.Window == nullptr) {
        return;
    }
    SetParent(Bubble.Window, nullptr);
    Bubble.Place = PlaceOnScreen(bar, slot, MeasureBubble());
    const RECT& place = Bubble.Place;
    Bubble.Beneath = TakeScreen(place);
    SetWindowPos(Bubble.Window, HWND_TOPMOST, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOACTIVATE | SWP_SHOWWINDOW);
    UpdateWindow(Bubble.Window);
}

void HideBubble(bool restore)
{
    if (Bubble.Window == nullptr) {
        return;
    }
    DestroyWindow(Bubble.Window);
    Bubble.Window = nullptr;
    if (restore) {
        WindowDc screen(nullptr);
        PutBack(screen, Bubble.Place.left, Bubble.Place.top);
    }
    DeleteObject(Bubble.Beneath);
    Bubble.Beneath = nullptr;
}

bool IsBubbleShown()
{
    return Bubble.Window != nullptr;
}

LRESULT CALLBACK BubbleWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_ERASEBKGND: return OnErase(window, reinterpret_cast<HDC>(wParam));
    case WM_PAINT: OnPaint(window); return 0;
    default: return DefWindowProcA(window, message, wParam, lParam);
    }
}
