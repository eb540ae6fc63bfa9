// The settings through the system's profile functions, in the real file.
#include "app/settings_file.h"

#include "app/app_state.h"
#include "app/command_line.h"
#include "app/settings_table.h"
#include "base/intl.h"
#include "base/text.h"
#include "buttonbar/button_order.h"
#include "document/block_cache.h"
#include "document/document_state.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "print/print_settings.h"
#include "view/frame_windows.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <string>
#include <vector>

namespace {

constexpr char IniFile[] = "KESTOVAR.INI";

struct KeyAndDefault {
    const char* Key;
    std::int32_t Default;
};

// In the order of the file.
constexpr KeyAndDefault IntegerKeys[] = {
    {"Fcolour", 7},      {"Bcolour", 1},      {"RlFcolour", 0},    {"RlBcolour", 6},    {"MkFcolour", 0},
    {"MkBcolour", 6},    {"StFcolour", 0},    {"StBcolour", 8},    {"LkFcolour", 7},    {"LkBcolour", 9},
    {"Ptabs", 0},        {"Ruler", 0},        {"FontSize", -13},   {"FontWeight", 400}, {"FontItalic", 0},
    {"UseHeadFont", 0},  {"HdFontSize", -13}, {"HdFontWeight", 0}, {"HdFontItalic", 0}, {"UseBodyFont", 0},
    {"BdFontSize", -13}, {"BdFontWeight", 0}, {"BdFontItalic", 0}, {"StatusLine", 1},   {"ButtonBar", 1},
    {"ScrollBars", 1},   {"SuppressMenu", 0}, {"ExitOnEsc", 0},    {"OemToAnsi", 0},    {"FixedLineLen", 75},
    {"AutoZip", 0},      {"MaxTextSize", 12}, {"TabSize", 8},      {"MinOnLaunch", 0},  {"MaxLaunchApp", 0},
    {"MaxLineLen", 512}, {"LoadOnDelete", 0},
};

// The variable of a key of the table above.
std::int32_t& ValueOf(const char* key)
{
    const SettingRow* row = SettingsTable;
    while (strcmp(row->Key, key) != 0) {
        ++row;
    }
    return *row->Value;
}

void Write(const char* key, const std::string& value, const char* section = "test")
{
    WritePrivateProfileStringA(section, key, value.c_str(), IniFile);
}

std::string Saved(const char* key, const char* section = "test")
{
    char text[600] = "";
    GetPrivateProfileStringA(section, key, "<none>", text, sizeof text, IniFile);
    return text;
}

// The file's lines as they stand on the disk, empty ones left out.
std::vector<std::string> FileLines()
{
    WritePrivateProfileStringA(nullptr, nullptr, nullptr, IniFile);
    std::vector<std::string> lines;
    std::string line;
    for (const char c : FileContent(SettingsFilePath()) + "\n") {
        if (c != '\r' && c != '\n') {
            line += c;
        } else if (!line.empty()) {
            lines.push_back(line);
            line.clear();
        }
    }
    return lines;
}

std::vector<std::string> KeysInFile()
{
    std::vector<std::string> keys;
    for (const std::string& line : FileLines()) {
        if (line[0] != '[') {
            keys.push_back(line.substr(0, line.find('=')));
        }
    }
    return keys;
}

class Settings : public RunningProgram {
protected:
    Settings()
    {
        RemoveSettingsFile();
        App.Start = ParseCommandLine("-Itest");
        App.Recent = RecentFiles{};
        PrintOptions = PrintSettings{};
        ButtonBar = ButtonBarState{};
    }

    ~Settings() override
    {
        RemoveSettingsFile();
        App.Recent = RecentFiles{};
        PrintOptions = PrintSettings{};
        ButtonBar = ButtonBarState{};
        Intl = IntlSettings{};
    }
};

// The user's own "intl" keys come back when the test is over.
class IntlKeys : public Settings {
protected:
    IntlKeys()
    {
        for (const char* key : {"iTime", "iDate", "iMeasure", "sDate", "sTime", "s1159", "s2359"}) {
            char text[100] = "";
            GetProfileStringA("intl", key, "<none>", text, sizeof text);
            Before[key] = text;
            WriteProfileStringA("intl", key, nullptr);
        }
    }

