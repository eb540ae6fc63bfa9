#include "print/print_dialog.h"

#include "base/help.h"
#include "harness/dialogs.h"
#include "print/printing.h"
#include "view/frame_windows.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace {

// The controls by number, as the rest of the world knows them.
constexpr int EntireRadio = 360;
constexpr int SelectionRadio = 361;
constexpr int PrinterSetupButton = 366;
constexpr int PageSetupButton = 367;
constexpr int PrinterLine = 368;
constexpr int TopField = 431; // of the page setup
constexpr int HelpButton = 998;

struct OptionBox {
    int Control;
    std::int32_t* Setting;
};

const OptionBox OptionBoxes[] = {
    {362, &PrintOptions.PrintDefFont},
    {363, &PrintOptions.ProcFF},
    {364, &PrintOptions.WrapOutput},
    {365, &PrintOptions.PrintHF},
};

bool IsChecked(HWND dialog, int control)
{
    return IsDlgButtonChecked(dialog, control) == BST_CHECKED;
}

void Click(HWND dialog, int control)
{
    SendDlgItemMessageA(dialog, control, BM_CLICK, 0, 0);
}

struct PrintAnswer {
    bool Confirmed;
    bool SelectionOnly;
};

class PrintQuestion : public ProgramWithPrinter {
protected:
    using Step = std::function<void(HWND)>;

    ~PrintQuestion() override { Help.Used = false; }

    PrintAnswer Answer(bool selection, int button, const Step& step)
    {
        DialogAnswers answers;
        answers.Then([&](HWND dialog) {
            step(dialog);
            PressButton(dialog, button);
        });
        PrintAnswer answer = {false, selection};
        answer.Confirmed = AskHowToPrint(Windows.Main, Selected, answer.SelectionOnly);
        return answer;
    }

    void Look(bool selection, const Step& step) { EXPECT_FALSE(Answer(selection, IDCANCEL, step).Confirmed); }

    PrinterDc Selected;
};

} // namespace

TEST_F(PrintQuestion, NamesThePrinterAndBelongsToItsOwner)
{
    DialogAnswers answers;
    answers.Then([this](HWND dialog) {
        EXPECT_EQ("Test Printer on " + Output, ControlText(dialog, PrinterLine));
        PressButton(dialog, IDCANCEL);
    });
    bool selectionOnly = false;
    EXPECT_FALSE(AskHowToPrint(Windows.Main, Selected, selectionOnly));
    ASSERT_EQ(1u, answers.Seen().size());
    EXPECT_EQ("Print File", answers.Seen()[0].Caption);
    EXPECT_EQ(Windows.Main, answers.Seen()[0].Owner);
}

TEST_F(PrintQuestion, WithoutASelectionOnlyTheEntireFileIsOffered)
{
    const PrintAnswer answer = Answer(false, IDOK, [](HWND dialog) {
        EXPECT_TRUE(IsChecked(dialog, EntireRadio));
        EXPECT_FALSE(IsChecked(dialog, SelectionRadio));
        EXPECT_TRUE(IsWindowEnabled(GetDlgItem(dialog, EntireRadio)));
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, SelectionRadio)));
    });
    EXPECT_TRUE(answer.Confirmed);
    EXPECT_FALSE(answer.SelectionOnly);
}

TEST_F(PrintQuestion, ASelectionIsPresetAndPrintedAlone)
{
    const PrintAnswer answer = Answer(true, IDOK, [](HWND dialog) {
        EXPECT_FALSE(IsChecked(dialog, EntireRadio));
        EXPECT_TRUE(IsChecked(dialog, SelectionRadio));
        EXPECT_TRUE(IsWindowEnabled(GetDlgItem(dialog, EntireRadio)));
        EXPECT_TRUE(IsWindowEnabled(GetDlgItem(dialog, SelectionRadio)));
    });
    EXPECT_TRUE(answer.Confirmed);
    EXPECT_TRUE(answer.SelectionOnly);
}

TEST_F(PrintQuestion, WithASelectionTheEntireFileCanBeChosen)
{
    const PrintAnswer answer = Answer(true, IDOK, [](HWND dialog) {
        Click(dialog, EntireRadio);
        EXPECT_TRUE(IsChecked(dialog, EntireRadio));
        EXPECT_FALSE(IsChecked(dialog, SelectionRadio));
    });
    EXPECT_TRUE(answer.Confirmed);
    EXPECT_FALSE(answer.SelectionOnly);
    const PrintAnswer back = Answer(true, IDOK, [](HWND dialog) {
        EXPECT_TRUE(IsChecked(dialog, SelectionRadio)) << "it is preset anew";
        Click(dialog, EntireRadio);
        Click(dialog, SelectionRadio);
        EXPECT_FALSE(IsChecked(dialog, EntireRadio));
    });
    EXPECT_TRUE(back.SelectionOnly);
}

TEST_F(PrintQuestion, TheBoxesShowTheSettings)
{
    for (const OptionBox& on : OptionBoxes) {
        *on.Setting = 7; // as by hand: any number but 0 is on
        Look(false, [&on](HWND dialog) {
            for (const OptionBox& box : OptionBoxes) {
                EXPECT_EQ(box.Control == on.Control, IsChecked(dialog, box.Control)) << on.Control;
            }
        });
        *on.Setting = 0;
    }
}

