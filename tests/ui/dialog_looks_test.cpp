// How the dialogs look, and how the keys go through them: the same for each.
#include "support/dialogs.h"
#include "support/file_list.h"
#include "support/find_dialog.h"
#include "support/input.h"
#include "support/marks.h"
#include "support/picture_file.h"
#include "support/test_printer.h"
#include "support/ui_test.h"
#include "support/windows_path.h"

#include <algorithm>
#include <cctype>
#include <map>

namespace {

using Ids = std::vector<int>;

// The program with what a dialog is about.
struct Stage {
    Program& TheProgram;
    const TestDirectory& Files;
    std::unique_ptr<TestPrinter>& Printer; // none yet
};

struct DialogCase {
    const char* Name; // and that of its picture
    HWND (*Show)(const Stage& stage);
    Ids TabStops; // in their order, from the first; of alternatives the chosen one
    int Default;  // the button that Enter presses
};

HWND ShowByCommand(const Stage& stage, UINT command, const char* title)
{
    stage.TheProgram.Post(WM_COMMAND, command);
    return WaitForDialog(stage.TheProgram, title);
}

// Opens a file unless it is open.
bool Open(const Stage& stage, const std::string& path)
{
    std::string name = path.substr(path.find_last_of('\\') + 1);
    CharLowerA(name.data());
    if (stage.TheProgram.Title() != "Kestovar-" + name) {
        stage.TheProgram.Inside().Drop(stage.TheProgram.Frame(), path);
    }
    return stage.TheProgram.WaitForTitle(name) && stage.TheProgram.Answers();
}

bool OpenText(const Stage& stage)
{
    return Open(stage, stage.Files.PathOf("lines.txt"));
}

// With something to look for: without it there is nothing to confirm.
HWND ShowFindCase(const Stage& stage)
{
    const HWND dialog = OpenText(stage) ? ShowByCommand(stage, IDM_SEARCH_FIND, FindTitle) : nullptr;
    if (dialog != nullptr) {
        EXPECT_TRUE(BringToForeground(dialog));
        TypeText("line");
        ExpectText(dialog, IDC_FIND_TEXT, "line");
        ExpectEnabled(dialog, IDOK, true);
    }
    return dialog;
}

HWND ShowGotoCase(const Stage& stage)
{
    return OpenText(stage) ? ShowByCommand(stage, IDM_SEARCH_GOTO, GotoTitle) : nullptr;
}

HWND ShowGotoOffsetCase(const Stage& stage)
{
    if (!OpenText(stage)) {
        return nullptr;
    }
    stage.TheProgram.Command(IDM_VIEW_HEX);
    return ShowByCommand(stage, IDM_SEARCH_GOTO, GotoTitle);
}

HWND ShowSelectListCase(const Stage& stage)
{
    stage.TheProgram.Inside().DropFiles(stage.TheProgram.Frame(),
                                        {stage.Files.PathOf("lines.txt"), stage.Files.PathOf("other.txt")});
    return WaitForFile(stage.TheProgram, "lines.txt", "[File 1 of 2]") ? ShowSelectList(stage.TheProgram) : nullptr;
}

HWND ShowSelectListDetailsCase(const Stage& stage)
{
    const HWND dialog = ShowSelectListCase(stage);
    if (dialog == nullptr) {
        return nullptr;
    }
    const LONG height = PlaceOf(dialog).bottom - PlaceOf(dialog).top;
    if (ClientSize(dialog).cy > PlaceOf(GetDlgItem(dialog, IDC_SELECT_ATTRIBUTES)).bottom) {
        return dialog; // they are shown since the last time
    }
    PressControl(dialog, IDC_SELECT_DETAILS);
    EXPECT_TRUE(WaitUntil([&] { return PlaceOf(dialog).bottom - PlaceOf(dialog).top > height; }));
    return dialog;
}

HWND ShowInfoCase(const Stage& stage)
{
    return OpenText(stage) ? ShowByCommand(stage, IDM_FILE_INFORMATION, "File Information") : nullptr;
}

HWND ShowProgramInfoCase(const Stage& stage)
{
    char directory[MAX_PATH] = "";
    GetSystemDirectoryA(directory, sizeof directory);
    return Open(stage, directory + std::string("\\notepad.exe"))
               ? ShowByCommand(stage, IDM_FILE_INFORMATION, "File Information")
               : nullptr;
}

HWND ShowLibrariesCase(const Stage& stage)
{
    const HWND dialog = ShowProgramInfoCase(stage);
    if (dialog != nullptr) {
        PressControl(dialog, IDC_INFO_MORE);
        EXPECT_TRUE(WaitUntil([&] { return IsWindowVisible(GetDlgItem(dialog, IDC_INFO_IMPORTS)) != FALSE; }));
    }
    return dialog;
}

HWND ShowDeleteCase(const Stage& stage)
{
    return OpenText(stage) ? ShowByCommand(stage, IDM_FILE_DELETE, "Confirm File Delete") : nullptr;
}

HWND ShowAboutCase(const Stage& stage)
{
    return ShowByCommand(stage, IDM_HELP_ABOUT, "About Kestovar");
}

HWND ShowButtonBarCase(const Stage& stage)
{
    return ShowByCommand(stage, IDM_OPTIONS_BUTTON_BAR, "Customize Button Bar");
}

HWND ShowPreferencesCase(const Stage& stage)
{
    return ShowByCommand(stage, IDM_OPTIONS_PREFERENCES, "Preferences");
}

HWND ShowColoursCase(const Stage& stage)
{
    return ShowByCommand(stage, IDM_OPTIONS_COLOURS, "Select Colours");
}

HWND ShowLineLengthCase(const Stage& stage)
{
    return ShowByCommand(stage, IDM_OPTIONS_LINE_LENGTH, "Set Line Length");
}

// What is printed on it goes nowhere; the name of its port is short, to be read whole.
void NeedPrinter(const Stage& stage)
{
    if (stage.Printer == nullptr) {
        stage.Printer = std::make_unique<TestPrinter>("NUL");
    }
}

HWND ShowPrintCase(const Stage& stage)
{
    NeedPrinter(stage);
    return OpenText(stage) ? ShowByCommand(stage, IDM_FILE_PRINT, "Print File") : nullptr;
}

HWND ShowPageSetupCase(const Stage& stage)
{
    NeedPrinter(stage);
    return ShowByCommand(stage, IDM_FILE_PAGE_SETUP, "Page Setup");
}

const DialogCase Cases[] = {
    {"Find",
     ShowFindCase,
     {IDC_FIND_TEXT, IDC_FIND_HEX, IDC_FIND_FORWARDS, IDC_FIND_ENTIRE, IDC_FIND_CASE, IDC_FIND_SCROLL, IDOK, IDCANCEL},
     IDOK},
    {"Goto", ShowGotoCase, {IDC_GOTO_TEXT, IDOK, IDCANCEL}, IDOK},
    {"GotoOffset", ShowGotoOffsetCase, {IDC_GOTO_TEXT, IDOK, IDCANCEL}, IDOK},
    {"SelectList", ShowSelectListCase, {IDC_SELECT_FILES, IDOK, IDCANCEL, IDC_SELECT_DETAILS}, IDOK},
    {"SelectListWithDetails", ShowSelectListDetailsCase, {IDC_SELECT_FILES, IDOK, IDCANCEL, IDC_SELECT_DETAILS}, IDOK},
    {"FileInformation", ShowInfoCase, {IDOK}, IDOK},
    {"FileInformationOfAProgram", ShowProgramInfoCase, {IDOK, IDC_INFO_MORE}, IDOK},
    {"FileInformationWithLibraries", ShowLibrariesCase, {IDC_INFO_IMPORTS, IDOK, IDC_INFO_MORE}, IDOK},
    {"ConfirmDelete", ShowDeleteCase, {IDC_DELETE_YES, IDC_DELETE_NO}, IDC_DELETE_NO},
    {"About", ShowAboutCase, {IDOK}, IDOK},
    {"ButtonBar",
     ShowButtonBarCase,
     {IDC_BAR_AVAILABLE, IDC_BAR_ADD, IDC_BAR_REMOVE, IDC_BAR_UP, IDC_BAR_DOWN, IDC_BAR_CHOSEN, IDOK, IDCANCEL,
      IDC_ASK_HELP, IDC_BAR_BUBBLES},
     IDOK},
    {"Preferences",
     ShowPreferencesCase,
     {IDC_PREFER_EBCDIC, IDC_PREFER_OEM, IDC_PREFER_EXPAND_TABS, IDC_PREFER_TAB_SIZE, IDC_PREFER_RULER,
      IDC_PREFER_SCROLL_BARS, IDC_PREFER_STATUS_LINE, IDC_PREFER_BUTTON_BAR, IDC_PREFER_EDITOR, IDC_PREFER_MINIMISE,
      IDC_PREFER_MAXIMISE, IDC_PREFER_LOAD_ON_DELETE, IDC_PREFER_AUTO_ZIP, IDOK, IDCANCEL, IDC_ASK_HELP},
     IDOK},
    {"Colours", ShowColoursCase, {IDC_COLOUR_REGION, IDC_COLOUR_FIRST, IDC_COLOUR_FOREGROUND, IDOK, IDCANCEL}, IDOK},
    {"LineLength", ShowLineLengthCase, {IDC_LINE_LENGTH, IDOK, IDCANCEL}, IDOK},
    {"Print",
     ShowPrintCase,
     {IDC_PRINT_ENTIRE, IDC_PRINT_DEFAULT_FONT, IDC_PRINT_FORM_FEEDS, IDC_PRINT_WRAP, IDC_PRINT_HEADERS, IDOK, IDCANCEL,
      IDC_PRINT_PRINTER_SETUP, IDC_PRINT_PAGE_SETUP, IDC_ASK_HELP},
     IDOK},
    {"PageSetup",
     ShowPageSetupCase,
     {IDC_PAGE_HEADER, IDC_PAGE_FOOTER, IDC_PAGE_LEFT, IDC_PAGE_RIGHT, IDC_PAGE_TOP, IDC_PAGE_BOTTOM,
      IDC_PAGE_USE_HEAD_FONT, IDC_PAGE_HEAD_FONT, IDC_PAGE_USE_BODY_FONT, IDC_PAGE_BODY_FONT, IDOK, IDCANCEL,
      IDC_ASK_HELP},
     IDOK},
};

class DialogLooksTest : public UiTest, public testing::WithParamInterface<DialogCase> {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
        Files.Write("lines.txt", NumberedLines(1234));
        Files.Write("other.txt", NumberedLines(3));
    }

