// The fixed palette of 16 colours that all regions choose from.
#pragma once

#include "view/view_state.h"

#include <cstdint>

constexpr int PaletteSize = 16;
constexpr int PaletteLightGrey = 8;

// 0x00BBGGRR. The frame replaces each by the nearest colour that the screen can show.
extern std::uint32_t Palette[PaletteSize];

// A region's palette indices. One that a hand-edited settings file put out of range counts as the region's
// default.
std::int32_t ForegroundIndex(ColourRegion region);
std::int32_t BackgroundIndex(ColourRegion region);

// And the colours they stand for.
std::uint32_t ForegroundColour(ColourRegion region);
std::uint32_t BackgroundColour(ColourRegion region);
