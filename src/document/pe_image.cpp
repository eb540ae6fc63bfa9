#include "document/pe_image.h"

#include "document/exe_header.h"
#include "document/port.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::uint32_t PeSignature = 0x00004550; // "PE", 0, 0
constexpr std::uint32_t SectionBytes = 40;

constexpr std::uint64_t HeadersOf32Bit = 248; // signature, file header and optional header

// Whether the medium gives the bytes at offset, at most count, out of data that are part of a mapped file.
bool CanReadAt(ByteSpan data, std::uint64_t offset, std::uint64_t count)
{
    const ByteSpan bytes = BytesAt(data, offset, count);
    return bytes.empty() || CanRead(bytes.data(), bytes.size());
}

// Whether a mapped view of the file has count bytes at offset: it ends with the file's last page.
bool IsReadable(ByteSpan file, std::uint64_t offset, std::uint64_t count)
{
    constexpr std::uint64_t PageBytes = 4096;
    const std::uint64_t end = (file.size() + PageBytes - 1) / PageBytes * PageBytes;
    return offset <= end && count <= end - offset && CanReadAt(file, offset, count);
}

std::uint32_t PeHeaderOffset(ByteSpan file)
{
    return ReadU32(file, 60);
}

// A section's place in memory and in the file.
struct Section {
    std::uint32_t VirtualAddress;
    std::uint32_t RawBytes;
    std::uint32_t RawPosition;
};

Section ReadSection(ByteSpan file, std::uint64_t entry)
{
    return {ReadU32(file, entry + 12), ReadU32(file, entry + 16), ReadU32(file, entry + 20)};
}

bool HasSectionEntry(ByteSpan file, std::uint64_t entry)
{
    return HasBytes(file, entry, SectionBytes) && CanReadAt(file, entry, SectionBytes);
}

std::uint16_t SectionCount(ByteSpan file)
{
    return ReadU16(file, PeHeaderOffset(file) + std::uint64_t{6});
}

// The section table is taken to follow headers of the 32-bit size, so a 64-bit file shows no imports.
bool FindImportSection(ByteSpan file, Section& section)
{
    constexpr char Name[8] = {'.', 'i', 'd', 'a', 't', 'a', 0, 0};
    std::uint64_t entry = PeHeaderOffset(file) + HeadersOf32Bit;
    for (std::uint16_t left = SectionCount(file); left > 0; --left, entry += SectionBytes) {
        if (!HasSectionEntry(file, entry)) {
            return false;
        }
        if (memcmp(file.data() + entry, Name, sizeof Name) == 0) {
            section = ReadSection(file, entry);
            return true;
        }
    }
    return false;
}

// The name at position, as far as the file goes; false when the medium does not give it.
bool HandOver(ByteSpan file, std::uint64_t position, const ImportSink& sink)
{
    if (sink.Add == nullptr) {
        return true;
    }
    const ByteSpan bytes = BytesAt(file, position, ImportNameSize - 1);
    if (!CanReadAt(bytes, 0, bytes.size())) {
        return false;
    }
    char name[ImportNameSize];
    const auto end = std::find(bytes.begin(), bytes.end(), std::uint8_t{0});
    *std::copy(bytes.begin(), end, name) = '\0';
    sink.Add(sink.Context, name);
    return true;
}

bool HasPeHeader(ByteSpan file)
{
    return CanReadAt(file, 0, HeaderBytes) && IsReadable(file, PeHeaderOffset(file), HeadersOf32Bit) &&
           ReadU32(file, PeHeaderOffset(file)) == PeSignature;
}

} // namespace

std::int32_t WalkPeImports(ByteSpan file, const ImportSink& sink)
{
    constexpr std::uint32_t DescriptorBytes = 20;
    constexpr std::uint32_t NameBytesChecked = 12;
    Section section;
    if (!HasPeHeader(file) || !FindImportSection(file, section)) {
        return 0;
    }
    const std::uint32_t delta = section.VirtualAddress - section.RawPosition;
    std::uint64_t descriptor = section.RawPosition;
    for (std::int32_t count = 0;; ++count, descriptor += DescriptorBytes) {
        if (!IsReadable(file, descriptor, DescriptorBytes)) {
            return 0;
        }
        const std::uint32_t timeStamp = ReadU32(file, descriptor + 4);
        const std::uint32_t nameAddress = ReadU32(file, descriptor + 12);
        if (timeStamp == 0 && nameAddress == 0) {
            return count;
        }
        const std::uint32_t name = nameAddress - delta;
        if (count == MostImports || !IsReadable(file, name, NameBytesChecked) || !HandOver(file, name, sink)) {
            return 0;
        }
    }
}

