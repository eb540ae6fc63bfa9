// The box that names the program and its version.
#pragma once

#include <windows.h>

void ShowAboutBox(HWND owner);
