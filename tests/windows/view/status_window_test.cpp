// What the status line shows and answers, and the pop-up that follows the thumb.
#include "view/status_window.h"

#include "app/menu_state.h"
#include "app/open_sequence.h"
#include "base/text.h"
#include "document/block_cache.h"
#include "document/document_state.h"
#include "document/file_list.h"
#include "files/build_file_list.h"
#include "harness/picture.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "harness/system_calls.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/gdi_holders.h"
#include "view/screen_font.h"
#include "view/view_state.h"
#include "view/view_window.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace {

// A text that was drawn, and how.
struct DrawnText {
    HWND Window;
    int X;
    int Y;
    UINT Options;
    RECT Area;
    std::string Text;
    COLORREF Letters;
    COLORREF Paper;
    LOGFONTA Font;
};

std::vector<DrawnText> Texts;

BOOL WINAPI NoteText(HDC dc, int x, int y, UINT options, const RECT* area, LPCSTR text, UINT length, const INT*)
{
    DrawnText drawn = {};
    drawn.Window = WindowFromDC(dc);
    drawn.X = x;
    drawn.Y = y;
    drawn.Options = options;
    drawn.Area = area != nullptr ? *area : RECT{};
    drawn.Text.assign(text, length);
    drawn.Letters = GetTextColor(dc);
    drawn.Paper = GetBkColor(dc);
    GetObjectA(GetCurrentObject(dc, OBJ_FONT), sizeof drawn.Font, &drawn.Font);
    Texts.push_back(drawn);
    return TRUE;
}

// Notes the texts drawn, in place of drawing them.
class TextNotes {
public:
    TextNotes() : Call("ExtTextOutA", reinterpret_cast<void*>(NoteText)) { Texts.clear(); }

    static std::vector<std::string> Of(HWND window)
    {
        std::vector<std::string> texts;
        for (const DrawnText& text : Texts) {
            if (text.Window == window) {
                texts.push_back(text.Text);
            }
        }
        return texts;
    }

private:
    ReplacedCall Call;
};

// What the status line draws while something is done: its last text.
std::string StatusTextOf(const std::function<void()>& done)
{
    const TextNotes notes;
    done();
    const std::vector<std::string> texts = TextNotes::Of(Windows.Status);
    return texts.empty() ? "nothing is drawn" : texts.back();
}

LRESULT SendStatus(UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
{
    return SendMessageA(Windows.Status, message, wParam, lParam);
}

std::string PositionText()
{
    return StatusTextOf([] { SendStatus(WM_USER + 4); });
}

std::string ShownString(UINT id)
{
    return StatusTextOf([id] { SendStatus(WM_USER + 5, id); });
}

LPARAM Handle(HMENU menu)
{
    return reinterpret_cast<LPARAM>(menu);
}

// What is shown while an item is selected.
std::string HelpFor(UINT item, UINT flags, HMENU menu)
{
    return StatusTextOf([=] { SendMessageA(Windows.Main, WM_MENUSELECT, MAKEWPARAM(item, flags), Handle(menu)); });
}

ProgramKind CurrentKind;

ProgramKind GiveCurrentKind()
{
    return CurrentKind;
}

int GotoCommands;
WNDPROC MainProc;

LRESULT CALLBACK NoteGoto(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_COMMAND && wParam == 263) {
        ++GotoCommands;
        return 0;
    }
    return CallWindowProcA(MainProc, window, message, wParam, lParam);
}

std::string Lines(int count, std::size_t length = 20)
{
    std::string content;
    for (int line = 0; line < count; ++line) {
        content += std::string(length, 'x') + "\n";
    }
    return content;
}

class StatusWindow : public RunningProgram {
protected:
    StatusWindow() : HooksBefore(ViewCalls)
    {
        SetWindowPos(Windows.Main, nullptr, 0, 0, 800, 600, SWP_NOZORDER | SWP_NOACTIVATE);
        CopyText(ViewOptions.FontName, "Courier");
        CreateScreenFont(false);
    }

    ~StatusWindow() override
    {
        ViewCalls = HooksBefore;
        CloseThumbPosition();
        CheckCommand(IDM_VIEW_HEX, false);
        CheckCommand(IDM_VIEW_TEXT, true);
    }

    static void Open(const ScratchFile& file)
    {
        ASSERT_TRUE(OpenSequence(Windows.Main, file.Path()));
        PumpMessages();
    }