    // Starts the program and shows the dialog; nullptr, and the test has failed, when it does not come.
    HWND Show()
    {
        if (TheProgram == nullptr) {
            TheProgram = std::make_unique<Program>();
            if (!TheProgram->WaitForFrame()) {
                return nullptr;
            }
        }
        const HWND dialog = GetParam().Show({*TheProgram, Files, Printer});
        EXPECT_NE(dialog, nullptr);
        EXPECT_TRUE(WaitUntil([&] { return dialog == nullptr || IsPaintedWhole(dialog); }));
        return dialog;
    }

    bool IsPaintedWhole(HWND dialog) const
    {
        const std::vector<DialogControl> controls = ControlsOf(dialog);
        return IsPainted(*TheProgram, dialog) &&
               std::all_of(controls.begin(), controls.end(),
                           [](const DialogControl& control) { return !GetUpdateRect(control.Window, nullptr, FALSE); });
    }

    TestDirectory Files{"looks"};
    std::unique_ptr<TestPrinter> Printer;
    std::unique_ptr<Program> TheProgram;
};

class ButtonNamesTest : public UiTest {};

std::string NameOf(const testing::TestParamInfo<DialogCase>& info)
{
    return info.param.Name;
}

LONG StyleOf(HWND window)
{
    return GetWindowLongA(window, GWL_STYLE);
}

