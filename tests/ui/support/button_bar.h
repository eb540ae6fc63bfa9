// The button bar on the screen: how its buttons look, told from their pixels, and the real mouse that presses them.
#pragma once

#include "support/program.h"
#include "support/ui_test.h"

#include <string>
#include <vector>

constexpr int BarHeight = 34;
constexpr int SlotPitch = 35;
constexpr int SlotWidth = 34; // of a button
constexpr int SlotHeight = 28;
constexpr int SlotTop = 3;

struct BarButton {
    UINT Command;
    const char* Bubble;
    const char* Help; // that the status line shows while the button is pressed
};

// By number. The help of Launch file depends on the file: this is that of an associated one.
constexpr int BarButtonCount = 24;
extern const BarButton BarButtons[BarButtonCount];

enum BarButtonNumber {
    BarOpen = 0,
    BarPrevious = 1,
    BarNext = 2,
    BarPrint = 3,
    BarInformation = 4,
    BarCopy = 5,
    BarFind = 6,
    BarRepeatFind = 7,
    BarText = 8,
    BarHex = 9,
    BarZip = 10,
    BarFont = 11,
    BarColours = 12,
    BarHelp = 13,
    BarLaunch = 14,
    BarPreviousZip = 15,
    BarClose = 16,
    BarExit = 17,
    BarGoto = 18,
    BarEdit = 19,
    BarDelete = 20,
    BarLock = 21,
    BarLarger = 22,
    BarSmaller = 23,
};

// The buttons of a bar, slot by slot.
using BarOrder = std::vector<int>;

// The first ones by number.
BarOrder FirstButtons(int count);

// The order as the settings file has it.
std::string OrderText(const BarOrder& order);

// A window that is wide enough for all buttons, which the settings put on the bar. The pointer starts in a corner
// of the screen, so that nothing happens to the bar that the test does not do.
class BarTest : public UiTest {
protected:
    void SetUp() override;

    // The settings with all buttons, and these keys.
    static void UseSettings(const std::string& keys);
};

// The settings of such a window, but for the buttons.
extern const char BarSettings[];

constexpr int SlotsInSight = 25; // of that window, more than there can be buttons

// How the slots in sight look, each as one letter: '+' a button that can be pressed, '-' one that is grey, 'v' one
// that is pressed, '.' nothing, '?' anything else than these, pixel by pixel.
std::string LooksOfBar(Program& program, const BarOrder& order);

// The same with all 24 buttons in the bar; the letters of the slots of buttons only.
std::string LooksOfButtons(Program& program);

// Waits until the bar looks like this; empty slots at the end can be left out.
void ExpectBar(Program& program, const BarOrder& order, std::string looks);
void ExpectButton(Program& program, int button, char look);

Pixels ReadBar(Program& program);

// What is between the buttons.
std::uint32_t BarColour();

// Waits for the text of the status line.
void ExpectStatus(Program& program, const std::string& text);

// Moves the pointer to the middle of a slot's button. The program is in the foreground then.
bool PointAtSlot(const Program& program, int slot);

// Puts the left button down there, and waits until the bar has taken notice; releases it where the pointer is.
bool PressSlot(const Program& program, int slot);
bool ReleaseSlot(const Program& program);
bool ClickSlot(const Program& program, int slot);

// The same with Shift held.
bool ShiftClickSlot(const Program& program, int slot);
