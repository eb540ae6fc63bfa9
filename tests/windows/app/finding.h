// What the tests of finding share: what the windows are told meanwhile, and the user at the dialog.
#pragma once

#include "app/app_state.h"
#include "app/menu_state.h"
#include "app/open_sequence.h"
#include "base/text.h"
#include "buttonbar/buttons.h"
#include "harness/dialogs.h"
#include "harness/picture.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "resources/ids.h"
#include "search/find_state.h"
#include "view/frame_windows.h"
#include "view/lock_region.h"
#include "view/screen_font.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>
#include <windows.h>

// A message that a window of the program was sent, and how things stood when it came.
struct Noted {
    HWND Window;
    UINT Message;
    std::int32_t WParam;
    std::int32_t LParam;
    HCURSOR Cursor;
    bool Busy;
    bool Backwards;
    RECT ToPaint;
};

inline std::vector<Noted> Log;
inline std::map<HWND, WNDPROC> Watched;

inline LRESULT CALLBACK NoteMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const bool isPrivate = message >= WM_USER && message <= WM_USER + 12;
    if (isPrivate || message == WM_PAINT || message == WM_HSCROLL) {
        Noted noted = {};
        noted.Window = window;
        noted.Message = message;
        noted.WParam = static_cast<std::int32_t>(wParam);
        noted.LParam = static_cast<std::int32_t>(lParam);
        noted.Cursor = GetCursor();
        noted.Busy = App.BusyCursor;
        noted.Backwards = Find.Backwards;
        GetUpdateRect(window, &noted.ToPaint, FALSE);
        Log.push_back(noted);
    }
    return CallWindowProcA(Watched[window], window, message, wParam, lParam);
}

// Notes what a window is sent, from an empty log on.
class Watch {
public:
    explicit Watch(std::vector<HWND> windows) : Windows(std::move(windows))
    {
        for (HWND window : Windows) {
            Watched[window] = reinterpret_cast<WNDPROC>(
                SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(NoteMessage)));
        }
        Log.clear();
    }
    ~Watch()
    {
        for (HWND window : Windows) {
            SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Watched[window]));
        }
    }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    // What the main window was sent on finding something, without its base: 0 to 3.
    static std::vector<UINT> SearchMessages()
    {
        std::vector<UINT> messages;
        for (const Noted& noted : Log) {
            if (noted.Window == ::Windows.Main && noted.Message <= WM_USER + 3 && noted.Message >= WM_USER) {
                messages.push_back(noted.Message - WM_USER);
            }
        }
        return messages;
    }

    static const Noted* Last(HWND window, UINT message)
    {
        const Noted* last = nullptr;
        for (const Noted& noted : Log) {
            if (noted.Window == window && noted.Message == message) {
                last = &noted;
            }
        }
        return last;
    }

private:
    std::vector<HWND> Windows;
};

inline constexpr char NotFound[] = "Search string not found";

// Lines of dots, some of them replaced.
inline std::string Lines(int count, const std::map<int, std::string>& replaced, std::size_t length = 20)
{
    std::string content;
    for (int line = 1; line <= count; ++line) {
        const auto found = replaced.find(line);
        content += (found != replaced.end() ? found->second : std::string(length, '.')) + "\n";
    }
    return content;
}

class FindCommand : public RunningProgram {
protected:
    FindCommand()
    {
        Find = FindState{};
        SetWindowPos(Windows.Main, nullptr, 0, 0, 800, 600, SWP_NOZORDER | SWP_NOACTIVATE);
        CopyText(ViewOptions.FontName, "Courier");
        CreateScreenFont(false);
    }

    ~FindCommand() override
    {
        ClearLock();
        CheckCommand(IDM_VIEW_HEX, false);
        CheckCommand(IDM_VIEW_TEXT, true);
        Find = FindState{};
        App.FileReleased = false;
    }

    static void Command(UINT id) { SendMessageA(Windows.Main, WM_COMMAND, id, 0); }

    static void Open(const ScratchFile& file)
    {
        ASSERT_TRUE(OpenSequence(Windows.Main, file.Path()));
        UpdateWindow(Windows.View);
    }

