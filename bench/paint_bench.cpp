// Painting reads only the rows in the update rectangle: one row must cost a fraction of a page.
#include "bench.h"

#include "app/open_sequence.h"
#include "view/frame_windows.h"
#include "view/view_state.h"

namespace {

void PaintRows(int rows)
{
    const RECT area = {0, 0, View.ClientWidth, rows * View.LineHeight};
    InvalidateRect(Windows.View, &area, FALSE);
    UpdateWindow(Windows.View);
    GdiFlush();
}

void PaintManyTimes(int rows)
{
    constexpr int Repeats = 20;
    for (int i = 0; i < Repeats; ++i) {
        PaintRows(rows);
    }
}

} // namespace

void BenchPainting()
{
    const BenchFile file("kvbench.txt", 10, {80, 80}, "\r\n");
    OpenSequence(Windows.Main, file.Path());
    SetWindowPos(Windows.Main, nullptr, 0, 0, 800, 600, SWP_NOZORDER);
    const int page = View.ClientHeight / View.LineHeight;
    Compare(
        "paint one row 20 times", "painting a page", [] { PaintManyTimes(1); }, [=] { PaintManyTimes(page); });
    CloseDocument();
}
