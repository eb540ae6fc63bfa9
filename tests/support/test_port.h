// The document's port for tests: memory objects from the heap, files from memory or from the disk. Every
// call can be made to fail, and every object and file left behind is counted.
//
// A memory object moves to another address each time it is locked anew, and has exactly the bytes asked
// for, so that a stale pointer or an index out of range is an error a sanitizer sees.
#pragma once

#include "document/port.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

struct TestFile {
    Bytes Content;
    std::int32_t Time = 1000000000;
    std::uint16_t Attributes = 0;
    bool StatusFails = false;     // opens, but has no status
    std::int64_t StatedSize = -1; // what the status says when that is not the content's size; -1 = it is
};

namespace TestPort {

// Forgets files, failures to come and counts. Objects and files still in use stay counted.
void Reset();

// A file in memory. Changes to the result are seen by the next read, also through a file already open.
TestFile& AddFile(const std::string& path, Bytes content);

// The file vanishes: it cannot be opened, and what has it open reads nothing.
void RemoveFile(const std::string& path);

// The medium of mapped files goes away after that many checks of it; -1 = never.
void FailMappedReadsAfter(int checks);

void SetUserLanguage(std::uint16_t language);

// A code page in which a byte of 0x81 or more leads a character of two bytes, which has no capital; the one
// at first is a Western one of one byte a character.
void SetTwoByteCharacters(bool twoBytes);

// The number-th allocation from now on fails, once; 0 = none.
void FailAllocation(int number);
void FailAllAllocations(bool fail);
void FailShrinking(bool fail);

// Called before each read of a file; to change files between reads.
void BeforeEachRead(std::function<void()> call);

// Discards an object as the system may: only one that is discardable and not locked. False: it is not.
bool Discard(MemoryHandle memory);

int FileReads(); // calls, whether they delivered something or not
int FilesOpened();
int OpenFiles();
int LiveObjects();
std::size_t ObjectBytes(MemoryHandle memory);
bool IsDiscardable(MemoryHandle memory);

// What was done against the port's rules: objects freed while locked, unlocked twice, files closed twice.
int Misuses();

} // namespace TestPort
