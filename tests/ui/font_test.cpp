#include "support/dialogs.h"
#include "support/file_list.h"
#include "support/find_dialog.h"
#include "support/input.h"
#include "support/marks.h"
#include "support/ui_test.h"

#include <algorithm>

namespace {

// The system's chooser.
constexpr char ChooserTitle[] = "Font";
constexpr int ChooserFaces = 1136;
constexpr int ChooserStyles = 1137;
constexpr int ChooserSizes = 1138;

constexpr char FixedFace[] = "Liberation Mono";
constexpr char ProportionalFace[] = "Liberation Sans";

// The screen font: its size by the keys and the menu, and the chooser.
class FontTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }

    static void UseFont(const char* face, int height)
    {
        WriteSettings("WindowSize=40 30 700 500\nFontName=" + std::string(face) +
                      "\nFontSize=" + std::to_string(height) + "\n");
    }

    static std::string Lines() { return WriteScratch("lines.txt", NumberedLines(500)); }
};

int LineHeight(const char* face, int height, int weight = FW_NORMAL)
{
    const HDC screen = GetDC(nullptr);
    const HFONT font = CreateFontA(-height, 0, 0, 0, weight, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, face);
    const HGDIOBJ former = SelectObject(screen, font);
    TEXTMETRICA metrics = {};
    GetTextMetricsA(screen, &metrics);
    SelectObject(screen, former);
    DeleteObject(font);
    ReleaseDC(nullptr, screen);
    return metrics.tmHeight + metrics.tmExternalLeading;
}

int StockLineHeight()
{
    const HDC screen = GetDC(nullptr);
    const HGDIOBJ former = SelectObject(screen, GetStockObject(ANSI_FIXED_FONT));
    TEXTMETRICA metrics = {};
    GetTextMetricsA(screen, &metrics);
    SelectObject(screen, former);
    ReleaseDC(nullptr, screen);
    return metrics.tmHeight + metrics.tmExternalLeading;
}

// The distance of the view's lines; 0 when it cannot be seen.
int LineHeightShown(Program& program)
{
    const std::vector<ProbeText> texts = program.ViewTexts();
    return texts.size() < 2 ? 0 : texts[1].Y - texts[0].Y;
}

void ExpectLineHeight(Program& program, int height)
{
    EXPECT_TRUE(WaitUntil([&] { return LineHeightShown(program) == height; }, 5000))
        << LineHeightShown(program) << " instead of " << height;
    // The scroll bar goes by it.
    EXPECT_EQ(program.Vertical().Max, 500 - ClientSize(program.View()).cy / height);
}

int Beeps(Program& program)
{
    return program.Inside().Use().Beeps;
}

void ExpectBeep(Program& program, WORD key)
{
    const int before = Beeps(program);
    PressKeys({key});
    EXPECT_TRUE(WaitUntil([&] { return Beeps(program) == before + 1; })) << Beeps(program) - before;
}

HWND ShowChooser(const Program& program)
{
    EXPECT_TRUE(WaitForKeyboard(program));
    EXPECT_TRUE(OpenMenu(program, 'O'));
    PressKeys({'F'});
    return WaitForDialog(program, ChooserTitle);
}

LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
{
    DWORD_PTR result = 0;
    EXPECT_NE(SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, DefaultWaitLimit, &result), 0);
    return static_cast<LRESULT>(result);
}

// Chooses an entry as a click on it does.
void ChooseEntry(HWND chooser, int list, const std::string& text)
{
    const std::vector<std::string> entries = ComboTexts(chooser, list);
    const auto entry = std::find(entries.begin(), entries.end(), text);
    ASSERT_NE(entry, entries.end()) << text << " in " << testing::PrintToString(entries);
    Ask(GetDlgItem(chooser, list), CB_SETCURSEL, static_cast<WPARAM>(entry - entries.begin()));
    Ask(chooser, WM_COMMAND, MAKEWPARAM(list, CBN_SELCHANGE), reinterpret_cast<LPARAM>(GetDlgItem(chooser, list)));
    ExpectText(chooser, list, text);
}

void ConfirmChooser(const Program& program, HWND chooser)
{
    PressControl(chooser, IDOK);
    ASSERT_TRUE(WaitUntilClosed(chooser));
    EXPECT_TRUE(program.Answers());
}

