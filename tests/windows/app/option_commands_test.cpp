#include "app/option_commands.h"

#include "app/app_state.h"
#include "app/menu_state.h"
#include "app/open_sequence.h"
#include "base/text.h"
#include "buttonbar/button_order.h"
#include "document/document_state.h"
#include "harness/dialogs.h"
#include "harness/picture.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "harness/system_calls.h"
#include "print/printer_selection.h"
#include "view/frame_windows.h"
#include "view/gdi_holders.h"
#include "view/palette.h"
#include "view/screen_font.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <commdlg.h>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace {

// The commands and controls by number, as the rest of the world knows them.
constexpr UINT TextMode = 270;
constexpr UINT HexMode = 271;
constexpr UINT Increase = 275;
constexpr UINT Decrease = 276;
constexpr UINT FontCommand = 280;
constexpr UINT PreferencesCommand = 281;
constexpr UINT ButtonsCommand = 282;
constexpr UINT ColoursCommand = 283;
constexpr UINT LengthCommand = 284;
constexpr UINT CloseCommand = 300;
constexpr int LengthField = 390;
constexpr int FirstColour = 300;
constexpr int RegionBox = 320;
constexpr int BackgroundRadio = 323;

void Command(UINT id)
{
    SendMessageA(Windows.Main, WM_COMMAND, id, 0);
}

bool IsGrey(UINT id)
{
    return (GetMenuState(Windows.MainMenu, id, MF_BYCOMMAND) & MF_GRAYED) != 0;
}

using Step = std::function<void(HWND)>; // of the user, at a dialog

void LookOnly(HWND)
{
}

// Runs the command of a dialog and answers it.
void Answer(UINT id, int button, const Step& step = LookOnly)
{
    DialogAnswers answers;
    answers.Then([&](HWND dialog) {
        step(dialog);
        PressButton(dialog, button);
    });
    Command(id);
}

void EnterLength(const char* text, int button = IDOK)
{
    Answer(LengthCommand, button, [text](HWND dialog) { SetDlgItemTextA(dialog, LengthField, text); });
}

// A pixel in a corner of a window that no dialog covers, in a colour that the program does not draw.
class Mark {
public:
    explicit Mark(HWND window) : Window(window)
    {
        RECT client;
        GetClientRect(window, &client);
        Place = {client.right - 3, client.bottom - 3};
        UpdateWindow(window);
        WindowDc dc(window);
        SetPixel(dc, Place.x, Place.y, Colour);
    }

    bool IsThere() const
    {
        UpdateWindow(Window);
        WindowDc dc(Window);
        return GetPixel(dc, Place.x, Place.y) == Colour;
    }

private:
    static constexpr COLORREF Colour = RGB(250, 100, 20);
    HWND Window;
    POINT Place = {};
};

class OptionCommands : public RunningProgram {
protected:
    OptionCommands() : Text("option.txt", Lines()), Binary("option.bin", std::string(5000, 'x'))
    {
        SetWindowPos(Windows.Main, nullptr, 0, 0, 800, 600, SWP_NOZORDER | SWP_NOACTIVATE);
        CopyText(ViewOptions.FontName, "Courier");
        ViewOptions.Ruler = 1;
        CreateScreenFont(false);
        PumpMessages();
        UpdateWindow(Windows.Main);
    }

    ~OptionCommands() override
    {
        View.LockTopLine = View.LockRows = View.LockColStart = View.LockCols = 0;
        Command(TextMode);
    }

    static std::string Lines()
    {
        std::string content;
        for (int line = 0; line < 300; ++line) {
            content += std::string(400, 'x') + "\n";
        }
        return content;
    }

    static void Open(const ScratchFile& file)
    {
        ASSERT_TRUE(OpenSequence(Windows.Main, file.Path()));
        PumpMessages();
    }

    ScratchFile Text;
    ScratchFile Binary; // a line too long for a text
};