    static void GoToTop(std::int32_t top)
    {
        SendMessageA(Windows.View, WM_USER + 12, 99, top);
        ASSERT_EQ(top, View.TopLine);
    }

    static RECT Area()
    {
        RECT area = {};
        GetClientRect(Windows.Status, &area);
        return area;
    }

    static Picture StatusPicture()
    {
        RedrawWindow(Windows.Status, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
        return PictureOf(Windows.Status, Area());
    }

    static int BorderUnit() { return GetSystemMetrics(SM_CYBORDER); }

    static HFONT MakeStatusFont()
    {
        LOGFONTA font = {};
        font.lfHeight = MulDiv(-10, Drawing.LogPixelsY, 72);
        font.lfWeight = 400;
        font.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
        CopyText(font.lfFaceName, "MS Sans Serif");
        return CreateFontIndirectA(&font);
    }

    // Does something with a screen DC that has the status font.
    static void WithStatusFont(const std::function<void(HDC)>& use)
    {
        const HFONT font = MakeStatusFont();
        {
            WindowDc dc(Windows.Main);
            SelectedObject selected(dc, font);
            use(dc);
        }
        DeleteObject(font);
    }

    static TEXTMETRICA Metrics()
    {
        TEXTMETRICA metrics = {};
        WithStatusFont([&metrics](HDC dc) { GetTextMetricsA(dc, &metrics); });
        return metrics;
    }

    static SIZE Measure(const std::string& text)
    {
        SIZE size = {};
        WithStatusFont([&](HDC dc) { GetTextExtentPoint32A(dc, text.c_str(), static_cast<int>(text.size()), &size); });
        return size;
    }

    static std::uint32_t PixelAt(const Picture& picture, int x, int y)
    {
        return picture.Pixels[static_cast<std::size_t>(y * picture.Width + x)];
    }

    // As a picture holds it.
    static std::uint32_t Rgb(COLORREF colour)
    {
        return static_cast<std::uint32_t>(GetRValue(colour) << 16 | GetGValue(colour) << 8 | GetBValue(colour));
    }

    static HWND PopUp() { return FindWindowExA(Windows.View, nullptr, "KstvSb", nullptr); }

    static void Drag(int code, int position) { SendMessageA(Windows.View, WM_VSCROLL, MAKEWPARAM(code, position), 0); }

    // What the pop-up says while the thumb is dragged to a position.
    static std::string ThumbTextAt(int position)
    {
        const TextNotes notes;
        Drag(SB_THUMBTRACK, position);
        const std::vector<std::string> texts = TextNotes::Of(PopUp());
        return texts.empty() ? "nothing is drawn" : texts.back();
    }

private:
    ViewHooks HooksBefore;
};

} // namespace

TEST_F(StatusWindow, IsAsHighAsItsFontAndEightBorders)
{
    const TEXTMETRICA metrics = Metrics();
    EXPECT_EQ(metrics.tmHeight + metrics.tmExternalLeading + 8 * BorderUnit(), StatusHeight());
    EXPECT_EQ(StatusHeight(), Area().bottom);
    EXPECT_EQ(ID_CHILD_STATUS, GetDlgCtrlID(Windows.Status));
}

TEST_F(StatusWindow, IsAsWideAsTheMainWindowAndAtItsBottom)
{
    RECT frame;
    GetClientRect(Windows.Main, &frame);
    RECT place;
    GetWindowRect(Windows.Status, &place);
    POINT bottom = {0, frame.bottom};
    ClientToScreen(Windows.Main, &bottom);
    EXPECT_EQ(bottom.y, place.bottom);
    EXPECT_EQ(bottom.x, place.left);
    EXPECT_EQ(frame.right, place.right - place.left);
}

TEST_F(StatusWindow, HasNoHeightWhenItIsSwitchedOff)
{
    ViewOptions.StatusLine = 0;
    LayOutFrameAnew();
    EXPECT_EQ(0, Area().bottom);
    ViewOptions.StatusLine = 1;
    LayOutFrameAnew();
    EXPECT_EQ(StatusHeight(), Area().bottom);
}

