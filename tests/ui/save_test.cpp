#include "support/dialogs.h"
#include "support/file_list.h"
#include "support/find_dialog.h"
#include "support/input.h"
#include "support/marks.h"
#include "support/ui_test.h"

#include <algorithm>
#include <cstdio>

namespace {

using Names = std::vector<std::string>;

// What is saved of a selection, through the system's dialog.
class SaveTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }

    // The names of all its files, in order.
    Names FileNames() const
    {
        Names names = Files.Find("*");
        std::sort(names.begin(), names.end());
        return names;
    }

    TestDirectory Files{"save"};
};

constexpr char SaveTitle[] = "Save As"; // as the system has it
constexpr char Failed[] = "Save of selected text failed or was incomplete";

// The dialog's controls. The name is in an edit control within a combo box within another, all with one number.
constexpr int SaveName = 1148;
constexpr int SaveTypes = 1136;

HWND NameCombo(HWND dialog)
{
    return GetDlgItem(GetDlgItem(dialog, SaveName), SaveName);
}

std::string NameText(HWND dialog)
{
    return ControlText(NameCombo(dialog), SaveName);
}

bool IsNameTypedInto(HWND dialog)
{
    return FocusOf(dialog) == GetDlgItem(NameCombo(dialog), SaveName);
}

// Asks for the dialog as the menu does and waits for it; nullptr when it does not come.
HWND ShowSaveDialog(const Program& program)
{
    program.Post(WM_COMMAND, IDM_FILE_SAVE_AS);
    return WaitForDialog(program, SaveTitle);
}

// Asks for the dialog and chooses the name.
HWND ChooseName(const Program& program, const std::string& path)
{
    const HWND dialog = ShowSaveDialog(program);
    if (dialog != nullptr) {
        SetControlText(NameCombo(dialog), SaveName, path);
        EXPECT_EQ(NameText(dialog), path);
        PressControl(dialog, IDOK);
    }
    return dialog;
}

// Answers the dialog's question whether the file is to be replaced.
void AnswerOverwrite(HWND dialog, int button)
{
    const HWND question = WaitForBoxOver(dialog);
    ASSERT_NE(question, nullptr);
    ASSERT_NE(GetDlgItem(question, IDYES), nullptr);
    PressControl(question, button);
    EXPECT_TRUE(WaitUntilClosed(question));
}

// Waits until the dialog is gone and the command is done.
void WaitUntilSaved(const Program& program, HWND dialog)
{
    EXPECT_TRUE(WaitUntilClosed(dialog));
    EXPECT_TRUE(program.Answers());
    EXPECT_FALSE(program.ShowsBox());
}

// Saves to a file that is not there yet.
void SaveNew(const Program& program, const std::string& path)
{
    const HWND dialog = ChooseName(program, path);
    ASSERT_NE(dialog, nullptr);
    WaitUntilSaved(program, dialog);
}

// Saves over one that is.
void SaveOver(const Program& program, const std::string& path)
{
    const HWND dialog = ChooseName(program, path);
    ASSERT_NE(dialog, nullptr);
    AnswerOverwrite(dialog, IDYES);
    WaitUntilSaved(program, dialog);
}

// Tries to save over a file that is there.
void ExpectOverRefused(Program& program, const std::string& path)
{
    const HWND dialog = ChooseName(program, path);
    ASSERT_NE(dialog, nullptr);
    AnswerOverwrite(dialog, IDYES);
    EXPECT_EQ(program.AnswerBox(), Failed);
    EXPECT_TRUE(program.Answers());
    EXPECT_FALSE(program.ShowsBox());
}

// 40 characters.
std::string Line(int number)
{
    char line[16];
    snprintf(line, sizeof line, "%08d", number);
    return line + Repeated("abcdefgh", 32);
}

// The lines first to last, each with its line end.
std::string Lines(int first, int last)
{
    std::string text;
    for (int number = first; number <= last; ++number) {
        text += Line(number) + "\r\n";
    }
    return text;
}

std::string WithoutLineEnd(const std::string& text)
{
    return text.substr(0, text.size() - 2);
}

