#include "files/select_list.h"

#include "base/intl.h"
#include "document/file_list.h"
#include "files/build_file_list.h"
#include "harness/dialogs.h"
#include "harness/folder.h"
#include "harness/program.h"
#include "harness/system_calls.h"
#include "resources/ids.h"
#include "view/frame_windows.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

class SelectList : public RunningProgram {
protected:
    SelectList() : Folder("select")
    {
        for (const char* name : {"zebra.txt", "apple.txt", "mango.txt"}) {
            Folder.Add(name, "text");
            AddFileToList(nullptr, Folder.Name().c_str(), name);
        }
        WalkFileList(1);
    }

    ~SelectList() override
    {
        ClearFileList();
        Intl = IntlSettings{};
        SetDetailsShown(false); // as in the beginning
    }

    // Shows the dialog; returns the path chosen, empty when cancelled.
    static std::string Choose()
    {
        char path[MaxPathSize] = "";
        return ChooseFromFileList(Windows.Main, path) ? path : "";
    }

    static LRESULT Send(HWND dialog, UINT message, WPARAM wParam = 0)
    {
        return SendDlgItemMessageA(dialog, IDC_SELECT_FILES, message, wParam, 0);
    }

    static int Selected(HWND dialog) { return static_cast<int>(Send(dialog, LB_GETCURSEL)); }

    // As by a click; a list box does not tell of LB_SETCURSEL.
    static void Select(HWND dialog, int index)
    {
        Send(dialog, LB_SETCURSEL, static_cast<WPARAM>(index));
        Notify(dialog, LBN_SELCHANGE);
    }

    static void Notify(HWND dialog, int notice)
    {
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDC_SELECT_FILES, notice),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, IDC_SELECT_FILES)));
    }

    static bool DetailsAreShown(HWND dialog) { return ControlText(dialog, IDC_SELECT_DETAILS) == "<< &Details"; }

    static void ShowDetails(HWND dialog)
    {
        if (!DetailsAreShown(dialog)) {
            SendMessageA(dialog, WM_COMMAND, IDC_SELECT_DETAILS, 0);
        }
    }

    static void SetDetailsShown(bool shown)
    {
        AddFileToList(nullptr, "c:\\any", "file");
        WalkFileList(1);
        DialogAnswers answers;
        answers.Then([shown](HWND dialog) {
            if (DetailsAreShown(dialog) != shown) {
                SendMessageA(dialog, WM_COMMAND, IDC_SELECT_DETAILS, 0);
            }
            PressButton(dialog, IDCANCEL);
        });
        Choose();
        ClearFileList();
    }

    static int HeightOf(HWND dialog)
    {
        RECT area;
        GetWindowRect(dialog, &area);
        return area.bottom - area.top;
    }

    struct Details {
        std::string Path;
        std::string Type;
        std::string Changed;
        std::string Size;
        std::string Attributes;
    };

    static Details ReadDetails(HWND dialog)
    {
        return {ControlText(dialog, IDC_SELECT_PATH), ControlText(dialog, IDC_SELECT_TYPE),
                ControlText(dialog, IDC_SELECT_CHANGED), ControlText(dialog, IDC_SELECT_SIZE),
                ControlText(dialog, IDC_SELECT_ATTRIBUTES)};
    }

    // What the details say of a file, the only one of the list.
    static Details DetailsOf(const std::string& path)
    {
        ClearFileList();
        AddFileToList(nullptr, path.c_str(), "");
        WalkFileList(1);
        Details details;
        DialogAnswers answers;
        answers.Then([&details](HWND dialog) {
            ShowDetails(dialog);
            details = ReadDetails(dialog);
            PressButton(dialog, IDCANCEL);
        });
        Choose();
        return details;
    }

    ScratchFolder Folder;
};

} // namespace

TEST_F(SelectList, ShowsTheNamesWithoutTheirDirectoriesInTheOrderOfTheList)
{
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        EXPECT_EQ((Names{"zebra.txt", "apple.txt", "mango.txt"}), ListTexts(dialog, IDC_SELECT_FILES));
        EXPECT_EQ(0, GetWindowLongA(GetDlgItem(dialog, IDC_SELECT_FILES), GWL_STYLE) & LBS_SORT);
        PressButton(dialog, IDCANCEL);
    });
    Choose();
    ASSERT_EQ(1u, answers.Seen().size());
    EXPECT_EQ("Select a file", answers.Seen()[0].Caption);
    EXPECT_EQ(Windows.Main, answers.Seen()[0].Owner);
}

TEST_F(SelectList, TheCurrentFileIsSelectedAndStandsAtTheTop)
{
    for (int i = 0; i < 100; ++i) {
        AddFileToList(nullptr, Folder.Name().c_str(), ("more" + std::to_string(i)).c_str());
    }
    WalkFileList(57);
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        EXPECT_EQ(56, Selected(dialog));
        EXPECT_EQ(56, Send(dialog, LB_GETTOPINDEX));
        PressButton(dialog, IDCANCEL);
    });
    Choose();
}

