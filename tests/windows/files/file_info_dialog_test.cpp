#include "files/file_info_dialog.h"

#include "app/app_state.h"
#include "app/open_sequence.h"
#include "base/text.h"
#include "document/document_state.h"
#include "document/file_list.h"
#include "files/associations.h"
#include "harness/dialogs.h"
#include "harness/folder.h"
#include "harness/picture.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "view/frame_windows.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;
using Step = std::function<void(HWND)>;

// The numbers of the controls are written out: these are the program's own.
constexpr int NameControl = 410;
constexpr int SizeControl = 411;
constexpr int TypeControl = 412;
constexpr int LinesControl = 413;
constexpr int DateControl = 414;
constexpr int TimeControl = 415;
constexpr int AttributesControl = 416;
constexpr int Separator = 417;
constexpr int DescriptionControl = 418;
constexpr int VersionControl = 419;
constexpr int CompanyControl = 420;
constexpr int ImportsControl = 421;
constexpr int MoreButton = 422;
constexpr int GroupControl = 423;

void Press(HWND dialog, int button)
{
    SendMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
}

RECT PlaceOf(HWND window)
{
    RECT place;
    GetWindowRect(window, &place);
    return place;
}

RECT PlaceOf(HWND dialog, int control)
{
    return PlaceOf(GetDlgItem(dialog, control));
}

bool IsShown(HWND dialog, int control)
{
    return (GetWindowLongA(GetDlgItem(dialog, control), GWL_STYLE) & WS_VISIBLE) != 0;
}

// What the dialog shows where a control is.
Picture PictureOfPlace(HWND dialog, int control)
{
    RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    RECT place = PlaceOf(dialog, control);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    return PictureOf(dialog, place);
}

std::string InSystemDirectory(const std::string& file)
{
    char path[MAX_PATH];
    GetSystemDirectoryA(path, sizeof path);
    return path + ("\\" + file);
}

// The names that a module of the system imports, in the order of the alphabet.
Names SortedImports(const std::string& file)
{
    const HMODULE module = LoadLibraryExA(file.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
    const std::uint8_t* const base = reinterpret_cast<const std::uint8_t*>(module);
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    Names names;
    for (const auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + table.VirtualAddress);
         library->Name != 0; ++library) {
        names.push_back(reinterpret_cast<const char*>(base + library->Name));
    }
    FreeLibrary(module);
    std::sort(names.begin(), names.end());
    return names;
}

Names Sorted(Names names)
{
    std::sort(names.begin(), names.end());
    return names;
}

class FileInformation : public RunningProgram {
protected:
    ~FileInformation() override
    {
        CloseDocument();
        RegDeleteKeyA(HKEY_CLASSES_ROOT, ".kva");
        RegDeleteKeyA(HKEY_CLASSES_ROOT, "KvaClass");
        BuildAssociations();
        App.Info = FileInfo{.WantDetails = true};
        Details = FileDetails{};
        Document.IsText = false;
    }

    static void Associate(const std::string& friendlyName)
    {
        RegSetValueA(HKEY_CLASSES_ROOT, ".kva", REG_SZ, "KvaClass", 8);
        RegSetValueA(HKEY_CLASSES_ROOT, "KvaClass", REG_SZ, friendlyName.c_str(),
                     static_cast<DWORD>(friendlyName.size()));
        BuildAssociations();
    }

    // The dialog about the current document, closed after the step.
    static void Look(const Step& step)
    {
        DialogAnswers answers;
        answers.Then([&step](HWND dialog) {
            step(dialog);
            PressButton(dialog, IDOK);
        });
        SendMessageA(Windows.Main, WM_COMMAND, 232, 0);
        ASSERT_EQ(1u, answers.Seen().size());
    }

    // The same of a file that is opened first.
    static void LookAt(const std::string& path, const Step& step)
    {
        ASSERT_TRUE(OpenNamedFile(Windows.Main, path.c_str())) << path;
        Look(step);
    }

    static std::string Shown(int control)
    {
        std::string text = "no dialog";
        Look([&text, control](HWND dialog) { text = ControlText(dialog, control); });
        return text;
    }

