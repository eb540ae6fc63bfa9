// What the view does with mouse, scroll bars and timers, and what it has repainted for it.
#include "view/view_window.h"

#include "app/app_state.h"
#include "app/open_sequence.h"
#include "base/text.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/screen_font.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr UINT_PTR AutoScrollTimerId = 1;
constexpr UINT_PTR RightClickTimerId = 2;

std::vector<bool> SelectionChanges;
int FileListsShown;
void (*SelectionChangedBefore)(bool);

void NoteSelectionChange(bool hasSelection)
{
    SelectionChanges.push_back(hasSelection);
    SelectionChangedBefore(hasSelection);
}

bool NoteFileList()
{
    ++FileListsShown;
    return true;
}

std::string Lines(int count, std::size_t length)
{
    std::string content;
    for (int line = 0; line < count; ++line) {
        content += std::string(length, 'x') + "\n";
    }
    return content;
}

class ViewWindow : public RunningProgram {
protected:
    ViewWindow() : HooksBefore(ViewCalls)
    {
        SelectionChangedBefore = ViewCalls.SelectionChanged;
        ViewCalls = {NoteSelectionChange, NoteFileList, nullptr};
        SelectionChanges.clear();
        FileListsShown = 0;
        SetWindowPos(Windows.Main, nullptr, 100, 50, 800, 600, SWP_NOZORDER | SWP_NOACTIVATE);
        Choose("Courier");
    }

    ~ViewWindow() override
    {
        EndSelecting(Windows.View);
        KillTimer(Windows.View, RightClickTimerId);
        ViewCalls = HooksBefore;
    }

    static void Choose(const char* face)
    {
        CopyText(ViewOptions.FontName, face);
        CreateScreenFont(false);
    }

    static void Open(const ScratchFile& file)
    {
        OpenSequence(Windows.Main, file.Path());
        ASSERT_TRUE(View.FileShown);
        SelectionChanges.clear();
        UpdateWindow(Windows.View);
    }

    static LPARAM At(std::int32_t x, std::int32_t y) { return MAKELPARAM(x, y); }

    // The middle of a row at the left edge of a column.
    static LPARAM Cell(int row, int column) { return At(XOf(column), YOf(row)); }

    static std::int32_t XOf(int column) { return TextMargin + (column - View.LeftColumn) * View.CharWidth; }
    static std::int32_t YOf(int row) { return row * View.LineHeight + View.LineHeight / 2; }

    static void Press(LPARAM point) { SendMessageA(Windows.View, WM_LBUTTONDOWN, MK_LBUTTON, point); }
    static void Move(LPARAM point) { SendMessageA(Windows.View, WM_MOUSEMOVE, MK_LBUTTON, point); }
    static void Release(LPARAM point) { SendMessageA(Windows.View, WM_LBUTTONUP, 0, point); }
    static void Command(UINT id) { SendMessageA(Windows.Main, WM_COMMAND, id, 0); }

    static void ScrollSideways(int columns)
    {
        for (int i = 0; i < columns; ++i) {
            SendMessageA(Windows.View, WM_HSCROLL, SB_LINERIGHT, 0);
        }
        ASSERT_EQ(columns, View.LeftColumn);
    }

    static void ExpectNothingSelected()
    {
        EXPECT_EQ(0, View.SelLineA);
        EXPECT_EQ(0, View.SelLineB);
        ASSERT_FALSE(SelectionChanges.empty());
        EXPECT_EQ(std::vector<bool>(SelectionChanges.size(), false), SelectionChanges);
        EXPECT_FALSE(View.Selecting);
        EXPECT_NE(Windows.View, GetCapture());
    }

