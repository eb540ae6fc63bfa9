// Files of the kinds that are told by their headers, byte by byte; and what holds for every file that is
// identified, whole or damaged.
#pragma once

#include "document/block_cache.h"
#include "document/byte_reader.h"
#include "document/document_state.h"
#include "document/identify.h"
#include "support/document_setup.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

// Bytes at any offset; the file grows as far as it is written.
class FileImage {
public:
    explicit FileImage(std::size_t size = 0) : Content(size) {}
    explicit FileImage(Bytes content) : Content(std::move(content)) {}

    FileImage& Put(std::size_t at, const Bytes& bytes)
    {
        Content.resize(std::max(Content.size(), at + bytes.size()));
        std::copy(bytes.begin(), bytes.end(), Content.begin() + static_cast<std::ptrdiff_t>(at));
        return *this;
    }
    FileImage& Text(std::size_t at, std::string_view text) { return Put(at, BytesOf(text)); }
    FileImage& U8(std::size_t at, std::uint32_t value) { return Number(at, value, 1); }
    FileImage& U16(std::size_t at, std::uint32_t value) { return Number(at, value, 2); }
    FileImage& U32(std::size_t at, std::uint32_t value) { return Number(at, value, 4); }
    FileImage& Append(const Bytes& bytes) { return Put(Content.size(), bytes); }
    FileImage& Pad(std::size_t size)
    {
        Content.resize(std::max(Content.size(), size));
        return *this;
    }
    FileImage& Cut(std::size_t size)
    {
        Content.resize(size);
        return *this;
    }

    Bytes Content;

private:
    FileImage& Number(std::size_t at, std::uint32_t value, std::size_t count)
    {
        Bytes bytes;
        for (std::size_t i = 0; i < count; ++i) {
            bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        }
        return Put(at, bytes);
    }
};

// A DOS program without a new header.
inline FileImage MzImage(std::size_t size = 64)
{
    return FileImage(size).Text(0, "MZ").U16(24, 28);
}

// A stub of 64 bytes and the 64 bytes it leads to.
constexpr std::size_t NewHeaderAt = 64;

inline FileImage NewHeaderImage(std::string_view mark)
{
    return FileImage(2 * NewHeaderAt).Text(0, "MZ").U16(24, 64).U32(60, NewHeaderAt).Text(NewHeaderAt, mark);
}

// A 16-bit Windows program: modules KERNEL and USER, a description.
constexpr std::size_t NeModuleTableAt = 128;
constexpr std::size_t NeNamesAt = 136;
constexpr std::size_t NeDescriptionAt = 160;

inline FileImage NeImage(std::string_view description = "An old program")
{
    FileImage image = NewHeaderImage("NE");
    image.U8(NewHeaderAt + 54, 2).U16(NewHeaderAt + 30, 2);
    image.U16(NewHeaderAt + 40, NeModuleTableAt - NewHeaderAt).U16(NewHeaderAt + 42, NeNamesAt - NewHeaderAt);
    image.U16(NeModuleTableAt, 1).U16(NeModuleTableAt + 2, 8);
    image.U8(NeNamesAt + 1, 6).Text(NeNamesAt + 2, "KERNEL").U8(NeNamesAt + 8, 4).Text(NeNamesAt + 9, "USER");
    image.U16(NewHeaderAt + 32, static_cast<std::uint32_t>(description.size() + 3)).U32(NewHeaderAt + 44, 160);
    image.U8(NeDescriptionAt, static_cast<std::uint32_t>(description.size()));
    image.Text(NeDescriptionAt + 1, description);
    return image.Pad(NeDescriptionAt + description.size() + 16);
}

inline FileImage SzddImage()
{
    return FileImage(64).Text(0, "SZDD\x88\xF0\x27\x33"
                                 "A");
}

// An archive without members: its directory, then its end record.
constexpr std::size_t ZipEndSize = 22;

inline Bytes ZipEndBytesOf(std::uint32_t directoryAt, std::uint32_t directoryBytes)
{
    FileImage record(ZipEndSize);
    record.Text(0, "PK\x05\x06").U32(12, directoryBytes).U32(16, directoryAt);
    return record.Content;
}

// The file with an archive behind it, whose directory is the letters given.
inline FileImage WithZip(FileImage image, std::string_view directory = "central directory")
{
    const std::uint32_t at = static_cast<std::uint32_t>(image.Content.size());
    image.Append(BytesOf(directory));
    return image.Append(ZipEndBytesOf(at, static_cast<std::uint32_t>(directory.size())));
}

struct PeSection {
    std::string Name;
    std::uint32_t Address;
    Bytes Data;
};

// Where the sections' bytes start, one behind the other.
constexpr std::size_t PeSectionsAt = 512;

