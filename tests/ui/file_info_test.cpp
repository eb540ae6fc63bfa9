#include "support/dialogs.h"
#include "support/file_list.h"
#include "support/find_dialog.h"
#include "support/input.h"
#include "support/ui_test.h"
#include "support/windows_path.h"

#include <algorithm>
#include <cstring>
#include <set>

namespace {

constexpr char InfoTitle[] = "File Information";
constexpr char NotThere[] = "N/A";
constexpr char VersionTitle[] = "Program Version Information";
constexpr char ImportsTitle[] = "Imported DLL Libraries";

class FileInfoTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }

    TestDirectory Files{"info"};
};

using Names = std::vector<std::string>;

HWND ShowInfo(const Program& program)
{
    program.Post(WM_COMMAND, IDM_FILE_INFORMATION);
    return WaitForDialog(program, InfoTitle);
}

void CloseInfo(const Program& program, HWND dialog)
{
    PressControl(dialog, IDOK);
    EXPECT_TRUE(WaitUntilClosed(dialog));
    EXPECT_TRUE(program.Answers());
}

void Open(Program& program, const std::string& path)
{
    program.Inside().Drop(program.Frame(), path);
    std::string name = path.substr(path.find_last_of('\\') + 1);
    CharLowerA(name.data());
    ASSERT_TRUE(program.WaitForTitle(name)) << program.Title();
    ASSERT_TRUE(program.Answers());
}

// The texts of the general part, or what of them a test is about.
struct General {
    std::string Name;
    std::string Type;
    std::string Size;
    std::string Lines;

    bool operator==(const General&) const = default;
};

void PrintTo(const General& general, std::ostream* out)
{
    *out << general.Name << " | " << general.Type << " | " << general.Size << " | " << general.Lines;
}

General GeneralOf(HWND dialog)
{
    return {ControlText(dialog, IDC_INFO_NAME), ControlText(dialog, IDC_INFO_TYPE), ControlText(dialog, IDC_INFO_SIZE),
            ControlText(dialog, IDC_INFO_LINES)};
}

Names VersionOf(HWND dialog)
{
    return {ControlText(dialog, IDC_INFO_DESCRIPTION), ControlText(dialog, IDC_INFO_VERSION),
            ControlText(dialog, IDC_INFO_COMPANY)};
}

RECT ScreenPlace(HWND window)
{
    RECT place = {};
    GetWindowRect(window, &place);
    return place;
}

// The short form ends where the part about programs begins.
bool IsShort(HWND dialog)
{
    return ScreenPlace(dialog).bottom == ScreenPlace(GetDlgItem(dialog, IDC_INFO_SEPARATOR)).top;
}

bool IsShown(HWND dialog, int control)
{
    return IsWindowVisible(GetDlgItem(dialog, control)) != FALSE;
}

bool ShowsImports(HWND dialog)
{
    return IsShown(dialog, IDC_INFO_IMPORTS) && ControlText(dialog, IDC_INFO_GROUP) == ImportsTitle;
}

bool ShowsVersion(HWND dialog)
{
    return !IsShown(dialog, IDC_INFO_IMPORTS) && ControlText(dialog, IDC_INFO_GROUP) == VersionTitle;
}

std::string SystemFile(const std::string& name)
{
    char directory[MAX_PATH] = "";
    GetSystemDirectoryA(directory, sizeof directory);
    return directory + ("\\" + name);
}

std::string OwnProgramFile()
{
    char path[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, sizeof path);
    return path;
}

template <typename Header> Header HeaderAt(const std::string& file, std::size_t place)
{
    Header header = {};
    if (place + sizeof header <= file.size()) {
        memcpy(&header, file.data() + place, sizeof header);
    }
    return header;
}

// The modules that a 32-bit program imports, in the order of a sorted list, found by its import directory.
Names ImportsOf(const std::string& path)
{
    const std::string file = ReadWholeFile(path);
    const auto start = static_cast<std::size_t>(HeaderAt<IMAGE_DOS_HEADER>(file, 0).e_lfanew);
    const auto headers = HeaderAt<IMAGE_NT_HEADERS32>(file, start);
    const auto placeOf = [&](std::size_t address) -> std::size_t {
        std::size_t at = start + offsetof(IMAGE_NT_HEADERS32, OptionalHeader) + headers.FileHeader.SizeOfOptionalHeader;
        for (int i = 0; i < headers.FileHeader.NumberOfSections; ++i, at += sizeof(IMAGE_SECTION_HEADER)) {
            const auto section = HeaderAt<IMAGE_SECTION_HEADER>(file, at);
            if (address >= section.VirtualAddress && address - section.VirtualAddress < section.SizeOfRawData) {
                return address - section.VirtualAddress + section.PointerToRawData;
            }
        }
        return file.size();
    };
    std::size_t at = placeOf(headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress);
    Names names;
    for (;; at += sizeof(IMAGE_IMPORT_DESCRIPTOR)) {
        const auto import = HeaderAt<IMAGE_IMPORT_DESCRIPTOR>(file, at);
        if (import.Name == 0) {
            break;
        }
        names.emplace_back(file.c_str() + placeOf(import.Name));
    }
    std::sort(names.begin(), names.end(),
              [](const std::string& a, const std::string& b) { return lstrcmpiA(a.c_str(), b.c_str()) < 0; });
    return names;
}

