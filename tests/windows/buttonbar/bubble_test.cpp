// The bubble below the bar: where it comes, what it shows, and that it leaves the screen as it was.
#include "buttonbar/bubble.h"

#include "app/open_sequence.h"
#include "base/text.h"
#include "buttonbar/button_order.h"
#include "harness/picture.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "harness/system_calls.h"
#include "view/frame_windows.h"
#include "view/gdi_holders.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

// By button number.
constexpr const char* Names[ButtonTotal] = {
    "Open file",
    "View previous file",
    "View next file",
    "Print file",
    "Show file info",
    "Copy to Clipboard",
    "Find",
    "Repeat find",
    "Select text view",
    "Select hex view",
    "View Zip contents",
    "Select font",
    "Select colours",
    "Help contents",
    "Launch file",
    "View previous Zip",
    "Close & Iconize",
    "Exit Kestovar!",
    "Goto",
    "Edit file",
    "Delete file",
    "Lock/Unlock text",
    "Increase font size",
    "Decrease font size",
};

struct DrawnText {
    int X;
    int Y;
    std::string Text;
    int BackgroundMode;
    LOGFONTA Font;
};

std::vector<DrawnText> Texts;

BOOL WINAPI NoteText(HDC dc, int x, int y, LPCSTR text, int length)
{
    LOGFONTA font = {};
    GetObjectA(GetCurrentObject(dc, OBJ_FONT), sizeof font, &font);
    Texts.push_back({x, y, std::string(text, static_cast<std::size_t>(length)), GetBkMode(dc), font});
    return TRUE;
}

HWND BubbleWindow()
{
    return FindWindowA("KstvBb", nullptr);
}

struct Copy {
    RECT To;
    int FromX;
    int FromY;
    bool BubbleIsVisible;
};

std::vector<Copy> Copies;

// Notes what is copied where, in place of copying.
BOOL WINAPI NoteCopy(HDC, int x, int y, int width, int height, HDC, int fromX, int fromY, DWORD)
{
    const HWND bubble = BubbleWindow();
    Copies.push_back({{x, y, x + width, y + height}, fromX, fromY, bubble != nullptr && IsWindowVisible(bubble)});
    return TRUE;
}

RECT BubbleArea()
{
    RECT area = {};
    GetWindowRect(BubbleWindow(), &area);
    return area;
}

RECT BarArea()
{
    RECT area = {};
    GetWindowRect(Windows.Buttons, &area);
    return area;
}

BOOL CALLBACK CountWindow(HWND, LPARAM count)
{
    ++*reinterpret_cast<int*>(count);
    return TRUE;
}

int CountWindows()
{
    int count = 0;
    EnumChildWindows(GetDesktopWindow(), CountWindow, reinterpret_cast<LPARAM>(&count));
    return count;
}

class ShownBubble : public RunningProgram {
protected:
    ShownBubble() : BarBefore(ButtonBar)
    {
        ButtonBar.ButtonCount = ButtonTotal;
        for (int slot = 0; slot < ButtonTotal; ++slot) {
            ButtonBar.ButtonOrder[slot] = static_cast<std::int16_t>(slot);
        }
        SetWindowPos(Windows.Main, HWND_TOP, 40, 40, 920, 400, SWP_NOACTIVATE);
        SetCursorPos(5, 5); // off the bar
        LOGFONTA font = {};
        font.lfHeight = MulDiv(-10, Drawing.LogPixelsY, 72);
        font.lfWeight = FW_NORMAL;
        font.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
        CopyText(font.lfFaceName, "MS Sans Serif");
        TextFont = CreateFontIndirectA(&font);
    }