    // What is shown of a file of that name and content.
    static std::string ShownOf(int control, const std::string& name, const std::string& content)
    {
        const ScratchFile file(name, content);
        EXPECT_TRUE(OpenNamedFile(Windows.Main, file.Path()));
        return Shown(control);
    }

    // What is shown of a file that need not exist.
    static std::string ShownOf(int control, const ShownFile& file)
    {
        std::string text = "no dialog";
        DialogAnswers answers;
        answers.Then([&text, control](HWND dialog) {
            text = ControlText(dialog, control);
            PressButton(dialog, IDOK);
        });
        ShowFileInfo(Windows.Main, file);
        return text;
    }

    static std::string NameShown(const std::string& path)
    {
        const FileInfo info;
        return ShownOf(NameControl, {path.c_str(), &info, "", false});
    }

    static std::string TypeShown(std::int16_t type, const char* description, bool fromArchive)
    {
        FileInfo info;
        info.FileType = type;
        return ShownOf(TypeControl, {"c:\\file", &info, description, fromArchive});
    }

    static std::string SizeShown(std::int32_t bytes)
    {
        const FileInfo info;
        Document.FileSize = bytes;
        const std::string text = ShownOf(SizeControl, {"c:\\file", &info, "", false});
        Document.FileSize = 0;
        return text;
    }

    static std::string LinesShown(std::int32_t lines)
    {
        const FileInfo info;
        Document.IsText = true;
        Document.LineCount = lines;
        const std::string text = ShownOf(LinesControl, {"c:\\file", &info, "", false});
        Document.LineCount = 0;
        return text;
    }

    static std::string AttributesShown(std::uint16_t attributes)
    {
        FileInfo info;
        info.Attributes = attributes;
        return ShownOf(AttributesControl, {"c:\\file", &info, "", false});
    }

    // A modification at that local time, in seconds since 1970.
    static std::int32_t At(WORD year, WORD month, WORD day, WORD hour, WORD minute, WORD second)
    {
        SYSTEMTIME local = {};
        local.wYear = year;
        local.wMonth = month;
        local.wDay = day;
        local.wHour = hour;
        local.wMinute = minute;
        local.wSecond = second;
        SYSTEMTIME utc;
        FILETIME time;
        EXPECT_TRUE(TzSpecificLocalTimeToSystemTime(nullptr, &local, &utc));
        EXPECT_TRUE(SystemTimeToFileTime(&utc, &time));
        const std::uint64_t ticks = (static_cast<std::uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
        return static_cast<std::int32_t>(ticks / 10000000 - 11644473600);
    }

    // Answers the dialog by a message to the control that has the focus.
    static void CloseByKey(WPARAM key)
    {
        DialogAnswers answers;
        answers.Then([key](HWND) { PostMessageA(GetFocus(), WM_KEYDOWN, key, 0); });
        SendMessageA(Windows.Main, WM_COMMAND, 232, 0);
    }
};

} // namespace

TEST_F(FileInformation, IsADialogOverTheMainWindow)
{
    const ScratchFile file("info.kv1", "text");
    ASSERT_TRUE(OpenNamedFile(Windows.Main, file.Path()));
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    SendMessageA(Windows.Main, WM_COMMAND, 232, 0);
    ASSERT_EQ(1u, answers.Seen().size());
    EXPECT_EQ("File Information", answers.Seen()[0].Caption);
    EXPECT_EQ(Windows.Main, answers.Seen()[0].Owner);
}

TEST_F(FileInformation, ThereIsNoneWithoutADocument)
{
    const DialogAnswers none;
    SendMessageA(Windows.Main, WM_COMMAND, 232, 0);
    EXPECT_TRUE(none.Seen().empty());
}

TEST_F(FileInformation, NamesWhatItShows)
{
    const FileInfo info;
    Names labels;
    DialogAnswers answers;
    answers.Then([&labels](HWND dialog) {
        for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
            char text[100] = "";
            GetWindowTextA(child, text, sizeof text);
            labels.push_back(text);
        }
        PressButton(dialog, IDOK);
    });
    ShowFileInfo(Windows.Main, {"c:\\file", &info, "", false});
    for (const char* const label : {"File Name :", "Type :", "Size :", "No. of Lines :", "Last Modified :",
                                    "Attributes:", "Description :", "Version :", "Company :", "OK", "&More..."}) {
        EXPECT_EQ(1, std::count(labels.begin(), labels.end(), label)) << label;
    }
}

