// What kind of file it is, told from its headers and its end; and what an executable says of itself.
#pragma once

#include "document/file_info.h"
#include "document/pe_image.h"
#include "document/port.h"
#include "document/zip_end.h"

#include <cstdint>
#include <span>

// Fills info from the open file and the status of path; WantDetails stays, and with it Details is filled
// too. What cannot be read or does not fit together leaves the type as found so far. False when the status
// cannot be had; info is empty then.
bool IdentifyFile(int file, const char* path, FileInfo& info);

// The same with the status that the caller has got already.
void IdentifyFile(int file, const char* path, const FileStatus& status, FileInfo& info);

// Empties Details.
void ClearDetails();

// Whether the imports of the current document are those of a 16-bit program.
bool Imports16Bit();

// Hands the modules that the current document imports to sink: of 16-bit programs the first 256 names, of
// 19 letters at most and as they stand in the file, of 32-bit ones all.
void ListImports(const char* path, const ImportSink& sink);

// The end record of the current document, a ZIP archive; false when it cannot be read.
bool ReadZipEnd(const FileInfo& info, ZipEndRecord& record);

// The central directory of the current document, a ZIP archive. False, and nothing read, when it does not fit
// into destination or passes the end of the file; false as well when it is empty or cannot be read whole.
bool ReadZipCentral(const FileInfo& info, std::span<std::uint8_t> destination);
