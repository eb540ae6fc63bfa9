#include "print/page_setup.h"

#include "base/help.h"
#include "harness/dialogs.h"
#include "print/print_fonts.h"
#include "print/printing.h"
#include "view/frame_windows.h"
#include "view/gdi_holders.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace {

// The command and the controls by number, as the rest of the world knows them.
constexpr UINT PageSetupCommand = 231;
constexpr int LeftField = 430;
constexpr int TopField = 431;
constexpr int BottomField = 432;
constexpr int RightField = 433;
constexpr int HeaderField = 434;
constexpr int FooterField = 435;
constexpr int HeadFontBox = 437;
constexpr int HeadFontButton = 438;
constexpr int BodyFontBox = 440;
constexpr int BodyFontButton = 441;
constexpr int HelpButton = 998;

constexpr char MarginRefusal[] =
    "The margin values are incorrect. Either they are not valid numeric values, or they do "
    "not fit the selected page size.";

bool IsChecked(HWND dialog, int control)
{
    return IsDlgButtonChecked(dialog, control) == BST_CHECKED;
}

void Click(HWND dialog, int control)
{
    SendDlgItemMessageA(dialog, control, BM_CLICK, 0, 0);
}

struct MarginTexts {
    const char* Left;
    const char* Top;
    const char* Bottom;
    const char* Right;
};

void EnterMargins(HWND dialog, const MarginTexts& texts)
{
    SetDlgItemTextA(dialog, LeftField, texts.Left);
    SetDlgItemTextA(dialog, TopField, texts.Top);
    SetDlgItemTextA(dialog, BottomField, texts.Bottom);
    SetDlgItemTextA(dialog, RightField, texts.Right);
}

void ExpectTexts(const MarginTexts& texts)
{
    EXPECT_STREQ(texts.Left, PrintOptions.LeftMargin);
    EXPECT_STREQ(texts.Top, PrintOptions.TopMargin);
    EXPECT_STREQ(texts.Bottom, PrintOptions.BottomMargin);
    EXPECT_STREQ(texts.Right, PrintOptions.RightMargin);
}

void ExpectOnPaper(int left, int top, int bottom, int right)
{
    EXPECT_EQ(left, PrintJob.Page.MarginLeft);
    EXPECT_EQ(top, PrintJob.Page.MarginTop);
    EXPECT_EQ(bottom, PrintJob.Page.MarginBottom);
    EXPECT_EQ(right, PrintJob.Page.MarginRight);
}

// The dialog for the test printer.
class PageSetupDialog : public ProgramWithPrinter {
protected:
    using Step = std::function<void(HWND)>;

    ~PageSetupDialog() override { Help.Used = false; }

    static void Answer(HDC printer, int button, const Step& step)
    {
        DialogAnswers answers;
        answers.Then([&](HWND dialog) {
            step(dialog);
            PressButton(dialog, button);
        });
        PageSetup(Windows.Main, printer);
    }

    void Change(const Step& step) { Answer(Selected, IDOK, step); }
    void Look(const Step& step) { Answer(Selected, IDCANCEL, step); }
    void Enter(const MarginTexts& texts)
    {
        Change([&texts](HWND dialog) { EnterMargins(dialog, texts); });
    }

    // Whether each of these is reported, the dialog stays with it, and none is taken.
    void ExpectRefused(const std::vector<MarginTexts>& all)
    {
        const PageLayout before = PrintJob.Page;
        HWND first = nullptr;
        DialogAnswers answers;
        for (const MarginTexts& texts : all) {
            answers
                .Then([&](HWND dialog) {
                    first = dialog;
                    EnterMargins(dialog, texts);
                    PressButton(dialog, IDOK);
                })
                .Then([&](HWND box) {
                    EXPECT_EQ(first, GetWindow(box, GW_OWNER));
                    EXPECT_EQ(MarginRefusal, answers.Seen().back().Text) << texts.Top;
                    EXPECT_EQ("Kestovar", answers.Seen().back().Caption);
                    PressButton(box, IDOK);
                })
                .Then([&](HWND dialog) {
                    EXPECT_EQ(first, dialog);
                    EXPECT_EQ(texts.Left, ControlText(dialog, LeftField));
                    EXPECT_EQ(texts.Top, ControlText(dialog, TopField));
                    EXPECT_EQ(texts.Bottom, ControlText(dialog, BottomField));
                    EXPECT_EQ(texts.Right, ControlText(dialog, RightField));
                });
        }
        answers.ThenPress(IDCANCEL);
        PageSetup(Windows.Main, Selected);
        ExpectTexts({"1", "0.5", "0.25", "0.0"});
        ExpectOnPaper(before.MarginLeft, before.MarginTop, before.MarginBottom, before.MarginRight);
        EXPECT_EQ(0, SettingsSeen.Saves);
    }

