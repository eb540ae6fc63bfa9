// The dialog in which the bar is put together, its command, and the bar as the settings file keeps it.
#include "buttonbar/customise_dialog.h"

#include "app/app_state.h"
#include "app/command_line.h"
#include "app/settings_file.h"
#include "base/help.h"
#include "buttonbar/button_order.h"
#include "buttonbar/buttons.h"
#include "buttonbar/draw_button.h"
#include "harness/dialogs.h"
#include "harness/picture.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "harness/system_calls.h"
#include "view/frame_windows.h"
#include "view/gdi_holders.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace {

constexpr int Available = 102;
constexpr int Chosen = 103;
constexpr int Add = 104;
constexpr int Remove = 105;
constexpr int Up = 106;
constexpr int Down = 107;
constexpr int Bubbles = 108;
constexpr int HelpButton = 998;

constexpr char IniFile[] = "KESTOVAR.INI";
constexpr COLORREF Untouched = RGB(0x12, 0x34, 0x56);

using Buttons = std::vector<int>;

std::string Saved(const char* key)
{
    char text[200] = "";
    GetPrivateProfileStringA("test", key, "<none>", text, sizeof text, IniFile);
    return text;
}

Buttons OnTheBar()
{
    return Buttons(ButtonBar.ButtonOrder, ButtonBar.ButtonOrder + ButtonBar.ButtonCount);
}

Buttons FirstButtons(int count)
{
    Buttons buttons;
    for (int button = 0; button < count; ++button) {
        buttons.push_back(button);
    }
    return buttons;
}

class CustomiseDialog : public RunningProgram {
protected:
    CustomiseDialog() : BarBefore(ButtonBar)
    {
        RemoveSettingsFile();
        App.Start = ParseCommandLine("-Itest");
        SetWindowPos(Windows.Main, HWND_TOP, 40, 40, 920, 500, SWP_NOACTIVATE);
        PutOnBar("000102");
    }

    ~CustomiseDialog() override
    {
        RemoveSettingsFile();
        ButtonBar = BarBefore;
        InvalidateRect(Windows.Buttons, nullptr, TRUE);
    }

    static void PutOnBar(const char* digits)
    {
        ButtonBar = ButtonBarState{};
        ParseButtonOrder(digits, ButtonBar);
    }

    // Opens the dialog, does something in it and leaves it by a button; what the dialog's caller is told.
    static bool Run(const std::function<void(HWND)>& step, int button = IDCANCEL)
    {
        DialogAnswers answers;
        answers.Then([&](HWND dialog) {
            step(dialog);
            PressButton(dialog, button);
        });
        return CustomiseButtonBar(Windows.Main);
    }

    static LRESULT Send(HWND dialog, int list, UINT message, int wParam = 0, LPARAM lParam = 0)
    {
        return SendDlgItemMessageA(dialog, list, message, static_cast<WPARAM>(wParam), lParam);
    }

    static Buttons Items(HWND dialog, int list)
    {
        Buttons buttons;
        for (int item = 0; item < Send(dialog, list, LB_GETCOUNT); ++item) {
            buttons.push_back(static_cast<int>(Send(dialog, list, LB_GETITEMDATA, item)));
        }
        return buttons;
    }

    static void Select(HWND dialog, int list, int item) { Send(dialog, list, LB_SETCURSEL, item); }
    static int Selected(HWND dialog, int list) { return static_cast<int>(Send(dialog, list, LB_GETCURSEL)); }

