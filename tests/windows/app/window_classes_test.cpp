#include "app/frame_window.h"
#include "harness/program.h"
#include "view/frame_windows.h"
#include "view/ruler_window.h"
#include "view/status_window.h"
#include "view/view_window.h"

#include <gtest/gtest.h>

namespace {

class WindowClasses : public RunningProgram {
protected:
    static WNDCLASSEXA ClassNamed(const char* name)
    {
        WNDCLASSEXA found = {};
        found.cbSize = sizeof found;
        EXPECT_TRUE(GetClassInfoExA(GetModuleHandleA(nullptr), name, &found)) << name;
        return found;
    }
};

int IconWidth(HICON icon)
{
    ICONINFO info = {};
    EXPECT_TRUE(GetIconInfo(icon, &info));
    BITMAP bitmap = {};
    GetObjectA(info.hbmColor, sizeof bitmap, &bitmap);
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    return bitmap.bmWidth;
}

} // namespace

TEST_F(WindowClasses, HaveTheirStyles)
{
    constexpr UINT Redraw = CS_HREDRAW | CS_VREDRAW;
    const struct {
        const char* Name;
        UINT Style;
    } classes[] = {
        {"Kestovar", Redraw}, {"KstvMn", Redraw | CS_DBLCLKS},
        {"KstvRl", Redraw},   {"KstvSt", Redraw | CS_DBLCLKS},
        {"KstvBt", Redraw},   {"KstvBb", 0},
        {"KstvSb", 0},
    };
    for (const auto& expected : classes) {
        EXPECT_EQ(expected.Style, ClassNamed(expected.Name).style) << expected.Name;
    }
}

TEST_F(WindowClasses, HaveTheArrowCursorAndNoExtraBytes)
{
    const HCURSOR arrow = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    for (const char* name : {"Kestovar", "KstvMn", "KstvRl", "KstvSt", "KstvBt", "KstvBb", "KstvSb"}) {
        const WNDCLASSEXA found = ClassNamed(name);
        EXPECT_EQ(arrow, found.hCursor) << name;
        EXPECT_EQ(0, found.cbClsExtra) << name;
        EXPECT_EQ(0, found.cbWndExtra) << name;
        EXPECT_EQ(GetModuleHandleA(nullptr), found.hInstance) << name;
    }
}

TEST_F(WindowClasses, OnlyTheButtonBarHasABackground)
{
    for (const char* name : {"Kestovar", "KstvMn", "KstvRl", "KstvSt", "KstvBb", "KstvSb"}) {
        EXPECT_EQ(nullptr, ClassNamed(name).hbrBackground) << name;
    }
    LOGBRUSH brush = {};
    ASSERT_NE(0, GetObjectA(ClassNamed("KstvBt").hbrBackground, sizeof brush, &brush));
    EXPECT_EQ(static_cast<UINT>(BS_SOLID), brush.lbStyle);
    EXPECT_EQ(GetSysColor(COLOR_BTNFACE), brush.lbColor);
}

TEST_F(WindowClasses, OnlyTheFrameHasMenuAndIcons)
{
    for (const char* name : {"KstvMn", "KstvRl", "KstvSt", "KstvBt", "KstvBb", "KstvSb"}) {
        const WNDCLASSEXA found = ClassNamed(name);
        EXPECT_EQ(nullptr, found.lpszMenuName) << name;
        EXPECT_EQ(nullptr, found.hIcon) << name;
        EXPECT_EQ(nullptr, found.hIconSm) << name;
    }
    const WNDCLASSEXA frame = ClassNamed("Kestovar");
    EXPECT_STREQ("Kestovar", frame.lpszMenuName);
    EXPECT_EQ(GetSystemMetrics(SM_CXICON), IconWidth(frame.hIcon));
    EXPECT_EQ(16, IconWidth(frame.hIconSm));
}

TEST_F(WindowClasses, HaveTheirProcedures)
{
    EXPECT_EQ(&FrameWndProc, ClassNamed("Kestovar").lpfnWndProc);
    EXPECT_EQ(&ViewWndProc, ClassNamed("KstvMn").lpfnWndProc);
    EXPECT_EQ(&RulerWndProc, ClassNamed("KstvRl").lpfnWndProc);
    EXPECT_EQ(&StatusWndProc, ClassNamed("KstvSt").lpfnWndProc);
    EXPECT_EQ(&ScrollWndProc, ClassNamed("KstvSb").lpfnWndProc);
}

TEST_F(WindowClasses, TheFrameAndItsChildrenAreOfThem)
{
    const struct {
        HWND Window;
        const char* Name;
        HWND Parent;
    } windows[] = {
        {Windows.Main, "Kestovar", nullptr},       {Windows.View, "KstvMn", Windows.Main},
        {Windows.Ruler, "KstvRl", Windows.Main},   {Windows.Status, "KstvSt", Windows.Main},
        {Windows.Buttons, "KstvBt", Windows.Main},
    };
    for (const auto& expected : windows) {
        char name[20] = "";
        GetClassNameA(expected.Window, name, sizeof name);
        EXPECT_STREQ(expected.Name, name);
        EXPECT_EQ(expected.Parent, GetParent(expected.Window)) << expected.Name;
    }
}
