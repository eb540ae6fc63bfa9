// What the tests have in common: a clean settings file, and the words they are written in.
#pragma once

#include "resources/ids.h"
#include "support/program.h"
#include "support/settings.h"
#include "support/test_files.h"
#include "support/wait.h"

#include <gtest/gtest.h>

class UiTest : public testing::Test {
protected:
    void SetUp() override { RemoveSettings(); }
    void TearDown() override { RemoveSettings(); }
};

// A window of known size with a fixed-pitch font.
extern const char FixedFont[];

// The metrics of that font, or of another.
TEXTMETRICA MeasureFont(const char* face = "Courier", int height = -15);

inline int CellWidth()
{
    return MeasureFont().tmAveCharWidth;
}

inline int CellHeight()
{
    return MeasureFont().tmHeight + MeasureFont().tmExternalLeading;
}

// Rows that fit the view with that font.
inline int RowsOf(const Program& program)
{
    return ClientSize(program.View()).cy / CellHeight();
}

// The private message that sets the view's top line, and what it is sent to itself with.
inline void SetTop(const Program& program, int line)
{
    program.Send(program.View(), WM_USER + 12, 99, line);
}

inline void Scroll(const Program& program, UINT message, int code, int thumb = 0)
{
    program.Send(program.View(), message, MAKEWPARAM(code, thumb));
}

inline void Key(const Program& program, WPARAM key)
{
    program.Send(program.Frame(), WM_KEYDOWN, key);
}

// Screen colours as pixels are read, 0xRRGGBB.
constexpr std::uint32_t Blue = 0x0000FF;
constexpr std::uint32_t White = 0xFFFFFF;
constexpr std::uint32_t Yellow = 0xFFFF00;
constexpr std::uint32_t Black = 0x000000;
constexpr std::uint32_t DarkBlue = 0x000080;
constexpr std::uint32_t LightGrey = 0xC0C0C0;
