// The program's dialogs, its own as well as the system's. Texts are in the system's ANSI code page, as
// everywhere in the tests.
#pragma once

#include "support/program.h"

#include <string>
#include <vector>
#include <windows.h>

// The dialog of this title that the program shows; nullptr when it shows none.
HWND FindDialog(const Program& program, const std::string& title);

// Waits until it is shown, is the active window and answers; nullptr, and the test has failed, when that
// does not come about.
HWND WaitForDialog(const Program& program, const std::string& title);

// Waits for the box that the dialog shows on top of itself; nullptr, and the test has failed, when it
// shows none.
HWND WaitForBoxOver(HWND dialog);

// The system's help is a program of its own. It asks for the file that it does not find, and the program waits for it
// meanwhile: answers the question. The test has failed when none comes.
void AnswerMissingHelp(const Program& program);

// Waits until the dialog is gone; false, and the test has failed, when it stays.
bool WaitUntilClosed(HWND dialog);

// The text of the dialog's control with this id.
std::string ControlText(HWND dialog, int control);
void SetControlText(HWND dialog, int control, const std::string& text);

// A list box's entries, and the index of the chosen one: -1 for none.
std::vector<std::string> ListTexts(HWND dialog, int control);
int ListSelection(HWND dialog, int control);
int ListTop(HWND dialog, int control);

// As a click on the button does; returns at once.
void PressControl(HWND dialog, int control);

// A double click with the real mouse on the list box's entry, which has to be in sight.
void DoubleClickEntry(HWND dialog, int control, int entry);

// The control, if any, that the keys go to.
HWND FocusOf(HWND dialog);

struct DialogControl {
    HWND Window;
    std::string Class;
    std::string Text;
};

std::vector<DialogControl> ControlsOf(HWND dialog);

// The extent of a text in the dialogs' font, as DrawText measures it.
SIZE ExtentOf(const std::string& text, UINT format = DT_SINGLELINE, int width = 0);

// It is a failure when a text cannot be read whole in its control. Returns how many texts there are.
int ExpectTextsFit(HWND dialog);

// Types the text with real keys: it goes to whatever has the focus.
void TypeText(const std::string& text);
