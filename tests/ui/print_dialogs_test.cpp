// The dialogs of printing, and jobs that are cancelled or fail.
#include "support/button_bar.h"
#include "support/dialogs.h"
#include "support/file_list.h"
#include "support/find_dialog.h"
#include "support/input.h"
#include "support/printed_pages.h"
#include "support/test_printer.h"
#include "support/ui_test.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <set>

namespace {

constexpr char PrintTitle[] = "Print File";
constexpr char StatusTitle[] = "Print Status";
constexpr char PageTitle[] = "Page Setup";
constexpr char HeadFontTitle[] = "Header and Footer Font";
constexpr char BodyFontTitle[] = "Body Font";

// The system's own dialogs.
constexpr char PrinterSetupTitle[] = "Print Setup";
constexpr int SetupPrinters = 1136;
constexpr char FileQuestionTitle[] = "Print to File"; // of a printer at the port FILE:
constexpr int ChooserFaces = 1136;
constexpr int ChooserStyles = 1137;
constexpr int ChooserSizes = 1138;

constexpr char NoPrinter[] = "A printer is not currently available for this operation. Use the Windows Control Panel "
                             "to define your printer to Windows ";
constexpr char BadMargins[] = "The margin values are incorrect. Either they are not valid numeric values, or they do "
                              "not fit the selected page size.";
constexpr char PrintFailed[] = "Printing failed or was incomplete";

// The system's measurement units for as long as the object lives.
class SystemUnits {
public:
    explicit SystemUnits(const char* measure)
    {
        char before[8] = "";
        GetProfileStringA("intl", "iMeasure", "", before, sizeof before);
        Before = before;
        EXPECT_TRUE(WriteProfileStringA("intl", "iMeasure", measure));
    }
    ~SystemUnits() { WriteProfileStringA("intl", "iMeasure", Before.empty() ? nullptr : Before.c_str()); }
    SystemUnits(const SystemUnits&) = delete;
    SystemUnits& operator=(const SystemUnits&) = delete;

private:
    std::string Before;
};

constexpr char Inches[] = "1";
constexpr char Centimetres[] = "0";

// There is no printer but those that a test has made.
class WithoutPrinterTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }

    static std::string Lines() { return WriteScratch("lines.txt", NumberedLines(20)); }

    const SystemUnits Units{Inches};
};

class PrintDialogTest : public WithoutPrinterTest {
protected:
    bool IsPrinted() const { return FileExists(Output); }

    const std::string Output = PrintedPath("dialogs");
    TestPrinter Printer{Output};
};

class PageSetupTest : public PrintDialogTest {};

// A job that would take a minute.
class LongJobTest : public PrintDialogTest {
protected:
    void SetUp() override
    {
        WithoutPrinterTest::SetUp();
        WriteSettings(std::string(FixedFont) + "TopMargin=4.9\nBottomMargin=4.9\n"); // leave one line on a page
        WriteScratch("long.txt", NumberedLines(60000));
    }

    static std::string Long() { return ScratchPath("long.txt"); }
};

HWND ShowPrint(const Program& program)
{
    program.Post(WM_COMMAND, IDM_FILE_PRINT);
    return WaitForDialog(program, PrintTitle);
}

HWND ShowPageSetup(const Program& program)
{
    program.Post(WM_COMMAND, IDM_FILE_PAGE_SETUP);
    return WaitForDialog(program, PageTitle);
}

void Confirm(HWND dialog)
{
    PressControl(dialog, IDOK);
    ASSERT_TRUE(WaitUntilClosed(dialog));
}

void Cancel(HWND dialog)
{
    PressControl(dialog, IDCANCEL);
    ASSERT_TRUE(WaitUntilClosed(dialog));
}

void Click(HWND dialog, int control, bool checked)
{
    PressControl(dialog, control);
    ExpectChecked(dialog, control, checked);
}

bool IsSaved(const std::string& key)
{
    return SettingValue(key) != "(none)";
}

struct Choice {
    int Control;
    const char* Key;
};

constexpr Choice PrintChoices[] = {{IDC_PRINT_DEFAULT_FONT, "PrintDefFont"},
                                   {IDC_PRINT_FORM_FEEDS, "ProcFF"},
                                   {IDC_PRINT_WRAP, "WrapOutput"},
                                   {IDC_PRINT_HEADERS, "PrintHF"}};

constexpr Choice PageFields[] = {{IDC_PAGE_HEADER, "Header"},   {IDC_PAGE_FOOTER, "Footer"},
                                 {IDC_PAGE_LEFT, "LeftMargin"}, {IDC_PAGE_RIGHT, "RightMargin"},
                                 {IDC_PAGE_TOP, "TopMargin"},   {IDC_PAGE_BOTTOM, "BottomMargin"}};

using Texts = std::vector<std::string>;

// Of the fields in their order.
Texts FieldTexts(HWND dialog)
{
    Texts texts;
    for (const Choice& field : PageFields) {
        texts.push_back(ControlText(dialog, field.Control));
    }
    return texts;
}

Texts SavedFields()
{
    Texts texts;
    for (const Choice& field : PageFields) {
        texts.push_back(SettingValue(field.Key));
    }
    return texts;
}

LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
{
    DWORD_PTR result = 0;
    EXPECT_NE(SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, DefaultWaitLimit, &result), 0);
    return static_cast<LRESULT>(result);
}

