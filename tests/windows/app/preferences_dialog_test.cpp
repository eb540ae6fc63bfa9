#include "app/preferences_dialog.h"

#include "app/app_state.h"
#include "app/menu_state.h"
#include "app/open_sequence.h"
#include "base/help.h"
#include "base/text.h"
#include "buttonbar/button_bar_window.h"
#include "buttonbar/buttons.h"
#include "document/document_state.h"
#include "harness/dialogs.h"
#include "harness/picture.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "harness/system_calls.h"
#include "view/frame_windows.h"
#include "view/gdi_holders.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

// The controls by number, as the rest of the world knows them.
constexpr int EbcdicBox = 800;
constexpr int ExpandTabsBox = 810;
constexpr int TabSizeField = 811;
constexpr int RulerBox = 820;
constexpr int ScrollBarsBox = 821;
constexpr int StatusLineBox = 822;
constexpr int ButtonBarBox = 823;
constexpr int EditorField = 830;
constexpr int HelpButton = 998;

constexpr UINT PreferencesCommand = 281;
constexpr UINT EditItem = 252;
constexpr UINT LaunchItem = 223;
constexpr UINT CopyItem = 250;
constexpr UINT SaveItem = 221;

constexpr UINT LaunchHelp = 23; // what the Launch button says, as strings
constexpr UINT EditHelp = 52;

constexpr const char* TabSizeRefusal = "Tab size invalid. The value must be between 2 and 16.";

struct BoxSetting {
    int Control;
    const char* Text;
    std::int32_t* Setting;
};

// All but the one of EBCDIC, which is a flag.
const BoxSetting BoxSettings[] = {
    {801, "&OEM to ANSI", &ViewOptions.OemToAnsi},
    {810, "E&xpand Tabs", &DocumentOptions.Ptabs},
    {820, "&Ruler", &ViewOptions.Ruler},
    {821, "&Scroll Bars", &ViewOptions.ScrollBars},
    {822, "S&tatus Line", &ViewOptions.StatusLine},
    {823, "&Button Bar", &ViewOptions.ButtonBar},
    {831, "&Minimize on Launch", &AppOptions.MinOnLaunch},
    {832, "&Load next/previous file after delete", &AppOptions.LoadOnDelete},
    {833, "&Auto expand if Zip archive contains a single file", &AppOptions.AutoZip},
    {834, "Launch Maximi&zed", &AppOptions.MaxLaunchApp},
};

void SetAllBoxes(std::int32_t value)
{
    for (const BoxSetting& box : BoxSettings) {
        *box.Setting = value;
    }
    ViewOptions.EbcdicToAscii = value != 0;
}

void Click(HWND dialog, int control)
{
    SendDlgItemMessageA(dialog, control, BM_CLICK, 0, 0);
}

bool IsChecked(HWND dialog, int control)
{
    return IsDlgButtonChecked(dialog, control) == BST_CHECKED;
}

void Check(HWND dialog, int control, bool checked)
{
    if (IsChecked(dialog, control) != checked) {
        Click(dialog, control);
    }
}

// A pixel of the view that no dialog covers, in a colour that the program does not draw.
class ViewMark {
public:
    ViewMark()
    {
        RECT client;
        GetClientRect(Windows.View, &client);
        Place = {client.right - 3, client.bottom - 3};
        UpdateWindow(Windows.View);
        WindowDc dc(Windows.View);
        SetPixel(dc, Place.x, Place.y, Colour);
    }

    bool IsThere() const
    {
        UpdateWindow(Windows.View);
        WindowDc dc(Windows.View);
        return GetPixel(dc, Place.x, Place.y) == Colour;
    }

private:
    static constexpr COLORREF Colour = RGB(250, 100, 20);
    POINT Place = {};
};

class Preferences : public RunningProgram {
protected:
    Preferences() : File("preferences.kv2", Lines())
    {
        SetWindowPos(Windows.Main, nullptr, 0, 0, 800, 600, SWP_NOZORDER | SWP_NOACTIVATE);
        UpdateWindow(Windows.Main);
    }

