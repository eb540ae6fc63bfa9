// The end-of-central-directory record, by which a ZIP archive is known. Layout: section 4.3.16 of PKWARE's
// published "ZIP File Format Specification" (APPNOTE.TXT).
#pragma once

#include "document/byte_reader.h"

#include <cstddef>
#include <cstdint>

constexpr std::size_t ZipEndBytes = 22;

// The record is looked for in this many bytes at the end of a file.
constexpr std::int32_t ZipTailBytes = 2048;

// Where in tail, the last bytes of a file, the last such record starts; -1 when there is none, or when it
// belongs to an archive of several disks.
std::int32_t FindZipEnd(ByteSpan tail);

struct ZipEndRecord {
    std::uint16_t EntryCount;        // members in the central directory
    std::uint32_t DirectoryBytes;    // size of the central directory
    std::uint32_t DirectoryPosition; // of the central directory in the file
};

// record: ZipEndBytes bytes; what is missing reads as 0.
ZipEndRecord ReadZipEndRecord(ByteSpan record);
