// The resources of the program file itself.
#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <set>
#include <string>
#include <vector>
#include <windows.h>

namespace {

// The program file, open for its resources only.
class ProgramFile {
public:
    ProgramFile() : Module(LoadLibraryExA(KESTOVAR_EXE, nullptr, LOAD_LIBRARY_AS_DATAFILE)) {}
    ~ProgramFile() { FreeLibrary(Module); }
    ProgramFile(const ProgramFile&) = delete;
    ProgramFile& operator=(const ProgramFile&) = delete;
    operator HMODULE() const { return Module; }

private:
    HMODULE Module;
};

enum State { Plain = MF_ENABLED, Grey = MF_GRAYED, Checked = MF_CHECKED };

struct Item {
    UINT Id; // 0 = separator
    const char* Text;
    State Shown;
};

struct Popup {
    const char* Title;
    std::vector<Item> Items;
};

constexpr Item Separator = {0, "", Plain};

const std::vector<Popup>& ExpectedMenu()
{
    static const std::vector<Popup> menu = {
        {"&File",
         {{220, "&Open...\tCtrl+O", Plain},
          {221, "Save &As...", Grey},
          {222, "Close &File", Grey},
          {223, "&Launch", Grey},
          {224, "&Delete...", Grey},
          Separator,
          {225, "P&revious\tCtrl+PGUP", Grey},
          {226, "&Next\tCtrl+PGDN", Grey},
          Separator,
          {229, "&Print...\tCtrl+P", Grey},
          {230, "Printer &Setup...", Plain},
          {231, "Page Se&tup...", Plain},
          Separator,
          {232, "Show &Information...", Grey},
          Separator,
          {233, "E&xit", Plain},
          Separator}},
        {"&Edit", {{250, "&Copy\tCtrl+C", Grey}, {251, "&Select All", Grey}, Separator, {252, "&Edit File", Grey}}},
        {"&Search",
         {{260, "&Find...\tCtrl+F", Grey},
          {261, "Find &Next\tF3", Grey},
          {262, "Find &Previous\tF9", Grey},
          Separator,
          {263, "&Goto...", Grey}}},
        {"&View",
         {{270, "&Text Mode\tCtrl+T", Checked},
          {271, "&Hex Mode\tCtrl+H", Plain},
          Separator,
          {272, "View &Zip File contents...", Grey},
          {273, "&Redisplay Zip file", Grey},
          Separator,
          {274, "&Lock/Unlock text", Grey},
          Separator,
          {275, "&Increase font size\tNum+", Grey},
          {276, "&Decrease font size\tNum-", Grey}}},
        {"&Options",
         {{280, "Select &Font...", Plain},
          {281, "&Preferences...", Plain},
          {282, "Customize &Button Bar...", Plain},
          {283, "&Colours...", Plain},
          {284, "Set Line &Length...", Plain},
          Separator,
          {285, "&Save Settings\tCtrl+S", Plain}}},
        {"&Help",
         {{290, "&Contents\tF1", Plain},
          {291, "&Keyboard", Plain},
          {292, "&Using Help", Plain},
          Separator,
          {293, "&About Kestovar...", Plain}}},
    };
    return menu;
}

std::string TextOfItem(HMENU menu, int position)
{
    char text[100] = "";
    GetMenuStringA(menu, static_cast<UINT>(position), text, sizeof text, MF_BYPOSITION);
    return text;
}

void ExpectPopup(HMENU menu, const std::vector<Item>& items)
{
    ASSERT_EQ(static_cast<int>(items.size()), GetMenuItemCount(menu));
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        const Item& item = items[static_cast<std::size_t>(i)];
        EXPECT_EQ(item.Text, TextOfItem(menu, i));
        EXPECT_EQ(item.Id, GetMenuItemID(menu, i)) << item.Text;
        const UINT state = GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION);
        if (item.Id == 0) {
            EXPECT_NE(0u, state & MF_SEPARATOR) << "item " << i;
        } else {
            EXPECT_EQ(static_cast<UINT>(item.Shown), state & (MF_GRAYED | MF_DISABLED | MF_CHECKED)) << item.Text;
        }
    }
}

std::string StringOf(HMODULE module, UINT id)
{
    char text[300] = "";
    LoadStringA(module, id, text, sizeof text);
    return text;
}

void AddRange(std::set<UINT>& ids, UINT first, UINT last)
{
    for (UINT id = first; id <= last; ++id) {
        ids.insert(id);
    }
}

BOOL CALLBACK CountName(HMODULE, LPCSTR, LPSTR, LONG_PTR count)
{
    ++*reinterpret_cast<int*>(count);
    return TRUE;
}

} // namespace

