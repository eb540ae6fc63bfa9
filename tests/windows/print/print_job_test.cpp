#include "print/print_job.h"

#include "app/app_state.h"
#include "app/open_sequence.h"
#include "document/document_state.h"
#include "harness/dialogs.h"
#include "harness/picture.h"
#include "print/print_status.h"
#include "print/printing.h"
#include "view/frame_windows.h"
#include "view/gdi_holders.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <shlobj.h>
#include <string>
#include <vector>

namespace {

// Commands and controls by number, as the rest of the world knows them.
constexpr UINT PrintCommand = 229;
constexpr UINT TextMode = 270;
constexpr UINT HexMode = 271;
constexpr UINT LargerFont = 275;
constexpr UINT CloseCommand = 300;
constexpr int EntireRadio = 360;
constexpr int HeadersBox = 365;
constexpr int StatusDocument = 340;
constexpr int StatusPage = 341;

constexpr char StatusCaption[] = "Print Status";
constexpr char FailureText[] = "Printing failed or was incomplete";

HWND StatusBox()
{
    return FindWindowA("#32770", StatusCaption);
}

// The calls that make a job, on their way to the system, and what happens on the way.
struct JobCalls {
    int Documents = 0;
    int Pages = 0;
    int PagesEnded = 0;
    int DocumentsEnded = 0;
    std::string DocumentName;
    DOCINFOA Document = {};
    std::function<void(HDC)> BeforePage;
    std::function<void(HDC)> AtPage;    // when it has begun
    std::function<void(HDC)> AtPageEnd; // before it ends
    std::function<void(HDC)> AfterPage;
    int PageResult = 1; // what StartPage and EndPage answer; above 0, what the system does
    int PageEndResult = 1;
};

JobCalls Job;

void Run(const std::function<void(HDC)>& step, HDC printer)
{
    if (step) {
        step(printer);
    }
}

int WINAPI NoteStartDoc(HDC printer, const DOCINFOA* document)
{
    ++Job.Documents;
    Job.Document = *document;
    Job.DocumentName = document->lpszDocName;
    return SystemFunction<int(WINAPI*)(HDC, const DOCINFOA*)>("gdi32", "StartDocA")(printer, document);
}

int WINAPI NoteStartPage(HDC printer)
{
    Run(Job.BeforePage, printer);
    ++Job.Pages;
    if (Job.PageResult <= 0) {
        return Job.PageResult;
    }
    const int result = SystemFunction<int(WINAPI*)(HDC)>("gdi32", "StartPage")(printer);
    Run(Job.AtPage, printer);
    return result;
}

int WINAPI NoteEndPage(HDC printer)
{
    Run(Job.AtPageEnd, printer);
    ++Job.PagesEnded;
    if (Job.PageEndResult <= 0) {
        return Job.PageEndResult;
    }
    const int result = SystemFunction<int(WINAPI*)(HDC)>("gdi32", "EndPage")(printer);
    Run(Job.AfterPage, printer);
    return result;
}

int WINAPI NoteEndDoc(HDC printer)
{
    ++Job.DocumentsEnded;
    return SystemFunction<int(WINAPI*)(HDC)>("gdi32", "EndDoc")(printer);
}

class WatchedJob {
public:
    WatchedJob()
        : Start("StartDocA", reinterpret_cast<void*>(NoteStartDoc)),
          StartPageCall("StartPage", reinterpret_cast<void*>(NoteStartPage)),
          EndPageCall("EndPage", reinterpret_cast<void*>(NoteEndPage)),
          End("EndDoc", reinterpret_cast<void*>(NoteEndDoc))
    {
        Job = JobCalls{};
    }
    ~WatchedJob() { Job = JobCalls{}; }
    WatchedJob(const WatchedJob&) = delete;
    WatchedJob& operator=(const WatchedJob&) = delete;

private:
    ReplacedCall Start;
    ReplacedCall StartPageCall;
    ReplacedCall EndPageCall;
    ReplacedCall End;
};

BOOL CALLBACK CountWindow(HWND, LPARAM count)
{
    ++*reinterpret_cast<int*>(count);
    return TRUE;
}

int CountWindows()
{
    int count = 0;
    EnumThreadWindows(GetCurrentThreadId(), CountWindow, reinterpret_cast<LPARAM>(&count));
    return count;
}

void Command(UINT id)
{
    SendMessageA(Windows.Main, WM_COMMAND, id, 0);
}

void Print(const std::function<void(HWND)>& step, int button = IDOK)
{
    DialogAnswers answers;
    answers.LeaveAlone(StatusCaption).Then([&](HWND dialog) {
        step(dialog);
        PressButton(dialog, button);
    });
    Command(PrintCommand);
}

void Confirm()
{
    Print([](HWND) {});
}

// Confirms, and confirms what is reported. What was.
std::string ReportOfJob(const std::function<void(HWND)>& step = [](HWND) {})
{
    DialogAnswers answers;
    answers.LeaveAlone(StatusCaption)
        .Then([&](HWND dialog) {
            step(dialog);
            PressButton(dialog, IDOK);
        })
        .Then([](HWND box) {
            EXPECT_EQ(Windows.Main, GetWindow(box, GW_OWNER));
            EXPECT_EQ(nullptr, StatusBox());
            EXPECT_EQ(0u, GetObjectType(Contexts.Last)) << "the job is over by now";
            EXPECT_FALSE(View.Printing);
            PressButton(box, IDOK);
        });
    Command(PrintCommand);
    EXPECT_EQ(2u, answers.Seen().size());
    return answers.Seen().size() == 2 ? answers.Seen()[1].Text : "";
}

void ExpectOver()
{
    EXPECT_FALSE(View.Printing);
    EXPECT_TRUE(IsWindowEnabled(Windows.Main));
    EXPECT_EQ(nullptr, StatusBox());
    EXPECT_EQ(nullptr, PrintJob.HeadFont);
}

class PrintJobOfFile : public ProgramWithPrinter {
protected:
    PrintJobOfFile() : File("printed.txt", "one\r\ntwo\r\nthree\r\n")
    {
        EXPECT_TRUE(OpenSequence(Windows.Main, File.Path()));
        PumpMessages();
    }

