#include "view/column.h"

std::int32_t ColumnAtWidth(std::int32_t length, std::int32_t width, MeasureText measure, void* context)
{
    if (measure(context, length) < width) {
        return length;
    }
    std::int32_t base = 0; // characters known to be narrower than width
    std::int32_t span = length;
    std::int32_t count = 0;
    while (span >= 1) {
        count = base + span / 2 + 1;
        const std::int32_t after = measure(context, count);
        if (after == width) {
            return count;
        }
        if (after < width) {
            base = count;
            span = span - span / 2 - 1;
            continue;
        }
        const std::int32_t before = count > 1 ? measure(context, count - 1) : 0;
        if (before <= width) {
            return width >= before + (after - before) / 2 ? count : count - 1;
        }
        span /= 2;
    }
    return count;
}