bool IsGroupBox(const DialogControl& control)
{
    return control.Class == "Button" && (StyleOf(control.Window) & BS_TYPEMASK) == BS_GROUPBOX;
}

bool IsDefaultButton(const DialogControl& control)
{
    return control.Class == "Button" && (StyleOf(control.Window) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
}

std::string Describe(const DialogControl& control)
{
    const RECT place = PlaceOf(control.Window);
    return control.Class + " " + std::to_string(GetDlgCtrlID(control.Window)) + " \"" + control.Text + "\" at " +
           std::to_string(place.left) + ", " + std::to_string(place.top) + " to " + std::to_string(place.right) + ", " +
           std::to_string(place.bottom);
}

// The controls that can be seen. A dialog that has been made shorter has the others below its end.
std::vector<DialogControl> ShownControls(HWND dialog)
{
    std::vector<DialogControl> controls = ControlsOf(dialog);
    std::erase_if(controls, [&](const DialogControl& control) {
        return !IsWindowVisible(control.Window) || PlaceOf(control.Window).top >= ClientSize(dialog).cy;
    });
    return controls;
}

bool Contains(const RECT& outer, const RECT& inner)
{
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

bool Intersects(const RECT& a, const RECT& b)
{
    RECT common = {};
    return IntersectRect(&common, &a, &b) != FALSE;
}

// The list of libraries lies over the version fields.
bool MayLieOver(const DialogControl& a, const DialogControl& b)
{
    const int ids[] = {GetDlgCtrlID(a.Window), GetDlgCtrlID(b.Window)};
    const bool other = a.Class == "Static" || b.Class == "Static";
    return other && std::count(std::begin(ids), std::end(ids), IDC_INFO_IMPORTS) == 1;
}

constexpr DWORD SeenLimit = 3000; // milliseconds

// Whether more than one colour is seen where the control has its text, inside its edges.
bool ShowsSomething(Program& program, HWND dialog, const DialogControl& control)
{
    constexpr int Edge = 4;
    constexpr int TextHeight = 13;
    constexpr int Indent = 16; // of the text beside a box
    const RECT place = PlaceOf(control.Window);
    const bool text = control.Class == "Static";
    const bool group = IsGroupBox(control);
    const int left = text ? 0 : Indent;
    const int edge = text || group ? 0 : Edge;
    const int height = group ? TextHeight : static_cast<int>(place.bottom - place.top) - 2 * edge;
    const Pixels pixels =
        program.Inside().Read(dialog, place.left + left, place.top + edge, place.right - place.left - 2 * left, height);
    const int frame = group ? pixels.Width : 0;
    return pixels.CountOf(pixels.At(0, pixels.Height - 1)) + frame < pixels.Width * pixels.Height - 4;
}

bool IsCovered(const std::vector<DialogControl>& controls, const DialogControl& control)
{
    return std::any_of(controls.begin(), controls.end(), [&](const DialogControl& other) {
        return other.Window != control.Window && MayLieOver(other, control) &&
               Intersects(PlaceOf(other.Window), PlaceOf(control.Window));
    });
}

// It is a failure when a text does not come to be seen.
void ExpectTextsSeen(Program& program, HWND dialog)
{
    const std::vector<DialogControl> controls = ShownControls(dialog);
    for (const DialogControl& control : controls) {
        const bool written = !control.Text.empty() && (control.Class == "Static" || control.Class == "Button");
        if (written && !IsCovered(controls, control)) {
            EXPECT_TRUE(WaitUntil([&] { return ShowsSomething(program, dialog, control); }, SeenLimit))
                << Describe(control);
        }
    }
}

// A box may hold others, but none may lie across its frame.
bool LieWell(const DialogControl& a, const DialogControl& b)
{
    const RECT first = PlaceOf(a.Window);
    const RECT second = PlaceOf(b.Window);
    if (!Intersects(first, second) || MayLieOver(a, b)) {
        return true;
    }
    return (IsGroupBox(a) && Contains(first, second)) || (IsGroupBox(b) && Contains(second, first));
}

// The letter, in upper case, that Alt goes to the control with; '\0' for none.
char LetterOf(const std::string& text)
{
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] == '&') {
            if (text[i + 1] != '&') {
                return static_cast<char>(toupper(static_cast<unsigned char>(text[i + 1])));
            }
            ++i;
        }
    }
    return '\0';
}

