#include "support/message_box.h"

#include <cstring>

namespace {

struct Search {
    DWORD Process;
    HWND Found;
};

BOOL CALLBACK IsTheBox(HWND window, LPARAM argument)
{
    Search& search = *reinterpret_cast<Search*>(argument);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    char name[16] = "";
    char title[16] = "";
    if (process == search.Process && GetClassNameA(window, name, sizeof name) != 0 && strcmp(name, "#32770") == 0 &&
        IsWindowVisible(window)) {
        GetWindowTextA(window, title, sizeof title);
        if (strcmp(title, "Kestovar") == 0) {
            search.Found = window;
            return FALSE;
        }
    }
    return TRUE;
}

} // namespace

HWND FindMessageBox(DWORD process)
{
    Search search{process, nullptr};
    EnumWindows(IsTheBox, reinterpret_cast<LPARAM>(&search));
    return search.Found;
}

std::string MessageBoxText(HWND box)
{
    constexpr int TextControl = 0xFFFF;
    char text[1024] = "";
    SendMessageTimeoutA(GetDlgItem(box, TextControl), WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text),
                        SMTO_NORMAL, 5000, nullptr);
    return text;
}

void PressButton(HWND box, int button)
{
    PostMessageA(GetDlgItem(box, button), BM_CLICK, 0, 0);
}