    static void Click(HWND dialog, int button)
    {
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, button)));
    }

    static void AddFirst(HWND dialog)
    {
        Select(dialog, Available, 0);
        Click(dialog, Add);
    }

    static void RemoveFirst(HWND dialog)
    {
        Select(dialog, Chosen, 0);
        Click(dialog, Remove);
    }

    static void RemoveAll(HWND dialog)
    {
        while (Send(dialog, Chosen, LB_GETCOUNT) > 0) {
            RemoveFirst(dialog);
        }
    }

    static HFONT FontOf(HWND dialog) { return reinterpret_cast<HFONT>(SendMessageA(dialog, WM_GETFONT, 0, 0)); }

    static Picture OnBlank(HWND dialog, const std::function<void(HDC)>& draw)
    {
        return Drawn(200, 60, [&](HDC dc) {
            const RECT all = {0, 0, 200, 60};
            const HBRUSH brush = CreateSolidBrush(Untouched);
            FillRect(dc, &all, brush);
            DeleteObject(brush);
            SelectedObject font(dc, FontOf(dialog));
            draw(dc);
        });
    }

    // What the dialog draws when it is asked to draw an item.
    static Picture ItemPicture(HWND dialog, int button, UINT action, UINT state, const RECT& area, int item = 0)
    {
        return OnBlank(dialog, [&](HDC dc) {
            DRAWITEMSTRUCT draw = {};
            draw.CtlType = ODT_LISTBOX;
            draw.CtlID = Available;
            draw.itemID = static_cast<UINT>(item);
            draw.itemAction = action;
            draw.itemState = state;
            draw.hwndItem = GetDlgItem(dialog, Available);
            draw.hDC = dc;
            draw.rcItem = area;
            draw.itemData = static_cast<ULONG_PTR>(button);
            SendMessageA(dialog, WM_DRAWITEM, Available, reinterpret_cast<LPARAM>(&draw));
        });
    }

    static Picture ExpectedItem(HWND dialog, int button, const char* name, bool face, bool selected, bool focus,
                                const RECT& area)
    {
        return OnBlank(dialog, [&](HDC dc) {
            if (face) {
                PutFace(dc, button, area.left + 2, area.top + 2);
            }
            TEXTMETRICA metrics;
            GetTextMetricsA(dc, &metrics);
            SetBkColor(dc, GetSysColor(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
            SetTextColor(dc, GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
            const RECT text = {area.left + 30, area.top, area.right, area.bottom};
            const int y = area.top + (area.bottom - area.top) / 2 - metrics.tmHeight / 2;
            ExtTextOutA(dc, area.left + 30, y, ETO_OPAQUE | ETO_CLIPPED, &text, name, static_cast<UINT>(strlen(name)),
                        nullptr);
            if (focus) {
                SetBkColor(dc, RGB(255, 255, 255));
                SetTextColor(dc, RGB(0, 0, 0));
                DrawFocusRect(dc, &area);
            }
        });
    }

    static void PutFace(HDC dc, int button, int x, int y)
    {
        const HBITMAP strip = LoadBitmapA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(1));
        {
            BitmapDc faces(dc, strip);
            BitBlt(dc, x, y, 26, 21, faces, button * 26, 0, SRCCOPY);
        }
        DeleteObject(strip);
    }

    // Has the command run, with something done in its dialog.
    static void RunCommand(const std::function<void(HWND)>& step, int button)
    {
        DialogAnswers answers;
        answers.Then([&](HWND dialog) {
            step(dialog);
            PressButton(dialog, button);
        });
        SendMessageA(Windows.Main, WM_COMMAND, 282, 0);
    }

    static void SaveByHand(const char* key, const std::string& value)
    {
        WritePrivateProfileStringA("test", key, value.c_str(), IniFile);
    }

    // What a start with that value puts on the bar.
    static Buttons StartedWith(const std::string& value)
    {
        SaveByHand("Buttons", value);
        ButtonBar = ButtonBarState{};
        LoadSettings();
        return OnTheBar();
    }

    static Picture BarPicture()
    {
        UpdateWindow(Windows.Buttons);
        return PictureOf(Windows.Buttons, {0, 3, 840, 31});
    }

    static Picture ExpectedBar()
    {
        return Drawn(840, 34, [](HDC dc) {
            const RECT all = {0, 0, 840, 34};
            FillRect(dc, &all, GetSysColorBrush(COLOR_BTNFACE));
            for (int slot = 0; slot < ButtonBar.ButtonCount; ++slot) {
                DrawButton(dc, slot, false);
            }
        });
    }

    static void ExpectBarIsPainted()
    {
        PumpMessages();
        const Picture whole = ExpectedBar();
        Picture expected{840, 28, {}};
        expected.Pixels.assign(whole.Pixels.begin() + 3 * 840, whole.Pixels.begin() + 31 * 840);
        EXPECT_EQ(0, DifferentPixels(expected, BarPicture()));
    }

    ButtonBarState BarBefore;
};

} // namespace

