#include "support/dialogs.h"
#include "support/file_list.h"
#include "support/find_dialog.h"
#include "support/input.h"
#include "support/marks.h"
#include "support/ui_test.h"

namespace {

constexpr char ColoursTitle[] = "Select Colours";

// The palette as pixels are read.
constexpr std::uint32_t Palette[] = {0x000000, 0x0000FF, 0x00FF00, 0x00FFFF, 0xFF0000, 0xFF00FF, 0xFFFF00, 0xFFFFFF,
                                     0xC0C0C0, 0x000080, 0x008000, 0x008080, 0x800000, 0x800080, 0x808000, 0x808080};

enum : int { Green = 2, Red = 4, DarkRed = 12 };

enum Region : int { OutputWindow, TextRuler, MarkedText, StatusLine, LockedText, RegionCount };

const std::vector<std::string> RegionNames = {"Output Window", "Text Ruler", "Marked Text", "Status Line",
                                              "Locked Text"};

constexpr struct {
    const char* Foreground;
    const char* Background;
} Keys[] = {{"Fcolour", "Bcolour"},
            {"RlFcolour", "RlBcolour"},
            {"MkFcolour", "MkBcolour"},
            {"StFcolour", "StBcolour"},
            {"LkFcolour", "LkBcolour"}};

// A region's two colours, as palette indices.
struct Pair {
    int Foreground;
    int Background;

    bool operator==(const Pair&) const = default;
};

constexpr Pair Defaults[] = {{7, 1}, {0, 6}, {0, 6}, {0, 8}, {7, 9}};

// Everything that the colours are for is in sight: the ruler, the status line, two locked rows (the second and the
// third line) and a found word in the line below them.
class ColoursTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont + std::string("Ruler=1\n"));
    }

    static std::string Arguments()
    {
        return "-L 1 2 0 2 " +
               WriteScratch("lines.txt", "HHHHHHHH\r\nHHHHHHHH\r\nHHHHHHHH\r\nIIneedle\r\nHHHHHHHH\r\n");
    }
};

HWND ShowColours(const Program& program)
{
    EXPECT_TRUE(WaitForKeyboard(program));
    EXPECT_TRUE(OpenMenu(program, 'O'));
    PressKeys({'C'});
    return WaitForDialog(program, ColoursTitle);
}

int RegionShown(HWND dialog)
{
    DWORD_PTR index = 0;
    EXPECT_NE(SendMessageTimeoutA(GetDlgItem(dialog, IDC_COLOUR_REGION), CB_GETCURSEL, 0, 0, SMTO_NORMAL,
                                  DefaultWaitLimit, &index),
              0);
    return static_cast<int>(index);
}

// By the arrow keys of the box.
void ChooseRegion(HWND dialog, int region)
{
    PressKeys({VK_MENU, 'R'});
    ASSERT_TRUE(WaitUntil([&] { return IsTypedInto(dialog, IDC_COLOUR_REGION); }));
    PressKeys({VK_HOME});
    ASSERT_TRUE(WaitUntil([&] { return RegionShown(dialog) == 0; }));
    for (int i = 1; i <= region; ++i) {
        PressKeys({VK_DOWN});
        ASSERT_TRUE(WaitUntil([&] { return RegionShown(dialog) == i; }));
    }
}

// By the mouse.
void ChooseColour(HWND dialog, int side, int index)
{
    ClickControl(dialog, side);
    ExpectChecked(dialog, side, true);
    ClickControl(dialog, IDC_COLOUR_FIRST + index);
    EXPECT_TRUE(WaitUntil([&] { return FocusOf(dialog) == GetDlgItem(dialog, IDC_COLOUR_FIRST + index); }));
}

void ChooseColours(HWND dialog, int region, const Pair& pair)
{
    ChooseRegion(dialog, region);
    ChooseColour(dialog, IDC_COLOUR_FOREGROUND, pair.Foreground);
    ChooseColour(dialog, IDC_COLOUR_BACKGROUND, pair.Background);
}

// Chooses a region's colours in a dialog of their own, and confirms.
void SetColours(const Program& program, int region, const Pair& pair)
{
    const HWND dialog = ShowColours(program);
    ASSERT_NE(dialog, nullptr);
    ChooseColours(dialog, region, pair);
    ClickControl(dialog, IDOK);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    EXPECT_TRUE(program.Answers());
}

bool IsTextOn(const Pixels& pixels, const Pair& pair)
{
    const int text = pixels.CountOf(Palette[pair.Foreground]);
    return text > 10 && text + pixels.CountOf(Palette[pair.Background]) == pixels.Width * pixels.Height;
}

