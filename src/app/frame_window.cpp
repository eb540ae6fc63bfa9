#include "app/frame_window.h"

#include "app/app_state.h"
#include "app/commands.h"
#include "app/frame_layout.h"
#include "app/hand_over.h"
#include "app/menu_state.h"
#include "app/open_sequence.h"
#include "app/recent_menu.h"
#include "app/region_objects.h"
#include "app/release_file.h"
#include "app/settings_file.h"
#include "app/show_match.h"
#include "app/walk_list.h"
#include "base/help.h"
#include "base/load_text.h"
#include "base/messages.h"
#include "buttonbar/button_bar_window.h"
#include "document/document_state.h"
#include "print/printer_selection.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/gdi_holders.h"
#include "view/palette.h"
#include "view/screen_font.h"
#include "view/status_window.h"
#include "view/view_state.h"

#include <shellapi.h>

namespace {

// The colours the screen can really show.
void AdaptToScreen()
{
    constexpr COLORREF LightGrey = RGB(192, 192, 192);
    WindowDc screen(nullptr);
    for (std::uint32_t& colour : Palette) {
        colour = GetNearestColor(screen, colour);
    }
    if (GetNearestColor(screen, LightGrey) == LightGrey) {
        Drawing.GreyBrush = CreateSolidBrush(LightGrey);
    }
    Drawing.LogPixelsX = GetDeviceCaps(screen, LOGPIXELSX);
    Drawing.LogPixelsY = GetDeviceCaps(screen, LOGPIXELSY);
}

void ExtendSystemMenu(HWND window)
{
    Windows.SystemMenu = GetSystemMenu(window, FALSE);
    char text[30] = "";
    LoadText(IDS_HIDE_MENU_BAR, text);
    AppendMenuA(Windows.SystemMenu, MF_SEPARATOR, 0, nullptr);
    AppendMenuA(Windows.SystemMenu, MF_STRING | (AppOptions.SuppressMenu != 0 ? MF_CHECKED : MF_UNCHECKED),
                IDM_SYSTEM_MENU_BAR, text);
}

UINT EscCommand()
{
    return AppOptions.ExitOnEsc != 0 ? IDM_FILE_EXIT : IDM_FILE_CLOSE;
}

// The menu names Esc beside the command that it sends.
void NameEscInMenu()
{
    char text[40] = "";
    GetMenuStringA(Windows.MainMenu, EscCommand(), text, 30, MF_BYCOMMAND);
    AppendText(text, "\tEsc");
    const UINT state = EscCommand() == IDM_FILE_CLOSE ? MF_GRAYED : MF_ENABLED;
    ModifyMenuA(Windows.MainMenu, EscCommand(), MF_BYCOMMAND | MF_STRING | state, EscCommand(), text);
}

HWND CreateChild(HWND parent, const char* className, int id, DWORD style)
{
    return CreateWindowExA(0, className, "", WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), Windows.Instance, nullptr);
}

void CreateChildren(HWND window)
{
    Windows.View = CreateChild(window, "KstvMn", ID_CHILD_VIEW, WS_VSCROLL | WS_HSCROLL);
    Windows.Ruler = CreateChild(window, "KstvRl", ID_CHILD_RULER, 0);
    Windows.Status = CreateStatusWindow(window);
    Windows.Buttons = CreateChild(window, "KstvBt", ID_CHILD_BUTTONS, 0);
}

// The error is reported before the program ends with nothing to print: afterwards there is no window.
void OpenFromCommandLine(HWND window)
{
    if (App.Start.FileName[0] != '\0') {
        OpenSequence(window, App.Start.FileName);
    }
    if (App.Start.Error) {
        ReportMessage(window, IDS_COMMAND_LINE_ERROR);
    }
    if (App.Start.PrintAndExit) {
        if (View.FileShown) {
            PostMessageA(window, WM_COMMAND, IDM_FILE_PRINT, 0);
        } else {
            SendMessageA(window, WM_CLOSE, 0, 0);
        }
    }
}

void OnCreate(HWND window)
{
    Windows.Main = window;
    Windows.MainMenu = GetMenu(window);
    AdaptToScreen();
    Windows.Accelerators = LoadAcceleratorsA(Windows.Instance, "Kestovar");
    CreateScreenFont(false);
    CreateRegionObjects();
    ExtendSystemMenu(window);
    NameEscInMenu();
    BuildRecentMenu(window);
    LoadIntlSettings();
    CreateChildren(window);
    OpenFromCommandLine(window);
}

void OnDestroy(HWND window)
{
    DeleteRegionObjects();
    if (Drawing.GreyBrush != nullptr) {
        DeleteObject(Drawing.GreyBrush);
    }
    DeleteScreenFont();
    CloseHelp(window);
    FreePrinterSelection();
    CloseDocument();
    if (GetMenu(window) == nullptr) {
        DestroyMenu(Windows.MainMenu); // hidden, so no window destroys it
    }
    SaveRecentFiles();
    PostQuitMessage(0);
}

void Repaint(HWND window)
{
    InvalidateRect(window, nullptr, TRUE);
    UpdateWindow(window);
}