// The dialog's own control that has the focus: a combo box has it in its field.
int FocusedControl(HWND dialog)
{
    HWND window = FocusOf(dialog);
    while (window != nullptr && GetParent(window) != dialog) {
        window = GetParent(window);
    }
    return window == nullptr ? 0 : GetDlgCtrlID(window);
}

bool WaitForFocus(HWND dialog, int control)
{
    const bool there = WaitUntil([&] { return FocusedControl(dialog) == control; });
    EXPECT_TRUE(there) << FocusedControl(dialog) << " has the focus instead of " << control;
    return there;
}

void ExpectControlsApartAndInside(HWND dialog)
{
    const SIZE size = ClientSize(dialog);
    const RECT inside = {0, 0, size.cx, size.cy};
    const std::vector<DialogControl> controls = ShownControls(dialog);
    EXPECT_GT(controls.size(), 2u);
    for (auto control = controls.begin(); control != controls.end(); ++control) {
        EXPECT_TRUE(Contains(inside, PlaceOf(control->Window)))
            << Describe(*control) << " in " << size.cx << " x " << size.cy;
        for (auto other = control + 1; other != controls.end(); ++other) {
            EXPECT_TRUE(LieWell(*control, *other)) << Describe(*control) << " and " << Describe(*other);
        }
    }
}

