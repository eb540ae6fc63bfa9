#include "buttonbar/bar_layout.h"

#include "buttonbar/button_order.h"

#include <algorithm>

int SlotAt(std::int32_t x)
{
    const std::int32_t slot = x / SlotPitch;
    return x >= 0 && slot < ButtonBar.ButtonCount ? slot : NoSlot;
}

SlotRange SlotsBetween(std::int32_t left, std::int32_t right)
{
    return {std::max(left, 0) / SlotPitch, std::min(right / SlotPitch + 1, ButtonBar.ButtonCount)};
}

BubblePlace PlaceBubble(int slot, std::int32_t width, std::int32_t height, const BubbleSpace& space)
{
    BubblePlace place = {SlotLeft(slot) + space.BarLeft + ButtonWidth / 2, space.BarBottom + 1};
    place.Left = std::max(std::min(place.Left, space.ScreenWidth - width), 0);
    if (place.Top + height > space.ScreenHeight) {
        place.Top = space.BarTop - height;
    }
    return place;
}
