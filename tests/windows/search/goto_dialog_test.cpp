#include "search/goto_dialog.h"

#include "harness/dialogs.h"
#include "harness/program.h"
#include "resources/ids.h"
#include "search/goto_target.h"
#include "view/frame_windows.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr bool Hex = true;
constexpr bool Text = false;

using Texts = std::vector<std::string>;

class GotoDialog : public RunningProgram {
protected:
    GotoDialog() { Goto = GotoState{}; }
    ~GotoDialog() override { Goto = GotoState{}; }

    // Enters a text and presses a button.
    static bool Enter(bool hexMode, const char* text, int button = IDOK)
    {
        DialogAnswers answers;
        answers.Then([text, button](HWND dialog) {
            SetDlgItemTextA(dialog, IDC_GOTO_TEXT, text);
            PressButton(dialog, button);
        });
        return AskGotoTarget(Windows.Main, hexMode);
    }

    // What the dialog offers.
    static Texts Offered(bool hexMode)
    {
        Texts offered;
        DialogAnswers answers;
        answers.Then([&offered](HWND dialog) {
            offered = ComboTexts(dialog, IDC_GOTO_TEXT);
            PressButton(dialog, IDCANCEL);
        });
        AskGotoTarget(Windows.Main, hexMode);
        return offered;
    }
};

} // namespace

TEST_F(GotoDialog, AsksForALineOrForAnOffset)
{
    DialogAnswers answers;
    answers
        .Then([](HWND dialog) {
            EXPECT_EQ("Enter new line No.:", ControlText(dialog, IDC_GOTO_PROMPT));
            PressButton(dialog, IDCANCEL);
        })
        .Then([](HWND dialog) {
            EXPECT_EQ("Enter new offset:", ControlText(dialog, IDC_GOTO_PROMPT));
            PressButton(dialog, IDCANCEL);
        });
    AskGotoTarget(Windows.Main, Text);
    AskGotoTarget(Windows.Main, Hex);
    ASSERT_EQ(2u, answers.Seen().size());
    EXPECT_EQ(Windows.Main, answers.Seen()[0].Owner);
}

TEST_F(GotoDialog, OkTakesTheTextAndCancelLeavesTheOneBefore)
{
    EXPECT_TRUE(Enter(Text, "123"));
    EXPECT_STREQ("123", Goto.GotoText);
    EXPECT_FALSE(Enter(Text, "456", IDCANCEL));
    EXPECT_STREQ("123", Goto.GotoText);
    EXPECT_EQ(1, Goto.Lines.Count);
}

TEST_F(GotoDialog, StartsWithTheTextEnteredLast)
{
    Enter(Text, "77");
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        EXPECT_EQ("77", ControlText(dialog, IDC_GOTO_TEXT));
        PressButton(dialog, IDOK);
    });
    EXPECT_TRUE(AskGotoTarget(Windows.Main, Text));
    EXPECT_STREQ("77", Goto.GotoText);
}

TEST_F(GotoDialog, OffersWhatWasEnteredBeforeNewestFirst)
{
    Enter(Text, "1");
    Enter(Text, "2");
    Enter(Text, "3");
    Enter(Text, "1"); // is there already
    EXPECT_EQ((Texts{"3", "2", "1"}), Offered(Text));
}

TEST_F(GotoDialog, LinesAndOffsetsAreRememberedApart)
{
    Enter(Text, "10");
    Enter(Hex, "FF");
    EXPECT_EQ((Texts{"10"}), Offered(Text));
    EXPECT_EQ((Texts{"FF"}), Offered(Hex));
}

TEST_F(GotoDialog, RemembersNineTexts)
{
    Texts expected;
    for (int i = 1; i <= 11; ++i) {
        Enter(Text, std::to_string(i).c_str());
        if (i > 2) {
            expected.insert(expected.begin(), std::to_string(i));
        }
    }
    EXPECT_EQ(expected, Offered(Text));
}

TEST_F(GotoDialog, AnEmptyTextIsTakenButNotRemembered)
{
    EXPECT_TRUE(Enter(Text, ""));
    EXPECT_STREQ("", Goto.GotoText);
    EXPECT_EQ(Texts{}, Offered(Text));
}

TEST_F(GotoDialog, TenCharactersCanBeTypedAndMoreAreCut)
{
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        const HWND edit = GetWindow(GetDlgItem(dialog, IDC_GOTO_TEXT), GW_CHILD);
        EXPECT_EQ(10, SendMessageA(edit, EM_GETLIMITTEXT, 0, 0));
        SetDlgItemTextA(dialog, IDC_GOTO_TEXT, "123456789012345");
        PressButton(dialog, IDOK);
    });
    EXPECT_TRUE(AskGotoTarget(Windows.Main, Text));
    EXPECT_EQ(0u, std::string("123456789012345").find(Goto.GotoText));
    EXPECT_EQ(10u, strlen(Goto.GotoText));
}
