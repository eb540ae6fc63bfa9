#include "app/menu_state.h"

#include "app/app_state.h"
#include "app/open_sequence.h"
#include "base/text.h"
#include "buttonbar/button_bar_window.h"
#include "buttonbar/buttons.h"
#include "document/document_state.h"
#include "document/file_list.h"
#include "files/associations.h"
#include "harness/folder.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "resources/ids.h"
#include "search/find_state.h"
#include "view/frame_windows.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <set>
#include <string>

namespace {

// The numbers are written out: these are the program's own.
const std::set<UINT> ItemsThatNeedAFile = {222, 224, 229, 232, 251, 252, 260, 263, 275, 276};
const std::set<int> ButtonsThatNeedAFile = {3, 4, 6, 18, 19, 20, 22, 23};
const std::set<UINT> ItemsThatStayGrey = {221, 250, 261, 262};
const std::set<int> ButtonsThatStayOff = {5, 7};
const std::set<int> ButtonsNobodyTouches = {0, 8, 9, 11, 12, 13, 15, 16, 17};

class MenuState : public RunningProgram {
protected:
    ~MenuState() override
    {
        ClearFileList();
        App.Info = FileInfo{.WantDetails = true};
        Details = FileDetails{};
        Document.IsText = false;
        CloseDocument();
        SetListMenuState();
        for (const int button : ButtonsNobodyTouches) {
            SetButtonEnabled(button, button != ButtonPreviousZip);
        }
    }

    static bool IsGrey(UINT id)
    {
        const UINT state = GetMenuState(Windows.MainMenu, id, MF_BYCOMMAND);
        EXPECT_NE(static_cast<UINT>(-1), state) << id;
        return (state & (MF_GRAYED | MF_DISABLED)) != 0;
    }

    static bool IsOn(int button) { return ButtonTable[button].Enabled; }

    // The opposite of what a rule should make of it, so that the rule has to do it.
    static void SetAll(bool enabled)
    {
        for (const ButtonInfo& button : ButtonTable) {
            EnableCommand(button.Command, enabled);
        }
        for (const UINT id : {221, 222, 224, 251, 262}) {
            EnableCommand(id, enabled);
        }
        for (int button = 0; button < ButtonTotal; ++button) {
            SetButtonEnabled(button, enabled);
        }
    }

    static void Open(const std::string& path) { ASSERT_TRUE(OpenSequence(Windows.Main, path.c_str())) << path; }
};

// How the file that is opened can be launched.
class LaunchState : public MenuState {
protected:
    ~LaunchState() override
    {
        WriteProfileStringA("Extensions", "kv1", nullptr);
        BuildAssociations();
    }

    static void Associate(const char* extension)
    {
        WriteProfileStringA("Extensions", extension, "notepad.exe ^.kv1");
        BuildAssociations();
    }

    static LaunchMode ModeOf(const std::string& path)
    {
        Open(path);
        EXPECT_EQ(App.Launch == LaunchMode::None, IsGrey(223));
        EXPECT_EQ(App.Launch != LaunchMode::None, IsOn(14));
        return App.Launch;
    }

    // This program, as if made for another machine.
    static std::string ProgramFor(std::uint16_t machine)
    {
        char path[MAX_PATH];
        GetModuleFileNameA(nullptr, path, sizeof path);
        std::string image = FileContent(path);
        std::uint32_t header;
        memcpy(&header, image.data() + 60, sizeof header);
        memcpy(image.data() + header + 4, &machine, sizeof machine);
        return image;
    }
};

} // namespace

TEST_F(MenuState, EveryItemThatNeedsAFileFollowsTheFile)
{
    Document.IsText = true;
    for (const bool open : {true, false, true}) {
        SetAll(!open);
        SetFileMenuState(open, "c:\\file");
        for (const UINT id : ItemsThatNeedAFile) {
            EXPECT_EQ(!open, IsGrey(id)) << id;
        }
        for (const int button : ButtonsThatNeedAFile) {
            EXPECT_EQ(open, IsOn(button)) << button;
        }
    }
}

TEST_F(MenuState, CopySaveAndFindAgainAreGreyAfterEitherChange)
{
    for (const bool open : {true, false}) {
        SetAll(true);
        Find.FindSucceeded = true;
        SetFileMenuState(open, "c:\\file");
        for (const UINT id : ItemsThatStayGrey) {
            EXPECT_TRUE(IsGrey(id)) << id;
        }
        for (const int button : ButtonsThatStayOff) {
            EXPECT_FALSE(IsOn(button)) << button;
        }
        EXPECT_FALSE(Find.FindSucceeded);
    }
}

