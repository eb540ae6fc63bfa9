// Pixels, of a window or drawn for comparison.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>
#include <windows.h>

struct Picture {
    int Width = 0;
    int Height = 0;
    std::vector<std::uint32_t> Pixels; // 0x00RRGGBB, from the top row down
};

// What an area of a window's client area shows.
Picture PictureOf(HWND window, const RECT& area);

// What draw draws on a canvas of its own.
Picture Drawn(int width, int height, const std::function<void(HDC)>& draw);

// How many pixels differ; all of them when the sizes do.
int DifferentPixels(const Picture& a, const Picture& b);

// How many different colours there are.
int ColoursIn(const Picture& picture);
