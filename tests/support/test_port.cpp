#include "support/test_port.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <sys/stat.h>

namespace {

struct MemoryObject {
    std::uint8_t* Data;
    std::size_t Size;
    int Locks;
    bool Discardable;
    bool Discarded;
};

struct OpenFileEntry {
    std::string Path;
    FILE* Disk; // nullptr: the file is one in memory
};

struct PortState {
    std::map<std::string, TestFile> Files;
    std::map<int, OpenFileEntry> Open;
    std::function<void()> BeforeRead;
    int LastHandle = 0;
    int AllocationToFail = 0;
    bool AllAllocationsFail = false;
    bool ShrinkingFails = false;
    int FileReads = 0;
    int FilesOpened = 0;
    int LiveObjects = 0;
    int Misuses = 0;
    std::uint16_t UserLanguage = 0x0409;
    int ReadableChecks = -1;
    bool TwoByteCharacters = false;
};

PortState Port;

void Misuse(bool wrong)
{
    Port.Misuses += wrong;
}

MemoryObject* ObjectOf(MemoryHandle memory)
{
    return static_cast<MemoryObject*>(memory);
}

bool AllocationFails()
{
    if (Port.AllAllocationsFail) {
        return true;
    }
    return Port.AllocationToFail > 0 && --Port.AllocationToFail == 0;
}

std::uint8_t* CopyOf(const std::uint8_t* data, std::size_t size)
{
    std::uint8_t* copy = static_cast<std::uint8_t*>(malloc(size));
    memcpy(copy, data, size);
    return copy;
}

std::int32_t ReadFromMemory(const TestFile& file, std::int32_t offset, void* destination, std::int32_t bytes)
{
    const std::size_t start = static_cast<std::size_t>(offset);
    if (start >= file.Content.size()) {
        return 0;
    }
    const std::size_t left = file.Content.size() - start;
    const std::size_t count = left < static_cast<std::size_t>(bytes) ? left : static_cast<std::size_t>(bytes);
    memcpy(destination, file.Content.data() + start, count);
    return static_cast<std::int32_t>(count);
}

// As Windows has it for the Western code page 1252.
char WesternCapital(char letter)
{
    const auto byte = static_cast<std::uint8_t>(letter);
    const bool accented =
        (byte >= 0xE0 && byte != 0xF7 && byte != 0xFF) || byte == 0x9A || byte == 0x9C || byte == 0x9E;
    if ((byte >= 'a' && byte <= 'z') || (accented && byte >= 0xE0)) {
        return static_cast<char>(byte - 0x20);
    }
    if (accented) {
        return static_cast<char>(byte - 0x10);
    }
    return byte == 0xFF ? '\x9F' : letter;
}

bool IsLeadByte(char byte)
{
    return Port.TwoByteCharacters && static_cast<std::uint8_t>(byte) >= 0x81;
}

} // namespace

MemoryHandle AllocateMemory(std::size_t bytes)
{
    if (AllocationFails()) {
        return nullptr;
    }
    ++Port.LiveObjects;
    return new MemoryObject{static_cast<std::uint8_t*>(calloc(1, bytes)), bytes, 0, false, false};
}

void* LockMemory(MemoryHandle memory)
{
    MemoryObject* object = ObjectOf(memory);
    if (object->Discarded) {
        return nullptr;
    }
    if (object->Locks == 0) {
        std::uint8_t* moved = CopyOf(object->Data, object->Size);
        free(object->Data);
        object->Data = moved;
    }
    ++object->Locks;
    return object->Data;
}

void UnlockMemory(MemoryHandle memory)
{
    MemoryObject* object = ObjectOf(memory);
    Misuse(object->Locks == 0);
    --object->Locks;
}

void SetMemoryDiscardable(MemoryHandle memory, bool discardable)
{
    MemoryObject* object = ObjectOf(memory);
    Misuse(object->Locks != 0);
    object->Discardable = discardable;
}

MemoryHandle ShrinkMemory(MemoryHandle memory, std::size_t bytes)
{
    MemoryObject* object = ObjectOf(memory);
    Misuse(object->Locks != 0 || bytes > object->Size);
    if (Port.ShrinkingFails) {
        return memory;
    }
    MemoryObject* shrunk = new MemoryObject(*object);
    shrunk->Data = CopyOf(object->Data, bytes);
    shrunk->Size = bytes;
    free(object->Data);
    delete object;
    return shrunk;
}

void FreeMemory(MemoryHandle memory)
{
    MemoryObject* object = ObjectOf(memory);
    Misuse(object->Locks != 0);
    free(object->Data);
    delete object;
    --Port.LiveObjects;
}

int OpenForReading(const char* path)
{
    FILE* disk = nullptr;
    if (Port.Files.count(path) == 0) {
        disk = fopen(path, "rb");
        if (disk == nullptr) {
            return 0;
        }
    }
    ++Port.FilesOpened;
    Port.Open[++Port.LastHandle] = {path, disk};
    return Port.LastHandle;
}

void CloseOpenFile(int file)
{
    const auto found = Port.Open.find(file);
    Misuse(found == Port.Open.end());
    if (found == Port.Open.end()) {
        return;
    }
    if (found->second.Disk != nullptr) {
        fclose(found->second.Disk);
    }
    Port.Open.erase(found);
}

