#include "app/launch_file.h"

#include "app/app_state.h"
#include "app/release_file.h"
#include "base/messages.h"
#include "document/document.h"
#include "document/file_list.h"
#include "files/launch_command.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/view_state.h"

#include <shellapi.h>

namespace {

// What WinExec and ShellExecute return below this is an error.
constexpr UINT FirstSuccess = 32;

UINT StartAssociated(HWND mainWindow)
{
    const int show = AppOptions.MaxLaunchApp != 0 ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;
    const HINSTANCE result = ShellExecuteA(mainWindow, nullptr, App.CurrentPath, nullptr, nullptr, show);
    return static_cast<UINT>(reinterpret_cast<UINT_PTR>(result));
}

UINT Start(HWND mainWindow, LaunchMode mode)
{
    if (mode == LaunchMode::Associated) {
        return StartAssociated(mainWindow);
    }
    char command[LaunchCommandSize];
    if (mode == LaunchMode::Edit) {
        EditCommand(AppOptions.EditorName, App.CurrentPath, command);
    } else {
        RunCommand(App.CurrentPath, command);
    }
    return WinExec(command, SW_SHOW);
}

UINT FailureMessage(LaunchMode mode)
{
    switch (mode) {
    case LaunchMode::Program: return IDS_LAUNCH_PROGRAM_FAILED;
    case LaunchMode::Edit: return IDS_LAUNCH_EDITOR_FAILED;
    default: return IDS_LAUNCH_ASSOCIATED_FAILED;
    }
}

// Whatever was to be launched may have taken the file away or changed it before it failed.
void RecoverFile(HWND mainWindow)
{
    if (!App.FileReleased) {
        return;
    }
    App.FileReleased = false;
    if (ReopenFile(App.OpenedPath) != ReopenResult::Unchanged) {
        ClearFileList();
        CloseLostFile(mainWindow);
    } else {
        RepaintView(); // it may have been painted meanwhile
    }
}

} // namespace

void LaunchFile(HWND mainWindow, UINT command)
{
    const LaunchMode mode = command == IDM_EDIT_FILE ? LaunchMode::Edit : App.Launch;
    const bool minimise = AppOptions.MinOnLaunch != 0;
    SendMessageA(mainWindow, WM_BUSY_START, 0, 0);
    if (minimise && View.FileShown) {
        ReleaseFile(); // what is started may want it for itself
    }
    const UINT result = Start(mainWindow, mode);
    SendMessageA(mainWindow, WM_BUSY_END, 0, 0);
    if (result < FirstSuccess) {
        if (minimise) {
            RecoverFile(mainWindow);
        }
        ReportMessage(mainWindow, FailureMessage(mode));
    } else if (minimise) {
        ShowWindow(mainWindow, SW_MINIMIZE);
    }
}
