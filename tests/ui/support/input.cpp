#include "support/input.h"

#include "support/wait.h"

#include <vector>

namespace {

void SendButtons(std::initializer_list<DWORD> events)
{
    std::vector<INPUT> inputs;
    for (const DWORD event : events) {
        INPUT input = {};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = event;
        inputs.push_back(input);
    }
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

INPUT KeyInput(WORD key, DWORD flags)
{
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyA(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = flags;
    return input;
}

} // namespace

bool BringToForeground(HWND window)
{
    return WaitUntil([&] {
        if (GetForegroundWindow() == window) {
            return true;
        }
        SetForegroundWindow(window);
        return false;
    });
}

void PressKeys(std::initializer_list<WORD> keys)
{
    std::vector<INPUT> inputs;
    for (const WORD key : keys) {
        inputs.push_back(KeyInput(key, 0));
    }
    for (auto key = std::rbegin(keys); key != std::rend(keys); ++key) {
        inputs.push_back(KeyInput(*key, KEYEVENTF_KEYUP));
    }
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

bool MovePointer(HWND window, int x, int y)
{
    // A place that the pointer was at before can come in late from the screen: it has to stay.
    constexpr int StableLooks = 12;
    POINT wanted = {x, y};
    ClientToScreen(window, &wanted);
    int looks = 0;
    return WaitUntil([&] {
        POINT now = {};
        GetCursorPos(&now);
        if (now.x == wanted.x && now.y == wanted.y) {
            return ++looks >= StableLooks;
        }
        looks = 0;
        SetCursorPos(wanted.x, wanted.y);
        return false;
    });
}

void PressLeft()
{
    SendButtons({MOUSEEVENTF_LEFTDOWN});
}

void ReleaseLeft()
{
    SendButtons({MOUSEEVENTF_LEFTUP});
}

void DoubleClickLeft()
{
    SendButtons({MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP, MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP});
}

void ClickRight()
{
    SendButtons({MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP});
}

void DoubleClickRight()
{
    SendButtons({MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP, MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP});
}