    ~IntlKeys() override
    {
        for (const auto& [key, text] : Before) {
            WriteProfileStringA("intl", key.c_str(), text == "<none>" ? nullptr : text.c_str());
        }
    }

    std::map<std::string, std::string> Before;
};

void SetRecent(std::initializer_list<const char*> paths)
{
    App.Recent = RecentFiles{};
    for (const char* path : paths) {
        CopyText(App.Recent.Paths[App.Recent.Count++], path);
    }
}

// While there is one, this thread makes no dialog box: each is counted and answered at once.
class NoDialogs {
public:
    NoDialogs() : Hook(SetWindowsHookExA(WH_CBT, Refuse, nullptr, GetCurrentThreadId())) { Refused = 0; }
    ~NoDialogs() { UnhookWindowsHookEx(Hook); }
    NoDialogs(const NoDialogs&) = delete;
    NoDialogs& operator=(const NoDialogs&) = delete;

    int Count() const { return Refused; }

private:
    static LRESULT CALLBACK Refuse(int code, WPARAM wParam, LPARAM lParam)
    {
        char className[20] = "";
        if (code == HCBT_CREATEWND) {
            GetClassNameA(reinterpret_cast<HWND>(wParam), className, sizeof className);
        }
        if (strcmp(className, "#32770") != 0) {
            return CallNextHookEx(nullptr, code, wParam, lParam);
        }
        ++Refused;
        return 1;
    }

    static inline int Refused;
    HHOOK Hook;
};

// Saves everything, each part different from what the file can hold.
void SaveAll()
{
    DocumentOptions.TabSize = 7;
    SetRecent({"c:\\unwritten.txt"});
    CopyText(PrintOptions.Header, "unwritten");
    ButtonBar.ButtonCount = 1;
    ButtonBar.ButtonOrder[0] = 9;
    SaveSettings();
    SaveRecentFiles();
    SavePrintSettings();
    SaveButtonSettings();
    FileLines();
}

// A settings file as this program once wrote it, and its content.
std::string WriteSettingsFile()
{
    Write("TabSize", "3");
    Write("Header", "written");
    FileLines();
    return FileContent(SettingsFilePath());
}

} // namespace

TEST_F(Settings, WithoutAFileEverythingHasItsDefault)
{
    for (const KeyAndDefault& row : IntegerKeys) {
        ValueOf(row.Key) = 4242;
    }
    LoadSettings();
    for (const KeyAndDefault& row : IntegerKeys) {
        EXPECT_EQ(row.Default, ValueOf(row.Key)) << row.Key;
    }
    EXPECT_STREQ("System", ViewOptions.FontName);
    EXPECT_STREQ("notepad", AppOptions.EditorName);
    EXPECT_STREQ("", AppOptions.FilterSpec);
    EXPECT_EQ(0, App.Recent.Count);
    EXPECT_EQ(17, ButtonBar.ButtonCount);
    EXPECT_EQ(1, ButtonBar.ShowBubbles);
    EXPECT_EQ(5, ReadBufferCount());
    char size[WindowSizeTextSize] = "left over";
    ReadWindowSize(size);
    EXPECT_STREQ("", size);
    EXPECT_FALSE(FileExists(SettingsFilePath())) << "loading wrote the file";
}

TEST_F(Settings, TheFileLiesInTheWindowsDirectory)
{
    SaveSettings();
    FileLines();
    EXPECT_TRUE(FileExists(SettingsFilePath()));
}

TEST_F(Settings, EveryIntegerIsReadFromItsKey)
{
    int number = 100;
    for (const KeyAndDefault& row : IntegerKeys) {
        Write(row.Key, std::to_string(number++));
    }
    LoadSettings();
    number = 100;
    for (const KeyAndDefault& row : IntegerKeys) {
        const bool isFontSize = strstr(row.Key, "FontSize") != nullptr;
        EXPECT_EQ(isFontSize ? -number : number, ValueOf(row.Key)) << row.Key;
        ++number;
    }
}