// What is seen of a region, without its edges.
Pixels ReadRegion(Program& program, int region)
{
    const SIZE ruler = ClientSize(program.Ruler());
    const SIZE status = ClientSize(program.Status());
    constexpr int Edge = 4;
    switch (region) {
    case TextRuler: return program.Inside().Read(program.Ruler(), 0, 0, ruler.cx, ruler.cy);
    case StatusLine: return program.Inside().Read(program.Status(), 10, Edge, status.cx - 20, status.cy - 2 * Edge);
    case LockedText: return ReadRow(program, 0);
    case MarkedText: return program.Inside().Read(program.View(), ColumnX(2), RowY(2), 6 * CellWidth(), CellHeight());
    default: return ReadRow(program, 3);
    }
}

// The regions that are not in these colours, once everything has been painted.
std::string Wrong(Program& program, const Pair (&pairs)[RegionCount])
{
    std::string wrong;
    for (int region = 0; region < RegionCount; ++region) {
        if (!IsTextOn(ReadRegion(program, region), pairs[region])) {
            wrong += RegionNames[static_cast<std::size_t>(region)] + "; ";
        }
    }
    return wrong;
}

void ExpectColours(Program& program, const Pair (&pairs)[RegionCount])
{
    EXPECT_TRUE(WaitUntil([&] { return Wrong(program, pairs).empty(); }, 5000)) << Wrong(program, pairs);
}

Pixels ReadSample(Program& program, HWND dialog)
{
    const HWND sample = GetDlgItem(dialog, IDC_COLOUR_SAMPLE);
    const SIZE size = ClientSize(sample);
    return program.Inside().Read(sample, 0, 0, size.cx, size.cy);
}

void ExpectSample(Program& program, HWND dialog, const Pair& pair)
{
    EXPECT_TRUE(WaitUntil([&] { return IsTextOn(ReadSample(program, dialog), pair); }, 5000))
        << "not " << pair.Foreground << " on " << pair.Background;
}

// Starts the program with everything in sight.
bool Prepare(Program& program)
{
    if (!program.WaitForFrame()) {
        return false;
    }
    FindText(program, "needle");
    return WaitForKeyboard(program);
}

bool Save(const Program& program)
{
    if (!WaitForKeyboard(program)) {
        return false;
    }
    PressKeys({VK_CONTROL, 'S'});
    return WaitUntil([] { return SettingValue("EditorName") != "(none)" && SettingValue("LoadOnDelete") != "(none)"; });
}

} // namespace

TEST_F(ColoursTest, TheMenuKeysShowTheRegionsAndTheColoursOfTheFirst)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowColours(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), program.Frame());
    EXPECT_EQ(ComboTexts(dialog, IDC_COLOUR_REGION), RegionNames);
    EXPECT_EQ(RegionShown(dialog), 0);
    EXPECT_TRUE(IsChecked(dialog, IDC_COLOUR_FOREGROUND));
    EXPECT_FALSE(IsChecked(dialog, IDC_COLOUR_BACKGROUND));
    ExpectSample(program, dialog, Defaults[OutputWindow]);
    PressKeys({VK_ESCAPE});
    EXPECT_TRUE(WaitUntilClosed(dialog));
}

TEST_F(ColoursTest, EachButtonHasItsColourInABlackFrameOnWhite)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowColours(program);
    ASSERT_NE(dialog, nullptr);
    for (int i = 0; i < 16; ++i) {
        const HWND button = GetDlgItem(dialog, IDC_COLOUR_FIRST + i);
        const SIZE size = ClientSize(button);
        EXPECT_TRUE(WaitUntil([&] {
            const Pixels pixels = program.Inside().Read(button, 0, 0, size.cx, size.cy);
            bool right = true;
            for (int y = 0; y < size.cy; ++y) {
                for (int x = 0; x < size.cx; ++x) {
                    const int depth = std::min({x, y, static_cast<int>(size.cx) - 1 - x,
                                                static_cast<int>(size.cy) - 1 - y}); // from the nearest edge
                    right = right && pixels.At(x, y) == (depth < 2 ? White : depth == 2 ? Black : Palette[i]);
                }
            }
            return right;
        })) << i;
    }
}

TEST_F(ColoursTest, TheFocusIsSeenOnAColour)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowColours(program);
    ASSERT_NE(dialog, nullptr);
    const HWND button = GetDlgItem(dialog, IDC_COLOUR_FIRST);
    const SIZE size = ClientSize(button);
    const auto isMarked = [&] {
        const Pixels edge = program.Inside().Read(button, 0, 0, size.cx, 1);
        return edge.CountOf(White) < edge.Width;
    };
    ASSERT_TRUE(WaitUntil([&] { return IsPainted(program, button) && !isMarked(); }));
    PressKeys({VK_TAB});
    EXPECT_TRUE(WaitUntil(isMarked));
    PressKeys({VK_RIGHT});
    EXPECT_TRUE(WaitUntil([&] { return !isMarked(); }));
    EXPECT_TRUE(WaitUntil([&] { return FocusOf(dialog) == GetDlgItem(dialog, IDC_COLOUR_FIRST + 1); }));
}

