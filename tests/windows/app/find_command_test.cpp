// Finding: what the dialog offers, where the search starts, what the windows are told, and how the match is shown.
#include "app/find_command.h"

#include "app/app_state.h"
#include "app/menu_state.h"
#include "app/open_sequence.h"
#include "base/text.h"
#include "buttonbar/buttons.h"
#include "document/document_state.h"
#include "harness/dialogs.h"
#include "harness/picture.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "harness/system_calls.h"
#include "resources/ids.h"
#include "search/find_state.h"
#include "view/frame_windows.h"
#include "view/lock_region.h"
#include "view/screen_font.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <vector>

namespace {

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

std::vector<Noted> Log;
std::map<HWND, WNDPROC> Watched;

LRESULT CALLBACK NoteMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
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

using Messages = std::vector<UINT>;

constexpr char NotFound[] = "Search string not found";

// Lines of dots, some of them replaced.
std::string Lines(int count, const std::map<int, std::string>& replaced, std::size_t length = 20)
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
        App.ClosedOnIconize = false;
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

} // namespace

TEST_F(FindCommand, OffersTheTextLookedForLast)
{
    const ScratchFile file("find.txt", Lines(50, {{20, "alpha beta"}}));
    Open(file);
    EXPECT_EQ("", OfferedText());
    LookFor("beta");
    EXPECT_EQ("beta", OfferedText());
    EXPECT_EQ(NotFound, LookInVainFor("gamma"));
    EXPECT_EQ("gamma", OfferedText());
    Select(20, 0, 20, 5);
    EXPECT_EQ("alpha", OfferedText());
    Select(20, 0, 20, 0);
    EXPECT_EQ("gamma", OfferedText()) << "nothing was looked for in between";
}

TEST_F(FindCommand, OffersTheBytesLookedForLast)
{
    const ScratchFile file("find.txt", Lines(50, {{20, "alpha beta"}}));
    Open(file);
    LookFor("", "2E2E");
    EXPECT_EQ((std::pair<std::string, std::string>("", "2E2E")), Offered());
}

TEST_F(FindCommand, OffersTheSelectedTextAndEmptiesTheHexString)
{
    const ScratchFile file("find.txt", Lines(50, {{3, "alpha beta gamma"}}));
    Open(file);
    LookFor("", "2E2E");
    Select(3, 6, 3, 10);
    ASSERT_NE(0, View.SelLineB);
    EXPECT_EQ((std::pair<std::string, std::string>("beta", "")), Offered());
    Select(3, 11, 3, 6); // towards the left
    EXPECT_EQ("beta ", OfferedText());
}

TEST_F(FindCommand, CancellingBringsTheHexStringBackThatASelectionEmptied)
{
    const ScratchFile file("find.txt", Lines(50, {{3, "alpha beta gamma"}}));
    Open(file);
    LookFor("", "2E2E");
    Select(3, 6, 3, 10);
    Offered();
    EXPECT_STREQ("2E2E", Find.FindHex);
    EXPECT_STREQ("", Find.LastFindText);
}

TEST_F(FindCommand, ASelectedTextIsCutAt29Characters)
{
    const std::string digits = "0123456789012345678901234567890123456789";
    const ScratchFile file("find.txt", digits + "\n");
    Open(file);
    Select(1, 1, 1, 40);
    EXPECT_EQ(digits.substr(1, 29), OfferedText());
}

TEST_F(FindCommand, ASelectionOverTwoLinesIsNotOffered)
{
    const ScratchFile file("find.txt", Lines(50, {{3, "alpha beta gamma"}}));
    Open(file);
    LookFor("gamma");
    Select(3, 6, 4, 10);
    EXPECT_EQ("gamma", OfferedText());
}

TEST_F(FindCommand, ASelectionInHexModeIsNotOffered)
{
    const ScratchFile file("find.txt", Lines(50, {{3, "alpha beta gamma"}}));
    OpenHex(file);
    LookFor("gamma");
    View.SelLineA = View.SelLineB = 1;
    EXPECT_EQ("gamma", OfferedText());
}

TEST_F(FindCommand, ASelectedTextIsOfferedAsItIsDisplayed)
{
    DocumentOptions.Ptabs = 1;
    DocumentOptions.TabSize = 4;
    const ScratchFile file("find.txt", "\tb c\n");
    Open(file);
    Select(1, 0, 1, 5);
    EXPECT_EQ("    b", OfferedText());
}

TEST_F(FindCommand, ASelectedEbcdicTextIsOfferedTranslatedAndFound)
{
    const ScratchFile file("find.txt", "\xC4\xC5\xC6\n\xC1\xC2\xC3\xC1\n");
    Open(file);
    ViewOptions.EbcdicToAscii = true;
    Select(2, 0, 2, 3);
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        EXPECT_EQ("ABC", ControlText(dialog, IDC_FIND_TEXT));
        PressButton(dialog, IDOK);
    });
    Command(IDM_SEARCH_FIND);
    ExpectFound(2, 0);
}

