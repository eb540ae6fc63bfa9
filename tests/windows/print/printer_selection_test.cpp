#include "print/printer_selection.h"

#include "harness/dialogs.h"
#include "print/printing.h"
#include "view/frame_windows.h"
#include "view/screen_font.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// By number, as the rest of the world knows them.
constexpr UINT SetupCommand = 230;
constexpr int PrinterLine = 368;

class WithoutPrinter : public PrintingProgram {};

class SelectedPrinter : public ProgramWithPrinter {
protected:
    static bool IsHandle(HGLOBAL memory) { return GlobalFlags(memory) != GMEM_INVALID_HANDLE; }
    static bool IsLocked(HGLOBAL memory) { return (GlobalFlags(memory) & GMEM_LOCKCOUNT) != 0; }

    // What the program keeps, as the setup dialog gets it.
    static PRINTDLGA Kept()
    {
        const AnsweredPrinterDialog dialog;
        PrinterSetup(Windows.Main);
        EXPECT_EQ(1, Choice.Calls);
        return Choice.Asked;
    }

    // The printer that a device context is made of.
    static std::string UsedDevice()
    {
        const WatchedContexts watched;
        const PrinterDc printer;
        return Contexts.Device;
    }
};

// A window with the line that names the printer.
class PrinterLineWindow {
public:
    PrinterLineWindow()
        : Parent(CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr))
    {
        CreateWindowA("STATIC", "before", WS_CHILD, 0, 0, 10, 10, Parent,
                      reinterpret_cast<HMENU>(static_cast<INT_PTR>(PrinterLine)), nullptr, nullptr);
    }
    ~PrinterLineWindow() { DestroyWindow(Parent); }
    PrinterLineWindow(const PrinterLineWindow&) = delete;
    PrinterLineWindow& operator=(const PrinterLineWindow&) = delete;

    std::string Text() const
    {
        ShowPrinterName(Parent);
        return ControlText(Parent, PrinterLine);
    }

private:
    HWND Parent;
};

} // namespace

TEST_F(WithoutPrinter, ThereIsNoContext)
{
    const DialogAnswers none;
    EXPECT_EQ(nullptr, GetPrinterDC());
    EXPECT_EQ(nullptr, GetPrinterDC());
}

TEST_F(WithoutPrinter, SetupReportsItOnceAndDoesNothing)
{
    const AnsweredPrinterDialog dialog;
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    EXPECT_FALSE(PrinterSetup(Windows.Main));
    ASSERT_EQ(1u, answers.Seen().size());
    EXPECT_EQ(NoPrinterText, answers.Seen()[0].Text);
    EXPECT_EQ("Kestovar", answers.Seen()[0].Caption);
    EXPECT_EQ(Windows.Main, answers.Seen()[0].Owner);
    EXPECT_EQ(0, Choice.Calls);
}

TEST_F(WithoutPrinter, NothingIsNamed)
{
    const PrinterLineWindow line;
    EXPECT_EQ("before", line.Text());
}

TEST_F(SelectedPrinter, TheSystemsDefaultIsTakenInSilence)
{
    const DialogAnswers none;
    const PrinterDc printer;
    ASSERT_NE(nullptr, static_cast<HDC>(printer));
    EXPECT_EQ(DT_RASPRINTER, GetDeviceCaps(printer, TECHNOLOGY));
    EXPECT_EQ(600, GetDeviceCaps(printer, LOGPIXELSY));
    EXPECT_EQ(4800, GetDeviceCaps(printer, HORZRES));
    EXPECT_EQ(6000, GetDeviceCaps(printer, VERTRES));
    EXPECT_EQ("Test Printer", UsedDevice());
}

TEST_F(SelectedPrinter, IsNamedWithItsPort)
{
    const PrinterLineWindow line;
    const PrinterDc printer;
    EXPECT_EQ("Test Printer on " + Output, line.Text());
    const PRINTDLGA kept = Kept();
    EXPECT_FALSE(IsLocked(kept.hDevNames));
}

TEST_F(SelectedPrinter, StaysWhenAnotherBecomesTheDefault)
{
    EXPECT_EQ("Test Printer", UsedDevice());
    const TestPrinter another(Output, "Another Printer");
    EXPECT_EQ("Test Printer", UsedDevice());
    FreePrinterSelection();
    EXPECT_EQ("Another Printer", UsedDevice());
}

TEST_F(SelectedPrinter, IsForgottenWhenTheSystemsSettingsChange)
{
    EXPECT_EQ("Test Printer", UsedDevice());
    const TestPrinter another(Output, "Another Printer");
    const PRINTDLGA kept = Kept();
    SendMessageA(Windows.Main, WM_WININICHANGE, 0, 0);
    EXPECT_FALSE(IsHandle(kept.hDevMode));
    EXPECT_FALSE(IsHandle(kept.hDevNames));
    EXPECT_EQ("Another Printer", UsedDevice());
}

TEST_F(SelectedPrinter, IsFreedWithTheProgram)
{
    const PRINTDLGA kept = Kept();
    EXPECT_TRUE(IsHandle(kept.hDevMode));
    EXPECT_TRUE(IsHandle(kept.hDevNames));
    EndProgram();
    EXPECT_FALSE(IsHandle(kept.hDevMode));
    EXPECT_FALSE(IsHandle(kept.hDevNames));
    StartProgramOnce();
}