    PrinterDc Selected;
};

class PageSetupWithoutPrinter : public PrintingProgram {};

// What the font dialog was asked, and what it answers.
struct FontDialog {
    int Calls = 0;
    CHOOSEFONTA Asked = {};
    LOGFONTA Initial = {};
    LOGFONTA Answer = {};
    BOOL Confirmed = FALSE;
};

FontDialog Fonts;

BOOL WINAPI AnswerFont(CHOOSEFONTA* dialog)
{
    ++Fonts.Calls;
    Fonts.Asked = *dialog;
    Fonts.Initial = *dialog->lpLogFont;
    *dialog->lpLogFont = Fonts.Answer;
    return Fonts.Confirmed;
}

class PrintFontChoice : public PageSetupDialog {
protected:
    PrintFontChoice() : Call("ChooseFontA", reinterpret_cast<void*>(AnswerFont))
    {
        Fonts = FontDialog{};
        CopyText(Fonts.Answer.lfFaceName, "Tahoma");
        Fonts.Answer.lfHeight = -20;
        Fonts.Answer.lfWeight = 700;
        Fonts.Answer.lfItalic = 255;
    }

    static void ExpectFont(const PrintFont& font, const char* name, int size, int weight, int italic)
    {
        EXPECT_STREQ(name, font.Name);
        EXPECT_EQ(size, font.Size);
        EXPECT_EQ(weight, font.Weight);
        EXPECT_EQ(italic, font.Italic);
    }

    static void ExpectInitial(const char* name, int height, int weight, bool italic)
    {
        EXPECT_STREQ(name, Fonts.Initial.lfFaceName);
        EXPECT_EQ(height, Fonts.Initial.lfHeight);
        EXPECT_EQ(weight, Fonts.Initial.lfWeight);
        EXPECT_EQ(italic, Fonts.Initial.lfItalic != 0);
    }

private:
    ReplacedCall Call;
};

// A font that goes with the object.
class MadeFont {
public:
    explicit MadeFont(HFONT font) : Font(font) {}
    ~MadeFont() { DeleteObject(Font); }
    MadeFont(const MadeFont&) = delete;
    MadeFont& operator=(const MadeFont&) = delete;
    operator HFONT() const { return Font; }

    LOGFONTA Facts() const
    {
        LOGFONTA facts = {};
        EXPECT_NE(0, GetObjectA(Font, sizeof facts, &facts));
        return facts;
    }

private:
    HFONT Font;
};

LONG OnPaper(int pixels)
{
    const WindowDc screen(nullptr);
    return -MulDiv(pixels, 600, GetDeviceCaps(screen, LOGPIXELSY));
}

constexpr int LargestSize = 400; // what any larger one counts as

} // namespace

TEST_F(PageSetupDialog, ShowsTheSettings)
{
    CopyText(PrintOptions.Header, "head");
    CopyText(PrintOptions.Footer, "");
    CopyText(PrintOptions.RightMargin, "x");
    for (const bool head : {true, false}) {
        PrintOptions.HeadFont.Use = head ? 7 : 0; // as by hand: any number but 0 is on
        PrintOptions.BodyFont.Use = head ? 0 : 1;
        Look([head](HWND dialog) {
            EXPECT_EQ("head", ControlText(dialog, HeaderField));
            EXPECT_EQ("", ControlText(dialog, FooterField));
            EXPECT_EQ("1", ControlText(dialog, LeftField));
            EXPECT_EQ("0.5", ControlText(dialog, TopField));
            EXPECT_EQ("0.25", ControlText(dialog, BottomField));
            EXPECT_EQ("x", ControlText(dialog, RightField));
            EXPECT_EQ(head, IsChecked(dialog, HeadFontBox));
            EXPECT_EQ(!head, IsChecked(dialog, BodyFontBox));
        });
    }
    EXPECT_EQ(0, SettingsSeen.Loads);
}