    // Pages of one line each.
    static void MakePagesShort()
    {
        CopyText(PrintOptions.TopMargin, "4.99"); // which leaves 24 units
        CopyText(PrintOptions.BottomMargin, "4.97");
    }

    static void SelectLines(std::int32_t first, std::int32_t last)
    {
        View.SelLineA = first;
        View.SelLineB = last;
    }

    void ExpectNothingPrinted() const
    {
        ExpectOver();
        EXPECT_EQ(0, Job.Documents);
        EXPECT_EQ(0, SettingsSeen.Saves);
        EXPECT_FALSE(FileExists(Output));
    }

    ScratchFile File;

private:
    WatchedContexts WatchedPrinters;
    WatchedJob WatchedCalls;
};

class PrintJobWithoutPrinter : public PrintingProgram {};

// The box of a job, without one.
class PrintStatusBox : public PrintingProgram {
protected:
    ~PrintStatusBox() override { ClosePrintStatus(); }
};

// A window that somebody has posted a message to.
class AddressedWindow {
public:
    AddressedWindow() : Window(CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr))
    {
        PostMessageA(Window, WM_CLOSE, 0, 0);
    }
    ~AddressedWindow() { DestroyWindow(Window); }
    AddressedWindow(const AddressedWindow&) = delete;
    AddressedWindow& operator=(const AddressedWindow&) = delete;

    bool WasServed() const { return !IsWindow(Window); }

private:
    HWND Window;
};

// The shared memory in which another process hands a name over.
class HandedName {
public:
    explicit HandedName(const std::string& path)
        : Mapping(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 4096, "KV_shared_memory"))
    {
        char* const text = static_cast<char*>(MapViewOfFile(Mapping, FILE_MAP_WRITE, 0, 0, 0));
        memcpy(text, path.c_str(), path.size() + 1);
        UnmapViewOfFile(text);
    }
    ~HandedName() { CloseHandle(Mapping); }
    HandedName(const HandedName&) = delete;
    HandedName& operator=(const HandedName&) = delete;

