// The library that the tests load into the program's process: see probe_records.h.
#include "support/probe_records.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <shellapi.h>
#include <shlobj.h>

namespace {

CRITICAL_SECTION Lock;
bool Recording = false;
std::int32_t TextCount = 0;
ProbeText Texts[MaxProbeTexts];
LONG Beeps = 0;

decltype(&ExtTextOutA) RealExtTextOut = nullptr;
decltype(&TextOutA) RealTextOut = nullptr;
decltype(&MessageBeep) RealMessageBeep = nullptr;

void KeepText(HDC dc, int x, int y, const RECT* area, const char* text, UINT length)
{
    EnterCriticalSection(&Lock);
    if (Recording && TextCount < MaxProbeTexts) {
        ProbeText& kept = Texts[TextCount++];
        kept = ProbeText{};
        kept.Window = WindowFromDC(dc);
        kept.X = x;
        kept.Y = y;
        kept.Area = area != nullptr ? *area : RECT{};
        kept.Foreground = GetTextColor(dc);
        kept.Background = GetBkColor(dc);
        kept.Length = static_cast<std::int32_t>(length);
        memcpy(kept.Text, text, std::min<std::size_t>(length, sizeof kept.Text - 1));
    }
    LeaveCriticalSection(&Lock);
}

BOOL WINAPI KeepingExtTextOut(HDC dc, int x, int y, UINT options, const RECT* area, LPCSTR text, UINT length,
                              const INT* distances)
{
    KeepText(dc, x, y, area, text, length);
    return RealExtTextOut(dc, x, y, options, area, text, length, distances);
}

BOOL WINAPI KeepingTextOut(HDC dc, int x, int y, LPCSTR text, int length)
{
    KeepText(dc, x, y, nullptr, text, static_cast<UINT>(length));
    return RealTextOut(dc, x, y, text, length);
}

BOOL WINAPI CountingBeep(UINT)
{
    InterlockedIncrement(&Beeps);
    return TRUE;
}

// The program's own import of a function, to be replaced; nullptr when it does not import it.
void** FindImport(void* function)
{
    std::uint8_t* const base = reinterpret_cast<std::uint8_t*>(GetModuleHandleA(nullptr));
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (const auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + table.VirtualAddress);
         library->FirstThunk != 0; ++library) {
        for (void** entry = reinterpret_cast<void**>(base + library->FirstThunk); *entry != nullptr; ++entry) {
            if (*entry == function) {
                return entry;
            }
        }
    }
    return nullptr;
}

template <typename Function> void Divert(const char* library, const char* name, Function replacement, Function& real)
{
    void* const address = reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(library), name));
    real = reinterpret_cast<Function>(address);
    void** const entry = FindImport(address);
    if (entry != nullptr) {
        DWORD protection = 0;
        VirtualProtect(entry, sizeof *entry, PAGE_READWRITE, &protection);
        *entry = reinterpret_cast<void*>(replacement);
        VirtualProtect(entry, sizeof *entry, protection, &protection);
    }
}

HMENU FindMenu(const ProbeMenuRecord& record)
{
    const HMENU menu = record.Menu == ProbeMenuKind::Bar ? GetMenu(record.Frame) : GetSystemMenu(record.Frame, FALSE);
    return record.Popup < 0 ? menu : GetSubMenu(menu, record.Popup);
}

std::int32_t HeapBytesInUse()
{
    const HANDLE heap = GetProcessHeap();
    SIZE_T bytes = 0;
    HeapLock(heap);
    PROCESS_HEAP_ENTRY entry = {};
    while (HeapWalk(heap, &entry)) {
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) {
            bytes += entry.cbData;
        }
    }
    HeapUnlock(heap);
    return static_cast<std::int32_t>(bytes);
}

// Where the system does not count GDI objects it is told from their handles, which hold the place in a
// table: new objects fill its free places before they make it longer.
std::int32_t CountGdiObjects()
{
    const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    if (counted != 0) {
        return static_cast<std::int32_t>(counted);
    }
    constexpr int MostFreePlaces = 1000;
    static HBRUSH brushes[MostFreePlaces];
    int lastPlace = 0;
    for (HBRUSH& brush : brushes) {
        brush = CreateSolidBrush(RGB(1, 2, 3));
        lastPlace = std::max<int>(lastPlace, LOWORD(reinterpret_cast<std::uintptr_t>(brush)));
    }
    for (const HBRUSH brush : brushes) {
        DeleteObject(brush);
    }
    return lastPlace;
}

bool ReadMenu(ProbeMenuRecord& record)
{
    const HMENU menu = FindMenu(record);
    record.HasMenu = menu != nullptr;
    record.State = GetMenuState(menu, record.Item, record.Flags);
    record.ItemCount = GetMenuItemCount(menu);
    GetMenuStringA(menu, record.Item, record.Text, sizeof record.Text, record.Flags);
    return true;
}

bool ReadScroll(ProbeScrollRecord& record)
{
    int least = 0;
    int most = 0;
    GetScrollRange(record.Window, record.Bar, &least, &most);
    record.Min = least;
    record.Max = most;
    record.Position = GetScrollPos(record.Window, record.Bar);
    return true;
}