TEST_F(CustomiseDialog, HasItsTexts)
{
    Run([](HWND dialog) {
        char caption[60] = "";
        GetWindowTextA(dialog, caption, sizeof caption);
        EXPECT_STREQ("Customize Button Bar", caption);
        EXPECT_EQ("&Add ->", ControlText(dialog, Add));
        EXPECT_EQ("<- &Remove", ControlText(dialog, Remove));
        EXPECT_EQ("&Up", ControlText(dialog, Up));
        EXPECT_EQ("&Down", ControlText(dialog, Down));
        EXPECT_EQ("&Show Button Bar Bubbles", ControlText(dialog, Bubbles));
        EXPECT_EQ("Help", ControlText(dialog, HelpButton));
        EXPECT_EQ("OK", ControlText(dialog, IDOK));
        EXPECT_EQ("Cancel", ControlText(dialog, IDCANCEL));
        EXPECT_EQ(Windows.Main, GetWindow(dialog, GW_OWNER));
        std::vector<std::string> labels;
        for (HWND label = nullptr; (label = FindWindowExA(dialog, label, "Static", nullptr)) != nullptr;) {
            char text[60] = "";
            GetWindowTextA(label, text, sizeof text);
            labels.push_back(text);
        }
        EXPECT_EQ((std::vector<std::string>{"Available Buttons:", "Button Bar Buttons:"}), labels);
    });
}

TEST_F(CustomiseDialog, ItsListsAreDrawnByItAndUnsorted)
{
    Run([](HWND dialog) {
        for (const int list : {Available, Chosen}) {
            const LONG style = GetWindowLongA(GetDlgItem(dialog, list), GWL_STYLE);
            EXPECT_NE(0, style & LBS_OWNERDRAWFIXED);
            EXPECT_EQ(0, style & LBS_SORT);
            EXPECT_EQ(25, Send(dialog, list, LB_GETITEMHEIGHT));
        }
    });
}

TEST_F(CustomiseDialog, ListsTheBarInItsOrderAndAllOthersByNumber)
{
    PutOnBar("1323000711");
    Run([](HWND dialog) {
        EXPECT_EQ((Buttons{13, 23, 0, 7, 11}), Items(dialog, Chosen));
        EXPECT_EQ((Buttons{1, 2, 3, 4, 5, 6, 8, 9, 10, 12, 14, 15, 16, 17, 18, 19, 20, 21, 22}),
                  Items(dialog, Available));
        EXPECT_EQ(LB_ERR, Selected(dialog, Chosen));
        EXPECT_EQ(LB_ERR, Selected(dialog, Available));
    });
}

TEST_F(CustomiseDialog, OneListIsEmptyWhenAllButtonsAreInTheOther)
{
    ButtonBar = ButtonBarState{};
    Run([](HWND dialog) {
        EXPECT_EQ(Buttons{}, Items(dialog, Chosen));
        EXPECT_EQ(FirstButtons(24), Items(dialog, Available));
    });
    PutOnBar("000102030405060708091011121314151617181920212223");
    Run([](HWND dialog) {
        EXPECT_EQ(FirstButtons(24), Items(dialog, Chosen));
        EXPECT_EQ(Buttons{}, Items(dialog, Available));
    });
}

TEST_F(CustomiseDialog, ShowsWhetherThereAreBubbles)
{
    for (const std::int32_t shown : {0, 1}) {
        ButtonBar.ShowBubbles = shown;
        Run([shown](HWND dialog) { EXPECT_EQ(shown, static_cast<std::int32_t>(IsDlgButtonChecked(dialog, Bubbles))); });
    }
    ButtonBar.ShowBubbles = 7; // by hand
    Run([](HWND dialog) { EXPECT_EQ(1u, IsDlgButtonChecked(dialog, Bubbles)); });
}