private:
    HANDLE Mapping;
};

HGLOBAL DroppedFile(const std::string& path)
{
    const HGLOBAL memory = GlobalAlloc(GHND, sizeof(DROPFILES) + path.size() + 2);
    DROPFILES* const files = static_cast<DROPFILES*>(GlobalLock(memory));
    files->pFiles = sizeof *files;
    memcpy(files + 1, path.c_str(), path.size());
    GlobalUnlock(memory);
    return memory;
}

// Whatever other programs send; none of it takes the file from the job.
void Disturb(const std::string& another)
{
    const HandedName handed(another);
    EXPECT_EQ(1, SendMessageA(Windows.Main, WM_USER + 10, 0, 0));
    EXPECT_EQ(1, SendMessageA(Windows.Main, WM_USER + 10, 1, 0));
    SendMessageA(Windows.Main, WM_USER + 11, 0, 0);
    const HGLOBAL dropped = DroppedFile(another);
    SendMessageA(Windows.Main, WM_DROPFILES, reinterpret_cast<WPARAM>(dropped), 0);
    EXPECT_EQ(GMEM_INVALID_HANDLE, GlobalFlags(dropped)) << "what was dropped is let go";
    Command(CloseCommand);
    Command(PrintCommand);
    EXPECT_EQ(0, SendMessageA(Windows.Main, WM_CLOSE, 0, 0));
    EXPECT_TRUE(IsWindow(Windows.Main));
    EXPECT_TRUE(View.FileShown);
}

} // namespace

TEST_F(PrintJobWithoutPrinter, ItIsReportedAndNothingIsAskedOrLoaded)
{
    const ScratchFile file("printed.txt", "one\r\n");
    ASSERT_TRUE(OpenSequence(Windows.Main, file.Path()));
    const WatchedJob watched;
    PrintOptions.Header[0] = '\0';
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    PrintFile(Windows.Main, App.CurrentPath, Drawing.ScreenFont, false, 0, 0);
    ASSERT_EQ(1u, answers.Seen().size());
    EXPECT_EQ(NoPrinterText, answers.Seen()[0].Text);
    EXPECT_EQ("Kestovar", answers.Seen()[0].Caption);
    EXPECT_EQ(Windows.Main, answers.Seen()[0].Owner);
    EXPECT_EQ(0, SettingsSeen.Loads);
    EXPECT_EQ(0, SettingsSeen.Saves);
    EXPECT_EQ(0, Job.Documents);
}

TEST_F(PrintJobOfFile, TheSettingsAreLoadedBeforeTheFirstQuestionOnly)
{
    PrintOptions.Header[0] = '\0';
    for (int round = 0; round < 2; ++round) {
        Print([](HWND) { EXPECT_EQ(1, SettingsSeen.Loads); }, IDCANCEL);
    }
    EXPECT_EQ(1, SettingsSeen.Loads);
}

TEST_F(PrintJobOfFile, CancelledNothingIsPrintedOrSaved)
{
    Print([](HWND dialog) { SendDlgItemMessageA(dialog, HeadersBox, BM_CLICK, 0, 0); }, IDCANCEL);
    ExpectNothingPrinted();
    EXPECT_EQ(0, PrintOptions.PrintHF);
    EXPECT_EQ(1, Contexts.Count);
    EXPECT_EQ(0u, GetObjectType(Contexts.Last));
}

