#include "view/paint_view.h"

#include "document/document_state.h"
#include "view/column.h"
#include "view/frame_windows.h"
#include "view/gdi_holders.h"
#include "view/hex_row.h"
#include "view/palette.h"
#include "view/text_row.h"
#include "view/translate.h"
#include "view/view_state.h"

#include <algorithm>
#include <cstring>

namespace {

void SetColours(HDC dc, RowColours colours)
{
    constexpr ColourRegion Regions[] = {OutputRegion, MarkedRegion, LockedRegion};
    const ColourRegion region = Regions[static_cast<int>(colours)];
    SetTextColor(dc, ForegroundColour(region));
    SetBkColor(dc, BackgroundColour(region));
}

std::int32_t TextWidth(HDC dc, const char* text, std::int32_t count)
{
    SIZE size = {};
    if (count > 0) {
        GetTextExtentPoint32A(dc, text, count, &size);
    }
    return size.cx;
}

// Writes count characters at x on a background that reaches from left to right.
void DrawOpaque(HDC dc, std::int32_t x, std::int32_t y, std::int32_t left, std::int32_t right, const char* text,
                std::int32_t count, UINT options = 0)
{
    const RECT area = {left, y, right, y + View.LineHeight};
    ExtTextOutA(dc, x, y, ETO_OPAQUE | options, &area, text, static_cast<UINT>(count), nullptr);
}

void FillRow(HDC dc, std::int32_t y)
{
    const RECT row = {0, y, View.ClientWidth, y + View.LineHeight};
    FillRect(dc, &row, Drawing.OutputBrush);
}

// Draws a run of the text that begins at x0 in marked colours; the normal ones are set afterwards. A run
// that begins at edgeX is marked from the window's edge on.
void DrawRun(HDC dc, std::int32_t x0, std::int32_t y, const char* text, ColumnRun run, std::int32_t edgeX)
{
    if (run.Length > 0) {
        const std::int32_t x = x0 + TextWidth(dc, text, run.Start);
        const std::int32_t width = TextWidth(dc, text + run.Start, run.Length);
        SetColours(dc, RowColours::Marked);
        DrawOpaque(dc, x, y, x == edgeX ? 0 : x, x + width, text + run.Start, run.Length);
    }
    SetColours(dc, RowColours::Normal);
}

// The run HiliteCol/HiliteLen of a text line.
void PaintTextHighlight(HDC dc, std::int32_t x0, std::int32_t y, const LineText& line)
{
    DrawRun(dc, x0, y, line.Text, CutRun({View.HiliteCol, View.HiliteLen}, line.Length), TextMargin);
}

// The selected run shares HiliteCol/HiliteLen with the found one: painting it overwrites them.
void PaintSelectionRun(HDC dc, std::int32_t x0, std::int32_t y, const LineText& line, std::int32_t number)
{
    const ColumnRun run = SelectedRun(number, line.Length);
    View.HiliteCol = run.Start;
    View.HiliteLen = run.Length;
    PaintTextHighlight(dc, x0, y, line);
}

void PaintWholeLine(HDC dc, std::int32_t y, const LineText& line, std::int32_t number)
{
    const std::int32_t x0 = TextMargin - View.CharWidth * View.LeftColumn;
    const std::int32_t textEnd = std::max(x0 + TextWidth(dc, line.Text, line.Length), 0);
    SetColours(dc, ColoursOfLine(number));
    DrawOpaque(dc, x0, y, 0, textEnd, line.Text, line.Length);
    if (textEnd < View.ClientWidth) {
        DrawOpaque(dc, textEnd, y, textEnd, View.ClientWidth, "", 0);
    }
    if (IsSelectionEnd(number)) {
        PaintSelectionRun(dc, x0, y, line, number);
    }
    if (number == View.HiliteLine) {
        PaintTextHighlight(dc, x0, y, line);
    }
}

// The found run within one part of a line with locked columns; the part's columns begin at x.
void PaintPartHighlight(HDC dc, std::int32_t x, std::int32_t y, const LineText& line, ColumnRun part)
{
    const ColumnRun run = Overlap({View.HiliteCol, View.HiliteLen}, part);
    if (run.Length > 0) {
        const std::int32_t left = x + (run.Start - part.Start) * View.CharWidth;
        SetColours(dc, RowColours::Marked);
        DrawOpaque(dc, left, y, left, left + run.Length * View.CharWidth, line.Text + run.Start, run.Length,
                   ETO_CLIPPED);
    }
}

void PaintLockedLine(HDC dc, std::int32_t y, const LineText& line, std::int32_t number)
{
    const ColumnRun locked = LockedPart(line.Length);
    const ColumnRun scrolled = ScrolledPart(line.Length);
    const std::int32_t border = TextMargin + View.LockCols * View.CharWidth;

    SetColours(dc, RowColours::Locked);
    DrawOpaque(dc, TextMargin, y, 0, border, line.Text + CutRun(locked, line.Length).Start, locked.Length);
    SetColours(dc, IsLockedLine(number) ? RowColours::Locked : RowColours::Normal);
    DrawOpaque(dc, border, y, border, View.ClientWidth, line.Text + CutRun(scrolled, line.Length).Start,
               scrolled.Length);
    if (number == View.HiliteLine) {
        PaintPartHighlight(dc, TextMargin, y, line, locked);
        PaintPartHighlight(dc, border, y, line, scrolled);
    }
}

void PaintTextRow(HDC dc, std::int32_t y, std::int32_t row)
{
    const std::int64_t number = LineOfRow(row);
    if (number > Document.LineCount) {
        FillRow(dc, y);
        return;
    }
    const std::int32_t lineNumber = static_cast<std::int32_t>(number);
    const LineText line = ReadDisplayLine(lineNumber);
    if (View.LockCols > 0) {
        PaintLockedLine(dc, y, line, lineNumber);
    } else {
        PaintWholeLine(dc, y, line, lineNumber);
    }
}

void PaintTextRows(HDC dc, std::int32_t top, std::int32_t bottom)
{
    if (!View.FileShown) {
        return;
    }
    for (std::int32_t row = top / View.LineHeight; row * View.LineHeight < bottom; ++row) {
        PaintTextRow(dc, row * View.LineHeight, row);
    }
}

void PaintHexRow(HDC dc, std::int32_t x, std::int32_t y, std::int32_t row)
{
    const LineText bytes = ReadBytes(HexRowBytes);
    char text[HexRowLength + 1];
    FormatHexRow(bytes.Text, bytes.Length, row, ViewOptions.EbcdicToAscii, text);
    SetColours(dc, IsHexRowSelected(row) ? RowColours::Marked : RowColours::Normal);
    DrawOpaque(dc, x, y, 0, View.ClientWidth, text, HexRowShown);
    if (IsHexRowHighlighted(row)) {
        constexpr std::int32_t NoEdge = INT32_MIN; // the digits never reach the window's edge
        DrawRun(dc, x, y, text, HexHighlight(row + 1 - View.HiliteLine), NoEdge);
    }
}

void PaintHexRows(HDC dc, std::int32_t top, std::int32_t bottom)
{
    std::int32_t y = top / View.LineHeight * View.LineHeight;
    if (View.FileShown && Document.FileSize > 0) {
        const LineBand rows = HexRowsInBand(top, bottom);
        const std::int32_t x = (1 - View.LeftColumn) * View.CharWidth;
        if (rows.First <= rows.Last) {
            SeekLine(0, rows.First * HexRowBytes);
        }
        for (std::int32_t row = rows.First; row <= rows.Last; ++row) {
            y = (row - View.TopLine) * View.LineHeight;
            PaintHexRow(dc, x, y, row);
            y += View.LineHeight;
        }
    }
    SetColours(dc, RowColours::Normal);
    for (; y < bottom; y += View.LineHeight) {
        DrawOpaque(dc, 0, y, 0, View.ClientWidth, "", 0);
    }
}

// The line that ColumnFromPoint measured last: a moving mouse mostly stays on one.
struct MeasuredLine {
    std::int32_t Number = 0; // 0 = none
    std::int32_t Length = 0;
    char Text[LineBufferBytes + 1] = "";
};

MeasuredLine Measured;

void MeasureLine(std::int32_t number)
{
    if (Measured.Number == number) {
        return;
    }
    const LineText line = ReadDisplayLine(number);
    memcpy(Measured.Text, line.Text, static_cast<std::size_t>(line.Length) + 1);
    Measured.Length = line.Length;
    Measured.Number = number;
}

std::int32_t MeasuredWidth(void* dc, std::int32_t count)
{
    return TextWidth(static_cast<HDC>(dc), Measured.Text, count);
}

} // namespace