TEST_F(Settings, SavingWritesEveryKeyInItsOrder)
{
    LoadSettings();
    SaveSettings();
    std::vector<std::string> expected;
    for (const KeyAndDefault& row : IntegerKeys) {
        expected.push_back(row.Key);
    }
    expected.insert(expected.end(), {"FontName", "EditorName", "WindowSize"});
    EXPECT_EQ(expected, KeysInFile());
    EXPECT_EQ("[test]", FileLines().front());
}

TEST_F(Settings, SavingWritesPlainDecimals)
{
    LoadSettings();
    ViewOptions.Foreground[OutputRegion] = -5;
    DocumentOptions.TabSize = 123456789;
    AppOptions.LoadOnDelete = INT32_MIN;
    SaveSettings();
    const std::vector<std::string> lines = FileLines();
    for (const char* line : {"Fcolour=-5", "TabSize=123456789", "LoadOnDelete=-2147483648", "Ptabs=0",
                             "FontName=System", "EditorName=notepad"}) {
        EXPECT_NE(lines.end(), std::find(lines.begin(), lines.end(), line)) << line;
    }
}

TEST_F(Settings, WhatIsSavedIsLoadedAgain)
{
    LoadSettings();
    int number = 200;
    for (const KeyAndDefault& row : IntegerKeys) {
        const bool isFontSize = strstr(row.Key, "FontSize") != nullptr;
        ValueOf(row.Key) = isFontSize ? -number : number;
        ++number;
    }
    CopyText(ViewOptions.FontName, "Courier New");
    CopyText(AppOptions.EditorName, "c:\\tools\\my editor.exe");
    SaveSettings();
    std::map<std::string, std::int32_t> before;
    for (const KeyAndDefault& row : IntegerKeys) {
        before[row.Key] = ValueOf(row.Key);
        ValueOf(row.Key) = 0;
    }
    ViewOptions.FontName[0] = AppOptions.EditorName[0] = '\0';
    LoadSettings();
    for (const KeyAndDefault& row : IntegerKeys) {
        EXPECT_EQ(before[row.Key], ValueOf(row.Key)) << row.Key;
    }
    EXPECT_STREQ("Courier New", ViewOptions.FontName);
    EXPECT_STREQ("c:\\tools\\my editor.exe", AppOptions.EditorName);
}

TEST_F(Settings, NeitherFilterNorBuffersAreEverWritten)
{
    LoadSettings();
    CopyText(AppOptions.FilterSpec, "filter");
    SaveSettings();
    SavePrintSettings();
    SaveButtonSettings();
    SaveRecentFiles();
    EXPECT_EQ("<none>", Saved("FilterSpec"));
    EXPECT_EQ("<none>", Saved("Buffers"));
}

TEST_F(Settings, SavingRecordsTheMainWindowsRectangle)
{
    SetWindowPos(Windows.Main, nullptr, 10, 20, 640, 480, SWP_NOZORDER | SWP_NOACTIVATE);
    RECT r;
    GetWindowRect(Windows.Main, &r);
    SaveSettings();
    EXPECT_EQ("10 20 640 480", Saved("WindowSize"));
    EXPECT_EQ(640, r.right - r.left);
    char size[WindowSizeTextSize];
    ReadWindowSize(size);
    EXPECT_STREQ("10 20 640 480", size);
}

TEST_F(Settings, MaxLineLenIsBroughtWithinItsLimits)
{
    const struct {
        const char* Written;
        std::int32_t Loaded;
    } values[] = {{"20", 80}, {"5000", 1024}, {"80", 80}, {"1024", 1024},
                  {"79", 80}, {"1025", 1024}, {"-1", 80}, {"300", 300}};
    for (const auto& value : values) {
        Write("MaxLineLen", value.Written);
        LoadSettings();
        EXPECT_EQ(value.Loaded, DocumentOptions.MaxLineLen) << value.Written;
    }
}

TEST_F(Settings, EveryOtherIntegerIsTakenAsItStands)
{
    Write("Fcolour", "99");
    Write("TabSize", "-3");
    Write("FixedLineLen", "0");
    Write("MaxTextSize", "2147483647");
    LoadSettings();
    EXPECT_EQ(99, ViewOptions.Foreground[OutputRegion]);
    EXPECT_EQ(-3, DocumentOptions.TabSize);
    EXPECT_EQ(0, DocumentOptions.FixedLineLen);
    EXPECT_EQ(2147483647, DocumentOptions.MaxTextSize);
}

