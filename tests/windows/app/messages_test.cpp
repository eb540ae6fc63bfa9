#include "base/messages.h"

#include "app/app_state.h"
#include "app/open_sequence.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "resources/ids.h"
#include "view/frame_windows.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <string>

namespace {

// What a message box showed.
struct SeenBox {
    bool Seen = false;
    std::string Caption;
    std::string Text;
    HICON Icon = nullptr;
    HWND Owner = nullptr;
    std::map<int, std::string> Buttons; // by their ids
    int FocusedButton = 0;              // what Enter presses
};

constexpr int EnterKey = -1; // instead of a button

SeenBox Box;
int Answer; // the button to press
int Looks;
UINT_PTR LookTimer;

BOOL CALLBACK NoteChild(HWND child, LPARAM)
{
    char className[20] = "";
    GetClassNameA(child, className, sizeof className);
    char text[1000] = "";
    GetWindowTextA(child, text, sizeof text);
    const LONG style = GetWindowLongA(child, GWL_STYLE);
    if (_stricmp(className, "Button") == 0) {
        Box.Buttons[GetDlgCtrlID(child)] = text;
    } else if ((style & SS_TYPEMASK) == SS_ICON) {
        Box.Icon = reinterpret_cast<HICON>(SendMessageA(child, STM_GETICON, 0, 0));
    } else {
        Box.Text = text;
    }
    return TRUE;
}

BOOL CALLBACK AnswerBox(HWND window, LPARAM)
{
    char className[20] = "";
    GetClassNameA(window, className, sizeof className);
    if (strcmp(className, "#32770") != 0 || !IsWindowVisible(window)) {
        return TRUE;
    }
    char caption[100] = "";
    GetWindowTextA(window, caption, sizeof caption);
    Box.Seen = true;
    Box.Caption = caption;
    Box.Owner = GetWindow(window, GW_OWNER);
    EnumChildWindows(window, NoteChild, 0);
    Box.FocusedButton = GetDlgCtrlID(GetFocus());
    if (Answer == EnterKey) {
        PostMessageA(GetFocus(), WM_KEYDOWN, VK_RETURN, 0);
    } else {
        PostMessageA(window, WM_COMMAND, static_cast<WPARAM>(Answer), 0);
    }
    return FALSE;
}

void StopLooking()
{
    KillTimer(nullptr, LookTimer);
    LookTimer = 0;
}

// A message box runs a message loop of its own, and so this timer. A loop without a box that could be
// answered is ended after ten seconds.
void CALLBACK LookForBox(HWND, UINT, UINT_PTR, DWORD)
{
    EnumThreadWindows(GetCurrentThreadId(), AnswerBox, 0);
    if (Box.Seen) {
        StopLooking();
    } else if (++Looks == 1000) {
        PostQuitMessage(1);
    }
}

class Messages : public RunningProgram {
protected:
    // Answers the box that comes next; what it showed is in Box afterwards.
    static void AnswerNext(int button)
    {
        Box = SeenBox{};
        Answer = button;
        Looks = 0;
        LookTimer = SetTimer(nullptr, 0, 10, LookForBox);
    }

    ~Messages() override
    {
        EXPECT_TRUE(Box.Seen);
        StopLooking();
    }
};

HICON SystemIcon(LPCSTR name)
{
    return LoadIconA(nullptr, name);
}

} // namespace

TEST_F(Messages, AReportHasCaptionTextExclamationMarkAndOneButton)
{
    AnswerNext(IDOK);
    ReportMessage(Windows.Main, IDS_GOTO_INVALID);
    EXPECT_EQ("Kestovar", Box.Caption);
    EXPECT_EQ("Goto target invalid or not within file", Box.Text);
    EXPECT_EQ(Windows.Main, Box.Owner);
    EXPECT_EQ(SystemIcon(reinterpret_cast<LPCSTR>(IDI_EXCLAMATION)), Box.Icon);
    ASSERT_EQ(1u, Box.Buttons.size());
    EXPECT_EQ("OK", Box.Buttons.begin()->second);
}

TEST_F(Messages, AReportIsFormattedWithItsArguments)
{
    AnswerNext(IDOK);
    ReportMessage(Windows.Main, IDS_ZIP_VERSION, 2, 5);
    EXPECT_EQ("Version 2.05 of PKUNZIP is needed to expand the files", Box.Text);
    AnswerNext(IDOK);
    ReportMessage(Windows.Main, IDS_CANNOT_OPEN, "100%s.txt");
    EXPECT_EQ("Unable to open the file\n\n100%s.txt", Box.Text);
}

TEST_F(Messages, ANameOf259CharactersIsShownWhole)
{
    const std::string name(259, 'n');
    AnswerNext(IDOK);
    ReportMessage(Windows.Main, IDS_CANNOT_OPEN, name.c_str());
    EXPECT_EQ("Unable to open the file\n\n" + name, Box.Text);
}

TEST_F(Messages, ATextLongerThanAnyMessageIsCut)
{
    const std::string name(5000, 'n');
    AnswerNext(IDOK);
    ReportMessage(Windows.Main, IDS_CANNOT_OPEN, name.c_str());
    EXPECT_EQ(0u, Box.Text.find("Unable to open the file\n\nnnn"));
    EXPECT_LT(Box.Text.size(), 500u);
}

TEST_F(Messages, AQuestionHasYesAndNoAndNoIsTheDefault)
{
    AnswerNext(IDNO);
    EXPECT_EQ(IDNO, AskMessage(Windows.Main, IDS_OVERWRITE, "a.txt"));
    EXPECT_EQ("Kestovar", Box.Caption);
    EXPECT_EQ("The file a.txt already exists. Do you want to overwrite it.", Box.Text);
    EXPECT_EQ(SystemIcon(reinterpret_cast<LPCSTR>(IDI_QUESTION)), Box.Icon);
    EXPECT_EQ(2u, Box.Buttons.size());
    EXPECT_EQ(1u, Box.Buttons.count(IDYES));
    EXPECT_EQ(1u, Box.Buttons.count(IDNO));
    EXPECT_EQ(IDNO, Box.FocusedButton);
}

TEST_F(Messages, AQuestionReturnsTheButtonPressed)
{
    AnswerNext(IDYES);
    EXPECT_EQ(IDYES, AskMessage(Windows.Main, IDS_UNZIP_CONTINUE, 3));
    EXPECT_EQ("PKUNZIP not complete after 3 minute(s). Continue waiting ?", Box.Text);
}

TEST_F(Messages, EnterAnswersAQuestionWithNo)
{
    AnswerNext(EnterKey);
    EXPECT_EQ(IDNO, AskMessage(Windows.Main, IDS_OVERWRITE, "a.txt"));
}

TEST_F(Messages, AFileThatCannotBeOpenedIsReportedByItsName)
{
    AnswerNext(IDOK);
    OpenSequence(Windows.Main, ScratchPath("Missing.TXT").c_str());
    EXPECT_EQ("Unable to open the file\n\nmissing.txt", Box.Text);
    char title[100] = "";
    GetWindowTextA(Windows.Main, title, sizeof title);
    EXPECT_STREQ("Kestovar", title);
}

TEST_F(Messages, AFileTooLargeToShowIsReportedByItsName)
{
    ScratchFile file("Huge.BIN", "");
    file.Truncate(2147483648);
    AnswerNext(IDOK);
    OpenSequence(Windows.Main, file.Path());
    EXPECT_EQ("Unable to obtain stats for file huge.bin", Box.Text);
}
