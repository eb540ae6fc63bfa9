#include "search/find_dialog.h"

#include "base/text.h"
#include "resources/ids.h"
#include "search/find_state.h"
#include "search/search_pattern.h"

namespace {

void FillCombo(HWND dialog, int id, const RecentTexts<FindTextSize>& history, const char* text)
{
    SendDlgItemMessageA(dialog, id, CB_LIMITTEXT, FindTextSize - 1, 0);
    for (int i = 0; i < history.Count; ++i) {
        SendDlgItemMessageA(dialog, id, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(history.Entries[i]));
    }
    SetDlgItemTextA(dialog, id, text);
}

bool HasText(HWND dialog, int id)
{
    return GetWindowTextLengthA(GetDlgItem(dialog, id)) > 0;
}

void EnableControl(HWND dialog, int id, bool enabled)
{
    EnableWindow(GetDlgItem(dialog, id), enabled);
}

bool IsChecked(HWND dialog, int id)
{
    return IsDlgButtonChecked(dialog, id) == BST_CHECKED;
}

void ShowScrollSwitches(HWND dialog)
{
    CheckDlgButton(dialog, IDC_FIND_SCROLL, Find.ScrollToOn ? BST_CHECKED : BST_UNCHECKED);
    EnableControl(dialog, IDC_FIND_TOP, Find.ScrollToOn);
    EnableControl(dialog, IDC_FIND_MIDDLE, Find.ScrollToOn);
}

void FillDialog(HWND dialog)
{
    FillCombo(dialog, IDC_FIND_TEXT, Find.TextHistory, Find.FindText);
    FillCombo(dialog, IDC_FIND_HEX, Find.HexHistory, Find.FindHex);
    CheckRadioButton(dialog, IDC_FIND_FORWARDS, IDC_FIND_BACKWARDS,
                     Find.Backwards ? IDC_FIND_BACKWARDS : IDC_FIND_FORWARDS);
    CheckRadioButton(dialog, IDC_FIND_ENTIRE, IDC_FIND_CURRENT, Find.FromCurrent ? IDC_FIND_CURRENT : IDC_FIND_ENTIRE);
    CheckDlgButton(dialog, IDC_FIND_CASE, Find.MatchCase ? BST_CHECKED : BST_UNCHECKED);
    CheckRadioButton(dialog, IDC_FIND_TOP, IDC_FIND_MIDDLE, Find.ScrollToTop ? IDC_FIND_TOP : IDC_FIND_MIDDLE);
    ShowScrollSwitches(dialog);
    EnableControl(dialog, IDOK, Find.FindText[0] != '\0' || Find.FindHex[0] != '\0');
}

// Only one of the two strings is ever used: entering one empties the other.
void EmptyOther(HWND dialog, int id)
{
    const int other = id == IDC_FIND_TEXT ? IDC_FIND_HEX : IDC_FIND_TEXT;
    if (HasText(dialog, other)) {
        SetDlgItemTextA(dialog, other, "");
    }
}

void OnComboChange(HWND dialog, int id, int notification)
{
    if (notification == CBN_SELCHANGE) {
        EmptyOther(dialog, id);
        EnableControl(dialog, IDOK, true); // the text itself follows later
    } else if (notification == CBN_EDITCHANGE) {
        // Emptying the other one reports a change there too, which must not empty this one in turn.
        const bool entered = HasText(dialog, id);
        if (entered) {
            EmptyOther(dialog, id);
        }
        EnableControl(dialog, IDOK, entered || HasText(dialog, IDC_FIND_TEXT) || HasText(dialog, IDC_FIND_HEX));
    }
}

void TakeSwitches(HWND dialog)
{
    Find.Backwards = IsChecked(dialog, IDC_FIND_BACKWARDS);
    Find.FromCurrent = IsChecked(dialog, IDC_FIND_CURRENT);
    Find.MatchCase = IsChecked(dialog, IDC_FIND_CASE);
    Find.ScrollToTop = IsChecked(dialog, IDC_FIND_TOP);
}

void OnOk(HWND dialog)
{
    char text[FindTextSize] = "";
    char hex[FindTextSize] = "";
    GetDlgItemTextA(dialog, IDC_FIND_TEXT, text, sizeof text);
    GetDlgItemTextA(dialog, IDC_FIND_HEX, hex, sizeof hex);
    CharUpperA(hex);
    const bool empty = text[0] == '\0' && hex[0] == '\0';
    if (empty || !IsHexString(hex)) {
        MessageBeep(0);
        return;
    }
    if (text[0] != '\0') {
        hex[0] = '\0';
        RememberText(Find.TextHistory, text);
    } else {
        RememberText(Find.HexHistory, hex);
    }
    CopyText(Find.FindText, text);
    CopyText(Find.FindHex, hex);
    TakeSwitches(dialog);
    EndDialog(dialog, 1);
}

void OnScrollSwitch(HWND dialog, int notification)
{
    if (notification == BN_CLICKED) {
        Find.ScrollToOn = !Find.ScrollToOn;
        ShowScrollSwitches(dialog);
    }
}

INT_PTR OnCommand(HWND dialog, int id, int notification)
{
    switch (id) {
    case IDC_FIND_TEXT:
    case IDC_FIND_HEX: OnComboChange(dialog, id, notification); return TRUE;
    case IDC_FIND_SCROLL: OnScrollSwitch(dialog, notification); return TRUE;
    case IDOK: OnOk(dialog); return TRUE;
    case IDCANCEL: EndDialog(dialog, 0); return TRUE;
    default: return FALSE;
    }
}

INT_PTR CALLBACK FindDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM)
{
    switch (message) {
    case WM_INITDIALOG: FillDialog(dialog); return TRUE;
    case WM_COMMAND: return OnCommand(dialog, LOWORD(wParam), HIWORD(wParam));
    default: return FALSE;
    }
}

} // namespace

bool AskFind(HWND owner)
{
    return DialogBoxParamA(GetModuleHandleA(nullptr), "FIND", owner, FindDlgProc, 0) == 1;
}