TEST(MenuResource, HoldsEveryCommandWithItsTextAndFirstState)
{
    const ProgramFile program;
    const HMENU menu = LoadMenuA(program, "Kestovar");
    ASSERT_NE(nullptr, menu);
    const std::vector<Popup>& expected = ExpectedMenu();
    ASSERT_EQ(static_cast<int>(expected.size()), GetMenuItemCount(menu));
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        const Popup& popup = expected[static_cast<std::size_t>(i)];
        SCOPED_TRACE(popup.Title);
        EXPECT_EQ(popup.Title, TextOfItem(menu, i));
        ExpectPopup(GetSubMenu(menu, i), popup.Items);
    }
    DestroyMenu(menu);
}

TEST(AcceleratorResource, HoldsExactlyTheKeysOfTheProgram)
{
    constexpr BYTE Virtual = FVIRTKEY;
    constexpr BYTE Control = FVIRTKEY | FCONTROL;
    const std::vector<ACCEL> expected = {
        {Control, 'O', 220},
        {Control | FNOINVERT, VK_PRIOR, 227},
        {Control | FNOINVERT, VK_NEXT, 228},
        {Control, 'P', 229},
        {Control, 'C', 250},
        {Control, VK_INSERT, 250},
        {Control, 'F', 260},
        {Virtual | FNOINVERT, VK_F3, 261},
        {Virtual | FNOINVERT, VK_F9, 262},
        {Control, 'T', 270},
        {Control, 'H', 271},
        {Virtual | FNOINVERT, VK_ADD, 275},
        {Virtual | FNOINVERT, VK_SUBTRACT, 276},
        {Control, 'S', 285},
        {Virtual, VK_F1, 290},
        {Control | FNOINVERT, 'M', 100},
    };
    const ProgramFile program;
    const HACCEL table = LoadAcceleratorsA(program, "Kestovar");
    ASSERT_NE(nullptr, table);
    ACCEL rows[40] = {};
    ASSERT_EQ(static_cast<int>(expected.size()), CopyAcceleratorTableA(table, rows, 40));
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(expected[i].fVirt, rows[i].fVirt) << "row " << i;
        EXPECT_EQ(expected[i].key, rows[i].key) << "row " << i;
        EXPECT_EQ(expected[i].cmd, rows[i].cmd) << "row " << i;
    }
    DestroyAcceleratorTable(table);
}

TEST(StringResource, HoldsATextForEveryNumberInUseAndForNoOther)
{
    std::set<UINT> expected;
    AddRange(expected, 1, 6);
    expected.insert(8);
    AddRange(expected, 10, 17);
    AddRange(expected, 20, 26);
    AddRange(expected, 29, 30);
    AddRange(expected, 32, 33);
    expected.insert(40);
    AddRange(expected, 50, 52);
    AddRange(expected, 60, 63);
    AddRange(expected, 70, 76);
    AddRange(expected, 80, 85);
    AddRange(expected, 90, 93);
    AddRange(expected, 100, 113);
    AddRange(expected, 116, 120);
    AddRange(expected, 122, 134);
    AddRange(expected, 137, 152);
    AddRange(expected, 162, 172);
    AddRange(expected, 174, 185);
    AddRange(expected, 500, 523);
    const ProgramFile program;
    std::set<UINT> found;
    for (UINT id = 0; id <= 2000; ++id) {
        if (!StringOf(program, id).empty()) {
            found.insert(id);
        }
    }
    EXPECT_EQ(expected, found);
}

TEST(StringResource, KeepsItsWording)
{
    const std::map<UINT, const char*> expected = {
        {1, "Move, Size or Close application window"},
        {10, "Restore Kestovar to it's previous size"},
        {14, "Enlarge the Kestovar window to it's maximum size"},
        {15, "Exit Kestovar !"},
        {22, "Close the current file and Iconize"},
        {23, "Launch the current file with it's associated application "},
        {24, "Delete the curent file"},
        {63, "Goto to a specified file position"},
        {72, "View information about files contained within a ZIP file"},
        {100, "All Files (*.*)|*.*|Text Files (*.TXT)|*.TXT|INI Files (*.INI)|*.INI|ZIP Files (*.ZIP)|*.ZIP|"},
        {104, "Goto target invalid or not within file"},
        {105, "Error in command line construction has been ignored"},
        {107, "Unable to acquire buffer storage"},
        {108, "Unable to open the file\n\n%s"},
        {109, "Unable to obtain stats for file %s"},
        {110, "The current file has changed and will be reopened"},
        {116, "Select the area to lock. Enter or Click to select, Esc to cancel"},
        {119, "Selecting: Use mouse or scroll keys to select text"},
        {120, "Reading..."},
        {125, "Save of selected text failed or was incomplete"},
        {128, "The file %s already exists. Do you want to overwrite it."},
        {132, "PKUNZIP not complete after %i minute(s). Continue waiting ?"},
        {140, "File being browsed could not be re-opened"},
        {141, "File has been deleted "},
        {142, "Windows 16 bit Program"},
        {143, "Windows 16 bit DLL "},
        {146, "Windows 32 bit Executable"},
        {162, "Output Window"},
        {166, "Locked Text"},
        {172, "&Hide menu bar"},
        {174, "Line %s Col %i  %i%%"},
        {501, "View previous file"},
        {504, "Show file info"},
        {515, "View previous Zip"},
        {523, "Decrease font size"},
    };
    const ProgramFile program;
    for (const auto& [id, text] : expected) {
        EXPECT_EQ(text, StringOf(program, id)) << id;
    }
}