void ChooseFont(const Program& program, const std::string& face, const std::string& points)
{
    const HWND chooser = ShowChooser(program);
    ASSERT_NE(chooser, nullptr);
    ChooseEntry(chooser, ChooserFaces, face);
    ChooseEntry(chooser, ChooserSizes, points);
    ConfirmChooser(program, chooser);
}

// The height that a size has on the screen.
int HeightOf(int points)
{
    const HDC screen = GetDC(nullptr);
    const int height = MulDiv(points, GetDeviceCaps(screen, LOGPIXELSY), 72);
    ReleaseDC(nullptr, screen);
    return height;
}

int CALLBACK IsFixed(const LOGFONTA* font, const TEXTMETRICA*, DWORD, LPARAM result)
{
    *reinterpret_cast<bool*>(result) = (font->lfPitchAndFamily & 3) == FIXED_PITCH;
    return 0;
}

bool IsFixedFace(const std::string& face)
{
    bool fixed = false;
    const HDC screen = GetDC(nullptr);
    EnumFontFamiliesA(screen, face.c_str(), IsFixed, reinterpret_cast<LPARAM>(&fixed));
    ReleaseDC(nullptr, screen);
    return fixed;
}

bool Save(const Program& program)
{
    if (!WaitForKeyboard(program)) {
        return false;
    }
    PressKeys({VK_CONTROL, 'S'});
    return WaitUntil([] { return SettingValue("EditorName") != "(none)" && SettingValue("LoadOnDelete") != "(none)"; });
}

void ShowMode(Program& program, WORD letter, UINT item)
{
    ASSERT_TRUE(WaitForKeyboard(program));
    PressKeys({VK_CONTROL, letter});
    ASSERT_TRUE(WaitUntil([&] { return program.Menu(item).Checked && program.Answers(); }));
}

void ShowHex(Program& program)
{
    ShowMode(program, 'H', IDM_VIEW_HEX);
}

void ShowText(Program& program)
{
    ShowMode(program, 'T', IDM_VIEW_TEXT);
}

} // namespace

TEST_F(FontTest, TheKeysOfTheNumberPadChangeTheSizeByTwoPoints)
{
    UseFont(FixedFace, 15); // 11 points
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(WaitForKeyboard(program));
    ExpectLineHeight(program, LineHeight(FixedFace, 15));
    for (const int points : {13, 15, 17}) {
        PressKeys({VK_ADD});
        ExpectLineHeight(program, LineHeight(FixedFace, HeightOf(points)));
    }
    for (const int points : {15, 13, 11, 9, 7}) {
        PressKeys({VK_SUBTRACT});
        ExpectLineHeight(program, LineHeight(FixedFace, HeightOf(points)));
    }
    EXPECT_EQ(program.TopText(), "Line 1");
    EXPECT_EQ(Beeps(program), 0);
}

TEST_F(FontTest, TheItemsOfTheMenuDoToo)
{
    UseFont(FixedFace, 15);
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    for (const auto& [letter, points] : {std::pair{'I', 13}, std::pair{'I', 15}, std::pair{'D', 13}}) {
        ASSERT_TRUE(WaitForKeyboard(program));
        ASSERT_TRUE(OpenMenu(program, 'V'));
        PressKeys({static_cast<WORD>(letter)});
        ExpectLineHeight(program, LineHeight(FixedFace, HeightOf(points)));
    }
}

TEST_F(FontTest, TheRulerAndTheViewAreLaidOutForTheNewSize)
{
    WriteSettings("WindowSize=40 30 700 500\nFontName=Liberation Mono\nFontSize=15\nRuler=1\n");
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(WaitForKeyboard(program));
    PressKeys({VK_ADD});
    const int height = LineHeight(FixedFace, HeightOf(13));
    ASSERT_NE(height, LineHeight(FixedFace, 15));
    EXPECT_TRUE(WaitUntil([&] { return ClientSize(program.Ruler()).cy == height; }));
    EXPECT_EQ(PlaceOf(program.Ruler()).bottom, PlaceOf(program.View()).top);
}

TEST_F(FontTest, ThirtyTwoPointsAreTheMost)
{
    UseFont(FixedFace, HeightOf(31));
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(WaitForKeyboard(program));
    PressKeys({VK_ADD});
    ExpectLineHeight(program, LineHeight(FixedFace, HeightOf(32)));
    EXPECT_EQ(Beeps(program), 0);
    ExpectBeep(program, VK_ADD);
    ExpectLineHeight(program, LineHeight(FixedFace, HeightOf(32)));
    PressKeys({VK_SUBTRACT});
    ExpectLineHeight(program, LineHeight(FixedFace, HeightOf(30)));
}

