#include "support/test_files.h"

#include <cstdio>
#include <cstring>
#include <windows.h>

namespace {

constexpr char Directory[] = "C:\\kvtest";

class OpenFileHandle {
public:
    OpenFileHandle(const std::string& path, DWORD access, DWORD disposition)
        : Handle(CreateFileA(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                             disposition, 0, nullptr))
    {
        EXPECT_NE(Handle, INVALID_HANDLE_VALUE) << path << ", error " << GetLastError();
    }
    ~OpenFileHandle() { CloseHandle(Handle); }
    OpenFileHandle(const OpenFileHandle&) = delete;
    OpenFileHandle& operator=(const OpenFileHandle&) = delete;

    void Write(const char* bytes, std::size_t count) const
    {
        DWORD written = 0;
        EXPECT_TRUE(WriteFile(Handle, bytes, static_cast<DWORD>(count), &written, nullptr));
        EXPECT_EQ(written, count);
    }

    HANDLE Handle;
};

void EmptyDirectory()
{
    WIN32_FIND_DATAA found;
    const HANDLE search = FindFirstFileA(ScratchPath("*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return;
    }
    do {
        const std::string path = ScratchPath(found.cFileName);
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            DeleteFileA(path.c_str());
        } else if (found.cFileName[0] != '.') {
            RemoveDirectoryA(path.c_str());
        }
    } while (FindNextFileA(search, &found));
    FindClose(search);
}

void SetSize(HANDLE file, std::int64_t size)
{
    LARGE_INTEGER position;
    position.QuadPart = size;
    EXPECT_TRUE(SetFilePointerEx(file, position, nullptr, FILE_BEGIN));
    EXPECT_TRUE(SetEndOfFile(file));
}

} // namespace

void ScratchDirectory::SetUp()
{
    CreateDirectoryA(Directory, nullptr);
    EmptyDirectory();
}

void ScratchDirectory::TearDown()
{
    EmptyDirectory();
    RemoveDirectoryA(Directory);
}

std::string ScratchPath(const std::string& name)
{
    return std::string(Directory) + "\\" + name;
}

std::string WriteScratch(const std::string& name, const std::string& content)
{
    const std::string path = ScratchPath(name);
    const OpenFileHandle file(path, GENERIC_WRITE, CREATE_ALWAYS);
    file.Write(content.data(), content.size());
    return path;
}

std::string WriteSparse(const std::string& name, std::int64_t size)
{
    const std::string path = ScratchPath(name);
    const OpenFileHandle file(path, GENERIC_WRITE, CREATE_ALWAYS);
    SetSize(file.Handle, size);
    return path;
}

void AppendToFile(const std::string& path, const std::string& content)
{
    const OpenFileHandle file(path, GENERIC_WRITE, OPEN_EXISTING);
    SetFilePointer(file.Handle, 0, nullptr, FILE_END);
    file.Write(content.data(), content.size());
}

void TruncateFile(const std::string& path, std::int32_t size)
{
    const OpenFileHandle file(path, GENERIC_WRITE, OPEN_EXISTING);
    SetSize(file.Handle, size);
}

void SetFileAge(const std::string& path, std::int32_t seconds)
{
    constexpr std::int64_t TicksPerSecond = 10000000;
    const OpenFileHandle file(path, GENERIC_WRITE, OPEN_EXISTING);
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    ULARGE_INTEGER time;
    time.LowPart = now.dwLowDateTime;
    time.HighPart = now.dwHighDateTime;
    time.QuadPart -= static_cast<std::uint64_t>(seconds * TicksPerSecond);
    const FILETIME then = {time.LowPart, time.HighPart};
    EXPECT_TRUE(SetFileTime(file.Handle, nullptr, nullptr, &then));
}

std::string ReadWholeFile(const std::string& path)
{
    const OpenFileHandle file(path, GENERIC_READ, OPEN_EXISTING);
    const DWORD size = GetFileSize(file.Handle, nullptr);
    if (size == INVALID_FILE_SIZE) {
        return "";
    }
    std::string content(size, '\0');
    DWORD read = 0;
    ReadFile(file.Handle, content.data(), size, &read, nullptr);
    content.resize(read);
    return content;
}

bool FileExists(const std::string& path)
{
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string NumberedLines(int count, const std::string& lineEnd)
{
    std::string text;
    for (int i = 1; i <= count; ++i) {
        text += "Line " + std::to_string(i) + lineEnd;
    }
    return text;
}

std::string Repeated(const std::string& pattern, std::size_t size)
{
    std::string text;
    text.reserve(size + pattern.size());
    while (text.size() < size) {
        text += pattern;
    }
    text.resize(size);
    return text;
}

std::string BigLog()
{
    constexpr int LinesAtOnce = 23000;
    static_assert(BigLogLines % LinesAtOnce == 0);
    const std::string path = ScratchPath("big.log");
    if (FileExists(path)) {
        return path;
    }
    const OpenFileHandle file(path, GENERIC_WRITE, CREATE_ALWAYS);
    std::string lines;
    std::string line(BigLogLineBytes, 'x');
    line[8] = ' ';
    line.replace(BigLogLineBytes - 2, 2, "\r\n");
    for (int number = 1; number <= BigLogLines; ++number) {
        char digits[16];
        snprintf(digits, sizeof digits, "%08d", number);
        line.replace(0, 8, digits);
        lines += line;
        if (number % LinesAtOnce == 0) {
            file.Write(lines.data(), lines.size());
            lines.clear();
        }
    }
    return path;
}
