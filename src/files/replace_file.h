// Writing a file that is there already so that it is either the old or the new one, never half of it.
#pragma once

#include "base/text.h"

// Whether two paths lead to one file, whatever its names are. False when one of them leads to none.
bool IsSameFile(const char* one, const char* other);

// Whether two paths name one entry of one directory: short names and other letters count as the same.
bool IsSameName(const char* one, const char* other);

// Whether the file is marked as not to be written to; false also when there is none.
bool IsReadOnly(const char* path);

// Makes a new file in path's directory, to be written and then put in path's place. Its name is no longer: only
// the last character differs. False when there can be none.
bool MakeFileBeside(const char* path, char (&beside)[MaxPathSize]);

// Puts replacement in path's place; the file keeps its name and attributes. False, and both files are as they were,
// when that is not possible.
bool ReplaceWith(const char* path, const char* replacement);
