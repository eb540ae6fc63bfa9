// Opening the document and finding out whether it changed.
#pragma once

#include <cstdint>

// What is known about a file beside its content.
struct FileInfo {
    std::int32_t Size = 0;         // bytes
    std::int32_t Time = 0;         // modification, seconds since 1970
    std::int32_t ZipDirOffset = 0; // position of the ZIP end-of-directory record; 0 = not a ZIP
    std::int16_t FileType = 0;     // type code; 0 = not recognised
    std::uint16_t Attributes = 0;  // DOS attribute bits
};

enum class OpenResult { Opened = 0, CannotOpen = 1, NoStatus = 2 };
enum class ReopenResult { Unchanged = 0, Changed = 1, CannotOpen = 2 };

// Opens path (a full path) and fills the document and info. InitBuffers comes first. A document of one
// block is read whole and its file closed again; a larger one stays open.
OpenResult OpenDocument(const char* path, FileInfo& info);

// Opens the document's file again after CloseFileHandle. Only the modification time tells a change; a
// changed file is closed again.
ReopenResult ReopenFile(const char* path);