TEST_F(StatusWindow, TheTextIsDrawnWithinItsPanelInItsFontAndColours)
{
    const ScratchFile file("status.txt", Lines(10));
    Open(file);
    const TextNotes notes;
    SendStatus(WM_USER + 4);
    ASSERT_EQ(1u, Texts.size());
    const DrawnText& text = Texts[0];
    const int u = BorderUnit();
    EXPECT_EQ("Line 1 Col 1  100%", text.Text);
    EXPECT_EQ(8 * u + Metrics().tmAveCharWidth, text.X);
    EXPECT_EQ(4 * u, text.Y);
    EXPECT_EQ(static_cast<UINT>(ETO_CLIPPED | ETO_OPAQUE), text.Options);
    const RECT expected = {10 * u, 4 * u, Area().right - 9 * u, Area().bottom - 3 * u};
    EXPECT_TRUE(EqualRect(&expected, &text.Area));
    EXPECT_EQ(RGB(0, 0, 0), text.Letters);
    EXPECT_EQ(RGB(192, 192, 192), text.Paper);
    EXPECT_STREQ("MS Sans Serif", text.Font.lfFaceName);
    EXPECT_EQ(MulDiv(-10, Drawing.LogPixelsY, 72), text.Font.lfHeight);
    EXPECT_EQ(400, text.Font.lfWeight);
    EXPECT_EQ(VARIABLE_PITCH | FF_SWISS, text.Font.lfPitchAndFamily);
}

TEST_F(StatusWindow, ATextIsCutToItsPanel)
{
    ViewOptions.Background[StatusRegion] = 0; // nothing but the text
    SendStatus(WM_USER + 5, IDS_SELECT_LOCK_AREA);
    SetWindowPos(Windows.Main, nullptr, 0, 0, 200, 600, SWP_NOZORDER | SWP_NOACTIVATE);
    const Picture narrow = StatusPicture();
    const int u = BorderUnit();
    ASSERT_LT(narrow.Width, Measure("Select the area to lock. Enter or Click to select").cx);
    const std::uint32_t paper = PixelAt(narrow, 0, 0);
    for (int y = 0; y < narrow.Height; ++y) {
        for (int x = narrow.Width - 9 * u; x < narrow.Width; ++x) {
            EXPECT_EQ(paper, PixelAt(narrow, x, y)) << x << ' ' << y;
        }
    }
    SendStatus(WM_USER + 4);
}

TEST_F(StatusWindow, IsASunkenPanelOnTheGreyOfButtons)
{
    ASSERT_EQ(8, ViewOptions.Background[StatusRegion]);
    SendStatus(WM_USER + 4); // without a file: an empty text
    const Picture picture = StatusPicture();
    const int u = BorderUnit();
    const int w = picture.Width;
    const int h = picture.Height;
    const std::uint32_t light = Rgb(GetSysColor(COLOR_BTNHIGHLIGHT));
    const std::uint32_t dark = Rgb(GetSysColor(COLOR_BTNSHADOW));
    ASSERT_NE(light, dark);
    for (int x = 0; x < w; ++x) {
        EXPECT_EQ(light, PixelAt(picture, x, 0)) << x;
    }
    // The first side of each corner reaches it, the next one begins there.
    for (int x = 8 * u + 1; x < w - 8 * u; ++x) {
        EXPECT_EQ(light, PixelAt(picture, x, h - 3 * u)) << x;
        EXPECT_EQ(dark, PixelAt(picture, x, 3 * u)) << x;
    }
    for (int y = 3 * u + 1; y < h - 3 * u; ++y) {
        EXPECT_EQ(light, PixelAt(picture, w - 8 * u, y)) << y;
        EXPECT_EQ(dark, PixelAt(picture, 8 * u, y)) << y;
    }
    const std::uint32_t paper = Rgb(RGB(192, 192, 192));
    EXPECT_EQ(paper, PixelAt(picture, 4 * u, h / 2));
    EXPECT_EQ(paper, PixelAt(picture, w / 2, h / 2));
    EXPECT_EQ(paper, PixelAt(picture, w - 4 * u, h / 2));
}

TEST_F(StatusWindow, IsPlainOnAnyOtherBackground)
{
    SendStatus(WM_USER + 4);
    const int framed = ColoursIn(StatusPicture());
    EXPECT_LT(1, framed);
    for (const int entry : {0, 7, 9, 15}) {
        ViewOptions.Background[StatusRegion] = entry;
        const Picture picture = StatusPicture();
        EXPECT_EQ(PixelAt(picture, 0, 1), PixelAt(picture, 0, 0)) << entry;
        EXPECT_EQ(PixelAt(picture, 0, 0), PixelAt(picture, picture.Width - 1, picture.Height / 2)) << entry;
        EXPECT_EQ(PixelAt(picture, 0, 0), PixelAt(picture, 8 * BorderUnit(), picture.Height / 2)) << entry;
    }
}

