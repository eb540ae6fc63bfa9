#include "support/dialogs.h"
#include "support/file_list.h"
#include "support/find_dialog.h"
#include "support/input.h"
#include "support/marks.h"
#include "support/ui_test.h"

#include <cstring>
#include <map>

namespace {

constexpr char PreferencesTitle[] = "Preferences";
constexpr char TabSizeRefused[] = "Tab size invalid. The value must be between 2 and 16.";
constexpr int BarHeight = 34;
constexpr std::size_t LongestEditor = 259;

// Preferences as a person uses them: by the menu and with real keys. What each setting does elsewhere is in
// the tests of that.
class PreferencesTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }
};

HWND ShowPreferences(const Program& program)
{
    EXPECT_TRUE(WaitForKeyboard(program));
    EXPECT_TRUE(OpenMenu(program, 'O'));
    PressKeys({'P'});
    return WaitForDialog(program, PreferencesTitle);
}

// Alt with the letter of a box.
void Toggle(HWND dialog, int box, char letter)
{
    const bool checked = IsChecked(dialog, box);
    PressKeys({VK_MENU, static_cast<WORD>(letter)});
    ExpectChecked(dialog, box, !checked);
}

// Alt with the letter of a field chooses its text: what is typed takes its place.
void Enter(HWND dialog, int field, char letter, const std::string& text)
{
    PressKeys({VK_MENU, static_cast<WORD>(letter)});
    ASSERT_TRUE(WaitUntil([&] { return FocusOf(dialog) == GetDlgItem(dialog, field); }));
    PressKeys({VK_BACK});
    ExpectText(dialog, field, "");
    TypeText(text);
    ExpectText(dialog, field, text);
}

void EnterTabSize(HWND dialog, const std::string& text)
{
    Enter(dialog, IDC_PREFER_TAB_SIZE, 'I', text);
}

// Changes one box, by its letter, in a dialog of its own.
void Change(const Program& program, int box, char letter)
{
    const HWND dialog = ShowPreferences(program);
    ASSERT_NE(dialog, nullptr);
    Toggle(dialog, box, letter);
    Accept(program, dialog);
    EXPECT_TRUE(WaitForKeyboard(program));
}

void SetTabSize(const Program& program, const std::string& text)
{
    const HWND dialog = ShowPreferences(program);
    ASSERT_NE(dialog, nullptr);
    EnterTabSize(dialog, text);
    Accept(program, dialog);
    EXPECT_TRUE(WaitForKeyboard(program));
}

LONG HeightOf(HWND window)
{
    const RECT place = PlaceOf(window);
    return IsWindowVisible(window) ? place.bottom - place.top : 0;
}

// Ctrl+S, and waits until the settings are there.
bool Save(const Program& program)
{
    if (!WaitForKeyboard(program)) {
        return false;
    }
    PressKeys({VK_CONTROL, 'S'});
    return WaitUntil([] { return SettingValue("EditorName") != "(none)" && SettingValue("LoadOnDelete") != "(none)"; });
}

// The view's texts, by their rows.
std::vector<std::string> RowsShown(Program& program)
{
    std::vector<std::string> rows;
    for (const ProbeText& text : program.ViewTexts()) {
        rows.emplace_back(text.Text);
    }
    return rows;
}

void ExpectTopText(Program& program, const std::string& text)
{
    EXPECT_TRUE(WaitUntil([&] { return program.TopText() == text; }, 3000)) << program.TopText();
}

constexpr struct {
    int Box;
    char Letter;
    const char* Key;
    bool Default;
} Boxes[] = {
    {IDC_PREFER_OEM, 'O', "OemToAnsi", false},
    {IDC_PREFER_EXPAND_TABS, 'X', "Ptabs", false},
    {IDC_PREFER_RULER, 'R', "Ruler", false},
    {IDC_PREFER_SCROLL_BARS, 'S', "ScrollBars", true},
    {IDC_PREFER_STATUS_LINE, 'T', "StatusLine", true},
    {IDC_PREFER_BUTTON_BAR, 'B', "ButtonBar", true},
    {IDC_PREFER_MINIMISE, 'M', "MinOnLaunch", false},
    {IDC_PREFER_MAXIMISE, 'Z', "MaxLaunchApp", false},
    {IDC_PREFER_LOAD_ON_DELETE, 'L', "LoadOnDelete", false},
    {IDC_PREFER_AUTO_ZIP, 'A', "AutoZip", false},
};