// The colours, by the command.
class ColoursCommands : public OptionCommands {
protected:
    ~ColoursCommands() override
    {
        ViewOptions = ViewSettings{};
        Answer(ColoursCommand, IDOK);
    }

    static void SetRegion(HWND dialog, int region, int foreground, int background)
    {
        SendDlgItemMessageA(dialog, RegionBox, CB_SETCURSEL, static_cast<WPARAM>(region), 0);
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(RegionBox, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, RegionBox)));
        SendDlgItemMessageA(dialog, BackgroundRadio - 1, BM_CLICK, 0, 0);
        SendDlgItemMessageA(dialog, FirstColour + foreground, BM_CLICK, 0, 0);
        SendDlgItemMessageA(dialog, BackgroundRadio, BM_CLICK, 0, 0);
        SendDlgItemMessageA(dialog, FirstColour + background, BM_CLICK, 0, 0);
    }

    // Another pair of colours for each region.
    static void SetAllRegions(HWND dialog)
    {
        SetRegion(dialog, OutputRegion, 6, 12);
        SetRegion(dialog, RulerRegion, 4, 2);
        SetRegion(dialog, MarkedRegion, 1, 3);
        SetRegion(dialog, StatusRegion, 9, 13);
        SetRegion(dialog, LockedRegion, 5, 14);
    }

    static COLORREF ColourOf(HBRUSH brush)
    {
        LOGBRUSH facts = {};
        EXPECT_NE(0, GetObjectA(brush, sizeof facts, &facts));
        return facts.lbColor;
    }

    static COLORREF ColourOfPen()
    {
        LOGPEN facts = {};
        EXPECT_NE(0, GetObjectA(Drawing.RulerPen, sizeof facts, &facts));
        return facts.lopnColor;
    }

    static void ExpectObjects(int output, int ruler, int marked, int status, int pen)
    {
        EXPECT_EQ(Palette[output], ColourOf(Drawing.OutputBrush));
        EXPECT_EQ(Palette[ruler], ColourOf(Drawing.RulerBrush));
        EXPECT_EQ(Palette[marked], ColourOf(Drawing.MarkedBrush));
        EXPECT_EQ(Palette[status], ColourOf(Drawing.StatusBrush));
        EXPECT_EQ(Palette[pen], ColourOfPen());
    }

    // How often a window shows a colour where no dialog has covered it.
    static int Count(HWND window, int index)
    {
        UpdateWindow(window);
        RECT area;
        GetClientRect(window, &area);
        area.left = window == Windows.Status ? 0 : area.right * 2 / 3;
        const Picture picture = PictureOf(window, area);
        const COLORREF colour = Palette[index];
        const std::uint32_t pixel = (colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF);
        return static_cast<int>(std::count(picture.Pixels.begin(), picture.Pixels.end(), pixel));
    }
};

// A printer in the place of the system's.
struct PrinterCalls {
    int Selections;
    DWORD Flags;
    HWND Owner;
    bool Exists;
    HGLOBAL Names;
    int Contexts;
    std::string Driver;
    std::string Device;
    std::string Output;
    const void* Mode;
    HDC Context;
    CHOOSEFONTA Asked;
};

PrinterCalls Printer;

constexpr char DriverName[] = "winspool";
constexpr char DeviceName[] = "The Printer";
constexpr char OutputName[] = "LPT1:";

