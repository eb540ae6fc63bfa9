#include "view/colours_dialog.h"

#include "harness/dialogs.h"
#include "harness/picture.h"
#include "harness/program.h"
#include "view/frame_windows.h"
#include "view/gdi_holders.h"
#include "view/palette.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace {

// The controls by number, as the rest of the world knows them.
constexpr int FirstColour = 300;
constexpr int RegionBox = 320;
constexpr int Sample = 321;
constexpr int ForegroundRadio = 322;
constexpr int BackgroundRadio = 323;

constexpr RECT ItemArea = {3, 2, 27, 18}; // on a canvas of 30 by 20

void Click(HWND dialog, int control)
{
    SendDlgItemMessageA(dialog, control, BM_CLICK, 0, 0);
}

void ClickColour(HWND dialog, int index)
{
    Click(dialog, FirstColour + index);
}

bool IsChecked(HWND dialog, int control)
{
    return IsDlgButtonChecked(dialog, control) == BST_CHECKED;
}

int RegionOf(HWND dialog)
{
    return static_cast<int>(SendDlgItemMessageA(dialog, RegionBox, CB_GETCURSEL, 0, 0));
}

// As by a click; a combo box does not tell of CB_SETCURSEL.
void ChooseRegion(HWND dialog, int region)
{
    SendDlgItemMessageA(dialog, RegionBox, CB_SETCURSEL, static_cast<WPARAM>(region), 0);
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(RegionBox, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, RegionBox)));
}

struct Colours {
    COLORREF Text;
    COLORREF Background;
    COLORREF Brush;
};

COLORREF ColourOf(HBRUSH brush)
{
    LOGBRUSH facts = {};
    EXPECT_NE(0, GetObjectA(brush, sizeof facts, &facts));
    return facts.lbColor;
}

// What the dialog answers when the sample asks for its colours.
Colours SampleColours(HWND dialog)
{
    WindowDc dc(GetDlgItem(dialog, Sample));
    SetTextColor(dc, RGB(1, 2, 3));
    SetBkColor(dc, RGB(1, 2, 3));
    const LRESULT brush = SendMessageA(dialog, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(static_cast<HDC>(dc)),
                                       reinterpret_cast<LPARAM>(GetDlgItem(dialog, Sample)));
    return {GetTextColor(dc), GetBkColor(dc), ColourOf(reinterpret_cast<HBRUSH>(brush))};
}

void ExpectSample(HWND dialog, int foreground, int background)
{
    const Colours colours = SampleColours(dialog);
    EXPECT_EQ(Palette[foreground], colours.Text);
    EXPECT_EQ(Palette[background], colours.Background);
    EXPECT_EQ(Palette[background], colours.Brush);
}

// A palette colour as a picture holds it.
std::uint32_t PixelOf(int index)
{
    const COLORREF colour = Palette[index];
    return (colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF);
}

std::uint32_t PixelAt(const Picture& picture, int x, int y)
{
    return picture.Pixels[static_cast<std::size_t>(y * picture.Width + x)];
}

Picture ControlPicture(HWND dialog, int control)
{
    const HWND window = GetDlgItem(dialog, control);
    UpdateWindow(window);
    RECT area;
    GetClientRect(window, &area);
    return PictureOf(window, area);
}

// The sample as it stands on the screen.
void ExpectSampleShown(HWND dialog, int foreground, int background)
{
    const Picture picture = ControlPicture(dialog, Sample);
    const std::size_t written =
        static_cast<std::size_t>(std::count(picture.Pixels.begin(), picture.Pixels.end(), PixelOf(foreground)));
    EXPECT_EQ(PixelOf(background), PixelAt(picture, 1, 1));
    EXPECT_EQ(PixelOf(background), PixelAt(picture, picture.Width - 2, picture.Height - 2));
    EXPECT_GT(written, 20u);
    EXPECT_LT(written, picture.Pixels.size() / 3);
}

void FillCanvas(HDC dc)
{
    const RECT all = {0, 0, 30, 20};
    FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH)));
}

