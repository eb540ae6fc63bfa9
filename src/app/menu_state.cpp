#include "app/menu_state.h"

#include "app/commands.h"
#include "view/frame_windows.h"
#include "view/view_state.h"

void EnableCommand(UINT id, bool enabled)
{
    EnableMenuItem(Windows.MainMenu, id, MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED));
}

void CheckCommand(UINT id, bool checked)
{
    CheckMenuItem(Windows.MainMenu, id, MF_BYCOMMAND | (checked ? MF_CHECKED : MF_UNCHECKED));
}

void SetFileMenuState(bool fileOpen)
{
    for (const Command& command : Commands()) {
        if (command.Needs == CommandNeeds::File) {
            EnableCommand(command.Id, fileOpen);
        }
    }
    SetSelectionMenuState(false);
}

void SetSelectionMenuState(bool hasSelection)
{
    for (const Command& command : Commands()) {
        if (command.Needs == CommandNeeds::Selection) {
            EnableCommand(command.Id, hasSelection);
        }
    }
    if (!hasSelection) {
        View.SelLineA = View.SelLineB = 0;
    }
}
