#include "document/version_block.h"

#include <cstdint>
#include <cstdio>

namespace {

// One element of the block: length, length of its value, kind (16 bits each), a zero-terminated UTF-16 key,
// then at the next multiples of 4 its value and the elements below it.
struct Element {
    std::size_t Key; // offsets in the block
    std::size_t Value;
    std::size_t Children;
    std::size_t End;
    bool HasValue;
};

constexpr std::size_t ElementHead = 6;

constexpr std::size_t Aligned(std::size_t offset)
{
    return (offset + 3) / 4 * 4;
}

// The offset behind the terminator of the text at offset, or end when it has none before that.
std::size_t BehindText(ByteSpan block, std::size_t offset, std::size_t end)
{
    while (offset + 2 <= end) {
        offset += 2;
        if (ReadU16(block, offset - 2) == 0) {
            return offset;
        }
    }
    return end;
}

// The element at offset, cut to what encloses it; false when there is none.
bool ReadElement(ByteSpan block, std::size_t offset, std::size_t end, Element& element)
{
    if (offset > end || end - offset < ElementHead) {
        return false;
    }
    const std::size_t length = ReadU16(block, offset);
    if (length < ElementHead) {
        return false;
    }
    element.End = length < end - offset ? offset + length : end;
    element.Key = offset + ElementHead;
    element.Value = Aligned(BehindText(block, element.Key, element.End));
    element.HasValue = ReadU16(block, offset + 2) != 0;
    const bool isText = ReadU16(block, offset + 4) == 1;
    const std::size_t valueBytes = ReadU16(block, offset + 2) * std::size_t{isText ? 2u : 1u};
    element.Children = Aligned(element.Value + valueBytes);
    return true;
}

char16_t Folded(char16_t letter)
{
    return letter >= u'a' && letter <= u'z' ? static_cast<char16_t>(letter - u'a' + u'A') : letter;
}

// Whether the element's key is name, in whatever case.
bool HasKey(ByteSpan block, const Element& element, const char* name)
{
    for (std::size_t at = element.Key; at + 2 <= element.End; at += 2, ++name) {
        const char16_t letter = ReadU16(block, at);
        if (Folded(letter) != Folded(static_cast<unsigned char>(*name))) {
            return false;
        }
        if (letter == 0) {
            return true;
        }
    }
    return false;
}

bool FindChild(ByteSpan block, const Element& parent, const char* key, Element& child)
{
    std::size_t offset = parent.Children;
    while (ReadElement(block, offset, parent.End, child)) {
        if (HasKey(block, child, key)) {
            return true;
        }
        offset = Aligned(child.End);
    }
    return false;
}

bool FindRoot(ByteSpan block, Element& root)
{
    return ReadElement(block, 0, block.size(), root);
}

bool FindTranslation(ByteSpan block, const Element& root, std::uint32_t& translation)
{
    Element variables;
    Element found;
    if (!FindChild(block, root, "VarFileInfo", variables) || !FindChild(block, variables, "Translation", found) ||
        found.Value > found.End || found.End - found.Value < 4) {
        return false;
    }
    translation = ReadU32(block, found.Value);
    return true;
}

constexpr std::size_t LanguageKeySize = 9;

void FormatLanguageKey(std::uint32_t value, char (&key)[LanguageKeySize])
{
    snprintf(key, sizeof key, "%08lx", static_cast<unsigned long>(value));
}

bool FindString(ByteSpan block, const Element& root, const char* languageKey, const char* name, Element& text)
{
    Element strings;
    Element table;
    return FindChild(block, root, "StringFileInfo", strings) && FindChild(block, strings, languageKey, table) &&
           FindChild(block, table, name, text);
}

void CopyValue(ByteSpan block, const Element& text, char16_t* destination, std::size_t size)
{
    std::size_t length = 0;
    for (std::size_t at = text.Value; text.HasValue && at + 2 <= text.End && length < size - 1; at += 2, ++length) {
        destination[length] = ReadU16(block, at);
        if (destination[length] == 0) {
            return;
        }
    }
    destination[length] = 0;
}

} // namespace

void ReadVersionTexts(ByteSpan block, VersionTexts& texts)
{
    texts = VersionTexts{};
    Element root;
    if (!FindRoot(block, root)) {
        return;
    }
    char language[LanguageKeySize] = "040904E4";
    std::uint32_t translation = 0;
    const bool translated = FindTranslation(block, root, translation);
    if (translated) {
        FormatLanguageKey(translation, language); // as it is stored: the language in the low half
    }
    Element text;
    bool found = FindString(block, root, language, "FileDescription", text);
    if (!found && translated) {
        FormatLanguageKey((translation << 16) | (translation >> 16), language);
        found = FindString(block, root, language, "FileDescription", text);
    }
    if (found) {
        CopyValue(block, text, texts.FileDescription, std::size(texts.FileDescription));
    }
    if (FindString(block, root, language, "FileVersion", text)) {
        CopyValue(block, text, texts.FileVersion, std::size(texts.FileVersion));
    }
    if (FindString(block, root, language, "CompanyName", text)) {
        CopyValue(block, text, texts.CompanyName, std::size(texts.CompanyName));
    }
}