TEST_F(PageSetupDialog, LoadsTheSettingsWhenThereIsNoHeaderYet)
{
    PrintOptions.Header[0] = '\0';
    Look([](HWND dialog) { EXPECT_EQ("&f&l", ControlText(dialog, HeaderField)); });
    EXPECT_EQ(1, SettingsSeen.Loads);
    Look([](HWND) {});
    EXPECT_EQ(1, SettingsSeen.Loads);
}

TEST_F(PageSetupDialog, AnEmptyHeaderIsTakenAndLoadedAnewTheNextTime)
{
    Change([](HWND dialog) { SetDlgItemTextA(dialog, HeaderField, ""); });
    EXPECT_STREQ("", PrintOptions.Header);
    EXPECT_EQ(1, SettingsSeen.Saves);
    EXPECT_STREQ("", SettingsSeen.Saved.Header);
    Look([](HWND) {});
    EXPECT_EQ(1, SettingsSeen.Loads);
}

TEST_F(PageSetupDialog, OkTakesEverythingAndSavesItOnce)
{
    Change([](HWND dialog) {
        SetDlgItemTextA(dialog, HeaderField, "left/centre/right");
        SetDlgItemTextA(dialog, FooterField, "&d");
        EnterMargins(dialog, {"1.25", "2", "0.5", "0.01"});
        Click(dialog, HeadFontBox);
        EXPECT_STREQ("&f&l", PrintOptions.Header) << "not before it is confirmed";
        EXPECT_EQ(0, PrintOptions.HeadFont.Use);
        EXPECT_EQ(0, SettingsSeen.Saves);
    });
    EXPECT_STREQ("left/centre/right", PrintOptions.Header);
    EXPECT_STREQ("&d", PrintOptions.Footer);
    ExpectTexts({"1.25", "2", "0.5", "0.01"});
    ExpectOnPaper(750, 1200, 300, 6);
    EXPECT_EQ(1, PrintOptions.HeadFont.Use);
    EXPECT_EQ(0, PrintOptions.BodyFont.Use);
    EXPECT_EQ(1, SettingsSeen.Saves);
    EXPECT_STREQ("left/centre/right", SettingsSeen.Saved.Header);
    EXPECT_STREQ("0.01", SettingsSeen.Saved.RightMargin);
    EXPECT_EQ(1, SettingsSeen.Saved.HeadFont.Use);
    Change([](HWND dialog) {
        Click(dialog, HeadFontBox);
        Click(dialog, BodyFontBox);
    });
    EXPECT_EQ(0, PrintOptions.HeadFont.Use);
    EXPECT_EQ(1, PrintOptions.BodyFont.Use);
    EXPECT_EQ(2, SettingsSeen.Saves);
}

TEST_F(PageSetupDialog, CancelAndEscTakeNothing)
{
    for (const bool byKey : {false, true}) {
        DialogAnswers answers;
        answers.Then([byKey](HWND dialog) {
            SetDlgItemTextA(dialog, HeaderField, "another");
            SetDlgItemTextA(dialog, FooterField, "another");
            EnterMargins(dialog, {"2", "2", "2", "2"});
            Click(dialog, HeadFontBox);
            Click(dialog, BodyFontBox);
            if (byKey) {
                PostMessageA(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 1);
            } else {
                PressButton(dialog, IDCANCEL);
            }
        });
        PageSetup(Windows.Main, Selected);
        EXPECT_STREQ("&f&l", PrintOptions.Header);
        EXPECT_STREQ("/-&p-", PrintOptions.Footer);
        ExpectTexts({"1", "0.5", "0.25", "0.0"});
        ExpectOnPaper(0, 0, 0, 0);
        EXPECT_EQ(0, PrintOptions.HeadFont.Use);
        EXPECT_EQ(0, PrintOptions.BodyFont.Use);
        EXPECT_EQ(0, SettingsSeen.Saves);
    }
}

TEST_F(PageSetupDialog, HasItsCaptionAndTheFrameAsItsOwnerAndEnterConfirms)
{
    DialogAnswers answers;
    answers.Then([](HWND) { PostMessageA(GetFocus(), WM_KEYDOWN, VK_RETURN, 1); });
    PageSetup(Windows.Main, Selected);
    EXPECT_EQ(1, SettingsSeen.Saves);
    ASSERT_EQ(1u, answers.Seen().size());
    EXPECT_EQ("Page Setup", answers.Seen()[0].Caption);
    EXPECT_EQ(Windows.Main, answers.Seen()[0].Owner);
}

