// Choosing headings with the two bars, and what is locked then.
#include "view/lock_region.h"

#include "app/menu_state.h"
#include "app/open_sequence.h"
#include "base/text.h"
#include "document/document_state.h"
#include "harness/dialogs.h"
#include "harness/picture.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "harness/system_calls.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/screen_font.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace {

constexpr UINT StepMessage = WM_APP;

// What to do when the choice takes the step's message off the queue: the messages before it have been served.
std::vector<std::function<void()>> Steps;
std::size_t StepsTaken;

LRESULT CALLBACK OnTaken(int code, WPARAM removed, LPARAM lParam)
{
    const MSG& message = *reinterpret_cast<const MSG*>(lParam);
    if (code == HC_ACTION && removed == PM_REMOVE && message.message == StepMessage) {
        ++StepsTaken;
        Steps[message.wParam]();
    }
    return CallNextHookEx(nullptr, code, removed, lParam);
}

// The last size that the main window was told, and how often.
struct ToldSize {
    int Count;
    WPARAM Kind;
    LPARAM Size;
};

ToldSize Told;
UINT LastString;
WNDPROC MainProc;
WNDPROC StatusProc;

LRESULT CALLBACK NoteSize(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_SIZE) {
        Told = {Told.Count + 1, wParam, lParam};
    }
    return CallWindowProcA(MainProc, window, message, wParam, lParam);
}

LRESULT CALLBACK NoteString(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_USER + 5) {
        LastString = static_cast<UINT>(wParam);
    }
    return CallWindowProcA(StatusProc, window, message, wParam, lParam);
}

// How often the choice looks for a message, and how often it waits for one. At its first wait the user presses
// Esc; one that looks again and again without waiting has failed, and the user presses it then.
constexpr int MostLooks = 1000;
int Looks;
int Waits;
decltype(&PeekMessageA) RealPeek;

BOOL WINAPI CountLook(MSG* message, HWND window, UINT first, UINT last, UINT remove)
{
    if (++Looks == MostLooks) {
        PostMessageA(Windows.View, WM_KEYDOWN, VK_ESCAPE, 1);
    }
    return RealPeek(message, window, first, last, remove);
}

BOOL WINAPI EscAtWait()
{
    ++Waits;
    PostMessageA(Windows.View, WM_KEYDOWN, VK_ESCAPE, 1);
    return TRUE;
}

// Where the program moves the pointer. What the system says of it may be late.
std::vector<POINT> MovedTo;

BOOL WINAPI NotePointer(int x, int y)
{
    MovedTo.push_back({x, y});
    return TRUE;
}

class CountedLooks {
public:
    CountedLooks()
        : Peek("PeekMessageA", reinterpret_cast<void*>(CountLook)),
          Wait("WaitMessage", reinterpret_cast<void*>(EscAtWait))
    {
        const HMODULE library = GetModuleHandleA("user32");
        RealPeek =
            reinterpret_cast<decltype(RealPeek)>(reinterpret_cast<void*>(GetProcAddress(library, "PeekMessageA")));
        Looks = Waits = 0;
    }

private:
    ReplacedCall Peek;
    ReplacedCall Wait;
};

class LockRegion : public RunningProgram {
protected:
    LockRegion()
    {
        Hook = SetWindowsHookExA(WH_GETMESSAGE, OnTaken, nullptr, GetCurrentThreadId());
        Steps.clear();
        SetWindowPos(Windows.Main, nullptr, 0, 0, 800, 600, SWP_NOZORDER | SWP_NOACTIVATE);
        Choose("Courier");
        PumpMessages();
    }

    ~LockRegion() override
    {
        UnhookWindowsHookEx(Hook);
        ClearLock();
    }

    static void Choose(const char* face)
    {
        CopyText(ViewOptions.FontName, face);
        CreateScreenFont(false);
    }

    static void Open(const ScratchFile& file)
    {
        ASSERT_TRUE(OpenSequence(Windows.Main, file.Path()));
        UpdateWindow(Windows.View);
    }

