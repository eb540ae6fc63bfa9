#include "support/wait.h"

bool WaitUntil(const std::function<bool()>& condition, DWORD limit)
{
    constexpr DWORD PollPeriod = 4; // milliseconds
    const DWORD start = GetTickCount();
    while (!condition()) {
        if (GetTickCount() - start >= limit) {
            return false;
        }
        Sleep(PollPeriod);
    }
    return true;
}

bool StaysFalse(const std::function<bool()>& condition, DWORD period)
{
    return !WaitUntil(condition, period);
}
