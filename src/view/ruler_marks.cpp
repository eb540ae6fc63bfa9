#include "view/ruler_marks.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

constexpr int Groups = 20;
constexpr int GroupLength = 10;

} // namespace

void FormatRuler(std::int32_t leftColumn, char (&text)[RulerLength + 1])
{
    std::int32_t base = leftColumn / GroupLength * GroupLength;
    std::int32_t tens = leftColumn / GroupLength + 1;
    if (base > 9) {
        base -= GroupLength;
        --tens;
    }
    // Long enough for the 200 characters from the left column on: it is at most 19 beyond base.
    char marks[1 + (Groups + 2) * (GroupLength + 8)] = " ";
    char* end = marks + 1;
    for (int group = 0; group < Groups + 2; ++group, ++tens) {
        end += snprintf(end, GroupLength + 8, "....*%5i", static_cast<int>(tens));
    }
    std::replace(marks + 1, end, ' ', '.');
    memcpy(text, marks + (leftColumn - base), RulerLength);
    text[RulerLength] = '\0';
}

std::int32_t InchTickHeight(std::int32_t tick)
{
    constexpr std::int32_t Heights[] = {20, 3, 5, 3, 9, 3, 5, 3, 16, 3, 5, 3, 9, 3, 5, 3};
    return Heights[tick % 16];
}