TEST_F(FindCommand, CancelEndsIt)
{
    const ScratchFile file("find.txt", Lines(50, {{20, "alpha beta"}, {30, "gamma"}}));
    Open(file);
    LookFor("beta");
    Select(3, 6, 3, 10);
    const Watch watch({Windows.Main});
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        SetDlgItemTextA(dialog, IDC_FIND_TEXT, "gamma");
        PressButton(dialog, IDCANCEL);
    });
    Command(IDM_SEARCH_FIND);
    EXPECT_EQ(Messages{}, Watch::SearchMessages());
    EXPECT_STREQ("beta", Find.LastFindText);
    EXPECT_EQ(3, View.SelLineB) << "the selection stays";
    ExpectFound(20, 6);
}

TEST_F(FindCommand, WithoutAFileNothingIsAsked)
{
    const DialogAnswers none;
    Command(IDM_SEARCH_FIND);
    Command(IDM_SEARCH_FIND_NEXT);
    Command(IDM_SEARCH_FIND_PREVIOUS);
    EXPECT_TRUE(none.Seen().empty());
}

TEST_F(FindCommand, TheEntireScopeStartsAtTheFirstLineForwardsAndAtTheLastOneBackwards)
{
    const ScratchFile file("find.txt", Lines(300, {{1, "word word"}, {150, "word"}, {300, "word word"}}));
    Open(file);
    GoToTop(100);
    LookFor("word");
    ExpectFound(1, 0);
    Find.Backwards = true;
    LookFor("word");
    ExpectFound(300, 5);
}

TEST_F(FindCommand, TheEntireScopeStartsBelowTheLineAboveTheHeadings)
{
    const ScratchFile file("find.txt", Lines(300, {{2, "word"}, {3, "word"}}));
    Open(file);
    View.LockTopLine = 2;
    LookFor("word");
    ExpectFound(3, 0);
}

TEST_F(FindCommand, TheCurrentPositionIsTheFirstLineOnScreenForwardsAndTheLastOneBackwards)
{
    std::map<int, std::string> words;
    for (int line = 1; line <= 300; ++line) {
        words[line] = "word " + std::to_string(line) + " word";
    }
    const ScratchFile file("find.txt", Lines(300, words));
    Open(file);
    Find.FromCurrent = true;
    GoToTop(100);
    LookFor("word");
    ExpectFound(101, 0);
    Find.Backwards = true;
    ASSERT_EQ(100, View.TopLine);
    LookFor("word");
    ExpectFound(100 + RowsOnScreen(), 9);
    const ScratchFile small("small.txt", Lines(3, words));
    Open(small);
    LookFor("word");
    ExpectFound(3, 7);
}

TEST_F(FindCommand, InHexModeTheStartIsARowAndAByteOfIt)
{
    // 16 bytes a row: "0123456789ABCDEF" and a last row of 5.
    std::string content;
    for (int row = 0; row < 200; ++row) {
        content += "0123456789ABCDEF";
    }
    const ScratchFile file("find.bin", content + "01234");
    OpenHex(file);
    LookFor("0");
    ExpectFound(1, 0);
    Find.Backwards = true;
    LookFor("4");
    ExpectFound(201, 4);
    Find.FromCurrent = true;
    GoToTop(50);
    LookFor("E");
    ExpectFound(50 + RowsOnScreen(), 14);
    ASSERT_EQ(50, View.TopLine);
    Find.Backwards = false;
    LookFor("", "33");
    ExpectFound(51, 3);
}

TEST_F(FindCommand, TheFirstSearchTellsTheMainWindowOfItsBeginningItsMatchAndItsEnd)
{
    const ScratchFile file("find.txt", Lines(50, {{20, "alpha beta"}, {30, "beta"}}));
    Open(file);
    const Watch watch({Windows.Main});
    LookFor("beta");
    EXPECT_EQ((Messages{0, 2, 1}), Watch::SearchMessages());
    const Noted* const shown = Watch::Last(Windows.Main, WM_USER + 2);
    ASSERT_NE(nullptr, shown);
    EXPECT_EQ(6, shown->WParam);
    EXPECT_EQ(20, shown->LParam);
}

TEST_F(FindCommand, TheNextSearchHasTheMatchBeforeRemovedFirst)
{
    const ScratchFile file("find.txt", Lines(50, {{20, "alpha beta"}, {30, "beta"}}));
    Open(file);
    LookFor("beta");
    const Watch watch({Windows.Main});
    Repeat(IDM_SEARCH_FIND_NEXT);
    EXPECT_EQ((Messages{0, 3, 2, 1}), Watch::SearchMessages());
    const Noted* const removed = Watch::Last(Windows.Main, WM_USER + 3);
    const Noted* const shown = Watch::Last(Windows.Main, WM_USER + 2);
    ASSERT_TRUE(removed != nullptr && shown != nullptr);
    EXPECT_EQ(6, removed->WParam);
    EXPECT_EQ(20, removed->LParam);
    EXPECT_EQ(0, shown->WParam);
    EXPECT_EQ(30, shown->LParam);
}