// What the system reads from the version block of a file: description, version and company.
Names SystemVersionOf(const std::string& path)
{
    using GetSize = DWORD(WINAPI*)(LPCSTR, LPDWORD);
    using GetInfo = BOOL(WINAPI*)(LPCSTR, DWORD, DWORD, LPVOID);
    using Query = BOOL(WINAPI*)(LPCVOID, LPCSTR, LPVOID*, PUINT);
    const HMODULE library = LoadLibraryA("version.dll");
    const auto getSize =
        reinterpret_cast<GetSize>(reinterpret_cast<void*>(GetProcAddress(library, "GetFileVersionInfoSizeA")));
    const auto getInfo =
        reinterpret_cast<GetInfo>(reinterpret_cast<void*>(GetProcAddress(library, "GetFileVersionInfoA")));
    const auto query = reinterpret_cast<Query>(reinterpret_cast<void*>(GetProcAddress(library, "VerQueryValueA")));
    DWORD ignored = 0;
    std::string block(getSize(path.c_str(), &ignored), '\0');
    Names texts;
    void* value = nullptr;
    UINT size = 0;
    if (!block.empty() && getInfo(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()) &&
        query(block.data(), "\\VarFileInfo\\Translation", &value, &size) && size >= 4) {
        WORD translation[2] = {};
        memcpy(translation, value, sizeof translation);
        for (const char* const name : {"FileDescription", "FileVersion", "CompanyName"}) {
            char key[100] = "";
            snprintf(key, sizeof key, "\\StringFileInfo\\%04x%04x\\%s", translation[0], translation[1], name);
            texts.emplace_back(query(block.data(), key, &value, &size) ? static_cast<const char*>(value) : "");
        }
    }
    FreeLibrary(library);
    return texts;
}

// Sets the time of the last modification so that the clock on the wall showed this.
void SetLocalTime(const std::string& path, const SYSTEMTIME& local)
{
    SYSTEMTIME utc = {};
    FILETIME time = {};
    ASSERT_TRUE(TzSpecificLocalTimeToSystemTime(nullptr, &local, &utc));
    ASSERT_TRUE(SystemTimeToFileTime(&utc, &time));
    const HANDLE file = CreateFileA(path.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(SetFileTime(file, nullptr, nullptr, &time));
    CloseHandle(file);
}

SYSTEMTIME LocalTimeOf(const std::string& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    SYSTEMTIME utc = {};
    SYSTEMTIME local = {};
    EXPECT_TRUE(GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data));
    EXPECT_TRUE(FileTimeToSystemTime(&data.ftLastWriteTime, &utc));
    EXPECT_TRUE(SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local));
    return local;
}

std::string DateText(const SYSTEMTIME& time)
{
    static const char* const Days[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static const char* const Months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    char text[40] = "";
    snprintf(text, sizeof text, "%s %02d %s, %d", Days[time.wDayOfWeek], time.wDay, Months[time.wMonth - 1],
             time.wYear);
    return text;
}

std::string TimeText(const SYSTEMTIME& time)
{
    char text[40] = "";
    snprintf(text, sizeof text, "at %02d:%02d:%02d %s", time.wHour % 12 == 0 ? 12 : time.wHour % 12, time.wMinute,
             time.wSecond, time.wHour < 12 ? "AM" : "PM");
    return text;
}

// Opens the file, asks about it and closes the dialog again.
General Look(Program& program, const std::string& path)
{
    Open(program, path);
    const HWND dialog = ShowInfo(program);
    if (dialog == nullptr) {
        return {};
    }
    const General general = GeneralOf(dialog);
    ExpectTextsFit(dialog);
    CloseInfo(program, dialog);
    return general;
}

// An archive with one stored member.
std::string Archive()
{
    const auto number16 = [](unsigned number) {
        return std::string{static_cast<char>(number), static_cast<char>(number >> 8)};
    };
    const auto number32 = [&](unsigned number) { return number16(number & 0xFFFF) + number16(number >> 16); };
    const std::string name = "member.txt";
    const std::string content = "stored";
    const std::string common = number16(10) + number16(0) + number16(0) + number16(0) + number16(0x21) +
                               number32(0x35E8D4D7) + number32(6) + number32(6) + number16(10) + number16(0);
    const std::string local = "PK\3\4" + common + name + content;
    const std::string central = "PK\1\2" + number16(10) + common + number16(0) + number16(0) + number16(0) +
                                number32(0x20) + number32(0) + name;
    return local + central + "PK\5\6" + number32(0) + number16(1) + number16(1) +
           number32(static_cast<unsigned>(central.size())) + number32(static_cast<unsigned>(local.size())) +
           number16(0);
}

} // namespace

