// Making the screen font larger or smaller step by step.
#pragma once

#include <cstdint>

enum class FontStep { Larger, Smaller };

// The size (a logical height, held negative) one step from size, on a screen of logPixelsY pixels an inch. False,
// and no other size, at the end of what steps lead to: 6 to 32 points.
bool StepFontSize(std::int32_t& size, FontStep step, std::int32_t logPixelsY);