TEST_F(CustomiseDialog, WithoutASelectionNothingIsAddedRemovedOrMoved)
{
    Run([](HWND dialog) {
        const Buttons available = Items(dialog, Available);
        for (const int button : {Add, Remove, Up, Down}) {
            Click(dialog, button);
            EXPECT_EQ((Buttons{0, 1, 2}), Items(dialog, Chosen)) << button;
            EXPECT_EQ(available, Items(dialog, Available)) << button;
        }
        Select(dialog, Chosen, 1);
        Click(dialog, Add);
        EXPECT_EQ((Buttons{0, 1, 2}), Items(dialog, Chosen));
        Select(dialog, Chosen, -1);
        Select(dialog, Available, 1);
        for (const int button : {Remove, Up, Down}) {
            Click(dialog, button);
        }
        EXPECT_EQ((Buttons{0, 1, 2}), Items(dialog, Chosen));
        EXPECT_EQ(available, Items(dialog, Available));
    });
}

TEST_F(CustomiseDialog, AddsAtTheEndWhenNothingIsSelectedThere)
{
    Run([](HWND dialog) {
        Select(dialog, Available, 2);
        Click(dialog, Add);
        EXPECT_EQ((Buttons{0, 1, 2, 5}), Items(dialog, Chosen));
        Select(dialog, Available, 0);
        Click(dialog, Add);
        EXPECT_EQ((Buttons{0, 1, 2, 5, 3}), Items(dialog, Chosen));
        EXPECT_EQ((Buttons{4, 6, 7, 8}), [&] {
            Buttons rest = Items(dialog, Available);
            rest.resize(4);
            return rest;
        }());
        EXPECT_EQ(19, Send(dialog, Available, LB_GETCOUNT));
    });
}

TEST_F(CustomiseDialog, AddsBeforeTheSelection)
{
    for (const int place : {0, 1, 2}) {
        Run([place](HWND dialog) {
            Select(dialog, Chosen, place);
            Select(dialog, Available, 20); // the last one
            Click(dialog, Add);
            Buttons expected = {0, 1, 2};
            expected.insert(expected.begin() + place, 23);
            EXPECT_EQ(expected, Items(dialog, Chosen));
            EXPECT_EQ(20, Send(dialog, Available, LB_GETCOUNT));
        });
    }
}

TEST_F(CustomiseDialog, RemovesToTheEndOfTheOthers)
{
    Run([](HWND dialog) {
        Select(dialog, Chosen, 1);
        Click(dialog, Remove);
        EXPECT_EQ((Buttons{0, 2}), Items(dialog, Chosen));
        RemoveFirst(dialog);
        EXPECT_EQ((Buttons{2}), Items(dialog, Chosen));
        const Buttons available = Items(dialog, Available);
        ASSERT_EQ(23u, available.size());
        EXPECT_EQ(3, available[0]);
        EXPECT_EQ(1, available[21]);
        EXPECT_EQ(0, available[22]);
    });
}

TEST_F(CustomiseDialog, RemovesBeforeASelectionOfTheOthersToo)
{
    Run([](HWND dialog) {
        Select(dialog, Available, 0);
        RemoveFirst(dialog);
        EXPECT_EQ(0, Items(dialog, Available).back());
    });
}

TEST_F(CustomiseDialog, MovesTheSelectionUpToTheTop)
{
    Run([](HWND dialog) {
        Select(dialog, Chosen, 2);
        Click(dialog, Up);
        EXPECT_EQ((Buttons{0, 2, 1}), Items(dialog, Chosen));
        EXPECT_EQ(1, Selected(dialog, Chosen));
        Click(dialog, Up);
        EXPECT_EQ((Buttons{2, 0, 1}), Items(dialog, Chosen));
        EXPECT_EQ(0, Selected(dialog, Chosen));
        Click(dialog, Up);
        EXPECT_EQ((Buttons{2, 0, 1}), Items(dialog, Chosen));
        EXPECT_EQ(0, Selected(dialog, Chosen));
    });
}