    // Dispatches messages until the right-click timer's has come; false when it does not.
    static bool PumpRightClickTimer()
    {
        const DWORD start = GetTickCount();
        const DWORD limit = GetDoubleClickTime() + 10000;
        for (;;) {
            MSG message;
            while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
                DispatchMessageA(&message);
                if (message.hwnd == Windows.View && message.message == WM_TIMER &&
                    message.wParam == RightClickTimerId) {
                    return true;
                }
            }
            const DWORD waited = GetTickCount() - start;
            if (waited >= limit) {
                return false;
            }
            MsgWaitForMultipleObjects(0, nullptr, FALSE, limit - waited, QS_ALLINPUT);
        }
    }

    static bool HasTimer(UINT_PTR id) { return KillTimer(Windows.View, id) != FALSE; }

    // No drag is under way, and the pointer that goes on and lets go selects nothing.
    static void ExpectNoDrag()
    {
        EXPECT_FALSE(View.Selecting);
        EXPECT_FALSE(View.AutoScrollTimer);
        EXPECT_FALSE(HasTimer(AutoScrollTimerId));
        EXPECT_NE(Windows.View, GetCapture());
        Move(Cell(5, 8));
        Release(Cell(5, 8));
        EXPECT_EQ(0, View.SelLineA);
        EXPECT_EQ(0, View.SelLineB);
    }

private:
    ViewHooks HooksBefore;
};

// A drag with line 6, row 5, pressed at column 10.
class ExtendedSelection : public ViewWindow {
protected:
    ExtendedSelection() : File("extended.txt", Lines(100, 60))
    {
        Open(File);
        Press(Cell(5, 10));
    }

    // What the view repaints for a move.
    static RECT RepaintedFor(LPARAM point)
    {
        ValidateRect(Windows.View, nullptr);
        Move(point);
        RECT area = {};
        GetUpdateRect(Windows.View, &area, FALSE);
        return area;
    }

    static RECT Rows(int first, int last)
    {
        return {0, first * View.LineHeight, View.ClientWidth, (last + 1) * View.LineHeight};
    }

    static void ExpectArea(const RECT& expected, const RECT& area)
    {
        EXPECT_EQ(expected.left, area.left);
        EXPECT_EQ(expected.top, area.top);
        EXPECT_EQ(expected.right, area.right);
        EXPECT_EQ(expected.bottom, area.bottom);
    }

    ScratchFile File;
};

class ThumbDrag : public ViewWindow {
protected:
    // A document with that MaxTop.
    static std::string Content(std::int32_t maxTop)
    {
        const ScratchFile probe("probe.txt", Lines(200, 5));
        OpenSequence(Windows.Main, probe.Path());
        return Lines(maxTop + RowsOnScreen(), 5);
    }

    static HWND PopUp() { return FindWindowExA(Windows.View, nullptr, "KstvSb", nullptr); }

    static void Drag(int code, int position) { SendMessageA(Windows.View, WM_VSCROLL, MAKEWPARAM(code, position), 0); }
};

class RulerWindow : public ViewWindow {
protected:
    RulerWindow() { ViewOptions.Ruler = 1; }

    ~RulerWindow() override
    {
        ViewOptions.Ruler = 0;
        LayOutFrameAnew();
    }

    static bool IsToBeRepainted() { return GetUpdateRect(Windows.Ruler, nullptr, FALSE) != FALSE; }
};

class ScrollBars : public ViewWindow {
protected:
    static void ExpectRanges()
    {
        int low = -1;
        int high = -1;
        GetScrollRange(Windows.View, SB_HORZ, &low, &high);
        EXPECT_EQ(0, low);
        EXPECT_EQ(View.MaxLeft, high);
        GetScrollRange(Windows.View, SB_VERT, &low, &high);
        EXPECT_EQ(0, low);
        EXPECT_EQ(View.MaxTop, high);
        RECT client;
        GetClientRect(Windows.View, &client);
        EXPECT_EQ(client.right, View.ClientWidth);
        EXPECT_EQ(client.bottom, View.ClientHeight);
    }
};

} // namespace

TEST_F(ViewWindow, AClickWithoutAMoveSelectsNothing)
{
    const ScratchFile file("clicked.txt", Lines(50, 40));
    Open(file);
    Press(Cell(3, 5));
    EXPECT_TRUE(View.Selecting);
    Release(Cell(3, 5));
    ExpectNothingSelected();
}

TEST_F(ViewWindow, AClickWithAMoveToTheSamePointSelectsNothing)
{
    const ScratchFile file("clicked.txt", Lines(50, 40));
    Open(file);
    Press(Cell(3, 5));
    Move(Cell(3, 5));
    Release(Cell(3, 5));
    ExpectNothingSelected();
}