inline FileImage PeImage(const std::vector<PeSection>& sections, bool is64Bit = false)
{
    const std::size_t optionalHeader = NewHeaderAt + 24;
    const std::size_t optionalBytes = is64Bit ? 240 : 224;
    const std::size_t directories = optionalHeader + (is64Bit ? 112 : 96);
    FileImage image = NewHeaderImage("PE");
    image.U16(NewHeaderAt + 4, is64Bit ? 0x8664 : MachineI386);
    image.U16(NewHeaderAt + 6, static_cast<std::uint32_t>(sections.size()));
    image.U16(NewHeaderAt + 20, static_cast<std::uint32_t>(optionalBytes)).U16(NewHeaderAt + 22, 0x102);
    image.U16(optionalHeader, is64Bit ? 0x20B : 0x10B).U32(directories - 4, 16);
    image.Pad(PeSectionsAt);
    std::size_t entry = optionalHeader + optionalBytes;
    for (const PeSection& section : sections) {
        const std::uint32_t size = static_cast<std::uint32_t>(section.Data.size());
        image.Text(entry, section.Name).U32(entry + 8, size).U32(entry + 12, section.Address);
        image.U32(entry + 16, size).U32(entry + 20, static_cast<std::uint32_t>(image.Content.size()));
        if (section.Name == ".rsrc") {
            image.U32(directories + 16, section.Address).U32(directories + 20, size);
        }
        image.Append(section.Data);
        entry += 40;
    }
    return image;
}

// Import descriptors, then the names, each in 16 bytes or more.
inline PeSection ImportSection(const std::vector<std::string>& names, std::uint32_t address = 0x3000)
{
    FileImage data((names.size() + 1) * 20);
    std::size_t descriptor = 0;
    for (const std::string& name : names) {
        const std::size_t at = data.Content.size();
        data.U32(descriptor + 12, address + static_cast<std::uint32_t>(at));
        data.Text(at, name).Pad(at + std::max<std::size_t>(16, name.size() + 1));
        descriptor += 20;
    }
    return {".idata", address, data.Content};
}

struct LanguageBlock {
    std::uint32_t Language;
    Bytes Block;
};

// Directories of the resource sections built here; the languages' entries follow the last one.
constexpr std::size_t NumberDirectoryAt = 24;
constexpr std::size_t LanguageDirectoryAt = 48;
constexpr std::size_t LanguageEntriesAt = LanguageDirectoryAt + 16;

// A version resource in each of the languages.
inline PeSection ResourceSection(const std::vector<LanguageBlock>& blocks, std::uint32_t address = 0x5000)
{
    FileImage data;
    data.U16(14, 1).U32(16, 16).U32(20, 0x80000000 | NumberDirectoryAt);
    data.U16(NumberDirectoryAt + 14, 1).U32(NumberDirectoryAt + 16, 1);
    data.U32(NumberDirectoryAt + 20, 0x80000000 | LanguageDirectoryAt);
    data.U16(LanguageDirectoryAt + 14, static_cast<std::uint32_t>(blocks.size()));
    std::size_t entry = LanguageEntriesAt;
    std::size_t leaf = LanguageEntriesAt + 8 * blocks.size();
    std::size_t at = leaf + 16 * blocks.size();
    for (const LanguageBlock& block : blocks) {
        data.U32(entry, block.Language).U32(entry + 4, static_cast<std::uint32_t>(leaf));
        data.U32(leaf, address + static_cast<std::uint32_t>(at));
        data.U32(leaf + 4, static_cast<std::uint32_t>(block.Block.size())).Pad(leaf + 16).Put(at, block.Block);
        entry += 8;
        leaf += 16;
        at += (block.Block.size() + 3) / 4 * 4;
    }
    return {".rsrc", address, data.Pad(at).Content};
}

// One element of a version block: its value, then the elements below it.
inline Bytes VersionElement(std::string_view key, const Bytes& value, std::uint32_t valueLength, bool isText,
                            const std::vector<Bytes>& children)
{
    const auto align = [](FileImage& image) { image.Pad((image.Content.size() + 3) / 4 * 4); };
    FileImage element(6 + 2 * (key.size() + 1));
    for (std::size_t i = 0; i < key.size(); ++i) {
        element.U16(6 + 2 * i, static_cast<std::uint8_t>(key[i]));
    }
    align(element);
    element.Append(value);
    for (const Bytes& child : children) {
        align(element);
        element.Append(child);
    }
    element.U16(0, static_cast<std::uint32_t>(element.Content.size())).U16(2, valueLength).U16(4, isText ? 1 : 0);
    return element.Content;
}

inline Bytes VersionString(std::string_view key, std::string_view value)
{
    FileImage text(2 * (value.size() + 1));
    for (std::size_t i = 0; i < value.size(); ++i) {
        text.U16(2 * i, static_cast<std::uint8_t>(value[i]));
    }
    return VersionElement(key, text.Content, static_cast<std::uint32_t>(value.size() + 1), true, {});
}

