#include "search/find_dialog.h"

#include "harness/dialogs.h"
#include "harness/program.h"
#include "harness/system_calls.h"
#include "search/find_state.h"
#include "view/frame_windows.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace {

// The controls by number, as the rest of the world knows them.
constexpr int TextCombo = 350;
constexpr int HexCombo = 351;
constexpr int Forwards = 352;
constexpr int Backwards = 353;
constexpr int EntireScope = 354;
constexpr int CurrentPosition = 355;
constexpr int MatchCase = 356;
constexpr int ScrollTo = 357;
constexpr int Top = 358;
constexpr int Middle = 359;

using Texts = std::vector<std::string>;

bool IsEnabled(HWND dialog, int control)
{
    return IsWindowEnabled(GetDlgItem(dialog, control)) != FALSE;
}

bool IsChecked(HWND dialog, int control)
{
    return IsDlgButtonChecked(dialog, control) == BST_CHECKED;
}

void Click(HWND dialog, int control)
{
    SendDlgItemMessageA(dialog, control, BM_CLICK, 0, 0);
}

HWND EditOf(HWND dialog, int combo)
{
    return GetWindow(GetDlgItem(dialog, combo), GW_CHILD);
}

// Replaces a combo's text as a user does.
void Type(HWND dialog, int combo, const char* text)
{
    SendMessageA(EditOf(dialog, combo), EM_SETSEL, 0, -1);
    for (const char* character = text; *character != '\0'; ++character) {
        SendMessageA(EditOf(dialog, combo), WM_CHAR, static_cast<WPARAM>(*character), 1);
    }
}

void Erase(HWND dialog, int combo)
{
    SendMessageA(EditOf(dialog, combo), EM_SETSEL, 0, -1);
    SendMessageA(EditOf(dialog, combo), WM_CHAR, VK_BACK, 1);
}

// Chooses the next entry of a combo's list.
void ChooseNext(HWND dialog, int combo)
{
    SendMessageA(EditOf(dialog, combo), WM_KEYDOWN, VK_DOWN, 1);
}

class FindDialog : public RunningProgram {
protected:
    FindDialog() { Find = FindState{}; }
    ~FindDialog() override { Find = FindState{}; }

    // Has step look at the dialog and answer it.
    static bool Ask(const std::function<void(HWND)>& step)
    {
        DialogAnswers answers;
        answers.Then(step);
        return AskFind(Windows.Main);
    }

    // Looks at the dialog and cancels it.
    static void Look(const std::function<void(HWND)>& step)
    {
        EXPECT_FALSE(Ask([&step](HWND dialog) {
            step(dialog);
            PressButton(dialog, IDCANCEL);
        }));
    }

    // Enters both strings and presses OK.
    static bool Enter(const char* text, const char* hex)
    {
        return Ask([text, hex](HWND dialog) {
            SetDlgItemTextA(dialog, TextCombo, text);
            SetDlgItemTextA(dialog, HexCombo, hex);
            PressButton(dialog, IDOK);
        });
    }

    static Texts Offered(int combo)
    {
        Texts offered;
        Look([&](HWND dialog) { offered = ComboTexts(dialog, combo); });
        return offered;
    }

    // Whether the dialog beeps once at a hex string and stays open.
    static bool IsRefused(const char* hex)
    {
        const BeepCounter beeps;
        bool stayed = false;
        DialogAnswers answers;
        answers
            .Then([hex](HWND dialog) {
                SetDlgItemTextA(dialog, TextCombo, "");
                SetDlgItemTextA(dialog, HexCombo, hex);
                PressButton(dialog, IDOK);
            })
            .Then([&stayed](HWND dialog) {
                stayed = GetDlgItem(dialog, HexCombo) != nullptr;
                PressButton(dialog, IDCANCEL);
            });
        EXPECT_FALSE(AskFind(Windows.Main));
        return stayed && beeps.Count() == 1;
    }
};

// The mnemonic of a control's text, in capitals; 0 = none.
char MnemonicOf(const std::string& text)
{
    const std::size_t mark = text.find('&');
    return mark == std::string::npos ? '\0' : static_cast<char>(toupper(text[mark + 1]));
}

} // namespace

TEST_F(FindDialog, BelongsToTheMainWindow)
{
    DialogAnswers answers;
    answers.ThenPress(IDCANCEL);
    AskFind(Windows.Main);
    ASSERT_EQ(1u, answers.Seen().size());
    EXPECT_EQ(Windows.Main, answers.Seen()[0].Owner);
    EXPECT_EQ("Find", answers.Seen()[0].Caption);
}

