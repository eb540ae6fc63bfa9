#include "view/lock_region.h"

#include "view/gdi_holders.h"
#include "view/view_state.h"

#include <algorithm>
#include <windowsx.h>

namespace {

constexpr std::int32_t BarThickness = 2;
constexpr std::int32_t FreeColumns = 20; // that must stay beside locked ones

// The choice under way, in pixels of the view.
struct LockPick {
    std::int32_t Width;
    std::int32_t Height;
    std::int32_t MaxX;
    std::int32_t MaxY;
    std::int32_t X;
    std::int32_t Y;
    bool ColumnBar; // shown
};

std::int32_t RoundedDown(std::int32_t value, std::int32_t step)
{
    return value / step * step;
}

LockPick StartPick(HWND view)
{
    RECT client;
    GetClientRect(view, &client);
    LockPick pick = {};
    pick.Width = client.right;
    pick.Height = client.bottom;
    pick.MaxX = RoundedDown(std::max(pick.Width - 2, 0), View.CharWidth);
    pick.MaxY = RoundedDown(std::clamp(pick.Height - 2, 0, MostLockRows * View.LineHeight), View.LineHeight);
    pick.X = std::min(20 * View.CharWidth, pick.MaxX);
    pick.Y = std::min(4 * View.LineHeight, pick.MaxY);
    pick.ColumnBar = View.FontIsFixed;
    return pick;
}

// Drawing a second time erases.
void DrawBars(HDC dc, const LockPick& pick)
{
    PatBlt(dc, 0, pick.Y, pick.Width, BarThickness, PATINVERT);
    if (pick.ColumnBar) {
        PatBlt(dc, pick.X, 0, BarThickness, pick.Height, PATINVERT);
    }
}

void FollowMouse(HDC dc, LockPick& pick, std::int32_t x, std::int32_t y)
{
    DrawBars(dc, pick);
    pick.X = RoundedDown(std::clamp(x, 0, pick.MaxX), View.CharWidth);
    pick.Y = RoundedDown(std::clamp(y, 0, pick.MaxY), View.LineHeight);
    pick.ColumnBar = View.FontIsFixed && pick.X <= pick.Width - FreeColumns * View.CharWidth;
    DrawBars(dc, pick);
}

enum class PickStep { GoOn, Accept, Cancel };

PickStep OnKey(WPARAM key)
{
    switch (key) {
    case VK_RETURN: return PickStep::Accept;
    case VK_ESCAPE: return PickStep::Cancel;
    default: MessageBeep(0); return PickStep::GoOn;
    }
}

PickStep OnPickMessage(HDC dc, LockPick& pick, const MSG& message)
{
    switch (message.message) {
    case WM_KEYDOWN: return OnKey(message.wParam);
    case WM_LBUTTONDOWN: return PickStep::Accept;
    case WM_MOUSEMOVE:
        FollowMouse(dc, pick, GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam));
        return PickStep::GoOn;
    default: return PickStep::GoOn;
    }
}

// What other processes send comes through: it may bring another document, a message box or another size, and
// any of them ends the choice.
bool CanGoOn(HWND view, const LockPick& pick)
{
    RECT client;
    GetClientRect(view, &client);
    return View.PickingLock && GetCapture() == view && client.right == pick.Width && client.bottom == pick.Height;
}

// Looking at a paint message does not take it off, so the window is said to be painted, its frame too. All is
// painted after the choice.
void PutOffPainting(HWND window)
{
    RedrawWindow(window, nullptr, nullptr, RDW_VALIDATE | RDW_NOFRAME | RDW_NOERASE | RDW_NOINTERNALPAINT);
}

// Takes every message off the queue until the choice is made. The program's end is put back for the main loop.
bool Choose(HWND view, HDC dc, LockPick& pick)
{
    PickStep step = PickStep::GoOn;
    while (step == PickStep::GoOn && CanGoOn(view, pick)) {
        MSG message;
        if (!PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (CanGoOn(view, pick)) {
                WaitMessage();
            }
        } else if (message.message == WM_PAINT) {
            PutOffPainting(message.hwnd);
        } else if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            step = PickStep::Cancel;
        } else {
            step = OnPickMessage(dc, pick, message);
        }
    }
    return step == PickStep::Accept && CanGoOn(view, pick);
}

void MovePointerTo(HWND view, std::int32_t x, std::int32_t y)
{
    POINT place = {x, y};
    ClientToScreen(view, &place);
    SetCursorPos(place.x, place.y);
}

} // namespace

void ClearLock()
{
    View.PickingLock = false;
    View.LockTopLine = View.LockRows = View.LockColStart = View.LockCols = 0;
}

void PickLockRegion(HWND view)
{
    LockPick pick = StartPick(view);
    const HCURSOR before = SetCursor(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_SIZE)));
    SetCapture(view);
    MovePointerTo(view, pick.X, pick.Y);
    bool accepted = false;
    View.PickingLock = true;
    {
        WindowDc dc(view);
        DrawBars(dc, pick);
        accepted = Choose(view, dc, pick);
        if (View.PickingLock) {
            DrawBars(dc, pick);
        }
    }
    View.PickingLock = false;
    SetCursor(before);
    ReleaseCapture();
    if (!accepted) {
        return;
    }
    View.LockRows = pick.Y / View.LineHeight;
    if (pick.ColumnBar) {
        // One column's width goes to the margin.
        View.LockCols = std::max(pick.X / View.CharWidth - 1, 0);
    }
}