TEST_F(FindCommand, WhatIsNotFoundIsNotShownButTheMatchBeforeIsRemoved)
{
    const ScratchFile file("find.txt", Lines(50, {{20, "alpha beta"}}));
    Open(file);
    const Watch watch({Windows.Main});
    LookInVainFor("gamma");
    EXPECT_EQ((Messages{0, 1}), Watch::SearchMessages());
    LookFor("beta");
    Log.clear();
    LookInVainFor("gamma");
    EXPECT_EQ((Messages{0, 3, 1}), Watch::SearchMessages());
    EXPECT_EQ(0, View.HiliteLine);
    EXPECT_EQ(0, View.HiliteLen);
}

TEST_F(FindCommand, TheWaitCursorStandsWhileItSearchesAndTheArrowAfterwards)
{
    const ScratchFile file("find.txt", Lines(50, {{20, "alpha beta"}}));
    Open(file);
    const Watch watch({Windows.Main});
    LookFor("beta");
    const Noted* const shown = Watch::Last(Windows.Main, WM_USER + 2);
    ASSERT_NE(nullptr, shown);
    EXPECT_EQ(Drawing.WaitCursor, shown->Cursor);
    EXPECT_TRUE(shown->Busy);
    EXPECT_EQ(Drawing.ArrowCursor, GetCursor());
    EXPECT_FALSE(App.BusyCursor);
    DialogAnswers answers;
    answers.Then([](HWND box) {
        EXPECT_FALSE(App.BusyCursor) << "the user is not kept waiting before the box";
        PressButton(box, IDOK);
    });
    Command(IDM_SEARCH_FIND_NEXT);
    const Noted* const removed = Watch::Last(Windows.Main, WM_USER + 3);
    ASSERT_NE(nullptr, removed);
    EXPECT_TRUE(removed->Busy);
}

TEST_F(FindCommand, AMatchCanBeRepeated)
{
    const ScratchFile file("find.txt", Lines(50, {{20, "alpha beta"}}));
    Open(file);
    EXPECT_FALSE(CanRepeat());
    LookFor("beta");
    EXPECT_TRUE(Find.FindSucceeded);
    EXPECT_TRUE(CanRepeat());
}

TEST_F(FindCommand, WhatIsNotFoundIsReportedAndCannotBeRepeated)
{
    const ScratchFile file("find.txt", Lines(50, {{20, "alpha beta"}}));
    Open(file);
    LookFor("beta");
    DialogAnswers answers;
    answers.Then([](HWND dialog) { EnterAndPressOk(dialog, "gamma", ""); }).Then([](HWND box) {
        EXPECT_FALSE(CanRepeat()) << "already behind the box";
        PressButton(box, IDOK);
    });
    Command(IDM_SEARCH_FIND);
    ASSERT_EQ(2u, answers.Seen().size());
    EXPECT_EQ("Kestovar", answers.Seen()[1].Caption);
    EXPECT_EQ(NotFound, answers.Seen()[1].Text);
    EXPECT_EQ(Windows.Main, answers.Seen()[1].Owner);
    EXPECT_EQ(0, Find.FoundLine);
    EXPECT_FALSE(Find.FindSucceeded);
    EXPECT_FALSE(CanRepeat());
}

TEST_F(FindCommand, NothingIsFoundInAnEmptyFile)
{
    const ScratchFile file("empty.txt", "");
    Open(file);
    for (const bool backwards : {false, true}) {
        Find.Backwards = backwards;
        EXPECT_EQ(NotFound, LookInVainFor("a"));
    }
    Command(IDM_VIEW_HEX);
    for (const bool backwards : {false, true}) {
        Find.Backwards = backwards;
        EXPECT_EQ(NotFound, LookInVainFor("a"));
    }
}

TEST_F(FindCommand, NothingIsFoundWhenTheDocumentHasGoneWhileTheDialogWasOpen)
{
    const ScratchFile file("find.txt", Lines(50, {{20, "alpha beta"}}));
    for (const bool hex : {false, true}) {
        for (const bool backwards : {false, true}) {
            for (const bool fromCurrent : {false, true}) {
                Open(file);
                Command(hex ? IDM_VIEW_HEX : IDM_VIEW_TEXT);
                Find.Backwards = backwards;
                Find.FromCurrent = fromCurrent;
                DialogAnswers answers;
                answers
                    .Then([](HWND dialog) {
                        Command(IDM_INTERNAL_CLOSE);
                        EnterAndPressOk(dialog, "beta", "");
                    })
                    .ThenPress(IDOK);
                Command(IDM_SEARCH_FIND);
                EXPECT_EQ(NotFound, answers.Seen().back().Text);
                EXPECT_FALSE(CanRepeat());
            }
        }
    }
}

TEST_F(FindCommand, TheStatusLineIsRefreshedAfterwards)
{
    const ScratchFile file("find.txt", Lines(50, {{20, "alpha beta"}}));
    Open(file);
    const Watch watch({Windows.Main, Windows.Status});
    LookFor("beta");
    ASSERT_FALSE(Log.empty());
    EXPECT_EQ(Windows.Status, Log.back().Window);
    EXPECT_EQ(WM_USER + 4, Log.back().Message);
    Log.clear();
    LookInVainFor("gamma");
    EXPECT_EQ(Windows.Status, Log.back().Window);
    EXPECT_EQ(WM_USER + 4, Log.back().Message);
}

