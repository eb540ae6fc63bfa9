// Bounded waits: a test goes on as soon as what it waits for has happened, and gives up after a limit.
#pragma once

#include <functional>
#include <windows.h>

// Generous, since the machine may be busy; a wait that succeeds is short.
constexpr DWORD DefaultWaitLimit = 15000; // milliseconds

// Whether condition became true within limit milliseconds.
bool WaitUntil(const std::function<bool()>& condition, DWORD limit = DefaultWaitLimit);

// For what must not happen: whether condition stayed false for period milliseconds.
bool StaysFalse(const std::function<bool()>& condition, DWORD period);
