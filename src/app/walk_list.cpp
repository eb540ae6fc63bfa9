#include "app/walk_list.h"

#include "app/app_state.h"
#include "app/open_sequence.h"
#include "base/messages.h"
#include "document/file_list.h"
#include "files/build_file_list.h"
#include "files/select_list.h"
#include "resources/ids.h"
#include "view/frame_windows.h"

#include <shellapi.h>

namespace {

void OpenAt(HWND mainWindow, std::int32_t position)
{
    char path[MaxPathSize];
    if (GetListEntry(position, path)) {
        FileList.ListPosition = position;
        FileList.ListAdjust = 0;
        OpenNamedFile(mainWindow, path);
    }
}

} // namespace

void OpenPreviousFile(HWND mainWindow, UINT)
{
    OpenAt(mainWindow, PreviousPosition());
}

void OpenNextFile(HWND mainWindow, UINT)
{
    OpenAt(mainWindow, NextPosition());
}

void PreviousFileByKey(HWND mainWindow, UINT id)
{
    if (HasPreviousFile()) {
        OpenPreviousFile(mainWindow, id);
    } else {
        MessageBeep(0);
    }
}

void NextFileByKey(HWND mainWindow, UINT id)
{
    if (HasNextFile()) {
        OpenNextFile(mainWindow, id);
    } else {
        MessageBeep(0);
    }
}

bool RunSelectList()
{
    if (FileList.ListTotal == 0) {
        return false;
    }
    char path[MaxPathSize];
    if (ChooseFromFileList(Windows.Main, path)) {
        OpenNamedFile(Windows.Main, path);
    }
    return true;
}

void OpenNewList(HWND mainWindow)
{
    TrimFileList();
    char path[MaxPathSize];
    if (GetListEntry(1, path)) {
        WalkFileList(1);
        OpenNamedFile(mainWindow, path);
    } else {
        ShowListState();
    }
}

namespace {

// False when the list was replaced by another one meanwhile.
bool ListDropped(HWND mainWindow, HDROP drop, UINT count)
{
    for (UINT i = 0; i < count && !FileList.ListFull; ++i) {
        // One more than a path has room for, so that a longer one is refused and not cut.
        char path[MaxPathSize + 1];
        if (DragQueryFileA(drop, i, path, sizeof path) != 0 && !AddFileToList(mainWindow, path, "")) {
            return false;
        }
    }
    return true;
}

void OpenOneDropped(HWND mainWindow, HDROP drop)
{
    char path[MaxPathSize + 1];
    const UINT length = DragQueryFileA(drop, 0, path, sizeof path);
    if (length >= MaxPathSize) {
        ReportMessage(mainWindow, IDS_CANNOT_OPEN, NamePart(path));
    } else if (length > 0) {
        OpenNamedFile(mainWindow, path);
    }
}

} // namespace

void OpenDropped(HWND mainWindow, HDROP drop)
{
    const UINT count = DragQueryFileA(drop, UINT_MAX, nullptr, 0);
    ClearFileList();
    if (count > 1) {
        if (ListDropped(mainWindow, drop, count)) {
            OpenNewList(mainWindow);
        }
    } else {
        ShowListState();
        OpenOneDropped(mainWindow, drop);
    }
}