void OnSize(WPARAM kind, std::int32_t width, std::int32_t height)
{
    Windows.ClientWidth = width;
    Windows.ClientHeight = height;
    DismissBubble();
    if (kind == SIZE_MINIMIZED && !View.Printing) {
        ReleaseFileOfIcon();
    }
    const FrameLayout layout = LayOutFrame(height, StatusHeight());
    MoveWindow(Windows.Buttons, 0, 0, width, layout.BarHeight, TRUE);
    MoveWindow(Windows.Ruler, 0, layout.BarHeight, width, layout.RulerHeight, TRUE);
    MoveWindow(Windows.View, 0, layout.ViewTop, width, layout.ViewHeight, TRUE);
    MoveWindow(Windows.Status, 0, layout.StatusTop, width, layout.StatusHeight, TRUE);
    if (layout.RulerHeight != 0) {
        Repaint(Windows.Ruler);
    }
    if (layout.StatusHeight != 0) {
        Repaint(Windows.Status);
    }
    MeasureViewAnew();
}

void OnWinIniChange()
{
    FreePrinterSelection(); // another printer may be the default one
    LoadIntlSettings();
}

struct ScrollKey {
    UINT Key;
    UINT Message;
    int Code;
};

// Left and Right move by a page of columns on purpose: one column is no way to cross a wide line.
constexpr ScrollKey ScrollKeys[] = {
    {VK_PRIOR, WM_VSCROLL, SB_PAGEUP},  {VK_NEXT, WM_VSCROLL, SB_PAGEDOWN},   {VK_HOME, WM_VSCROLL, SB_TOP},
    {VK_END, WM_VSCROLL, SB_BOTTOM},    {VK_UP, WM_VSCROLL, SB_LINEUP},       {VK_DOWN, WM_VSCROLL, SB_LINEDOWN},
    {VK_LEFT, WM_HSCROLL, SB_PAGELEFT}, {VK_RIGHT, WM_HSCROLL, SB_PAGERIGHT},
};

void OnKeyDown(HWND window, WPARAM key)
{
    if (key == VK_ESCAPE) {
        if (IsCommandPossible(EscCommand())) {
            SendMessageA(window, WM_COMMAND, EscCommand(), 0);
        }
        return;
    }
    for (const ScrollKey& scroll : ScrollKeys) {
        if (scroll.Key == key) {
            SendMessageA(Windows.View, scroll.Message, static_cast<WPARAM>(scroll.Code), 0);
        }
    }
}

void OnDropFiles(HWND window, HDROP drop)
{
    if (View.Printing) {
        DragFinish(drop);
        return; // the job reads the document
    }
    OpenDropped(window, drop);
    if (IsIconic(window)) {
        ShowWindow(window, SW_RESTORE);
    } else {
        SetFocus(window);
    }
    DragFinish(drop);
}

// Not under a print job that is running: its own box ends that.
LRESULT OnClose(HWND window)
{
    return View.Printing ? 0 : DefWindowProcA(window, WM_CLOSE, 0, 0);
}

void SetBusy(bool busy)
{
    App.BusyCursor = busy;
    SetCursor(busy ? Drawing.WaitCursor : Drawing.ArrowCursor);
}

LRESULT OnSetCursor(HWND window, WPARAM wParam, LPARAM lParam)
{
    if (App.BusyCursor) {
        SetCursor(Drawing.WaitCursor);
        return 1;
    }
    return DefWindowProcA(window, WM_SETCURSOR, wParam, lParam);
}

LRESULT OnSystemCommand(HWND window, WPARAM wParam, LPARAM lParam)
{
    if (wParam == IDM_SYSTEM_MENU_BAR || wParam == IDM_SYSTEM_SPARE) {
        return DispatchCommand(window, WM_SYSCOMMAND, static_cast<UINT>(wParam), lParam);
    }
    return DefWindowProcA(window, WM_SYSCOMMAND, wParam, lParam);
}

LRESULT OnMenuSelect(WPARAM wParam, LPARAM lParam)
{
    return ViewOptions.StatusLine != 0 ? SendMessageA(Windows.Status, WM_MENUSELECT, wParam, lParam) : 0;
}

} // namespace

LRESULT CALLBACK FrameWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE: OnCreate(window); return 0;
    case WM_DESTROY: OnDestroy(window); return 0;
    case WM_SIZE: OnSize(wParam, LOWORD(lParam), HIWORD(lParam)); return 0;
    case WM_QUERYOPEN: TakeFileBack(window); return 1;
    case WM_WININICHANGE: OnWinIniChange(); return 0;
    case WM_SETCURSOR: return OnSetCursor(window, wParam, lParam);
    case WM_KEYDOWN: OnKeyDown(window, wParam); return 0;
    case WM_COMMAND: return DispatchCommand(window, WM_COMMAND, LOWORD(wParam), lParam);
    case WM_SYSCOMMAND: return OnSystemCommand(window, wParam, lParam);
    case WM_MENUSELECT: return OnMenuSelect(wParam, lParam);
    case WM_CLOSE: return OnClose(window);
    case WM_DROPFILES: OnDropFiles(window, reinterpret_cast<HDROP>(wParam)); return 0;
    case WM_REMOTE_FILE: return OnRemoteFile(window, wParam == 0);
    case WM_REMOTE_END: OnRemoteEnd(window); return 0;
    case WM_BUSY_START: SetBusy(true); return 0;
    case WM_BUSY_END: SetBusy(false); return 0;
    case WM_SHOW_MATCH: ShowMatch(static_cast<std::int32_t>(wParam), static_cast<std::int32_t>(lParam)); return 0;
    case WM_REMOVE_MATCH: RemoveMatch(static_cast<std::int32_t>(lParam)); return 0;
    case WM_ENTERMENULOOP:
    case WM_ENABLE:
    case WM_ACTIVATE:
    case WM_MOVE: DismissBubble(); break;
    default: break;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}
