// The file types that the Open dialog offers.
#pragma once

#include <cstddef>

// Room for a filter text of 128 characters, or the standard one, and the zero byte that ends the list.
constexpr std::size_t FilterSize = 260;

// Turns a filter text ("All Files (*.*)|*.*|") into the zero-separated, doubly terminated list that file
// dialogs take. The text's last character is its separator.
void MakeOpenFilter(const char* text, char (&filter)[FilterSize]);