TEST_F(FindCommand, FindNextGoesOnOneCharacterBehindTheMatch)
{
    const ScratchFile file("find.txt", Lines(50, {{20, "aaaa"}, {30, "x a aa"}}));
    Open(file);
    LookFor("aa");
    ExpectFound(20, 0);
    Repeat(IDM_SEARCH_FIND_NEXT);
    ExpectFound(20, 1);
    Repeat(IDM_SEARCH_FIND_NEXT);
    ExpectFound(20, 2);
    Repeat(IDM_SEARCH_FIND_NEXT);
    ExpectFound(30, 4);
    EXPECT_EQ(NotFound, CommandInVain(IDM_SEARCH_FIND_NEXT));
    EXPECT_FALSE(CanRepeat());
}

TEST_F(FindCommand, FindPreviousFindsTheMatchBeforeAndNotTheSameOne)
{
    const ScratchFile file("find.txt", Lines(50, {{20, "aaaa"}, {30, "x aaa"}}));
    Open(file);
    Find.Backwards = true;
    LookFor("aa");
    Find.Backwards = false;
    ExpectFound(30, 3);
    const std::int32_t expected[][2] = {{30, 2}, {20, 2}, {20, 1}, {20, 0}};
    for (const auto& place : expected) {
        Repeat(IDM_SEARCH_FIND_PREVIOUS);
        ExpectFound(place[0], place[1]);
    }
    EXPECT_EQ(NotFound, CommandInVain(IDM_SEARCH_FIND_PREVIOUS));
    EXPECT_FALSE(CanRepeat());
}

TEST_F(FindCommand, FindNextAndPreviousWalkOverTheBytesOfADump)
{
    std::string content(700, '.');
    content.replace(14, 4, "abcd");  // over two rows
    content.replace(510, 4, "abcd"); // over two windows
    content.replace(696, 4, "abcd");
    const ScratchFile file("find.bin", content);
    OpenHex(file);
    LookFor("", "61626364");
    ExpectFound(1, 14);
    EXPECT_EQ(4, Find.FoundLen);
    Repeat(IDM_SEARCH_FIND_NEXT);
    ExpectFound(32, 14);
    Repeat(IDM_SEARCH_FIND_NEXT);
    ExpectFound(44, 8);
    Repeat(IDM_SEARCH_FIND_PREVIOUS);
    ExpectFound(32, 14);
    Repeat(IDM_SEARCH_FIND_PREVIOUS);
    ExpectFound(1, 14);
    EXPECT_EQ(NotFound, CommandInVain(IDM_SEARCH_FIND_PREVIOUS));
}

TEST_F(FindCommand, FindPreviousTurnsTheDirectionOverForItsTimeOnly)
{
    const ScratchFile file("find.txt", Lines(50, {{10, "beta"}, {20, "beta"}, {30, "beta"}}));
    for (const bool backwards : {false, true}) {
        Open(file);
        Find.Backwards = backwards;
        LookFor("beta");
        Repeat(IDM_SEARCH_FIND_NEXT);
        ExpectFound(20, 0);
        const Watch watch({Windows.Main});
        Repeat(IDM_SEARCH_FIND_PREVIOUS);
        const Noted* const begun = Watch::Last(Windows.Main, WM_USER);
        ASSERT_NE(nullptr, begun);
        EXPECT_EQ(!backwards, begun->Backwards);
        EXPECT_EQ(backwards, Find.Backwards);
        ExpectFound(backwards ? 30 : 10, 0);
        CommandInVain(IDM_SEARCH_FIND_PREVIOUS);
        EXPECT_EQ(backwards, Find.Backwards) << "also when nothing is found";
    }
}

TEST_F(FindCommand, NothingIsRepeatedBeforeSomethingWasFound)
{
    const ScratchFile file("find.txt", Lines(50, {{20, "alpha beta"}}));
    Open(file);
    const DialogAnswers none;
    const Watch watch({Windows.Main});
    CopyText(Find.LastFindText, "beta");
    RepeatFind(Windows.Main);
    Command(IDM_SEARCH_FIND_NEXT);
    Command(IDM_SEARCH_FIND_PREVIOUS);
    EXPECT_EQ(Messages{}, Watch::SearchMessages());
    EXPECT_EQ(0, Find.FoundLine);
}

TEST_F(FindCommand, AnotherFileForgetsTheSearch)
{
    const ScratchFile file("find.txt", Lines(50, {{20, "alpha beta"}}));
    Open(file);
    LookFor("beta");
    Open(file);
    EXPECT_FALSE(CanRepeat());
    EXPECT_FALSE(Find.FindSucceeded);
    EXPECT_EQ(0, View.HiliteLine);
    const Watch watch({Windows.Main});
    LookFor("beta");
    EXPECT_EQ((Messages{0, 2, 1}), Watch::SearchMessages()) << "there is nothing to remove";
}

TEST_F(FindCommand, AnotherModeForgetsTheSearch)
{
    const ScratchFile file("find.txt", Lines(50, {{20, "alpha beta"}}));
    Open(file);
    for (const UINT mode : {IDM_VIEW_HEX, IDM_VIEW_TEXT}) {
        LookFor("beta");
        Command(mode);
        EXPECT_FALSE(CanRepeat());
        EXPECT_EQ(0, View.HiliteLine);
        const Watch watch({Windows.Main});
        LookFor("beta");
        EXPECT_EQ((Messages{0, 2, 1}), Watch::SearchMessages());
    }
}

