#include "support/program.h"

#include "resources/ids.h"
#include "support/message_box.h"
#include "support/wait.h"
#include "support/windows_path.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>

namespace {

constexpr DWORD NoExitCode = 0xFFFFFFFF;

struct FrameSearch {
    DWORD Process;
    HWND Found;
};

BOOL CALLBACK IsTheFrame(HWND window, LPARAM argument)
{
    FrameSearch& search = *reinterpret_cast<FrameSearch*>(argument);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    char name[16] = "";
    if (process == search.Process && GetClassNameA(window, name, sizeof name) != 0 && strcmp(name, "Kestovar") == 0) {
        search.Found = window;
        return FALSE;
    }
    return TRUE;
}

HWND FindFrame(DWORD process)
{
    FrameSearch search{process, nullptr};
    EnumWindows(IsTheFrame, reinterpret_cast<LPARAM>(&search));
    return search.Found;
}

bool AnswersAtAll(HWND window)
{
    constexpr UINT Limit = 200; // milliseconds
    DWORD_PTR ignored = 0;
    return SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_NORMAL, Limit, &ignored) != 0;
}

bool IsPainted(HWND window)
{
    return AnswersAtAll(window) && !GetUpdateRect(window, nullptr, FALSE) &&
           !GetUpdateRect(GetDlgItem(window, ID_CHILD_VIEW), nullptr, FALSE);
}

} // namespace

std::string ProgramPath()
{
    const char* const named = std::getenv("KESTOVAR_PROGRAM");
    return WindowsPath(named != nullptr ? named : KESTOVAR_PROGRAM);
}

Program::Program(const std::string& arguments, WORD showCommand, DWORD flags)
{
    const std::string path = ProgramPath();
    std::string commandLine = "\"" + path + "\"" + (arguments.empty() ? "" : " ") + arguments;
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = flags;
    startup.wShowWindow = showCommand;
    EXPECT_TRUE(CreateProcessA(path.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                               &Process))
        << path << ", error " << GetLastError();
}

Program::~Program()
{
    if (WaitForSingleObject(Process.hProcess, 0) != WAIT_OBJECT_0) {
        TerminateProcess(Process.hProcess, 1);
        WaitForSingleObject(Process.hProcess, DefaultWaitLimit);
    }
    CloseHandle(Process.hThread);
    CloseHandle(Process.hProcess);
}

bool Program::WaitForFrame()
{
    const bool shown = WaitUntil([this] {
        if (WaitForSingleObject(Process.hProcess, 0) == WAIT_OBJECT_0) {
            return true;
        }
        FrameWindow = FindFrame(Process.dwProcessId);
        return FrameWindow != nullptr && IsWindowVisible(FrameWindow) && IsPainted(FrameWindow);
    });
    const bool good = shown && FrameWindow != nullptr && IsWindow(FrameWindow);
    EXPECT_TRUE(good) << (ShowsBox() ? "a message box: " + MessageBoxText(FindMessageBox(Process.dwProcessId))
                                     : std::string("no window"));
    return good;
}

HWND Program::View() const
{
    return GetDlgItem(FrameWindow, ID_CHILD_VIEW);
}

HWND Program::Ruler() const
{
    return GetDlgItem(FrameWindow, ID_CHILD_RULER);
}

HWND Program::Status() const
{
    return GetDlgItem(FrameWindow, ID_CHILD_STATUS);
}

HWND Program::Buttons() const
{
    return GetDlgItem(FrameWindow, ID_CHILD_BUTTONS);
}

std::string Program::Title() const
{
    char title[300] = "";
    DWORD_PTR length = 0;
    SendMessageTimeoutA(FrameWindow, WM_GETTEXT, sizeof title, reinterpret_cast<LPARAM>(title), SMTO_NORMAL,
                        DefaultWaitLimit, &length);
    return title;
}

bool Program::WaitForTitle(const std::string& name) const
{
    const std::string title = name.empty() ? "Kestovar" : "Kestovar-" + name;
    return WaitUntil([&] { return Title() == title || !IsWindow(FrameWindow); }) && Title() == title;
}

LRESULT Program::Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) const
{
    DWORD_PTR result = 0;
    if (SendMessageTimeoutA(window, message, wParam, lParam, SMTO_NORMAL, DefaultWaitLimit, &result) == 0) {
        ADD_FAILURE() << "no answer to message " << message << ", " << wParam;
        TerminateProcess(Process.hProcess, 1); // so that nothing else waits for it
    }
    return static_cast<LRESULT>(result);
}

void Program::Post(UINT message, WPARAM wParam, LPARAM lParam) const
{
    EXPECT_TRUE(PostMessageA(FrameWindow, message, wParam, lParam));
}

bool Program::Answers() const
{
    DWORD_PTR ignored = 0;
    return SendMessageTimeoutA(FrameWindow, WM_NULL, 0, 0, SMTO_NORMAL, DefaultWaitLimit, &ignored) != 0;
}

bool Program::ShowsBox() const
{
    return FindMessageBox(Process.dwProcessId) != nullptr;
}

std::string Program::AnswerBox(int button)
{
    HWND box = nullptr;
    std::string text;
    // The text comes a moment after the window.
    const bool shown = WaitUntil([&] {
        box = FindMessageBox(Process.dwProcessId);
        text = box != nullptr ? MessageBoxText(box) : "";
        return !text.empty();
    });
    EXPECT_TRUE(shown) << "no message box";
    if (shown) {
        PressButton(box, button);
        EXPECT_TRUE(WaitUntil([&] { return !IsWindow(box); })) << "the box stays: " << text;
    }
    return text;
}

DWORD Program::Close()
{
    PostMessageA(FrameWindow, WM_CLOSE, 0, 0);
    return WaitForExit();
}

DWORD Program::WaitForExit()
{
    DWORD code = NoExitCode;
    if (WaitForSingleObject(Process.hProcess, DefaultWaitLimit) != WAIT_OBJECT_0 ||
        !GetExitCodeProcess(Process.hProcess, &code)) {
        ADD_FAILURE() << "the program does not end";
        return NoExitCode;
    }
    return code;
}

Probe& Program::Inside()
{
    if (TheProbe == nullptr) {
        TheProbe = std::make_unique<Probe>(Process.hProcess, Process.dwProcessId);
    }
    return *TheProbe;
}

std::vector<ProbeText> Program::ViewTexts()
{
    std::vector<ProbeText> texts = Inside().Repaint(View());
    std::erase_if(texts, [](const ProbeText& text) { return text.Length == 0; });
    std::stable_sort(texts.begin(), texts.end(), [](const ProbeText& a, const ProbeText& b) { return a.Y < b.Y; });
    return texts;
}

std::string Program::TopText()
{
    const std::vector<ProbeText> texts = ViewTexts();
    return !texts.empty() && texts[0].Y == 0 ? texts[0].Text : "(none)";
}

std::string Program::StatusText()
{
    const std::vector<ProbeText> texts = Inside().Repaint(Status());
    return texts.empty() ? "(none)" : texts[0].Text;
}

SIZE ClientSize(HWND window)
{
    RECT client = {};
    GetClientRect(window, &client);
    return {client.right, client.bottom};
}

RECT PlaceOf(HWND window)
{
    RECT place = {};
    GetWindowRect(window, &place);
    const HWND parent = GetAncestor(window, GA_PARENT);
    if (parent != GetDesktopWindow()) {
        MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
    }
    return place;
}