TEST_F(CustomiseDialog, MovesTheSelectionDownToTheBottom)
{
    Run([](HWND dialog) {
        Select(dialog, Chosen, 0);
        Click(dialog, Down);
        EXPECT_EQ((Buttons{1, 0, 2}), Items(dialog, Chosen));
        EXPECT_EQ(1, Selected(dialog, Chosen));
        Click(dialog, Down);
        EXPECT_EQ((Buttons{1, 2, 0}), Items(dialog, Chosen));
        EXPECT_EQ(2, Selected(dialog, Chosen));
        Click(dialog, Down);
        EXPECT_EQ((Buttons{1, 2, 0}), Items(dialog, Chosen));
        EXPECT_EQ(2, Selected(dialog, Chosen));
    });
}

TEST_F(CustomiseDialog, OkTakesTheNewBar)
{
    ButtonBar.ShowBubbles = 1;
    EXPECT_TRUE(Run(
        [](HWND dialog) {
            RemoveFirst(dialog); // 1, 2
            Select(dialog, Chosen, -1);
            Select(dialog, Available, 10); // 13
            Click(dialog, Add);            // 1, 2, 13
            Select(dialog, Chosen, 2);
            Click(dialog, Up);      // 1, 13, 2
            Click(dialog, Bubbles); // the message alone checks nothing
            CheckDlgButton(dialog, Bubbles, BST_UNCHECKED);
        },
        IDOK));
    EXPECT_EQ((Buttons{1, 13, 2}), OnTheBar());
    EXPECT_EQ(0, ButtonBar.ShowBubbles);
    for (int button = 0; button < ButtonTotal; ++button) {
        const int position = button == 1 ? 1 : button == 13 ? 2 : button == 2 ? 3 : 0;
        EXPECT_EQ(position, ButtonBar.Position[button]) << button;
    }
    for (int slot = 3; slot < ButtonTotal; ++slot) {
        EXPECT_EQ(0, ButtonBar.ButtonOrder[slot]) << slot;
    }
}

TEST_F(CustomiseDialog, OkSwitchesBubblesOn)
{
    ButtonBar.ShowBubbles = 0;
    EXPECT_TRUE(Run([](HWND dialog) { CheckDlgButton(dialog, Bubbles, BST_CHECKED); }, IDOK));
    EXPECT_EQ(1, ButtonBar.ShowBubbles);
    EXPECT_EQ((Buttons{0, 1, 2}), OnTheBar());
}

TEST_F(CustomiseDialog, OkTakesAllButtons)
{
    ButtonBar = ButtonBarState{};
    EXPECT_TRUE(Run(
        [](HWND dialog) {
            for (int i = 0; i < ButtonTotal; ++i) {
                AddFirst(dialog);
            }
        },
        IDOK));
    EXPECT_EQ(FirstButtons(24), OnTheBar());
}

TEST_F(CustomiseDialog, AFullBarOfEqualButtonsTakesNoMoreThan24)
{
    std::string digits;
    for (int i = 0; i < ButtonTotal; ++i) {
        digits += "99"; // shows the first button, which counts as not on the bar
    }
    PutOnBar(digits.c_str());
    EXPECT_TRUE(Run(
        [](HWND dialog) {
            EXPECT_EQ(Buttons(24, 0), Items(dialog, Chosen));
            EXPECT_EQ(FirstButtons(24), Items(dialog, Available));
            for (int i = 0; i < ButtonTotal; ++i) {
                AddFirst(dialog);
            }
            EXPECT_EQ(48, Send(dialog, Chosen, LB_GETCOUNT));
        },
        IDOK));
    EXPECT_EQ(Buttons(24, 0), OnTheBar());
    EXPECT_EQ(24, ButtonBar.Position[0]);
    EXPECT_EQ(0, ButtonBar.Position[1]);
}