TEST_F(Settings, ANumberEndsAtTheFirstCharacterThatIsNoDigit)
{
    Write("TabSize", "12abc");
    Write("Ruler", "abc");
    LoadSettings();
    EXPECT_EQ(12, DocumentOptions.TabSize);
    EXPECT_EQ(0, ViewOptions.Ruler);
}

TEST_F(Settings, FontSizesOf13AndMinus13LoadAlike)
{
    for (const char* size : {"13", "-13"}) {
        for (const char* key : {"FontSize", "HdFontSize", "BdFontSize"}) {
            Write(key, size);
        }
        LoadSettings();
        EXPECT_EQ(-13, ViewOptions.FontSize);
        EXPECT_EQ(-13, PrintOptions.HeadFont.Size);
        EXPECT_EQ(-13, PrintOptions.BodyFont.Size);
    }
}

TEST_F(Settings, APrintFontWithoutASizeFollowsTheScreenFont)
{
    Write("FontSize", "21");
    Write("HdFontSize", "0");
    LoadSettings();
    EXPECT_EQ(-21, PrintOptions.HeadFont.Size);
    EXPECT_EQ(-21, PrintOptions.BodyFont.Size);
    Write("BdFontSize", "9");
    LoadSettings();
    EXPECT_EQ(-9, PrintOptions.BodyFont.Size);
}

TEST_F(Settings, SavingWritesTheScreenFontPositiveAndThePrintFontsAsHeld)
{
    LoadSettings();
    ViewOptions.FontSize = -20;
    PrintOptions.HeadFont.Size = -11;
    PrintOptions.BodyFont.Size = -12;
    SaveSettings();
    EXPECT_EQ("20", Saved("FontSize"));
    EXPECT_EQ("-11", Saved("HdFontSize"));
    EXPECT_EQ("-12", Saved("BdFontSize"));
    EXPECT_EQ(-20, ViewOptions.FontSize);
}

TEST_F(Settings, TheSmallestFontSizeSurvivesSavingAndLoading)
{
    Write("FontSize", "-2147483648");
    LoadSettings();
    EXPECT_EQ(-INT32_MAX, ViewOptions.FontSize);
    SaveSettings();
    EXPECT_EQ("2147483647", Saved("FontSize"));
}

TEST_F(Settings, TheNumberOfBuffersIsBroughtWithinItsLimitsWhenBuffersAreSetUp)
{
    const struct {
        const char* Written;
        std::int32_t Used;
    } values[] = {{"9", 5}, {"-1", 0}, {"0", 0}, {"3", 3}, {"5", 5}, {"6", 5}};
    for (const auto& value : values) {
        Write("Buffers", value.Written);
        Document.BufferCount = -1;
        ASSERT_TRUE(InitBuffers());
        EXPECT_EQ(value.Used, Document.BufferCount) << value.Written;
        FreeBuffers();
    }
}

TEST_F(Settings, TheNumberOfBuffersIsReadOnce)
{
    Write("Buffers", "2");
    Document.BufferCount = -1;
    ASSERT_TRUE(InitBuffers());
    FreeBuffers();
    Write("Buffers", "4");
    ASSERT_TRUE(InitBuffers());
    EXPECT_EQ(2, Document.BufferCount);
    FreeBuffers();
}

TEST_F(Settings, SectionsNamedOnTheCommandLineAreKeptApart)
{
    Write("TabSize", "3", "Kestovar");
    Write("TabSize", "5", "xyz");
    App.Start = ParseCommandLine("");
    LoadSettings();
    EXPECT_EQ(3, DocumentOptions.TabSize);
    App.Start = ParseCommandLine("-Ixyz");
    LoadSettings();
    EXPECT_EQ(5, DocumentOptions.TabSize);
    DocumentOptions.TabSize = 7;
    SetRecent({"c:\\a.txt"});
    SaveSettings();
    SaveRecentFiles();
    SavePrintSettings();
    SaveButtonSettings();
    EXPECT_EQ("7", Saved("TabSize", "xyz"));
    EXPECT_EQ("c:\\a.txt", Saved("SavedFile1", "xyz"));
    for (const char* key : {"SavedFile1", "Header", "Buttons", "FontName", "WindowSize"}) {
        EXPECT_EQ("<none>", Saved(key, "Kestovar")) << key;
    }
    EXPECT_EQ("3", Saved("TabSize", "Kestovar"));
}

