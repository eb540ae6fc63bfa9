// The working buffer, the parked blocks and the reads of the file.
//
// On every change of block the working buffer and a cache slot exchange their memory objects: the
// block that was in view is parked, never dropped, unless there are no slots at all.
#pragma once

#include "document/document_state.h"

#include <cstdint>

// Sets the buffers up for a new document, or resets them if they exist. False when there is no memory.
bool InitBuffers();

// Closes the file and frees every buffer.
void FreeBuffers();

// Closes the file if it is open; the document stays.
void CloseFileHandle();

// Makes block (1..BlockCount) the working buffer's content and sets the read position to its start.
// After a failed or short read the block is simply shorter.
void LoadBlock(std::int32_t block);

// Where a block starts in the file.
inline std::int32_t OffsetOfBlock(std::int32_t block)
{
    return (block - 1) * BlockBytes;
}

// Whether the read position is behind the working buffer's data.
inline bool AtDataEnd()
{
    return Document.CurOffset >= Document.CurBlockBytes;
}

// Positioned read that bypasses the cache; returns how many bytes arrived. Reads nothing, and leaves
// destination as it was, when the range passes the end of the file.
std::int32_t ReadAt(std::int32_t offset, void* destination, std::int32_t count);

// The samples of the block in the working buffer.
std::uint32_t* LineSamples();

// The line-count table, once indexing is over: shrink it to what the document's blocks need, or free it.
void ShrinkLineTable();
void FreeLineTable();
