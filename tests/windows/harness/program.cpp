#include "harness/program.h"

#include "app/app_state.h"
#include "app/open_sequence.h"
#include "app/startup.h"
#include "document/block_cache.h"
#include "document/document_state.h"
#include "view/frame_windows.h"
#include "view/screen_font.h"
#include "view/view_state.h"

#include <vector>

namespace {

bool Running;
bool ClassesRegistered;
int Readings;

void CountReading()
{
    ++Readings;
}

} // namespace

void StartProgramOnce()
{
    if (!Running) {
        StartProgramWith("-Itest");
        PumpMessages();
    }
}

void StartProgramWith(const std::string& commandLine)
{
    // The classes are the process's: a second start finds them, like a second instance once did.
    const HINSTANCE instance = GetModuleHandleA(nullptr);
    StartProgram(instance, ClassesRegistered ? instance : nullptr, commandLine.c_str());
    Running = ClassesRegistered = true;
}

void EndProgram()
{
    if (Running) {
        DestroyWindow(Windows.Main);
        PumpMessages();
        Windows = FrameWindows{};
        Drawing = DrawingObjects{};
        Running = false;
    }
}

void PumpMessages()
{
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

int FreeGdiObjects()
{
    std::vector<HGDIOBJ> made;
    while (HGDIOBJ object = CreateSolidBrush(RGB(1, 2, 3))) {
        made.push_back(object);
    }
    for (HGDIOBJ object : made) {
        DeleteObject(object);
    }
    return static_cast<int>(made.size());
}

RunningProgram::RunningProgram()
{
    StartProgramOnce();
}

RunningProgram::~RunningProgram()
{
    CloseDocument();
    View.HexMode = false;
    View.Printing = false;
    View.SelLineA = View.SelLineB = 0;
    View.TopLine = View.LeftColumn = 0;
    View.SubstituteFixedFont = false;
    ViewOptions = ViewSettings{};
    AppOptions = AppSettings{};
    DocumentOptions = DocumentSettings{};
    Document.BufferCount = MaxCacheSlots;
    App.Start = CommandLine{};
    // A test may have told the frame another size than it has.
    RECT client;
    GetClientRect(Windows.Main, &client);
    Windows.ClientWidth = client.right;
    Windows.ClientHeight = client.bottom;
    CreateScreenFont(false); // which lays the frame out
    PumpMessages();
}

ReadingCounter::ReadingCounter() : Before(DocumentCalls.AnnounceReading)
{
    DocumentCalls.AnnounceReading = CountReading;
    Readings = 0;
}

ReadingCounter::~ReadingCounter()
{
    DocumentCalls.AnnounceReading = Before;
}

void ReadingCounter::Reset()
{
    Readings = 0;
}

int ReadingCounter::Count() const
{
    return Readings;
}
