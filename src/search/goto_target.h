// Where Goto goes.
#pragma once

#include "search/text_history.h"

#include <cstddef>
#include <cstdint>

// At most 10 characters.
constexpr std::size_t GotoTextSize = 11;

struct GotoState {
    char GotoText[GotoTextSize] = ""; // entered last; forgotten when the mode changes
    RecentTexts<GotoTextSize> Lines;
    RecentTexts<GotoTextSize> Offsets;
};

extern GotoState Goto;

// The top line that text asks for, as far as it is a number: a line number, taken to the nearest line there
// is, or in hex mode an offset in hexadecimal. False for an offset outside the file; just behind its last
// byte still counts as inside.
bool FindGotoTarget(const char* text, bool hexMode, std::int32_t& topLine);