TEST_F(FontTest, SixPointsAreTheLeast)
{
    UseFont(FixedFace, HeightOf(7));
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(WaitForKeyboard(program));
    PressKeys({VK_SUBTRACT});
    ExpectLineHeight(program, LineHeight(FixedFace, HeightOf(6)));
    EXPECT_EQ(Beeps(program), 0);
    ExpectBeep(program, VK_SUBTRACT);
    ExpectLineHeight(program, LineHeight(FixedFace, HeightOf(6)));
    PressKeys({VK_ADD});
    ExpectLineHeight(program, LineHeight(FixedFace, HeightOf(8)));
}

TEST_F(FontTest, ASizeBelowTheLeastCanOnlyGrow)
{
    UseFont(FixedFace, HeightOf(5));
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(WaitForKeyboard(program));
    ExpectBeep(program, VK_SUBTRACT);
    ExpectLineHeight(program, LineHeight(FixedFace, HeightOf(5)));
    PressKeys({VK_ADD});
    ExpectLineHeight(program, LineHeight(FixedFace, HeightOf(7)));
}

TEST_F(FontTest, WithoutAFileTheSizeStays)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_TRUE(program.Menu(IDM_FONT_INCREASE).Greyed);
    EXPECT_TRUE(program.Menu(IDM_FONT_DECREASE).Greyed);
    ASSERT_TRUE(WaitForKeyboard(program));
    PressKeys({VK_ADD});
    PressKeys({VK_ADD});
    PressKeys({VK_SUBTRACT});
    ASSERT_TRUE(Save(program)); // the keys come in their order
    EXPECT_EQ(SettingValue("FontSize"), "15");
    program.Inside().Drop(program.Frame(), Lines());
    ASSERT_TRUE(program.WaitForTitle("lines.txt"));
    EXPECT_FALSE(program.Menu(IDM_FONT_INCREASE).Greyed);
    EXPECT_FALSE(program.Menu(IDM_FONT_DECREASE).Greyed);
    ExpectLineHeight(program, CellHeight());
}

TEST_F(FontTest, AFixedFontKeepsItsNewSizeInHexMode)
{
    UseFont(FixedFace, 15);
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    ShowHex(program);
    PressKeys({VK_ADD});
    const int height = LineHeight(FixedFace, HeightOf(13));
    EXPECT_TRUE(WaitUntil([&] { return LineHeightShown(program) == height; })) << LineHeightShown(program);
    ShowText(program);
    ExpectLineHeight(program, height);
}

TEST_F(FontTest, WhileAnotherStandsInForAProportionalFontInHexModeTheSizeStays)
{
    UseFont(ProportionalFace, 20);
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    ExpectLineHeight(program, LineHeight(ProportionalFace, 20));
    ShowHex(program);
    ASSERT_EQ(LineHeightShown(program), StockLineHeight());
    const Pixels before = ReadView(program);
    ExpectBeep(program, VK_ADD);
    ExpectBeep(program, VK_SUBTRACT);
    EXPECT_TRUE(ReadView(program).Values == before.Values);
    ShowText(program);
    ExpectLineHeight(program, LineHeight(ProportionalFace, 20));
}

TEST_F(FontTest, TheSizeIsWrittenWithSaveSettingsAndNotBefore)
{
    UseFont(FixedFace, 15);
    {
        Program program(Lines());
        ASSERT_TRUE(program.WaitForFrame());
        ASSERT_TRUE(WaitForKeyboard(program));
        PressKeys({VK_ADD});
        ExpectLineHeight(program, LineHeight(FixedFace, HeightOf(13)));
        EXPECT_EQ(SettingValue("FontSize"), "15");
        ASSERT_TRUE(Save(program));
        EXPECT_EQ(SettingValue("FontSize"), std::to_string(HeightOf(13)));
        EXPECT_EQ(program.Close(), 0u);
    }
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    ExpectLineHeight(program, LineHeight(FixedFace, HeightOf(13)));
}

TEST_F(FontTest, TheChooserBeginsWithTheFontInUse)
{
    UseFont(FixedFace, HeightOf(12));
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    const HWND chooser = ShowChooser(program);
    ASSERT_NE(chooser, nullptr);
    EXPECT_EQ(GetWindow(chooser, GW_OWNER), program.Frame());
    ExpectText(chooser, ChooserFaces, FixedFace);
    ExpectText(chooser, ChooserSizes, "12");
}

