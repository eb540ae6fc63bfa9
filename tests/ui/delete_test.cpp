#include "support/dialogs.h"
#include "support/file_list.h"
#include "support/find_dialog.h"
#include "support/input.h"
#include "support/ui_test.h"

namespace {

constexpr char DeleteTitle[] = "Confirm File Delete";
constexpr char Deleted[] = "File has been deleted ";
constexpr char Failed[] = "Deletion request failed. The file may be write protected or on a read-only device.";

constexpr int ManyLines = 20000; // of a file that is kept open: it has many blocks

class DeleteTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }

    // Returns the names in the order that the system finds them in.
    std::vector<std::string> WriteList(const std::vector<std::string>& names) const
    {
        Files.WriteAll(names);
        return Files.Find("*.txt");
    }

    TestDirectory Files{"delete"};
};

using Names = std::vector<std::string>;

HWND AskToDelete(const Program& program)
{
    program.Post(WM_COMMAND, IDM_FILE_DELETE);
    return WaitForDialog(program, DeleteTitle);
}

// Answers with real keys, and waits until the question is gone.
bool Answer(HWND dialog, std::initializer_list<WORD> keys)
{
    if (!BringToForeground(dialog)) {
        return false;
    }
    PressKeys(keys);
    return WaitUntilClosed(dialog);
}

// Asks, and answers with the Yes button. What comes of it may be a message box.
void Delete(const Program& program)
{
    const HWND dialog = AskToDelete(program);
    ASSERT_NE(dialog, nullptr);
    PressControl(dialog, IDC_DELETE_YES);
    ASSERT_TRUE(WaitUntilClosed(dialog));
}

// Asks for the file to be deleted and waits until it is, and everything about it shown.
void DeleteAndWait(Program& program)
{
    Delete(program);
    EXPECT_TRUE(program.WaitForTitle(""));
    EXPECT_TRUE(WaitUntil([&] { return program.StatusText() == Deleted; })) << program.StatusText();
}

void ExpectNoFile(Program& program)
{
    EXPECT_EQ(program.Title(), "Kestovar");
    EXPECT_TRUE(program.ViewTexts().empty());
    for (const UINT id :
         {IDM_FILE_CLOSE, IDM_FILE_LAUNCH, IDM_FILE_DELETE, IDM_FILE_PRINT, IDM_FILE_INFORMATION, IDM_EDIT_SELECT_ALL,
          IDM_EDIT_FILE, IDM_SEARCH_FIND, IDM_SEARCH_GOTO, IDM_VIEW_LOCK, IDM_FONT_INCREASE, IDM_FONT_DECREASE}) {
        EXPECT_TRUE(program.Menu(id).Greyed) << id;
    }
}

// Whether the numbered lines can be seen, from the first to the last.
void ExpectLinesShown(Program& program, int lines)
{
    EXPECT_FALSE(program.Menu(IDM_FILE_DELETE).Greyed);
    SetTop(program, 0);
    EXPECT_EQ(program.TopText(), "Line 1");
    for (const int line : {lines / 3, lines / 2, lines - 100}) {
        SetTop(program, line);
        EXPECT_EQ(program.TopText(), "Line " + std::to_string(line + 1));
    }
    Scroll(program, WM_VSCROLL, SB_BOTTOM);
    EXPECT_EQ(program.Top(), lines - RowsOf(program));
    EXPECT_EQ(program.ViewTexts().back().Text, "Line " + std::to_string(lines));
}

void ExpectRefusal(Program& program, int lines)
{
    Delete(program);
    EXPECT_EQ(program.AnswerBox(), Failed);
    ASSERT_TRUE(WaitForKeyboard(program));
    ExpectLinesShown(program, lines);
}

// A handle beside which nobody can delete the file.
class WithoutDeleteSharing {
public:
    WithoutDeleteSharing(const std::string& path, DWORD sharing)
        : Handle(CreateFileA(path.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr))
    {
        EXPECT_NE(Handle, INVALID_HANDLE_VALUE) << path << ", error " << GetLastError();
    }
    ~WithoutDeleteSharing() { CloseHandle(Handle); }
    WithoutDeleteSharing(const WithoutDeleteSharing&) = delete;
    WithoutDeleteSharing& operator=(const WithoutDeleteSharing&) = delete;

private:
    HANDLE Handle;
};

