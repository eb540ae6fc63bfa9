#include "files/build_file_list.h"

#include "base/messages.h"
#include "resources/ids.h"

#include <cstring>

void AddFileToList(HWND owner, const char* directory, const char* name)
{
    char lowerDirectory[MaxPathSize];
    char lowerName[MaxPathSize];
    CopyText(lowerDirectory, directory);
    CopyText(lowerName, name);
    CharLowerA(lowerDirectory);
    CharLowerA(lowerName);
    if (AppendToFileList(lowerDirectory, lowerName) != ListAddition::Added && owner != nullptr) {
        ReportMessage(owner, IDS_LIST_TRUNCATED);
    }
}

bool HasWildcards(const char* path)
{
    return strpbrk(path, "?*") != nullptr;
}

namespace {

// The directory that the specification names, or the current one.
void DirectoryOf(const char* specification, char (&directory)[MaxPathSize])
{
    CopyText(directory, specification);
    directory[DirectoryEnd(specification)] = '\0';
    if (directory[0] == '\0') {
        GetCurrentDirectoryA(sizeof directory, directory);
    }
}

bool IsOrdinary(const WIN32_FIND_DATAA& found)
{
    return (found.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM)) == 0;
}

} // namespace

int AddMatchesToList(HWND owner, const char* specification)
{
    char directory[MaxPathSize];
    DirectoryOf(specification, directory);
    WIN32_FIND_DATAA found;
    const HANDLE search = FindFirstFileA(specification, &found);
    if (search == INVALID_HANDLE_VALUE) {
        return 0;
    }
    int count = 0;
    do {
        if (IsOrdinary(found)) {
            AddFileToList(owner, directory, found.cFileName);
            ++count;
        }
    } while (FindNextFileA(search, &found));
    FindClose(search);
    return count;
}

void BuildFileList(HWND owner, char (&specification)[MaxPathSize])
{
    ClearFileList();
    const int count = AddMatchesToList(owner, specification);
    TrimFileList();
    GetListEntry(1, specification);
    if (count == 0) {
        ReportMessage(owner, IDS_NO_MATCHES);
        return;
    }
    if (count == 1) {
        ClearFileList();
    }
    WalkFileList(1);
}