    // The user's side of the choice, in its order.
    static void Key(UINT key) { PostMessageA(Windows.View, WM_KEYDOWN, key, 1); }
    static void Click(int x, int y) { PostMessageA(Windows.View, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y)); }
    static void Move(int x, int y) { PostMessageA(Windows.View, WM_MOUSEMOVE, 0, MAKELPARAM(x, y)); }

    static void Then(std::function<void()> step)
    {
        PostMessageA(nullptr, StepMessage, Steps.size(), 0);
        Steps.push_back(std::move(step));
    }

    // Runs the command. A choice that goes on after what was planned is a failure, and ends.
    static void Toggle()
    {
        Run([] { SendMessageA(Windows.Main, WM_COMMAND, IDM_VIEW_LOCK, 0); });
    }

    // Behind everything that is planned. A box that opens meanwhile takes the messages off that wait, so its
    // step plans this once the box is closed.
    static void EndWhatGoesOn()
    {
        Then([] { ADD_FAILURE() << "the choice goes on"; });
        Key(VK_ESCAPE);
    }

    static void Run(const std::function<void()>& choice)
    {
        const std::size_t planned = Steps.size();
        EndWhatGoesOn();
        RunUnguarded(choice, planned);
    }

    static void RunUnguarded(const std::function<void()>& choice, std::size_t planned)
    {
        StepsTaken = 0;
        choice();
        EXPECT_EQ(planned, StepsTaken);
        MSG message;
        while (PeekMessageA(&message, Windows.View, WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE)) {
        }
        while (PeekMessageA(&message, nullptr, StepMessage, StepMessage, PM_NOREMOVE)) {
            Steps[message.wParam] = [] {};
            PeekMessageA(&message, nullptr, StepMessage, StepMessage, PM_REMOVE);
        }
        Steps.clear();
    }

    static void ExpectLocked(std::int32_t rows, std::int32_t columns)
    {
        EXPECT_EQ(rows, View.LockRows);
        EXPECT_EQ(columns, View.LockCols);
        EXPECT_EQ(0, View.LockTopLine);
        EXPECT_EQ(0, View.LockColStart);
        ClearLock();
    }

    // What happens during the choice ends it, and locks nothing; the view shows no bar afterwards.
    static void ExpectEnds(std::function<void()> happens)
    {
        Move(Columns(9), Rows(3));
        Then(std::move(happens));
        Key(VK_RETURN);
        Toggle();
        EXPECT_FALSE(View.PickingLock);
        EXPECT_EQ(nullptr, GetCapture());
        ExpectLocked(0, 0);
        ExpectCleanView();
    }

    // What the view shows is what it shows when all of it is painted.
    static void ExpectCleanView()
    {
        PumpMessages();
        const Picture shown = ViewPicture();
        RedrawWindow(Windows.View, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        EXPECT_EQ(0, DifferentPixels(ViewPicture(), shown));
    }

    static Picture ViewPicture() { return PictureOf(Windows.View, {0, 0, View.ClientWidth, View.ClientHeight}); }

    static Picture RowPicture(int row)
    {
        UpdateWindow(Windows.View);
        return PictureOf(Windows.View, {0, row * View.LineHeight, View.ClientWidth, (row + 1) * View.LineHeight});
    }

    static Picture ColumnsPicture(std::int32_t left, std::int32_t right)
    {
        UpdateWindow(Windows.View);
        return PictureOf(Windows.View, {left, 0, right, View.ClientHeight});
    }

    // The main window with its frame, and all within it.
    static RECT WholeWindow()
    {
        RECT whole;
        GetWindowRect(Windows.Main, &whole);
        OffsetRect(&whole, -whole.left, -whole.top);
        return whole;
    }

    static Picture WindowPicture()
    {
        const RECT whole = WholeWindow();
        const HDC source = GetWindowDC(Windows.Main);
        const Picture picture = Drawn(whole.right, whole.bottom, [&](HDC canvas) {
            BitBlt(canvas, 0, 0, whole.right, whole.bottom, source, 0, 0, SRCCOPY);
        });
        ReleaseDC(Windows.Main, source);
        return picture;
    }

    static void BlackenWindow()
    {
        const RECT whole = WholeWindow();
        const HDC dc = GetWindowDC(Windows.Main);
        FillRect(dc, &whole, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
        ReleaseDC(Windows.Main, dc);
    }

    // A picture of the view with bars at y and, unless it is -1, at x.
    static Picture WithBars(Picture picture, int x, int y)
    {
        for (int row = 0; row < picture.Height; ++row) {
            for (int column = 0; column < picture.Width; ++column) {
                const bool inRowBar = row == y || row == y + 1;
                const bool inColumnBar = x >= 0 && (column == x || column == x + 1);
                if (inRowBar != inColumnBar) {
                    picture.Pixels[static_cast<std::size_t>(row * picture.Width + column)] ^= 0xFFFFFF;
                }
            }
        }
        return picture;
    }

    static std::int32_t Columns(int count) { return count * View.CharWidth; }
    static std::int32_t Rows(int count) { return count * View.LineHeight; }

private:
    HHOOK Hook;
};

// Lines that all differ, as their columns do.
std::string Table(int count)
{
    std::string content;
    for (int line = 1; line <= count; ++line) {
        for (int column = 0; column < 40; ++column) {
            content += std::to_string(line * 7 + column * column) + " ";
        }
        content += "\n";
    }
    return content;
}

// A window procedure in another one's place.
class Replaced {
public:
    Replaced(HWND window, WNDPROC procedure, WNDPROC& before) : Window(window), Before(before)
    {
        Before =
            reinterpret_cast<WNDPROC>(SetWindowLongPtrA(Window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
    }
    ~Replaced() { SetWindowLongPtrA(Window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Before)); }
    Replaced(const Replaced&) = delete;
    Replaced& operator=(const Replaced&) = delete;

private:
    HWND Window;
    WNDPROC& Before;
};

} // namespace

TEST_F(LockRegion, EnterAtOnceLocksFourRowsAndNineteenColumns)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    Key(VK_RETURN);
    Toggle();
    ExpectLocked(4, 19);
}

