// Which menu items and buttons are enabled.
#pragma once

#include <windows.h>

// An item of the menu bar, also while the bar is hidden.
void EnableCommand(UINT id, bool enabled);
void CheckCommand(UINT id, bool checked);

// An item and the button of the same command.
void EnableCommandAndButton(UINT id, int button, bool enabled);

// False for a command whose menu item is grey.
bool IsCommandPossible(UINT id);

// Follows the opening and closing of a file; either way there is no selection and no match any more. With a
// file, App.Launch says from then on how it can be launched.
void SetFileMenuState(bool fileOpen, const char* path);

// Follows the choice of an editor.
void ShowLaunchState();

// Follows the file list and the archive.
void SetListMenuState();

// Follows the selection; without one it is also forgotten.
void SetSelectionMenuState(bool hasSelection);

// Follows the last search: only what was found can be found again.
void ShowSearchState();

// Nothing was found yet in this document and mode, so nothing can be found again.
void ForgetSearch();

// Text can be locked only as text.
void EnableLock(bool enabled);