inline Bytes VersionParent(std::string_view key, const std::vector<Bytes>& children)
{
    return VersionElement(key, {}, 0, true, children);
}

// "VarFileInfo" with the languages given, each as it is stored.
inline Bytes VersionVariables(const std::vector<std::uint32_t>& translations)
{
    FileImage values;
    for (std::size_t i = 0; i < translations.size(); ++i) {
        values.U32(4 * i, translations[i]);
    }
    const std::uint32_t length = static_cast<std::uint32_t>(values.Content.size());
    return VersionParent("VarFileInfo", {VersionElement("Translation", values.Content, length, false, {})});
}

inline Bytes VersionTable(std::string_view language, std::string_view description, std::string_view version,
                          std::string_view company)
{
    return VersionParent(language,
                         {VersionString("CompanyName", company), VersionString("FileDescription", description),
                          VersionString("FileVersion", version)});
}

inline Bytes VersionRoot(const std::vector<Bytes>& children)
{
    const Bytes fixedInfo(52, 0xEE);
    return VersionElement("VS_VERSION_INFO", fixedInfo, 52, false, children);
}

// As resource compilers write it.
inline Bytes PlainVersionBlock(std::string_view description = "A program", std::string_view version = "1.2.3",
                               std::string_view company = "A company")
{
    return VersionRoot({VersionParent("StringFileInfo", {VersionTable("040904B0", description, version, company)}),
                        VersionVariables({0x04B00409})});
}

// A program of 32 bits with imports and a version, as most are.
inline FileImage PlainPeImage(bool is64Bit = false)
{
    return PeImage({ImportSection({"KERNEL32.dll", "USER32.dll"}), ResourceSection({{0x409, PlainVersionBlock()}})},
                   is64Bit);
}

// The type, the facts and the imports of a file opened as the document.
struct Identified {
    FileInfo Info;
    FileDetails Facts;
    bool IsText = false;
    bool Is16Bit = false;
    std::vector<std::string> Imports;
};

inline void TakeImport(void* context, const char* name)
{
    static_cast<std::vector<std::string>*>(context)->push_back(name);
}

inline Identified Identify(Bytes content, bool wantDetails = true)
{
    Identified result;
    TestPort::AddFile(TestPath, std::move(content));
    FreeBuffers();
    InitBuffers();
    result.Info.WantDetails = wantDetails;
    OpenDocument(TestPath, result.Info);
    result.Facts = Details;
    result.IsText = Document.IsText;
    result.Is16Bit = Imports16Bit();
    ListImports(TestPath, ImportSink{TakeImport, &result.Imports});
    return result;
}

// Collects what does not hold.
class Promises {
public:
    void Expect(bool holds, const char* what)
    {
        if (!holds) {
            Broken += Broken.empty() ? what : std::string("; ") + what;
        }
    }

    std::string Broken;
};

// What a document before may have left.
inline void DirtyDetails()
{
    memset(static_cast<void*>(&Details), 0x55, sizeof Details);
}

inline bool HasNoDetails(const FileDetails& facts)
{
    return facts.ImportCount == 0 && facts.ImageMachine == 0 && facts.FileDescription[0] == '\0' &&
           facts.FileVersionText[0] == '\0' && facts.CompanyNameText[0] == '\0' && facts.ModuleTable == 0 &&
           facts.ImportedNamesTable == 0;
}

inline bool IsPeType(std::int16_t type)
{
    return type == Windows32Program || type == Windows32Dll;
}

inline void ExpectSoundType(Promises& promises, const FileInfo& info, const Bytes& content)
{
    promises.Expect(info.FileType >= NotRecognised && info.FileType <= CompressedFile, "the type is a known one");
    const bool isZip = info.FileType == SelfExtractingZip || info.FileType == ZipFile;
    promises.Expect(isZip == (info.ZipDirOffset != 0), "an archive is what has an end record");
    if (info.ZipDirOffset != 0) {
        const std::size_t at = static_cast<std::size_t>(info.ZipDirOffset);
        const bool within = info.ZipDirOffset > 0 && at + ZipEndSize <= content.size();
        promises.Expect(within, "the end record lies within the file");
        promises.Expect(within && memcmp(content.data() + at, "PK\5\6\0\0\0\0", 8) == 0, "it is one of one disk");
    }
}

template <std::size_t Size> bool IsTerminated(const char (&text)[Size])
{
    return memchr(text, '\0', Size) != nullptr;
}