TEST_F(FindDialog, HasTheTextsItIsKnownBy)
{
    Look([](HWND dialog) {
        EXPECT_EQ("&Forwards", ControlText(dialog, Forwards));
        EXPECT_EQ("&Backwards", ControlText(dialog, Backwards));
        EXPECT_EQ("&Entire Scope", ControlText(dialog, EntireScope));
        EXPECT_EQ("&Current Position", ControlText(dialog, CurrentPosition));
        EXPECT_EQ("&Match Upper/Lower case", ControlText(dialog, MatchCase));
        EXPECT_EQ("&Scroll to:", ControlText(dialog, ScrollTo));
        EXPECT_EQ("Top", ControlText(dialog, Top));
        EXPECT_EQ("Middle", ControlText(dialog, Middle));
        char hexLabel[20] = "";
        GetWindowTextA(GetWindow(GetDlgItem(dialog, HexCombo), GW_HWNDPREV), hexLabel, sizeof hexLabel);
        EXPECT_STREQ("Hex :", hexLabel);
    });
}

TEST_F(FindDialog, TheTabKeyGoesFromControlToControlInReadingOrder)
{
    Find.ScrollToOn = true;
    strcpy(Find.FindText, "text");
    Look([](HWND dialog) {
        // One stop per group of radio buttons, at the chosen one.
        const int order[] = {TextCombo, HexCombo, Forwards, EntireScope, MatchCase, ScrollTo, Top, IDOK, IDCANCEL};
        HWND control = GetDlgItem(dialog, TextCombo);
        EXPECT_EQ(EditOf(dialog, TextCombo), GetFocus()) << "typing goes into the text";
        for (const int expected : order) {
            EXPECT_EQ(expected, GetDlgCtrlID(control));
            control = GetNextDlgTabItem(dialog, control, FALSE);
        }
        EXPECT_EQ(TextCombo, GetDlgCtrlID(control));
    });
}

TEST_F(FindDialog, NoTwoControlsHaveTheSameMnemonic)
{
    Look([](HWND dialog) {
        std::set<char> seen;
        std::size_t count = 0;
        for (HWND control = GetWindow(dialog, GW_CHILD); control != nullptr;
             control = GetWindow(control, GW_HWNDNEXT)) {
            char text[50] = "";
            GetWindowTextA(control, text, sizeof text);
            if (const char mnemonic = MnemonicOf(text)) {
                EXPECT_TRUE(seen.insert(mnemonic).second) << text;
                ++count;
            }
        }
        EXPECT_LE(6u, count);
    });
}

TEST_F(FindDialog, OkIsTheDefaultButton)
{
    Look([](HWND dialog) { EXPECT_EQ(IDOK, LOWORD(SendMessageA(dialog, DM_GETDEFID, 0, 0))); });
}

TEST_F(FindDialog, StartsWithTheCurrentTextAndTheHistories)
{
    strcpy(Find.FindText, "now");
    RememberText(Find.TextHistory, "older");
    RememberText(Find.TextHistory, "newer");
    RememberText(Find.HexHistory, "0A0D");
    Look([](HWND dialog) {
        EXPECT_EQ("now", ControlText(dialog, TextCombo));
        EXPECT_EQ("", ControlText(dialog, HexCombo));
        EXPECT_EQ((Texts{"newer", "older"}), ComboTexts(dialog, TextCombo));
        EXPECT_EQ((Texts{"0A0D"}), ComboTexts(dialog, HexCombo));
    });
}

TEST_F(FindDialog, StartsWithTheCurrentHexString)
{
    strcpy(Find.FindHex, "4D5A");
    Look([](HWND dialog) {
        EXPECT_EQ("", ControlText(dialog, TextCombo));
        EXPECT_EQ("4D5A", ControlText(dialog, HexCombo));
    });
}

TEST_F(FindDialog, StartsWithTheSwitchesAsTheyStand)
{
    for (const bool on : {false, true}) {
        Find.Backwards = Find.FromCurrent = Find.MatchCase = Find.ScrollToOn = on;
        Find.ScrollToTop = !on;
        Look([on](HWND dialog) {
            EXPECT_EQ(!on, IsChecked(dialog, Forwards));
            EXPECT_EQ(on, IsChecked(dialog, Backwards));
            EXPECT_EQ(!on, IsChecked(dialog, EntireScope));
            EXPECT_EQ(on, IsChecked(dialog, CurrentPosition));
            EXPECT_EQ(on, IsChecked(dialog, MatchCase));
            EXPECT_EQ(on, IsChecked(dialog, ScrollTo));
            EXPECT_EQ(!on, IsChecked(dialog, Top));
            EXPECT_EQ(on, IsChecked(dialog, Middle));
        });
    }
}

