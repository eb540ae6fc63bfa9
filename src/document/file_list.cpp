#include "document/file_list.h"

#include <algorithm>
#include <cstring>

FileListState FileList;

namespace {

constexpr std::size_t LongestName = 255; // its length is kept in a byte

// A memory object's bytes for as long as they are used.
class LockedBytes {
public:
    explicit LockedBytes(MemoryHandle memory) : Memory(memory), Bytes(static_cast<std::uint8_t*>(LockMemory(memory))) {}
    ~LockedBytes() { UnlockMemory(Memory); }
    LockedBytes(const LockedBytes&) = delete;
    LockedBytes& operator=(const LockedBytes&) = delete;
    std::uint8_t* Data() const { return Bytes; }
    char* Text() const { return reinterpret_cast<char*>(Bytes); }

private:
    MemoryHandle Memory;
    std::uint8_t* Bytes;
};

void FreeIfAny(MemoryHandle& memory)
{
    if (memory != nullptr) {
        FreeMemory(memory);
        memory = nullptr;
    }
}

void FreeStores()
{
    FreeIfAny(FileList.EntryStore);
    FreeIfAny(FileList.DirectoryStore);
    FreeIfAny(FileList.OrderTable);
}

bool AllocateStores()
{
    FileList.EntryStore = AllocateMemory(EntryStoreBytes);
    FileList.DirectoryStore = AllocateMemory(DirectoryStoreBytes);
    FileList.OrderTable = AllocateMemory(MaxListEntries * sizeof(std::uint16_t));
    FileList.EntryCapacity = EntryStoreBytes;
    FileList.DirectoryCapacity = DirectoryStoreBytes;
    FileList.EntryBytes = FileList.DirectoryBytes = 0;
    FileList.DirCount = FileList.FileListCount = 0;
    if (FileList.EntryStore == nullptr || FileList.DirectoryStore == nullptr || FileList.OrderTable == nullptr) {
        FreeStores();
        return false;
    }
    return true;
}

// A store that was trimmed gets its full size back.
bool Enlarge(MemoryHandle& store, std::int32_t& capacity, std::int32_t used, std::int32_t full)
{
    if (capacity == full) {
        return true;
    }
    const MemoryHandle larger = AllocateMemory(static_cast<std::size_t>(full));
    if (larger == nullptr) {
        return false;
    }
    memcpy(LockedBytes(larger).Data(), LockedBytes(store).Data(), static_cast<std::size_t>(used));
    FreeMemory(store);
    store = larger;
    capacity = full;
    return true;
}

bool MakeRoom()
{
    if (FileList.EntryStore == nullptr) {
        return AllocateStores();
    }
    return Enlarge(FileList.EntryStore, FileList.EntryCapacity, FileList.EntryBytes, EntryStoreBytes) &&
           Enlarge(FileList.DirectoryStore, FileList.DirectoryCapacity, FileList.DirectoryBytes, DirectoryStoreBytes);
}

struct PathParts {
    char Directory[MaxPathSize] = "";
    char Name[MaxPathSize] = "";
};

PathParts PartsOf(const char* directory, const char* name)
{
    PathParts parts;
    CopyText(parts.Directory, directory);
    if (name[0] != '\0') {
        CopyText(parts.Name, name);
        const std::size_t length = strlen(parts.Directory);
        if (length > 0 && parts.Directory[length - 1] == '\\') {
            parts.Directory[length - 1] = '\0';
        }
        return parts;
    }
    const std::size_t end = DirectoryEnd(directory);
    CopyText(parts.Name, NameBehind(directory, end));
    parts.Directory[std::min(end, sizeof parts.Directory - 1)] = '\0'; // cut, it is too long to be added
    return parts;
}

// The index of directory among the known ones, where it is entered if need be; -1 when it does not fit.
std::int32_t IndexOfDirectory(const char* directory)
{
    const LockedBytes store(FileList.DirectoryStore);
    for (std::int32_t i = 0; i < FileList.DirCount; ++i) {
        if (strcmp(store.Text() + FileList.DirectoryStart[i], directory) == 0) {
            return i;
        }
    }
    const std::int32_t bytes = static_cast<std::int32_t>(strlen(directory)) + 1;
    if (FileList.DirCount >= MaxListDirectories || FileList.DirectoryBytes + bytes >= DirectoryStoreBytes) {
        return -1;
    }
    memcpy(store.Text() + FileList.DirectoryBytes, directory, static_cast<std::size_t>(bytes));
    FileList.DirectoryStart[FileList.DirCount] = FileList.DirectoryBytes;
    FileList.DirectoryBytes += bytes;
    return FileList.DirCount++;
}

void AppendRecord(std::int32_t directoryIndex, const char* name)
{
    const LockedBytes store(FileList.EntryStore);
    const LockedBytes order(FileList.OrderTable);
    const std::size_t length = strlen(name);
    std::uint8_t* const record = store.Data() + FileList.EntryBytes;
    record[0] = static_cast<std::uint8_t>(directoryIndex);
    record[1] = static_cast<std::uint8_t>(length);
    memcpy(record + 2, name, length + 1);
    const std::uint16_t position = static_cast<std::uint16_t>(FileList.EntryBytes);
    memcpy(order.Data() + static_cast<std::size_t>(FileList.FileListCount) * sizeof position, &position,
           sizeof position);
    FileList.EntryBytes += static_cast<std::int32_t>(length) + 3;
    ++FileList.FileListCount;
}

} // namespace

