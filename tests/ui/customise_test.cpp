#include "support/button_bar.h"
#include "support/dialogs.h"
#include "support/file_list.h"
#include "support/find_dialog.h"
#include "support/input.h"

#include <algorithm>

namespace {

// Which buttons the bar has: the dialog under real keys and the real mouse, and the settings.
class CustomiseTest : public BarTest {
protected:
    void SetUp() override
    {
        BarTest::SetUp();
        WriteSettings(BarSettings);
    }

    static void UseButtons(const std::string& buttons, const std::string& keys = "")
    {
        WriteSettings(BarSettings + ("Buttons=" + buttons + "\n" + keys));
    }
};

constexpr char CustomiseTitle[] = "Customize Button Bar";
constexpr char NoValue[] = "(none)";
constexpr int ItemHeight = 25;

// How a bar looks without a file.
std::string LooksWithoutFile(const BarOrder& order)
{
    static const std::string All = "+-------++-+++--++------";
    std::string looks;
    for (const int button : order) {
        looks += All[static_cast<std::size_t>(button)];
    }
    return looks;
}

void ExpectBarOf(Program& program, const BarOrder& order)
{
    ExpectBar(program, order, LooksWithoutFile(order));
}

// By the menu, with real keys.
HWND ShowCustomise(const Program& program)
{
    EXPECT_TRUE(WaitForKeyboard(program));
    EXPECT_TRUE(OpenMenu(program, 'O'));
    PressKeys({'B'});
    return WaitForDialog(program, CustomiseTitle);
}

LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
{
    DWORD_PTR result = 0;
    EXPECT_NE(SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, DefaultWaitLimit, &result), 0);
    return static_cast<LRESULT>(result);
}

// The buttons of a list.
BarOrder Listed(HWND dialog, int control)
{
    const HWND list = GetDlgItem(dialog, control);
    BarOrder buttons;
    const LRESULT count = Ask(list, LB_GETCOUNT);
    for (LRESULT i = 0; i < count; ++i) {
        buttons.push_back(static_cast<int>(Ask(list, LB_GETITEMDATA, static_cast<WPARAM>(i))));
    }
    return buttons;
}

void ExpectListed(HWND dialog, int control, const BarOrder& buttons)
{
    EXPECT_TRUE(WaitUntil([&] { return Listed(dialog, control) == buttons; }))
        << control << ": " << OrderText(Listed(dialog, control)) << " instead of " << OrderText(buttons);
}

void ExpectLists(HWND dialog, const BarOrder& available, const BarOrder& chosen)
{
    ExpectListed(dialog, IDC_BAR_AVAILABLE, available);
    ExpectListed(dialog, IDC_BAR_CHOSEN, chosen);
}

void ExpectSelected(HWND dialog, int control, int item)
{
    EXPECT_TRUE(WaitUntil([&] { return ListSelection(dialog, control) == item; }))
        << control << ": " << ListSelection(dialog, control) << " instead of " << item;
}

// Clicks with the real mouse on an item, which has to be in sight.
void ClickItem(HWND dialog, int control, int item)
{
    const HWND list = GetDlgItem(dialog, control);
    const int y = (item - ListTop(dialog, control)) * ItemHeight + ItemHeight / 2;
    ASSERT_TRUE(BringToForeground(dialog));
    ASSERT_LT(y, ClientSize(list).cy);
    ASSERT_TRUE(MovePointer(list, 50, y));
    PressLeft();
    ReleaseLeft();
    ExpectSelected(dialog, control, item);
}

void ScrollTo(HWND dialog, int control, int item)
{
    Ask(GetDlgItem(dialog, control), LB_SETTOPINDEX, static_cast<WPARAM>(item));
}

void CloseWith(const Program& program, HWND dialog, int button)
{
    ClickControl(dialog, button);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    ASSERT_TRUE(WaitForKeyboard(program));
}

