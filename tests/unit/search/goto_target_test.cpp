#include "search/goto_target.h"

#include "document/document_state.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

class GotoTarget : public testing::Test {
protected:
    void SetUp() override
    {
        Document = DocumentState{};
        Document.LineCount = 1000;
        Document.FileSize = 1000;
    }

    void TearDown() override { Document = DocumentState{}; }

    // The top line; -1 when there is no such offset.
    static std::int32_t Line(const char* text) { return Target(text, false); }
    static std::int32_t Row(const char* text) { return Target(text, true); }

private:
    static std::int32_t Target(const char* text, bool hexMode)
    {
        std::int32_t topLine = -99;
        return FindGotoTarget(text, hexMode, topLine) ? topLine : -1;
    }
};

} // namespace

TEST_F(GotoTarget, LineNumberIsThatOfTheTopLine)
{
    EXPECT_EQ(Line("1"), 0);
    EXPECT_EQ(Line("2"), 1);
    EXPECT_EQ(Line("500"), 499);
    EXPECT_EQ(Line("1000"), 999);
    EXPECT_EQ(Line("0010"), 9);
}

TEST_F(GotoTarget, LineBeforeTheFirstIsTheFirst)
{
    EXPECT_EQ(Line("0"), 0);
    EXPECT_EQ(Line("-1"), 0);
    EXPECT_EQ(Line("-999999999"), 0);
}

TEST_F(GotoTarget, LineBehindTheLastIsTheLast)
{
    EXPECT_EQ(Line("1001"), 999);
    EXPECT_EQ(Line("2147483648"), 999);
    EXPECT_EQ(Line("4294967297"), 999);
    EXPECT_EQ(Line("9999999999"), 999);
    EXPECT_EQ(Line("99999999999999999999999999"), 999);
    Document.LineCount = 1;
    EXPECT_EQ(Line("2"), 0);
    EXPECT_EQ(Line("1"), 0);
}

TEST_F(GotoTarget, WithoutLinesEveryLineIsTheFirst)
{
    Document.LineCount = 0;
    EXPECT_EQ(Line("0"), 0);
    EXPECT_EQ(Line("7"), 0);
    EXPECT_EQ(Line("-7"), 0);
}

TEST_F(GotoTarget, LineNumberEndsAtTheFirstCharacterThatIsNoDigit)
{
    EXPECT_EQ(Line("12abc"), 11);
    EXPECT_EQ(Line("7 8"), 6);
    EXPECT_EQ(Line("1,000"), 0);
    EXPECT_EQ(Line("0x10"), 0);
    EXPECT_EQ(Line("2F"), 1);
}

TEST_F(GotoTarget, TextWithoutANumberIsLineOne)
{
    EXPECT_EQ(Line(""), 0);
    EXPECT_EQ(Line("abc"), 0);
    EXPECT_EQ(Line("   "), 0);
    EXPECT_EQ(Line("-"), 0);
}

TEST_F(GotoTarget, LineNumberMayHaveBlanksAndASignInFront)
{
    EXPECT_EQ(Line("  20"), 19);
    EXPECT_EQ(Line("+20"), 19);
}

TEST_F(GotoTarget, OffsetIsHexadecimalAndItsRowBecomesTheTop)
{
    EXPECT_EQ(Row("0"), 0);
    EXPECT_EQ(Row("F"), 0);
    EXPECT_EQ(Row("10"), 1);
    EXPECT_EQ(Row("1f"), 1);
    EXPECT_EQ(Row("20"), 2);
    EXPECT_EQ(Row("3aB"), 58);
    EXPECT_EQ(Row("0x20"), 2);
}

TEST_F(GotoTarget, OffsetJustBehindTheLastByteIsAccepted)
{
    EXPECT_EQ(Row("3E7"), 62); // 999
    EXPECT_EQ(Row("3E8"), 62); // 1000
    EXPECT_EQ(Row("3E9"), -1);
    Document.FileSize = 16;
    EXPECT_EQ(Row("10"), 1);
    EXPECT_EQ(Row("11"), -1);
    Document.FileSize = 0;
    EXPECT_EQ(Row("0"), 0);
    EXPECT_EQ(Row("1"), -1);
}

TEST_F(GotoTarget, NegativeOffsetIsRefused)
{
    EXPECT_EQ(Row("-1"), -1);
    EXPECT_EQ(Row("-10"), -1);
    EXPECT_EQ(Row("-80000000"), -1);
    EXPECT_EQ(Row("-0"), 0);
}

TEST_F(GotoTarget, OffsetOfManyDigitsIsRefused)
{
    EXPECT_EQ(Row("80000000"), -1);
    EXPECT_EQ(Row("FFFFFFFF"), -1);
    EXPECT_EQ(Row("100000000"), -1);
    EXPECT_EQ(Row("FFFFFFFFFF"), -1);
    EXPECT_EQ(Row("FFFFFFFFFFFFFFFFFFFFFFFF"), -1);
}

TEST_F(GotoTarget, LargestFileHasItsLastRow)
{
    Document.FileSize = INT32_MAX;
    EXPECT_EQ(Row("7FFFFFFF"), INT32_MAX / 16);
    EXPECT_EQ(Row("80000000"), -1);
    Document.LineCount = INT32_MAX;
    EXPECT_EQ(Line("2147483647"), INT32_MAX - 1);
    EXPECT_EQ(Line("9999999999"), INT32_MAX - 1);
}

TEST_F(GotoTarget, OffsetEndsAtTheFirstCharacterThatIsNoDigit)
{
    EXPECT_EQ(Row("20g"), 2);
    EXPECT_EQ(Row("20h"), 2);
    EXPECT_EQ(Row("30 40"), 3);
}

TEST_F(GotoTarget, TextWithoutANumberIsOffsetZero)
{
    EXPECT_EQ(Row(""), 0);
    EXPECT_EQ(Row("xyz"), 0);
    EXPECT_EQ(Row("-"), 0);
}

TEST_F(GotoTarget, LinesDoNotCountInHexModeNorBytesInTextMode)
{
    Document.LineCount = 3;
    EXPECT_EQ(Row("3E8"), 62);
    Document.LineCount = 1000;
    Document.FileSize = 3;
    EXPECT_EQ(Line("900"), 899);
}

TEST_F(GotoTarget, NothingWasEnteredAtFirst)
{
    const GotoState state;
    EXPECT_STREQ(state.GotoText, "");
    EXPECT_EQ(state.Lines.Count, 0);
    EXPECT_EQ(state.Offsets.Count, 0);
    EXPECT_EQ(sizeof state.GotoText, 10u + 1);
}