// Chooses an entry of a combo box as a click on it does.
void ChooseEntry(HWND dialog, int combo, const std::string& text)
{
    const std::vector<std::string> entries = ComboTexts(dialog, combo);
    const auto entry = std::find(entries.begin(), entries.end(), text);
    ASSERT_NE(entry, entries.end()) << text << " in " << testing::PrintToString(entries);
    Ask(GetDlgItem(dialog, combo), CB_SETCURSEL, static_cast<WPARAM>(entry - entries.begin()));
    Ask(dialog, WM_COMMAND, MAKEWPARAM(combo, CBN_SELCHANGE), reinterpret_cast<LPARAM>(GetDlgItem(dialog, combo)));
    ExpectText(dialog, combo, text);
}

void ChooseFont(const Program& program, HWND dialog, int button, const char* title, const char* face,
                const char* points)
{
    PressControl(dialog, button);
    const HWND chooser = WaitForDialog(program, title);
    ASSERT_NE(chooser, nullptr);
    ChooseEntry(chooser, ChooserFaces, face);
    ChooseEntry(chooser, ChooserSizes, points);
    Confirm(chooser);
}

// The height that a size has on the screen.
std::string HeightOf(int points)
{
    const HDC screen = GetDC(nullptr);
    const int height = MulDiv(points, GetDeviceCaps(screen, LOGPIXELSY), 72);
    ReleaseDC(nullptr, screen);
    return std::to_string(height);
}

// Asks and confirms; the status box of the job, which has to last for a while.
HWND StartJob(const Program& program)
{
    const HWND dialog = ShowPrint(program);
    if (dialog == nullptr) {
        return nullptr;
    }
    Confirm(dialog);
    return WaitForDialog(program, StatusTitle);
}

// Prints the file, and waits until the job is over.
void Print(const Program& program, const std::string& output)
{
    const HWND dialog = ShowPrint(program);
    ASSERT_NE(dialog, nullptr);
    Confirm(dialog);
    ASSERT_TRUE(WaitForPrinted(output));
    EXPECT_TRUE(program.Answers());
}

// The page that the status box says is being printed; 0 when it says something else.
int PageShown(HWND status)
{
    int page = 0;
    const std::string text = ControlText(status, IDC_STATUS_PAGE);
    return sscanf(text.c_str(), "Page %d", &page) == 1 && text == "Page " + std::to_string(page) ? page : 0;
}

// Whether the job goes on by two pages: what was posted before has then been handled.
bool GoesOn(HWND status)
{
    const int before = PageShown(status);
    return WaitUntil([&] { return PageShown(status) >= before + 2; });
}

// The job waits while the menu of its box is open.
bool Pause(const Program& program, HWND status)
{
    if (!BringToForeground(status)) {
        return false;
    }
    PressKeys({VK_MENU, VK_SPACE});
    return WaitUntil([&] { return IsInMenu(program); });
}

// Leaves the menu, which is left for its bar first, and presses Esc once more, in one go.
void PressEscapeBehindMenu()
{
    INPUT inputs[6] = {};
    for (std::size_t i = 0; i < std::size(inputs); ++i) {
        inputs[i].type = INPUT_KEYBOARD;
        inputs[i].ki.wVk = VK_ESCAPE;
        inputs[i].ki.dwFlags = i % 2 == 0 ? 0 : KEYEVENTF_KEYUP;
    }
    SendInput(std::size(inputs), inputs, sizeof(INPUT));
}

int PagesIn(const std::string& path)
{
    const std::string content = ReadWholeFile(path);
    int count = 0;
    for (std::size_t at = content.find("%%Page:"); at != std::string::npos; at = content.find("%%Page:", at + 1)) {
        ++count;
    }
    return count;
}

// The rows of a window that were written, told from their height.
std::set<int> RowsWritten(HWND window, const std::vector<ProbeText>& texts)
{
    std::set<int> rows;
    for (const ProbeText& text : texts) {
        if (text.Window == window) {
            rows.insert(text.Y);
        }
    }
    return rows;
}

bool IsFrontWindow(const Program& program)
{
    return WaitUntil([&] { return GetForegroundWindow() == program.Frame() && IsWindowEnabled(program.Frame()); });
}

// Hands a file over as another process does: what the program answers to its name.
LRESULT HandOver(const Program& program, const std::string& path)
{
    const HANDLE mapping =
        CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, MAX_PATH, "KV_shared_memory");
    char* const memory = static_cast<char*>(MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, 0));
    EXPECT_NE(memory, nullptr);
    if (memory != nullptr) {
        memcpy(memory, path.c_str(), path.size() + 1);
    }
    const LRESULT answer = program.Send(program.Frame(), WM_USER + 10);
    program.Send(program.Frame(), WM_USER + 11);
    UnmapViewOfFile(memory);
    CloseHandle(mapping);
    return answer;
}

// The name that the system knows the document by.
std::string PrintedTitle(const std::string& path)
{
    constexpr char Mark[] = "%%Title: ";
    const std::string content = ReadWholeFile(path);
    const std::size_t begin = content.find(Mark);
    return begin == std::string::npos ? "(none)"
                                      : content.substr(begin, content.find('\n', begin) - begin).substr(strlen(Mark));
}

} // namespace

TEST_F(WithoutPrinterTest, EachCommandThatNeedsOneSaysSo)
{
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    for (const UINT id : {IDM_FILE_PRINT, IDM_FILE_PRINTER_SETUP, IDM_FILE_PAGE_SETUP}) {
        program.Post(WM_COMMAND, id);
        EXPECT_EQ(program.AnswerBox(), NoPrinter);
        EXPECT_TRUE(WaitForKeyboard(program)); // nothing more is asked
    }
    EXPECT_FALSE(IsSaved("Header"));
}