    ~Preferences() override { Help.Used = false; }

    static std::string Lines()
    {
        std::string content;
        for (int line = 0; line < 300; ++line) {
            content += "a\tb " + std::string(400, 'x') + "\n";
        }
        return content;
    }

    void Open() { ASSERT_TRUE(OpenSequence(Windows.Main, File.Path())); }

    static void Run() { SendMessageA(Windows.Main, WM_COMMAND, PreferencesCommand, 0); }

    static void Answer(const std::function<void(HWND)>& step, int button)
    {
        DialogAnswers answers;
        answers.Then([&](HWND dialog) {
            step(dialog);
            PressButton(dialog, button);
        });
        Run();
    }

    static void Look(const std::function<void(HWND)>& step) { Answer(step, IDCANCEL); }
    static void Change(const std::function<void(HWND)>& step) { Answer(step, IDOK); }

    static void ChangeBox(int control, bool checked)
    {
        Change([&](HWND dialog) { Check(dialog, control, checked); });
    }

    static void EnterEditor(const char* name)
    {
        Change([name](HWND dialog) { SetDlgItemTextA(dialog, EditorField, name); });
    }

    // The size that is stored after text was entered and confirmed.
    static std::int32_t Entered(const char* text)
    {
        Change([text](HWND dialog) { SetDlgItemTextA(dialog, TabSizeField, text); });
        return DocumentOptions.TabSize;
    }

    static void ExpectRefused(const char* text)
    {
        SCOPED_TRACE(text);
        HWND first = nullptr;
        DialogAnswers answers;
        answers
            .Then([&](HWND dialog) {
                first = dialog;
                Check(dialog, RulerBox, true);
                Check(dialog, EbcdicBox, true);
                SetDlgItemTextA(dialog, EditorField, "another");
                SetDlgItemTextA(dialog, TabSizeField, text);
                PressButton(dialog, IDOK);
            })
            .ThenPress(IDOK) // of the message
            .Then([&](HWND dialog) {
                EXPECT_EQ(first, dialog);
                EXPECT_EQ(text, ControlText(dialog, TabSizeField));
                EXPECT_TRUE(IsChecked(dialog, RulerBox));
                PressButton(dialog, IDCANCEL);
            });
        Run();
        ASSERT_EQ(3u, answers.Seen().size());
        EXPECT_EQ(TabSizeRefusal, answers.Seen()[1].Text);
        EXPECT_EQ("Kestovar", answers.Seen()[1].Caption);
        EXPECT_EQ(first, answers.Seen()[1].Owner);
        EXPECT_EQ(8, DocumentOptions.TabSize);
        EXPECT_EQ(0, ViewOptions.Ruler);
        EXPECT_FALSE(ViewOptions.EbcdicToAscii);
        EXPECT_STREQ("notepad", AppOptions.EditorName);
    }

    static void Select()
    {
        View.SelLineA = 2;
        View.SelLineB = 3;
        SetSelectionMenuState(true);
    }

    static bool IsGrey(UINT id) { return (GetMenuState(Windows.MainMenu, id, MF_BYCOMMAND) & MF_GRAYED) != 0; }
    static bool IsOn(int button) { return ButtonTable[button].Enabled; }

    // As one: there is a selection, and what needs one is possible.
    static bool IsSelected()
    {
        const bool selected = View.SelLineA != 0;
        EXPECT_EQ(selected, View.SelLineB != 0);
        EXPECT_EQ(!selected, IsGrey(CopyItem));
        EXPECT_EQ(!selected, IsGrey(SaveItem));
        EXPECT_EQ(selected, IsOn(ButtonCopy));
        return selected;
    }

    static int HeightOf(HWND window)
    {
        RECT area;
        GetWindowRect(window, &area);
        return area.bottom - area.top;
    }

    static bool HasScrollBar(DWORD style)
    {
        return (static_cast<DWORD>(GetWindowLongA(Windows.View, GWL_STYLE)) & style) != 0;
    }

