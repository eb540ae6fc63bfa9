// Scroll arithmetic: how far the view may move, and how far a scroll request moves it.
#pragma once

#include <cstdint>

// Ranges and positions for the two scroll bars, ready to be set. An empty range hides a bar.
struct ScrollBarValues {
    std::int32_t VerticalMin;
    std::int32_t VerticalMax;
    std::int32_t VerticalPosition;
    std::int32_t HorizontalMin;
    std::int32_t HorizontalMax;
    std::int32_t HorizontalPosition;
};

// Recomputes MaxTop, ScrollScale, MaxLeft and LockedHeight for the view's size and the document, brings
// TopLine and LeftColumn within them, and returns the scroll bar values.
ScrollBarValues MeasureScrolling();

// Scroll codes, as the scroll bar messages carry them.
enum ScrollCode {
    ScrollLineBack = 0,
    ScrollLineForward = 1,
    ScrollPageBack = 2,
    ScrollPageForward = 3,
    ScrollThumbPosition = 4,
    ScrollThumbTrack = 5,
    ScrollToStart = 6,
    ScrollToEnd = 7,
    ScrollEnd = 8,
    ScrollToTarget = 99, // the private one: TopLine becomes the target
};

// Above this many scrollable lines the thumb is not tracked live.
constexpr std::int32_t LargestTrackedTop = 5000;

struct ScrollStep {
    bool Asked;            // false: the request means nothing here, not even a beep
    std::int32_t Distance; // lines or columns, as far as the view allows; 0 = at an end
};

// thumb: scroll bar position; target: the line for ScrollToTarget.
ScrollStep VerticalStep(int code, std::int32_t thumb, std::int32_t target);
ScrollStep HorizontalStep(int code, std::int32_t thumb);

// A step of lines or columns cut to what the view allows. It never scrolls above the locked rows or
// before the first locked column.
std::int32_t ClampVertical(std::int64_t lines);
std::int32_t ClampHorizontal(std::int64_t columns);

// The vertical position for the scroll bar.
std::int32_t ScaledTop();

// The line the thumb at a scroll bar position stands for.
std::int32_t ThumbTarget(std::int32_t thumb);
