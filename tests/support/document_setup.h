// A document to test with, opened the way the program opens one.
#pragma once

#include "document/document.h"
#include "support/test_port.h"

#include <cstdint>
#include <string>
#include <string_view>

inline constexpr char TestPath[] = "c:\\test\\file.txt";

// As after the program's start: no document, settings at their defaults, cacheSlots as the Buffers setting.
void StartDocuments(std::int32_t cacheSlots);

// How often a block was announced as being read, and how often the Buffers setting was asked for, since
// StartDocuments.
int ReadingsAnnounced();
int BufferCountQueries();

// Closes the document and opens content as TestPath. The status and the files are TestPort's.
OpenResult OpenBytes(Bytes content);

// Opens TestPath as it stands.
OpenResult OpenTestFile();

Bytes BytesOf(std::string_view text);

// Size bytes of lines of lineLength letters and an LF each; the letters differ from line to line.
Bytes Lines(std::size_t size, std::size_t lineLength);

// The line or bytes as a string.
std::string TextOfLine(std::int32_t line);
std::string TextOfBytes(std::int32_t offset, std::int32_t count);

// Discards every parked block; returns how many there were.
int DiscardParkedBlocks();
