// Hands files over to the running program, as a launcher does: a process of its own that shares memory
// with it. Prints what came back.
//
//   hand_over_sender [OPTION...] [NAME...]
//
//   @LIST           as a name: the names that the file LIST holds, one to a line
//   --size BYTES    of the shared memory; 260 when not given
//   --unterminated  fills the memory to its end behind each name
//   --no-mapping    shares no memory
//   --continue      goes on with the batch of a sender before this one
//   --no-end        leaves the batch unfinished
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <vector>
#include <windows.h>

namespace {

constexpr UINT RemoteFile = WM_USER + 10;
constexpr UINT RemoteEnd = WM_USER + 11;

struct Options {
    DWORD Size = MAX_PATH;
    bool Unterminated = false;
    bool Mapping = true;
    bool Continue = false;
    bool End = true;
    std::vector<std::string> Names;
};

void AddNamesOfList(const char* path, std::vector<std::string>& names)
{
    FILE* const list = fopen(path, "r");
    if (list == nullptr) {
        fprintf(stderr, "cannot read %s\n", path);
        exit(2);
    }
    char line[MAX_PATH + 2];
    while (fgets(line, sizeof line, list) != nullptr) {
        line[strcspn(line, "\n")] = '\0';
        names.emplace_back(line);
    }
    fclose(list);
}

Options ReadOptions(int count, char** arguments)
{
    Options options;
    for (int i = 1; i < count; ++i) {
        const std::string argument = arguments[i];
        if (argument == "--size" && i + 1 < count) {
            options.Size = static_cast<DWORD>(atoi(arguments[++i]));
        } else if (argument == "--unterminated") {
            options.Unterminated = true;
        } else if (argument == "--no-mapping") {
            options.Mapping = false;
        } else if (argument == "--continue") {
            options.Continue = true;
        } else if (argument == "--no-end") {
            options.End = false;
        } else if (argument[0] == '@') {
            AddNamesOfList(argument.c_str() + 1, options.Names);
        } else {
            options.Names.push_back(argument);
        }
    }
    return options;
}

class SharedMemory {
public:
    explicit SharedMemory(DWORD size)
        : Size(size),
          Mapping(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, size, "KV_shared_memory")),
          View(static_cast<char*>(MapViewOfFile(Mapping, FILE_MAP_WRITE, 0, 0, 0)))
    {
        if (View == nullptr) {
            fprintf(stderr, "no shared memory, error %lu\n", GetLastError());
            exit(2);
        }
    }
    ~SharedMemory()
    {
        UnmapViewOfFile(View);
        CloseHandle(Mapping);
    }
    SharedMemory(const SharedMemory&) = delete;
    SharedMemory& operator=(const SharedMemory&) = delete;

    void Write(const std::string& name, bool unterminated) const
    {
        memset(View, unterminated ? 'x' : '\0', Size);
        memcpy(View, name.data(), name.size() < Size ? name.size() : Size);
    }

private:
    DWORD Size;
    HANDLE Mapping;
    char* View;
};

// Sends the names until one is refused.
void SendNames(HWND window, const Options& options, const std::optional<SharedMemory>& memory)
{
    int sent = 0;
    LRESULT answer = 0;
    for (const std::string& name : options.Names) {
        if (memory) {
            memory->Write(name, options.Unterminated);
        }
        const bool isFirst = sent == 0 && !options.Continue;
        answer = SendMessageA(window, RemoteFile, isFirst ? 0 : 1, 0);
        ++sent;
        if (answer != 0) {
            break;
        }
    }
    printf("%d sent, answered %ld", sent, static_cast<long>(answer));
}

} // namespace

int main(int count, char** arguments)
{
    const Options options = ReadOptions(count, arguments);
    const HWND window = FindWindowA("Kestovar", nullptr);
    if (window == nullptr) {
        fprintf(stderr, "the program is not running\n");
        return 2;
    }
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    AllowSetForegroundWindow(process);
    std::optional<SharedMemory> memory; // until the end has been answered
    if (options.Mapping) {
        memory.emplace(options.Size);
    }
    SendNames(window, options, memory);
    if (options.End) {
        printf(", ended %ld", static_cast<long>(SendMessageA(window, RemoteEnd, 0, 0)));
    }
    return 0;
}
