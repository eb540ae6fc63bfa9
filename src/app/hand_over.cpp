#include "app/hand_over.h"

#include "app/open_sequence.h"
#include "app/walk_list.h"
#include "base/messages.h"
#include "document/file_list.h"
#include "files/build_file_list.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/view_state.h"

#include <cstring>

namespace {

enum class RemoteState { Idle = 0, Receiving = 1, Opening = 2 };

struct HandOver {
    RemoteState State = RemoteState::Idle;
    HANDLE Mapping = nullptr;
    const char* Memory = nullptr;
};

HandOver Remote;

void CloseShared()
{
    if (Remote.Memory != nullptr) {
        UnmapViewOfFile(Remote.Memory);
    }
    if (Remote.Mapping != nullptr) {
        CloseHandle(Remote.Mapping);
    }
    Remote.Memory = nullptr;
    Remote.Mapping = nullptr;
}

// What is wrong is said in a box.
bool OpenShared(HWND mainWindow)
{
    if (Remote.Memory != nullptr) {
        return true;
    }
    Remote.Mapping = OpenFileMappingA(FILE_MAP_READ, FALSE, "KV_shared_memory");
    if (Remote.Mapping == nullptr) {
        MessageBoxA(mainWindow, "Unable to open shared memory", "Kestovar", MB_OK);
        return false;
    }
    Remote.Memory = static_cast<const char*>(MapViewOfFile(Remote.Mapping, FILE_MAP_READ, 0, 0, 0));
    if (Remote.Memory == nullptr) {
        CloseShared();
        MessageBoxA(mainWindow, "ERROR: MapViewOfFile was not successful.", "Kestovar", MB_OK);
        return false;
    }
    return true;
}

// Nobody vouches for the terminator: false when there is none within a path's length. A mapping is at least a
// page, which is more than that.
bool CopySharedPath(char (&path)[MaxPathSize])
{
    const bool terminated = strnlen(Remote.Memory, sizeof path) < sizeof path;
    CopyText(path, terminated ? Remote.Memory : "");
    return terminated;
}

void AddRemoteName(const char* path)
{
    if (HasWildcards(path)) {
        AddMatchesToList(nullptr, path);
    } else {
        AddFileToList(nullptr, path, "");
    }
}

void OpenReceivedFiles(HWND mainWindow)
{
    const std::uint32_t generation = FileList.Generation;
    if (FileList.ListFull) {
        ReportMessage(mainWindow, IDS_LIST_TRUNCATED);
    }
    if (FileList.Generation != generation) {
        return; // other files have been opened while the box was there
    }
    char path[MaxPathSize];
    if (!GetListEntry(1, path)) {
        ShowListState();
        ReportMessage(mainWindow, IDS_NO_MATCHES);
    } else if (FileListSize() == 1) {
        ClearFileList();
        OpenNamedFile(mainWindow, path);
    } else {
        OpenNewList(mainWindow);
    }
}

} // namespace

LRESULT OnRemoteFile(HWND mainWindow, bool isFirst)
{
    if (View.Printing) {
        return 1; // the job reads the document
    }
    if (!OpenShared(mainWindow)) {
        return 1;
    }
    const RemoteState wanted = isFirst ? RemoteState::Idle : RemoteState::Receiving;
    if (Remote.State != wanted) {
        // Another batch is under way, or this one was never begun; its end may never come.
        if (Remote.State != RemoteState::Receiving) {
            CloseShared();
        }
        return 1;
    }
    if (isFirst) {
        Remote.State = RemoteState::Receiving;
        ClearFileList();
        ShowListState(); // the batch may never end
    }
    char path[MaxPathSize];
    if (CopySharedPath(path) && path[0] != '\0') {
        AddRemoteName(path);
    }
    return FileList.ListFull ? 1 : 0;
}

void OnRemoteEnd(HWND mainWindow)
{
    CloseShared();
    if (View.Printing) {
        Remote.State = RemoteState::Idle;
        return; // the job reads the document
    }
    SetForegroundWindow(mainWindow);
    if (Remote.State != RemoteState::Receiving) {
        return;
    }
    Remote.State = RemoteState::Opening;
    OpenReceivedFiles(mainWindow);
    if (!IsIconic(mainWindow)) {
        SetForegroundWindow(mainWindow);
    } else if (View.FileShown) {
        ShowWindow(mainWindow, SW_RESTORE);
    }
    Remote.State = RemoteState::Idle;
}
