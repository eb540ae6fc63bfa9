#include "support/associations.h"
#include "support/button_bar.h"
#include "support/clipboard.h"
#include "support/dialogs.h"
#include "support/file_list.h"
#include "support/find_dialog.h"
#include "support/input.h"
#include "support/launched.h"
#include "support/marks.h"

namespace {

// The bar's buttons and bubbles under the real mouse.
class ButtonBarTest : public BarTest {};

constexpr char EditorFailed[] = "The launch of the editor failed. Please ensure that the Editor name is valid";
constexpr char Position[] = "Line 1 Col 1  100%";

constexpr std::uint32_t Grey = 0x808080;
constexpr std::uint32_t PaleYellow = 0xFFFF80;

// The colours of a row of the bar.
void ExpectRow(const Pixels& bar, int y, std::uint32_t colour)
{
    int wrong = 0;
    for (int x = 0; x < bar.Width; ++x) {
        wrong += (bar.At(x, y) & 0xFFFFFF) == colour ? 0 : 1;
    }
    EXPECT_EQ(wrong, 0) << "row " << y;
}

bool IsInHexMode(Program& program)
{
    return program.Menu(IDM_VIEW_HEX).Checked;
}

// What the mouse did before has been taken in once this click has had its effect.
void ClickHexAndWait(Program& program)
{
    ASSERT_FALSE(IsInHexMode(program));
    ASSERT_TRUE(ClickSlot(program, BarHex));
    ASSERT_TRUE(WaitUntil([&] { return IsInHexMode(program); }));
}

// Clicks on the button and closes the dialog that it shows by the Escape key.
void ExpectDialog(Program& program, int button, const std::string& title)
{
    SCOPED_TRACE(title);
    ASSERT_TRUE(WaitForKeyboard(program));
    ASSERT_TRUE(ClickSlot(program, button));
    const HWND dialog = WaitForDialog(program, title);
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(BringToForeground(dialog));
    PressKeys({VK_ESCAPE});
    ASSERT_TRUE(WaitUntilClosed(dialog));
}

void ExpectTop(Program& program, int top)
{
    EXPECT_TRUE(WaitUntil([&] { return program.Top() == top && program.Answers(); }))
        << program.Top() << " instead of " << top;
}

// Lines with a needle in each hundredth.
std::string TextWithNeedles()
{
    std::string text;
    for (int line = 1; line <= 500; ++line) {
        text += line % 100 == 0 ? "a needle\r\n" : "hay\r\n";
    }
    return text;
}

// The size of the font that the program would save.
std::string SavedFontSize(Program& program)
{
    program.Command(IDM_OPTIONS_SAVE);
    return SettingValue("FontSize");
}

void ExpectFontSize(Program& program, const std::string& size)
{
    EXPECT_TRUE(WaitUntil([&] { return SavedFontSize(program) == size; })) << SavedFontSize(program);
}

void PressRight()
{
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = MOUSEEVENTF_RIGHTDOWN;
    SendInput(1, &input, sizeof input);
}

void ReleaseRight()
{
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = MOUSEEVENTF_RIGHTUP;
    SendInput(1, &input, sizeof input);
}

// The bubble that is shown; nullptr while there is none.
HWND FindBubble(const Program& program)
{
    const HWND bubble = FindWindowA("KstvBb", nullptr);
    return GetWindowThreadProcessId(bubble, nullptr) == GetWindowThreadProcessId(program.Frame(), nullptr) &&
                   IsWindowVisible(bubble)
               ? bubble
               : nullptr;
}

std::string BubbleText(Program& program)
{
    const HWND bubble = FindBubble(program);
    const std::vector<ProbeText> texts =
        bubble != nullptr ? program.Inside().Repaint(bubble) : std::vector<ProbeText>();
    return texts.size() == 1 && texts[0].X == 7 && texts[0].Y == 4 ? texts[0].Text : "(none)";
}

bool WaitForBubble(Program& program, int button)
{
    const bool shown = WaitUntil([&] { return BubbleText(program) == BarButtons[button].Bubble; });
    EXPECT_TRUE(shown) << BubbleText(program) << " instead of " << BarButtons[button].Bubble;
    return shown;
}

bool WaitForNoBubble(const Program& program)
{
    return WaitUntil([&] { return FindBubble(program) == nullptr && program.Answers(); });
}

RECT PlaceOnScreen(HWND window)
{
    RECT place = {};
    GetWindowRect(window, &place);
    return place;
}

// The size of the bubble with this text, in the status line's font.
SIZE BubbleSize(const std::string& text)
{
    const HDC screen = GetDC(nullptr);
    const HFONT font = CreateFontA(MulDiv(-10, GetDeviceCaps(screen, LOGPIXELSY), 72), 0, 0, 0, FW_NORMAL, 0, 0, 0, 0,
                                   0, 0, 0, VARIABLE_PITCH | FF_SWISS, "MS Sans Serif");
    const HGDIOBJ former = SelectObject(screen, font);
    SIZE size = {};
    GetTextExtentPoint32A(screen, text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(screen, former);
    DeleteObject(font);
    ReleaseDC(nullptr, screen);
    return {size.cx + 14, size.cy + 9};
}

// Where the bubble would be on a screen without end.
RECT PlaceBelow(const Program& program, int slot)
{
    const RECT bar = PlaceOnScreen(program.Buttons());
    const SIZE size = BubbleSize(BarButtons[slot].Bubble);
    const int x = bar.left + slot * SlotPitch + SlotWidth / 2;
    return {x, bar.bottom + 1, x + size.cx, bar.bottom + 1 + size.cy};
}

// Waits until the bubble is there: a place that the pointer was at before can come in late.
void ExpectBubbleAt(const Program& program, const RECT& place)
{
    RECT now = {};
    EXPECT_TRUE(WaitUntil([&] {
        now = PlaceOnScreen(FindBubble(program));
        return EqualRect(&now, &place) != FALSE;
    })) << now.left
        << ", " << now.top << " to " << now.right << ", " << now.bottom << " instead of " << place.left << ", "
        << place.top << " to " << place.right << ", " << place.bottom;
}

// What can be seen there.
Pixels ReadScreen(Program& program, const RECT& area)
{
    return program.Inside().Read(nullptr, area.left, area.top, area.right - area.left, area.bottom - area.top);
}

void MoveFrame(const Program& program, int x, int y)
{
    ASSERT_TRUE(SetWindowPos(program.Frame(), nullptr, x, y, 0, 0, SWP_NOZORDER | SWP_NOSIZE | SWP_NOACTIVATE));
    ASSERT_TRUE(WaitUntil([&] {
        const RECT place = PlaceOnScreen(program.Frame());
        return place.left == x && place.top == y && program.Answers();
    }));
}

// Holds the right button down on the slot's button and waits for its bubble.
bool ShowBubbleOf(Program& program, int slot)
{
    if (!PointAtSlot(program, slot)) {
        return false;
    }
    PressRight();
    return WaitForBubble(program, slot);
}

bool HoldsRightButton(const Program& program)
{
    return CaptureOf(program) == program.Buttons();
}

// The bubble comes after a rest of 1500 milliseconds.
constexpr DWORD LongerThanTheDelay = 3000;
constexpr DWORD AlmostTheDelay = 1450;

} // namespace

TEST_F(ButtonBarTest, ItLiesBetweenTheMenuAndTheViewAndIs34PixelsHigh)
{
    Program program(WriteScratch("one.kvb", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    const RECT place = PlaceOf(program.Buttons());
    EXPECT_EQ(place.left, 0);
    EXPECT_EQ(place.top, 0);
    EXPECT_EQ(place.right, ClientSize(program.Frame()).cx);
    EXPECT_EQ(place.bottom, BarHeight);
    EXPECT_EQ(PlaceOf(program.View()).top, BarHeight);
    SetWindowPos(program.Frame(), nullptr, 0, 0, 600, 300, SWP_NOZORDER | SWP_NOMOVE | SWP_NOACTIVATE);
    EXPECT_TRUE(WaitUntil([&] { return ClientSize(program.Buttons()).cx == ClientSize(program.Frame()).cx; }));
    EXPECT_EQ(ClientSize(program.Buttons()).cy, BarHeight);
}

TEST_F(ButtonBarTest, ItHasSeventeenButtonsAndItsEdges)
{
    WriteSettings(BarSettings);
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ExpectBar(program, FirstButtons(17), "+-------++-+++--+");
    const Pixels bar = ReadBar(program);
    ExpectRow(bar, 0, White);
    ExpectRow(bar, 1, BarColour());
    ExpectRow(bar, 2, BarColour());
    ExpectRow(bar, 31, BarColour());
    ExpectRow(bar, 32, Grey);
    ExpectRow(bar, 33, Black);
}

TEST_F(ButtonBarTest, AButtonThatCannotBePressedIsGreyAndEmbossed)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ExpectBar(program, FirstButtons(BarButtonCount), "+-------++-+++--++------");
    const Pixels without = ReadBar(program);
    program.Inside().Drop(program.Frame(), WriteScratch("one.kvb", "text"));
    ASSERT_TRUE(program.WaitForTitle("one.kvb"));
    ExpectBar(program, FirstButtons(BarButtonCount), "+--++-+-++-++++-++++++++");
    const Pixels with = ReadBar(program);
    EXPECT_FALSE(without.Values == with.Values);
    program.Command(IDM_INTERNAL_CLOSE);
    ExpectBar(program, FirstButtons(BarButtonCount), "+-------++-+++--++------");
}

TEST_F(ButtonBarTest, AClickShowsTheButtonsDialog)
{
    Program program(WriteScratch("one.kvb", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectDialog(program, BarOpen, OpenTitle);
    ExpectDialog(program, BarInformation, "File Information");
    ExpectDialog(program, BarFind, FindTitle);
    ExpectDialog(program, BarFont, "Font");
    ExpectDialog(program, BarColours, "Select Colours");
    ExpectDialog(program, BarGoto, GotoTitle);
    ExpectDialog(program, BarDelete, "Confirm File Delete");
    EXPECT_EQ(program.Title(), "Kestovar-one.kvb");
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(ButtonBarTest, AClickSwitchesTheMode)
{
    Program program(WriteScratch("one.kvb", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ClickHexAndWait(program);
    ASSERT_TRUE(ClickSlot(program, BarText));
    EXPECT_TRUE(WaitUntil([&] { return program.Menu(IDM_VIEW_TEXT).Checked; }));
}

TEST_F(ButtonBarTest, AClickAsksForHelp)
{
    Program program(WriteScratch("one.kvb", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(ClickSlot(program, BarHelp));
    AnswerMissingHelp(program);
    EXPECT_TRUE(program.Answers());
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(ButtonBarTest, AClickClosesTheFileAndMakesTheWindowAnIcon)
{
    Program program(WriteScratch("one.kvb", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(ClickSlot(program, BarClose));
    EXPECT_TRUE(WaitUntil([&] { return IsIconic(program.Frame()) != FALSE; }));
    EXPECT_TRUE(program.WaitForTitle(""));
}

TEST_F(ButtonBarTest, AClickEndsTheProgram)
{
    Program program(WriteScratch("one.kvb", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(ClickSlot(program, BarExit));
    EXPECT_EQ(program.WaitForExit(), 0u);
}

TEST_F(ButtonBarTest, AClickStartsTheChoiceOfHeadings)
{
    Program program(WriteScratch("one.kvb", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(ClickSlot(program, BarLock));
    ASSERT_TRUE(WaitUntil([&] { return CaptureOf(program) == program.View(); }));
    ExpectStatus(program, "Select the area to lock. Enter or Click to select, Esc to cancel");
    PressKeys({VK_ESCAPE});
    EXPECT_TRUE(WaitUntil([&] { return CaptureOf(program) == nullptr && program.Answers(); }));
    EXPECT_EQ(program.Title(), "Kestovar-one.kvb");
    ExpectButton(program, BarLock, '+');
}

TEST_F(ButtonBarTest, AClickMakesTheFontLargerOrSmaller)
{
    Program program(WriteScratch("one.kvb", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(ClickSlot(program, BarLarger));
    ExpectFontSize(program, "17"); // 13 points instead of 11
    ASSERT_TRUE(ClickSlot(program, BarSmaller));
    ExpectFontSize(program, "15");
    ASSERT_TRUE(ClickSlot(program, BarSmaller));
    ExpectFontSize(program, "12");
}

TEST_F(ButtonBarTest, AClickCopiesTheSelection)
{
    EmptyTheClipboard();
    Program program(WriteScratch("one.kvb", "to be copied"));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    ASSERT_TRUE(ClickSlot(program, BarCopy));
    EXPECT_TRUE(WaitUntil([] { return ClipboardText() == "to be copied\r\n"; })) << ClipboardText();
}

TEST_F(ButtonBarTest, AClickWalksTheList)
{
    const TestDirectory files("barlist");
    files.WriteAll({"1.kvb", "2.kvb", "3.kvb"});
    const std::vector<std::string> names = files.Find("*.kvb");
    ASSERT_EQ(names.size(), 3u);
    Program program(files.PathOf("*.kvb"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(WaitForFile(program, names[0], "[File 1 of 3]"));
    ASSERT_TRUE(ClickSlot(program, BarNext));
    ASSERT_TRUE(WaitForFile(program, names[1], "[File 2 of 3]"));
    ASSERT_TRUE(ClickSlot(program, BarNext));
    ASSERT_TRUE(WaitForFile(program, names[2], "[File 3 of 3]"));
    ExpectButton(program, BarNext, '-');
    ASSERT_TRUE(ClickSlot(program, BarPrevious));
    ASSERT_TRUE(WaitForFile(program, names[1], "[File 2 of 3]"));
}

TEST_F(ButtonBarTest, AClickEditsAndLaunches)
{
    UseSettings("EditorName=c:\\kvtest\\no-editor.exe\n");
    Program program(WriteScratch("one.kvb", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    for (const int button : {BarEdit, BarLaunch}) {
        ASSERT_TRUE(WaitForKeyboard(program));
        ASSERT_TRUE(ClickSlot(program, button));
        EXPECT_EQ(program.AnswerBox(), EditorFailed) << button;
    }
}

TEST_F(ButtonBarTest, AClickRepeatsTheSearchAndWithShiftBackwards)
{
    Program program(WriteScratch("one.kvb", TextWithNeedles()));
    ASSERT_TRUE(program.WaitForFrame());
    FindText(program, "needle");
    ExpectTop(program, 98);
    ASSERT_TRUE(ClickSlot(program, BarRepeatFind));
    ExpectTop(program, 198);
    ASSERT_TRUE(ClickSlot(program, BarRepeatFind));
    ExpectTop(program, 298);
    ASSERT_TRUE(ShiftClickSlot(program, BarRepeatFind));
    ExpectTop(program, 198);
    ASSERT_TRUE(ShiftClickSlot(program, BarRepeatFind));
    ExpectTop(program, 98);
    ASSERT_TRUE(ClickSlot(program, BarRepeatFind)); // the direction is what it was
    ExpectTop(program, 198);
}

TEST_F(ButtonBarTest, ShiftMeansNothingToOtherButtons)
{
    Program program(WriteScratch("one.kvb", TextWithNeedles()));
    ASSERT_TRUE(program.WaitForFrame());
    FindText(program, "needle");
    ExpectTop(program, 98);
    ASSERT_TRUE(ShiftClickSlot(program, BarFind)); // the command behind its own repeats the search
    HWND dialog = WaitForDialog(program, FindTitle);
    ASSERT_NE(dialog, nullptr);
    PressControl(dialog, IDCANCEL);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    ASSERT_TRUE(WaitForKeyboard(program));
    ASSERT_TRUE(ShiftClickSlot(program, BarText)); // that would be the hex mode
    ASSERT_TRUE(WaitForKeyboard(program));
    ASSERT_TRUE(ShiftClickSlot(program, BarGoto));
    dialog = WaitForDialog(program, GotoTitle);
    ASSERT_NE(dialog, nullptr);
    PressControl(dialog, IDCANCEL);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    EXPECT_FALSE(IsInHexMode(program));
    EXPECT_EQ(program.Top(), 98);
}

TEST_F(ButtonBarTest, APressedButtonIsDownAsLongAsThePointerIsOnIt)
{
    Program program(WriteScratch("one.kvb", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectStatus(program, Position);
    const int inside = BarFind * SlotPitch + SlotWidth / 2;
    const struct {
        int X;
        int Y;
        bool IsOn;
    } steps[] = {
        {inside + SlotPitch, BarHeight / 2, false}, // its neighbour
        {inside, BarHeight / 2, true},
        {inside, SlotTop - 1, false}, // above its frame
        {inside, SlotTop, true},
        {inside, SlotTop + SlotHeight, false}, // below it
        {inside, SlotTop + SlotHeight - 1, true},
        {BarFind * SlotPitch - 1, BarHeight / 2, false}, // the gap before it
        {BarFind * SlotPitch, BarHeight / 2, true},
        {BarFind * SlotPitch + SlotWidth, BarHeight / 2, false}, // the one behind it
        {BarFind * SlotPitch + SlotWidth - 1, BarHeight / 2, true},
        {inside, BarHeight + 100, false}, // the view
    };
    ASSERT_TRUE(PressSlot(program, BarFind));
    ExpectButton(program, BarFind, 'v');
    ExpectStatus(program, BarButtons[BarFind].Help);
    for (const auto& step : steps) {
        SCOPED_TRACE(std::to_string(step.X) + ", " + std::to_string(step.Y));
        ASSERT_TRUE(MovePointer(program.Buttons(), step.X, step.Y));
        ExpectButton(program, BarFind, step.IsOn ? 'v' : '+');
        ExpectStatus(program, step.IsOn ? BarButtons[BarFind].Help : Position);
    }
    ASSERT_TRUE(ReleaseSlot(program));
    ClickHexAndWait(program);
    EXPECT_EQ(FindDialog(program, FindTitle), nullptr);
    EXPECT_TRUE(WaitForKeyboard(program));
}

TEST_F(ButtonBarTest, ReleasedOnAnotherButtonItDoesNothing)
{
    Program program(WriteScratch("one.kvb", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(PressSlot(program, BarFind));
    ASSERT_TRUE(MovePointer(program.Buttons(), BarGoto * SlotPitch + SlotWidth / 2, BarHeight / 2));
    ASSERT_TRUE(ReleaseSlot(program));
    ClickHexAndWait(program);
    EXPECT_EQ(FindDialog(program, FindTitle), nullptr);
    EXPECT_EQ(FindDialog(program, GotoTitle), nullptr);
}

TEST_F(ButtonBarTest, BackOnTheButtonItIsPressed)
{
    Program program(WriteScratch("one.kvb", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(PressSlot(program, BarFind));
    ASSERT_TRUE(MovePointer(program.View(), 100, 100));
    ExpectButton(program, BarFind, '+');
    ASSERT_TRUE(PointAtSlot(program, BarFind));
    ExpectButton(program, BarFind, 'v');
    ASSERT_TRUE(ReleaseSlot(program));
    const HWND dialog = WaitForDialog(program, FindTitle);
    ASSERT_NE(dialog, nullptr);
    PressControl(dialog, IDCANCEL);
    EXPECT_TRUE(WaitUntilClosed(dialog));
    ExpectButton(program, BarFind, '+');
}

TEST_F(ButtonBarTest, AButtonThatLosesTheMouseComesUpAndDoesNothing)
{
    Program program(WriteScratch("one.kvb", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectStatus(program, Position);
    ASSERT_TRUE(PressSlot(program, BarFind));
    ExpectButton(program, BarFind, 'v');
    program.Send(program.Buttons(), WM_CANCELMODE);
    EXPECT_EQ(CaptureOf(program), nullptr);
    ExpectButton(program, BarFind, '+');
    ExpectStatus(program, Position);
    ReleaseLeft();
    ClickHexAndWait(program);
    EXPECT_EQ(FindDialog(program, FindTitle), nullptr);
}

TEST_F(ButtonBarTest, EachOfTwoQuickClicksCounts)
{
    Program program(WriteScratch("one.kvb", TextWithNeedles()));
    ASSERT_TRUE(program.WaitForFrame());
    FindText(program, "needle");
    ExpectTop(program, 98);
    ASSERT_TRUE(PointAtSlot(program, BarRepeatFind));
    DoubleClickLeft();
    ExpectTop(program, 298);
}

TEST_F(ButtonBarTest, OneMouseButtonDoesNotDisturbTheOther)
{
    Program program(WriteScratch("one.kvb", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(ShowBubbleOf(program, BarFind));
    PressLeft();
    ReleaseLeft();
    ASSERT_TRUE(MovePointer(program.Buttons(), BarHex * SlotPitch + SlotWidth / 2, BarHeight / 2));
    EXPECT_TRUE(WaitForBubble(program, BarHex));
    EXPECT_TRUE(HoldsRightButton(program));
    ReleaseRight();
    ASSERT_TRUE(WaitForNoBubble(program));
    EXPECT_EQ(FindDialog(program, FindTitle), nullptr);

    ASSERT_TRUE(PressSlot(program, BarHex));
    PressRight();
    ReleaseRight();
    ExpectButton(program, BarHex, 'v');
    EXPECT_EQ(FindBubble(program), nullptr);
    ASSERT_TRUE(ReleaseSlot(program));
    EXPECT_TRUE(WaitUntil([&] { return IsInHexMode(program); }));
}

TEST_F(ButtonBarTest, TheStatusLineTellsWhatAButtonDoes)
{
    const RegisteredExtension association({"kvq", "Kestovar.Test", "A file for the tests", "nothing.exe \"%1\""});
    Program program(WriteScratch("one.kvq", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    const std::string looks = "+--++-+-++-++++-++++++++";
    ExpectBar(program, FirstButtons(BarButtonCount), looks);
    ExpectStatus(program, Position);
    for (int button = 0; button < BarButtonCount; ++button) {
        SCOPED_TRACE(button);
        const std::size_t place = static_cast<std::size_t>(button);
        ASSERT_TRUE(PressSlot(program, button));
        ExpectStatus(program, BarButtons[button].Help);
        std::string pressed = looks;
        pressed[place] = looks[place] == '+' ? 'v' : '-'; // a grey one stays up
        ExpectBar(program, FirstButtons(BarButtonCount), pressed);
        ASSERT_TRUE(MovePointer(program.View(), 100, 100));
        ASSERT_TRUE(ReleaseSlot(program));
        ExpectStatus(program, Position);
    }
    ExpectBar(program, FirstButtons(BarButtonCount), looks);
}

TEST_F(ButtonBarTest, TheStatusLineTellsHowTheFileIsLaunched)
{
    const TestDirectory files("barlaunch");
    CopyLaunchedTo(files.PathOf("app.exe"));
    files.Write("associated.kvq", "text");
    files.Write("other.kvb", "text");
    const RegisteredExtension association({"kvq", "Kestovar.Test", "A file for the tests", "nothing.exe \"%1\""});
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const struct {
        const char* Name;
        const char* Help;
    } kinds[] = {
        {"app.exe", "Launch the current Windows program"},
        {"other.kvb", "Edit the current file"},
        {"associated.kvq", "Launch the current file with it's associated application "},
        {"other.kvb", "Edit the current file"},
    };
    for (const auto& kind : kinds) {
        SCOPED_TRACE(kind.Name);
        program.Inside().Drop(program.Frame(), files.PathOf(kind.Name));
        ASSERT_TRUE(program.WaitForTitle(kind.Name));
        ExpectButton(program, BarLaunch, '+');
        ASSERT_TRUE(PressSlot(program, BarLaunch));
        ExpectStatus(program, kind.Help);
        ASSERT_TRUE(MovePointer(program.View(), 100, 100));
        ASSERT_TRUE(ReleaseSlot(program));
    }
}

TEST_F(ButtonBarTest, AClickOnAGreyButtonDoesNothing)
{
    Program program(WriteScratch("one.kvb", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    const int beeps = program.Inside().Use().Beeps;
    for (const int button : {BarPrevious, BarNext, BarCopy, BarRepeatFind, BarZip, BarPreviousZip}) {
        ASSERT_TRUE(ClickSlot(program, button)) << button;
        ASSERT_TRUE(ShiftClickSlot(program, button)) << button;
    }
    ClickHexAndWait(program);
    EXPECT_FALSE(program.ShowsBox());
    EXPECT_EQ(program.Title(), "Kestovar-one.kvb");
    EXPECT_EQ(program.Inside().Use().Beeps, beeps);
}

TEST_F(ButtonBarTest, WithoutAFileTheGreyButtonsDoNothing)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    for (const int button :
         {BarPrint, BarInformation, BarFind, BarLaunch, BarGoto, BarEdit, BarDelete, BarLock, BarLarger, BarSmaller}) {
        ASSERT_TRUE(ClickSlot(program, button)) << button;
    }
    ExpectDialog(program, BarOpen, OpenTitle); // the first and only dialog
    EXPECT_EQ(SavedFontSize(program), "15");
}

TEST_F(ButtonBarTest, RightOfTheLastButtonNothingHappens)
{
    WriteSettings(std::string(BarSettings) + "Buttons=0609\n");
    Program program(WriteScratch("one.kvb", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectBar(program, {BarFind, BarHex}, "++");
    ExpectStatus(program, Position);
    for (const int slot : {2, 6, 20}) {
        ASSERT_TRUE(PointAtSlot(program, slot));
        PressLeft();
        EXPECT_TRUE(StaysFalse([&] { return CaptureOf(program) != nullptr; }, 100)) << slot;
        ReleaseLeft();
        PressRight();
        EXPECT_TRUE(StaysFalse([&] { return CaptureOf(program) != nullptr; }, 100)) << slot;
        EXPECT_EQ(FindBubble(program), nullptr) << slot;
        ReleaseRight();
    }
    EXPECT_EQ(program.StatusText(), Position);
    ASSERT_TRUE(ClickSlot(program, 1));
    EXPECT_TRUE(WaitUntil([&] { return IsInHexMode(program); }));
    EXPECT_EQ(FindDialog(program, FindTitle), nullptr);
    ExpectBar(program, {BarFind, BarHex}, "++");
}

TEST_F(ButtonBarTest, TheRightButtonShowsBubblesAtOnceAndTheyFollow)
{
    UseSettings("ShowBubbles=0\n"); // that is for the others
    Program program(WriteScratch("one.kvb", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(ShowBubbleOf(program, BarNext)); // a grey one has its bubble, too
    ExpectBubbleAt(program, PlaceBelow(program, BarNext));
    for (const int slot : {BarPrint, BarCopy, BarSmaller, BarOpen}) {
        ASSERT_TRUE(MovePointer(program.Buttons(), slot * SlotPitch + SlotWidth / 2, BarHeight / 2));
        ASSERT_TRUE(WaitForBubble(program, slot));
        ExpectBubbleAt(program, PlaceBelow(program, slot));
    }
    EXPECT_TRUE(HoldsRightButton(program));
    ASSERT_TRUE(MovePointer(program.View(), 300, 200));
    EXPECT_TRUE(WaitForNoBubble(program));
    ASSERT_TRUE(MovePointer(program.Buttons(), BarFind * SlotPitch + SlotWidth / 2, BarHeight / 2));
    EXPECT_TRUE(WaitForBubble(program, BarFind));
    ReleaseRight();
    EXPECT_TRUE(WaitForNoBubble(program));
    EXPECT_FALSE(HoldsRightButton(program));
    EXPECT_EQ(FindDialog(program, FindTitle), nullptr);
}

TEST_F(ButtonBarTest, EachButtonHasItsBubble)
{
    UseSettings("ShowBubbles=0\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    int objects = 0;
    for (const bool again : {false, true}) {
        ASSERT_TRUE(ShowBubbleOf(program, 0));
        for (int slot = 1; slot < BarButtonCount; ++slot) {
            ASSERT_TRUE(MovePointer(program.Buttons(), slot * SlotPitch + SlotWidth / 2, BarHeight / 2));
            ASSERT_TRUE(WaitForBubble(program, slot));
        }
        ReleaseRight();
        ASSERT_TRUE(WaitForNoBubble(program));
        const int now = program.Inside().Use().GdiObjects;
        EXPECT_TRUE(!again || now <= objects) << objects << ", then " << now; // they leave nothing behind
        objects = now;
    }
}

TEST_F(ButtonBarTest, TheProgramEndsWithItsBubble)
{
    Program program(WriteScratch("one.kvb", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(PointAtSlot(program, BarGoto));
    ASSERT_TRUE(WaitForBubble(program, BarGoto));
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_EQ(FindWindowA("KstvBb", nullptr), nullptr);
}

TEST_F(ButtonBarTest, ABubbleIsPaleYellowWithAFrameAndAShadow)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(ShowBubbleOf(program, BarPreviousZip));
    const RECT place = PlaceBelow(program, BarPreviousZip);
    const int width = place.right - place.left;
    const int height = place.bottom - place.top;
    const auto at = [&](int x, int y) {
        return program.Inside().Read(FindBubble(program), x, y, 1, 1).At(0, 0) & 0xFFFFFF;
    };
    EXPECT_EQ(at(width / 2, 0), Black);
    EXPECT_EQ(at(width / 2, 1), PaleYellow);
    EXPECT_EQ(at(0, height / 2), Black);
    EXPECT_EQ(at(1, height / 2), PaleYellow);
    EXPECT_EQ(at(width / 2, height - 3), Black);
    EXPECT_EQ(at(width / 2, height - 2), Grey);
    EXPECT_EQ(at(width / 2, height - 1), Grey);
    EXPECT_EQ(at(width - 3, height / 2), Black);
    EXPECT_EQ(at(width - 1, height / 2), Grey);
    const Pixels text = program.Inside().Read(FindBubble(program), 7, 4, width - 14, height - 9);
    EXPECT_GT(text.CountOf(PaleYellow), text.Width * text.Height / 2);
    EXPECT_GT(text.CountOf(Black), 50);
    ReleaseRight();
    EXPECT_TRUE(WaitForNoBubble(program));
}

TEST_F(ButtonBarTest, TheScreenIsAsItWasBeneathABubble)
{
    UseSettings("ShowBubbles=0\n");
    Program program(WriteScratch("one.kvb", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(PointAtSlot(program, BarNext));
    ASSERT_TRUE(WaitUntil([&] { return IsPainted(program, program.View()); }));
    RECT area = PlaceBelow(program, BarNext);
    InflateRect(&area, 8, 8); // with what is around it
    const Pixels before = ReadScreen(program, area);
    ASSERT_GT(before.CountOf(before.At(0, 0)), 0);
    PressRight();
    ASSERT_TRUE(WaitForBubble(program, BarNext));
    EXPECT_TRUE(WaitUntil([&] { return ReadScreen(program, area).CountOf(PaleYellow) > 500; }));
    ReleaseRight();
    ASSERT_TRUE(WaitForNoBubble(program));
    EXPECT_TRUE(WaitUntil([&] { return ReadScreen(program, area).Values == before.Values; }));
}

TEST_F(ButtonBarTest, RestingOnAButtonShowsItsBubbleAfterAWhile)
{
    Program program(WriteScratch("one.kvb", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    ASSERT_TRUE(WaitUntil([&] { return IsPainted(program, program.View()); }));
    const RECT area = PlaceBelow(program, BarGoto);
    const Pixels before = ReadScreen(program, area);
    const DWORD start = GetTickCount();
    ASSERT_TRUE(PointAtSlot(program, BarGoto));
    ASSERT_TRUE(WaitUntil([&] { return FindBubble(program) != nullptr; }));
    EXPECT_GE(GetTickCount() - start, AlmostTheDelay);
    ASSERT_TRUE(WaitForBubble(program, BarGoto));
    EXPECT_EQ(GetForegroundWindow(), program.Frame());
    ExpectBubbleAt(program, area);
    ASSERT_TRUE(PointAtSlot(program, BarLock));
    ASSERT_TRUE(WaitForBubble(program, BarLock));
    ExpectBubbleAt(program, PlaceBelow(program, BarLock));
    ASSERT_TRUE(MovePointer(program.View(), 300, 300));
    ASSERT_TRUE(WaitForNoBubble(program));
    EXPECT_TRUE(WaitUntil([&] { return ReadScreen(program, area).Values == before.Values; }));
    ASSERT_TRUE(PointAtSlot(program, BarFind)); // and again
    ASSERT_TRUE(WaitForBubble(program, BarFind));
    PressLeft(); // takes it away
    ASSERT_TRUE(WaitForNoBubble(program));
    ASSERT_TRUE(MovePointer(program.View(), 300, 300));
    ASSERT_TRUE(ReleaseSlot(program));
}

TEST_F(ButtonBarTest, WithoutShowBubblesRestingShowsNone)
{
    UseSettings("ShowBubbles=0\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(PointAtSlot(program, BarGoto));
    EXPECT_TRUE(StaysFalse([&] { return FindBubble(program) != nullptr; }, LongerThanTheDelay));
}

TEST_F(ButtonBarTest, AButtonThatWasPressedShowsNoBubbleUntilThePointerHasLeftIt)
{
    Program program(WriteScratch("one.kvb", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(ClickSlot(program, BarText));
    ASSERT_TRUE(MovePointer(program.Buttons(), BarText * SlotPitch + 5, BarHeight / 2)); // still on it
    EXPECT_TRUE(StaysFalse([&] { return FindBubble(program) != nullptr; }, LongerThanTheDelay));
    ASSERT_TRUE(PointAtSlot(program, BarHex));
    EXPECT_TRUE(WaitForBubble(program, BarHex));
}

TEST_F(ButtonBarTest, ABubbleStaysOnTheScreen)
{
    UseSettings("ShowBubbles=0\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(BringToForeground(program.Frame()));
    const int right = GetSystemMetrics(SM_CXSCREEN);
    const int bottom = GetSystemMetrics(SM_CYSCREEN);
    const RECT frame = PlaceOnScreen(program.Frame());
    const RECT bar = PlaceOnScreen(program.Buttons());

    // The middle of the last button is as far from the edge as the pointer needs.
    const int middle = bar.left + BarSmaller * SlotPitch + SlotWidth / 2;
    MoveFrame(program, frame.left + right - 10 - middle, frame.top);
    ASSERT_TRUE(ShowBubbleOf(program, BarSmaller));
    RECT place = PlaceBelow(program, BarSmaller);
    ASSERT_GT(place.right, right);
    OffsetRect(&place, right - place.right, 0);
    ExpectBubbleAt(program, place);
    ReleaseRight();
    ASSERT_TRUE(WaitForNoBubble(program));

    MoveFrame(program, frame.left, frame.top + bottom - 5 - bar.bottom);
    ASSERT_TRUE(ShowBubbleOf(program, BarNext));
    place = PlaceBelow(program, BarNext);
    ASSERT_GT(place.bottom, bottom);
    OffsetRect(&place, 0, PlaceOnScreen(program.Buttons()).top - place.bottom);
    ExpectBubbleAt(program, place);
    ReleaseRight();
    ASSERT_TRUE(WaitForNoBubble(program));

    MoveFrame(program, frame.left - bar.left - SlotPitch, frame.top); // the first button is off to the left
    ASSERT_TRUE(ShowBubbleOf(program, BarPrevious));
    ExpectBubbleAt(program, PlaceBelow(program, BarPrevious));
    ReleaseRight();
    ASSERT_TRUE(WaitForNoBubble(program));
}

TEST_F(ButtonBarTest, TheSettingHidesIt)
{
    UseSettings("ButtonBar=0\n");
    Program program(WriteScratch("one.kvb", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(ClientSize(program.Buttons()).cy, 0);
    EXPECT_EQ(PlaceOf(program.View()).top, 0);
    ASSERT_TRUE(BringToForeground(program.Frame()));
    ASSERT_TRUE(MovePointer(program.Frame(), SlotWidth / 2, BarHeight / 2)); // where Open would be
    PressLeft();
    ASSERT_TRUE(WaitUntil([&] { return CaptureOf(program) == program.View(); }));
    ReleaseLeft();
    ASSERT_TRUE(WaitUntil([&] { return CaptureOf(program) == nullptr; }));
    EXPECT_EQ(FindDialog(program, OpenTitle), nullptr);
}