TEST_F(PrintQuestion, OkTakesEachBox)
{
    for (const OptionBox& clicked : OptionBoxes) {
        for (const bool on : {true, false}) {
            Answer(false, IDOK, [&](HWND dialog) {
                Click(dialog, clicked.Control);
                EXPECT_EQ(on, IsChecked(dialog, clicked.Control));
                EXPECT_EQ(on ? 0 : 1, *clicked.Setting) << "not before it is confirmed";
            });
            for (const OptionBox& box : OptionBoxes) {
                EXPECT_EQ(on && box.Control == clicked.Control ? 1 : 0, *box.Setting) << clicked.Control;
            }
        }
    }
    EXPECT_EQ(0, SettingsSeen.Saves) << "the job does";
}

TEST_F(PrintQuestion, CancelAndEscTakeNothing)
{
    for (const bool byKey : {false, true}) {
        DialogAnswers answers;
        answers.Then([byKey](HWND dialog) {
            Click(dialog, EntireRadio);
            for (const OptionBox& box : OptionBoxes) {
                Click(dialog, box.Control);
            }
            if (byKey) {
                PostMessageA(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 1);
            } else {
                PressButton(dialog, IDCANCEL);
            }
        });
        bool selectionOnly = true;
        EXPECT_FALSE(AskHowToPrint(Windows.Main, Selected, selectionOnly));
        for (const OptionBox& box : OptionBoxes) {
            EXPECT_EQ(0, *box.Setting);
        }
    }
}

TEST_F(PrintQuestion, EnterConfirms)
{
    DialogAnswers answers;
    answers.Then([](HWND) { PostMessageA(GetFocus(), WM_KEYDOWN, VK_RETURN, 1); });
    bool selectionOnly = false;
    EXPECT_TRUE(AskHowToPrint(Windows.Main, Selected, selectionOnly));
}

TEST_F(PrintQuestion, PrinterSetupBelongsToItAndNamesTheChosenPrinter)
{
    const TestPrinter another(Output, "Another Printer");
    const AnsweredPrinterDialog setup;
    for (const bool confirmed : {true, false}) {
        Choice.Confirmed = confirmed;
        Choice.Device = confirmed ? "Another Printer" : "Test Printer";
        Look(false, [](HWND dialog) {
            Click(dialog, PrinterSetupButton);
            EXPECT_EQ(dialog, Choice.Asked.hwndOwner);
            EXPECT_EQ(std::string(Choice.Device) + " on OUT:", ControlText(dialog, PrinterLine));
        });
    }
    EXPECT_EQ(2, Choice.Calls);
}

TEST_F(PrintQuestion, WhenTheSystemsSettingsChangeTheNewDefaultIsNamed)
{
    DialogAnswers answers;
    std::unique_ptr<TestPrinter> another;
    answers
        .Then([&](HWND dialog) {
            another = std::make_unique<TestPrinter>(Output, "Another Printer");
            SendMessageA(Windows.Main, WM_WININICHANGE, 0, 0); // the frame is told first, then the dialog
            SendMessageA(dialog, WM_WININICHANGE, 0, 0);
        })
        .Then([this](HWND dialog) {
            EXPECT_EQ("Another Printer on " + Output, ControlText(dialog, PrinterLine));
            PressButton(dialog, IDCANCEL);
        });
    bool selectionOnly = false;
    EXPECT_FALSE(AskHowToPrint(Windows.Main, Selected, selectionOnly));
}

TEST_F(PrintQuestion, PageSetupBelongsToItAndIsForItsPrinter)
{
    const WatchedContexts watched;
    DialogAnswers answers;
    answers.Then([](HWND dialog) { PressButton(dialog, PageSetupButton); })
        .Then([](HWND dialog) {
            SetDlgItemTextA(dialog, TopField, "2");
            PressButton(dialog, IDOK);
        })
        .Then([](HWND dialog) {
            EXPECT_EQ(1200, PrintJob.Page.MarginTop);
            EXPECT_EQ(1, SettingsSeen.Saves);
            PressButton(dialog, IDCANCEL);
        });
    bool selectionOnly = false;
    EXPECT_FALSE(AskHowToPrint(Windows.Main, Selected, selectionOnly));
    EXPECT_EQ(0, Contexts.Count) << "the dialog has one";
    ASSERT_EQ(3u, answers.Seen().size());
    EXPECT_EQ("Page Setup", answers.Seen()[1].Caption);
    EXPECT_NE(Windows.Main, answers.Seen()[1].Owner);
    EXPECT_EQ("Print File", answers.Seen()[2].Caption);
    EXPECT_STREQ("2", PrintOptions.TopMargin) << "what is set up stays when the question is cancelled";
}

TEST_F(PrintQuestion, HelpShowsItsTopic)
{
    const HelpRequests requests;
    HWND asking = nullptr;
    Look(false, [&asking](HWND dialog) {
        asking = dialog;
        Click(dialog, HelpButton);
    });
    ASSERT_EQ(1u, requests.Seen().size());
    EXPECT_EQ(asking, requests.Seen()[0].Window);
    EXPECT_EQ(static_cast<UINT>(HELP_CONTEXT), requests.Seen()[0].Command);
    EXPECT_EQ(365u, requests.Seen()[0].Topic);
    EXPECT_EQ(Help.Path, requests.Seen()[0].File);
}
