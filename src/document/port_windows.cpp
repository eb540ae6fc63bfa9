#include "document/port.h"

#include "base/file_time.h"

#include <cstdio>
#include <windows.h>

MemoryHandle AllocateMemory(std::size_t bytes)
{
    return GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes);
}

void* LockMemory(MemoryHandle memory)
{
    return GlobalLock(memory);
}

void UnlockMemory(MemoryHandle memory)
{
    GlobalUnlock(memory);
}

void SetMemoryDiscardable(MemoryHandle memory, bool discardable)
{
    const UINT flags = discardable ? GMEM_MODIFY | GMEM_DISCARDABLE : GMEM_MODIFY;
    GlobalReAlloc(memory, 0, flags);
}

MemoryHandle ShrinkMemory(MemoryHandle memory, std::size_t bytes)
{
    const MemoryHandle shrunk = GlobalReAlloc(memory, bytes, GMEM_MOVEABLE);
    return shrunk != nullptr ? shrunk : memory;
}

void FreeMemory(MemoryHandle memory)
{
    GlobalFree(memory);
}

namespace {

// Where the system's file pointer stands: reading block after block needs no seek in between.
struct FilePointer {
    int File = 0;
    std::int32_t Offset = 0;
};

FilePointer Pointer;

bool MoveTo(int file, std::int32_t offset)
{
    return (Pointer.File == file && Pointer.Offset == offset) || _llseek(file, offset, FILE_BEGIN) == offset;
}

} // namespace

// _lopen rather than OpenFile: OpenFile keeps only 127 characters of a path, the program 259.
int OpenForReading(const char* path)
{
    const HFILE file = _lopen(path, OF_READ);
    Pointer = FilePointer{};
    return file == HFILE_ERROR ? 0 : file;
}

void CloseOpenFile(int file)
{
    Pointer = FilePointer{};
    _lclose(file);
}

std::int32_t ReadFileAt(int file, std::int32_t offset, void* destination, std::int32_t bytes)
{
    if (file == 0 || offset < 0 || !MoveTo(file, offset)) {
        return 0;
    }
    const UINT read = _lread(file, destination, static_cast<UINT>(bytes));
    if (read == static_cast<UINT>(HFILE_ERROR)) {
        Pointer = FilePointer{};
        return 0;
    }
    const std::int64_t end = static_cast<std::int64_t>(offset) + read;
    // A file that has grown beyond the last position there is gets a seek next time.
    Pointer = end <= INT32_MAX ? FilePointer{file, static_cast<std::int32_t>(end)} : FilePointer{};
    return static_cast<std::int32_t>(read);
}

namespace {

std::int32_t SecondsSince1970(const FILETIME& time)
{
    return SecondsOfTicks((static_cast<std::uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime);
}

} // namespace

namespace {

// A symbolic link has a size and a time of its own: those of the file it leads to are wanted.
bool FollowLink(const char* path, WIN32_FILE_ATTRIBUTE_DATA& data)
{
    constexpr DWORD AnySharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = CreateFileA(path, 0, AnySharing, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    BY_HANDLE_FILE_INFORMATION target;
    const bool known = GetFileInformationByHandle(file, &target) != 0;
    CloseHandle(file);
    if (known) {
        data.dwFileAttributes = target.dwFileAttributes;
        data.ftLastWriteTime = target.ftLastWriteTime;
        data.nFileSizeHigh = target.nFileSizeHigh;
        data.nFileSizeLow = target.nFileSizeLow;
    }
    return known;
}

} // namespace

bool GetFileStatus(const char* path, FileStatus& status)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExA(path, GetFileExInfoStandard, &data)) {
        return false;
    }
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && !FollowLink(path, data)) {
        return false;
    }
    if (data.nFileSizeHigh != 0 || data.nFileSizeLow > INT32_MAX) {
        return false;
    }
    constexpr DWORD DosBits =
        FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
    status.Size = static_cast<std::int32_t>(data.nFileSizeLow);
    status.Time = SecondsSince1970(data.ftLastWriteTime);
    status.Attributes = static_cast<std::uint16_t>(data.dwFileAttributes & DosBits);
    return true;
}

MappedFile MapWholeFile(const char* path)
{
    MappedFile mapped = {nullptr, 0};
    const HANDLE file =
        CreateFileA(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return mapped;
    }
    DWORD sizeHigh = 0;
    const DWORD size = GetFileSize(file, &sizeHigh);
    const HANDLE mapping = sizeHigh == 0 ? CreateFileMappingA(file, nullptr, PAGE_READONLY, 0, 0, nullptr) : nullptr;
    if (mapping != nullptr) {
        // The view holds the file: both handles can go.
        mapped.Bytes = static_cast<const std::uint8_t*>(MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, size));
        mapped.Size = mapped.Bytes != nullptr ? size : 0;
        CloseHandle(mapping);
    }
    CloseHandle(file);
    return mapped;
}

void UnmapFile(const MappedFile& mapped)
{
    if (mapped.Bytes != nullptr) {
        UnmapViewOfFile(mapped.Bytes);
    }
}

bool CanRead(const std::uint8_t* bytes, std::size_t count)
{
    return !IsBadReadPtr(bytes, count);
}

void ToAnsiText(const char16_t* text, char* ansi, std::size_t size)
{
    char whole[512]; // more than any text that is converted here
    const int bytes = WideCharToMultiByte(CP_ACP, 0, reinterpret_cast<const wchar_t*>(text), -1, whole, sizeof whole,
                                          nullptr, nullptr);
    snprintf(ansi, size, "%s", bytes > 0 ? whole : "");
}

std::uint16_t UserLanguage()
{
    return GetUserDefaultLangID();
}

void ToUpperCase(char* text, std::int32_t count)
{
    CharUpperBuffA(text, static_cast<DWORD>(count));
}

bool HasOneByteCharacters()
{
    CPINFO page = {};
    return GetCPInfo(CP_ACP, &page) && page.MaxCharSize == 1;
}