TEST_F(PrintJobOfFile, ADocumentIsPrintedUnderItsNameAndTheSettingsAreSavedBefore)
{
    SettingsSeen.OnSave = [] { EXPECT_EQ(0, Job.Documents); };
    Print([](HWND dialog) { SendDlgItemMessageA(dialog, HeadersBox, BM_CLICK, 0, 0); });
    EXPECT_EQ(1, SettingsSeen.Saves);
    EXPECT_EQ(1, SettingsSeen.Saved.PrintHF);
    EXPECT_EQ(1, Job.Documents);
    EXPECT_EQ(sizeof(void*) == 4 ? 12 : static_cast<int>(offsetof(DOCINFOA, lpszDatatype)), Job.Document.cbSize);
    EXPECT_EQ("Kestovar - printed.txt", Job.DocumentName);
    EXPECT_EQ(nullptr, Job.Document.lpszOutput);
    EXPECT_EQ(1, Job.Pages);
    EXPECT_EQ(1, Job.PagesEnded);
    EXPECT_EQ(1, Job.DocumentsEnded);
    EXPECT_EQ(1, PrintedPages());
    EXPECT_NE(std::string::npos, FileContent(Output).find("%%Title: Kestovar - printed.txt"));
    EXPECT_EQ(2, Contexts.Count) << "one to ask with, one to print on";
    EXPECT_TRUE(Contexts.OneAtATime);
    EXPECT_EQ(0u, GetObjectType(Contexts.Last));
    ExpectOver();
}

TEST_F(PrintJobOfFile, TheSelectionIsPrintedUnlessTheEntireFileIsChosen)
{
    MakePagesShort();
    SelectLines(3, 2);
    Confirm();
    EXPECT_EQ(2, Job.Pages);
    EXPECT_EQ("Kestovar - printed.txt (Selection)", Job.DocumentName);
    Print([](HWND dialog) { SendDlgItemMessageA(dialog, EntireRadio, BM_CLICK, 0, 0); });
    EXPECT_EQ(5, Job.Pages);
    EXPECT_EQ("Kestovar - printed.txt", Job.DocumentName);
}

TEST_F(PrintJobOfFile, ALongNameIsCutAndSaysSo)
{
    for (const int length : {26, 27}) {
        const std::string name(static_cast<std::size_t>(length), 'n');
        const ScratchFile file(name, "one\r\n");
        ASSERT_TRUE(OpenSequence(Windows.Main, file.Path()));
        SelectLines(1, 1);
        Confirm();
        const std::string shown = length == 26 ? name : std::string(26, 'n') + "...";
        EXPECT_EQ("Kestovar - " + shown + " (Selection)", Job.DocumentName);
        SelectLines(0, 0);
    }
}

TEST_F(PrintJobOfFile, MarginsAreInDeviceUnitsOfThePrinter)
{
    CopyText(PrintOptions.RightMargin, "2.5");
    Confirm();
    EXPECT_EQ(600, PrintJob.Page.LogPixelsY);
    EXPECT_EQ(4800, PrintJob.Page.PageWidth);
    EXPECT_EQ(6000, PrintJob.Page.PageHeight);
    EXPECT_EQ(600, PrintJob.Page.MarginLeft);
    EXPECT_EQ(300, PrintJob.Page.MarginTop);
    EXPECT_EQ(150, PrintJob.Page.MarginBottom);
    EXPECT_EQ(1500, PrintJob.Page.MarginRight);
    EXPECT_EQ(300, PrintJob.Page.FirstLineY);
    EXPECT_EQ((6000 - 450) / PrintJob.Page.PrintLineHeight, PrintJob.Page.LinesPerPage);
    EXPECT_EQ(PrintJob.Page.PrintLineHeight, PrintJob.Page.HFLineHeight);
    Intl.Measure = 0;
    CopyText(PrintOptions.LeftMargin, "x"); // as by hand
    CopyText(PrintOptions.BottomMargin, "-1");
    Confirm();
    EXPECT_EQ(0, PrintJob.Page.MarginLeft);
    EXPECT_EQ(118, PrintJob.Page.MarginTop);
    EXPECT_EQ(0, PrintJob.Page.MarginBottom);
    EXPECT_EQ(590, PrintJob.Page.MarginRight);
    EXPECT_STREQ("x", SettingsSeen.Saved.LeftMargin);
}

