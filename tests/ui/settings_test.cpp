#include "support/ui_test.h"

namespace {

class SettingsTest : public UiTest {};

// Starts with the settings as they are, saves them and ends.
void StartAndSave(const std::string& arguments = "")
{
    Program program(arguments);
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_OPTIONS_SAVE);
    EXPECT_EQ(program.Close(), 0u);
}

std::string NameOf(const std::string& text)
{
    return text.substr(0, text.find('='));
}

// Rows of the view, which tell the height of its font.
int RowsShown(const std::string& settings)
{
    WriteSettings(settings);
    Program program(WriteScratch("rows.txt", NumberedLines(1000)));
    EXPECT_TRUE(program.WaitForFrame());
    return 1000 - program.Vertical().Max;
}

} // namespace

TEST_F(SettingsTest, SavesTheDefaultsInOrder)
{
    StartAndSave();
    const std::string window = "0 0 " + std::to_string(GetSystemMetrics(SM_CXSCREEN)) + " " +
                               std::to_string(GetSystemMetrics(SM_CYSCREEN) - GetSystemMetrics(SM_CYICON) -
                                              2 * GetSystemMetrics(SM_CYCAPTION));
    // The size of the screen font is written positive, those of the print fonts as they are held.
    const SettingsKeys expected = {{"Fcolour", "7"},      {"Bcolour", "1"},       {"RlFcolour", "0"},
                                   {"RlBcolour", "6"},    {"MkFcolour", "0"},     {"MkBcolour", "6"},
                                   {"StFcolour", "0"},    {"StBcolour", "8"},     {"LkFcolour", "7"},
                                   {"LkBcolour", "9"},    {"Ptabs", "0"},         {"Ruler", "0"},
                                   {"FontSize", "13"},    {"FontWeight", "400"},  {"FontItalic", "0"},
                                   {"UseHeadFont", "0"},  {"HdFontSize", "-13"},  {"HdFontWeight", "0"},
                                   {"HdFontItalic", "0"}, {"UseBodyFont", "0"},   {"BdFontSize", "-13"},
                                   {"BdFontWeight", "0"}, {"BdFontItalic", "0"},  {"StatusLine", "1"},
                                   {"ButtonBar", "1"},    {"ScrollBars", "1"},    {"SuppressMenu", "0"},
                                   {"ExitOnEsc", "0"},    {"OemToAnsi", "0"},     {"FixedLineLen", "75"},
                                   {"AutoZip", "0"},      {"MaxTextSize", "12"},  {"TabSize", "8"},
                                   {"MinOnLaunch", "0"},  {"MaxLaunchApp", "0"},  {"MaxLineLen", "512"},
                                   {"LoadOnDelete", "0"}, {"FontName", "System"}, {"EditorName", "notepad"},
                                   {"WindowSize", window}};
    EXPECT_EQ(ReadSettings(), expected);
}

TEST_F(SettingsTest, SavesEverySettingAsItWasRead)
{
    const std::string lines[] = {"Fcolour=15",
                                 "Bcolour=2",
                                 "RlFcolour=3",
                                 "RlBcolour=4",
                                 "MkFcolour=5",
                                 "MkBcolour=8",
                                 "StFcolour=9",
                                 "StBcolour=10",
                                 "LkFcolour=11",
                                 "LkBcolour=12",
                                 "Ptabs=1",
                                 "Ruler=1",
                                 "FontSize=17",
                                 "FontWeight=700",
                                 "FontItalic=1",
                                 "UseHeadFont=1",
                                 "HdFontSize=-21",
                                 "HdFontWeight=600",
                                 "HdFontItalic=1",
                                 "UseBodyFont=1",
                                 "BdFontSize=-22",
                                 "BdFontWeight=500",
                                 "BdFontItalic=1",
                                 "StatusLine=0",
                                 "ButtonBar=0",
                                 "ScrollBars=0",
                                 "SuppressMenu=1",
                                 "ExitOnEsc=1",
                                 "OemToAnsi=1",
                                 "FixedLineLen=80",
                                 "AutoZip=1",
                                 "MaxTextSize=3",
                                 "TabSize=4",
                                 "MinOnLaunch=1",
                                 "MaxLaunchApp=1",
                                 "MaxLineLen=600",
                                 "LoadOnDelete=1",
                                 "FontName=Courier",
                                 "EditorName=c:\\edit.exe",
                                 "WindowSize=40 30 700 500"};
    std::string text;
    for (const std::string& line : lines) {
        text += line + "\n";
    }
    WriteSettings(text);
    StartAndSave();
    for (const std::string& line : lines) {
        EXPECT_EQ(NameOf(line) + "=" + SettingValue(NameOf(line)), line);
    }
}