TEST_F(StatusWindow, ErasesWithItsBrush)
{
    const Picture erased = Drawn(Area().right, Area().bottom,
                                 [](HDC dc) { EXPECT_EQ(1, SendStatus(WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc))); });
    EXPECT_EQ(1, ColoursIn(erased));
    EXPECT_EQ(Rgb(RGB(192, 192, 192)), PixelAt(erased, 0, 0));
}

TEST_F(StatusWindow, APaintShowsTheTextThatStandsThere)
{
    SendStatus(WM_USER + 5, IDS_SELECT_LOCK_AREA);
    EXPECT_EQ("Select the area to lock. Enter or Click to select, Esc to cancel",
              StatusTextOf([] { RedrawWindow(Windows.Status, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW); }));
    SendStatus(WM_USER + 4);
}

TEST_F(StatusWindow, SaysTheFirstLineTheFirstColumnAndHowFarTheLastLineIs)
{
    const ScratchFile file("status.txt", Lines(2000, 300));
    Open(file);
    GoToTop(1233);
    SendMessageA(Windows.View, WM_HSCROLL, SB_PAGERIGHT, 0);
    const int percent = (RowsOnScreen() + 1233 + 1) * 100 / 2000;
    EXPECT_EQ("Line 1,234 Col 9  " + std::to_string(percent) + "%", PositionText());
}

TEST_F(StatusWindow, SaysNothingWithoutAFile)
{
    EXPECT_EQ("", PositionText());
}

TEST_F(StatusWindow, CountsRowsOfADump)
{
    const ScratchFile file("status.bin", std::string(20000, 'x'));
    Open(file);
    SendMessageA(Windows.Main, WM_COMMAND, IDM_VIEW_HEX, 0);
    GoToTop(500);
    const int percent = (RowsOnScreen() + 500 + 1) * 16 * 100 / 20000;
    EXPECT_EQ("Line 501 Col 1  " + std::to_string(percent) + "%", PositionText());
}

TEST_F(StatusWindow, Says100PercentAtTheEndWhetherTheLastPageIsFullOrNot)
{
    const ScratchFile large("large.txt", Lines(500));
    Open(large);
    SendMessageA(Windows.View, WM_VSCROLL, SB_BOTTOM, 0);
    EXPECT_EQ("Line " + std::to_string(View.MaxTop + 1) + " Col 1  100%", PositionText());
    const ScratchFile small("small.txt", Lines(3));
    Open(small);
    EXPECT_EQ("Line 1 Col 1  100%", PositionText());
    const ScratchFile empty("empty.txt", "");
    Open(empty);
    EXPECT_EQ("Line 1 Col 1  100%", PositionText());
    SendMessageA(Windows.Main, WM_COMMAND, IDM_VIEW_HEX, 0);
    EXPECT_EQ("Line 1 Col 1  100%", PositionText());
}

TEST_F(StatusWindow, SaysWhichFileOfAListIsShown)
{
    const ScratchFile file("status.txt", Lines(3));
    AddFileToList(nullptr, file.Path(), "");
    AddFileToList(nullptr, "c:\\other.txt", "");
    AddFileToList(nullptr, "c:\\third.txt", "");
    WalkFileList(2);
    Open(file);
    EXPECT_EQ("Line 1 Col 1  100%  [File 2 of 3]", PositionText());
    ClearFileList();
    EXPECT_EQ("Line 1 Col 1  100%", PositionText());
    SetListMenuState();
}

TEST_F(StatusWindow, IsRefreshedWithEveryScroll)
{
    const ScratchFile file("status.txt", Lines(500, 300));
    Open(file);
    const auto scroll = [](UINT message, int code) {
        return StatusTextOf([=] { SendMessageA(Windows.View, message, static_cast<WPARAM>(code), 0); }).substr(0, 12);
    };
    EXPECT_EQ("Line 2 Col 1", scroll(WM_VSCROLL, SB_LINEDOWN));
    EXPECT_EQ("Line 2 Col 9", scroll(WM_HSCROLL, SB_PAGERIGHT));
    EXPECT_EQ("Line 1 Col 9", scroll(WM_VSCROLL, SB_LINEUP));
}

TEST_F(StatusWindow, ShowsAStringUntilThePositionIsShownAgain)
{
    const ScratchFile file("status.txt", Lines(3));
    Open(file);
    EXPECT_EQ("Select the area to lock. Enter or Click to select, Esc to cancel", ShownString(116));
    EXPECT_EQ("nothing is drawn", StatusTextOf(PumpMessages)) << "it stays";
    EXPECT_EQ("Line 1 Col 1  100%", PositionText());
}

