// What the tests of printing share: a printer, print settings of their own, and calls that are watched on their way.
#pragma once

#include "base/intl.h"
#include "base/text.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "harness/system_calls.h"
#include "print/print_job.h"
#include "print/print_settings.h"
#include "print/printer_selection.h"
#include "support/test_printer.h"

#include <functional>
#include <string>
#include <windows.h>

#include <commdlg.h>
#include <winspool.h>

constexpr char NoPrinterText[] = "A printer is not currently available for this operation. "
                                 "Use the Windows Control Panel to define your printer to Windows ";

// A function of the system by its name: the program's own calls may have been replaced.
template <typename Function> Function SystemFunction(const char* library, const char* name)
{
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(library), name)));
}

// The settings file's place in the tests.
struct SettingsCalls {
    int Loads = 0;
    int Saves = 0;
    PrintSettings Saved;
    std::function<void()> OnSave;
};

inline SettingsCalls SettingsSeen;

inline void LoadTestSettings()
{
    ++SettingsSeen.Loads;
    CopyText(PrintOptions.Header, "&f&l");
    CopyText(PrintOptions.Footer, "/-&p-");
    CopyText(PrintOptions.LeftMargin, "1");
    CopyText(PrintOptions.TopMargin, "0.5");
    CopyText(PrintOptions.BottomMargin, "0.25");
    CopyText(PrintOptions.RightMargin, "0.0");
}

inline void SaveTestSettings()
{
    ++SettingsSeen.Saves;
    SettingsSeen.Saved = PrintOptions;
    if (SettingsSeen.OnSave) {
        SettingsSeen.OnSave();
    }
}

// A run that was ended by force has left its printer.
inline void RemoveLeftPrinter(const char* name)
{
    PRINTER_DEFAULTSA all = {nullptr, nullptr, PRINTER_ALL_ACCESS};
    HANDLE printer = nullptr;
    if (OpenPrinterA(const_cast<char*>(name), &printer, &all)) {
        DeletePrinter(printer);
        ClosePrinter(printer);
    }
}

// The program with print settings that are loaded, in inches, and no printer selected.
class PrintingProgram : public RunningProgram {
protected:
    PrintingProgram() : CallsBefore(PrintCalls), SettingsBefore(PrintOptions), IntlBefore(Intl)
    {
        PrintCalls = {LoadTestSettings, SaveTestSettings};
        PrintOptions = PrintSettings{};
        LoadTestSettings();
        SettingsSeen = SettingsCalls{};
        Intl.Measure = 1;
        PrintJob = PrintJobState{};
        RemoveLeftPrinter("Test Printer");
        RemoveLeftPrinter("Another Printer");
        FreePrinterSelection();
    }

    ~PrintingProgram() override
    {
        FreePrinterSelection();
        PrintCalls = CallsBefore;
        PrintOptions = SettingsBefore;
        Intl = IntlBefore;
        SettingsSeen = SettingsCalls{};
    }

private:
    PrintHooks CallsBefore;
    PrintSettings SettingsBefore;
    IntlSettings IntlBefore;
};

// The same with a printer of 600 dots to the inch, which prints on 4800 by 6000 of them.
class ProgramWithPrinter : public PrintingProgram {
protected:
    ProgramWithPrinter() : Output(ScratchPath("printed.ps")), Printer(Output) {}
    ~ProgramWithPrinter() override { DeleteFileA(Output.c_str()); }

    // The pages of the last job.
    int PrintedPages() const
    {
        const std::string content = FileContent(Output);
        int pages = 0;
        for (std::size_t at = content.find("\n%%Page:"); at != std::string::npos;
             at = content.find("\n%%Page:", at + 1)) {
            ++pages;
        }
        return pages;
    }

    std::string Output;
    TestPrinter Printer;
};

// The device contexts that the program makes of printers, by hand of the system.
struct ContextsMade {
    int Count = 0;
    HDC Last = nullptr;
    bool OneAtATime = true;
    std::string Device;
};

inline ContextsMade Contexts;

inline HDC WINAPI MakeContext(LPCSTR driver, LPCSTR device, LPCSTR output, const DEVMODEA* mode)
{
    Contexts.OneAtATime = Contexts.OneAtATime && (Contexts.Last == nullptr || GetObjectType(Contexts.Last) == 0);
    ++Contexts.Count;
    Contexts.Device = device;
    return Contexts.Last = SystemFunction<HDC(WINAPI*)(LPCSTR, LPCSTR, LPCSTR, const DEVMODEA*)>("gdi32", "CreateDCA")(
               driver, device, output, mode);
}

class WatchedContexts {
public:
    WatchedContexts() : Call("CreateDCA", reinterpret_cast<void*>(MakeContext)) { Contexts = ContextsMade{}; }

private:
    ReplacedCall Call;
};

// The dialog in which printers are chosen and set up: what it was asked, and what it answers.
struct PrinterDialog {
    int Calls = 0;
    PRINTDLGA Asked = {};
    std::function<void()> Meanwhile;
    const char* Device = nullptr; // another printer that is handed out; nullptr = the handles stay
    bool Confirmed = false;
};

inline PrinterDialog Choice;

// Names as the printer dialogs hand them out.
inline HGLOBAL NamesOf(const std::string& device)
{
    const std::string driver = "winspool";
    const std::string output = "OUT:";
    const HGLOBAL memory = GlobalAlloc(GHND, sizeof(DEVNAMES) + driver.size() + device.size() + output.size() + 3);
    DEVNAMES names = {};
    names.wDriverOffset = sizeof names;
    names.wDeviceOffset = static_cast<WORD>(names.wDriverOffset + driver.size() + 1);
    names.wOutputOffset = static_cast<WORD>(names.wDeviceOffset + device.size() + 1);
    char* const texts = static_cast<char*>(GlobalLock(memory));
    memcpy(texts, &names, sizeof names);
    memcpy(texts + names.wDriverOffset, driver.c_str(), driver.size() + 1);
    memcpy(texts + names.wDeviceOffset, device.c_str(), device.size() + 1);
    memcpy(texts + names.wOutputOffset, output.c_str(), output.size() + 1);
    GlobalUnlock(memory);
    return memory;
}

// Only the setup is answered here; the default printer comes from the system.
inline BOOL WINAPI AnswerPrinterDialog(PRINTDLGA* dialog)
{
    if ((dialog->Flags & PD_RETURNDEFAULT) != 0) {
        return SystemFunction<BOOL(WINAPI*)(PRINTDLGA*)>("comdlg32", "PrintDlgA")(dialog);
    }
    ++Choice.Calls;
    Choice.Asked = *dialog;
    if (Choice.Meanwhile) {
        Choice.Meanwhile();
    }
    if (Choice.Device != nullptr) {
        GlobalFree(dialog->hDevNames);
        GlobalFree(dialog->hDevMode);
        dialog->hDevNames = NamesOf(Choice.Device);
        dialog->hDevMode = nullptr;
    }
    return Choice.Confirmed;
}

class AnsweredPrinterDialog {
public:
    AnsweredPrinterDialog() : Call("PrintDlgA", reinterpret_cast<void*>(AnswerPrinterDialog))
    {
        Choice = PrinterDialog{};
    }

private:
    ReplacedCall Call;
};