// The names that a list writes, from its first item in sight.
std::vector<std::string> NamesShown(Program& program, HWND dialog, int control)
{
    std::vector<ProbeText> texts = program.Inside().Repaint(GetDlgItem(dialog, control));
    std::stable_sort(texts.begin(), texts.end(), [](const ProbeText& a, const ProbeText& b) { return a.Y < b.Y; });
    std::vector<std::string> names;
    for (const ProbeText& text : texts) {
        names.emplace_back(text.Text);
        EXPECT_EQ(text.X, 30) << text.Text;
    }
    return names;
}

// Each item in sight has its button's bubble as its name.
void ExpectNames(Program& program, HWND dialog, int control, int first)
{
    const BarOrder buttons = Listed(dialog, control);
    const std::vector<std::string> names = NamesShown(program, dialog, control);
    EXPECT_GE(names.size(), 3u);
    ASSERT_LE(static_cast<std::size_t>(first) + names.size(), buttons.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(names[i], BarButtons[buttons[static_cast<std::size_t>(first) + i]].Bubble);
    }
}

void PressTabs(HWND dialog, int control)
{
    for (int i = 0; i < 12 && FocusOf(dialog) != GetDlgItem(dialog, control); ++i) {
        const HWND before = FocusOf(dialog);
        PressKeys({VK_TAB});
        ASSERT_TRUE(WaitUntil([&] { return FocusOf(dialog) != before; }));
    }
    ASSERT_EQ(FocusOf(dialog), GetDlgItem(dialog, control));
}

const BarOrder DefaultAvailable = {17, 18, 19, 20, 21, 22, 23};

} // namespace

TEST_F(CustomiseTest, TheMenuShowsTheButtonsInBothLists)
{
    UseButtons("0509180123");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowCustomise(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), program.Frame());
    ExpectLists(dialog, {0, 2, 3, 4, 6, 7, 8, 10, 11, 12, 13, 14, 15, 16, 17, 19, 20, 21, 22}, {5, 9, 18, 1, 23});
    EXPECT_EQ(Ask(GetDlgItem(dialog, IDC_BAR_AVAILABLE), LB_GETITEMHEIGHT), ItemHeight);
    EXPECT_EQ(Ask(GetDlgItem(dialog, IDC_BAR_CHOSEN), LB_GETITEMHEIGHT), ItemHeight);
    EXPECT_TRUE(IsChecked(dialog, IDC_BAR_BUBBLES));
    ExpectNames(program, dialog, IDC_BAR_AVAILABLE, 0);
    ExpectNames(program, dialog, IDC_BAR_CHOSEN, 0);
    ScrollTo(dialog, IDC_BAR_AVAILABLE, 18);
    const int top = ListTop(dialog, IDC_BAR_AVAILABLE);
    EXPECT_GT(top, 5);
    ExpectNames(program, dialog, IDC_BAR_AVAILABLE, top);
    CloseWith(program, dialog, IDCANCEL);
}

TEST_F(CustomiseTest, TheDefaultBarIsOffered)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowCustomise(program);
    ASSERT_NE(dialog, nullptr);
    ExpectLists(dialog, DefaultAvailable, FirstButtons(17));
    EXPECT_EQ(ListSelection(dialog, IDC_BAR_AVAILABLE), LB_ERR);
    EXPECT_EQ(ListSelection(dialog, IDC_BAR_CHOSEN), LB_ERR);
    CloseWith(program, dialog, IDOK);
    EXPECT_EQ(SettingValue("Buttons"), OrderText(FirstButtons(17)));
    EXPECT_EQ(SettingValue("ShowBubbles"), "1");
    ExpectBarOf(program, FirstButtons(17));
}