TEST_F(FindDialog, TopAndMiddleCanBeChosenOnlyWhileScrollToIsOn)
{
    for (const bool on : {false, true}) {
        Find.ScrollToOn = on;
        Look([on](HWND dialog) {
            EXPECT_EQ(on, IsEnabled(dialog, Top));
            EXPECT_EQ(on, IsEnabled(dialog, Middle));
        });
    }
}

TEST_F(FindDialog, OkCannotBePressedWhileBothStringsAreEmpty)
{
    Look([](HWND dialog) { EXPECT_FALSE(IsEnabled(dialog, IDOK)); });
    strcpy(Find.FindText, "a");
    Look([](HWND dialog) { EXPECT_TRUE(IsEnabled(dialog, IDOK)); });
    strcpy(Find.FindText, "");
    strcpy(Find.FindHex, "0A");
    Look([](HWND dialog) { EXPECT_TRUE(IsEnabled(dialog, IDOK)); });
}

TEST_F(FindDialog, TypingMakesOkPossibleAndErasingAllOfItImpossible)
{
    for (const int combo : {TextCombo, HexCombo}) {
        Look([combo](HWND dialog) {
            Type(dialog, combo, "4");
            EXPECT_TRUE(IsEnabled(dialog, IDOK));
            Erase(dialog, combo);
            EXPECT_EQ("", ControlText(dialog, combo));
            EXPECT_FALSE(IsEnabled(dialog, IDOK));
        });
    }
}

TEST_F(FindDialog, TypingInOneStringEmptiesTheOther)
{
    strcpy(Find.FindText, "text");
    Look([](HWND dialog) {
        Type(dialog, HexCombo, "4");
        EXPECT_EQ("", ControlText(dialog, TextCombo));
        EXPECT_EQ("4", ControlText(dialog, HexCombo));
        EXPECT_TRUE(IsEnabled(dialog, IDOK));
        Type(dialog, TextCombo, "ab");
        EXPECT_EQ("ab", ControlText(dialog, TextCombo));
        EXPECT_EQ("", ControlText(dialog, HexCombo));
        EXPECT_TRUE(IsEnabled(dialog, IDOK));
    });
}

TEST_F(FindDialog, ChoosingFromTheListOfOneStringMakesOkPossibleAndEmptiesTheOther)
{
    RememberText(Find.TextHistory, "chosen");
    RememberText(Find.HexHistory, "0A0D");
    Look([](HWND dialog) {
        ChooseNext(dialog, HexCombo);
        EXPECT_EQ("0A0D", ControlText(dialog, HexCombo));
        EXPECT_TRUE(IsEnabled(dialog, IDOK));
        ChooseNext(dialog, TextCombo);
        EXPECT_EQ("chosen", ControlText(dialog, TextCombo));
        EXPECT_EQ("", ControlText(dialog, HexCombo));
        EXPECT_TRUE(IsEnabled(dialog, IDOK));
    });
    strcpy(Find.FindText, "text");
    Look([](HWND dialog) {
        ChooseNext(dialog, HexCombo);
        EXPECT_EQ("", ControlText(dialog, TextCombo));
        EXPECT_EQ("0A0D", ControlText(dialog, HexCombo));
        EXPECT_TRUE(IsEnabled(dialog, IDOK));
    });
}

TEST_F(FindDialog, OkTakesWhatWasChosenFromTheList)
{
    strcpy(Find.FindText, "text");
    RememberText(Find.HexHistory, "0A0D");
    EXPECT_TRUE(Ask([](HWND dialog) {
        ChooseNext(dialog, HexCombo);
        PressButton(dialog, IDOK);
    }));
    EXPECT_STREQ("", Find.FindText);
    EXPECT_STREQ("0A0D", Find.FindHex);
}

TEST_F(FindDialog, TwentyNineCharactersCanBeTyped)
{
    const std::string digits = "01234567890123456789012345678901234";
    for (const int combo : {TextCombo, HexCombo}) {
        Look([&](HWND dialog) {
            Type(dialog, combo, digits.c_str());
            EXPECT_EQ(digits.substr(0, 29), ControlText(dialog, combo));
        });
    }
    EXPECT_TRUE(Enter(digits.c_str(), ""));
    EXPECT_EQ(digits.substr(0, 29), Find.FindText);
}