TEST_F(FindCommand, CapitalsMatterOnlyWhenAskedFor)
{
    const ScratchFile file("find.txt", Lines(50, {{20, "aBc"}, {30, "abc"}}));
    Open(file);
    LookFor("ABC");
    ExpectFound(20, 0);
    Find.MatchCase = true;
    LookFor("abc");
    ExpectFound(30, 0);
    EXPECT_EQ(NotFound, LookInVainFor("ABC"));
}

TEST_F(FindCommand, BytesAreComparedWithTheLineAsItStandsInTheFile)
{
    const ScratchFile file("find.txt", Lines(50, {{20, "aBc"}, {30, "ABC"}}));
    Open(file);
    LookFor("", "614263");
    ExpectFound(30, 0); // the string is in capitals and the line is not
    Find.MatchCase = true;
    LookFor("", "614263");
    ExpectFound(20, 0);
}

TEST_F(FindCommand, AMatchTakesTheSelectionAway)
{
    const ScratchFile file("find.txt", Lines(50, {{20, "alpha beta"}}));
    Open(file);
    Select(3, 6, 5, 10);
    ASSERT_TRUE(IsCommandPossible(IDM_EDIT_COPY));
    const Picture before = RowPicture(3);
    LookInVainFor("gamma");
    EXPECT_EQ(5, View.SelLineB) << "only a match does";
    LookFor("beta");
    EXPECT_EQ(0, View.SelLineA);
    EXPECT_EQ(0, View.SelLineB);
    EXPECT_FALSE(IsCommandPossible(IDM_EDIT_COPY));
    EXPECT_FALSE(IsCommandPossible(IDM_FILE_SAVE_AS));
    EXPECT_FALSE(ButtonTable[ButtonCopy].Enabled);
    EXPECT_NE(0, DifferentPixels(before, RowPicture(3)));
}

namespace {

class ShownMatch : public FindCommand {
protected:
    static void Show(std::int32_t column, std::int32_t line, std::int32_t length)
    {
        Find.FoundLen = length;
        SendMessageA(Windows.Main, WM_USER + 2, static_cast<WPARAM>(column), line);
    }

    static void Remove(std::int32_t column, std::int32_t line)
    {
        SendMessageA(Windows.Main, WM_USER + 3, static_cast<WPARAM>(column), line);
    }

    static std::int32_t Columns() { return View.ClientWidth / View.CharWidth; }

    // The columns that the view starts at when it shows a match from a view that starts at left.
    static std::int32_t LeftAfter(std::int32_t left, std::int32_t column, std::int32_t length)
    {
        const BeepCounter silence;
        View.LeftColumn = left;
        View.BeepedAtEnd = false;
        Show(column, View.TopLine + 1, length);
        return View.LeftColumn;
    }

    static std::int32_t TopAfter(std::int32_t top, std::int32_t line)
    {
        GoToTop(top);
        const BeepCounter beeps;
        Show(0, line, 3);
        EXPECT_EQ(0, beeps.Count());
        return View.TopLine;
    }

    // What the view paints for it, in rows of the window; the whole width.
    struct PaintedRows {
        int Count; // paints
        std::int32_t First;
        std::int32_t Rows;
        bool operator==(const PaintedRows& other) const
        {
            return Count == other.Count && First == other.First && Rows == other.Rows;
        }
    };

    static PaintedRows Painted()
    {
        PaintedRows painted = {};
        for (const Noted& noted : Log) {
            if (noted.Window == Windows.View && noted.Message == WM_PAINT) {
                ++painted.Count;
                EXPECT_EQ(0, noted.ToPaint.left);
                EXPECT_EQ(View.ClientWidth, noted.ToPaint.right);
                EXPECT_EQ(0, noted.ToPaint.top % View.LineHeight);
                painted.First = noted.ToPaint.top / View.LineHeight;
                painted.Rows = (noted.ToPaint.bottom - noted.ToPaint.top) / View.LineHeight;
            }
        }
        return painted;
    }
};

} // namespace

TEST_F(ShownMatch, IsTheHighlightedRun)
{
    const ScratchFile file("find.txt", Lines(300, {}));
    Open(file);
    Show(3, 20, 5);
    EXPECT_EQ(20, View.HiliteLine);
    EXPECT_EQ(3, View.HiliteCol);
    EXPECT_EQ(5, View.HiliteLen);
}

TEST_F(ShownMatch, WithinTheColumnsOnScreenMovesNothingSideways)
{
    const ScratchFile file("find.txt", Lines(30, {}, 400));
    Open(file);
    ASSERT_LT(150, View.MaxLeft);
    // Its end is one column behind its last character.
    EXPECT_EQ(100, LeftAfter(100, 120, 6));
    EXPECT_EQ(100, LeftAfter(100, 100 - 6 - 1, 6));
    EXPECT_EQ(100, LeftAfter(100, 100 + Columns() - 6 - 1, 6));
}

