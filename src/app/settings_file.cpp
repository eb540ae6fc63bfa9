#include "app/settings_file.h"

#include "app/app_state.h"
#include "app/settings_table.h"
#include "base/intl.h"
#include "base/text.h"
#include "buttonbar/button_order.h"
#include "print/print_settings.h"
#include "view/font_metrics.h"
#include "view/frame_windows.h"
#include "view/view_state.h"

#include <windows.h>

#include <cstdio>
#include <cstring>

namespace {

// Without a directory: the profile functions put it where such files belong.
constexpr char SettingsFile[] = "KESTOVAR.INI";
constexpr char IntlSection[] = "intl";

std::int32_t ReadInt(const char* key, std::int32_t defaultValue)
{
    return static_cast<std::int32_t>(GetPrivateProfileIntA(App.Start.SectionName, key, defaultValue, SettingsFile));
}

// A value longer than the buffer is cut.
template <std::size_t Size> void ReadString(const char* key, const char* defaultValue, char (&text)[Size])
{
    GetPrivateProfileStringA(App.Start.SectionName, key, defaultValue, text, Size, SettingsFile);
}

void WriteString(const char* key, const char* text)
{
    WritePrivateProfileStringA(App.Start.SectionName, key, text, SettingsFile);
}

void WriteFontInts(const PrintFont& font, const char* size, const char* weight, const char* italic, const char* use)
{
    WriteSettingInt(size, -font.Size);
    WriteSettingInt(weight, font.Weight);
    WriteSettingInt(italic, font.Italic);
    WriteSettingInt(use, font.Use);
}

// "SavedFile1" to "SavedFile9", numbered by the entry's place from 0.
struct RecentKey {
    char Text[16];
    explicit RecentKey(int entry) { snprintf(Text, sizeof Text, "SavedFile%i", entry + 1); }
};

void LoadRecentFiles()
{
    for (int i = 0; i < MaxRecentFiles; ++i) {
        ReadString(RecentKey(i).Text, "", App.Recent.Paths[i]);
    }
    CompactRecentFiles(App.Recent);
}

void LoadButtonSettings()
{
    char text[ButtonTextSize];
    ReadString("Buttons", "", text);
    ParseButtonOrder(text, ButtonBar);
    ButtonBar.ShowBubbles = ReadInt("ShowBubbles", 1);
}

void SaveWindowSize()
{
    RECT r;
    GetWindowRect(Windows.Main, &r);
    char text[64];
    snprintf(text, sizeof text, "%i %i %i %i", static_cast<int>(r.left), static_cast<int>(r.top),
             static_cast<int>(r.right - r.left), static_cast<int>(r.bottom - r.top));
    WriteString("WindowSize", text);
}

template <std::size_t Size> void ReadIntlString(const char* key, const char* defaultValue, char (&text)[Size])
{
    GetProfileStringA(IntlSection, key, defaultValue, text, Size);
}

std::int32_t ReadIntlInt(const char* key)
{
    return static_cast<std::int32_t>(GetProfileIntA(IntlSection, key, 0));
}

} // namespace

void WriteSettingInt(const char* key, std::int32_t value)
{
    char text[16];
    snprintf(text, sizeof text, "%i", static_cast<int>(value));
    WriteString(key, text);
}

void LoadSettings()
{
    for (const SettingRow& row : SettingsTable) {
        *row.Value = ReadInt(row.Key, row.Default);
    }
    NormalizeSettings();
    ReadString("FontName", "System", ViewOptions.FontName);
    ReadString("FilterSpec", "", AppOptions.FilterSpec);
    ReadString("EditorName", "notepad", AppOptions.EditorName);
    CopyText(App.BatchPath, App.ProgramDir);
    AppendText(App.BatchPath, "KSVZIP.BAT");
    LoadRecentFiles();
    LoadButtonSettings();
}

