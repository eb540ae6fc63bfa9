#include "view/font_step.h"

#include <algorithm>

namespace {

constexpr std::int64_t PointsPerInch = 72;
constexpr std::int64_t PointsPerStep = 2;
constexpr std::int64_t LeastPoints = 6;
constexpr std::int64_t MostPoints = 32;

// number * times / by, rounded half up; none of them is negative.
std::int64_t Scale(std::int64_t number, std::int64_t times, std::int64_t by)
{
    return (number * times + by / 2) / by;
}

} // namespace

bool StepFontSize(std::int32_t& size, FontStep step, std::int32_t logPixelsY)
{
    const std::int64_t points = Scale(-static_cast<std::int64_t>(size), PointsPerInch, logPixelsY);
    const bool larger = step == FontStep::Larger;
    const std::int64_t wanted = points + (larger ? PointsPerStep : -PointsPerStep);
    const std::int64_t target = std::clamp(wanted, LeastPoints, MostPoints);
    if (larger ? points >= target : points <= target) {
        return false;
    }
    size = static_cast<std::int32_t>(-Scale(target, logPixelsY, PointsPerInch));
    return true;
}