TEST_F(LockRegion, TheChoiceStartsWithThePointerWhereTheBarsCross)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    const ReplacedCall noted("SetCursorPos", reinterpret_cast<void*>(NotePointer));
    MovedTo.clear();
    Key(VK_ESCAPE);
    Toggle();
    ASSERT_EQ(1u, MovedTo.size());
    POINT pointer = MovedTo[0];
    ScreenToClient(Windows.View, &pointer);
    EXPECT_EQ(Columns(20), pointer.x);
    EXPECT_EQ(Rows(4), pointer.y);
}

TEST_F(LockRegion, TheViewIsAtItsBeginningAndPaintedWhenTheChoiceStarts)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    const Picture beginning = ViewPicture();
    SendMessageA(Windows.View, WM_SCROLL_VIEW, 99, 50);
    SendMessageA(Windows.View, WM_HSCROLL, SB_PAGERIGHT, 0);
    ASSERT_EQ(8, View.LeftColumn);
    Then([&beginning] {
        EXPECT_EQ(0, View.TopLine);
        EXPECT_EQ(0, View.LeftColumn);
        EXPECT_FALSE(GetUpdateRect(Windows.View, nullptr, FALSE));
        EXPECT_EQ(0, DifferentPixels(WithBars(beginning, Columns(20), Rows(4)), ViewPicture()));
    });
    Key(VK_ESCAPE);
    Toggle();
    EXPECT_EQ(0, View.TopLine) << "it stays there";
}

TEST_F(LockRegion, TheStatusLineSaysWhatToDo)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    const Replaced noted(Windows.Status, NoteString, StatusProc);
    LastString = 0;
    Then([] { EXPECT_EQ(116u, LastString); });
    Key(VK_ESCAPE);
    Toggle();
    EXPECT_EQ(116u, LastString);
}

TEST_F(LockRegion, TheBarsAreTwoInvertedPixelsAndFollowThePointerWithoutATrace)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    const Picture clean = ViewPicture();
    const auto expectBars = [&clean](int x, int y) {
        Then([&clean, x, y] { EXPECT_EQ(0, DifferentPixels(WithBars(clean, x, y), ViewPicture())) << x << ' ' << y; });
    };
    expectBars(Columns(20), Rows(4));
    Move(Columns(5) + 3, Rows(7) + 3);
    expectBars(Columns(5), Rows(7));
    Move(-3, -3);
    expectBars(0, 0);
    Move(View.ClientWidth - 1, Rows(2));
    expectBars(-1, Rows(2));
    Move(Columns(6), Rows(2));
    expectBars(Columns(6), Rows(2));
    Key(VK_ESCAPE);
    bool isClean = false;
    Run([&clean, &isClean] {
        PickLockRegion(Windows.View);
        isClean = DifferentPixels(clean, ViewPicture()) == 0; // before anything is painted again
    });
    EXPECT_TRUE(isClean);
    ExpectLocked(0, 0);
}

TEST_F(LockRegion, ThePlaceIsRoundedDownToWholeRowsAndColumns)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    Move(Columns(6) - 1, Rows(3) - 1);
    Key(VK_RETURN);
    Toggle();
    ExpectLocked(2, 4);
    Move(Columns(6), Rows(3));
    Key(VK_RETURN);
    Toggle();
    ExpectLocked(3, 5);
}

