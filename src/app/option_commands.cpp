#include "app/option_commands.h"

#include "app/line_length_dialog.h"
#include "app/menu_state.h"
#include "app/preferences_dialog.h"
#include "app/region_objects.h"
#include "app/settings_file.h"
#include "buttonbar/customise_dialog.h"
#include "document/document_state.h"
#include "document/line_index.h"
#include "print/printer_selection.h"
#include "search/find_state.h"
#include "view/choose_font.h"
#include "view/colours_dialog.h"
#include "view/frame_windows.h"
#include "view/screen_font.h"
#include "view/view_state.h"

namespace {

// The match that was found last lies in another line when lines are as long as records of another length.
void FollowRecordLength(std::int32_t lengthBefore)
{
    if (Find.FoundLine > 0) {
        const std::int32_t offset = (Find.FoundLine - 1) * lengthBefore + Find.FoundCol;
        Find.FoundLine = offset / RecordLength() + 1;
        Find.FoundCol = offset % RecordLength();
    }
}

} // namespace

void IncreaseFontSize(HWND, UINT)
{
    StepScreenFont(FontStep::Larger);
}

void DecreaseFontSize(HWND, UINT)
{
    StepScreenFont(FontStep::Smaller);
}

void SelectFont(HWND mainWindow, UINT)
{
    const PrinterDc printer;
    ChooseScreenFont(mainWindow, printer);
    RefreshStatus();
}

void SetPreferences(HWND mainWindow, UINT)
{
    AskPreferences(mainWindow);
}

void CustomiseButtons(HWND mainWindow, UINT)
{
    if (CustomiseButtonBar(mainWindow)) {
        SaveButtonSettings();
        InvalidateRect(Windows.Buttons, nullptr, TRUE);
    }
}

void SetColours(HWND mainWindow, UINT)
{
    if (!ChooseColours(mainWindow)) {
        return;
    }
    DeleteRegionObjects();
    CreateRegionObjects();
    RepaintView();
    InvalidateRect(Windows.Ruler, nullptr, TRUE);
    InvalidateRect(Windows.Status, nullptr, TRUE);
}

void SetLineLength(HWND mainWindow, UINT)
{
    const std::int32_t lengthBefore = RecordLength();
    if (!AskLineLength(mainWindow) || !View.FileShown || Document.IsText || View.HexMode) {
        return;
    }
    FollowRecordLength(lengthBefore);
    View.TopLine = 0;
    View.LeftColumn = View.LockColStart;
    ForgetHighlight();
    SetSelectionMenuState(false);
    LayOutFrameAnew();
    RepaintView();
}
