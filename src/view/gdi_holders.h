// Owners of what GDI hands out: each gives back in its destructor what its constructor took.
#pragma once

#include <windows.h>

// A window's device context.
class WindowDc {
public:
    explicit WindowDc(HWND window) : Window(window), Dc(GetDC(window)) {}
    ~WindowDc() { ReleaseDC(Window, Dc); }
    WindowDc(const WindowDc&) = delete;
    WindowDc& operator=(const WindowDc&) = delete;
    operator HDC() const { return Dc; }

private:
    HWND Window;
    HDC Dc;
};

// A paint cycle: BeginPaint to EndPaint.
class PaintDc {
public:
    explicit PaintDc(HWND window) : Window(window) { BeginPaint(window, &Paint); }
    ~PaintDc() { EndPaint(Window, &Paint); }
    PaintDc(const PaintDc&) = delete;
    PaintDc& operator=(const PaintDc&) = delete;
    operator HDC() const { return Paint.hdc; }
    const RECT& Area() const { return Paint.rcPaint; }
    bool Erase() const { return Paint.fErase != FALSE; }

private:
    HWND Window;
    PAINTSTRUCT Paint;
};

// An object selected into a device context; the one before comes back.
class SelectedObject {
public:
    SelectedObject(HDC dc, HGDIOBJ object) : Dc(dc), Before(SelectObject(dc, object)) {}
    ~SelectedObject() { SelectObject(Dc, Before); }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

private:
    HDC Dc;
    HGDIOBJ Before;
};

// A device context in memory, compatible with another, that draws into or from a bitmap. The bitmap stays the
// caller's.
class BitmapDc {
public:
    BitmapDc(HDC like, HBITMAP bitmap) : Dc(CreateCompatibleDC(like)), Before(SelectObject(Dc, bitmap)) {}
    ~BitmapDc()
    {
        SelectObject(Dc, Before);
        DeleteDC(Dc);
    }
    BitmapDc(const BitmapDc&) = delete;
    BitmapDc& operator=(const BitmapDc&) = delete;
    operator HDC() const { return Dc; }

private:
    HDC Dc;
    HGDIOBJ Before;
};