TEST_F(PageSetupDialog, FieldsTakeAsManyCharactersAsTheSettingsHold)
{
    Change([](HWND dialog) {
        for (const int field : {HeaderField, FooterField}) {
            EXPECT_EQ(59, SendDlgItemMessageA(dialog, field, EM_GETLIMITTEXT, 0, 0));
        }
        for (const int field : {LeftField, TopField, BottomField, RightField}) {
            EXPECT_EQ(5, SendDlgItemMessageA(dialog, field, EM_GETLIMITTEXT, 0, 0));
        }
        SetDlgItemTextA(dialog, HeaderField, std::string(80, 'h').c_str());
        SetDlgItemTextA(dialog, FooterField, std::string(80, 'f').c_str());
        EnterMargins(dialog, {"1.00000", "0.50001", "00000000000001", "0.2500x"});
    });
    EXPECT_EQ(std::string(59, 'h'), PrintOptions.Header);
    EXPECT_EQ(std::string(59, 'f'), PrintOptions.Footer);
    ExpectTexts({"1.000", "0.500", "00000", "0.250"});
    ExpectOnPaper(600, 300, 0, 150);
}

TEST_F(PageSetupDialog, MarginsAreInInchesOrCentimetresAsTheUserMeasures)
{
    Enter({"2.5", ".5", "", "0.125"});
    ExpectOnPaper(1500, 300, 0, 72);
    Intl.Measure = 0;
    Enter({"2.5", ".5", "", "0.125"});
    ExpectOnPaper(590, 118, 0, 28);
    EXPECT_STREQ("", PrintOptions.BottomMargin);
    Intl.Measure = 5; // any number but 0 is inches
    Enter({"2.5", ".5", "", "0.125"});
    ExpectOnPaper(1500, 300, 0, 72);
}

TEST_F(PageSetupDialog, MarginsThatAreNoNumbersAreRefusedInAnyField)
{
    ExpectRefused({{"1.2.5", "1", "1", "1"}, {"1", "-1", "1", "1"}, {"1", "1", "1 ", "1"}, {"1", "1", "1", "x"}});
}

TEST_F(PageSetupDialog, MarginsAboveAndBelowLeaveTwentyUnits)
{
    ASSERT_EQ(6000, GetDeviceCaps(Selected, VERTRES));
    Intl.Measure = 0;
    ExpectRefused({{"1", "0", "99999", "1"}, {"1", "12.01", "13.31", "1"}}); // 2837 and 3144 units
    Enter({"1", "12", "13.32", "1"});                                        // 2834 and 3146
    EXPECT_EQ(5980, PrintJob.Page.MarginTop + PrintJob.Page.MarginBottom);
    EXPECT_EQ(1, SettingsSeen.Saves);
}

TEST_F(PageSetupDialog, MarginsAtTheSidesMayBeAsLargeAsTheyLike)
{
    Enter({"99", "0", "0", "99"});
    ExpectOnPaper(59400, 0, 0, 59400);
    EXPECT_EQ(1, SettingsSeen.Saves);
}

TEST_F(PageSetupDialog, AfterARefusalCodesAndBoxesStayTakenThoughItIsCancelled)
{
    DialogAnswers answers;
    answers
        .Then([](HWND dialog) {
            SetDlgItemTextA(dialog, HeaderField, "another head");
            SetDlgItemTextA(dialog, FooterField, "another foot");
            Click(dialog, HeadFontBox);
            Click(dialog, BodyFontBox);
            EnterMargins(dialog, {"2", "2", "2", "x"});
            PressButton(dialog, IDOK);
        })
        .Then([](HWND box) {
            EXPECT_STREQ("another head", PrintOptions.Header);
            PressButton(box, IDOK);
        })
        .ThenPress(IDCANCEL);
    PageSetup(Windows.Main, Selected);
    EXPECT_STREQ("another head", PrintOptions.Header);
    EXPECT_STREQ("another foot", PrintOptions.Footer);
    EXPECT_EQ(1, PrintOptions.HeadFont.Use);
    EXPECT_EQ(1, PrintOptions.BodyFont.Use);
    ExpectTexts({"1", "0.5", "0.25", "0.0"});
    ExpectOnPaper(0, 0, 0, 0);
    EXPECT_EQ(0, SettingsSeen.Saves);
}

