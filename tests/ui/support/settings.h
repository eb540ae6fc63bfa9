// The program's settings file, as a person with an editor sees it.
#pragma once

#include <string>
#include <utility>
#include <vector>

std::string SettingsPath();
void RemoveSettings();

// Writes a new settings file; lines may end with a bare LF.
void WriteSettingsFile(const std::string& text);

// The same with everything in the section that the program uses by default.
void WriteSettings(const std::string& keys);

using SettingsKeys = std::vector<std::pair<std::string, std::string>>;

// The keys of a section, in the order of the file; none when there is no such section.
SettingsKeys ReadSettings(const std::string& section = "Kestovar");

// The value of a key; "(none)" when it is not there.
std::string SettingValue(const std::string& key, const std::string& section = "Kestovar");
