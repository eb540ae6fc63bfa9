#include "search/search_hex.h"

#include "document/candidates.h"
#include "document/document_state.h"
#include "document/line_index.h"
#include "document/port.h"
#include "search/find_bytes.h"
#include "view/view_state.h"

#include <algorithm>

namespace {

constexpr std::int32_t WindowRows = 32;
constexpr std::int32_t WindowBytes = WindowRows * HexRowBytes;

// Bytes of the file that are compared at once, the first foldedCount of them in capitals unless case matters.
LineText ReadWindow(std::int32_t offset, std::int32_t count, std::int32_t foldedCount)
{
    SeekLine(0, offset);
    const LineText window = ReadBytes(count);
    if (!Find.MatchCase) {
        ToUpperCase(window.Text, std::min(foldedCount, window.Length));
    }
    return window;
}

void TakeHit(std::int32_t offset, std::int32_t length)
{
    Find.FoundLine = offset / HexRowBytes + 1;
    Find.FoundCol = offset % HexRowBytes;
    Find.FoundLen = length;
}

// Each window begins in the row that the last one could not finish, so that a match may lie across both.
bool SearchForwards(const SearchPattern& pattern, const Needle& needle, std::int32_t offset)
{
    const std::int32_t length = pattern.Length;
    for (;;) {
        if (needle.Length > 0) {
            offset = NextCandidateOffset(needle, offset);
        }
        if (offset > Document.FileSize - length) {
            return false;
        }
        const std::int32_t count = WindowBytes - offset % HexRowBytes;
        const LineText window = ReadWindow(offset, count, count);
        const std::int32_t hit = FindInBuffer(window.Text, window.Length, pattern.Bytes, length, 0, false);
        if (hit >= 0) {
            TakeHit(offset + hit, length);
            return true;
        }
        if (window.Length < length) {
            return false; // the file has shrunk
        }
        offset += window.Length - length + 1;
    }
}

bool SearchBackwards(const SearchPattern& pattern, const Needle& needle, std::int32_t offset)
{
    const std::int32_t length = pattern.Length;
    while (length <= offset) {
        const std::int32_t row = offset / HexRowBytes;
        const std::int32_t firstRow = std::max(row - (WindowRows - 1), 0);
        const std::int32_t start = firstRow * HexRowBytes;
        const std::int32_t before = offset - start;
        // The byte at offset itself may end a match, and is there, but not in capitals.
        const LineText window = ReadWindow(start, (row - firstRow + 1) * HexRowBytes, before);
        if (window.Length < before) {
            return false; // the file has shrunk
        }
        const std::int32_t hit = FindInBuffer(window.Text, window.Length, pattern.Bytes, length, before, true);
        if (hit >= 0) {
            TakeHit(start + hit, length);
            return true;
        }
        offset = start + length - 1;
        if (needle.Length > 0 && length <= offset) {
            offset = PreviousCandidateOffset(needle, offset);
        }
    }
    return false;
}

} // namespace

bool SearchHexRows(const SearchPattern& pattern, std::int32_t row, std::int32_t column)
{
    const std::int64_t offset = (static_cast<std::int64_t>(row) - 1) * HexRowBytes + column;
    if (offset < 0 || offset > Document.FileSize) {
        return false;
    }
    const Needle needle = NeedleForBytes(pattern);
    if (!needle.Possible) {
        return false;
    }
    const auto start = static_cast<std::int32_t>(offset);
    return Find.Backwards ? SearchBackwards(pattern, needle, start) : SearchForwards(pattern, needle, start);
}
