#include "view/choose_font.h"

#include "app/open_sequence.h"
#include "base/text.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "harness/system_calls.h"
#include "view/frame_windows.h"
#include "view/screen_font.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <commdlg.h>
#include <string>

namespace {

constexpr UINT TextMode = 270;
constexpr UINT HexMode = 271;

// What the font dialog was asked, and what it answers.
struct FontDialog {
    int Calls;
    CHOOSEFONTA Asked;
    LOGFONTA Initial;
    LOGFONTA Answer;
    BOOL Confirmed;
};

FontDialog Dialog;

BOOL WINAPI AnswerFont(CHOOSEFONTA* dialog)
{
    ++Dialog.Calls;
    Dialog.Asked = *dialog;
    Dialog.Initial = *dialog->lpLogFont;
    *dialog->lpLogFont = Dialog.Answer;
    return Dialog.Confirmed;
}

LOGFONTA Font(const std::string& face, LONG height, LONG weight = 400, BYTE italic = 0)
{
    LOGFONTA font = {};
    CopyText(font.lfFaceName, face.c_str());
    font.lfHeight = height;
    font.lfWeight = weight;
    font.lfItalic = italic;
    return font;
}

class FontChoice : public RunningProgram {
protected:
    FontChoice() : Call("ChooseFontA", reinterpret_cast<void*>(AnswerFont)), File("font.txt", Lines())
    {
        Dialog = FontDialog{};
        View.LockRows = View.LockCols = 0;
        CreateScreenFont(false);
    }

    ~FontChoice() override
    {
        View.LockTopLine = View.LockRows = View.LockColStart = View.LockCols = 0;
        SendMessageA(Windows.Main, WM_COMMAND, TextMode, 0);
    }

    static std::string Lines()
    {
        std::string content;
        for (int line = 0; line < 300; ++line) {
            content += std::string(400, 'x') + "\n";
        }
        return content;
    }

    void Open() { ASSERT_TRUE(OpenSequence(Windows.Main, File.Path())); }

    static void SwitchTo(UINT mode)
    {
        SendMessageA(Windows.Main, WM_COMMAND, mode, 0);
        ASSERT_EQ(mode == HexMode, View.HexMode);
    }

    static void Choose(const LOGFONTA& font, HDC printer = nullptr)
    {
        Dialog.Answer = font;
        Dialog.Confirmed = TRUE;
        ChooseScreenFont(Windows.Main, printer);
    }

    // Asks, and is cancelled although another font was pointed at.
    static void Cancel(HDC printer = nullptr)
    {
        Dialog.Answer = Font("Tahoma", -40, 700, 1);
        Dialog.Confirmed = FALSE;
        ChooseScreenFont(Windows.Main, printer);
    }

    static LOGFONTA FontInUse()
    {
        LOGFONTA font = {};
        EXPECT_NE(0, GetObjectA(Drawing.ScreenFont, sizeof font, &font));
        return font;
    }

    static bool IsStockFontInUse() { return Drawing.ScreenFont == GetStockObject(ANSI_FIXED_FONT); }

    static void ExpectSettings(const std::string& face, std::int32_t size, std::int32_t weight, std::int32_t italic)
    {
        EXPECT_EQ(face, ViewOptions.FontName);
        EXPECT_EQ(size, ViewOptions.FontSize);
        EXPECT_EQ(weight, ViewOptions.FontWeight);
        EXPECT_EQ(italic, ViewOptions.FontItalic);
    }

    static void ExpectUsable()
    {
        EXPECT_GT(View.CharWidth, 0);
        EXPECT_GT(View.MaxCharWidth, 0);
        EXPECT_GT(View.LineHeight, 0);
        EXPECT_LT(View.LineHeight, 2000);
        EXPECT_EQ(static_cast<DWORD>(OBJ_FONT), GetObjectType(Drawing.ScreenFont));
    }

private:
    ReplacedCall Call;

protected:
    ScratchFile File;
};

} // namespace

TEST_F(FontChoice, AsksOnceWithAStructureOfItsSizeForTheFrame)
{
    Cancel();
    EXPECT_EQ(1, Dialog.Calls);
    EXPECT_EQ(sizeof(void*) == 4 ? 60u : sizeof(CHOOSEFONTA), Dialog.Asked.lStructSize);
    EXPECT_EQ(Windows.Main, Dialog.Asked.hwndOwner);
}

TEST_F(FontChoice, WithoutAPrinterOnlyScreenFontsAreOffered)
{
    Cancel();
    EXPECT_EQ(static_cast<DWORD>(CF_SCREENFONTS | CF_INITTOLOGFONTSTRUCT), Dialog.Asked.Flags);
    EXPECT_EQ(nullptr, Dialog.Asked.hDC);
}