TEST_F(PrintJobOfFile, HeaderAndFooterTakeTheirRoomInTheirOwnFont)
{
    PrintOptions.PrintHF = 1;
    PrintOptions.HeadFont.Use = 1;
    PrintOptions.HeadFont.Size = -40;
    CopyText(PrintOptions.HeadFont.Name, "Tahoma");
    Job.AtPage = [](HDC) { EXPECT_NE(nullptr, PrintJob.HeadFont); };
    Confirm();
    const PageLayout page = PrintJob.Page;
    EXPECT_GT(page.HFLineHeight, page.PrintLineHeight);
    EXPECT_EQ(300 + page.HFLineHeight + page.PrintLineHeight, page.FirstLineY);
    EXPECT_EQ((6000 - 450 - 2 * (page.HFLineHeight + page.PrintLineHeight)) / page.PrintLineHeight, page.LinesPerPage);
    EXPECT_STREQ("printed.txt", PrintJob.Header.Sections[LeftSection]);
    EXPECT_TRUE(PrintJob.Header.Rule);
    EXPECT_STREQ("-&P-", PrintJob.Footer.Sections[CentreSection]);
    PrintOptions.PrintDefFont = 1;
    Confirm();
    EXPECT_EQ(PrintJob.Page.PrintLineHeight, PrintJob.Page.HFLineHeight);
    EXPECT_EQ(nullptr, PrintJob.HeadFont);
}

TEST_F(PrintJobOfFile, EachPageIsInTheSameFontThoughItBeginsWithThePrintersOwn)
{
    MakePagesShort();
    std::vector<LONG> heights;
    Job.AtPageEnd = [&heights](HDC printer) {
        LOGFONTA font = {};
        GetObjectA(GetCurrentObject(printer, OBJ_FONT), sizeof font, &font);
        heights.push_back(font.lfHeight);
    };
    Job.AfterPage = [](HDC printer) { SelectObject(printer, GetStockObject(ANSI_FIXED_FONT)); };
    LOGFONTA stock = {};
    GetObjectA(GetStockObject(ANSI_FIXED_FONT), sizeof stock, &stock);
    LOGFONTA screen = {};
    GetObjectA(Drawing.ScreenFont, sizeof screen, &screen);
    const auto onPaper = [](LONG height) {
        const WindowDc dc(nullptr);
        return -MulDiv(abs(height), 600, GetDeviceCaps(dc, LOGPIXELSY));
    };
    Confirm();
    EXPECT_EQ(std::vector<LONG>(3, onPaper(screen.lfHeight)), heights);
    heights.clear();
    Print([](HWND) { Command(LargerFont); }); // as another program does while the question is asked
    EXPECT_EQ(std::vector<LONG>(3, onPaper(ViewOptions.FontSize)), heights);
    EXPECT_NE(screen.lfHeight, ViewOptions.FontSize);
    heights.clear();
    PrintOptions.BodyFont.Use = 1;
    PrintOptions.BodyFont.Size = -9;
    Confirm();
    EXPECT_EQ(std::vector<LONG>(3, onPaper(9)), heights);
    heights.clear();
    PrintOptions.PrintDefFont = 1;
    Confirm();
    ASSERT_EQ(3u, heights.size());
    EXPECT_NE(onPaper(9), heights[0]);
    EXPECT_EQ(stock.lfHeight, heights[1]) << "none is selected";
    EXPECT_EQ(stock.lfHeight, heights[2]);
}

TEST_F(PrintJobOfFile, WhileItRunsTheBoxShowsItAndTheFrameTakesNoInput)
{
    MakePagesShort();
    int page = 0;
    Job.AtPageEnd = [&page](HDC) {
        ++page;
        EXPECT_TRUE(View.Printing);
        EXPECT_FALSE(IsWindowEnabled(Windows.Main));
        const HWND box = StatusBox();
        EXPECT_TRUE(IsWindowVisible(box));
        EXPECT_TRUE(IsWindowEnabled(box));
        EXPECT_EQ(Windows.Main, GetWindow(box, GW_OWNER));
        EXPECT_EQ("printed.txt", ControlText(box, StatusDocument));
        EXPECT_EQ("Page " + std::to_string(page), ControlText(box, StatusPage));
    };
    SettingsSeen.OnSave = [] { EXPECT_FALSE(View.Printing); };
    for (int job = 0; job < 2; ++job) { // the pages count anew
        page = 0;
        Confirm();
        EXPECT_EQ(3, page);
        ExpectOver();
    }
}

