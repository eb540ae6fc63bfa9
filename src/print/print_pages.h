// The pages of a job, drawn onto the printer. Both end the document, unless an error did; the job's state says so.
#pragma once

#include <cstdint>
#include <windows.h>

// Prints lines first to last, from 1; all lines when first is 0. font is the body's, nullptr for the printer's own.
void PrintText(HDC printer, HFONT font, std::int32_t first, std::int32_t last);

// The same with the rows of the dump.
void PrintHex(HDC printer, HFONT font, std::int32_t first, std::int32_t last);