TEST_F(FontChoice, WithAPrinterItsFontsAreOfferedTooAndMustExist)
{
    const HDC printer = CreateCompatibleDC(nullptr);
    Cancel(printer);
    EXPECT_EQ(static_cast<DWORD>(CF_SCREENFONTS | CF_INITTOLOGFONTSTRUCT | CF_PRINTERFONTS | CF_FORCEFONTEXIST),
              Dialog.Asked.Flags);
    EXPECT_EQ(printer, Dialog.Asked.hDC);
    EXPECT_EQ(static_cast<DWORD>(OBJ_MEMDC), GetObjectType(printer)) << "it is the caller's";
    DeleteDC(printer);
}

TEST_F(FontChoice, LockedColumnsNeedAFixedPitch)
{
    View.LockCols = 3;
    Cancel();
    EXPECT_EQ(static_cast<DWORD>(CF_SCREENFONTS | CF_INITTOLOGFONTSTRUCT | CF_FIXEDPITCHONLY), Dialog.Asked.Flags);
    const HDC printer = CreateCompatibleDC(nullptr);
    Cancel(printer);
    EXPECT_NE(0u, Dialog.Asked.Flags & CF_FIXEDPITCHONLY);
    EXPECT_NE(0u, Dialog.Asked.Flags & CF_PRINTERFONTS);
    DeleteDC(printer);
}

TEST_F(FontChoice, LockedRowsAloneDoNot)
{
    View.LockRows = 2;
    Cancel();
    EXPECT_EQ(0u, Dialog.Asked.Flags & CF_FIXEDPITCHONLY);
}

TEST_F(FontChoice, StartsWithTheFontOfTheSettings)
{
    Cancel();
    EXPECT_STREQ("System", Dialog.Initial.lfFaceName);
    EXPECT_EQ(-13, Dialog.Initial.lfHeight);
    EXPECT_EQ(400, Dialog.Initial.lfWeight);
    EXPECT_EQ(0, Dialog.Initial.lfItalic);
    CopyText(ViewOptions.FontName, "Tahoma");
    ViewOptions.FontSize = -20;
    ViewOptions.FontWeight = 700;
    ViewOptions.FontItalic = 7; // as by hand: any number but 0 is on
    Cancel();
    EXPECT_STREQ("Tahoma", Dialog.Initial.lfFaceName);
    EXPECT_EQ(-20, Dialog.Initial.lfHeight);
    EXPECT_EQ(700, Dialog.Initial.lfWeight);
    EXPECT_NE(0, Dialog.Initial.lfItalic);
}

TEST_F(FontChoice, StartsWithTheChosenFontAlsoWhileAnotherStandsInForIt)
{
    Choose(Font("Tahoma", -20));
    Open();
    SwitchTo(HexMode);
    ASSERT_TRUE(View.SubstituteFixedFont);
    Cancel();
    EXPECT_STREQ("Tahoma", Dialog.Initial.lfFaceName);
    EXPECT_EQ(-20, Dialog.Initial.lfHeight);
    EXPECT_TRUE(View.SubstituteFixedFont);
    EXPECT_TRUE(IsStockFontInUse());
}

TEST_F(FontChoice, TheChosenFontIsStoredAndShown)
{
    Choose(Font("Tahoma", -20, 700, 255));
    ExpectSettings("Tahoma", -20, 700, 1);
    const LOGFONTA font = FontInUse();
    EXPECT_STREQ("Tahoma", font.lfFaceName);
    EXPECT_EQ(-20, font.lfHeight);
    EXPECT_EQ(700, font.lfWeight);
    EXPECT_NE(0, font.lfItalic);
    EXPECT_EQ(DEFAULT_CHARSET, font.lfCharSet);
    EXPECT_FALSE(View.FontIsFixed);
    Choose(Font("Courier", -13));
    ExpectSettings("Courier", -13, 400, 0);
    EXPECT_STREQ("Courier", FontInUse().lfFaceName);
    EXPECT_EQ(0, FontInUse().lfItalic);
    EXPECT_TRUE(View.FontIsFixed);
    EXPECT_FALSE(View.SubstituteFixedFont);
}

TEST_F(FontChoice, APositiveHeightIsHeldNegative)
{
    Choose(Font("Tahoma", 20));
    ExpectSettings("Tahoma", -20, 400, 0);
    EXPECT_EQ(-20, FontInUse().lfHeight);
}

TEST_F(FontChoice, AnyAnswerIsUsable)
{
    const std::string longest = "1234567890123456789012345678901";
    for (const LONG height : {0L, 100000L, -100000L, LONG{INT32_MIN}, LONG{INT32_MAX}}) {
        for (const std::string& face : {std::string("Tahoma"), std::string("No Such Face"), std::string(), longest}) {
            SCOPED_TRACE(face);
            SCOPED_TRACE(height);
            Choose(Font(face, height));
            EXPECT_EQ(face, ViewOptions.FontName);
            EXPECT_LE(ViewOptions.FontSize, 0);
            ExpectUsable();
        }
    }
    Choose(Font("Tahoma", -100000));
    EXPECT_EQ(-100000, ViewOptions.FontSize);
    Choose(Font("Tahoma", 0));
    EXPECT_EQ(0, ViewOptions.FontSize);
}