TEST_F(CustomiseDialog, CancelChangesNothing)
{
    const auto changeAll = [](HWND dialog) {
        AddFirst(dialog);
        RemoveFirst(dialog);
        Select(dialog, Chosen, 1);
        Click(dialog, Up);
        CheckDlgButton(dialog, Bubbles, BST_UNCHECKED);
    };
    const ButtonBarState before = ButtonBar;
    EXPECT_FALSE(Run(changeAll));
    EXPECT_EQ(0, memcmp(&before, &ButtonBar, sizeof before));
    DialogAnswers answers;
    answers.Then([&](HWND dialog) {
        changeAll(dialog);
        PostMessageA(dialog, WM_CLOSE, 0, 0);
    });
    EXPECT_FALSE(CustomiseButtonBar(Windows.Main));
    EXPECT_EQ(0, memcmp(&before, &ButtonBar, sizeof before));
}

TEST_F(CustomiseDialog, AsksForItsHelp)
{
    const HelpRequests requests;
    HWND asking = nullptr;
    EXPECT_FALSE(Run([&asking](HWND dialog) {
        asking = dialog;
        Click(dialog, HelpButton);
    }));
    ASSERT_EQ(1u, requests.Seen().size());
    EXPECT_EQ(asking, requests.Seen()[0].Window);
    EXPECT_EQ(Help.Path, requests.Seen()[0].File);
    EXPECT_EQ(static_cast<UINT>(HELP_CONTEXT), requests.Seen()[0].Command);
    EXPECT_EQ(200u, requests.Seen()[0].Topic);
}

TEST_F(CustomiseDialog, DrawsAnItemWithItsFaceAndName)
{
    Run([](HWND dialog) {
        const RECT area = {10, 7, 180, 32};
        const auto expect = [&](int button, const char* name, UINT state, bool selected, bool focus) {
            const Picture expected = ExpectedItem(dialog, button, name, true, selected, focus, area);
            EXPECT_EQ(0, DifferentPixels(expected, ItemPicture(dialog, button, ODA_DRAWENTIRE, state, area))) << name;
        };
        expect(0, "Open file", 0, false, false);
        expect(23, "Decrease font size", 0, false, false);
        expect(16, "Close & Iconize", ODS_SELECTED, true, false);
        expect(17, "Exit Kestovar!", ODS_FOCUS, false, true);
        expect(11, "Select font", ODS_SELECTED | ODS_FOCUS, true, true);
    });
}

TEST_F(CustomiseDialog, DrawsANewSelectionOnItsNameOnly)
{
    Run([](HWND dialog) {
        const RECT area = {10, 7, 180, 32};
        for (const UINT focus : {0u, static_cast<UINT>(ODS_FOCUS)}) {
            EXPECT_EQ(0, DifferentPixels(ExpectedItem(dialog, 6, "Find", false, true, false, area),
                                         ItemPicture(dialog, 6, ODA_SELECT, ODS_SELECTED | focus, area)));
            EXPECT_EQ(0, DifferentPixels(ExpectedItem(dialog, 6, "Find", false, false, false, area),
                                         ItemPicture(dialog, 6, ODA_SELECT, focus, area)));
        }
    });
}

TEST_F(CustomiseDialog, DrawsANewFocusAsItsRectangleOnly)
{
    Run([](HWND dialog) {
        const RECT area = {10, 7, 180, 32};
        const Picture expected = OnBlank(dialog, [&](HDC dc) { DrawFocusRect(dc, &area); });
        EXPECT_EQ(0, DifferentPixels(expected, ItemPicture(dialog, 6, ODA_FOCUS, ODS_FOCUS, area)));
        EXPECT_EQ(0, DifferentPixels(expected, ItemPicture(dialog, 6, ODA_FOCUS, ODS_SELECTED, area)));
        EXPECT_LT(1, ColoursIn(expected));
    });
}

