#include "app/selection_commands.h"

#include "app/app_state.h"
#include "app/open_sequence.h"
#include "app/release_file.h"
#include "base/messages.h"
#include "base/text.h"
#include "document/document_state.h"
#include "document/port.h"
#include "files/replace_file.h"
#include "resources/ids.h"
#include "view/selected_text.h"
#include "view/selection.h"

#include <cstring>

namespace {

constexpr std::int32_t ClipboardBytes = 64000;
constexpr std::int32_t SaveBytes = 32000;
constexpr std::int32_t Spare = 3; // behind either: a line end and a terminator

// A memory object, locked while it is filled.
struct TextBuffer {
    MemoryHandle Memory = nullptr;
    char* Bytes = nullptr;
};

bool AllocateBuffer(TextBuffer& buffer, std::int32_t bytes)
{
    buffer.Memory = AllocateMemory(static_cast<std::size_t>(bytes + Spare));
    buffer.Bytes = buffer.Memory != nullptr ? static_cast<char*>(LockMemory(buffer.Memory)) : nullptr;
    return buffer.Bytes != nullptr;
}

void FreeBuffer(TextBuffer& buffer)
{
    if (buffer.Memory != nullptr) {
        UnlockMemory(buffer.Memory);
        FreeMemory(buffer.Memory);
    }
}

// Programs that watch the clipboard hold it for a moment after each change.
bool OpenClipboardPatiently(HWND mainWindow)
{
    constexpr int Tries = 10;
    constexpr DWORD Pause = 10; // milliseconds
    for (int i = 0; i < Tries; ++i) {
        if (OpenClipboard(mainWindow)) {
            return true;
        }
        Sleep(Pause);
    }
    return false;
}

// The clipboard owns the text from then on. False, and the text is freed, when another program does not let go
// of the clipboard.
bool PutOnClipboard(HWND mainWindow, MemoryHandle text)
{
    bool taken = false;
    if (OpenClipboardPatiently(mainWindow)) {
        EmptyClipboard();
        taken = SetClipboardData(CF_TEXT, text) != nullptr;
        CloseClipboard();
    }
    if (!taken) {
        FreeMemory(text);
    }
    return taken;
}

bool WriteSelection(HFILE file, char* buffer)
{
    SelectionWalk walk = StartSelectionWalk();
    Document.ReadShort = false;
    do {
        const auto bytes = static_cast<UINT>(GatherSelection(walk, GatherFor::File, buffer, SaveBytes));
        if (_lwrite(file, buffer, bytes) != bytes) {
            return false;
        }
    } while (!IsOver(walk));
    return !Document.ReadShort;
}

bool SaveInto(const char* path)
{
    const HFILE file = IsReadOnly(path) ? HFILE_ERROR : _lcreat(path, 0);
    if (file == HFILE_ERROR) {
        return false;
    }
    TextBuffer buffer;
    const bool saved = AllocateBuffer(buffer, SaveBytes) && WriteSelection(file, buffer.Bytes);
    FreeBuffer(buffer);
    return _lclose(file) == 0 && saved;
}

// The selection comes out of the very file that it is to replace, so it is written beside it first. What the view
// shows then is the new file.
bool SaveOverCurrentFile(HWND mainWindow, const char* path)
{
    char shown[MaxPathSize];
    CopyText(shown, App.OpenedPath);
    const char* const target = IsSameName(path, shown) ? shown : path;
    char beside[MaxPathSize];
    if (!MakeFileBeside(target, beside)) {
        return false;
    }
    bool replaced = false;
    if (SaveInto(beside)) {
        ReleaseFile();
        replaced = ReplaceWith(target, beside);
    }
    if (!replaced) {
        DeleteFileA(beside);
        TakeFileBack(mainWindow);
        return false;
    }
    OpenNamedFile(mainWindow, shown);
    return true;
}

} // namespace

void CopySelection(HWND mainWindow)
{
    TextBuffer buffer;
    if (!AllocateBuffer(buffer, ClipboardBytes)) {
        FreeBuffer(buffer);
        ReportMessage(mainWindow, IDS_NO_CLIPBOARD);
        return;
    }
    SelectionWalk walk = StartSelectionWalk();
    const std::int32_t used = GatherSelection(walk, GatherFor::Clipboard, buffer.Bytes, ClipboardBytes);
    buffer.Bytes[used] = '\0';
    UnlockMemory(buffer.Memory);
    const MemoryHandle text = ShrinkMemory(buffer.Memory, static_cast<std::size_t>(used + 1));
    if (!IsOver(walk)) {
        ReportMessage(mainWindow, IDS_CLIPBOARD_TRUNCATED);
    }
    if (!PutOnClipboard(mainWindow, text)) {
        ReportMessage(mainWindow, IDS_NO_CLIPBOARD);
    }
}

bool SaveSelection(HWND mainWindow, const char* path)
{
    if (!HasSelection()) {
        return false; // another document has been handed over since the name was asked for
    }
    return IsSameFile(path, App.OpenedPath) ? SaveOverCurrentFile(mainWindow, path) : SaveInto(path);
}
