#include "support/file_list.h"

#include "resources/ids.h"
#include "support/dialogs.h"
#include "support/input.h"
#include "support/test_files.h"
#include "support/wait.h"

#include <algorithm>
#include <gtest/gtest.h>

const char OpenTitle[] = "Open File"; // as the system has it

const char SelectTitle[] = "Select a file";

TestDirectory::TestDirectory(const std::string& name) : Directory(ScratchPath(name))
{
    CharLowerA(Directory.data());
    CreateDirectoryA(Directory.c_str(), nullptr);
    Empty(); // of what a run that was broken off left behind
    EXPECT_TRUE(FileExists(Directory)) << Directory;
}

TestDirectory::~TestDirectory()
{
    Empty();
    EXPECT_TRUE(RemoveDirectoryA(Directory.c_str())) << Directory << ", error " << GetLastError();
}

void TestDirectory::Empty() const
{
    const std::wstring directory = std::wstring(Directory.begin(), Directory.end()) + L"\\";
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW((directory + L"*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return;
    }
    do {
        const std::wstring path = directory + found.cFileName;
        SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        if (!DeleteFileW(path.c_str()) && found.cFileName[0] != L'.') {
            RemoveDirectoryW(path.c_str());
        }
    } while (FindNextFileW(search, &found));
    FindClose(search);
}

std::string TestDirectory::Write(const std::string& name, const std::string& content) const
{
    return WriteScratch(Directory.substr(ScratchPath("").size()) + "\\" + name, content);
}

void TestDirectory::WriteAll(const std::vector<std::string>& names) const
{
    for (const std::string& name : names) {
        Write(name, name);
    }
}

void TestDirectory::WriteNameOutsideTheCodePage() const
{
    const std::wstring path = std::wstring(Directory.begin(), Directory.end()) + L"\\\x0416\x0417.txt";
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    EXPECT_NE(file, INVALID_HANDLE_VALUE) << "error " << GetLastError();
    DWORD written = 0;
    WriteFile(file, "outside", 7, &written, nullptr);
    CloseHandle(file);
}

std::vector<std::string> TestDirectory::Find(const std::string& pattern) const
{
    std::vector<std::string> names;
    WIN32_FIND_DATAA found;
    const HANDLE search = FindFirstFileA(PathOf(pattern).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return names;
    }
    do {
        if (found.cFileName != std::string(".") && found.cFileName != std::string("..")) {
            names.push_back(found.cFileName);
        }
    } while (FindNextFileA(search, &found));
    FindClose(search);
    return names;
}

HWND ShowOpenDialog(const Program& program)
{
    program.Post(WM_COMMAND, IDM_FILE_OPEN);
    return WaitForDialog(program, OpenTitle);
}

void ShowDirectory(HWND dialog, const TestDirectory& directory, const std::vector<std::string>& names)
{
    SetControlText(dialog, OpenName, directory.Path() + "\\");
    PressControl(dialog, IDOK);
    EXPECT_TRUE(WaitUntil([&] { return ListTexts(dialog, OpenFiles) == names; }))
        << testing::PrintToString(ListTexts(dialog, OpenFiles));
}

void OpenThroughDialog(Program& program, const std::string& path)
{
    const HWND dialog = ShowOpenDialog(program);
    ASSERT_NE(dialog, nullptr);
    SetControlText(dialog, OpenName, path);
    PressControl(dialog, IDOK);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    std::string name = path.substr(path.find_last_of('\\') + 1);
    CharLowerA(name.data());
    EXPECT_TRUE(program.WaitForTitle(name));
}

HWND ShowSelectList(const Program& program)
{
    EXPECT_TRUE(BringToForeground(program.Frame()));
    EXPECT_TRUE(MovePointer(program.View(), 100, 100));
    ClickRight();
    return WaitForDialog(program, SelectTitle);
}

std::string ListPart(Program& program)
{
    const std::string text = program.StatusText();
    const std::size_t begin = text.find("  [");
    return begin == std::string::npos ? "" : text.substr(begin + 2);
}

bool WaitForFile(Program& program, const std::string& name, const std::string& listPart)
{
    if (!program.WaitForTitle(name)) {
        ADD_FAILURE() << "the title is " << program.Title() << " instead of that of " << name;
        return false;
    }
    const bool said = WaitUntil([&] { return ListPart(program) == listPart; });
    EXPECT_TRUE(said) << program.StatusText() << " instead of " << listPart;
    return said;
}

bool OpenMenu(const Program& program, char letter)
{
    PressKeys({VK_MENU, static_cast<WORD>(letter)});
    return WaitUntil([&] { return IsInMenu(program); });
}

bool IsInMenu(const Program& program)
{
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(program.Frame(), nullptr), &info);
    return (info.flags & GUI_INMENUMODE) != 0;
}

bool CanGoBack(Program& program)
{
    return !program.Menu(IDM_FILE_PREVIOUS).Greyed;
}

bool CanGoOn(Program& program)
{
    return !program.Menu(IDM_FILE_NEXT).Greyed;
}
