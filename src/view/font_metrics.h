// The measures of the screen font that the view computes with.
#pragma once

#include <cstdint>

struct FontMeasures {
    std::int32_t CharWidth;    // average, pixels
    std::int32_t MaxCharWidth; // pixels
    std::int32_t LineHeight;   // pixels
};

// Mends what a broken font reports, so that every measure is above 0: a zero width takes the other
// width, two zero widths become 12, a zero height becomes 8.
FontMeasures MendMeasures(FontMeasures reported);

// FontSize as a height to ask the system for: a hand-edited size that no screen could show is cut.
std::int32_t FontHeight(std::int32_t fontSize);

// -|size|, the way every font size is held.
std::int32_t HeldFontSize(std::int32_t size);
