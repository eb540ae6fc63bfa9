#include "app/commands.h"

#include "app/about_box.h"
#include "app/app_state.h"
#include "app/delete_file.h"
#include "app/find_command.h"
#include "app/launch_file.h"
#include "app/menu_state.h"
#include "app/mode_switch.h"
#include "app/open_sequence.h"
#include "app/option_commands.h"
#include "app/print_commands.h"
#include "app/selection_commands.h"
#include "app/settings_file.h"
#include "app/walk_list.h"
#include "base/help.h"
#include "base/messages.h"
#include "buttonbar/buttons.h"
#include "document/document_state.h"
#include "document/file_list.h"
#include "files/file_dialogs.h"
#include "files/file_info_dialog.h"
#include "resources/ids.h"
#include "search/find_state.h"
#include "search/goto_dialog.h"
#include "search/goto_target.h"
#include "view/frame_windows.h"
#include "view/lock_region.h"
#include "view/selection.h"
#include "view/view_state.h"
#include "view/view_window.h"

#include <commdlg.h>

namespace {

void AskAndOpen(HWND mainWindow, UINT)
{
    OpenFromDialog(mainWindow);
}

void CloseShownFile(HWND, UINT)
{
    CloseAndClear();
}

void CloseFile(HWND mainWindow, UINT)
{
    ClearFileList();
    CloseAndClear();
    ShowWindow(mainWindow, SW_MINIMIZE);
}

void Reopen(HWND mainWindow, UINT)
{
    OpenNamedFile(mainWindow, App.CurrentPath);
}

void ExitProgram(HWND mainWindow, UINT)
{
    SendMessageA(mainWindow, WM_CLOSE, 0, 0);
}

void OpenRecentFile(HWND mainWindow, UINT id)
{
    const int entry = static_cast<int>(id - IDM_RECENT_FIRST);
    if (entry < App.Recent.Count) {
        ClearFileList();
        OpenNamedFile(mainWindow, App.Recent.Paths[entry]);
    }
}

void SelectAll(HWND, UINT)
{
    if (!SelectEverything()) {
        return;
    }
    InvalidateRect(Windows.View, nullptr, FALSE);
    SetSelectionMenuState(true);
}

void SaveSelectedText(HWND mainWindow, UINT)
{
    char path[MaxPathSize] = "";
    if (!ShowSaveDialog(mainWindow, AppOptions.FilterSpec, path)) {
        if (CommDlgExtendedError() != 0) { // not cancelled: the path is too long, for one
            ReportMessage(mainWindow, IDS_SAVE_FAILED);
        }
        return;
    }
    SendMessageA(mainWindow, WM_BUSY_START, 0, 0);
    const bool saved = SaveSelection(mainWindow, path);
    SendMessageA(mainWindow, WM_BUSY_END, 0, 0);
    if (!saved) {
        ReportMessage(mainWindow, IDS_SAVE_FAILED);
    }
}

void CopySelectedText(HWND mainWindow, UINT)
{
    if (HasSelection() && !App.FileReleased) { // a released file cannot be read
        CopySelection(mainWindow);
    }
}

void DeleteFileShown(HWND mainWindow, UINT)
{
    DeleteCurrentFile(mainWindow);
}

void ShowInformation(HWND mainWindow, UINT)
{
    ShowFileInfo(mainWindow, {App.CurrentPath, &App.Info, App.TypeDescription, false});
}

void FindSomething(HWND mainWindow, UINT)
{
    DoFind(mainWindow);
}

void FindNext(HWND mainWindow, UINT)
{
    RepeatFind(mainWindow);
}

// The direction is turned for this one search.
void FindPrevious(HWND mainWindow, UINT)
{
    const bool direction = Find.Backwards;
    Find.Backwards = !direction;
    RepeatFind(mainWindow);
    Find.Backwards = direction;
}

// A file handed over while the dialog is open can be shown in the other mode, where the text means nothing.
void GotoPlace(HWND mainWindow, UINT)
{
    const bool hexMode = View.HexMode;
    if (!AskGotoTarget(mainWindow, hexMode) || !View.FileShown || View.HexMode != hexMode) {
        return;
    }
    std::int32_t topLine = 0;
    if (FindGotoTarget(Goto.GotoText, hexMode, topLine)) {
        ScrollToLine(Windows.View, topLine);
    } else {
        ReportMessage(mainWindow, IDS_GOTO_INVALID);
    }
}

void ToTextMode(HWND, UINT)
{
    SwitchMode(false);
}

void ToHexMode(HWND, UINT)
{
    SwitchMode(true);
}

// Back from a member to its archive, and to the listing.
void RedisplayZip(HWND mainWindow, UINT)
{
    char archive[MaxPathSize];
    CopyText(archive, App.ArchivePath);
    CloseDocument();
    EnableCommandAndButton(IDM_VIEW_REDISPLAY_ZIP, ButtonPreviousZip, false);
    char listed[MaxPathSize];
    if (FileList.ListTotal > 0 && GetListEntry(FileList.ListPosition, listed)) {
        CopyText(archive, listed);
    }
    if (OpenNamedFile(mainWindow, archive)) {
        App.RedisplayZip = true;
        PostMessageA(mainWindow, WM_COMMAND, IDM_VIEW_ZIP, 0);
    }
}

// Headings are chosen among the first lines and columns.
void ShowBeginning()
{
    if (View.TopLine != 0 || View.LeftColumn != 0) {
        View.TopLine = View.LeftColumn = 0;
        RepaintView();
        InvalidateRect(Windows.Ruler, nullptr, TRUE);
    }
    // Nothing is painted during the choice, so all of it now: a menu may just have been taken off the view.
    RedrawWindow(Windows.Main, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void ToggleLock(HWND, UINT)
{
    if (IsIconic(Windows.Main) || View.PickingLock) {
        return; // there is nothing to choose in, or a choice is being made
    }
    if (AnyLock()) {
        ClearLock();
    } else {
        ShowBeginning();
        SendMessageA(Windows.Status, WM_SHOW_STRING, IDS_SELECT_LOCK_AREA, 0);
        PickLockRegion(Windows.View);
        if (AnyLock()) {
            SetSelectionMenuState(false);
        }
    }
    LayOutFrameAnew();
    RedrawWindow(Windows.Main, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
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

void HelpContents(HWND mainWindow, UINT id)
{
    ShowHelp(mainWindow, HELP_FINDER, id);
    RefreshStatus();
}

void HelpOnKeyboard(HWND mainWindow, UINT id)
{
    ShowHelp(mainWindow, HELP_CONTEXT, id);
    RefreshStatus();
}

void HelpOnHelp(HWND mainWindow, UINT id)
{
    ShowHelp(mainWindow, HELP_HELPONHELP, id);
    RefreshStatus();
}

void AboutKestovar(HWND mainWindow, UINT)
{
    ShowAboutBox(mainWindow);
}

struct Command {
    UINT Id;
    void (*Run)(HWND mainWindow, UINT id);
};

constexpr Command Table[] = {
    {IDM_SYSTEM_MENU_BAR, ToggleMenuBar},
    {IDM_FILE_OPEN, AskAndOpen},
    {IDM_FILE_SAVE_AS, SaveSelectedText},
    {IDM_FILE_CLOSE, CloseFile},
    {IDM_FILE_LAUNCH, LaunchFile},
    {IDM_FILE_DELETE, DeleteFileShown},
    {IDM_FILE_PREVIOUS, OpenPreviousFile},
    {IDM_FILE_NEXT, OpenNextFile},
    {IDM_KEY_PREVIOUS, PreviousFileByKey},
    {IDM_KEY_NEXT, NextFileByKey},
    {IDM_FILE_PRINT, PrintShownFile},
    {IDM_FILE_PRINTER_SETUP, SetUpPrinter},
    {IDM_FILE_PAGE_SETUP, SetUpPage},
    {IDM_FILE_INFORMATION, ShowInformation},
    {IDM_FILE_EXIT, ExitProgram},
    {IDM_RECENT_FIRST, OpenRecentFile},
    {IDM_EDIT_COPY, CopySelectedText},
    {IDM_EDIT_SELECT_ALL, SelectAll},
    {IDM_EDIT_FILE, LaunchFile},
    {IDM_SEARCH_FIND, FindSomething},
    {IDM_SEARCH_FIND_NEXT, FindNext},
    {IDM_SEARCH_FIND_PREVIOUS, FindPrevious},
    {IDM_SEARCH_GOTO, GotoPlace},
    {IDM_VIEW_TEXT, ToTextMode},
    {IDM_VIEW_HEX, ToHexMode},
    {IDM_VIEW_REDISPLAY_ZIP, RedisplayZip},
    {IDM_VIEW_LOCK, ToggleLock},
    {IDM_OPTIONS_SAVE, SaveAllSettings},
    {IDM_FONT_INCREASE, IncreaseFontSize},
    {IDM_FONT_DECREASE, DecreaseFontSize},
    {IDM_OPTIONS_FONT, SelectFont},
    {IDM_OPTIONS_PREFERENCES, SetPreferences},
    {IDM_OPTIONS_BUTTON_BAR, CustomiseButtons},
    {IDM_OPTIONS_COLOURS, SetColours},
    {IDM_OPTIONS_LINE_LENGTH, SetLineLength},
    {IDM_HELP_CONTENTS, HelpContents},
    {IDM_HELP_KEYBOARD, HelpOnKeyboard},
    {IDM_HELP_USING, HelpOnHelp},
    {IDM_HELP_ABOUT, AboutKestovar},
    {IDM_INTERNAL_CLOSE, CloseShownFile},
    {IDM_INTERNAL_REOPEN, Reopen},
};

// All recent files are one command.
UINT RowOf(UINT id)
{
    return id >= IDM_RECENT_FIRST && id <= IDM_RECENT_LAST ? IDM_RECENT_FIRST : id;
}

} // namespace

LRESULT DispatchCommand(HWND mainWindow, UINT message, UINT id, LPARAM lParam)
{
    if (View.Printing) {
        return 0; // the job reads the document; only other programs can send commands meanwhile
    }
    for (const Command& command : Table) {
        if (command.Id == RowOf(id)) {
            // Close File is grey without a file, but its button, which also iconizes, is not.
            if (IsCommandPossible(id) || id == IDM_FILE_CLOSE) {
                command.Run(mainWindow, id);
            }
            return 0;
        }
    }
    return DefWindowProcA(mainWindow, message, id, lParam);
}
