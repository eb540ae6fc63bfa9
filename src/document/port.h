// What the document needs of the system: memory objects that the system may take back while they are
// parked, and reading files. port_windows.cpp answers with global memory and the _lopen family;
// the native tests answer with malloc and stdio, and can make each call fail.
#pragma once

#include <cstddef>
#include <cstdint>

// A movable memory object; nullptr is none.
using MemoryHandle = void*;

// A new zero-filled object, unlocked; nullptr when there is no memory.
MemoryHandle AllocateMemory(std::size_t bytes);

// The object's bytes, valid until UnlockMemory; nullptr when the system discarded them.
void* LockMemory(MemoryHandle memory);
void UnlockMemory(MemoryHandle memory);

// Whether the system may discard the object's bytes while it is unlocked.
void SetMemoryDiscardable(MemoryHandle memory, bool discardable);

// Shrinks an unlocked object; the handle may change. Returns memory itself when it cannot be shrunk.
MemoryHandle ShrinkMemory(MemoryHandle memory, std::size_t bytes);
void FreeMemory(MemoryHandle memory);

// Opens a file for reading; 0 when it cannot be opened (missing, locked, a directory, ...).
int OpenForReading(const char* path);
void CloseOpenFile(int file);

// Reads up to bytes at offset into destination; returns how many arrived, 0 on any error.
std::int32_t ReadFileAt(int file, std::int32_t offset, void* destination, std::int32_t bytes);

struct FileStatus {
    std::int32_t Size;        // bytes
    std::int32_t Time;        // last modification, seconds since 1970, never negative
    std::uint16_t Attributes; // DOS bits: read-only 1, hidden 2, system 4, archive 32
};

// False when the status cannot be read or the size does not fit 31 bits: a file that large has no
// position that the document could express, and is refused rather than shown as something else.
bool GetFileStatus(const char* path, FileStatus& status);

// All of a file's bytes, read-only, until UnmapFile; Bytes is nullptr when the file cannot be opened or
// mapped (too large, open for writing elsewhere) or has no bytes.
struct MappedFile {
    const std::uint8_t* Bytes;
    std::size_t Size;
};

MappedFile MapWholeFile(const char* path);
void UnmapFile(const MappedFile& mapped);

// Whether mapped bytes can be read: the medium may be gone by now.
bool CanRead(const std::uint8_t* bytes, std::size_t count);

// A zero-terminated UTF-16 text in the system's code page, cut to size bytes.
void ToAnsiText(const char16_t* text, char* ansi, std::size_t size);

// The language that texts are best shown in (a Windows language number).
std::uint16_t UserLanguage();

// Turns count bytes of text in the system's code page into capitals, in place.
void ToUpperCase(char* text, std::int32_t count);

// Whether each byte of the code page is a character, whatever stands beside it.
bool HasOneByteCharacters();
