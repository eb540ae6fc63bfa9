// wait_window TITLE SECONDS
//
// Waits until a top-level window with that title is visible and has nothing left to paint. Exits with
// 0 then, with 1 when the time is up, with 2 when called wrongly.
#include <cstdio>
#include <cstdlib>
#include <windows.h>

namespace {

bool IsPainted(HWND window)
{
    // An answered message means that the window's thread is back in its loop, painting done.
    DWORD_PTR ignored = 0;
    return SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 200, &ignored) != 0 &&
           GetUpdateRect(window, nullptr, FALSE) == FALSE;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        fputs("usage: wait_window TITLE SECONDS\n", stderr);
        return 2;
    }
    constexpr DWORD PollPeriod = 20; // milliseconds
    const DWORD start = GetTickCount();
    const DWORD limit = static_cast<DWORD>(atoi(argv[2])) * 1000;
    while (GetTickCount() - start < limit) {
        const HWND window = FindWindowA(nullptr, argv[1]);
        if (window != nullptr && IsWindowVisible(window) && IsPainted(window)) {
            return 0;
        }
        Sleep(PollPeriod);
    }
    return 1;
}
