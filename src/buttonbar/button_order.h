// Which buttons stand on the bar, and in which order.
#pragma once

#include <cstddef>
#include <cstdint>

constexpr int ButtonTotal = 24;

struct ButtonBarState {
    std::int32_t ButtonCount = 0;               // buttons on the bar
    std::int16_t ButtonOrder[ButtonTotal] = {}; // bar slot -> button number
    std::uint16_t Position[ButtonTotal] = {};   // button number -> slot + 1; 0 = not on the bar
    std::int32_t ShowBubbles = 1;
};

extern ButtonBarState ButtonBar;

// Room for the setting that names the buttons.
constexpr std::size_t ButtonTextSize = 60;

// Lays the bar out from text, a run of two-digit decimal button numbers. A number of 24 or more leaves
// its slot as it was; an empty text gives the first 17 buttons.
void ParseButtonOrder(const char* text, ButtonBarState& bar);

// Puts count buttons on the bar, in this order; 0 empties it.
void SetButtonOrder(const int* buttons, int count, ButtonBarState& bar);

// The setting that ParseButtonOrder reads back.
void FormatButtonOrder(const ButtonBarState& bar, char (&text)[ButtonTextSize]);
