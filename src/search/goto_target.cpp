#include "search/goto_target.h"

#include "document/document_state.h"
#include "view/view_state.h"

#include <algorithm>
#include <cstdlib>

GotoState Goto;

bool FindGotoTarget(const char* text, bool hexMode, std::int32_t& topLine)
{
    const long long number = strtoll(text, nullptr, hexMode ? 16 : 10);
    if (!hexMode) {
        topLine = static_cast<std::int32_t>(std::clamp<long long>(number, 1, std::max(Document.LineCount, 1))) - 1;
        return true;
    }
    if (number < 0 || number > Document.FileSize) {
        return false;
    }
    topLine = static_cast<std::int32_t>(number / HexRowBytes);
    return true;
}
