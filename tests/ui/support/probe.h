// The tests' side of the probe library: loads it into a process and asks it.
#pragma once

#include "support/probe_records.h"

#include <string>
#include <vector>

struct MenuItem {
    bool HasMenu = false; // false while the menu bar is hidden
    bool Exists = false;
    bool Greyed = false;
    bool Checked = false;
    std::string Text;
};

struct ScrollValues {
    int Min = 0;
    int Max = 0;
    int Position = 0;
};

struct Pixels {
    int Width = 0;
    int Height = 0;
    std::vector<std::uint32_t> Values; // rows from the top

    std::uint32_t At(int x, int y) const { return Values[static_cast<std::size_t>(y * Width + x)]; }
    int CountOf(std::uint32_t colour) const;
};

class Probe {
public:
    // Loads the library; the calls below fail their test when that did not work.
    Probe(HANDLE process, DWORD processId);
    ~Probe();
    Probe(const Probe&) = delete;
    Probe& operator=(const Probe&) = delete;

    MenuItem Command(HWND frame, UINT id, ProbeMenuKind menu = ProbeMenuKind::Bar);
    // The texts of a popup's items, "-" for a separator; those of the menu itself for -1.
    std::vector<std::string> PopupTexts(HWND frame, int popup, ProbeMenuKind menu = ProbeMenuKind::Bar);
    ScrollValues Scroll(HWND window, int bar);
    Pixels Read(HWND window, int x, int y, int width, int height);
    // What the program writes on the window while it repaints it as a whole.
    std::vector<ProbeText> Repaint(HWND window);
    // What it writes on any window from now on, and what that has been until now.
    void StartRecording();
    std::vector<ProbeText> TakeRecorded();
    ProbeUseRecord Use();
    void Drop(HWND window, const std::string& path);
    void DropFiles(HWND window, const std::vector<std::string>& paths);
    ProbeCursorShape Cursor();

private:
    bool Load();
    // Copies the record there and, when it has been answered, back.
    bool Call(ProbeRequest request, void* record, std::size_t size);

    HANDLE Process;
    HANDLE Memory;
    HANDLE Ask;
    HANDLE Answer;
    ProbeChannel* Channel;
};