TEST_F(SettingsTest, SavesPositivePrintFontSizesAsHeld)
{
    WriteSettings("HdFontSize=21\nBdFontSize=22\n");
    StartAndSave();
    EXPECT_EQ(SettingValue("HdFontSize"), "-21");
    EXPECT_EQ(SettingValue("BdFontSize"), "-22");
}

TEST_F(SettingsTest, PrintFontSizesOfZeroFollowTheScreenFont)
{
    WriteSettings("FontSize=20\nHdFontSize=0\nBdFontSize=0\n");
    StartAndSave();
    EXPECT_EQ(SettingValue("FontSize"), "20");
    EXPECT_EQ(SettingValue("HdFontSize"), "-20");
    EXPECT_EQ(SettingValue("BdFontSize"), "-20");
}

TEST_F(SettingsTest, FontSizesOfEitherSignAreAlike)
{
    const int small = RowsShown("FontName=Courier\nFontSize=13\n");
    EXPECT_EQ(RowsShown("FontName=Courier\nFontSize=-13\n"), small);
    EXPECT_LT(RowsShown("FontName=Courier\nFontSize=26\n"), small); // the size counts at all
    WriteSettings("FontSize=-13\n");
    StartAndSave();
    EXPECT_EQ(SettingValue("FontSize"), "13");
}

TEST_F(SettingsTest, ClampsTheLineLength)
{
    WriteSettings("MaxLineLen=20\n");
    StartAndSave();
    EXPECT_EQ(SettingValue("MaxLineLen"), "80");
    WriteSettings("MaxLineLen=5000\n");
    StartAndSave();
    EXPECT_EQ(SettingValue("MaxLineLen"), "1024");
}

