#include "app/line_length_dialog.h"

#include "document/document_state.h"
#include "harness/dialogs.h"
#include "harness/program.h"
#include "view/frame_windows.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

constexpr int LengthField = 390; // as the rest of the world knows it

constexpr const char* Refusal = "Specified value is invalid\nPlease reenter";

class LineLengthDialog : public RunningProgram {
protected:
    // What it shows at first.
    static std::string Shown()
    {
        std::string shown;
        DialogAnswers answers;
        answers.Then([&shown](HWND dialog) {
            shown = ControlText(dialog, LengthField);
            PressButton(dialog, IDCANCEL);
        });
        EXPECT_FALSE(AskLineLength(Windows.Main));
        return shown;
    }

    // The length that stands in the settings after text was entered and confirmed.
    static std::int32_t Entered(const char* text)
    {
        DialogAnswers answers;
        answers.Then([text](HWND dialog) {
            SetDlgItemTextA(dialog, LengthField, text);
            PressButton(dialog, IDOK);
        });
        EXPECT_TRUE(AskLineLength(Windows.Main)) << text;
        return DocumentOptions.FixedLineLen;
    }

    // Whether text is reported, the dialog stays with it, and nothing is stored.
    static void ExpectRefused(const char* text)
    {
        SCOPED_TRACE(text);
        DocumentOptions.FixedLineLen = 60;
        HWND first = nullptr;
        DialogAnswers answers;
        answers
            .Then([&](HWND dialog) {
                first = dialog;
                SetDlgItemTextA(dialog, LengthField, text);
                PressButton(dialog, IDOK);
            })
            .ThenPress(IDOK) // of the message
            .Then([&](HWND dialog) {
                EXPECT_EQ(first, dialog);
                EXPECT_EQ(text, ControlText(dialog, LengthField));
                EXPECT_EQ(60, DocumentOptions.FixedLineLen);
                PressButton(dialog, IDCANCEL);
            });
        EXPECT_FALSE(AskLineLength(Windows.Main));
        ASSERT_EQ(3u, answers.Seen().size());
        EXPECT_EQ(Refusal, answers.Seen()[1].Text);
        EXPECT_EQ("Kestovar", answers.Seen()[1].Caption);
        EXPECT_EQ(first, answers.Seen()[1].Owner);
        EXPECT_EQ(60, DocumentOptions.FixedLineLen);
    }
};

} // namespace

TEST_F(LineLengthDialog, ShowsTheLengthThatIsSet)
{
    EXPECT_EQ("75", Shown());
    for (const std::int32_t length : {1, 255, 100, 0, -5, 1000}) {
        DocumentOptions.FixedLineLen = length;
        EXPECT_EQ(std::to_string(length), Shown());
        EXPECT_EQ(length, DocumentOptions.FixedLineLen);
    }
}

TEST_F(LineLengthDialog, HasItsCaptionAndTheFrameAsItsOwner)
{
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        EXPECT_EQ(GetDlgItem(dialog, LengthField), GetFocus());
        PressButton(dialog, IDCANCEL);
    });
    AskLineLength(Windows.Main);
    ASSERT_EQ(1u, answers.Seen().size());
    EXPECT_EQ("Set Line Length", answers.Seen()[0].Caption);
    EXPECT_EQ("Enter the required line length for\n\nnon-text files (1-255) :", answers.Seen()[0].Text);
    EXPECT_EQ(Windows.Main, answers.Seen()[0].Owner);
}

TEST_F(LineLengthDialog, TakesEveryLengthFrom1To255)
{
    EXPECT_EQ(1, Entered("1"));
    EXPECT_EQ(255, Entered("255"));
    EXPECT_EQ(80, Entered("80"));
    EXPECT_EQ(254, Entered("254"));
}

TEST_F(LineLengthDialog, ReadsTheNumberThatTheTextBeginsWith)
{
    EXPECT_EQ(70, Entered("70x"));
    EXPECT_EQ(9, Entered(" 9"));
    EXPECT_EQ(7, Entered("0007"));
}

TEST_F(LineLengthDialog, ReadsFourCharacters)
{
    EXPECT_EQ(12, Entered("00123"));
    EXPECT_EQ(34, Entered("00345678"));
    ExpectRefused("12345");
    ExpectRefused("00001");
}

TEST_F(LineLengthDialog, RefusesAnyOtherLengthAndStays)
{
    for (const char* text : {"0", "256", "", "abc", "-5", "999", "9999", "x75", "-1", "257"}) {
        ExpectRefused(text);
    }
}

TEST_F(LineLengthDialog, AfterARefusalAnotherLengthCanBeEntered)
{
    DialogAnswers answers;
    answers
        .Then([](HWND dialog) {
            SetDlgItemTextA(dialog, LengthField, "256");
            PressButton(dialog, IDOK);
        })
        .ThenPress(IDOK)
        .Then([](HWND dialog) {
            SetDlgItemTextA(dialog, LengthField, "25");
            PressButton(dialog, IDOK);
        });
    EXPECT_TRUE(AskLineLength(Windows.Main));
    EXPECT_EQ(25, DocumentOptions.FixedLineLen);
}

TEST_F(LineLengthDialog, CancelAndEscChangeNothing)
{
    for (const bool byKey : {false, true}) {
        DialogAnswers answers;
        answers.Then([byKey](HWND dialog) {
            SetDlgItemTextA(dialog, LengthField, "100");
            if (byKey) {
                PostMessageA(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 1);
            } else {
                PressButton(dialog, IDCANCEL);
            }
        });
        EXPECT_FALSE(AskLineLength(Windows.Main));
        EXPECT_EQ(75, DocumentOptions.FixedLineLen);
    }
}

TEST_F(LineLengthDialog, EnterConfirms)
{
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        SetDlgItemTextA(dialog, LengthField, "33");
        PostMessageA(GetFocus(), WM_KEYDOWN, VK_RETURN, 1);
    });
    EXPECT_TRUE(AskLineLength(Windows.Main));
    EXPECT_EQ(33, DocumentOptions.FixedLineLen);
}
