// Files to test with.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// A directory of this run's own, there as long as the object; main has the one.
class ScratchDirectory {
public:
    ScratchDirectory();
    ~ScratchDirectory();
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;
};

// The path of name in that directory.
std::string ScratchPath(const std::string& name);

// A file in that directory, removed with the object.
class ScratchFile {
public:
    ScratchFile(const std::string& name, const std::string& content);
    ~ScratchFile();
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const char* Path() const { return FilePath.c_str(); }

    // These change the file while it may be open for reading elsewhere.
    void Truncate(std::int64_t size); // or extend, without taking room on the disk
    void Append(const std::string& content);
    void SetTime(std::int64_t secondsSince1970);

private:
    std::string FilePath;
};

// What a file holds; empty when there is none.
std::string FileContent(const std::string& path);
bool FileExists(const std::string& path);

// Takes the settings file away for the run and puts it back.
class SettingsFileKeeper {
public:
    SettingsFileKeeper();
    ~SettingsFileKeeper();
    SettingsFileKeeper(const SettingsFileKeeper&) = delete;
    SettingsFileKeeper& operator=(const SettingsFileKeeper&) = delete;

private:
    bool Existed;
    std::string Content;
};

// Where the profile functions keep the settings file.
std::string SettingsFilePath();
void RemoveSettingsFile();
