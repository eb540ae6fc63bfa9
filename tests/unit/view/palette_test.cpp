#include "view/palette.h"

#include <gtest/gtest.h>

namespace {

class PaletteTest : public testing::Test {
protected:
    void TearDown() override { ViewOptions = ViewSettings{}; }
};

} // namespace

TEST(Palette, HoldsTheSixteenColours)
{
    constexpr std::uint32_t Expected[PaletteSize] = {
        0x000000, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF,
        0xC0C0C0, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080, 0x808080,
    };
    for (int i = 0; i < PaletteSize; ++i) {
        EXPECT_EQ(Palette[i], Expected[i]) << i;
    }
}

TEST_F(PaletteTest, RegionsHaveTheirDefaults)
{
    constexpr std::uint32_t Foregrounds[] = {0xFFFFFF, 0, 0, 0, 0xFFFFFF};
    constexpr std::uint32_t Backgrounds[] = {0xFF0000, 0x00FFFF, 0x00FFFF, 0xC0C0C0, 0x800000};
    for (int region = 0; region < ColourRegionCount; ++region) {
        EXPECT_EQ(ForegroundColour(static_cast<ColourRegion>(region)), Foregrounds[region]) << region;
        EXPECT_EQ(BackgroundColour(static_cast<ColourRegion>(region)), Backgrounds[region]) << region;
    }
}

TEST_F(PaletteTest, EveryIndexOfThePaletteIsUsed)
{
    for (int i = 0; i < PaletteSize; ++i) {
        ViewOptions.Foreground[MarkedRegion] = i;
        ViewOptions.Background[LockedRegion] = i;
        EXPECT_EQ(ForegroundColour(MarkedRegion), Palette[i]);
        EXPECT_EQ(BackgroundColour(LockedRegion), Palette[i]);
    }
}

TEST_F(PaletteTest, IndexOutOfRangeCountsAsTheRegionsDefault)
{
    for (const std::int32_t index : {99, -1, 16, INT32_MAX, INT32_MIN}) {
        ViewOptions.Foreground[OutputRegion] = index;
        ViewOptions.Background[LockedRegion] = index;
        EXPECT_EQ(ForegroundColour(OutputRegion), 0xFFFFFFu) << index;
        EXPECT_EQ(BackgroundColour(LockedRegion), 0x800000u) << index;
    }
}

TEST_F(PaletteTest, AnIndexOfThePaletteIsTheRegionsOwn)
{
    for (int region = 0; region < ColourRegionCount; ++region) {
        for (int i = 0; i < PaletteSize; ++i) {
            ViewOptions = ViewSettings{};
            ViewOptions.Foreground[region] = i;
            ViewOptions.Background[region] = PaletteSize - 1 - i;
            EXPECT_EQ(ForegroundIndex(static_cast<ColourRegion>(region)), i);
            EXPECT_EQ(BackgroundIndex(static_cast<ColourRegion>(region)), PaletteSize - 1 - i);
        }
    }
}

TEST_F(PaletteTest, AnIndexOutOfRangeIsReplacedByTheRegionsDefault)
{
    constexpr std::int32_t Foregrounds[] = {7, 0, 0, 0, 7};
    constexpr std::int32_t Backgrounds[] = {1, 6, 6, 8, 9};
    for (const std::int32_t index : {16, -1, 99, INT32_MAX, INT32_MIN}) {
        for (int region = 0; region < ColourRegionCount; ++region) {
            ViewOptions = ViewSettings{};
            ViewOptions.Foreground[region] = ViewOptions.Background[region] = index;
            EXPECT_EQ(ForegroundIndex(static_cast<ColourRegion>(region)), Foregrounds[region]) << index;
            EXPECT_EQ(BackgroundIndex(static_cast<ColourRegion>(region)), Backgrounds[region]) << index;
            EXPECT_EQ(ViewOptions.Foreground[region], index) << "the setting stays";
        }
    }
}