TEST_F(PageSetupDialog, AfterARefusalOtherMarginsCanBeEntered)
{
    DialogAnswers answers;
    answers
        .Then([](HWND dialog) {
            EnterMargins(dialog, {"2", "20", "2", "0"});
            PressButton(dialog, IDOK);
        })
        .ThenPress(IDOK)
        .Then([](HWND dialog) {
            EnterMargins(dialog, {"2", "3", "2", "0"});
            PressButton(dialog, IDOK);
        });
    PageSetup(Windows.Main, Selected);
    ExpectTexts({"2", "3", "2", "0"});
    ExpectOnPaper(1200, 1800, 1200, 0);
    EXPECT_EQ(1, SettingsSeen.Saves);
}

TEST_F(PageSetupDialog, AGivenContextIsWhatMarginsAreForAndStaysTheCallers)
{
    const WatchedContexts watched;
    const HDC given = CreateCompatibleDC(nullptr);
    const int screen = GetDeviceCaps(given, LOGPIXELSY);
    ASSERT_NE(600, screen);
    Answer(given, IDOK, [&](HWND dialog) {
        EXPECT_EQ(screen, PrintJob.Page.LogPixelsY);
        EXPECT_EQ(GetDeviceCaps(given, VERTRES), PrintJob.Page.PageHeight);
        EnterMargins(dialog, {"1", "2", "0", "0.5"});
    });
    ExpectOnPaper(screen, 2 * screen, 0, screen / 2);
    EXPECT_EQ(0, Contexts.Count);
    EXPECT_EQ(static_cast<DWORD>(OBJ_MEMDC), GetObjectType(given));
    DeleteDC(given);
}

TEST_F(PageSetupDialog, WithoutAContextOneIsMadeOfTheSelectedPrinterForAsLongAsItStands)
{
    const WatchedContexts watched;
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        EXPECT_EQ(1, Contexts.Count);
        EXPECT_EQ(static_cast<DWORD>(OBJ_DC), GetObjectType(Contexts.Last));
        EXPECT_EQ(600, PrintJob.Page.LogPixelsY);
        EXPECT_EQ(6000, PrintJob.Page.PageHeight);
        EnterMargins(dialog, {"1", "2", "3", "0.5"});
        PressButton(dialog, IDOK);
    });
    SendMessageA(Windows.Main, WM_COMMAND, PageSetupCommand, 0);
    ExpectOnPaper(600, 1200, 1800, 300);
    EXPECT_EQ(1, Contexts.Count);
    EXPECT_EQ("Test Printer", Contexts.Device);
    EXPECT_EQ(0u, GetObjectType(Contexts.Last));
}

TEST_F(PageSetupWithoutPrinter, ItIsReportedAndNothingIsAskedOrLoaded)
{
    PrintOptions.Header[0] = '\0';
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    PageSetup(Windows.Main, nullptr);
    ASSERT_EQ(1u, answers.Seen().size());
    EXPECT_EQ(NoPrinterText, answers.Seen()[0].Text);
    EXPECT_EQ(Windows.Main, answers.Seen()[0].Owner);
    EXPECT_EQ(0, SettingsSeen.Loads);
    EXPECT_EQ(0, SettingsSeen.Saves);
}

TEST_F(PageSetupDialog, HelpShowsItsTopic)
{
    const HelpRequests requests;
    HWND asking = nullptr;
    Look([&asking](HWND dialog) {
        asking = dialog;
        Click(dialog, HelpButton);
    });
    ASSERT_EQ(1u, requests.Seen().size());
    EXPECT_EQ(asking, requests.Seen()[0].Window);
    EXPECT_EQ(static_cast<UINT>(HELP_CONTEXT), requests.Seen()[0].Command);
    EXPECT_EQ(300u, requests.Seen()[0].Topic);
    EXPECT_EQ(Help.Path, requests.Seen()[0].File);
}

