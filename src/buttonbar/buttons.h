// The buttons by number: the command each one stands for, and whether it can be pressed. Buttons follow
// the menu items of their commands.
#pragma once

#include "buttonbar/button_order.h"

#include <cstdint>

enum ButtonNumber {
    ButtonPrevious = 1,
    ButtonNext = 2,
    ButtonPrint = 3,
    ButtonInformation = 4,
    ButtonCopy = 5,
    ButtonFind = 6,
    ButtonRepeatFind = 7,
    ButtonViewZip = 10,
    ButtonLaunch = 14,
    ButtonPreviousZip = 15,
    ButtonGoto = 18,
    ButtonEdit = 19,
    ButtonDelete = 20,
    ButtonLock = 21,
    ButtonFontIncrease = 22,
    ButtonFontDecrease = 23,
};

struct ButtonInfo {
    std::uint16_t Command;
    bool Enabled;
    bool HasShiftVariant = false; // with Shift held it gives the command after its own
};

extern ButtonInfo ButtonTable[ButtonTotal];
