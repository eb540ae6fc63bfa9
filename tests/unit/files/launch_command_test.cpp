#include "files/launch_command.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

namespace {

// The buffer stands on the heap, so that one byte too many is seen.
struct CommandBuffer {
    char Text[LaunchCommandSize];
};

std::string ToRun(const std::string& path)
{
    const auto buffer = std::make_unique<CommandBuffer>();
    memset(buffer->Text, '#', sizeof buffer->Text);
    RunCommand(path.c_str(), buffer->Text);
    return buffer->Text;
}

std::string ToEdit(const std::string& editor, const std::string& path)
{
    const auto buffer = std::make_unique<CommandBuffer>();
    memset(buffer->Text, '#', sizeof buffer->Text);
    EditCommand(editor.c_str(), path.c_str(), buffer->Text);
    return buffer->Text;
}

// A full path of that many characters ending in end.
std::string PathOf(std::size_t length, const std::string& end)
{
    return "c:\\" + std::string(length - 3 - end.size(), 'p') + end;
}

constexpr std::size_t LongestPath = MaxPathSize - 1;

} // namespace

TEST(RunCommand, IsThePath)
{
    EXPECT_EQ(ToRun("c:\\windows\\calc.exe"), "c:\\windows\\calc.exe");
    EXPECT_EQ(ToRun("calc.exe"), "calc.exe");
    EXPECT_EQ(ToRun("\\\\server\\share\\calc.exe"), "\\\\server\\share\\calc.exe");
}

TEST(RunCommand, PathWithABlankAnywhereIsQuoted)
{
    EXPECT_EQ(ToRun("c:\\program files\\calc.exe"), "\"c:\\program files\\calc.exe\"");
    EXPECT_EQ(ToRun("c:\\my calc.exe"), "\"c:\\my calc.exe\"");
    EXPECT_EQ(ToRun(" calc.exe"), "\" calc.exe\"");
    EXPECT_EQ(ToRun("c:\\a b\\c d\\e f.exe"), "\"c:\\a b\\c d\\e f.exe\"");
}

TEST(RunCommand, PathWithWhatTheCommandInterpreterTakesForItsOwnIsQuoted)
{
    for (const char special : std::string(" &()[]{}^=;!'+,`~%")) {
        const std::string path = std::string("c:\\tools\\one") + special + "two.exe";
        EXPECT_EQ(ToRun(path), "\"" + path + "\"");
        EXPECT_EQ(ToEdit("notepad", path), "notepad \"" + path + "\"");
    }
}

TEST(RunCommand, PathWithoutAnExtensionGetsNoDot)
{
    EXPECT_EQ(ToRun("c:\\tools\\calc"), "c:\\tools\\calc");
    EXPECT_EQ(ToRun("c:\\my tools\\calc"), "\"c:\\my tools\\calc\"");
}

TEST(RunCommand, OtherBytesOfANameAreLeftAlone)
{
    EXPECT_EQ(ToRun("c:\\\xE4\xF6\xFC\\#a@b-$_.exe"), "c:\\\xE4\xF6\xFC\\#a@b-$_.exe");
    EXPECT_EQ(ToRun("c:\\a\xA0z.exe"), "c:\\a\xA0z.exe");
    EXPECT_EQ(ToRun("c:\\\x83\x80 \xFF.exe"), "\"c:\\\x83\x80 \xFF.exe\"");
}

TEST(RunCommand, LongestPathIsWhole)
{
    const std::string plain = PathOf(LongestPath, ".exe");
    EXPECT_EQ(ToRun(plain), plain);
    const std::string blanks = PathOf(LongestPath, " .exe");
    EXPECT_EQ(ToRun(blanks), "\"" + blanks + "\"");
}

TEST(EditCommand, IsTheEditorABlankAndThePath)
{
    EXPECT_EQ(ToEdit("notepad", "c:\\notes\\read.me"), "notepad c:\\notes\\read.me");
}

TEST(EditCommand, PathWithABlankIsQuoted)
{
    EXPECT_EQ(ToEdit("notepad", "c:\\my notes\\read.me"), "notepad \"c:\\my notes\\read.me\"");
    EXPECT_EQ(ToEdit("notepad", "c:\\notes\\read me.txt"), "notepad \"c:\\notes\\read me.txt\"");
}