TEST_F(PrintFontChoice, AsksForThePrintersFontsToo)
{
    Look([this](HWND dialog) {
        Click(dialog, HeadFontButton);
        EXPECT_EQ(sizeof(void*) == 4 ? 60u : sizeof(CHOOSEFONTA), Fonts.Asked.lStructSize);
        EXPECT_EQ(dialog, Fonts.Asked.hwndOwner);
        EXPECT_EQ(static_cast<HDC>(Selected), Fonts.Asked.hDC);
        EXPECT_EQ(static_cast<DWORD>(CF_SCREENFONTS | CF_PRINTERFONTS | CF_ENABLEHOOK | CF_INITTOLOGFONTSTRUCT |
                                     CF_FORCEFONTEXIST),
                  Fonts.Asked.Flags);
        EXPECT_NE(nullptr, Fonts.Asked.lpfnHook);
    });
    EXPECT_EQ(1, Fonts.Calls);
}

TEST_F(PrintFontChoice, StartsWithTheScreensFontWhenNoneHasASize)
{
    CopyText(ViewOptions.FontName, "Courier");
    ViewOptions.FontSize = -17;
    ViewOptions.FontWeight = 700;
    ViewOptions.FontItalic = 1;
    CopyText(PrintOptions.HeadFont.Name, "Tahoma");
    PrintOptions.HeadFont.Weight = 100;
    for (const PrintFontKind which : {PrintFontKind::HeaderFooter, PrintFontKind::Body}) {
        ChooseHFFont(Windows.Main, Selected, which);
        ExpectInitial("Courier", -17, 700, true);
    }
}

TEST_F(PrintFontChoice, StartsWithTheChosenFont)
{
    CopyText(PrintOptions.HeadFont.Name, "Tahoma");
    PrintOptions.HeadFont.Size = -30;
    PrintOptions.HeadFont.Weight = 700;
    PrintOptions.HeadFont.Italic = 7; // as by hand: any number but 0 is on
    CopyText(PrintOptions.BodyFont.Name, "Courier");
    PrintOptions.BodyFont.Size = -1;
    PrintOptions.BodyFont.Weight = 300;
    Look([](HWND dialog) {
        Click(dialog, HeadFontButton);
        ExpectInitial("Tahoma", -30, 700, true);
        Click(dialog, BodyFontButton);
        ExpectInitial("Courier", -1, 300, false);
    });
}

TEST_F(PrintFontChoice, TheChosenFontIsKeptAtOnceAndSavedWithThePage)
{
    Fonts.Confirmed = TRUE;
    Look([](HWND dialog) {
        Click(dialog, HeadFontButton);
        ExpectFont(PrintOptions.HeadFont, "Tahoma", -20, 700, 1);
        ExpectFont(PrintOptions.BodyFont, "", 0, 0, 0);
        CopyText(Fonts.Answer.lfFaceName, "Courier");
        Fonts.Answer.lfHeight = 15; // held negative
        Fonts.Answer.lfItalic = 0;
        Click(dialog, BodyFontButton);
        EXPECT_FALSE(IsChecked(dialog, HeadFontBox));
    });
    ExpectFont(PrintOptions.HeadFont, "Tahoma", -20, 700, 1);
    ExpectFont(PrintOptions.BodyFont, "Courier", -15, 700, 0);
    EXPECT_EQ(0, SettingsSeen.Saves);
    Change([](HWND) {});
    EXPECT_EQ(1, SettingsSeen.Saves);
    ExpectFont(SettingsSeen.Saved.HeadFont, "Tahoma", -20, 700, 1);
    EXPECT_EQ(0, SettingsSeen.Saved.HeadFont.Use);
}

TEST_F(PrintFontChoice, CancelKeepsTheFont)
{
    CopyText(PrintOptions.HeadFont.Name, "Courier");
    PrintOptions.HeadFont.Size = -30;
    PrintOptions.HeadFont.Weight = 400;
    for (const PrintFontKind which : {PrintFontKind::HeaderFooter, PrintFontKind::Body}) {
        ChooseHFFont(Windows.Main, Selected, which);
    }
    EXPECT_EQ(2, Fonts.Calls);
    ExpectFont(PrintOptions.HeadFont, "Courier", -30, 400, 0);
    ExpectFont(PrintOptions.BodyFont, "", 0, 0, 0);
}