bool ReadPixels(ProbePixelsRecord& record)
{
    const HDC window = GetDC(record.Window);
    const HDC memory = CreateCompatibleDC(window);
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = record.Width;
    info.bmiHeader.biHeight = -record.Height; // rows from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection(window, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ former = SelectObject(memory, bitmap);
    const BOOL copied = BitBlt(memory, 0, 0, record.Width, record.Height, window, record.X, record.Y, SRCCOPY);
    GdiFlush();
    memcpy(record.Pixels, bits, static_cast<std::size_t>(record.Width) * record.Height * sizeof(std::uint32_t));
    SelectObject(memory, former);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(record.Window, window);
    return copied != FALSE;
}

bool RecordTexts(const ProbeTextsRecord& record)
{
    EnterCriticalSection(&Lock);
    TextCount = 0;
    Recording = true;
    LeaveCriticalSection(&Lock);
    if (record.Window != nullptr) {
        RedrawWindow(record.Window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        // The window's own thread may have taken up the painting by itself: wait until it is done with it.
        SendMessageA(record.Window, WM_NULL, 0, 0);
    }
    return true;
}

bool TakeTexts(ProbeTextsRecord& record)
{
    EnterCriticalSection(&Lock);
    record.Count = TextCount;
    memcpy(record.Texts, Texts, static_cast<std::size_t>(TextCount) * sizeof(ProbeText));
    LeaveCriticalSection(&Lock);
    return true;
}

bool CountUse(ProbeUseRecord& record)
{
    record.HeapBytes = HeapBytesInUse();
    record.GdiObjects = CountGdiObjects();
    record.Beeps = Beeps;
    return true;
}

bool DropFile(const ProbeDropRecord& record)
{
    const std::size_t bytes = static_cast<std::size_t>(record.Bytes);
    const HGLOBAL memory = GlobalAlloc(GHND, sizeof(DROPFILES) + bytes);
    DROPFILES* const drop = static_cast<DROPFILES*>(GlobalLock(memory));
    drop->pFiles = sizeof *drop;
    memcpy(drop + 1, record.Names, bytes);
    GlobalUnlock(memory);
    return PostMessageA(record.Window, WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0) != FALSE;
}

bool ReadCursor(ProbeCursorRecord& record)
{
    CURSORINFO info = {};
    info.cbSize = sizeof info;
    GetCursorInfo(&info);
    const struct {
        LPCSTR Name;
        ProbeCursorShape Shape;
    } Shapes[] = {
        {IDC_ARROW, ProbeCursorShape::Arrow}, {IDC_WAIT, ProbeCursorShape::Wait}, {IDC_IBEAM, ProbeCursorShape::Ibeam}};
    for (const auto& shape : Shapes) {
        if (info.hCursor == LoadCursorA(nullptr, shape.Name)) {
            record.Shape = shape.Shape;
        }
    }
    return true;
}

template <typename Record> Record& As(ProbeChannel& channel)
{
    static_assert(sizeof(Record) <= ProbeRecordBytes);
    return *reinterpret_cast<Record*>(channel.Record);
}

bool Serve(ProbeChannel& channel)
{
    switch (channel.Request) {
    case ProbeRequest::Menu: return ReadMenu(As<ProbeMenuRecord>(channel));
    case ProbeRequest::Scroll: return ReadScroll(As<ProbeScrollRecord>(channel));
    case ProbeRequest::Pixels: return ReadPixels(As<ProbePixelsRecord>(channel));
    case ProbeRequest::RecordTexts: return RecordTexts(As<ProbeTextsRecord>(channel));
    case ProbeRequest::TakeTexts: return TakeTexts(As<ProbeTextsRecord>(channel));
    case ProbeRequest::Use: return CountUse(As<ProbeUseRecord>(channel));
    case ProbeRequest::Drop: return DropFile(As<ProbeDropRecord>(channel));
    case ProbeRequest::Cursor: return ReadCursor(As<ProbeCursorRecord>(channel));
    }
    return false;
}

struct OwnName {
    char Text[64];
    explicit OwnName(const char* name)
    {
        snprintf(Text, sizeof Text, "%s%lu", name, static_cast<unsigned long>(GetCurrentProcessId()));
    }
};

// Ends with the process.
DWORD WINAPI ServeForEver(void*)
{
    const HANDLE memory = OpenFileMappingA(FILE_MAP_ALL_ACCESS, FALSE, OwnName(ProbeMemoryName).Text);
    const HANDLE ask = OpenEventA(SYNCHRONIZE, FALSE, OwnName(ProbeAskName).Text);
    const HANDLE answer = OpenEventA(EVENT_MODIFY_STATE, FALSE, OwnName(ProbeAnswerName).Text);
    auto* const channel = static_cast<ProbeChannel*>(MapViewOfFile(memory, FILE_MAP_ALL_ACCESS, 0, 0, 0));
    while (channel != nullptr && WaitForSingleObject(ask, INFINITE) == WAIT_OBJECT_0) {
        channel->Done = Serve(*channel);
        SetEvent(answer);
    }
    return 0;
}

} // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, void*)
{
    if (reason == DLL_PROCESS_ATTACH) {
        DisableThreadLibraryCalls(library);
        InitializeCriticalSection(&Lock);
        Divert("gdi32", "ExtTextOutA", KeepingExtTextOut, RealExtTextOut);
        Divert("gdi32", "TextOutA", KeepingTextOut, RealTextOut);
        Divert("user32", "MessageBeep", CountingBeep, RealMessageBeep);
        CloseHandle(CreateThread(nullptr, 0, ServeForEver, nullptr, 0, nullptr));
    }
    return TRUE;
}
