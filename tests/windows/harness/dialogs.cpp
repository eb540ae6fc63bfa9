#include "harness/dialogs.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

constexpr UINT LookInterval = 10; // milliseconds
constexpr int MostLooks = 1000;

DialogAnswers* Current;

void CALLBACK OnLook(HWND, UINT, UINT_PTR, DWORD)
{
    if (Current != nullptr) {
        Current->TakeNextStep();
    }
}

// A dialog below another one is disabled.
BOOL CALLBACK NoteWaitingDialog(HWND window, LPARAM found)
{
    char className[20] = "";
    GetClassNameA(window, className, sizeof className);
    if (strcmp(className, "#32770") != 0 || !IsWindowVisible(window) || !IsWindowEnabled(window)) {
        return TRUE;
    }
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

HWND WaitingDialog()
{
    HWND found = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), NoteWaitingDialog, reinterpret_cast<LPARAM>(&found));
    return found;
}

std::string WindowText(HWND window)
{
    char text[1000] = "";
    GetWindowTextA(window, text, sizeof text);
    return text;
}

BOOL CALLBACK NoteBoxPart(HWND child, LPARAM box)
{
    char className[20] = "";
    GetClassNameA(child, className, sizeof className);
    const bool isIcon = (GetWindowLongA(child, GWL_STYLE) & SS_TYPEMASK) == SS_ICON;
    SeenDialog& seen = *reinterpret_cast<SeenDialog*>(box);
    if (_stricmp(className, "Static") != 0) {
        return TRUE;
    }
    if (isIcon) {
        seen.Icon = reinterpret_cast<HICON>(SendMessageA(child, STM_GETICON, 0, 0));
    } else {
        seen.Text = WindowText(child);
    }
    return TRUE;
}

SeenDialog Look(HWND dialog)
{
    SeenDialog seen;
    seen.Caption = WindowText(dialog);
    seen.Owner = GetWindow(dialog, GW_OWNER);
    EnumChildWindows(dialog, NoteBoxPart, reinterpret_cast<LPARAM>(&seen));
    return seen;
}

std::vector<std::string> Texts(HWND dialog, int control, UINT count, UINT length, UINT text)
{
    std::vector<std::string> texts;
    const LRESULT total = SendDlgItemMessageA(dialog, control, count, 0, 0);
    for (LRESULT i = 0; i < total; ++i) {
        const WPARAM index = static_cast<WPARAM>(i);
        const LRESULT bytes = SendDlgItemMessageA(dialog, control, length, index, 0);
        std::string entry(static_cast<std::size_t>(bytes) + 1, '\0');
        SendDlgItemMessageA(dialog, control, text, index, reinterpret_cast<LPARAM>(entry.data()));
        texts.push_back(entry.c_str());
    }
    return texts;
}

} // namespace

DialogAnswers::DialogAnswers()
{
    Current = this;
    Timer = SetTimer(nullptr, 0, LookInterval, OnLook);
}

DialogAnswers::~DialogAnswers()
{
    KillTimer(nullptr, Timer);
    Current = nullptr;
    EXPECT_EQ(Steps.size(), Taken) << "dialogs that were expected";
}

DialogAnswers& DialogAnswers::Then(std::function<void(HWND)> step)
{
    Steps.push_back(std::move(step));
    return *this;
}

DialogAnswers& DialogAnswers::ThenPress(int button)
{
    return Then([button](HWND dialog) { PressButton(dialog, button); });
}

DialogAnswers& DialogAnswers::LeaveAlone(const std::string& caption)
{
    LeftAlone = caption;
    return *this;
}

std::string DialogAnswers::OnlyText() const
{
    EXPECT_EQ(1u, Dialogs.size());
    return Dialogs.empty() ? std::string() : Dialogs.back().Text;
}

// Messages that a step posts are served before the next timer message.
void DialogAnswers::TakeNextStep()
{
    const HWND dialog = WaitingDialog();
    if (dialog == nullptr) {
        if (++Looks == MostLooks && Taken < Steps.size()) {
            ADD_FAILURE() << "no dialog came";
            PostQuitMessage(1);
        }
        return;
    }
    Looks = 0;
    if (!LeftAlone.empty() && WindowText(dialog) == LeftAlone) {
        return;
    }
    Dialogs.push_back(Look(dialog));
    if (Taken < Steps.size()) {
        Steps[Taken++](dialog);
    } else {
        ADD_FAILURE() << "not expected: " << Dialogs.back().Caption << ": " << Dialogs.back().Text;
        EndDialog(dialog, 0);
    }
}

void PressButton(HWND dialog, int button)
{
    PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
}

std::string ControlText(HWND dialog, int control)
{
    return WindowText(GetDlgItem(dialog, control));
}

std::vector<std::string> ListTexts(HWND dialog, int listBox)
{
    return Texts(dialog, listBox, LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT);
}

std::vector<std::string> ComboTexts(HWND dialog, int comboBox)
{
    return Texts(dialog, comboBox, CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT);
}