TEST_F(PageSetupDialog, TheSystemsFontDialogSaysWhichFontIsChosen)
{
    PrintOptions.BodyFont.Size = -20;
    CopyText(PrintOptions.BodyFont.Name, "Tahoma");
    DialogAnswers answers;
    answers.Then([](HWND dialog) { PressButton(dialog, HeadFontButton); })
        .ThenPress(IDCANCEL)
        .Then([](HWND dialog) { PressButton(dialog, BodyFontButton); })
        .ThenPress(IDOK)
        .ThenPress(IDCANCEL);
    PageSetup(Windows.Main, Selected);
    ASSERT_EQ(5u, answers.Seen().size());
    EXPECT_EQ("Header and Footer Font", answers.Seen()[1].Caption);
    EXPECT_EQ("Body Font", answers.Seen()[3].Caption);
    EXPECT_EQ(0, PrintOptions.HeadFont.Size);
    EXPECT_STREQ("Tahoma", PrintOptions.BodyFont.Name);
}

TEST_F(PageSetupDialog, AChosenFontIsAsLargeOnThePaper)
{
    PrintFont chosen;
    CopyText(chosen.Name, "Tahoma");
    chosen.Size = -13;
    chosen.Weight = 700;
    chosen.Italic = 7;
    const MadeFont font(CreatePrintFont(chosen, Selected));
    EXPECT_EQ(OnPaper(13), font.Facts().lfHeight);
    EXPECT_EQ(0, font.Facts().lfWidth);
    EXPECT_EQ(700, font.Facts().lfWeight);
    EXPECT_EQ(1, font.Facts().lfItalic);
    EXPECT_EQ(DEFAULT_CHARSET, font.Facts().lfCharSet);
    EXPECT_STREQ("Tahoma", font.Facts().lfFaceName);
    chosen.Size = 13; // which a font is not held with
    chosen.Italic = 0;
    const MadeFont same(CreatePrintFont(chosen, Selected));
    EXPECT_EQ(OnPaper(13), same.Facts().lfHeight);
    EXPECT_EQ(0, same.Facts().lfItalic);
}

TEST_F(PageSetupDialog, TheScreensFontIsAsLargeOnThePaper)
{
    LOGFONTA screen = {};
    screen.lfHeight = 20;
    screen.lfWidth = 9;
    screen.lfWeight = 700;
    screen.lfItalic = 1;
    screen.lfUnderline = 1;
    screen.lfCharSet = OEM_CHARSET;
    screen.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
    CopyText(screen.lfFaceName, "Courier");
    for (const LONG height : {20L, -20L}) {
        screen.lfHeight = height;
        const MadeFont shown(CreateFontIndirectA(&screen));
        const MadeFont printed(CreateFontLike(shown, Selected));
        LOGFONTA expected = screen;
        expected.lfHeight = OnPaper(20);
        expected.lfWidth = 0;
        const LOGFONTA facts = printed.Facts();
        EXPECT_EQ(0, memcmp(&expected, &facts, offsetof(LOGFONTA, lfFaceName)));
        EXPECT_STREQ("Courier", facts.lfFaceName);
    }
}

TEST_F(PageSetupDialog, AbsurdSizesGiveFontsThatCanBePrintedWith)
{
    for (const std::int32_t size : {INT32_MIN, INT32_MIN + 1, INT32_MAX, 100000, -401, 0}) {
        SCOPED_TRACE(size);
        PrintFont chosen;
        chosen.Size = size;
        LOGFONTA screen = {};
        screen.lfHeight = size;
        const MadeFont shown(CreateFontIndirectA(&screen));
        const MadeFont like(CreateFontLike(shown, Selected));
        const MadeFont font(CreatePrintFont(chosen, Selected));
        for (const MadeFont* made : {&like, &font}) {
            EXPECT_EQ(size != 0 ? OnPaper(LargestSize) : 0, made->Facts().lfHeight);
            const SelectedObject selected(Selected, *made);
            EXPECT_GT(PrintedLineHeight(Selected), 0);
            EXPECT_LT(PrintedLineHeight(Selected), 10000);
        }
    }
}

TEST_F(PageSetupDialog, ALineIsAsHighAsItsFontWithTheRoomBelow)
{
    PrintFont chosen;
    CopyText(chosen.Name, "Tahoma");
    chosen.Size = -40;
    const MadeFont font(CreatePrintFont(chosen, Selected));
    const SelectedObject selected(Selected, font);
    TEXTMETRICA metrics;
    GetTextMetricsA(Selected, &metrics);
    EXPECT_GT(metrics.tmHeight, 200);
    EXPECT_EQ(metrics.tmHeight + metrics.tmExternalLeading, PrintedLineHeight(Selected));
}