    ScratchFile File;
};

} // namespace

TEST_F(Preferences, HasItsCaptionTheFrameAsItsOwnerAndTheTextsOfItsBoxes)
{
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        for (const BoxSetting& box : BoxSettings) {
            EXPECT_EQ(box.Text, ControlText(dialog, box.Control));
        }
        EXPECT_EQ("&EBCDIC to ASCII", ControlText(dialog, EbcdicBox));
        EXPECT_EQ("Help", ControlText(dialog, HelpButton));
        PressButton(dialog, IDCANCEL);
    });
    Run();
    ASSERT_EQ(1u, answers.Seen().size());
    EXPECT_EQ("Preferences", answers.Seen()[0].Caption);
    EXPECT_EQ(Windows.Main, answers.Seen()[0].Owner);
}

TEST_F(Preferences, ShowsTheSettingsOfANewInstallation)
{
    Look([](HWND dialog) {
        for (const int control : {800, 801, 810, 820, 831, 832, 833, 834}) {
            EXPECT_FALSE(IsChecked(dialog, control)) << control;
        }
        for (const int control : {821, 822, 823}) {
            EXPECT_TRUE(IsChecked(dialog, control)) << control;
        }
        EXPECT_EQ("8", ControlText(dialog, TabSizeField));
        EXPECT_EQ("notepad", ControlText(dialog, EditorField));
    });
}

TEST_F(Preferences, EveryBoxShowsItsOwnSetting)
{
    for (const BoxSetting& set : BoxSettings) {
        SetAllBoxes(0);
        *set.Setting = 7; // as by hand: any number but 0 is on
        Look([&set](HWND dialog) {
            for (const BoxSetting& box : BoxSettings) {
                EXPECT_EQ(box.Control == set.Control, IsChecked(dialog, box.Control))
                    << box.Control << " of " << set.Control;
            }
            EXPECT_FALSE(IsChecked(dialog, EbcdicBox));
        });
        EXPECT_EQ(7, *set.Setting);
    }
    SetAllBoxes(0);
    ViewOptions.EbcdicToAscii = true;
    Look([](HWND dialog) {
        EXPECT_TRUE(IsChecked(dialog, EbcdicBox));
        for (const BoxSetting& box : BoxSettings) {
            EXPECT_FALSE(IsChecked(dialog, box.Control)) << box.Control;
        }
    });
}

TEST_F(Preferences, EveryBoxStoresItsOwnSetting)
{
    for (const bool before : {false, true}) {
        for (const BoxSetting& clicked : BoxSettings) {
            SetAllBoxes(before);
            Change([&clicked](HWND dialog) { Click(dialog, clicked.Control); });
            for (const BoxSetting& box : BoxSettings) {
                const bool expected = box.Control == clicked.Control ? !before : before;
                EXPECT_EQ(expected ? 1 : 0, *box.Setting) << box.Control << " of " << clicked.Control;
            }
            EXPECT_EQ(before, ViewOptions.EbcdicToAscii);
        }
        SetAllBoxes(before);
        Change([](HWND dialog) { Click(dialog, EbcdicBox); });
        EXPECT_EQ(!before, ViewOptions.EbcdicToAscii);
        for (const BoxSetting& box : BoxSettings) {
            EXPECT_EQ(before ? 1 : 0, *box.Setting) << box.Control;
        }
    }
}

TEST_F(Preferences, ShowsAnyTabSize)
{
    for (const std::int32_t size : {2, 16, 0, -3, 100}) {
        DocumentOptions.TabSize = size;
        Look([size](HWND dialog) { EXPECT_EQ(std::to_string(size), ControlText(dialog, TabSizeField)); });
        EXPECT_EQ(size, DocumentOptions.TabSize);
    }
}

TEST_F(Preferences, TakesTabSizesFrom2To16)
{
    EXPECT_EQ(2, Entered("2"));
    EXPECT_EQ(16, Entered("16"));
    EXPECT_EQ(5, Entered("5"));
    EXPECT_EQ(8, Entered("8x"));
    EXPECT_EQ(4, Entered("04"));
}