BOOL WINAPI SelectPrinter(PRINTDLGA* dialog)
{
    ++Printer.Selections;
    Printer.Flags = dialog->Flags;
    Printer.Owner = dialog->hwndOwner;
    if (!Printer.Exists) {
        return FALSE;
    }
    const std::size_t size = sizeof(DEVNAMES) + sizeof DriverName + sizeof DeviceName + sizeof OutputName;
    Printer.Names = dialog->hDevNames = GlobalAlloc(GHND, size);
    DEVNAMES* const names = static_cast<DEVNAMES*>(GlobalLock(dialog->hDevNames));
    names->wDriverOffset = sizeof(DEVNAMES);
    names->wDeviceOffset = static_cast<WORD>(names->wDriverOffset + sizeof DriverName);
    names->wOutputOffset = static_cast<WORD>(names->wDeviceOffset + sizeof DeviceName);
    char* const texts = reinterpret_cast<char*>(names);
    memcpy(texts + names->wDriverOffset, DriverName, sizeof DriverName);
    memcpy(texts + names->wDeviceOffset, DeviceName, sizeof DeviceName);
    memcpy(texts + names->wOutputOffset, OutputName, sizeof OutputName);
    GlobalUnlock(dialog->hDevNames);
    dialog->hDevMode = GlobalAlloc(GHND, sizeof(DEVMODEA));
    return TRUE;
}

HDC WINAPI CreatePrinterContext(LPCSTR driver, LPCSTR device, LPCSTR output, const DEVMODEA* mode)
{
    ++Printer.Contexts;
    Printer.Driver = driver;
    Printer.Device = device;
    Printer.Output = output;
    Printer.Mode = mode;
    return Printer.Context = CreateCompatibleDC(nullptr);
}

BOOL WINAPI CancelFont(CHOOSEFONTA* dialog)
{
    Printer.Asked = *dialog;
    return FALSE;
}

class PrinterFonts : public OptionCommands {
protected:
    PrinterFonts()
        : Selecting("PrintDlgA", reinterpret_cast<void*>(SelectPrinter)),
          Creating("CreateDCA", reinterpret_cast<void*>(CreatePrinterContext)),
          Choosing("ChooseFontA", reinterpret_cast<void*>(CancelFont))
    {
        FreePrinterSelection();
        Printer = PrinterCalls{};
    }

    ~PrinterFonts() override { FreePrinterSelection(); }

private:
    ReplacedCall Selecting;
    ReplacedCall Creating;
    ReplacedCall Choosing;
};

} // namespace

TEST_F(OptionCommands, TheFontStepsAreGreyWithoutAFile)
{
    EXPECT_TRUE(IsGrey(Increase));
    EXPECT_TRUE(IsGrey(Decrease));
    const BeepCounter beeps;
    const std::int32_t size = ViewOptions.FontSize;
    Command(Increase);
    Command(Decrease);
    EXPECT_EQ(size, ViewOptions.FontSize);
    EXPECT_EQ(0, beeps.Count());
    Open(Text);
    EXPECT_FALSE(IsGrey(Increase));
    EXPECT_FALSE(IsGrey(Decrease));
    Command(CloseCommand);
    EXPECT_TRUE(IsGrey(Increase));
    EXPECT_TRUE(IsGrey(Decrease));
}

TEST_F(OptionCommands, TheFontStepsMakeTheFontLargerAndSmaller)
{
    Open(Text);
    const BeepCounter beeps;
    ViewOptions.FontSize = -MulDiv(20, Drawing.LogPixelsY, 72);
    Command(Increase);
    EXPECT_EQ(-MulDiv(22, Drawing.LogPixelsY, 72), ViewOptions.FontSize);
    Command(Decrease);
    Command(Decrease);
    EXPECT_EQ(-MulDiv(18, Drawing.LogPixelsY, 72), ViewOptions.FontSize);
    EXPECT_EQ(0, beeps.Count());
}

TEST_F(OptionCommands, TheFontStepsBeepInADumpWhereAnotherFontStandsIn)
{
    CopyText(ViewOptions.FontName, "Tahoma");
    CreateScreenFont(false);
    Open(Text);
    Command(HexMode);
    ASSERT_TRUE(View.SubstituteFixedFont);
    const BeepCounter beeps;
    Command(Increase);
    Command(Decrease);
    EXPECT_EQ(2, beeps.Count());
    EXPECT_EQ(-13, ViewOptions.FontSize);
    Command(TextMode);
    Command(Increase);
    EXPECT_EQ(2, beeps.Count());
    EXPECT_GT(-13, ViewOptions.FontSize);
}