TEST_F(FileInformation, OkAndCancelAndTheKeysForThemClose)
{
    const ScratchFile file("info.kv1", "text");
    ASSERT_TRUE(OpenNamedFile(Windows.Main, file.Path()));
    for (const int button : {1, 2}) {
        DialogAnswers answers;
        answers.ThenPress(button);
        SendMessageA(Windows.Main, WM_COMMAND, 232, 0);
        EXPECT_EQ(1u, answers.Seen().size());
    }
    CloseByKey(VK_RETURN);
    CloseByKey(VK_ESCAPE);
    DialogAnswers answers;
    answers.Then([](HWND dialog) { PostMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); });
    SendMessageA(Windows.Main, WM_COMMAND, 232, 0);
    EXPECT_TRUE(View.FileShown);
}

TEST_F(FileInformation, TheNameIsInLowerCase)
{
    EXPECT_EQ("c:\\some dir\\a&b.txt", NameShown("C:\\Some Dir\\A&B.TXT"));
    EXPECT_EQ("c:\\gr\xFC\xDF.txt", NameShown("C:\\GR\xDC\xDF.TXT"));
}

TEST_F(FileInformation, ANameOf32CharactersIsShownWholeAndALongerOneShortened)
{
    const std::string head = "c:\\first\\second\\third\\";
    ASSERT_EQ(32u, (head + "abcdef.txt").size());
    EXPECT_EQ(head + "abcdef.txt", NameShown(head + "abcdef.txt"));
    EXPECT_EQ("c:\\...\\second\\third\\abcdefg.txt", NameShown(head + "abcdefg.txt"));
}

TEST_F(FileInformation, ANameOf259CharactersIsShownByItsEnds)
{
    const std::string path = "c:\\" + std::string(240, 'd') + "\\the end.txt";
    EXPECT_EQ("c:\\...\\the end.txt" + std::string(259 - path.size(), 'x'),
              NameShown(path + std::string(259 - path.size(), 'x')));
    ScratchFolder folder("info");
    const std::string name(259 - folder.Path().size(), 'n');
    folder.Add(name, "text");
    ASSERT_TRUE(OpenNamedFile(Windows.Main, folder.Path(name).c_str()));
    EXPECT_EQ("4 Bytes (0K)", Shown(SizeControl));
    const std::string shown = Shown(NameControl);
    EXPECT_EQ("c:\\...", shown.substr(0, 6));
    EXPECT_EQ(name.substr(0, 20), shown.substr(shown.size() - 20));
}

TEST_F(FileInformation, ARecognisedTypeComesFirst)
{
    EXPECT_EQ("Windows 16 bit Program", TypeShown(1, "Described", false));
    EXPECT_EQ("Self Extracting ZIP", TypeShown(9, "Described", false));
    EXPECT_EQ("Compressed File", TypeShown(11, "", false));
}

TEST_F(FileInformation, ThenComesWhatTheExtensionStandsFor)
{
    Document.IsText = true;
    EXPECT_EQ("Described", TypeShown(0, "Described", false));
    Document.IsText = false;
    EXPECT_EQ(std::string(39, 'd'), TypeShown(0, std::string(39, 'd').c_str(), false));
}

TEST_F(FileInformation, ThenOnlyWhetherItIsAText)
{
    Document.IsText = true;
    EXPECT_EQ("Text", TypeShown(0, "", false));
    Document.IsText = false;
    EXPECT_EQ("Non-Text", TypeShown(0, "", false));
}

TEST_F(FileInformation, AFileOutOfAnArchiveIsCalledZipped)
{
    EXPECT_EQ("Windows 32 bit DLL (Zipped)", TypeShown(4, "", true));
    EXPECT_EQ(std::string(39, 'd') + " (Zipped)", TypeShown(0, std::string(39, 'd').c_str(), true));
    Document.IsText = true;
    EXPECT_EQ("Text (Zipped)", TypeShown(0, "", true));
    Document.IsText = false;
    EXPECT_EQ("Non-Text (Zipped)", TypeShown(0, "", true));
}

