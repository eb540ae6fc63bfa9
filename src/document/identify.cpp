#include "document/identify.h"

#include "document/block_cache.h"
#include "document/document_state.h"
#include "document/exe_header.h"
#include "document/port.h"
#include "document/version_block.h"

#include <algorithm>
#include <cstring>

FileDetails Details;

namespace {

bool ReadWhole(int file, std::int32_t offset, std::span<std::uint8_t> destination)
{
    const std::int32_t bytes = static_cast<std::int32_t>(destination.size());
    return ReadFileAt(file, offset, destination.data(), bytes) == bytes;
}

void FindZipDirectory(int file, FileInfo& info)
{
    std::uint8_t tail[ZipTailBytes];
    const std::int32_t n = std::min(info.Size, ZipTailBytes);
    if (!ReadWhole(file, info.Size - n, std::span(tail, static_cast<std::size_t>(n)))) {
        return;
    }
    const std::int32_t position = FindZipEnd(ByteSpan(tail, static_cast<std::size_t>(n)));
    if (position >= 0) {
        info.ZipDirOffset = info.Size - n + position;
    }
}

// The module description of a 16-bit program: the first of its non-resident names. A description has a
// space in it; a lone word is but the module's name.
void ReadModuleDescription(int file, const FileInfo& info, const NewHeaderFacts& facts)
{
    std::uint8_t names[256];
    const std::int32_t length = std::min<std::int32_t>(facts.DescriptionBytes, sizeof names);
    if (length == 0 || static_cast<std::int64_t>(facts.DescriptionPosition) >= info.Size - length) {
        return;
    }
    const ByteSpan table(names, static_cast<std::size_t>(length));
    if (!ReadWhole(file, static_cast<std::int32_t>(facts.DescriptionPosition),
                   std::span(names, static_cast<std::size_t>(length)))) {
        return;
    }
    CopyCountedName(table, Details.FileDescription, sizeof Details.FileDescription);
    if (strchr(Details.FileDescription, ' ') == nullptr) {
        Details.FileDescription[0] = '\0';
    }
}

void TakeNeDetails(int file, const FileInfo& info, std::int32_t newHeader, const NewHeaderFacts& facts)
{
    Details.ImportCount = facts.ModuleCount;
    if (facts.ModuleCount > 0) {
        Details.ModuleTable = std::int64_t{newHeader} + facts.ModuleTable;
        Details.ImportedNamesTable = std::int64_t{newHeader} + facts.ImportedNamesTable;
    }
    if (Details.FileDescription[0] == '\0') {
        ReadModuleDescription(file, info, facts);
    }
}

void ReadVersionInfo(ByteSpan image)
{
    VersionTexts texts;
    ReadVersionTexts(FindVersionResource(image, UserLanguage()), texts);
    ToAnsiText(texts.FileDescription, Details.FileDescription, sizeof Details.FileDescription);
    ToAnsiText(texts.FileVersion, Details.FileVersionText, sizeof Details.FileVersionText);
    ToAnsiText(texts.CompanyName, Details.CompanyNameText, sizeof Details.CompanyNameText);
}

void TakePeDetails(const char* path, const NewHeaderFacts& facts)
{
    Details.ImageMachine = facts.Machine;
    const MappedFile mapped = MapWholeFile(path);
    const ByteSpan image(mapped.Bytes, mapped.Size);
    ReadVersionInfo(image);
    Details.ImportCount = WalkPeImports(image, ImportSink{});
    UnmapFile(mapped);
}

void IdentifyHeaders(int file, const char* path, FileInfo& info)
{
    std::uint8_t header[HeaderBytes];
    if (info.Size < static_cast<std::int32_t>(HeaderBytes) || !ReadWhole(file, 0, header)) {
        return;
    }
    const StubFacts stub = ReadStub(header, info.Size);
    info.FileType = stub.FileType;
    if (stub.NewHeader == 0 || !ReadWhole(file, stub.NewHeader, header)) {
        return;
    }
    const NewHeaderFacts facts = ReadNewHeader(header);
    info.FileType = facts.FileType;
    if (info.WantDetails && facts.IsNe) {
        TakeNeDetails(file, info, stub.NewHeader, facts);
    } else if (info.WantDetails && facts.IsPe) {
        TakePeDetails(path, facts);
    }
}

} // namespace

