#include "print/print_status.h"

#include "print/print_job.h"
#include "resources/ids.h"

#include <cstdio>

namespace {

struct StatusBox {
    HWND Owner = nullptr;
    HWND Window = nullptr;
};

StatusBox Status;

INT_PTR CALLBACK PrintStatusDlgProc(HWND dialog, UINT message, WPARAM, LPARAM)
{
    switch (message) {
    case WM_INITDIALOG: SetDlgItemTextA(dialog, IDC_STATUS_DOCUMENT, PrintJob.PrintDocName); return TRUE;
    case WM_COMMAND: // there is only Cancel
        PrintJob.PrintAborted = true;
        ClosePrintStatus();
        return TRUE;
    default: return FALSE;
    }
}

} // namespace

void ShowPrintStatus(HWND owner)
{
    Status.Owner = owner;
    EnableWindow(owner, FALSE);
    Status.Window = CreateDialogParamA(GetModuleHandleA(nullptr), "PrintDlgBox", owner, PrintStatusDlgProc, 0);
    UpdateWindow(Status.Window);
}

void ShowPrintedPage()
{
    char text[24];
    snprintf(text, sizeof text, "Page %d", static_cast<int>(PrintJob.PageNumber));
    SetDlgItemTextA(Status.Window, IDC_STATUS_PAGE, text);
    PrintAbortProc(nullptr, 0); // drivers ask only when a page ends
}

void ClosePrintStatus()
{
    if (Status.Owner != nullptr) {
        EnableWindow(Status.Owner, TRUE); // before the box goes: the next enabled window becomes the active one
    }
    if (Status.Window != nullptr) {
        DestroyWindow(Status.Window);
    }
    Status = {};
}

BOOL CALLBACK PrintAbortProc(HDC, int)
{
    MSG message;
    while (!PrintJob.PrintAborted && PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam)); // the program's own loop has to see it
            PrintJob.PrintAborted = true;
        } else if (Status.Window == nullptr || !IsDialogMessageA(Status.Window, &message)) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }
    return !PrintJob.PrintAborted;
}
