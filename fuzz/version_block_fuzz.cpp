// The texts of a version resource.
//
// Input: the version block.
#include "fuzz_input.h"

#include "document/version_block.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

using Block = std::vector<std::uint8_t>;

template <std::size_t Size> std::size_t LengthOf(const char16_t (&text)[Size])
{
    std::size_t length = 0;
    while (length < Size && text[length] != 0) {
        ++length;
    }
    return length;
}

// A text is copied, not made: it stands in the block as it is, at an even distance from the block's start.
template <std::size_t Size> void CheckText(const Block& block, const char16_t (&text)[Size])
{
    const std::size_t length = LengthOf(text);
    Require(length < Size, "the text ends");
    bool found = length == 0;
    for (std::size_t at = 0; !found && at + length * 2 <= block.size(); at += 4) {
        found = memcmp(block.data() + at, text, length * 2) == 0;
    }
    Require(found, "the text stands in the block, where values stand");
}

bool AreEqual(const VersionTexts& a, const VersionTexts& b)
{
    return memcmp(&a, &b, sizeof a) == 0;
}

VersionTexts Read(const Block& block)
{
    VersionTexts texts;
    // What was there before must not matter.
    memset(static_cast<void*>(&texts), 0x55, sizeof texts);
    ReadVersionTexts(block, texts);
    return texts;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Block block(data, data + size);
    const VersionTexts texts = Read(block);
    CheckText(block, texts.FileDescription);
    CheckText(block, texts.FileVersion);
    CheckText(block, texts.CompanyName);

    // What stands behind the block's own length is not looked at.
    if (size >= 2) {
        const std::size_t length = std::min(size, data[0] | static_cast<std::size_t>(data[1]) << 8);
        Require(AreEqual(texts, Read(Block(data, data + length))), "only what the block's length covers counts");
    }
    return 0;
}
