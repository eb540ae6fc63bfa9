#include "files/open_filter.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

struct Filter {
    explicit Filter(const std::string& text)
    {
        memset(Bytes, 'x', sizeof Bytes);
        MakeOpenFilter(text.c_str(), Bytes);
    }

    // As a file dialog reads it: texts up to an empty one.
    std::vector<std::string> Texts() const
    {
        std::vector<std::string> texts;
        const char* text = Bytes;
        while (text < Bytes + FilterSize && *text != '\0') {
            texts.push_back(text);
            text += texts.back().size() + 1;
        }
        return texts;
    }

    bool IsZeroFrom(std::size_t start) const
    {
        for (std::size_t i = start; i < FilterSize; ++i) {
            if (Bytes[i] != '\0') {
                return false;
            }
        }
        return true;
    }

    char Bytes[FilterSize];
};

using Texts = std::vector<std::string>;

} // namespace

TEST(OpenFilter, EverySeparatorEndsAText)
{
    const Filter filter("All Files (*.*)|*.*|Text Files (*.TXT)|*.TXT|");
    EXPECT_EQ(filter.Texts(), (Texts{"All Files (*.*)", "*.*", "Text Files (*.TXT)", "*.TXT"}));
}

TEST(OpenFilter, ListIsDoublyTerminated)
{
    const Filter filter("A|*.*|");
    EXPECT_EQ(std::string(filter.Bytes, 7), std::string("A\0*.*\0\0", 7));
    EXPECT_TRUE(filter.IsZeroFrom(5));
}

TEST(OpenFilter, LastCharacterIsTheSeparatorWhateverItIs)
{
    EXPECT_EQ(Filter("A|b;*.a#B;*.b#").Texts(), (Texts{"A|b;*.a", "B;*.b"}));
    EXPECT_EQ(Filter("one two one ").Texts(), (Texts{"one", "two", "one"}));
    EXPECT_EQ(Filter("All\xFF*.*\xFF").Texts(), (Texts{"All", "*.*"}));
}

TEST(OpenFilter, TextThatLacksItsLastSeparatorIsSplitAtItsLastCharacter)
{
    EXPECT_EQ(Filter("All*|*.*").Texts(), (Texts{"All", "|", "."}));
}

TEST(OpenFilter, EmptyTextGivesAnEmptyList)
{
    EXPECT_TRUE(Filter("").IsZeroFrom(0));
}

TEST(OpenFilter, OneCharacterIsItsOwnSeparator)
{
    EXPECT_TRUE(Filter("|").IsZeroFrom(0));
    EXPECT_TRUE(Filter("a").IsZeroFrom(0));
    EXPECT_TRUE(Filter("aaa").IsZeroFrom(0));
}

TEST(OpenFilter, SeparatorsInARowGiveEmptyTexts)
{
    EXPECT_EQ(std::string(Filter("a||b|").Bytes, 6), std::string("a\0\0b\0\0", 6));
}

TEST(OpenFilter, LongestTextsAreKeptWhole)
{
    for (const std::size_t length : {127u, 128u, 258u}) {
        const std::string pattern(length - 3, 'p');
        const Filter filter("A|" + pattern + "|");
        EXPECT_EQ(filter.Texts(), (Texts{"A", pattern})) << length;
        EXPECT_TRUE(filter.IsZeroFrom(length - 1)) << length;
    }
}

TEST(OpenFilter, TextThatIsTooLongIsCutAndStillEnds)
{
    for (const std::size_t length : {259u, 260u, 1000u}) {
        const Filter filter("A|" + std::string(length - 3, 'p') + "|");
        EXPECT_TRUE(filter.IsZeroFrom(FilterSize - 2)) << length;
        EXPECT_EQ(filter.Bytes[1], '|') << length; // the last character that fitted is the separator
    }
}
