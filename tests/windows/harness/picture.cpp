#include "harness/picture.h"

#include "view/gdi_holders.h"

#include <algorithm>
#include <set>

Picture Drawn(int width, int height, const std::function<void(HDC)>& draw)
{
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height; // from the top down
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const HDC canvas = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap = CreateDIBSection(canvas, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    Picture picture{width, height, {}};
    {
        SelectedObject selected(canvas, bitmap);
        draw(canvas);
        GdiFlush();
        const std::uint32_t* const pixels = static_cast<const std::uint32_t*>(bits);
        picture.Pixels.assign(pixels, pixels + width * height);
        for (std::uint32_t& pixel : picture.Pixels) {
            pixel &= 0xFFFFFF;
        }
    }
    DeleteObject(bitmap);
    DeleteDC(canvas);
    return picture;
}

Picture PictureOf(HWND window, const RECT& area)
{
    WindowDc source(window);
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    return Drawn(width, height,
                 [&](HDC canvas) { BitBlt(canvas, 0, 0, width, height, source, area.left, area.top, SRCCOPY); });
}

int DifferentPixels(const Picture& a, const Picture& b)
{
    if (a.Width != b.Width || a.Height != b.Height) {
        return static_cast<int>(std::max(a.Pixels.size(), b.Pixels.size()));
    }
    int different = 0;
    for (std::size_t i = 0; i < a.Pixels.size(); ++i) {
        different += a.Pixels[i] != b.Pixels[i];
    }
    return different;
}

int ColoursIn(const Picture& picture)
{
    return static_cast<int>(std::set<std::uint32_t>(picture.Pixels.begin(), picture.Pixels.end()).size());
}