TEST_F(FileInformation, TheTypeIsThatOfTheFileOpened)
{
    Associate("Friendly Name");
    EXPECT_EQ("Friendly Name", ShownOf(TypeControl, "info.KVA", "text"));
    EXPECT_EQ("Text", ShownOf(TypeControl, "info.kv1", "text"));
    EXPECT_EQ("Text", ShownOf(TypeControl, "info", "text"));
    EXPECT_EQ("Text", ShownOf(TypeControl, "info.kva.kv1", "text"));
    EXPECT_EQ("Non-Text", ShownOf(TypeControl, "info.kv1", std::string(3000, 'x')));
    EXPECT_EQ("Friendly Name", ShownOf(TypeControl, "info.kva", std::string(3000, 'x')));
    EXPECT_EQ("Zip File", ShownOf(TypeControl, "info.kva", std::string("member PK\5\6") + std::string(18, '\0')));
}

TEST_F(FileInformation, TheSizeIsGroupedAndHalfAKilobyteCountsAsOne)
{
    EXPECT_EQ("0 Bytes (0K)", SizeShown(0));
    EXPECT_EQ("510 Bytes (0K)", SizeShown(510));
    EXPECT_EQ("511 Bytes (1K)", SizeShown(511));
    EXPECT_EQ("1,534 Bytes (1K)", SizeShown(1534));
    EXPECT_EQ("1,535 Bytes (2K)", SizeShown(1535));
    EXPECT_EQ("1,234,567 Bytes (1,206K)", SizeShown(1234567));
    EXPECT_EQ("2147,483,647 Bytes (2,097,152K)", SizeShown(INT32_MAX));
    EXPECT_EQ("1,535 Bytes (2K)", ShownOf(SizeControl, "info.kv1", std::string(1535, 'x')));
}

TEST_F(FileInformation, TheLinesOfATextAreGrouped)
{
    EXPECT_EQ("1", LinesShown(1));
    EXPECT_EQ("999", LinesShown(999));
    EXPECT_EQ("1,000", LinesShown(1000));
    EXPECT_EQ("1,234,567", LinesShown(1234567));
    EXPECT_EQ("120,000,000", LinesShown(120000000));
    EXPECT_EQ("1,200", ShownOf(LinesControl, "info.kv1", std::string(1200, '\n')));
}

TEST_F(FileInformation, ANonTextHasNoNumberOfLines)
{
    EXPECT_EQ("N/A", ShownOf(LinesControl, "info.kv1", std::string(3000, 'x')));
}

TEST_F(FileInformation, AnEmptyFileHasNoBytesAndOneLine)
{
    const ScratchFile file("empty.kv1", "");
    LookAt(file.Path(), [](HWND dialog) {
        EXPECT_EQ("0 Bytes (0K)", ControlText(dialog, SizeControl));
        EXPECT_EQ("1", ControlText(dialog, LinesControl));
        EXPECT_EQ("Text", ControlText(dialog, TypeControl));
    });
}

TEST_F(FileInformation, TheModificationIsInLocalTimeWithTheMonthInWords)
{
    FileInfo info;
    info.Time = At(2026, 11, 21, 19, 5, 9);
    const ShownFile evening = {"c:\\file", &info, "", false};
    EXPECT_EQ("Sat 21 Nov, 2026", ShownOf(DateControl, evening));
    EXPECT_EQ("at 07:05:09 PM", ShownOf(TimeControl, evening));
    info.Time = At(1995, 7, 2, 0, 0, 0);
    EXPECT_EQ("Sun 02 Jul, 1995", ShownOf(DateControl, evening));
    EXPECT_EQ("at 12:00:00 AM", ShownOf(TimeControl, evening));
    info.Time = At(2000, 2, 29, 12, 0, 59);
    EXPECT_EQ("Tue 29 Feb, 2000", ShownOf(DateControl, evening));
    EXPECT_EQ("at 12:00:59 PM", ShownOf(TimeControl, evening));
}