TEST_F(ViewWindow, ADragBackToItsStartColumnSelectsNothing)
{
    const ScratchFile file("dragged.txt", Lines(50, 40));
    Open(file);
    Press(Cell(3, 5));
    Move(Cell(4, 12));
    Move(Cell(3, 12));
    ASSERT_EQ(12, View.SelColB);
    Move(Cell(3, 5));
    Release(Cell(3, 5));
    ExpectNothingSelected();
}

TEST_F(ViewWindow, AClickTakesAwayWhatWasSelected)
{
    const ScratchFile file("clicked.txt", Lines(50, 40));
    Open(file);
    Command(IDM_EDIT_SELECT_ALL);
    ASSERT_EQ(50, View.SelLineB);
    SelectionChanges.clear();
    Press(Cell(3, 5));
    EXPECT_EQ(0, View.SelLineB);
    Release(Cell(3, 5));
    ExpectNothingSelected();
}

TEST_F(ViewWindow, ADragSelectsFromItsPressToItsRelease)
{
    const ScratchFile file("dragged.txt", Lines(50, 40));
    Open(file);
    Press(Cell(3, 5));
    Move(Cell(6, 12));
    Release(Cell(6, 12));
    EXPECT_EQ(std::vector<bool>{true}, SelectionChanges);
    EXPECT_FALSE(View.Selecting);
    EXPECT_NE(Windows.View, GetCapture());
    EXPECT_EQ(4, View.SelLineA);
    EXPECT_EQ(7, View.SelLineB);
    EXPECT_EQ(4, View.SelAnchorLine);
    EXPECT_EQ(5, View.SelColA);
    EXPECT_EQ(12, View.SelColB);
}

TEST_F(ViewWindow, OneColumnOfOneLineIsASelection)
{
    const ScratchFile file("dragged.txt", Lines(50, 40));
    Open(file);
    Press(Cell(3, 5));
    Move(Cell(3, 6));
    Release(Cell(3, 6));
    EXPECT_EQ(std::vector<bool>{true}, SelectionChanges);
    EXPECT_EQ(4, View.SelLineA);
    EXPECT_EQ(4, View.SelLineB);
}

TEST_F(ViewWindow, APressBelowTheLastLineStartsOnIt)
{
    const ScratchFile file("short.txt", Lines(3, 40));
    Open(file);
    Press(Cell(10, 5));
    EXPECT_TRUE(View.Selecting);
    EXPECT_EQ(3, View.SelAnchorLine);
    EXPECT_EQ(5, View.SelColA);
}

TEST_F(ViewWindow, LosingTheCaptureEndsADragAndKeepsWhatIsSelected)
{
    const ScratchFile file("dragged.txt", Lines(200, 40));
    Open(file);
    Press(Cell(3, 5));
    Move(At(XOf(12), View.ClientHeight + 20));
    ASSERT_TRUE(View.AutoScrollTimer);
    const std::int32_t end = View.SelLineB;
    ASSERT_LT(4, end);
    SetCapture(Windows.Main);
    ReleaseCapture();
    EXPECT_FALSE(View.Selecting);
    EXPECT_FALSE(View.AutoScrollTimer);
    EXPECT_FALSE(HasTimer(AutoScrollTimerId));
    EXPECT_EQ(std::vector<bool>{true}, SelectionChanges);
    EXPECT_EQ(4, View.SelLineA);
    EXPECT_EQ(end, View.SelLineB);
    Move(Cell(8, 2));
    EXPECT_EQ(end, View.SelLineB) << "the drag went on";
}

TEST_F(ViewWindow, ClosingTheDocumentEndsADrag)
{
    const ScratchFile file("dragged.txt", Lines(200, 40));
    Open(file);
    Press(Cell(3, 5));
    Move(At(XOf(12), View.ClientHeight + 20));
    ASSERT_TRUE(View.AutoScrollTimer);
    Command(IDM_INTERNAL_CLOSE);
    EXPECT_FALSE(View.FileShown);
    ExpectNoDrag();
}