TEST_F(FontTest, AnotherFaceAndSizeAreUsedAtOnce)
{
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    ChooseFont(program, ProportionalFace, "20");
    ExpectLineHeight(program, LineHeight(ProportionalFace, HeightOf(20)));
    EXPECT_EQ(program.TopText(), "Line 1");
    EXPECT_TRUE(program.StatusText().starts_with("Line 1 ")) << program.StatusText();
    ChooseFont(program, FixedFace, "9");
    ExpectLineHeight(program, LineHeight(FixedFace, HeightOf(9)));
    const HWND chooser = ShowChooser(program);
    ASSERT_NE(chooser, nullptr);
    ExpectText(chooser, ChooserFaces, FixedFace);
    ExpectText(chooser, ChooserSizes, "9");
}

TEST_F(FontTest, TheRulerChangesWithThePitch)
{
    WriteSettings(FixedFont + std::string("Ruler=1\n"));
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(ClientSize(program.Ruler()).cy, CellHeight());
    ChooseFont(program, ProportionalFace, "20");
    EXPECT_TRUE(WaitUntil([&] { return ClientSize(program.Ruler()).cy == 21; })) << ClientSize(program.Ruler()).cy;
    EXPECT_TRUE(program.Inside().Repaint(program.Ruler()).empty()); // it is of inches
}

TEST_F(FontTest, TheStyleIsTakenToo)
{
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    const HWND chooser = ShowChooser(program);
    ASSERT_NE(chooser, nullptr);
    ChooseEntry(chooser, ChooserFaces, ProportionalFace);
    const std::vector<std::string> styles = ComboTexts(chooser, ChooserStyles);
    ASSERT_FALSE(styles.empty());
    ChooseEntry(chooser, ChooserStyles, styles.back()); // bold and slanted
    ChooseEntry(chooser, ChooserSizes, "20");
    ConfirmChooser(program, chooser);
    ASSERT_TRUE(Save(program));
    EXPECT_EQ(SettingValue("FontName"), ProportionalFace);
    EXPECT_EQ(SettingValue("FontSize"), std::to_string(HeightOf(20)));
    EXPECT_EQ(SettingValue("FontWeight"), "700");
    EXPECT_NE(SettingValue("FontItalic"), "0");
}

TEST_F(FontTest, CancelKeepsTheFont)
{
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    const Pixels before = ReadView(program);
    for (const bool key : {false, true}) {
        const HWND chooser = ShowChooser(program);
        ASSERT_NE(chooser, nullptr);
        ChooseEntry(chooser, ChooserFaces, ProportionalFace);
        ChooseEntry(chooser, ChooserSizes, "20");
        ASSERT_TRUE(BringToForeground(chooser));
        if (key) {
            PressKeys({VK_ESCAPE});
        } else {
            PressControl(chooser, IDCANCEL);
        }
        ASSERT_TRUE(WaitUntilClosed(chooser));
        EXPECT_TRUE(WaitUntil([&] { return ReadView(program).Values == before.Values; }));
        ExpectLineHeight(program, CellHeight());
    }
    ASSERT_TRUE(Save(program));
    EXPECT_EQ(SettingValue("FontName"), "Courier");
    EXPECT_EQ(SettingValue("FontSize"), "15");
}

TEST_F(FontTest, TheFontIsWrittenWithSaveSettingsAndBackAtTheNextStart)
{
    {
        Program program(Lines());
        ASSERT_TRUE(program.WaitForFrame());
        ChooseFont(program, ProportionalFace, "20");
        EXPECT_EQ(SettingValue("FontName"), "Courier");
        ASSERT_TRUE(Save(program));
        EXPECT_EQ(SettingValue("FontName"), ProportionalFace);
        EXPECT_EQ(SettingValue("FontSize"), std::to_string(HeightOf(20)));
        EXPECT_EQ(program.Close(), 0u);
    }
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    ExpectLineHeight(program, LineHeight(ProportionalFace, HeightOf(20)));
}