TEST_F(FileInformation, TheModificationIsThatOfTheFileOpened)
{
    ScratchFile file("info.kv1", "text");
    file.SetTime(At(1999, 1, 15, 11, 59, 58));
    LookAt(file.Path(), [](HWND dialog) {
        EXPECT_EQ("Fri 15 Jan, 1999", ControlText(dialog, DateControl));
        EXPECT_EQ("at 11:59:58 AM", ControlText(dialog, TimeControl));
    });
}

TEST_F(FileInformation, TheAttributesStandInWords)
{
    EXPECT_EQ("", AttributesShown(0));
    EXPECT_EQ("Archive ", AttributesShown(32));
    EXPECT_EQ("Read-only Archive System Hidden ", AttributesShown(39));
    const ScratchFile file("info.kv1", "text");
    ASSERT_TRUE(SetFileAttributesA(file.Path(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE));
    ASSERT_TRUE(OpenNamedFile(Windows.Main, file.Path()));
    const std::string shown = Shown(AttributesControl);
    EXPECT_EQ("Read-only ", shown.substr(0, 10));
}

TEST_F(FileInformation, AFileWithoutVersionAndImportsHasTheShortForm)
{
    const ScratchFile file("info.kv1", "text");
    LookAt(file.Path(), [](HWND dialog) {
        const RECT all = PlaceOf(dialog);
        EXPECT_EQ(PlaceOf(dialog, Separator).top, all.bottom);
        EXPECT_LT(PlaceOf(dialog, AttributesControl).bottom, all.bottom);
        EXPECT_LT(PlaceOf(dialog, IDOK).bottom, all.bottom);
        EXPECT_LT(PlaceOf(dialog, MoreButton).bottom, all.bottom);
        EXPECT_GE(PlaceOf(dialog, GroupControl).top, all.bottom);
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, MoreButton)));
        EXPECT_FALSE(IsShown(dialog, ImportsControl));
    });
}

TEST_F(FileInformation, TheShortFormHasThePlaceAndTheWidthOfTheLongOne)
{
    RECT shortForm = {};
    RECT longForm = {};
    const ScratchFile file("info.kv1", "text");
    LookAt(file.Path(), [&shortForm](HWND dialog) { shortForm = PlaceOf(dialog); });
    LookAt(KESTOVAR_EXE, [&longForm](HWND dialog) {
        longForm = PlaceOf(dialog);
        EXPECT_GT(longForm.bottom, PlaceOf(dialog, GroupControl).bottom);
        EXPECT_LT(PlaceOf(dialog, Separator).bottom, PlaceOf(dialog, GroupControl).top);
    });
    EXPECT_EQ(longForm.left, shortForm.left);
    EXPECT_EQ(longForm.top, shortForm.top);
    EXPECT_EQ(longForm.right, shortForm.right);
    EXPECT_GT(longForm.bottom, shortForm.bottom);
}

TEST_F(FileInformation, AProgramsVersionIsShown)
{
    LookAt(KESTOVAR_EXE, [](HWND dialog) {
        EXPECT_EQ("Windows 32 bit Executable", ControlText(dialog, TypeControl));
        EXPECT_EQ("N/A", ControlText(dialog, LinesControl));
        EXPECT_EQ("Kestovar file browser", ControlText(dialog, DescriptionControl));
        EXPECT_EQ("3.8", ControlText(dialog, VersionControl));
        EXPECT_EQ("The Kestovar developers", ControlText(dialog, CompanyControl));
        EXPECT_EQ("Program Version Information", ControlText(dialog, GroupControl));
        EXPECT_TRUE(IsWindowEnabled(GetDlgItem(dialog, MoreButton)));
        EXPECT_FALSE(IsShown(dialog, ImportsControl));
    });
}

TEST_F(FileInformation, AnEmptyVersionFieldIsNotAvailable)
{
    ASSERT_TRUE(OpenNamedFile(Windows.Main, KESTOVAR_EXE));
    ASSERT_LT(0, Details.ImportCount);
    Details.FileDescription[0] = Details.FileVersionText[0] = Details.CompanyNameText[0] = '\0';
    Look([](HWND dialog) {
        EXPECT_EQ("N/A", ControlText(dialog, DescriptionControl));
        EXPECT_EQ("N/A", ControlText(dialog, VersionControl));
        EXPECT_EQ("N/A", ControlText(dialog, CompanyControl));
        EXPECT_TRUE(IsWindowEnabled(GetDlgItem(dialog, MoreButton)));
        EXPECT_LT(PlaceOf(dialog, GroupControl).bottom, PlaceOf(dialog).bottom) << "imports alone make it long";
    });
}

