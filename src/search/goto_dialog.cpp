#include "search/goto_dialog.h"

#include "base/load_text.h"
#include "resources/ids.h"
#include "search/goto_target.h"

namespace {

void FillDialog(HWND dialog, bool hexMode)
{
    char prompt[20] = "";
    LoadText(hexMode ? IDS_PROMPT_OFFSET : IDS_PROMPT_LINE, prompt);
    SetDlgItemTextA(dialog, IDC_GOTO_PROMPT, prompt);
    SendDlgItemMessageA(dialog, IDC_GOTO_TEXT, CB_LIMITTEXT, GotoTextSize - 1, 0);
    const RecentTexts<GotoTextSize>& history = hexMode ? Goto.Offsets : Goto.Lines;
    for (int i = 0; i < history.Count; ++i) {
        SendDlgItemMessageA(dialog, IDC_GOTO_TEXT, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(history.Entries[i]));
    }
    SetDlgItemTextA(dialog, IDC_GOTO_TEXT, Goto.GotoText);
}

void TakeText(HWND dialog, bool hexMode)
{
    GetDlgItemTextA(dialog, IDC_GOTO_TEXT, Goto.GotoText, sizeof Goto.GotoText);
    RememberText(hexMode ? Goto.Offsets : Goto.Lines, Goto.GotoText);
}

INT_PTR OnCommand(HWND dialog, int id)
{
    switch (id) {
    case IDOK:
        TakeText(dialog, GetWindowLongPtrA(dialog, DWLP_USER) != 0);
        EndDialog(dialog, 1);
        return TRUE;
    case IDCANCEL: EndDialog(dialog, 0); return TRUE;
    default: return FALSE;
    }
}

INT_PTR CALLBACK GotoDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_INITDIALOG:
        SetWindowLongPtrA(dialog, DWLP_USER, lParam);
        FillDialog(dialog, lParam != 0);
        return TRUE;
    case WM_COMMAND: return OnCommand(dialog, LOWORD(wParam));
    default: return FALSE;
    }
}

} // namespace

bool AskGotoTarget(HWND owner, bool hexMode)
{
    return DialogBoxParamA(GetModuleHandleA(nullptr), "GOTO", owner, GotoDlgProc, hexMode) == 1;
}