TEST_F(FontChoice, ItTakesEffectAtOnce)
{
    ViewOptions.Ruler = 1;
    Open();
    Choose(Font("Courier", -13));
    const std::int32_t height = View.LineHeight;
    const std::int32_t maxTop = View.MaxTop;
    UpdateWindow(Windows.View);
    ASSERT_FALSE(GetUpdateRect(Windows.View, nullptr, FALSE));
    Choose(Font("Courier", -40));
    EXPECT_GT(View.LineHeight, height);
    EXPECT_GT(View.MaxTop, maxTop);
    RECT ruler;
    GetClientRect(Windows.Ruler, &ruler);
    EXPECT_EQ(View.LineHeight, ruler.bottom);
    RECT waiting;
    EXPECT_TRUE(GetUpdateRect(Windows.View, &waiting, FALSE));
    EXPECT_EQ(View.ClientHeight, waiting.bottom);
    Choose(Font("Tahoma", -13));
    GetClientRect(Windows.Ruler, &ruler);
    EXPECT_EQ(21, ruler.bottom);
}

TEST_F(FontChoice, TheViewIsRepaintedAlsoInAFontOfTheSameHeight)
{
    Open();
    Choose(Font("Courier", -13));
    const std::int32_t height = View.LineHeight;
    UpdateWindow(Windows.View);
    ASSERT_FALSE(GetUpdateRect(Windows.View, nullptr, FALSE));
    Choose(Font("Courier", -13));
    EXPECT_EQ(height, View.LineHeight);
    RECT waiting;
    EXPECT_TRUE(GetUpdateRect(Windows.View, &waiting, FALSE));
    EXPECT_EQ(View.ClientHeight, waiting.bottom);
}

TEST_F(FontChoice, CancelChangesNothing)
{
    Open();
    Choose(Font("Courier", -13, 700, 1));
    UpdateWindow(Windows.View);
    const HFONT font = Drawing.ScreenFont;
    const std::int32_t height = View.LineHeight;
    Cancel();
    ExpectSettings("Courier", -13, 700, 1);
    EXPECT_EQ(font, Drawing.ScreenFont);
    EXPECT_EQ(height, View.LineHeight);
    EXPECT_FALSE(GetUpdateRect(Windows.View, nullptr, FALSE));
}

TEST_F(FontChoice, InADumpAProportionalFontIsChosenForTextOnly)
{
    Choose(Font("Courier", -13));
    Open();
    SwitchTo(HexMode);
    ASSERT_FALSE(View.SubstituteFixedFont);
    for (int round = 0; round < 2; ++round) { // also in place of another proportional one
        Choose(Font("Tahoma", -20 - round, 700, 1));
        ExpectSettings("Tahoma", -20 - round, 700, 1);
        EXPECT_TRUE(View.SubstituteFixedFont);
        EXPECT_TRUE(IsStockFontInUse());
        EXPECT_TRUE(View.FontIsFixed);
    }
    SwitchTo(TextMode);
    EXPECT_FALSE(View.SubstituteFixedFont);
    EXPECT_STREQ("Tahoma", FontInUse().lfFaceName);
    EXPECT_EQ(-21, FontInUse().lfHeight);
}

TEST_F(FontChoice, InADumpAFixedFontIsShownAtOnce)
{
    Choose(Font("Tahoma", -13));
    Open();
    SwitchTo(HexMode);
    ASSERT_TRUE(View.SubstituteFixedFont);
    Choose(Font("Courier", -13));
    EXPECT_FALSE(View.SubstituteFixedFont);
    EXPECT_FALSE(IsStockFontInUse());
    EXPECT_STREQ("Courier", FontInUse().lfFaceName);
    const BeepCounter beeps;
    StepScreenFont(FontStep::Larger);
    EXPECT_EQ(0, beeps.Count());
    SwitchTo(TextMode);
    EXPECT_STREQ("Courier", FontInUse().lfFaceName);
}

TEST_F(FontChoice, AFileThatIsNoTextIsShownAsTextInTheChosenFont)
{
    const ScratchFile file("font.bin", std::string(5000, 'x')); // a line too long for a text
    ASSERT_TRUE(OpenSequence(Windows.Main, file.Path()));
    ASSERT_TRUE(View.HexMode);
    SwitchTo(TextMode);
    Choose(Font("Tahoma", -20));
    EXPECT_FALSE(View.SubstituteFixedFont);
    EXPECT_STREQ("Tahoma", FontInUse().lfFaceName);
}

TEST_F(FontChoice, ManyFontsLeaveNoObjectBehind)
{
    Open();
    Choose(Font("Tahoma", -10));
    SwitchTo(HexMode);
    Choose(Font("Courier", -10));
    SwitchTo(TextMode);
    PumpMessages();
    const int before = FreeGdiObjects();
    for (int round = 0; round < 100; ++round) {
        Choose(Font(round % 2 == 0 ? "Tahoma" : "Courier", -10 - round % 7));
        SwitchTo(round % 4 < 2 ? HexMode : TextMode);
    }
    ASSERT_FALSE(View.HexMode); // where the chosen font is in use, as before
    PumpMessages();
    EXPECT_EQ(before, FreeGdiObjects());
}