TEST_F(StatusWindow, ShowsThePositionAgainWhenTheReadingIsOver)
{
    const ScratchFile file("status.txt", Lines(3));
    Open(file);
    EXPECT_EQ("Reading...", ShownString(120));
    EXPECT_EQ("Line 1 Col 1  100%", StatusTextOf(PumpMessages));
    EXPECT_EQ("nothing is drawn", StatusTextOf(PumpMessages));
}

TEST_F(StatusWindow, SaysThatABlockIsReadOnceUntilThePositionIsShownAgain)
{
    Document.BufferCount = 0; // each block is read anew
    const ScratchFile file("status.txt", Lines(15000));
    Open(file);
    const std::string position = PositionText();
    for (int round = 0; round < 2; ++round) {
        const TextNotes notes;
        LoadBlock(5);
        EXPECT_EQ((std::vector<std::string>{"Reading..."}), TextNotes::Of(Windows.Status));
        LoadBlock(2);
        LoadBlock(7);
        EXPECT_EQ((std::vector<std::string>{"Reading..."}), TextNotes::Of(Windows.Status)) << "it stands there";
        PumpMessages();
        EXPECT_EQ((std::vector<std::string>{"Reading...", position}), TextNotes::Of(Windows.Status));
    }
}

TEST_F(StatusWindow, SaysThatABlockIsReadAfterAnotherTextTookThatPlace)
{
    Document.BufferCount = 0;
    const ScratchFile file("status.txt", Lines(15000));
    Open(file);
    LoadBlock(5);
    ShownString(116);
    EXPECT_EQ("Reading...", StatusTextOf([] { LoadBlock(2); }));
    PositionText();
    EXPECT_EQ("Reading...", StatusTextOf([] { LoadBlock(5); }));
    PumpMessages();
}

TEST_F(StatusWindow, SaysHowFarTheLastLineIsInAWindowOfAnotherSize)
{
    const ScratchFile file("status.txt", Lines(100));
    Open(file);
    const auto resize = [](int height) {
        return StatusTextOf(
            [height] { SetWindowPos(Windows.Main, nullptr, 0, 0, 800, height, SWP_NOZORDER | SWP_NOACTIVATE); });
    };
    const auto expected = [] { return "Line 1 Col 1  " + std::to_string(RowsOnScreen() + 1) + "%"; };
    EXPECT_EQ(expected(), PositionText());
    const std::int32_t rows = RowsOnScreen();
    const std::string low = resize(300);
    EXPECT_EQ(expected(), low);
    EXPECT_LT(RowsOnScreen(), rows);
    const std::string high = resize(600);
    EXPECT_EQ(expected(), high);
    EXPECT_EQ(rows, RowsOnScreen());
}

TEST_F(StatusWindow, LeavesNoObjectBehindWhenItIsDestroyed)
{
    const auto freeAfterARun = [] {
        StartProgramOnce();
        SendStatus(WM_USER + 5, 116);
        StatusPicture();
        EndProgram();
        return FreeGdiObjects();
    };
    freeAfterARun(); // what the system makes once it keeps
    const int before = freeAfterARun();
    EXPECT_EQ(before, freeAfterARun());
    StartProgramOnce();
}

TEST_F(StatusWindow, AStringThatThereIsNotIsAnEmptyText)
{
    for (const UINT id : {18u, 9999u, 0u}) {
        ShownString(116);
        EXPECT_EQ("", ShownString(id)) << id;
    }
}

TEST_F(StatusWindow, ADoubleClickAsksWhereToGoWhenThereIsAFile)
{
    MainProc =
        reinterpret_cast<WNDPROC>(SetWindowLongPtrA(Windows.Main, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(NoteGoto)));
    GotoCommands = 0;
    SendStatus(WM_LBUTTONDBLCLK, MK_LBUTTON);
    EXPECT_EQ(0, GotoCommands);
    const ScratchFile file("status.txt", Lines(3));
    Open(file);
    SendStatus(WM_LBUTTONDBLCLK, MK_LBUTTON);
    EXPECT_EQ(1, GotoCommands);
    SetWindowLongPtrA(Windows.Main, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(MainProc));
}

