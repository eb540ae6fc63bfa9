#include "app/walk_list.h"

#include "app/app_state.h"
#include "app/open_sequence.h"
#include "document/file_list.h"
#include "files/build_file_list.h"
#include "files/select_list.h"
#include "view/frame_windows.h"

#include <shellapi.h>

namespace {

void OpenAt(HWND mainWindow, std::int32_t position)
{
    FileList.ListPosition = position;
    FileList.ListAdjust = 0;
    char path[MaxPathSize];
    if (GetListEntry(position, path)) {
        OpenSequence(mainWindow, path);
        RefreshStatus();
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
        OpenSequence(Windows.Main, path);
        RefreshStatus();
    }
    return true;
}

void OpenDropped(HWND mainWindow, WPARAM wParam)
{
    const HDROP drop = reinterpret_cast<HDROP>(wParam);
    const UINT count = DragQueryFileA(drop, UINT_MAX, nullptr, 0);
    ClearFileList();
    char path[MaxPathSize] = "";
    for (UINT i = 0; i < count && !FileList.ListFull; ++i) {
        if (DragQueryFileA(drop, i, path, sizeof path) != 0 && count > 1) {
            AddFileToList(mainWindow, path, "");
        }
    }
    if (count > 1) {
        TrimFileList();
        WalkFileList(1);
        GetListEntry(1, path);
    }
    if (path[0] != '\0') {
        OpenSequence(mainWindow, path);
        RefreshStatus();
    }
}
