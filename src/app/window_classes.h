// The program's seven window classes.
#pragma once

#include <windows.h>

void RegisterKstvClasses(HINSTANCE instance);
