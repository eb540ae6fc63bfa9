// Where the frame's children lie: button bar, ruler, view and status line from top to bottom.
#pragma once

#include <cstdint>

struct FrameLayout {
    std::int32_t BarHeight; // pixels; 0 = hidden
    std::int32_t RulerHeight;
    std::int32_t ViewTop;
    std::int32_t ViewHeight;
    std::int32_t StatusTop;
    std::int32_t StatusHeight;
};

// The layout of a client area of the given height; statusHeight is what the status line needs.
FrameLayout LayOutFrame(std::int32_t clientHeight, std::int32_t statusHeight);