TEST_F(Settings, SectionAndKeyNamesAreFoundInAnyCase)
{
    Write("TABSIZE", "6", "TEST");
    LoadSettings();
    EXPECT_EQ(6, DocumentOptions.TabSize);
}

// After a command line in error.
TEST_F(Settings, TheSectionWithoutANameLeavesTheOthersAlone)
{
    Write("TabSize", "3", "Kestovar");
    App.Start = ParseCommandLine("-L 1 2");
    ASSERT_STREQ("", App.Start.SectionName);
    LoadSettings();
    EXPECT_EQ(8, DocumentOptions.TabSize);
    EXPECT_STREQ("System", ViewOptions.FontName);
    DocumentOptions.TabSize = 5;
    SetRecent({"c:\\a.txt"});
    SaveSettings();
    SaveRecentFiles();
    SavePrintSettings();
    SaveButtonSettings();
    EXPECT_EQ("3", Saved("TabSize", "Kestovar"));
    EXPECT_EQ("<none>", Saved("SavedFile1", "Kestovar"));
    Write("Header", "of the other section", "Kestovar");
    LoadSettings();
    LoadPrintSettings();
    // What was saved without a name comes back without one.
    EXPECT_EQ(5, DocumentOptions.TabSize);
    ASSERT_EQ(1, App.Recent.Count);
    EXPECT_STREQ("c:\\a.txt", App.Recent.Paths[0]);
    EXPECT_STREQ("", PrintOptions.Header);
}

TEST_F(Settings, ValuesLongerThanTheirRoomAreCut)
{
    const std::string value(400, 'v');
    for (const char* key : {"FontName", "FilterSpec", "EditorName", "WindowSize", "SavedFile1", "Header", "Footer",
                            "LeftMargin", "TopMargin", "BottomMargin", "RightMargin", "HdFontName", "BdFontName"}) {
        Write(key, value);
    }
    LoadSettings();
    LoadPrintSettings();
    EXPECT_EQ(std::string(31, 'v'), ViewOptions.FontName);
    EXPECT_EQ(std::string(127, 'v'), AppOptions.FilterSpec);
    EXPECT_EQ(std::string(259, 'v'), AppOptions.EditorName);
    EXPECT_EQ(std::string(259, 'v'), App.Recent.Paths[0]);
    EXPECT_EQ(std::string(59, 'v'), PrintOptions.Header);
    EXPECT_EQ(std::string(59, 'v'), PrintOptions.Footer);
    EXPECT_EQ(std::string(5, 'v'), PrintOptions.LeftMargin);
    EXPECT_EQ(std::string(5, 'v'), PrintOptions.TopMargin);
    EXPECT_EQ(std::string(5, 'v'), PrintOptions.BottomMargin);
    EXPECT_EQ(std::string(5, 'v'), PrintOptions.RightMargin);
    EXPECT_EQ(std::string(31, 'v'), PrintOptions.HeadFont.Name);
    EXPECT_EQ(std::string(31, 'v'), PrintOptions.BodyFont.Name);
    char size[WindowSizeTextSize];
    ReadWindowSize(size);
    EXPECT_EQ(std::string(19, 'v'), size);
}

TEST_F(Settings, AnEmptyEditorNameIsNotTheDefault)
{
    Write("EditorName", "");
    LoadSettings();
    EXPECT_STREQ("", AppOptions.EditorName);
}

TEST_F(Settings, TheBatchFileLiesBesideTheProgram)
{
    LoadSettings();
    EXPECT_EQ(std::string(App.ProgramDir) + "KSVZIP.BAT", App.BatchPath);
    EXPECT_EQ('\\', App.ProgramDir[strlen(App.ProgramDir) - 1]);
}

TEST_F(Settings, TheButtonsStandInTheOrderOfTheKey)
{
    Write("Buttons", "230900");
    Write("ShowBubbles", "0");
    LoadSettings();
    ASSERT_EQ(3, ButtonBar.ButtonCount);
    EXPECT_EQ(23, ButtonBar.ButtonOrder[0]);
    EXPECT_EQ(9, ButtonBar.ButtonOrder[1]);
    EXPECT_EQ(0, ButtonBar.ButtonOrder[2]);
    EXPECT_EQ(0, ButtonBar.ShowBubbles);
}