TEST_F(FontTest, OnlyFixedFontsAreOfferedWhileColumnsAreLocked)
{
    Program program("-L 0 0 4 0 " + WriteScratch("wide.txt", Repeated(Repeated("HHHHIIII", 296) + "\r\n", 298 * 100)));
    ASSERT_TRUE(program.WaitForFrame());
    HWND chooser = ShowChooser(program);
    ASSERT_NE(chooser, nullptr);
    const std::vector<std::string> offered = ComboTexts(chooser, ChooserFaces);
    EXPECT_FALSE(offered.empty());
    for (const std::string& face : offered) {
        EXPECT_TRUE(IsFixedFace(face)) << face;
    }
    PressControl(chooser, IDCANCEL);
    ASSERT_TRUE(WaitUntilClosed(chooser));
    program.Command(IDM_VIEW_LOCK); // unlocks
    chooser = ShowChooser(program);
    ASSERT_NE(chooser, nullptr);
    const std::vector<std::string> all = ComboTexts(chooser, ChooserFaces);
    EXPECT_GT(all.size(), offered.size());
    EXPECT_NE(std::find(all.begin(), all.end(), ProportionalFace), all.end());
}

TEST_F(FontTest, LockedRowsAloneLeaveAllFontsToChooseFrom)
{
    Program program("-L 0 2 0 2 " + Lines());
    ASSERT_TRUE(program.WaitForFrame());
    const HWND chooser = ShowChooser(program);
    ASSERT_NE(chooser, nullptr);
    const std::vector<std::string> all = ComboTexts(chooser, ChooserFaces);
    EXPECT_NE(std::find(all.begin(), all.end(), ProportionalFace), all.end());
}

TEST_F(FontTest, AFontThatIsNotThereGivesWayToOneThatIs)
{
    UseFont("No Such Font", 15);
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    const int height = LineHeight("No Such Font", 15); // as the system replaces it
    ExpectLineHeight(program, height);
    EXPECT_EQ(program.TopText(), "Line 1");
    const Pixels view = ReadView(program);
    EXPECT_GT(view.CountOf(White), 100);
    ASSERT_TRUE(WaitForKeyboard(program));
    PressKeys({VK_ADD});
    ExpectLineHeight(program, LineHeight("No Such Font", HeightOf(13)));
    ChooseFont(program, FixedFace, "12");
    ExpectLineHeight(program, LineHeight(FixedFace, HeightOf(12)));
}

TEST_F(FontTest, AProportionalFontChosenInHexModeWaitsForTheText)
{
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    ShowHex(program);
    EXPECT_EQ(LineHeightShown(program), CellHeight());
    ChooseFont(program, ProportionalFace, "20");
    EXPECT_TRUE(WaitUntil([&] { return LineHeightShown(program) == StockLineHeight(); })) << LineHeightShown(program);
    ShowText(program);
    ExpectLineHeight(program, LineHeight(ProportionalFace, HeightOf(20)));
    ShowHex(program);
    EXPECT_EQ(LineHeightShown(program), StockLineHeight());
    ShowText(program);
    ExpectLineHeight(program, LineHeight(ProportionalFace, HeightOf(20)));
}

TEST_F(FontTest, AFixedFontChosenInHexModeIsUsedAtOnce)
{
    UseFont(ProportionalFace, 20);
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    ShowHex(program);
    EXPECT_EQ(LineHeightShown(program), StockLineHeight());
    ChooseFont(program, FixedFace, "20");
    const int height = LineHeight(FixedFace, HeightOf(20));
    EXPECT_TRUE(WaitUntil([&] { return LineHeightShown(program) == height; })) << LineHeightShown(program);
    PressKeys({VK_ADD}); // no other stands in for it any more
    const int larger = LineHeight(FixedFace, HeightOf(22));
    EXPECT_TRUE(WaitUntil([&] { return LineHeightShown(program) == larger; })) << LineHeightShown(program);
    ShowText(program);
    ExpectLineHeight(program, larger);
}

TEST_F(FontTest, ChangingTheSizeAgainAndAgainLeavesNoFontsBehind)
{
    UseFont(FixedFace, HeightOf(6));
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(WaitForKeyboard(program));
    const auto round = [&] {
        for (int i = 0; i < 13; ++i) {
            PressKeys({VK_ADD});
        }
        ExpectLineHeight(program, LineHeight(FixedFace, HeightOf(32)));
        for (int i = 0; i < 13; ++i) {
            PressKeys({VK_SUBTRACT});
        }
        ExpectLineHeight(program, LineHeight(FixedFace, HeightOf(6)));
        return program.Inside().Use().GdiObjects;
    };
    round();
    const int before = round();
    EXPECT_LE(round(), before + 2);
}
