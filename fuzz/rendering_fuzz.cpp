// Rows of text and hex as they are drawn: tabs, EBCDIC, hex dump, selected and found runs, scrolling.
//
// Input: numbers for the view's state, then the bytes of a line.
#include "document/block_cache.h"
#include "document/document_state.h"
#include "document/line_index.h"
#include "fuzz_input.h"
#include "support/document_setup.h"
#include "view/column.h"
#include "view/font_metrics.h"
#include "view/hex_row.h"
#include "view/position_text.h"
#include "view/ruler_marks.h"
#include "view/scroll.h"
#include "view/selection.h"
#include "view/text_row.h"
#include "view/translate.h"
#include "view/view_state.h"

#include <algorithm>
#include <cstring>

namespace {

std::int32_t Within(std::int32_t number, std::int32_t low, std::int32_t high)
{
    const std::int64_t span = static_cast<std::int64_t>(high) - low + 1;
    const std::int64_t offset = (static_cast<std::int64_t>(number) % span + span) % span;
    return static_cast<std::int32_t>(low + offset);
}

// A view as it may come to be: fonts are mended, a lock is bounded when it is made, the rest is anything.
void TakeView(FuzzInput& input)
{
    View = ViewState{};
    View.FileShown = true;
    View.HexMode = input.Byte() % 2 != 0;
    View.ClientWidth = static_cast<std::int32_t>(input.Number16() % 32768);
    View.ClientHeight = static_cast<std::int32_t>(input.Number16() % 32768);
    const FontMeasures font = MendMeasures({Within(input.Number32(), -10, 1000), Within(input.Number32(), -10, 4000),
                                            Within(input.Number32(), -10, 1000)});
    View.CharWidth = font.CharWidth;
    View.MaxCharWidth = font.MaxCharWidth;
    View.LineHeight = font.LineHeight;
    View.LockColStart = Within(input.Number32(), 0, 1024);
    View.LockCols = Within(input.Number32(), 0, 1024);
    View.LockRows = Within(input.Number32(), 0, 10);
    View.LockTopLine = Within(input.Number32(), 0, std::max(Document.LineCount - 1, 0));
    View.TopLine = Within(input.Number32(), 0, INT32_MAX);
    View.LeftColumn = Within(input.Number32(), 0, 4096);
    View.SelLineA = Within(input.Number32(), 0, INT32_MAX);
    View.SelLineB = Within(input.Number32(), 0, INT32_MAX);
    View.SelAnchorLine = View.SelLineA;
    View.SelColA = Within(input.Number32(), 0, 4096);
    View.SelColB = Within(input.Number32(), 0, 4096);
    View.HiliteLine = Within(input.Number32(), 0, INT32_MAX);
    View.HiliteCol = Within(input.Number32(), 0, 4096);
    View.HiliteLen = Within(input.Number32(), 0, 4096);
}

void CheckScrolling(FuzzInput& input)
{
    const ScrollBarValues values = MeasureScrolling();
    Require(View.MaxTop >= 0 && View.MaxLeft >= 0 && View.ScrollScale >= 1, "scroll limits");
    Require(View.TopLine <= std::max(View.MaxTop, View.LockTopLine), "the top is within the document");
    Require(values.VerticalMax <= 32000, "the bar has 32000 positions");
    const std::int32_t lowest = std::max(View.TopLine, View.LockTopLine);
    for (int i = 0; i < 4; ++i) {
        const int code = input.Byte() % 102;
        const ScrollStep step = VerticalStep(code, static_cast<std::int32_t>(input.Number16()), input.Number32());
        const std::int64_t top = static_cast<std::int64_t>(View.TopLine) + step.Distance;
        Require(top >= 0 && top <= std::max(View.MaxTop, lowest), "a step stays within the document");
        HorizontalStep(code, static_cast<std::int32_t>(input.Number16()));
    }
    Require(PositionPercent() <= 100 && PositionPercent() >= 0, "percent");
    char status[StatusTextSize];
    FormatPosition({"Line %s Col %i  %i%%", "  [File %i of %i]"}, status);
    char ruler[RulerLength + 1];
    FormatRuler(View.LeftColumn, ruler);
}

bool LiesWithin(ColumnRun run, std::int32_t length)
{
    return run.Start >= 0 && run.Length >= 0 && run.Start + run.Length <= length;
}

std::int32_t MeasureLine(void* context, std::int32_t count)
{
    return count * *static_cast<std::int32_t*>(context);
}

void CheckTextRow(std::int32_t line)
{
    const LineText text = ReadLineText(line);
    Require(text.Length >= 0 && text.Length <= LineBufferBytes && text.Text[text.Length] == '\0', "a line ends");
    Require(DocumentOptions.Ptabs == 0 || text.Length <= ExpandedLineBytes, "an expanded line is cut");
    Require(static_cast<std::int32_t>(strlen(text.Text)) == text.Length, "a line holds no zero");
    EbcdicToAscii(text.Text);
    Require(static_cast<std::int32_t>(strlen(text.Text)) == text.Length, "no byte is translated to a zero");
    ColoursOfLine(line);
    Require(LiesWithin(CutRun(SelectedRun(line, text.Length), text.Length), text.Length), "selected run");
    const ColumnRun found = CutRun({View.HiliteCol, View.HiliteLen}, text.Length);
    Require(LiesWithin(found, text.Length), "found run");
    for (const ColumnRun part : {LockedPart(text.Length), ScrolledPart(text.Length)}) {
        Require(part.Length == 0 || LiesWithin(part, text.Length), "part of a row");
        const ColumnRun shared = Overlap(found, part);
        Require(shared.Length == 0 || LiesWithin(shared, text.Length), "found run in a part");
    }
    const std::int32_t column = ColumnAtWidth(text.Length, View.LeftColumn, MeasureLine, &View.CharWidth);
    Require(column >= 0 && column <= text.Length, "a column of the line");
}

void CheckHexRow(std::int32_t row, bool translate)
{
    SeekLine(0, row * HexRowBytes);
    const LineText bytes = ReadBytes(HexRowBytes);
    Require(bytes.Length <= HexRowBytes, "a row of bytes");
    char text[HexRowLength + 1];
    FormatHexRow(bytes.Text, bytes.Length, row, translate, text);
    Require(strlen(text) <= HexRowLength, "a row ends");
    for (std::int32_t distance = 0; distance < 4; ++distance) {
        const ColumnRun run = HexHighlight(distance);
        Require(run.Length == 0 || (run.Start >= 10 && run.Start + run.Length <= 57),
                "only hex digits are highlighted");
    }
    IsHexRowSelected(row);
    IsHexRowHighlighted(row);
}

void CheckBands(FuzzInput& input)
{
    const std::int32_t y = static_cast<std::int32_t>(input.Number16() % 32768);
    const LineBand rows = HexRowsInBand(y, y + 100);
    Require(rows.First > rows.Last || (rows.First >= 0 && rows.Last < HexRowCount()), "rows of the document");
    Require(LineAtPoint(y) <= RowCount() && LineBelowView() <= RowCount() && LineAboveView() <= RowCount(),
            "lines of the document");
    OnScreen(ChangedLines(View.SelLineA, View.SelLineB, input.Number32() & INT32_MAX));
    LineOfRow(y);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    StartDocuments(input.Byte() % 6);
    DocumentOptions.Ptabs = input.Byte() % 2;
    DocumentOptions.TabSize = input.Number32();
    DocumentOptions.FixedLineLen = input.Number32();
    DocumentOptions.MaxTextSize = input.Byte() % 4 == 3 ? input.Number32() : 12;
    const bool translate = input.Byte() % 2 != 0;
    // The line's bytes are at the end of the input.
    FuzzInput numbers = input;
    for (int i = 0; i < 120; ++i) {
        input.Byte();
    }
    Bytes content;
    while (!input.AtEnd()) {
        content.push_back(input.Byte());
    }
    OpenBytes(content);
    TakeView(numbers);
    CheckScrolling(numbers);
    CheckBands(numbers);
    for (std::int32_t line = 1; line <= std::min(Document.LineCount, 20); ++line) {
        CheckTextRow(line);
    }
    for (std::int32_t row = 0; row <= std::min(HexRowCount(), 20); ++row) {
        CheckHexRow(row, translate);
    }
    FreeBuffers();
    Require(TestPort::LiveObjects() == 0 && TestPort::OpenFiles() == 0, "nothing is left behind");
    return 0;
}