TEST_F(Settings, RubbishInTheButtonsKeyPutsNoWrongButtonOnTheBar)
{
    for (const char* text :
         {"99", "24", "-1", "xx", "0", "01x", "!\"#$%&'()*", "-9-9-9",
          "999999999999999999999999999999999999999999999999999999999999999999999999", "\xFF\xFE\x80\x81"}) {
        Write("Buttons", text);
        ButtonBar = ButtonBarState{};
        LoadSettings();
        ASSERT_GE(ButtonBar.ButtonCount, 0) << text;
        ASSERT_LE(ButtonBar.ButtonCount, ButtonTotal) << text;
        for (int slot = 0; slot < ButtonBar.ButtonCount; ++slot) {
            EXPECT_GE(ButtonBar.ButtonOrder[slot], 0) << text;
            EXPECT_LT(ButtonBar.ButtonOrder[slot], ButtonTotal) << text;
        }
    }
}

TEST_F(Settings, AFullBarIsSavedAndLoadedAgain)
{
    ButtonBar.ButtonCount = ButtonTotal;
    for (int slot = 0; slot < ButtonTotal; ++slot) {
        ButtonBar.ButtonOrder[slot] = static_cast<std::int16_t>(ButtonTotal - 1 - slot);
    }
    ButtonBar.ShowBubbles = 0;
    SaveButtonSettings();
    EXPECT_EQ("232221201918171615141312111009080706050403020100", Saved("Buttons"));
    EXPECT_EQ("0", Saved("ShowBubbles"));
    ButtonBar = ButtonBarState{};
    LoadSettings();
    EXPECT_EQ(ButtonTotal, ButtonBar.ButtonCount);
    EXPECT_EQ(23, ButtonBar.ButtonOrder[0]);
    EXPECT_EQ(0, ButtonBar.ButtonOrder[23]);
}

TEST_F(Settings, AnEmptyBarIsNotSaved)
{
    Write("Buttons", "0102");
    Write("ShowBubbles", "1");
    ButtonBar.ButtonCount = 0;
    ButtonBar.ShowBubbles = 0;
    SaveButtonSettings();
    EXPECT_EQ("0102", Saved("Buttons"));
    EXPECT_EQ("1", Saved("ShowBubbles"));
}

TEST_F(Settings, OnlyTheRecentFilesInUseAreWritten)
{
    Write("SavedFile2", "c:\\old2.txt");
    Write("SavedFile3", "c:\\old3.txt");
    SetRecent({"c:\\one.txt", "c:\\two.txt"});
    CopyText(App.Recent.Paths[3], "c:\\beyond.txt");
    SaveRecentFiles();
    EXPECT_EQ("c:\\one.txt", Saved("SavedFile1"));
    EXPECT_EQ("c:\\two.txt", Saved("SavedFile2"));
    EXPECT_EQ("c:\\old3.txt", Saved("SavedFile3"));
    EXPECT_EQ("<none>", Saved("SavedFile4"));
}

TEST_F(Settings, WithoutRecentFilesNothingIsWritten)
{
    SaveRecentFiles();
    FileLines();
    EXPECT_FALSE(FileExists(SettingsFilePath()));
}

TEST_F(Settings, NineRecentFilesAreWrittenAndLoaded)
{
    SetRecent({"1", "2", "3", "4", "5", "6", "7", "8", "9"});
    SaveRecentFiles();
    EXPECT_EQ("9", Saved("SavedFile9"));
    App.Recent = RecentFiles{};
    LoadSettings();
    EXPECT_EQ(9, App.Recent.Count);
    EXPECT_STREQ("9", App.Recent.Paths[8]);
}

TEST_F(Settings, AGapAmongTheRecentFilesIsClosedInOnePass)
{
    Write("SavedFile1", "a");
    Write("SavedFile3", "b");
    Write("SavedFile4", "c");
    Write("SavedFile5", "d");
    LoadSettings();
    ASSERT_EQ(4, App.Recent.Count);
    EXPECT_STREQ("a", App.Recent.Paths[0]);
    EXPECT_STREQ("b", App.Recent.Paths[1]);
    EXPECT_STREQ("d", App.Recent.Paths[2]);
    EXPECT_STREQ("c", App.Recent.Paths[3]);
}

