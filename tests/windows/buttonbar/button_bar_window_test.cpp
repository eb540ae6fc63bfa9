// The bar as a window: what it paints, and what it does with the mouse, message by message.
#include "buttonbar/button_bar_window.h"

#include "app/app_state.h"
#include "buttonbar/bubble.h"
#include "buttonbar/button_order.h"
#include "buttonbar/buttons.h"
#include "buttonbar/draw_button.h"
#include "harness/picture.h"
#include "harness/program.h"
#include "harness/system_calls.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/gdi_holders.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace {

constexpr UINT_PTR BubbleTimerId = 4;
constexpr int NoButton = -1;
constexpr int Position = -1; // in the status line, in place of a string

struct CommandAndHelp {
    UINT Command;
    int Help;
};

// By button number.
constexpr CommandAndHelp Commands[ButtonTotal] = {
    {220, 20}, {225, 25}, {226, 26}, {229, 29}, {232, 32}, {250, 50}, {260, 60}, {261, 61},
    {270, 70}, {271, 71}, {272, 72}, {280, 80}, {283, 83}, {290, 90}, {223, 23}, {273, 73},
    {222, 22}, {233, 33}, {263, 63}, {252, 52}, {224, 24}, {274, 74}, {275, 75}, {276, 76},
};

std::vector<int> StatusNotes; // strings by number, Position
std::vector<RECT> Paints;     // the update rectangles of the bar's paint messages
WNDPROC StatusProc;
WNDPROC BarProc;

LRESULT CALLBACK NoteStatus(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const bool showsPosition = !StatusNotes.empty() && StatusNotes.back() == Position;
    if (message == WM_USER + 4 && !showsPosition) { // showing it again changes nothing
        StatusNotes.push_back(Position);
    } else if (message == WM_USER + 5) {
        StatusNotes.push_back(static_cast<int>(wParam));
    }
    return CallWindowProcA(StatusProc, window, message, wParam, lParam);
}

LRESULT CALLBACK NotePaint(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    RECT area;
    if (message == WM_PAINT && GetUpdateRect(window, &area, FALSE)) {
        Paints.push_back(area);
    }
    return CallWindowProcA(BarProc, window, message, wParam, lParam);
}

WNDPROC Subclass(HWND window, WNDPROC procedure)
{
    return reinterpret_cast<WNDPROC>(SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
}

UINT TimerPeriod; // of the bar's timer; 0 = it does not run
int TimerStarts;

UINT_PTR WINAPI NoteSetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC)
{
    if (window == Windows.Buttons && id == BubbleTimerId) {
        TimerPeriod = milliseconds;
        ++TimerStarts;
    }
    return id;
}

BOOL WINAPI NoteKillTimer(HWND window, UINT_PTR id)
{
    if (window == Windows.Buttons && id == BubbleTimerId) {
        TimerPeriod = 0;
    }
    return TRUE;
}

std::vector<int> DrawnSlots;

// Notes the slots whose face is filled, in place of drawing.
BOOL WINAPI NoteFill(HDC, int, int, UINT, const RECT* area, LPCSTR, UINT, const INT*)
{
    if (area->right - area->left == 32 && area->bottom - area->top == 26) {
        DrawnSlots.push_back(area->left / 35);
    }
    return TRUE;
}

RECT SlotArea(int slot)
{
    return {slot * 35, 3, slot * 35 + 34, 31};
}

std::vector<int> Values(const RECT& r)
{
    return {static_cast<int>(r.left), static_cast<int>(r.top), static_cast<int>(r.right), static_cast<int>(r.bottom)};
}

std::string DigitsOf(int count)
{
    std::string digits;
    for (int button = 0; button < count; ++button) {
        digits += {static_cast<char>('0' + button / 10), static_cast<char>('0' + button % 10)};
    }
    return digits;
}

// The bar where the pointer is not, with nothing pressed, no bubble and no timer, before and after.
class QuietBar : public RunningProgram {
protected:
    QuietBar() : BarBefore(ButtonBar)
    {
        std::copy(std::begin(ButtonTable), std::end(ButtonTable), std::begin(TableBefore));
        SetWindowPos(Windows.Main, HWND_TOP, 40, 40, 940, 500, SWP_NOACTIVATE);
        Quieten();
        PumpMessages();
    }

    ~QuietBar() override
    {
        std::copy(std::begin(TableBefore), std::end(TableBefore), std::begin(ButtonTable));
        ButtonBar = BarBefore;
        InvalidateRect(Windows.Buttons, nullptr, TRUE);
        MSG message;
        while (PeekMessageA(&message, Windows.Main, WM_COMMAND, WM_COMMAND, PM_REMOVE)) {
        }
    }

    static void Quieten()
    {
        PointAt(300, 200);
        SendMessageA(Windows.Buttons, WM_LBUTTONUP, 0, MAKELPARAM(-1, -1));
        SendMessageA(Windows.Buttons, WM_RBUTTONUP, 0, 0);
        DismissBubble();
        // A rest without a button: the press before is forgotten.
        ButtonBar.ShowBubbles = 1;
        SendMessageA(Windows.Buttons, WM_MOUSEMOVE, 0, MAKELPARAM(900, 1));
        SendMessageA(Windows.Buttons, WM_TIMER, BubbleTimerId, 0);
    }

