#include "view/menu_help.h"

#include "resources/ids.h"

namespace {

// The system's own commands, numbered as the system does.
constexpr struct {
    unsigned Id;
    unsigned String;
} SystemHelp[] = {
    {0xF120, IDS_HELP_RESTORE},
    {0xF010, IDS_HELP_MOVE},
    {0xF000, IDS_HELP_SIZE},
    {0xF020, IDS_HELP_MINIMIZE},
    {0xF030, IDS_HELP_MAXIMIZE},
    {0xF060, IDS_HELP_SYSTEM_CLOSE},
    {0xF130, IDS_HELP_TASK_LIST},
    {IDM_SYSTEM_MENU_BAR, IDS_HELP_MENU_BAR},
    {IDM_SYSTEM_SPARE, IDS_HELP_SPARE},
    {0xFFFF, 0},
};

unsigned LaunchHelp(ProgramKind program)
{
    switch (program) {
    case ProgramKind::OfWindows: return IDS_HELP_LAUNCH_PROGRAM;
    case ProgramKind::OfDos: return IDS_HELP_EDIT_FILE;
    default: return IDS_HELP_LAUNCH;
    }
}

} // namespace

unsigned CommandHelp(unsigned id, ProgramKind program)
{
    for (const auto& help : SystemHelp) {
        if (help.Id == id) {
            return help.String;
        }
    }
    // One more than there are: the last of them is but a reserve.
    if (id >= IDM_RECENT_FIRST && id <= IDM_RECENT_LAST + 1) {
        return IDS_HELP_RECENT;
    }
    if (id == IDM_FILE_LAUNCH) {
        return LaunchHelp(program);
    }
    return id >= IDS_COMMAND_HELP_OFFSET ? id - IDS_COMMAND_HELP_OFFSET : 0;
}
