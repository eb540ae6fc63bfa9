#include "app/window_classes.h"

#include "app/frame_window.h"
#include "buttonbar/bubble.h"
#include "buttonbar/button_bar_window.h"
#include "view/frame_windows.h"
#include "view/ruler_window.h"
#include "view/status_window.h"
#include "view/view_window.h"

namespace {

WNDCLASSA MakeClass(HINSTANCE instance, const char* name, UINT style, WNDPROC procedure)
{
    WNDCLASSA windowClass = {};
    windowClass.style = style;
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = instance;
    windowClass.hCursor = Drawing.ArrowCursor;
    windowClass.lpszClassName = name;
    return windowClass;
}

void RegisterPlain(HINSTANCE instance, const char* name, UINT style, WNDPROC procedure)
{
    const WNDCLASSA windowClass = MakeClass(instance, name, style, procedure);
    RegisterClassA(&windowClass);
}

template <typename Function> Function FindUserFunction(const char* name)
{
    const HMODULE user = GetModuleHandleA("USER32");
    const FARPROC found = user != nullptr ? GetProcAddress(user, name) : nullptr;
    return reinterpret_cast<Function>(reinterpret_cast<void*>(found));
}

// Looked up at run time: a system without small icons still gets the class.
void RegisterClassWithSmallIcon(const WNDCLASSA& plain)
{
    const auto registerClassEx = FindUserFunction<decltype(&RegisterClassExA)>("RegisterClassExA");
    const auto loadImage = FindUserFunction<decltype(&LoadImageA)>("LoadImageA");
    if (registerClassEx == nullptr) {
        RegisterClassA(&plain);
        return;
    }
    WNDCLASSEXA extended = {};
    extended.cbSize = sizeof extended;
    extended.style = plain.style;
    extended.lpfnWndProc = plain.lpfnWndProc;
    extended.hInstance = plain.hInstance;
    extended.hIcon = plain.hIcon;
    extended.hCursor = plain.hCursor;
    extended.hbrBackground = plain.hbrBackground;
    extended.lpszMenuName = plain.lpszMenuName;
    extended.lpszClassName = plain.lpszClassName;
    if (loadImage != nullptr) {
        extended.hIconSm = static_cast<HICON>(loadImage(plain.hInstance, "Small", IMAGE_ICON, 16, 16, 0));
    }
    registerClassEx(&extended);
}

void RegisterFrameClass(HINSTANCE instance)
{
    WNDCLASSA frame = MakeClass(instance, "Kestovar", CS_HREDRAW | CS_VREDRAW, FrameWndProc);
    frame.hIcon = LoadIconA(instance, "Kestovar");
    frame.lpszMenuName = "Kestovar";
    RegisterClassWithSmallIcon(frame);
}

void RegisterButtonClass(HINSTANCE instance)
{
    WNDCLASSA bar = MakeClass(instance, "KstvBt", CS_HREDRAW | CS_VREDRAW, ButtonWndProc);
    bar.hbrBackground = CreateSolidBrush(GetSysColor(COLOR_BTNFACE));
    RegisterClassA(&bar);
}

} // namespace

void RegisterKstvClasses(HINSTANCE instance)
{
    RegisterFrameClass(instance);
    RegisterPlain(instance, "KstvMn", CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS, ViewWndProc);
    RegisterPlain(instance, "KstvRl", CS_HREDRAW | CS_VREDRAW, RulerWndProc);
    RegisterPlain(instance, "KstvSt", CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS, StatusWndProc);
    RegisterButtonClass(instance);
    RegisterPlain(instance, "KstvBb", 0, BubbleWndProc);
    RegisterPlain(instance, "KstvSb", 0, ScrollWndProc);
}
