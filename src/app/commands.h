// Every command of the program is a row: its id, when it is possible, what it does. Menus, keys and
// private requests all go through DispatchCommand. A command that is not possible does nothing.
#pragma once

#include <span>
#include <windows.h>

enum class CommandNeeds { Nothing, File, Selection };

struct Command {
    UINT Id;
    CommandNeeds Needs; // without it the command is not possible and its menu item grey
    void (*Run)(HWND mainWindow, UINT id);
};

std::span<const Command> Commands();

// Carries command id out; an id that is none of ours goes on to DefWindowProc with the message that
// brought it.
LRESULT DispatchCommand(HWND mainWindow, UINT message, UINT id, LPARAM lParam);
