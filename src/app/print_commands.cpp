#include "app/print_commands.h"

#include "app/app_state.h"
#include "app/release_file.h"
#include "print/page_setup.h"
#include "print/print_job.h"
#include "print/printer_selection.h"
#include "view/frame_windows.h"
#include "view/screen_font.h"
#include "view/selection.h"
#include "view/view_state.h"

void PrintShownFile(HWND mainWindow, UINT)
{
    if (IsIconic(mainWindow)) {
        ShowWindow(mainWindow, SW_RESTORE); // which opens the file again; the question needs its owner
    }
    if (View.FileShown) {
        PrintFile(mainWindow, App.CurrentPath, Drawing.ScreenFont, View.HexMode,
                  HasSelection() ? FirstSelectedLine() : 0, HasSelection() ? LastSelectedLine() : 0);
    }
    if (App.Start.PrintAndExit) {
        SendMessageA(mainWindow, WM_CLOSE, 0, 0);
    } else if (IsIconic(mainWindow)) {
        ReleaseFileOfIcon(); // the job needed it until now
    }
}

// The printer's fonts may be others.
void SetUpPrinter(HWND mainWindow, UINT)
{
    if (PrinterSetup(mainWindow)) {
        UseChosenFont();
    }
}

void SetUpPage(HWND mainWindow, UINT)
{
    PageSetup(mainWindow, nullptr);
}
