#include "view/palette.h"

std::uint32_t Palette[PaletteSize] = {
    0x000000, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF,
    0xC0C0C0, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080, 0x808080,
};

namespace {

std::int32_t BoundIndex(std::int32_t index, std::int32_t defaultIndex)
{
    return index >= 0 && index < PaletteSize ? index : defaultIndex;
}

const ViewSettings Defaults;

} // namespace

std::int32_t ForegroundIndex(ColourRegion region)
{
    return BoundIndex(ViewOptions.Foreground[region], Defaults.Foreground[region]);
}

std::int32_t BackgroundIndex(ColourRegion region)
{
    return BoundIndex(ViewOptions.Background[region], Defaults.Background[region]);
}

std::uint32_t ForegroundColour(ColourRegion region)
{
    return Palette[ForegroundIndex(region)];
}

std::uint32_t BackgroundColour(ColourRegion region)
{
    return Palette[BackgroundIndex(region)];
}
