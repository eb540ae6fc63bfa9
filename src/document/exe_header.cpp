#include "document/exe_header.h"

#include "document/file_info.h"

#include <algorithm>

namespace {

constexpr std::uint16_t Mark(char first, char second)
{
    return static_cast<std::uint16_t>(first | (second << 8));
}

bool IsSzdd(ByteSpan start)
{
    return ReadU16(start, 0) == Mark('S', 'Z') && ReadU16(start, 2) == Mark('D', 'D');
}

std::int16_t TypeOfNe(ByteSpan header)
{
    constexpr std::uint8_t Os2Target = 1;
    constexpr std::uint8_t WindowsTarget = 2;
    constexpr std::uint8_t LibraryModule = 0x80; // in the high byte of the module flags
    const std::uint8_t target = ReadU8(header, 54);
    if ((target & WindowsTarget) != 0) {
        return (ReadU8(header, 13) & LibraryModule) != 0 ? Windows16Dll : Windows16Program;
    }
    return (target & Os2Target) != 0 ? Os2Program : DosProgram;
}

NewHeaderFacts ReadNe(ByteSpan header)
{
    NewHeaderFacts facts = {};
    facts.FileType = TypeOfNe(header);
    facts.IsNe = true;
    facts.ModuleCount = ReadU16(header, 30);
    facts.DescriptionBytes = ReadU16(header, 32);
    facts.ModuleTable = ReadU16(header, 40);
    facts.ImportedNamesTable = ReadU16(header, 42);
    facts.DescriptionPosition = ReadU32(header, 44);
    return facts;
}

NewHeaderFacts ReadPe(ByteSpan header)
{
    constexpr std::uint16_t LibraryImage = 0x2000;
    NewHeaderFacts facts = {};
    facts.FileType = (ReadU16(header, 22) & LibraryImage) != 0 ? Windows32Dll : Windows32Program;
    facts.IsPe = true;
    facts.Machine = ReadU16(header, 4);
    return facts;
}

NewHeaderFacts OnlyType(std::int16_t type)
{
    NewHeaderFacts facts = {};
    facts.FileType = type;
    return facts;
}

} // namespace

StubFacts ReadStub(HeaderSpan start, std::int32_t fileSize)
{
    if (IsSzdd(start)) {
        return {CompressedFile, 0};
    }
    if (ReadU16(start, 0) != Mark('M', 'Z')) {
        return {NotRecognised, 0};
    }
    constexpr std::uint16_t FirstNewRelocationTable = 64; // below it there is no room for a new header's offset
    const std::uint32_t newHeader = ReadU32(start, 60);
    if (ReadU16(start, 24) < FirstNewRelocationTable || newHeader == 0) {
        return {DosProgram, 0};
    }
    const std::int64_t last = static_cast<std::int64_t>(fileSize) - static_cast<std::int64_t>(HeaderBytes);
    if (newHeader > last) {
        return {NotRecognised, 0}; // a damaged header makes no DOS program
    }
    return {NotRecognised, static_cast<std::int32_t>(newHeader)};
}

NewHeaderFacts ReadNewHeader(HeaderSpan header)
{
    switch (ReadU16(header, 0)) {
    case Mark('L', 'E'): return OnlyType(WindowsVxd);
    case Mark('N', 'E'): return ReadNe(header);
    case Mark('P', 'E'): return ReadPe(header);
    case Mark('L', 'X'): return OnlyType(Os2Version2Program);
    default: return OnlyType(DosProgram);
    }
}

void CopyCountedName(ByteSpan bytes, char* text, std::size_t size)
{
    const ByteSpan letters = BytesAt(bytes, 1, std::min<std::size_t>(ReadU8(bytes, 0), size - 1));
    std::copy(letters.begin(), letters.end(), text);
    text[letters.size()] = '\0';
}