// Waits for the list and walks to the position, the first being 1.
void OpenListAt(Program& program, const Names& names, std::size_t position)
{
    ASSERT_TRUE(program.WaitForFrame());
    for (std::size_t i = 1; i < position; ++i) {
        program.Command(IDM_FILE_NEXT);
    }
    ASSERT_TRUE(WaitForFile(program, names[position - 1],
                            "[File " + std::to_string(position) + " of " + std::to_string(names.size()) + "]"));
}

// The icon of the question, as it is on the screen.
Pixels ReadIcon(Program& program, HWND dialog)
{
    const HWND icon = GetDlgItem(dialog, IDC_DELETE_ICON);
    const SIZE size = ClientSize(icon);
    return program.Inside().Read(icon, 0, 0, size.cx, size.cy);
}

// The system's warning on a dialog's background.
std::vector<std::uint32_t> WarningOn(int width, int height)
{
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height; // rows from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const HDC screen = GetDC(nullptr);
    const HDC picture = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ former = SelectObject(picture, bitmap);
    const RECT all = {0, 0, width, height};
    FillRect(picture, &all, GetSysColorBrush(COLOR_BTNFACE));
    DrawIcon(picture, 0, 0, LoadIconA(nullptr, reinterpret_cast<LPCSTR>(IDI_EXCLAMATION)));
    GdiFlush();
    const auto* const first = static_cast<const std::uint32_t*>(bits);
    std::vector<std::uint32_t> pixels(first, first + width * height);
    for (std::uint32_t& pixel : pixels) {
        pixel &= 0xFFFFFF;
    }
    SelectObject(picture, former);
    DeleteObject(bitmap);
    DeleteDC(picture);
    ReleaseDC(nullptr, screen);
    return pixels;
}

} // namespace

TEST_F(DeleteTest, TheMenuKeysAskAndAltYDeletes)
{
    const std::string path = Files.Write("one.txt", NumberedLines(100));
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(WaitForKeyboard(program));
    ASSERT_TRUE(OpenMenu(program, 'F'));
    PressKeys({'D'});
    const HWND dialog = WaitForDialog(program, DeleteTitle);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), program.Frame());
    EXPECT_FALSE(IsWindowEnabled(program.Frame()));
    EXPECT_TRUE(FileExists(path));
    ASSERT_TRUE(Answer(dialog, {VK_MENU, 'Y'}));
    EXPECT_TRUE(program.WaitForTitle(""));
    EXPECT_TRUE(WaitUntil([&] { return program.StatusText() == Deleted; })) << program.StatusText();
    EXPECT_FALSE(FileExists(path));
    ExpectNoFile(program);
    EXPECT_FALSE(CanGoOn(program));
    EXPECT_FALSE(CanGoBack(program));
    EXPECT_FALSE(program.ShowsBox());
    EXPECT_TRUE(WaitForKeyboard(program));
}

TEST_F(DeleteTest, TheQuestionNamesTheFile)
{
    Program program(Files.Write("one.txt", "one"));
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = AskToDelete(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, IDC_DELETE_PATH), Files.PathOf("one.txt"));
    EXPECT_EQ(ControlText(dialog, IDC_DELETE_YES), "&Yes");
    EXPECT_EQ(ControlText(dialog, IDC_DELETE_NO), "&No");
    const HWND question = GetWindow(GetDlgItem(dialog, IDC_DELETE_ICON), GW_HWNDNEXT);
    char text[100] = "";
    program.Send(question, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    EXPECT_STREQ(text, "Are you sure you want to delete:");
    EXPECT_LE(ExtentOf(text).cx, ClientSize(question).cx);
    EXPECT_LE(ExtentOf(text).cy, ClientSize(question).cy);
    EXPECT_TRUE(Answer(dialog, {VK_ESCAPE}));
}

