#include "app/open_sequence.h"

#include "app/app_state.h"
#include "document/document_state.h"
#include "harness/dialogs.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "harness/system_calls.h"
#include "view/frame_windows.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

namespace {

bool BusyWhileReading;

void NoteBusy()
{
    BusyWhileReading = App.BusyCursor;
}

class Opening : public RunningProgram {
protected:
    Opening() : AnnounceBefore(DocumentCalls.AnnounceReading) { BusyWhileReading = false; }
    ~Opening() override { DocumentCalls.AnnounceReading = AnnounceBefore; }

private:
    void (*AnnounceBefore)();
};

} // namespace

TEST_F(Opening, WithoutMemoryIsReportedAndNoFileIsShown)
{
    const ScratchFile first("first.txt", "one");
    const ScratchFile second("second.txt", "two");
    ASSERT_TRUE(OpenSequence(Windows.Main, first.Path()));
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    const NoMemoryObjects none;
    EXPECT_FALSE(OpenSequence(Windows.Main, second.Path()));
    EXPECT_EQ("Unable to acquire buffer storage", answers.OnlyText());
    EXPECT_FALSE(View.FileShown);
    EXPECT_STREQ("", App.FileTitle);
    EXPECT_FALSE(App.BusyCursor);
}

TEST_F(Opening, WorksAgainOnceThereIsMemory)
{
    const ScratchFile file("file.txt", "one\ntwo\n");
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    {
        const NoMemoryObjects none;
        OpenSequence(Windows.Main, file.Path());
    }
    EXPECT_TRUE(OpenSequence(Windows.Main, file.Path()));
    EXPECT_TRUE(View.FileShown);
    EXPECT_STREQ("file.txt", App.FileTitle);
    EXPECT_EQ(2, Document.LineCount);
}

TEST_F(Opening, IsBusyUntilTheFailureHasBeenRead)
{
    DialogAnswers answers;
    answers.Then([](HWND box) {
        EXPECT_TRUE(App.BusyCursor);
        PressButton(box, IDOK);
    });
    OpenSequence(Windows.Main, ScratchPath("missing.txt").c_str());
    EXPECT_FALSE(App.BusyCursor);
}

TEST_F(Opening, IsBusyUntilTheFileIsShown)
{
    const ScratchFile file("file.txt", "text");
    DocumentCalls.AnnounceReading = NoteBusy;
    OpenSequence(Windows.Main, file.Path());
    EXPECT_TRUE(BusyWhileReading);
    EXPECT_TRUE(View.FileShown);
    EXPECT_FALSE(App.BusyCursor);
}

TEST_F(Opening, ForgetsWhatBelongedToTheFileBefore)
{
    const ScratchFile before("before.txt", "one\ntwo\nthree\n");
    const ScratchFile file("file.txt", "text");
    OpenSequence(Windows.Main, before.Path());
    View.MarkCurrent = 1;
    View.MarkA = 2;
    View.MarkB = 3;
    View.HiliteLine = 2;
    View.HiliteLen = 3;
    SendMessageA(Windows.Main, WM_SIZE, SIZE_MINIMIZED, 0);
    ASSERT_TRUE(App.FileReleased);
    OpenSequence(Windows.Main, file.Path());
    EXPECT_EQ(0, View.MarkCurrent);
    EXPECT_EQ(0, View.MarkA);
    EXPECT_EQ(0, View.MarkB);
    EXPECT_EQ(0, View.HiliteLine);
    EXPECT_EQ(0, View.HiliteLen);
    EXPECT_FALSE(App.FileReleased);
}
