#include "search/text_history.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;
using History = RecentTexts<11>;

Texts TextsOf(const History& history)
{
    return Texts(history.Entries, history.Entries + history.Count);
}

History Remembered(std::initializer_list<const char*> texts)
{
    History history;
    for (const char* text : texts) {
        RememberText(history, text);
    }
    return history;
}

} // namespace

TEST(TextHistory, IsEmptyAtFirst)
{
    EXPECT_EQ(History().Count, 0);
}

TEST(TextHistory, NewestTextIsTheFirst)
{
    EXPECT_EQ(TextsOf(Remembered({"one"})), Texts{"one"});
    EXPECT_EQ(TextsOf(Remembered({"one", "two", "three"})), (Texts{"three", "two", "one"}));
}

TEST(TextHistory, TextThatIsThereStaysWhereItIs)
{
    EXPECT_EQ(TextsOf(Remembered({"one", "two", "three", "one"})), (Texts{"three", "two", "one"}));
    EXPECT_EQ(TextsOf(Remembered({"one", "two", "three", "two", "three"})), (Texts{"three", "two", "one"}));
}

TEST(TextHistory, TextsAreComparedExactly)
{
    EXPECT_EQ(TextsOf(Remembered({"ff", "FF", "f", "ff "})), (Texts{"ff ", "f", "FF", "ff"}));
}

TEST(TextHistory, HoldsNineTexts)
{
    const History nine = Remembered({"1", "2", "3", "4", "5", "6", "7", "8", "9"});
    EXPECT_EQ(TextsOf(nine), (Texts{"9", "8", "7", "6", "5", "4", "3", "2", "1"}));
}

TEST(TextHistory, TenthTextTakesTheOldestOnesPlace)
{
    History history = Remembered({"1", "2", "3", "4", "5", "6", "7", "8", "9", "10"});
    EXPECT_EQ(TextsOf(history), (Texts{"10", "9", "8", "7", "6", "5", "4", "3", "2"}));
    RememberText(history, "2");
    EXPECT_EQ(history.Count, 9);
    EXPECT_STREQ(history.Entries[8], "2");
    RememberText(history, "1");
    EXPECT_EQ(TextsOf(history), (Texts{"1", "10", "9", "8", "7", "6", "5", "4", "3"}));
}

TEST(TextHistory, EmptyTextIsNotKept)
{
    EXPECT_EQ(TextsOf(Remembered({"", "one", "", "two"})), (Texts{"two", "one"}));
}

TEST(TextHistory, LongestTextIsKeptWholeAndALongerOneCut)
{
    EXPECT_EQ(TextsOf(Remembered({"0123456789"})), Texts{"0123456789"});
    EXPECT_EQ(TextsOf(Remembered({"abcdefghijk", "one"})), (Texts{"one", "abcdefghij"}));
}

TEST(TextHistory, FullTextsOfNineEntriesDoNotTouchEachOther)
{
    History history;
    Texts expected;
    for (char letter = 'a'; letter < 'a' + 20; ++letter) {
        const std::string text(10, letter);
        RememberText(history, text.c_str());
        expected.insert(expected.begin(), text);
    }
    expected.resize(9);
    EXPECT_EQ(TextsOf(history), expected);
}
