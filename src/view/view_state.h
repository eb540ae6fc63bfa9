// What the view shows and how: mode, scroll position, font, selection, found run and lock.
//
// Text lines count from 1; a hex row is always 16 bytes and hex row r, from 0, starts at byte 16 * r.
// Selection and highlight name hex rows from 1, like lines.
#pragma once

#include <cstdint>

constexpr std::int32_t TextMargin = 8; // pixels left of column LeftColumn in text mode

// Characters of a hex row that are drawn.
constexpr std::int32_t HexRowShown = 76;
constexpr std::int32_t HexRowBytes = 16;

constexpr std::int32_t MostLockRows = 10; // headings that can be locked

struct ViewState {
    bool HexMode = false;
    bool FileShown = false; // a document is loaded and may be painted
    bool Printing = false;  // a print job is running; painting is suppressed

    // Scroll position. In text mode screen row r, from 0, of the scrolling part shows line
    // TopLine + r + 1; in hex mode it shows hex row TopLine + r.
    std::int32_t TopLine = 0;
    std::int32_t LeftColumn = 0;  // first column shown; in hex mode cells the row is shifted left
    std::int32_t MaxTop = 0;      // the largest TopLine
    std::int32_t MaxLeft = 0;     // the largest LeftColumn
    std::int32_t ScrollScale = 1; // lines per scroll bar position

    // Pixels.
    std::int32_t ClientWidth = 0;
    std::int32_t ClientHeight = 0;
    std::int32_t CharWidth = 8; // average of the view font
    std::int32_t MaxCharWidth = 8;
    std::int32_t LineHeight = 16;
    std::int32_t LockedHeight = 0; // band at the top that never scrolls vertically

    bool FontIsFixed = true;
    bool FontIsAnsi = true;
    bool SubstituteFixedFont = false; // the stock fixed font stands in for a proportional one

    // Selection: anchor end A and moving end B; both lines 0 = none.
    std::int32_t SelLineA = 0;
    std::int32_t SelLineB = 0;
    std::int32_t SelAnchorLine = 0; // the line SelColA lies on
    std::int32_t SelColA = 0;
    std::int32_t SelColB = 0;

    // The found run, or the selected run of the row painted last.
    std::int32_t HiliteLine = 0; // 0 = none
    std::int32_t HiliteCol = 0;  // column, or byte within the hex row
    std::int32_t HiliteLen = 0;  // characters, or bytes

    // The lock; no lock when all four are 0.
    std::int32_t LockTopLine = 0; // the line above the first locked row
    std::int32_t LockRows = 0;
    std::int32_t LockColStart = 0; // first column shown in the locked columns
    std::int32_t LockCols = 0;

    bool PickingLock = false; // headings are being chosen; ended when another document or mode comes

    // Mouse and scroll gestures.
    bool Selecting = false;
    bool AutoScrollTimer = false;
    std::int32_t LastMouseX = 0;
    bool BeepedAtEnd = false;
    bool RightDoubleClicked = false;

    // Two remembered top lines and the current one, toggled by a right double-click.
    std::int32_t MarkCurrent = 0;
    std::int32_t MarkA = 0;
    std::int32_t MarkB = 0;
};

extern ViewState View;

// Colour regions, in the order of their settings.
enum ColourRegion { OutputRegion, RulerRegion, MarkedRegion, StatusRegion, LockedRegion, ColourRegionCount };

// Settings, as read from the settings file: unchecked, so their users bound them.
struct ViewSettings {
    std::int32_t Foreground[ColourRegionCount] = {7, 0, 0, 0, 7}; // palette indices
    std::int32_t Background[ColourRegionCount] = {1, 6, 6, 8, 9};
    std::int32_t Ruler = 0;
    std::int32_t StatusLine = 1;
    std::int32_t ButtonBar = 1;
    std::int32_t ScrollBars = 1;
    std::int32_t OemToAnsi = 0;
    std::int32_t FontSize = -13; // logical height, held negative
    std::int32_t FontWeight = 400;
    std::int32_t FontItalic = 0;
    char FontName[32] = "System";
    bool EbcdicToAscii = false; // for the run only; no key
};

extern ViewSettings ViewOptions;

bool AnyLock();

// There is no found run any more.
void ForgetHighlight();

// Whole rows that fit the view.
std::int32_t RowsOnScreen();

// Rows that the view shows, the last one in part.
std::int32_t RowsTouched();

// 16-byte rows of the document.
std::int32_t HexRowCount();

// Lines in text mode, rows in hex mode.
std::int32_t RowCount();
