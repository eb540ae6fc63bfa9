#include "app/mode_switch.h"

#include "app/menu_state.h"
#include "document/document_state.h"
#include "document/line_index.h"
#include "resources/ids.h"
#include "search/goto_target.h"
#include "view/frame_windows.h"
#include "view/lock_region.h"
#include "view/screen_font.h"
#include "view/view_state.h"
#include "view/view_window.h"

namespace {

void ForgetMatchAndSelection()
{
    EndSelecting(Windows.View);
    ForgetHighlight();
    ForgetSearch();
    SetSelectionMenuState(false);
}

} // namespace

void SwitchMode(bool hexMode)
{
    if (!View.FileShown) {
        return;
    }
    if (View.HexMode == hexMode) {
        RefreshStatus();
        return;
    }
    View.HexMode = hexMode;
    CheckCommand(IDM_VIEW_HEX, hexMode);
    CheckCommand(IDM_VIEW_TEXT, !hexMode);
    ClearLock();
    EnableLock(!hexMode && Document.IsText);
    Goto.GotoText[0] = '\0';
    ForgetMatchAndSelection();
    View.TopLine = hexMode && Document.IsText ? HexRowOfLine(View.TopLine + 1) : 0;
    View.LeftColumn = 0;
    LayOutFrameAnew();
    if (hexMode) {
        SubstituteScreenFont();
    } else {
        RestoreScreenFont();
    }
    RepaintView();
    PostMessageA(Windows.Status, WM_SHOW_POSITION, 0, 0);
}
