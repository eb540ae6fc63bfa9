// Opening the document and finding out whether it changed.
#pragma once

#include "document/file_info.h"

enum class OpenResult { Opened = 0, CannotOpen = 1, NoStatus = 2 };
enum class ReopenResult { Unchanged = 0, Changed = 1, CannotOpen = 2 };

// Opens path (a full path), fills the document and identifies it into info. InitBuffers comes first. A document of one
// block is read whole and its file closed again; a larger one stays open.
OpenResult OpenDocument(const char* path, FileInfo& info);

// Opens the document's file again after CloseFileHandle. Only the modification time tells a change; a
// changed file is closed again.
ReopenResult ReopenFile(const char* path);
