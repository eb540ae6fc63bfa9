// Texts of the file information dialog.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>

// "Sat 21 Nov, 2026" and "at 07:05:00 PM", in English whatever the user's language.
constexpr std::size_t LongDateSize = 21;
constexpr std::size_t LongTimeSize = 21;
void FormatLongDate(const std::tm& time, char (&text)[LongDateSize]);
void FormatLongTime(const std::tm& time, char (&text)[LongTimeSize]);

// "1,234 Bytes (1K)".
constexpr std::size_t FileSizeTextSize = 48;
void FormatFileSize(std::int32_t bytes, char (&text)[FileSizeTextSize]);