TEST_F(PrintJobOfFile, WhatTheViewHasLostMeanwhileIsPaintedAtTheEnd)
{
    RECT area;
    GetClientRect(Windows.View, &area);
    UpdateWindow(Windows.View);
    const Picture before = PictureOf(Windows.View, area);
    Job.AtPage = [&area](HDC) {
        const WindowDc dc(Windows.View);
        FillRect(dc, &area, static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH)));
    };
    Confirm();
    UpdateWindow(Windows.View);
    EXPECT_EQ(0, DifferentPixels(before, PictureOf(Windows.View, area)));
}

TEST_F(PrintJobOfFile, AnIconIsRestoredForTheQuestion)
{
    ShowWindow(Windows.Main, SW_MINIMIZE);
    ASSERT_TRUE(App.FileReleased);
    Print(
        [](HWND) {
            EXPECT_FALSE(IsIconic(Windows.Main));
            EXPECT_FALSE(App.FileReleased);
        },
        IDCANCEL);
    EXPECT_FALSE(App.FileReleased);
    ShowWindow(Windows.Main, SW_MINIMIZE);
    DeleteFileA(File.Path());
    DialogAnswers answers;
    answers.ThenPress(IDOK);
    Command(PrintCommand);
    ASSERT_EQ(1u, answers.Seen().size());
    EXPECT_EQ("Kestovar", answers.Seen()[0].Caption) << "the file is lost";
    ExpectNothingPrinted();
}

TEST_F(PrintJobOfFile, CancelEndsItAfterThePageWithoutAWord)
{
    MakePagesShort();
    Job.AtPage = [](HDC) {
        if (Job.Pages == 2) {
            PressButton(StatusBox(), IDCANCEL);
        }
    };
    Job.AtPageEnd = [](HDC) {
        const bool cancelled = Job.Pages == 2;
        EXPECT_EQ(cancelled, PrintJob.PrintAborted);
        EXPECT_EQ(cancelled, StatusBox() == nullptr);
        EXPECT_EQ(cancelled, IsWindowEnabled(Windows.Main) != FALSE);
        EXPECT_TRUE(View.Printing);
    };
    Confirm();
    EXPECT_EQ(2, Job.PagesEnded);
    EXPECT_EQ(2, Job.Pages);
    EXPECT_EQ(1, Job.DocumentsEnded);
    ExpectOver();
    Job.AtPage = Job.AtPageEnd = nullptr;
    Confirm();
    EXPECT_EQ(5, Job.Pages) << "the next job runs to its end";
    EXPECT_FALSE(PrintJob.PrintAborted);
}

TEST_F(PrintJobOfFile, AnotherFileAfterTheQuestionIsNotPrinted)
{
    const ScratchFile another("another.txt", "four\r\n");
    Print([&another](HWND) { OpenSequence(Windows.Main, another.Path()); });
    ExpectNothingPrinted();
    Print([](HWND) { Command(CloseCommand); });
    EXPECT_FALSE(View.FileShown);
    ExpectNothingPrinted();
}

TEST_F(PrintJobOfFile, AnotherModeOrSelectionAfterTheQuestionIsNotPrinted)
{
    Print([](HWND) { Command(HexMode); });
    ExpectNothingPrinted();
    Command(TextMode);
    SelectLines(1, 3);
    Print([](HWND) { SelectLines(1, 2); });
    ExpectNothingPrinted();
    Print([](HWND dialog) {
        SendDlgItemMessageA(dialog, EntireRadio, BM_CLICK, 0, 0);
        SelectLines(0, 0);
    });
    EXPECT_EQ(1, Job.Documents) << "the whole file is the same";
}

TEST_F(PrintJobOfFile, APrinterThatIsGoneAfterTheQuestionIsReported)
{
    EXPECT_EQ(NoPrinterText, ReportOfJob([this](HWND) { Printer.Remove(); }));
    ExpectNothingPrinted();
    EXPECT_FALSE(PrintJob.PrintError);
}

