// What the program launches in the tests, under any name: records how it was started, and whether it can have the
// file that it was started with for itself. The environment says the rest:
//
//   KESTOVAR_LAUNCH_RECORD  the file that the record is written to, whole or not at all
//   KESTOVAR_LAUNCH_END     an event: it stays, with a window, until somebody sets it
#include <cstdio>
#include <cstdlib>
#include <string>
#include <windows.h>

namespace {

constexpr DWORD LongestStay = 120000; // milliseconds, should nobody end it

std::string Variable(const char* name)
{
    char value[MAX_PATH] = "";
    const DWORD length = GetEnvironmentVariableA(name, value, sizeof value);
    return length < sizeof value ? value : "";
}

std::string OwnPath()
{
    char path[2 * MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, sizeof path);
    return path;
}

std::string CurrentDirectory()
{
    char path[2 * MAX_PATH] = "";
    GetCurrentDirectoryA(sizeof path, path);
    return path;
}

// Whether nobody else holds the last argument open, if that is a file.
const char* StateOfFile()
{
    const char* const path = __argc > 1 ? __argv[__argc - 1] : "";
    if (GetFileAttributesA(path) == INVALID_FILE_ATTRIBUTES) {
        return "none";
    }
    const HANDLE file = CreateFileA(path, GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return "held";
    }
    CloseHandle(file);
    return "free";
}

std::string Describe(HWND window)
{
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    GetStartupInfoA(&startup);
    std::string text;
    const auto add = [&](const char* key, const std::string& value) { text += key + ("=" + value) + "\n"; };
    add("program", OwnPath());
    add("command", GetCommandLineA());
    add("directory", CurrentDirectory());
    add("flags", std::to_string(startup.dwFlags));
    add("show", std::to_string(startup.wShowWindow));
    add("file", StateOfFile());
    add("process", std::to_string(GetCurrentProcessId()));
    add("window", std::to_string(reinterpret_cast<UINT_PTR>(window)));
    return text;
}

bool WriteRecord(const std::string& path, const std::string& text)
{
    if (path.empty()) {
        return false; // no test has started this
    }
    const std::string part = path + ".part";
    FILE* const file = fopen(part.c_str(), "wb");
    if (file == nullptr) {
        return false;
    }
    const bool written = fwrite(text.data(), 1, text.size(), file) == text.size();
    return fclose(file) == 0 && written && MoveFileExA(part.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING);
}

HWND ShowOwnWindow(HINSTANCE instance, int show)
{
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.hInstance = instance;
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    windowClass.lpszClassName = "Launched";
    RegisterClassA(&windowClass);
    const HWND window = CreateWindowExA(0, "Launched", "Launched", WS_OVERLAPPEDWINDOW, 300, 300, 300, 200, nullptr,
                                        nullptr, instance, nullptr);
    ShowWindow(window, show);
    UpdateWindow(window);
    return window;
}

void StayUntil(HANDLE end)
{
    const DWORD start = GetTickCount();
    while (GetTickCount() - start < LongestStay &&
           MsgWaitForMultipleObjects(1, &end, FALSE, LongestStay, QS_ALLINPUT) == WAIT_OBJECT_0 + 1) {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }
}

} // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int show)
{
    const std::string endName = Variable("KESTOVAR_LAUNCH_END");
    const HANDLE end = endName.empty() ? nullptr : OpenEventA(SYNCHRONIZE, FALSE, endName.c_str());
    const HWND window = end != nullptr ? ShowOwnWindow(instance, show) : nullptr;
    if (!WriteRecord(Variable("KESTOVAR_LAUNCH_RECORD"), Describe(window))) {
        return 1;
    }
    if (end != nullptr) {
        StayUntil(end);
        DestroyWindow(window);
        CloseHandle(end);
    }
    return 0;
}
