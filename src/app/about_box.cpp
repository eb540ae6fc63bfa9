#include "app/about_box.h"

namespace {

INT_PTR CALLBACK AboutDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM)
{
    if (message == WM_COMMAND && (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL)) {
        EndDialog(dialog, 0);
        return TRUE;
    }
    return message == WM_INITDIALOG;
}

} // namespace

void ShowAboutBox(HWND owner)
{
    DialogBoxParamA(GetModuleHandleA(nullptr), "ABOUTBOX", owner, AboutDlgProc, 0);
}