std::int32_t ReadFileAt(int file, std::int32_t offset, void* destination, std::int32_t bytes)
{
    if (Port.BeforeRead) {
        Port.BeforeRead();
    }
    ++Port.FileReads;
    const auto found = Port.Open.find(file);
    if (found == Port.Open.end() || offset < 0 || bytes < 0) {
        return 0;
    }
    FILE* disk = found->second.Disk;
    if (disk != nullptr) {
        return fseek(disk, offset, SEEK_SET) == 0
                   ? static_cast<std::int32_t>(fread(destination, 1, static_cast<std::size_t>(bytes), disk))
                   : 0;
    }
    const auto content = Port.Files.find(found->second.Path);
    return content != Port.Files.end() ? ReadFromMemory(content->second, offset, destination, bytes) : 0;
}

bool GetFileStatus(const char* path, FileStatus& status)
{
    const auto found = Port.Files.find(path);
    if (found != Port.Files.end()) {
        const TestFile& file = found->second;
        const std::int64_t size =
            file.StatedSize >= 0 ? file.StatedSize : static_cast<std::int64_t>(file.Content.size());
        if (file.StatusFails || size > INT32_MAX) {
            return false;
        }
        status = {static_cast<std::int32_t>(size), file.Time, file.Attributes};
        return true;
    }
    struct stat disk;
    if (stat(path, &disk) != 0 || disk.st_size > INT32_MAX) {
        return false;
    }
    const std::int64_t time = disk.st_mtime;
    status = {static_cast<std::int32_t>(disk.st_size),
              time < 0 || time > INT32_MAX ? 0 : static_cast<std::int32_t>(time), 0};
    return true;
}

// A copy of just the file's bytes, so that reading beyond them is an error a sanitizer sees.
MappedFile MapWholeFile(const char* path)
{
    const int file = OpenForReading(path);
    FileStatus status;
    if (file == 0) {
        return {nullptr, 0};
    }
    std::uint8_t* bytes = nullptr;
    if (GetFileStatus(path, status) && status.Size > 0) {
        bytes = static_cast<std::uint8_t*>(malloc(static_cast<std::size_t>(status.Size)));
        status.Size = ReadFileAt(file, 0, bytes, status.Size);
    }
    CloseOpenFile(file);
    return {bytes, bytes != nullptr ? static_cast<std::size_t>(status.Size) : 0};
}

void UnmapFile(const MappedFile& mapped)
{
    free(const_cast<std::uint8_t*>(mapped.Bytes));
}

bool CanRead(const std::uint8_t*, std::size_t)
{
    if (Port.ReadableChecks > 0) {
        --Port.ReadableChecks;
        return true;
    }
    return Port.ReadableChecks < 0;
}

void ToAnsiText(const char16_t* text, char* ansi, std::size_t size)
{
    std::size_t length = 0;
    for (; text[length] != 0 && length < size - 1; ++length) {
        ansi[length] = text[length] < 256 ? static_cast<char>(text[length]) : '?';
    }
    ansi[length] = '\0';
}

std::uint16_t UserLanguage()
{
    return Port.UserLanguage;
}

void ToUpperCase(char* text, std::int32_t count)
{
    for (std::int32_t i = 0; i < count; ++i) {
        if (IsLeadByte(text[i])) {
            ++i;
        } else {
            text[i] = WesternCapital(text[i]);
        }
    }
}

bool HasOneByteCharacters()
{
    return !Port.TwoByteCharacters;
}

namespace TestPort {

void Reset()
{
    PortState kept;
    kept.Open = std::move(Port.Open);
    kept.LastHandle = Port.LastHandle;
    kept.LiveObjects = Port.LiveObjects;
    Port = std::move(kept);
}

TestFile& AddFile(const std::string& path, Bytes content)
{
    TestFile& file = Port.Files[path];
    file = TestFile{};
    file.Content = std::move(content);
    return file;
}

void RemoveFile(const std::string& path)
{
    Port.Files.erase(path);
}

void SetUserLanguage(std::uint16_t language)
{
    Port.UserLanguage = language;
}

void SetTwoByteCharacters(bool twoBytes)
{
    Port.TwoByteCharacters = twoBytes;
}

void FailMappedReadsAfter(int checks)
{
    Port.ReadableChecks = checks;
}

void FailAllocation(int number)
{
    Port.AllocationToFail = number;
}

void FailAllAllocations(bool fail)
{
    Port.AllAllocationsFail = fail;
}

void FailShrinking(bool fail)
{
    Port.ShrinkingFails = fail;
}

void BeforeEachRead(std::function<void()> call)
{
    Port.BeforeRead = std::move(call);
}

bool Discard(MemoryHandle memory)
{
    MemoryObject* object = ObjectOf(memory);
    if (!object->Discardable || object->Locks != 0) {
        return false;
    }
    // Nobody may count on the bytes any more.
    memset(object->Data, 0xDD, object->Size);
    object->Discarded = true;
    return true;
}

int FileReads()
{
    return Port.FileReads;
}

int FilesOpened()
{
    return Port.FilesOpened;
}

int OpenFiles()
{
    return static_cast<int>(Port.Open.size());
}

int LiveObjects()
{
    return Port.LiveObjects;
}

std::size_t ObjectBytes(MemoryHandle memory)
{
    return ObjectOf(memory)->Size;
}

bool IsDiscardable(MemoryHandle memory)
{
    return ObjectOf(memory)->Discardable;
}

int Misuses()
{
    return Port.Misuses;
}

} // namespace TestPort