TEST_F(SelectList, AfterADeletionTheFileThatTookTheDeletedOnesPlaceIsSelected)
{
    WalkFileList(1);
    FileList.ListAdjust = 1; // the second was deleted: the third is now the second
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        EXPECT_EQ(1, Selected(dialog));
        PressButton(dialog, IDCANCEL);
    });
    Choose();
}

TEST_F(SelectList, ViewTakesTheSelectedFile)
{
    FileList.ListAdjust = 1;
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        Select(dialog, 2);
        PressButton(dialog, IDOK);
    });
    EXPECT_EQ(LowerCase(Folder.Path("mango.txt")), Choose());
    EXPECT_EQ(3, FileList.ListPosition);
    EXPECT_EQ(3, FileList.ListTotal);
    EXPECT_EQ(0, FileList.ListAdjust);
}

TEST_F(SelectList, ADoubleClickTakesTheFile)
{
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        Select(dialog, 1);
        Notify(dialog, LBN_DBLCLK);
    });
    EXPECT_EQ(LowerCase(Folder.Path("apple.txt")), Choose());
    EXPECT_EQ(2, FileList.ListPosition);
}

TEST_F(SelectList, CancelChangesNothing)
{
    WalkFileList(2);
    FileList.ListAdjust = 1;
    char path[MaxPathSize] = "as before";
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        Select(dialog, 0);
        PressButton(dialog, IDCANCEL);
    });
    EXPECT_FALSE(ChooseFromFileList(Windows.Main, path));
    EXPECT_STREQ("as before", path);
    EXPECT_EQ(2, FileList.ListPosition);
    EXPECT_EQ(1, FileList.ListAdjust);
}

TEST_F(SelectList, ViewWithoutASelectionBeepsAndStays)
{
    const BeepCounter beeps;
    DialogAnswers answers;
    answers
        .Then([](HWND dialog) {
            Send(dialog, LB_SETCURSEL, static_cast<WPARAM>(-1));
            PressButton(dialog, IDOK);
        })
        .Then([&beeps](HWND dialog) {
            EXPECT_EQ(1, beeps.Count());
            Notify(dialog, LBN_DBLCLK);
            EXPECT_EQ(2, beeps.Count());
            PressButton(dialog, IDCANCEL);
        });
    EXPECT_EQ("", Choose());
    EXPECT_EQ(2, beeps.Count());
    EXPECT_EQ(1, FileList.ListPosition);
}

TEST_F(SelectList, AnEntryThatIsNoLongerInTheListIsNotTaken)
{
    const BeepCounter beeps;
    DialogAnswers answers;
    answers
        .Then([](HWND dialog) {
            ClearFileList();
            AddFileToList(nullptr, "c:\\new\\file.txt", "");
            WalkFileList(1);
            Select(dialog, 2);
            PressButton(dialog, IDOK);
        })
        .ThenPress(IDCANCEL);
    EXPECT_EQ("", Choose());
    EXPECT_EQ(1, beeps.Count());
}

TEST_F(SelectList, TheDetailsButtonShowsAndHidesTheLowerPart)
{
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        EXPECT_EQ("&Details >>", ControlText(dialog, IDC_SELECT_DETAILS));
        RECT separator;
        GetWindowRect(GetDlgItem(dialog, IDC_SELECT_SEPARATOR), &separator);
        RECT whole;
        GetWindowRect(dialog, &whole);
        EXPECT_EQ(separator.top, whole.bottom);

        SetFocus(GetDlgItem(dialog, IDC_SELECT_DETAILS));
        SendMessageA(dialog, WM_COMMAND, IDC_SELECT_DETAILS, 0);
        EXPECT_EQ("<< &Details", ControlText(dialog, IDC_SELECT_DETAILS));
        RECT last;
        GetWindowRect(GetDlgItem(dialog, IDC_SELECT_ATTRIBUTES), &last);
        RECT full;
        GetWindowRect(dialog, &full);
        EXPECT_LT(last.bottom, full.bottom);
        EXPECT_EQ(whole.left, full.left);
        EXPECT_EQ(whole.top, full.top);
        EXPECT_EQ(whole.right, full.right);
        EXPECT_EQ(GetDlgItem(dialog, IDC_SELECT_FILES), GetFocus());

        SendMessageA(dialog, WM_COMMAND, IDC_SELECT_DETAILS, 0);
        EXPECT_EQ("&Details >>", ControlText(dialog, IDC_SELECT_DETAILS));
        EXPECT_EQ(whole.bottom - whole.top, HeightOf(dialog));
        PressButton(dialog, IDCANCEL);
    });
    Choose();
}