TEST_F(LockRegion, OneColumnsWidthGoesToTheMargin)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    for (const int columns : {0, 1, 2, 3}) {
        Move(Columns(columns), Rows(1));
        Key(VK_RETURN);
        Toggle();
        ExpectLocked(1, std::max(columns - 1, 0));
    }
}

TEST_F(LockRegion, NoMoreThanTenRowsCanBeLocked)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    ASSERT_LT(11, RowsOnScreen());
    Move(Columns(3), Rows(10) - 1);
    Key(VK_RETURN);
    Toggle();
    ExpectLocked(9, 2);
    Move(Columns(3), 32000);
    Key(VK_RETURN);
    Toggle();
    ExpectLocked(10, 2);
}

TEST_F(LockRegion, InALowWindowTheBarGoesNoFurtherThanTheLastWholeRow)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    for (const int wanted : {7, 3}) {
        const int frame = 600 - View.ClientHeight;
        SetWindowPos(Windows.Main, nullptr, 0, 0, 800, frame + Rows(wanted) + 5, SWP_NOZORDER | SWP_NOACTIVATE);
        ASSERT_EQ(Rows(wanted) + 5, View.ClientHeight);
        Move(Columns(3), 32000);
        Key(VK_RETURN);
        Toggle();
        ExpectLocked(wanted, 2);
        Key(VK_RETURN);
        Toggle();
        ExpectLocked(std::min(wanted, 4), 19);
        SetWindowPos(Windows.Main, nullptr, 0, 0, 800, 600, SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

TEST_F(LockRegion, TheBarKeepsItsTwoPixelsWithinAWindowOfWholeRows)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    const int frame = 600 - View.ClientHeight;
    for (const int more : {1, 2}) {
        SetWindowPos(Windows.Main, nullptr, 0, 0, 800, frame + Rows(5) + more, SWP_NOZORDER | SWP_NOACTIVATE);
        ASSERT_EQ(Rows(5) + more, View.ClientHeight);
        Move(Columns(3), 32000);
        Key(VK_RETURN);
        Toggle();
        ExpectLocked(more == 2 ? 5 : 4, 2);
    }
}

TEST_F(LockRegion, InANarrowWindowTheColumnBarStartsWithinIt)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    SetWindowPos(Windows.Main, nullptr, 0, 0, 170, 600, SWP_NOZORDER | SWP_NOACTIVATE);
    ASSERT_GT(Columns(20), View.ClientWidth);
    const std::int32_t most = (View.ClientWidth - 2) / View.CharWidth;
    Key(VK_RETURN);
    Toggle();
    ExpectLocked(4, most - 1);
}

TEST_F(LockRegion, TwentyColumnsStayFreeBesideTheLockedOnes)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    const std::int32_t most = (View.ClientWidth - Columns(20)) / View.CharWidth;
    Move(Columns(most), Rows(2));
    Key(VK_RETURN);
    Toggle();
    ExpectLocked(2, most - 1);
    Move(Columns(most + 1), Rows(2));
    Key(VK_RETURN);
    Toggle();
    ExpectLocked(2, 0);
}

TEST_F(LockRegion, AProportionalFontHasNoColumnBarAndLocksRowsOnly)
{
    Choose("MS Sans Serif");
    ASSERT_FALSE(View.FontIsFixed);
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    const Picture clean = ViewPicture();
    Then([&clean] { EXPECT_EQ(0, DifferentPixels(WithBars(clean, -1, Rows(4)), ViewPicture())); });
    Move(Columns(5), Rows(3));
    Then([&clean] { EXPECT_EQ(0, DifferentPixels(WithBars(clean, -1, Rows(3)), ViewPicture())); });
    Key(VK_RETURN);
    Toggle();
    ExpectLocked(3, 0);
}

TEST_F(LockRegion, AClickAcceptsThePlaceThePointerCameTo)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    Move(Columns(8), Rows(5));
    Click(Columns(12), Rows(9));
    Toggle();
    ExpectLocked(5, 7);
}

TEST_F(LockRegion, EscChangesNothing)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    Move(Columns(8), Rows(5));
    Key(VK_ESCAPE);
    Toggle();
    ExpectLocked(0, 0);
}

