#include "buttonbar/button_bar_window.h"

#include "buttonbar/bar_layout.h"
#include "buttonbar/bubble.h"
#include "buttonbar/buttons.h"
#include "buttonbar/draw_button.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/gdi_holders.h"

#include <windowsx.h>

ButtonBarCallsType ButtonBarCalls;

namespace {

constexpr UINT_PTR BubbleTimer = 4;
constexpr UINT BubbleDelay = 1500; // milliseconds of rest until a bubble comes
constexpr UINT BubbleWatch = 250;  // between two looks whether the pointer is still on the bar

struct BarState {
    bool Pressed[ButtonTotal] = {};
    int Width = 0; // client size
    int Height = 0;
    int PressSlot = NoSlot;  // the left button went down on it
    int BubbleSlot = NoSlot; // its bubble was shown last
    RECT PressRect = {};     // no bubble comes there
    bool LeftPressing = false;
    bool RightBubble = false; // the right button is down: bubbles come at once
    bool TimerRuns = false;
};

BarState Bar;

RECT SlotRect(int slot)
{
    return {SlotLeft(slot), ButtonTop, SlotLeft(slot) + ButtonWidth, ButtonTop + ButtonHeight};
}

ButtonInfo& ButtonIn(int slot)
{
    return ButtonTable[ButtonBar.ButtonOrder[slot]];
}

void StartTimer(HWND window, UINT milliseconds)
{
    SetTimer(window, BubbleTimer, milliseconds, nullptr);
    Bar.TimerRuns = true;
}

void StopTimer(HWND window)
{
    KillTimer(window, BubbleTimer);
    Bar.TimerRuns = false;
}

// Not where another window covers it.
bool IsPointerOver(HWND window)
{
    POINT pointer;
    return GetCursorPos(&pointer) && WindowFromPoint(pointer) == window;
}

int SlotUnderPointer(HWND window)
{
    POINT pointer = {};
    GetCursorPos(&pointer);
    ScreenToClient(window, &pointer);
    return SlotAt(pointer.x);
}

// The face of a button that cannot be pressed stays up.
void RepaintSlot(HWND window, int slot)
{
    if (ButtonIn(slot).Enabled) {
        const RECT area = SlotRect(slot);
        InvalidateRect(window, &area, FALSE);
    }
}

UINT HelpOf(int slot)
{
    const UINT command = ButtonIn(slot).Command;
    return command == IDM_FILE_LAUNCH ? ButtonBarCalls.LaunchHelp() : command - IDS_COMMAND_HELP_OFFSET;
}

void Press(HWND window)
{
    Bar.Pressed[Bar.PressSlot] = true;
    SendMessageA(Windows.Status, WM_SHOW_STRING, HelpOf(Bar.PressSlot), 0);
    RepaintSlot(window, Bar.PressSlot);
}

void Unpress(HWND window)
{
    Bar.Pressed[Bar.PressSlot] = false;
    RefreshStatus();
    RepaintSlot(window, Bar.PressSlot);
}

void OnLeftDown(HWND window, int x)
{
    if (Bar.RightBubble) {
        return;
    }
    StopTimer(window);
    HideBubble(true);
    const int slot = SlotAt(x);
    if (slot == NoSlot) {
        return;
    }
    Bar.PressSlot = slot;
    Bar.PressRect = SlotRect(slot);
    Bar.LeftPressing = true;
    Press(window);
    SetCapture(window);
}

void FollowPress(HWND window, POINT point)
{
    const bool inside = PtInRect(&Bar.PressRect, point) != FALSE;
    if (inside == Bar.Pressed[Bar.PressSlot]) {
        return;
    }
    if (inside) {
        Press(window);
    } else {
        Unpress(window);
    }
}

void PostCommandOf(const ButtonInfo& button, bool shift)
{
    const UINT command = button.Command + (shift && button.HasShiftVariant ? 1u : 0u);
    PostMessageA(Windows.Main, WM_COMMAND, command, 0);
}

void OnLeftUp(HWND window, POINT point, WPARAM keys)
{
    if (!Bar.LeftPressing) {
        return;
    }
    Bar.LeftPressing = false;
    ReleaseCapture();
    if (!Bar.Pressed[Bar.PressSlot]) {
        RefreshStatus();
        return;
    }
    Unpress(window);
    const ButtonInfo& button = ButtonIn(Bar.PressSlot);
    if (button.Enabled) {
        UpdateWindow(window);
        if (PtInRect(&Bar.PressRect, point)) {
            PostCommandOf(button, (keys & MK_SHIFT) != 0);
        }
    }
}

void OnRightDown(HWND window, int x)
{
    if (Bar.LeftPressing) {
        return;
    }
    StopTimer(window);
    const int slot = SlotAt(x);
    if (slot == NoSlot) {
        HideBubble(true); // nobody watches it any more
        return;
    }
    Bar.BubbleSlot = slot;
    ShowBubble(window, slot);
    Bar.RightBubble = true;
    SetCapture(window);
}

void EndRightBubble()
{
    Bar.RightBubble = false;
    HideBubble(true);
    RefreshStatus();
}

void OnRightUp()
{
    if (Bar.RightBubble) {
        EndRightBubble();
        ReleaseCapture();
    }
}

void FollowBubble(HWND window, int x)
{
    if (!IsPointerOver(window)) {
        HideBubble(true);
        StopTimer(window);
        Bar.BubbleSlot = NoSlot;
        return;
    }
    const int slot = SlotAt(x);
    if (slot != NoSlot && slot != Bar.BubbleSlot) {
        Bar.BubbleSlot = slot;
        ShowBubble(window, slot);
    }
}

void OnMouseMove(HWND window, POINT point)
{
    if (Bar.LeftPressing) {
        FollowPress(window, point);
    } else if (IsBubbleShown() || Bar.RightBubble) {
        FollowBubble(window, point.x);
    } else if (ButtonBar.ShowBubbles != 0 && !Bar.TimerRuns && !PtInRect(&Bar.PressRect, point)) {
        StartTimer(window, BubbleDelay);
    }
}

// The pointer has rested on the bar.
void OnRest(HWND window)
{
    StopTimer(window);
    const int slot = IsPointerOver(window) ? SlotUnderPointer(window) : NoSlot;
    if (slot != NoSlot) {
        Bar.BubbleSlot = slot;
        ShowBubble(window, slot);
        StartTimer(window, BubbleWatch);
    }
    SetRectEmpty(&Bar.PressRect);
}

void OnTimer(HWND window)
{
    if (!Bar.TimerRuns) {
        return; // it was on its way when the timer was stopped
    }
    if (!IsBubbleShown()) {
        OnRest(window);
    } else if (!IsPointerOver(window)) {
        HideBubble(true);
        StopTimer(window);
    }
}

// Something else has taken the mouse: no button is pressed, no bubble shown.
void OnCaptureLost(HWND window)
{
    if (Bar.LeftPressing) {
        Bar.LeftPressing = false;
        Unpress(window);
    }
    if (Bar.RightBubble) {
        EndRightBubble();
    }
}

void DrawBorders(HDC dc)
{
    FillSolid(dc, 0, 0, Bar.Width, 1, ButtonHighlight);
    FillSolid(dc, 0, Bar.Height - 2, Bar.Width, 1, ButtonShadow);
    FillSolid(dc, 0, Bar.Height - 1, Bar.Width, 1, ButtonFrame);
}

void OnPaint(HWND window)
{
    PaintDc dc(window);
    const SlotRange range = SlotsBetween(dc.Area().left, dc.Area().right);
    for (int slot = range.First; slot < range.Last; ++slot) {
        DrawButton(dc, slot, Bar.Pressed[slot] && ButtonIn(slot).Enabled);
    }
    DrawBorders(dc);
}

void OnCreate()
{
    Bar = BarState{};
    LoadFaces();
}

void OnDestroy(HWND window)
{
    StopTimer(window);
    HideBubble(false);
    DeleteFaces();
    PostQuitMessage(0);
}

} // namespace

