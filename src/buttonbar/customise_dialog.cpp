#include "buttonbar/customise_dialog.h"

#include "base/help.h"
#include "base/load_text.h"
#include "buttonbar/button_order.h"
#include "buttonbar/draw_button.h"
#include "resources/ids.h"
#include "view/gdi_holders.h"

#include <cstring>

namespace {

constexpr UINT ItemHeight = 25;
constexpr ULONG_PTR HelpTopic = 200;

int FontHeightOfItems = 0; // pixels

int SelectionOf(HWND list)
{
    return static_cast<int>(SendMessageA(list, LB_GETCURSEL, 0, 0)); // LB_ERR for none
}

int ButtonAt(HWND list, int item)
{
    return static_cast<int>(SendMessageA(list, LB_GETITEMDATA, static_cast<WPARAM>(item), 0));
}

// Before item, or at the end for -1.
void InsertButton(HWND list, int item, int button)
{
    SendMessageA(list, LB_INSERTSTRING, static_cast<WPARAM>(item), button); // an owner-drawn item's text is its data
}

int TakeButton(HWND list, int item)
{
    const int button = ButtonAt(list, item);
    SendMessageA(list, LB_DELETESTRING, static_cast<WPARAM>(item), 0);
    return button;
}

void FillLists(HWND dialog)
{
    for (int slot = 0; slot < ButtonBar.ButtonCount; ++slot) {
        InsertButton(GetDlgItem(dialog, IDC_BAR_CHOSEN), -1, ButtonBar.ButtonOrder[slot]);
    }
    for (int button = 0; button < ButtonTotal; ++button) {
        if (ButtonBar.Position[button] == 0) {
            InsertButton(GetDlgItem(dialog, IDC_BAR_AVAILABLE), -1, button);
        }
    }
    CheckDlgButton(dialog, IDC_BAR_BUBBLES, ButtonBar.ShowBubbles != 0 ? BST_CHECKED : BST_UNCHECKED);
}

void AddButton(HWND dialog)
{
    const HWND available = GetDlgItem(dialog, IDC_BAR_AVAILABLE);
    const HWND chosen = GetDlgItem(dialog, IDC_BAR_CHOSEN);
    const int item = SelectionOf(available);
    if (item != LB_ERR) {
        InsertButton(chosen, SelectionOf(chosen), TakeButton(available, item)); // LB_ERR is -1, the end
    }
}

void RemoveButton(HWND dialog)
{
    const HWND chosen = GetDlgItem(dialog, IDC_BAR_CHOSEN);
    const int item = SelectionOf(chosen);
    if (item != LB_ERR) {
        InsertButton(GetDlgItem(dialog, IDC_BAR_AVAILABLE), -1, TakeButton(chosen, item));
    }
}

void MoveButton(HWND dialog, int step)
{
    const HWND chosen = GetDlgItem(dialog, IDC_BAR_CHOSEN);
    const int item = SelectionOf(chosen);
    const int target = item + step;
    if (item == LB_ERR || target < 0 || target >= SendMessageA(chosen, LB_GETCOUNT, 0, 0)) {
        return;
    }
    InsertButton(chosen, target, TakeButton(chosen, item));
    SendMessageA(chosen, LB_SETCURSEL, static_cast<WPARAM>(target), 0);
}

void TakeOrder(HWND dialog)
{
    const HWND chosen = GetDlgItem(dialog, IDC_BAR_CHOSEN);
    int buttons[2 * ButtonTotal];
    int count = 0;
    while (count < SendMessageA(chosen, LB_GETCOUNT, 0, 0)) {
        buttons[count] = ButtonAt(chosen, count);
        ++count;
    }
    SetButtonOrder(buttons, count, ButtonBar);
    ButtonBar.ShowBubbles = IsDlgButtonChecked(dialog, IDC_BAR_BUBBLES) == BST_CHECKED;
}

void MeasureItemFont(HWND dialog, HFONT font)
{
    WindowDc dc(dialog);
    SelectedObject selected(dc, font);
    TEXTMETRICA metrics = {};
    GetTextMetricsA(dc, &metrics);
    FontHeightOfItems = metrics.tmHeight;
}

void DrawName(const DRAWITEMSTRUCT& item)
{
    char name[30] = "";
    LoadText(static_cast<UINT>(IDS_BUBBLE_FIRST + item.itemData), name);
    const bool selected = (item.itemState & ODS_SELECTED) != 0;
    SetBkColor(item.hDC, GetSysColor(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    SetTextColor(item.hDC, GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    const RECT& area = item.rcItem;
    RECT text = area;
    text.left += 30;
    const int y = area.top + (area.bottom - area.top) / 2 - FontHeightOfItems / 2;
    ExtTextOutA(item.hDC, text.left, y, ETO_CLIPPED | ETO_OPAQUE, &text, name, static_cast<UINT>(strlen(name)),
                nullptr);
}

void DrawButtonItem(const DRAWITEMSTRUCT& item)
{
    if (item.itemID == static_cast<UINT>(-1)) {
        return; // an empty list that has the focus
    }
    if (item.itemAction == ODA_FOCUS) {
        DrawFocusRect(item.hDC, &item.rcItem);
        return;
    }
    DrawName(item);
    if (item.itemAction != ODA_SELECT) {
        DrawFace(item.hDC, static_cast<int>(item.itemData), item.rcItem.left + 2, item.rcItem.top + 2);
        if ((item.itemState & ODS_FOCUS) != 0) {
            DrawFocusRect(item.hDC, &item.rcItem);
        }
    }
}

INT_PTR OnCommand(HWND dialog, int id)
{
    switch (id) {
    case IDC_BAR_ADD: AddButton(dialog); return TRUE;
    case IDC_BAR_REMOVE: RemoveButton(dialog); return TRUE;
    case IDC_BAR_UP: MoveButton(dialog, -1); return TRUE;
    case IDC_BAR_DOWN: MoveButton(dialog, 1); return TRUE;
    case IDC_ASK_HELP: ShowHelp(dialog, HELP_CONTEXT, HelpTopic); return TRUE;
    case IDOK:
        TakeOrder(dialog);
        EndDialog(dialog, 1);
        return TRUE;
    case IDCANCEL: EndDialog(dialog, 0); return TRUE;
    default: return FALSE;
    }
}

INT_PTR CALLBACK ButtonBarDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_INITDIALOG: FillLists(dialog); return TRUE;
    case WM_SETFONT: MeasureItemFont(dialog, reinterpret_cast<HFONT>(wParam)); return TRUE;
    case WM_MEASUREITEM: reinterpret_cast<MEASUREITEMSTRUCT*>(lParam)->itemHeight = ItemHeight; return TRUE;
    case WM_DRAWITEM: DrawButtonItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)); return TRUE;
    case WM_COMMAND: return OnCommand(dialog, LOWORD(wParam));
    default: return FALSE;
    }
}

} // namespace

bool CustomiseButtonBar(HWND owner)
{
    return DialogBoxParamA(GetModuleHandleA(nullptr), "BTNBAR", owner, ButtonBarDlgProc, 0) == 1;
}