TEST_F(DeleteTest, EnterTheEscapeKeyAltNAndTheCloseBoxMeanNo)
{
    const std::string path = Files.Write("one.txt", NumberedLines(500));
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    const std::string status = program.StatusText();
    const std::vector<std::initializer_list<WORD>> answers = {{VK_RETURN}, {VK_ESCAPE}, {VK_MENU, 'N'}, {VK_SPACE}};
    for (const std::initializer_list<WORD>& keys : answers) {
        const HWND dialog = AskToDelete(program);
        ASSERT_NE(dialog, nullptr);
        EXPECT_TRUE(WaitUntil([&] { return FocusOf(dialog) == GetDlgItem(dialog, IDC_DELETE_NO); }));
        ASSERT_TRUE(Answer(dialog, keys));
        ASSERT_TRUE(WaitForKeyboard(program));
        EXPECT_TRUE(FileExists(path));
    }
    const HWND dialog = AskToDelete(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(PostMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0));
    ASSERT_TRUE(WaitUntilClosed(dialog));
    ASSERT_TRUE(WaitForKeyboard(program));
    EXPECT_FALSE(program.ShowsBox());
    EXPECT_TRUE(FileExists(path));
    EXPECT_EQ(program.Title(), "Kestovar-one.txt");
    EXPECT_EQ(program.StatusText(), status);
    ExpectLinesShown(program, 500);
}

TEST_F(DeleteTest, TheWarningIsPaintedAndPaintedAgainWhenItWasCovered)
{
    Program program(Files.Write("one.txt", "one"));
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = AskToDelete(program);
    ASSERT_NE(dialog, nullptr);
    const SIZE size = ClientSize(GetDlgItem(dialog, IDC_DELETE_ICON));
    EXPECT_GE(size.cx, GetSystemMetrics(SM_CXICON)); // the whole of it fits
    EXPECT_GE(size.cy, GetSystemMetrics(SM_CYICON));
    const std::vector<std::uint32_t> warning = WarningOn(size.cx, size.cy);
    const auto isShown = [&] { return ReadIcon(program, dialog).Values == warning; };
    EXPECT_TRUE(WaitUntil(isShown));
    const RECT place = PlaceOf(dialog);
    const HWND cover =
        CreateWindowExA(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, "EDIT", "", WS_POPUP | WS_VISIBLE, place.left, place.top,
                        place.right - place.left, place.bottom - place.top, nullptr, nullptr, nullptr, nullptr);
    EXPECT_TRUE(WaitUntil([&] { return WindowFromPoint({place.left + 20, place.top + 40}) == cover; }));
    DestroyWindow(cover);
    EXPECT_TRUE(WaitUntil(isShown));
    // What is hidden has to be painted anew by all means.
    ShowWindow(dialog, SW_HIDE);
    ASSERT_TRUE(WaitUntil([&] { return !IsWindowVisible(dialog); }));
    ShowWindow(dialog, SW_SHOW);
    EXPECT_TRUE(WaitUntil(isShown));
    PressControl(dialog, IDC_DELETE_NO);
    EXPECT_TRUE(WaitUntilClosed(dialog));
}

TEST_F(DeleteTest, APathOf35CharactersIsAskedAboutWholeALongerOneIsShortened)
{
    const std::string fits = Files.Write(std::string(14, 'n') + ".txt", "one");
    const std::string longer = Files.Write(std::string(15, 'n') + ".txt", "one");
    ASSERT_EQ(fits.size(), 35u);
    Program program(fits);
    ASSERT_TRUE(program.WaitForFrame());
    HWND dialog = AskToDelete(program);
    ASSERT_NE(dialog, nullptr);
    const std::string whole = Files.PathOf(std::string(14, 'n') + ".txt");
    EXPECT_EQ(ControlText(dialog, IDC_DELETE_PATH), whole);
    EXPECT_LE(ExtentOf(whole).cx, ClientSize(GetDlgItem(dialog, IDC_DELETE_PATH)).cx);
    EXPECT_LE(ExtentOf(whole).cy, ClientSize(GetDlgItem(dialog, IDC_DELETE_PATH)).cy);
    EXPECT_TRUE(Answer(dialog, {VK_ESCAPE}));
    program.Inside().Drop(program.Frame(), longer);
    ASSERT_TRUE(program.WaitForTitle(std::string(15, 'n') + ".txt"));
    dialog = AskToDelete(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, IDC_DELETE_PATH), "c:\\...\\delete\\" + std::string(15, 'n') + ".txt");
    EXPECT_TRUE(Answer(dialog, {VK_MENU, 'Y'}));
    EXPECT_TRUE(program.WaitForTitle(""));
    EXPECT_FALSE(FileExists(longer));
    EXPECT_TRUE(FileExists(fits));
}