TEST_F(OptionCommands, TheLineLengthOfAFileThatIsShownAsTextThoughItIsNoneTakesEffectAtOnce)
{
    Open(Binary);
    Command(TextMode);
    ASSERT_FALSE(View.HexMode);
    ASSERT_FALSE(Document.IsText);
    ASSERT_EQ(67, Document.LineCount);
    View.LockColStart = 2;
    View.TopLine = 5;
    View.LeftColumn = 4;
    View.HiliteLine = 3;
    View.HiliteLen = 2;
    View.SelLineA = View.SelLineB = 2;
    SetSelectionMenuState(true);
    const Mark mark(Windows.View);
    EnterLength("200");
    EXPECT_EQ(200, DocumentOptions.FixedLineLen);
    EXPECT_EQ(25, Document.LineCount);
    EXPECT_EQ(200, Document.LongestLine);
    EXPECT_EQ(0, View.TopLine);
    EXPECT_EQ(2, View.LeftColumn);
    EXPECT_EQ(0, View.HiliteLine);
    EXPECT_EQ(0, View.HiliteLen);
    EXPECT_EQ(0, View.SelLineA);
    EXPECT_EQ(0, View.SelLineB);
    EXPECT_TRUE(IsGrey(250));
    EXPECT_TRUE(IsGrey(221));
    EXPECT_FALSE(mark.IsThere());
    const std::int32_t left = View.MaxLeft;
    EXPECT_GT(left, 0) << "a line is wider than the view";
    EnterLength("20");
    EXPECT_EQ(250, Document.LineCount);
    EXPECT_LT(View.MaxLeft, left);
    RECT view;
    GetClientRect(Windows.View, &view);
    EXPECT_EQ(250 - view.bottom / View.LineHeight, View.MaxTop);
}

TEST_F(OptionCommands, TheSameLengthConfirmedIsTakenAnewToo)
{
    Open(Binary);
    Command(TextMode);
    View.TopLine = 5;
    const Mark mark(Windows.View);
    Answer(LengthCommand, IDOK);
    EXPECT_EQ(0, View.TopLine);
    EXPECT_EQ(67, Document.LineCount);
    EXPECT_FALSE(mark.IsThere());
}

TEST_F(OptionCommands, TheLineLengthCancelledChangesNothing)
{
    Open(Binary);
    Command(TextMode);
    View.TopLine = 5;
    View.SelLineA = View.SelLineB = 2;
    const Mark mark(Windows.View);
    EnterLength("200", IDCANCEL);
    EXPECT_EQ(75, DocumentOptions.FixedLineLen);
    EXPECT_EQ(67, Document.LineCount);
    EXPECT_EQ(5, View.TopLine);
    EXPECT_EQ(2, View.SelLineA);
    EXPECT_TRUE(mark.IsThere());
}

TEST_F(OptionCommands, OfADumpOrATextOnlyTheLengthChanges)
{
    for (const ScratchFile* file : {&Binary, &Text}) {
        for (const UINT mode : {HexMode, TextMode}) {
            if (file == &Binary && mode == TextMode) {
                continue; // that takes effect
            }
            SCOPED_TRACE(mode);
            DocumentOptions.FixedLineLen = 75;
            Open(*file);
            Command(mode);
            const std::int32_t lines = Document.LineCount;
            View.TopLine = 5;
            View.LeftColumn = 4;
            View.HiliteLine = 3;
            View.HiliteLen = 2;
            View.SelLineA = View.SelLineB = 2;
            SetSelectionMenuState(true);
            const Mark mark(Windows.View);
            EnterLength("200");
            EXPECT_EQ(200, DocumentOptions.FixedLineLen);
            EXPECT_EQ(file == &Text ? lines : 25, Document.LineCount);
            EXPECT_EQ(5, View.TopLine);
            EXPECT_EQ(4, View.LeftColumn);
            EXPECT_EQ(3, View.HiliteLine);
            EXPECT_EQ(2, View.HiliteLen);
            EXPECT_EQ(2, View.SelLineA);
            EXPECT_FALSE(IsGrey(250));
            EXPECT_TRUE(mark.IsThere());
            Command(HexMode);
            Command(TextMode);
        }
    }
}

