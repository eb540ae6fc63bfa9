#include "support/launched.h"

#include "support/test_files.h"
#include "support/wait.h"
#include "support/windows_path.h"

#include <cstdlib>
#include <map>
#include <sstream>

namespace {

constexpr char RecordVariable[] = "KESTOVAR_LAUNCH_RECORD";
constexpr char EndVariable[] = "KESTOVAR_LAUNCH_END";

std::string RecordPath()
{
    return ScratchPath("launched.record");
}

std::map<std::string, std::string> ReadLines(const std::string& path)
{
    std::map<std::string, std::string> values;
    std::istringstream text(ReadWholeFile(path));
    std::string line;
    while (std::getline(text, line)) {
        const std::size_t equals = line.find('=');
        if (equals != std::string::npos) {
            values[line.substr(0, equals)] = line.substr(equals + 1);
        }
    }
    return values;
}

DWORD NumberOf(const std::string& digits)
{
    return static_cast<DWORD>(strtoul(digits.c_str(), nullptr, 10));
}

// Without the program's name, which stands between quotation marks or ends at a blank, and the blank behind it.
std::string ArgumentsOf(const std::string& commandLine)
{
    const bool quoted = !commandLine.empty() && commandLine[0] == '"';
    const std::size_t end = quoted ? commandLine.find('"', 1) : commandLine.find(' ');
    const std::size_t begin = quoted && end != std::string::npos ? end + 2 : end + 1;
    return end == std::string::npos || begin > commandLine.size() ? "" : commandLine.substr(begin);
}

} // namespace

Launches::Launches(Kind kind) : EndEvent(nullptr)
{
    DeleteFileA(RecordPath().c_str());
    SetEnvironmentVariableA(RecordVariable, RecordPath().c_str());
    if (kind == Kind::Stay) {
        const std::string name = "kestovar-launch-end-" + std::to_string(GetCurrentProcessId());
        EndEvent = CreateEventA(nullptr, TRUE, FALSE, name.c_str());
        EXPECT_NE(EndEvent, nullptr) << "error " << GetLastError();
        SetEnvironmentVariableA(EndVariable, name.c_str());
    }
}

Launches::~Launches()
{
    End();
    if (EndEvent != nullptr) {
        CloseHandle(EndEvent);
    }
    SetEnvironmentVariableA(EndVariable, nullptr);
    SetEnvironmentVariableA(RecordVariable, nullptr);
    DeleteFileA(RecordPath().c_str());
}

LaunchRecord Launches::Wait()
{
    LaunchRecord record;
    if (!WaitUntil([this] { return HasRecord(); })) {
        ADD_FAILURE() << "nothing was launched";
        return record;
    }
    std::map<std::string, std::string> values = ReadLines(RecordPath());
    EXPECT_TRUE(WaitUntil([] { return DeleteFileA(RecordPath().c_str()) != FALSE; }));
    const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, NumberOf(values["process"]));
    if (process != nullptr) {
        Processes.push_back(process);
    }
    record.Program = values["program"];
    record.CommandLine = values["command"];
    record.Arguments = ArgumentsOf(record.CommandLine);
    record.Directory = values["directory"];
    record.Flags = NumberOf(values["flags"]);
    record.Show = static_cast<WORD>(NumberOf(values["show"]));
    record.File = values["file"];
    record.Window = reinterpret_cast<HWND>(static_cast<UINT_PTR>(NumberOf(values["window"])));
    return record;
}

bool Launches::HasRecord() const
{
    return FileExists(RecordPath());
}

void Launches::End()
{
    if (EndEvent != nullptr) {
        SetEvent(EndEvent);
    }
    for (const HANDLE process : Processes) {
        EXPECT_EQ(WaitForSingleObject(process, DefaultWaitLimit), WAIT_OBJECT_0) << "what was launched stays";
        CloseHandle(process);
    }
    Processes.clear();
}

std::string LaunchedProgram()
{
    return WindowsPath(KESTOVAR_LAUNCHED);
}

void CopyLaunchedTo(const std::string& path)
{
    EXPECT_TRUE(CopyFileA(LaunchedProgram().c_str(), path.c_str(), FALSE)) << path << ", error " << GetLastError();
}