TEST_F(DeleteTest, AFileOfManyBlocksIsDeleted)
{
    const std::string path = Files.Write("one.txt", NumberedLines(ManyLines));
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    SetTop(program, ManyLines / 2);
    DeleteAndWait(program);
    EXPECT_FALSE(FileExists(path));
    ExpectNoFile(program);
    // Another file of that name is another file.
    program.Inside().Drop(program.Frame(), Files.Write("one.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForTitle("one.txt"));
    ASSERT_TRUE(program.Answers());
    ExpectLinesShown(program, 500);
}

TEST_F(DeleteTest, AnEmptyFileIsDeleted)
{
    const std::string path = Files.Write("empty.txt", "");
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    DeleteAndWait(program);
    EXPECT_FALSE(FileExists(path));
    ExpectNoFile(program);
}

TEST_F(DeleteTest, AFileShownInHexIsDeleted)
{
    const std::string path = Files.Write("data.bin", std::string(100000, '\x02'));
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    Scroll(program, WM_VSCROLL, SB_BOTTOM);
    DeleteAndWait(program);
    EXPECT_FALSE(FileExists(path));
    ExpectNoFile(program);
}

TEST_F(DeleteTest, FilesOfUnusualNamesAreDeleted)
{
    const Names names = {
        "a name with  blanks .and dots.txt", "no extension",
        "several.dots.in.the.name",          "&ersand & more.txt",
        "\xE4\xF6\xFC\xDF \xE9\xE8\xF1.txt", std::string(259 - Files.PathOf("").size() - 4, 'l') + ".txt"};
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        const std::string path = Files.Write(name, "one");
        program.Inside().Drop(program.Frame(), path);
        ASSERT_TRUE(program.WaitForTitle(name)) << program.Title();
        const HWND dialog = AskToDelete(program);
        ASSERT_NE(dialog, nullptr);
        if (path.size() <= 35) {
            EXPECT_EQ(ControlText(dialog, IDC_DELETE_PATH), Files.PathOf(name));
        }
        EXPECT_TRUE(Answer(dialog, {VK_ESCAPE}));
        EXPECT_TRUE(FileExists(path));
        DeleteAndWait(program);
        EXPECT_FALSE(FileExists(path));
    }
    EXPECT_TRUE(Files.Find("*").empty());
}

TEST_F(DeleteTest, AWriteProtectedFileStaysAndIsStillShown)
{
    for (const int lines : {500, ManyLines}) {
        SCOPED_TRACE(lines);
        const std::string path = Files.Write(std::to_string(lines) + ".txt", NumberedLines(lines));
        ASSERT_TRUE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY));
        Program program(path);
        ASSERT_TRUE(program.WaitForFrame());
        ExpectRefusal(program, lines);
        EXPECT_EQ(program.Title(), "Kestovar-" + std::to_string(lines) + ".txt");
        ASSERT_TRUE(FileExists(path));
        // It can be tried again.
        ASSERT_TRUE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL));
        DeleteAndWait(program);
        EXPECT_FALSE(FileExists(path));
    }
}

TEST_F(DeleteTest, AFileThatAnotherProgramKeepsOpenStaysAndIsStillShown)
{
    for (const int lines : {500, ManyLines}) {
        SCOPED_TRACE(lines);
        const std::string path = Files.Write(std::to_string(lines) + ".txt", NumberedLines(lines));
        Program program(path);
        ASSERT_TRUE(program.WaitForFrame());
        {
            const WithoutDeleteSharing user(path, FILE_SHARE_READ | FILE_SHARE_WRITE);
            ExpectRefusal(program, lines);
        }
        EXPECT_TRUE(FileExists(path));
        DeleteAndWait(program);
        EXPECT_FALSE(FileExists(path));
    }
}