TEST_F(Preferences, ReadsTwoCharactersOfTheTabSize)
{
    EXPECT_EQ(12, Entered("123"));
    EXPECT_EQ(16, Entered("16000"));
}

TEST_F(Preferences, RefusesAnyOtherTabSizeAndStaysWithNothingStored)
{
    for (const char* text : {"1", "17", "", "abc", "99", "0", "-5", "x8", "008"}) {
        ExpectRefused(text);
    }
}

TEST_F(Preferences, AfterARefusalAnotherTabSizeCanBeEntered)
{
    DialogAnswers answers;
    answers
        .Then([](HWND dialog) {
            Check(dialog, ExpandTabsBox, true);
            SetDlgItemTextA(dialog, TabSizeField, "17");
            PressButton(dialog, IDOK);
        })
        .ThenPress(IDOK)
        .Then([](HWND dialog) {
            SetDlgItemTextA(dialog, TabSizeField, "4");
            PressButton(dialog, IDOK);
        });
    Run();
    EXPECT_EQ(4, DocumentOptions.TabSize);
    EXPECT_EQ(1, DocumentOptions.Ptabs);
}

TEST_F(Preferences, TheEditorsNameHasUpTo259Characters)
{
    const std::string longest(259, 'e');
    EnterEditor(longest.c_str());
    EXPECT_EQ(longest, AppOptions.EditorName);
    Look([&longest](HWND dialog) {
        EXPECT_EQ(longest, ControlText(dialog, EditorField));
        EXPECT_EQ(259, SendDlgItemMessageA(dialog, EditorField, EM_GETLIMITTEXT, 0, 0));
        const HWND field = GetDlgItem(dialog, EditorField);
        SendMessageA(field, EM_SETSEL, 259, 259);
        SendMessageA(field, WM_CHAR, 'f', 1);
        EXPECT_EQ(longest, ControlText(dialog, EditorField));
    });
    EnterEditor((longest + "beyond").c_str());
    EXPECT_EQ(longest, AppOptions.EditorName);
    EnterEditor("c:\\tools\\an editor.exe /x");
    EXPECT_STREQ("c:\\tools\\an editor.exe /x", AppOptions.EditorName);
}

TEST_F(Preferences, TheRulerComesAndGoesAtOnce)
{
    Open();
    EXPECT_EQ(0, HeightOf(Windows.Ruler));
    const int viewHeight = HeightOf(Windows.View);
    ChangeBox(RulerBox, true);
    EXPECT_EQ(View.FontIsFixed ? View.LineHeight : 21, HeightOf(Windows.Ruler));
    EXPECT_EQ(viewHeight - HeightOf(Windows.Ruler), HeightOf(Windows.View));
    ChangeBox(RulerBox, false);
    EXPECT_EQ(0, HeightOf(Windows.Ruler));
    EXPECT_EQ(viewHeight, HeightOf(Windows.View));
}

TEST_F(Preferences, TheStatusLineComesAndGoesAtOnce)
{
    Open();
    const int viewHeight = HeightOf(Windows.View);
    const int statusHeight = HeightOf(Windows.Status);
    ASSERT_GT(statusHeight, 0);
    ChangeBox(StatusLineBox, false);
    EXPECT_EQ(0, HeightOf(Windows.Status));
    EXPECT_EQ(viewHeight + statusHeight, HeightOf(Windows.View));
    ChangeBox(StatusLineBox, true);
    EXPECT_EQ(statusHeight, HeightOf(Windows.Status));
    EXPECT_EQ(viewHeight, HeightOf(Windows.View));
}

