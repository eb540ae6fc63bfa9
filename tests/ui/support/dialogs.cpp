#include "support/dialogs.h"

#include "support/input.h"
#include "support/wait.h"

#include <cstring>
#include <gtest/gtest.h>

namespace {

struct Search {
    DWORD Process;
    std::string Title;
    HWND Found;
};

std::wstring ToWide(const std::string& text)
{
    std::wstring wide(text.size(), L'\0');
    wide.resize(static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()),
                                                             wide.data(), static_cast<int>(wide.size()))));
    return wide;
}

std::string ToAnsi(const std::wstring& text)
{
    constexpr std::size_t MostBytes = 4; // of a character
    std::string narrow(text.size() * MostBytes, '\0');
    narrow.resize(static_cast<std::size_t>(WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()),
                                                               narrow.data(), static_cast<int>(narrow.size()), nullptr,
                                                               nullptr)));
    return narrow;
}

// Texts cross from process to process in Unicode only.
LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
{
    DWORD_PTR result = 0;
    if (SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, DefaultWaitLimit, &result) == 0) {
        ADD_FAILURE() << "no answer to message " << message << ", " << wParam;
    }
    return static_cast<LRESULT>(result);
}

std::string WindowText(HWND window)
{
    wchar_t text[1024] = L"";
    Ask(window, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
    return ToAnsi(text);
}

BOOL CALLBACK IsTheDialog(HWND window, LPARAM argument)
{
    Search& search = *reinterpret_cast<Search*>(argument);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    char name[16] = "";
    if (process == search.Process && GetClassNameA(window, name, sizeof name) != 0 && strcmp(name, "#32770") == 0 &&
        IsWindowVisible(window)) {
        wchar_t title[100] = L"";
        GetWindowTextW(window, title, std::size(title)); // kept by the system: no message is sent for it
        if (ToAnsi(title) == search.Title) {
            search.Found = window;
            return FALSE;
        }
    }
    return TRUE;
}

GUITHREADINFO ThreadOf(HWND window)
{
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
    return info;
}

void PressCharacter(wchar_t character)
{
    // One that needs Shift goes as itself: the state of the screen's own keyboard can come in between the two.
    const SHORT key = VkKeyScanW(character);
    if (key != -1 && HIBYTE(key) == 0) {
        PressKeys({LOBYTE(key)});
        return;
    }
    INPUT inputs[2] = {};
    for (INPUT& input : inputs) {
        input.type = INPUT_KEYBOARD;
        input.ki.wScan = character;
        input.ki.dwFlags = KEYEVENTF_UNICODE;
    }
    inputs[1].ki.dwFlags |= KEYEVENTF_KEYUP;
    SendInput(2, inputs, sizeof(INPUT));
}

struct HelpBoxSearch {
    DWORD Program;
    HWND Found;
};

BOOL CALLBACK IsBoxOfTheHelp(HWND window, LPARAM argument)
{
    HelpBoxSearch& search = *reinterpret_cast<HelpBoxSearch*>(argument);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    char name[16] = "";
    GetClassNameA(window, name, sizeof name);
    if (process != search.Program && std::string(name) == "#32770" && IsWindowVisible(window)) {
        search.Found = window;
    }
    return search.Found == nullptr;
}

} // namespace

HWND FindDialog(const Program& program, const std::string& title)
{
    Search search{0, title, nullptr};
    GetWindowThreadProcessId(program.Frame(), &search.Process);
    EnumWindows(IsTheDialog, reinterpret_cast<LPARAM>(&search));
    return search.Found;
}

HWND WaitForDialog(const Program& program, const std::string& title)
{
    HWND dialog = nullptr;
    const bool shown = WaitUntil([&] {
        dialog = FindDialog(program, title);
        DWORD_PTR ignored = 0;
        return dialog != nullptr && ThreadOf(dialog).hwndActive == dialog &&
               SendMessageTimeoutW(dialog, WM_NULL, 0, 0, SMTO_NORMAL, DefaultWaitLimit, &ignored) != 0;
    });
    EXPECT_TRUE(shown) << "no dialog \"" << title << "\"";
    // The display may have taken the keyboard away for a moment; a person would click.
    return shown && BringToForeground(dialog) ? dialog : nullptr;
}

HWND WaitForBoxOver(HWND dialog)
{
    HWND box = nullptr;
    const bool shown = WaitUntil([&] {
        box = ThreadOf(dialog).hwndActive;
        return !IsWindowEnabled(dialog) && box != dialog && GetWindow(box, GW_OWNER) == dialog && IsWindowVisible(box);
    });
    EXPECT_TRUE(shown) << "no box over the dialog";
    return shown ? box : nullptr;
}

void AnswerMissingHelp(const Program& program)
{
    HelpBoxSearch search = {};
    GetWindowThreadProcessId(program.Frame(), &search.Program);
    ASSERT_TRUE(WaitUntil([&] {
        search.Found = nullptr;
        EnumWindows(IsBoxOfTheHelp, reinterpret_cast<LPARAM>(&search));
        return search.Found != nullptr;
    })) << "no question of the system's help";
    // Whether the question is one of yes and no or has but one button.
    EXPECT_TRUE(WaitUntil([&] {
        PostMessageA(search.Found, WM_COMMAND, IDNO, 0);
        PostMessageA(search.Found, WM_COMMAND, IDOK, 0);
        return !IsWindow(search.Found);
    }));
}

