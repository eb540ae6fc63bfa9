#include "app/menu_state.h"

#include "app/app_state.h"
#include "base/text.h"
#include "buttonbar/button_bar_window.h"
#include "buttonbar/buttons.h"
#include "document/document_state.h"
#include "document/file_list.h"
#include "files/associations.h"
#include "resources/ids.h"
#include "search/find_state.h"
#include "view/frame_windows.h"
#include "view/view_state.h"

namespace {

struct MenuButton {
    UINT Id;
    int Button;
};

constexpr int NoButton = -1;

// What can be done with any open file.
constexpr MenuButton NeedFile[] = {
    {IDM_FILE_CLOSE, NoButton},      {IDM_FILE_PRINT, ButtonPrint},           {IDM_FILE_INFORMATION, ButtonInformation},
    {IDM_SEARCH_GOTO, ButtonGoto},   {IDM_SEARCH_FIND, ButtonFind},           {IDM_EDIT_SELECT_ALL, NoButton},
    {IDM_FILE_DELETE, ButtonDelete}, {IDM_FONT_INCREASE, ButtonFontIncrease}, {IDM_FONT_DECREASE, ButtonFontDecrease},
};

bool HasEditor()
{
    return AppOptions.EditorName[0] != '\0';
}

// Finds out what files of path's extension are called on the way.
LaunchMode ClassifyLaunch(const char* path)
{
    const char* const extension = ExtensionOf(path);
    LaunchFacts facts = {};
    facts.HasExtension = extension[0] != '\0' && extension[1] != '\0';
    facts.CanEdit = Document.IsText && HasEditor();
    facts.FileType = App.Info.FileType;
    facts.ImageMachine = Details.ImageMachine;
    facts.IsAssociated = facts.HasExtension && LookupAssociation(extension + 1, App.TypeDescription);
    return DecideLaunch(facts);
}

void SetLaunchState(bool fileOpen, const char* path)
{
    EnableCommandAndButton(IDM_EDIT_FILE, ButtonEdit, fileOpen && HasEditor());
    App.TypeDescription[0] = '\0';
    App.Launch = fileOpen ? ClassifyLaunch(path) : LaunchMode::None;
    EnableCommandAndButton(IDM_FILE_LAUNCH, ButtonLaunch, App.Launch != LaunchMode::None);
}

} // namespace

void EnableCommand(UINT id, bool enabled)
{
    EnableMenuItem(Windows.MainMenu, id, MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED));
}

void CheckCommand(UINT id, bool checked)
{
    CheckMenuItem(Windows.MainMenu, id, MF_BYCOMMAND | (checked ? MF_CHECKED : MF_UNCHECKED));
}

void EnableCommandAndButton(UINT id, int button, bool enabled)
{
    EnableCommand(id, enabled);
    if (button != NoButton) {
        SetButtonEnabled(button, enabled);
    }
}

bool IsCommandPossible(UINT id)
{
    const UINT state = GetMenuState(Windows.MainMenu, id, MF_BYCOMMAND);
    return state == static_cast<UINT>(-1) || (state & MF_GRAYED) == 0;
}

void ShowSearchState()
{
    EnableCommandAndButton(IDM_SEARCH_FIND_NEXT, ButtonRepeatFind, Find.FindSucceeded);
    EnableCommand(IDM_SEARCH_FIND_PREVIOUS, Find.FindSucceeded);
}

void ForgetSearch()
{
    Find.FindSucceeded = false;
    Find.FoundLine = 0;
    ShowSearchState();
}

void EnableLock(bool enabled)
{
    EnableCommandAndButton(IDM_VIEW_LOCK, ButtonLock, enabled);
}

void SetFileMenuState(bool fileOpen, const char* path)
{
    for (const MenuButton& item : NeedFile) {
        EnableCommandAndButton(item.Id, item.Button, fileOpen);
    }
    EnableLock(fileOpen && Document.IsText);
    SetSelectionMenuState(false);
    ForgetSearch();
    SetLaunchState(fileOpen, path);
}

void ShowLaunchState()
{
    SetLaunchState(View.FileShown, App.CurrentPath);
}

void SetListMenuState()
{
    EnableCommandAndButton(IDM_FILE_NEXT, ButtonNext, HasNextFile());
    EnableCommandAndButton(IDM_FILE_PREVIOUS, ButtonPrevious, HasPreviousFile());
    EnableCommandAndButton(IDM_VIEW_ZIP, ButtonViewZip, View.FileShown && App.Info.ZipDirOffset != 0);
}

void SetSelectionMenuState(bool hasSelection)
{
    EnableCommandAndButton(IDM_EDIT_COPY, ButtonCopy, hasSelection);
    EnableCommand(IDM_FILE_SAVE_AS, hasSelection);
    if (!hasSelection) {
        View.SelLineA = View.SelLineB = 0;
    }
}
