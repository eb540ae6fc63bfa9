// The Find and Goto dialogs, and what they look for, entered by real keys.
#pragma once

#include "support/program.h"

#include <string>
#include <vector>

extern const char FindTitle[];
extern const char GotoTitle[];

// Waits until the keys go to the main window: after a dialog or a message box that takes a moment.
bool WaitForKeyboard(const Program& program);

// Ctrl+F, and waits for the dialog; nullptr when it does not come.
HWND ShowFind(const Program& program);

// Alt+S and G: the same by the menu.
HWND ShowGoto(const Program& program);

// Enter, and waits until the dialog is gone.
void Accept(const Program& program, HWND dialog);

// Empties one of the two strings.
void EraseText(HWND dialog, int control);

// Enters the text in place of what is there.
void EnterText(HWND dialog, const std::string& text);

// Clicks on a switch of the Find dialog and waits until it has changed: of alternatives this becomes the chosen one.
void ChangeSwitch(HWND dialog, int control);

// Looks for the text in the way that the dialog was left in.
void FindText(const Program& program, const std::string& text);

// Looks for the bytes that the digits stand for.
void FindHex(const Program& program, const std::string& digits);

// Whether the program says that there is no such text. It is then ready for the next.
bool SaysNotFound(Program& program);
bool FindsNothing(Program& program, const std::string& text);

bool IsEnabled(HWND dialog, int control);
bool IsChecked(HWND dialog, int control);

// Waits until it is; a failure when it does not come about.
void ExpectText(HWND dialog, int control, const std::string& text);
void ExpectEnabled(HWND dialog, int control, bool enabled);
void ExpectChecked(HWND dialog, int control, bool checked);

// Whether the keys go to the combo box.
bool IsTypedInto(HWND dialog, int combo);

// The entries of its list.
std::vector<std::string> ComboTexts(HWND dialog, int combo);

// A click with the real mouse in the control's middle.
void ClickControl(HWND dialog, int control);