TEST_F(ColoursTest, TheSampleFollowsTheRegionAndEachColourChosen)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowColours(program);
    ASSERT_NE(dialog, nullptr);
    for (int region = 0; region < RegionCount; ++region) {
        SCOPED_TRACE(region);
        ChooseRegion(dialog, region);
        ExpectSample(program, dialog, Defaults[region]);
        ChooseColour(dialog, IDC_COLOUR_FOREGROUND, DarkRed);
        ExpectSample(program, dialog, {DarkRed, Defaults[region].Background});
        ClickControl(dialog, IDC_COLOUR_BACKGROUND); // changes nothing yet
        ExpectChecked(dialog, IDC_COLOUR_BACKGROUND, true);
        ExpectSample(program, dialog, {DarkRed, Defaults[region].Background});
        ChooseColour(dialog, IDC_COLOUR_BACKGROUND, Green);
        ExpectSample(program, dialog, {DarkRed, Green});
    }
    ChooseRegion(dialog, OutputWindow); // its choice is still there
    ExpectSample(program, dialog, {DarkRed, Green});
}

TEST_F(ColoursTest, OnlyTheRegionChosenChangesAndItDoesSoAtOnce)
{
    Program program(Arguments());
    ASSERT_TRUE(Prepare(program));
    Pair pairs[RegionCount];
    std::copy(std::begin(Defaults), std::end(Defaults), pairs);
    ExpectColours(program, pairs);
    for (int region = 0; region < RegionCount; ++region) {
        SCOPED_TRACE(RegionNames[static_cast<std::size_t>(region)]);
        pairs[region] = {Red, Green};
        SetColours(program, region, pairs[region]);
        ExpectColours(program, pairs);
        pairs[region] = Defaults[region];
        SetColours(program, region, pairs[region]);
        ExpectColours(program, pairs);
    }
}

TEST_F(ColoursTest, TheWholeWindowTakesTheBackground)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    SetColours(program, OutputWindow, {Red, Green});
    EXPECT_TRUE(WaitUntil([&] {
        const Pixels view = ReadView(program);
        return view.CountOf(Palette[Green]) == view.Width * view.Height;
    }));
}

