#include "harness/folder.h"

#include "document/file_list.h"

#include <gtest/gtest.h>

#include <windows.h>

ScratchFolder::ScratchFolder(const std::string& name) : Directory(ScratchPath(name))
{
    EXPECT_TRUE(CreateDirectoryA(Directory.c_str(), nullptr)) << Directory << ", error " << GetLastError();
}

ScratchFolder::~ScratchFolder()
{
    WIN32_FIND_DATAA found;
    const HANDLE search = FindFirstFileA(Path("*").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            const std::string path = Path(found.cFileName);
            if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
                SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
                DeleteFileA(path.c_str());
            } else if (found.cFileName[0] != '.') {
                RemoveDirectoryA(path.c_str());
            }
        } while (FindNextFileA(search, &found));
        FindClose(search);
    }
    RemoveDirectoryA(Directory.c_str());
}

void ScratchFolder::Add(const std::string& file, const std::string& content)
{
    const HANDLE made = CreateFileA(Path(file).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(made, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
    CloseHandle(made);
}

void ScratchFolder::AddMany(int count, int nameLength)
{
    for (int i = 0; i < count; ++i) {
        std::string number = std::to_string(10000 + i);
        number[0] = 'f';
        Add(number + std::string(static_cast<std::size_t>(nameLength) - number.size(), 'x'));
    }
}

void ScratchFolder::Remove(const std::string& file)
{
    DeleteFileA(Path(file).c_str());
}

CurrentDirectory::CurrentDirectory(const std::string& path)
{
    GetCurrentDirectoryA(sizeof Before, Before);
    SetCurrentDirectoryA(path.c_str());
}

CurrentDirectory::~CurrentDirectory()
{
    SetCurrentDirectoryA(Before);
}

std::vector<std::string> ListedPaths()
{
    std::vector<std::string> paths;
    char path[MaxPathSize];
    for (std::int32_t position = 1; GetListEntry(position, path); ++position) {
        paths.push_back(path);
    }
    return paths;
}

std::vector<std::string> ListedNames()
{
    std::vector<std::string> names;
    char directory[MaxPathSize];
    char name[MaxPathSize];
    for (std::int32_t position = 1; GetListEntry(position, directory, name); ++position) {
        names.push_back(name);
    }
    return names;
}

std::string LowerCase(std::string text)
{
    CharLowerA(text.data());
    return text;
}
