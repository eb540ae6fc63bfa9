// Where the main window opens.
#pragma once

#include <cstdint>

struct ScreenMeasures {
    std::int32_t Width; // pixels, all
    std::int32_t Height;
    std::int32_t IconHeight;
    std::int32_t CaptionHeight;
};

struct WindowRectangle {
    std::int32_t Left;
    std::int32_t Top;
    std::int32_t Width;
    std::int32_t Height;
};

struct WindowPlacement {
    WindowRectangle Rectangle;
    bool Maximized; // the rectangle is the one it is restored to
    bool Minimized;
};

// The rectangle without any setting: full width, with room for a row of icons at the bottom.
WindowRectangle DefaultRectangle(const ScreenMeasures& screen);

// Reads "left top width height"; false, leaving rectangle as it was, when these are not four numbers.
bool ParseRectangle(const char* text, WindowRectangle& rectangle);

// The placement for a saved rectangle text ("" = none saved). Without a section (a command line in
// error) the settings file is not asked: commandLine's rectangle holds, or all zeros.
WindowPlacement PlaceWindow(const char* saved, bool hasSection, const char* commandLine, const ScreenMeasures& screen);
