#include "support/find_dialog.h"

#include "resources/ids.h"
#include "support/dialogs.h"
#include "support/file_list.h"
#include "support/input.h"
#include "support/wait.h"

#include <cwchar>
#include <gtest/gtest.h>

const char FindTitle[] = "Find";
const char GotoTitle[] = "Goto";

namespace {

LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
{
    DWORD_PTR result = 0;
    EXPECT_NE(SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, DefaultWaitLimit, &result), 0)
        << "no answer to message " << message;
    return static_cast<LRESULT>(result);
}

} // namespace

bool WaitForKeyboard(const Program& program)
{
    return BringToForeground(program.Frame()) && WaitUntil([&] {
               GUITHREADINFO info = {};
               info.cbSize = sizeof info;
               return GetGUIThreadInfo(GetWindowThreadProcessId(program.Frame(), nullptr), &info) &&
                      info.hwndActive == program.Frame() && info.hwndFocus != nullptr &&
                      IsWindowEnabled(program.Frame()) && program.Answers() && GetForegroundWindow() == program.Frame();
           });
}

HWND ShowFind(const Program& program)
{
    EXPECT_TRUE(WaitForKeyboard(program));
    PressKeys({VK_CONTROL, 'F'});
    return WaitForDialog(program, FindTitle);
}

HWND ShowGoto(const Program& program)
{
    EXPECT_TRUE(WaitForKeyboard(program));
    EXPECT_TRUE(OpenMenu(program, 'S'));
    PressKeys({'G'});
    return WaitForDialog(program, GotoTitle);
}

void Accept(const Program& program, HWND dialog)
{
    PressKeys({VK_RETURN});
    EXPECT_TRUE(WaitUntilClosed(dialog));
    EXPECT_TRUE(program.Answers());
}

void EraseText(HWND dialog, int control)
{
    ClickControl(dialog, control);
    EXPECT_TRUE(WaitUntil([&] { return IsTypedInto(dialog, control); }));
    PressKeys({VK_END});
    for (std::size_t left = ControlText(dialog, control).size(); left > 0; --left) {
        PressKeys({VK_BACK});
    }
    ExpectText(dialog, control, "");
}

void EnterText(HWND dialog, const std::string& text)
{
    EraseText(dialog, IDC_FIND_TEXT);
    TypeText(text);
    ExpectText(dialog, IDC_FIND_TEXT, text);
}

void ChangeSwitch(HWND dialog, int control)
{
    const bool toggles = control == IDC_FIND_CASE || control == IDC_FIND_SCROLL;
    const bool checked = !(toggles && IsChecked(dialog, control));
    ClickControl(dialog, control);
    ExpectChecked(dialog, control, checked);
}

void FindText(const Program& program, const std::string& text)
{
    const HWND dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    EnterText(dialog, text);
    Accept(program, dialog);
}

void FindHex(const Program& program, const std::string& digits)
{
    const HWND dialog = ShowFind(program);
    ASSERT_NE(dialog, nullptr);
    PressKeys({VK_TAB});
    TypeText(digits);
    ExpectText(dialog, IDC_FIND_HEX, digits);
    Accept(program, dialog);
}

bool SaysNotFound(Program& program)
{
    return program.AnswerBox() == "Search string not found" && WaitForKeyboard(program);
}

bool FindsNothing(Program& program, const std::string& text)
{
    FindText(program, text);
    return SaysNotFound(program);
}

bool IsEnabled(HWND dialog, int control)
{
    return IsWindowEnabled(GetDlgItem(dialog, control)) != FALSE;
}

bool IsChecked(HWND dialog, int control)
{
    return Ask(GetDlgItem(dialog, control), BM_GETCHECK) == BST_CHECKED;
}

void ExpectText(HWND dialog, int control, const std::string& text)
{
    EXPECT_TRUE(WaitUntil([&] { return ControlText(dialog, control) == text; }))
        << control << ": \"" << ControlText(dialog, control) << "\", not \"" << text << '"';
}

void ExpectEnabled(HWND dialog, int control, bool enabled)
{
    EXPECT_TRUE(WaitUntil([&] { return IsEnabled(dialog, control) == enabled; })) << control << ": " << !enabled;
}

void ExpectChecked(HWND dialog, int control, bool checked)
{
    EXPECT_TRUE(WaitUntil([&] { return IsChecked(dialog, control) == checked; })) << control << ": " << !checked;
}

bool IsTypedInto(HWND dialog, int combo)
{
    const HWND focus = FocusOf(dialog);
    return focus == GetDlgItem(dialog, combo) || GetParent(focus) == GetDlgItem(dialog, combo);
}

std::vector<std::string> ComboTexts(HWND dialog, int combo)
{
    std::vector<std::string> texts;
    const HWND window = GetDlgItem(dialog, combo);
    const LRESULT count = Ask(window, CB_GETCOUNT);
    for (LRESULT i = 0; i < count; ++i) {
        wchar_t text[100] = L"";
        Ask(window, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
        texts.emplace_back(text, text + wcslen(text)); // the tests enter nothing but ASCII
    }
    return texts;
}

void ClickControl(HWND dialog, int control)
{
    const HWND window = GetDlgItem(dialog, control);
    const RECT place = PlaceOf(window);
    EXPECT_TRUE(MovePointer(window, (place.right - place.left) / 2, (place.bottom - place.top) / 2));
    PressLeft();
    ReleaseLeft();
}