    // Puts the pointer itself there, client coordinates of the bar, without a word to any window.
    static void PointAt(int x, int y)
    {
        POINT wanted = {x, y};
        ClientToScreen(Windows.Buttons, &wanted);
        POINT pointer = {};
        for (int attempt = 0; attempt < 100; ++attempt) {
            SetCursorPos(wanted.x, wanted.y);
            {
                WindowDc screen(nullptr);
                GetPixel(screen, 0, 0); // which waits until the display has moved the pointer
            }
            MSG message;
            while (PeekMessageA(&message, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE)) {
            }
            GetCursorPos(&pointer);
            if (pointer.x == wanted.x && pointer.y == wanted.y) {
                return;
            }
        }
        ADD_FAILURE() << "the pointer is at " << pointer.x << ", " << pointer.y;
    }

    ButtonBarState BarBefore;
    ButtonInfo TableBefore[ButtonTotal];
};

class ButtonBarWindow : public QuietBar {
protected:
    ButtonBarWindow()
        : SetTimerCall("SetTimer", reinterpret_cast<void*>(NoteSetTimer)),
          KillTimerCall("KillTimer", reinterpret_cast<void*>(NoteKillTimer))
    {
        TimerPeriod = 0;
        StatusProc = Subclass(Windows.Status, NoteStatus);
        BarProc = Subclass(Windows.Buttons, NotePaint);
        for (ButtonInfo& button : ButtonTable) {
            button.Enabled = true;
        }
        PutOnBar(DigitsOf(ButtonTotal));
    }

    ~ButtonBarWindow() override
    {
        Subclass(Windows.Status, StatusProc);
        Subclass(Windows.Buttons, BarProc);
        Quieten();
    }

    // The bar drawn with these buttons, and everything noted so far forgotten.
    static void PutOnBar(const std::string& digits)
    {
        ButtonBar = ButtonBarState{};
        ParseButtonOrder(digits.c_str(), ButtonBar);
        ButtonBar.ShowBubbles = 0;
        Redraw();
        Forget();
    }

    static void Redraw()
    {
        RedrawWindow(Windows.Buttons, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    }

    static void Forget()
    {
        StatusNotes.clear();
        Paints.clear();
        TimerStarts = 0;
        PostedCommands();
    }

    static LPARAM Inside(int slot) { return MAKELPARAM(slot * 35 + 10, 12); }
    static LPARAM At(int x, int y) { return MAKELPARAM(x, y); }

    static void Send(UINT message, LPARAM point, WPARAM keys = 0)
    {
        SendMessageA(Windows.Buttons, message, keys, point);
    }

    static void Press(LPARAM point) { Send(WM_LBUTTONDOWN, point, MK_LBUTTON); }
    static void Move(LPARAM point) { Send(WM_MOUSEMOVE, point); }
    static void Release(LPARAM point, WPARAM keys = 0) { Send(WM_LBUTTONUP, point, keys); }
    static void Rest() { Send(WM_TIMER, 0, BubbleTimerId); }

    static void PointAtSlot(int slot) { PointAt(slot * 35 + 10, 12); }

    static void MoveToSlot(int slot)
    {
        PointAtSlot(slot);
        Move(Inside(slot));
    }

    static void MoveOffTheBar()
    {
        PointAt(100, 60);
        Move(At(100, 60));
    }

    static std::vector<UINT> PostedCommands()
    {
        std::vector<UINT> commands;
        MSG message;
        while (PeekMessageA(&message, Windows.Main, WM_COMMAND, WM_COMMAND, PM_REMOVE)) {
            EXPECT_EQ(0, message.lParam);
            commands.push_back(static_cast<UINT>(message.wParam));
        }
        return commands;
    }

    // What is to be painted anew.
    static RECT UpdateArea()
    {
        RECT area = {};
        GetUpdateRect(Windows.Buttons, &area, FALSE);
        return area;
    }

    static RECT Client()
    {
        RECT client = {};
        GetClientRect(Windows.Buttons, &client);
        return client;
    }

    static Picture BarPicture()
    {
        UpdateWindow(Windows.Buttons);
        return PictureOf(Windows.Buttons, Client());
    }

    // The bar as it has to look with that slot pressed.
    static Picture ExpectedBar(int pressedSlot = NoButton)
    {
        const RECT client = Client();
        return Drawn(client.right, client.bottom, [&](HDC dc) {
            FillRect(dc, &client, GetSysColorBrush(COLOR_BTNFACE));
            for (int slot = 0; slot < ButtonBar.ButtonCount; ++slot) {
                DrawButton(dc, slot, slot == pressedSlot);
            }
            FillLine(dc, 0, client.right, RGB(0xFF, 0xFF, 0xFF));
            FillLine(dc, client.bottom - 2, client.right, RGB(0x80, 0x80, 0x80));
            FillLine(dc, client.bottom - 1, client.right, RGB(0, 0, 0));
        });
    }

    static void FillLine(HDC dc, int y, int width, COLORREF colour)
    {
        const RECT line = {0, y, width, y + 1};
        FillWith(dc, line, colour);
    }

    static void FillWith(HDC dc, const RECT& area, COLORREF colour)
    {
        const HBRUSH brush = CreateSolidBrush(colour);
        FillRect(dc, &area, brush);
        DeleteObject(brush);
    }

    static void ExpectBar(int pressedSlot = NoButton)
    {
        EXPECT_EQ(0, DifferentPixels(ExpectedBar(pressedSlot), BarPicture())) << pressedSlot;
    }

    // The slot below whose button there is a bubble; NoButton when there is none.
    static int BubbleSlot()
    {
        const HWND bubble = FindWindowA("KstvBb", nullptr);
        if (bubble == nullptr) {
            return NoButton;
        }
        EXPECT_TRUE(IsWindowVisible(bubble));
        EXPECT_EQ(nullptr, FindWindowExA(nullptr, bubble, "KstvBb", nullptr)) << "there is one only";
        RECT place;
        GetWindowRect(bubble, &place);
        POINT origin = {};
        ClientToScreen(Windows.Buttons, &origin);
        EXPECT_EQ(17, (place.left - origin.x) % 35);
        return static_cast<int>(place.left - origin.x) / 35;
    }

    static std::vector<int> SlotsDrawnFor(int left, int right)
    {
        const RECT area = {left, 5, right, 20};
        RedrawWindow(Windows.Buttons, nullptr, nullptr, RDW_VALIDATE);
        InvalidateRect(Windows.Buttons, &area, FALSE);
        DrawnSlots.clear();
        const ReplacedCall fill("ExtTextOutA", reinterpret_cast<void*>(NoteFill));
        UpdateWindow(Windows.Buttons);
        return DrawnSlots;
    }

private:
    ReplacedCall SetTimerCall;
    ReplacedCall KillTimerCall;
};

using Notes = std::vector<int>;
using Sent = std::vector<UINT>;

} // namespace