TEST(EditCommand, PathWithoutAnExtensionEndsInADot)
{
    EXPECT_EQ(ToEdit("notepad", "c:\\notes\\readme"), "notepad c:\\notes\\readme.");
    EXPECT_EQ(ToEdit("notepad", "readme"), "notepad readme.");
    EXPECT_EQ(ToEdit("notepad", "c:readme"), "notepad c:readme.");
}

TEST(EditCommand, ThatDotStandsWithinTheQuotationMarks)
{
    EXPECT_EQ(ToEdit("notepad", "c:\\my notes\\readme"), "notepad \"c:\\my notes\\readme.\"");
    EXPECT_EQ(ToEdit("notepad", "c:\\notes\\read me"), "notepad \"c:\\notes\\read me.\"");
}

TEST(EditCommand, DotInADirectoryIsNoExtension)
{
    EXPECT_EQ(ToEdit("notepad", "c:\\notes.old\\readme"), "notepad c:\\notes.old\\readme.");
    EXPECT_EQ(ToEdit("notepad", "c:\\my notes.old\\readme"), "notepad \"c:\\my notes.old\\readme.\"");
    EXPECT_EQ(ToEdit("notepad", "\\\\server.lan\\share\\readme"), "notepad \\\\server.lan\\share\\readme.");
    EXPECT_EQ(ToEdit("notepad", "c:\\notes.old\\read.me"), "notepad c:\\notes.old\\read.me");
}

TEST(EditCommand, NameWithSeveralDotsHasAnExtension)
{
    EXPECT_EQ(ToEdit("notepad", "c:\\a.b.c"), "notepad c:\\a.b.c");
    EXPECT_EQ(ToEdit("notepad", "c:\\a..b"), "notepad c:\\a..b");
    EXPECT_EQ(ToEdit("notepad", "c:\\.profile"), "notepad c:\\.profile");
}

TEST(EditCommand, NameThatEndsInADotGetsNoOther)
{
    EXPECT_EQ(ToEdit("notepad", "c:\\notes\\readme."), "notepad c:\\notes\\readme.");
    EXPECT_EQ(ToEdit("notepad", "c:\\notes\\readme.."), "notepad c:\\notes\\readme..");
    EXPECT_EQ(ToEdit("notepad", "c:\\my notes\\readme."), "notepad \"c:\\my notes\\readme.\"");
}

TEST(EditCommand, EditorIsTakenAsItStandsWithItsArguments)
{
    EXPECT_EQ(ToEdit("edit /r", "c:\\read.me"), "edit /r c:\\read.me");
    EXPECT_EQ(ToEdit("\"c:\\program files\\edit.exe\" -n", "c:\\read me"),
              "\"c:\\program files\\edit.exe\" -n \"c:\\read me.\"");
    EXPECT_EQ(ToEdit("c:\\program files\\edit.exe", "c:\\read.me"), "c:\\program files\\edit.exe c:\\read.me");
    EXPECT_EQ(ToEdit("edit ", "c:\\read.me"), "edit  c:\\read.me");
}

TEST(EditCommand, BytesOfOtherLanguagesAreLeftAlone)
{
    EXPECT_EQ(ToEdit("\xE9"
                     "dit",
                     "c:\\\xE4\xF6\xFC.\xDF"),
              "\xE9"
              "dit c:\\\xE4\xF6\xFC.\xDF");
    EXPECT_EQ(ToEdit("edit", "c:\\\xE4 \xF6"), "edit \"c:\\\xE4 \xF6.\"");
}

TEST(EditCommand, LongestEditorAndPathAreWhole)
{
    const std::string editor(LongestPath, 'e');
    const std::string plain = PathOf(LongestPath, ".txt");
    EXPECT_EQ(ToEdit(editor, plain), editor + " " + plain);
    const std::string dotted = PathOf(LongestPath, "");
    EXPECT_EQ(ToEdit(editor, dotted), editor + " " + dotted + ".");
    const std::string quoted = PathOf(LongestPath, " txt");
    const std::string longest = ToEdit(editor, quoted);
    EXPECT_EQ(longest, editor + " \"" + quoted + ".\"");
    EXPECT_LT(longest.size(), LaunchCommandSize);
}

TEST(EditCommand, LongerTextsThanThereAreAreCutAtTheEndOfTheBuffer)
{
    const std::string editor(LaunchCommandSize, 'e');
    EXPECT_EQ(ToEdit(editor, "c:\\read me"), editor.substr(1));
    EXPECT_EQ(ToRun(std::string(LaunchCommandSize, 'r')).size(), LaunchCommandSize - 1);
}