TEST_F(MenuState, LaunchIsGreyAndItsButtonOffWhereNothingApplies)
{
    Document.IsText = false;
    SetAll(true);
    SetFileMenuState(true, "c:\\file");
    EXPECT_TRUE(IsGrey(223));
    EXPECT_FALSE(IsOn(14));
    Document.IsText = true;
    SetAll(true);
    SetFileMenuState(false, "");
    EXPECT_TRUE(IsGrey(223));
    EXPECT_FALSE(IsOn(14));
}

TEST_F(MenuState, TheSelectionIsForgottenAfterEitherChange)
{
    for (const bool open : {true, false}) {
        View.SelLineA = 3;
        View.SelLineB = 4;
        SetFileMenuState(open, "c:\\file");
        EXPECT_EQ(0, View.SelLineA);
        EXPECT_EQ(0, View.SelLineB);
    }
}

TEST_F(MenuState, WithoutAnEditorAFileCannotBeEdited)
{
    Document.IsText = true;
    AppOptions.EditorName[0] = '\0';
    SetAll(true);
    SetFileMenuState(true, "c:\\file");
    EXPECT_TRUE(IsGrey(252));
    EXPECT_FALSE(IsOn(19));
    EXPECT_FALSE(IsGrey(224)) << "only that";
    EXPECT_EQ(LaunchMode::None, App.Launch);
}

TEST_F(MenuState, OnlyAnOpenTextCanBeLocked)
{
    const struct {
        bool Open;
        bool Text;
        bool Enabled;
    } cases[] = {{true, true, true}, {true, false, false}, {false, true, false}, {false, false, false}};
    for (const auto& each : cases) {
        SetAll(!each.Enabled);
        Document.IsText = each.Text;
        SetFileMenuState(each.Open, "c:\\file");
        EXPECT_EQ(!each.Enabled, IsGrey(274));
        EXPECT_EQ(each.Enabled, IsOn(21));
    }
}

TEST_F(MenuState, ButtonsThatDoNotDependOnTheFileStayAsTheyAre)
{
    Document.IsText = true;
    for (const bool before : {true, false}) {
        for (const bool open : {true, false}) {
            SetAll(before);
            SetFileMenuState(open, "c:\\file");
            SetListMenuState();
            SetSelectionMenuState(open);
            for (const int button : ButtonsNobodyTouches) {
                EXPECT_EQ(before, IsOn(button)) << button;
            }
        }
    }
}

TEST_F(MenuState, PreviousAndNextFollowThePlaceInTheList)
{
    const struct {
        std::int32_t Position;
        std::int32_t Total;
        std::int32_t Adjust;
        bool Previous;
        bool Next;
    } places[] = {
        {1, 3, 0, false, true},  {2, 3, 0, true, true},   {3, 3, 0, true, false}, {1, 1, 0, false, false},
        {0, 0, 0, false, false}, {1, 0, 0, false, false}, {0, 2, 1, false, true}, {1, 2, 1, true, true},
        {2, 2, 1, true, false},  {5, 0, 1, false, false},
    };
    for (const auto& place : places) {
        FileList.ListPosition = place.Position;
        FileList.ListTotal = place.Total;
        FileList.ListAdjust = place.Adjust;
        EnableCommandAndButton(225, 1, !place.Previous);
        EnableCommandAndButton(226, 2, !place.Next);
        SetListMenuState();
        EXPECT_EQ(!place.Previous, IsGrey(225)) << place.Position << " of " << place.Total;
        EXPECT_EQ(place.Previous, IsOn(1)) << place.Position << " of " << place.Total;
        EXPECT_EQ(!place.Next, IsGrey(226)) << place.Position << " of " << place.Total;
        EXPECT_EQ(place.Next, IsOn(2)) << place.Position << " of " << place.Total;
    }
}

TEST_F(MenuState, AnArchiveCanBeListedWhileItIsShown)
{
    const ScratchFile archive("an.zip", std::string("member PK\5\6") + std::string(18, '\0'));
    Open(archive.Path());
    EXPECT_FALSE(IsGrey(272));
    EXPECT_TRUE(IsOn(10));
    const ScratchFile text("a.txt", "text");
    Open(text.Path());
    EXPECT_TRUE(IsGrey(272));
    EXPECT_FALSE(IsOn(10));
    Open(archive.Path());
    SendMessageA(Windows.Main, WM_COMMAND, 300, 0);
    EXPECT_TRUE(IsGrey(272));
    EXPECT_FALSE(IsOn(10));
}

TEST_F(MenuState, CopyAndSaveFollowTheSelection)
{
    for (const bool selection : {true, false, true}) {
        EnableCommand(221, !selection);
        EnableCommandAndButton(250, 5, !selection);
        View.SelLineA = View.SelLineB = 2;
        SetSelectionMenuState(selection);
        EXPECT_EQ(!selection, IsGrey(221));
        EXPECT_EQ(!selection, IsGrey(250));
        EXPECT_EQ(selection, IsOn(5));
        EXPECT_EQ(selection ? 2 : 0, View.SelLineA);
        EXPECT_EQ(selection ? 2 : 0, View.SelLineB);
    }
}