TEST_F(OptionCommands, WithoutAFileOnlyTheLengthChanges)
{
    Open(Binary);
    Command(TextMode);
    Command(CloseCommand);
    ASSERT_FALSE(View.FileShown);
    Document.IsText = false; // whatever the file before was
    View.TopLine = 5;
    View.LeftColumn = 4;
    const Mark mark(Windows.View);
    EnterLength("200");
    EXPECT_EQ(200, DocumentOptions.FixedLineLen);
    EXPECT_EQ(5, View.TopLine);
    EXPECT_EQ(4, View.LeftColumn);
    EXPECT_TRUE(mark.IsThere());
    Open(Binary);
    EXPECT_EQ(25, Document.LineCount) << "of the next file";
}

TEST_F(OptionCommands, TheStatusLineIsRefreshedAfterTheChoiceOfAFont)
{
    Open(Text);
    for (const int button : {IDOK, IDCANCEL}) {
        SendMessageA(Windows.Status, WM_SHOW_STRING, 116, 0);
        UpdateWindow(Windows.Status);
        RECT area;
        GetClientRect(Windows.Status, &area);
        const Picture text = PictureOf(Windows.Status, area);
        Answer(FontCommand, button);
        UpdateWindow(Windows.Status);
        GetClientRect(Windows.Status, &area);
        EXPECT_NE(0, DifferentPixels(text, PictureOf(Windows.Status, area))) << button;
    }
}

TEST_F(OptionCommands, TheSystemsFontDialogBelongsToTheFrameAndCanBeCancelled)
{
    Open(Text);
    const HFONT font = Drawing.ScreenFont;
    DialogAnswers answers;
    answers.ThenPress(IDCANCEL);
    Command(FontCommand);
    ASSERT_EQ(1u, answers.Seen().size());
    EXPECT_EQ(Windows.Main, answers.Seen()[0].Owner);
    EXPECT_EQ(font, Drawing.ScreenFont);
    EXPECT_STREQ("Courier", ViewOptions.FontName);
}

TEST_F(OptionCommands, OkInTheSystemsFontDialogKeepsTheFont)
{
    CopyText(ViewOptions.FontName, "Tahoma");
    ViewOptions.FontSize = -MulDiv(12, Drawing.LogPixelsY, 72);
    CreateScreenFont(false);
    Answer(FontCommand, IDOK);
    EXPECT_STREQ("Tahoma", ViewOptions.FontName);
    EXPECT_EQ(-MulDiv(12, Drawing.LogPixelsY, 72), ViewOptions.FontSize);
    EXPECT_EQ(400, ViewOptions.FontWeight);
    EXPECT_EQ(0, ViewOptions.FontItalic);
}

// Whatever printers the system has, nobody is asked about them.
TEST_F(OptionCommands, ThePrinterIsFoundInSilence)
{
    const DialogAnswers answers;
    FreePrinterSelection();
    const HDC printer = GetPrinterDC();
    if (printer != nullptr) {
        EXPECT_TRUE(DeleteDC(printer));
    }
    FreePrinterSelection();
    FreePrinterSelection();
    EXPECT_TRUE(answers.Seen().empty());
}

TEST_F(PrinterFonts, WithoutAPrinterThereIsNoneAndScreenFontsAreOffered)
{
    EXPECT_EQ(nullptr, GetPrinterDC());
    EXPECT_EQ(1, Printer.Selections);
    EXPECT_EQ(static_cast<DWORD>(PD_RETURNDEFAULT | PD_PRINTSETUP | PD_NOWARNING), Printer.Flags);
    EXPECT_EQ(0, Printer.Contexts);
    Command(FontCommand);
    EXPECT_EQ(nullptr, Printer.Asked.hDC);
    EXPECT_EQ(static_cast<DWORD>(CF_SCREENFONTS | CF_INITTOLOGFONTSTRUCT), Printer.Asked.Flags);
}

