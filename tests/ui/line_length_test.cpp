#include "support/dialogs.h"
#include "support/file_list.h"
#include "support/find_dialog.h"
#include "support/input.h"
#include "support/marks.h"
#include "support/ui_test.h"

namespace {

constexpr char LengthTitle[] = "Set Line Length";
constexpr char Refused[] = "Specified value is invalid\nPlease reenter";

class LineLengthTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }

    // A file that is no text, for all that most of it can be read.
    static std::string WriteBinary(const std::string& name = "records.bin", const std::string& pattern = "0123456789")
    {
        return WriteScratch(name, std::string(1, '\x01') + Repeated(pattern, 20000) + std::string(1, '\x02'));
    }
};

HWND ShowLength(const Program& program)
{
    EXPECT_TRUE(WaitForKeyboard(program));
    EXPECT_TRUE(OpenMenu(program, 'O'));
    PressKeys({'L'});
    return WaitForDialog(program, LengthTitle);
}

// The dialog begins with its field; what is typed first takes the place of what is there.
void Enter(HWND dialog, const std::string& text)
{
    ASSERT_TRUE(WaitUntil([&] { return FocusOf(dialog) == GetDlgItem(dialog, IDC_LINE_LENGTH); }));
    PressKeys({VK_END});
    for (std::size_t left = ControlText(dialog, IDC_LINE_LENGTH).size(); left > 0; --left) {
        PressKeys({VK_BACK});
    }
    ExpectText(dialog, IDC_LINE_LENGTH, "");
    TypeText(text);
    ExpectText(dialog, IDC_LINE_LENGTH, text);
}

void SetLength(const Program& program, const std::string& text)
{
    const HWND dialog = ShowLength(program);
    ASSERT_NE(dialog, nullptr);
    Enter(dialog, text);
    Accept(program, dialog);
    EXPECT_TRUE(WaitForKeyboard(program));
}

std::string LengthShown(const Program& program)
{
    const HWND dialog = ShowLength(program);
    if (dialog == nullptr) {
        return "";
    }
    const std::string text = ControlText(dialog, IDC_LINE_LENGTH);
    PressKeys({VK_ESCAPE});
    EXPECT_TRUE(WaitUntilClosed(dialog));
    return text;
}

void ShowText(Program& program)
{
    ASSERT_TRUE(WaitForKeyboard(program));
    PressKeys({VK_CONTROL, 'T'});
    ASSERT_TRUE(WaitUntil([&] { return program.Menu(IDM_VIEW_TEXT).Checked && program.Answers(); }));
}

// How long the view's lines are that can be seen as a whole.
bool LinesAre(Program& program, int length)
{
    std::vector<ProbeText> texts = program.ViewTexts();
    bool same = texts.size() > 3;
    for (const ProbeText& text : texts) {
        same = same && text.Length == length;
    }
    return same;
}

void ExpectLines(Program& program, int length)
{
    EXPECT_TRUE(WaitUntil([&] { return LinesAre(program, length); }, 5000))
        << program.ViewTexts().at(0).Length << " instead of " << length;
}

bool Save(const Program& program)
{
    if (!WaitForKeyboard(program)) {
        return false;
    }
    PressKeys({VK_CONTROL, 'S'});
    return WaitUntil([] { return SettingValue("EditorName") != "(none)" && SettingValue("LoadOnDelete") != "(none)"; });
}

} // namespace

TEST_F(LineLengthTest, TheMenuKeysShowTheLength)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowLength(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), program.Frame());
    EXPECT_EQ(ControlText(dialog, IDC_LINE_LENGTH), "75");
    TypeText("80"); // over it
    ExpectText(dialog, IDC_LINE_LENGTH, "80");
    Accept(program, dialog);
    EXPECT_EQ(LengthShown(program), "80");
}

TEST_F(LineLengthTest, AnythingButALengthIsRefusedAndNothingChanges)
{
    Program program(WriteBinary());
    ASSERT_TRUE(program.WaitForFrame());
    ShowText(program);
    ExpectLines(program, 75);
    const HWND dialog = ShowLength(program);
    ASSERT_NE(dialog, nullptr);
    for (const char* const text : {"0", "256", "", "abc", "-5", "1000", "12345", "  "}) {
        Enter(dialog, text);
        PressKeys({VK_RETURN});
        ASSERT_NE(WaitForBoxOver(dialog), nullptr) << text;
        EXPECT_EQ(program.AnswerBox(), Refused) << text;
        ASSERT_TRUE(WaitUntil([&] { return IsWindowEnabled(dialog) && GetForegroundWindow() == dialog; })) << text;
        EXPECT_EQ(ControlText(dialog, IDC_LINE_LENGTH), text);
        ExpectLines(program, 75);
    }
    PressKeys({VK_ESCAPE});
    ASSERT_TRUE(WaitUntilClosed(dialog));
    EXPECT_EQ(LengthShown(program), "75");
}

TEST_F(LineLengthTest, TheTextIsCutAnewAtOnce)
{
    Program program(WriteBinary());
    ASSERT_TRUE(program.WaitForFrame());
    ShowText(program);
    ExpectLines(program, 75);
    for (const int length : {20, 150, 255, 7}) {
        SetLength(program, std::to_string(length));
        ExpectLines(program, length);
        EXPECT_EQ(program.Vertical().Max, (20002 + length - 1) / length - RowsOf(program)) << length;
        const std::string expected = std::string(1, '\x01') + Repeated("0123456789", 254);
        EXPECT_EQ(program.TopText().substr(1), expected.substr(1, std::min<std::size_t>(199, length) - 1));
    }
}

