#include "view/screen_font.h"

#include "app/open_sequence.h"
#include "base/text.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "harness/system_calls.h"
#include "view/frame_windows.h"
#include "view/gdi_holders.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

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

    static std::int32_t SizeOf(int points) { return -MulDiv(points, Drawing.LogPixelsY, 72); }

    // The size in points after a step, and whether it beeped.
    struct Stepped {
        int Points;
        bool Beeped;
    };

    static Stepped Step(FontStep step)
    {
        const BeepCounter beeps;
        StepScreenFont(step);
        return {MulDiv(-ViewOptions.FontSize, 72, Drawing.LogPixelsY), beeps.Count() == 1};
    }

    static void ExpectStep(FontStep step, int points)
    {
        const Stepped stepped = Step(step);
        EXPECT_EQ(points, stepped.Points);
        EXPECT_FALSE(stepped.Beeped);
        EXPECT_EQ(SizeOf(points), ViewOptions.FontSize);
        LOGFONTA font = {};
        EXPECT_NE(0, GetObjectA(Drawing.ScreenFont, sizeof font, &font));
        EXPECT_EQ(SizeOf(points), font.lfHeight);
    }

    static void ExpectBeep(FontStep step)
    {
        const std::int32_t size = ViewOptions.FontSize;
        const HFONT font = Drawing.ScreenFont;
        const std::int32_t height = View.LineHeight;
        EXPECT_TRUE(Step(step).Beeped);
        EXPECT_EQ(size, ViewOptions.FontSize);
        EXPECT_EQ(font, Drawing.ScreenFont);
        EXPECT_EQ(height, View.LineHeight);
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

TEST_F(ScreenFont, AStepIsTwoPoints)
{
    Choose("Tahoma", SizeOf(10));
    ExpectStep(FontStep::Larger, 12);
    ExpectStep(FontStep::Larger, 14);
    ExpectStep(FontStep::Smaller, 12);
    ExpectStep(FontStep::Smaller, 10);
}

TEST_F(ScreenFont, StepsLeadTo32PointsAndThenBeep)
{
    Choose("Tahoma", SizeOf(31));
    ExpectStep(FontStep::Larger, 32);
    ExpectBeep(FontStep::Larger);
    ExpectStep(FontStep::Smaller, 30);
    ExpectStep(FontStep::Larger, 32);
}

TEST_F(ScreenFont, StepsLeadTo6PointsAndThenBeep)
{
    Choose("Tahoma", SizeOf(7));
    ExpectStep(FontStep::Smaller, 6);
    ExpectBeep(FontStep::Smaller);
    ExpectStep(FontStep::Larger, 8);
    ExpectStep(FontStep::Smaller, 6);
}

TEST_F(ScreenFont, AFontBeyondTheStepsOnlyComesBackToThem)
{
    Choose("Tahoma", SizeOf(5));
    ExpectBeep(FontStep::Smaller);
    ExpectStep(FontStep::Larger, 7);
    Choose("Tahoma", SizeOf(3));
    ExpectStep(FontStep::Larger, 6);
    Choose("Tahoma", 0);
    ExpectBeep(FontStep::Smaller);
    ExpectStep(FontStep::Larger, 6);
    for (const std::int32_t size : {SizeOf(48), -100000, -INT32_MAX}) {
        Choose("Tahoma", size);
        ExpectBeep(FontStep::Larger);
        ExpectStep(FontStep::Smaller, 32);
    }
}

TEST_F(ScreenFont, NoStepIsTakenWhileAnotherFontStandsInForIt)
{
    Choose("Tahoma", SizeOf(12));
    SubstituteScreenFont();
    ASSERT_TRUE(View.SubstituteFixedFont);
    ExpectBeep(FontStep::Larger);
    ExpectBeep(FontStep::Smaller);
    RestoreScreenFont();
    ExpectStep(FontStep::Larger, 14);
}

TEST_F(ScreenFont, AStepTakesEffectAtOnce)
{
    ViewOptions.Ruler = 1;
    std::string content;
    for (int line = 0; line < 300; ++line) {
        content += std::string(400, 'x') + "\n";
    }
    const ScratchFile file("step.txt", content);
    ASSERT_TRUE(OpenSequence(Windows.Main, file.Path()));
    Choose("Courier", SizeOf(20));
    const std::int32_t height = View.LineHeight;
    const std::int32_t width = View.CharWidth;
    const std::int32_t maxTop = View.MaxTop;
    const std::int32_t maxLeft = View.MaxLeft;
    UpdateWindow(Windows.View);
    ASSERT_FALSE(GetUpdateRect(Windows.View, nullptr, FALSE));
    for (int step = 0; step < 6; ++step) { // the face may come in few sizes
        ASSERT_FALSE(Step(FontStep::Larger).Beeped);
    }
    EXPECT_GT(View.LineHeight, height);
    EXPECT_GT(View.CharWidth, width);
    EXPECT_GT(View.MaxTop, maxTop);
    EXPECT_GT(View.MaxLeft, maxLeft);
    EXPECT_EQ(Metrics().tmHeight + Metrics().tmExternalLeading, View.LineHeight);
    RECT ruler;
    GetClientRect(Windows.Ruler, &ruler);
    EXPECT_EQ(View.LineHeight, ruler.bottom);
    RECT waiting;
    EXPECT_TRUE(GetUpdateRect(Windows.View, &waiting, FALSE));
    EXPECT_EQ(View.ClientHeight, waiting.bottom);
    while (!Step(FontStep::Smaller).Beeped) {
    }
    EXPECT_LT(View.LineHeight, height);
    EXPECT_LT(View.MaxTop, maxTop);
}

TEST_F(ScreenFont, StepsKeepFaceWeightAndSlant)
{
    ViewOptions.FontWeight = 700;
    ViewOptions.FontItalic = 1;
    Choose("Tahoma", SizeOf(12));
    ExpectStep(FontStep::Larger, 14);
    LOGFONTA font = {};
    ASSERT_NE(0, GetObjectA(Drawing.ScreenFont, sizeof font, &font));
    EXPECT_STREQ("Tahoma", font.lfFaceName);
    EXPECT_EQ(700, font.lfWeight);
    EXPECT_NE(0, font.lfItalic);
    EXPECT_STREQ("Tahoma", ViewOptions.FontName);
}

TEST_F(ScreenFont, ManyStepsLeaveNoObjectBehind)
{
    const BeepCounter beeps;
    Choose("Tahoma", SizeOf(6));
    PumpMessages();
    const int before = FreeGdiObjects();
    for (int round = 0; round < 100; ++round) {
        StepScreenFont(round / 20 % 2 == 0 ? FontStep::Larger : FontStep::Smaller);
    }
    EXPECT_EQ(before, FreeGdiObjects());
}
