#include "app/preferences_dialog.h"

#include "app/app_state.h"
#include "app/menu_state.h"
#include "base/dialog_number.h"
#include "base/help.h"
#include "document/document_state.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/view_state.h"

namespace {

constexpr ULONG_PTR HelpTopic = 100;
constexpr NumberField TabSize = {IDC_PREFER_TAB_SIZE, 2, 2, 16, IDS_TAB_SIZE_INVALID};

// The boxes and what they set.
constexpr struct {
    int Control;
    std::int32_t* Setting;
} Boxes[] = {
    {IDC_PREFER_OEM, &ViewOptions.OemToAnsi},
    {IDC_PREFER_EXPAND_TABS, &DocumentOptions.Ptabs},
    {IDC_PREFER_RULER, &ViewOptions.Ruler},
    {IDC_PREFER_SCROLL_BARS, &ViewOptions.ScrollBars},
    {IDC_PREFER_STATUS_LINE, &ViewOptions.StatusLine},
    {IDC_PREFER_BUTTON_BAR, &ViewOptions.ButtonBar},
    {IDC_PREFER_MINIMISE, &AppOptions.MinOnLaunch},
    {IDC_PREFER_MAXIMISE, &AppOptions.MaxLaunchApp},
    {IDC_PREFER_LOAD_ON_DELETE, &AppOptions.LoadOnDelete},
    {IDC_PREFER_AUTO_ZIP, &AppOptions.AutoZip},
};

void ShowBox(HWND dialog, int control, bool checked)
{
    CheckDlgButton(dialog, control, checked ? BST_CHECKED : BST_UNCHECKED);
}

bool IsChecked(HWND dialog, int control)
{
    return IsDlgButtonChecked(dialog, control) == BST_CHECKED;
}

void ShowSettings(HWND dialog)
{
    for (const auto& box : Boxes) {
        ShowBox(dialog, box.Control, *box.Setting != 0);
    }
    ShowBox(dialog, IDC_PREFER_EBCDIC, ViewOptions.EbcdicToAscii);
    SendDlgItemMessageA(dialog, IDC_PREFER_EDITOR, EM_LIMITTEXT, sizeof AppOptions.EditorName - 1, 0);
    SetDlgItemTextA(dialog, IDC_PREFER_EDITOR, AppOptions.EditorName);
    SetDlgItemInt(dialog, IDC_PREFER_TAB_SIZE, static_cast<UINT>(DocumentOptions.TabSize), TRUE);
}

void TakeSettings(HWND dialog, int tabSize)
{
    const std::int32_t tabSizeBefore = DocumentOptions.TabSize;
    const bool expandedBefore = DocumentOptions.Ptabs != 0;
    DocumentOptions.TabSize = tabSize;
    for (const auto& box : Boxes) {
        *box.Setting = IsChecked(dialog, box.Control);
    }
    ViewOptions.EbcdicToAscii = IsChecked(dialog, IDC_PREFER_EBCDIC);
    GetDlgItemTextA(dialog, IDC_PREFER_EDITOR, AppOptions.EditorName, sizeof AppOptions.EditorName);
    if (DocumentOptions.TabSize != tabSizeBefore || (DocumentOptions.Ptabs != 0) != expandedBefore) {
        SetSelectionMenuState(false); // the columns no longer hold
        ForgetHighlight();
    }
    ShowLaunchState(); // there may be an editor now, or none any more
    LayOutFrameAnew();
    RepaintView();
}

INT_PTR OnOk(HWND dialog)
{
    int tabSize = 0;
    if (ReadNumber(dialog, TabSize, tabSize)) {
        TakeSettings(dialog, tabSize);
        EndDialog(dialog, 1);
    }
    return TRUE;
}

INT_PTR OnCommand(HWND dialog, int id)
{
    switch (id) {
    case IDC_ASK_HELP: ShowHelp(dialog, HELP_CONTEXT, HelpTopic); return TRUE;
    case IDOK: return OnOk(dialog);
    case IDCANCEL: EndDialog(dialog, 0); return TRUE;
    default: return FALSE;
    }
}

INT_PTR CALLBACK PreferencesDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM)
{
    switch (message) {
    case WM_INITDIALOG: ShowSettings(dialog); return TRUE;
    case WM_COMMAND: return OnCommand(dialog, LOWORD(wParam));
    default: return FALSE;
    }
}

} // namespace

void AskPreferences(HWND mainWindow)
{
    DialogBoxParamA(Windows.Instance, "PREFER", mainWindow, PreferencesDlgProc, 0);
}