TEST_F(StatusWindow, ExplainsThePopupsOfTheMenuBarAndTheSystemMenu)
{
    const char* const texts[] = {"Open, Print, Display Information or Exit", "Perform Editing commands",
                                 "Find, Repeat Find or set file location",   "Select viewing options",
                                 "Select or save program options",           "Obtain program help"};
    UINT item = 0;
    for (const char* const text : texts) {
        EXPECT_EQ(text, HelpFor(item++, MF_POPUP | MF_HILITE, Windows.MainMenu));
    }
    EXPECT_EQ("Move, Size or Close application window",
              HelpFor(0, MF_POPUP | MF_SYSMENU | MF_HILITE, Windows.SystemMenu));
    EXPECT_EQ("", HelpFor(item, MF_POPUP | MF_HILITE, Windows.MainMenu)) << "no such popup";
    EXPECT_EQ("", HelpFor(0, MF_POPUP | MF_HILITE, GetSubMenu(Windows.MainMenu, 0)));
}

TEST_F(StatusWindow, ExplainsTheSystemsCommands)
{
    const struct {
        UINT Id;
        const char* Text;
    } commands[] = {{SC_RESTORE, "Restore Kestovar to it's previous size"},
                    {SC_MOVE, "Move the Kestovar window on the desktop"},
                    {SC_SIZE, "Change the size of the Kestovar window"},
                    {SC_MINIMIZE, "Iconize the Kestovar window"},
                    {SC_MAXIMIZE, "Enlarge the Kestovar window to it's maximum size"},
                    {SC_CLOSE, "Exit Kestovar !"},
                    {SC_TASKLIST, "Switch to another Application"},
                    {100, "Remove the menu bar"}};
    for (const auto& command : commands) {
        EXPECT_EQ(command.Text, HelpFor(command.Id, MF_SYSMENU | MF_HILITE, Windows.SystemMenu));
    }
    EXPECT_EQ("", HelpFor(101, MF_SYSMENU | MF_HILITE, Windows.SystemMenu));
    EXPECT_EQ("", HelpFor(0xFFFF, MF_HILITE, Windows.SystemMenu));
    EXPECT_EQ("", HelpFor(0, MF_SEPARATOR, Windows.SystemMenu));
}

TEST_F(StatusWindow, ExplainsAllRecentFilesAlike)
{
    for (UINT id = 240; id <= 249; ++id) {
        EXPECT_EQ("Reopen a closed file", HelpFor(id, MF_HILITE, GetSubMenu(Windows.MainMenu, 0))) << id;
    }
}

TEST_F(StatusWindow, ExplainsLaunchingByWhatTheFileIs)
{
    ViewCalls.CurrentProgram = GiveCurrentKind;
    const struct {
        ProgramKind Kind;
        const char* Text;
    } kinds[] = {{ProgramKind::None, "Launch the current file with it's associated application "},
                 {ProgramKind::OfWindows, "Launch the current Windows program"},
                 {ProgramKind::OfDos, "Edit the current file"}};
    for (const auto& kind : kinds) {
        CurrentKind = kind.Kind;
        EXPECT_EQ(kind.Text, HelpFor(223, MF_HILITE, GetSubMenu(Windows.MainMenu, 0)));
        EXPECT_EQ("View the next file", HelpFor(226, MF_HILITE, GetSubMenu(Windows.MainMenu, 0)));
    }
}

TEST_F(StatusWindow, ShowsThePositionWhenTheMenuIsClosed)
{
    const ScratchFile file("status.txt", Lines(3));
    Open(file);
    EXPECT_EQ("Open a new file", HelpFor(220, MF_HILITE, GetSubMenu(Windows.MainMenu, 0)));
    EXPECT_EQ("Line 1 Col 1  100%", HelpFor(0, 0xFFFF, nullptr));
}

TEST_F(StatusWindow, ExplainsNothingWhenItIsSwitchedOff)
{
    ViewOptions.StatusLine = 0;
    EXPECT_EQ("nothing is drawn", HelpFor(220, MF_HILITE, GetSubMenu(Windows.MainMenu, 0)));
}

namespace {

class ThumbPopUp : public StatusWindow {
protected:
    // A text whose thumb is not followed live, and its dump too.
    ThumbPopUp() : File("thumb.txt", Lines(12345, 19)) { Open(File); }

    static void ToHexMode()
    {
        SendMessageA(Windows.Main, WM_COMMAND, IDM_VIEW_HEX, 0);
        ASSERT_TRUE(View.HexMode);
        ASSERT_LT(5000, View.MaxTop);
    }