TEST_F(FileInformation, ADescriptionAloneMakesTheLongFormWithoutMore)
{
    const ScratchFile file("info.kv1", "text");
    ASSERT_TRUE(OpenNamedFile(Windows.Main, file.Path()));
    strcpy(Details.FileDescription, "A & B");
    strcpy(Details.CompanyNameText, "C & D");
    Look([](HWND dialog) {
        EXPECT_EQ("A & B", ControlText(dialog, DescriptionControl));
        EXPECT_EQ("N/A", ControlText(dialog, VersionControl));
        EXPECT_EQ("C & D", ControlText(dialog, CompanyControl));
        for (const int control : {DescriptionControl, VersionControl, CompanyControl, NameControl, TypeControl}) {
            EXPECT_NE(0, GetWindowLongA(GetDlgItem(dialog, control), GWL_STYLE) & SS_NOPREFIX) << control;
        }
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, MoreButton)));
        EXPECT_LT(PlaceOf(dialog, GroupControl).bottom, PlaceOf(dialog).bottom);
    });
}

TEST_F(FileInformation, AVersionWithoutADescriptionDoesNotMakeTheLongForm)
{
    const ScratchFile file("info.kv1", "text");
    ASSERT_TRUE(OpenNamedFile(Windows.Main, file.Path()));
    strcpy(Details.FileVersionText, "1.0");
    Look([](HWND dialog) { EXPECT_EQ(PlaceOf(dialog, Separator).top, PlaceOf(dialog).bottom); });
}

TEST_F(FileInformation, MoreShowsTheImportsInPlaceOfTheVersionAndBack)
{
    LookAt(KESTOVAR_EXE, [](HWND dialog) {
        for (int time = 0; time < 2; ++time) {
            Press(dialog, MoreButton);
            EXPECT_TRUE(IsShown(dialog, ImportsControl));
            EXPECT_EQ("Imported DLL Libraries", ControlText(dialog, GroupControl));
            Press(dialog, MoreButton);
            EXPECT_FALSE(IsShown(dialog, ImportsControl));
            EXPECT_EQ("Program Version Information", ControlText(dialog, GroupControl));
        }
        Press(dialog, MoreButton);
    });
    LookAt(KESTOVAR_EXE, [](HWND dialog) {
        EXPECT_FALSE(IsShown(dialog, ImportsControl)) << "each time anew";
        EXPECT_EQ("Program Version Information", ControlText(dialog, GroupControl));
    });
}

TEST_F(FileInformation, TheImportsAreThoseOfTheFile)
{
    LookAt(KESTOVAR_EXE, [](HWND dialog) {
        const Names names = ListTexts(dialog, ImportsControl);
        EXPECT_LT(3u, names.size());
        EXPECT_EQ(SortedImports(KESTOVAR_EXE), Sorted(names));
    });
    for (const char* const name : {"shell32.dll", "ole32.dll", "comctl32.dll", "wininet.dll", "notepad.exe"}) {
        const std::string path = InSystemDirectory(name);
        LookAt(path, [&path](HWND dialog) {
            const Names names = ListTexts(dialog, ImportsControl);
            EXPECT_FALSE(names.empty()) << path;
            EXPECT_EQ(SortedImports(path), Sorted(names)) << path;
            EXPECT_EQ(static_cast<std::size_t>(Details.ImportCount), names.size()) << path;
        });
    }
}