TEST_F(DeleteTest, AFailedDeleteLeavesTheListAsItIs)
{
    WriteSettings(FixedFont + std::string("LoadOnDelete=1\n"));
    const Names names = WriteList({"a.txt", "b.txt", "c.txt"});
    ASSERT_TRUE(SetFileAttributesA(Files.PathOf(names[1]).c_str(), FILE_ATTRIBUTE_READONLY));
    Program program(Files.PathOf("*.txt"));
    OpenListAt(program, names, 2);
    Delete(program);
    EXPECT_EQ(program.AnswerBox(), Failed);
    EXPECT_TRUE(WaitForFile(program, names[1], "[File 2 of 3]"));
    EXPECT_EQ(program.TopText(), names[1]);
    program.Command(IDM_FILE_PREVIOUS);
    EXPECT_TRUE(WaitForFile(program, names[0], "[File 1 of 3]"));
}

TEST_F(DeleteTest, AWindowThatWasAnIconAfterAFailedDeleteShowsTheFile)
{
    for (const int lines : {500, ManyLines}) {
        SCOPED_TRACE(lines);
        const std::string path = Files.Write(std::to_string(lines) + ".txt", NumberedLines(lines));
        ASSERT_TRUE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY));
        Program program(path);
        ASSERT_TRUE(program.WaitForFrame());
        ExpectRefusal(program, lines);
        program.Post(WM_SYSCOMMAND, SC_MINIMIZE);
        ASSERT_TRUE(WaitUntil([&] { return IsIconic(program.Frame()) != FALSE && program.Answers(); }));
        program.Post(WM_SYSCOMMAND, SC_RESTORE);
        ASSERT_TRUE(WaitUntil([&] { return !IsIconic(program.Frame()) && program.Answers(); }));
        EXPECT_TRUE(WaitForKeyboard(program));
        EXPECT_FALSE(program.ShowsBox());
        ExpectLinesShown(program, lines);
        EXPECT_EQ(program.Close(), 0u);
    }
}

TEST_F(DeleteTest, AFileHandedOverWhileTheQuestionIsOpenIsNotDeleted)
{
    WriteSettings(FixedFont + std::string("LoadOnDelete=1\n"));
    const Names names = WriteList({"a.txt", "b.txt", "c.txt"});
    const std::string other = Files.Write("other.log", "other");
    Program program(Files.PathOf("*.txt"));
    OpenListAt(program, names, 2);
    const HWND dialog = AskToDelete(program);
    ASSERT_NE(dialog, nullptr);
    program.Inside().Drop(program.Frame(), other);
    ASSERT_TRUE(program.WaitForTitle("other.log"));
    EXPECT_EQ(ControlText(dialog, IDC_DELETE_PATH), Files.PathOf(names[1]));
    ASSERT_TRUE(Answer(dialog, {VK_MENU, 'Y'}));
    ASSERT_TRUE(WaitForKeyboard(program));
    EXPECT_FALSE(program.ShowsBox());
    EXPECT_EQ(program.Title(), "Kestovar-other.log");
    EXPECT_EQ(program.TopText(), "other");
    EXPECT_TRUE(FileExists(other));
    EXPECT_EQ(Files.Find("*.txt").size(), 3u);
}