// No two of its controls may be gone to with the same letter.
void ExpectLettersUnique(HWND dialog)
{
    std::map<char, std::string> letters;
    for (const DialogControl& control : ShownControls(dialog)) {
        const bool prefix = control.Class != "Static" || (StyleOf(control.Window) & SS_NOPREFIX) == 0;
        const bool labelled = control.Class == "Static" || control.Class == "Button";
        const char letter = labelled && prefix && IsWindowEnabled(control.Window) ? LetterOf(control.Text) : '\0';
        if (letter != '\0') {
            EXPECT_TRUE(letters.emplace(letter, control.Text).second) << control.Text << " and " << letters[letter];
        }
    }
}

// Writes what the dialog shows as a picture for people to look at.
void KeepPicture(const Pixels& picture, const char* name)
{
    const std::string path = WritePicture(picture, name);
    ASSERT_FALSE(path.empty());
    const auto row = static_cast<std::size_t>((picture.Width * 3 + 3) / 4 * 4);
    EXPECT_EQ(ReadWholeFile(path).size(),
              sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER) + row * static_cast<std::size_t>(picture.Height));
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Dialogs, DialogLooksTest, testing::ValuesIn(Cases), NameOf);

TEST_P(DialogLooksTest, ItIsWholeInOrderAndItsPictureIsKept)
{
    const HWND dialog = Show();
    ASSERT_NE(dialog, nullptr);
    EXPECT_GT(ExpectTextsFit(dialog), 1);
    ExpectControlsApartAndInside(dialog);
    ExpectLettersUnique(dialog);
    ExpectTextsSeen(*TheProgram, dialog);
    const SIZE size = ClientSize(dialog);
    const Pixels picture = TheProgram->Inside().Read(dialog, 0, 0, size.cx, size.cy);
    const std::uint32_t face = picture.At(0, 0);
    EXPECT_LT(picture.CountOf(face), size.cx * size.cy);
    EXPECT_EQ(picture.At(size.cx - 1, size.cy - 1), face);
    EXPECT_GT(picture.CountOf(Black), 50); // of its texts
    KeepPicture(picture, GetParam().Name);
}

