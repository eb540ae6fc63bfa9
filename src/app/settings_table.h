// The settings that are whole numbers: key, default, and where the value lives.
#pragma once

#include <cstdint>

struct SettingRow {
    const char* Key;
    std::int32_t Default;
    std::int32_t* Value;
};

constexpr int SettingRowCount = 37;

// In the order of loading and saving.
extern const SettingRow SettingsTable[SettingRowCount];

// What loading does to the values as read: every font size negative (a print font without one takes the
// screen font's), MaxLineLen within 80..1024. Every other value is taken as it is.
void NormalizeSettings();
