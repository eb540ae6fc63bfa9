#include "view/status_window.h"

#include "base/format.h"
#include "base/load_text.h"
#include "base/text.h"
#include "document/document_state.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/gdi_holders.h"
#include "view/menu_help.h"
#include "view/palette.h"
#include "view/position_text.h"
#include "view/scroll.h"
#include "view/view_state.h"
#include "view/view_window.h"

#include <cstdio>
#include <cstring>
#include <iterator>

namespace {

struct StatusState {
    char StatusText[StatusTextSize] = "";
    bool ReadingShown = false; // StatusText is "Reading...", and the position text is on its way back
    HFONT StatusFont = nullptr;
    int BorderUnit = 1;   // all insets are multiples of it
    int StatusHeight = 0; // pixels the line needs
    int StatusTextX = 0;
    int StatusWidth = 0; // client size
    int StatusHeightNow = 0;
    PositionFormats Formats;
};

StatusState Status;

struct ThumbState {
    HWND PopUp = nullptr; // none while closed
    char LineLabel[10] = "";
    char OffsetLabel[10] = "";
};

ThumbState Thumb;

void CreateStatusFont(HWND mainWindow)
{
    LOGFONTA font = {};
    font.lfHeight = MulDiv(-10, Drawing.LogPixelsY, 72);
    font.lfWeight = FW_NORMAL;
    font.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
    CopyText(font.lfFaceName, "MS Sans Serif");
    Status.StatusFont = CreateFontIndirectA(&font);
    WindowDc dc(mainWindow);
    SelectedObject selected(dc, Status.StatusFont);
    TEXTMETRICA metrics = {};
    GetTextMetricsA(dc, &metrics);
    Status.BorderUnit = GetSystemMetrics(SM_CYBORDER);
    Status.StatusHeight = metrics.tmHeight + metrics.tmExternalLeading + 8 * Status.BorderUnit;
    Status.StatusTextX = metrics.tmAveCharWidth;
}

void DrawStatusText(HDC dc)
{
    SelectedObject font(dc, Status.StatusFont);
    SetTextColor(dc, ForegroundColour(StatusRegion));
    SetBkColor(dc, BackgroundColour(StatusRegion));
    const int u = Status.BorderUnit;
    const RECT area = {10 * u, 4 * u, Status.StatusWidth - 9 * u, Status.StatusHeightNow - 3 * u};
    ExtTextOutA(dc, 8 * u + Status.StatusTextX, 4 * u, ETO_CLIPPED | ETO_OPAQUE, &area, Status.StatusText,
                static_cast<UINT>(strlen(Status.StatusText)), nullptr);
}

// A sunken panel, drawn when the background is the colour that makes it look like one.
void DrawFrame(HDC dc)
{
    const int u = Status.BorderUnit;
    const int w = Status.StatusWidth;
    const int h = Status.StatusHeightNow;
    HPEN light = CreatePen(PS_SOLID, 1, GetSysColor(COLOR_BTNHIGHLIGHT));
    HPEN dark = CreatePen(PS_SOLID, 1, GetSysColor(COLOR_BTNSHADOW));
    {
        SelectedObject pen(dc, light);
        MoveToEx(dc, 0, 0, nullptr);
        LineTo(dc, w, 0);
        MoveToEx(dc, 8 * u, h - 3 * u, nullptr);
        LineTo(dc, w - 8 * u, h - 3 * u);
        LineTo(dc, w - 8 * u, 3 * u);
    }
    {
        SelectedObject pen(dc, dark);
        LineTo(dc, 8 * u, 3 * u);
        LineTo(dc, 8 * u, h - 3 * u);
    }
    DeleteObject(light);
    DeleteObject(dark);
}

void ShowText(HWND window)
{
    WindowDc dc(window);
    DrawStatusText(dc);
}

void OnPaint(HWND window)
{
    PaintDc paint(window);
    if (BackgroundIndex(StatusRegion) == PaletteLightGrey) {
        DrawFrame(paint);
    }
    DrawStatusText(paint);
}

LRESULT OnErase(HWND window, HDC dc)
{
    RECT client;
    GetClientRect(window, &client);
    FillRect(dc, &client, Drawing.StatusBrush);
    return 1;
}

void OnShowPosition(HWND window)
{
    Status.ReadingShown = false;
    FormatPosition(Status.Formats, Status.StatusText);
    ShowText(window);
}

void OnShowString(HWND window, UINT id)
{
    LoadText(id, Status.StatusText);
    ShowText(window);
    Status.ReadingShown = id == IDS_READING;
    if (Status.ReadingShown) {
        PostMessageA(window, WM_SHOW_POSITION, 0, 0); // when the reading is over
    }
}

// The help text of a popup: those of the menu bar by their place, and the system menu.
UINT PopupHelp(HMENU menu, UINT item, UINT flags)
{
    constexpr UINT PopupStrings[] = {IDS_HELP_FILE_MENU, IDS_HELP_EDIT_MENU,    IDS_HELP_SEARCH_MENU,
                                     IDS_HELP_VIEW_MENU, IDS_HELP_OPTIONS_MENU, IDS_HELP_HELP_MENU};
    if ((flags & MF_SYSMENU) != 0) {
        return IDS_HELP_SYSTEM_MENU;
    }
    return menu == Windows.MainMenu && item < std::size(PopupStrings) ? PopupStrings[item] : 0;
}

void OnMenuSelect(HWND window, WPARAM wParam, LPARAM lParam)
{
    const UINT item = LOWORD(wParam);
    const UINT flags = HIWORD(wParam);
    if (flags == 0xFFFF) {
        OnShowPosition(window); // the menu is closed
    } else if ((flags & MF_POPUP) != 0) {
        OnShowString(window, PopupHelp(reinterpret_cast<HMENU>(lParam), item, flags));
    } else {
        OnShowString(window, CommandHelp(item, ViewCalls.CurrentProgram()));
    }
}

void OnDoubleClick()
{
    if (View.FileShown) {
        SendMessageA(Windows.Main, WM_COMMAND, IDM_SEARCH_GOTO, 0);
    }
}

void FormatThumbText(std::int32_t line, std::uint32_t offset, char (&text)[40])
{
    if (View.HexMode) {
        snprintf(text, sizeof text, "%s %lX", Thumb.OffsetLabel, static_cast<unsigned long>(offset));
    } else {
        char number[GroupedSize];
        FormatGrouped(line, number);
        snprintf(text, sizeof text, "%s %s", Thumb.LineLabel, number);
    }
}

void OpenThumbPopUp(HWND view)
{
    if (Thumb.LineLabel[0] == '\0') {
        LoadText(IDS_LABEL_LINE, Thumb.LineLabel);
        LoadText(IDS_LABEL_OFFSET, Thumb.OffsetLabel);
    }
    char widest[40];
    FormatThumbText(Document.LineCount, static_cast<std::uint32_t>(Document.FileSize), widest);
    const SIZE size = MeasureStatusText(widest);
    const int width = size.cx + 10 + (View.HexMode ? (size.cx + 10) / 6 : 0);
    const int height = size.cy * 3 / 2;
    RECT client;
    GetClientRect(view, &client);
    const int x = client.right - (GetSystemMetrics(SM_CXVSCROLL) + width);
    Thumb.PopUp =
        CreateWindowExA(0, "KstvSb", widest, WS_CHILD, x, (client.bottom - height) / 2, width, height, view,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(ID_CHILD_THUMB)), Windows.Instance, nullptr);
    ShowWindow(Thumb.PopUp, SW_SHOWNA);
    UpdateWindow(Thumb.PopUp);
}

