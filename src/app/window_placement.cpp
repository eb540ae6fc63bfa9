#include "app/window_placement.h"

#include <algorithm>
#include <cstdlib>

namespace {

std::int32_t ToCoordinate(long long number)
{
    return static_cast<std::int32_t>(std::clamp<long long>(number, INT32_MIN, INT32_MAX));
}

WindowRectangle ClampToScreen(const WindowRectangle& r, const ScreenMeasures& screen)
{
    return {std::clamp(r.Left, 0, screen.Width), std::clamp(r.Top, 0, screen.Height),
            std::clamp(r.Width, 0, screen.Width), std::clamp(r.Height, 0, screen.Height)};
}

} // namespace

WindowRectangle DefaultRectangle(const ScreenMeasures& screen)
{
    return {0, 0, screen.Width, screen.Height - screen.IconHeight - 2 * screen.CaptionHeight};
}

bool ParseRectangle(const char* text, WindowRectangle& rectangle)
{
    std::int32_t numbers[4];
    for (std::int32_t& number : numbers) {
        char* end = nullptr;
        number = ToCoordinate(strtoll(text, &end, 10));
        if (end == text) {
            return false;
        }
        text = end;
    }
    rectangle = {numbers[0], numbers[1], numbers[2], numbers[3]};
    return true;
}

WindowPlacement PlaceWindow(const char* saved, bool hasSection, const char* commandLine, const ScreenMeasures& screen)
{
    WindowRectangle wanted{0, 0, 0, 0};
    if (!hasSection) {
        ParseRectangle(commandLine, wanted);
    } else if (!ParseRectangle(saved, wanted)) {
        wanted = DefaultRectangle(screen);
    }
    const WindowRectangle r = ClampToScreen(wanted, screen);
    const bool whole = r.Left == 0 && r.Top == 0 && r.Width == screen.Width && r.Height == screen.Height;
    const bool nothing = r.Left == 0 && r.Top == 0 && r.Width == 0 && r.Height == 0;
    // A window without extent gets the default rectangle, and so does one that fills the screen: it is
    // what a minimised or maximised window is restored to.
    const bool useDefault = r.Width + r.Height == 0 || whole;
    return {useDefault ? DefaultRectangle(screen) : r, whole, nothing};
}