TEST_F(ColoursTest, TheInchRulerIsDrawnInItsColour)
{
    WriteSettings("WindowSize=40 30 700 500\nFontName=Arial\nFontSize=15\nRuler=1\n");
    Program program(WriteScratch("one.txt", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    SetColours(program, TextRuler, {Red, Green});
    EXPECT_TRUE(WaitUntil([&] { return IsTextOn(ReadRegion(program, TextRuler), {Red, Green}); }));
}

TEST_F(ColoursTest, AllCanBeSetWithTheKeysInOneDialog)
{
    Program program(Arguments());
    ASSERT_TRUE(Prepare(program));
    const HWND dialog = ShowColours(program);
    ASSERT_NE(dialog, nullptr);
    Pair pairs[RegionCount];
    const auto waitForFocus = [&](int control) {
        return WaitUntil([&] { return FocusOf(dialog) == GetDlgItem(dialog, control); });
    };
    for (int region = 0; region < RegionCount; ++region) {
        ChooseRegion(dialog, region);
        pairs[region] = {region, region + 8};
        PressKeys({VK_TAB});
        ASSERT_TRUE(waitForFocus(IDC_COLOUR_FIRST));
        for (int i = 0; i < pairs[region].Foreground; ++i) {
            PressKeys({VK_RIGHT});
            ASSERT_TRUE(waitForFocus(IDC_COLOUR_FIRST + i + 1));
        }
        PressKeys({VK_SPACE});
        ExpectSample(program, dialog, {pairs[region].Foreground, Defaults[region].Background});
        PressKeys({VK_TAB});
        ASSERT_TRUE(waitForFocus(IDC_COLOUR_FOREGROUND));
        PressKeys({VK_DOWN});
        ExpectChecked(dialog, IDC_COLOUR_BACKGROUND, true);
        PressKeys({VK_SHIFT, VK_TAB});
        ASSERT_TRUE(waitForFocus(IDC_COLOUR_FIRST));
        for (int i = 0; i < pairs[region].Background; ++i) {
            PressKeys({VK_DOWN});
            ASSERT_TRUE(waitForFocus(IDC_COLOUR_FIRST + i + 1));
        }
        PressKeys({VK_SPACE});
        ExpectSample(program, dialog, pairs[region]);
        PressKeys({VK_TAB});
        ASSERT_TRUE(waitForFocus(IDC_COLOUR_BACKGROUND));
        PressKeys({VK_UP});
        ExpectChecked(dialog, IDC_COLOUR_FOREGROUND, true);
    }
    Accept(program, dialog);
    ExpectColours(program, pairs);
}

TEST_F(ColoursTest, CancelTheEscapeKeyAndTheCloseBoxUndoEverything)
{
    Program program(Arguments());
    ASSERT_TRUE(Prepare(program));
    for (int way = 0; way < 3; ++way) {
        SCOPED_TRACE(way);
        const HWND dialog = ShowColours(program);
        ASSERT_NE(dialog, nullptr);
        for (int region = 0; region < RegionCount; ++region) {
            ChooseRegion(dialog, region);
            ExpectSample(program, dialog, Defaults[region]);
            ChooseColours(dialog, region, {Red, Green});
            ExpectSample(program, dialog, {Red, Green});
        }
        switch (way) {
        case 0: ClickControl(dialog, IDCANCEL); break;
        case 1: PressKeys({VK_ESCAPE}); break;
        default: PostMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); break;
        }
        ASSERT_TRUE(WaitUntilClosed(dialog));
        ASSERT_TRUE(program.Answers());
        program.ViewTexts(); // painted anew
        ExpectColours(program, Defaults);
    }
    ASSERT_TRUE(Save(program));
    for (int region = 0; region < RegionCount; ++region) {
        EXPECT_EQ(SettingValue(Keys[region].Foreground), std::to_string(Defaults[region].Foreground));
        EXPECT_EQ(SettingValue(Keys[region].Background), std::to_string(Defaults[region].Background));
    }
}

TEST_F(ColoursTest, TheyAreWrittenWithSaveSettingsAndBackAtTheNextStart)
{
    const Pair pairs[RegionCount] = {{2, 13}, {3, 12}, {4, 11}, {5, 10}, {6, 15}};
    {
        Program program(Arguments());
        ASSERT_TRUE(Prepare(program));
        const SettingsKeys before = ReadSettings();
        const HWND dialog = ShowColours(program);
        ASSERT_NE(dialog, nullptr);
        for (int region = 0; region < RegionCount; ++region) {
            ChooseColours(dialog, region, pairs[region]);
        }
        ClickControl(dialog, IDOK);
        ASSERT_TRUE(WaitUntilClosed(dialog));
        ExpectColours(program, pairs);
        EXPECT_EQ(ReadSettings(), before);
        ASSERT_TRUE(Save(program));
        for (int region = 0; region < RegionCount; ++region) {
            EXPECT_EQ(SettingValue(Keys[region].Foreground), std::to_string(pairs[region].Foreground));
            EXPECT_EQ(SettingValue(Keys[region].Background), std::to_string(pairs[region].Background));
        }
        EXPECT_EQ(program.Close(), 0u);
    }
    Program program(Arguments());
    ASSERT_TRUE(Prepare(program));
    ExpectColours(program, pairs);
    const HWND dialog = ShowColours(program);
    ASSERT_NE(dialog, nullptr);
    for (int region = 0; region < RegionCount; ++region) {
        ChooseRegion(dialog, region);
        ExpectSample(program, dialog, pairs[region]);
    }
}

TEST_F(ColoursTest, AnIndexThatIsNoColourIsShownAndKeptAsTheRegionsOwn)
{
    WriteSettings(FixedFont + std::string("Ruler=1\nFcolour=16\nBcolour=-1\nStBcolour=99\nLkFcolour=500\n"));
    Program program(Arguments());
    ASSERT_TRUE(Prepare(program));
    ExpectColours(program, Defaults);
    HWND dialog = ShowColours(program);
    ASSERT_NE(dialog, nullptr);
    for (int region = 0; region < RegionCount; ++region) {
        ChooseRegion(dialog, region);
        ExpectSample(program, dialog, Defaults[region]);
    }
    PressKeys({VK_RETURN});
    ASSERT_TRUE(WaitUntilClosed(dialog));
    ExpectColours(program, Defaults);
}

TEST_F(ColoursTest, UsingTheDialogAgainAndAgainLeavesNothingBehind)
{
    Program program(Arguments());
    ASSERT_TRUE(Prepare(program));
    constexpr int Uses = 3; // a round; the system keeps some objects for itself, but not one a use in each round
    constexpr int MostRounds = 4;
    const auto round = [&](const Pair& pair) {
        for (int i = 0; i < Uses; ++i) {
            SetColours(program, OutputWindow, pair);
        }
        EXPECT_TRUE(WaitUntil([&] { return IsTextOn(ReadRegion(program, OutputWindow), pair); }));
        return program.Inside().Use().GdiObjects;
    };
    round({Red, Green});
    int leastGrowth = Uses;
    for (int i = 0; i < MostRounds && leastGrowth >= Uses; ++i) {
        const int before = round({Green, Red});
        leastGrowth = std::min(leastGrowth, round({Red, Green}) - before);
    }
    EXPECT_LT(leastGrowth, Uses);
}