ListAddition AppendToFileList(const char* directory, const char* name)
{
    if (FileList.ListFull) {
        return ListAddition::Rejected;
    }
    if (!MakeRoom()) {
        FileList.ListFull = true;
        return ListAddition::Rejected;
    }
    const PathParts parts = PartsOf(directory, name);
    if (strlen(parts.Name) > LongestName || strlen(parts.Directory) + 1 + strlen(parts.Name) >= MaxPathSize) {
        return ListAddition::Rejected;
    }
    const std::int32_t index = IndexOfDirectory(parts.Directory);
    if (index < 0) {
        FileList.ListFull = true;
        return ListAddition::Rejected;
    }
    AppendRecord(index, parts.Name);
    if (FileList.EntryBytes > EntryStoreFull || FileList.FileListCount >= MaxListEntries) {
        FileList.ListFull = true;
        return ListAddition::AddedLast;
    }
    return ListAddition::Added;
}

void TrimFileList()
{
    if (FileList.EntryBytes == 0) {
        return;
    }
    FileList.EntryStore = ShrinkMemory(FileList.EntryStore, static_cast<std::size_t>(FileList.EntryBytes));
    FileList.EntryCapacity = FileList.EntryBytes;
    FileList.DirectoryStore = ShrinkMemory(FileList.DirectoryStore, static_cast<std::size_t>(FileList.DirectoryBytes));
    FileList.DirectoryCapacity = FileList.DirectoryBytes;
}

bool GetListEntry(std::int32_t position, char (&directory)[MaxPathSize], char (&name)[MaxPathSize])
{
    directory[0] = name[0] = '\0';
    if (position < 1 || position > FileList.FileListCount) {
        return false;
    }
    const LockedBytes entries(FileList.EntryStore);
    const LockedBytes directories(FileList.DirectoryStore);
    const LockedBytes order(FileList.OrderTable);
    std::uint16_t offset;
    memcpy(&offset, order.Data() + static_cast<std::size_t>(position - 1) * sizeof offset, sizeof offset);
    const std::uint8_t* const record = entries.Data() + offset;
    CopyText(directory, directories.Text() + FileList.DirectoryStart[record[0]]);
    CopyText(name, reinterpret_cast<const char*>(record + 2));
    return true;
}

bool GetListEntry(std::int32_t position, char (&path)[MaxPathSize])
{
    char name[MaxPathSize];
    if (!GetListEntry(position, path, name)) {
        return false;
    }
    if (path[0] != '\0') {
        AppendText(path, "\\");
    }
    AppendText(path, name);
    return true;
}

void RemoveListEntry(std::int32_t position)
{
    if (position < 1 || position > FileList.FileListCount) {
        return;
    }
    const LockedBytes order(FileList.OrderTable);
    std::uint8_t* const entry = order.Data() + static_cast<std::size_t>(position - 1) * sizeof(std::uint16_t);
    memmove(entry, entry + sizeof(std::uint16_t),
            static_cast<std::size_t>(FileList.FileListCount - position) * sizeof(std::uint16_t));
    --FileList.FileListCount;
}

void ClearFileList()
{
    FreeStores();
    const std::uint32_t generation = FileList.Generation + 1;
    FileList = FileListState{};
    FileList.Generation = generation;
}

std::int32_t FileListSize()
{
    return FileList.FileListCount;
}

void WalkFileList(std::int32_t position)
{
    FileList.ListPosition = position;
    FileList.ListTotal = FileListSize();
    FileList.ListAdjust = 0;
}

bool HasNextFile()
{
    return FileList.ListTotal > 0 && FileList.ListPosition < FileList.ListTotal;
}

bool HasPreviousFile()
{
    return FileList.ListTotal > 0 && FileList.ListPosition + FileList.ListAdjust > 1;
}

std::int32_t NextPosition()
{
    return FileList.ListPosition + 1;
}

std::int32_t PreviousPosition()
{
    return std::min(FileList.ListPosition + FileList.ListAdjust - 1, FileList.ListTotal);
}