TEST_F(CustomiseTest, TheMouseAddsRemovesAndMoves)
{
    UseButtons("000102");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ExpectBarOf(program, {0, 1, 2});
    const HWND dialog = ShowCustomise(program);
    ASSERT_NE(dialog, nullptr);
    BarOrder available;
    for (int button = 3; button < BarButtonCount; ++button) {
        available.push_back(button);
    }
    ExpectLists(dialog, available, {0, 1, 2});

    ClickControl(dialog, IDC_BAR_ADD); // nothing is selected
    ClickControl(dialog, IDC_BAR_REMOVE);
    ClickControl(dialog, IDC_BAR_UP);
    ClickControl(dialog, IDC_BAR_DOWN);
    ClickItem(dialog, IDC_BAR_AVAILABLE, 1);
    ExpectLists(dialog, available, {0, 1, 2});

    ClickControl(dialog, IDC_BAR_ADD); // at the end
    std::erase(available, 4);
    ExpectLists(dialog, available, {0, 1, 2, 4});

    ClickItem(dialog, IDC_BAR_CHOSEN, 1);
    ClickItem(dialog, IDC_BAR_AVAILABLE, 2);
    ClickControl(dialog, IDC_BAR_ADD); // before the selected one
    std::erase(available, 6);
    ExpectLists(dialog, available, {0, 6, 1, 2, 4});

    ClickItem(dialog, IDC_BAR_CHOSEN, 2);
    ClickControl(dialog, IDC_BAR_UP);
    ExpectListed(dialog, IDC_BAR_CHOSEN, {0, 1, 6, 2, 4});
    ExpectSelected(dialog, IDC_BAR_CHOSEN, 1);
    ClickControl(dialog, IDC_BAR_UP);
    ExpectListed(dialog, IDC_BAR_CHOSEN, {1, 0, 6, 2, 4});
    ExpectSelected(dialog, IDC_BAR_CHOSEN, 0);
    ClickControl(dialog, IDC_BAR_UP); // it is the first
    ClickControl(dialog, IDC_BAR_DOWN);
    ExpectListed(dialog, IDC_BAR_CHOSEN, {0, 1, 6, 2, 4});
    ExpectSelected(dialog, IDC_BAR_CHOSEN, 1);

    ClickItem(dialog, IDC_BAR_CHOSEN, 4);
    ClickControl(dialog, IDC_BAR_DOWN); // it is the last
    ClickControl(dialog, IDC_BAR_UP);
    ExpectListed(dialog, IDC_BAR_CHOSEN, {0, 1, 6, 4, 2});
    ExpectSelected(dialog, IDC_BAR_CHOSEN, 3);

    ClickItem(dialog, IDC_BAR_CHOSEN, 1);
    ClickControl(dialog, IDC_BAR_REMOVE); // to the end of the others
    available.push_back(1);
    ExpectLists(dialog, available, {0, 6, 4, 2});
    ExpectBarOf(program, {0, 1, 2}); // until OK

    CloseWith(program, dialog, IDOK);
    ExpectBarOf(program, {0, 6, 4, 2});
    EXPECT_EQ(SettingValue("Buttons"), "00060402");
    EXPECT_EQ(SettingValue("ShowBubbles"), "1");
}

