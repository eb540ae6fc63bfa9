#include "files/file_info_dialog.h"

#include "base/format.h"
#include "base/load_text.h"
#include "base/text.h"
#include "document/document_state.h"
#include "files/dialog_height.h"
#include "files/file_texts.h"
#include "files/import_list.h"
#include "files/info_text.h"
#include "resources/ids.h"

namespace {

constexpr std::size_t ShownPathLength = 32;
constexpr std::size_t LabelSize = 31;

const ShownFile* Shown = nullptr; // while the dialog is open
bool ImportsShown = false;

void ShowPath(HWND dialog)
{
    char path[MaxPathSize];
    CopyText(path, Shown->Path);
    CharLowerA(path);
    ShortenPath(path, ShownPathLength, '\\');
    SetDlgItemTextA(dialog, IDC_INFO_NAME, path);
}

void ShowType(HWND dialog)
{
    char type[TypeTextSize + sizeof " (Zipped)"] = "";
    if (Shown->Info->FileType != NotRecognised) {
        LoadText(static_cast<UINT>(IDS_FILE_TYPE + Shown->Info->FileType), type);
    } else if (Shown->TypeDescription[0] != '\0') {
        CopyText(type, Shown->TypeDescription);
    } else {
        CopyText(type, Document.IsText ? "Text" : "Non-Text");
    }
    if (Shown->FromArchive) {
        AppendText(type, " (Zipped)");
    }
    SetDlgItemTextA(dialog, IDC_INFO_TYPE, type);
}

void ShowSize(HWND dialog)
{
    char text[FileSizeTextSize];
    FormatFileSize(Document.FileSize, text);
    SetDlgItemTextA(dialog, IDC_INFO_SIZE, text);
}

void ShowNotAvailable(HWND dialog, int id)
{
    char text[LabelSize];
    LoadText(IDS_NOT_APPLICABLE, text);
    SetDlgItemTextA(dialog, id, text);
}

void ShowLines(HWND dialog)
{
    if (!Document.IsText) {
        ShowNotAvailable(dialog, IDC_INFO_LINES);
        return;
    }
    char lines[GroupedSize];
    FormatGrouped(Document.LineCount, lines);
    SetDlgItemTextA(dialog, IDC_INFO_LINES, lines);
}

void ShowTimeAndAttributes(HWND dialog)
{
    char date[LongDateSize];
    char time[LongTimeSize];
    LongDateText(*Shown->Info, date);
    LongTimeText(*Shown->Info, time);
    SetDlgItemTextA(dialog, IDC_INFO_DATE, date);
    SetDlgItemTextA(dialog, IDC_INFO_TIME, time);
    char attributes[AttributeTextSize];
    AttributeText(*Shown->Info, attributes);
    SetDlgItemTextA(dialog, IDC_INFO_ATTRIBUTES, attributes);
}

void ShowVersionText(HWND dialog, int id, const char* text)
{
    if (text[0] != '\0') {
        SetDlgItemTextA(dialog, id, text);
    } else {
        ShowNotAvailable(dialog, id);
    }
}

void ShowVersion(HWND dialog)
{
    ShowVersionText(dialog, IDC_INFO_DESCRIPTION, Details.FileDescription);
    ShowVersionText(dialog, IDC_INFO_VERSION, Details.FileVersionText);
    ShowVersionText(dialog, IDC_INFO_COMPANY, Details.CompanyNameText);
}

// The list lies over the version fields, under a title of its own.
void FollowImportsShown(HWND dialog)
{
    ShowWindow(GetDlgItem(dialog, IDC_INFO_IMPORTS), ImportsShown ? SW_SHOW : SW_HIDE);
    char title[LabelSize];
    LoadText(ImportsShown ? IDS_IMPORTED_LIBRARIES : IDS_VERSION_INFORMATION, title);
    SetDlgItemTextA(dialog, IDC_INFO_GROUP, title);
}

void OnInit(HWND dialog)
{
    ImportsShown = false;
    FollowImportsShown(dialog);
    if (Details.ImportCount != 0) {
        FillImportList(dialog, IDC_INFO_IMPORTS, Shown->Path);
    } else {
        EnableWindow(GetDlgItem(dialog, IDC_INFO_MORE), FALSE);
    }
    ShowPath(dialog);
    ShowType(dialog);
    ShowSize(dialog);
    ShowLines(dialog);
    ShowTimeAndAttributes(dialog);
    if (Details.FileDescription[0] != '\0' || Details.ImportCount != 0) {
        ShowVersion(dialog);
    } else {
        SetDialogHeight(dialog, HeightDownTo(dialog, IDC_INFO_SEPARATOR));
    }
}

INT_PTR OnCommand(HWND dialog, int id)
{
    switch (id) {
    case IDC_INFO_MORE:
        ImportsShown = !ImportsShown;
        FollowImportsShown(dialog);
        return TRUE;
    case IDOK:
    case IDCANCEL: EndDialog(dialog, 0); return TRUE;
    default: return FALSE;
    }
}

INT_PTR CALLBACK FileInfoDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM)
{
    switch (message) {
    case WM_INITDIALOG: OnInit(dialog); return TRUE;
    case WM_COMMAND: return OnCommand(dialog, LOWORD(wParam));
    default: return FALSE;
    }
}

} // namespace

void ShowFileInfo(HWND owner, const ShownFile& file)
{
    Shown = &file;
    DialogBoxParamA(GetModuleHandleA(nullptr), "FINFO", owner, FileInfoDlgProc, 0);
    Shown = nullptr;
}
