#include "files/launch_command.h"

#include <cstring>

namespace {

void AppendPath(char (&command)[LaunchCommandSize], const char* path, const char* behind)
{
    const char* const quote = strchr(path, ' ') != nullptr ? "\"" : "";
    AppendText(command, quote);
    AppendText(command, path);
    AppendText(command, behind);
    AppendText(command, quote);
}

} // namespace

void RunCommand(const char* path, char (&command)[LaunchCommandSize])
{
    command[0] = '\0';
    AppendPath(command, path, "");
}

void EditCommand(const char* editor, const char* path, char (&command)[LaunchCommandSize])
{
    CopyText(command, editor);
    AppendText(command, " ");
    AppendPath(command, path, ExtensionOf(path)[0] == '\0' ? "." : "");
}