    // Has the pop-up opened and expects it where it belongs for its widest text.
    static void ExpectPlace(const std::string& widest, bool hex)
    {
        Drag(SB_THUMBTRACK, 100);
        ASSERT_NE(nullptr, PopUp());
        const SIZE text = Measure(widest);
        const int width = text.cx + 10 + (hex ? (text.cx + 10) / 6 : 0);
        const int height = text.cy * 3 / 2;
        RECT view;
        GetClientRect(Windows.View, &view);
        RECT place;
        GetWindowRect(PopUp(), &place);
        MapWindowPoints(nullptr, Windows.View, reinterpret_cast<POINT*>(&place), 2);
        EXPECT_EQ(width, place.right - place.left);
        EXPECT_EQ(height, place.bottom - place.top);
        EXPECT_EQ(view.right - (GetSystemMetrics(SM_CXVSCROLL) + width), place.left);
        EXPECT_EQ((view.bottom - height) / 2, place.top);
    }

    static std::string StoredText()
    {
        char text[40] = "";
        GetWindowTextA(PopUp(), text, sizeof text);
        return text;
    }

    ScratchFile File;
};

} // namespace

TEST_F(ThumbPopUp, OpensWithTheDragAndClosesWithTheRelease)
{
    EXPECT_EQ(nullptr, PopUp());
    Drag(SB_THUMBTRACK, 100);
    ASSERT_NE(nullptr, PopUp());
    const HWND first = PopUp();
    EXPECT_TRUE(IsWindowVisible(first));
    EXPECT_EQ(6, GetDlgCtrlID(first));
    EXPECT_EQ(0, View.TopLine) << "the text stays meanwhile";
    Drag(SB_THUMBTRACK, 200);
    EXPECT_EQ(first, PopUp());
    Drag(SB_THUMBPOSITION, 200);
    EXPECT_EQ(nullptr, PopUp());
    EXPECT_EQ(200, View.TopLine);
}

TEST_F(ThumbPopUp, ClosesWithADragInASmallDocument)
{
    Drag(SB_THUMBTRACK, 100);
    const ScratchFile small("small.txt", Lines(100));
    Open(small);
    Drag(SB_THUMBTRACK, 10);
    EXPECT_EQ(nullptr, PopUp());
}

TEST_F(ThumbPopUp, GoesWithItsDocument)
{
    Drag(SB_THUMBTRACK, 100);
    ASSERT_NE(nullptr, PopUp());
    CloseDocument();
    EXPECT_EQ(nullptr, PopUp());
    const ScratchFile other("other.txt", Lines(6000, 19));
    Open(other);
    EXPECT_EQ(nullptr, PopUp());
    Drag(SB_THUMBTRACK, 100);
    EXPECT_EQ("Line: 6,000", StoredText());
    Open(File);
    EXPECT_EQ(nullptr, PopUp());
}

TEST_F(ThumbPopUp, IsBesideTheScrollBarHalfwayDownAndWideEnoughForTheLastLine)
{
    ExpectPlace("Line: 12,345", false);
}

TEST_F(ThumbPopUp, OfADumpIsASixthWiderThanTheFilesSizeNeeds)
{
    ToHexMode();
    ASSERT_EQ(246900, Document.FileSize);
    ExpectPlace("Offset: 3C474", true);
}

TEST_F(ThumbPopUp, HasTheWidestTextItWillNeedAsItsFirst)
{
    Drag(SB_THUMBTRACK, 100);
    EXPECT_EQ("Line: 12,345", StoredText());
    Drag(SB_THUMBPOSITION, 100);
    ToHexMode();
    Drag(SB_THUMBTRACK, 100);
    EXPECT_EQ("Offset: 3C474", StoredText());
}

TEST_F(ThumbPopUp, SaysTheLineTheThumbPointsAt)
{
    EXPECT_EQ("Line: 1", ThumbTextAt(0));
    EXPECT_EQ("Line: 101", ThumbTextAt(100));
    EXPECT_EQ("Line: 10,001", ThumbTextAt(10000));
}

TEST_F(ThumbPopUp, SaysTheOffsetTheThumbPointsAtInADump)
{
    ToHexMode();
    EXPECT_EQ("Offset: 0", ThumbTextAt(0));
    EXPECT_EQ("Offset: 10", ThumbTextAt(1));
    EXPECT_EQ("Offset: 2710", ThumbTextAt(625));
    EXPECT_EQ("Offset: 2EDA0", ThumbTextAt(0x2EDA));
}

