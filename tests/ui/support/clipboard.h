// The clipboard, as another program finds it.
#pragma once

#include <cstddef>
#include <string>

// What ClipboardText says when there is no text.
extern const char NoClipboardText[];

// The text on the clipboard. A program that has just copied, or the system itself, can still be busy with it:
// this waits for them.
std::string ClipboardText();

// The bytes that it takes there, with the zero byte behind it; 0 when there is none.
std::size_t ClipboardBytes();

void PutTextOnClipboard(const std::string& text);
void EmptyTheClipboard();

// Waits until no program has the clipboard open: the system itself looks at what has been put there.
bool WaitForFreeClipboard();

// Keeps the clipboard open for as long as it lives, so that no other program can put anything there.
class BusyClipboard {
public:
    BusyClipboard();
    ~BusyClipboard();
    BusyClipboard(const BusyClipboard&) = delete;
    BusyClipboard& operator=(const BusyClipboard&) = delete;
};
