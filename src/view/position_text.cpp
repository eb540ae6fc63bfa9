#include "view/position_text.h"

#include "base/format.h"
#include "base/text.h"
#include "document/document_state.h"
#include "document/file_list.h"
#include "view/view_state.h"

#include <algorithm>
#include <cstdio>

namespace {

std::int64_t HexPercent(std::int64_t position)
{
    // From here on the size is divided first, which rounds otherwise.
    constexpr std::int32_t LargeFile = 12000001;
    if (Document.FileSize < 1) {
        return 100;
    }
    return Document.FileSize < LargeFile ? position * 100 / Document.FileSize : position / (Document.FileSize / 100);
}

} // namespace

std::int32_t PositionPercent()
{
    const std::int64_t last = static_cast<std::int64_t>(RowsOnScreen()) + View.TopLine + 1;
    std::int64_t percent = 100;
    if (View.HexMode) {
        percent = HexPercent(last * HexRowBytes);
    } else if (last <= Document.LineCount) {
        percent = last * 100 / Document.LineCount;
    }
    return static_cast<std::int32_t>(std::min<std::int64_t>(percent, 100));
}

void FormatPosition(const PositionFormats& formats, char (&text)[StatusTextSize])
{
    text[0] = '\0';
    if (!View.FileShown) {
        return;
    }
    char line[GroupedSize];
    FormatGrouped(View.TopLine + 1, line);
    // The formats are texts of this program's own string table.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    snprintf(text, sizeof text, formats.LineFormat, line, static_cast<int>(View.LeftColumn + 1),
             static_cast<int>(PositionPercent()));
    if (FileList.ListTotal > 0) {
        char file[StatusTextSize];
        snprintf(file, sizeof file, formats.FileFormat, static_cast<int>(FileList.ListPosition),
                 static_cast<int>(FileList.ListTotal));
        AppendText(text, file);
    }
#pragma GCC diagnostic pop
}