void SaveSettings()
{
    // The screen font's size is written positive, those of the print fonts as held: both load alike.
    ViewOptions.FontSize = -ViewOptions.FontSize;
    for (const SettingRow& row : SettingsTable) {
        WriteSettingInt(row.Key, *row.Value);
    }
    ViewOptions.FontSize = -ViewOptions.FontSize;
    WriteString("FontName", ViewOptions.FontName);
    WriteString("EditorName", AppOptions.EditorName);
    SaveWindowSize();
}

void SaveRecentFiles()
{
    for (int i = 0; i < App.Recent.Count; ++i) {
        WriteString(RecentKey(i).Text, App.Recent.Paths[i]);
    }
}

void LoadPrintSettings()
{
    const bool inches = Intl.Measure == 1;
    ReadString("Header", "&f&l", PrintOptions.Header);
    ReadString("Footer", "/-&p-", PrintOptions.Footer);
    ReadString("LeftMargin", inches ? "1" : "2.5", PrintOptions.LeftMargin);
    ReadString("TopMargin", inches ? "0.5" : "1.25", PrintOptions.TopMargin);
    ReadString("BottomMargin", inches ? "0.5" : "1.25", PrintOptions.BottomMargin);
    ReadString("RightMargin", "0.0", PrintOptions.RightMargin);
    ReadString("HdFontName", ViewOptions.FontName, PrintOptions.HeadFont.Name);
    ReadString("BdFontName", ViewOptions.FontName, PrintOptions.BodyFont.Name);
    PrintOptions.PrintHF = ReadInt("PrintHF", 0);
    PrintOptions.PrintDefFont = ReadInt("PrintDefFont", 0);
    PrintOptions.ProcFF = ReadInt("ProcFF", 0);
    PrintOptions.WrapOutput = ReadInt("WrapOutput", 0);
}

void SavePrintSettings()
{
    WriteString("Header", PrintOptions.Header);
    WriteString("Footer", PrintOptions.Footer);
    WriteString("LeftMargin", PrintOptions.LeftMargin);
    WriteString("RightMargin", PrintOptions.RightMargin);
    WriteString("TopMargin", PrintOptions.TopMargin);
    WriteString("BottomMargin", PrintOptions.BottomMargin);
    WriteSettingInt("PrintHF", PrintOptions.PrintHF);
    WriteSettingInt("ProcFF", PrintOptions.ProcFF);
    WriteSettingInt("PrintDefFont", PrintOptions.PrintDefFont);
    WriteSettingInt("WrapOutput", PrintOptions.WrapOutput);
    WriteString("HdFontName", PrintOptions.HeadFont.Name);
    WriteFontInts(PrintOptions.HeadFont, "HdFontSize", "HdFontWeight", "HdFontItalic", "UseHeadFont");
    WriteString("BdFontName", PrintOptions.BodyFont.Name);
    WriteFontInts(PrintOptions.BodyFont, "BdFontSize", "BdFontWeight", "BdFontItalic", "UseBodyFont");
}

void SaveButtonSettings()
{
    // An empty bar is not written: the one before comes back at the next start.
    if (ButtonBar.ButtonCount == 0) {
        return;
    }
    char text[ButtonTextSize];
    FormatButtonOrder(ButtonBar, text);
    WriteString("Buttons", text);
    WriteSettingInt("ShowBubbles", ButtonBar.ShowBubbles);
}

void LoadIntlSettings()
{
    Intl.TimeFormat = ReadIntlInt("iTime");
    Intl.Order = ReadIntlInt("iDate");
    Intl.Measure = ReadIntlInt("iMeasure");
    ReadIntlString("sDate", "/", Intl.DateSeparator);
    ReadIntlString("sTime", ":", Intl.TimeSeparator);
    ReadIntlString("s1159", "AM", Intl.Morning);
    ReadIntlString("s2359", "PM", Intl.Afternoon);
}

void ReadWindowSize(char (&text)[WindowSizeTextSize])
{
    ReadString("WindowSize", "", text);
}

std::int32_t ReadBufferCount()
{
    return ReadInt("Buffers", 5);
}
