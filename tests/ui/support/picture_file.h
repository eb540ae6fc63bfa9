// Pictures as files, for a person to look at.
#pragma once

#include "support/probe.h"

#include <string>

// Writes the pixels into the directory "pictures" beside the test program, as name.bmp. Returns the file's full
// path; "", and the test has failed, when it could not be written.
std::string WritePicture(const Pixels& pixels, const std::string& name);
