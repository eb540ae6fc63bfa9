#include "print/print_piece.h"

#include <algorithm>

namespace {

bool Fits(const TextSpan& text, std::int32_t length, std::int32_t width, const TextMeasure& measure)
{
    return measure.Width(measure.Context, text.Text, length) <= width;
}

std::int32_t SkipBlanks(const TextSpan& text, std::int32_t at)
{
    while (at < text.Length && text.Text[at] == ' ') {
        ++at;
    }
    return at;
}

std::int32_t WordEnd(const TextSpan& text, std::int32_t at)
{
    at = SkipBlanks(text, at);
    while (at < text.Length && text.Text[at] != ' ') {
        ++at;
    }
    return at;
}

// The end of the last word that fits; 0 when none does.
std::int32_t LastFittingWord(const TextSpan& text, std::int32_t width, const TextMeasure& measure)
{
    std::int32_t fitting = 0;
    std::int32_t end = WordEnd(text, 0);
    while (end > fitting && Fits(text, end, width, measure)) {
        fitting = end;
        end = WordEnd(text, end);
    }
    return fitting;
}

std::int32_t CutWord(const TextSpan& text, std::int32_t width, const TextMeasure& measure)
{
    std::int32_t copied = 0;
    while (copied + 1 < text.Length && Fits(text, copied + 1, width, measure)) {
        ++copied;
    }
    return std::max(copied - 1, 1);
}

} // namespace

TextSpan NextPrintPiece(TextSpan& rest, std::int32_t width, bool wrap, const TextMeasure& measure)
{
    const TextSpan whole = rest;
    if (!wrap || whole.Length == 0 || Fits(whole, whole.Length, width, measure)) {
        rest = {whole.Text + whole.Length, 0};
        return whole;
    }
    std::int32_t length = LastFittingWord(whole, width, measure);
    if (length == 0) {
        length = CutWord(whole, width, measure);
    }
    const std::int32_t next = SkipBlanks(whole, length);
    rest = {whole.Text + next, whole.Length - next};
    return {whole.Text, length};
}
