#include "app/confirm_delete.h"

#include "base/format.h"
#include "base/text.h"
#include "resources/ids.h"

namespace {

constexpr std::size_t ShownPathLength = 35;

void ShowPath(HWND dialog, const char* whole)
{
    char path[MaxPathSize];
    CopyText(path, whole);
    ShortenPath(path, ShownPathLength, '\\');
    SetDlgItemTextA(dialog, IDC_DELETE_PATH, path);
}

void DrawWarning(const DRAWITEMSTRUCT& item)
{
    DrawIcon(item.hDC, item.rcItem.left, item.rcItem.top,
             LoadIconA(nullptr, reinterpret_cast<LPCSTR>(IDI_EXCLAMATION)));
}

INT_PTR OnCommand(HWND dialog, int id)
{
    switch (id) {
    case IDC_DELETE_YES: EndDialog(dialog, 1); return TRUE;
    case IDC_DELETE_NO: EndDialog(dialog, 0); return TRUE; // closing the dialog too
    default: return FALSE;
    }
}

INT_PTR CALLBACK ConfirmDeleteDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_INITDIALOG:
        ShowPath(dialog, reinterpret_cast<const char*>(lParam));
        SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(dialog, IDC_DELETE_NO)), TRUE);
        return FALSE;
    case WM_DRAWITEM: DrawWarning(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)); return TRUE;
    case WM_COMMAND: return OnCommand(dialog, LOWORD(wParam));
    default: return FALSE;
    }
}

} // namespace

bool ConfirmDelete(HWND owner, const char* path)
{
    return DialogBoxParamA(GetModuleHandleA(nullptr), "CONFIRMDEL", owner, ConfirmDeleteDlgProc,
                           reinterpret_cast<LPARAM>(path)) == 1;
}