TEST_F(FileInfoTest, TheMenuKeysTellWhatIsKnownOfATextFile)
{
    const std::string text = NumberedLines(1234);
    ASSERT_EQ(text.size(), 12467u);
    Program program(Files.Write("Lines.KVX", text));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(WaitForKeyboard(program));
    ASSERT_TRUE(OpenMenu(program, 'F'));
    PressKeys({'I'});
    const HWND dialog = WaitForDialog(program, InfoTitle);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), program.Frame());
    EXPECT_FALSE(IsWindowEnabled(program.Frame()));
    EXPECT_EQ(GeneralOf(dialog), (General{"c:\\kvtest\\info\\lines.kvx", "Text", "12,467 Bytes (12K)", "1,234"}));
    EXPECT_TRUE(WaitUntil([&] { return FocusOf(dialog) == GetDlgItem(dialog, IDOK); }));
    Accept(program, dialog);
    EXPECT_TRUE(WaitForKeyboard(program));
}

TEST_F(FileInfoTest, EnterTheEscapeKeyTheMouseAndTheCloseBoxCloseIt)
{
    Program program(Files.Write("one.kvx", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    const std::string status = program.StatusText();
    for (int way = 0; way < 4; ++way) {
        SCOPED_TRACE(way);
        const HWND dialog = ShowInfo(program);
        ASSERT_NE(dialog, nullptr);
        ASSERT_TRUE(BringToForeground(dialog));
        switch (way) {
        case 0: PressKeys({VK_RETURN}); break;
        case 1: PressKeys({VK_ESCAPE}); break;
        case 2: ClickControl(dialog, IDOK); break;
        default: PostMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); break;
        }
        ASSERT_TRUE(WaitUntilClosed(dialog));
        ASSERT_TRUE(WaitForKeyboard(program));
    }
    EXPECT_EQ(program.Title(), "Kestovar-one.kvx");
    EXPECT_EQ(program.StatusText(), status);
    EXPECT_EQ(program.TopText(), "Line 1");
}

TEST_F(FileInfoTest, AnEmptyFileHasOneLine)
{
    Program program(Files.Write("empty.kvx", ""));
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowInfo(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(GeneralOf(dialog), (General{"c:\\kvtest\\info\\empty.kvx", "Text", "0 Bytes (0K)", "1"}));
    EXPECT_TRUE(IsShort(dialog));
    CloseInfo(program, dialog);
}

TEST_F(FileInfoTest, HalfAKilobyteLessOneByteCountsAsOne)
{
    struct Size {
        std::size_t Bytes;
        const char* Text;
    };
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    for (const Size& size :
         {Size{1, "1 Bytes (0K)"}, Size{510, "510 Bytes (0K)"}, Size{511, "511 Bytes (1K)"},
          Size{999, "999 Bytes (1K)"}, Size{1000, "1,000 Bytes (1K)"}, Size{1534, "1,534 Bytes (1K)"},
          Size{1535, "1,535 Bytes (2K)"}, Size{1234567, "1,234,567 Bytes (1,206K)"}}) {
        const std::string name = std::to_string(size.Bytes) + ".kvx";
        EXPECT_EQ(Look(program, Files.Write(name, Repeated("0123456\r\n", size.Bytes))).Size, size.Text);
    }
}

TEST_F(FileInfoTest, TheLargestFileIsToldToTheByte)
{
    const std::string path = WriteSparse("largest.kvx", 0x7FFFFFFF);
    {
        Program program(path);
        ASSERT_TRUE(program.WaitForFrame());
        ASSERT_TRUE(program.WaitForTitle("largest.kvx")) << program.Title();
        const HWND dialog = ShowInfo(program);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(ControlText(dialog, IDC_INFO_SIZE), "2147,483,647 Bytes (2,097,152K)"); // never a third comma
        EXPECT_GT(ExpectTextsFit(dialog), 10);
        CloseInfo(program, dialog);
    }
    EXPECT_TRUE(DeleteFileA(path.c_str()));
}

TEST_F(FileInfoTest, AFileThatIsNoTextHasNoLines)
{
    Program program(Files.Write("data.kvx", std::string(100000, '\x02')));
    ASSERT_TRUE(program.WaitForFrame());
    HWND dialog = ShowInfo(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(GeneralOf(dialog), (General{"c:\\kvtest\\info\\data.kvx", "Non-Text", "100,000 Bytes (98K)", NotThere}));
    EXPECT_TRUE(IsShort(dialog));
    CloseInfo(program, dialog);
    // Shown as text it is none either.
    program.Command(IDM_VIEW_TEXT);
    ASSERT_TRUE(program.Menu(IDM_VIEW_TEXT).Checked);
    dialog = ShowInfo(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, IDC_INFO_TYPE), "Non-Text");
    EXPECT_EQ(ControlText(dialog, IDC_INFO_LINES), NotThere);
    CloseInfo(program, dialog);
}

TEST_F(FileInfoTest, ATextShownInHexHasItsLines)
{
    Program program(Files.Write("one.kvx", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_VIEW_HEX);
    const HWND dialog = ShowInfo(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, IDC_INFO_TYPE), "Text");
    EXPECT_EQ(ControlText(dialog, IDC_INFO_LINES), "500");
    CloseInfo(program, dialog);
    EXPECT_TRUE(program.Menu(IDM_VIEW_HEX).Checked);
}

TEST_F(FileInfoTest, AnAssociatedExtensionNamesTheType)
{
    constexpr char Extension[] = ".kvinfo";
    constexpr char Class[] = "kvinfo.class";
    constexpr char Description[] = "Notes & queries of the year, in columns";
    ASSERT_EQ(RegSetValueA(HKEY_CLASSES_ROOT, Extension, REG_SZ, Class, 0), ERROR_SUCCESS);
    EXPECT_EQ(RegSetValueA(HKEY_CLASSES_ROOT, Class, REG_SZ, Description, 0), ERROR_SUCCESS);
    {
        Program program;
        EXPECT_TRUE(program.WaitForFrame());
        EXPECT_EQ(Look(program, Files.Write("text.kvinfo", "text")).Type, Description);
        EXPECT_EQ(Look(program, Files.Write("other.KVINFO", "\x02\x03")).Type, Description);
        EXPECT_EQ(Look(program, Files.Write("none.kvx", "text")).Type, "Text"); // not that of the file before
        // What is told from the file itself comes first.
        EXPECT_EQ(Look(program, Files.Write("archive.kvinfo", Archive())).Type, "Zip File");
    }
    RegDeleteKeyA(HKEY_CLASSES_ROOT, Extension);
    RegDeleteKeyA(HKEY_CLASSES_ROOT, Class);
}

TEST_F(FileInfoTest, AnArchiveIsNamedInTheShortForm)
{
    Program program(Files.Write("one.zip", Archive()));
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowInfo(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(GeneralOf(dialog), (General{"c:\\kvtest\\info\\one.zip", "Zip File", "124 Bytes (0K)", NotThere}));
    EXPECT_TRUE(IsShort(dialog));
    EXPECT_FALSE(IsEnabled(dialog, IDC_INFO_MORE));
    CloseInfo(program, dialog);
}

TEST_F(FileInfoTest, ProgramsTellTheirVersionAndTheirImports)
{
    struct File {
        std::string Path;
        const char* Type;
        std::size_t LeastImports;
    };
    const std::vector<File> files = {{ProgramPath(), "Windows 32 bit Executable", 5},

                                     {SystemFile("comdlg32.dll"), "Windows 32 bit DLL", 8},
                                     {SystemFile("mshtml.dll"), "Windows 32 bit DLL", 8}};
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    for (const File& file : files) {
        SCOPED_TRACE(file.Path);
        Open(program, file.Path);
        const Names imports = ImportsOf(file.Path);
        const Names version = SystemVersionOf(file.Path);
        ASSERT_GE(imports.size(), file.LeastImports);
        ASSERT_EQ(version.size(), 3u);
        ASSERT_FALSE(version[0].empty());
        const HWND dialog = ShowInfo(program);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(ControlText(dialog, IDC_INFO_TYPE), file.Type);
        EXPECT_EQ(ControlText(dialog, IDC_INFO_LINES), NotThere);
        EXPECT_FALSE(IsShort(dialog));
        Names expected;
        for (const std::string& text : version) {
            expected.push_back(text.empty() ? NotThere : text);
        }
        EXPECT_EQ(VersionOf(dialog), expected);
        EXPECT_TRUE(ShowsVersion(dialog));
        EXPECT_TRUE(IsEnabled(dialog, IDC_INFO_MORE));
        EXPECT_EQ(ListTexts(dialog, IDC_INFO_IMPORTS), imports);
        ExpectTextsFit(dialog);
        CloseInfo(program, dialog);
    }
}

TEST_F(FileInfoTest, TheProgramItselfIsKnownByItsVersion)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    Open(program, ProgramPath());
    const HWND dialog = ShowInfo(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(VersionOf(dialog), (Names{"Kestovar file browser", "3.8", "The Kestovar developers"}));
    CloseInfo(program, dialog);
}

TEST_F(FileInfoTest, AProgramWithoutVersionHasItsImports)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    for (const std::string& path : {OwnProgramFile(), SystemFile("notepad.exe")}) {
        SCOPED_TRACE(path);
        ASSERT_TRUE(SystemVersionOf(path).empty());
        Open(program, path);
        const HWND dialog = ShowInfo(program);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(VersionOf(dialog), (Names{NotThere, NotThere, NotThere}));
        EXPECT_EQ(ListTexts(dialog, IDC_INFO_IMPORTS), ImportsOf(path));
        EXPECT_TRUE(IsEnabled(dialog, IDC_INFO_MORE));
        EXPECT_FALSE(IsShort(dialog));
        CloseInfo(program, dialog);
    }
}

TEST_F(FileInfoTest, TheShortFormEndsWhereTheVersionWouldBegin)
{
    Program program(Files.Write("one.kvx", "one"));
    ASSERT_TRUE(program.WaitForFrame());
    HWND dialog = ShowInfo(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(IsShort(dialog)) << ScreenPlace(dialog).bottom;
    const RECT shortForm = ScreenPlace(dialog);
    EXPECT_FALSE(IsShown(dialog, IDC_INFO_IMPORTS));
    for (const int control : {IDC_INFO_GROUP, IDC_INFO_DESCRIPTION, IDC_INFO_VERSION, IDC_INFO_COMPANY}) {
        EXPECT_GE(ScreenPlace(GetDlgItem(dialog, control)).top, shortForm.bottom) << control;
    }
    for (const int control : {IDC_INFO_NAME, IDC_INFO_ATTRIBUTES, IDC_INFO_MORE, IDOK}) {
        EXPECT_LE(ScreenPlace(GetDlgItem(dialog, control)).bottom, shortForm.bottom) << control;
    }
    CloseInfo(program, dialog);
    // The long one is as wide and lies in the same place.
    Open(program, ProgramPath());
    dialog = ShowInfo(program);
    ASSERT_NE(dialog, nullptr);
    const RECT longForm = ScreenPlace(dialog);
    EXPECT_FALSE(IsShort(dialog));
    EXPECT_EQ(longForm.left, shortForm.left);
    EXPECT_EQ(longForm.top, shortForm.top);
    EXPECT_EQ(longForm.right, shortForm.right);
    for (const int control : {IDC_INFO_GROUP, IDC_INFO_DESCRIPTION, IDC_INFO_COMPANY, IDC_INFO_IMPORTS}) {
        EXPECT_LE(ScreenPlace(GetDlgItem(dialog, control)).bottom, longForm.bottom) << control;
    }
    CloseInfo(program, dialog);
    Open(program, Files.Write("two.kvx", "two"));
    dialog = ShowInfo(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(IsShort(dialog));
    CloseInfo(program, dialog);
}

TEST_F(FileInfoTest, MoreTogglesTheImportsByMouseAndByKeys)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    Open(program, ProgramPath());
    HWND dialog = ShowInfo(program);
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(BringToForeground(dialog));
    const RECT place = ScreenPlace(dialog);
    EXPECT_TRUE(ShowsVersion(dialog));
    ClickControl(dialog, IDC_INFO_MORE);
    EXPECT_TRUE(WaitUntil([&] { return ShowsImports(dialog); }));
    ClickControl(dialog, IDC_INFO_MORE);
    EXPECT_TRUE(WaitUntil([&] { return ShowsVersion(dialog); }));
    PressKeys({VK_MENU, 'M'});
    EXPECT_TRUE(WaitUntil([&] { return ShowsImports(dialog); }));
    PressKeys({VK_MENU, 'M'});
    EXPECT_TRUE(WaitUntil([&] { return ShowsVersion(dialog); }));
    PressKeys({VK_MENU, 'M'});
    EXPECT_TRUE(WaitUntil([&] { return ShowsImports(dialog); }));
    EXPECT_EQ(ListTexts(dialog, IDC_INFO_IMPORTS), ImportsOf(ProgramPath()));
    const RECT now = ScreenPlace(dialog);
    EXPECT_TRUE(EqualRect(&place, &now));
    // Another time it begins with the version again.
    CloseInfo(program, dialog);
    dialog = ShowInfo(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(ShowsVersion(dialog));
    CloseInfo(program, dialog);
}

TEST_F(FileInfoTest, TheListLiesOverTheVersionAndTheKeysScrollIt)
{
    const std::string path = SystemFile("comdlg32.dll");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    Open(program, path);
    const HWND dialog = ShowInfo(program);
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(BringToForeground(dialog));
    const HWND list = GetDlgItem(dialog, IDC_INFO_IMPORTS);
    const RECT place = ScreenPlace(list);
    for (const int control : {IDC_INFO_DESCRIPTION, IDC_INFO_VERSION, IDC_INFO_COMPANY}) {
        const RECT covered = ScreenPlace(GetDlgItem(dialog, control));
        RECT common = {};
        IntersectRect(&common, &place, &covered);
        EXPECT_TRUE(EqualRect(&common, &covered)) << control;
    }
    // While it is hidden the Tab key leaves it out.
    PressKeys({VK_TAB});
    EXPECT_TRUE(WaitUntil([&] { return FocusOf(dialog) == GetDlgItem(dialog, IDC_INFO_MORE); }));
    PressKeys({VK_TAB});
    EXPECT_TRUE(WaitUntil([&] { return FocusOf(dialog) == GetDlgItem(dialog, IDOK); }));
    PressKeys({VK_MENU, 'M'});
    ASSERT_TRUE(WaitUntil([&] { return ShowsImports(dialog); }));
    EXPECT_TRUE(WaitUntil([&] { return FocusOf(dialog) == GetDlgItem(dialog, IDC_INFO_MORE); }));
    PressKeys({VK_TAB});
    ASSERT_TRUE(WaitUntil([&] { return FocusOf(dialog) == list; }));
    PressKeys({VK_DOWN}); // the first key chooses the first
    EXPECT_TRUE(WaitUntil([&] { return ListSelection(dialog, IDC_INFO_IMPORTS) == 0; }));
    PressKeys({VK_END});
    const int last = static_cast<int>(ImportsOf(path).size()) - 1;
    EXPECT_TRUE(WaitUntil([&] { return ListSelection(dialog, IDC_INFO_IMPORTS) == last; }));
    EXPECT_GT(ListTop(dialog, IDC_INFO_IMPORTS), 0);
    PressKeys({VK_RETURN});
    EXPECT_TRUE(WaitUntilClosed(dialog));
}

TEST_F(FileInfoTest, NothingOfTheVersionShowsThroughTheList)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    Open(program, ProgramPath());
    const HWND dialog = ShowInfo(program);
    ASSERT_NE(dialog, nullptr);
    const HWND list = GetDlgItem(dialog, IDC_INFO_IMPORTS);
    PressControl(dialog, IDC_INFO_MORE);
    ASSERT_TRUE(WaitUntil([&] { return ShowsImports(dialog); }));
    // Beside the short names of the modules the list is empty: there the version stands.
    const int left = ScreenPlace(GetDlgItem(dialog, IDC_INFO_VERSION)).left - ScreenPlace(list).left + 20;
    const SIZE size = ClientSize(list);
    const std::uint32_t background = GetSysColor(COLOR_WINDOW);
    ASSERT_EQ(background, White);
    const auto isEmpty = [&] {
        const Pixels pixels = program.Inside().Read(list, left, 0, size.cx - left, size.cy);
        return pixels.Width > 0 && pixels.CountOf(background) == pixels.Width * pixels.Height;
    };
    EXPECT_TRUE(WaitUntil(isEmpty));
    // Painted anew as a whole it is the same.
    ShowWindow(dialog, SW_HIDE);
    ASSERT_TRUE(WaitUntil([&] { return !IsWindowVisible(dialog); }));
    ShowWindow(dialog, SW_SHOW);
    EXPECT_TRUE(WaitUntil(isEmpty));
    RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    EXPECT_TRUE(WaitUntil([&] { return !GetUpdateRect(list, nullptr, FALSE) && program.Answers() && isEmpty(); }));
    CloseInfo(program, dialog);
}

TEST_F(FileInfoTest, ThereIsNoMoreOfAFileWithoutImports)
{
    Program program(Files.Write("one.kvx", "one"));
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowInfo(program);
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(BringToForeground(dialog));
    EXPECT_FALSE(IsEnabled(dialog, IDC_INFO_MORE));
    PressKeys({VK_TAB}); // nowhere else to go
    PressKeys({VK_MENU, 'M'});
    ClickControl(dialog, IDC_INFO_MORE);
    EXPECT_TRUE(WaitUntil([&] { return FocusOf(dialog) == GetDlgItem(dialog, IDOK); }));
    PressKeys({VK_RETURN}); // comes behind all of these
    EXPECT_TRUE(WaitUntilClosed(dialog));
}

TEST_F(FileInfoTest, APathOf32CharactersIsShownWholeALongerOneIsShortened)
{
    const std::string fits = Files.Write(std::string(13, 'n') + ".kvx", "one");
    const std::string longer = Files.Write(std::string(14, 'n') + ".kvx", "one");
    ASSERT_EQ(fits.size(), 32u);
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(Look(program, fits).Name, "c:\\kvtest\\info\\" + std::string(13, 'n') + ".kvx");
    EXPECT_EQ(Look(program, longer).Name, "c:\\...\\info\\" + std::string(14, 'n') + ".kvx");
}

TEST_F(FileInfoTest, UnusualNamesAreShownAsTheyAre)
{
    struct File {
        std::string Name;
        const char* Shown;
    };
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    for (const File& file : {File{"with blanks .kvx", "with blanks .kvx"}, File{"NOEXTENSION", "noextension"},
                             File{"a.b.c.d.kvx", "a.b.c.d.kvx"}, File{"&one&&two.kvx", "&one&&two.kvx"},
                             File{"\xC4\xD6\xDC\xDF\xE9.kvx", "\xE4\xF6\xFC\xDF\xE9.kvx"}}) {
        const General general = Look(program, Files.Write(file.Name, "one"));
        EXPECT_EQ(general.Name, "c:\\kvtest\\info\\" + std::string(file.Shown));
        EXPECT_EQ(general.Type, "Text");
    }
}

TEST_F(FileInfoTest, ThePathMayHave259Characters)
{
    // Of a name that long only the end is left.
    const std::string name = std::string(259 - Files.PathOf("").size() - 33, 'l') + "abcdefghijklmnopqrstuvwxy-end.kvx";
    const std::string path = Files.Write(name, NumberedLines(10));
    ASSERT_EQ(path.size(), 259u);
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(Look(program, path), (General{"c:\\...efghijklmnopqrstuvwxy-end.kvx", "Text", "81 Bytes (0K)", "10"}));
}

TEST_F(FileInfoTest, TheTimeOfTheLastModificationIsLocal)
{
    struct Time {
        SYSTEMTIME Local;
        const char* Date;
        const char* Clock;
    };
    const std::vector<Time> times = {
        {{2001, 1, 1, 1, 0, 0, 0, 0}, "Mon 01 Jan, 2001", "at 12:00:00 AM"},
        {{2024, 2, 4, 29, 12, 34, 56, 0}, "Thu 29 Feb, 2024", "at 12:34:56 PM"},
        {{1999, 12, 5, 31, 23, 59, 59, 0}, "Fri 31 Dec, 1999", "at 11:59:59 PM"},
        {{2026, 7, 3, 15, 9, 8, 7, 0}, "Wed 15 Jul, 2026", "at 09:08:07 AM"},
        {{1980, 9, 0, 7, 13, 0, 1, 0}, "Sun 07 Sep, 1980", "at 01:00:01 PM"},
    };
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    for (const Time& time : times) {
        SCOPED_TRACE(time.Date);
        const std::string path = Files.Write("one.kvx", "one");
        SetLocalTime(path, time.Local);
        Open(program, path);
        const HWND dialog = ShowInfo(program);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(ControlText(dialog, IDC_INFO_DATE), time.Date);
        EXPECT_EQ(ControlText(dialog, IDC_INFO_TIME), time.Clock);
        ExpectTextsFit(dialog);
        CloseInfo(program, dialog);
        Open(program, Files.Write("other.kvx", "other"));
    }
    for (const std::int32_t age : {0, 3601, 86400 * 100, 86400 * 190 + 40000}) {
        SCOPED_TRACE(age);
        const std::string path = Files.Write("aged.kvx", "aged");
        SetFileAge(path, age);
        Open(program, path);
        const SYSTEMTIME local = LocalTimeOf(path);
        const HWND dialog = ShowInfo(program);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(ControlText(dialog, IDC_INFO_DATE), DateText(local));
        EXPECT_EQ(ControlText(dialog, IDC_INFO_TIME), TimeText(local));
        CloseInfo(program, dialog);
        Open(program, Files.Write("other.kvx", "other"));
    }
}

TEST_F(FileInfoTest, TheAttributesAreNamedInTheirOrder)
{
    struct Attributes {
        DWORD Bits;
        const char* Text;
    };
    // Wherever the system keeps no archive bit for itself it is always set.
    const std::vector<Attributes> all = {
        {FILE_ATTRIBUTE_ARCHIVE, "Archive "},
        {FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_READONLY, "Read-only Archive "},
        {FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_SYSTEM, "Archive System "},
        {FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN, "Archive Hidden "},
        {FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_HIDDEN, "Archive System Hidden "},
        {FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY,
         "Read-only Archive System Hidden "},
    };
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    for (std::size_t i = 0; i < all.size(); ++i) {
        SCOPED_TRACE(all[i].Text);
        const std::string path = Files.Write(std::to_string(i) + ".kvx", "one");
        ASSERT_TRUE(SetFileAttributesA(path.c_str(), all[i].Bits));
        ASSERT_EQ(GetFileAttributesA(path.c_str()), all[i].Bits);
        Open(program, path);
        const HWND dialog = ShowInfo(program);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(ControlText(dialog, IDC_INFO_ATTRIBUTES), all[i].Text);
        ExpectTextsFit(dialog);
        CloseInfo(program, dialog);
    }
}

TEST_F(FileInfoTest, NoTextIsCutOffAndNoTwoControlsHaveTheSameMnemonic)
{
    const std::string widest = std::string(4, 'w') + " " + std::string(12, 'm'); // 32 characters with its directory
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    Open(program, Files.Write(widest, NumberedLines(100000)));
    HWND dialog = ShowInfo(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, IDC_INFO_LINES), "100,000");
    EXPECT_GT(ExpectTextsFit(dialog), 12);
    CloseInfo(program, dialog);
    Open(program, ProgramPath());
    dialog = ShowInfo(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_GT(ExpectTextsFit(dialog), 18);
    PressControl(dialog, IDC_INFO_MORE);
    ASSERT_TRUE(WaitUntil([&] { return ShowsImports(dialog); }));
    EXPECT_GT(ExpectTextsFit(dialog), 18);
    std::set<int> mnemonics;
    for (const DialogControl& control : ControlsOf(dialog)) {
        const bool prefix = control.Class != "Static" || (GetWindowLongA(control.Window, GWL_STYLE) & SS_NOPREFIX) == 0;
        const std::size_t mark = prefix ? control.Text.find('&') : std::string::npos;
        if (mark != std::string::npos) {
            EXPECT_TRUE(mnemonics.insert(toupper(control.Text[mark + 1])).second) << control.Text;
        }
    }
    EXPECT_EQ(mnemonics, std::set<int>{'M'});
    CloseInfo(program, dialog);
}

TEST_F(FileInfoTest, NothingLiesOverAnythingElseButTheList)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    Open(program, ProgramPath());
    const HWND dialog = ShowInfo(program);
    ASSERT_NE(dialog, nullptr);
    std::vector<DialogControl> controls = ControlsOf(dialog);
    std::erase_if(controls, [](const DialogControl& control) {
        const int id = GetDlgCtrlID(control.Window);
        return id == IDC_INFO_GROUP || id == IDC_INFO_IMPORTS;
    });
    EXPECT_GT(controls.size(), 20u);
    for (std::size_t i = 0; i < controls.size(); ++i) {
        const RECT place = ScreenPlace(controls[i].Window);
        for (std::size_t j = 0; j < i; ++j) {
            const RECT other = ScreenPlace(controls[j].Window);
            RECT common = {};
            EXPECT_FALSE(IntersectRect(&common, &place, &other)) << controls[j].Text << " and " << controls[i].Text;
        }
    }
    CloseInfo(program, dialog);
}

TEST_F(FileInfoTest, TheLabelsSayWhatStandsBesideThem)
{
    Program program(Files.Write("one.kvx", "one"));
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowInfo(program);
    ASSERT_NE(dialog, nullptr);
    struct Label {
        int Control;
        const char* Text;
    };
    for (const Label& label :
         {Label{IDC_INFO_NAME, "File Name :"}, Label{IDC_INFO_TYPE, "Type :"}, Label{IDC_INFO_SIZE, "Size :"},
          Label{IDC_INFO_LINES, "No. of Lines :"}, Label{IDC_INFO_DATE, "Last Modified :"},
          Label{IDC_INFO_ATTRIBUTES, "Attributes:"}, Label{IDC_INFO_DESCRIPTION, "Description :"},
          Label{IDC_INFO_VERSION, "Version :"}, Label{IDC_INFO_COMPANY, "Company :"}}) {
        const RECT place = ScreenPlace(GetDlgItem(dialog, label.Control));
        std::string beside;
        for (const DialogControl& control : ControlsOf(dialog)) {
            const RECT other = ScreenPlace(control.Window);
            if (control.Class == "Static" && other.top == place.top && other.right <= place.left) {
                beside += control.Text;
            }
        }
        EXPECT_EQ(beside, label.Text);
    }
    EXPECT_EQ(ControlText(dialog, IDOK), "OK");
    EXPECT_EQ(ControlText(dialog, IDC_INFO_MORE), "&More...");
    CloseInfo(program, dialog);
}

TEST_F(FileInfoTest, WithoutAFileThereIsNothingToTell)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_FILE_INFORMATION);
    EXPECT_EQ(FindDialog(program, InfoTitle), nullptr);
    EXPECT_TRUE(program.Menu(IDM_FILE_INFORMATION).Greyed);
}

TEST_F(FileInfoTest, AFileHandedOverMeanwhileIsToldAboutTheNextTime)
{
    Program program(Files.Write("one.kvx", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    HWND dialog = ShowInfo(program);
    ASSERT_NE(dialog, nullptr);
    program.Inside().Drop(program.Frame(), Files.Write("two.kvx", NumberedLines(20)));
    ASSERT_TRUE(program.WaitForTitle("two.kvx"));
    EXPECT_EQ(ControlText(dialog, IDC_INFO_LINES), "500");
    CloseInfo(program, dialog);
    dialog = ShowInfo(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(GeneralOf(dialog).Lines, "20");
    EXPECT_EQ(GeneralOf(dialog).Name, "c:\\kvtest\\info\\two.kvx");
    CloseInfo(program, dialog);
}