TEST_F(FindDialog, ClickingScrollToTurnsItOverAndWithItTopAndMiddle)
{
    Look([](HWND dialog) {
        for (const bool on : {true, false, true}) {
            Click(dialog, ScrollTo);
            EXPECT_EQ(on, Find.ScrollToOn);
            EXPECT_EQ(on, IsChecked(dialog, ScrollTo));
            EXPECT_EQ(on, IsEnabled(dialog, Top));
            EXPECT_EQ(on, IsEnabled(dialog, Middle));
        }
    });
}

TEST_F(FindDialog, ScrollToIsTurnedOverByClicksOnly)
{
    Look([](HWND dialog) {
        for (const int notification : {BN_SETFOCUS, BN_KILLFOCUS, BN_DOUBLECLICKED}) {
            SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(ScrollTo, notification),
                         reinterpret_cast<LPARAM>(GetDlgItem(dialog, ScrollTo)));
        }
        EXPECT_FALSE(Find.ScrollToOn);
        EXPECT_FALSE(IsChecked(dialog, ScrollTo));
    });
}

TEST_F(FindDialog, OnlyOneOfTwoThatExcludeEachOtherIsChosen)
{
    Find.ScrollToOn = true;
    const int pairs[][2] = {{Forwards, Backwards}, {EntireScope, CurrentPosition}, {Top, Middle}};
    Look([&pairs](HWND dialog) {
        for (const auto& pair : pairs) {
            Click(dialog, pair[1]);
            EXPECT_FALSE(IsChecked(dialog, pair[0]));
            EXPECT_TRUE(IsChecked(dialog, pair[1]));
            Click(dialog, pair[0]);
            EXPECT_TRUE(IsChecked(dialog, pair[0]));
            EXPECT_FALSE(IsChecked(dialog, pair[1]));
        }
    });
}

TEST_F(FindDialog, OkReadsTheSwitches)
{
    strcpy(Find.FindText, "text");
    Find.ScrollToOn = true;
    EXPECT_TRUE(Ask([](HWND dialog) {
        for (const int control : {Backwards, CurrentPosition, MatchCase, Middle}) {
            Click(dialog, control);
        }
        EXPECT_FALSE(Find.Backwards || Find.FromCurrent || Find.MatchCase || !Find.ScrollToTop) << "not before OK";
        PressButton(dialog, IDOK);
    }));
    EXPECT_TRUE(Find.Backwards);
    EXPECT_TRUE(Find.FromCurrent);
    EXPECT_TRUE(Find.MatchCase);
    EXPECT_FALSE(Find.ScrollToTop);
    EXPECT_TRUE(Ask([](HWND dialog) {
        for (const int control : {Forwards, EntireScope, MatchCase, Top}) {
            Click(dialog, control);
        }
        PressButton(dialog, IDOK);
    }));
    EXPECT_FALSE(Find.Backwards);
    EXPECT_FALSE(Find.FromCurrent);
    EXPECT_FALSE(Find.MatchCase);
    EXPECT_TRUE(Find.ScrollToTop);
}

TEST_F(FindDialog, CancelChangesNoStringsAndNoSwitches)
{
    strcpy(Find.FindText, "text");
    Look([](HWND dialog) {
        Type(dialog, HexCombo, "0A0D");
        for (const int control : {Backwards, CurrentPosition, MatchCase}) {
            Click(dialog, control);
        }
    });
    EXPECT_STREQ("text", Find.FindText);
    EXPECT_STREQ("", Find.FindHex);
    EXPECT_EQ(0, Find.TextHistory.Count);
    EXPECT_EQ(0, Find.HexHistory.Count);
    EXPECT_FALSE(Find.Backwards || Find.FromCurrent || Find.MatchCase);
}

TEST_F(FindDialog, AHexStringOfOddLengthBeepsAndKeepsTheDialogOpen)
{
    EXPECT_TRUE(IsRefused("0"));
    EXPECT_TRUE(IsRefused("0A0"));
    EXPECT_TRUE(IsRefused("01234567890123456789012345678"));
    EXPECT_STREQ("", Find.FindHex);
    EXPECT_EQ(0, Find.HexHistory.Count);
}

