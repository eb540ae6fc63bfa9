#include "view/screen_font.h"

#include "base/text.h"
#include "harness/program.h"
#include "view/frame_windows.h"
#include "view/gdi_holders.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

class ScreenFont : public RunningProgram {
protected:
    static void Choose(const char* face, std::int32_t size = -13)
    {
        CopyText(ViewOptions.FontName, face);
        ViewOptions.FontSize = size;
        View.SubstituteFixedFont = false;
        CreateScreenFont(false);
    }

    static TEXTMETRICA Metrics()
    {
        WindowDc dc(nullptr);
        SelectedObject font(dc, Drawing.ScreenFont);
        TEXTMETRICA metrics = {};
        GetTextMetricsA(dc, &metrics);
        return metrics;
    }

    static std::int32_t Width(const char* text)
    {
        WindowDc dc(nullptr);
        SelectedObject font(dc, Drawing.ScreenFont);
        SIZE size = {};
        GetTextExtentPoint32A(dc, text, static_cast<int>(strlen(text)), &size);
        return size.cx;
    }

    static void ExpectUsable()
    {
        EXPECT_GT(View.CharWidth, 0);
        EXPECT_GT(View.MaxCharWidth, 0);
        EXPECT_GT(View.LineHeight, 0);
        EXPECT_NE(nullptr, Drawing.ScreenFont);
    }
};

} // namespace

TEST_F(ScreenFont, IsMeasured)
{
    for (const char* face : {"System", "Courier", "Fixedsys", "Tahoma", "Arial", "Courier New", "Symbol"}) {
        Choose(face);
        const TEXTMETRICA metrics = Metrics();
        EXPECT_EQ(metrics.tmAveCharWidth, View.CharWidth) << face;
        EXPECT_EQ(metrics.tmMaxCharWidth, View.MaxCharWidth) << face;
        EXPECT_EQ(metrics.tmHeight + metrics.tmExternalLeading, View.LineHeight) << face;
        EXPECT_EQ(metrics.tmCharSet == ANSI_CHARSET, View.FontIsAnsi) << face;
    }
}

TEST_F(ScreenFont, IsFixedExactlyWhenNarrowAndWideLettersAreEquallyWide)
{
    for (const char* face : {"System", "Courier", "Fixedsys", "Tahoma", "Arial"}) {
        Choose(face);
        EXPECT_EQ(Width("iiiiiiiiii") == Width("WWWWWWWWWW"), View.FontIsFixed) << face;
    }
    Choose("Courier");
    EXPECT_TRUE(View.FontIsFixed);
    Choose("Tahoma");
    EXPECT_FALSE(View.FontIsFixed);
}

TEST_F(ScreenFont, HasFaceHeightWeightAndSlantOfTheSettings)
{
    ViewOptions.FontWeight = 700;
    ViewOptions.FontItalic = 1;
    Choose("Tahoma", -20);
    LOGFONTA font = {};
    ASSERT_NE(0, GetObjectA(Drawing.ScreenFont, sizeof font, &font));
    EXPECT_STREQ("Tahoma", font.lfFaceName);
    EXPECT_EQ(-20, font.lfHeight);
    EXPECT_EQ(700, font.lfWeight);
    EXPECT_NE(0, font.lfItalic);
    EXPECT_EQ(DEFAULT_CHARSET, font.lfCharSet);
}

TEST_F(ScreenFont, GrowsWithItsSize)
{
    Choose("Tahoma", -13);
    const std::int32_t height = View.LineHeight;
    Choose("Tahoma", -26);
    EXPECT_GT(View.LineHeight, height);
}

TEST_F(ScreenFont, IsUsableWithAnySizeAndAnyFace)
{
    for (const std::int32_t size : {0, 1, -1, 100000, -100000, INT32_MIN, INT32_MAX}) {
        for (const char* face : {"Tahoma", "System", "No Such Face", "", "1234567890123456789012345678901"}) {
            SCOPED_TRACE(face);
            SCOPED_TRACE(size);
            Choose(face, size);
            ExpectUsable();
            EXPECT_LT(View.LineHeight, 2000);
        }
    }
}

TEST_F(ScreenFont, ANewOneLaysTheFrameOutForItsHeight)
{
    ViewOptions.Ruler = 1;
    Choose("Courier", -13);
    RECT ruler;
    GetClientRect(Windows.Ruler, &ruler);
    EXPECT_EQ(View.LineHeight, ruler.bottom);
    ValidateRect(Windows.View, nullptr);
    Choose("Courier", -30);
    GetClientRect(Windows.Ruler, &ruler);
    EXPECT_EQ(View.LineHeight, ruler.bottom);
    EXPECT_TRUE(GetUpdateRect(Windows.View, nullptr, FALSE));
}

TEST_F(ScreenFont, AProportionalOneIsSubstitutedByTheStockFixedOneAndComesBack)
{
    ViewOptions.FontWeight = 700;
    ViewOptions.FontItalic = 1;
    Choose("Tahoma", -20);
    const TEXTMETRICA chosen = Metrics();
    SubstituteScreenFont();
    EXPECT_TRUE(View.SubstituteFixedFont);
    EXPECT_TRUE(View.FontIsFixed);
    EXPECT_EQ(GetStockObject(ANSI_FIXED_FONT), Drawing.ScreenFont);
    EXPECT_EQ(Width("iiii"), Width("WWWW"));
    EXPECT_STREQ("Tahoma", ViewOptions.FontName);
    EXPECT_EQ(-20, ViewOptions.FontSize);
    EXPECT_EQ(700, ViewOptions.FontWeight);
    EXPECT_EQ(1, ViewOptions.FontItalic);
    RestoreScreenFont();
    EXPECT_FALSE(View.SubstituteFixedFont);
    const TEXTMETRICA restored = Metrics();
    EXPECT_EQ(0, memcmp(&chosen, &restored, sizeof chosen));
    EXPECT_FALSE(View.FontIsFixed);
}

TEST_F(ScreenFont, AFixedOneIsNotSubstituted)
{
    Choose("Courier");
    const HFONT chosen = Drawing.ScreenFont;
    SubstituteScreenFont();
    EXPECT_FALSE(View.SubstituteFixedFont);
    EXPECT_EQ(chosen, Drawing.ScreenFont);
    RestoreScreenFont();
    EXPECT_EQ(chosen, Drawing.ScreenFont);
}

TEST_F(ScreenFont, TheStockFontIsNeverDeleted)
{
    CreateScreenFont(true);
    DeleteScreenFont();
    EXPECT_EQ(nullptr, Drawing.ScreenFont);
    EXPECT_EQ(static_cast<DWORD>(OBJ_FONT), GetObjectType(GetStockObject(ANSI_FIXED_FONT)));
    CreateScreenFont(true);
    EXPECT_EQ(Width("iiii"), Width("WWWW"));
}

TEST_F(ScreenFont, ChangingItManyTimesLeavesNoObjectBehind)
{
    Choose("Tahoma");
    PumpMessages();
    const int before = FreeGdiObjects();
    for (int round = 0; round < 200; ++round) {
        Choose("Tahoma", -10 - round % 10);
        SubstituteScreenFont();
        RestoreScreenFont();
    }
    EXPECT_EQ(before, FreeGdiObjects());
}
