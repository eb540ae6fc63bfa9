#include "app/hand_over.h"

#include "app/menu_state.h"
#include "app/open_sequence.h"
#include "base/messages.h"
#include "document/file_list.h"
#include "files/build_file_list.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/view_state.h"

#include <algorithm>

namespace {

enum class RemoteState { Idle = 0, Receiving = 1, Opening = 2 };

struct HandOver {
    RemoteState State = RemoteState::Idle;
    HANDLE Mapping = nullptr;
    const char* View = nullptr;
};

HandOver Remote;

void CloseShared()
{
    if (Remote.View != nullptr) {
        UnmapViewOfFile(Remote.View);
    }
    if (Remote.Mapping != nullptr) {
        CloseHandle(Remote.Mapping);
    }
    Remote.View = nullptr;
    Remote.Mapping = nullptr;
}

// What is wrong is said in a box.
bool OpenShared(HWND mainWindow)
{
    if (Remote.View != nullptr) {
        return true;
    }
    Remote.Mapping = OpenFileMappingA(FILE_MAP_READ, FALSE, "KV_shared_memory");
    if (Remote.Mapping == nullptr) {
        MessageBoxA(mainWindow, "Unable to open shared memory", "Kestovar", MB_OK);
        return false;
    }
    Remote.View = static_cast<const char*>(MapViewOfFile(Remote.Mapping, FILE_MAP_READ, 0, 0, 0));
    if (Remote.View == nullptr) {
        CloseShared();
        MessageBoxA(mainWindow, "ERROR: MapViewOfFile was not successful.", "Kestovar", MB_OK);
        return false;
    }
    return true;
}

// Nobody vouches for the terminator: no more is read than a path has room for, or the memory.
void CopySharedPath(char (&path)[MaxPathSize])
{
    MEMORY_BASIC_INFORMATION region = {};
    VirtualQuery(Remote.View, &region, sizeof region);
    CopyText(path, std::min<std::size_t>(sizeof path, region.RegionSize + 1), Remote.View);
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
    if (FileList.ListFull) {
        ReportMessage(mainWindow, IDS_LIST_TRUNCATED);
    }
    TrimFileList();
    char path[MaxPathSize];
    if (!GetListEntry(1, path)) {
        ReportMessage(mainWindow, IDS_NO_MATCHES);
        SetListMenuState();
        return;
    }
    if (FileListSize() == 1) {
        ClearFileList();
    }
    WalkFileList(1);
    OpenSequence(mainWindow, path);
    RefreshStatus();
}

} // namespace

LRESULT OnRemoteFile(HWND mainWindow, bool isFirst)
{
    if (!OpenShared(mainWindow)) {
        return 1;
    }
    char path[MaxPathSize];
    CopySharedPath(path);
    if (isFirst) {
        if (Remote.State != RemoteState::Idle) {
            return 1;
        }
        Remote.State = RemoteState::Receiving;
        ClearFileList();
    }
    AddRemoteName(path);
    return FileList.ListFull ? 1 : 0;
}

void OnRemoteEnd(HWND mainWindow)
{
    CloseShared();
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
