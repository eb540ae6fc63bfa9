#include "app/delete_file.h"

#include "app/app_state.h"
#include "app/confirm_delete.h"
#include "app/open_sequence.h"
#include "app/release_file.h"
#include "base/messages.h"
#include "base/text.h"
#include "document/file_list.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/view_state.h"

#include <cstring>

namespace {

// The next entry takes the place of the one that is gone.
void RemoveFromList(HWND mainWindow)
{
    if (FileList.ListTotal == 0 || FileList.ListPosition < 1) {
        return;
    }
    RemoveListEntry(FileList.ListPosition);
    FileList.ListTotal = FileListSize();
    --FileList.ListPosition;
    if (FileList.ListTotal == 0) {
        ClearFileList();
        return;
    }
    FileList.ListAdjust = 1;
    if (AppOptions.LoadOnDelete != 0) {
        const bool hasNext = FileList.ListPosition < FileList.ListTotal;
        PostMessageA(mainWindow, WM_COMMAND, hasNext ? IDM_FILE_NEXT : IDM_FILE_PREVIOUS, 0);
    }
}

bool IsStillShown(const char* path)
{
    return View.FileShown && strcmp(path, App.OpenedPath) == 0;
}

} // namespace

// While the question is open, another file or another list may be handed over: only what was asked about is deleted,
// and only the list that it came from loses it.
void DeleteCurrentFile(HWND mainWindow)
{
    char path[MaxPathSize];
    CopyText(path, App.OpenedPath);
    const std::uint32_t generation = FileList.Generation;
    if (!ConfirmDelete(mainWindow, App.CurrentPath) || !IsStillShown(path)) {
        return;
    }
    ReleaseFile();
    if (!DeleteFileA(path)) {
        TakeFileBack(mainWindow);
        ReportMessage(mainWindow, IDS_DELETE_FAILED);
        return;
    }
    if (generation == FileList.Generation) {
        RemoveFromList(mainWindow);
    }
    CloseAndClear();
    SendMessageA(Windows.Status, WM_SHOW_STRING, IDS_DELETED, 0);
}