TEST_F(LockRegion, EveryOtherKeyBeepsAndTheChoiceGoesOn)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    const BeepCounter beeps;
    for (const UINT key : {UINT{'L'}, UINT{VK_SPACE}, UINT{VK_DOWN}, UINT{VK_F3}, UINT{VK_TAB}}) {
        Key(key);
    }
    Then([&beeps] { EXPECT_EQ(5, beeps.Count()); });
    Key(VK_RETURN);
    Toggle();
    EXPECT_EQ(5, beeps.Count());
    ExpectLocked(4, 19);
}

TEST_F(LockRegion, EverythingElseIsDiscarded)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    PostMessageA(Windows.Main, WM_COMMAND, IDM_VIEW_HEX, 0);
    PostMessageA(Windows.View, WM_VSCROLL, SB_PAGEDOWN, 0);
    PostMessageA(Windows.View, WM_CHAR, VK_ESCAPE, 1);
    PostMessageA(Windows.View, WM_KEYUP, VK_ESCAPE, 1);
    PostMessageA(Windows.View, WM_LBUTTONUP, 0, 0);
    PostMessageA(Windows.View, WM_RBUTTONDOWN, MK_RBUTTON, 0);
    Key(VK_RETURN);
    Toggle();
    PumpMessages();
    EXPECT_FALSE(View.HexMode);
    EXPECT_EQ(0, View.TopLine);
    EXPECT_EQ(4, View.LockRows);
}

TEST_F(LockRegion, TheEndOfTheProgramEndsTheChoiceAndIsNotLost)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    Then([] { PostQuitMessage(7); });
    SendMessageA(Windows.Main, WM_COMMAND, IDM_VIEW_LOCK, 0);
    Steps.clear();
    MSG message = {};
    EXPECT_TRUE(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(7u, message.wParam);
    ExpectLocked(0, 0);
}

TEST_F(LockRegion, TheSizeCursorStandsAndTheMouseIsCapturedWhileItIsChosen)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    for (const UINT end : {VK_RETURN, VK_ESCAPE}) {
        SetCursor(Drawing.IbeamCursor);
        Then([] {
            EXPECT_EQ(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_SIZE)), GetCursor());
            EXPECT_EQ(Windows.View, GetCapture());
        });
        Key(end);
        Toggle();
        EXPECT_EQ(Drawing.IbeamCursor, GetCursor());
        EXPECT_EQ(nullptr, GetCapture());
        ClearLock();
    }
}

TEST_F(LockRegion, TheMainWindowIsToldItsSizeAndTheViewPaintedAnewAfterLockingAndAfterUnlocking)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    RECT client;
    GetClientRect(Windows.Main, &client);
    const Replaced noted(Windows.Main, NoteSize, MainProc);
    for (const bool locked : {true, false}) {
        Told = {};
        if (locked) {
            Key(VK_RETURN);
        }
        Toggle();
        ASSERT_EQ(locked, AnyLock());
        EXPECT_EQ(1, Told.Count);
        EXPECT_EQ(static_cast<WPARAM>(SIZE_RESTORED), Told.Kind);
        EXPECT_EQ(MAKELPARAM(client.right, client.bottom), Told.Size);
        EXPECT_EQ(locked ? Rows(4) : 0, View.LockedHeight);
        RECT toPaint = {};
        GetUpdateRect(Windows.View, &toPaint, FALSE);
        const RECT whole = {0, 0, View.ClientWidth, View.ClientHeight};
        EXPECT_TRUE(EqualRect(&whole, &toPaint));
    }
}

TEST_F(LockRegion, TheCommandRemovesAnyLockWhole)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    std::int32_t* const parts[] = {&View.LockTopLine, &View.LockRows, &View.LockColStart, &View.LockCols};
    for (std::int32_t* const part : parts) {
        *part = 1;
        Toggle();
        EXPECT_FALSE(AnyLock());
    }
}

TEST_F(LockRegion, TheFirstScrolledRowIsTheLineBelowTheHeadingsAndPageUpBeepsThere)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    const Picture third = RowPicture(2);
    const Picture fifth = RowPicture(4);
    const Picture sixth = RowPicture(5);
    Move(0, Rows(4));
    Key(VK_RETURN);
    Toggle();
    ASSERT_EQ(4, View.LockRows);
    EXPECT_EQ(0, DifferentPixels(fifth, RowPicture(4)));
    const Picture heading = RowPicture(2);
    EXPECT_LT(0, DifferentPixels(third, heading)) << "headings have their own colours";
    const BeepCounter beeps;
    View.BeepedAtEnd = false;
    SendMessageA(Windows.Main, WM_KEYDOWN, VK_PRIOR, 0);
    EXPECT_EQ(1, beeps.Count());
    EXPECT_EQ(0, View.TopLine);
    SendMessageA(Windows.Main, WM_KEYDOWN, VK_DOWN, 0);
    EXPECT_EQ(0, DifferentPixels(sixth, RowPicture(4)));
    EXPECT_EQ(0, DifferentPixels(heading, RowPicture(2)));
    SendMessageA(Windows.Main, WM_KEYDOWN, VK_NEXT, 0);
    EXPECT_EQ(1 + RowsOnScreen() - 4, View.TopLine) << "a page is what scrolls";
    EXPECT_EQ(0, DifferentPixels(heading, RowPicture(2)));
    Toggle();
    EXPECT_LT(0, DifferentPixels(heading, RowPicture(2))) << "an ordinary row again";
}

