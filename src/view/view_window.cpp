#include "view/view_window.h"

#include "document/document_state.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/paint_view.h"
#include "view/scroll.h"
#include "view/selection.h"
#include "view/status_window.h"
#include "view/text_row.h"
#include "view/view_state.h"

#include <algorithm>
#include <windowsx.h>

ViewHooks ViewCalls;

namespace {

constexpr UINT_PTR AutoScrollTimerId = 1;
constexpr UINT AutoScrollPeriod = 40; // milliseconds per line or column
constexpr UINT_PTR RightClickTimerId = 2;

// What ExtendSelection invalidated last: on one and the same row only a narrow band around the moving
// end changes.
struct LastExtension {
    LineBand Band = {0, -1};
    std::int32_t MouseX = 0;
    std::int32_t ColB = 0;
};

LastExtension Last;

RECT RectangleOfLines(LineBand band)
{
    const std::int32_t first = band.First - View.TopLine - 1;
    const std::int32_t last = band.Last - View.TopLine - 1;
    return {0, first * View.LineHeight, View.ClientWidth, (last + 1) * View.LineHeight};
}

void BeepOnceAtEnd()
{
    if (!View.BeepedAtEnd) {
        MessageBeep(0);
        View.BeepedAtEnd = true;
    }
}

void SetViewScrollPos(HWND view, int bar, std::int32_t position)
{
    if (ViewOptions.ScrollBars != 0) {
        SetScrollPos(view, bar, position, TRUE);
    }
}

// Drawing a bar takes longer than reading many blocks, so one that stays as it is is left alone. Setting
// a bar that is not there yet gives it its values, and may show it.
void SetBar(HWND view, int bar, std::int32_t low, std::int32_t high, std::int32_t position)
{
    SCROLLINFO now = {sizeof now, SIF_RANGE | SIF_POS, 0, 0, 0, 0, 0};
    if (GetScrollInfo(view, bar, &now) && now.nMin == low && now.nMax == high && now.nPos == position) {
        return;
    }
    const SCROLLINFO wanted = {sizeof wanted, SIF_RANGE | SIF_POS, low, high, 0, position, 0};
    SetScrollInfo(view, bar, &wanted, TRUE);
}

// Moves the unlocked band by lines and repaints what that uncovers.
void ScrollLines(HWND view, std::int32_t lines)
{
    const RECT area = {0, View.LockedHeight, View.ClientWidth, View.ClientHeight};
    const std::int64_t pixels = static_cast<std::int64_t>(lines) * View.LineHeight;
    const std::int64_t distance = pixels < 0 ? -pixels : pixels;
    if (distance < View.ClientHeight - View.LineHeight) {
        ScrollWindow(view, 0, static_cast<int>(-pixels), &area, &area);
    } else {
        InvalidateRect(view, &area, TRUE);
    }
    View.TopLine += lines;
    SetViewScrollPos(view, SB_VERT, ScaledTop());
}

void InvalidateRuler()
{
    if (ViewOptions.Ruler != 0 && View.FontIsFixed) {
        InvalidateRect(Windows.Ruler, nullptr, TRUE);
    }
}

// Moves the columns right of x by columns.
void ScrollColumns(HWND view, std::int32_t columns, std::int32_t x)
{
    View.LeftColumn += columns;
    const RECT area = {x, 0, View.ClientWidth, View.ClientHeight};
    ScrollWindow(view, -columns * View.CharWidth, 0, &area, &area);
    SetViewScrollPos(view, SB_HORZ, View.LeftColumn);
    InvalidateRuler();
}

// Lets whatever depends on the pointer catch up with a view that moved under it.
void ResendMouseMove(HWND view)
{
    POINT point;
    if (!GetCursorPos(&point)) {
        return; // another desktop has the pointer
    }
    ScreenToClient(view, &point);
    SendMessageA(view, WM_MOUSEMOVE, 0, MAKELPARAM(point.x, point.y));
}

void OnSize(HWND view, std::int32_t width, std::int32_t height)
{
    View.ClientWidth = width;
    View.ClientHeight = height;
    const std::int32_t leftBefore = View.LeftColumn;
    const ScrollBarValues vertical = MeasureScrolling();
    SetBar(view, SB_VERT, vertical.VerticalMin, vertical.VerticalMax, vertical.VerticalPosition);
    // A bar that comes or goes changes the size, and this message has arrived once more in between.
    const ScrollBarValues horizontal = MeasureScrolling();
    SetBar(view, SB_HORZ, horizontal.HorizontalMin, horizontal.HorizontalMax, horizontal.HorizontalPosition);
    if (View.LeftColumn != leftBefore) {
        InvalidateRuler();
    }
    RefreshStatus();
}

void OnVerticalScroll(HWND view, int code, std::int32_t thumb, std::int32_t target)
{
    if (code == ScrollEnd) {
        View.BeepedAtEnd = false;
        return;
    }
    if (code == ScrollThumbTrack && View.MaxTop > LargestTrackedTop) {
        ShowThumbPosition(view, thumb);
        return;
    }
    if (code == ScrollThumbTrack || code == ScrollThumbPosition) {
        CloseThumbPosition();
    }
    const ScrollStep step = VerticalStep(code, thumb, target);
    if (!step.Asked) {
        return;
    }
    if (step.Distance == 0) {
        BeepOnceAtEnd();
        return;
    }
    ScrollLines(view, step.Distance);
    UpdateWindow(view);
    RefreshStatus();
    if (View.Selecting) {
        ResendMouseMove(view);
    }
}

void OnHorizontalScroll(HWND view, int code, std::int32_t thumb)
{
    if (code == ScrollEnd) {
        View.BeepedAtEnd = false;
        return;
    }
    const ScrollStep step = HorizontalStep(code, thumb);
    if (!step.Asked) {
        return;
    }
    if (step.Distance == 0) {
        BeepOnceAtEnd();
        return;
    }
    ScrollColumns(view, step.Distance, View.LockCols > 0 ? TextMargin + View.LockCols * View.CharWidth : 0);
    RefreshStatus();
}

// Invalidates what the moving end's change recolours and takes the new end.
void ExtendSelection(HWND view, std::int32_t anchor, std::int32_t oldEnd, std::int32_t newEnd)
{
    const LineBand band = OnScreen(ChangedLines(anchor, oldEnd, newEnd));
    const bool nothingChanged = oldEnd == newEnd && !View.HexMode && View.SelColB == Last.ColB;
    if (!nothingChanged && band.First <= band.Last) {
        RECT area = RectangleOfLines(band);
        if (!View.HexMode && band.First == band.Last && band.First == Last.Band.First && band.Last == Last.Band.Last) {
            area.left = std::min(View.LastMouseX, Last.MouseX) - View.MaxCharWidth;
            area.right = std::max(View.LastMouseX, Last.MouseX) + View.MaxCharWidth;
        }
        InvalidateRect(view, &area, FALSE);
        Last.Band = band;
    }
    Last.MouseX = View.LastMouseX;
    Last.ColB = View.SelColB;
    View.SelLineB = newEnd;
}

void OnLeftButtonDown(HWND view, std::int32_t x, std::int32_t y)
{
    if (HasSelection()) {
        ClearSelection(view, View.SelLineA, View.SelLineB);
        ViewCalls.SelectionChanged(false);
    }
    if (AnyLock() || Document.LineCount == 0 || !View.FileShown) {
        return;
    }
    View.Selecting = true;
    ForgetMeasuredLine();
    Last = LastExtension{};
    SetCapture(view);
    SetCursor(Drawing.IbeamCursor);
    // A press below the last line starts on it: there is nothing further down to select.
    View.SelAnchorLine = LineAtPoint(y);
    View.SelColA = View.SelColB = Last.ColB = ColumnFromPoint(view, View.SelAnchorLine, x);
    SendMessageA(Windows.Status, WM_SHOW_STRING, IDS_SELECTING, 0);
}

void StopAutoScroll(HWND view)
{
    if (View.AutoScrollTimer) {
        KillTimer(view, AutoScrollTimerId);
        View.AutoScrollTimer = false;
    }
}

void ExtendTo(HWND view, std::int32_t line, std::int32_t x)
{
    View.SelColB = ColumnFromPoint(view, line, x);
    ExtendSelection(view, View.SelLineA, View.SelLineB, line);
}

void RemoveHighlight(HWND view)
{
    if (View.HiliteLine != 0) {
        InvalidateLines(view, LinesOfRun(View.HiliteLine), false);
    }
    ForgetHighlight();
}

// The pointer is outside: scrolls one step towards it and lets the selection follow.
void DragOutside(HWND view, std::int32_t x, std::int32_t y)
{
    std::int32_t line = 0;
    std::int32_t lines = 0;
    if (y >= 0 && y < View.ClientHeight) {
        line = LineAtPoint(y);
    } else {
        lines = y < 0 ? -1 : 1;
        line = y < 0 ? LineAboveView() : LineBelowView();
    }
    const bool outsideSideways = x < 0 || x >= View.ClientWidth;
    const std::int32_t columns = outsideSideways ? ClampHorizontal(x < 0 ? -1 : 1) : 0;
    if (columns != 0) {
        ScrollColumns(view, columns, 0);
        RefreshStatus();
    }
    if (outsideSideways) {
        ExtendTo(view, line, x);
    }
    lines = lines != 0 ? ClampVertical(lines) : 0;
    if (lines != 0) {
        ScrollLines(view, lines);
        RefreshStatus();
    }
    if (line != View.SelLineB) {
        ExtendSelection(view, View.SelLineA, View.SelLineB, line);
    }
    if (columns == 0 && lines == 0) {
        StopAutoScroll(view);
        return;
    }
    UpdateWindow(view);
    if (!View.AutoScrollTimer) {
        View.AutoScrollTimer = SetTimer(view, AutoScrollTimerId, AutoScrollPeriod, nullptr) != 0;
    }
}

void OnMouseMove(HWND view, std::int32_t x, std::int32_t y)
{
    if (!View.Selecting) {
        return;
    }
    RemoveHighlight(view);
    if (View.SelLineB == 0) {
        View.SelLineA = View.SelLineB = View.SelAnchorLine;
    }
    View.LastMouseX = x;
    if (y >= 0 && y <= View.ClientHeight && x >= 0 && x < View.ClientWidth) {
        StopAutoScroll(view);
        ExtendTo(view, LineAtPoint(y), x);
        return;
    }
    DragOutside(view, x, y);
}

void OnLeftButtonUp(HWND view)
{
    if (!View.Selecting) {
        return;
    }
    if (SelectionIsEmpty()) {
        ClearSelection(view, View.SelLineA, View.SelLineB);
        ViewCalls.SelectionChanged(false);
    } else {
        ViewCalls.SelectionChanged(true);
    }
    EndSelecting(view);
    RefreshStatus();
}

// Brings the clicked line to the top of the scrolled rows.
void OnLeftDoubleClick(HWND view, std::int32_t y)
{
    const std::int32_t row = y / View.LineHeight;
    if (!View.FileShown || row <= View.LockRows) {
        return;
    }
    const std::int32_t lines = row - View.LockRows;
    if (View.TopLine > View.MaxTop - lines) {
        MessageBeep(0);
        return;
    }
    ScrollLines(view, lines);
    UpdateWindow(view);
    RefreshStatus();
    View.MarkCurrent = View.MarkA = View.MarkB = View.TopLine;
}

void OnRightButtonDown(HWND view)
{
    if (!View.Selecting) {
        View.RightDoubleClicked = false;
        SetTimer(view, RightClickTimerId, GetDoubleClickTime(), nullptr);
    }
}

// Toggles between the two remembered positions.
void OnRightDoubleClick(HWND view)
{
    View.RightDoubleClicked = true;
    if (!View.FileShown) {
        return;
    }
    if (View.MarkCurrent != View.MarkA) {
        View.MarkCurrent = View.MarkA;
        ScrollToLine(view, View.MarkB);
    } else {
        View.MarkCurrent = View.MarkB = View.TopLine;
        ScrollToLine(view, View.MarkA);
    }
}

// No second click came in time: a single right click.
void OnRightClickTimer(HWND view)
{
    KillTimer(view, RightClickTimerId);
    if (!IsWindowEnabled(Windows.Main)) {
        return; // a dialog has been opened since
    }
    if (!View.RightDoubleClicked && !ViewCalls.ShowFileList()) {
        MessageBeep(0);
    }
}

void OnTimer(HWND view, WPARAM timer)
{
    if (timer == AutoScrollTimerId) {
        ResendMouseMove(view);
    } else if (timer == RightClickTimerId) {
        OnRightClickTimer(view);
    }
}

} // namespace

