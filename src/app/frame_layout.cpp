#include "app/frame_layout.h"

#include "view/view_state.h"

#include <algorithm>

namespace {

constexpr std::int32_t ButtonBarHeight = 34;
constexpr std::int32_t InchRulerHeight = 21;

std::int32_t RulerHeight()
{
    // The dump's columns have no use for a ruler.
    if (View.HexMode || ViewOptions.Ruler == 0) {
        return 0;
    }
    return View.FontIsFixed ? View.LineHeight : InchRulerHeight;
}

} // namespace

FrameLayout LayOutFrame(std::int32_t clientHeight, std::int32_t statusHeight)
{
    FrameLayout layout;
    layout.BarHeight = ViewOptions.ButtonBar != 0 ? ButtonBarHeight : 0;
    layout.RulerHeight = RulerHeight();
    layout.StatusHeight = ViewOptions.StatusLine != 0 ? statusHeight : 0;
    layout.ViewTop = layout.BarHeight + layout.RulerHeight;
    layout.ViewHeight = std::max(clientHeight - layout.ViewTop - layout.StatusHeight, 0);
    layout.StatusTop = clientHeight - layout.StatusHeight;
    return layout;
}