// Draws at once and stores nothing: the text changes with every movement of the thumb.
LRESULT OnThumbText(HWND window, const char* text)
{
    WindowDc dc(window);
    SelectedObject font(dc, Status.StatusFont);
    RECT area;
    GetClientRect(window, &area);
    const int y = area.bottom / 4;
    InflateRect(&area, -1, -1);
    SetBkColor(dc, RGB(192, 192, 192));
    ExtTextOutA(dc, 4, y, ETO_OPAQUE, &area, text, static_cast<UINT>(strlen(text)), nullptr);
    return 0;
}

LRESULT OnThumbErase(HWND window, HDC dc)
{
    RECT area;
    GetClientRect(window, &area);
    SelectedObject brush(dc, GetStockObject(NULL_BRUSH));
    Rectangle(dc, 0, 0, area.right, area.bottom);
    return 1;
}

} // namespace

HWND CreateStatusWindow(HWND mainWindow)
{
    CreateStatusFont(mainWindow);
    return CreateWindowExA(0, "KstvSt", "", WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, mainWindow,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(ID_CHILD_STATUS)), Windows.Instance, nullptr);
}

int StatusHeight()
{
    return Status.StatusHeight;
}

HFONT StatusFont()
{
    return Status.StatusFont;
}

SIZE MeasureStatusText(const char* text)
{
    WindowDc dc(Windows.Status);
    SelectedObject font(dc, Status.StatusFont);
    SIZE size = {};
    GetTextExtentPoint32A(dc, text, static_cast<int>(strlen(text)), &size);
    return size;
}

void AnnounceReading()
{
    if (!Status.ReadingShown) {
        SendMessageA(Windows.Status, WM_SHOW_STRING, IDS_READING, 0);
    }
}

void ShowThumbPosition(HWND view, int thumb)
{
    if (Thumb.PopUp == nullptr) {
        OpenThumbPopUp(view);
    }
    const std::int32_t target = ThumbTarget(thumb);
    char text[40];
    FormatThumbText(target + 1, static_cast<std::uint32_t>(target) * HexRowBytes, text);
    SetWindowTextA(Thumb.PopUp, text);
}

void CloseThumbPosition()
{
    if (Thumb.PopUp != nullptr) {
        DestroyWindow(Thumb.PopUp);
        Thumb.PopUp = nullptr;
    }
}

LRESULT CALLBACK StatusWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE:
        LoadText(IDS_LINE_FORMAT, Status.Formats.LineFormat);
        LoadText(IDS_FILE_FORMAT, Status.Formats.FileFormat);
        return 0;
    case WM_DESTROY:
        DeleteObject(Status.StatusFont);
        Status.StatusFont = nullptr;
        return 0;
    case WM_SIZE:
        Status.StatusWidth = LOWORD(lParam);
        Status.StatusHeightNow = HIWORD(lParam);
        return 0;
    case WM_ERASEBKGND: return OnErase(window, reinterpret_cast<HDC>(wParam));
    case WM_PAINT: OnPaint(window); return 0;
    case WM_MENUSELECT: OnMenuSelect(window, wParam, lParam); return 0;
    case WM_LBUTTONDBLCLK: OnDoubleClick(); return 0;
    case WM_SHOW_POSITION: OnShowPosition(window); return 0;
    case WM_SHOW_STRING: OnShowString(window, static_cast<UINT>(wParam)); return 0;
    default: return DefWindowProcA(window, message, wParam, lParam);
    }
}

LRESULT CALLBACK ScrollWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_SETTEXT: return OnThumbText(window, reinterpret_cast<const char*>(lParam));
    case WM_ERASEBKGND: return OnThumbErase(window, reinterpret_cast<HDC>(wParam));
    default: return DefWindowProcA(window, message, wParam, lParam);
    }
}
