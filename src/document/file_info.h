// What is known about a file beside its content.
#pragma once

#include <cstdint>

// Type codes. The name of code n is string 141 + n.
enum FileTypeCode : std::int16_t {
    NotRecognised = 0,
    Windows16Program = 1,
    Windows16Dll = 2,
    WindowsVxd = 3,
    Windows32Dll = 4,
    Windows32Program = 5,
    Os2Program = 6,
    Os2Version2Program = 7,
    DosProgram = 8,
    SelfExtractingZip = 9,
    ZipFile = 10,
    CompressedFile = 11,
};

struct FileInfo {
    bool WantDetails = false;      // identification also fills the document's Details
    std::int32_t Size = 0;         // bytes
    std::int32_t Time = 0;         // modification, seconds since 1970
    std::int32_t ZipDirOffset = 0; // position of the ZIP end-of-directory record; 0 = not a ZIP
    std::int16_t FileType = NotRecognised;
    std::uint16_t Attributes = 0; // DOS bits: read-only 1, hidden 2, system 4, archive 32
};

// What an executable says of itself; filled for the current document only.
struct FileDetails {
    std::int32_t ImportCount = 0;        // imported modules
    std::uint16_t ImageMachine = 0;      // of a PE file; MachineI386 and others
    char FileDescription[80] = "";       // of the version block, or a 16-bit program's module description
    char FileVersionText[30] = "";       // of the version block
    char CompanyNameText[40] = "";       // of the version block
    std::int64_t ModuleTable = 0;        // 16-bit programs: file position of the module reference table
    std::int64_t ImportedNamesTable = 0; // and of the imported-names table
};

constexpr std::uint16_t MachineI386 = 332;

extern FileDetails Details;