void ExpectContent(const std::string& path, const std::string& expected)
{
    ASSERT_TRUE(FileExists(path)) << path;
    const std::string text = ReadWholeFile(path);
    EXPECT_EQ(text.size(), expected.size());
    const auto differ = std::mismatch(text.begin(), text.end(), expected.begin(), expected.end());
    const auto place = static_cast<std::size_t>(differ.first - text.begin());
    EXPECT_TRUE(text == expected) << path << ", from byte " << place << " on: \"" << text.substr(place, 60)
                                  << "\" instead of \"" << expected.substr(place, 60) << '"';
}

// What is painted of the lines is theirs, wherever the view is scrolled to.
void ExpectShown(Program& program, const std::string& name, const std::string& first, const std::string& last)
{
    EXPECT_TRUE(program.WaitForTitle(name)) << program.Title();
    Key(program, VK_HOME);
    EXPECT_EQ(program.TopText(), first);
    Key(program, VK_END);
    EXPECT_EQ(program.ViewTexts().back().Text, last);
    Key(program, VK_HOME);
    EXPECT_EQ(program.TopText(), first);
}

void ExpectSelection(Program& program, bool possible)
{
    EXPECT_EQ(program.Menu(IDM_FILE_SAVE_AS).Greyed, !possible);
    EXPECT_EQ(program.Menu(IDM_EDIT_COPY).Greyed, !possible);
}

// Another program's hold on a file.
class HeldFile {
public:
    HeldFile(const std::string& path, DWORD share)
        : Handle(CreateFileA(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr))
    {
        EXPECT_NE(Handle, INVALID_HANDLE_VALUE) << path << ", error " << GetLastError();
    }
    ~HeldFile() { CloseHandle(Handle); }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

private:
    HANDLE Handle;
};

} // namespace

