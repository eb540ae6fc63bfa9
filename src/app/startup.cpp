#include "app/startup.h"

#include "app/app_state.h"
#include "app/frame_window.h"
#include "app/menu_state.h"
#include "app/settings_file.h"
#include "app/walk_list.h"
#include "app/window_classes.h"
#include "app/window_placement.h"
#include "base/help.h"
#include "base/text.h"
#include "buttonbar/button_bar_window.h"
#include "document/document_state.h"
#include "files/associations.h"
#include "print/print_job.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/status_window.h"
#include "view/view_state.h"
#include "view/view_window.h"

#include <cstring>
#include <shellapi.h>

namespace {

void FindProgramDirectory()
{
    char path[MaxPathSize] = "";
    GetModuleFileNameA(nullptr, path, sizeof path);
    path[sizeof path - 1] = '\0';
    char* const backslash = strrchr(path, '\\');
    if (backslash != nullptr) {
        backslash[1] = '\0';
    }
    CopyText(App.ProgramDir, path);
    CopyText(Help.Path, path);
    AppendText(Help.Path, "KESTOVAR.HLP");
}

ScreenMeasures MeasureScreen()
{
    return {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN), GetSystemMetrics(SM_CYICON),
            GetSystemMetrics(SM_CYCAPTION)};
}

// How the process that started this one wants the window shown. The value counts whether or not it is
// marked as given; a parent that left it at zero did not ask for a hidden window.
int ShowCommand()
{
    STARTUPINFOA info;
    GetStartupInfoA(&info);
    const bool given = (info.dwFlags & STARTF_USESHOWWINDOW) != 0;
    return info.wShowWindow == SW_HIDE && !given ? SW_SHOWNORMAL : info.wShowWindow;
}

ProgramKind CurrentProgram()
{
    if (App.Launch == LaunchMode::Program) {
        return ProgramKind::OfWindows;
    }
    return View.FileShown && App.Info.FileType == DosProgram ? ProgramKind::OfDos : ProgramKind::None;
}

UINT LaunchHelp()
{
    switch (App.Launch) {
    case LaunchMode::Program: return IDS_HELP_LAUNCH_PROGRAM;
    case LaunchMode::Edit: return IDS_HELP_EDIT_FILE;
    default: return IDS_HELP_LAUNCH;
    }
}

void WireRooms()
{
    DocumentCalls.AnnounceReading = AnnounceReading;
    DocumentCalls.ReadBufferCount = ReadBufferCount;
    ViewCalls.SelectionChanged = SetSelectionMenuState;
    ViewCalls.ShowFileList = RunSelectList;
    ViewCalls.CurrentProgram = CurrentProgram;
    ButtonBarCalls.LaunchHelp = LaunchHelp;
    PrintCalls = {LoadPrintSettings, SavePrintSettings};
}

void LoadCursors()
{
    Drawing.WaitCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_WAIT));
    Drawing.IbeamCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_IBEAM));
}

WindowPlacement ChoosePlacement()
{
    char saved[WindowSizeTextSize] = "";
    const bool hasSection = App.Start.SectionName[0] != '\0';
    if (hasSection) {
        ReadWindowSize(saved);
    }
    return PlaceWindow(saved, hasSection, App.Start.Rectangle, MeasureScreen());
}

// The frame's own WM_CREATE opens the file of the command line.
void CreateFrame(const WindowPlacement& placement)
{
    const WindowRectangle& r = placement.Rectangle;
    DWORD style = WS_OVERLAPPEDWINDOW;
    if (placement.Maximized) {
        style |= WS_MAXIMIZE;
    } else if (placement.Minimized) {
        style |= WS_MINIMIZE;
    }
    Windows.Main = CreateWindowExA(0, "Kestovar", "Kestovar", style, r.Left, r.Top, r.Width, r.Height, nullptr, nullptr,
                                   Windows.Instance, nullptr);
}

} // namespace

void StartProgram(HINSTANCE instance, HINSTANCE previousInstance, const char* commandLine)
{
    Windows.Instance = instance;
    Drawing.ArrowCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    if (previousInstance == nullptr) {
        RegisterKstvClasses(instance);
    }
    WireRooms();
    int showCommand = ShowCommand();
    FindProgramDirectory();
    App.Start = ParseCommandLine(commandLine);
    const WindowPlacement placement = ChoosePlacement();
    if (placement.Maximized && showCommand == SW_SHOWNORMAL) {
        showCommand = SW_SHOWMAXIMIZED;
    }
    LoadSettings();
    BuildAssociations();
    LoadCursors();
    CreateFrame(placement);
    if (Windows.Main == nullptr) {
        // There was nothing to print and the window has closed itself, or there is no window to be had.
        PostQuitMessage(0);
        return;
    }
    if (AppOptions.SuppressMenu != 0) {
        SetMenu(Windows.Main, nullptr);
    }
    DragAcceptFiles(Windows.Main, TRUE);
    ShowWindow(Windows.Main, showCommand);
    UpdateWindow(Windows.Main);
}

int RunMessageLoop()
{
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        if (TranslateAcceleratorA(Windows.Main, Windows.Accelerators, &message) == 0) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }
    return static_cast<int>(message.wParam);
}