TEST_F(LockRegion, LockedColumnsStayWhileTheOthersScroll)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    Move(Columns(9), 0);
    Key(VK_RETURN);
    Toggle();
    ASSERT_EQ(8, View.LockCols);
    const std::int32_t border = TextMargin + Columns(8);
    const std::int32_t right = View.ClientWidth / 2;
    const Picture locked = ColumnsPicture(0, border);
    const Picture scrolled = ColumnsPicture(border, right);
    const Picture further = ColumnsPicture(border + Columns(8), right + Columns(8));
    SendMessageA(Windows.Main, WM_KEYDOWN, VK_RIGHT, 0);
    ASSERT_EQ(8, View.LeftColumn);
    EXPECT_EQ(0, DifferentPixels(locked, ColumnsPicture(0, border)));
    EXPECT_EQ(0, DifferentPixels(further, ColumnsPicture(border, right)));
    SendMessageA(Windows.Main, WM_KEYDOWN, VK_LEFT, 0);
    EXPECT_EQ(0, DifferentPixels(locked, ColumnsPicture(0, border)));
    EXPECT_EQ(0, DifferentPixels(scrolled, ColumnsPicture(border, right)));
    RedrawWindow(Windows.View, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    EXPECT_EQ(0, DifferentPixels(locked, ColumnsPicture(0, border)));
}

TEST_F(LockRegion, NothingCanBeSelectedBesideALock)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    Key(VK_RETURN);
    Toggle();
    ASSERT_TRUE(AnyLock());
    SendMessageA(Windows.View, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(Columns(25), Rows(6)));
    SendMessageA(Windows.View, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(Columns(35), Rows(8)));
    SendMessageA(Windows.View, WM_LBUTTONUP, 0, MAKELPARAM(Columns(35), Rows(8)));
    EXPECT_EQ(0, View.SelLineA);
    EXPECT_EQ(0, View.SelLineB);
    EXPECT_FALSE(IsCommandPossible(IDM_EDIT_COPY));
    EXPECT_NE(Windows.View, GetCapture());
}

TEST_F(LockRegion, AfterEscTheMainWindowIsToldItsSizeAndTheViewPaintedAnewToo)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    RECT client;
    GetClientRect(Windows.Main, &client);
    const Replaced noted(Windows.Main, NoteSize, MainProc);
    Told = {};
    Key(VK_ESCAPE);
    Toggle();
    ASSERT_FALSE(AnyLock());
    EXPECT_EQ(1, Told.Count);
    EXPECT_EQ(static_cast<WPARAM>(SIZE_RESTORED), Told.Kind);
    EXPECT_EQ(MAKELPARAM(client.right, client.bottom), Told.Size);
    RECT toPaint = {};
    GetUpdateRect(Windows.View, &toPaint, FALSE);
    const RECT whole = {0, 0, View.ClientWidth, View.ClientHeight};
    EXPECT_TRUE(EqualRect(&whole, &toPaint));
}

TEST_F(LockRegion, EscKeepsTheSelection)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    SendMessageA(Windows.View, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(TextMargin + Columns(5), Rows(6)));
    SendMessageA(Windows.View, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(TextMargin + Columns(9), Rows(8)));
    SendMessageA(Windows.View, WM_LBUTTONUP, 0, MAKELPARAM(TextMargin + Columns(9), Rows(8)));
    ASSERT_TRUE(IsCommandPossible(IDM_EDIT_COPY));
    Key(VK_ESCAPE);
    Toggle();
    EXPECT_EQ(7, View.SelLineA);
    EXPECT_EQ(9, View.SelLineB);
    EXPECT_EQ(5, View.SelColA);
    EXPECT_EQ(9, View.SelColB);
    EXPECT_TRUE(IsCommandPossible(IDM_EDIT_COPY));
}

