// The files that a wildcard, a drop or the Open dialog brought together, in the order in which they came.
// Paths are kept in lower case, each directory once.
//
// Positions count from 1. The list is never sorted.
#pragma once

#include "base/text.h"
#include "document/port.h"

#include <cstdint>

constexpr std::int32_t MaxListEntries = 2000;
constexpr std::int32_t MaxListDirectories = 255;
constexpr std::int32_t EntryStoreBytes = 32258;
constexpr std::int32_t EntryStoreFull = 32000; // beyond it the list is full; one longest entry still fits
constexpr std::int32_t DirectoryStoreBytes = 10240;

struct FileListState {
    // Entries one after the other: directory index, length of the name (a byte each), name, zero byte.
    MemoryHandle EntryStore = nullptr;
    MemoryHandle DirectoryStore = nullptr; // zero-terminated directories one after the other
    MemoryHandle OrderTable = nullptr;     // 16-bit offset in the entry store of each position's entry
    std::int32_t EntryCapacity = 0;        // bytes of the stores as they are
    std::int32_t DirectoryCapacity = 0;
    std::int32_t EntryBytes = 0; // in use
    std::int32_t DirectoryBytes = 0;
    std::int32_t DirectoryStart[MaxListDirectories] = {};

    std::int32_t FileListCount = 0;
    std::int32_t DirCount = 0;
    bool ListFull = false; // the list could not take more

    std::int32_t ListPosition = 0; // of the current document
    std::int32_t ListTotal = 0;    // entries that can be walked; 0 = no list
    std::uint32_t Generation = 0;  // differs once the list has been cleared, so that it may be another one
    std::int32_t ListAdjust = 0;   // 1 right after the current entry was deleted: the next one took its place
};

extern FileListState FileList;

enum class ListAddition {
    Added,
    AddedLast, // and the list is full now
    Rejected,  // the list is full, or the path is longer than any file's
};

// Appends a file. directory and name are in lower case; with an empty name, directory is the whole path.
ListAddition AppendToFileList(const char* directory, const char* name);

// Gives back what the stores do not need. The list can grow again all the same.
void TrimFileList();

// The path of the file at position; false, and an empty path, when there is no such position.
bool GetListEntry(std::int32_t position, char (&path)[MaxPathSize]);

// The same in its two parts.
bool GetListEntry(std::int32_t position, char (&directory)[MaxPathSize], char (&name)[MaxPathSize]);

// Takes the entry at position out; those after it move up.
void RemoveListEntry(std::int32_t position);

// Empties the list; no list is walked any more. Names from another process can do this while a box or a dialog
// is open: who goes on with a list after one compares Generation.
void ClearFileList();

std::int32_t FileListSize();

// Makes the whole list, once it is complete, the one that is walked, from position on.
void WalkFileList(std::int32_t position);

bool HasNextFile();
bool HasPreviousFile();

// Where the next or previous file is; only when there is one.
std::int32_t NextPosition();
std::int32_t PreviousPosition();
