// The buttons' pictures, pixel for pixel against a drawing of the tests' own.
#include "buttonbar/draw_button.h"

#include "buttonbar/button_order.h"
#include "buttonbar/buttons.h"
#include "harness/picture.h"
#include "harness/program.h"
#include "view/gdi_holders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <iterator>
#include <set>
#include <vector>

namespace {

constexpr int FaceBitmap = 1; // resource number
constexpr int CellWidth = 26;
constexpr int CellHeight = 21;
constexpr int BarHeight = 34;

// As in pictures, red first.
constexpr std::uint32_t Black = 0x000000;
constexpr std::uint32_t Grey = 0xC0C0C0;
constexpr std::uint32_t DarkGrey = 0x808080;
constexpr std::uint32_t White = 0xFFFFFF;
constexpr std::uint32_t Untouched = 0x123456; // no button has it

std::uint32_t& PixelOf(Picture& picture, int x, int y)
{
    return picture.Pixels[static_cast<std::size_t>(y * picture.Width + x)];
}

void Fill(Picture& picture, int x, int y, int width, int height, std::uint32_t colour)
{
    for (int row = y; row < y + height; ++row) {
        for (int column = x; column < x + width; ++column) {
            PixelOf(picture, column, row) = colour;
        }
    }
}

Picture Blank(int width, int height)
{
    return {width, height, std::vector<std::uint32_t>(static_cast<std::size_t>(width * height), Untouched)};
}

// The strip of faces as it stands in the program file.
Picture Strip()
{
    const HBITMAP bitmap = static_cast<HBITMAP>(
        LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(FaceBitmap), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
    EXPECT_NE(nullptr, bitmap);
    Picture strip = Drawn(ButtonTotal * CellWidth, CellHeight, [bitmap](HDC dc) {
        BitmapDc source(dc, bitmap);
        BitBlt(dc, 0, 0, ButtonTotal * CellWidth, CellHeight, source, 0, 0, SRCCOPY);
    });
    DeleteObject(bitmap);
    return strip;
}

Picture CellOf(Picture& strip, int button)
{
    Picture cell = Blank(CellWidth, CellHeight);
    for (int y = 0; y < CellHeight; ++y) {
        for (int x = 0; x < CellWidth; ++x) {
            PixelOf(cell, x, y) = PixelOf(strip, button * CellWidth + x, y);
        }
    }
    return cell;
}

void PutCell(Picture& picture, Picture& cell, int x, int y)
{
    for (int row = 0; row < CellHeight; ++row) {
        std::copy_n(&PixelOf(cell, 0, row), CellWidth, &PixelOf(picture, x, y + row));
    }
}

// Every pixel of a cell that is neither face nor highlight, in one colour.
void PutInk(Picture& picture, Picture& cell, int x, int y, std::uint32_t colour)
{
    for (int row = 0; row < CellHeight; ++row) {
        for (int column = 0; column < CellWidth; ++column) {
            const std::uint32_t pixel = PixelOf(cell, column, row);
            if (pixel != Grey && pixel != White) {
                PixelOf(picture, x + column, y + row) = colour;
            }
        }
    }
}

enum class Look { Raised, Pressed, Greyed };

class DrawnButton : public RunningProgram {
protected:
    DrawnButton() : BarBefore(ButtonBar), Faces(Strip())
    {
        std::copy(std::begin(ButtonTable), std::end(ButtonTable), std::begin(TableBefore));
        ButtonBar.ButtonCount = ButtonTotal;
        for (int button = 0; button < ButtonTotal; ++button) {
            ButtonBar.ButtonOrder[button] = static_cast<std::int16_t>(button);
            ButtonTable[button].Enabled = true;
        }
    }

    ~DrawnButton() override
    {
        std::copy(std::begin(TableBefore), std::end(TableBefore), std::begin(ButtonTable));
        ButtonBar = BarBefore;
    }

    Picture Expected(int slot, int button, Look look)
    {
        const int x = slot * 35;
        Picture picture = Blank(x + 40, BarHeight);
        Fill(picture, x + 1, 3, 32, 1, Black);
        Fill(picture, x + 1, 30, 32, 1, Black);
        Fill(picture, x, 4, 1, 26, Black);
        Fill(picture, x + 33, 4, 1, 26, Black);
        Fill(picture, x + 1, 4, 32, 26, Grey);
        Picture cell = CellOf(Faces, button);
        if (look == Look::Pressed) {
            Fill(picture, x + 1, 4, 1, 26, DarkGrey);
            Fill(picture, x + 1, 4, 32, 1, DarkGrey);
            PutCell(picture, cell, x + 5, 7);
            return picture;
        }
        Fill(picture, x + 1, 4, 1, 25, White);
        Fill(picture, x + 1, 4, 31, 1, White);
        Fill(picture, x + 32, 4, 1, 26, DarkGrey);
        Fill(picture, x + 1, 29, 32, 1, DarkGrey);
        Fill(picture, x + 31, 5, 1, 24, DarkGrey);
        Fill(picture, x + 2, 28, 30, 1, DarkGrey);
        PutCell(picture, cell, x + 4, 6);
        if (look == Look::Greyed) {
            PutInk(picture, cell, x + 5, 7, White);
            PutInk(picture, cell, x + 4, 6, DarkGrey);
        }
        return picture;
    }

    static Picture Actual(int slot, bool pressed)
    {
        const int width = slot * 35 + 40;
        return OnBlank(width, BarHeight, [=](HDC dc) { DrawButton(dc, slot, pressed); });
    }

    static Picture OnBlank(int width, int height, const std::function<void(HDC)>& draw)
    {
        return Drawn(width, height, [&](HDC dc) {
            const RECT all = {0, 0, width, height};
            const HBRUSH brush = CreateSolidBrush(RGB(0x12, 0x34, 0x56));
            FillRect(dc, &all, brush);
            DeleteObject(brush);
            draw(dc);
        });
    }

    ButtonBarState BarBefore;
    ButtonInfo TableBefore[ButtonTotal];
    Picture Faces;
};

} // namespace

TEST_F(DrawnButton, FacesStandInAStripOf16Colours)
{
    const HRSRC found = FindResourceA(nullptr, MAKEINTRESOURCEA(FaceBitmap), reinterpret_cast<LPCSTR>(RT_BITMAP));
    ASSERT_NE(nullptr, found);
    const void* const strip = LockResource(LoadResource(nullptr, found));
    ASSERT_NE(nullptr, strip);
    BITMAPINFOHEADER header;
    memcpy(&header, strip, sizeof header);
    EXPECT_EQ(624, header.biWidth);
    EXPECT_EQ(21, header.biHeight);
    EXPECT_EQ(4, header.biBitCount);
}

TEST_F(DrawnButton, FacesHaveTheStandardColoursOnly)
{
    const std::set<std::uint32_t> standard = {0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080,
                                              0x008080, 0xC0C0C0, 0x808080, 0xFF0000, 0x00FF00, 0xFFFF00,
                                              0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF};
    for (const std::uint32_t pixel : Faces.Pixels) {
        ASSERT_EQ(1u, standard.count(pixel)) << std::hex << pixel;
    }
}

TEST_F(DrawnButton, EveryFaceShowsSomethingAndNoTwoAreAlike)
{
    std::vector<Picture> cells;
    for (int button = 0; button < ButtonTotal; ++button) {
        Picture cell = CellOf(Faces, button);
        EXPECT_LE(2, ColoursIn(cell)) << button;
        Picture inked = cell;
        PutInk(inked, cell, 0, 0, Untouched);
        EXPECT_LE(20, DifferentPixels(inked, cell)) << button << " shows something when it is greyed, too";
        for (std::size_t other = 0; other < cells.size(); ++other) {
            EXPECT_NE(0, DifferentPixels(cells[other], cell)) << button << " and " << other;
        }
        cells.push_back(cell);
    }
}

TEST_F(DrawnButton, IsRaisedWithItsFace)
{
    for (int button = 0; button < ButtonTotal; ++button) {
        EXPECT_EQ(0, DifferentPixels(Expected(button, button, Look::Raised), Actual(button, false))) << button;
    }
}

TEST_F(DrawnButton, IsPressedWithItsFaceOnePixelRightAndDown)
{
    for (int button = 0; button < ButtonTotal; ++button) {
        EXPECT_EQ(0, DifferentPixels(Expected(button, button, Look::Pressed), Actual(button, true))) << button;
    }
}

TEST_F(DrawnButton, IsGreyedByEmbossingTheInkOfItsFace)
{
    for (int button = 0; button < ButtonTotal; ++button) {
        ButtonTable[button].Enabled = false;
        const Picture greyed = Actual(button, false);
        EXPECT_EQ(0, DifferentPixels(Expected(button, button, Look::Greyed), greyed)) << button;
        EXPECT_NE(0, DifferentPixels(Expected(button, button, Look::Raised), greyed)) << button;
    }
}

TEST_F(DrawnButton, HasTheFaceOfTheButtonInItsSlot)
{
    ButtonBar.ButtonOrder[0] = 23;
    ButtonBar.ButtonOrder[1] = 0;
    ButtonBar.ButtonOrder[2] = 7;
    ButtonTable[7].Enabled = false; // the button's, not the slot's
    EXPECT_EQ(0, DifferentPixels(Expected(0, 23, Look::Raised), Actual(0, false)));
    EXPECT_EQ(0, DifferentPixels(Expected(1, 0, Look::Pressed), Actual(1, true)));
    EXPECT_EQ(0, DifferentPixels(Expected(2, 7, Look::Greyed), Actual(2, false)));
}

// The colours of the context decide nothing, and stay as they are where a button is greyed.
TEST_F(DrawnButton, IsTheSameWhateverColoursTheContextHas)
{
    for (const bool enabled : {true, false}) {
        ButtonTable[0].Enabled = enabled;
        const Picture picture = OnBlank(40, BarHeight, [](HDC dc) {
            SetTextColor(dc, RGB(255, 0, 0));
            SetBkColor(dc, RGB(0, 255, 0));
            SetBkMode(dc, TRANSPARENT);
            DrawButton(dc, 0, false);
            EXPECT_EQ(RGB(255, 0, 0), GetTextColor(dc));
        });
        EXPECT_EQ(0, DifferentPixels(Expected(0, 0, enabled ? Look::Raised : Look::Greyed), picture)) << enabled;
    }
}

TEST_F(DrawnButton, FaceAloneIsDrawnWhereItIsWanted)
{
    for (const int button : {0, 11, 23}) {
        Picture expected = Blank(50, 40);
        Picture cell = CellOf(Faces, button);
        PutCell(expected, cell, 13, 9);
        const Picture actual = OnBlank(50, 40, [=](HDC dc) { DrawFace(dc, button, 13, 9); });
        EXPECT_EQ(0, DifferentPixels(expected, actual)) << button;
    }
}

TEST_F(DrawnButton, FillsExactlyTheRectangleAskedFor)
{
    Picture expected = Blank(20, 10);
    Fill(expected, 3, 2, 7, 5, 0xFF8001);
    const Picture actual = OnBlank(20, 10, [](HDC dc) { FillSolid(dc, 3, 2, 7, 5, RGB(0xFF, 0x80, 0x01)); });
    EXPECT_EQ(0, DifferentPixels(expected, actual));
}

TEST_F(DrawnButton, LeavesNoObjectBehind)
{
    Actual(0, false);
    const int before = FreeGdiObjects();
    for (int i = 0; i < 500; ++i) {
        ButtonTable[i % ButtonTotal].Enabled = i % 3 != 0;
        Actual(i % ButtonTotal, i % 3 == 1);
    }
    EXPECT_EQ(before, FreeGdiObjects());
}
