// Calls of the program to the system that are noted in place of being carried out.
#pragma once

#include <string>
#include <vector>
#include <windows.h>

// Puts replacement in the place of a system function that the program in this process calls, and the function
// back with the object.
class ReplacedCall {
public:
    ReplacedCall(const char* function, void* replacement);
    ~ReplacedCall();
    ReplacedCall(const ReplacedCall&) = delete;
    ReplacedCall& operator=(const ReplacedCall&) = delete;

private:
    void** Entry;
    void* Before;
};

// Counts the beeps, in silence.
class BeepCounter {
public:
    BeepCounter();
    int Count() const;

private:
    ReplacedCall Call;
};

// As long as the object lives, the program gets no memory objects.
class NoMemoryObjects {
public:
    NoMemoryObjects();

private:
    ReplacedCall Call;
};

struct HelpRequest {
    HWND Window;
    std::string File;
    UINT Command;
    ULONG_PTR Topic;
};

// Notes what help is asked for.
class HelpRequests {
public:
    HelpRequests();
    const std::vector<HelpRequest>& Seen() const;

private:
    ReplacedCall Call;
};