TEST_F(CustomiseTest, TheKeysAddRemoveAndMove)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowCustomise(program);
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(WaitUntil([&] { return FocusOf(dialog) == GetDlgItem(dialog, IDC_BAR_AVAILABLE); }));
    PressKeys({VK_HOME});
    ExpectSelected(dialog, IDC_BAR_AVAILABLE, 0);
    PressKeys({VK_DOWN});
    ExpectSelected(dialog, IDC_BAR_AVAILABLE, 1);
    PressKeys({VK_MENU, 'A'});
    BarOrder chosen = FirstButtons(17);
    chosen.push_back(18);
    ExpectLists(dialog, {17, 19, 20, 21, 22, 23}, chosen);
    PressTabs(dialog, IDC_BAR_CHOSEN);
    PressKeys({VK_HOME}); // the first key selects where the focus is
    ExpectSelected(dialog, IDC_BAR_CHOSEN, 0);
    PressKeys({VK_END});
    ExpectSelected(dialog, IDC_BAR_CHOSEN, 17);
    PressKeys({VK_MENU, 'U'});
    std::swap(chosen[16], chosen[17]);
    ExpectListed(dialog, IDC_BAR_CHOSEN, chosen);
    ExpectSelected(dialog, IDC_BAR_CHOSEN, 16);
    PressKeys({VK_MENU, 'U'});
    std::swap(chosen[15], chosen[16]);
    ExpectListed(dialog, IDC_BAR_CHOSEN, chosen);
    PressKeys({VK_MENU, 'D'});
    std::swap(chosen[15], chosen[16]);
    ExpectListed(dialog, IDC_BAR_CHOSEN, chosen);
    ExpectSelected(dialog, IDC_BAR_CHOSEN, 16);
    PressTabs(dialog, IDC_BAR_CHOSEN);
    PressKeys({VK_HOME});
    ExpectSelected(dialog, IDC_BAR_CHOSEN, 0);
    PressKeys({VK_MENU, 'R'});
    chosen.erase(chosen.begin());
    ExpectLists(dialog, {17, 19, 20, 21, 22, 23, 0}, chosen);
    PressKeys({VK_MENU, 'S'});
    ExpectChecked(dialog, IDC_BAR_BUBBLES, false);
    PressKeys({VK_RETURN});
    ASSERT_TRUE(WaitUntilClosed(dialog));
    ExpectBarOf(program, chosen);
    EXPECT_EQ(SettingValue("Buttons"), OrderText(chosen));
    EXPECT_EQ(SettingValue("ShowBubbles"), "0");
}

TEST_F(CustomiseTest, CancelAndEscChangeNothing)
{
    UseButtons("000102", "ShowBubbles=1\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    for (const bool byKey : {false, true}) {
        SCOPED_TRACE(byKey);
        const HWND dialog = ShowCustomise(program);
        ASSERT_NE(dialog, nullptr);
        ClickItem(dialog, IDC_BAR_CHOSEN, 0);
        ClickControl(dialog, IDC_BAR_REMOVE);
        ExpectListed(dialog, IDC_BAR_CHOSEN, {1, 2});
        ClickControl(dialog, IDC_BAR_BUBBLES);
        ExpectChecked(dialog, IDC_BAR_BUBBLES, false);
        if (byKey) {
            PressKeys({VK_ESCAPE});
        } else {
            ClickControl(dialog, IDCANCEL);
        }
        ASSERT_TRUE(WaitUntilClosed(dialog));
        ASSERT_TRUE(WaitForKeyboard(program));
        ExpectBarOf(program, {0, 1, 2});
        EXPECT_EQ(SettingValue("Buttons"), "000102");
        EXPECT_EQ(SettingValue("ShowBubbles"), "1");
    }
    const HWND dialog = ShowCustomise(program); // it knows nothing of it either
    ASSERT_NE(dialog, nullptr);
    ExpectListed(dialog, IDC_BAR_CHOSEN, {0, 1, 2});
    EXPECT_TRUE(IsChecked(dialog, IDC_BAR_BUBBLES));
    CloseWith(program, dialog, IDCANCEL);
}

TEST_F(CustomiseTest, AnEmptyBarLastsUntilTheNextStart)
{
    UseButtons("0009", "ShowBubbles=1\n");
    {
        Program program;
        ASSERT_TRUE(program.WaitForFrame());
        HWND dialog = ShowCustomise(program);
        ASSERT_NE(dialog, nullptr);
        for (const BarOrder& left : {BarOrder{9}, BarOrder{}}) {
            ClickItem(dialog, IDC_BAR_CHOSEN, 0);
            ClickControl(dialog, IDC_BAR_REMOVE);
            ExpectListed(dialog, IDC_BAR_CHOSEN, left);
        }
        ClickControl(dialog, IDC_BAR_BUBBLES);
        ExpectChecked(dialog, IDC_BAR_BUBBLES, false);
        CloseWith(program, dialog, IDOK);
        ExpectBarOf(program, {});
        EXPECT_EQ(SettingValue("Buttons"), "0009");
        EXPECT_EQ(SettingValue("ShowBubbles"), "1");
        program.Command(IDM_OPTIONS_SAVE);
        EXPECT_EQ(SettingValue("Buttons"), "0009");
        EXPECT_EQ(SettingValue("ShowBubbles"), "1");
        dialog = ShowCustomise(program);
        ASSERT_NE(dialog, nullptr);
        ExpectLists(dialog, FirstButtons(BarButtonCount), {});
        CloseWith(program, dialog, IDCANCEL);
        EXPECT_EQ(program.Close(), 0u);
    }
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ExpectBarOf(program, {0, 9});
}

