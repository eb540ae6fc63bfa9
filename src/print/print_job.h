// Printing the file that is shown, or what is selected of it.
#pragma once

#include "print/header_footer.h"
#include "print/page_layout.h"

#include <cstdint>
#include <windows.h>

// What the room asks of the rest of the program; handed in once at start.
struct PrintHooks {
    void (*LoadSettings)(); // the print settings, from the settings file
    void (*SaveSettings)();
};

inline PrintHooks PrintCalls = {};

// 26 characters of a name, dots, " (Selection)" and the terminator.
constexpr int PrintDocNameSize = 26 + 3 + 12 + 1;

// The job that is running. The messages that come in while it does, Cancel among them, find it here.
struct PrintJobState {
    char PrintDocName[PrintDocNameSize] = "";
    PageLayout Page;
    HeaderFooter Header;
    HeaderFooter Footer;
    HFONT HeadFont = nullptr; // of header and footer; nullptr = the body's
    std::int32_t PageNumber = 1;
    bool PrintAborted = false; // by the user
    bool PrintError = false;   // the system refused the document or a page
};

extern PrintJobState PrintJob;

// Asks how, and prints the document on the selected printer: in text mode its lines, in hex mode its rows.
// selectionFirst and selectionLast are the selected ones, from 1; a first of 0 means that none is. The shown file's
// path and the font of the view are given where the program keeps them: other programs may have changed them, with mode
// and selection, while the question was asked, and of another file nothing is printed. What goes wrong is reported.
void PrintFile(HWND owner, const char* path, const HFONT& screenFont, bool hexMode, std::int32_t selectionFirst,
               std::int32_t selectionLast);

// The print settings are loaded the first time they are needed.
void LoadPrintSettingsOnce();