TEST_F(WithoutPrinterTest, OneThatIsTakenAwayUnderTheQuestionIsMissedByTheJob)
{
    TestPrinter printer(PrintedPath("taken"));
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowPrint(program);
    ASSERT_NE(dialog, nullptr);
    printer.Remove();
    Confirm(dialog);
    EXPECT_EQ(program.AnswerBox(), NoPrinter);
    EXPECT_TRUE(WaitForKeyboard(program));
}

TEST_F(WithoutPrinterTest, PrintAndExitSaysSoAndEndsTheProgram)
{
    Program program("-P " + Lines());
    EXPECT_EQ(program.AnswerBox(), NoPrinter);
    EXPECT_EQ(program.WaitForExit(), 0u);
}

TEST_F(PrintDialogTest, ItIsAskedForByKeyMenuAndButtonAndCancelPrintsAndSavesNothing)
{
    WriteSettings(std::string(BarSettings) + "Buttons=" + OrderText(FirstButtons(BarButtonCount)) + "\n");
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(WaitForKeyboard(program));
    PressKeys({VK_CONTROL, 'P'});
    HWND dialog = WaitForDialog(program, PrintTitle);
    ASSERT_NE(dialog, nullptr);
    for (const Choice& choice : PrintChoices) {
        Click(dialog, choice.Control, true);
    }
    Cancel(dialog);
    ASSERT_TRUE(WaitForKeyboard(program));
    ASSERT_TRUE(OpenMenu(program, 'F'));
    PressKeys({'P'});
    dialog = WaitForDialog(program, PrintTitle);
    ASSERT_NE(dialog, nullptr);
    for (const Choice& choice : PrintChoices) {
        EXPECT_FALSE(IsChecked(dialog, choice.Control)) << choice.Key;
    }
    PressKeys({VK_ESCAPE});
    ASSERT_TRUE(WaitUntilClosed(dialog));
    ASSERT_TRUE(ClickSlot(program, BarPrint));
    dialog = WaitForDialog(program, PrintTitle);
    ASSERT_NE(dialog, nullptr);
    Cancel(dialog);
    EXPECT_TRUE(WaitForKeyboard(program));
    EXPECT_EQ(FindDialog(program, StatusTitle), nullptr);
    EXPECT_FALSE(IsPrinted());
    for (const Choice& choice : PrintChoices) {
        EXPECT_FALSE(IsSaved(choice.Key)) << choice.Key;
    }
}

