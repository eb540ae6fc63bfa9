#include "harness/system_calls.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

int Beeps;
std::vector<HelpRequest> Help;

BOOL WINAPI NoteBeep(UINT)
{
    ++Beeps;
    return TRUE;
}

BOOL WINAPI NoteHelp(HWND window, LPCSTR file, UINT command, ULONG_PTR topic)
{
    Help.push_back({window, file, command, topic});
    return TRUE;
}

HGLOBAL WINAPI RefuseMemory(UINT, SIZE_T)
{
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

// Where this program's file keeps the address of a system function; nullptr when it does not call it.
void** FindImport(const char* function)
{
    std::uint8_t* const base = reinterpret_cast<std::uint8_t*>(GetModuleHandleA(nullptr));
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (const auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + table.VirtualAddress);
         library->Name != 0; ++library) {
        const auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + library->OriginalFirstThunk);
        auto* address = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++address) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) {
                continue;
            }
            const auto* const entry = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
            if (strcmp(reinterpret_cast<const char*>(entry->Name), function) == 0) {
                return reinterpret_cast<void**>(&address->u1.Function);
            }
        }
    }
    return nullptr;
}

void SetEntry(void** entry, void* function)
{
    DWORD protection = 0;
    VirtualProtect(entry, sizeof *entry, PAGE_READWRITE, &protection);
    *entry = function;
    VirtualProtect(entry, sizeof *entry, protection, &protection);
}

} // namespace

ReplacedCall::ReplacedCall(const char* function, void* replacement) : Entry(FindImport(function)), Before(nullptr)
{
    if (Entry == nullptr) {
        fprintf(stderr, "%s is not called\n", function);
        exit(1);
    }
    Before = *Entry;
    SetEntry(Entry, replacement);
}

ReplacedCall::~ReplacedCall()
{
    SetEntry(Entry, Before);
}

BeepCounter::BeepCounter() : Call("MessageBeep", reinterpret_cast<void*>(NoteBeep))
{
    Beeps = 0;
}

int BeepCounter::Count() const
{
    return Beeps;
}

NoMemoryObjects::NoMemoryObjects() : Call("GlobalAlloc", reinterpret_cast<void*>(RefuseMemory))
{
}

HelpRequests::HelpRequests() : Call("WinHelpA", reinterpret_cast<void*>(NoteHelp))
{
    Help.clear();
}

const std::vector<HelpRequest>& HelpRequests::Seen() const
{
    return Help;
}
