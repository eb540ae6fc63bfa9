#include "view/frame_windows.h"

FrameWindows Windows;
DrawingObjects Drawing;

void RefreshStatus()
{
    SendMessageA(Windows.Status, WM_SHOW_POSITION, 0, 0);
}

void LayOutFrameAnew()
{
    SendMessageA(Windows.Main, WM_SIZE, SIZE_RESTORED, MAKELPARAM(Windows.ClientWidth, Windows.ClientHeight));
}

void RepaintView()
{
    InvalidateRect(Windows.View, nullptr, TRUE);
}

void MeasureViewAnew()
{
    RECT client;
    GetClientRect(Windows.View, &client);
    SendMessageA(Windows.View, WM_SIZE, SIZE_RESTORED, MAKELPARAM(client.right, client.bottom));
}