TEST_F(PrintDialogTest, ASelectionIsWhatIsPrintedUnlessTheEntireFileIsChosen)
{
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    HWND dialog = ShowPrint(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(IsChecked(dialog, IDC_PRINT_ENTIRE));
    EXPECT_FALSE(IsChecked(dialog, IDC_PRINT_SELECTION));
    EXPECT_FALSE(IsEnabled(dialog, IDC_PRINT_SELECTION));
    Cancel(dialog);
    program.Command(IDM_EDIT_SELECT_ALL);
    dialog = ShowPrint(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(IsEnabled(dialog, IDC_PRINT_SELECTION));
    EXPECT_TRUE(IsChecked(dialog, IDC_PRINT_SELECTION));
    EXPECT_FALSE(IsChecked(dialog, IDC_PRINT_ENTIRE));
    Click(dialog, IDC_PRINT_ENTIRE, true);
    EXPECT_FALSE(IsChecked(dialog, IDC_PRINT_SELECTION));
    Confirm(dialog);
    ASSERT_TRUE(WaitForPrinted(Output));
    dialog = ShowPrint(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(IsChecked(dialog, IDC_PRINT_SELECTION)); // the choice before was for that job
}

TEST_F(PrintDialogTest, ItBeginsWithTheOptionsOfTheSettingsFile)
{
    for (const Choice& on : PrintChoices) {
        WriteSettings(std::string(FixedFont) + on.Key + "=1\n");
        Program program(Lines());
        ASSERT_TRUE(program.WaitForFrame());
        const HWND dialog = ShowPrint(program);
        ASSERT_NE(dialog, nullptr);
        for (const Choice& choice : PrintChoices) {
            EXPECT_EQ(IsChecked(dialog, choice.Control), choice.Key == on.Key) << choice.Key << " of " << on.Key;
        }
    }
}

TEST_F(PrintDialogTest, OptionsAreSavedEvenIfTheJobFailsThen)
{
    const NoSpoolDirectory refused;
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    for (const Choice& on : PrintChoices) {
        const HWND dialog = ShowPrint(program);
        ASSERT_NE(dialog, nullptr);
        for (const Choice& choice : PrintChoices) {
            if (IsChecked(dialog, choice.Control) != (choice.Key == on.Key)) {
                Click(dialog, choice.Control, choice.Key == on.Key);
            }
        }
        Confirm(dialog);
        EXPECT_EQ(program.AnswerBox(), PrintFailed);
        EXPECT_EQ(FindDialog(program, StatusTitle), nullptr);
        EXPECT_TRUE(IsFrontWindow(program));
        for (const Choice& choice : PrintChoices) {
            EXPECT_EQ(SettingValue(choice.Key), choice.Key == on.Key ? "1" : "0") << choice.Key << " of " << on.Key;
        }
    }
    EXPECT_EQ(SavedFields(), (Texts{"&f&l", "/-&p-", "1", "0.0", "0.5", "0.5"}));
}

TEST_F(WithoutPrinterTest, AJobThatIsCancelledIsNotSaidToHaveFailed)
{
    const TestPrinter printer("FILE:"); // asks for the file before there is a document
    const NoSpoolDirectory refused;
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowPrint(program);
    ASSERT_NE(dialog, nullptr);
    Confirm(dialog);
    const HWND question = WaitForDialog(program, FileQuestionTitle);
    ASSERT_NE(question, nullptr);
    const HWND status = FindDialog(program, StatusTitle);
    ASSERT_NE(status, nullptr);
    Cancel(status);
    EXPECT_TRUE(IsWindowEnabled(program.Frame()));
    Cancel(question);
    EXPECT_TRUE(WaitForKeyboard(program));
    EXPECT_FALSE(program.ShowsBox());
    program.Command(IDM_VIEW_HEX); // no job is in the way
    EXPECT_TRUE(program.Menu(IDM_VIEW_HEX).Checked);
}

TEST_F(PrintDialogTest, PrinterSetupChoosesThePrinter)
{
    const std::string otherOutput = PrintedPath("other");
    const TestPrinter other(otherOutput, "Other Printer"); // is the default one now
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowPrint(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, IDC_PRINT_PRINTER), "Other Printer on " + otherOutput);
    PressControl(dialog, IDC_PRINT_PRINTER_SETUP);
    HWND setup = WaitForDialog(program, PrinterSetupTitle);
    ASSERT_NE(setup, nullptr);
    EXPECT_FALSE(IsWindowEnabled(dialog));
    ChooseEntry(setup, SetupPrinters, "Test Printer");
    Cancel(setup);
    ExpectText(dialog, IDC_PRINT_PRINTER, "Other Printer on " + otherOutput);
    PressControl(dialog, IDC_PRINT_PRINTER_SETUP);
    setup = WaitForDialog(program, PrinterSetupTitle);
    ASSERT_NE(setup, nullptr);
    ChooseEntry(setup, SetupPrinters, "Test Printer");
    Confirm(setup);
    ExpectText(dialog, IDC_PRINT_PRINTER, "Test Printer on " + Output);
    Confirm(dialog);
    EXPECT_TRUE(WaitForPrinted(Output));
    EXPECT_FALSE(FileExists(otherOutput));
}

TEST_F(PrintDialogTest, TheMenuSetsUpPrinterAndPageToo)
{
    const std::string otherOutput = PrintedPath("other");
    const TestPrinter other(otherOutput, "Other Printer");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    for (const bool confirmed : {false, true}) {
        ASSERT_TRUE(WaitForKeyboard(program));
        ASSERT_TRUE(OpenMenu(program, 'F'));
        PressKeys({'S'});
        const HWND setup = WaitForDialog(program, PrinterSetupTitle);
        ASSERT_NE(setup, nullptr);
        EXPECT_FALSE(IsWindowEnabled(program.Frame()));
        ChooseEntry(setup, SetupPrinters, "Test Printer");
        PressControl(setup, confirmed ? IDOK : IDCANCEL);
        ASSERT_TRUE(WaitUntilClosed(setup));
    }
    ASSERT_TRUE(WaitForKeyboard(program));
    ASSERT_TRUE(OpenMenu(program, 'F'));
    PressKeys({'T'});
    const HWND page = WaitForDialog(program, PageTitle);
    ASSERT_NE(page, nullptr);
    Cancel(page);
    program.Inside().Drop(program.Frame(), Lines());
    ASSERT_TRUE(program.WaitForTitle("lines.txt"));
    const HWND dialog = ShowPrint(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, IDC_PRINT_PRINTER), "Test Printer on " + Output);
}

TEST_F(PrintDialogTest, PageSetupBeforeTheJobCountsForIt)
{
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowPrint(program);
    ASSERT_NE(dialog, nullptr);
    PressControl(dialog, IDC_PRINT_PAGE_SETUP);
    const HWND page = WaitForDialog(program, PageTitle);
    ASSERT_NE(page, nullptr);
    EXPECT_FALSE(IsWindowEnabled(dialog));
    SetControlText(page, IDC_PAGE_LEFT, "3");
    Confirm(page);
    EXPECT_TRUE(WaitUntil([] { return SettingValue("LeftMargin") == "3"; }));
    EXPECT_TRUE(IsWindow(dialog));
    Confirm(dialog);
    ASSERT_TRUE(WaitForPrinted(Output));
    const std::vector<PrintedPage> pages = ReadPrintedPages(Output);
    ASSERT_EQ(pages.size(), 1u);
    ASSERT_FALSE(pages[0].Lines.empty());
    EXPECT_NEAR(pages[0].Lines[0].Left, 3 * PrinterDpi, 30);
}

TEST_F(PrintDialogTest, BothDialogsAskForHelp)
{
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowPrint(program);
    ASSERT_NE(dialog, nullptr);
    PressControl(dialog, IDC_ASK_HELP);
    AnswerMissingHelp(program);
    PressControl(dialog, IDC_PRINT_PAGE_SETUP);
    const HWND page = WaitForDialog(program, PageTitle);
    ASSERT_NE(page, nullptr);
    PressControl(page, IDC_ASK_HELP);
    AnswerMissingHelp(program);
    EXPECT_TRUE(IsWindow(page));
    Cancel(page);
    EXPECT_TRUE(IsWindow(dialog));
}

TEST_F(PrintDialogTest, AnotherFileUnderTheQuestionIsNotPrinted)
{
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowPrint(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(HandOver(program, WriteScratch("unasked.txt", "text")), 0);
    ASSERT_TRUE(program.WaitForTitle("unasked.txt"));
    Confirm(dialog);
    EXPECT_TRUE(WaitForKeyboard(program));
    EXPECT_FALSE(program.ShowsBox());
    EXPECT_FALSE(IsPrinted());
}

TEST_F(PrintDialogTest, NeitherIsAnotherModeNorASelectionThatIsGone)
{
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    HWND dialog = ShowPrint(program);
    ASSERT_NE(dialog, nullptr);
    program.Command(IDM_VIEW_HEX);
    Confirm(dialog);
    EXPECT_TRUE(WaitForKeyboard(program));
    program.Command(IDM_EDIT_SELECT_ALL);
    dialog = ShowPrint(program);
    ASSERT_NE(dialog, nullptr);
    program.Command(IDM_VIEW_TEXT);
    program.Command(IDM_VIEW_HEX); // which begins without one
    Confirm(dialog);
    EXPECT_TRUE(WaitForKeyboard(program));
    EXPECT_FALSE(program.ShowsBox());
    EXPECT_FALSE(IsPrinted());
    EXPECT_FALSE(IsSaved("Header"));
}

TEST_F(PrintDialogTest, AnotherDefaultPrinterUnderTheQuestionIsTheOneFromThenOn)
{
    const std::string otherOutput = PrintedPath("other");
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowPrint(program);
    ASSERT_NE(dialog, nullptr);
    const TestPrinter other(otherOutput, "Other Printer");
    program.Send(program.Frame(), WM_WININICHANGE); // as the system tells all windows
    program.Send(dialog, WM_WININICHANGE);
    ExpectText(dialog, IDC_PRINT_PRINTER, "Other Printer on " + otherOutput);
    Confirm(dialog);
    EXPECT_TRUE(WaitForPrinted(otherOutput));
    EXPECT_FALSE(IsPrinted());
}

TEST_F(PrintDialogTest, AnIconBecomesAWindowForTheQuestion)
{
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    program.Send(program.Frame(), WM_SYSCOMMAND, SC_MINIMIZE);
    ASSERT_TRUE(WaitUntil([&] { return IsIconic(program.Frame()) != FALSE; }));
    const HWND dialog = ShowPrint(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_FALSE(IsIconic(program.Frame()));
    Confirm(dialog);
    ASSERT_TRUE(WaitForPrinted(Output));
    const std::vector<PrintedPage> pages = ReadPrintedPages(Output);
    ASSERT_EQ(pages.size(), 1u);
    EXPECT_EQ(pages[0].Lines.size(), 20u);
}

TEST_F(PrintDialogTest, PrintAndExitPrintsAndEnds)
{
    Program program("-P " + Lines());
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = WaitForDialog(program, PrintTitle);
    ASSERT_NE(dialog, nullptr);
    PressControl(dialog, IDOK);
    EXPECT_EQ(program.WaitForExit(), 0u);
    EXPECT_TRUE(WaitForPrinted(Output));
}

TEST_F(PrintDialogTest, PrintAndExitEndsWhenThatIsCancelled)
{
    Program program("-P " + Lines());
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = WaitForDialog(program, PrintTitle);
    ASSERT_NE(dialog, nullptr);
    PressControl(dialog, IDCANCEL);
    EXPECT_EQ(program.WaitForExit(), 0u);
    EXPECT_FALSE(IsPrinted());
}

TEST_F(PrintDialogTest, PrintAndExitOfAMissingFileAsksNothing)
{
    Program program("-P " + ScratchPath("missing.txt"));
    EXPECT_EQ(program.AnswerBox(), "Unable to open the file\n\nmissing.txt");
    EXPECT_EQ(program.WaitForExit(), 0u);
    EXPECT_FALSE(IsPrinted());
}

TEST_F(PrintDialogTest, JobsLeaveNoObjectsBehind)
{
    constexpr int MostRounds = 5;
    constexpr int JobsInRound = 3;
    WriteSettings(std::string(FixedFont) + "PrintHF=1\nUseHeadFont=1\nUseBodyFont=1\n");
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    const auto round = [&] {
        for (int job = 0; job < JobsInRound; ++job) {
            Print(program, Output);
            EXPECT_TRUE(DeleteFileA(Output.c_str()));
            const HWND page = ShowPageSetup(program);
            EXPECT_NE(page, nullptr);
            Cancel(page);
            EXPECT_TRUE(program.Answers());
        }
        return program.Inside().Use().GdiObjects;
    };
    // The system takes some now and then; what a job leaves behind shows in all rounds.
    int before = round();
    int leastGrowth = JobsInRound;
    for (int i = 0; i < MostRounds && leastGrowth >= JobsInRound; ++i) {
        const int after = round();
        leastGrowth = std::min(leastGrowth, after - before);
        before = after;
    }
    EXPECT_LT(leastGrowth, JobsInRound);
}

TEST_F(PageSetupTest, ItBeginsWithDefaultsInTheUnitsOfTheSystem)
{
    const struct {
        const char* Measure;
        Texts Shown;
    } Cases[] = {{Inches, {"&f&l", "/-&p-", "1", "0.0", "0.5", "0.5"}},
                 {Centimetres, {"&f&l", "/-&p-", "2.5", "0.0", "1.25", "1.25"}}};
    for (const auto& [measure, shown] : Cases) {
        const SystemUnits units(measure);
        Program program;
        ASSERT_TRUE(program.WaitForFrame());
        const HWND dialog = ShowPageSetup(program);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(FieldTexts(dialog), shown);
        EXPECT_FALSE(IsChecked(dialog, IDC_PAGE_USE_HEAD_FONT));
        EXPECT_FALSE(IsChecked(dialog, IDC_PAGE_USE_BODY_FONT));
    }
    EXPECT_FALSE(IsSaved("Header"));
}

TEST_F(PageSetupTest, WhatIsConfirmedIsSavedFieldByFieldAndShownAgain)
{
    const Texts texts = {"head &d", "foot &t", "1.25", ".5", "0.75", "2"};
    {
        Program program;
        ASSERT_TRUE(program.WaitForFrame());
        HWND dialog = ShowPageSetup(program);
        ASSERT_NE(dialog, nullptr);
        for (std::size_t i = 0; i < texts.size(); ++i) {
            SetControlText(dialog, PageFields[i].Control, texts[i]);
        }
        Click(dialog, IDC_PAGE_USE_HEAD_FONT, true);
        EXPECT_FALSE(IsSaved("Header"));
        Confirm(dialog);
        ASSERT_TRUE(WaitUntil([] { return IsSaved("UseBodyFont"); }));
        EXPECT_EQ(SavedFields(), texts);
        EXPECT_EQ(SettingValue("UseHeadFont"), "1");
        EXPECT_EQ(SettingValue("UseBodyFont"), "0");
        dialog = ShowPageSetup(program);
        ASSERT_NE(dialog, nullptr);
        Click(dialog, IDC_PAGE_USE_HEAD_FONT, false);
        Click(dialog, IDC_PAGE_USE_BODY_FONT, true);
        Confirm(dialog);
        ASSERT_TRUE(WaitUntil([] { return SettingValue("UseBodyFont") == "1"; }));
        EXPECT_EQ(SettingValue("UseHeadFont"), "0");
        for (const Choice& choice : PrintChoices) {
            EXPECT_EQ(SettingValue(choice.Key), "0");
        }
    }
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowPageSetup(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(FieldTexts(dialog), texts);
    EXPECT_FALSE(IsChecked(dialog, IDC_PAGE_USE_HEAD_FONT));
    EXPECT_TRUE(IsChecked(dialog, IDC_PAGE_USE_BODY_FONT));
}

TEST_F(PageSetupTest, CancelChangesNothing)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    HWND dialog = ShowPageSetup(program);
    ASSERT_NE(dialog, nullptr);
    const Texts before = FieldTexts(dialog);
    for (const Choice& field : PageFields) {
        SetControlText(dialog, field.Control, "2");
    }
    Click(dialog, IDC_PAGE_USE_HEAD_FONT, true);
    Click(dialog, IDC_PAGE_USE_BODY_FONT, true);
    Cancel(dialog);
    dialog = ShowPageSetup(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(FieldTexts(dialog), before);
    EXPECT_FALSE(IsChecked(dialog, IDC_PAGE_USE_HEAD_FONT));
    EXPECT_FALSE(IsChecked(dialog, IDC_PAGE_USE_BODY_FONT));
    EXPECT_FALSE(IsSaved("Header"));
}

TEST_F(PageSetupTest, CodesTake59CharactersAndMarginsFive)
{
    const std::string longest = Repeated("0123456789", 59);
    WriteSettings(std::string(FixedFont) + "Header=" + longest + "x\nTopMargin=0.2503\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowPageSetup(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, IDC_PAGE_HEADER), longest); // what is longer in the file is cut
    EXPECT_EQ(ControlText(dialog, IDC_PAGE_TOP), "0.250");
    ASSERT_TRUE(BringToForeground(dialog));
    EraseText(dialog, IDC_PAGE_FOOTER);
    TypeText(longest + "x");
    ExpectText(dialog, IDC_PAGE_FOOTER, longest);
    EraseText(dialog, IDC_PAGE_LEFT);
    TypeText("1.2345");
    ExpectText(dialog, IDC_PAGE_LEFT, "1.234");
    Confirm(dialog);
    ASSERT_TRUE(WaitUntil([] { return IsSaved("UseBodyFont"); }));
    EXPECT_EQ(SavedFields(), (Texts{longest, longest, "1.234", "0.0", "0.250", "0.5"}));
}

TEST_F(PageSetupTest, MarginsThatAreNoNumbersAreRefused)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowPageSetup(program);
    ASSERT_NE(dialog, nullptr);
    for (const int field : {IDC_PAGE_LEFT, IDC_PAGE_RIGHT, IDC_PAGE_TOP, IDC_PAGE_BOTTOM}) {
        const std::string before = ControlText(dialog, field);
        for (const char* const text : {"1.2.5", "-1", "1 ", "a"}) {
            SetControlText(dialog, field, text);
            PressControl(dialog, IDOK);
            EXPECT_EQ(program.AnswerBox(), BadMargins) << text;
            EXPECT_EQ(ControlText(dialog, field), text);
        }
        SetControlText(dialog, field, before);
    }
    EXPECT_FALSE(IsSaved("Header"));
    SetControlText(dialog, IDC_PAGE_LEFT, "");
    SetControlText(dialog, IDC_PAGE_RIGHT, "99999"); // nothing is said about the width
    Confirm(dialog);
    ASSERT_TRUE(WaitUntil([] { return IsSaved("UseBodyFont"); }));
    EXPECT_EQ(SettingValue("LeftMargin"), "");
    EXPECT_EQ(SettingValue("RightMargin"), "99999");
}

TEST_F(PageSetupTest, TopAndBottomLeaveAtLeast20UnitsOfThePage)
{
    ASSERT_EQ(PrintableHeight, 6000);
    const SystemUnits units(Centimetres);
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowPageSetup(program);
    ASSERT_NE(dialog, nullptr);
    SetControlText(dialog, IDC_PAGE_TOP, "25.32"); // 5981 units
    SetControlText(dialog, IDC_PAGE_BOTTOM, "");
    PressControl(dialog, IDOK);
    EXPECT_EQ(program.AnswerBox(), BadMargins);
    SetControlText(dialog, IDC_PAGE_TOP, "0.01"); // 2 units
    SetControlText(dialog, IDC_PAGE_BOTTOM, "25.32");
    PressControl(dialog, IDOK);
    EXPECT_EQ(program.AnswerBox(), BadMargins);
    SetControlText(dialog, IDC_PAGE_BOTTOM, "25.31"); // 5978 units
    Confirm(dialog);
    EXPECT_TRUE(WaitUntil([] { return SettingValue("BottomMargin") == "25.31"; }));
}

TEST_F(PageSetupTest, CodesAndFontBoxesCountFromARefusalOnThoughItIsCancelled)
{
    Program program(Lines());
    ASSERT_TRUE(program.WaitForFrame());
    HWND dialog = ShowPageSetup(program);
    ASSERT_NE(dialog, nullptr);
    SetControlText(dialog, IDC_PAGE_HEADER, "kept");
    SetControlText(dialog, IDC_PAGE_FOOTER, "/kept too");
    SetControlText(dialog, IDC_PAGE_LEFT, "2");
    SetControlText(dialog, IDC_PAGE_BOTTOM, "-1");
    Click(dialog, IDC_PAGE_USE_HEAD_FONT, true);
    Click(dialog, IDC_PAGE_USE_BODY_FONT, true);
    PressControl(dialog, IDOK);
    EXPECT_EQ(program.AnswerBox(), BadMargins);
    Cancel(dialog);
    dialog = ShowPageSetup(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(FieldTexts(dialog), (Texts{"kept", "/kept too", "1", "0.0", "0.5", "0.5"}));
    EXPECT_TRUE(IsChecked(dialog, IDC_PAGE_USE_HEAD_FONT));
    EXPECT_TRUE(IsChecked(dialog, IDC_PAGE_USE_BODY_FONT));
    Cancel(dialog);
    EXPECT_FALSE(IsSaved("Header"));
    EXPECT_FALSE(IsSaved("UseHeadFont"));
    dialog = ShowPrint(program);
    ASSERT_NE(dialog, nullptr);
    Click(dialog, IDC_PRINT_HEADERS, true);
    Confirm(dialog);
    ASSERT_TRUE(WaitForPrinted(Output));
    const std::vector<PrintedPage> pages = ReadPrintedPages(Output);
    ASSERT_EQ(pages.size(), 1u);
    const Texts printed = TextsOf(pages[0]);
    ASSERT_GT(printed.size(), 2u);
    EXPECT_EQ(printed.front(), "kept");
    EXPECT_EQ(printed.back(), "kept too");
    EXPECT_EQ(SettingValue("Header"), "kept"); // the job has saved it
}

TEST_F(PageSetupTest, TheChosenFontsAreSavedWithIt)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    HWND dialog = ShowPageSetup(program);
    ASSERT_NE(dialog, nullptr);
    ChooseFont(program, dialog, IDC_PAGE_HEAD_FONT, HeadFontTitle, "Liberation Serif", "18");
    ChooseFont(program, dialog, IDC_PAGE_BODY_FONT, BodyFontTitle, "Liberation Mono", "12");
    EXPECT_FALSE(IsSaved("HdFontName"));
    Confirm(dialog);
    ASSERT_TRUE(WaitUntil([] { return IsSaved("UseBodyFont"); }));
    EXPECT_EQ(SettingValue("HdFontName"), "Liberation Serif");
    EXPECT_EQ(SettingValue("HdFontSize"), HeightOf(18));
    EXPECT_EQ(SettingValue("HdFontWeight"), "400");
    EXPECT_EQ(SettingValue("HdFontItalic"), "0");
    EXPECT_EQ(SettingValue("BdFontName"), "Liberation Mono");
    EXPECT_EQ(SettingValue("BdFontSize"), HeightOf(12));
    EXPECT_EQ(SettingValue("BdFontWeight"), "400");
    EXPECT_EQ(SettingValue("BdFontItalic"), "0");
    // The chooser begins with what was chosen, and its Cancel changes nothing.
    dialog = ShowPageSetup(program);
    ASSERT_NE(dialog, nullptr);
    PressControl(dialog, IDC_PAGE_HEAD_FONT);
    HWND chooser = WaitForDialog(program, HeadFontTitle);
    ASSERT_NE(chooser, nullptr);
    ExpectText(chooser, ChooserFaces, "Liberation Serif");
    ExpectText(chooser, ChooserSizes, "18");
    ChooseEntry(chooser, ChooserFaces, "Liberation Sans");
    Cancel(chooser);
    PressControl(dialog, IDC_PAGE_BODY_FONT);
    chooser = WaitForDialog(program, BodyFontTitle);
    ASSERT_NE(chooser, nullptr);
    ExpectText(chooser, ChooserFaces, "Liberation Mono");
    ExpectText(chooser, ChooserSizes, "12");
    ChooseEntry(chooser, ChooserStyles, "Bold Italic");
    Confirm(chooser);
    Click(dialog, IDC_PAGE_USE_BODY_FONT, true); // which is saved last
    Confirm(dialog);
    ASSERT_TRUE(WaitUntil([] { return SettingValue("UseBodyFont") == "1"; }));
    EXPECT_NE(SettingValue("BdFontItalic"), "0");
    EXPECT_EQ(SettingValue("BdFontWeight"), "700");
    EXPECT_EQ(SettingValue("HdFontName"), "Liberation Serif");
}

TEST_F(LongJobTest, ItsBoxNamesTheFileAndCountsThePagesAndTheMouseCancelsIt)
{
    Program program(Long());
    ASSERT_TRUE(program.WaitForFrame());
    const HWND status = StartJob(program);
    ASSERT_NE(status, nullptr);
    EXPECT_EQ(ControlText(status, IDC_STATUS_DOCUMENT), "long.txt");
    EXPECT_FALSE(IsWindowEnabled(program.Frame()));
    EXPECT_TRUE(GoesOn(status));
    EXPECT_TRUE(GoesOn(status));
    ASSERT_TRUE(BringToForeground(status));
    ClickControl(status, IDCANCEL);
    ASSERT_TRUE(WaitUntilClosed(status));
    EXPECT_TRUE(IsFrontWindow(program));
    EXPECT_TRUE(WaitForPrinted(Output)); // the document is ended
    EXPECT_LT(PagesIn(Output), 60000);
    EXPECT_EQ(PrintedTitle(Output), "Kestovar - long.txt");
    EXPECT_TRUE(WaitForKeyboard(program));
    EXPECT_FALSE(program.ShowsBox());
    program.Command(IDM_VIEW_HEX);
    EXPECT_TRUE(program.Menu(IDM_VIEW_HEX).Checked);
}

TEST_F(LongJobTest, EscapeEndsItWithThePageThatWasBegunAndTheViewIsPaintedAgain)
{
    Program program(Long());
    ASSERT_TRUE(program.WaitForFrame());
    const HWND status = StartJob(program);
    ASSERT_NE(status, nullptr);
    ASSERT_TRUE(GoesOn(status));
    ASSERT_TRUE(Pause(program, status));
    const int page = PageShown(status);
    EXPECT_TRUE(RowsWritten(program.View(), program.Inside().Repaint(program.View())).empty());
    program.Inside().StartRecording();
    PressEscapeBehindMenu();
    ASSERT_TRUE(WaitUntilClosed(status));
    EXPECT_TRUE(IsFrontWindow(program));
    ASSERT_TRUE(WaitForPrinted(Output));
    EXPECT_EQ(PagesIn(Output), page);
    EXPECT_TRUE(WaitUntil([&] { // not only where the box stood
        const std::set<int> rows = RowsWritten(program.View(), program.Inside().TakeRecorded());
        return rows.size() >= static_cast<std::size_t>(RowsOf(program));
    }));
    EXPECT_TRUE(WaitForKeyboard(program));
    EXPECT_FALSE(program.ShowsBox());
}

TEST_F(LongJobTest, CloseInTheMenuOfItsBoxEndsADump)
{
    Program program(Long());
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_VIEW_HEX);
    const HWND status = StartJob(program);
    ASSERT_NE(status, nullptr);
    ASSERT_TRUE(GoesOn(status));
    ASSERT_TRUE(Pause(program, status));
    const int page = PageShown(status);
    PressKeys({'C'});
    ASSERT_TRUE(WaitUntilClosed(status));
    ASSERT_TRUE(WaitForPrinted(Output));
    EXPECT_EQ(PagesIn(Output), page);
    EXPECT_TRUE(WaitForKeyboard(program));
    EXPECT_FALSE(program.ShowsBox());
}

TEST_F(LongJobTest, NothingElseCanBeDoneMeanwhile)
{
    const std::string other = WriteScratch("other.txt", "other text\r\n");
    Program program(Long());
    ASSERT_TRUE(program.WaitForFrame());
    const HWND status = StartJob(program);
    ASSERT_NE(status, nullptr);
    ASSERT_TRUE(GoesOn(status));
    for (const UINT id : {IDM_VIEW_HEX, IDM_FILE_PRINT, IDM_FILE_CLOSE, IDM_FILE_EXIT, IDM_EDIT_SELECT_ALL}) {
        program.Command(id);
    }
    ASSERT_TRUE(BringToForeground(status));
    EXPECT_NE(HandOver(program, other), 0);
    EXPECT_EQ(GetForegroundWindow(), status);
    program.Inside().Drop(program.Frame(), other);
    program.Post(WM_CLOSE);
    EXPECT_TRUE(GoesOn(status));
    EXPECT_TRUE(IsWindow(program.Frame()));
    EXPECT_FALSE(IsWindowEnabled(program.Frame()));
    EXPECT_EQ(FindDialog(program, PrintTitle), nullptr);
    EXPECT_EQ(program.Title(), "Kestovar-long.txt");
    Cancel(status);
    ASSERT_TRUE(WaitForKeyboard(program));
    EXPECT_EQ(program.Title(), "Kestovar-long.txt");
    EXPECT_EQ(program.TopText(), "Line 1");
    EXPECT_TRUE(program.Menu(IDM_VIEW_TEXT).Checked);
    // And then it can again.
    EXPECT_EQ(HandOver(program, other), 0);
    EXPECT_TRUE(program.WaitForTitle("other.txt"));
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(LongJobTest, ALongNameOfASelectionIsShortened)
{
    // 27 characters.
    Program program(WriteScratch("a-name-of-twenty-seven.text", NumberedLines(20000)));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    const HWND status = StartJob(program);
    ASSERT_NE(status, nullptr);
    EXPECT_EQ(ControlText(status, IDC_STATUS_DOCUMENT), "a-name-of-twenty-seven.tex... (Selection)");
    Cancel(status);
    ASSERT_TRUE(WaitForPrinted(Output));
    EXPECT_EQ(PrintedTitle(Output), "Kestovar - a-name-of-twenty-seven.tex... (Selection)");
    EXPECT_TRUE(WaitForKeyboard(program));
}

TEST_F(LongJobTest, PrintAndExitEndsTheProgramAfterACancelledJobToo)
{
    Program program("-P " + Long());
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = WaitForDialog(program, PrintTitle);
    ASSERT_NE(dialog, nullptr);
    Confirm(dialog);
    const HWND status = WaitForDialog(program, StatusTitle);
    ASSERT_NE(status, nullptr);
    PressControl(status, IDCANCEL);
    EXPECT_EQ(program.WaitForExit(), 0u);
}
