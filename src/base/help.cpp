#include "base/help.h"

HelpState Help;

void ShowHelp(HWND window, UINT command, ULONG_PTR topic)
{
    Help.Used = true;
    WinHelpA(window, Help.Path, command, topic);
}

void CloseHelp(HWND window)
{
    if (Help.Used) {
        WinHelpA(window, Help.Path, HELP_QUIT, 0);
    }
}
