// Command lines that start something with a file.
#pragma once

#include "base/text.h"

#include <cstddef>

// Two paths, two quotation marks each, a blank and a dot.
constexpr std::size_t LaunchCommandSize = 2 * MaxPathSize + 8;

// A path with blanks, or with what means something to the command interpreter, stands between quotation marks, so
// that it is one argument and nothing else is run.
void RunCommand(const char* path, char (&command)[LaunchCommandSize]);

// The path of a file without an extension ends in a dot, so that the editor adds none of its own.
void EditCommand(const char* editor, const char* path, char (&command)[LaunchCommandSize]);