TEST_F(ThumbPopUp, AtTheEndSaysTheLastTopLine)
{
    const std::int32_t line = View.MaxTop + 1;
    const std::string last = std::to_string(line / 1000) + "," + std::to_string(line).substr(2);
    EXPECT_EQ("Line: " + last, ThumbTextAt(View.MaxTop));
    EXPECT_EQ("Line: " + last, ThumbTextAt(View.MaxTop + 5));
    // With several lines to a position, the last position but one already means the end.
    View.ScrollScale = 3;
    EXPECT_EQ("Line: " + last, ThumbTextAt((View.MaxTop - View.ScrollScale) / 3 + 1));
    const std::int32_t before = (View.MaxTop - View.ScrollScale) / 3 * 3 + 1;
    EXPECT_EQ("Line: " + std::to_string(before / 1000) + "," + std::to_string(before).substr(2),
              ThumbTextAt((View.MaxTop - View.ScrollScale) / 3));
    MeasureViewAnew();
}

TEST_F(ThumbPopUp, DrawsATextAtOnceInsideItsOutlineAndStoresNothing)
{
    Drag(SB_THUMBTRACK, 100);
    const std::string before = StoredText();
    RECT area;
    GetClientRect(PopUp(), &area);
    const TextNotes notes;
    EXPECT_EQ(0, SendMessageA(PopUp(), WM_SETTEXT, 0, reinterpret_cast<LPARAM>("Some text")));
    ASSERT_EQ(1u, Texts.size());
    EXPECT_EQ(PopUp(), Texts[0].Window);
    EXPECT_EQ("Some text", Texts[0].Text);
    EXPECT_EQ(4, Texts[0].X);
    EXPECT_EQ(area.bottom / 4, Texts[0].Y);
    EXPECT_EQ(static_cast<UINT>(ETO_OPAQUE), Texts[0].Options);
    EXPECT_EQ(RGB(192, 192, 192), Texts[0].Paper);
    EXPECT_STREQ("MS Sans Serif", Texts[0].Font.lfFaceName);
    InflateRect(&area, -1, -1);
    EXPECT_TRUE(EqualRect(&area, &Texts[0].Area));
    EXPECT_EQ(before, StoredText());
}

TEST_F(ThumbPopUp, HasAnOutlineOfOnePixelRoundItsTextsBackground)
{
    Drag(SB_THUMBTRACK, 100);
    RECT area;
    GetClientRect(PopUp(), &area);
    const Picture picture = PictureOf(PopUp(), area);
    const std::uint32_t grey = Rgb(RGB(192, 192, 192));
    for (int x = 0; x < picture.Width; ++x) {
        EXPECT_EQ(0u, PixelAt(picture, x, 0));
        EXPECT_EQ(0u, PixelAt(picture, x, picture.Height - 1));
    }
    for (int y = 0; y < picture.Height; ++y) {
        EXPECT_EQ(0u, PixelAt(picture, 0, y));
        EXPECT_EQ(0u, PixelAt(picture, picture.Width - 1, y));
    }
    EXPECT_EQ(grey, PixelAt(picture, 1, 1));
    EXPECT_EQ(grey, PixelAt(picture, picture.Width - 2, picture.Height - 2));
}

TEST_F(ThumbPopUp, ErasesNothingWithinItsOutline)
{
    Drag(SB_THUMBTRACK, 100);
    RECT area;
    GetClientRect(PopUp(), &area);
    const Picture erased = Drawn(area.right, area.bottom, [&area](HDC dc) {
        FillRect(dc, &area, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
        EXPECT_EQ(1, SendMessageA(PopUp(), WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0));
    });
    int black = 0;
    for (const std::uint32_t pixel : erased.Pixels) {
        EXPECT_TRUE(pixel == 0 || pixel == 0xFFFFFF);
        black += pixel == 0;
    }
    EXPECT_EQ(2 * (area.right + area.bottom) - 4, black);
    EXPECT_EQ(0u, PixelAt(erased, area.right - 1, area.bottom - 1));
}

TEST_F(ThumbPopUp, LeavesNoObjectBehind)
{
    Drag(SB_THUMBTRACK, 100);
    Drag(SB_THUMBPOSITION, 100);
    const int before = FreeGdiObjects();
    for (int i = 0; i < 20; ++i) {
        Drag(SB_THUMBTRACK, 100 + i);
        Drag(SB_THUMBTRACK, 200 + i);
        Drag(SB_THUMBPOSITION, 200 + i);
        SendStatus(WM_USER + 5, 116);
        StatusPicture();
    }
    EXPECT_EQ(before, FreeGdiObjects());
    SendStatus(WM_USER + 4);
}
