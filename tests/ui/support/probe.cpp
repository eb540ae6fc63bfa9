#include "support/probe.h"

#include "support/wait.h"
#include "support/windows_path.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>

namespace {

// The library in this process, to look its functions up: it is not run here.
HMODULE LocalLibrary()
{
    static const HMODULE library =
        LoadLibraryExA(WindowsPath(KESTOVAR_PROBE).c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
    return library;
}

} // namespace

int Pixels::CountOf(std::uint32_t colour) const
{
    return static_cast<int>(std::count(Values.begin(), Values.end(), colour));
}

Probe::Probe(HANDLE process) : Process(process)
{
    // Kernel32 lies at the same address in every process.
    void* const load = reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32"), "LoadLibraryA"));
    const std::string path = WindowsPath(KESTOVAR_PROBE);
    DWORD base = 0;
    if (RunRemotely(load, path.c_str(), path.size() + 1, nullptr, base)) {
        Base = reinterpret_cast<std::uint8_t*>(static_cast<std::uintptr_t>(base));
    }
    EXPECT_NE(Base, nullptr) << "the probe library could not be loaded: " << path;
}

bool Probe::RunRemotely(void* function, const void* argument, std::size_t size, void* answer, DWORD& result)
{
    void* const memory = VirtualAllocEx(Process, nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    if (memory == nullptr || !WriteProcessMemory(Process, memory, argument, size, nullptr)) {
        return false;
    }
    const HANDLE thread = CreateRemoteThread(
        Process, nullptr, 0, reinterpret_cast<LPTHREAD_START_ROUTINE>(function), memory, 0, nullptr);
    if (thread == nullptr) {
        return false;
    }
    const HANDLE either[] = {thread, Process};
    const bool ended = WaitForMultipleObjects(2, either, FALSE, DefaultWaitLimit) == WAIT_OBJECT_0;
    bool good = ended && GetExitCodeThread(thread, &result);
    if (good && answer != nullptr) {
        good = ReadProcessMemory(Process, memory, answer, size, nullptr);
    }
    CloseHandle(thread);
    if (ended) {
        VirtualFreeEx(Process, memory, 0, MEM_RELEASE);
    }
    return good;
}

bool Probe::Call(const char* function, void* record, std::size_t size)
{
    void* const local = reinterpret_cast<void*>(GetProcAddress(LocalLibrary(), function));
    DWORD result = 0;
    if (Base != nullptr && local != nullptr) {
        const std::ptrdiff_t offset = static_cast<std::uint8_t*>(local) - reinterpret_cast<std::uint8_t*>(LocalLibrary());
        RunRemotely(Base + offset, record, size, record, result);
    }
    if (result == 0) {
        ADD_FAILURE() << "no answer from inside the program: " << function;
        TerminateProcess(Process, 1); // so that nothing else waits for it
    }
    return result != 0;
}

MenuItem Probe::Command(HWND frame, UINT id, ProbeMenuKind menu)
{
    ProbeMenuRecord record;
    record.Frame = frame;
    record.Menu = menu;
    record.Item = id;
    Call("ProbeMenu", &record, sizeof record);
    MenuItem item;
    item.HasMenu = record.HasMenu;
    item.Exists = record.State != static_cast<std::uint32_t>(-1);
    item.Greyed = item.Exists && (record.State & (MF_GRAYED | MF_DISABLED)) != 0;
    item.Checked = item.Exists && (record.State & MF_CHECKED) != 0;
    item.Text = record.Text;
    return item;
}

std::vector<std::string> Probe::PopupTexts(HWND frame, int popup)
{
    std::vector<std::string> texts;
    ProbeMenuRecord record;
    do {
        record = ProbeMenuRecord{};
        record.Frame = frame;
        record.Popup = popup;
        record.Flags = MF_BYPOSITION;
        record.Item = static_cast<std::uint32_t>(texts.size());
        if (!Call("ProbeMenu", &record, sizeof record) || record.ItemCount <= 0) {
            return texts;
        }
        texts.push_back((record.State & MF_SEPARATOR) != 0 ? "-" : record.Text);
    } while (static_cast<int>(texts.size()) < record.ItemCount);
    return texts;
}

ScrollValues Probe::Scroll(HWND window, int bar)
{
    ProbeScrollRecord record;
    record.Window = window;
    record.Bar = bar;
    Call("ProbeScroll", &record, sizeof record);
    return {record.Min, record.Max, record.Position};
}

Pixels Probe::Read(HWND window, int x, int y, int width, int height)
{
    Pixels pixels{width, height, std::vector<std::uint32_t>(static_cast<std::size_t>(width * height))};
    ProbePixelsRecord record;
    record.Window = window;
    record.X = x;
    record.Y = y;
    record.Width = width;
    record.Height = height;
    constexpr std::size_t Head = offsetof(ProbePixelsRecord, Pixels);
    std::vector<std::uint8_t> bytes(Head + pixels.Values.size() * sizeof(std::uint32_t));
    memcpy(bytes.data(), &record, Head);
    if (Call("ProbePixels", bytes.data(), bytes.size())) {
        memcpy(pixels.Values.data(), bytes.data() + Head, bytes.size() - Head);
    }
    for (std::uint32_t& value : pixels.Values) {
        value &= 0xFFFFFF;
    }
    return pixels;
}

std::vector<ProbeText> Probe::Repaint(HWND window)
{
    auto record = std::make_unique<ProbeTextsRecord>();
    record->Window = window;
    Call("ProbeRecordTexts", record.get(), sizeof *record);
    std::vector<ProbeText> texts;
    for (const ProbeText& text : TakeRecorded()) {
        // The system may have had the window painted once more at the same time.
        const bool again = std::any_of(texts.begin(), texts.end(), [&](const ProbeText& other) {
            return memcmp(&text, &other, sizeof text) == 0;
        });
        if (text.Window == window && !again) {
            texts.push_back(text);
        }
    }
    return texts;
}

void Probe::StartRecording()
{
    auto record = std::make_unique<ProbeTextsRecord>();
    Call("ProbeRecordTexts", record.get(), sizeof *record);
}

std::vector<ProbeText> Probe::TakeRecorded()
{
    auto record = std::make_unique<ProbeTextsRecord>();
    Call("ProbeTakeTexts", record.get(), sizeof *record);
    return {record->Texts, record->Texts + record->Count};
}

ProbeUseRecord Probe::Use()
{
    ProbeUseRecord record;
    Call("ProbeUse", &record, sizeof record);
    return record;
}

void Probe::Drop(HWND window, const std::string& path)
{
    ProbeDropRecord record;
    record.Window = window;
    path.copy(record.Path, sizeof record.Path - 1);
    Call("ProbeDrop", &record, sizeof record);
}

ProbeCursorShape Probe::Cursor()
{
    ProbeCursorRecord record;
    Call("ProbeCursor", &record, sizeof record);
    return record.Shape;
}
