#include "app/open_sequence.h"

#include "app/app_state.h"
#include "app/menu_state.h"
#include "app/recent_menu.h"
#include "base/messages.h"
#include "base/text.h"
#include "document/block_cache.h"
#include "document/document_state.h"
#include "files/build_file_list.h"
#include "files/file_dialogs.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/paint_view.h"
#include "view/screen_font.h"
#include "view/status_window.h"
#include "view/view_state.h"
#include "view/view_window.h"

#include <algorithm>
#include <cstring>

namespace {

// The name as the system spells it out. A name without a directory is looked for where programs look
// for files; a path too long for that search is only completed.
void QualifyPath(const char* path, char (&full)[MaxPathSize])
{
    OFSTRUCT found = {};
    found.cBytes = sizeof found;
    if (OpenFile(path, &found, OF_EXIST) != HFILE_ERROR) {
        CopyText(full, found.szPathName);
        return;
    }
    const DWORD length = GetFullPathNameA(path, sizeof full, full, nullptr);
    if (length == 0 || length >= sizeof full) {
        CopyText(full, path);
    }
}

// The heading lock of the command line, within what a view can show. It holds for the first document.
void TakePendingLock()
{
    constexpr std::int32_t MostColumns = 1024;
    const LockSpec& lock = App.Start.Lock;
    View.LockColStart = std::clamp(lock.ColStart, 0, MostColumns);
    View.LockTopLine = std::max(lock.TopLine, 0);
    View.LockCols = std::clamp(lock.Cols, 0, MostColumns);
    View.LockRows = std::clamp(lock.Rows, 0, MostLockRows);
    App.Start.Lock = LockSpec{};
}

void ForgetScrollMarks()
{
    View.MarkCurrent = View.MarkA = View.MarkB = 0;
}

constexpr UINT NoFailure = 0;

// Opens; returns the string that says why not, or NoFailure.
UINT TryToOpen(const char* path)
{
    if (!InitBuffers()) {
        return IDS_NO_BUFFERS;
    }
    switch (OpenDocument(path, App.Info)) {
    case OpenResult::CannotOpen: return IDS_CANNOT_OPEN;
    case OpenResult::NoStatus: return IDS_NO_STATUS;
    default: return NoFailure;
    }
}

void ShowDocument(HWND mainWindow)
{
    // Headings beyond the last line would hold the view below the document.
    View.LockTopLine = std::min(View.LockTopLine, Document.LineCount - 1);
    View.TopLine = View.LockTopLine;
    View.LeftColumn = View.LockColStart;
    if (!Document.IsText) {
        SubstituteScreenFont();
    }
    View.FileShown = true;
    SetFileMenuState(true, App.CurrentPath);
    UpdateTitle(mainWindow);
    SendMessageA(mainWindow, WM_COMMAND, Document.IsText ? IDM_VIEW_TEXT : IDM_VIEW_HEX, 0);
    MeasureViewAnew();
    RepaintView();
    InvalidateRect(Windows.Ruler, nullptr, TRUE);
    SendMessageA(mainWindow, WM_BUSY_END, 0, 0);
}

// No document is shown from before the report on: while its box is open, another may be handed over.
void ReportFailure(HWND mainWindow, UINT stringId, const char* title)
{
    ReportMessage(mainWindow, stringId, title);
    SendMessageA(mainWindow, WM_BUSY_END, 0, 0);
    MeasureViewAnew();
    RepaintView();
}

enum class Origin { Named, Dialog };

// Opens the file at path, in place of the current document.
bool OpenInPlace(HWND mainWindow, const char* path, Origin origin)
{
    char full[MaxPathSize];
    QualifyPath(path, full);
    char title[MaxPathSize];
    CopyText(title, NamePart(full));
    CharLowerA(title);

    SendMessageA(mainWindow, WM_BUSY_START, 0, 0);
    ForgetScrollMarks();
    CloseDocument();
    CopyText(App.CurrentPath, full);
    CopyText(App.OpenedPath, full);
    const UINT failure = TryToOpen(full);
    if (failure != NoFailure) {
        ReportFailure(mainWindow, failure, title);
        return false;
    }
    CopyText(App.FileTitle, title);
    CharLowerA(App.CurrentPath);
    ShowDocument(mainWindow);
    if (origin == Origin::Dialog) {
        AddRecentFile(mainWindow);
    }
    return true;
}

bool OpenFileAt(HWND mainWindow, const char* path, Origin origin)
{
    const bool opened = path[0] != '\0' && OpenInPlace(mainWindow, path, origin);
    ShowListState();
    return opened;
}

} // namespace

bool OpenSequence(HWND mainWindow, const char* path)
{
    char target[MaxPathSize];
    CopyText(target, path);
    if (HasWildcards(target)) {
        BuildFileList(mainWindow, target);
    }
    return OpenFileAt(mainWindow, target, Origin::Named);
}

bool OpenNamedFile(HWND mainWindow, const char* path)
{
    return OpenFileAt(mainWindow, path, Origin::Named);
}

bool OpenFromDialog(HWND mainWindow)
{
    char path[MaxPathSize];
    return ShowOpenDialog(mainWindow, AppOptions.FilterSpec, path) && OpenFileAt(mainWindow, path, Origin::Dialog);
}

void ShowListState()
{
    SetListMenuState();
    RefreshStatus();
}

void CloseDocument()
{
    EndSelecting(Windows.View);
    CloseThumbPosition();
    FreeBuffers();
    View.FileShown = false;
    View.PickingLock = false;
    App.FileReleased = false;
    App.FileTitle[0] = '\0';
    Document.LongestLine = 0;
    ForgetHighlight();
    ForgetMeasuredLine();
    TakePendingLock();
    UpdateTitle(Windows.Main);
    SetFileMenuState(false, "");
}

void CloseAndClear()
{
    CloseDocument();
    ShowListState();
    MeasureViewAnew();
    RepaintView();
}

void UpdateTitle(HWND mainWindow)
{
    char title[sizeof "Kestovar-" + MaxPathSize] = "Kestovar";
    if (App.FileTitle[0] != '\0') {
        AppendText(title, "-");
        AppendText(title, App.FileTitle);
    }
    // Drawing a caption again costs more than finding that it stays.
    char shown[sizeof title];
    GetWindowTextA(mainWindow, shown, sizeof shown);
    if (strcmp(shown, title) != 0) {
        SetWindowTextA(mainWindow, title);
    }
}
