#include "files/launch_command.h"

#include <cstring>

namespace {

// They end an argument, or mean something to the command interpreter, which runs editors that are batch files.
constexpr char NeedQuotes[] = " &()[]{}^=;!'+,`~%";

void AppendPath(char (&command)[LaunchCommandSize], const char* path, const char* behind)
{
    const char* const quote = strpbrk(path, NeedQuotes) != nullptr ? "\"" : "";
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