namespace {

// Where the data at a virtual address stands in the file: as much as its section has there, at most count.
ByteSpan DataAtAddress(ByteSpan file, std::uint32_t address, std::uint32_t count)
{
    const std::uint64_t header = PeHeaderOffset(file);
    std::uint64_t entry = header + 24 + ReadU16(file, header + 20);
    for (std::uint16_t left = SectionCount(file); left > 0; --left, entry += SectionBytes) {
        if (!HasSectionEntry(file, entry)) {
            break;
        }
        const Section section = ReadSection(file, entry);
        const std::uint32_t inSection = address - section.VirtualAddress;
        if (address >= section.VirtualAddress && inSection < section.RawBytes) {
            return BytesAt(file, std::uint64_t{section.RawPosition} + inSection,
                           std::min(count, section.RawBytes - inSection));
        }
    }
    return {};
}

// All of the resources, from their root directory on.
ByteSpan ResourceSection(ByteSpan file)
{
    constexpr std::uint16_t Pe32Plus = 0x20B;
    constexpr std::uint32_t ResourceDirectory = 2;
    constexpr std::uint64_t OptionalHeader64Bit = 136; // as far as the address of the resources
    const std::uint64_t optionalHeader = PeHeaderOffset(file) + std::uint64_t{24};
    if (!CanReadAt(file, optionalHeader, OptionalHeader64Bit)) {
        return {};
    }
    const bool is64Bit = ReadU16(file, optionalHeader) == Pe32Plus;
    const std::uint64_t directories = optionalHeader + (is64Bit ? 112 : 96);
    if (ReadU32(file, directories - 4) <= ResourceDirectory) {
        return {};
    }
    const std::uint32_t address = ReadU32(file, directories + std::uint64_t{ResourceDirectory} * 8);
    return address != 0 ? DataAtAddress(file, address, UINT32_MAX) : ByteSpan{};
}

// A resource directory: 16 bytes, then entries of 8 bytes, named ones first, then numbered ones.
struct NumberedEntries {
    std::uint64_t First; // offset in the resources
    std::uint32_t Count;
};

NumberedEntries EntriesOf(ByteSpan resources, std::uint64_t directory)
{
    if (!CanReadAt(resources, directory, 16)) {
        return {0, 0};
    }
    const std::uint32_t named = ReadU16(resources, directory + 12);
    const std::uint32_t numbered = ReadU16(resources, directory + 14);
    const std::uint64_t first = directory + 16 + std::uint64_t{named} * 8;
    const std::uint64_t room = first < resources.size() ? (resources.size() - first) / 8 : 0;
    const std::uint64_t count = std::min<std::uint64_t>(numbered, room);
    return {first, CanReadAt(resources, first, count * 8) ? static_cast<std::uint32_t>(count) : 0};
}

constexpr std::uint32_t NoEntry = UINT32_MAX;
constexpr std::uint32_t IsDirectory = 0x80000000;

// What the entry with that number leads to, or NoEntry.
std::uint32_t EntryNumbered(ByteSpan resources, std::uint64_t directory, std::uint32_t number)
{
    const NumberedEntries entries = EntriesOf(resources, directory);
    for (std::uint32_t i = 0; i < entries.Count; ++i) {
        const std::uint64_t entry = entries.First + std::uint64_t{i} * 8;
        if (ReadU32(resources, entry) == number) {
            return ReadU32(resources, entry + 4);
        }
    }
    return NoEntry;
}

std::uint32_t EntryOfLanguage(ByteSpan resources, std::uint64_t directory, std::uint16_t userLanguage)
{
    constexpr std::uint16_t Neutral = 0;
    constexpr std::uint16_t AmericanEnglish = 0x0409;
    for (const std::uint16_t language : {Neutral, userLanguage, AmericanEnglish}) {
        const std::uint32_t entry = EntryNumbered(resources, directory, language);
        if (entry != NoEntry) {
            return entry;
        }
    }
    const NumberedEntries entries = EntriesOf(resources, directory);
    return entries.Count > 0 ? ReadU32(resources, entries.First + 4) : NoEntry;
}

bool LeadsToDirectory(std::uint32_t entry)
{
    return entry != NoEntry && (entry & IsDirectory) != 0;
}

} // namespace

ByteSpan FindVersionResource(ByteSpan file, std::uint16_t userLanguage)
{
    constexpr std::uint32_t VersionType = 16;
    constexpr std::uint32_t VersionNumber = 1;
    if (!HasPeHeader(file)) {
        return {};
    }
    const ByteSpan resources = ResourceSection(file);
    const std::uint32_t type = EntryNumbered(resources, 0, VersionType);
    if (!LeadsToDirectory(type)) {
        return {};
    }
    const std::uint32_t number = EntryNumbered(resources, type & ~IsDirectory, VersionNumber);
    if (!LeadsToDirectory(number)) {
        return {};
    }
    const std::uint32_t leaf = EntryOfLanguage(resources, number & ~IsDirectory, userLanguage);
    if (leaf == NoEntry || LeadsToDirectory(leaf) || !HasBytes(resources, leaf, 16) ||
        !CanReadAt(resources, leaf, 16)) {
        return {};
    }
    const ByteSpan block = DataAtAddress(file, ReadU32(resources, leaf), ReadU32(resources, leaf + std::uint64_t{4}));
    return CanReadAt(block, 0, block.size()) ? block : ByteSpan{};
}
