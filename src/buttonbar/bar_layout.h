// Where the buttons of the bar and their bubbles lie.
//
// Slots count from 0, from the left; their coordinates are pixels of the bar's client area. A slot is used rather than
// a button's position: a hand-edited setting may show a button in two slots, or one whose position is none.
#pragma once

#include <cstdint>

constexpr std::int32_t SlotPitch = 35;
constexpr std::int32_t ButtonWidth = 34;
constexpr std::int32_t ButtonTop = 3;
constexpr std::int32_t ButtonHeight = 28;
constexpr std::int32_t FaceWidth = 26; // of the picture on a button
constexpr std::int32_t FaceHeight = 21;

constexpr int NoSlot = -1;

// The slot under client x; NoSlot right of the last button.
int SlotAt(std::int32_t x);

// Left edge of a slot's button.
constexpr std::int32_t SlotLeft(int slot)
{
    return slot * SlotPitch;
}

// The slots first to last - 1 of those that columns left to right reach.
struct SlotRange {
    int First;
    int Last;
};
SlotRange SlotsBetween(std::int32_t left, std::int32_t right);

// Screen coordinates.
struct BubbleSpace {
    std::int32_t BarLeft;
    std::int32_t BarTop;
    std::int32_t BarBottom;
    std::int32_t ScreenWidth;
    std::int32_t ScreenHeight;
};

struct BubblePlace {
    std::int32_t Left;
    std::int32_t Top;
};

// Below the middle of the slot's button, moved left where the screen ends, above the bar where it ends below.
BubblePlace PlaceBubble(int slot, std::int32_t width, std::int32_t height, const BubbleSpace& space);
