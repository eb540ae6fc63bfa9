#include "buttonbar/button_order.h"

#include "base/text.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

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

void SetButtonOrder(const int* buttons, int count, ButtonBarState& bar)
{
    std::fill(std::begin(bar.Position), std::end(bar.Position), std::uint16_t{0});
    std::fill(std::begin(bar.ButtonOrder), std::end(bar.ButtonOrder), std::int16_t{0});
    bar.ButtonCount = std::min(count, ButtonTotal);
    for (int slot = 0; slot < bar.ButtonCount; ++slot) {
        PlaceButton(bar, slot, buttons[slot]);
    }
}

void FormatButtonOrder(const ButtonBarState& bar, char (&text)[ButtonTextSize])
{
    text[0] = '\0';
    for (int slot = 0; slot < bar.ButtonCount; ++slot) {
        char digits[8];
        snprintf(digits, sizeof digits, "%02i", bar.ButtonOrder[slot]);
        AppendText(text, digits);
    }
}