TEST_F(CustomiseDialog, DrawsNothingInAnEmptyList)
{
    Run([](HWND dialog) {
        for (const UINT action : {ODA_DRAWENTIRE, ODA_FOCUS, ODA_SELECT}) {
            const Picture picture = ItemPicture(dialog, 0, action, ODS_FOCUS, {10, 7, 180, 32}, -1);
            EXPECT_EQ(1, ColoursIn(picture)) << action;
        }
    });
}

TEST_F(CustomiseDialog, ClipsALongNameAndCentresItInAnyHeight)
{
    Run([](HWND dialog) {
        for (const RECT& area : {RECT{10, 7, 70, 32}, RECT{3, 5, 180, 50}}) {
            const Picture expected = ExpectedItem(dialog, 23, "Decrease font size", true, false, false, area);
            EXPECT_EQ(0, DifferentPixels(expected, ItemPicture(dialog, 23, ODA_DRAWENTIRE, 0, area)));
        }
    });
}

TEST_F(CustomiseDialog, ItsListsShowTheirItems)
{
    PutOnBar("1307");
    Run([](HWND dialog) {
        const struct {
            int List;
            int Button;
        } firsts[] = {{Chosen, 13}, {Available, 0}};
        for (const auto& first : firsts) {
            const HWND list = GetDlgItem(dialog, first.List);
            RedrawWindow(list, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
            RECT item = {};
            Send(dialog, first.List, LB_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&item));
            EXPECT_EQ(25, item.bottom - item.top);
            const RECT face = {item.left + 2, item.top + 2, item.left + 28, item.top + 23};
            const Picture expected = Drawn(26, 21, [&](HDC dc) { PutFace(dc, first.Button, 0, 0); });
            EXPECT_EQ(0, DifferentPixels(expected, PictureOf(list, face))) << first.Button;
        }
    });
}

TEST_F(CustomiseDialog, OpeningItLeavesNoObjectBehind)
{
    const auto open = [] {
        Run([](HWND dialog) {
            AddFirst(dialog);
            UpdateWindow(dialog);
        });
    };
    open(); // what the system makes once and keeps
    const int objects = FreeGdiObjects();
    const DWORD handles = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    for (int i = 0; i < 50; ++i) {
        open();
    }
    EXPECT_EQ(objects, FreeGdiObjects());
    EXPECT_EQ(handles, GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS));
}

TEST_F(CustomiseDialog, TheCommandSavesAndShowsTheNewBar)
{
    UpdateWindow(Windows.Buttons);
    RunCommand(
        [](HWND dialog) {
            Select(dialog, Available, 4); // 7
            Click(dialog, Add);
            Select(dialog, Chosen, 3);
            Click(dialog, Up);
            RemoveFirst(dialog);
            CheckDlgButton(dialog, Bubbles, BST_UNCHECKED);
        },
        IDOK);
    EXPECT_EQ((Buttons{1, 7, 2}), OnTheBar());
    EXPECT_EQ("010702", Saved("Buttons"));
    EXPECT_EQ("0", Saved("ShowBubbles"));
    RECT update = {};
    GetUpdateRect(Windows.Buttons, &update, FALSE);
    RECT client;
    GetClientRect(Windows.Buttons, &client);
    EXPECT_TRUE(EqualRect(&client, &update));
    ExpectBarIsPainted();
}

TEST_F(CustomiseDialog, TheCommandCancelledSavesNothing)
{
    RunCommand([](HWND dialog) { RemoveFirst(dialog); }, IDCANCEL);
    EXPECT_EQ("<none>", Saved("Buttons"));
    EXPECT_EQ("<none>", Saved("ShowBubbles"));
    EXPECT_EQ((Buttons{0, 1, 2}), OnTheBar());
}