TEST_F(Settings, PrintDefaultsFollowTheMeasure)
{
    const struct {
        std::int32_t Measure;
        const char* Left;
        const char* Top;
    } measures[] = {{0, "2.5", "1.25"}, {1, "1", "0.5"}, {2, "2.5", "1.25"}};
    CopyText(ViewOptions.FontName, "Screen Face");
    for (const auto& measure : measures) {
        Intl.Measure = measure.Measure;
        LoadPrintSettings();
        EXPECT_STREQ(measure.Left, PrintOptions.LeftMargin);
        EXPECT_STREQ(measure.Top, PrintOptions.TopMargin);
        EXPECT_STREQ(measure.Top, PrintOptions.BottomMargin);
        EXPECT_STREQ("0.0", PrintOptions.RightMargin);
    }
    EXPECT_STREQ("&f&l", PrintOptions.Header);
    EXPECT_STREQ("/-&p-", PrintOptions.Footer);
    EXPECT_STREQ("Screen Face", PrintOptions.HeadFont.Name);
    EXPECT_STREQ("Screen Face", PrintOptions.BodyFont.Name);
    EXPECT_EQ(0, PrintOptions.PrintHF);
    EXPECT_EQ(0, PrintOptions.PrintDefFont);
    EXPECT_EQ(0, PrintOptions.ProcFF);
    EXPECT_EQ(0, PrintOptions.WrapOutput);
}

TEST_F(Settings, PrintSettingsAreReadAgainWhileTheHeaderIsEmpty)
{
    Write("Header", "");
    Write("LeftMargin", "1.1");
    LoadPrintSettings();
    ASSERT_STREQ("", PrintOptions.Header);
    EXPECT_STREQ("1.1", PrintOptions.LeftMargin);
    Write("Header", "a header");
    Write("LeftMargin", "2.2");
    Write("WrapOutput", "1");
    LoadPrintSettings();
    EXPECT_STREQ("a header", PrintOptions.Header);
    EXPECT_STREQ("2.2", PrintOptions.LeftMargin);
    EXPECT_EQ(1, PrintOptions.WrapOutput);
}