TEST_F(Preferences, TheButtonBarComesAndGoesAtOnce)
{
    Open();
    const int viewHeight = HeightOf(Windows.View);
    EXPECT_EQ(34, HeightOf(Windows.Buttons));
    ChangeBox(ButtonBarBox, false);
    EXPECT_EQ(0, HeightOf(Windows.Buttons));
    EXPECT_EQ(viewHeight + 34, HeightOf(Windows.View));
    ChangeBox(ButtonBarBox, true);
    EXPECT_EQ(34, HeightOf(Windows.Buttons));
    EXPECT_EQ(viewHeight, HeightOf(Windows.View));
}

TEST_F(Preferences, TheScrollBarsComeAndGoAtOnce)
{
    Open();
    ASSERT_TRUE(HasScrollBar(WS_VSCROLL));
    ASSERT_TRUE(HasScrollBar(WS_HSCROLL));
    ChangeBox(ScrollBarsBox, false);
    EXPECT_FALSE(HasScrollBar(WS_VSCROLL));
    EXPECT_FALSE(HasScrollBar(WS_HSCROLL));
    ChangeBox(ScrollBarsBox, true);
    EXPECT_TRUE(HasScrollBar(WS_VSCROLL));
    EXPECT_TRUE(HasScrollBar(WS_HSCROLL));
}

TEST_F(Preferences, TheFrameIsLaidOutInTheSizeThatItHadLast)
{
    Open();
    SendMessageA(Windows.Main, WM_SIZE, SIZE_RESTORED, MAKELPARAM(500, 300));
    ChangeBox(RulerBox, true);
    RECT view;
    GetWindowRect(Windows.View, &view);
    EXPECT_EQ(500, view.right - view.left);
    EXPECT_EQ(300, 34 + HeightOf(Windows.Ruler) + HeightOf(Windows.View) + HeightOf(Windows.Status));
}

TEST_F(Preferences, TheViewIsRepaintedAfterOk)
{
    Open();
    const ViewMark mark;
    Change([](HWND) {});
    EXPECT_FALSE(mark.IsThere());
}

TEST_F(Preferences, TheViewIsNotRepaintedAfterCancel)
{
    Open();
    const ViewMark mark;
    Look([](HWND) {});
    EXPECT_TRUE(mark.IsThere());
}

TEST_F(Preferences, TheTextIsShownTranslatedAndExpandedAtOnce)
{
    Open();
    const RECT firstRows = {0, 0, 300, 3 * View.LineHeight};
    const auto picture = [&firstRows] {
        UpdateWindow(Windows.View);
        return PictureOf(Windows.View, firstRows);
    };
    const Picture plain = picture();
    for (const int control : {EbcdicBox, ExpandTabsBox}) {
        ChangeBox(control, true);
        EXPECT_NE(0, DifferentPixels(plain, picture())) << control;
        ChangeBox(control, false);
        EXPECT_EQ(0, DifferentPixels(plain, picture())) << control;
    }
}

TEST_F(Preferences, TheSelectionIsForgottenWhenTabsAreShownAnotherWay)
{
    Open();
    Select();
    EXPECT_EQ(4, Entered("4"));
    EXPECT_FALSE(IsSelected());
    for (const bool expanded : {true, false}) {
        Select();
        ChangeBox(ExpandTabsBox, expanded);
        EXPECT_FALSE(IsSelected()) << expanded;
    }
}

TEST_F(Preferences, TheSelectionStaysWhenTabsAreShownAsBefore)
{
    Open();
    Select();
    Change([](HWND dialog) {
        for (const int control :
             {EbcdicBox, 801, RulerBox, ScrollBarsBox, StatusLineBox, ButtonBarBox, 831, 832, 833, 834}) {
            Click(dialog, control);
        }
        SetDlgItemTextA(dialog, EditorField, "another");
    });
    EXPECT_TRUE(IsSelected());
    EXPECT_EQ(2, View.SelLineA);
    EXPECT_EQ(3, View.SelLineB);
    EXPECT_EQ(8, Entered("08"));
    EXPECT_TRUE(IsSelected());
}

TEST_F(Preferences, ASwitchEditedByHandIsNoChange)
{
    DocumentOptions.Ptabs = 7;
    Open();
    Select();
    Change([](HWND) {});
    EXPECT_EQ(1, DocumentOptions.Ptabs);
    EXPECT_TRUE(IsSelected());
}

