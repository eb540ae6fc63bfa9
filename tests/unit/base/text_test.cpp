#include "base/text.h"

#include <gtest/gtest.h>

#include <string>

TEST(CopyText, CopiesWhatFits)
{
    char text[8] = "xxxxxxx";
    CopyText(text, "abc");
    EXPECT_STREQ(text, "abc");
    CopyText(text, "");
    EXPECT_STREQ(text, "");
    CopyText(text, "1234567");
    EXPECT_STREQ(text, "1234567");
}

TEST(CopyText, CutsWhatDoesNotFit)
{
    char text[8];
    CopyText(text, "12345678");
    EXPECT_STREQ(text, "1234567");
    char one[1] = {'x'};
    CopyText(one, "abc");
    EXPECT_STREQ(one, "");
}

TEST(AppendText, AppendsWhatFits)
{
    char text[8] = "abc";
    AppendText(text, "de");
    EXPECT_STREQ(text, "abcde");
    AppendText(text, "");
    EXPECT_STREQ(text, "abcde");
}

TEST(AppendText, CutsWhatDoesNotFit)
{
    char text[8] = "abcde";
    AppendText(text, "fghij");
    EXPECT_STREQ(text, "abcdefg");
    AppendText(text, "x");
    EXPECT_STREQ(text, "abcdefg");
}