    ~ShownBubble() override
    {
        HideBubble(true);
        DeleteObject(TextFont);
        ButtonBar = BarBefore;
        SetWindowPos(Windows.Main, nullptr, 40, 40, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        InvalidateRect(Windows.Buttons, nullptr, TRUE);
    }

    static void Show(int slot) { ShowBubble(Windows.Buttons, slot); }

    SIZE SizeFor(int button) const
    {
        WindowDc dc(Windows.Status);
        SelectedObject font(dc, TextFont);
        SIZE size = {};
        const std::string name = Names[button];
        GetTextExtentPoint32A(dc, name.c_str(), static_cast<int>(name.size()), &size);
        return {size.cx + 14, size.cy + 9};
    }

    static void ExpectArea(int left, int top, SIZE size)
    {
        const RECT area = BubbleArea();
        EXPECT_EQ(left, area.left);
        EXPECT_EQ(top, area.top);
        EXPECT_EQ(size.cx, area.right - area.left);
        EXPECT_EQ(size.cy, area.bottom - area.top);
    }

    // Moves the frame so that its bar lies there on the screen.
    static void PutBar(int left, int bottom)
    {
        const RECT bar = BarArea();
        RECT frame;
        GetWindowRect(Windows.Main, &frame);
        SetWindowPos(Windows.Main, nullptr, frame.left + left - bar.left, frame.top + bottom - bar.bottom, 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        ASSERT_EQ(left, BarArea().left);
        ASSERT_EQ(bottom, BarArea().bottom);
    }

    static void DrawShape(HDC dc, int width, int height)
    {
        const HPEN greyPen = CreatePen(PS_SOLID, 1, 0x808080);
        const HBRUSH grey = CreateSolidBrush(0x808080);
        const HBRUSH yellow = CreateSolidBrush(0x80FFFF);
        {
            SelectedObject pen(dc, greyPen);
            SelectedObject brush(dc, grey);
            RoundRect(dc, 2, 2, width, height, 16, 16);
        }
        {
            SelectedObject pen(dc, GetStockObject(BLACK_PEN));
            SelectedObject brush(dc, yellow);
            RoundRect(dc, 0, 0, width - 2, height - 2, 16, 16);
        }
        DeleteObject(greyPen);
        DeleteObject(grey);
        DeleteObject(yellow);
    }

    static void FillAll(HDC dc, int width, int height, COLORREF colour)
    {
        const RECT all = {0, 0, width, height};
        const HBRUSH brush = CreateSolidBrush(colour);
        FillRect(dc, &all, brush);
        DeleteObject(brush);
    }

    // The bubble with a text, which may be empty, over what was there before.
    Picture BubbleOver(const Picture& beneath, const std::string& text) const
    {
        constexpr COLORREF Around = RGB(255, 0, 0);
        Picture picture = Drawn(beneath.Width, beneath.Height, [&](HDC dc) {
            FillAll(dc, beneath.Width, beneath.Height, Around);
            DrawShape(dc, beneath.Width, beneath.Height);
            SelectedObject font(dc, TextFont);
            SetBkMode(dc, TRANSPARENT);
            TextOutA(dc, 7, 4, text.c_str(), static_cast<int>(text.size()));
        });
        for (std::size_t i = 0; i < picture.Pixels.size(); ++i) {
            if (picture.Pixels[i] == 0xFF0000) {
                picture.Pixels[i] = beneath.Pixels[i];
            }
        }
        return picture;
    }

    // What is on the screen where the bubble of a slot will be.
    Picture Beneath(int slot) const
    {
        const SIZE size = SizeFor(slot);
        const int left = BarArea().left + slot * 35 + 17;
        const int top = BarArea().bottom + 1;
        return PictureOf(nullptr, {left, top, left + size.cx, top + size.cy});
    }

    // The view with text in it, for there to be something beneath the bubble.
    static void FillView(const ScratchFile& file)
    {
        OpenSequence(Windows.Main, file.Path());
        PumpMessages();
        RedrawWindow(Windows.Main, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
        PumpMessages();
    }

    static std::string ManyLines()
    {
        std::string content;
        for (int line = 0; line < 50; ++line) {
            content += "The quick brown fox jumps over the lazy dog, and then it does it all over again. " +
                       std::to_string(line) + "\n";
        }
        return content;
    }

    // The screen around where bubbles come.
    static RECT Surroundings()
    {
        const RECT bar = BarArea();
        return {bar.left, bar.top, bar.right, bar.bottom + 60};
    }

    static Picture Screen() { return PictureOf(nullptr, Surroundings()); }

    ButtonBarState BarBefore;
    HFONT TextFont;
};

} // namespace

TEST_F(ShownBubble, NamesEachButtonBelowItsMiddle)
{
    const RECT bar = BarArea();
    for (int slot = 0; slot < ButtonTotal; ++slot) {
        SCOPED_TRACE(Names[slot]);
        Texts.clear();
        {
            const ReplacedCall call("TextOutA", reinterpret_cast<void*>(NoteText));
            Show(slot);
        }
        EXPECT_TRUE(IsBubbleShown());
        ASSERT_NE(nullptr, BubbleWindow());
        EXPECT_TRUE(IsWindowVisible(BubbleWindow()));
        ExpectArea(bar.left + slot * 35 + 17, bar.bottom + 1, SizeFor(slot));
        ASSERT_EQ(1u, Texts.size());
        EXPECT_EQ(Names[slot], Texts[0].Text);
        EXPECT_EQ(7, Texts[0].X);
        EXPECT_EQ(4, Texts[0].Y);
        EXPECT_EQ(TRANSPARENT, Texts[0].BackgroundMode);
        EXPECT_STREQ("MS Sans Serif", Texts[0].Font.lfFaceName);
        EXPECT_EQ(MulDiv(-10, Drawing.LogPixelsY, 72), Texts[0].Font.lfHeight);
    }
}

TEST_F(ShownBubble, NamesTheButtonInItsSlot)
{
    ButtonBar.ButtonOrder[2] = 13;
    Show(2);
    ExpectArea(BarArea().left + 87, BarArea().bottom + 1, SizeFor(13));
}

TEST_F(ShownBubble, IsMovedLeftWhereTheScreenEnds)
{
    const int screen = GetSystemMetrics(SM_CXSCREEN);
    const SIZE size = SizeFor(1);
    const int bottom = BarArea().bottom;
    PutBar(screen - size.cx - 35 - 17, bottom);
    Show(1);
    ExpectArea(screen - size.cx, bottom + 1, size); // it just fits
    PutBar(screen - size.cx - 35 - 16, bottom);
    Show(1);
    ExpectArea(screen - size.cx, bottom + 1, size);
    PutBar(screen - 60, bottom);
    Show(20);
    ExpectArea(screen - SizeFor(20).cx, bottom + 1, SizeFor(20));
}

TEST_F(ShownBubble, StartsWhereTheScreenStartsAtTheEarliest)
{
    const int bottom = BarArea().bottom;
    PutBar(-200, bottom);
    Show(0);
    ExpectArea(0, bottom + 1, SizeFor(0));
    Show(7);
    ExpectArea(-200 + 7 * 35 + 17, bottom + 1, SizeFor(7));
}

TEST_F(ShownBubble, IsAboveTheBarWhereTheScreenEndsBelow)
{
    const int screen = GetSystemMetrics(SM_CYSCREEN);
    const SIZE size = SizeFor(2);
    const int left = BarArea().left;
    PutBar(left, screen - size.cy - 1);
    Show(2);
    ExpectArea(left + 87, screen - size.cy, size); // it just fits
    PutBar(left, screen - size.cy);
    Show(2);
    ExpectArea(left + 87, BarArea().top - size.cy, size);
}

TEST_F(ShownBubble, IsAChildOfTheDesktopAboveAllOthersAndTakesNoFocus)
{
    SetForegroundWindow(Windows.Main);
    SetActiveWindow(Windows.Main);
    SetFocus(Windows.View);
    const HWND foreground = GetForegroundWindow();
    Show(3);
    const HWND bubble = BubbleWindow();
    EXPECT_EQ(Windows.Main, GetActiveWindow());
    EXPECT_EQ(Windows.View, GetFocus());
    EXPECT_EQ(foreground, GetForegroundWindow());
    EXPECT_EQ(GetDesktopWindow(), GetAncestor(bubble, GA_PARENT));
    EXPECT_NE(0, GetWindowLongA(bubble, GWL_STYLE) & WS_CHILD);
    EXPECT_NE(0, GetWindowLongA(bubble, GWL_EXSTYLE) & WS_EX_TOPMOST);
    EXPECT_EQ(5, GetWindowLongA(bubble, GWL_ID));
}

TEST_F(ShownBubble, HasAYellowBodyWithABlackBorderAndAShadow)
{
    const ScratchFile file("beneath.txt", ManyLines());
    FillView(file);
    const Picture beneath = Beneath(5);
    Show(5);
    const int width = beneath.Width;
    const int height = beneath.Height;
    const Picture erased = Drawn(width, height, [&](HDC dc) {
        FillAll(dc, width, height, RGB(255, 0, 255));
        EXPECT_EQ(1, SendMessageA(BubbleWindow(), WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0));
    });
    EXPECT_EQ(0, DifferentPixels(BubbleOver(beneath, ""), erased));
    const auto pixel = [&](int x, int y) { return erased.Pixels[static_cast<std::size_t>(y * width + x)]; };
    EXPECT_EQ(0xFFFF80u, pixel(width / 2, height / 2));
    EXPECT_EQ(0u, pixel(width / 2, 0));
    EXPECT_EQ(0u, pixel(0, height / 2));
    EXPECT_EQ(0u, pixel(width / 2, height - 3));
    EXPECT_EQ(0u, pixel(width - 3, height / 2));
    EXPECT_EQ(0x808080u, pixel(width / 2, height - 1));
    EXPECT_EQ(0x808080u, pixel(width - 1, height / 2));
}

TEST_F(ShownBubble, ShowsItsTextOnItsBodyAndAroundItWhatWasThere)
{
    const ScratchFile file("beneath.txt", ManyLines());
    FillView(file);
    for (const int slot : {0, 7, 21}) {
        const Picture beneath = Beneath(slot);
        Show(slot);
        PumpMessages(); // now the screen has it
        const Picture expected = BubbleOver(beneath, Names[slot]);
        EXPECT_NE(0, DifferentPixels(expected, BubbleOver(beneath, "")));
        EXPECT_EQ(0, DifferentPixels(expected, PictureOf(nullptr, BubbleArea()))) << Names[slot];
        HideBubble(true);
    }
}

TEST_F(ShownBubble, IsOnTheScreenAndLeavesItAsItWas)
{
    const ScratchFile file("beneath.txt", ManyLines());
    FillView(file);
    const Picture before = Screen();
    EXPECT_LT(2, ColoursIn(before));
    for (const int slot : {0, 5, 23}) {
        Show(slot);
        PumpMessages(); // now the screen has it
        const RECT area = BubbleArea();
        const Picture bubble = PictureOf(nullptr, area);
        const std::size_t belowTheTop = static_cast<std::size_t>(bubble.Width + bubble.Width / 2);
        EXPECT_EQ(0xFFFF80u, bubble.Pixels[belowTheTop]) << slot;
        const int changed = DifferentPixels(before, Screen());
        EXPECT_LT(500, changed);
        EXPECT_LE(changed, bubble.Width * bubble.Height);
        HideBubble(true);
        EXPECT_EQ(0, DifferentPixels(before, Screen())) << slot;
    }
}

TEST_F(ShownBubble, TakesThePlaceOfTheOneBefore)
{
    const ScratchFile file("beneath.txt", ManyLines());
    FillView(file);
    const Picture before = Screen();
    Show(2);
    const HWND first = BubbleWindow();
    Show(3); // overlaps where the first one was
    EXPECT_FALSE(IsWindow(first));
    EXPECT_EQ(nullptr, FindWindowExA(nullptr, BubbleWindow(), "KstvBb", nullptr));
    Show(15);
    HideBubble(true);
    EXPECT_EQ(nullptr, BubbleWindow());
    EXPECT_EQ(0, DifferentPixels(before, Screen()));
}

TEST_F(ShownBubble, TheScreenIsPutBackOnceWhereTheBubbleWas)
{
    Show(4);
    const RECT area = BubbleArea();
    Copies.clear();
    const ReplacedCall call("BitBlt", reinterpret_cast<void*>(NoteCopy));
    HideBubble(true);
    ASSERT_EQ(1u, Copies.size());
    EXPECT_TRUE(EqualRect(&area, &Copies[0].To));
    HideBubble(true);
    EXPECT_EQ(1u, Copies.size()) << "there is no bubble any more";
}

TEST_F(ShownBubble, TheScreenIsPutBackBeforeTheNextBubbleComes)
{
    Show(4);
    const RECT area = BubbleArea();
    Copies.clear();
    {
        const ReplacedCall call("BitBlt", reinterpret_cast<void*>(NoteCopy));
        Show(5);
    }
    HideBubble(false);
    ASSERT_LE(2u, Copies.size());
    EXPECT_TRUE(EqualRect(&area, &Copies[0].To));
    EXPECT_FALSE(Copies[0].BubbleIsVisible);
}

TEST_F(ShownBubble, TheScreenIsPutBackOnRequestOnly)
{
    Show(4);
    Copies.clear();
    const ReplacedCall call("BitBlt", reinterpret_cast<void*>(NoteCopy));
    HideBubble(false);
    EXPECT_TRUE(Copies.empty());
    EXPECT_EQ(nullptr, BubbleWindow());
    EXPECT_FALSE(IsBubbleShown());
}

TEST_F(ShownBubble, ItsScreenIsTakenBeforeItComes)
{
    Copies.clear();
    RECT area;
    {
        const ReplacedCall call("BitBlt", reinterpret_cast<void*>(NoteCopy));
        Show(4);
        area = BubbleArea();
    }
    HideBubble(false);
    ASSERT_FALSE(Copies.empty());
    EXPECT_EQ(area.right - area.left, Copies[0].To.right);
    EXPECT_EQ(area.bottom - area.top, Copies[0].To.bottom);
    EXPECT_EQ(area.left, Copies[0].FromX);
    EXPECT_EQ(area.top, Copies[0].FromY);
    EXPECT_FALSE(Copies[0].BubbleIsVisible);
}

TEST_F(ShownBubble, LeavesNothingBehind)
{
    Show(0);
    HideBubble(true);
    PumpMessages();
    const int objects = FreeGdiObjects();
    const int windows = CountWindows();
    const DWORD handles = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    for (int i = 0; i < 500; ++i) {
        Show(i % ButtonTotal);
        if (i % 3 != 0) { // else the next one takes its place
            HideBubble(i % 2 == 0);
        }
    }
    HideBubble(true);
    PumpMessages();
    EXPECT_EQ(objects, FreeGdiObjects());
    EXPECT_EQ(windows, CountWindows());
    EXPECT_EQ(handles, GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS));
}