TEST_F(SelectedPrinter, FreedTwiceOrNeverUsedIsNoHarm)
{
    FreePrinterSelection();
    const PRINTDLGA kept = Kept();
    EXPECT_FALSE(IsLocked(kept.hDevMode));
    EXPECT_FALSE(IsLocked(kept.hDevNames));
    FreePrinterSelection();
    EXPECT_FALSE(IsHandle(kept.hDevMode));
    EXPECT_FALSE(IsHandle(kept.hDevNames));
    FreePrinterSelection();
    EXPECT_EQ("Test Printer", UsedDevice());
}

TEST_F(SelectedPrinter, SetupIsAskedOnceForTheOwnerWithWhatIsKept)
{
    const WatchedContexts watched;
    const AnsweredPrinterDialog dialog;
    Choice.Meanwhile = [] { EXPECT_EQ(0u, GetObjectType(Contexts.Last)) << "it was only to see whether there is one"; };
    PrinterSetup(Windows.Main);
    EXPECT_EQ(1, Choice.Calls);
    EXPECT_EQ(1, Contexts.Count);
    EXPECT_EQ(sizeof(void*) == 4 ? 66u : sizeof(PRINTDLGA), Choice.Asked.lStructSize);
    EXPECT_EQ(Windows.Main, Choice.Asked.hwndOwner);
    EXPECT_EQ(static_cast<DWORD>(PD_PRINTSETUP | PD_NOWARNING), Choice.Asked.Flags);
    EXPECT_NE(nullptr, Choice.Asked.hDevNames);
    EXPECT_NE(nullptr, Choice.Asked.hDevMode);
    const PRINTDLGA first = Choice.Asked;
    PrinterSetup(Windows.Main);
    EXPECT_EQ(first.hDevNames, Choice.Asked.hDevNames);
    EXPECT_EQ(first.hDevMode, Choice.Asked.hDevMode);
}

TEST_F(SelectedPrinter, SetupTellsWhetherItWasConfirmed)
{
    const AnsweredPrinterDialog dialog;
    EXPECT_FALSE(PrinterSetup(Windows.Main));
    Choice.Confirmed = true;
    EXPECT_TRUE(PrinterSetup(Windows.Main));
}

TEST_F(SelectedPrinter, WhatSetupHandsOutIsKeptAlsoWhenItIsCancelled)
{
    const TestPrinter another(Output, "Another Printer");
    FreePrinterSelection();
    const AnsweredPrinterDialog dialog;
    const PrinterLineWindow line;
    EXPECT_EQ("Another Printer", UsedDevice());
    for (const bool confirmed : {true, false}) {
        Choice.Confirmed = confirmed;
        Choice.Device = confirmed ? "Test Printer" : "Another Printer";
        EXPECT_EQ(confirmed, PrinterSetup(Windows.Main));
        EXPECT_EQ(Choice.Device, UsedDevice());
        EXPECT_EQ(std::string(Choice.Device) + " on OUT:", line.Text());
    }
}

TEST_F(SelectedPrinter, WhatSetupWorksOnStaysItsOwnWhenTheSystemsSettingsChangeMeanwhile)
{
    const AnsweredPrinterDialog dialog;
    HGLOBAL meanwhile = nullptr;
    bool within = false;
    Choice.Meanwhile = [&meanwhile, &within] {
        if (within) {
            return;
        }
        within = true;
        const PRINTDLGA asked = Choice.Asked;
        SendMessageA(Windows.Main, WM_WININICHANGE, 0, 0);
        EXPECT_TRUE(IsHandle(asked.hDevMode));
        EXPECT_TRUE(IsHandle(asked.hDevNames));
        PrinterSetup(Windows.Main); // which another selection is made for
        meanwhile = Choice.Asked.hDevNames;
        EXPECT_NE(asked.hDevNames, meanwhile);
        EXPECT_TRUE(IsHandle(meanwhile));
        Choice.Asked = asked;
    };
    PrinterSetup(Windows.Main);
    EXPECT_FALSE(IsHandle(meanwhile)) << "it is replaced by what the first one hands out";
    const HGLOBAL kept = Choice.Asked.hDevNames;
    Choice.Meanwhile = nullptr;
    PrinterSetup(Windows.Main);
    EXPECT_EQ(kept, Choice.Asked.hDevNames);
}

TEST_F(SelectedPrinter, TheSystemsOwnSetupBelongsToTheOwnerAndLeavesAPrinter)
{
    for (const int button : {IDCANCEL, IDOK}) {
        DialogAnswers answers;
        answers.ThenPress(button);
        EXPECT_EQ(button == IDOK, PrinterSetup(Windows.Main));
        EXPECT_EQ("Test Printer", UsedDevice());
        ASSERT_EQ(1u, answers.Seen().size());
        EXPECT_EQ(Windows.Main, answers.Seen()[0].Owner);
    }
}

TEST_F(SelectedPrinter, TheScreensFontIsMadeAnewOnceAPrinterIsConfirmed)
{
    const auto height = [] {
        LOGFONTA font = {};
        GetObjectA(Drawing.ScreenFont, sizeof font, &font);
        return font.lfHeight;
    };
    const LONG before = height();
    ViewOptions.FontSize = -30;
    const AnsweredPrinterDialog dialog;
    SendMessageA(Windows.Main, WM_COMMAND, SetupCommand, 0);
    EXPECT_EQ(Windows.Main, Choice.Asked.hwndOwner);
    EXPECT_EQ(before, height());
    Choice.Confirmed = true;
    SendMessageA(Windows.Main, WM_COMMAND, SetupCommand, 0);
    EXPECT_EQ(-30, height());
    EXPECT_EQ(2, Choice.Calls);
}