TEST_F(ViewWindow, SwitchingTheModeEndsADrag)
{
    const ScratchFile file("dragged.txt", Lines(200, 40));
    Open(file);
    for (const UINT mode : {IDM_VIEW_HEX, IDM_VIEW_TEXT}) {
        Press(Cell(3, 5));
        Move(At(XOf(12), View.ClientHeight + 20));
        ASSERT_TRUE(View.AutoScrollTimer);
        Command(mode);
        ExpectNoDrag();
    }
}

TEST_F(ViewWindow, ADragPastTheLeftEdgeScrollsOneColumnAStep)
{
    const ScratchFile file("wide.txt", Lines(200, 300));
    Open(file);
    ScrollSideways(3);
    Press(Cell(3, 20));
    Move(At(-5, YOf(3)));
    EXPECT_EQ(2, View.LeftColumn);
    EXPECT_TRUE(View.AutoScrollTimer);
    EXPECT_EQ(4, View.SelLineB);
    Move(At(-5, YOf(3)));
    EXPECT_EQ(1, View.LeftColumn);
    Move(At(-300, YOf(3)));
    EXPECT_EQ(0, View.LeftColumn) << "the distance makes no difference";
    EXPECT_TRUE(View.AutoScrollTimer);
    Move(At(-5, YOf(3)));
    EXPECT_EQ(0, View.LeftColumn);
    EXPECT_FALSE(View.AutoScrollTimer) << "there is nothing further left";
    EXPECT_FALSE(HasTimer(AutoScrollTimerId));
    EXPECT_EQ(0, View.SelColB);
    EXPECT_EQ(4, View.SelLineB);
    EXPECT_EQ(0, View.TopLine);
}

// The first move differs from the press, not from a column 0 that no move has reached yet.
TEST_F(ExtendedSelection, AFirstMoveToColumn0OfThePressedLineRepaintsIt)
{
    const RECT area = RepaintedFor(At(0, YOf(5)));
    EXPECT_EQ(0, View.SelColB);
    ExpectArea(Rows(5, 5), area);
}

TEST_F(ExtendedSelection, GrowingByALineRepaintsThatLineAndTheOneBefore)
{
    ExpectArea(Rows(5, 6), RepaintedFor(Cell(6, 10)));
    ExpectArea(Rows(6, 7), RepaintedFor(Cell(7, 10)));
    ExpectArea(Rows(7, 10), RepaintedFor(Cell(10, 10)));
}

TEST_F(ExtendedSelection, GrowingUpwardsRepaintsOnlyTheLinesItReaches)
{
    ExpectArea(Rows(4, 5), RepaintedFor(Cell(4, 10)));
    ExpectArea(Rows(2, 4), RepaintedFor(Cell(2, 10)));
}

TEST_F(ExtendedSelection, ShrinkingRepaintsTheLinesLeftAndTheNewEnd)
{
    Move(Cell(10, 10));
    ExpectArea(Rows(8, 10), RepaintedFor(Cell(8, 10)));
    ExpectArea(Rows(5, 8), RepaintedFor(Cell(5, 12)));
}

TEST_F(ExtendedSelection, CrossingTheAnchorRepaintsBothSides)
{
    Move(Cell(7, 10));
    ExpectArea(Rows(2, 7), RepaintedFor(Cell(2, 10)));
    ExpectArea(Rows(2, 8), RepaintedFor(Cell(8, 10)));
}

TEST_F(ExtendedSelection, OnOneAndTheSameLineANarrowBandIsRepainted)
{
    Move(Cell(5, 20));
    RECT expected = Rows(5, 5);
    expected.left = XOf(20) - View.MaxCharWidth;
    expected.right = XOf(24) + View.MaxCharWidth;
    ExpectArea(expected, RepaintedFor(Cell(5, 24)));
    expected.left = XOf(22) - View.MaxCharWidth;
    ExpectArea(expected, RepaintedFor(Cell(5, 22)));
}