// Whether the file stays as it is, is the account's matter: some may write any file.
TEST_F(Settings, SavingIntoAReadOnlyFileIsSilent)
{
    WriteSettingsFile();
    ASSERT_TRUE(SetFileAttributesA(SettingsFilePath().c_str(), FILE_ATTRIBUTE_READONLY));
    const NoDialogs dialogs;
    SaveAll();
    EXPECT_EQ(0, dialogs.Count());
    SetFileAttributesA(SettingsFilePath().c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(Settings, SavingIntoAFileThatIsHeldElsewhereIsSilentAndLeavesIt)
{
    const std::string content = WriteSettingsFile();
    const HANDLE held = CreateFileA(SettingsFilePath().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, held);
    const NoDialogs dialogs;
    SaveAll();
    EXPECT_EQ(0, dialogs.Count());
    CloseHandle(held);
    EXPECT_EQ(content, FileContent(SettingsFilePath()));
}

TEST_F(Settings, PrintSettingsAreWrittenInTheirOrder)
{
    LoadPrintSettings();
    SavePrintSettings();
    const std::vector<std::string> expected = {
        "Header",      "Footer",       "LeftMargin", "RightMargin",  "TopMargin",    "BottomMargin", "PrintHF",
        "ProcFF",      "PrintDefFont", "WrapOutput", "HdFontName",   "HdFontSize",   "HdFontWeight", "HdFontItalic",
        "UseHeadFont", "BdFontName",   "BdFontSize", "BdFontWeight", "BdFontItalic", "UseBodyFont"};
    EXPECT_EQ(expected, KeysInFile());
}

TEST_F(Settings, PrintSettingsAreLoadedAsSavedAndTheirSizesArePositiveInTheFile)
{
    PrintSettings print;
    CopyText(print.Header, "h");
    CopyText(print.Footer, "f");
    CopyText(print.LeftMargin, "1.1");
    CopyText(print.RightMargin, "1.2");
    CopyText(print.TopMargin, "1.3");
    CopyText(print.BottomMargin, "1.4");
    print.PrintHF = 1;
    print.ProcFF = 2;
    print.PrintDefFont = 3;
    print.WrapOutput = 4;
    print.HeadFont.Size = -21;
    print.HeadFont.Weight = 700;
    print.HeadFont.Italic = 5;
    print.HeadFont.Use = 6;
    CopyText(print.HeadFont.Name, "Head");
    print.BodyFont.Size = -22;
    print.BodyFont.Weight = 300;
    print.BodyFont.Italic = 7;
    print.BodyFont.Use = 8;
    CopyText(print.BodyFont.Name, "Body");
    PrintOptions = print;
    SavePrintSettings();
    EXPECT_EQ("21", Saved("HdFontSize"));
    EXPECT_EQ("22", Saved("BdFontSize"));

    PrintOptions = PrintSettings{};
    LoadSettings();
    LoadPrintSettings();
    EXPECT_STREQ("h", PrintOptions.Header);
    EXPECT_STREQ("f", PrintOptions.Footer);
    EXPECT_STREQ("1.1", PrintOptions.LeftMargin);
    EXPECT_STREQ("1.2", PrintOptions.RightMargin);
    EXPECT_STREQ("1.3", PrintOptions.TopMargin);
    EXPECT_STREQ("1.4", PrintOptions.BottomMargin);
    EXPECT_EQ(1, PrintOptions.PrintHF);
    EXPECT_EQ(2, PrintOptions.ProcFF);
    EXPECT_EQ(3, PrintOptions.PrintDefFont);
    EXPECT_EQ(4, PrintOptions.WrapOutput);
    EXPECT_STREQ("Head", PrintOptions.HeadFont.Name);
    EXPECT_EQ(-21, PrintOptions.HeadFont.Size);
    EXPECT_EQ(700, PrintOptions.HeadFont.Weight);
    EXPECT_EQ(5, PrintOptions.HeadFont.Italic);
    EXPECT_EQ(6, PrintOptions.HeadFont.Use);
    EXPECT_STREQ("Body", PrintOptions.BodyFont.Name);
    EXPECT_EQ(-22, PrintOptions.BodyFont.Size);
    EXPECT_EQ(300, PrintOptions.BodyFont.Weight);
    EXPECT_EQ(7, PrintOptions.BodyFont.Italic);
    EXPECT_EQ(8, PrintOptions.BodyFont.Use);
}

TEST_F(IntlKeys, WithoutKeysTheDefaultsHold)
{
    Intl = {9, 9, 9, "x", "x", "x", "x"};
    LoadIntlSettings();
    EXPECT_EQ(0, Intl.TimeFormat);
    EXPECT_EQ(0, Intl.Order);
    EXPECT_EQ(0, Intl.Measure);
    EXPECT_STREQ("/", Intl.DateSeparator);
    EXPECT_STREQ(":", Intl.TimeSeparator);
    EXPECT_STREQ("AM", Intl.Morning);
    EXPECT_STREQ("PM", Intl.Afternoon);
}

TEST_F(IntlKeys, AreReadFromTheUsersProfileAndCut)
{
    const std::map<const char*, const char*> keys = {{"iTime", "1"},      {"iDate", "2"},  {"iMeasure", "1"},
                                                     {"sDate", "-."},     {"sTime", ".-"}, {"s1159", "morning"},
                                                     {"s2359", "evening"}};
    for (const auto& [key, text] : keys) {
        WriteProfileStringA("intl", key, text);
    }
    // The frame reads them again whenever the system says they changed.
    SendMessageA(Windows.Main, WM_WININICHANGE, 0, 0);
    EXPECT_EQ(1, Intl.TimeFormat);
    EXPECT_EQ(2, Intl.Order);
    EXPECT_EQ(1, Intl.Measure);
    EXPECT_STREQ("-", Intl.DateSeparator);
    EXPECT_STREQ(".", Intl.TimeSeparator);
    EXPECT_STREQ("morn", Intl.Morning);
    EXPECT_STREQ("even", Intl.Afternoon);
}
