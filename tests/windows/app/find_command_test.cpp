// Finding: what the dialog offers, where the search starts, and what the windows are told.
#include "app/find_command.h"

#include "app/app_state.h"
#include "app/finding.h"
#include "app/menu_state.h"
#include "base/text.h"
#include "buttonbar/buttons.h"
#include "document/document_state.h"
#include "harness/dialogs.h"
#include "harness/picture.h"
#include "harness/scratch.h"
#include "harness/system_calls.h"
#include "resources/ids.h"
#include "search/find_state.h"
#include "search/search_origin.h"
#include "view/frame_windows.h"
#include "view/lock_region.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace {

using Messages = std::vector<UINT>;

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

std::vector<std::string> Boxes;

int WINAPI NoteBox(HWND, LPCSTR text, LPCSTR, UINT)
{
    Boxes.push_back(text);
    return IDOK;
}

// A text of 20 blocks, more than are kept in memory, with its word in the middle of them. It is searched as behind
// the dialog, and message boxes are only noted: opening one takes ten times as long as opening the file.
class FileThatShrinks : public FindCommand {
protected:
    FileThatShrinks()
        : Box("MessageBoxA", reinterpret_cast<void*>(NoteBox)), File("shrinks.txt", Lines(30000, {{15000, "word"}}))
    {
        Boxes.clear();
    }

    // Searches from where the command would.
    static void Search(const char* text)
    {
        CopyText(Find.LastFindText, text);
        const SearchOrigin origin = OriginOfSearch();
        RunSearch(Windows.Main, text, origin.Line, origin.Column);
    }

    // What was said since the last look.
    static std::vector<std::string> Said() { return std::exchange(Boxes, {}); }

    static std::vector<std::string> OnlyNotFound() { return {NotFound}; }

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
        Search("word");
        ExpectFound(5, 2);
        EXPECT_EQ(std::vector<std::string>{}, Said());
        CloseDocument();
    }

private:
    ReplacedCall Box;

protected:
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
                Search("word");
                EXPECT_EQ(OnlyNotFound(), Said());
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
        Search("word");
        ExpectFound(hex ? place / 16 + 1 : 15000, hex ? place % 16 : 0);
        ExpectUsable();
        OpenInMode(file, hex);
        file.Truncate(place + 3);
        Search("word");
        EXPECT_EQ(OnlyNotFound(), Said());
    }
}

TEST_F(FileThatShrinks, AfterAMatchHasNoNextOne)
{
    for (const bool hex : {false, true}) {
        for (const UINT id : {IDM_SEARCH_FIND_NEXT, IDM_SEARCH_FIND_PREVIOUS}) {
            ScratchFile file("cut.txt", Lines(30000, {{15000, "word"}, {4000, "word"}, {26000, "word"}}));
            OpenInMode(file, hex);
            Find.Backwards = false;
            Search("word");
            Command(IDM_SEARCH_FIND_NEXT);
            ASSERT_TRUE(Find.FindSucceeded);
            file.Truncate(0);
            Command(id);
            EXPECT_EQ(OnlyNotFound(), Said());
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
            RunSearch(Windows.Main, "word", backwards ? RowCount() : 1, 0);
            EXPECT_EQ(OnlyNotFound(), Said());
            SendMessageA(Windows.Main, WM_QUERYOPEN, 0, 0);
            EXPECT_EQ((std::vector<std::string>{"File being browsed could not be re-opened"}), Said());
            EXPECT_FALSE(View.FileShown);
        }
    }
    LayOutFrameAnew();
    ExpectUsable();
}