TEST_F(PrinterFonts, ThePrintersFontsAreOfferedAndItsContextIsGoneAfterwards)
{
    Printer.Exists = true;
    Command(FontCommand);
    EXPECT_EQ(1, Printer.Contexts);
    EXPECT_NE(nullptr, Printer.Context);
    EXPECT_EQ(Printer.Context, Printer.Asked.hDC);
    EXPECT_EQ(Windows.Main, Printer.Asked.hwndOwner);
    EXPECT_EQ(static_cast<DWORD>(CF_SCREENFONTS | CF_INITTOLOGFONTSTRUCT | CF_PRINTERFONTS | CF_FORCEFONTEXIST),
              Printer.Asked.Flags);
    EXPECT_EQ(0u, GetObjectType(Printer.Context));
}

TEST_F(PrinterFonts, TheDefaultPrinterIsAskedForOnceAndKept)
{
    Printer.Exists = true;
    for (int round = 0; round < 3; ++round) {
        const HDC printer = GetPrinterDC();
        EXPECT_NE(nullptr, printer);
        DeleteDC(printer);
    }
    EXPECT_EQ(1, Printer.Selections);
    EXPECT_EQ(3, Printer.Contexts);
    EXPECT_EQ(DriverName, Printer.Driver);
    EXPECT_EQ(DeviceName, Printer.Device);
    EXPECT_EQ(OutputName, Printer.Output);
    EXPECT_NE(nullptr, Printer.Mode);
    EXPECT_EQ(0u, GlobalFlags(Printer.Names) & GMEM_LOCKCOUNT);
}

TEST_F(PrinterFonts, ASelectionFreedTwiceIsAskedForAnew)
{
    Printer.Exists = true;
    DeleteDC(GetPrinterDC());
    FreePrinterSelection();
    FreePrinterSelection();
    Printer.Exists = false;
    EXPECT_EQ(nullptr, GetPrinterDC());
    EXPECT_EQ(2, Printer.Selections);
    Printer.Exists = true;
    DeleteDC(GetPrinterDC());
    EXPECT_EQ(3, Printer.Selections);
}

TEST_F(PrinterFonts, ChoosingAHundredTimesLeavesNoObjectBehind)
{
    Printer.Exists = true;
    Command(FontCommand);
    PumpMessages();
    const int before = FreeGdiObjects();
    for (int round = 0; round < 100; ++round) {
        Command(FontCommand);
    }
    EXPECT_EQ(before, FreeGdiObjects());
}

TEST_F(ColoursCommands, OkMakesTheBrushesAndThePenAnew)
{
    ExpectObjects(1, 6, 6, 8, 0);
    Answer(ColoursCommand, IDOK, SetAllRegions);
    ExpectObjects(12, 2, 3, 13, 4);
}

TEST_F(ColoursCommands, ViewRulerAndStatusLineAreShownInTheNewColoursAtOnce)
{
    Open(Text);
    EXPECT_LT(0, Count(Windows.View, 1));
    EXPECT_LT(0, Count(Windows.Ruler, 6));
    EXPECT_LT(0, Count(Windows.Status, 8));
    Answer(ColoursCommand, IDOK, SetAllRegions);
    EXPECT_EQ(0, Count(Windows.View, 1));
    EXPECT_EQ(0, Count(Windows.View, 7));
    EXPECT_LT(0, Count(Windows.View, 6));
    EXPECT_LT(0, Count(Windows.View, 12));
    EXPECT_EQ(0, Count(Windows.Ruler, 6));
    EXPECT_LT(0, Count(Windows.Ruler, 2));
    EXPECT_LT(0, Count(Windows.Ruler, 4));
    EXPECT_LT(0, Count(Windows.Status, 13));
    EXPECT_LT(0, Count(Windows.Status, 9));
}

