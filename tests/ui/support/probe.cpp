#include "support/probe.h"

#include "support/wait.h"
#include "support/windows_path.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>

namespace {

std::string NameFor(const char* name, DWORD processId)
{
    return name + std::to_string(processId);
}

} // namespace

int Pixels::CountOf(std::uint32_t colour) const
{
    return static_cast<int>(std::count(Values.begin(), Values.end(), colour));
}

Probe::Probe(HANDLE process, DWORD processId)
    : Process(process), Memory(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                                  sizeof(ProbeChannel), NameFor(ProbeMemoryName, processId).c_str())),
      Ask(CreateEventA(nullptr, FALSE, FALSE, NameFor(ProbeAskName, processId).c_str())),
      Answer(CreateEventA(nullptr, FALSE, FALSE, NameFor(ProbeAnswerName, processId).c_str())),
      Channel(static_cast<ProbeChannel*>(MapViewOfFile(Memory, FILE_MAP_ALL_ACCESS, 0, 0, 0)))
{
    EXPECT_NE(Channel, nullptr);
    EXPECT_TRUE(Load()) << "the probe library could not be loaded";
}

Probe::~Probe()
{
    UnmapViewOfFile(Channel);
    CloseHandle(Memory);
    CloseHandle(Ask);
    CloseHandle(Answer);
}

// Has the process run LoadLibrary, which lies at the same address in every process. The memory with the
// library's name stays there for the rest of the run.
bool Probe::Load()
{
    void* const load = reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32"), "LoadLibraryA"));
    const std::string path = WindowsPath(KESTOVAR_PROBE);
    void* const name = VirtualAllocEx(Process, nullptr, path.size() + 1, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    if (name == nullptr || !WriteProcessMemory(Process, name, path.c_str(), path.size() + 1, nullptr)) {
        return false;
    }
    const HANDLE thread =
        CreateRemoteThread(Process, nullptr, 0, reinterpret_cast<LPTHREAD_START_ROUTINE>(load), name, 0, nullptr);
    const HANDLE either[] = {thread, Process};
    DWORD library = 0;
    const bool loaded = thread != nullptr &&
                        WaitForMultipleObjects(2, either, FALSE, DefaultWaitLimit) == WAIT_OBJECT_0 &&
                        GetExitCodeThread(thread, &library) && library != 0;
    CloseHandle(thread);
    return loaded;
}

bool Probe::Call(ProbeRequest request, void* record, std::size_t size)
{
    Channel->Request = request;
    Channel->Done = false;
    memcpy(Channel->Record, record, size);
    SetEvent(Ask);
    const HANDLE either[] = {Answer, Process};
    const bool answered = WaitForMultipleObjects(2, either, FALSE, DefaultWaitLimit) == WAIT_OBJECT_0;
    if (!answered || !Channel->Done) {
        ADD_FAILURE() << "no answer from inside the program to request " << static_cast<int>(request);
        TerminateProcess(Process, 1); // so that nothing else waits for it
        return false;
    }
    memcpy(record, Channel->Record, size);
    return true;
}

MenuItem Probe::Command(HWND frame, UINT id, ProbeMenuKind menu)
{
    ProbeMenuRecord record;
    record.Frame = frame;
    record.Menu = menu;
    record.Item = id;
    Call(ProbeRequest::Menu, &record, sizeof record);
    MenuItem item;
    item.HasMenu = record.HasMenu;
    item.Exists = record.State != static_cast<std::uint32_t>(-1);
    item.Greyed = item.Exists && (record.State & (MF_GRAYED | MF_DISABLED)) != 0;
    item.Checked = item.Exists && (record.State & MF_CHECKED) != 0;
    item.Text = record.Text;
    return item;
}

std::vector<std::string> Probe::PopupTexts(HWND frame, int popup, ProbeMenuKind menu)
{
    std::vector<std::string> texts;
    ProbeMenuRecord record;
    do {
        record = ProbeMenuRecord{};
        record.Frame = frame;
        record.Menu = menu;
        record.Popup = popup;
        record.Flags = MF_BYPOSITION;
        record.Item = static_cast<std::uint32_t>(texts.size());
        if (!Call(ProbeRequest::Menu, &record, sizeof record) || record.ItemCount <= 0) {
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
    Call(ProbeRequest::Scroll, &record, sizeof record);
    return {record.Min, record.Max, record.Position};
}

Pixels Probe::Read(HWND window, int x, int y, int width, int height)
{
    Pixels pixels{width, height, std::vector<std::uint32_t>(static_cast<std::size_t>(width * height))};
    if (width < 1 || height < 1) {
        return pixels; // a window on its way back from its icon has no extent for a moment
    }
    ProbePixelsRecord record;
    record.Window = window;
    record.X = x;
    record.Y = y;
    record.Width = width;
    record.Height = height;
    constexpr std::size_t Head = offsetof(ProbePixelsRecord, Pixels);
    std::vector<std::uint8_t> bytes(Head + pixels.Values.size() * sizeof(std::uint32_t));
    memcpy(bytes.data(), &record, Head);
    if (Call(ProbeRequest::Pixels, bytes.data(), bytes.size())) {
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
    Call(ProbeRequest::RecordTexts, record.get(), sizeof *record);
    std::vector<ProbeText> texts;
    for (const ProbeText& text : TakeRecorded()) {
        // The system may have had the window painted once more at the same time.
        const bool again = std::any_of(texts.begin(), texts.end(),
                                       [&](const ProbeText& other) { return memcmp(&text, &other, sizeof text) == 0; });
        if (text.Window == window && !again) {
            texts.push_back(text);
        }
    }
    return texts;
}

void Probe::StartRecording()
{
    auto record = std::make_unique<ProbeTextsRecord>();
    Call(ProbeRequest::RecordTexts, record.get(), sizeof *record);
}

std::vector<ProbeText> Probe::TakeRecorded()
{
    auto record = std::make_unique<ProbeTextsRecord>();
    Call(ProbeRequest::TakeTexts, record.get(), sizeof *record);
    return {record->Texts, record->Texts + record->Count};
}

ProbeUseRecord Probe::Use()
{
    ProbeUseRecord record;
    Call(ProbeRequest::Use, &record, sizeof record);
    return record;
}

void Probe::Drop(HWND window, const std::string& path)
{
    DropFiles(window, {path});
}

void Probe::DropFiles(HWND window, const std::vector<std::string>& paths)
{
    std::string names;
    for (const std::string& path : paths) {
        names += path + '\0';
    }
    names += '\0'; // the list ends with an empty name
    ProbeDropRecord record;
    record.Window = window;
    record.Bytes = static_cast<std::int32_t>(names.size());
    constexpr std::size_t Head = offsetof(ProbeDropRecord, Names);
    std::vector<std::uint8_t> bytes(Head + names.size());
    memcpy(bytes.data(), &record, Head);
    memcpy(bytes.data() + Head, names.data(), names.size());
    Call(ProbeRequest::Drop, bytes.data(), bytes.size());
}

ProbeCursorShape Probe::Cursor()
{
    ProbeCursorRecord record;
    Call(ProbeRequest::Cursor, &record, sizeof record);
    return record.Shape;
}
