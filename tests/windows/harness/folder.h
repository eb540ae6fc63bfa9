// A directory of files to list.
#pragma once

#include "harness/scratch.h"

#include <string>
#include <vector>

// A directory in the run's own, removed with the object and with all files in it.
class ScratchFolder {
public:
    explicit ScratchFolder(const std::string& name);
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    // The path of a file in it; without a name, its own with a backslash behind.
    std::string Path(const std::string& file = "") const { return Directory + "\\" + file; }

    // Its own path, without a backslash behind.
    const std::string& Name() const { return Directory; }

    void Add(const std::string& file, const std::string& content = "");
    void AddMany(int count, int nameLength = 5); // empty files, named f0000 and on
    void Remove(const std::string& file);

private:
    std::string Directory;
};

// Makes a directory the current one for as long as the object lives.
class CurrentDirectory {
public:
    explicit CurrentDirectory(const std::string& path);
    ~CurrentDirectory();
    CurrentDirectory(const CurrentDirectory&) = delete;
    CurrentDirectory& operator=(const CurrentDirectory&) = delete;

private:
    char Before[260];
};

// The files of the file list, in its order.
std::vector<std::string> ListedPaths();
std::vector<std::string> ListedNames();

// As the program writes paths.
std::string LowerCase(std::string text);