TEST_F(SettingsTest, OnlyLinesLongerThanTheClampedLengthMakeAFileNonText)
{
    WriteSettings("MaxLineLen=20\n");
    {
        Program program(WriteScratch("80.txt", std::string(80, 'x') + "\r\n"));
        ASSERT_TRUE(program.WaitForFrame());
        EXPECT_TRUE(program.Menu(IDM_VIEW_TEXT).Checked);
    }
    Program program(WriteScratch("81.txt", std::string(81, 'x') + "\r\n"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_TRUE(program.Menu(IDM_VIEW_HEX).Checked);
}

TEST_F(SettingsTest, AMaximisedWindowComesBackMaximised)
{
    {
        Program program("", SW_SHOWNORMAL);
        ASSERT_TRUE(program.WaitForFrame());
        program.Post(WM_SYSCOMMAND, SC_MAXIMIZE);
        ASSERT_TRUE(WaitUntil([&] { return IsZoomed(program.Frame()) != FALSE; }));
        program.Command(IDM_OPTIONS_SAVE);
        EXPECT_EQ(program.Close(), 0u);
    }
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    ASSERT_EQ(sscanf(SettingValue("WindowSize").c_str(), "%d %d %d %d", &left, &top, &width, &height), 4);
    EXPECT_LE(left, 0);
    EXPECT_LE(top, 0);
    EXPECT_GE(width, GetSystemMetrics(SM_CXSCREEN));
    EXPECT_GE(height, GetSystemMetrics(SM_CYSCREEN));
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_TRUE(IsZoomed(program.Frame()));
}

TEST_F(SettingsTest, SavesWhereTheWindowIsNow)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    SetWindowPos(program.Frame(), nullptr, 33, 44, 555, 444, SWP_NOZORDER | SWP_NOACTIVATE);
    program.Command(IDM_OPTIONS_SAVE);
    EXPECT_EQ(SettingValue("WindowSize"), "33 44 555 444");
}

TEST_F(SettingsTest, SavingLeavesOtherKeysAsTheyAre)
{
    WriteSettings("Buttons=0102\nShowBubbles=0\nFilterSpec=All|*.*|\nBuffers=3\nHeader=&f\nSavedFile1=c:\\a.txt\n"
                  "Other=text\n");
    const SettingsKeys before = ReadSettings();
    StartAndSave();
    const SettingsKeys after = ReadSettings();
    ASSERT_EQ(after.size(), before.size() + 40);
    EXPECT_EQ(SettingsKeys(after.begin(), after.begin() + static_cast<std::ptrdiff_t>(before.size())), before);
}

TEST_F(SettingsTest, SavingWritesNoButtonKeys)
{
    StartAndSave();
    EXPECT_EQ(SettingValue("Buttons"), "(none)");
    EXPECT_EQ(SettingValue("ShowBubbles"), "(none)");
}

TEST_F(SettingsTest, ANamedSectionIsReadAndWritten)
{
    WriteSettingsFile("[Kestovar]\nFontSize=11\n[xyz]\nFontSize=19\nSavedFile3=c:\\c.txt\n");
    StartAndSave("-Ixyz");
    EXPECT_EQ(ReadSettings("Kestovar"), (SettingsKeys{{"FontSize", "11"}}));
    EXPECT_EQ(SettingValue("FontSize", "xyz"), "19");
    EXPECT_EQ(SettingValue("WindowSize", "Kestovar"), "(none)");
    EXPECT_NE(SettingValue("WindowSize", "xyz"), "(none)");
    EXPECT_EQ(SettingValue("LoadOnDelete", "xyz"), "0");
}

TEST_F(SettingsTest, ANewSectionIsMadeBySaving)
{
    StartAndSave("-ixyz"); // the switch's letter may be small
    EXPECT_EQ(ReadSettings("xyz").size(), 40u);
    EXPECT_TRUE(ReadSettings("Kestovar").empty());
}

TEST_F(SettingsTest, SectionAndKeyNamesKnowNoCase)
{
    WriteSettingsFile("[KESTOVAR]\nfontsize=19\nMAXLINELEN=99\n");
    StartAndSave();
    EXPECT_EQ(SettingValue("fontsize", "KESTOVAR"), "19");
    EXPECT_EQ(SettingValue("MAXLINELEN", "KESTOVAR"), "99");
}

TEST_F(SettingsTest, AfterACommandLineErrorTheUsualSectionIsNeitherReadNorWritten)
{
    WriteSettings("FontSize=25\nWindowSize=10 20 500 400\nSavedFile1=c:\\a.txt\n");
    const SettingsKeys before = ReadSettings();
    Program program("-L 1");
    EXPECT_NE(program.AnswerBox(), "");
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.Inside().PopupTexts(program.Frame(), 0).back(), "-"); // no recent files
    program.Command(IDM_OPTIONS_SAVE);
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_EQ(ReadSettings(), before);
}

TEST_F(SettingsTest, LeadingDigitsOfAValueCount)
{
    WriteSettings("TabSize=4 columns\nMaxTextSize=many\nFixedLineLen=\n");
    StartAndSave();
    EXPECT_EQ(SettingValue("TabSize"), "4");
    EXPECT_EQ(SettingValue("MaxTextSize"), "0");
}
