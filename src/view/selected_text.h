// What is selected, as it is copied and saved: part by part, one for each line or hex row.
#pragma once

#include <cstdint>

struct SelectedPart {
    const char* Text; // valid until the next part, or anything else of the document, is read
    std::int32_t Length;
    bool IsLast;     // of the last line
    bool IsCutShort; // not the whole line
};

// Lines (or hex rows) from 1 that are still to be taken; over when there is none. Nothing else of the
// document may be read until it is over.
struct SelectionWalk {
    std::int32_t NextLine;
    std::int32_t LastLine;
    SelectedPart Held; // of NextLine, read but not taken yet; without a Text it is not read
};

SelectionWalk StartSelectionWalk();

inline bool IsOver(const SelectionWalk& walk)
{
    return walk.NextLine > walk.LastLine;
}

// Reads the part of the next line, which there has to be; the walk stays where it is. A byte that would end a line
// or a text elsewhere (zero, CR, LF, in hex mode TAB) is a space.
SelectedPart ReadSelectedPart(const SelectionWalk& walk);

// No part is longer than that many bytes.
constexpr std::int32_t MaxPartBytes = 2048;

// What the parts are gathered for says which of them are followed by CR LF.
enum class GatherFor {
    File,      // all but the last
    Clipboard, // all but the partial end of the last line
};

// Takes parts for as long as they and a line end fit limit bytes (at least MaxPartBytes + 2) and puts them into
// buffer, which has room for limit. Returns how many bytes they are. What did not fit is taken by the next call.
std::int32_t GatherSelection(SelectionWalk& walk, GatherFor target, char* buffer, std::int32_t limit);
