#include "support/settings.h"

#include "support/test_files.h"

#include <sstream>
#include <windows.h>

std::string SettingsPath()
{
    char directory[MAX_PATH] = "";
    GetWindowsDirectoryA(directory, sizeof directory);
    return std::string(directory) + "\\KESTOVAR.INI";
}

void RemoveSettings()
{
    DeleteFileA(SettingsPath().c_str());
}

void WriteSettingsFile(const std::string& text)
{
    const HANDLE file = CreateFileA(SettingsPath().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    std::string content;
    for (const char c : text) {
        content += c == '\n' ? std::string("\r\n") : std::string(1, c);
    }
    DWORD written = 0;
    WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
    CloseHandle(file);
}

void WriteSettings(const std::string& keys)
{
    WriteSettingsFile("[Kestovar]\n" + keys);
}

SettingsKeys ReadSettings(const std::string& section)
{
    SettingsKeys keys;
    if (!FileExists(SettingsPath())) {
        return keys;
    }
    std::istringstream text(ReadWholeFile(SettingsPath()));
    std::string line;
    bool inside = false;
    while (std::getline(text, line)) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (!line.empty() && line[0] == '[') {
            inside = line == "[" + section + "]";
        } else if (const std::size_t equals = line.find('='); inside && equals != std::string::npos) {
            keys.emplace_back(line.substr(0, equals), line.substr(equals + 1));
        }
    }
    return keys;
}

std::string SettingValue(const std::string& key, const std::string& section)
{
    for (const auto& [name, value] : ReadSettings(section)) {
        if (name == key) {
            return value;
        }
    }
    return "(none)";
}