TEST_F(Preferences, CancelChangesNothing)
{
    Open();
    Select();
    const int viewHeight = HeightOf(Windows.View);
    Look([](HWND dialog) {
        Click(dialog, EbcdicBox);
        for (const BoxSetting& box : BoxSettings) {
            Click(dialog, box.Control);
        }
        SetDlgItemTextA(dialog, TabSizeField, "3");
        SetDlgItemTextA(dialog, EditorField, "");
    });
    const ViewSettings view;
    EXPECT_EQ(view.OemToAnsi, ViewOptions.OemToAnsi);
    EXPECT_EQ(view.Ruler, ViewOptions.Ruler);
    EXPECT_EQ(view.ScrollBars, ViewOptions.ScrollBars);
    EXPECT_EQ(view.StatusLine, ViewOptions.StatusLine);
    EXPECT_EQ(view.ButtonBar, ViewOptions.ButtonBar);
    EXPECT_FALSE(ViewOptions.EbcdicToAscii);
    EXPECT_EQ(0, AppOptions.MinOnLaunch + AppOptions.MaxLaunchApp + AppOptions.LoadOnDelete + AppOptions.AutoZip);
    EXPECT_STREQ("notepad", AppOptions.EditorName);
    EXPECT_EQ(0, DocumentOptions.Ptabs);
    EXPECT_EQ(8, DocumentOptions.TabSize);
    EXPECT_TRUE(IsSelected());
    EXPECT_EQ(viewHeight, HeightOf(Windows.View));
    EXPECT_FALSE(IsGrey(EditItem));
}

TEST_F(Preferences, CancelAfterARefusalChangesNothingEither)
{
    Open();
    Select();
    const ViewMark mark;
    DialogAnswers answers;
    answers
        .Then([](HWND dialog) {
            Check(dialog, ExpandTabsBox, true);
            SetDlgItemTextA(dialog, TabSizeField, "1");
            PressButton(dialog, IDOK);
        })
        .ThenPress(IDOK)
        .ThenPress(IDCANCEL);
    Run();
    EXPECT_EQ(0, DocumentOptions.Ptabs);
    EXPECT_EQ(8, DocumentOptions.TabSize);
    EXPECT_TRUE(IsSelected());
    EXPECT_TRUE(mark.IsThere());
}

TEST_F(Preferences, EnterConfirmsAndEscCancels)
{
    for (const bool enter : {false, true}) {
        DialogAnswers answers;
        answers.Then([enter](HWND dialog) {
            Check(dialog, RulerBox, true);
            PostMessageA(GetFocus(), WM_KEYDOWN, enter ? VK_RETURN : VK_ESCAPE, 1);
        });
        Run();
        EXPECT_EQ(enter ? 1 : 0, ViewOptions.Ruler);
    }
}

TEST_F(Preferences, HelpAsksForItsTopicAndTheDialogStays)
{
    const HelpRequests requests;
    HWND first = nullptr;
    DialogAnswers answers;
    answers
        .Then([&first](HWND dialog) {
            first = dialog;
            PressButton(dialog, HelpButton);
        })
        .Then([&first](HWND dialog) {
            EXPECT_EQ(first, dialog);
            PressButton(dialog, IDCANCEL);
        });
    Run();
    ASSERT_EQ(1u, requests.Seen().size());
    EXPECT_EQ(first, requests.Seen()[0].Window);
    EXPECT_EQ(Help.Path, requests.Seen()[0].File);
    EXPECT_EQ(static_cast<UINT>(HELP_CONTEXT), requests.Seen()[0].Command);
    EXPECT_EQ(100u, requests.Seen()[0].Topic);
    EXPECT_TRUE(Help.Used);
}