TEST_F(FindDialog, AHexStringWithAnotherCharacterBeepsAndKeepsTheDialogOpen)
{
    for (const char* const hex : {"0G", "g0", "0 ", " 0A ", "0x", "-1", "0A 0", "@@", "::", "\xC4\xD6"}) {
        EXPECT_TRUE(IsRefused(hex)) << hex;
    }
    EXPECT_STREQ("", Find.FindHex);
    EXPECT_EQ(0, Find.HexHistory.Count);
}

TEST_F(FindDialog, NothingAtAllBeepsAndKeepsTheDialogOpen)
{
    EXPECT_TRUE(IsRefused(""));
    EXPECT_EQ(0, Find.TextHistory.Count);
    EXPECT_EQ(0, Find.HexHistory.Count);
}

TEST_F(FindDialog, ARefusedHexStringCanBeMended)
{
    const BeepCounter beeps;
    DialogAnswers answers;
    answers
        .Then([](HWND dialog) {
            Type(dialog, HexCombo, "4D5");
            Click(dialog, Backwards);
            PressButton(dialog, IDOK);
        })
        .Then([](HWND dialog) {
            EXPECT_EQ("4D5", ControlText(dialog, HexCombo));
            EXPECT_FALSE(Find.Backwards) << "nothing is taken yet";
            Type(dialog, HexCombo, "4D5A");
            PressButton(dialog, IDOK);
        });
    EXPECT_TRUE(AskFind(Windows.Main));
    EXPECT_STREQ("4D5A", Find.FindHex);
    EXPECT_TRUE(Find.Backwards);
    EXPECT_EQ(1, beeps.Count());
}

TEST_F(FindDialog, SmallHexDigitsBecomeCapitals)
{
    const BeepCounter beeps;
    EXPECT_TRUE(Enter("", "0a0Dff"));
    EXPECT_STREQ("0A0DFF", Find.FindHex);
    EXPECT_STREQ("", Find.FindText);
    EXPECT_EQ((Texts{"0A0DFF"}), Offered(HexCombo));
    EXPECT_EQ(0, beeps.Count());
}

TEST_F(FindDialog, FourteenBytesCanBeEntered)
{
    EXPECT_TRUE(Enter("", "0102030405060708090A0B0C0D0E"));
    EXPECT_STREQ("0102030405060708090A0B0C0D0E", Find.FindHex);
}

TEST_F(FindDialog, ATextKeepsItsLetters)
{
    EXPECT_TRUE(Enter("Some Text, \xE4", ""));
    EXPECT_STREQ("Some Text, \xE4", Find.FindText);
}

TEST_F(FindDialog, OfTwoStringsTheTextIsUsedAndRemembered)
{
    EXPECT_TRUE(Enter("text", "0A0D"));
    EXPECT_STREQ("text", Find.FindText);
    EXPECT_STREQ("", Find.FindHex);
    EXPECT_EQ(1, Find.TextHistory.Count);
    EXPECT_EQ(0, Find.HexHistory.Count);
}

TEST_F(FindDialog, RemembersTheNewestFirstAndNothingTwice)
{
    for (const char* const text : {"one", "two", "three", "one"}) {
        EXPECT_TRUE(Enter(text, ""));
    }
    for (const char* const hex : {"01", "aa", "AA", "02"}) {
        EXPECT_TRUE(Enter("", hex));
    }
    EXPECT_EQ((Texts{"three", "two", "one"}), Offered(TextCombo));
    EXPECT_EQ((Texts{"02", "AA", "01"}), Offered(HexCombo));
}

TEST_F(FindDialog, RemembersNineOfEachKind)
{
    Texts expected;
    for (int i = 10; i <= 20; ++i) {
        const std::string text = std::to_string(i);
        EXPECT_TRUE(Enter(text.c_str(), ""));
        EXPECT_TRUE(Enter("", text.c_str()));
        if (i >= 12) {
            expected.insert(expected.begin(), text);
        }
    }
    EXPECT_EQ(expected, Offered(TextCombo));
    EXPECT_EQ(expected, Offered(HexCombo));
}

TEST_F(FindDialog, EscCancels)
{
    EXPECT_FALSE(Ask([](HWND) { PostMessageA(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 1); }));
}

TEST_F(FindDialog, EnterPressesOk)
{
    EXPECT_TRUE(Ask([](HWND dialog) {
        Type(dialog, TextCombo, "text");
        PostMessageA(GetFocus(), WM_KEYDOWN, VK_RETURN, 1);
    }));
    EXPECT_STREQ("text", Find.FindText);
}