void DismissBubble()
{
    HideBubble(true);
    StopTimer(Windows.Buttons);
    Bar.BubbleSlot = NoSlot;
}

void SetButtonEnabled(int button, bool enabled)
{
    if (ButtonTable[button].Enabled == enabled) {
        return;
    }
    ButtonTable[button].Enabled = enabled;
    for (int slot = 0; slot < ButtonBar.ButtonCount; ++slot) { // a hand-edited setting may place it twice
        if (ButtonBar.ButtonOrder[slot] == button) {
            const RECT area = SlotRect(slot);
            InvalidateRect(Windows.Buttons, &area, FALSE);
        }
    }
}

LRESULT CALLBACK ButtonWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const POINT point = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (message) {
    case WM_CREATE: OnCreate(); return 0;
    case WM_DESTROY: OnDestroy(window); return 0;
    case WM_SIZE:
        Bar.Width = LOWORD(lParam);
        Bar.Height = HIWORD(lParam);
        return 0;
    case WM_PAINT: OnPaint(window); return 0;
    case WM_LBUTTONDOWN: OnLeftDown(window, point.x); return 0;
    case WM_LBUTTONUP: OnLeftUp(window, point, wParam); return 0;
    case WM_RBUTTONDOWN: OnRightDown(window, point.x); return 0;
    case WM_RBUTTONUP: OnRightUp(); return 0;
    case WM_MOUSEMOVE: OnMouseMove(window, point); return 0;
    case WM_TIMER: OnTimer(window); return 0;
    case WM_CAPTURECHANGED: OnCaptureLost(window); return 0;
    default: return DefWindowProcA(window, message, wParam, lParam);
    }
}