TEST_F(LineLengthTest, WhatIsEnteredCountsUpToWhatIsNoDigitAndToTheFourthCharacter)
{
    Program program(WriteBinary());
    ASSERT_TRUE(program.WaitForFrame());
    ShowText(program);
    SetLength(program, "25x");
    ExpectLines(program, 25);
    SetLength(program, "00309");
    ExpectLines(program, 30);
    EXPECT_EQ(LengthShown(program), "30");
    SetLength(program, "255");
    ExpectLines(program, 255);
}

TEST_F(LineLengthTest, OneCharacterInALineIsTheLeast)
{
    Program program(WriteBinary());
    ASSERT_TRUE(program.WaitForFrame());
    ShowText(program);
    SetLength(program, "1");
    ExpectLines(program, 1);
    EXPECT_EQ(program.Vertical().Max, 20002 - RowsOf(program));
}

TEST_F(LineLengthTest, TheViewGoesToTheBeginningAndForgetsTheSelection)
{
    Program program(WriteBinary());
    ASSERT_TRUE(program.WaitForFrame());
    ShowText(program);
    SetLength(program, "200");
    program.Command(IDM_EDIT_SELECT_ALL);
    EXPECT_FALSE(program.Menu(IDM_EDIT_COPY).Greyed);
    EXPECT_FALSE(program.Menu(IDM_FILE_SAVE_AS).Greyed);
    SetTop(program, 40);
    PressKeys({VK_RIGHT});
    ASSERT_TRUE(WaitUntil([&] { return program.Horizontal().Position == 8; }));
    SetLength(program, "190");
    EXPECT_EQ(program.Top(), 0);
    EXPECT_EQ(program.Horizontal().Position, 0);
    EXPECT_TRUE(program.Menu(IDM_EDIT_COPY).Greyed);
    EXPECT_TRUE(program.Menu(IDM_FILE_SAVE_AS).Greyed);
    ExpectMarks(program, {});
    EXPECT_TRUE(program.StatusText().starts_with("Line 1 Col 1 ")) << program.StatusText();
}

TEST_F(LineLengthTest, AMatchIsNoLongerMarked)
{
    std::string content = std::string(1, '\x01') + Repeated("0123456789", 20000);
    content.replace(8 * 75 + 10, 6, "needle");
    content.replace(12 * 75 + 20, 6, "needle");
    Program program(WriteScratch("records.bin", content));
    ASSERT_TRUE(program.WaitForFrame());
    ShowText(program);
    FindText(program, "needle");
    ExpectMarks(program, {Mark(8, 10, 16)});
    SetLength(program, "60");
    ExpectLines(program, 60);
    ExpectMarks(program, {});
    ASSERT_TRUE(WaitForKeyboard(program));
    PressKeys({VK_F3}); // goes on behind it
    ExpectMarks(program, {Mark(15, 20, 26)});
}

TEST_F(LineLengthTest, CancelTheEscapeKeyAndTheCloseBoxChangeNothing)
{
    Program program(WriteBinary());
    ASSERT_TRUE(program.WaitForFrame());
    ShowText(program);
    program.Command(IDM_EDIT_SELECT_ALL);
    for (int way = 0; way < 3; ++way) {
        SCOPED_TRACE(way);
        const HWND dialog = ShowLength(program);
        ASSERT_NE(dialog, nullptr);
        Enter(dialog, "20");
        switch (way) {
        case 0: ClickControl(dialog, IDCANCEL); break;
        case 1: PressKeys({VK_ESCAPE}); break;
        default: PostMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); break;
        }
        ASSERT_TRUE(WaitUntilClosed(dialog));
        ExpectLines(program, 75);
        EXPECT_FALSE(program.Menu(IDM_EDIT_COPY).Greyed);
    }
    EXPECT_EQ(LengthShown(program), "75");
}

TEST_F(LineLengthTest, InHexModeNothingIsToBeSeenUntilTheText)
{
    Program program(WriteBinary());
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(program.Menu(IDM_VIEW_HEX).Checked);
    SetTop(program, 100);
    const Pixels before = ReadView(program);
    SetLength(program, "20");
    EXPECT_EQ(program.Top(), 100);
    EXPECT_TRUE(WaitUntil([&] { return ReadView(program).Values == before.Values; }));
    EXPECT_EQ(program.TopText().substr(0, 8), "00000640");
    ShowText(program);
    ExpectLines(program, 20);
}

TEST_F(LineLengthTest, ATextFileKeepsItsLines)
{
    Program program(WriteScratch("lines.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    SetTop(program, 100);
    program.Command(IDM_EDIT_SELECT_ALL);
    SetLength(program, "4");
    EXPECT_EQ(program.Top(), 100);
    EXPECT_EQ(program.TopText(), "Line 101");
    EXPECT_FALSE(program.Menu(IDM_EDIT_COPY).Greyed);
}

TEST_F(LineLengthTest, ItHoldsForTheFilesOpenedLater)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    SetLength(program, "33");
    for (const char* const name : {"one.bin", "two.bin"}) {
        program.Inside().Drop(program.Frame(), WriteBinary(name));
        ASSERT_TRUE(program.WaitForTitle(name));
        ShowText(program);
        ExpectLines(program, 33);
    }
}

TEST_F(LineLengthTest, ItIsWrittenWithSaveSettingsAndBackAtTheNextStart)
{
    const std::string path = WriteBinary();
    {
        Program program(path);
        ASSERT_TRUE(program.WaitForFrame());
        const SettingsKeys before = ReadSettings();
        SetLength(program, "44");
        EXPECT_EQ(ReadSettings(), before);
        ASSERT_TRUE(Save(program));
        EXPECT_EQ(SettingValue("FixedLineLen"), "44");
        EXPECT_EQ(program.Close(), 0u);
    }
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    ShowText(program);
    ExpectLines(program, 44);
    EXPECT_EQ(LengthShown(program), "44");
}