TEST_F(CustomiseTest, AFullBarAndItsBubblesAreThereAtTheNextStart)
{
    BarOrder order = FirstButtons(BarButtonCount);
    std::reverse(order.begin(), order.end());
    UseButtons(OrderText(order));
    {
        Program program;
        ASSERT_TRUE(program.WaitForFrame());
        ExpectBarOf(program, order);
        const HWND dialog = ShowCustomise(program);
        ASSERT_NE(dialog, nullptr);
        ExpectLists(dialog, {}, order);
        ClickItem(dialog, IDC_BAR_CHOSEN, 0);
        ClickControl(dialog, IDC_BAR_DOWN);
        std::swap(order[0], order[1]);
        ExpectListed(dialog, IDC_BAR_CHOSEN, order);
        ClickControl(dialog, IDC_BAR_BUBBLES);
        ExpectChecked(dialog, IDC_BAR_BUBBLES, false);
        CloseWith(program, dialog, IDOK);
        ExpectBarOf(program, order);
        EXPECT_EQ(program.Close(), 0u);
    }
    EXPECT_EQ(SettingValue("Buttons"), OrderText(order));
    EXPECT_EQ(SettingValue("ShowBubbles"), "0");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ExpectBarOf(program, order);
    const HWND dialog = ShowCustomise(program);
    ASSERT_NE(dialog, nullptr);
    ExpectLists(dialog, {}, order);
    EXPECT_FALSE(IsChecked(dialog, IDC_BAR_BUBBLES));
    CloseWith(program, dialog, IDCANCEL);
}

TEST_F(CustomiseTest, ANewButtonWorksAtOnce)
{
    UseButtons("0009");
    Program program(WriteScratch("one.kvb", "text"));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectBar(program, {0, 9}, "++");
    const HWND dialog = ShowCustomise(program);
    ASSERT_NE(dialog, nullptr);
    ClickItem(dialog, IDC_BAR_AVAILABLE, 5); // Find
    ClickControl(dialog, IDC_BAR_ADD);
    ExpectListed(dialog, IDC_BAR_CHOSEN, {0, 9, BarFind});
    CloseWith(program, dialog, IDOK);
    ExpectBar(program, {0, 9, BarFind}, "+++");
    program.Command(IDM_INTERNAL_CLOSE); // and has its state
    ExpectBar(program, {0, 9, BarFind}, "++-");
    program.Inside().Drop(program.Frame(), WriteScratch("one.kvb", "text"));
    ExpectBar(program, {0, 9, BarFind}, "+++");
    ASSERT_TRUE(ClickSlot(program, 2));
    const HWND find = WaitForDialog(program, FindTitle);
    ASSERT_NE(find, nullptr);
    PressControl(find, IDCANCEL);
    EXPECT_TRUE(WaitUntilClosed(find));
}

TEST_F(CustomiseTest, WithoutBubblesNoneComesAnyMore)
{
    UseButtons("0009");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowCustomise(program);
    ASSERT_NE(dialog, nullptr);
    ClickControl(dialog, IDC_BAR_BUBBLES);
    ExpectChecked(dialog, IDC_BAR_BUBBLES, false);
    CloseWith(program, dialog, IDOK);
    ASSERT_TRUE(PointAtSlot(program, 1));
    EXPECT_TRUE(StaysFalse([] { return FindWindowA("KstvBb", nullptr) != nullptr; }, 3000));
}