TEST_F(DeleteTest, ASmallFileThatIsGoneAlreadyIsReportedAndStillShown)
{
    const std::string path = Files.Write("one.txt", NumberedLines(500));
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = AskToDelete(program);
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(DeleteFileA(path.c_str()));
    PressControl(dialog, IDC_DELETE_YES);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    EXPECT_EQ(program.AnswerBox(), Failed);
    ASSERT_TRUE(WaitForKeyboard(program));
    EXPECT_FALSE(program.ShowsBox());
    EXPECT_EQ(program.Title(), "Kestovar-one.txt");
    ExpectLinesShown(program, 500); // it is held whole
    program.Inside().Drop(program.Frame(), Files.Write("two.txt", "two"));
    EXPECT_TRUE(program.WaitForTitle("two.txt"));
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(DeleteTest, ASmallFileThatAnotherProgramHasForItselfStaysInItsList)
{
    WriteSettings(FixedFont + std::string("LoadOnDelete=1\n"));
    const Names names = WriteList({"a.txt", "b.txt", "c.txt"});
    Program program(Files.PathOf("*.txt"));
    OpenListAt(program, names, 2);
    {
        const WithoutDeleteSharing user(Files.PathOf(names[1]), 0);
        Delete(program);
        EXPECT_EQ(program.AnswerBox(), Failed);
        ASSERT_TRUE(WaitForKeyboard(program));
        EXPECT_TRUE(WaitForFile(program, names[1], "[File 2 of 3]"));
    }
    EXPECT_TRUE(CanGoOn(program));
    EXPECT_TRUE(CanGoBack(program));
    EXPECT_EQ(Files.Find("*.txt").size(), 3u);
}

TEST_F(DeleteTest, TheFirstOfAListIsDeletedAndTheNextOneFollows)
{
    const Names names = WriteList({"a.txt", "b.txt", "c.txt"});
    Program program(Files.PathOf("*.txt"));
    OpenListAt(program, names, 1);
    DeleteAndWait(program);
    ExpectNoFile(program);
    EXPECT_FALSE(CanGoBack(program));
    ASSERT_TRUE(CanGoOn(program));
    program.Command(IDM_FILE_NEXT);
    EXPECT_TRUE(WaitForFile(program, names[1], "[File 1 of 2]"));
    EXPECT_FALSE(CanGoBack(program));
    program.Command(IDM_FILE_NEXT);
    EXPECT_TRUE(WaitForFile(program, names[2], "[File 2 of 2]"));
    EXPECT_FALSE(FileExists(Files.PathOf(names[0])));
}

TEST_F(DeleteTest, ADeletedFileInTheMiddleOfAListHasItsNeighboursOnBothSides)
{
    for (const UINT command : {IDM_FILE_NEXT, IDM_FILE_PREVIOUS}) {
        SCOPED_TRACE(command);
        const Names names = WriteList({"a.txt", "b.txt", "c.txt"});
        Program program(Files.PathOf("*.txt"));
        OpenListAt(program, names, 2);
        DeleteAndWait(program);
        ExpectNoFile(program);
        EXPECT_TRUE(CanGoOn(program));
        EXPECT_TRUE(CanGoBack(program));
        program.Command(command);
        const bool next = command == IDM_FILE_NEXT;
        EXPECT_TRUE(WaitForFile(program, names[next ? 2 : 0], next ? "[File 2 of 2]" : "[File 1 of 2]"));
        EXPECT_EQ(CanGoOn(program), !next);
        EXPECT_EQ(CanGoBack(program), next);
        program.Command(next ? IDM_FILE_PREVIOUS : IDM_FILE_NEXT);
        EXPECT_TRUE(WaitForFile(program, names[next ? 0 : 2], next ? "[File 1 of 2]" : "[File 2 of 2]"));
    }
}

TEST_F(DeleteTest, TheLastOfAListIsDeletedAndTheOneBeforeItIsThePreviousOne)
{
    const Names names = WriteList({"a.txt", "b.txt", "c.txt"});
    Program program(Files.PathOf("*.txt"));
    OpenListAt(program, names, 3);
    DeleteAndWait(program);
    ExpectNoFile(program);
    EXPECT_FALSE(CanGoOn(program));
    ASSERT_TRUE(CanGoBack(program));
    ASSERT_TRUE(WaitForKeyboard(program));
    PressKeys({VK_CONTROL, VK_PRIOR});
    EXPECT_TRUE(WaitForFile(program, names[1], "[File 2 of 2]"));
    PressKeys({VK_CONTROL, VK_PRIOR});
    EXPECT_TRUE(WaitForFile(program, names[0], "[File 1 of 2]"));
    EXPECT_FALSE(CanGoBack(program));
}

TEST_F(DeleteTest, WithoutItsLastFileThereIsNoList)
{
    const Names names = WriteList({"a.txt", "b.txt"});
    Program program(Files.PathOf("*.txt"));
    OpenListAt(program, names, 1);
    DeleteAndWait(program);
    program.Command(IDM_FILE_NEXT);
    ASSERT_TRUE(WaitForFile(program, names[1], "[File 1 of 1]"));
    DeleteAndWait(program);
    ExpectNoFile(program);
    EXPECT_FALSE(CanGoOn(program));
    EXPECT_FALSE(CanGoBack(program));
    EXPECT_TRUE(Files.Find("*.txt").empty());
    program.Inside().Drop(program.Frame(), Files.Write("new.txt", "new"));
    EXPECT_TRUE(WaitForFile(program, "new.txt", ""));
}

TEST_F(DeleteTest, LoadOnDeleteShowsTheNextFileOrTheOneBeforeTheLast)
{
    WriteSettings(FixedFont + std::string("LoadOnDelete=1\n"));
    struct Step {
        std::size_t Position;
        std::size_t Shown;
        const char* ListPart;
    };
    for (const Step& step : {Step{1, 2, "[File 1 of 2]"}, Step{2, 3, "[File 2 of 2]"}, Step{3, 2, "[File 2 of 2]"}}) {
        SCOPED_TRACE(step.Position);
        const Names names = WriteList({"a.txt", "b.txt", "c.txt"});
        Program program(Files.PathOf("*.txt"));
        OpenListAt(program, names, step.Position);
        Delete(program);
        EXPECT_TRUE(WaitForFile(program, names[step.Shown - 1], step.ListPart));
        EXPECT_EQ(program.TopText(), names[step.Shown - 1]);
        EXPECT_FALSE(FileExists(Files.PathOf(names[step.Position - 1])));
        const bool first = step.Position == 1;
        EXPECT_EQ(CanGoOn(program), first);
        EXPECT_EQ(CanGoBack(program), !first);
        program.Command(first ? IDM_FILE_NEXT : IDM_FILE_PREVIOUS);
        EXPECT_TRUE(WaitForFile(program, names[first ? 2 : 0], first ? "[File 2 of 2]" : "[File 1 of 2]"));
        EXPECT_EQ(Files.Find("*.txt").size(), 2u);
    }
}

TEST_F(DeleteTest, LoadOnDeleteOpensTheRemainingOneOfTwo)
{
    WriteSettings(FixedFont + std::string("LoadOnDelete=1\n"));
    const Names names = WriteList({"a.txt", "b.txt"});
    Program program(Files.PathOf("*.txt"));
    OpenListAt(program, names, 2);
    Delete(program);
    EXPECT_TRUE(WaitForFile(program, names[0], "[File 1 of 1]"));
    EXPECT_FALSE(CanGoOn(program));
    EXPECT_FALSE(CanGoBack(program));
    EXPECT_EQ(Files.Find("*.txt"), Names{names[0]});
    // Behind the last there is none to load.
    DeleteAndWait(program);
    ExpectNoFile(program);
    EXPECT_TRUE(Files.Find("*.txt").empty());
}

TEST_F(DeleteTest, LoadOnDeleteGoesThroughTheWholeList)
{
    WriteSettings(FixedFont + std::string("LoadOnDelete=1\n"));
    const Names names = WriteList({"a.txt", "b.txt", "c.txt", "d.txt", "e.txt"});
    Program program(Files.PathOf("*.txt"));
    OpenListAt(program, names, 1);
    for (std::size_t i = 1; i < names.size(); ++i) {
        Delete(program);
        ASSERT_TRUE(WaitForFile(program, names[i], "[File 1 of " + std::to_string(names.size() - i) + "]"));
    }
    DeleteAndWait(program);
    ExpectNoFile(program);
    EXPECT_TRUE(Files.Find("*.txt").empty());
}

TEST_F(DeleteTest, LoadOnDeleteWithoutAListLoadsNothing)
{
    WriteSettings(FixedFont + std::string("LoadOnDelete=1\n"));
    Files.WriteAll({"a.txt", "b.txt"});
    Program program(Files.PathOf("a.txt"));
    ASSERT_TRUE(program.WaitForFrame());
    DeleteAndWait(program);
    ExpectNoFile(program);
    EXPECT_EQ(Files.Find("*.txt"), Names{"b.txt"});
}

TEST_F(DeleteTest, WithoutAFileNothingIsAsked)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_FILE_DELETE);
    EXPECT_EQ(FindDialog(program, DeleteTitle), nullptr);
    EXPECT_FALSE(program.ShowsBox());
    EXPECT_TRUE(program.Menu(IDM_FILE_DELETE).Greyed);
}
