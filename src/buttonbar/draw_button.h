// The buttons' pictures, on the bar and in the list that they are chosen from.
#pragma once

#include <windows.h>

constexpr COLORREF ButtonFace = RGB(0xC0, 0xC0, 0xC0);
constexpr COLORREF ButtonShadow = RGB(0x80, 0x80, 0x80);
constexpr COLORREF ButtonHighlight = RGB(0xFF, 0xFF, 0xFF);
constexpr COLORREF ButtonFrame = RGB(0, 0, 0);

// The strip of faces, one beside the other by button number. Loaded as long as there is a bar.
void LoadFaces();
void DeleteFaces();

// The face of a button, with its top left corner at x, y.
void DrawFace(HDC dc, int button, int x, int y);

// The button in a slot of the bar; greyed when it cannot be pressed.
void DrawButton(HDC dc, int slot, bool pressed);

void FillSolid(HDC dc, int x, int y, int width, int height, COLORREF colour);
