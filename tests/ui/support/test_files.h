// Files for the program to show, in a directory that is removed when the tests are over.
#pragma once

#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <string>

// Makes the directory before the first test and removes it, with what is in it, after the last.
class ScratchDirectory : public testing::Environment {
public:
    void SetUp() override;
    void TearDown() override;
};

// The full path of a file of the directory. It has no blanks: a command line could not carry them.
std::string ScratchPath(const std::string& name);

// Writes a file of the directory; returns its full path.
std::string WriteScratch(const std::string& name, const std::string& content);

// A file of size bytes that takes no room on the disk.
std::string WriteSparse(const std::string& name, std::int64_t size);

void AppendToFile(const std::string& path, const std::string& content);
void TruncateFile(const std::string& path, std::int32_t size);

// Sets the time of the last modification, as many seconds ago.
void SetFileAge(const std::string& path, std::int32_t seconds);

std::string ReadWholeFile(const std::string& path);
bool FileExists(const std::string& path);

// "Line 1", "Line 2", ... each with the line end.
std::string NumberedLines(int count, const std::string& lineEnd = "\r\n");

// size bytes made of the pattern again and again.
std::string Repeated(const std::string& pattern, std::size_t size);

// A log of about 100 MB, written once: BigLogLines lines of BigLogLineBytes bytes with their CR LF, of
// which block boundaries split some. Line n begins with n as eight digits.
constexpr std::int32_t BigLogLineBytes = 97;
constexpr std::int32_t BigLogLines = 1081000;
std::string BigLog();