void ClearDetails()
{
    Details = FileDetails{};
}

bool IdentifyFile(int file, const char* path, FileInfo& info)
{
    FileStatus status;
    if (!GetFileStatus(path, status)) {
        info = FileInfo{.WantDetails = info.WantDetails};
        return false;
    }
    IdentifyFile(file, path, status, info);
    return true;
}

void IdentifyFile(int file, const char* path, const FileStatus& status, FileInfo& info)
{
    info = FileInfo{.WantDetails = info.WantDetails};
    info.Size = status.Size;
    info.Time = status.Time;
    info.Attributes = status.Attributes;
    FindZipDirectory(file, info);
    IdentifyHeaders(file, path, info);
    if (info.ZipDirOffset != 0) {
        // An archive behind a DOS program unpacks itself; behind any other program it is what counts.
        info.FileType = info.FileType == DosProgram ? SelfExtractingZip : ZipFile;
    }
}

namespace {

// As much of the range as the document has; returns how many bytes.
std::int32_t ReadDocument(std::int64_t offset, std::span<std::uint8_t> destination)
{
    if (offset >= Document.FileSize) {
        return 0;
    }
    const std::int32_t start = static_cast<std::int32_t>(offset);
    const std::int32_t bytes = std::min(static_cast<std::int32_t>(destination.size()), Document.FileSize - start);
    memset(destination.data(), 0, destination.size());
    return ReadAt(start, destination.data(), bytes);
}

// The imports of a 16-bit program: the module reference table holds the offsets of their names.
void ListNeImports(const ImportSink& sink)
{
    constexpr std::int32_t MostModules = 256;
    constexpr std::size_t NameBytes = 100;
    constexpr std::size_t ShownNameSize = 20;
    std::uint8_t references[MostModules * 2];
    const std::int32_t wanted = std::min(Details.ImportCount, MostModules);
    const std::int32_t read =
        ReadDocument(Details.ModuleTable, std::span(references, static_cast<std::size_t>(wanted) * 2));
    for (std::int32_t i = 0; i < read / 2; ++i) {
        const std::uint16_t offset = ReadU16(references, static_cast<std::uint64_t>(i) * 2);
        std::uint8_t bytes[NameBytes];
        const std::int32_t count = ReadDocument(Details.ImportedNamesTable + offset, bytes);
        if (count > 0) {
            char name[ShownNameSize];
            CopyCountedName(ByteSpan(bytes, static_cast<std::size_t>(count)), name, sizeof name);
            sink.Add(sink.Context, name);
        }
    }
}

} // namespace

bool Imports16Bit()
{
    return Details.ModuleTable != 0; // the header itself stands at the beginning, so no table does
}

// What was found decides, not the type: an archive behind a program makes a ZIP file of it.
void ListImports(const char* path, const ImportSink& sink)
{
    if (Imports16Bit()) {
        ListNeImports(sink);
    } else if (Details.ImportCount > 0) {
        const MappedFile mapped = MapWholeFile(path);
        WalkPeImports(ByteSpan(mapped.Bytes, mapped.Size), sink);
        UnmapFile(mapped);
    }
}

bool ReadZipEnd(const FileInfo& info, ZipEndRecord& record)
{
    std::uint8_t bytes[ZipEndBytes] = {};
    ReadAt(info.ZipDirOffset, bytes, sizeof bytes);
    record = ReadZipEndRecord(bytes);
    return FindZipEnd(bytes) == 0;
}

bool ReadZipCentral(const FileInfo& info, std::span<std::uint8_t> destination)
{
    ZipEndRecord record;
    if (!ReadZipEnd(info, record) || record.DirectoryBytes > destination.size() ||
        record.DirectoryPosition > INT32_MAX || record.DirectoryBytes > INT32_MAX) {
        return false;
    }
    const std::int32_t bytes = static_cast<std::int32_t>(record.DirectoryBytes);
    return bytes > 0 && ReadAt(static_cast<std::int32_t>(record.DirectoryPosition), destination.data(), bytes) == bytes;
}