TEST_F(CustomiseTest, HelpLeavesTheDialogOpen)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowCustomise(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, IDC_ASK_HELP), "Help");
    ClickControl(dialog, IDC_ASK_HELP);
    AnswerMissingHelp(program);
    EXPECT_TRUE(IsWindow(dialog));
    ASSERT_TRUE(BringToForeground(dialog));
    CloseWith(program, dialog, IDCANCEL);
    EXPECT_EQ(SettingValue("Buttons"), NoValue);
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(CustomiseTest, AValueThatIsNoOrderStillGivesABar)
{
    const std::string all = OrderText(FirstButtons(BarButtonCount));
    const struct {
        const char* What;
        std::string Value;
        BarOrder Bar;
    } values[] = {
        {"empty", "", FirstButtons(17)},
        {"one character", "7", FirstButtons(17)},
        {"odd", "00090", {0, 9}},
        {"letters", "zz09xy", {0, 9, 0}},
        {"a digit and a letter", "9z09", {9, 9}},
        {"above the last", "1324", {13, 0}},
        {"far above the last", "9912", {0, 12}},
        {"below the first", "-109", {0, 9}},
        {"longer than all", all + "05", FirstButtons(BarButtonCount)},
        {"longer than is read", all + all, FirstButtons(BarButtonCount)},
    };
    for (const auto& value : values) {
        SCOPED_TRACE(value.What);
        UseButtons(value.Value);
        Program program;
        ASSERT_TRUE(program.WaitForFrame());
        ExpectBarOf(program, value.Bar);
        const HWND dialog = ShowCustomise(program);
        ASSERT_NE(dialog, nullptr);
        ExpectListed(dialog, IDC_BAR_CHOSEN, value.Bar);
        CloseWith(program, dialog, IDOK);
        ExpectBarOf(program, value.Bar);
        EXPECT_EQ(SettingValue("Buttons"), OrderText(value.Bar));
        EXPECT_EQ(program.Close(), 0u);
    }
}

TEST_F(CustomiseTest, ADoubledButtonIsOneInEachOfItsPlaces)
{
    UseButtons("060906");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ExpectBar(program, {6, 9, 6}, "-+-");
    program.Inside().Drop(program.Frame(), WriteScratch("one.kvb", "text"));
    ASSERT_TRUE(program.WaitForTitle("one.kvb"));
    ExpectBar(program, {6, 9, 6}, "+++");
    for (const int slot : {0, 2}) {
        ASSERT_TRUE(WaitForKeyboard(program));
        ASSERT_TRUE(ClickSlot(program, slot));
        const HWND dialog = WaitForDialog(program, FindTitle);
        ASSERT_NE(dialog, nullptr);
        PressControl(dialog, IDCANCEL);
        ASSERT_TRUE(WaitUntilClosed(dialog));
    }
    program.Command(IDM_INTERNAL_CLOSE);
    ExpectBar(program, {6, 9, 6}, "-+-");
}

TEST_F(CustomiseTest, MoreDoubledButtonsThanTheBarHoldsAreNoHarm)
{
    std::string doubled;
    for (int slot = 0; slot < BarButtonCount; ++slot) {
        doubled += "09";
    }
    UseButtons(doubled);
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const BarOrder before(BarButtonCount, 9);
    ExpectBarOf(program, before);
    const HWND dialog = ShowCustomise(program);
    ASSERT_NE(dialog, nullptr);
    ExpectListed(dialog, IDC_BAR_CHOSEN, before);
    BarOrder chosen = before;
    for (int button = 0; button < 3; ++button) {
        ClickItem(dialog, IDC_BAR_AVAILABLE, 0);
        ClickControl(dialog, IDC_BAR_ADD);
        chosen.push_back(button);
        ExpectListed(dialog, IDC_BAR_CHOSEN, chosen);
    }
    CloseWith(program, dialog, IDOK);
    ExpectBarOf(program, before);
    EXPECT_EQ(SettingValue("Buttons"), doubled);
    EXPECT_EQ(program.Close(), 0u);
}