TEST_F(Preferences, NothingIsWrittenToTheSettingsFile)
{
    CopyText(App.Start.SectionName, "test");
    for (const bool exists : {false, true}) {
        RemoveSettingsFile();
        if (exists) {
            WritePrivateProfileStringA("test", "Ruler", "0", SettingsFilePath().c_str());
        }
        const std::string before = FileContent(SettingsFilePath());
        ASSERT_EQ(exists, !before.empty());
        Change([](HWND dialog) {
            for (const BoxSetting& box : BoxSettings) {
                Click(dialog, box.Control);
            }
            SetDlgItemTextA(dialog, TabSizeField, "3");
            SetDlgItemTextA(dialog, EditorField, "another");
        });
        EXPECT_EQ(exists, FileExists(SettingsFilePath()));
        EXPECT_EQ(before, FileContent(SettingsFilePath()));
    }
    RemoveSettingsFile();
}

TEST_F(Preferences, WithoutAnEditorNothingIsEditedOrLaunchedWithItAndTheButtonsFollowAtOnce)
{
    Open();
    ASSERT_EQ(LaunchMode::Edit, App.Launch);
    EXPECT_EQ(EditHelp, ButtonBarCalls.LaunchHelp());
    EnterEditor("");
    EXPECT_STREQ("", AppOptions.EditorName);
    EXPECT_TRUE(IsGrey(EditItem));
    EXPECT_FALSE(IsOn(ButtonEdit));
    EXPECT_TRUE(IsGrey(LaunchItem));
    EXPECT_FALSE(IsOn(ButtonLaunch));
    EXPECT_EQ(LaunchMode::None, App.Launch);
    EXPECT_EQ(LaunchHelp, ButtonBarCalls.LaunchHelp());
    EnterEditor("another");
    EXPECT_FALSE(IsGrey(EditItem));
    EXPECT_TRUE(IsOn(ButtonEdit));
    EXPECT_FALSE(IsGrey(LaunchItem));
    EXPECT_TRUE(IsOn(ButtonLaunch));
    EXPECT_EQ(LaunchMode::Edit, App.Launch);
    EXPECT_EQ(EditHelp, ButtonBarCalls.LaunchHelp());
}

TEST_F(Preferences, WithoutAFileAnEditorMakesNothingPossible)
{
    for (const char* name : {"", "another"}) {
        EnterEditor(name);
        EXPECT_TRUE(IsGrey(EditItem));
        EXPECT_FALSE(IsOn(ButtonEdit));
        EXPECT_TRUE(IsGrey(LaunchItem));
        EXPECT_FALSE(IsOn(ButtonLaunch));
    }
}

TEST_F(Preferences, WorksInADumpToo)
{
    Open();
    SendMessageA(Windows.Main, WM_COMMAND, 271, 0);
    ASSERT_TRUE(View.HexMode);
    ChangeBox(RulerBox, true);
    EXPECT_EQ(1, ViewOptions.Ruler);
    EXPECT_EQ(0, HeightOf(Windows.Ruler)) << "only text has one";
    SendMessageA(Windows.Main, WM_COMMAND, 270, 0);
    EXPECT_LT(0, HeightOf(Windows.Ruler));
}

TEST_F(Preferences, CanBeUsedByMnemonic)
{
    DialogAnswers answers;
    answers.Then([](HWND) { PostMessageA(GetFocus(), WM_SYSCHAR, 'r', 1 << 29); })
        .Then([](HWND dialog) {
            EXPECT_TRUE(IsChecked(dialog, RulerBox));
            PostMessageA(GetFocus(), WM_SYSCHAR, 'i', 1 << 29);
        })
        .Then([](HWND dialog) {
            EXPECT_EQ(GetDlgItem(dialog, TabSizeField), GetFocus());
            PostMessageA(GetFocus(), WM_SYSCHAR, 'd', 1 << 29);
        })
        .Then([](HWND dialog) {
            EXPECT_EQ(GetDlgItem(dialog, EditorField), GetFocus());
            PostMessageA(GetFocus(), WM_KEYDOWN, VK_RETURN, 1);
        });
    Run();
    EXPECT_EQ(1, ViewOptions.Ruler);
}
