// From the command line to the shown main window, and the message loop.
#pragma once

#include <windows.h>

// Registers the classes, reads command line and settings, creates and shows the main window.
void StartProgram(HINSTANCE instance, HINSTANCE previousInstance, const char* commandLine);

// Runs until the quit message; returns the exit code.
int RunMessageLoop();