TEST_F(ButtonBarWindow, IsTheFramesFourthChildAcrossItsTop)
{
    char className[20] = "";
    GetClassNameA(Windows.Buttons, className, sizeof className);
    EXPECT_STREQ("KstvBt", className);
    EXPECT_EQ(4, GetDlgCtrlID(Windows.Buttons));
    RECT frame;
    GetClientRect(Windows.Main, &frame);
    EXPECT_EQ(frame.right, Client().right);
    EXPECT_EQ(34, Client().bottom);
}

TEST_F(ButtonBarWindow, ShowsItsButtonsBetweenItsLines)
{
    ExpectBar();
    ButtonTable[3].Enabled = false;
    PutOnBar("2303070007");
    ExpectBar();
}

TEST_F(ButtonBarWindow, HasALightLineAboveAndADarkAndABlackOneBelow)
{
    ButtonBar.ButtonCount = 0;
    Redraw();
    const Picture picture = BarPicture();
    const auto pixel = [&](int x, int y) { return picture.Pixels[static_cast<std::size_t>(y * picture.Width + x)]; };
    for (const int x : {0, 500, picture.Width - 1}) {
        EXPECT_EQ(0xFFFFFFu, pixel(x, 0));
        EXPECT_EQ(0x808080u, pixel(x, 32));
        EXPECT_EQ(0x000000u, pixel(x, 33));
        EXPECT_EQ(pixel(x, 1), pixel(x, 31));
    }
    ExpectBar();
}

