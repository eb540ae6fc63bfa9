#include "harness/scratch.h"

#include <windows.h>

#include <cstdio>
#include <winioctl.h>

namespace {

std::string DirectoryPath;

void WriteWhole(const std::string& path, const std::string& content)
{
    FILE* file = fopen(path.c_str(), "wb");
    if (file == nullptr) {
        fprintf(stderr, "cannot write %s\n", path.c_str());
        exit(1);
    }
    fwrite(content.data(), 1, content.size(), file);
    fclose(file);
}

// A test may remove its file while the document still has it open; what then stays is removed here.
void EmptyDirectory()
{
    WIN32_FIND_DATAA found;
    const HANDLE search = FindFirstFileA((DirectoryPath + "*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return;
    }
    do {
        DeleteFileA((DirectoryPath + found.cFileName).c_str());
    } while (FindNextFileA(search, &found));
    FindClose(search);
}

HANDLE OpenShared(const std::string& path)
{
    return CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                       nullptr);
}

} // namespace

ScratchDirectory::ScratchDirectory()
{
    char directory[MAX_PATH];
    GetTempPathA(sizeof directory, directory);
    DirectoryPath = directory + std::string("kvtest") + std::to_string(GetCurrentProcessId()) + "\\";
    CreateDirectoryA(DirectoryPath.c_str(), nullptr);
    EmptyDirectory(); // of a run with the same number that crashed
}

ScratchDirectory::~ScratchDirectory()
{
    EmptyDirectory();
    RemoveDirectoryA(DirectoryPath.c_str());
}

std::string ScratchPath(const std::string& name)
{
    return DirectoryPath + name;
}

ScratchFile::ScratchFile(const std::string& name, const std::string& content) : FilePath(ScratchPath(name))
{
    WriteWhole(FilePath, content);
}

ScratchFile::~ScratchFile()
{
    SetFileAttributesA(Path(), FILE_ATTRIBUTE_NORMAL);
    DeleteFileA(Path());
}

void ScratchFile::Truncate(std::int64_t size)
{
    const HANDLE file = OpenShared(FilePath);
    DWORD returned = 0;
    DeviceIoControl(file, FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &returned, nullptr);
    LARGE_INTEGER end;
    end.QuadPart = size;
    SetFilePointerEx(file, end, nullptr, FILE_BEGIN);
    SetEndOfFile(file);
    CloseHandle(file);
}

void ScratchFile::Append(const std::string& content)
{
    const HANDLE file = OpenShared(FilePath);
    SetFilePointer(file, 0, nullptr, FILE_END);
    DWORD written = 0;
    WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
    CloseHandle(file);
}

void ScratchFile::SetTime(std::int64_t secondsSince1970)
{
    const std::int64_t ticks = (secondsSince1970 + 11644473600) * 10000000;
    FILETIME time;
    time.dwLowDateTime = static_cast<DWORD>(ticks);
    time.dwHighDateTime = static_cast<DWORD>(ticks >> 32);
    const HANDLE file = OpenShared(FilePath);
    SetFileTime(file, nullptr, nullptr, &time);
    CloseHandle(file);
}

std::string FileContent(const std::string& path)
{
    std::string content;
    FILE* file = fopen(path.c_str(), "rb");
    if (file != nullptr) {
        char buffer[4096];
        std::size_t read;
        while ((read = fread(buffer, 1, sizeof buffer, file)) > 0) {
            content.append(buffer, read);
        }
        fclose(file);
    }
    return content;
}

bool FileExists(const std::string& path)
{
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string SettingsFilePath()
{
    char directory[MAX_PATH];
    GetWindowsDirectoryA(directory, sizeof directory);
    return directory + std::string("\\KESTOVAR.INI");
}

void RemoveSettingsFile()
{
    // First what the system keeps of it in memory.
    WritePrivateProfileStringA(nullptr, nullptr, nullptr, "KESTOVAR.INI");
    DeleteFileA(SettingsFilePath().c_str());
}

SettingsFileKeeper::SettingsFileKeeper()
    : Existed(FileExists(SettingsFilePath())), Content(FileContent(SettingsFilePath()))
{
    RemoveSettingsFile();
}

SettingsFileKeeper::~SettingsFileKeeper()
{
    RemoveSettingsFile();
    if (Existed) {
        WriteWhole(SettingsFilePath(), Content);
    }
}
