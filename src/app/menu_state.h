// Which menu items are enabled.
#pragma once

#include <windows.h>

void EnableCommand(UINT id, bool enabled);
void CheckCommand(UINT id, bool checked);

// Follows the opening and closing of a file; either way there is no selection any more.
void SetFileMenuState(bool fileOpen);

// Follows the selection; without one it is also forgotten.
void SetSelectionMenuState(bool hasSelection);