TEST_F(ColoursCommands, AHiddenRulerAndStatusLineComeInTheNewColours)
{
    Open(Text);
    ViewOptions.Ruler = ViewOptions.StatusLine = 0;
    LayOutFrameAnew();
    Answer(ColoursCommand, IDOK, SetAllRegions);
    ExpectObjects(12, 2, 3, 13, 4);
    ViewOptions.Ruler = ViewOptions.StatusLine = 1;
    LayOutFrameAnew();
    EXPECT_LT(0, Count(Windows.Ruler, 2));
    EXPECT_LT(0, Count(Windows.Status, 13));
}

TEST_F(ColoursCommands, CancelKeepsTheObjectsAndRepaintsNothing)
{
    Open(Text);
    const DrawingObjects before = Drawing;
    const Mark view(Windows.View);
    const Mark ruler(Windows.Ruler);
    Answer(ColoursCommand, IDCANCEL, SetAllRegions);
    EXPECT_EQ(before.OutputBrush, Drawing.OutputBrush);
    EXPECT_EQ(before.RulerBrush, Drawing.RulerBrush);
    EXPECT_EQ(before.MarkedBrush, Drawing.MarkedBrush);
    EXPECT_EQ(before.StatusBrush, Drawing.StatusBrush);
    EXPECT_EQ(before.RulerPen, Drawing.RulerPen);
    ExpectObjects(1, 6, 6, 8, 0);
    EXPECT_TRUE(view.IsThere());
    EXPECT_TRUE(ruler.IsThere());
}

TEST_F(ColoursCommands, ChangingThemManyTimesLeavesNoObjectBehind)
{
    Open(Text);
    const auto change = [](int round) {
        Answer(ColoursCommand, IDOK,
               [round](HWND dialog) { SetRegion(dialog, round % ColourRegionCount, round % 16, (round + 7) % 16); });
        PumpMessages();
    };
    change(0);
    const int before = FreeGdiObjects();
    for (int round = 0; round < 25; ++round) {
        change(round);
    }
    EXPECT_EQ(before, FreeGdiObjects());
}

TEST_F(OptionCommands, OpeningAndCancellingEveryDialogManyTimesLeavesNoObjectBehind)
{
    Open(Text);
    const auto openAll = [] {
        for (const UINT id : {FontCommand, PreferencesCommand, ButtonsCommand, ColoursCommand, LengthCommand}) {
            Answer(id, IDCANCEL);
            PumpMessages();
        }
    };
    openAll(); // the libraries of the dialogs keep what they load at first
    const DWORD windows = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    const int before = FreeGdiObjects();
    for (int round = 0; round < 10; ++round) {
        openAll();
    }
    EXPECT_EQ(before, FreeGdiObjects());
    EXPECT_EQ(windows, GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS));
}

TEST_F(OptionCommands, TheButtonBarIsRepaintedAndSavedOnlyWhenItsDialogIsConfirmed)
{
    CopyText(App.Start.SectionName, "test");
    const ButtonBarState before = ButtonBar;
    ParseButtonOrder("", ButtonBar); // an empty bar would not be saved
    for (const bool confirmed : {false, true}) {
        RemoveSettingsFile();
        const Mark mark(Windows.Buttons);
        Answer(ButtonsCommand, confirmed ? IDOK : IDCANCEL);
        EXPECT_EQ(!confirmed, mark.IsThere());
        char order[ButtonTextSize] = "";
        GetPrivateProfileStringA("test", "Buttons", "", order, sizeof order, SettingsFilePath().c_str());
        EXPECT_EQ(confirmed, order[0] != '\0') << order;
    }
    ButtonBar = before;
    RemoveSettingsFile();
}
