// The box that a print job is seen in, and cancelled.
#pragma once

#include <windows.h>

// Disables the job's owner and shows the box.
void ShowPrintStatus(HWND owner);

// Names the page that is being printed, and lets the user have a look and a say.
void ShowPrintedPage();

// Enables the owner again and takes the box away, unless Cancel has done that.
void ClosePrintStatus();

// The job's abort procedure: handles the messages that have come in. FALSE once the job is cancelled.
BOOL CALLBACK PrintAbortProc(HDC dc, int code);
