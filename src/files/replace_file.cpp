#include "files/replace_file.h"

#include <windows.h>

namespace {

HANDLE OpenShared(const char* path, DWORD access)
{
    constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return CreateFileA(path, access, ShareAll, nullptr, OPEN_EXISTING, 0, nullptr);
}

// What tells a file from every other; false when there is no such file.
bool GetFileIdentity(const char* path, BY_HANDLE_FILE_INFORMATION& identity)
{
    const HANDLE file = OpenShared(path, 0);
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

// Not while another program keeps the file for itself.
bool CanBeTakenAway(const char* path)
{
    const HANDLE file = OpenShared(path, DELETE);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    CloseHandle(file);
    return true;
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

bool IsSameName(const char* one, const char* other)
{
    char first[MaxPathSize];
    char second[MaxPathSize];
    const DWORD firstLength = GetLongPathNameA(one, first, sizeof first);
    const DWORD secondLength = GetLongPathNameA(other, second, sizeof second);
    return firstLength != 0 && firstLength < sizeof first && secondLength != 0 && secondLength < sizeof second &&
           lstrcmpiA(first, second) == 0;
}

bool IsReadOnly(const char* path)
{
    const DWORD attributes = GetFileAttributesA(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

bool MakeFileBeside(const char* path, char (&beside)[MaxPathSize])
{
    constexpr char Candidates[] = "0123456789abcdefghijklmnopqrstuvwxyz";
    CopyText(beside, path);
    for (const char* candidate = Candidates; *candidate != '\0'; ++candidate) {
        beside[lstrlenA(path) - 1] = *candidate;
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
    // Looked at first: a replacement that fails half-way can leave a file with a name of the system's behind.
    if (IsReadOnly(path) || !CanBeTakenAway(path)) {
        return false;
    }
    SetFileAttributesA(replacement, GetFileAttributesA(path)); // not every system's replacing keeps them
    return ReplaceFileA(path, replacement, nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr) != 0;
}