// A window that help is asked for in place of the system's own viewer.
class HelpViewer {
public:
    HelpViewer()
    {
        WNDCLASSA viewer = {};
        viewer.lpfnWndProc = Procedure;
        viewer.hInstance = GetModuleHandleA(nullptr);
        viewer.lpszClassName = "MS_WINHELP";
        EXPECT_NE(RegisterClassA(&viewer), 0);
        Window = CreateWindowA("MS_WINHELP", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, viewer.hInstance, this);
        EXPECT_NE(Window, nullptr);
    }
    ~HelpViewer()
    {
        DestroyWindow(Window);
        UnregisterClassA("MS_WINHELP", GetModuleHandleA(nullptr));
    }
    HelpViewer(const HelpViewer&) = delete;
    HelpViewer& operator=(const HelpViewer&) = delete;

    // Waits for the next request; false when none comes.
    bool WaitForRequest()
    {
        return WaitUntil([this] {
            MSG message;
            while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
                DispatchMessageA(&message);
            }
            return Requested;
        });
    }

    int Command = 0;
    std::string File;
    LONG Topic = 0;

private:
    // What the system sends in a block, with the file's name behind it.
    struct Request {
        WORD Size;
        WORD Command;
        LONG Topic;
        LONG Reserved;
        WORD FilePlace;
        WORD DataPlace;
    };

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == WM_NCCREATE) {
            const auto* creation = reinterpret_cast<const CREATESTRUCTA*>(lParam);
            SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
        }
        if (message == WM_COPYDATA) {
            auto* viewer = reinterpret_cast<HelpViewer*>(GetWindowLongPtrA(window, GWLP_USERDATA));
            viewer->Take(*reinterpret_cast<const COPYDATASTRUCT*>(lParam));
            return TRUE;
        }
        return DefWindowProcA(window, message, wParam, lParam);
    }

    void Take(const COPYDATASTRUCT& block)
    {
        const auto* bytes = static_cast<const char*>(block.lpData);
        Request request = {};
        ASSERT_GE(block.cbData, sizeof request);
        memcpy(&request, bytes, sizeof request);
        Command = request.Command;
        Topic = request.Topic;
        File = request.FilePlace != 0 && request.FilePlace < block.cbData ? bytes + request.FilePlace : "";
        Requested = true;
    }

    HWND Window = nullptr;
    bool Requested = false;
};

} // namespace

TEST_F(PreferencesTest, TheMenuKeysShowTheSettings)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowPreferences(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), program.Frame());
    EXPECT_FALSE(IsWindowEnabled(program.Frame()));
    for (const auto& box : Boxes) {
        EXPECT_EQ(IsChecked(dialog, box.Box), box.Default) << box.Key;
    }
    EXPECT_FALSE(IsChecked(dialog, IDC_PREFER_EBCDIC));
    EXPECT_EQ(ControlText(dialog, IDC_PREFER_TAB_SIZE), "8");
    EXPECT_EQ(ControlText(dialog, IDC_PREFER_EDITOR), "notepad");
    PressKeys({VK_ESCAPE});
    EXPECT_TRUE(WaitUntilClosed(dialog));
}

TEST_F(PreferencesTest, EachBoxStandsForASettingOfItsOwn)
{
    for (const auto& changed : Boxes) {
        WriteSettings(FixedFont + std::string(changed.Key) + (changed.Default ? "=0\n" : "=1\n"));
        Program program;
        ASSERT_TRUE(program.WaitForFrame());
        program.Post(WM_COMMAND, IDM_OPTIONS_PREFERENCES);
        const HWND dialog = WaitForDialog(program, PreferencesTitle);
        ASSERT_NE(dialog, nullptr);
        for (const auto& box : Boxes) {
            EXPECT_EQ(IsChecked(dialog, box.Box), box.Default != (&box == &changed))
                << box.Key << " in " << changed.Key;
        }
        EXPECT_FALSE(IsChecked(dialog, IDC_PREFER_EBCDIC));
    }
}

