// Texts of the string table in fixed buffers.
#pragma once

#include <cstddef>
#include <windows.h>

// The string, cut to the buffer; empty when there is none of that number.
template <std::size_t Size> void LoadText(UINT id, char (&text)[Size])
{
    text[0] = '\0';
    LoadStringA(GetModuleHandleA(nullptr), id, text, Size);
}
