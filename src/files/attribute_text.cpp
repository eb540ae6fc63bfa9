#include "files/attribute_text.h"

#include "base/text.h"

void FormatAttributes(std::uint16_t attributes, const AttributeWords& words, char (&text)[AttributeTextSize])
{
    const struct {
        std::uint16_t Bit;
        const char* Word;
    } parts[] = {{1, words.ReadOnly}, {32, words.Archive}, {4, words.System}, {2, words.Hidden}};
    text[0] = '\0';
    for (const auto& part : parts) {
        if ((attributes & part.Bit) != 0) {
            AppendText(text, part.Word);
            AppendText(text, " ");
        }
    }
}