TEST_F(ButtonNamesTest, TheyFitIntoBothListsBesideTheScrollBar)
{
    constexpr int TextLeft = 30;
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Post(WM_COMMAND, IDM_OPTIONS_BUTTON_BAR);
    const HWND dialog = WaitForDialog(program, "Customize Button Bar");
    ASSERT_NE(dialog, nullptr);
    const HMODULE resources = LoadLibraryExA(ProgramPath().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    for (const int list : {IDC_BAR_AVAILABLE, IDC_BAR_CHOSEN}) {
        const RECT place = PlaceOf(GetDlgItem(dialog, list));
        const LONG width =
            place.right - place.left - 2 * GetSystemMetrics(SM_CXBORDER) - GetSystemMetrics(SM_CXVSCROLL);
        for (UINT id = IDS_BUBBLE_FIRST; id <= IDS_BUBBLE_LAST; ++id) {
            char name[40] = "";
            ASSERT_GT(LoadStringA(resources, id, name, sizeof name), 0);
            EXPECT_LE(TextLeft + ExtentOf(name).cx, width) << list << ": " << name;
        }
    }
    FreeLibrary(resources);
}

TEST_P(DialogLooksTest, TheTabKeyGoesThroughItInOrderAndBackToTheBeginning)
{
    const HWND dialog = Show();
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(BringToForeground(dialog));
    const Ids& stops = GetParam().TabStops;
    // Where it begins is the dialog's own choice.
    std::size_t at = 0;
    ASSERT_TRUE(WaitUntil([&] {
        const auto stop = std::find(stops.begin(), stops.end(), FocusedControl(dialog));
        at = static_cast<std::size_t>(stop - stops.begin());
        return stop != stops.end();
    })) << FocusedControl(dialog);
    for (std::size_t i = 0; i < stops.size(); ++i) {
        at = (at + 1) % stops.size();
        PressKeys({VK_TAB});
        ASSERT_TRUE(WaitForFocus(dialog, stops[at]));
    }
    for (std::size_t i = 0; i < stops.size(); ++i) {
        at = (at + stops.size() - 1) % stops.size();
        PressKeys({VK_SHIFT, VK_TAB});
        ASSERT_TRUE(WaitForFocus(dialog, stops[at]));
    }
}

TEST_P(DialogLooksTest, EscapeClosesItAndEnterPressesItsDefaultButton)
{
    HWND dialog = Show();
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(BringToForeground(dialog));
    PressKeys({VK_ESCAPE});
    ASSERT_TRUE(WaitUntilClosed(dialog));
    ASSERT_TRUE(WaitForKeyboard(*TheProgram));
    dialog = Show();
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(BringToForeground(dialog));
    const LRESULT answer = TheProgram->Send(dialog, DM_GETDEFID);
    EXPECT_EQ(HIWORD(answer), DC_HASDEFID);
    EXPECT_EQ(LOWORD(answer), GetParam().Default);
    Ids defaults;
    for (const DialogControl& control : ShownControls(dialog)) {
        if (IsDefaultButton(control)) {
            defaults.push_back(GetDlgCtrlID(control.Window));
        }
    }
    EXPECT_EQ(defaults, Ids{GetParam().Default}); // as it is drawn
    PressKeys({VK_RETURN});
    EXPECT_TRUE(WaitUntilClosed(dialog));
    EXPECT_TRUE(WaitForKeyboard(*TheProgram));
    EXPECT_FALSE(TheProgram->ShowsBox());
    EXPECT_TRUE(FileExists(Files.PathOf("lines.txt")));
}