// What the dialog draws of a colour button, on a canvas that holds a brush.
Picture ButtonDrawn(HWND dialog, int index, UINT action, UINT state, HBRUSH brush)
{
    return Drawn(30, 20, [&](HDC dc) {
        FillCanvas(dc);
        SelectedObject selected(dc, brush);
        DRAWITEMSTRUCT item = {};
        item.CtlType = ODT_BUTTON;
        item.CtlID = static_cast<UINT>(FirstColour + index);
        item.itemAction = action;
        item.itemState = state;
        item.hwndItem = GetDlgItem(dialog, FirstColour + index);
        item.hDC = dc;
        item.rcItem = ItemArea;
        SendMessageA(dialog, WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
    });
}

void FillWithColour(HDC dc, RECT area, int inset, COLORREF colour)
{
    InflateRect(&area, -inset, -inset);
    const HBRUSH brush = CreateSolidBrush(colour);
    FillRect(dc, &area, brush);
    DeleteObject(brush);
}

Picture ButtonExpected(int index, COLORREF edge, bool focus = false)
{
    return Drawn(30, 20, [&](HDC dc) {
        FillCanvas(dc);
        FillWithColour(dc, ItemArea, 0, edge);
        FillWithColour(dc, ItemArea, 2, RGB(0, 0, 0));
        FillWithColour(dc, ItemArea, 3, Palette[index]);
        if (focus) {
            DrawFocusRect(dc, &ItemArea);
        }
    });
}

void PressKey(UINT key)
{
    PostMessageA(GetFocus(), WM_KEYDOWN, key, 1);
    PostMessageA(GetFocus(), WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

class ColoursDialog : public RunningProgram {
protected:
    static bool Ask(const std::function<void(HWND)>& step)
    {
        DialogAnswers answers;
        answers.Then(step);
        return ChooseColours(Windows.Main);
    }

    // Looks at the dialog and cancels it.
    static void Look(const std::function<void(HWND)>& step)
    {
        EXPECT_FALSE(Ask([&step](HWND dialog) {
            step(dialog);
            PressButton(dialog, IDCANCEL);
        }));
    }

    // Changes something and presses OK.
    static void Change(const std::function<void(HWND)>& step)
    {
        EXPECT_TRUE(Ask([&step](HWND dialog) {
            step(dialog);
            PressButton(dialog, IDOK);
        }));
    }

    static void ExpectIndices(const std::vector<std::int32_t>& foreground, const std::vector<std::int32_t>& background)
    {
        for (std::size_t region = 0; region < ColourRegionCount; ++region) {
            EXPECT_EQ(foreground[region], ViewOptions.Foreground[region]) << region;
            EXPECT_EQ(background[region], ViewOptions.Background[region]) << region;
        }
    }

    static void ExpectDefaults() { ExpectIndices({7, 0, 0, 0, 7}, {1, 6, 6, 8, 9}); }
};

} // namespace

TEST_F(ColoursDialog, OffersTheRegionsByNameTheFirstOneSelectedAndItsForeground)
{
    DialogAnswers answers;
    answers.Then([](HWND dialog) {
        EXPECT_EQ(
            (std::vector<std::string>{"Output Window", "Text Ruler", "Marked Text", "Status Line", "Locked Text"}),
            ComboTexts(dialog, RegionBox));
        EXPECT_EQ(0, RegionOf(dialog));
        EXPECT_EQ(CBS_DROPDOWNLIST, GetWindowLongA(GetDlgItem(dialog, RegionBox), GWL_STYLE) & 3);
        EXPECT_TRUE(IsChecked(dialog, ForegroundRadio));
        EXPECT_FALSE(IsChecked(dialog, BackgroundRadio));
        EXPECT_EQ("Foreground", ControlText(dialog, ForegroundRadio));
        EXPECT_EQ("Background", ControlText(dialog, BackgroundRadio));
        EXPECT_EQ("\nSample Text", ControlText(dialog, Sample));
        EXPECT_EQ(GetDlgItem(dialog, RegionBox), GetFocus());
        ExpectSample(dialog, 7, 1);
        PressButton(dialog, IDCANCEL);
    });
    EXPECT_FALSE(ChooseColours(Windows.Main));
    ASSERT_EQ(1u, answers.Seen().size());
    EXPECT_EQ("Select Colours", answers.Seen()[0].Caption);
    EXPECT_EQ(Windows.Main, answers.Seen()[0].Owner);
}

TEST_F(ColoursDialog, TheSixteenButtonsStandInFourRowsOfFour)
{
    Look([](HWND dialog) {
        RECT first;
        GetWindowRect(GetDlgItem(dialog, FirstColour), &first);
        RECT next;
        GetWindowRect(GetDlgItem(dialog, FirstColour + 1), &next);
        RECT below;
        GetWindowRect(GetDlgItem(dialog, FirstColour + 4), &below);
        ASSERT_LT(first.right, next.left + 1);
        ASSERT_LT(first.bottom, below.top + 1);
        for (int i = 0; i < PaletteSize; ++i) {
            const HWND button = GetDlgItem(dialog, FirstColour + i);
            EXPECT_EQ(BS_OWNERDRAW, GetWindowLongA(button, GWL_STYLE) & BS_TYPEMASK) << i;
            RECT area;
            GetWindowRect(button, &area);
            // Dialog units are rounded to pixels for each control by itself.
            EXPECT_NEAR(first.left + i % 4 * (next.left - first.left), area.left, 3) << i;
            EXPECT_NEAR(first.top + i / 4 * (below.top - first.top), area.top, 3) << i;
        }
    });
}

TEST_F(ColoursDialog, TheSampleShowsTheColoursOfTheRegionThatIsChosen)
{
    constexpr int Foregrounds[] = {7, 0, 0, 0, 7};
    constexpr int Backgrounds[] = {1, 6, 6, 8, 9};
    Look([&](HWND dialog) {
        for (const int region : {4, 3, 2, 1, 0}) {
            SCOPED_TRACE(region);
            ChooseRegion(dialog, region);
            ExpectSample(dialog, Foregrounds[region], Backgrounds[region]);
            ExpectSampleShown(dialog, Foregrounds[region], Backgrounds[region]);
            EXPECT_TRUE(IsChecked(dialog, ForegroundRadio));
        }
    });
}

TEST_F(ColoursDialog, EveryButtonSetsTheForegroundAndTheSampleFollows)
{
    Look([](HWND dialog) {
        for (int i = 0; i < PaletteSize; ++i) {
            SCOPED_TRACE(i);
            ClickColour(dialog, i);
            ExpectSample(dialog, i, 1);
            if (i != 1) {
                ExpectSampleShown(dialog, i, 1);
            }
        }
    });
    ExpectDefaults();
}

TEST_F(ColoursDialog, EveryButtonSetsTheBackgroundAfterThatWasAskedFor)
{
    Look([](HWND dialog) {
        Click(dialog, BackgroundRadio);
        ExpectSample(dialog, 7, 1);
        for (int i = 0; i < PaletteSize; ++i) {
            SCOPED_TRACE(i);
            ClickColour(dialog, i);
            ExpectSample(dialog, 7, i);
            if (i != 7) {
                ExpectSampleShown(dialog, 7, i);
            }
        }
        Click(dialog, ForegroundRadio);
        ExpectSample(dialog, 7, 15);
        ClickColour(dialog, 2);
        ExpectSample(dialog, 2, 15);
    });
    ExpectDefaults();
}

TEST_F(ColoursDialog, TheRadioButtonsKeepTheirStateWhenAnotherRegionIsChosen)
{
    Change([](HWND dialog) {
        Click(dialog, BackgroundRadio);
        ChooseRegion(dialog, 2);
        EXPECT_TRUE(IsChecked(dialog, BackgroundRadio));
        ClickColour(dialog, 4);
        ExpectSample(dialog, 0, 4);
    });
    ExpectIndices({7, 0, 0, 0, 7}, {1, 6, 4, 8, 9});
}

TEST_F(ColoursDialog, EveryRegionIsSetByItself)
{
    for (int region = 0; region < ColourRegionCount; ++region) {
        SCOPED_TRACE(region);
        ViewOptions = ViewSettings{};
        Change([region](HWND dialog) {
            ChooseRegion(dialog, region);
            ClickColour(dialog, 13);
            Click(dialog, BackgroundRadio);
            ClickColour(dialog, 14);
        });
        std::vector<std::int32_t> foreground = {7, 0, 0, 0, 7};
        std::vector<std::int32_t> background = {1, 6, 6, 8, 9};
        foreground[static_cast<std::size_t>(region)] = 13;
        background[static_cast<std::size_t>(region)] = 14;
        ExpectIndices(foreground, background);
    }
}

TEST_F(ColoursDialog, OkWithoutAChangeKeepsEverything)
{
    Change([](HWND) {});
    ExpectDefaults();
}

TEST_F(ColoursDialog, CancelUndoesEverythingSinceTheDialogOpened)
{
    Look([](HWND dialog) {
        for (int region = 0; region < ColourRegionCount; ++region) {
            ChooseRegion(dialog, region);
            Click(dialog, ForegroundRadio);
            ClickColour(dialog, 3);
            Click(dialog, BackgroundRadio);
            ClickColour(dialog, 5);
        }
    });
    ExpectDefaults();
    Look([](HWND dialog) { ExpectSample(dialog, 7, 1); });
}

TEST_F(ColoursDialog, TheNextTimeItShowsWhatWasConfirmed)
{
    Change([](HWND dialog) {
        ChooseRegion(dialog, 3);
        Click(dialog, BackgroundRadio);
        ClickColour(dialog, 12);
    });
    Look([](HWND dialog) {
        EXPECT_EQ(0, RegionOf(dialog));
        EXPECT_TRUE(IsChecked(dialog, ForegroundRadio));
        ExpectSample(dialog, 7, 1);
        ChooseRegion(dialog, 3);
        ExpectSample(dialog, 0, 12);
    });
}

TEST_F(ColoursDialog, IndicesOutOfRangeCountAsTheRegionsDefaults)
{
    for (const std::int32_t index : {16, -1, 99, INT32_MAX, INT32_MIN}) {
        SCOPED_TRACE(index);
        ViewOptions.Foreground[0] = index;
        ViewOptions.Background[4] = index;
        Change([](HWND dialog) {
            ExpectSample(dialog, 7, 1);
            ChooseRegion(dialog, 4);
            ExpectSample(dialog, 7, 9);
        });
        ExpectDefaults();
    }
}

TEST_F(ColoursDialog, OnlyTheSampleIsColoured)
{
    Look([](HWND dialog) {
        const HWND label = GetWindow(dialog, GW_CHILD);
        ASSERT_EQ("&Region :", [label] {
            char text[20] = "";
            GetWindowTextA(label, text, sizeof text);
            return std::string(text);
        }());
        WindowDc dc(label);
        SetTextColor(dc, RGB(1, 2, 3));
        SendMessageA(dialog, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(static_cast<HDC>(dc)),
                     reinterpret_cast<LPARAM>(label));
        EXPECT_NE(Palette[7], GetTextColor(dc));
        EXPECT_NE(Palette[1], GetBkColor(dc));
    });
}

TEST_F(ColoursDialog, AButtonIsFilledAndHasABlackBorderTwoPixelsInsideAndItsColourWithin)
{
    Look([](HWND dialog) {
        const HBRUSH green = CreateSolidBrush(RGB(0, 255, 0));
        for (int i = 0; i < PaletteSize; ++i) {
            SCOPED_TRACE(i);
            const Picture inGreen = ButtonDrawn(dialog, i, ODA_DRAWENTIRE, 0, green);
            EXPECT_EQ(0, DifferentPixels(ButtonExpected(i, RGB(0, 255, 0)), inGreen));
            const HBRUSH white = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
            const Picture inWhite = ButtonDrawn(dialog, i, ODA_DRAWENTIRE, 0, white);
            EXPECT_EQ(0, DifferentPixels(ButtonExpected(i, RGB(255, 255, 255)), inWhite));
        }
        DeleteObject(green);
    });
}

TEST_F(ColoursDialog, AButtonShowsNoMarkOfTheCurrentChoice)
{
    Look([](HWND dialog) {
        const HBRUSH white = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
        ClickColour(dialog, 4);
        for (const UINT state : {0u, UINT{ODS_SELECTED}, UINT{ODS_CHECKED}}) {
            const Picture drawn = ButtonDrawn(dialog, 4, ODA_DRAWENTIRE, state, white);
            EXPECT_EQ(0, DifferentPixels(ButtonExpected(4, RGB(255, 255, 255)), drawn));
        }
    });
}

TEST_F(ColoursDialog, AChangeOfTheFocusDrawsItsRectangleAlone)
{
    Look([](HWND dialog) {
        const HBRUSH white = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
        const Picture rectangle = Drawn(30, 20, [](HDC dc) {
            FillCanvas(dc);
            DrawFocusRect(dc, &ItemArea);
        });
        ASSERT_LT(1, ColoursIn(rectangle));
        EXPECT_EQ(0, DifferentPixels(rectangle, ButtonDrawn(dialog, 6, ODA_FOCUS, ODS_FOCUS, white)));
        EXPECT_EQ(0, DifferentPixels(rectangle, ButtonDrawn(dialog, 6, ODA_FOCUS, 0, white)));
        EXPECT_EQ(0, DifferentPixels(ButtonExpected(6, RGB(255, 255, 255), true),
                                     ButtonDrawn(dialog, 6, ODA_DRAWENTIRE, ODS_FOCUS, white)));
    });
}

TEST_F(ColoursDialog, NothingIsDrawnWhenAButtonIsOnlyPressed)
{
    Look([](HWND dialog) {
        const Picture empty = Drawn(30, 20, FillCanvas);
        const HBRUSH white = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
        EXPECT_EQ(0, DifferentPixels(empty, ButtonDrawn(dialog, 6, ODA_SELECT, ODS_SELECTED, white)));
        EXPECT_EQ(0, DifferentPixels(empty, ButtonDrawn(dialog, 6, ODA_SELECT, ODS_SELECTED | ODS_FOCUS, white)));
        EXPECT_EQ(0, DifferentPixels(empty, ButtonDrawn(dialog, 6, ODA_SELECT, 0, white)));
    });
}

TEST_F(ColoursDialog, TheButtonsOnTheScreenHaveAWhiteEdgeABorderAndTheirColours)
{
    Look([](HWND dialog) {
        for (int i = 0; i < PaletteSize; ++i) {
            SCOPED_TRACE(i);
            const Picture picture = ControlPicture(dialog, FirstColour + i);
            for (const int edge : {0, 1}) {
                EXPECT_EQ(PixelOf(7), PixelAt(picture, edge, edge));
                EXPECT_EQ(PixelOf(7), PixelAt(picture, picture.Width - 1 - edge, picture.Height - 1 - edge));
            }
            EXPECT_EQ(PixelOf(0), PixelAt(picture, 2, 2));
            EXPECT_EQ(PixelOf(0), PixelAt(picture, picture.Width - 3, picture.Height - 3));
            EXPECT_EQ(PixelOf(i), PixelAt(picture, 3, 3));
            EXPECT_EQ(PixelOf(i), PixelAt(picture, picture.Width - 4, picture.Height - 4));
        }
    });
}

TEST_F(ColoursDialog, TheFocusComesToAButtonAndLeavesItAsItWas)
{
    Look([](HWND dialog) {
        const Picture before = ControlPicture(dialog, FirstColour + 5);
        SetFocus(GetDlgItem(dialog, FirstColour + 5));
        EXPECT_NE(0, DifferentPixels(before, ControlPicture(dialog, FirstColour + 5)));
        SetFocus(GetDlgItem(dialog, FirstColour + 6));
        EXPECT_EQ(0, DifferentPixels(before, ControlPicture(dialog, FirstColour + 5)));
    });
}

TEST_F(ColoursDialog, CanBeUsedByKeyboardAlone)
{
    DialogAnswers answers;
    answers.Then([](HWND) { PressKey(VK_DOWN); })
        .Then([](HWND dialog) {
            EXPECT_EQ(1, RegionOf(dialog));
            ExpectSample(dialog, 0, 6);
            PressKey(VK_TAB);
        })
        .Then([](HWND dialog) {
            EXPECT_EQ(GetDlgItem(dialog, FirstColour), GetFocus());
            PressKey(VK_RIGHT);
        })
        .Then([](HWND dialog) {
            EXPECT_EQ(GetDlgItem(dialog, FirstColour + 1), GetFocus());
            PressKey(VK_DOWN);
        })
        .Then([](HWND dialog) {
            EXPECT_EQ(GetDlgItem(dialog, FirstColour + 2), GetFocus());
            ExpectSample(dialog, 0, 6);
            PressKey(VK_SPACE);
        })
        .Then([](HWND dialog) {
            ExpectSample(dialog, 2, 6);
            PressKey(VK_TAB);
        })
        .Then([](HWND dialog) {
            EXPECT_EQ(GetDlgItem(dialog, ForegroundRadio), GetFocus());
            PressKey(VK_DOWN);
        })
        .Then([](HWND dialog) {
            EXPECT_TRUE(IsChecked(dialog, BackgroundRadio));
            PostMessageA(GetFocus(), WM_SYSCHAR, 'r', 1 << 29); // the mnemonic of the regions
        })
        .Then([](HWND dialog) {
            EXPECT_EQ(GetDlgItem(dialog, RegionBox), GetFocus());
            PressKey(VK_TAB);
        })
        .Then([](HWND) { PressKey(VK_SPACE); })
        .Then([](HWND) { PressKey(VK_RETURN); });
    EXPECT_TRUE(ChooseColours(Windows.Main));
    EXPECT_EQ(2, ViewOptions.Foreground[1]);
    EXPECT_NE(6, ViewOptions.Background[1]);
}

TEST_F(ColoursDialog, EscCancels)
{
    EXPECT_FALSE(Ask([](HWND dialog) {
        ClickColour(dialog, 4);
        PostMessageA(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 1);
    }));
    ExpectDefaults();
}

TEST_F(ColoursDialog, UsingItAgainAndAgainLeavesNoObjectBehind)
{
    const auto use = [](HWND dialog) {
        ClickColour(dialog, 10);
        ChooseRegion(dialog, 3);
        ClickColour(dialog, 11);
        RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    };
    Look(use);
    PumpMessages();
    const int before = FreeGdiObjects();
    for (int round = 0; round < 10; ++round) {
        Look(use);
        Change(use);
    }
    PumpMessages();
    EXPECT_EQ(before, FreeGdiObjects());
}
