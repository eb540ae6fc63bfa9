#include "app/recent_menu.h"

#include "app/app_state.h"
#include "resources/ids.h"
#include "view/frame_windows.h"

void BuildRecentMenu(HWND mainWindow)
{
    for (UINT id = IDM_RECENT_FIRST; id <= IDM_RECENT_LAST; ++id) {
        DeleteMenu(Windows.MainMenu, id, MF_BYCOMMAND);
    }
    const HMENU fileMenu = GetSubMenu(Windows.MainMenu, 0);
    for (int i = 0; i < App.Recent.Count; ++i) {
        char text[MaxPathSize + 8];
        FormatRecentText(App.Recent, i, text, sizeof text);
        AppendMenuA(fileMenu, MF_STRING, static_cast<UINT_PTR>(IDM_RECENT_FIRST + i), text);
    }
    DrawMenuBar(mainWindow);
}

void AddRecentFile(HWND mainWindow)
{
    if (AddRecentPath(App.Recent, App.CurrentPath)) {
        BuildRecentMenu(mainWindow);
    }
}
