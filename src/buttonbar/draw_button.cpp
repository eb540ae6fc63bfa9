#include "buttonbar/draw_button.h"

#include "buttonbar/bar_layout.h"
#include "buttonbar/buttons.h"
#include "resources/ids.h"
#include "view/gdi_holders.h"

#include <cstddef>

namespace {

HBITMAP Faces = nullptr;

// Pixels of a look, from the top left corner of the button.
struct Patch {
    int Left;
    int Top;
    int Width;
    int Height;
    COLORREF Colour;
};

constexpr Patch Frame[] = {
    {1, 0, 32, 1, ButtonFrame},  {1, 27, 32, 1, ButtonFrame}, {0, 1, 1, 26, ButtonFrame},
    {33, 1, 1, 26, ButtonFrame}, {1, 1, 32, 26, ButtonFace},
};

constexpr Patch PressedEdges[] = {
    {1, 1, 1, 26, ButtonShadow},
    {1, 1, 32, 1, ButtonShadow},
};

constexpr Patch RaisedEdges[] = {
    {1, 1, 1, 25, ButtonHighlight}, {1, 1, 31, 1, ButtonHighlight}, {32, 1, 1, 26, ButtonShadow},
    {1, 26, 32, 1, ButtonShadow},   {31, 2, 1, 24, ButtonShadow},   {2, 25, 30, 1, ButtonShadow},
};

template <std::size_t Count> void DrawPatches(HDC dc, int x, const Patch (&patches)[Count])
{
    for (const Patch& patch : patches) {
        FillSolid(dc, x + patch.Left, ButtonTop + patch.Top, patch.Width, patch.Height, patch.Colour);
    }
}

// White where the face has the button's own colours, black where there is ink.
void CopyMask(HDC mask, HDC faces, int button)
{
    SetBkColor(faces, ButtonFace);
    BitBlt(mask, 0, 0, FaceWidth, FaceHeight, faces, button * FaceWidth, 0, SRCCOPY);
    SetBkColor(faces, ButtonHighlight);
    BitBlt(mask, 0, 0, FaceWidth, FaceHeight, faces, button * FaceWidth, 0, SRCPAINT);
}

// Brushes the ink of a mask and leaves the rest as it is.
void BrushInk(HDC dc, int x, int y, HDC mask, COLORREF colour)
{
    constexpr DWORD BrushWhereBlack = 0x00B8074A;
    const HBRUSH brush = CreateSolidBrush(colour);
    {
        SelectedObject selected(dc, brush);
        BitBlt(dc, x, y, FaceWidth, FaceHeight, mask, 0, 0, BrushWhereBlack);
    }
    DeleteObject(brush);
}

void Emboss(HDC dc, int button, int x, int y)
{
    const HBITMAP bits = CreateBitmap(FaceWidth, FaceHeight, 1, 1, nullptr);
    {
        BitmapDc mask(dc, bits);
        {
            BitmapDc faces(dc, Faces);
            CopyMask(mask, faces, button);
        }
        const COLORREF textBefore = SetTextColor(dc, RGB(0, 0, 0));
        const COLORREF backBefore = SetBkColor(dc, RGB(0xFF, 0xFF, 0xFF));
        BrushInk(dc, x + 1, y + 1, mask, ButtonHighlight);
        BrushInk(dc, x, y, mask, ButtonShadow);
        SetTextColor(dc, textBefore);
        SetBkColor(dc, backBefore);
    }
    DeleteObject(bits);
}

} // namespace

void LoadFaces()
{
    Faces = LoadBitmapA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDB_BUTTON_FACES));
}

void DeleteFaces()
{
    DeleteObject(Faces);
    Faces = nullptr;
}

void DrawFace(HDC dc, int button, int x, int y)
{
    BitmapDc faces(dc, Faces);
    BitBlt(dc, x, y, FaceWidth, FaceHeight, faces, button * FaceWidth, 0, SRCCOPY);
}

void DrawButton(HDC dc, int slot, bool pressed)
{
    const int x = SlotLeft(slot);
    const int button = ButtonBar.ButtonOrder[slot];
    DrawPatches(dc, x, Frame);
    if (pressed) {
        DrawPatches(dc, x, PressedEdges);
    } else {
        DrawPatches(dc, x, RaisedEdges);
    }
    const int shift = pressed ? 1 : 0;
    const int faceLeft = x + 4 + shift;
    const int faceTop = ButtonTop + 3 + shift;
    DrawFace(dc, button, faceLeft, faceTop);
    if (!ButtonTable[button].Enabled) {
        Emboss(dc, button, faceLeft, faceTop);
    }
}

void FillSolid(HDC dc, int x, int y, int width, int height, COLORREF colour)
{
    const RECT area = {x, y, x + width, y + height};
    SetBkColor(dc, colour);
    ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &area, "", 0, nullptr);
}