TEST_F(CustomiseDialog, AnEmptyBarIsShownButNotSaved)
{
    SaveByHand("Buttons", "0304");
    SaveByHand("ShowBubbles", "1");
    const std::string before = FileContent(SettingsFilePath());
    ASSERT_NE("", before);
    RunCommand(
        [](HWND dialog) {
            RemoveAll(dialog);
            CheckDlgButton(dialog, Bubbles, BST_UNCHECKED);
        },
        IDOK);
    EXPECT_EQ(0, ButtonBar.ButtonCount);
    EXPECT_EQ(0, ButtonBar.ShowBubbles);
    for (const std::uint16_t position : ButtonBar.Position) {
        EXPECT_EQ(0, position);
    }
    EXPECT_EQ(before, FileContent(SettingsFilePath()));
    ExpectBarIsPainted();
    LoadSettings();
    EXPECT_EQ((Buttons{3, 4}), OnTheBar()) << "the one before is back at the next start";
    EXPECT_EQ(1, ButtonBar.ShowBubbles);
}

TEST_F(CustomiseDialog, ASavedBarComesBack)
{
    for (const char* digits : {"00", "1307", "2323", "000102030405060708091011121314151617181920212223"}) {
        PutOnBar(digits);
        ButtonBar.ShowBubbles = 0;
        const ButtonBarState saved = ButtonBar;
        SaveButtonSettings();
        EXPECT_EQ(digits, Saved("Buttons"));
        ButtonBar = ButtonBarState{};
        LoadSettings();
        EXPECT_EQ(0, memcmp(&saved, &ButtonBar, sizeof saved)) << digits;
    }
}

TEST_F(CustomiseDialog, AMissingOrEmptySettingGivesTheFirst17ButtonsAndBubbles)
{
    ButtonBar = ButtonBarState{};
    ButtonBar.ShowBubbles = 0;
    LoadSettings();
    EXPECT_EQ(FirstButtons(17), OnTheBar());
    EXPECT_EQ(1, ButtonBar.ShowBubbles);
    for (int button = 0; button < ButtonTotal; ++button) {
        EXPECT_EQ(button < 17 ? button + 1 : 0, ButtonBar.Position[button]) << button;
    }
    EXPECT_EQ(FirstButtons(17), StartedWith(""));
    EXPECT_EQ(FirstButtons(17), StartedWith("5")) << "half a number is none";
}

TEST_F(CustomiseDialog, ASettingOutOfRangeShowsTheFirstButtonThatCountsAsNotOnTheBar)
{
    EXPECT_EQ((Buttons{13, 0}), StartedWith("1324"));
    EXPECT_EQ(1, ButtonBar.Position[13]);
    EXPECT_EQ(0, ButtonBar.Position[0]);
    Run([](HWND dialog) {
        EXPECT_EQ((Buttons{13, 0}), Items(dialog, Chosen));
        EXPECT_EQ(0, Items(dialog, Available).front());
    });
}

TEST_F(CustomiseDialog, ASettingIsReadByPairsOfDigits)
{
    EXPECT_EQ((Buttons{1, 2, 3}), StartedWith("0102031")) << "an odd digit is left out";
    EXPECT_EQ((Buttons{4, 4}), StartedWith("0404"));
    EXPECT_EQ(2, ButtonBar.Position[4]);
    EXPECT_EQ((Buttons{0, 0}), StartedWith("abcd")) << "letters have no value";
    EXPECT_EQ((Buttons{3, 0}), StartedWith("3x99"));
}

TEST_F(CustomiseDialog, ASettingThatIsTooLongGivesTheFirst24Buttons)
{
    std::string digits;
    for (int i = 0; i < 60; ++i) {
        digits += i % 2 == 0 ? "23" : "05";
        if (digits.size() < 48) {
            continue;
        }
        const Buttons buttons = StartedWith(digits);
        ASSERT_EQ(24u, buttons.size()) << digits.size();
        EXPECT_EQ(23, buttons[22]);
        EXPECT_EQ(5, buttons[23]);
    }
}

TEST_F(CustomiseDialog, BubblesAreSwitchedOffByTheirSetting)
{
    SaveByHand("ShowBubbles", "0");
    LoadSettings();
    EXPECT_EQ(0, ButtonBar.ShowBubbles);
}
