#include "app/commands.h"

#include "app/app_state.h"
#include "app/menu_state.h"
#include "app/mode_switch.h"
#include "app/open_sequence.h"
#include "app/recent_menu.h"
#include "app/settings_file.h"
#include "document/document_state.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/selection.h"
#include "view/view_state.h"

namespace {

void CloseAndClear(HWND, UINT)
{
    CloseDocument();
    MeasureViewAnew();
    InvalidateRect(Windows.View, nullptr, TRUE);
}

void CloseFile(HWND mainWindow, UINT id)
{
    CloseAndClear(mainWindow, id);
    ShowWindow(mainWindow, SW_MINIMIZE);
}

void Reopen(HWND mainWindow, UINT)
{
    OpenSequence(mainWindow, App.CurrentPath);
    RefreshStatus();
}

void ExitProgram(HWND mainWindow, UINT)
{
    SendMessageA(mainWindow, WM_CLOSE, 0, 0);
}

void SelectAll(HWND, UINT)
{
    if (RowCount() == 0) {
        return; // the dump of an empty file
    }
    View.SelLineA = View.SelAnchorLine = 1;
    View.SelLineB = RowCount();
    View.SelColA = 0;
    // More than any line holds: each reader cuts it to the line.
    View.SelColB = INT32_MAX;
    InvalidateRect(Windows.View, nullptr, FALSE);
    SetSelectionMenuState(true);
}

void ToTextMode(HWND, UINT)
{
    SwitchMode(false);
}

void ToHexMode(HWND, UINT)
{
    SwitchMode(true);
}

void SaveAllSettings(HWND, UINT)
{
    SaveSettings();
}

void ToggleMenuBar(HWND mainWindow, UINT)
{
    SetMenu(mainWindow, AppOptions.SuppressMenu != 0 ? Windows.MainMenu : nullptr);
    AppOptions.SuppressMenu = AppOptions.SuppressMenu == 0;
    CheckMenuItem(Windows.SystemMenu, IDM_SYSTEM_MENU_BAR,
                  MF_BYCOMMAND | (AppOptions.SuppressMenu != 0 ? MF_CHECKED : MF_UNCHECKED));
}

constexpr Command Table[] = {
    {IDM_FILE_CLOSE, CommandNeeds::File, CloseFile},
    {IDM_FILE_EXIT, CommandNeeds::Nothing, ExitProgram},
    {IDM_RECENT_FIRST, CommandNeeds::Nothing, OpenRecentFile},
    {IDM_EDIT_SELECT_ALL, CommandNeeds::File, SelectAll},
    {IDM_VIEW_TEXT, CommandNeeds::Nothing, ToTextMode},
    {IDM_VIEW_HEX, CommandNeeds::Nothing, ToHexMode},
    {IDM_OPTIONS_SAVE, CommandNeeds::Nothing, SaveAllSettings},
    {IDM_SYSTEM_MENU_BAR, CommandNeeds::Nothing, ToggleMenuBar},
    {IDM_INTERNAL_CLOSE, CommandNeeds::Nothing, CloseAndClear},
    {IDM_INTERNAL_REOPEN, CommandNeeds::Nothing, Reopen},
};

// All recent files are one command.
UINT RowOf(UINT id)
{
    return id >= IDM_RECENT_FIRST && id <= IDM_RECENT_LAST ? IDM_RECENT_FIRST : id;
}

bool IsPossible(const Command& command)
{
    switch (command.Needs) {
    case CommandNeeds::File: return View.FileShown;
    case CommandNeeds::Selection: return HasSelection();
    default: return true;
    }
}

} // namespace

std::span<const Command> Commands()
{
    return Table;
}

LRESULT DispatchCommand(HWND mainWindow, UINT message, UINT id, LPARAM lParam)
{
    for (const Command& command : Table) {
        if (command.Id == RowOf(id)) {
            if (IsPossible(command)) {
                command.Run(mainWindow, id);
            }
            return 0;
        }
    }
    return DefWindowProcA(mainWindow, message, id, lParam);
}