TEST_F(MenuState, AllIsGreyBeforeTheFirstFile)
{
    EndProgram();
    StartProgramOnce();
    for (const UINT id : ItemsThatNeedAFile) {
        EXPECT_TRUE(IsGrey(id)) << id;
    }
    for (const UINT id : {221, 223, 225, 226, 250, 261, 262, 272, 273, 274}) {
        EXPECT_TRUE(IsGrey(id)) << id;
    }
    for (const UINT id : {220, 230, 231, 233, 270, 271, 280, 281, 282, 283, 284, 285, 290, 291, 292, 293}) {
        EXPECT_FALSE(IsGrey(id)) << id;
    }
    EXPECT_NE(0u, GetMenuState(Windows.MainMenu, 270, MF_BYCOMMAND) & MF_CHECKED);
    EXPECT_EQ(0u, GetMenuState(Windows.MainMenu, 271, MF_BYCOMMAND) & MF_CHECKED);
}

TEST_F(MenuState, AGreyItemIsNotPossibleAlsoWhileTheMenuBarIsHidden)
{
    SetMenu(Windows.Main, nullptr);
    SetFileMenuState(false, "");
    EXPECT_FALSE(IsCommandPossible(222));
    Document.IsText = true;
    SetFileMenuState(true, "c:\\file");
    EXPECT_TRUE(IsCommandPossible(222));
    SetFileMenuState(false, "");
    EXPECT_FALSE(IsCommandPossible(222));
    SetMenu(Windows.Main, Windows.MainMenu);
    EXPECT_TRUE(IsGrey(222));
}

TEST_F(MenuState, ACommandWithoutAnItemIsPossible)
{
    EXPECT_TRUE(IsCommandPossible(227));
    EXPECT_TRUE(IsCommandPossible(300));
}

TEST_F(MenuState, ChecksFollowTheMode)
{
    CheckCommand(271, true);
    EXPECT_NE(0u, GetMenuState(Windows.MainMenu, 271, MF_BYCOMMAND) & MF_CHECKED);
    CheckCommand(271, false);
    EXPECT_EQ(0u, GetMenuState(Windows.MainMenu, 271, MF_BYCOMMAND) & MF_CHECKED);
}

TEST_F(LaunchState, ATextWithoutAnAssociationIsEdited)
{
    const ScratchFile file("launch.kv1", "text");
    EXPECT_EQ(LaunchMode::Edit, ModeOf(file.Path()));
    EXPECT_STREQ("", App.TypeDescription);
}

TEST_F(LaunchState, WithoutAnEditorATextWithoutAnAssociationIsNotLaunched)
{
    AppOptions.EditorName[0] = '\0';
    const ScratchFile file("launch.kv1", "text");
    EXPECT_EQ(LaunchMode::None, ModeOf(file.Path()));
}

TEST_F(LaunchState, ATextWithAnAssociationIsStartedWithItAndNamedAfterIt)
{
    Associate("kv1");
    const ScratchFile file("launch.KV1", "text");
    EXPECT_EQ(LaunchMode::Associated, ModeOf(file.Path()));
    EXPECT_STREQ("KV1 File", App.TypeDescription);
    AppOptions.EditorName[0] = '\0';
    EXPECT_EQ(LaunchMode::Associated, ModeOf(file.Path())) << "needs no editor";
    SendMessageA(Windows.Main, WM_COMMAND, 300, 0);
    EXPECT_STREQ("", App.TypeDescription);
    EXPECT_EQ(LaunchMode::None, App.Launch);
    EXPECT_TRUE(IsGrey(223));
}

TEST_F(LaunchState, ANonTextNeedsAnAssociation)
{
    const ScratchFile file("launch.kv1", std::string(2000, 'x')); // a line too long for a text
    EXPECT_EQ(LaunchMode::None, ModeOf(file.Path()));
    Associate("kv1");
    EXPECT_EQ(LaunchMode::Associated, ModeOf(file.Path()));
}

TEST_F(LaunchState, AFileWithoutAnExtensionIsOnlyEdited)
{
    const ScratchFile text("launch", "text");
    const ScratchFile other("launch0", std::string(2000, 'x'));
    EXPECT_EQ(LaunchMode::Edit, ModeOf(text.Path()));
    EXPECT_EQ(LaunchMode::None, ModeOf(other.Path()));
}

TEST_F(LaunchState, ADotInADirectorysNameMakesNoExtension)
{
    Associate("kv1");
    ScratchFolder folder("dir.kv1");
    folder.Add("launch", "text");
    EXPECT_EQ(LaunchMode::Edit, ModeOf(folder.Path("launch")));
}

