#include "view/font_metrics.h"

#include <algorithm>

FontMeasures MendMeasures(FontMeasures reported)
{
    constexpr std::int32_t UnknownWidth = 12;
    constexpr std::int32_t UnknownHeight = 8;
    FontMeasures mended = reported;
    if (mended.CharWidth <= 0) {
        mended.CharWidth = reported.MaxCharWidth > 0 ? reported.MaxCharWidth : UnknownWidth;
    }
    if (mended.MaxCharWidth <= 0) {
        mended.MaxCharWidth = mended.CharWidth;
    }
    if (mended.LineHeight <= 0) {
        mended.LineHeight = UnknownHeight;
    }
    return mended;
}

std::int32_t FontHeight(std::int32_t fontSize)
{
    constexpr std::int32_t LargestHeight = 400;
    return std::clamp(fontSize, -LargestHeight, LargestHeight);
}

std::int32_t HeldFontSize(std::int32_t size)
{
    return size > 0 ? -size : std::max(size, -INT32_MAX); // so that it can be turned positive again
}