LineText ReadDisplayLine(std::int32_t line)
{
    const LineText text = ReadLineText(line);
    if (ViewOptions.EbcdicToAscii) {
        EbcdicToAscii(text.Text);
    }
    if (ViewOptions.OemToAnsi != 0 && View.FontIsAnsi) {
        OemToCharA(text.Text, text.Text);
    }
    return text;
}

void PaintView(HWND view)
{
    PaintDc paint(view);
    if (View.Printing) {
        return;
    }
    if (paint.Erase() && !View.FileShown) {
        FillRect(paint, &paint.Area(), Drawing.OutputBrush);
    }
    SelectedObject font(paint, Drawing.ScreenFont);
    SetColours(paint, RowColours::Normal);
    if (View.HexMode) {
        PaintHexRows(paint, paint.Area().top, paint.Area().bottom);
    } else {
        PaintTextRows(paint, paint.Area().top, paint.Area().bottom);
    }
}

void ForgetMeasuredLine()
{
    Measured.Number = 0;
}

std::int32_t ColumnFromPoint(HWND view, std::int32_t line, std::int32_t x)
{
    if (View.HexMode || line < 1 || line > Document.LineCount) {
        return 0;
    }
    MeasureLine(line);
    const std::int32_t width = View.CharWidth * View.LeftColumn - TextMargin + x;
    if (width < TextMargin) {
        return 0;
    }
    WindowDc dc(view);
    SelectedObject font(dc, Drawing.ScreenFont);
    return ColumnAtWidth(Measured.Length, width, MeasuredWidth, static_cast<HDC>(dc));
}