TEST_F(SelectList, TheDetailsStayShownTheNextTime)
{
    int height = 0;
    DialogAnswers answers;
    answers
        .Then([&height](HWND dialog) {
            ShowDetails(dialog);
            height = HeightOf(dialog);
            PressButton(dialog, IDCANCEL);
        })
        .Then([&height, this](HWND dialog) {
            EXPECT_TRUE(DetailsAreShown(dialog));
            EXPECT_EQ(height, HeightOf(dialog));
            EXPECT_EQ(LowerCase(Folder.Name()), ControlText(dialog, IDC_SELECT_PATH));
            EXPECT_EQ("4 bytes", ControlText(dialog, IDC_SELECT_SIZE));
            PressButton(dialog, IDCANCEL);
        });
    Choose();
    Choose();
}

TEST_F(SelectList, TheDetailsFollowTheSelection)
{
    Folder.Add("apple.txt", std::string(12345, 'a'));
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        ShowDetails(dialog);
        EXPECT_EQ("4 bytes", ControlText(dialog, IDC_SELECT_SIZE));
        Select(dialog, 1);
        EXPECT_EQ("12,345 bytes", ControlText(dialog, IDC_SELECT_SIZE));
        PressButton(dialog, IDCANCEL);
    });
    Choose();
}

TEST_F(SelectList, DetailsOfAFileOfAnUnknownKind)
{
    ScratchFile file("details.kvq", std::string(1234567, 'x'));
    Intl.Order = DayMonthYear;
    Intl.TimeFormat = 1;
    strcpy(Intl.DateSeparator, ".");
    // Midday of the fifteenth is the fifteenth anywhere that the tests run.
    SYSTEMTIME local = {};
    local.wYear = 1995;
    local.wMonth = 7;
    local.wDay = 15;
    local.wHour = 14;
    local.wMinute = 5;
    SYSTEMTIME utc;
    ASSERT_TRUE(TzSpecificLocalTimeToSystemTime(nullptr, &local, &utc));
    FILETIME time;
    SystemTimeToFileTime(&utc, &time);
    const std::uint64_t ticks = (static_cast<std::uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
    file.SetTime(static_cast<std::int64_t>(ticks / 10000000) - 11644473600);
    SetFileAttributesA(file.Path(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE);
    const Details details = DetailsOf(file.Path());
    const std::string directory = LowerCase(ScratchPath(""));
    EXPECT_EQ(directory.substr(0, directory.size() - 1), details.Path);
    EXPECT_EQ("Unknown", details.Type);
    EXPECT_EQ("15.07.95  14:05", details.Changed);
    EXPECT_EQ("1,234,567 bytes", details.Size);
    EXPECT_EQ("Read-only Archive Hidden ", details.Attributes);
}

TEST_F(SelectList, TheYearIsCountedFrom1900AndTheTwelveHourClockHasNoMark)
{
    ScratchFile file("details.kvq", "");
    SYSTEMTIME local = {};
    local.wYear = 2026;
    local.wMonth = 1;
    local.wDay = 15;
    local.wMinute = 30;
    SYSTEMTIME utc;
    ASSERT_TRUE(TzSpecificLocalTimeToSystemTime(nullptr, &local, &utc));
    FILETIME time;
    SystemTimeToFileTime(&utc, &time);
    const std::uint64_t ticks = (static_cast<std::uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
    file.SetTime(static_cast<std::int64_t>(ticks / 10000000) - 11644473600);
    Intl = IntlSettings{};
    EXPECT_EQ("01/15/126  12:30", DetailsOf(file.Path()).Changed);
}

TEST_F(SelectList, DetailsOfAProgram)
{
    char path[MAX_PATH];
    GetModuleFileNameA(nullptr, path, sizeof path);
    EXPECT_EQ("Windows 32 bit Executable", DetailsOf(path).Type);
}

TEST_F(SelectList, DetailsOfAnArchive)
{
    const ScratchFile file("details.kvq", "member PK\5\6" + std::string(18, '\0'));
    const Details details = DetailsOf(file.Path());
    EXPECT_EQ("Zip File", details.Type);
    EXPECT_EQ("29 bytes", details.Size);
}

TEST_F(SelectList, AFileThatHasVanishedHasNoDetailsButItsPath)
{
    Folder.Remove("apple.txt");
    DialogAnswers answers;
    answers.Then([this](HWND dialog) {
        ShowDetails(dialog);
        EXPECT_NE("", ReadDetails(dialog).Size);
        Select(dialog, 1);
        const Details details = ReadDetails(dialog);
        EXPECT_EQ(LowerCase(Folder.Name()), details.Path);
        EXPECT_EQ("", details.Type);
        EXPECT_EQ("", details.Changed);
        EXPECT_EQ("", details.Size);
        EXPECT_EQ("", details.Attributes);
        PressButton(dialog, IDCANCEL);
    });
    Choose();
}

TEST_F(SelectList, ADriveAloneIsShownWithItsBackslash)
{
    EXPECT_EQ("c:\\", DetailsOf("c:file.txt").Path);
    EXPECT_EQ("c:\\", DetailsOf("c:\\file.txt").Path);
}

TEST_F(SelectList, ADirectoryIsShownWithoutABackslash)
{
    EXPECT_EQ("c:\\windows", DetailsOf("C:\\WINDOWS\\file.txt").Path);
}
