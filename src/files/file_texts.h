// What the windows say of a file, as texts.
#pragma once

#include "document/file_info.h"
#include "files/association_table.h"
#include "files/attribute_text.h"
#include "files/info_text.h"
#include "files/list_date.h"

// The attributes in words.
void AttributeText(const FileInfo& info, char (&text)[AttributeTextSize]);

// The local time of the modification, as the lists show it.
void ModificationText(const FileInfo& info, char (&text)[FileDateSize]);

// The local time of the modification, in full.
void LongDateText(const FileInfo& info, char (&text)[LongDateSize]);
void LongTimeText(const FileInfo& info, char (&text)[LongTimeSize]);

constexpr std::size_t TypeTextSize = DescriptionSize;

// What kind of file it is: its recognised type, else what its extension stands for. False when it is neither.
bool TypeText(const FileInfo& info, const char* path, char (&text)[TypeTextSize]);