TEST_F(ShownMatch, OutsideTheColumnsOnScreenTakesTheViewBackToItsFirstColumn)
{
    const ScratchFile file("find.txt", Lines(30, {}, 400));
    Open(file);
    EXPECT_EQ(0, LeftAfter(100, 10, 6));
    EXPECT_EQ(0, LeftAfter(100, 100 - 6 - 2, 6));
    EXPECT_EQ(0, LeftAfter(100, 100 + Columns() - 6, 6));
    EXPECT_EQ(0, LeftAfter(100, 390, 6)) << "also to the right, where it is not to be seen then";
}

TEST_F(ShownMatch, OutsideTheColumnsOnScreenTakesTheViewBackToTheFirstLockedColumn)
{
    const ScratchFile file("find.txt", Lines(30, {}, 400));
    Open(file);
    View.LockColStart = 5;
    EXPECT_EQ(5, LeftAfter(100, 10, 6));
    EXPECT_EQ(5, LeftAfter(100, 390, 6));
}

TEST_F(ShownMatch, OutsideTheColumnsOnScreenIsAskedForAsAThumbPositionOf0)
{
    const ScratchFile file("find.txt", Lines(30, {}, 400));
    Open(file);
    const BeepCounter silence;
    for (const std::int32_t column : {3, 300}) {
        View.LeftColumn = 100;
        const Watch watch({Windows.View});
        Show(column, 1, 6);
        const Noted* const scroll = Watch::Last(Windows.View, WM_HSCROLL);
        ASSERT_NE(nullptr, scroll);
        EXPECT_EQ(MAKELONG(SB_THUMBPOSITION, 0), scroll->WParam);
        EXPECT_EQ(std::max(column + 6 + 1 - Columns() / 2, 0), scroll->LParam) << "what the view does not look at";
    }
    const Watch watch({Windows.View});
    View.LeftColumn = 100;
    Show(120, 1, 6);
    EXPECT_EQ(nullptr, Watch::Last(Windows.View, WM_HSCROLL));
}

TEST_F(ShownMatch, OfADumpEndsWhereItsPairsDo)
{
    SetWindowPos(Windows.Main, nullptr, 0, 0, 400, 600, SWP_NOZORDER | SWP_NOACTIVATE);
    const ScratchFile file("find.bin", std::string(2000, 'x'));
    OpenHex(file);
    ASSERT_GT(50, Columns());
    // 3 * 9 + 4 + 10
    EXPECT_EQ(41, LeftAfter(41, 9, 4));
    EXPECT_EQ(0, LeftAfter(42, 9, 4));
    EXPECT_EQ(41 - Columns(), LeftAfter(41 - Columns(), 9, 4));
    EXPECT_EQ(0, LeftAfter(40 - Columns(), 9, 4)) << "beyond the right edge";
    // No row is longer than 76 characters.
    EXPECT_EQ(76 - Columns(), LeftAfter(76 - Columns(), 15, 22));
    EXPECT_EQ(0, LeftAfter(75 - Columns(), 15, 22));
}

TEST_F(ShownMatch, OnScreenMovesNothing)
{
    const ScratchFile file("find.txt", Lines(300, {}));
    Open(file);
    EXPECT_EQ(100, TopAfter(100, 101));
    EXPECT_EQ(100, TopAfter(100, 100 + RowsOnScreen()));
}

TEST_F(ShownMatch, OffScreenComesSecondOnScreen)
{
    const ScratchFile file("find.txt", Lines(300, {}));
    Open(file);
    EXPECT_EQ(100 + RowsOnScreen() + 1 - 2, TopAfter(100, 100 + RowsOnScreen() + 1));
    EXPECT_EQ(98, TopAfter(100, 100));
    EXPECT_EQ(48, TopAfter(100, 50));
    EXPECT_EQ(0, TopAfter(100, 1));
    EXPECT_EQ(0, TopAfter(100, 2));
    EXPECT_EQ(View.MaxTop, TopAfter(0, 300));
}

TEST_F(ShownMatch, OffScreenComesSecondBelowTheHeadings)
{
    const ScratchFile file("find.txt", Lines(300, {}));
    Open(file);
    Lock(3);
    EXPECT_EQ(200 - 2 - 3, TopAfter(100, 200));
    EXPECT_EQ(0, TopAfter(100, 4));
}

TEST_F(ShownMatch, CanBeScrolledToTheTop)
{
    const ScratchFile file("find.txt", Lines(300, {}));
    Open(file);
    Find.ScrollToOn = true;
    EXPECT_EQ(110, TopAfter(100, 111)) << "although it is on screen";
    EXPECT_EQ(110, TopAfter(110, 111));
    EXPECT_EQ(0, TopAfter(100, 1));
    EXPECT_EQ(View.MaxTop, TopAfter(100, 300));
    Lock(3);
    EXPECT_EQ(150 - 1 - 3, TopAfter(100, 150));
    EXPECT_EQ(0, TopAfter(100, 2));
}

TEST_F(ShownMatch, CanBeScrolledToTheMiddle)
{
    const ScratchFile file("find.txt", Lines(300, {}));
    Open(file);
    Find.ScrollToOn = true;
    Find.ScrollToTop = false;
    EXPECT_EQ(120 - RowsOnScreen() / 2, TopAfter(100, 120));
    EXPECT_EQ(0, TopAfter(100, 3));
    EXPECT_EQ(View.MaxTop, TopAfter(100, 298));
    Lock(3);
    EXPECT_EQ(150 - RowsOnScreen() / 2, TopAfter(100, 150));
}

