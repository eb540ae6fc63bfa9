// The headers of executables and of compressed files, as far as they tell what kind of file it is.
//
// Layouts: "MZ" (DOS), "NE" (16-bit Windows and OS/2), "LE" and "LX" (linear executables) and "PE" as in
// the format descriptions that Microsoft and IBM published with their linkers; "SZDD" as written by
// Microsoft's COMPRESS.
#pragma once

#include "document/byte_reader.h"

#include <cstddef>
#include <cstdint>
#include <span>

constexpr std::size_t HeaderBytes = 64;
using HeaderSpan = std::span<const std::uint8_t, HeaderBytes>;

// What the first bytes of a file lead to: another header further on, or a type.
struct StubFacts {
    std::int16_t FileType;  // final when NewHeader is 0
    std::int32_t NewHeader; // file position of the new header, all of it within the file; 0 = none
};

// start: the first bytes of a file of fileSize bytes, at least HeaderBytes.
StubFacts ReadStub(HeaderSpan start, std::int32_t fileSize);

struct NewHeaderFacts {
    std::int16_t FileType;
    bool IsNe; // the fields below are set
    bool IsPe; // Machine is set
    std::uint16_t Machine;
    std::uint16_t ModuleCount;         // imported modules
    std::uint16_t ModuleTable;         // from the new header on
    std::uint16_t ImportedNamesTable;  // from the new header on
    std::uint16_t DescriptionBytes;    // of the non-resident names table, whose first name is the description
    std::uint32_t DescriptionPosition; // of that table in the file
};

NewHeaderFacts ReadNewHeader(HeaderSpan header);

// A name as NE files store it: a length byte, then the letters. Copies at most size - 1 of them, as far as
// bytes go; the result is terminated. A zero byte ends it early.
void CopyCountedName(ByteSpan bytes, char* text, std::size_t size);