TEST_F(ExtendedSelection, NothingIsRepaintedWhileNothingChanges)
{
    ValidateRect(Windows.View, nullptr);
    Move(Cell(5, 10));
    EXPECT_FALSE(GetUpdateRect(Windows.View, nullptr, FALSE)) << "at the point of the press";
    for (const int row : {5, 9, 2}) {
        Move(Cell(row, 20));
        ValidateRect(Windows.View, nullptr);
        Move(Cell(row, 20));
        EXPECT_FALSE(GetUpdateRect(Windows.View, nullptr, FALSE)) << "row " << row;
        Move(At(XOf(20) + 1, YOf(row) + 1));
        EXPECT_FALSE(GetUpdateRect(Windows.View, nullptr, FALSE)) << "within the cell, row " << row;
    }
}

TEST_F(ThumbDrag, ScrollsLiveInADocumentOf5000PositionsWithoutAPopUp)
{
    const ScratchFile file("thumb.txt", Content(5000));
    Open(file);
    ASSERT_EQ(5000, View.MaxTop);
    Drag(SB_THUMBTRACK, 100);
    EXPECT_EQ(100, View.TopLine);
    EXPECT_EQ(nullptr, PopUp());
    Drag(SB_THUMBPOSITION, 120);
    EXPECT_EQ(120, View.TopLine);
}

TEST_F(ThumbDrag, ShowsAPopUpInADocumentOf5001AndScrollsWhenReleased)
{
    const ScratchFile file("thumb.txt", Content(5001));
    Open(file);
    ASSERT_EQ(5001, View.MaxTop);
    Drag(SB_THUMBTRACK, 100);
    EXPECT_EQ(0, View.TopLine);
    const HWND popUp = PopUp();
    ASSERT_NE(nullptr, popUp);
    EXPECT_TRUE(IsWindowVisible(popUp));
    Drag(SB_THUMBTRACK, 200);
    EXPECT_EQ(popUp, PopUp()) << "one for the whole drag";
    EXPECT_EQ(0, View.TopLine);
    Drag(SB_THUMBPOSITION, 200);
    EXPECT_EQ(200, View.TopLine);
    EXPECT_EQ(nullptr, PopUp());
    EXPECT_FALSE(IsWindow(popUp));
}

TEST_F(RulerWindow, FollowsAHorizontalScrollInAFixedFont)
{
    Choose("Courier");
    const ScratchFile file("wide.txt", Lines(200, 300));
    Open(file);
    ASSERT_TRUE(View.FontIsFixed);
    UpdateWindow(Windows.Ruler);
    ASSERT_FALSE(IsToBeRepainted());
    ScrollSideways(1);
    EXPECT_TRUE(IsToBeRepainted());
}

TEST_F(RulerWindow, OfInchesStaysWhereItIs)
{
    Choose("Tahoma");
    const ScratchFile file("wide.txt", Lines(200, 300));
    Open(file);
    ASSERT_FALSE(View.FontIsFixed);
    UpdateWindow(Windows.Ruler);
    ASSERT_FALSE(IsToBeRepainted());
    ScrollSideways(1);
    EXPECT_FALSE(IsToBeRepainted());
}

TEST_F(RulerWindow, StartsAnewWithAnotherFile)
{
    Choose("Courier");
    const ScratchFile file("wide.txt", Lines(200, 300));
    const ScratchFile other("other.txt", Lines(200, 300));
    Open(file);
    ScrollSideways(4);
    UpdateWindow(Windows.Ruler);
    ASSERT_FALSE(IsToBeRepainted());
    OpenSequence(Windows.Main, other.Path());
    EXPECT_EQ(0, View.LeftColumn);
    EXPECT_TRUE(IsToBeRepainted());
}

TEST_F(ViewWindow, ASingleRightClickShowsTheFileListOnceAfterTheDoubleClickTime)
{
    const DWORD pressed = GetTickCount();
    SendMessageA(Windows.View, WM_RBUTTONDOWN, MK_RBUTTON, At(20, 20));
    SendMessageA(Windows.View, WM_RBUTTONUP, 0, At(20, 20));
    PumpMessages();
    if (GetTickCount() - pressed < GetDoubleClickTime() / 2) { // not on a machine that stalls
        EXPECT_EQ(0, FileListsShown);
    }
    ASSERT_TRUE(PumpRightClickTimer());
    EXPECT_GE(GetTickCount() - pressed + 20, GetDoubleClickTime()); // the clock's own step
    EXPECT_EQ(1, FileListsShown);
    EXPECT_FALSE(HasTimer(RightClickTimerId)) << "it would be shown again";
}