TEST_F(LockRegion, WhatIsToBePaintedDuringTheChoiceKeepsNobodyBusyAndIsPaintedAfterwards)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    PumpMessages();
    const Picture clean = WindowPicture();
    constexpr UINT FrameOnly = SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED;
    const struct {
        const char* Name;
        std::function<void()> Asked;
    } paintings[] = {
        {"client area", [] { RedrawWindow(Windows.View, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE); }},
        {"internal", [] { RedrawWindow(Windows.View, nullptr, nullptr, RDW_INTERNALPAINT); }},
        {"frame", [] { RedrawWindow(Windows.View, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME); }},
        {"all frames",
         [] {
             RedrawWindow(Windows.Main, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ERASE | RDW_ALLCHILDREN);
         }},
        {"changed frame", [] { SetWindowPos(Windows.Main, nullptr, 0, 0, 0, 0, FrameOnly); }},
        {"changed frame of the view", [] { SetWindowPos(Windows.View, nullptr, 0, 0, 0, 0, FrameOnly); }},
    };
    for (const auto& painting : paintings) {
        SCOPED_TRACE(painting.Name);
        Then([&painting] {
            BlackenWindow();
            painting.Asked();
        });
        {
            const CountedLooks counted;
            RunUnguarded([] { SendMessageA(Windows.Main, WM_COMMAND, IDM_VIEW_LOCK, 0); }, 1);
            EXPECT_EQ(1, Waits);
            EXPECT_GT(50, Looks);
        }
        ExpectLocked(0, 0);
        PumpMessages();
        EXPECT_EQ(0, DifferentPixels(clean, WindowPicture()));
    }
}

TEST_F(LockRegion, TheChoiceEndsWhenAnotherWindowTakesTheMouse)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    ExpectEnds([] { SetCapture(Windows.Status); });
    ExpectEnds([] { ReleaseCapture(); });
}

TEST_F(LockRegion, TheChoiceEndsWithAMessageBox)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    Then([] {
        MessageBoxA(Windows.Main, "Something is the matter", "Kestovar", MB_OK);
        EndWhatGoesOn();
    });
    RunUnguarded([] { SendMessageA(Windows.Main, WM_COMMAND, IDM_VIEW_LOCK, 0); }, 1);
    EXPECT_EQ("Something is the matter", answers.OnlyText());
    ExpectLocked(0, 0);
    ExpectCleanView();
}

TEST_F(LockRegion, TheChoiceEndsWhenTheViewGetsAnotherSize)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    ExpectEnds([] { SetWindowPos(Windows.Main, nullptr, 0, 0, 800, 500, SWP_NOZORDER | SWP_NOACTIVATE); });
    ExpectEnds([] { SetWindowPos(Windows.Main, nullptr, 0, 0, 700, 500, SWP_NOZORDER | SWP_NOACTIVATE); });
}

TEST_F(LockRegion, TheChoiceEndsWhenAnotherDocumentComes)
{
    const ScratchFile file("lock.txt", Table(200));
    const ScratchFile other("other.txt", Table(100));
    Open(file);
    ExpectEnds([&other] { OpenSequence(Windows.Main, other.Path()); });
    EXPECT_EQ(100, Document.LineCount);
    ExpectEnds(CloseDocument);
}

TEST_F(LockRegion, TheChoiceEndsWhenTheModeIsSwitched)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    ExpectEnds([] { SendMessageA(Windows.Main, WM_COMMAND, IDM_VIEW_HEX, 0); });
    EXPECT_TRUE(View.HexMode);
    SendMessageA(Windows.Main, WM_COMMAND, IDM_VIEW_TEXT, 0);
    ExpectEnds([] {
        SendMessageA(Windows.Main, WM_COMMAND, IDM_VIEW_HEX, 0);
        SendMessageA(Windows.Main, WM_COMMAND, IDM_VIEW_TEXT, 0);
    });
    EXPECT_FALSE(View.HexMode);
    Key(VK_RETURN);
    Toggle();
    ExpectLocked(4, 19);
}

TEST_F(LockRegion, TheSameCommandDuringTheChoiceLeavesOneChoiceToMake)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    for (const UINT end : {VK_RETURN, VK_ESCAPE}) {
        Move(Columns(9), Rows(3));
        Then([] { SendMessageA(Windows.Main, WM_COMMAND, IDM_VIEW_LOCK, 0); });
        Move(Columns(7), Rows(2));
        Key(end);
        Toggle();
        EXPECT_FALSE(View.PickingLock);
        EXPECT_EQ(nullptr, GetCapture());
        ExpectCleanView();
        end == VK_RETURN ? ExpectLocked(2, 6) : ExpectLocked(0, 0);
    }
}

