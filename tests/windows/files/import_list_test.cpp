#include "files/import_list.h"

#include "app/app_state.h"
#include "app/open_sequence.h"
#include "harness/dialogs.h"
#include "harness/folder.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "view/frame_windows.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

constexpr int ListBox = 421;

// The imports of a file, as a list box shows them once the file is the current document.
class ImportList : public RunningProgram {
protected:
    ImportList()
        : Dialog(CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr, nullptr, nullptr))
    {
        CreateWindowExA(0, "LISTBOX", "", WS_CHILD, 0, 0, 100, 100, Dialog,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(ListBox)), nullptr, nullptr);
    }

    ~ImportList() override
    {
        DestroyWindow(Dialog);
        App.Info = FileInfo{.WantDetails = true};
        Details = FileDetails{};
    }

    Names ImportsOf(const std::string& path)
    {
        EXPECT_TRUE(OpenSequence(Windows.Main, path.c_str()));
        SendDlgItemMessageA(Dialog, ListBox, LB_RESETCONTENT, 0, 0);
        FillImportList(Dialog, ListBox, App.CurrentPath);
        return ListTexts(Dialog, ListBox);
    }

private:
    HWND Dialog;
};

// A Windows module as the system has it in memory: the names it imports.
Names ImportsInMemory(HMODULE module)
{
    const std::uint8_t* const base = reinterpret_cast<const std::uint8_t*>(module);
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    Names names;
    for (const auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + table.VirtualAddress);
         library->Name != 0; ++library) {
        names.push_back(reinterpret_cast<const char*>(base + library->Name));
    }
    return names;
}

void PutU16(std::string& bytes, std::size_t position, std::size_t value)
{
    bytes[position] = static_cast<char>(value);
    bytes[position + 1] = static_cast<char>(value >> 8);
}

// A 16-bit Windows program that imports these modules.
std::string NeProgram(const Names& modules)
{
    constexpr std::size_t Header = 64;
    constexpr std::size_t Tables = 128;
    std::string file(Tables + modules.size() * 2, '\0');
    file.replace(0, 2, "MZ");
    PutU16(file, 24, 64);
    PutU16(file, 60, Header);
    file.replace(Header, 2, "NE");
    PutU16(file, Header + 30, modules.size());
    PutU16(file, Header + 40, Tables - Header);
    PutU16(file, Header + 42, file.size() - Header);
    file[Header + 54] = 2; // for Windows
    std::string names(1, '\0');
    for (std::size_t i = 0; i < modules.size(); ++i) {
        PutU16(file, Tables + i * 2, names.size());
        names += static_cast<char>(modules[i].size()) + modules[i];
    }
    return file + names;
}

} // namespace

TEST_F(ImportList, A32BitProgramsModulesStandAsInTheFileAndInItsOrder)
{
    char path[MAX_PATH];
    GetModuleFileNameA(nullptr, path, sizeof path);
    const Names expected = ImportsInMemory(GetModuleHandleA(nullptr));
    ASSERT_LT(3u, expected.size());
    EXPECT_EQ(expected, ImportsOf(path));
    EXPECT_EQ(static_cast<std::int32_t>(expected.size()), Details.ImportCount);
}

TEST_F(ImportList, ALibraryOfTheSystemIsListedToo)
{
    char path[MAX_PATH];
    GetSystemDirectoryA(path, sizeof path);
    strcat(path, "\\comdlg32.dll");
    const Names expected = ImportsInMemory(GetModuleHandleA("comdlg32.dll"));
    ASSERT_LT(1u, expected.size());
    EXPECT_EQ(expected, ImportsOf(path));
    EXPECT_EQ(Windows32Dll, App.Info.FileType);
}

TEST_F(ImportList, A16BitProgramsModulesAreInLowerCaseWithTheirEnding)
{
    const ScratchFile file("program.kv1", NeProgram({"KERNEL", "User", "gdi"}));
    EXPECT_EQ((Names{"kernel.dll", "user.dll", "gdi.dll"}), ImportsOf(file.Path()));
    EXPECT_EQ(Windows16Program, App.Info.FileType);
}

TEST_F(ImportList, A16BitProgramsModuleIsShownOnce)
{
    const ScratchFile file("program.kv1", NeProgram({"KERNEL", "USER", "Kernel", "KERN", "USER"}));
    EXPECT_EQ((Names{"kernel.dll", "user.dll", "kern.dll"}), ImportsOf(file.Path()));
}

TEST_F(ImportList, A16BitProgramsModuleNameIsCutAt19Letters)
{
    const ScratchFile file("program.kv1", NeProgram({"ABCDEFGHIJKLMNOPQRSTUVWXYZ"}));
    EXPECT_EQ((Names{"abcdefghijklmnopqrs.dll"}), ImportsOf(file.Path()));
}

TEST_F(ImportList, A16BitProgramWithoutImportsHasAnEmptyList)
{
    const ScratchFile file("program.kv1", NeProgram({}));
    EXPECT_EQ(Names{}, ImportsOf(file.Path()));
}

TEST_F(ImportList, ATextHasAnEmptyList)
{
    const ScratchFile program("program.kv1", NeProgram({"KERNEL"}));
    EXPECT_EQ((Names{"kernel.dll"}), ImportsOf(program.Path()));
    const ScratchFile text("text.kv1", "text");
    EXPECT_EQ(Names{}, ImportsOf(text.Path()));
}

TEST_F(ImportList, ADamagedTableEndsTheListWithoutHarm)
{
    std::string content = NeProgram({"KERNEL", "USER"});
    PutU16(content, 128 + 2, 60000); // the second name lies behind the end of the file
    const ScratchFile file("program.kv1", content);
    EXPECT_EQ((Names{"kernel.dll"}), ImportsOf(file.Path()));
}