    static void OpenHex(const ScratchFile& file)
    {
        Open(file);
        Command(IDM_VIEW_HEX);
        ASSERT_TRUE(View.HexMode);
        UpdateWindow(Windows.View);
    }

    static void EnterAndPressOk(HWND dialog, const char* text, const char* hex)
    {
        SetDlgItemTextA(dialog, IDC_FIND_TEXT, text);
        SetDlgItemTextA(dialog, IDC_FIND_HEX, hex);
        PressButton(dialog, IDOK);
    }

    // Finds something through the dialog.
    static void LookFor(const char* text, const char* hex = "")
    {
        DialogAnswers answers;
        answers.Then([text, hex](HWND dialog) { EnterAndPressOk(dialog, text, hex); });
        Command(IDM_SEARCH_FIND);
    }

    // The same where nothing is found; returns what is said.
    static std::string LookInVainFor(const char* text, const char* hex = "")
    {
        DialogAnswers answers;
        answers.Then([text, hex](HWND dialog) { EnterAndPressOk(dialog, text, hex); }).ThenPress(IDOK);
        Command(IDM_SEARCH_FIND);
        return answers.Seen().size() == 2 ? answers.Seen()[1].Text : "";
    }

    // Finds it again, which it does.
    static void Repeat(UINT id)
    {
        const DialogAnswers none;
        Command(id);
    }

    static std::string CommandInVain(UINT id)
    {
        DialogAnswers answers;
        answers.ThenPress(IDOK);
        Command(id);
        return answers.OnlyText();
    }

    // What the dialog offers as text and as hex string.
    static std::pair<std::string, std::string> Offered()
    {
        std::pair<std::string, std::string> offered;
        DialogAnswers answers;
        answers.Then([&offered](HWND dialog) {
            offered = {ControlText(dialog, IDC_FIND_TEXT), ControlText(dialog, IDC_FIND_HEX)};
            PressButton(dialog, IDCANCEL);
        });
        Command(IDM_SEARCH_FIND);
        return offered;
    }

    static std::string OfferedText() { return Offered().first; }

    // Selects columns of lines by mouse; all of them are on screen.
    static void Select(int line, int column, int lastLine, int lastColumn)
    {
        SendMessageA(Windows.View, WM_LBUTTONDOWN, MK_LBUTTON, Cell(line, column));
        SendMessageA(Windows.View, WM_MOUSEMOVE, MK_LBUTTON, Cell(lastLine, lastColumn));
        SendMessageA(Windows.View, WM_LBUTTONUP, 0, Cell(lastLine, lastColumn));
    }

    static LPARAM Cell(int line, int column)
    {
        return MAKELPARAM(TextMargin + (column - View.LeftColumn) * View.CharWidth,
                          (line - 1 - View.TopLine) * View.LineHeight + View.LineHeight / 2);
    }

    static void GoToTop(std::int32_t top)
    {
        SendMessageA(Windows.View, WM_SCROLL_VIEW, 99, top);
        ASSERT_EQ(top, View.TopLine);
        UpdateWindow(Windows.View);
    }

    static void Lock(int rows)
    {
        View.LockRows = rows;
        LayOutFrameAnew();
        RedrawWindow(Windows.View, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    }

    static void ExpectFound(std::int32_t line, std::int32_t column)
    {
        EXPECT_TRUE(Find.FindSucceeded);
        EXPECT_EQ(line, Find.FoundLine);
        EXPECT_EQ(column, Find.FoundCol);
    }

    static bool CanRepeat()
    {
        const bool next = IsCommandPossible(IDM_SEARCH_FIND_NEXT);
        EXPECT_EQ(next, IsCommandPossible(IDM_SEARCH_FIND_PREVIOUS));
        EXPECT_EQ(next, ButtonTable[7].Enabled);
        return next;
    }

    static Picture ViewPicture()
    {
        UpdateWindow(Windows.View);
        return PictureOf(Windows.View, {0, 0, View.ClientWidth, View.ClientHeight});
    }

    static Picture RowPicture(int row)
    {
        UpdateWindow(Windows.View);
        return PictureOf(Windows.View, {0, row * View.LineHeight, View.ClientWidth, (row + 1) * View.LineHeight});
    }
};
