#include "view/translate.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

struct ByteRun {
    int First;
    const char* Shown;
};

// Every byte that does not stand for itself.
constexpr ByteRun Runs[] = {
    {0x40, " "},         {0x4A, "\xA2"},       {0x4B, "."},        {0x4C, "<"},         {0x4D, "("},
    {0x4E, "+"},         {0x50, "&"},          {0x5A, "!"},        {0x5B, "$"},         {0x5C, "*"},
    {0x5D, ")"},         {0x5E, ";"},          {0x60, "-"},        {0x61, "/"},         {0x6B, ","},
    {0x6D, "_"},         {0x6F, "?"},          {0x7B, "#"},        {0x7D, "'"},         {0x7F, "\""},
    {0x81, "abcdefghi"}, {0x91, "jklmnopqr"},  {0xA2, "stuvwxyz"}, {0xAD, "["},         {0xBD, "]"},
    {0xC0, "{"},         {0xC1, "ABCDEFGHI"},  {0xD0, "}"},        {0xD1, "JKLMNOPQR"}, {0xE0, "\\"},
    {0xE2, "STUVWXYZ"},  {0xF0, "0123456789"}, {0x6A, "|"},        {0x6C, "%"},         {0x6E, ">"},
    {0x7A, ":"},         {0x7C, "@"},
};

} // namespace

TEST(Ebcdic, EveryByteIsShownAsTheTableSays)
{
    std::uint8_t expected[256];
    for (int byte = 0; byte < 256; ++byte) {
        expected[byte] = static_cast<std::uint8_t>(byte);
    }
    for (const ByteRun& run : Runs) {
        for (std::size_t i = 0; i < strlen(run.Shown); ++i) {
            expected[static_cast<std::size_t>(run.First) + i] = static_cast<std::uint8_t>(run.Shown[i]);
        }
    }
    for (int byte = 0; byte < 256; ++byte) {
        EXPECT_EQ(EbcdicToAscii(static_cast<std::uint8_t>(byte)), expected[byte]) << byte;
    }
}

TEST(Ebcdic, PartialTableLeavesOtherBytesAlone)
{
    for (const int byte : {0x00, 0x3F, 0x4F, 0x5F, 0x80, 0x8A, 0x90, 0x9A, 0xA1, 0xE1, 0xFF}) {
        EXPECT_EQ(EbcdicToAscii(static_cast<std::uint8_t>(byte)), byte);
    }
}

TEST(Ebcdic, TranslatesAStringInPlace)
{
    char text[] = "\xC8\x85\x93\x93\x96\x40\xE6\x96\x99\x93\x84";
    EbcdicToAscii(text);
    EXPECT_STREQ(text, "Hello World");
}

TEST(Ebcdic, StopsAtTheFirstZeroByte)
{
    char text[] = "\xC1\0\xC1";
    EbcdicToAscii(text);
    EXPECT_EQ(text[0], 'A');
    EXPECT_EQ(text[2], '\xC1');
    char empty[] = "\0\xC1";
    EbcdicToAscii(empty);
    EXPECT_EQ(empty[1], '\xC1');
}