bool WaitUntilClosed(HWND dialog)
{
    const bool closed = WaitUntil([&] { return !IsWindow(dialog); });
    EXPECT_TRUE(closed) << "the dialog stays";
    return closed;
}

std::string ControlText(HWND dialog, int control)
{
    return WindowText(GetDlgItem(dialog, control));
}

void SetControlText(HWND dialog, int control, const std::string& text)
{
    const std::wstring wide = ToWide(text);
    Ask(GetDlgItem(dialog, control), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(wide.c_str()));
}

std::vector<std::string> ListTexts(HWND dialog, int control)
{
    std::vector<std::string> texts;
    const HWND list = GetDlgItem(dialog, control);
    const LRESULT count = Ask(list, LB_GETCOUNT);
    for (LRESULT i = 0; i < count; ++i) {
        wchar_t text[300] = L"";
        if (Ask(list, LB_GETTEXTLEN, static_cast<WPARAM>(i)) < static_cast<LRESULT>(std::size(text))) {
            Ask(list, LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
        }
        texts.push_back(ToAnsi(text));
    }
    return texts;
}

int ListSelection(HWND dialog, int control)
{
    return static_cast<int>(Ask(GetDlgItem(dialog, control), LB_GETCURSEL));
}

int ListTop(HWND dialog, int control)
{
    return static_cast<int>(Ask(GetDlgItem(dialog, control), LB_GETTOPINDEX));
}

void PressControl(HWND dialog, int control)
{
    EXPECT_TRUE(PostMessageA(GetDlgItem(dialog, control), BM_CLICK, 0, 0));
}

void DoubleClickEntry(HWND dialog, int control, int entry)
{
    const HWND list = GetDlgItem(dialog, control);
    RECT place = {};
    Ask(list, LB_GETITEMRECT, static_cast<WPARAM>(entry), reinterpret_cast<LPARAM>(&place));
    EXPECT_TRUE(BringToForeground(dialog));
    EXPECT_TRUE(MovePointer(list, (place.left + place.right) / 2, (place.top + place.bottom) / 2));
    DoubleClickLeft();
}

HWND FocusOf(HWND dialog)
{
    return ThreadOf(dialog).hwndFocus;
}

std::vector<DialogControl> ControlsOf(HWND dialog)
{
    std::vector<DialogControl> controls;
    for (HWND window = GetWindow(dialog, GW_CHILD); window != nullptr; window = GetWindow(window, GW_HWNDNEXT)) {
        char name[20] = "";
        char text[300] = "";
        GetClassNameA(window, name, sizeof name);
        DWORD_PTR length = 0;
        SendMessageTimeoutA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text), SMTO_NORMAL,
                            DefaultWaitLimit, &length);
        controls.push_back({window, name, text});
    }
    return controls;
}

SIZE ExtentOf(const std::string& text, UINT format, int width)
{
    const HDC screen = GetDC(nullptr);
    const HFONT font = CreateFontA(-MulDiv(8, GetDeviceCaps(screen, LOGPIXELSY), 72), 0, 0, 0, FW_NORMAL, 0, 0, 0,
                                   DEFAULT_CHARSET, 0, 0, 0, 0, "MS Sans Serif");
    const HGDIOBJ former = SelectObject(screen, font);
    RECT extent = {0, 0, width, 0};
    DrawTextA(screen, text.c_str(), -1, &extent, DT_CALCRECT | format);
    SelectObject(screen, former);
    DeleteObject(font);
    ReleaseDC(nullptr, screen);
    return {extent.right, extent.bottom};
}

int ExpectTextsFit(HWND dialog)
{
    constexpr int ButtonEdges = 8; // both of them
    constexpr int BoxWidth = 18;   // of a check box or radio button, with what follows it
    constexpr int GroupEdges = 24;
    int count = 0;
    for (const DialogControl& control : ControlsOf(dialog)) {
        const LONG style = GetWindowLongA(control.Window, GWL_STYLE);
        const bool icon = control.Class == "Static" && (style & SS_TYPEMASK) == SS_ICON; // its text is its name
        if (control.Text.empty() || icon) {
            continue;
        }
        ++count;
        const SIZE place = ClientSize(control.Window);
        if (control.Class == "Static") {
            const UINT prefix = (style & SS_NOPREFIX) == 0 ? 0 : DT_NOPREFIX;
            const SIZE needed = ExtentOf(control.Text, DT_WORDBREAK | prefix, place.cx);
            EXPECT_LE(needed.cx, place.cx) << control.Text;
            EXPECT_LE(needed.cy, place.cy) << control.Text;
        } else if (control.Class == "Button") {
            const LONG kind = style & BS_TYPEMASK;
            const bool pushed = kind == BS_PUSHBUTTON || kind == BS_DEFPUSHBUTTON;
            const int edges = pushed ? ButtonEdges : kind == BS_GROUPBOX ? GroupEdges : BoxWidth;
            EXPECT_LE(ExtentOf(control.Text).cx + edges, place.cx) << control.Text;
        }
    }
    return count;
}

void TypeText(const std::string& text)
{
    for (const wchar_t character : ToWide(text)) {
        PressCharacter(character);
    }
}
