#include "view/colours_dialog.h"

#include "base/load_text.h"
#include "resources/ids.h"
#include "view/gdi_holders.h"
#include "view/palette.h"
#include "view/view_state.h"

#include <algorithm>
#include <iterator>

namespace {

// What is chosen so far, as palette indices.
struct ColourChoice {
    std::int32_t Foreground[ColourRegionCount];
    std::int32_t Background[ColourRegionCount];
    int Region = OutputRegion;
    HBRUSH SampleBrush = nullptr;
};

ColourChoice Choice;

COLORREF SampleBackground()
{
    return Palette[Choice.Background[Choice.Region]];
}

void ShowSample(HWND dialog)
{
    if (Choice.SampleBrush != nullptr) {
        DeleteObject(Choice.SampleBrush);
    }
    Choice.SampleBrush = CreateSolidBrush(SampleBackground());
    InvalidateRect(GetDlgItem(dialog, IDC_COLOUR_SAMPLE), nullptr, TRUE);
}

void OnInit(HWND dialog)
{
    for (UINT id = IDS_REGION_FIRST; id <= IDS_REGION_LAST; ++id) {
        char name[30];
        LoadText(id, name);
        SendDlgItemMessageA(dialog, IDC_COLOUR_REGION, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
    }
    Choice = ColourChoice{};
    for (int region = 0; region < ColourRegionCount; ++region) {
        Choice.Foreground[region] = ForegroundIndex(static_cast<ColourRegion>(region));
        Choice.Background[region] = BackgroundIndex(static_cast<ColourRegion>(region));
    }
    SendDlgItemMessageA(dialog, IDC_COLOUR_REGION, CB_SETCURSEL, 0, 0);
    CheckRadioButton(dialog, IDC_COLOUR_FOREGROUND, IDC_COLOUR_BACKGROUND, IDC_COLOUR_FOREGROUND);
    ShowSample(dialog);
}

void TakeRegion(HWND dialog)
{
    const LRESULT region = SendDlgItemMessageA(dialog, IDC_COLOUR_REGION, CB_GETCURSEL, 0, 0);
    if (region >= 0 && region < ColourRegionCount) {
        Choice.Region = static_cast<int>(region);
        ShowSample(dialog);
    }
}

void TakeColour(HWND dialog, int index)
{
    const bool foreground = IsDlgButtonChecked(dialog, IDC_COLOUR_FOREGROUND) == BST_CHECKED;
    (foreground ? Choice.Foreground : Choice.Background)[Choice.Region] = index;
    ShowSample(dialog);
}

void KeepChoice()
{
    std::copy(std::begin(Choice.Foreground), std::end(Choice.Foreground), ViewOptions.Foreground);
    std::copy(std::begin(Choice.Background), std::end(Choice.Background), ViewOptions.Background);
}

INT_PTR OnCommand(HWND dialog, int id, UINT notification)
{
    if (id >= IDC_COLOUR_FIRST && id <= IDC_COLOUR_LAST) {
        TakeColour(dialog, id - IDC_COLOUR_FIRST);
        return TRUE;
    }
    switch (id) {
    case IDC_COLOUR_REGION:
        if (notification == CBN_SELCHANGE) {
            TakeRegion(dialog);
        }
        return TRUE;
    case IDOK:
        KeepChoice();
        EndDialog(dialog, 1);
        return TRUE;
    case IDCANCEL: EndDialog(dialog, 0); return TRUE;
    default: return FALSE;
    }
}

void DrawColour(const DRAWITEMSTRUCT& item)
{
    RECT inner = item.rcItem;
    FillRect(item.hDC, &inner, static_cast<HBRUSH>(GetCurrentObject(item.hDC, OBJ_BRUSH)));
    InflateRect(&inner, -2, -2);
    const HBRUSH brush = CreateSolidBrush(Palette[item.CtlID - IDC_COLOUR_FIRST]);
    {
        SelectedObject selectedBrush(item.hDC, brush);
        SelectedObject selectedPen(item.hDC, GetStockObject(BLACK_PEN));
        Rectangle(item.hDC, inner.left, inner.top, inner.right, inner.bottom);
    }
    DeleteObject(brush);
}

void OnDrawItem(const DRAWITEMSTRUCT& item)
{
    if ((item.itemAction & ODA_DRAWENTIRE) != 0) {
        DrawColour(item);
        if ((item.itemState & ODS_FOCUS) != 0) {
            DrawFocusRect(item.hDC, &item.rcItem);
        }
    } else if ((item.itemAction & ODA_FOCUS) != 0) {
        DrawFocusRect(item.hDC, &item.rcItem);
    }
}

// The brush to paint a static control with; nullptr for the usual one.
HBRUSH OnColourStatic(HDC dc, HWND control)
{
    if (GetDlgCtrlID(control) != IDC_COLOUR_SAMPLE) {
        return nullptr;
    }
    SetTextColor(dc, Palette[Choice.Foreground[Choice.Region]]);
    SetBkColor(dc, SampleBackground());
    return Choice.SampleBrush;
}

INT_PTR CALLBACK ColoursDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_INITDIALOG: OnInit(dialog); return TRUE;
    case WM_COMMAND: return OnCommand(dialog, LOWORD(wParam), HIWORD(wParam));
    case WM_DRAWITEM: OnDrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)); return TRUE;
    case WM_CTLCOLORSTATIC:
        return reinterpret_cast<INT_PTR>(
            OnColourStatic(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam)));
    default: return FALSE;
    }
}

} // namespace

bool ChooseColours(HWND owner)
{
    const bool confirmed = DialogBoxParamA(GetModuleHandleA(nullptr), "COLOURS", owner, ColoursDlgProc, 0) == 1;
    DeleteObject(Choice.SampleBrush);
    Choice.SampleBrush = nullptr;
    return confirmed;
}
