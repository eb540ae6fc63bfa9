#include "view/translate.h"

#include <array>

namespace {

struct Mapping {
    std::uint8_t First; // EBCDIC byte, with as many following ones as Shown has characters
    const char* Shown;
};

constexpr Mapping Mappings[] = {
    {0x40, " "},        {0x4A, "\xA2.<(+"}, {0x50, "&"},          {0x5A, "!$*);"},      {0x60, "-/"},
    {0x6A, "|,%_>?"},   {0x7A, ":#@'"},     {0x7F, "\""},         {0x81, "abcdefghi"},  {0x91, "jklmnopqr"},
    {0xA2, "stuvwxyz"}, {0xAD, "["},        {0xBD, "]"},          {0xC0, "{ABCDEFGHI"}, {0xD0, "}JKLMNOPQR"},
    {0xE0, "\\"},       {0xE2, "STUVWXYZ"}, {0xF0, "0123456789"},
};

constexpr std::array<std::uint8_t, 256> MakeTable()
{
    std::array<std::uint8_t, 256> table{};
    for (unsigned byte = 0; byte < table.size(); ++byte) {
        table[byte] = static_cast<std::uint8_t>(byte);
    }
    for (const Mapping& mapping : Mappings) {
        for (unsigned i = 0; mapping.Shown[i] != '\0'; ++i) {
            table[mapping.First + i] = static_cast<std::uint8_t>(mapping.Shown[i]);
        }
    }
    return table;
}

constexpr std::array<std::uint8_t, 256> Table = MakeTable();

} // namespace

std::uint8_t EbcdicToAscii(std::uint8_t byte)
{
    return Table[byte];
}

void EbcdicToAscii(char* text)
{
    for (; *text != '\0'; ++text) {
        *text = static_cast<char>(Table[static_cast<std::uint8_t>(*text)]);
    }
}