TEST(StringResource, EveryMessageFitsTheBuffersItIsLoadedInto)
{
    const ProgramFile program;
    for (UINT id = 0; id <= 2000; ++id) {
        EXPECT_LT(StringOf(program, id).size(), 200u) << id;
    }
    EXPECT_LT(StringOf(program, 172).size(), 30u);
    EXPECT_LT(StringOf(program, 174).size(), 30u);
    EXPECT_LT(StringOf(program, 183).size(), 10u);
    EXPECT_LT(StringOf(program, 184).size(), 10u);
}

TEST(IconResource, LoadsInTheSizesThatWindowsShow)
{
    const ProgramFile program;
    const struct {
        const char* Name;
        int Size;
    } icons[] = {{"Kestovar", 16}, {"Kestovar", 32}, {"Kestovar", 48}, {"Small", 16}};
    for (const auto& icon : icons) {
        const HICON loaded = static_cast<HICON>(LoadImageA(program, icon.Name, IMAGE_ICON, icon.Size, icon.Size, 0));
        ASSERT_NE(nullptr, loaded) << icon.Name << icon.Size;
        ICONINFO info = {};
        ASSERT_TRUE(GetIconInfo(loaded, &info));
        BITMAP bitmap = {};
        GetObjectA(info.hbmColor, sizeof bitmap, &bitmap);
        EXPECT_EQ(icon.Size, bitmap.bmWidth) << icon.Name;
        EXPECT_EQ(icon.Size, bitmap.bmHeight) << icon.Name;
        DeleteObject(info.hbmColor);
        DeleteObject(info.hbmMask);
        DestroyIcon(loaded);
    }
}

TEST(VersionResource, SaysVersion38)
{
    DWORD ignored = 0;
    std::vector<char> block(GetFileVersionInfoSizeA(KESTOVAR_EXE, &ignored));
    ASSERT_FALSE(block.empty());
    ASSERT_TRUE(GetFileVersionInfoA(KESTOVAR_EXE, 0, static_cast<DWORD>(block.size()), block.data()));
    void* found = nullptr;
    UINT size = 0;
    ASSERT_TRUE(VerQueryValueA(block.data(), "\\", &found, &size));
    const VS_FIXEDFILEINFO* const fixed = static_cast<const VS_FIXEDFILEINFO*>(found);
    EXPECT_EQ(static_cast<DWORD>(MAKELONG(8, 3)), fixed->dwFileVersionMS);
    EXPECT_EQ(0u, fixed->dwFileVersionLS);
    EXPECT_EQ(static_cast<DWORD>(MAKELONG(8, 3)), fixed->dwProductVersionMS);
    for (const char* name : {"FileVersion", "ProductVersion"}) {
        const std::string key = std::string("\\StringFileInfo\\040904E4\\") + name;
        ASSERT_TRUE(VerQueryValueA(block.data(), key.c_str(), &found, &size)) << name;
        EXPECT_STREQ("3.8", static_cast<const char*>(found)) << name;
    }
}

// With a trustInfo section Windows would no longer redirect the settings file of an ordinary user.
TEST(Manifest, StandsAloneAndAsksForNoExecutionLevel)
{
    const ProgramFile program;
    int manifests = 0;
    EnumResourceNamesA(program, MAKEINTRESOURCEA(24), CountName, reinterpret_cast<LONG_PTR>(&manifests));
    EXPECT_EQ(1, manifests);
    const HRSRC resource = FindResourceA(program, MAKEINTRESOURCEA(1), MAKEINTRESOURCEA(24));
    ASSERT_NE(nullptr, resource);
    const std::string text(static_cast<const char*>(LockResource(LoadResource(program, resource))),
                           SizeofResource(program, resource));
    EXPECT_NE(std::string::npos, text.find("Microsoft.Windows.Common-Controls"));
    EXPECT_EQ(std::string::npos, text.find("trustInfo"));
    EXPECT_EQ(std::string::npos, text.find("requestedExecutionLevel"));
}
