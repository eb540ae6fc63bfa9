// The program's message boxes.
#pragma once

#include <string>
#include <windows.h>

// The message box that the process shows; nullptr when it shows none.
HWND FindMessageBox(DWORD process);

std::string MessageBoxText(HWND box);

// As a click on the button does.
void PressButton(HWND box, int button);
