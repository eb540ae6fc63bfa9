#include "files/select_list.h"

#include "base/format.h"
#include "base/load_text.h"
#include "document/file_list.h"
#include "document/identify.h"
#include "document/port.h"
#include "files/dialog_height.h"
#include "files/file_texts.h"
#include "resources/ids.h"

#include <cstdio>
#include <cstring>

namespace {

bool DetailsShown = false; // for the rest of the run

std::uint32_t ShownGeneration = 0; // of the list in the dialog

LONG FullHeight = 0; // of the dialog, as its resource lays it out

void MeasureDialog(HWND dialog)
{
    RECT whole;
    GetWindowRect(dialog, &whole);
    FullHeight = whole.bottom - whole.top;
}

// Controls that are out of sight must not be reached by key either; the details are but texts.
void FollowDetailsShown(HWND dialog)
{
    char label[20] = "";
    LoadText(DetailsShown ? IDS_DETAILS_HIDE : IDS_DETAILS_SHOW, label);
    SetDlgItemTextA(dialog, IDC_SELECT_DETAILS, label);
    SetDialogHeight(dialog, DetailsShown ? FullHeight : HeightDownTo(dialog, IDC_SELECT_SEPARATOR));
}

// Position in the list; 0 when nothing is selected, and when the list has been replaced by another one since
// the dialog was filled.
std::int32_t SelectedPosition(HWND dialog)
{
    const LRESULT index = SendDlgItemMessageA(dialog, IDC_SELECT_FILES, LB_GETCURSEL, 0, 0);
    return index == LB_ERR || FileList.Generation != ShownGeneration ? 0 : static_cast<std::int32_t>(index) + 1;
}

void ShowDirectory(HWND dialog, std::int32_t position)
{
    char directory[MaxPathSize];
    char name[MaxPathSize];
    GetListEntry(position, directory, name);
    const std::size_t length = strlen(directory);
    if (length > 0 && directory[length - 1] == ':') {
        AppendText(directory, "\\");
    }
    SetDlgItemTextA(dialog, IDC_SELECT_PATH, directory);
}

void ShowFileDetails(HWND dialog, const char* path, const FileInfo& info)
{
    char type[TypeTextSize];
    SetDlgItemTextA(dialog, IDC_SELECT_TYPE, TypeText(info, path, type) ? type : "Unknown");
    char changed[FileDateSize];
    ModificationText(info, changed);
    SetDlgItemTextA(dialog, IDC_SELECT_CHANGED, changed);
    char number[GroupedSize];
    FormatGrouped(info.Size, number);
    char size[GroupedSize + sizeof " bytes"];
    snprintf(size, sizeof size, "%s bytes", number);
    SetDlgItemTextA(dialog, IDC_SELECT_SIZE, size);
    char attributes[AttributeTextSize];
    AttributeText(info, attributes);
    SetDlgItemTextA(dialog, IDC_SELECT_ATTRIBUTES, attributes);
}

bool IdentifyPath(const char* path, FileInfo& info)
{
    const int file = OpenForReading(path);
    if (file == 0) {
        return false;
    }
    const bool identified = IdentifyFile(file, path, info);
    CloseOpenFile(file);
    return identified;
}

void FillDetails(HWND dialog)
{
    const std::int32_t position = SelectedPosition(dialog);
    ShowDirectory(dialog, position);
    char path[MaxPathSize];
    GetListEntry(position, path);
    FileInfo info;
    if (IdentifyPath(path, info)) {
        ShowFileDetails(dialog, path, info);
        return;
    }
    for (int field : {IDC_SELECT_TYPE, IDC_SELECT_CHANGED, IDC_SELECT_SIZE, IDC_SELECT_ATTRIBUTES}) {
        SetDlgItemTextA(dialog, field, "");
    }
}

void FillNames(HWND dialog)
{
    ShownGeneration = FileList.Generation;
    for (std::int32_t position = 1; position <= FileListSize(); ++position) {
        char directory[MaxPathSize];
        char name[MaxPathSize];
        GetListEntry(position, directory, name);
        SendDlgItemMessageA(dialog, IDC_SELECT_FILES, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
    }
}

void OnInit(HWND dialog)
{
    FillNames(dialog);
    MeasureDialog(dialog);
    FollowDetailsShown(dialog);
    const WPARAM current = static_cast<WPARAM>(FileList.ListPosition + FileList.ListAdjust - 1);
    SendDlgItemMessageA(dialog, IDC_SELECT_FILES, LB_SETCURSEL, current, 0);
    SendDlgItemMessageA(dialog, IDC_SELECT_FILES, LB_SETTOPINDEX, current, 0);
    if (DetailsShown) {
        FillDetails(dialog);
    }
}

void OnView(HWND dialog)
{
    const std::int32_t position = SelectedPosition(dialog);
    if (position == 0) {
        MessageBeep(0);
        return;
    }
    WalkFileList(position);
    EndDialog(dialog, 1);
}

void OnToggleDetails(HWND dialog)
{
    DetailsShown = !DetailsShown;
    FollowDetailsShown(dialog);
    if (DetailsShown) {
        FillDetails(dialog);
    }
    SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(dialog, IDC_SELECT_FILES)), TRUE);
}

void OnListNotice(HWND dialog, int notice)
{
    if (notice == LBN_DBLCLK) {
        OnView(dialog);
    } else if (notice == LBN_SELCHANGE && DetailsShown) {
        FillDetails(dialog);
    }
}

INT_PTR OnCommand(HWND dialog, int id, int notice)
{
    switch (id) {
    case IDOK: OnView(dialog); return TRUE;
    case IDCANCEL: EndDialog(dialog, 0); return TRUE;
    case IDC_SELECT_DETAILS: OnToggleDetails(dialog); return TRUE;
    case IDC_SELECT_FILES: OnListNotice(dialog, notice); return TRUE;
    default: return FALSE;
    }
}

INT_PTR CALLBACK SelectListDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM)
{
    switch (message) {
    case WM_INITDIALOG: OnInit(dialog); return TRUE;
    case WM_COMMAND: return OnCommand(dialog, LOWORD(wParam), HIWORD(wParam));
    default: return FALSE;
    }
}

} // namespace

bool ChooseFromFileList(HWND owner, char (&path)[MaxPathSize])
{
    return DialogBoxParamA(GetModuleHandleA(nullptr), "SELECTLIST", owner, SelectListDlgProc, 0) == 1 &&
           GetListEntry(FileList.ListPosition, path);
}
