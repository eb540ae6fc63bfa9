#include "buttonbar/button_order.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

ButtonBarState ButtonBar;

namespace {

constexpr int DefaultButtons = 17;

void PlaceButton(ButtonBarState& bar, int slot, int button)
{
    bar.ButtonOrder[slot] = static_cast<std::int16_t>(button);
    bar.Position[button] = static_cast<std::uint16_t>(slot + 1);
}

} // namespace

void ParseButtonOrder(const char* text, ButtonBarState& bar)
{
    const int count = static_cast<int>(std::min<std::size_t>(strlen(text) / 2, ButtonTotal));
    bar.ButtonCount = count != 0 ? count : DefaultButtons;
    for (int slot = 0; slot < bar.ButtonCount; ++slot) {
        if (count == 0) {
            PlaceButton(bar, slot, slot);
            continue;
        }
        const char digits[3] = {text[2 * slot], text[2 * slot + 1], '\0'};
        const int button = atoi(digits);
        if (button >= 0 && button < ButtonTotal) {
            PlaceButton(bar, slot, button);
        }
    }
}