TEST_F(PrintJobOfFile, ADocumentThatIsRefusedIsReportedAndLeavesNothing)
{
    const NoSpoolDirectory none;
    EXPECT_EQ(FailureText, ReportOfJob());
    EXPECT_TRUE(PrintJob.PrintError);
    EXPECT_FALSE(PrintJob.PrintAborted);
    EXPECT_EQ(1, Job.Documents);
    EXPECT_EQ(0, Job.Pages);
    EXPECT_EQ(0, Job.DocumentsEnded);
    EXPECT_FALSE(FileExists(Output));
    ExpectOver();
    const int windows = CountWindows();
    const int objects = FreeGdiObjects();
    EXPECT_EQ(FailureText, ReportOfJob());
    EXPECT_EQ(windows, CountWindows());
    EXPECT_EQ(objects, FreeGdiObjects());
}

TEST_F(PrintJobOfFile, APageThatCannotEndOrBeginEndsTheJobAndIsReported)
{
    MakePagesShort();
    Job.PageEndResult = -1;
    EXPECT_EQ(FailureText, ReportOfJob());
    const int objects = FreeGdiObjects();
    EXPECT_TRUE(PrintJob.PrintError);
    EXPECT_EQ(1, Job.Pages);
    EXPECT_EQ(1, Job.PagesEnded);
    EXPECT_EQ(0, Job.DocumentsEnded);
    EXPECT_FALSE(FileExists(Output)) << "the document is gone with its printer";
    ExpectOver();
    Job.PageEndResult = 1;
    Job.PageResult = -1;
    EXPECT_EQ(FailureText, ReportOfJob());
    EXPECT_EQ(2, Job.Pages);
    EXPECT_EQ(1, Job.PagesEnded);
    EXPECT_EQ(0, Job.DocumentsEnded);
    ExpectOver();
    EXPECT_EQ(objects, FreeGdiObjects());
    Job.PageResult = 1;
    Confirm();
    EXPECT_FALSE(PrintJob.PrintError) << "of the next job";
    EXPECT_EQ(3, PrintedPages());
}

TEST_F(PrintJobOfFile, APageThatFailsAfterCancelIsNotSpokenOf)
{
    Job.AtPage = [](HDC) { PressButton(StatusBox(), IDCANCEL); };
    Job.PageEndResult = -1;
    Confirm();
    EXPECT_TRUE(PrintJob.PrintError);
    EXPECT_TRUE(PrintJob.PrintAborted);
    EXPECT_EQ(0, Job.DocumentsEnded);
    ExpectOver();
}

TEST_F(PrintJobOfFile, ManyJobsLeaveNoObjectBehind)
{
    PrintOptions.PrintHF = 1;
    PrintOptions.HeadFont.Use = PrintOptions.BodyFont.Use = 1;
    PrintOptions.HeadFont.Size = PrintOptions.BodyFont.Size = -10;
    CopyText(PrintOptions.Header, "&f&l/&d/&t");
    const auto run = [](int round) {
        View.HexMode = round % 4 == 0;
        PrintOptions.BodyFont.Use = round % 2;
        PrintOptions.PrintDefFont = round % 5 == 1;
        Confirm();
    };
    run(0);
    run(1);
    PumpMessages();
    const int windows = CountWindows();
    const int objects = FreeGdiObjects();
    for (int round = 0; round < 20; ++round) {
        run(round);
    }
    PumpMessages();
    EXPECT_EQ(22, Job.DocumentsEnded);
    EXPECT_EQ(windows, CountWindows());
    EXPECT_EQ(objects, FreeGdiObjects());
}

TEST_F(PrintJobOfFile, NobodyTakesTheFileFromTheJob)
{
    MakePagesShort();
    const ScratchFile another("another.txt", "four\r\n");
    Job.AtPage = [&another](HDC) { Disturb(another.Path()); };
    Confirm();
    EXPECT_EQ(3, Job.PagesEnded);
    EXPECT_EQ(1, Job.Documents);
    EXPECT_STREQ("printed.txt", App.FileTitle);
    ExpectOver();
}