TEST_F(ShownMatch, IsNotScrolledToWhereItStandsAlready)
{
    const ScratchFile file("find.txt", Lines(300, {}));
    Open(file);
    for (const bool scrollTo : {false, true}) {
        Find.ScrollToOn = scrollTo;
        GoToTop(100);
        const Watch watch({Windows.View});
        Show(0, 101, 3);
        EXPECT_EQ(nullptr, Watch::Last(Windows.View, WM_USER + 12));
        Show(0, 200, 3);
        const Noted* const scroll = Watch::Last(Windows.View, WM_USER + 12);
        ASSERT_NE(nullptr, scroll);
        EXPECT_EQ(99, scroll->WParam);
        EXPECT_EQ(scrollTo ? 199 : 198, scroll->LParam);
    }
}

TEST_F(ShownMatch, HasOnlyItsRowPainted)
{
    const ScratchFile file("find.txt", Lines(300, {}));
    Open(file);
    GoToTop(100);
    const Watch watch({Windows.View});
    Show(3, 108, 4);
    EXPECT_EQ((PaintedRows{1, 7, 1}), Painted());
    Log.clear();
    Remove(3, 108);
    EXPECT_EQ((PaintedRows{1, 7, 1}), Painted());
    EXPECT_EQ(0, View.HiliteLine);
    EXPECT_EQ(0, View.HiliteLen);
}

TEST_F(ShownMatch, OfADumpHasAllItsRowsPainted)
{
    const ScratchFile file("find.bin", std::string(5000, 'x'));
    OpenHex(file);
    GoToTop(100);
    const struct {
        std::int32_t Column;
        std::int32_t Length;
        std::int32_t Rows;
    } runs[] = {{0, 14, 1}, {2, 14, 1}, {3, 14, 2}, {15, 14, 2}, {0, 17, 2}, {4, 29, 3}, {3, 29, 2}, {15, 29, 3}};
    for (const auto& run : runs) {
        SCOPED_TRACE(run.Column);
        SCOPED_TRACE(run.Length);
        const Watch watch({Windows.View});
        Show(run.Column, 108, run.Length);
        EXPECT_EQ((PaintedRows{1, 7, run.Rows}), Painted());
        Log.clear();
        Remove(run.Column, 108);
        EXPECT_EQ((PaintedRows{1, 7, run.Rows}), Painted());
    }
}

TEST_F(ShownMatch, ThatIsScrolledAwayIsRemovedWithoutPainting)
{
    const ScratchFile file("find.txt", Lines(300, {}));
    Open(file);
    Show(3, 8, 4);
    GoToTop(100);
    const Watch watch({Windows.View});
    Remove(3, 8);
    EXPECT_EQ(0, Painted().Count);
    EXPECT_EQ(0, View.HiliteLine);
    EXPECT_EQ(0, View.HiliteLen);
}

TEST_F(ShownMatch, OutsideTheDocumentIsIgnored)
{
    const ScratchFile file("find.txt", Lines(300, {}));
    Open(file);
    GoToTop(100);
    Show(3, 108, 4);
    const Watch watch({Windows.View});
    for (const std::int32_t line : {0, -1, 301, INT32_MIN, INT32_MAX}) {
        Show(3, line, 4);
        EXPECT_EQ(108, View.HiliteLine);
    }
    Show(-1, 110, 4);
    Show(INT32_MAX, 110, 4);
    EXPECT_EQ(108, View.HiliteLine);
    EXPECT_EQ(100, View.TopLine);
    EXPECT_EQ(0, Painted().Count);
    Remove(3, INT32_MAX);
    EXPECT_EQ(0, View.HiliteLine);
    EXPECT_EQ(0, View.HiliteLen);
}

TEST_F(ShownMatch, StandsOutInItsRowOnlyAndLeavesNoTrace)
{
    const ScratchFile file("find.txt", Lines(300, {{8, "some words in a line"}}));
    for (const bool hex : {false, true}) {
        Open(file);
        Command(hex ? IDM_VIEW_HEX : IDM_VIEW_TEXT);
        const Picture before = ViewPicture();
        const Picture rowBefore = RowPicture(7);
        const Picture nextBefore = RowPicture(8);
        Show(14, 8, 4); // of a dump: spills over
        const int inRow = DifferentPixels(rowBefore, RowPicture(7));
        const int inNext = DifferentPixels(nextBefore, RowPicture(8));
        EXPECT_LT(0, inRow);
        EXPECT_EQ(hex, inNext > 0);
        EXPECT_EQ(inRow + inNext, DifferentPixels(before, ViewPicture()));
        Remove(14, 8);
        EXPECT_EQ(0, DifferentPixels(before, ViewPicture()));
    }
}