TEST_F(PreferencesTest, TheRulerComesAndGoesAtOnce)
{
    Program program(WriteScratch("lines.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    const RECT without = PlaceOf(program.View());
    Change(program, IDC_PREFER_RULER, 'R');
    EXPECT_EQ(HeightOf(program.Ruler()), CellHeight());
    EXPECT_EQ(PlaceOf(program.View()).top, without.top + CellHeight());
    EXPECT_EQ(PlaceOf(program.View()).bottom, without.bottom);
    EXPECT_TRUE(WaitUntil([&] {
        const SIZE size = ClientSize(program.Ruler());
        const Pixels ruler = program.Inside().Read(program.Ruler(), 0, 0, size.cx, size.cy);
        return ruler.CountOf(Black) > 100 && ruler.CountOf(Black) + ruler.CountOf(Yellow) == size.cx * size.cy;
    }));
    Change(program, IDC_PREFER_RULER, 'R');
    EXPECT_EQ(HeightOf(program.Ruler()), 0);
    EXPECT_EQ(PlaceOf(program.View()).top, without.top);
}

TEST_F(PreferencesTest, TheScrollBarsGoAndComeAtOnce)
{
    Program program(WriteScratch("wide.txt", Repeated(Repeated("0123456789", 300) + "\r\n", 302 * 100)));
    ASSERT_TRUE(program.WaitForFrame());
    const SIZE with = ClientSize(program.View());
    const RECT place = PlaceOf(program.View());
    EXPECT_LT(with.cx, place.right - place.left);
    Change(program, IDC_PREFER_SCROLL_BARS, 'S');
    EXPECT_EQ(ClientSize(program.View()).cx, place.right - place.left);
    EXPECT_EQ(ClientSize(program.View()).cy, place.bottom - place.top);
    EXPECT_EQ(GetWindowLongA(program.View(), GWL_STYLE) & (WS_VSCROLL | WS_HSCROLL), 0);
    PressKeys({VK_NEXT}); // the keys still scroll
    EXPECT_TRUE(WaitUntil([&] { return program.StatusText().find("Line 1 ") == std::string::npos; }));
    PressKeys({VK_HOME});
    EXPECT_TRUE(WaitUntil([&] { return program.StatusText().starts_with("Line 1 "); }));
    Change(program, IDC_PREFER_SCROLL_BARS, 'S');
    EXPECT_EQ(ClientSize(program.View()).cx, with.cx);
    EXPECT_EQ(ClientSize(program.View()).cy, with.cy);
    EXPECT_EQ(program.Vertical().Max, 100 - RowsOf(program));
}

TEST_F(PreferencesTest, TheStatusLineGoesAndComesAtOnce)
{
    Program program(WriteScratch("lines.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    const RECT with = PlaceOf(program.View());
    const LONG height = HeightOf(program.Status());
    EXPECT_GT(height, 0);
    Change(program, IDC_PREFER_STATUS_LINE, 'T');
    EXPECT_EQ(HeightOf(program.Status()), 0);
    EXPECT_EQ(PlaceOf(program.View()).bottom, with.bottom + height);
    Change(program, IDC_PREFER_STATUS_LINE, 'T');
    EXPECT_EQ(HeightOf(program.Status()), height);
    EXPECT_EQ(PlaceOf(program.View()).bottom, with.bottom);
    EXPECT_TRUE(program.StatusText().starts_with("Line 1 "));
}

TEST_F(PreferencesTest, TheButtonBarGoesAndComesAtOnce)
{
    Program program(WriteScratch("lines.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    const RECT with = PlaceOf(program.View());
    EXPECT_EQ(HeightOf(program.Buttons()), BarHeight);
    Change(program, IDC_PREFER_BUTTON_BAR, 'B');
    EXPECT_EQ(HeightOf(program.Buttons()), 0);
    EXPECT_EQ(PlaceOf(program.View()).top, with.top - BarHeight);
    EXPECT_EQ(PlaceOf(program.View()).bottom, with.bottom);
    Change(program, IDC_PREFER_BUTTON_BAR, 'B');
    EXPECT_EQ(HeightOf(program.Buttons()), BarHeight);
    EXPECT_EQ(PlaceOf(program.View()).top, with.top);
}

TEST_F(PreferencesTest, AllFourLeaveTheWholeWindowToTheText)
{
    WriteSettings(FixedFont + std::string("Ruler=1\n"));
    Program program(WriteScratch("lines.txt", NumberedLines(500)));
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowPreferences(program);
    ASSERT_NE(dialog, nullptr);
    for (const int box : {IDC_PREFER_RULER, IDC_PREFER_SCROLL_BARS, IDC_PREFER_STATUS_LINE, IDC_PREFER_BUTTON_BAR}) {
        ClickControl(dialog, box);
        ExpectChecked(dialog, box, false);
    }
    ClickControl(dialog, IDOK);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    ASSERT_TRUE(program.Answers());
    const SIZE frame = ClientSize(program.Frame());
    const SIZE view = ClientSize(program.View());
    EXPECT_EQ(view.cx, frame.cx);
    EXPECT_EQ(view.cy, frame.cy);
    EXPECT_EQ(RowsShown(program).size(), static_cast<std::size_t>((view.cy + CellHeight() - 1) / CellHeight()));
}

TEST_F(PreferencesTest, TabsAreExpandedAtOnceAndByTheSizeEntered)
{
    Program program(WriteScratch("tabs.txt", "\tx\r\nabcde\tx\r\n"));
    ASSERT_TRUE(program.WaitForFrame());
    const std::vector<std::string> plain = RowsShown(program);
    const std::vector<std::string> byEight = {"        x", "abcde     x"};
    const std::vector<std::string> byFour = {"    x", "abcde x"};
    EXPECT_NE(plain, byEight);
    Change(program, IDC_PREFER_EXPAND_TABS, 'X');
    EXPECT_TRUE(WaitUntil([&] { return RowsShown(program) == byEight; })) << testing::PrintToString(RowsShown(program));
    SetTabSize(program, "4");
    EXPECT_TRUE(WaitUntil([&] { return RowsShown(program) == byFour; })) << testing::PrintToString(RowsShown(program));
    Change(program, IDC_PREFER_EXPAND_TABS, 'X');
    EXPECT_TRUE(WaitUntil([&] { return RowsShown(program) == plain; })) << testing::PrintToString(RowsShown(program));
}

TEST_F(PreferencesTest, EbcdicTextIsReadableAtOnceAndNoMoreAfterANewStart)
{
    const std::string path = WriteScratch("mainframe.txt", "\xC8\x85\x93\x93\x96\x40\xF1\xF2");
    {
        Program program(path);
        ASSERT_TRUE(program.WaitForFrame());
        program.Command(IDM_VIEW_TEXT);
        EXPECT_NE(program.TopText(), "Hello 12");
        Change(program, IDC_PREFER_EBCDIC, 'E');
        ExpectTopText(program, "Hello 12");
        Change(program, IDC_PREFER_EBCDIC, 'E');
        EXPECT_TRUE(WaitUntil([&] { return program.TopText() != "Hello 12"; }));
        Change(program, IDC_PREFER_EBCDIC, 'E');
        ExpectTopText(program, "Hello 12");
        ASSERT_TRUE(Save(program));
    }
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowPreferences(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_FALSE(IsChecked(dialog, IDC_PREFER_EBCDIC));
}

TEST_F(PreferencesTest, OemTextIsReadableAtOnce)
{
    Program program(WriteScratch("oem.txt", "gr\x81n, \x84\x94")); // as code pages 437 and 850 have them
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_VIEW_TEXT);
    EXPECT_NE(program.TopText(), "gr\xFCn, \xE4\xF6");
    Change(program, IDC_PREFER_OEM, 'O');
    ExpectTopText(program, "gr\xFCn, \xE4\xF6");
}

TEST_F(PreferencesTest, ATabSizeOutsideItsBoundsIsRefusedAndNothingIsTakenMeanwhile)
{
    Program program(WriteScratch("tabs.txt", "a\tb"));
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowPreferences(program);
    ASSERT_NE(dialog, nullptr);
    Toggle(dialog, IDC_PREFER_EXPAND_TABS, 'X');
    Toggle(dialog, IDC_PREFER_RULER, 'R');
    Toggle(dialog, IDC_PREFER_BUTTON_BAR, 'B');
    Enter(dialog, IDC_PREFER_EDITOR, 'D', "");
    const std::string before = program.TopText();
    for (const char* const text : {"1", "17", "", "abc", "0", "-5", "99"}) {
        EnterTabSize(dialog, text);
        PressKeys({VK_RETURN});
        const HWND box = WaitForBoxOver(dialog);
        ASSERT_NE(box, nullptr) << text;
        EXPECT_EQ(program.AnswerBox(), TabSizeRefused) << text;
        ASSERT_TRUE(WaitUntil([&] { return IsWindowEnabled(dialog) && GetForegroundWindow() == dialog; })) << text;
        EXPECT_EQ(ControlText(dialog, IDC_PREFER_TAB_SIZE), text);
        EXPECT_EQ(HeightOf(program.Ruler()), 0);
        EXPECT_EQ(HeightOf(program.Buttons()), BarHeight);
        EXPECT_EQ(program.TopText(), before);
    }
    PressKeys({VK_ESCAPE});
    ASSERT_TRUE(WaitUntilClosed(dialog));
    EXPECT_FALSE(program.Menu(IDM_EDIT_FILE).Greyed);
    ASSERT_TRUE(Save(program));
    EXPECT_EQ(SettingValue("TabSize"), "8");
    EXPECT_EQ(SettingValue("Ptabs"), "0");
    EXPECT_EQ(SettingValue("Ruler"), "0");
    EXPECT_EQ(SettingValue("ButtonBar"), "1");
    EXPECT_EQ(SettingValue("EditorName"), "notepad");
}

TEST_F(PreferencesTest, ATabSizeWithinItsBoundsIsTaken)
{
    WriteSettings(FixedFont + std::string("Ptabs=1\n"));
    Program program(WriteScratch("tabs.txt", "\tb"));
    ASSERT_TRUE(program.WaitForFrame());
    const std::map<std::string, int> sizes = {{"2", 2}, {"16", 16}, {"8x", 8}, {"9", 9}, {"123", 12}};
    for (const auto& [text, size] : sizes) {
        SetTabSize(program, text);
        ExpectTopText(program, std::string(static_cast<std::size_t>(size), ' ') + "b");
        const HWND dialog = ShowPreferences(program);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(ControlText(dialog, IDC_PREFER_TAB_SIZE), std::to_string(size));
        PressKeys({VK_ESCAPE});
        ASSERT_TRUE(WaitUntilClosed(dialog));
    }
}

TEST_F(PreferencesTest, ASelectionIsForgottenOnlyWhenTheColumnsChange)
{
    Program program(WriteScratch("lines.txt", "a\tb\r\nc"));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_EDIT_SELECT_ALL);
    Change(program, IDC_PREFER_RULER, 'R');
    EXPECT_FALSE(program.Menu(IDM_EDIT_COPY).Greyed);
    Change(program, IDC_PREFER_EXPAND_TABS, 'X');
    EXPECT_TRUE(program.Menu(IDM_EDIT_COPY).Greyed);
    ExpectMarks(program, {});
    program.Command(IDM_EDIT_SELECT_ALL);
    EXPECT_FALSE(program.Menu(IDM_EDIT_COPY).Greyed);
    SetTabSize(program, "8"); // as it was
    EXPECT_FALSE(program.Menu(IDM_EDIT_COPY).Greyed);
    SetTabSize(program, "9");
    EXPECT_TRUE(program.Menu(IDM_EDIT_COPY).Greyed);
    ExpectMarks(program, {});
}

TEST_F(PreferencesTest, CancelTheEscapeKeyAndTheCloseBoxChangeNothing)
{
    Program program(WriteScratch("tabs.txt", "a\tb"));
    ASSERT_TRUE(program.WaitForFrame());
    const std::string top = program.TopText();
    for (int way = 0; way < 3; ++way) {
        SCOPED_TRACE(way);
        const HWND dialog = ShowPreferences(program);
        ASSERT_NE(dialog, nullptr);
        for (const auto& box : Boxes) {
            EXPECT_EQ(IsChecked(dialog, box.Box), box.Default) << box.Key;
            Toggle(dialog, box.Box, box.Letter);
        }
        Toggle(dialog, IDC_PREFER_EBCDIC, 'E');
        EnterTabSize(dialog, "3");
        Enter(dialog, IDC_PREFER_EDITOR, 'D', "other.exe");
        switch (way) {
        case 0: ClickControl(dialog, IDCANCEL); break;
        case 1: PressKeys({VK_ESCAPE}); break;
        default: PostMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); break;
        }
        ASSERT_TRUE(WaitUntilClosed(dialog));
        EXPECT_EQ(program.TopText(), top);
        EXPECT_EQ(HeightOf(program.Ruler()), 0);
        EXPECT_EQ(HeightOf(program.Buttons()), BarHeight);
    }
    ASSERT_TRUE(Save(program));
    for (const auto& box : Boxes) {
        EXPECT_EQ(SettingValue(box.Key), box.Default ? "1" : "0") << box.Key;
    }
    EXPECT_EQ(SettingValue("TabSize"), "8");
    EXPECT_EQ(SettingValue("EditorName"), "notepad");
}

TEST_F(PreferencesTest, WhatIsSetIsWrittenWithSaveSettingsAndNotBefore)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const SettingsKeys before = ReadSettings();
    const HWND dialog = ShowPreferences(program);
    ASSERT_NE(dialog, nullptr);
    for (const auto& box : Boxes) {
        Toggle(dialog, box.Box, box.Letter);
    }
    EnterTabSize(dialog, "3");
    Enter(dialog, IDC_PREFER_EDITOR, 'D', "c:\\tools\\other editor.exe");
    Accept(program, dialog);
    ASSERT_TRUE(WaitForKeyboard(program));
    EXPECT_EQ(ReadSettings(), before);
    ASSERT_TRUE(Save(program));
    for (const auto& box : Boxes) {
        EXPECT_EQ(SettingValue(box.Key), box.Default ? "0" : "1") << box.Key;
    }
    EXPECT_EQ(SettingValue("TabSize"), "3");
    EXPECT_EQ(SettingValue("EditorName"), "c:\\tools\\other editor.exe");
}

TEST_F(PreferencesTest, WhatIsNotSavedIsGoneAtTheNextStart)
{
    const SettingsKeys before = ReadSettings();
    {
        Program program;
        ASSERT_TRUE(program.WaitForFrame());
        Change(program, IDC_PREFER_RULER, 'R');
        SetTabSize(program, "3");
        EXPECT_EQ(program.Close(), 0u);
    }
    EXPECT_EQ(ReadSettings(), before);
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(HeightOf(program.Ruler()), 0);
}

TEST_F(PreferencesTest, TheEditorsNameHasRoomForALongPathAndNoMore)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const std::string name = "c:\\" + Repeated("abcdefghi\\", LongestEditor - 7) + "e.ex";
    ASSERT_EQ(name.size(), LongestEditor);
    HWND dialog = ShowPreferences(program);
    ASSERT_NE(dialog, nullptr);
    Enter(dialog, IDC_PREFER_EDITOR, 'D', name);
    TypeText("tension");
    // The keys come in their order: the box is changed after they were refused.
    Toggle(dialog, IDC_PREFER_RULER, 'R');
    EXPECT_EQ(ControlText(dialog, IDC_PREFER_EDITOR), name);
    Accept(program, dialog);
    ASSERT_TRUE(Save(program));
    EXPECT_EQ(SettingValue("EditorName"), name);
    dialog = ShowPreferences(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, IDC_PREFER_EDITOR), name);
}

TEST_F(PreferencesTest, WithoutAnEditorNothingIsEditedUntilThereIsOneAgain)
{
    Program program(WriteScratch("README", "text")); // launched by editing it
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_FALSE(program.Menu(IDM_EDIT_FILE).Greyed);
    EXPECT_FALSE(program.Menu(IDM_FILE_LAUNCH).Greyed);
    HWND dialog = ShowPreferences(program);
    ASSERT_NE(dialog, nullptr);
    Enter(dialog, IDC_PREFER_EDITOR, 'D', "");
    Accept(program, dialog);
    EXPECT_TRUE(program.Menu(IDM_EDIT_FILE).Greyed);
    EXPECT_TRUE(program.Menu(IDM_FILE_LAUNCH).Greyed);
    dialog = ShowPreferences(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, IDC_PREFER_EDITOR), "");
    Enter(dialog, IDC_PREFER_EDITOR, 'D', "notepad");
    Accept(program, dialog);
    EXPECT_FALSE(program.Menu(IDM_EDIT_FILE).Greyed);
    EXPECT_FALSE(program.Menu(IDM_FILE_LAUNCH).Greyed);
    dialog = ShowPreferences(program);
    ASSERT_NE(dialog, nullptr);
    Enter(dialog, IDC_PREFER_EDITOR, 'D', "");
    Accept(program, dialog);
    ASSERT_TRUE(Save(program));
    EXPECT_EQ(SettingValue("EditorName"), "");
}

TEST_F(PreferencesTest, HelpAsksForTheTopicOfThePreferencesAndTheDialogStays)
{
    HelpViewer viewer;
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowPreferences(program);
    ASSERT_NE(dialog, nullptr);
    Toggle(dialog, IDC_PREFER_RULER, 'R');
    PressControl(dialog, IDC_ASK_HELP);
    ASSERT_TRUE(viewer.WaitForRequest());
    EXPECT_EQ(viewer.Command, HELP_CONTEXT);
    EXPECT_EQ(viewer.Topic, 100);
    std::string file = viewer.File;
    CharLowerA(file.data());
    EXPECT_TRUE(file.ends_with("kestovar.hlp")) << file;
    EXPECT_TRUE(IsWindow(dialog));
    EXPECT_TRUE(IsChecked(dialog, IDC_PREFER_RULER));
    EXPECT_EQ(HeightOf(program.Ruler()), 0);
    Accept(program, dialog);
    EXPECT_EQ(HeightOf(program.Ruler()), CellHeight());
}
