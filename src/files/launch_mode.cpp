#include "files/launch_mode.h"

#include "document/file_info.h"

LaunchMode DecideLaunch(const LaunchFacts& facts)
{
    const bool runs =
        facts.FileType == Windows16Program || (facts.FileType == Windows32Program && facts.ImageMachine == MachineI386);
    if (facts.HasExtension && runs) {
        return LaunchMode::Program;
    }
    if (facts.HasExtension && facts.IsAssociated) {
        return LaunchMode::Associated;
    }
    return facts.CanEdit ? LaunchMode::Edit : LaunchMode::None;
}
