// KESTOVAR.INI in the Windows directory, one section of it, and the user's "intl" keys.
#pragma once

#include <cstdint>

// Reads every setting; once, at start.
void LoadSettings();

// Writes the integer settings, the font name, the editor and the main window's rectangle.
void SaveSettings();

// Writes the recent files in use; keys beyond them stay.
void SaveRecentFiles();

// The keys of print jobs. The load goes before the first use and again while the header is empty.
void LoadPrintSettings();
void SavePrintSettings();

// Which buttons stand on the bar.
void SaveButtonSettings();

// Date order, clock, measures and separators of the user's profile.
void LoadIntlSettings();

// The saved window rectangle as text; empty when there is none.
constexpr std::uint32_t WindowSizeTextSize = 20;
void ReadWindowSize(char (&text)[WindowSizeTextSize]);

// How many blocks may be parked, as the file has it.
std::int32_t ReadBufferCount();

void WriteSettingInt(const char* key, std::int32_t value);
