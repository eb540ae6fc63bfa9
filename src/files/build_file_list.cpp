#include "files/build_file_list.h"

#include "base/messages.h"
#include "resources/ids.h"

#include <cstring>

namespace {

ListAddition AppendInLowerCase(const char* directory, const char* name)
{
    if (strlen(directory) >= MaxPathSize || strlen(name) >= MaxPathSize) {
        return ListAddition::Rejected;
    }
    char lowerDirectory[MaxPathSize];
    char lowerName[MaxPathSize];
    CopyText(lowerDirectory, directory);
    CopyText(lowerName, name);
    CharLowerA(lowerDirectory);
    CharLowerA(lowerName);
    return AppendToFileList(lowerDirectory, lowerName);
}

} // namespace

bool AddFileToList(HWND owner, const char* directory, const char* name)
{
    const std::uint32_t generation = FileList.Generation;
    if (AppendInLowerCase(directory, name) != ListAddition::Added && owner != nullptr) {
        ReportMessage(owner, IDS_LIST_TRUNCATED);
    }
    return FileList.Generation == generation;
}

bool HasWildcards(const char* path)
{
    return strpbrk(path, "?*") != nullptr;
}

namespace {

// The directory that the pattern names, or the current one.
void DirectoryOf(const char* pattern, char (&directory)[MaxPathSize])
{
    CopyText(directory, pattern);
    directory[DirectoryEnd(pattern)] = '\0';
    if (directory[0] == '\0') {
        GetCurrentDirectoryA(sizeof directory, directory);
    }
}

// A name with letters that the code page does not have comes with question marks in their places: its short
// form can be opened.
const char* NameInCodePage(const WIN32_FIND_DATAA& found)
{
    const bool hasShortForm = found.cAlternateFileName[0] != '\0';
    return hasShortForm && HasWildcards(found.cFileName) ? found.cAlternateFileName : found.cFileName;
}

bool IsOrdinary(const WIN32_FIND_DATAA& found)
{
    return (found.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM)) == 0;
}

} // namespace

int AddMatchesToList(HWND owner, const char* pattern)
{
    char directory[MaxPathSize];
    DirectoryOf(pattern, directory);
    WIN32_FIND_DATAA found;
    const HANDLE search = FindFirstFileA(pattern, &found);
    if (search == INVALID_HANDLE_VALUE) {
        return 0;
    }
    int count = 0;
    bool sameList = true;
    do {
        if (IsOrdinary(found)) {
            sameList = AddFileToList(owner, directory, NameInCodePage(found));
            ++count;
        }
    } while (sameList && FindNextFileA(search, &found));
    FindClose(search);
    return count;
}

void BuildFileList(HWND owner, char (&pattern)[MaxPathSize])
{
    ClearFileList();
    const std::uint32_t generation = FileList.Generation;
    const int count = AddMatchesToList(owner, pattern);
    pattern[0] = '\0';
    if (FileList.Generation != generation) {
        return; // other files have been opened meanwhile
    }
    TrimFileList();
    GetListEntry(1, pattern);
    if (count == 0) {
        ReportMessage(owner, IDS_NO_MATCHES);
        return;
    }
    if (count == 1) {
        ClearFileList();
    }
    WalkFileList(1);
}
