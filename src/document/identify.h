// What kind of file it is, told from its headers and its end; and what an executable says of itself.
#pragma once

#include "document/file_info.h"
#include "document/pe_image.h"
#include "document/zip_end.h"

#include <cstdint>
#include <span>

// Fills info from the open file and the status of path; WantDetails stays, and with it Details is filled
// too. Nothing is reported: what cannot be read or does not fit together leaves the type as found so far.
void IdentifyFile(int file, const char* path, FileInfo& info);

// Empties Details.
void ClearDetails();

// Hands the modules that the current document imports to sink: of 16-bit programs the first 256 names, of
// 19 letters at most and as they stand in the file, of 32-bit ones all.
void ListImports(const char* path, const FileInfo& info, const ImportSink& sink);

// The end record of the current document, a ZIP archive; false when it cannot be read.
bool ReadZipEnd(const FileInfo& info, ZipEndRecord& record);

// The central directory of the current document, a ZIP archive. Reads nothing when it does not fit into
// destination or passes the end of the file.
void ReadZipCentral(const FileInfo& info, std::span<std::uint8_t> destination);
