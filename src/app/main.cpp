#include "app/startup.h"

int WINAPI WinMain(HINSTANCE instance, HINSTANCE previousInstance, LPSTR commandLine, int)
{
    StartProgram(instance, previousInstance, commandLine);
    return RunMessageLoop();
}
