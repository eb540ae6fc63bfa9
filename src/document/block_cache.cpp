#include "document/block_cache.h"

#include "document/document_state.h"

#include <algorithm>
#include <cstring>

DocumentState Document;
DocumentSettings DocumentOptions;
DocumentHooks DocumentCalls;

namespace {

constexpr std::size_t SampleBytes = SamplesPerBlock * sizeof(std::uint32_t);

void ClearSamples()
{
    memset(Document.WorkData + BlockBytes, 0, SampleBytes);
}

void EmptySlot(CacheSlot& slot)
{
    if (slot.Memory != nullptr) {
        FreeMemory(slot.Memory);
        slot.Memory = nullptr;
    }
    slot.BlockNumber = 0;
}

void EmptyAllSlots()
{
    for (std::int32_t slot = 1; slot <= Document.BufferCount; ++slot) {
        EmptySlot(Document.Slots[slot]);
    }
}

// An empty slot, or one that holds the block, is always preferred; else the slots take turns.
CacheSlot& ChooseSlot(std::int32_t block)
{
    for (std::int32_t slot = 1; slot <= Document.BufferCount; ++slot) {
        const std::int32_t held = Document.Slots[slot].BlockNumber;
        if (held == 0 || held == block) {
            return Document.Slots[slot];
        }
    }
    if (++Document.NextVictim > Document.BufferCount) {
        Document.NextVictim = 1;
    }
    return Document.Slots[Document.NextVictim];
}

// The slot's object if the system has not discarded it; else the slot becomes empty.
MemoryHandle KeptMemory(CacheSlot& slot)
{
    if (slot.Memory == nullptr) {
        return nullptr;
    }
    if (LockMemory(slot.Memory) == nullptr) {
        EmptySlot(slot);
        return nullptr;
    }
    UnlockMemory(slot.Memory);
    return slot.Memory;
}

// Parks the working buffer's block and, on a hit, takes block back: CurBlock tells which.
void SwapCacheSlot(std::int32_t block)
{
    if (Document.BufferCount == 0) {
        Document.CurBlock = 0;
        return;
    }
    CacheSlot& slot = ChooseSlot(block);
    MemoryHandle incoming = KeptMemory(slot);
    if (incoming == nullptr) {
        incoming = AllocateMemory(BlockObjectBytes);
    }
    if (incoming == nullptr) {
        Document.CurBlock = 0;
        return;
    }
    const bool hit = slot.BlockNumber == block;
    const std::int32_t incomingBytes = slot.ByteCount;

    UnlockMemory(Document.WorkMemory);
    SetMemoryDiscardable(Document.WorkMemory, true);
    slot.Memory = Document.WorkMemory;
    slot.ByteCount = Document.CurBlockBytes;
    slot.BlockNumber = Document.CurBlock;

    SetMemoryDiscardable(incoming, false);
    Document.WorkMemory = incoming;
    Document.WorkData = static_cast<std::uint8_t*>(LockMemory(incoming));
    Document.CurBlockBytes = incomingBytes;
    Document.CurBlock = hit ? block : 0;
}

void ReadBlockFromFile(std::int32_t block)
{
    DocumentCalls.AnnounceReading();
    // A file that has grown since has no positions beyond 31 bits either.
    const std::int32_t start = OffsetOfBlock(block);
    const std::int32_t wanted = std::min(BlockBytes, INT32_MAX - start);
    Document.CurBlockBytes = ReadFileAt(Document.FileHandle, start, Document.WorkData, wanted);
    if (Document.CurBlockBytes < std::min(BlockBytes, Document.FileSize - start)) {
        Document.ReadShort = true;
    }
    ClearSamples();
    if (Document.SoughtBlock == block) {
        Document.SoughtBlock = 0;
    }
    // What cannot be read now, while the file is released, must not be taken for the block later.
    Document.CurBlock = Document.FileHandle != 0 ? block : 0;
}

void FreeLocked(MemoryHandle& memory)
{
    if (memory != nullptr) {
        UnlockMemory(memory);
        FreeMemory(memory);
        memory = nullptr;
    }
}

void ResetBuffers()
{
    CloseFileHandle();
    EmptyAllSlots();
    Document.FileSize = 0;
    Document.LineCount = 0;
    ClearSamples();
}

void ReadBufferSettings()
{
    const std::int64_t bytes = static_cast<std::int64_t>(DocumentOptions.MaxTextSize) * 1048576;
    Document.MaxTextBytes = static_cast<std::int32_t>(std::clamp<std::int64_t>(bytes, 0, LargestTextBytes));
    if (Document.BufferCount < 0) {
        Document.BufferCount = std::clamp<std::int32_t>(DocumentCalls.ReadBufferCount(), 0, MaxCacheSlots);
    }
}

// Allocates and locks; both results are null when there is no memory.
void* AllocateLocked(MemoryHandle& memory, std::size_t bytes)
{
    memory = AllocateMemory(bytes);
    return memory != nullptr ? LockMemory(memory) : nullptr;
}

} // namespace

bool InitBuffers()
{
    if (Document.WorkMemory != nullptr) {
        ResetBuffers();
    } else {
        ReadBufferSettings();
        Document.WorkData = static_cast<std::uint8_t*>(AllocateLocked(Document.WorkMemory, BlockObjectBytes));
    }
    // The document before may have left its table shrunk or freed.
    FreeLineTable();
    Document.LineTable =
        static_cast<std::uint32_t*>(AllocateLocked(Document.LineTableMemory, LineTableEntries * sizeof(std::uint32_t)));
    if (Document.WorkData == nullptr || Document.LineTable == nullptr) {
        FreeBuffers();
        return false;
    }
    return true;
}

void FreeBuffers()
{
    CloseFileHandle();
    FreeLocked(Document.WorkMemory);
    Document.WorkData = nullptr;
    EmptyAllSlots();
    FreeLineTable();
    Document.FileSize = 0;
    Document.LineCount = 0;
}

void CloseFileHandle()
{
    if (Document.FileHandle != 0) {
        CloseOpenFile(Document.FileHandle);
        Document.FileHandle = 0;
    }
}

void LoadBlock(std::int32_t block)
{
    if (Document.CurBlock != 0) {
        SwapCacheSlot(block);
    }
    if (Document.CurBlock == 0) {
        ReadBlockFromFile(block);
    }
    Document.CurOffset = 0;
}

std::int32_t ReadAt(std::int32_t offset, void* destination, std::int32_t count)
{
    if (offset < 0 || count < 0 || static_cast<std::int64_t>(offset) + count > Document.FileSize) {
        return 0;
    }
    if (Document.FileHandle != 0) {
        return ReadFileAt(Document.FileHandle, offset, destination, count);
    }
    if (Document.WorkData != nullptr && Document.CurBlock == 1 && offset + count <= Document.CurBlockBytes) {
        memcpy(destination, Document.WorkData + offset, static_cast<std::size_t>(count));
        return count;
    }
    return 0;
}

std::uint32_t* LineSamples()
{
    return reinterpret_cast<std::uint32_t*>(Document.WorkData + BlockBytes);
}

void ShrinkLineTable()
{
    UnlockMemory(Document.LineTableMemory);
    Document.LineTableMemory = ShrinkMemory(Document.LineTableMemory,
                                            static_cast<std::size_t>(Document.BlockCount + 1) * sizeof(std::uint32_t));
    Document.LineTable = static_cast<std::uint32_t*>(LockMemory(Document.LineTableMemory));
}

void FreeLineTable()
{
    FreeLocked(Document.LineTableMemory);
    Document.LineTable = nullptr;
}
