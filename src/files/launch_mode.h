// How the current file can be launched.
#pragma once

#include <cstdint>

enum class LaunchMode {
    None,
    Edit,       // open it in the editor
    Program,    // run it: it is a Windows program
    Associated, // start what its extension is associated with
};

struct LaunchFacts {
    bool HasExtension;
    bool CanEdit; // a text file, and there is an editor
    std::int16_t FileType;
    std::uint16_t ImageMachine;
    bool IsAssociated; // its extension is
};

// A file without an extension is never run or started, only edited.
LaunchMode DecideLaunch(const LaunchFacts& facts);