TEST_F(PrintJobOfFile, AnIconKeepsTheFileUntilTheJobIsOver)
{
    const ScratchFile file("large.txt", [] {
        std::string content;
        for (int line = 0; line < 12000; ++line) {
            content += std::to_string(10000 + line) + "\r\n";
        }
        return content;
    }());
    ASSERT_TRUE(OpenSequence(Windows.Main, file.Path()));
    ASSERT_GT(Document.BlockCount, 1);
    SelectLines(1, 500);
    Job.AtPage = [](HDC) {
        ShowWindow(Windows.Main, SW_MINIMIZE);
        EXPECT_TRUE(IsIconic(Windows.Main));
        EXPECT_FALSE(App.FileReleased);
        EXPECT_NE(0, Document.FileHandle);
    };
    Confirm();
    EXPECT_GT(Job.PagesEnded, 1);
    EXPECT_TRUE(App.FileReleased) << "which needs it no more";
    EXPECT_EQ(0, Document.FileHandle);
    ShowWindow(Windows.Main, SW_SHOWNORMAL);
    EXPECT_TRUE(View.FileShown);
    SelectLines(0, 0);
}

TEST_F(PrintStatusBox, NamesTheDocumentAndThePageAndDisablesItsOwner)
{
    CopyText(PrintJob.PrintDocName, "a & b.txt");
    ShowPrintStatus(Windows.Main);
    const HWND box = StatusBox();
    ASSERT_NE(nullptr, box);
    EXPECT_FALSE(IsWindowEnabled(Windows.Main));
    EXPECT_EQ(Windows.Main, GetWindow(box, GW_OWNER));
    EXPECT_TRUE(IsWindowVisible(box));
    EXPECT_EQ("a & b.txt", ControlText(box, StatusDocument));
    PrintJob.PageNumber = 1234567;
    ShowPrintedPage();
    EXPECT_EQ("Page 1234567", ControlText(box, StatusPage));
    ClosePrintStatus();
    EXPECT_FALSE(IsWindow(box));
    EXPECT_TRUE(IsWindowEnabled(Windows.Main));
    ClosePrintStatus();
}

TEST_F(PrintStatusBox, ItsKeysAndItsCloseBoxCancelTheJob)
{
    const std::function<void(HWND)> ways[] = {
        [](HWND box) { PressButton(box, IDCANCEL); },
        [](HWND box) { PostMessageA(GetDlgItem(box, IDCANCEL), WM_KEYDOWN, VK_ESCAPE, 1); },
        [](HWND box) { PostMessageA(GetDlgItem(box, IDCANCEL), WM_KEYDOWN, VK_RETURN, 1); },
        [](HWND box) { PostMessageA(box, WM_SYSCOMMAND, SC_CLOSE, 0); },
    };
    for (const auto& way : ways) {
        PrintJob.PrintAborted = false;
        ShowPrintStatus(Windows.Main);
        const HWND box = StatusBox();
        ASSERT_NE(nullptr, box);
        EXPECT_TRUE(PrintAbortProc(nullptr, 0));
        way(box);
        EXPECT_FALSE(PrintAbortProc(nullptr, 0));
        EXPECT_TRUE(PrintJob.PrintAborted);
        EXPECT_FALSE(IsWindow(box));
        EXPECT_TRUE(IsWindowEnabled(Windows.Main));
    }
}

TEST_F(PrintStatusBox, TheAbortProcedureServesWhatWaitsUntilTheJobIsCancelled)
{
    PumpMessages();
    {
        const AddressedWindow window;
        EXPECT_TRUE(PrintAbortProc(nullptr, 0));
        EXPECT_TRUE(window.WasServed());
    }
    PrintJob.PrintAborted = true;
    const AddressedWindow window;
    EXPECT_FALSE(PrintAbortProc(nullptr, SP_OUTOFDISK));
    EXPECT_FALSE(window.WasServed());
    PumpMessages();
    EXPECT_TRUE(window.WasServed());
}

TEST_F(PrintStatusBox, TheEndOfTheProgramEndsTheJobAndIsHandedOn)
{
    PumpMessages();
    PostQuitMessage(7);
    EXPECT_FALSE(PrintAbortProc(nullptr, 0));
    EXPECT_TRUE(PrintJob.PrintAborted);
    MSG message = {};
    ASSERT_TRUE(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(7u, message.wParam);
}