TEST_F(SaveTest, WithoutASelectionNothingIsAsked)
{
    Program program(Files.Write("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_TRUE(program.Menu(IDM_FILE_SAVE_AS).Greyed);
    program.Command(IDM_FILE_SAVE_AS);
    EXPECT_EQ(FindDialog(program, SaveTitle), nullptr);
    EXPECT_FALSE(program.ShowsBox());
}

TEST_F(SaveTest, TheMenuAsksForANameAndOffersNone)
{
    Program program(Files.Write("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    ASSERT_TRUE(WaitForKeyboard(program));
    ASSERT_TRUE(OpenMenu(program, 'F'));
    PressKeys({'A'});
    const HWND dialog = WaitForDialog(program, SaveTitle);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), program.Frame());
    EXPECT_EQ(NameText(dialog), "");
    EXPECT_EQ(ControlText(dialog, SaveTypes), "All Files (*.*)");
    PressControl(dialog, IDCANCEL);
    EXPECT_TRUE(WaitUntilClosed(dialog));
    EXPECT_FALSE(IsInMenu(program));
}

TEST_F(SaveTest, TheFilterOfTheSettingsIsOffered)
{
    WriteSettings(std::string(FixedFont) + "FilterSpec=Logs;*.LOG;Everything;*.*;\n");
    Program program(Files.Write("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    const HWND dialog = ShowSaveDialog(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, SaveTypes), "Logs");
    PressControl(dialog, IDCANCEL);
    EXPECT_TRUE(WaitUntilClosed(dialog));
}

TEST_F(SaveTest, ATypedNameIsWhereTheSelectionIsSaved)
{
    Program program(Files.Write("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(DragInView(program, PointOf(2, 10), PointOf(5, 4)));
    const Marks marks = MarksShown(program);
    const std::string status = program.StatusText();
    const HWND dialog = ShowSaveDialog(program);
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(BringToForeground(dialog));
    ASSERT_TRUE(WaitUntil([&] { return IsNameTypedInto(dialog); }));
    TypeText(Files.PathOf("Part.txt"));
    ASSERT_TRUE(WaitUntil([&] { return NameText(dialog) == Files.PathOf("Part.txt"); })) << NameText(dialog);
    PressKeys({VK_RETURN});
    WaitUntilSaved(program, dialog);
    ExpectContent(Files.PathOf("part.txt"), Line(3).substr(10) + "\r\n" + Lines(4, 5) + Line(6).substr(0, 4));
    EXPECT_EQ(FileNames(), (Names{"Part.txt", "lines.txt"}));
    // What is shown stays, and so does the selection.
    ExpectMarks(program, marks);
    ExpectSelection(program, true);
    EXPECT_EQ(program.Title(), "Kestovar-lines.txt");
    EXPECT_EQ(program.TopText(), Line(1));
    EXPECT_EQ(program.StatusText(), status);
    ExpectContent(Files.PathOf("lines.txt"), Lines(1, 100));
}

TEST_F(SaveTest, CancellingSavesNothing)
{
    Program program(Files.Write("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(DragInView(program, PointOf(2, 10), PointOf(5, 4)));
    const Marks marks = MarksShown(program);
    const HWND dialog = ShowSaveDialog(program);
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(BringToForeground(dialog));
    SetControlText(NameCombo(dialog), SaveName, Files.PathOf("part.txt"));
    PressKeys({VK_ESCAPE});
    WaitUntilSaved(program, dialog);
    EXPECT_EQ(FileNames(), (Names{"lines.txt"}));
    EXPECT_FALSE(IsIconic(program.Frame())); // the Esc was the dialog's alone
    EXPECT_EQ(program.Title(), "Kestovar-lines.txt");
    ExpectMarks(program, marks);
    ExpectSelection(program, true);
}

TEST_F(SaveTest, APartOfALineIsSavedAsItIs)
{
    Program program(Files.Write("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(DragInView(program, PointOf(3, 12), PointOf(3, 5)));
    SaveNew(program, Files.PathOf("part.txt"));
    ExpectContent(Files.PathOf("part.txt"), Line(4).substr(5, 7));
}

TEST_F(SaveTest, WholeLinesAreSavedWithoutALineEndBehindTheLast)
{
    Program program(Files.Write("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(DragInView(program, PointOf(5, 50), PointOf(2, 0)));
    SaveNew(program, Files.PathOf("part.txt"));
    ExpectContent(Files.PathOf("part.txt"), WithoutLineEnd(Lines(3, 6)));
    program.Command(IDM_EDIT_SELECT_ALL);
    SaveNew(program, Files.PathOf("all.txt"));
    ExpectContent(Files.PathOf("all.txt"), WithoutLineEnd(Lines(1, 100)));
}

TEST_F(SaveTest, SelectionsAroundTheSizeThatIsWrittenAtOnceAreSavedWhole)
{
    // Lines of 40 bytes with their ends: 800 of them are 32000.
    for (const int lines : {799, 800, 801, 1600, 1601, 2000}) {
        const std::string text =
            Repeated("a line of 38 characters, and no more .\r\n", static_cast<std::size_t>(lines) * 40);
        Program program(Files.Write("lines.txt", text));
        ASSERT_TRUE(program.WaitForFrame());
        program.Command(IDM_EDIT_SELECT_ALL);
        const std::string name = std::to_string(lines) + ".txt";
        SaveNew(program, Files.PathOf(name));
        ExpectContent(Files.PathOf(name), WithoutLineEnd(text));
    }
}

TEST_F(SaveTest, SeveralBlocksAreSavedWhole)
{
    const std::string text = Lines(1, 60000);
    Program program(Files.Write("big.txt", text));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    SetTop(program, 40000);
    SaveNew(program, Files.PathOf("all.txt"));
    ExpectContent(Files.PathOf("all.txt"), WithoutLineEnd(text));
    EXPECT_EQ(program.TopText(), Line(40001));
    ASSERT_TRUE(DragInView(program, PointOf(2, 10), PointOf(8, 4)));
    SaveNew(program, Files.PathOf("part.txt"));
    ExpectContent(Files.PathOf("part.txt"), Line(40003).substr(10) + "\r\n" + Lines(40004, 40008) + "0004");
}

TEST_F(SaveTest, HexRowsAreSavedAsTheyAreShown)
{
    Program program(Files.Write("data.bin", std::string(16 * 1000 - 5, '\x02') + "abc\t\x80"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(DragInView(program, PointOf(2, 30), PointOf(4, 3)));
    SaveNew(program, Files.PathOf("part.txt"));
    const std::string digits = "02 02 02 02 02 02 02 02-02 02 02 02 02 02 02 02   ................";
    ExpectContent(Files.PathOf("part.txt"),
                  "00000020  " + digits + "\r\n00000030  " + digits + "\r\n00000040  " + digits);
    program.Command(IDM_EDIT_SELECT_ALL); // more than is written at once
    SaveNew(program, Files.PathOf("all.txt"));
    std::string expected;
    for (unsigned row = 0; row < 999; ++row) {
        char offset[16];
        snprintf(offset, sizeof offset, "%08X  ", row * 16);
        expected += offset + digits + "\r\n";
    }
    expected += "00003E70  02 02 02 02 02 02 02 02-02 02 02 61 62 63 09 80   ...........abc.\x80";
    ExpectContent(Files.PathOf("all.txt"), expected);
}

TEST_F(SaveTest, AnExistingFileIsReplacedOnlyOnceThatIsConfirmed)
{
    Files.Write("old.txt", Repeated("what was there before ", 5000));
    Program program(Files.Write("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(DragInView(program, PointOf(3, 5), PointOf(3, 12)));
    const HWND dialog = ChooseName(program, Files.PathOf("old.txt"));
    ASSERT_NE(dialog, nullptr);
    AnswerOverwrite(dialog, IDNO);
    EXPECT_TRUE(IsWindowVisible(dialog)); // for another name
    ExpectContent(Files.PathOf("old.txt"), Repeated("what was there before ", 5000));
    PressControl(dialog, IDOK);
    AnswerOverwrite(dialog, IDYES);
    WaitUntilSaved(program, dialog);
    ExpectContent(Files.PathOf("old.txt"), Line(4).substr(5, 7));
    EXPECT_EQ(FileNames(), (Names{"lines.txt", "old.txt"}));
}

TEST_F(SaveTest, NamesOfAllKindsAreTaken)
{
    Program program(Files.Write("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(DragInView(program, PointOf(3, 5), PointOf(3, 12)));
    const std::string longest(259 - Files.PathOf("").size(), 'n');
    for (const std::string& name :
         {std::string("two words.txt"), std::string("several.dots.in.it"), std::string("none"),
          std::string("\xC4rger mit \xD6l.txt"), std::string(".begins"), longest}) {
        SaveNew(program, Files.PathOf(name));
        ExpectContent(Files.PathOf(name), Line(4).substr(5, 7));
        EXPECT_EQ(Files.Find(name), Names{name});
    }
    EXPECT_EQ(FileNames().size(), 7u); // the one that is shown and no others
}

TEST_F(SaveTest, AFullDiskIsReported)
{
    // The second selection is of many parts that are written one after another.
    for (const int lines : {10, 5000}) {
        Program program(Files.Write("lines.txt", Lines(1, lines)));
        ASSERT_TRUE(program.WaitForFrame());
        program.Command(IDM_EDIT_SELECT_ALL);
        const HWND dialog = ChooseName(program, "Z:\\dev\\full");
        ASSERT_NE(dialog, nullptr);
        ASSERT_TRUE(WaitUntil([&] { return !IsWindow(dialog) || !IsWindowEnabled(dialog); }));
        if (IsWindow(dialog)) {
            AnswerOverwrite(dialog, IDYES); // a system's dialog that asks even for a device
        }
        EXPECT_EQ(program.AnswerBox(), Failed);
        ExpectSelection(program, true);
        ExpectShown(program, "lines.txt", Line(1), Line(lines));
        ExpectContent(Files.PathOf("lines.txt"), Lines(1, lines));
    }
}

TEST_F(SaveTest, AFileThatAnotherProgramKeepsForItselfIsReportedAndStaysAsItWas)
{
    const std::string held = Files.Write("held.txt", "what was there before");
    Program program(Files.Write("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    {
        const HeldFile hold(held, 0);
        ExpectOverRefused(program, held);
    }
    ExpectContent(held, "what was there before");
    ExpectSelection(program, true);
    ExpectShown(program, "lines.txt", Line(1), Line(100));
    SaveOver(program, held); // now it can be
    ExpectContent(held, WithoutLineEnd(Lines(1, 100)));
}

TEST_F(SaveTest, AReadOnlyFileIsReportedAndStaysAsItWas)
{
    const std::string old = Files.Write("old.txt", "what was there before");
    SetFileAttributesA(old.c_str(), FILE_ATTRIBUTE_READONLY);
    Program program(Files.Write("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    ExpectOverRefused(program, old);
    ExpectContent(old, "what was there before");
    SetFileAttributesA(old.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(SaveTest, ADirectoryThatDoesNotExistIsRefused)
{
    Program program(Files.Write("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    const HWND dialog = ChooseName(program, Files.PathOf("missing\\part.txt"));
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(WaitUntil([&] { return !IsWindow(dialog) || !IsWindowEnabled(dialog); }));
    if (IsWindow(dialog)) {
        // A system's dialog that does not let the name pass says so itself.
        const HWND box = WaitForBoxOver(dialog);
        ASSERT_NE(box, nullptr);
        PressControl(box, IDOK);
        ASSERT_TRUE(WaitUntilClosed(box));
        PressControl(dialog, IDCANCEL);
        WaitUntilSaved(program, dialog);
    } else {
        EXPECT_EQ(program.AnswerBox(), Failed);
    }
    EXPECT_EQ(FileNames(), (Names{"lines.txt"}));
    ExpectSelection(program, true);
    ExpectShown(program, "lines.txt", Line(1), Line(100));
}

TEST_F(SaveTest, AnotherFileShownMeanwhileIsNotSaved)
{
    const std::string other = Files.Write("other.txt", "something else");
    Program program(Files.Write("lines.txt", Lines(1, 100)));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    const HWND dialog = ShowSaveDialog(program);
    ASSERT_NE(dialog, nullptr);
    program.Inside().Drop(program.Frame(), other);
    ASSERT_TRUE(program.WaitForTitle("other.txt"));
    SetControlText(NameCombo(dialog), SaveName, Files.PathOf("part.txt"));
    PressControl(dialog, IDOK);
    EXPECT_EQ(program.AnswerBox(), Failed);
    EXPECT_EQ(FileNames(), (Names{"lines.txt", "other.txt"}));
    ExpectShown(program, "other.txt", "something else", "something else");
}

TEST_F(SaveTest, OverTheFileThatIsShownTheSelectionReplacesItAndIsShown)
{
    const std::string path = Files.Write("lines.txt", Lines(1, 100));
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    SetTop(program, 30);
    ASSERT_TRUE(DragInView(program, PointOf(2, 10), PointOf(5, 4)));
    SaveOver(program, path);
    ExpectContent(path, Line(33).substr(10) + "\r\n" + Lines(34, 35) + Line(36).substr(0, 4));
    EXPECT_EQ(FileNames(), (Names{"lines.txt"}));
    ExpectSelection(program, false);
    EXPECT_EQ(program.Top(), 0);
    EXPECT_EQ(program.StatusText(), "Line 1 Col 1  100%");
    ExpectMarks(program, {});
    ExpectShown(program, "lines.txt", Line(33).substr(10), Line(36).substr(0, 4));
    EXPECT_EQ(program.ViewTexts().size(), 4u);
}

TEST_F(SaveTest, OverTheFileThatIsShownTheNameKeepsItsLetters)
{
    const std::string path = Files.Write("Lines.TXT", Lines(1, 100));
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(DragInView(program, PointOf(3, 5), PointOf(3, 12)));
    SaveOver(program, path);
    ExpectContent(path, Line(4).substr(5, 7));
    EXPECT_EQ(FileNames(), (Names{"Lines.TXT"}));
}

TEST_F(SaveTest, ThePointerIsAnArrowAgainOnceAllIsSaved)
{
    const std::string path = Files.Write("lines.txt", Lines(1, 100));
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    const auto expectArrow = [&] {
        EXPECT_TRUE(MovePointer(program.View(), 200, 100));
        EXPECT_TRUE(WaitUntil([&] { return program.Inside().Cursor() == ProbeCursorShape::Arrow; }));
    };
    ASSERT_TRUE(DragInView(program, PointOf(2, 10), PointOf(5, 4)));
    SaveNew(program, Files.PathOf("part.txt"));
    expectArrow();
    ChooseName(program, Files.PathOf("missing\\part.txt"));
    EXPECT_EQ(program.AnswerBox(), Failed);
    expectArrow();
    SaveOver(program, path);
    expectArrow();
}

TEST_F(SaveTest, OverTheFileThatIsShownOfManyBlocksTheSelectionReplacesItAndIsShown)
{
    const std::string path = Files.Write("big.txt", Lines(1, 20000));
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    SetTop(program, 15000);
    SaveOver(program, path);
    ExpectContent(path, WithoutLineEnd(Lines(1, 20000)));
    EXPECT_EQ(FileNames(), (Names{"big.txt"}));
    ExpectSelection(program, false);
    EXPECT_EQ(program.Top(), 0);
    ExpectShown(program, "big.txt", Line(1), Line(20000));
    // And what is left of it once more, of two of its blocks.
    SetTop(program, 710);
    ASSERT_TRUE(DragInView(program, PointOf(2, 5), PointOf(8, 10)));
    SaveOver(program, path);
    ExpectContent(path, Line(713).substr(5) + "\r\n" + Lines(714, 718) + Line(719).substr(0, 10));
    ExpectShown(program, "big.txt", Line(713).substr(5), Line(719).substr(0, 10));
    EXPECT_EQ(FileNames(), (Names{"big.txt"}));
}

TEST_F(SaveTest, TheFileThatIsShownIsKnownByAnyOfItsNames)
{
    const std::string path = Files.Write("lines.txt", Lines(1, 20000));
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    SetTop(program, 19000);
    ASSERT_TRUE(DragInView(program, PointOf(2, 0), PointOf(3, 8)));
    SaveOver(program, "C:\\KVTEST\\.\\Save\\LINES.TXT");
    ExpectContent(path, Line(19003) + "\r\n00019004");
    ExpectShown(program, "lines.txt", Line(19003), "00019004");
    EXPECT_EQ(FileNames().size(), 1u);
}

TEST_F(SaveTest, HexRowsSavedOverTheirFileAreShownAsText)
{
    const std::string path = Files.Write("data.bin", std::string(2000, '\x02'));
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(DragInView(program, PointOf(2, 30), PointOf(3, 3)));
    SaveOver(program, path);
    const std::string digits = "02 02 02 02 02 02 02 02-02 02 02 02 02 02 02 02   ................";
    ExpectContent(path, "00000020  " + digits + "\r\n00000030  " + digits);
    EXPECT_TRUE(program.Menu(IDM_VIEW_TEXT).Checked);
    ExpectShown(program, "data.bin", "00000020  " + digits, "00000030  " + digits);
}

TEST_F(SaveTest, TheFileThatIsShownIsKeptWhenReplacingIsDeclined)
{
    const std::string path = Files.Write("lines.txt", Lines(1, 100));
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(DragInView(program, PointOf(2, 10), PointOf(5, 4)));
    const HWND dialog = ChooseName(program, path);
    ASSERT_NE(dialog, nullptr);
    AnswerOverwrite(dialog, IDNO);
    PressControl(dialog, IDCANCEL);
    WaitUntilSaved(program, dialog);
    ExpectContent(path, Lines(1, 100));
    ExpectSelection(program, true);
    ExpectShown(program, "lines.txt", Line(1), Line(100));
}

TEST_F(SaveTest, SavingOverTheFileThatIsShownKeepsItsPlaceInTheList)
{
    Files.Write("1.txt", "one");
    Files.Write("2.txt", Lines(1, 100));
    Files.Write("3.txt", "three");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    OpenThroughDialog(program, Files.PathOf("2.txt"));
    ASSERT_TRUE(WaitForFile(program, "2.txt", "[File 2 of 3]"));
    ASSERT_TRUE(DragInView(program, PointOf(3, 5), PointOf(3, 12)));
    SaveOver(program, Files.PathOf("2.txt"));
    ExpectContent(Files.PathOf("2.txt"), Line(4).substr(5, 7));
    EXPECT_TRUE(WaitForFile(program, "2.txt", "[File 2 of 3]"));
    program.Command(IDM_FILE_NEXT);
    EXPECT_TRUE(WaitForFile(program, "3.txt", "[File 3 of 3]"));
}

TEST_F(SaveTest, AReadOnlyFileThatIsShownIsReportedAndStaysAsItWas)
{
    for (const int lines : {100, 5000}) { // of one block and of many
        const std::string path = Files.Write("lines.txt", Lines(1, lines));
        SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
        Program program(path);
        ASSERT_TRUE(program.WaitForFrame());
        ASSERT_TRUE(DragInView(program, PointOf(2, 10), PointOf(5, 4)));
        const Marks marks = MarksShown(program);
        ExpectOverRefused(program, path);
        ExpectContent(path, Lines(1, lines));
        EXPECT_EQ(FileNames(), (Names{"lines.txt"}));
        EXPECT_TRUE((GetFileAttributesA(path.c_str()) & FILE_ATTRIBUTE_READONLY) != 0);
        ExpectMarks(program, marks);
        ExpectSelection(program, true);
        ExpectShown(program, "lines.txt", Line(1), Line(lines));
        SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    }
}

TEST_F(SaveTest, AFileThatIsShownAndHeldByAnotherProgramIsReportedAndStaysAsItWas)
{
    for (const int lines : {100, 5000}) { // of one block and of many
        const std::string path = Files.Write("lines.txt", Lines(1, lines));
        Program program(path);
        ASSERT_TRUE(program.WaitForFrame());
        ASSERT_TRUE(DragInView(program, PointOf(2, 10), PointOf(5, 4)));
        const Marks marks = MarksShown(program);
        {
            const HeldFile hold(path, FILE_SHARE_READ | FILE_SHARE_WRITE);
            ExpectOverRefused(program, path);
        }
        ExpectContent(path, Lines(1, lines));
        EXPECT_EQ(FileNames(), (Names{"lines.txt"}));
        ExpectMarks(program, marks);
        ExpectSelection(program, true);
        ExpectShown(program, "lines.txt", Line(1), Line(lines));
        SaveOver(program, path); // now it can be
        ExpectContent(path, Line(3).substr(10) + "\r\n" + Lines(4, 5) + Line(6).substr(0, 4));
    }
}

TEST_F(SaveTest, FilesBesideTheOneThatIsShownStayAsTheyAre)
{
    // Names that differ from it in the last letter only: one is left.
    const std::string path = Files.Write("lines.txt", Lines(1, 100));
    Names names{"lines.txt"};
    for (int i = 0; i < 9; ++i) {
        names.push_back("lines.tx" + std::to_string(i));
        Files.Write(names.back(), names.back());
    }
    std::sort(names.begin(), names.end());
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(DragInView(program, PointOf(3, 5), PointOf(3, 12)));
    SaveOver(program, path);
    ExpectContent(path, Line(4).substr(5, 7));
    EXPECT_EQ(FileNames(), names);
    for (int i = 0; i < 9; ++i) {
        const std::string name = "lines.tx" + std::to_string(i);
        ExpectContent(Files.PathOf(name), name);
    }
}

// The new file is first written beside the old one, under a name that differs in its last character.
TEST_F(SaveTest, ANumberedFileAmongAllItsNumbersCanBeSavedOver)
{
    for (char number = '0'; number <= '9'; ++number) {
        Files.Write(std::string("log.") + number, Lines(1, 10));
    }
    const Names names = FileNames();
    const std::string path = Files.PathOf("log.1");
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(DragInView(program, PointOf(3, 5), PointOf(3, 12)));
    SaveOver(program, path);
    ExpectContent(path, Line(4).substr(5, 7));
    EXPECT_EQ(FileNames(), names);
    ExpectContent(Files.PathOf("log.2"), Lines(1, 10));
}

TEST_F(SaveTest, AFileCutShortMeanwhileIsReported)
{
    const std::string path = Files.Write("big.txt", Lines(1, 60000));
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    TruncateFile(path, 100);
    ASSERT_NE(ChooseName(program, Files.PathOf("all.txt")), nullptr);
    EXPECT_EQ(program.AnswerBox(), Failed);
    EXPECT_EQ(ReadWholeFile(Files.PathOf("all.txt")).substr(0, 84), Lines(1, 2)); // that much is still there
    ExpectOverRefused(program, path);
    ExpectContent(path, Lines(1, 3).substr(0, 100));
    EXPECT_EQ(FileNames(), (Names{"all.txt", "big.txt"}));
    EXPECT_EQ(program.Title(), "Kestovar-big.txt");
    EXPECT_EQ(program.TopText(), Line(1));
    EXPECT_EQ(program.Close(), 0u);
}
