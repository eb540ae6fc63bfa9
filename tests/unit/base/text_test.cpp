#include "base/text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string NameOf(const char* path)
{
    return NameBehind(path, DirectoryEnd(path));
}

} // namespace

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

TEST(DirectoryEnd, IsBeforeTheLastBackslash)
{
    EXPECT_EQ(DirectoryEnd("c:\\dir\\a.txt"), 6u);
    EXPECT_EQ(DirectoryEnd("c:\\a.txt"), 2u);
    EXPECT_EQ(DirectoryEnd("dir\\a"), 3u);
    EXPECT_EQ(DirectoryEnd("c:\\dir\\"), 6u);
    EXPECT_EQ(DirectoryEnd("a:b\\c"), 3u);
}

TEST(DirectoryEnd, IsBehindTheLastColon)
{
    EXPECT_EQ(DirectoryEnd("c:a.txt"), 2u);
    EXPECT_EQ(DirectoryEnd("c:"), 2u);
    EXPECT_EQ(DirectoryEnd("c:\\a:b"), 5u);
}

TEST(DirectoryEnd, FirstCharacterIsNotLookedAt)
{
    EXPECT_EQ(DirectoryEnd("\\a"), 0u);
    EXPECT_EQ(DirectoryEnd(":a"), 0u);
    EXPECT_EQ(DirectoryEnd("\\"), 0u);
    EXPECT_EQ(DirectoryEnd("\\\\a"), 1u);
    EXPECT_EQ(DirectoryEnd("x\\a"), 1u);
    EXPECT_EQ(DirectoryEnd("\\:"), 2u);
}

TEST(DirectoryEnd, IsZeroWithoutADirectory)
{
    EXPECT_EQ(DirectoryEnd(""), 0u);
    EXPECT_EQ(DirectoryEnd("a"), 0u);
    EXPECT_EQ(DirectoryEnd("name.txt"), 0u);
    EXPECT_EQ(DirectoryEnd("dir/name"), 0u);
}

TEST(NameBehind, IsWhatFollowsTheDirectory)
{
    EXPECT_EQ(NameOf("c:\\dir\\a.txt"), "a.txt");
    EXPECT_EQ(NameOf("c:a.txt"), "a.txt");
    EXPECT_EQ(NameOf("c:\\a"), "a");
    EXPECT_EQ(NameOf("c:\\dir\\"), "");
    EXPECT_EQ(NameOf("c:"), "");
}

TEST(NameBehind, WithoutADirectoryItIsThePath)
{
    EXPECT_EQ(NameOf("a.txt"), "a.txt");
    EXPECT_EQ(NameOf("\\a"), "\\a");
    EXPECT_EQ(NameOf(""), "");
}

TEST(NameBehind, DropsOneBackslashOnly)
{
    EXPECT_STREQ(NameBehind("c:\\\\a", 2), "\\a");
    EXPECT_STREQ(NameBehind("\\a", 0), "\\a");
}

TEST(NamePart, IsTheNameBehindThePathsDirectory)
{
    EXPECT_STREQ(NamePart("c:\\dir\\a.txt"), "a.txt");
    EXPECT_STREQ(NamePart("c:a.txt"), "a.txt");
    EXPECT_STREQ(NamePart("a.txt"), "a.txt");
    EXPECT_STREQ(NamePart("\\a"), "\\a");
    EXPECT_STREQ(NamePart("c:\\dir\\"), "");
    EXPECT_STREQ(NamePart(""), "");
}

TEST(ExtensionOf, BeginsAtTheLastDotOfTheName)
{
    EXPECT_STREQ(ExtensionOf("c:\\dir\\a.txt"), ".txt");
    EXPECT_STREQ(ExtensionOf("a.b.c"), ".c");
    EXPECT_STREQ(ExtensionOf("c:a.x"), ".x");
    EXPECT_STREQ(ExtensionOf(".profile"), ".profile");
    EXPECT_STREQ(ExtensionOf("a."), ".");
    EXPECT_STREQ(ExtensionOf("\\a.b"), ".b");
}

TEST(ExtensionOf, IsEmptyWithoutADotInTheName)
{
    EXPECT_STREQ(ExtensionOf("name"), "");
    EXPECT_STREQ(ExtensionOf(""), "");
    EXPECT_STREQ(ExtensionOf("c:\\dir.old\\name"), "");
    EXPECT_STREQ(ExtensionOf("c:\\dir.old\\"), "");
    EXPECT_STREQ(ExtensionOf("a.b:name"), "");
}
