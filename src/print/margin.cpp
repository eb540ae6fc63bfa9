#include "print/margin.h"

#include <algorithm>

namespace {

constexpr std::int64_t MostHundredths = 100000000; // far beyond any paper
constexpr int Decimals = 2;                        // that count

} // namespace

std::int32_t MarginToDevice(const char* text, std::int32_t logPixelsY, bool inches)
{
    constexpr int PerInch = 100;
    constexpr int PerCentimetre = 254;
    std::int64_t hundredths = 0;
    int decimals = -1; // seen; -1 before the point
    for (const char* at = text; *at != '\0'; ++at) {
        if (*at == '.' && decimals < 0) {
            decimals = 0;
        } else if (*at < '0' || *at > '9') {
            return NoMargin;
        } else if (decimals < Decimals) {
            hundredths = std::min(hundredths * 10 + (*at - '0'), MostHundredths);
            decimals += decimals >= 0 ? 1 : 0;
        }
    }
    for (int i = std::max(decimals, 0); i < Decimals; ++i) {
        hundredths = std::min(hundredths * 10, MostHundredths);
    }
    const std::int64_t device = logPixelsY * hundredths / (inches ? PerInch : PerCentimetre);
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(device, 0, INT32_MAX));
}

bool MarginsFitPage(std::int32_t top, std::int32_t bottom, std::int32_t pageHeight)
{
    constexpr int LeastRoom = 20;
    return static_cast<std::int64_t>(top) + bottom <= static_cast<std::int64_t>(pageHeight) - LeastRoom;
}