inline void ExpectSoundDetails(Promises& promises, const Identified& file)
{
    const FileDetails& facts = file.Facts;
    promises.Expect(IsTerminated(facts.FileDescription) && IsTerminated(facts.FileVersionText) &&
                        IsTerminated(facts.CompanyNameText),
                    "the texts end");
    promises.Expect(facts.ImportCount >= 0 && facts.ImportCount <= 65535, "the imports are counted in 16 bits");
    const std::int16_t type = file.Info.FileType;
    if (type == Windows16Program || type == Windows16Dll || type == Os2Program || type == DosProgram) {
        promises.Expect(facts.FileDescription[0] == '\0' || strchr(facts.FileDescription, ' ') != nullptr,
                        "a module description has a space");
        promises.Expect(facts.FileVersionText[0] == '\0' && facts.CompanyNameText[0] == '\0' && facts.ImageMachine == 0,
                        "nothing of a version block");
    }
    if (type == WindowsVxd || type == Os2Version2Program || type == CompressedFile || type == NotRecognised) {
        promises.Expect(HasNoDetails(facts), "only programs that tell details have them");
    }
    if (IsPeType(type)) {
        promises.Expect(facts.ImportCount <= MostImports, "not more imports than are believed");
        promises.Expect(!file.Is16Bit, "it is no 16-bit program");
    }
    if (file.Is16Bit) {
        promises.Expect(file.Imports.size() <= 256, "256 modules at most");
        for (const std::string& name : file.Imports) {
            promises.Expect(name.size() <= 19, "19 letters of a module at most");
        }
    }
}

// The whole file as mapped: exactly its bytes.
inline void ExpectSoundImage(Promises& promises, const Identified& file, const Bytes& content)
{
    std::vector<std::string> names;
    const std::int32_t count = WalkPeImports(content, ImportSink{TakeImport, &names});
    promises.Expect(count >= 0 && count <= MostImports, "not more imports than are believed");
    promises.Expect(count == 0 || names.size() == static_cast<std::size_t>(count), "each import has a name");
    for (const std::string& name : names) {
        promises.Expect(name.size() < ImportNameSize, "names are cut");
    }
    if (IsPeType(file.Info.FileType)) {
        promises.Expect(count == file.Facts.ImportCount, "the count is that of the walk");
    }
    if (!file.Is16Bit) {
        const bool listed = file.Facts.ImportCount > 0;
        promises.Expect(file.Imports == (listed ? names : std::vector<std::string>{}),
                        "the names are those of the walk");
    }
    const ByteSpan block = FindVersionResource(content, 0x0407);
    promises.Expect(block.empty() || (block.data() >= content.data() &&
                                      block.data() + block.size() <= content.data() + content.size()),
                    "the version resource lies within the file");
}

inline void ExpectSoundArchive(Promises& promises, const Identified& file, const Bytes& content)
{
    constexpr std::size_t RoomBytes = 64;
    const Bytes untouched(RoomBytes, 0xA5);
    ZipEndRecord record = {};
    const bool read = ReadZipEnd(file.Info, record);
    Bytes directory = untouched;
    const bool readDirectory = ReadZipCentral(file.Info, directory);
    if (file.Info.ZipDirOffset == 0) {
        return;
    }
    const std::size_t at = static_cast<std::size_t>(file.Info.ZipDirOffset);
    const std::uint64_t bytes = ReadU32(content, at + 12);
    const std::uint64_t position = ReadU32(content, at + 16);
    promises.Expect(read && record.DirectoryBytes == bytes && record.DirectoryPosition == position &&
                        record.EntryCount == ReadU16(content, at + 10),
                    "the end record is read");
    Bytes expected = untouched;
    const bool fits = bytes <= RoomBytes && position + bytes <= content.size();
    if (fits) {
        std::copy_n(content.begin() + static_cast<std::ptrdiff_t>(position), bytes, expected.begin());
    }
    promises.Expect((readDirectory == fits || bytes == 0) && directory == expected,
                    "the directory is read whole or not at all");
}

// What does not hold of the file's identification, empty when all does. Leaves the file opened.
inline std::string BrokenPromises(const Bytes& content)
{
    Promises promises;
    DirtyDetails();
    const Identified plain = Identify(content, false);
    promises.Expect(HasNoDetails(plain.Facts), "details only when they are wanted");
    DirtyDetails();
    const Identified file = Identify(content);
    promises.Expect(file.Info.FileType == plain.Info.FileType, "the type does not depend on details");
    promises.Expect(file.Info.ZipDirOffset == plain.Info.ZipDirOffset, "nor does the end record");
    promises.Expect(file.Info.Size == static_cast<std::int32_t>(content.size()), "the size is the file's");
    promises.Expect(file.Info.FileType == NotRecognised || (!file.IsText && !plain.IsText),
                    "what has a type is no text");
    ExpectSoundType(promises, file.Info, content);
    ExpectSoundDetails(promises, file);
    ExpectSoundImage(promises, file, content);
    ExpectSoundArchive(promises, file, content);
    promises.Expect(TestPort::Misuses() == 0, "memory and files are used by their rules");
    return promises.Broken;
}
