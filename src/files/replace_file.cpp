#include "files/replace_file.h"

#include <windows.h>

namespace {

// What tells a file from every other; false when there is no such file.
bool GetFileIdentity(const char* path, BY_HANDLE_FILE_INFORMATION& identity)
{
    constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = CreateFileA(path, 0, ShareAll, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    const bool known = GetFileInformationByHandle(file, &identity) != 0;
    CloseHandle(file);
    return known;
}

// Some file systems number no files.
bool IsNumbered(const BY_HANDLE_FILE_INFORMATION& identity)
{
    return identity.nFileIndexHigh != 0 || identity.nFileIndexLow != 0;
}

} // namespace

bool IsSameFile(const char* one, const char* other)
{
    BY_HANDLE_FILE_INFORMATION first;
    BY_HANDLE_FILE_INFORMATION second;
    if (!GetFileIdentity(one, first) || !GetFileIdentity(other, second)) {
        return false;
    }
    if (!IsNumbered(first) || !IsNumbered(second)) {
        return lstrcmpiA(one, other) == 0;
    }
    return first.dwVolumeSerialNumber == second.dwVolumeSerialNumber && first.nFileIndexHigh == second.nFileIndexHigh &&
           first.nFileIndexLow == second.nFileIndexLow;
}

bool MakeFileBeside(const char* path, char (&beside)[MaxPathSize])
{
    CopyText(beside, path);
    char& last = beside[lstrlenA(beside) - 1];
    for (last = '0'; last <= '9'; ++last) {
        const HANDLE file = CreateFileA(beside, GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
        if (file != INVALID_HANDLE_VALUE) {
            CloseHandle(file);
            return true;
        }
    }
    return false;
}

bool ReplaceWith(const char* path, const char* replacement)
{
    const DWORD attributes = GetFileAttributesA(path);
    return (attributes & FILE_ATTRIBUTE_READONLY) == 0 &&
           ReplaceFileA(path, replacement, nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr);
}
