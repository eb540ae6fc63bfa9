#include "support/dialogs.h"
#include "support/file_list.h"
#include "support/find_dialog.h"
#include "support/input.h"
#include "support/ui_test.h"

namespace {

class AboutTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }
};

constexpr char AboutTitle[] = "About Kestovar";

HWND ShowAbout(const Program& program)
{
    program.Post(WM_COMMAND, IDM_HELP_ABOUT);
    return WaitForDialog(program, AboutTitle);
}

// The icon is the first control of the dialog; the text stands beside it.
HWND IconOf(HWND dialog)
{
    return GetWindow(dialog, GW_CHILD);
}

HWND TextOf(HWND dialog)
{
    return GetWindow(IconOf(dialog), GW_HWNDNEXT);
}

constexpr char Version[] = "Kestovar Version 3.8 (32-bit)";

} // namespace

TEST_F(AboutTest, TellsTheProgramAndItsVersion)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowAbout(program);
    ASSERT_NE(dialog, nullptr);
    char text[100] = "";
    program.Send(TextOf(dialog), WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    EXPECT_STREQ(text, Version);
    EXPECT_EQ(ControlText(dialog, IDOK), "OK");
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), program.Frame());
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(AboutTest, TheMenuKeysShowItAndEnterClosesIt)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(WaitForKeyboard(program));
    ASSERT_TRUE(OpenMenu(program, 'H'));
    PressKeys({'A'});
    const HWND dialog = WaitForDialog(program, AboutTitle);
    ASSERT_NE(dialog, nullptr);
    EXPECT_FALSE(IsWindowEnabled(program.Frame()));
    EXPECT_TRUE(WaitUntil([&] { return FocusOf(dialog) == GetDlgItem(dialog, IDOK); }));
    Accept(program, dialog);
    EXPECT_TRUE(WaitForKeyboard(program));
}

TEST_F(AboutTest, TheMouseTheEscapeKeyAndTheCloseBoxCloseItToo)
{
    Program program(WriteScratch("one.txt", "one"));
    ASSERT_TRUE(program.WaitForFrame());
    HWND dialog = ShowAbout(program);
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(BringToForeground(dialog));
    ClickControl(dialog, IDOK);
    EXPECT_TRUE(WaitUntilClosed(dialog));
    dialog = ShowAbout(program);
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(BringToForeground(dialog));
    PressKeys({VK_ESCAPE});
    EXPECT_TRUE(WaitUntilClosed(dialog));
    dialog = ShowAbout(program);
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(PostMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0));
    EXPECT_TRUE(WaitUntilClosed(dialog));
    EXPECT_TRUE(WaitForKeyboard(program));
    EXPECT_EQ(program.Title(), "Kestovar-one.txt");
}

TEST_F(AboutTest, ItsIconIsPaintedAndItsTextFits)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const HWND dialog = ShowAbout(program);
    ASSERT_NE(dialog, nullptr);
    const HWND icon = IconOf(dialog);
    const SIZE size = ClientSize(icon);
    EXPECT_TRUE(WaitUntil([&] {
        const Pixels pixels = program.Inside().Read(icon, 0, 0, size.cx, size.cy);
        return !pixels.Values.empty() && pixels.CountOf(pixels.At(0, 0)) < pixels.Width * pixels.Height;
    }));
    const SIZE place = ClientSize(TextOf(dialog));
    const SIZE needed = ExtentOf(Version);
    EXPECT_LE(needed.cx, place.cx);
    EXPECT_LE(needed.cy, place.cy);
}
