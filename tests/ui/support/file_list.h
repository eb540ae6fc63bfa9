// What the tests of file lists have in common: directories with nothing but their files, the Open
// dialog, and what the program says about its list.
#pragma once

#include "support/program.h"

#include <string>
#include <vector>

// A directory with nothing but what the test writes into it; removed at the end of the test.
class TestDirectory {
public:
    explicit TestDirectory(const std::string& name);
    ~TestDirectory();
    TestDirectory(const TestDirectory&) = delete;
    TestDirectory& operator=(const TestDirectory&) = delete;

    // In lower case, as the program has its paths.
    const std::string& Path() const { return Directory; }
    std::string PathOf(const std::string& name) const { return Directory + "\\" + name; }
    // Returns the full path.
    std::string Write(const std::string& name, const std::string& content) const;
    // Files whose only text is their name.
    void WriteAll(const std::vector<std::string>& names) const;
    // A text file whose name has letters that the system's code page does not have; it says "outside".
    void WriteNameOutsideTheCodePage() const;
    // The names that match a pattern, in the order in which the system finds them.
    std::vector<std::string> Find(const std::string& pattern) const;

private:
    void Empty() const;

    std::string Directory;
};

// The Open dialog and its controls.
extern const char OpenTitle[];
constexpr int OpenName = 1152;
constexpr int OpenFiles = 1120;
constexpr int OpenTypes = 1136;

// Asks for the dialog as the menu does and waits for it; nullptr when it does not come.
HWND ShowOpenDialog(const Program& program);

// Has the dialog show the directory, and waits until it lists these names.
void ShowDirectory(HWND dialog, const TestDirectory& directory, const std::vector<std::string>& names);

// Opens a file through the dialog, by its full path, and waits until the title says so. The menus and the
// status line follow a moment later.
void OpenThroughDialog(Program& program, const std::string& path);

// The dialog that chooses from the list.
extern const char SelectTitle[];

// Asks for it as a person does, by a single click of the right button, and waits for it; nullptr when it does
// not come.
HWND ShowSelectList(const Program& program);

// What the status line says about the list, such as "[File 1 of 3]"; "" without a list.
std::string ListPart(Program& program);

// Waits until the file is shown and the status line says this about the list.
bool WaitForFile(Program& program, const std::string& name, const std::string& listPart);

// Opens a menu of the bar by its letter, with real keys, and waits until it is open. The program has to be in
// the foreground.
bool OpenMenu(const Program& program, char letter);
bool IsInMenu(const Program& program);

// Whether there is a previous and a next file, as the menu has it.
bool CanGoBack(Program& program);
bool CanGoOn(Program& program);
