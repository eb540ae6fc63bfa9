#include "files/dialog_height.h"

LONG HeightDownTo(HWND dialog, int control)
{
    RECT whole;
    RECT end;
    GetWindowRect(dialog, &whole);
    GetWindowRect(GetDlgItem(dialog, control), &end);
    return end.top - whole.top;
}

void SetDialogHeight(HWND dialog, LONG height)
{
    RECT whole;
    GetWindowRect(dialog, &whole);
    SetWindowPos(dialog, nullptr, 0, 0, whole.right - whole.left, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}
