#include "app/line_length_dialog.h"

#include "base/dialog_number.h"
#include "document/document_state.h"
#include "document/line_index.h"
#include "resources/ids.h"

namespace {

constexpr NumberField Length = {IDC_LINE_LENGTH, 4, 1, 255, IDS_VALUE_INVALID};

bool TakeLength(HWND dialog)
{
    int length = 0;
    if (!ReadNumber(dialog, Length, length)) {
        return false;
    }
    SetFixedLineLength(length);
    return true;
}

INT_PTR OnCommand(HWND dialog, int id)
{
    switch (id) {
    case IDOK:
        if (TakeLength(dialog)) {
            EndDialog(dialog, 1);
        }
        return TRUE;
    case IDCANCEL: EndDialog(dialog, 0); return TRUE;
    default: return FALSE;
    }
}

INT_PTR CALLBACK SetLineLengthDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM)
{
    switch (message) {
    case WM_INITDIALOG: SetDlgItemInt(dialog, IDC_LINE_LENGTH, DocumentOptions.FixedLineLen, TRUE); return TRUE;
    case WM_COMMAND: return OnCommand(dialog, LOWORD(wParam));
    default: return FALSE;
    }
}

} // namespace

bool AskLineLength(HWND owner)
{
    return DialogBoxParamA(GetModuleHandleA(nullptr), "SETLEN", owner, SetLineLengthDlgProc, 0) == 1;
}
