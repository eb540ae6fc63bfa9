// Imported modules and the version resource of a 32-bit (or 64-bit) Windows executable, out of the bytes of
// the whole file. Layout: Microsoft's published "PE Format".
//
// Every offset and count is checked against the file, and the medium is asked before the bytes are touched: a
// mapped file can fail at any page. For headers and imports, what lies behind the file within its last page of
// memory reads as zeros: a mapped file is readable up to there.
#pragma once

#include "document/byte_reader.h"

#include <cstddef>
#include <cstdint>

// Takes the name of one imported module.
struct ImportSink {
    void (*Add)(void* context, const char* name); // nullptr: only counted
    void* Context;
};

// Longer names are cut.
constexpr std::size_t ImportNameSize = 260;

// A file that names more modules than this is damaged.
constexpr std::int32_t MostImports = 4096;

// Hands the name of each imported module to sink, in their order; returns how many there are. Only what a
// section named ".idata" imports counts; 0 also for a damaged file, though names may have been handed over.
std::int32_t WalkPeImports(ByteSpan file, const ImportSink& sink);

// The version resource (type 16, number 1) as it stands in the file: of the neutral language, else of
// userLanguage, else of American English, else the first there is. Empty when there is none or any of its
// directories is damaged.
ByteSpan FindVersionResource(ByteSpan file, std::uint16_t userLanguage);
