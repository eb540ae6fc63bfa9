// The brushes and the pen that the regions are drawn with.
#pragma once

// Makes them from the colour settings.
void CreateRegionObjects();
void DeleteRegionObjects();