void EndSelecting(HWND view)
{
    if (!View.Selecting) {
        return;
    }
    View.Selecting = false; // first: giving the capture back reports its loss
    StopAutoScroll(view);
    SetCursor(Drawing.ArrowCursor);
    ReleaseCapture();
}

void ScrollToLine(HWND view, std::int32_t line)
{
    SendMessageA(view, WM_SCROLL_VIEW, ScrollToTarget, line);
}

void ClearSelection(HWND view, std::int32_t lineA, std::int32_t lineB)
{
    View.SelLineA = View.SelLineB = 0;
    InvalidateLines(view, {std::min(lineA, lineB), std::max(lineA, lineB)}, true);
}

void InvalidateLines(HWND view, LineBand lines, bool erase)
{
    const LineBand band = OnScreen(lines);
    if (band.First <= band.Last) {
        const RECT area = RectangleOfLines(band);
        InvalidateRect(view, &area, erase);
    }
    if (View.LockRows > 0 && IsLockedLine(lines.First)) {
        const RECT headings = {0, 0, View.ClientWidth, View.LockedHeight};
        InvalidateRect(view, &headings, erase);
    }
}

LRESULT CALLBACK ViewWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE:
    case WM_ERASEBKGND: // painting is opaque
        return 0;
    case WM_SIZE: OnSize(window, LOWORD(lParam), HIWORD(lParam)); return 0;
    case WM_PAINT: PaintView(window); return 0;
    case WM_VSCROLL:
    case WM_SCROLL_VIEW:
        OnVerticalScroll(window, LOWORD(wParam), HIWORD(wParam), static_cast<std::int32_t>(lParam));
        return 0;
    case WM_HSCROLL: OnHorizontalScroll(window, LOWORD(wParam), HIWORD(wParam)); return 0;
    case WM_LBUTTONDOWN: OnLeftButtonDown(window, GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)); return 0;
    case WM_MOUSEMOVE: OnMouseMove(window, GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)); return 0;
    case WM_LBUTTONUP:
    case WM_CAPTURECHANGED: // taken away, as by a message box: what is selected so far stays
        OnLeftButtonUp(window);
        return 0;
    case WM_LBUTTONDBLCLK: OnLeftDoubleClick(window, GET_Y_LPARAM(lParam)); return 0;
    case WM_RBUTTONDOWN: OnRightButtonDown(window); return 0;
    case WM_RBUTTONDBLCLK: OnRightDoubleClick(window); return 0;
    case WM_TIMER: OnTimer(window, wParam); return 0;
    default: return DefWindowProcA(window, message, wParam, lParam);
    }
}