TEST_F(ViewWindow, ARightDoubleClickShowsNoFileList)
{
    SendMessageA(Windows.View, WM_RBUTTONDOWN, MK_RBUTTON, At(20, 20));
    SendMessageA(Windows.View, WM_RBUTTONUP, 0, At(20, 20));
    SendMessageA(Windows.View, WM_RBUTTONDBLCLK, MK_RBUTTON, At(20, 20));
    SendMessageA(Windows.View, WM_RBUTTONUP, 0, At(20, 20));
    ASSERT_TRUE(PumpRightClickTimer());
    EXPECT_EQ(0, FileListsShown);
    EXPECT_FALSE(HasTimer(RightClickTimerId));
    // The next single one shows it again.
    SendMessageA(Windows.View, WM_RBUTTONDOWN, MK_RBUTTON, At(20, 20));
    ASSERT_TRUE(PumpRightClickTimer());
    EXPECT_EQ(1, FileListsShown);
}

TEST_F(ViewWindow, ARightPressDuringADragDoesNothing)
{
    const ScratchFile file("dragged.txt", Lines(50, 40));
    Open(file);
    Press(Cell(3, 5));
    SendMessageA(Windows.View, WM_RBUTTONDOWN, MK_LBUTTON | MK_RBUTTON, Cell(3, 5));
    EXPECT_FALSE(HasTimer(RightClickTimerId));
    EXPECT_TRUE(View.Selecting);
}

TEST_F(ScrollBars, HaveTheRangesOfTheOpenFileWhateverWasOpenBefore)
{
    const ScratchFile files[] = {
        {"short.txt", Lines(2, 10)},
        {"long.txt", Lines(300, 10)},
        {"wide.txt", Lines(2, 300)},
        {"longwide.txt", Lines(300, 300)},
    };
    for (const ScratchFile& before : files) {
        for (const ScratchFile& file : files) {
            SCOPED_TRACE(before.Path());
            SCOPED_TRACE(file.Path());
            Open(before);
            ExpectRanges();
            Open(file);
            ExpectRanges();
        }
    }
    EXPECT_LT(0, View.MaxLeft);
    EXPECT_LT(0, View.MaxTop);
}

// A width at which the text fits the view exactly without the vertical bar.
TEST_F(ScrollBars, HaveTheirRangesWhenTheOneMakesTheOtherNecessary)
{
    const ScratchFile probe("probe.txt", Lines(2, 10));
    Open(probe);
    const std::size_t width = static_cast<std::size_t>(View.ClientWidth / View.MaxCharWidth);
    for (std::size_t length = width - 6; length <= width + 2; ++length) {
        SCOPED_TRACE(length);
        const ScratchFile few("few.txt", Lines(2, length));
        const ScratchFile many("many.txt", Lines(300, length));
        Open(few);
        ExpectRanges();
        Open(many);
        ExpectRanges();
        Open(few);
        ExpectRanges();
    }
}

TEST_F(ViewWindow, HeadingsOfTheCommandLineAreTakenAsGivenInAProportionalFontToo)
{
    const ScratchFile file("lock.txt", Lines(300, 300));
    const ScratchFile other("other.txt", Lines(300, 300));
    for (const char* const face : {"Tahoma", "Courier"}) {
        Choose(face);
        App.Start.Lock = {3, 20, 5, 2};
        Open(file);
        EXPECT_EQ(3, View.LockColStart);
        EXPECT_EQ(20, View.LockTopLine);
        EXPECT_EQ(5, View.LockCols);
        EXPECT_EQ(2, View.LockRows);
        EXPECT_EQ(2 * View.LineHeight, View.LockedHeight);
        EXPECT_EQ(20, View.TopLine);
        EXPECT_EQ(3, View.LeftColumn);
        Open(other);
        EXPECT_FALSE(AnyLock()) << "they are the first file's";
    }
}