TEST_F(LockRegion, AnIconHasNothingToChooseInAndNothingHappens)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    ShowWindow(Windows.Main, SW_MINIMIZE);
    ASSERT_TRUE(IsIconic(Windows.Main));
    {
        const Replaced noted(Windows.Status, NoteString, StatusProc);
        const CountedLooks counted;
        LastString = 0;
        SendMessageA(Windows.Main, WM_COMMAND, IDM_VIEW_LOCK, 0);
        EXPECT_EQ(0, Looks);
        EXPECT_EQ(0, Waits);
        EXPECT_EQ(0u, LastString);
    }
    ExpectLocked(0, 0);
    View.LockRows = 3;
    SendMessageA(Windows.Main, WM_COMMAND, IDM_VIEW_LOCK, 0);
    ExpectLocked(3, 0);
    ShowWindow(Windows.Main, SW_RESTORE);
    PumpMessages();
    EXPECT_TRUE(View.FileShown);
}

TEST_F(LockRegion, InAViewWithoutHeightOrWidthThereIsNothingToLockThatWay)
{
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    const struct {
        int Width;
        int Height;
    } sizes[] = {{0, 0}, {400, 0}, {0, 300}};
    for (const auto& size : sizes) {
        SCOPED_TRACE(testing::Message() << size.Width << ' ' << size.Height);
        MoveWindow(Windows.View, 0, 0, size.Width, size.Height, FALSE);
        ASSERT_EQ(size.Width == 0, View.ClientWidth == 0);
        ASSERT_EQ(size.Height == 0, View.ClientHeight == 0);
        Key(VK_RETURN);
        Run([] { PickLockRegion(Windows.View); });
        ExpectLocked(size.Height == 0 ? 0 : 4, size.Width == 0 ? 0 : 19);
        Move(Columns(3), Rows(2));
        Key(VK_RETURN);
        Run([] { PickLockRegion(Windows.View); });
        ExpectLocked(size.Height == 0 ? 0 : 2, size.Width == 0 ? 0 : 2);
    }
    LayOutFrameAnew();
}

TEST_F(LockRegion, ANewFontSizeMakesTheHeadingsAsHighAsTheirRows)
{
    Choose("Tahoma"); // has every size
    const ScratchFile file("lock.txt", Table(200));
    Open(file);
    Key(VK_RETURN);
    Toggle();
    const std::int32_t before = View.LineHeight;
    for (const int size : {-30, -16}) {
        ViewOptions.FontSize = size;
        CreateScreenFont(false);
        ASSERT_NE(before, View.LineHeight);
        EXPECT_EQ(4, View.LockRows);
        EXPECT_EQ(Rows(4), View.LockedHeight);
        SendMessageA(Windows.View, WM_SCROLL_VIEW, 99, 0);
        UpdateWindow(Windows.View);
        SendMessageA(Windows.View, WM_VSCROLL, SB_LINEDOWN, 0);
        ExpectCleanView();
    }
}

TEST_F(LockRegion, ADocumentWithFewerLinesThanHeadingsStaysWhereItIs)
{
    const ScratchFile file("few.txt", Table(2));
    Open(file);
    const Picture clean = ViewPicture();
    Move(0, Rows(7));
    Key(VK_RETURN);
    Toggle();
    ASSERT_EQ(7, View.LockRows);
    UpdateWindow(Windows.View);
    const Picture locked = ViewPicture();
    EXPECT_LT(0, DifferentPixels(clean, locked));
    EXPECT_EQ(1, ColoursIn(RowPicture(2)));
    EXPECT_EQ(0, DifferentPixels(RowPicture(2), RowPicture(12)));
    for (const UINT key : {VK_DOWN, VK_UP, VK_NEXT, VK_PRIOR, VK_END, VK_HOME}) {
        const BeepCounter beeps;
        View.BeepedAtEnd = false;
        SendMessageA(Windows.Main, WM_KEYDOWN, key, 0);
        EXPECT_EQ(1, beeps.Count()) << key;
        EXPECT_EQ(0, View.TopLine) << key;
        EXPECT_EQ(0, DifferentPixels(locked, ViewPicture())) << key;
    }
}
