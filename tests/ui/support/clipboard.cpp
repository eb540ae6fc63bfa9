#include "support/clipboard.h"

#include "support/wait.h"

#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <windows.h>

const char NoClipboardText[] = "(no text)";

namespace {

bool Open()
{
    const bool open = WaitUntil([] { return OpenClipboard(nullptr) != FALSE; });
    EXPECT_TRUE(open) << "the clipboard stays with another program, error " << GetLastError();
    return open;
}

// Hands over the memory that holds the text, if there is any.
void WithText(const std::function<void(const char* bytes, std::size_t count)>& use)
{
    if (!Open()) {
        return;
    }
    const HANDLE memory = IsClipboardFormatAvailable(CF_TEXT) ? GetClipboardData(CF_TEXT) : nullptr;
    if (const auto* const bytes = static_cast<const char*>(memory != nullptr ? GlobalLock(memory) : nullptr)) {
        use(bytes, GlobalSize(memory));
        GlobalUnlock(memory);
    }
    CloseClipboard();
}

} // namespace

std::string ClipboardText()
{
    std::string text = NoClipboardText;
    WithText([&](const char* bytes, std::size_t count) { text.assign(bytes, strnlen(bytes, count)); });
    return text;
}

std::size_t ClipboardBytes()
{
    std::size_t size = 0;
    WithText([&](const char*, std::size_t count) { size = count; });
    return size;
}

void PutTextOnClipboard(const std::string& text)
{
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    ASSERT_NE(memory, nullptr);
    memcpy(GlobalLock(memory), text.c_str(), text.size() + 1);
    GlobalUnlock(memory);
    if (!Open()) {
        GlobalFree(memory);
        return;
    }
    EXPECT_TRUE(EmptyClipboard());
    EXPECT_NE(SetClipboardData(CF_TEXT, memory), nullptr) << "error " << GetLastError();
    CloseClipboard();
}

void EmptyTheClipboard()
{
    if (Open()) {
        EXPECT_TRUE(EmptyClipboard());
        CloseClipboard();
    }
}

bool WaitForFreeClipboard()
{
    // One that looks at what has been put there comes a moment later.
    constexpr int StableLooks = 12;
    int looks = 0;
    return WaitUntil([&] {
        looks = GetOpenClipboardWindow() == nullptr ? looks + 1 : 0;
        return looks >= StableLooks;
    });
}

BusyClipboard::BusyClipboard()
{
    Open();
}

BusyClipboard::~BusyClipboard()
{
    CloseClipboard();
}