TEST_F(LaunchState, ADotAtTheEndMakesNoExtension)
{
    const ScratchFile file("launch", "text");
    Open(file.Path());
    SetFileMenuState(true, ScratchPath("launch.").c_str());
    EXPECT_EQ(LaunchMode::Edit, App.Launch);
    App.Info.FileType = Windows16Program;
    SetFileMenuState(true, ScratchPath("launch.").c_str());
    EXPECT_EQ(LaunchMode::Edit, App.Launch) << "not run";
    SetFileMenuState(true, ScratchPath("launch.x").c_str());
    EXPECT_EQ(LaunchMode::Program, App.Launch);
}

TEST_F(LaunchState, AWindowsProgramIsRunWhateverItsExtension)
{
    Associate("kv1");
    const ScratchFile program("launch.kv1", ProgramFor(MachineI386));
    EXPECT_EQ(LaunchMode::Program, ModeOf(program.Path()));
}

TEST_F(LaunchState, AProgramOfAnotherMachineIsNotRun)
{
    const ScratchFile program("launch.kv1", ProgramFor(0x8664));
    EXPECT_EQ(LaunchMode::None, ModeOf(program.Path()));
}

TEST_F(LaunchState, AProgramWithoutAnExtensionIsNotRun)
{
    const ScratchFile program("launch", ProgramFor(MachineI386));
    EXPECT_EQ(LaunchMode::None, ModeOf(program.Path()));
}

TEST_F(LaunchState, FollowsTheEditorThatIsChosenWhileATextIsShown)
{
    const ScratchFile file("launch.kv1", "text");
    ASSERT_EQ(LaunchMode::Edit, ModeOf(file.Path()));
    AppOptions.EditorName[0] = '\0';
    ShowLaunchState();
    EXPECT_EQ(LaunchMode::None, App.Launch);
    EXPECT_TRUE(IsGrey(223));
    EXPECT_FALSE(IsOn(14));
    EXPECT_TRUE(IsGrey(252));
    EXPECT_FALSE(IsOn(19));
    AppOptions = AppSettings{};
    ShowLaunchState();
    EXPECT_EQ(LaunchMode::Edit, App.Launch);
    EXPECT_FALSE(IsGrey(223));
    EXPECT_TRUE(IsOn(14));
    EXPECT_FALSE(IsGrey(252));
    EXPECT_TRUE(IsOn(19));
}

TEST_F(LaunchState, WhatNeedsNoEditorStaysWithoutOne)
{
    Associate("kv1");
    const ScratchFile file("launch.kv1", "text");
    ASSERT_EQ(LaunchMode::Associated, ModeOf(file.Path()));
    AppOptions.EditorName[0] = '\0';
    ShowLaunchState();
    EXPECT_EQ(LaunchMode::Associated, App.Launch);
    EXPECT_STREQ("KV1 File", App.TypeDescription);
    EXPECT_FALSE(IsGrey(223));
    EXPECT_TRUE(IsOn(14));
    EXPECT_TRUE(IsGrey(252));
    EXPECT_FALSE(IsOn(19));
}

TEST_F(LaunchState, AnEditorMakesNothingPossibleWithoutAFile)
{
    Document.IsText = true;
    for (const char* editor : {"", "notepad"}) {
        CopyText(AppOptions.EditorName, editor);
        SetAll(true);
        ShowLaunchState();
        EXPECT_EQ(LaunchMode::None, App.Launch);
        EXPECT_STREQ("", App.TypeDescription);
        EXPECT_TRUE(IsGrey(223));
        EXPECT_FALSE(IsOn(14));
        EXPECT_TRUE(IsGrey(252));
        EXPECT_FALSE(IsOn(19));
    }
}

TEST_F(LaunchState, TheChoiceOfAnEditorTouchesNothingElse)
{
    const ScratchFile file("launch.kv1", "text");
    Open(file.Path());
    for (const bool before : {true, false}) {
        View.SelLineA = View.SelLineB = 1;
        Find.FindSucceeded = before;
        SetAll(before);
        ShowLaunchState();
        EXPECT_EQ(1, View.SelLineA);
        EXPECT_EQ(before, Find.FindSucceeded);
        for (const UINT id : {221, 222, 224, 225, 226, 229, 232, 250, 251, 260, 261, 262, 263, 272, 274, 275, 276}) {
            EXPECT_EQ(!before, IsGrey(id)) << id;
        }
        for (int button = 0; button < ButtonTotal; ++button) {
            if (button != 14 && button != 19) {
                EXPECT_EQ(before, IsOn(button)) << button;
            }
        }
    }
    Find.FindSucceeded = false;
}
