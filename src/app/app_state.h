// The program's own state: where it lives, what it was started with, and the current file.
#pragma once

#include "app/command_line.h"
#include "app/recent_files.h"
#include "document/document.h"
#include "files/association_table.h"
#include "files/launch_mode.h"

#include <cstdint>

struct AppState {
    char ProgramDir[MaxPathSize] = ""; // of the program file, up to and including its last backslash
    char BatchPath[MaxPathSize] = "";
    CommandLine Start; // what the command line said
    RecentFiles Recent;
    char CurrentPath[MaxPathSize] = "";         // of the current file: full, lower-case once it is open
    char OpenedPath[MaxPathSize] = "";          // the same in the letters it was opened by: case may tell files apart
    char FileTitle[MaxPathSize] = "";           // its name part, lower-case; empty when no file is current
    FileInfo Info{.WantDetails = true};         // of the current file
    LaunchMode Launch = LaunchMode::None;       // how it can be launched
    char TypeDescription[DescriptionSize] = ""; // what files of its extension are called; may be empty
    char ArchivePath[MaxPathSize] = "";         // of the archive whose member was viewed last
    bool RedisplayZip = false;                  // the archive's listing is shown again
    bool BusyCursor = false;                    // show the wait cursor
    bool FileReleased = false;                  // it is closed for others, to be opened again
};

extern AppState App;

// Settings that belong to no other subject.
struct AppSettings {
    std::int32_t SuppressMenu = 0; // hide the menu bar
    std::int32_t ExitOnEsc = 0;    // Esc exits; else it closes the file
    std::int32_t AutoZip = 0;
    std::int32_t MinOnLaunch = 0;
    std::int32_t MaxLaunchApp = 0;
    std::int32_t LoadOnDelete = 0;
    char EditorName[MaxPathSize] = "notepad";
    char FilterSpec[128] = "";
};

extern AppSettings AppOptions;
