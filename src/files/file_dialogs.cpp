#include "files/file_dialogs.h"

#include "base/load_text.h"
#include "files/build_file_list.h"
#include "files/open_filter.h"
#include "resources/ids.h"

#include <commdlg.h>
#include <cstring>

namespace {

constexpr int FileListBox = 1120; // the old-style dialog's list of files

struct DialogState {
    OPENFILENAMEA Record = {}; // prepared once per run
    char Filter[FilterSize] = "";
    char Title[MaxPathSize] = "";
    UINT FileNameOk = 0; // the message that says a file is chosen
    HWND Files = nullptr;
};

DialogState Dialog;

// Returns the position of the chosen file, which is the index-th in the list box, from 0; beyond the list when
// the list was full before it came.
std::int32_t ListShownFiles(HWND files, const char* path, LRESULT index)
{
    std::int32_t position = static_cast<std::int32_t>(index) + 1;
    char directory[MaxPathSize];
    CopyText(directory, path);
    directory[DirectoryEnd(path)] = '\0';
    const LRESULT count = SendMessageA(files, LB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count && !FileList.ListFull; ++i) {
        const LRESULT length = SendMessageA(files, LB_GETTEXTLEN, static_cast<WPARAM>(i), 0);
        char name[MaxPathSize];
        if (length > 0 && length < static_cast<LRESULT>(sizeof name)) {
            SendMessageA(files, LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(name));
            if (!AddFileToList(GetParent(files), directory, name)) {
                ClearFileList(); // the file that was chosen here is none of the other list
                return position;
            }
        }
        if (i == index) {
            position = FileListSize(); // a path too long for the list may have been left out before
        }
    }
    TrimFileList();
    return position;
}

// A file is chosen: all the files shown beside it become the list.
void OnFileChosen(HWND files, const char* path)
{
    ClearFileList();
    const LRESULT index =
        SendMessageA(files, LB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(NamePart(path)));
    if (index == LB_ERR) {
        return;
    }
    const bool several = SendMessageA(files, LB_GETCOUNT, 0, 0) > 1;
    FileList.ListPosition = several ? ListShownFiles(files, path, index) : 1;
}

UINT_PTR CALLBACK OpenDialogHook(HWND dialog, UINT message, WPARAM, LPARAM lParam)
{
    if (message == WM_INITDIALOG) {
        Dialog.Files = GetDlgItem(dialog, FileListBox);
    } else if (message == Dialog.FileNameOk && message != 0) {
        OnFileChosen(Dialog.Files, reinterpret_cast<const OPENFILENAMEA*>(lParam)->lpstrFile);
    }
    return 0; // the dialog closes as ever
}

void PrepareRecord(const char* filterText)
{
    if (Dialog.Record.lStructSize != 0) {
        return;
    }
    char standard[FilterSize] = "";
    LoadText(IDS_OPEN_FILTER, standard);
    MakeOpenFilter(filterText[0] != '\0' ? filterText : standard, Dialog.Filter);
    Dialog.Record.lStructSize = OPENFILENAME_SIZE_VERSION_400A;
    Dialog.Record.hInstance = GetModuleHandleA(nullptr);
    Dialog.Record.lpstrFilter = Dialog.Filter;
    Dialog.Record.nFilterIndex = 1;
    Dialog.Record.nMaxFile = MaxPathSize;
    Dialog.Record.lpfnHook = OpenDialogHook;
    Dialog.FileNameOk = RegisterWindowMessageA("commdlg_FileNameOK");
}

} // namespace

bool ShowOpenDialog(HWND owner, const char* filterText, char (&path)[MaxPathSize])
{
    PrepareRecord(filterText);
    char chosen[MaxPathSize] = "";
    Dialog.Record.hwndOwner = owner;
    Dialog.Record.lpstrFile = chosen;
    Dialog.Record.lpstrFileTitle = Dialog.Title;
    Dialog.Record.nMaxFileTitle = sizeof Dialog.Title;
    Dialog.Record.Flags = OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_ENABLEHOOK | OFN_HIDEREADONLY;
    if (!GetOpenFileNameA(&Dialog.Record)) {
        return false;
    }
    CopyText(path, chosen);
    WalkFileList(FileList.ListPosition);
    return true;
}

bool ShowSaveDialog(HWND owner, const char* filterText, char (&path)[MaxPathSize])
{
    PrepareRecord(filterText);
    Dialog.Record.hwndOwner = owner;
    Dialog.Record.lpstrFile = path;
    Dialog.Record.lpstrFileTitle = nullptr;
    Dialog.Record.nMaxFileTitle = 0;
    Dialog.Record.Flags = OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY;
    return GetSaveFileNameA(&Dialog.Record) != 0;
}