TEST_F(FileInformation, TheImportsLieOverTheVersionFields)
{
    LookAt(KESTOVAR_EXE, [](HWND dialog) {
        const RECT list = PlaceOf(dialog, ImportsControl);
        for (const int control : {DescriptionControl, VersionControl, CompanyControl}) {
            const RECT field = PlaceOf(dialog, control);
            RECT both;
            ASSERT_TRUE(IntersectRect(&both, &list, &field)) << control;
            EXPECT_TRUE(EqualRect(&both, &field)) << control;
            const POINT middle = {(field.left + field.right) / 2, (field.top + field.bottom) / 2};
            EXPECT_NE(GetDlgItem(dialog, ImportsControl), WindowFromPoint(middle)) << control;
            Press(dialog, MoreButton);
            EXPECT_EQ(GetDlgItem(dialog, ImportsControl), WindowFromPoint(middle)) << control;
            Press(dialog, MoreButton);
        }
    });
}

// Each text leaves ink: none is beneath another control.
TEST_F(FileInformation, EveryTextCanBeSeen)
{
    LookAt(KESTOVAR_EXE, [](HWND dialog) {
        for (int control : {NameControl, SizeControl, TypeControl, LinesControl, DateControl, TimeControl,
                            AttributesControl, DescriptionControl, VersionControl, CompanyControl}) {
            EXPECT_LT(1, ColoursIn(PictureOfPlace(dialog, control))) << control;
        }
    });
}

TEST_F(FileInformation, NothingOfTheVersionShowsThroughTheImports)
{
    ASSERT_TRUE(OpenNamedFile(Windows.Main, KESTOVAR_EXE));
    Picture imports;
    Picture version;
    Look([&](HWND dialog) {
        version = PictureOfPlace(dialog, ImportsControl);
        Press(dialog, MoreButton);
        imports = PictureOfPlace(dialog, ImportsControl);
        EXPECT_NE(0, DifferentPixels(version, imports));
        for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
            char className[20] = "";
            GetClassNameA(child, className, sizeof className);
            if (_stricmp(className, "Static") == 0) {
                ShowWindow(child, SW_HIDE);
            }
        }
        EXPECT_EQ(0, DifferentPixels(imports, PictureOfPlace(dialog, ImportsControl)));
    });
    Look([&](HWND dialog) {
        Press(dialog, MoreButton);
        PictureOfPlace(dialog, ImportsControl);
        Press(dialog, MoreButton);
        EXPECT_EQ(0, DifferentPixels(version, PictureOfPlace(dialog, ImportsControl))) << "it is back";
    });
}

TEST_F(FileInformation, TheImportsAreShownWithoutPaintingEverythingAnew)
{
    LookAt(KESTOVAR_EXE, [](HWND dialog) {
        const Picture version = PictureOfPlace(dialog, ImportsControl);
        RECT place = PlaceOf(dialog, ImportsControl);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
        const auto toggled = [dialog, &place] {
            Press(dialog, MoreButton);
            RedrawWindow(dialog, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
            return PictureOf(dialog, place);
        };
        const Picture imports = toggled();
        EXPECT_EQ(0, DifferentPixels(imports, PictureOfPlace(dialog, ImportsControl)));
        EXPECT_EQ(0, DifferentPixels(version, toggled()));
    });
}

TEST_F(FileInformation, AnotherDocumentHandedOverMeanwhileDoesNoHarm)
{
    const ScratchFile file("other.kv1", "text");
    LookAt(KESTOVAR_EXE, [&file](HWND dialog) {
        const Names names = ListTexts(dialog, ImportsControl);
        ASSERT_TRUE(OpenNamedFile(Windows.Main, file.Path()));
        Press(dialog, MoreButton);
        EXPECT_EQ(names, ListTexts(dialog, ImportsControl));
        EXPECT_EQ("Imported DLL Libraries", ControlText(dialog, GroupControl));
    });
    EXPECT_STREQ("other.kv1", App.FileTitle);
    EXPECT_TRUE(View.FileShown);
}

TEST_F(FileInformation, LeavesNoDrawingObjectBehind)
{
    ASSERT_TRUE(OpenNamedFile(Windows.Main, KESTOVAR_EXE));
    const Step lookAround = [](HWND dialog) {
        PictureOfPlace(dialog, ImportsControl);
        Press(dialog, MoreButton);
        PictureOfPlace(dialog, ImportsControl);
    };
    Look(lookAround); // what the system makes once and keeps
    const int before = FreeGdiObjects();
    for (int i = 0; i < 3; ++i) {
        Look(lookAround);
    }
    EXPECT_EQ(before, FreeGdiObjects());
}