TEST_F(ButtonBarWindow, ItsLinesReachAcrossAWindowOfAnotherWidth)
{
    for (const int width : {600, 980}) {
        SetWindowPos(Windows.Main, nullptr, 0, 0, width, 500, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        ExpectBar();
    }
}

TEST_F(ButtonBarWindow, DrawsTheSlotsThatTheUpdateReaches)
{
    const struct {
        int Left;
        int Right;
        Notes Slots;
    } updates[] = {
        {0, 1, {0}},          {0, 34, {0}},         {34, 35, {0, 1}}, // the right end belongs to the next slot
        {35, 69, {1}},        {36, 105, {1, 2, 3}}, {70, 71, {2}},    {805, 839, {23}},
        {770, 900, {22, 23}}, {840, 900, {}},       {875, 880, {}},
    };
    for (const auto& update : updates) {
        EXPECT_EQ(update.Slots, SlotsDrawnFor(update.Left, update.Right)) << update.Left << " to " << update.Right;
    }
    PutOnBar("000102");
    EXPECT_EQ((Notes{0, 1, 2}), SlotsDrawnFor(0, 900));
    EXPECT_EQ((Notes{2}), SlotsDrawnFor(70, 900));
    EXPECT_EQ(Notes{}, SlotsDrawnFor(105, 200));
    ButtonBar.ButtonCount = 0;
    EXPECT_EQ(Notes{}, SlotsDrawnFor(0, 900));
}

TEST_F(ButtonBarWindow, PaintsOnlyWhatIsToBePainted)
{
    const RECT client = Client();
    const RECT update = {50, 2, 110, 34};
    {
        WindowDc dc(Windows.Buttons);
        FillWith(dc, client, RGB(255, 0, 0));
    }
    InvalidateRect(Windows.Buttons, &update, FALSE);
    const Picture actual = BarPicture();
    const Picture drawn = ExpectedBar();
    int wrong = 0;
    for (int y = 0; y < client.bottom; ++y) {
        for (int x = 0; x < client.right; ++x) {
            const std::size_t i = static_cast<std::size_t>(y * client.right + x);
            const bool isButton = y >= 3 && y < 31 && x % 35 < 34;
            const bool isCorner = isButton && (x % 35 == 0 || x % 35 == 33) && (y == 3 || y == 30);
            const bool isPainted = (isButton && !isCorner) || y >= 32;
            const bool isReached = x >= update.left && x < update.right && y >= update.top && isPainted;
            wrong += actual.Pixels[i] != (isReached ? drawn.Pixels[i] : 0xFF0000u);
        }
    }
    EXPECT_EQ(0, wrong);
}

TEST_F(ButtonBarWindow, AButtonThatCanBePressedNowIsPaintedAnew)
{
    for (int button = 0; button < ButtonTotal; ++button) {
        for (const bool enabled : {false, true}) {
            SetButtonEnabled(button, enabled);
            EXPECT_EQ(enabled, ButtonTable[button].Enabled);
            EXPECT_EQ(Values(SlotArea(button)), Values(UpdateArea())) << button;
            UpdateWindow(Windows.Buttons);
            SetButtonEnabled(button, enabled);
            EXPECT_FALSE(GetUpdateRect(Windows.Buttons, nullptr, FALSE)) << "nothing has changed";
        }
        SetButtonEnabled(button, button % 2 == 0);
        UpdateWindow(Windows.Buttons);
    }
    ExpectBar();
}

TEST_F(ButtonBarWindow, AButtonIsPaintedAnewWhereItStands)
{
    PutOnBar("13071100");
    SetButtonEnabled(11, false);
    EXPECT_EQ(Values(SlotArea(2)), Values(UpdateArea()));
    ExpectBar();
}

TEST_F(ButtonBarWindow, AButtonThatIsNotOnTheBarOnlyRemembersWhetherItCanBePressed)
{
    PutOnBar("0001");
    for (int button = 2; button < ButtonTotal; ++button) {
        SetButtonEnabled(button, false);
        EXPECT_FALSE(ButtonTable[button].Enabled);
    }
    EXPECT_FALSE(GetUpdateRect(Windows.Buttons, nullptr, FALSE));
}

TEST_F(ButtonBarWindow, AButtonThatStandsTwiceIsPaintedAnewInBothPlaces)
{
    PutOnBar("0400010402");
    SetButtonEnabled(4, false);
    const RECT slots[] = {SlotArea(0), SlotArea(3)};
    const HRGN expected = CreateRectRgnIndirect(&slots[0]);
    const HRGN second = CreateRectRgnIndirect(&slots[1]);
    CombineRgn(expected, expected, second, RGN_OR);
    const HRGN update = CreateRectRgn(0, 0, 0, 0);
    GetUpdateRgn(Windows.Buttons, update, FALSE);
    EXPECT_TRUE(EqualRgn(expected, update));
    for (const HRGN region : {expected, second, update}) {
        DeleteObject(region);
    }
    ExpectBar();
}

TEST_F(ButtonBarWindow, APressedButtonIsDownUntilItIsReleased)
{
    Press(Inside(3));
    EXPECT_EQ(Windows.Buttons, GetCapture());
    EXPECT_EQ(Values(SlotArea(3)), Values(UpdateArea()));
    ExpectBar(3);
    Paints.clear();
    Release(Inside(3));
    EXPECT_EQ(nullptr, GetCapture());
    EXPECT_FALSE(GetUpdateRect(Windows.Buttons, nullptr, FALSE)) << "it is up at once";
    ASSERT_EQ(1u, Paints.size());
    EXPECT_EQ(Values(SlotArea(3)), Values(Paints[0]));
    ExpectBar();
}

TEST_F(ButtonBarWindow, EveryButtonExplainsItselfWhileItIsPressedAndPostsItsCommand)
{
    for (int button = 0; button < ButtonTotal; ++button) {
        Forget();
        Press(Inside(button));
        EXPECT_EQ((Notes{Commands[button].Help}), StatusNotes) << button;
        EXPECT_EQ(Sent{}, PostedCommands());
        Release(Inside(button));
        EXPECT_EQ((Notes{Commands[button].Help, Position}), StatusNotes) << button;
        EXPECT_EQ((Sent{Commands[button].Command}), PostedCommands()) << button;
        Release(Inside(button));
        EXPECT_EQ(Sent{}, PostedCommands()) << "once";
    }
}

TEST_F(ButtonBarWindow, TheButtonIsTheOneInThatSlot)
{
    PutOnBar("1307");
    Press(Inside(1));
    Release(Inside(1));
    EXPECT_EQ((Notes{61, Position}), StatusNotes);
    EXPECT_EQ((Sent{261}), PostedCommands());
}

TEST_F(ButtonBarWindow, TheLaunchButtonSaysWhatLaunchingWouldDo)
{
    const struct {
        LaunchMode Mode;
        int Help;
    } modes[] = {
        {LaunchMode::Program, 134}, {LaunchMode::Edit, 52}, {LaunchMode::Associated, 23}, {LaunchMode::None, 23}};
    const LaunchMode before = App.Launch;
    for (const auto& mode : modes) {
        App.Launch = mode.Mode;
        Forget();
        Press(Inside(14));
        Move(At(0, 100));
        Move(Inside(14));
        Release(Inside(14));
        EXPECT_EQ((Notes{mode.Help, Position, mode.Help, Position}), StatusNotes);
        EXPECT_EQ((Sent{223}), PostedCommands());
        Press(Inside(19));
        EXPECT_EQ(52, StatusNotes.back()) << "the others say what they always do";
        Release(At(0, 100));
    }
    App.Launch = before;
}

TEST_F(ButtonBarWindow, ShiftTurnsTheDirectionOfRepeatFindOnly)
{
    for (int button = 0; button < ButtonTotal; ++button) {
        Press(Inside(button));
        Release(Inside(button), MK_SHIFT);
        EXPECT_EQ((Sent{button == 7 ? 262 : Commands[button].Command}), PostedCommands()) << button;
    }
    Press(Inside(7));
    Release(Inside(7), MK_CONTROL);
    EXPECT_EQ((Sent{261}), PostedCommands()) << "Ctrl is not Shift";
    Send(WM_LBUTTONDOWN, Inside(7), MK_LBUTTON | MK_SHIFT);
    Release(Inside(7));
    EXPECT_EQ((Sent{261}), PostedCommands()) << "the release counts";
}

TEST_F(ButtonBarWindow, APressedButtonComesUpWhereverThePointerLeavesItAndGoesDownAgain)
{
    const LPARAM outside[] = {At(69, 12), At(104, 12), At(75, 2), At(75, 31), At(-1, 12), At(75, -1), At(500, 300)};
    const LPARAM inside[] = {At(70, 3), At(103, 30), At(70, 30), At(103, 3)};
    Press(Inside(2));
    for (std::size_t i = 0; i < std::size(outside); ++i) {
        UpdateWindow(Windows.Buttons);
        Forget();
        Move(outside[i]);
        EXPECT_EQ((Notes{Position}), StatusNotes) << i;
        EXPECT_EQ(Values(SlotArea(2)), Values(UpdateArea())) << i;
        ExpectBar();
        Move(outside[i]);
        EXPECT_EQ((Notes{Position}), StatusNotes) << "once";
        EXPECT_FALSE(GetUpdateRect(Windows.Buttons, nullptr, FALSE));
        const LPARAM back = inside[i % std::size(inside)];
        Move(back);
        EXPECT_EQ((Notes{Position, 26}), StatusNotes) << i;
        EXPECT_EQ(Values(SlotArea(2)), Values(UpdateArea())) << i;
        ExpectBar(2);
        Move(back);
        EXPECT_EQ((Notes{Position, 26}), StatusNotes) << "once";
        EXPECT_FALSE(GetUpdateRect(Windows.Buttons, nullptr, FALSE));
    }
    EXPECT_EQ(Windows.Buttons, GetCapture());
    Release(Inside(2));
    EXPECT_EQ((Sent{226}), PostedCommands());
}

TEST_F(ButtonBarWindow, AButtonLeftIsNotPosted)
{
    Press(Inside(2));
    Move(Inside(3));
    Release(Inside(3));
    EXPECT_EQ(Sent{}, PostedCommands());
    EXPECT_EQ(nullptr, GetCapture());
    EXPECT_EQ(Position, StatusNotes.back());
    ExpectBar();
    Press(Inside(2));
    Release(Inside(3)); // without a movement before
    EXPECT_EQ(Sent{}, PostedCommands());
    EXPECT_EQ(Position, StatusNotes.back());
    ExpectBar();
}

// A slot is a little wider and higher than its button.
TEST_F(ButtonBarWindow, ThePressBesideAButtonPressesItButPostsNothingWhenReleasedThere)
{
    const LPARAM besides[] = {At(104, 12), At(80, 0), At(80, 33)};
    for (const LPARAM beside : besides) {
        Forget();
        Press(beside);
        EXPECT_EQ((Notes{26}), StatusNotes);
        ExpectBar(2);
        Release(beside);
        EXPECT_EQ(Sent{}, PostedCommands());
        ExpectBar();
        Press(beside);
        Move(Inside(2));
        Release(Inside(2));
        EXPECT_EQ((Sent{226}), PostedCommands());
    }
}

TEST_F(ButtonBarWindow, AButtonThatCannotBePressedExplainsItselfOnly)
{
    SetButtonEnabled(6, false);
    Redraw();
    Forget();
    Press(Inside(6));
    EXPECT_EQ((Notes{60}), StatusNotes);
    EXPECT_EQ(Windows.Buttons, GetCapture());
    Move(At(0, 100));
    EXPECT_EQ((Notes{60, Position}), StatusNotes);
    Move(Inside(6));
    EXPECT_EQ((Notes{60, Position, 60}), StatusNotes);
    EXPECT_FALSE(GetUpdateRect(Windows.Buttons, nullptr, FALSE));
    Release(Inside(6), MK_SHIFT);
    EXPECT_EQ((Notes{60, Position, 60, Position}), StatusNotes);
    EXPECT_FALSE(GetUpdateRect(Windows.Buttons, nullptr, FALSE));
    EXPECT_TRUE(Paints.empty());
    EXPECT_EQ(Sent{}, PostedCommands());
    EXPECT_EQ(nullptr, GetCapture());
}

TEST_F(ButtonBarWindow, AButtonThatCannotBePressedIsNeverDrawnPressed)
{
    SetButtonEnabled(6, false);
    Press(Inside(6));
    Redraw();
    ExpectBar();
    Release(Inside(6));
    Press(Inside(5));
    ExpectBar(5);
    SetButtonEnabled(5, false);
    ExpectBar();
    Release(Inside(5));
    EXPECT_EQ(Sent{}, PostedCommands());
    ExpectBar();
}

TEST_F(ButtonBarWindow, OneOfTwoEqualButtonsIsPressed)
{
    PutOnBar("040104");
    Press(Inside(0));
    EXPECT_EQ(Values(SlotArea(0)), Values(UpdateArea()));
    ExpectBar(0);
    Release(Inside(0));
    EXPECT_EQ((Sent{232}), PostedCommands());
}

TEST_F(ButtonBarWindow, ClicksRightOfTheLastButtonDoNothing)
{
    PutOnBar("000102");
    for (const int x : {105, 110, 500}) {
        Press(At(x, 12));
        EXPECT_EQ(nullptr, GetCapture()) << x;
        Release(At(x, 12));
        Send(WM_RBUTTONDOWN, At(x, 12), MK_RBUTTON);
        EXPECT_EQ(nullptr, GetCapture()) << x;
        EXPECT_EQ(NoButton, BubbleSlot()) << x;
        Send(WM_RBUTTONUP, At(x, 12));
    }
    EXPECT_EQ(Notes{}, StatusNotes);
    EXPECT_EQ(Sent{}, PostedCommands());
    EXPECT_FALSE(GetUpdateRect(Windows.Buttons, nullptr, FALSE));
    Press(At(104, 12));
    EXPECT_EQ((Notes{26}), StatusNotes) << "the last slot";
}

TEST_F(ButtonBarWindow, AnEmptyBarTakesNoClicks)
{
    ButtonBar.ButtonCount = 0;
    Redraw();
    Press(Inside(0));
    Release(Inside(0));
    Send(WM_RBUTTONDOWN, Inside(0), MK_RBUTTON);
    EXPECT_EQ(NoButton, BubbleSlot());
    EXPECT_EQ(Notes{}, StatusNotes);
    EXPECT_EQ(Sent{}, PostedCommands());
}

TEST_F(ButtonBarWindow, AReleaseWithoutAPressDoesNothing)
{
    Release(Inside(2));
    Send(WM_RBUTTONUP, Inside(2));
    EXPECT_EQ(Notes{}, StatusNotes);
    EXPECT_EQ(Sent{}, PostedCommands());
}

TEST_F(ButtonBarWindow, TheRightButtonCountsForNothingWhileTheLeftOneIsDown)
{
    Press(Inside(2));
    Forget();
    Send(WM_RBUTTONDOWN, Inside(2), MK_LBUTTON | MK_RBUTTON);
    EXPECT_EQ(NoButton, BubbleSlot());
    Send(WM_RBUTTONUP, Inside(2), MK_LBUTTON);
    EXPECT_EQ(Notes{}, StatusNotes);
    EXPECT_EQ(Windows.Buttons, GetCapture());
    ExpectBar(2);
    Release(Inside(2));
    EXPECT_EQ((Sent{226}), PostedCommands());
}

TEST_F(ButtonBarWindow, TheLeftButtonCountsForNothingWhileTheRightOneIsDown)
{
    PointAtSlot(2);
    Send(WM_RBUTTONDOWN, Inside(2), MK_RBUTTON);
    Press(Inside(2));
    EXPECT_EQ(2, BubbleSlot());
    EXPECT_EQ(Notes{}, StatusNotes);
    ExpectBar();
    Release(Inside(2));
    EXPECT_EQ(Sent{}, PostedCommands());
    EXPECT_EQ(2, BubbleSlot());
    EXPECT_EQ(Windows.Buttons, GetCapture());
    MoveToSlot(3);
    EXPECT_EQ(3, BubbleSlot()) << "it goes on";
}

TEST_F(ButtonBarWindow, AButtonComesUpWhenTheMouseIsTakenAway)
{
    Press(Inside(2));
    ExpectBar(2);
    SetCapture(Windows.View);
    EXPECT_EQ((Notes{26, Position}), StatusNotes);
    ExpectBar();
    Move(Inside(2));
    ExpectBar();
    Release(Inside(2));
    EXPECT_EQ(Sent{}, PostedCommands());
    EXPECT_EQ((Notes{26, Position}), StatusNotes);
    EXPECT_EQ(Windows.View, GetCapture()) << "it stays where it went";
    ReleaseCapture();
}

TEST_F(ButtonBarWindow, TheRightButtonsBubbleGoesWhenTheMouseIsTakenAway)
{
    PointAtSlot(2);
    Send(WM_RBUTTONDOWN, Inside(2), MK_RBUTTON);
    SetCapture(Windows.View);
    EXPECT_EQ(NoButton, BubbleSlot());
    EXPECT_EQ((Notes{Position}), StatusNotes);
    MoveToSlot(3);
    EXPECT_EQ(NoButton, BubbleSlot());
    EXPECT_EQ(Windows.View, GetCapture());
    ReleaseCapture();
}

TEST_F(ButtonBarWindow, TheRightButtonShowsABubbleAtOnceThatFollowsThePointer)
{
    ButtonBar.ShowBubbles = 0; // which does not matter here
    PointAtSlot(4);
    Send(WM_RBUTTONDOWN, Inside(4), MK_RBUTTON);
    EXPECT_EQ(4, BubbleSlot());
    EXPECT_EQ(Windows.Buttons, GetCapture());
    EXPECT_EQ(Notes{}, StatusNotes);
    const HWND bubble = FindWindowA("KstvBb", nullptr);
    PointAt(4 * 35 + 30, 20);
    Move(At(4 * 35 + 30, 20));
    EXPECT_EQ(bubble, FindWindowA("KstvBb", nullptr)) << "the same in the same slot";
    for (const int slot : {5, 6, 12, 0}) {
        MoveToSlot(slot);
        EXPECT_EQ(slot, BubbleSlot());
    }
    Send(WM_RBUTTONUP, Inside(0));
    EXPECT_EQ(NoButton, BubbleSlot());
    EXPECT_EQ(nullptr, GetCapture());
    EXPECT_EQ((Notes{Position}), StatusNotes);
    EXPECT_EQ(Sent{}, PostedCommands());
    MoveToSlot(7);
    EXPECT_EQ(NoButton, BubbleSlot()) << "it is over";
    EXPECT_EQ(0, TimerStarts);
}

TEST_F(ButtonBarWindow, TheRightButtonsBubbleGoesOffTheBarAndComesBack)
{
    PointAtSlot(4);
    Send(WM_RBUTTONDOWN, Inside(4), MK_RBUTTON);
    MoveOffTheBar();
    EXPECT_EQ(NoButton, BubbleSlot());
    EXPECT_EQ(Windows.Buttons, GetCapture());
    MoveOffTheBar();
    EXPECT_EQ(NoButton, BubbleSlot());
    MoveToSlot(4);
    EXPECT_EQ(4, BubbleSlot()) << "the slot was forgotten";
    MoveOffTheBar();
    Send(WM_RBUTTONUP, At(100, 60));
    EXPECT_EQ((Notes{Position}), StatusNotes);
    EXPECT_EQ(nullptr, GetCapture());
}

TEST_F(ButtonBarWindow, ABubbleStaysRightOfTheLastButton)
{
    PutOnBar("000102");
    PointAtSlot(2);
    Send(WM_RBUTTONDOWN, Inside(2), MK_RBUTTON);
    MoveToSlot(4);
    EXPECT_EQ(2, BubbleSlot());
}

TEST_F(ButtonBarWindow, TheRightButtonStopsTheTimerOfARestingPointer)
{
    ButtonBar.ShowBubbles = 1;
    MoveToSlot(2);
    ASSERT_NE(0u, TimerPeriod);
    Send(WM_RBUTTONDOWN, Inside(2), MK_RBUTTON);
    EXPECT_EQ(0u, TimerPeriod);
    Send(WM_RBUTTONUP, Inside(2));
    MoveToSlot(3);
    EXPECT_EQ(1500u, TimerPeriod) << "a new one";
    Send(WM_RBUTTONDOWN, At(900, 12), MK_RBUTTON);
    EXPECT_EQ(0u, TimerPeriod) << "also right of the last button";
}

TEST_F(ButtonBarWindow, AMovementStartsTheTimerForABubbleOnce)
{
    ButtonBar.ShowBubbles = 1;
    MoveToSlot(2);
    EXPECT_EQ(1500u, TimerPeriod);
    MoveToSlot(3);
    EXPECT_EQ(1, TimerStarts);
    EXPECT_EQ(NoButton, BubbleSlot());
    EXPECT_EQ(nullptr, GetCapture());
}

TEST_F(ButtonBarWindow, WithoutBubblesNoTimerStarts)
{
    ButtonBar.ShowBubbles = 0;
    MoveToSlot(2);
    MoveToSlot(3);
    EXPECT_EQ(0, TimerStarts);
}

TEST_F(ButtonBarWindow, ARestingPointerIsShownTheBubbleOfItsSlot)
{
    ButtonBar.ShowBubbles = 1;
    MoveToSlot(2);
    PointAtSlot(3); // where it is now counts
    Rest();
    EXPECT_EQ(3, BubbleSlot());
    EXPECT_EQ(250u, TimerPeriod);
    EXPECT_EQ(2, TimerStarts);
    EXPECT_EQ(Notes{}, StatusNotes);
    EXPECT_EQ(nullptr, GetCapture());
    Rest();
    EXPECT_EQ(3, BubbleSlot()) << "it stays on the bar";
    EXPECT_EQ(250u, TimerPeriod);
}

TEST_F(ButtonBarWindow, ARestingPointersBubbleGoesWhenItHasLeftTheBar)
{
    ButtonBar.ShowBubbles = 1;
    MoveToSlot(2);
    Rest();
    ASSERT_EQ(2, BubbleSlot());
    PointAt(100, 60); // without a word to the bar
    Rest();
    EXPECT_EQ(NoButton, BubbleSlot());
    Rest();
    EXPECT_EQ(0u, TimerPeriod);
    MoveToSlot(2);
    EXPECT_EQ(1500u, TimerPeriod) << "and from the beginning";
}

TEST_F(ButtonBarWindow, ARestingPointersBubbleFollowsItAndGoesOffTheBar)
{
    ButtonBar.ShowBubbles = 1;
    MoveToSlot(2);
    Rest();
    MoveToSlot(3);
    EXPECT_EQ(3, BubbleSlot());
    MoveOffTheBar();
    EXPECT_EQ(NoButton, BubbleSlot());
    EXPECT_EQ(0u, TimerPeriod);
    MoveToSlot(3);
    EXPECT_EQ(NoButton, BubbleSlot()) << "it takes its time again";
    EXPECT_EQ(1500u, TimerPeriod);
}

TEST_F(ButtonBarWindow, NoBubbleComesWhereThereIsNoButton)
{
    PutOnBar("000102");
    ButtonBar.ShowBubbles = 1;
    MoveToSlot(3);
    EXPECT_EQ(1500u, TimerPeriod);
    Rest();
    EXPECT_EQ(NoButton, BubbleSlot());
    EXPECT_EQ(0u, TimerPeriod);
    MoveToSlot(2);
    MoveOffTheBar();
    Rest();
    EXPECT_EQ(NoButton, BubbleSlot());
    EXPECT_EQ(0u, TimerPeriod);
}

TEST_F(ButtonBarWindow, AWindowOverTheBarKeepsBubblesAway)
{
    ButtonBar.ShowBubbles = 1;
    RECT bar;
    GetWindowRect(Windows.Buttons, &bar);
    const HWND cover = CreateWindowExA(WS_EX_TOPMOST | WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, "Static", "",
                                       WS_POPUP | WS_VISIBLE | SS_NOTIFY, bar.left, bar.top, 300, 34, nullptr, nullptr,
                                       nullptr, nullptr);
    MoveToSlot(2);
    EXPECT_EQ(1500u, TimerPeriod);
    Rest();
    EXPECT_EQ(NoButton, BubbleSlot());
    DestroyWindow(cover);
}

TEST_F(ButtonBarWindow, APressHidesTheBubbleAndStopsTheTimer)
{
    ButtonBar.ShowBubbles = 1;
    for (const int x : {80, 900}) { // on a button, and right of the last one
        MoveToSlot(2);
        Rest();
        ASSERT_EQ(2, BubbleSlot());
        Press(At(x, 12));
        EXPECT_EQ(NoButton, BubbleSlot());
        EXPECT_EQ(0u, TimerPeriod);
        Quieten();
    }
}

TEST_F(ButtonBarWindow, TheRightButtonBesideTheButtonsHidesARestingPointersBubble)
{
    ButtonBar.ShowBubbles = 1;
    MoveToSlot(2);
    Rest();
    ASSERT_EQ(2, BubbleSlot());
    Send(WM_RBUTTONDOWN, At(900, 12), MK_RBUTTON);
    EXPECT_EQ(NoButton, BubbleSlot());
    EXPECT_EQ(0u, TimerPeriod);
    EXPECT_EQ(nullptr, GetCapture());
}

TEST_F(ButtonBarWindow, ADismissedBubbleIsGoneAndComesAgain)
{
    ButtonBar.ShowBubbles = 1;
    for (int round = 0; round < 2; ++round) {
        MoveToSlot(2);
        EXPECT_EQ(1500u, TimerPeriod);
        Rest();
        EXPECT_EQ(2, BubbleSlot());
        DismissBubble();
        EXPECT_EQ(NoButton, BubbleSlot());
        EXPECT_EQ(0u, TimerPeriod);
    }
    MoveToSlot(2);
    DismissBubble(); // on its way only
    EXPECT_EQ(0u, TimerPeriod);
    Send(WM_RBUTTONDOWN, Inside(2), MK_RBUTTON);
    DismissBubble();
    MoveToSlot(2);
    EXPECT_EQ(2, BubbleSlot()) << "the slot was forgotten";
}

TEST_F(ButtonBarWindow, ABubbleGoesWhenTheFrameIsMovedOrSized)
{
    const UINT changes[] = {SWP_NOSIZE, SWP_NOMOVE};
    for (const UINT change : changes) {
        Quieten();
        MoveToSlot(2);
        Rest();
        ASSERT_EQ(2, BubbleSlot());
        SetWindowPos(Windows.Main, nullptr, 50, 50, 930, 510, change | SWP_NOZORDER | SWP_NOACTIVATE);
        EXPECT_EQ(NoButton, BubbleSlot()) << change;
        EXPECT_EQ(0u, TimerPeriod);
    }
}

TEST_F(ButtonBarWindow, ATimerMessageThatComesTooLateShowsNothing)
{
    ButtonBar.ShowBubbles = 1;
    MoveToSlot(2);
    Press(Inside(2)); // stops the timer
    Rest();
    EXPECT_EQ(NoButton, BubbleSlot());
    EXPECT_EQ(0u, TimerPeriod);
}

TEST_F(ButtonBarWindow, NoBubbleComesOnTheButtonThatWasJustPressed)
{
    ButtonBar.ShowBubbles = 1;
    PointAtSlot(2);
    Press(Inside(2));
    Release(Inside(2));
    Forget();
    Move(At(72, 5));
    Move(At(103, 30));
    EXPECT_EQ(0, TimerStarts);
    Move(At(104, 12));
    EXPECT_EQ(1, TimerStarts) << "beside it";
    EXPECT_EQ(1500u, TimerPeriod);
    PointAt(100, 60);
    Rest(); // no bubble: but the press is forgotten
    Move(At(72, 5));
    EXPECT_EQ(2, TimerStarts);
}

TEST_F(ButtonBarWindow, WhileAButtonIsHeldNoTimerStartsAndALateOneChangesNothing)
{
    ButtonBar.ShowBubbles = 1;
    Press(Inside(2));
    Move(Inside(5));
    Move(Inside(2));
    EXPECT_EQ(0, TimerStarts);
    Rest();
    Move(At(71, 4));
    ExpectBar(2);
    Release(Inside(2));
    EXPECT_EQ((Sent{226}), PostedCommands());
}

TEST_F(ButtonBarWindow, NothingIsLeftOfABubbleWhenTheBarIsDestroyed)
{
    ButtonBar.ShowBubbles = 1;
    MoveToSlot(2);
    Rest();
    ASSERT_EQ(2, BubbleSlot());
    EndProgram();
    EXPECT_EQ(nullptr, FindWindowA("KstvBb", nullptr));
    EXPECT_FALSE(IsBubbleShown());
    StartProgramOnce();
    StatusProc = Subclass(Windows.Status, NoteStatus);
    BarProc = Subclass(Windows.Buttons, NotePaint);
}

TEST_F(ButtonBarWindow, ANewBarHasNoButtonPressed)
{
    Press(Inside(2));
    EndProgram();
    StartProgramOnce();
    StatusProc = Subclass(Windows.Status, NoteStatus);
    BarProc = Subclass(Windows.Buttons, NotePaint);
    SetWindowPos(Windows.Main, HWND_TOP, 40, 40, 940, 500, SWP_NOACTIVATE);
    Redraw();
    ExpectBar();
}

TEST_F(ButtonBarWindow, TheProgramLivesAsLongAsItsBar)
{
    DestroyWindow(Windows.Buttons);
    MSG message = {};
    EXPECT_TRUE(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(0u, message.wParam);
    EndProgram();
    StartProgramOnce();
    StatusProc = Subclass(Windows.Status, NoteStatus);
    BarProc = Subclass(Windows.Buttons, NotePaint);
}

TEST_F(ButtonBarWindow, DestroyingItLeavesNoObjectBehind)
{
    const auto freeAfterARun = [] {
        EndProgram();
        StartProgramOnce();
        Redraw();
        EndProgram();
        const int free = FreeGdiObjects();
        StartProgramOnce();
        return free;
    };
    freeAfterARun(); // what the system makes once and keeps
    const int before = freeAfterARun();
    EXPECT_EQ(before, freeAfterARun());
    StatusProc = Subclass(Windows.Status, NoteStatus);
    BarProc = Subclass(Windows.Buttons, NotePaint);
}

TEST_F(ButtonBarWindow, PaintingAndPressingLeavesNoObjectBehind)
{
    Redraw();
    const int before = FreeGdiObjects();
    for (int i = 0; i < 500; ++i) {
        ButtonTable[i % ButtonTotal].Enabled = i % 2 == 0;
        Press(Inside(i % ButtonTotal));
        Redraw();
        Release(Inside(i % ButtonTotal));
    }
    EXPECT_EQ(before, FreeGdiObjects());
}
