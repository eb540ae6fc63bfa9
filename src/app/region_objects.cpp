#include "app/region_objects.h"

#include "view/frame_windows.h"
#include "view/palette.h"

void CreateRegionObjects()
{
    Drawing.OutputBrush = CreateSolidBrush(BackgroundColour(OutputRegion));
    Drawing.RulerBrush = CreateSolidBrush(BackgroundColour(RulerRegion));
    Drawing.MarkedBrush = CreateSolidBrush(BackgroundColour(MarkedRegion));
    Drawing.StatusBrush = CreateSolidBrush(BackgroundColour(StatusRegion));
    Drawing.RulerPen = CreatePen(PS_SOLID, 1, ForegroundColour(RulerRegion));
}

void DeleteRegionObjects()
{
    DeleteObject(Drawing.OutputBrush);
    DeleteObject(Drawing.RulerBrush);
    DeleteObject(Drawing.MarkedBrush);
    DeleteObject(Drawing.StatusBrush);
    DeleteObject(Drawing.RulerPen);
}