TEST_F(ShownMatch, InAHeadingIsHighlightedThereAndGoesAlsoWhenTheTextIsScrolledAway)
{
    const ScratchFile file("find.txt", Lines(300, {{2, "some words in a line"}}));
    Open(file);
    Lock(3);
    const Picture heading = RowPicture(1);
    GoToTop(100);
    const Picture before = ViewPicture();
    LookFor("words");
    ExpectFound(2, 5);
    EXPECT_EQ(0, View.TopLine);
    EXPECT_LT(0, DifferentPixels(heading, RowPicture(1)));
    GoToTop(100);
    EXPECT_LT(0, DifferentPixels(heading, RowPicture(1))) << "headings stay";
    EXPECT_EQ(NotFound, CommandInVain(IDM_SEARCH_FIND_NEXT));
    EXPECT_EQ(0, DifferentPixels(before, ViewPicture()));
}

namespace {

// A text of 20 blocks, more than are kept in memory, with its word in the middle of them.
class FileThatShrinks : public FindCommand {
protected:
    FileThatShrinks() : File("shrinks.txt", Lines(30000, {{15000, "word"}})) {}

    static void OpenInMode(const ScratchFile& file, bool hex)
    {
        Open(file);
        Command(hex ? IDM_VIEW_HEX : IDM_VIEW_TEXT);
    }

    // The program goes on: it paints, scrolls, and finds something in another file.
    static void ExpectUsable()
    {
        RedrawWindow(Windows.View, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        SendMessageA(Windows.View, WM_VSCROLL, SB_BOTTOM, 0);
        SendMessageA(Windows.View, WM_VSCROLL, SB_PAGEUP, 0);
        SendMessageA(Windows.View, WM_VSCROLL, SB_TOP, 0);
        const ScratchFile other("other.txt", Lines(10, {{5, "a word"}}));
        Open(other);
        Command(IDM_VIEW_TEXT);
        Find.Backwards = false;
        LookFor("word");
        ExpectFound(5, 2);
        CloseDocument();
    }

    ScratchFile File;
};

} // namespace

TEST_F(FileThatShrinks, HasNothingToFindBehindItsEnd)
{
    for (const bool hex : {false, true}) {
        for (const bool backwards : {false, true}) {
            for (const std::int64_t size : {0, 1000, 5 * BlockBytes + 7}) {
                SCOPED_TRACE(testing::Message() << (hex ? "hex" : "text") << backwards << ' ' << size);
                ScratchFile file("cut.txt", FileContent(File.Path()));
                OpenInMode(file, hex);
                ASSERT_LT(2 * (MaxCacheSlots + 1) * BlockBytes, Document.FileSize);
                file.Truncate(size);
                Find.Backwards = backwards;
                EXPECT_EQ(NotFound, LookInVainFor("word"));
                EXPECT_FALSE(CanRepeat());
                EXPECT_TRUE(View.FileShown);
            }
            ExpectUsable();
        }
    }
}

TEST_F(FileThatShrinks, HasWhatIsLeftOfItToFind)
{
    for (const bool hex : {false, true}) {
        ScratchFile file("cut.txt", Lines(30000, {{15000, "word"}}));
        OpenInMode(file, hex);
        const std::int32_t place = 14999 * 21;
        file.Truncate(place + 4);
        LookFor("word");
        ExpectFound(hex ? place / 16 + 1 : 15000, hex ? place % 16 : 0);
        ExpectUsable();
        OpenInMode(file, hex);
        file.Truncate(place + 3);
        EXPECT_EQ(NotFound, LookInVainFor("word"));
    }
}

TEST_F(FileThatShrinks, AfterAMatchHasNoNextOne)
{
    for (const bool hex : {false, true}) {
        for (const UINT id : {IDM_SEARCH_FIND_NEXT, IDM_SEARCH_FIND_PREVIOUS}) {
            ScratchFile file("cut.txt", Lines(30000, {{15000, "word"}, {4000, "word"}, {26000, "word"}}));
            OpenInMode(file, hex);
            Find.Backwards = false;
            LookFor("word");
            Repeat(IDM_SEARCH_FIND_NEXT);
            ASSERT_TRUE(Find.FindSucceeded);
            file.Truncate(0);
            EXPECT_EQ(NotFound, CommandInVain(id));
            ExpectUsable();
        }
    }
}

TEST_F(FileThatShrinks, OrIsGoneWhileTheWindowIsAnIconHasNothingToFind)
{
    for (const bool hex : {false, true}) {
        for (const bool backwards : {false, true}) {
            const ScratchFile file("gone.txt", FileContent(File.Path()));
            OpenInMode(file, hex);
            SendMessageA(Windows.Main, WM_SIZE, SIZE_MINIMIZED, 0);
            ASSERT_TRUE(DeleteFileA(file.Path())) << "the file is released";
            Find.Backwards = backwards;
            {
                DialogAnswers answers;
                answers.ThenPress(IDOK);
                RunSearch(Windows.Main, "word", backwards ? RowCount() : 1, 0);
                EXPECT_EQ(NotFound, answers.OnlyText());
            }
            DialogAnswers answers;
            answers.ThenPress(IDOK);
            SendMessageA(Windows.Main, WM_QUERYOPEN, 0, 0);
            EXPECT_EQ("File being browsed could not be re-opened", answers.OnlyText());
            EXPECT_FALSE(View.FileShown);
        }
    }
    LayOutFrameAnew();
    ExpectUsable();
}
