#include "print/margin.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr std::int32_t Resolution = 600;

std::int32_t Inches(const std::string& text)
{
    return MarginToDevice(text.c_str(), Resolution, true);
}

std::int32_t Centimetres(const std::string& text)
{
    return MarginToDevice(text.c_str(), Resolution, false);
}

// By the rule for numbers of a few digits.
std::int32_t ByTheRule(const std::string& text, std::int32_t perUnit)
{
    const std::size_t point = text.find('.');
    if (text.find_first_not_of("0123456789.") != std::string::npos || point != text.rfind('.')) {
        return NoMargin;
    }
    std::int64_t number = 0;
    std::int64_t divisor = 1;
    for (std::size_t i = 0; i < text.size(); ++i) {
        number = i == point ? number : number * 10 + (text[i] - '0');
        divisor *= i > point ? 10 : 1;
    }
    return static_cast<std::int32_t>(Resolution * (number * 100 / divisor) / perUnit);
}

// Every text of up to as many characters from alphabet.
template <typename Check>
void ForEveryText(const std::string& alphabet, std::size_t longest, const std::string& text, Check check)
{
    check(text);
    if (text.size() < longest) {
        for (const char next : alphabet) {
            ForEveryText(alphabet, longest, text + next, check);
        }
    }
}

} // namespace

TEST(Margin, IsInInches)
{
    EXPECT_EQ(Inches("0.5"), 300);
    EXPECT_EQ(Inches("1"), 600);
    EXPECT_EQ(Inches("12.34"), 7404);
}

TEST(Margin, IsInCentimetresElsewhere)
{
    EXPECT_EQ(Centimetres("2.5"), 590);
    EXPECT_EQ(Centimetres("1.25"), 295);
    EXPECT_EQ(Centimetres("2.54"), 600);
    EXPECT_EQ(Centimetres("10"), 2362);
}

TEST(Margin, FollowsTheResolution)
{
    EXPECT_EQ(MarginToDevice("0.5", 300, true), 150);
    EXPECT_EQ(MarginToDevice("2.5", 300, false), 295);
    EXPECT_EQ(MarginToDevice("1", 96, true), 96);
    EXPECT_EQ(MarginToDevice("1", 0, true), 0);
}

TEST(Margin, EmptyTextIsZero)
{
    EXPECT_EQ(Inches(""), 0);
    EXPECT_EQ(Centimetres(""), 0);
}

TEST(Margin, ZeroIsZero)
{
    EXPECT_EQ(Inches("0"), 0);
    EXPECT_EQ(Inches("0.0"), 0);
    EXPECT_EQ(Centimetres("00.00"), 0);
}

TEST(Margin, PointMayStandAnywhere)
{
    EXPECT_EQ(Inches(".5"), 300);
    EXPECT_EQ(Inches("5."), 3000);
    EXPECT_EQ(Inches("."), 0);
}

TEST(Margin, LeadingZerosDoNotCount)
{
    EXPECT_EQ(Inches("0000000000000000000000000000000000000001"), 600);
    EXPECT_EQ(Inches("0.05"), 30);
}

TEST(Margin, OneDecimalIsTenths)
{
    EXPECT_EQ(Inches("0.1"), 60);
    EXPECT_EQ(Inches("0.10"), 60);
    EXPECT_EQ(Inches("0.01"), 6);
}

TEST(Margin, FurtherDecimalsAreCutNotRounded)
{
    EXPECT_EQ(Inches("0.125"), Inches("0.12"));
    EXPECT_EQ(Inches("0.129999999999999999999999999999"), 72);
    EXPECT_EQ(Inches("0.009"), 0);
    EXPECT_EQ(Centimetres("0.129"), Centimetres("0.12"));
}

TEST(Margin, DecimalsAreCutBeforeUnitsBecomeDeviceUnits)
{
    EXPECT_EQ(Inches("0.125"), 72);      // not 75
    EXPECT_EQ(Centimetres("0.125"), 28); // not 29
}

TEST(Margin, DeviceUnitsAreCutNotRounded)
{
    EXPECT_EQ(MarginToDevice("0.33", 96, true), 31); // 31.68
    EXPECT_EQ(MarginToDevice("0.01", 99, true), 0);
    EXPECT_EQ(MarginToDevice("0.01", 100, true), 1);
    EXPECT_EQ(MarginToDevice("0.01", 253, false), 0);
    EXPECT_EQ(MarginToDevice("0.01", 254, false), 1);
}

TEST(Margin, SecondPointIsRefused)
{
    for (const char* text : {"1.2.5", "..", "1..", ".5.", "1.25.", "1.250."}) {
        EXPECT_EQ(Inches(text), NoMargin) << text;
    }
}

TEST(Margin, AnyOtherCharacterIsRefused)
{
    for (int byte = 1; byte < 256; ++byte) {
        const char character = static_cast<char>(byte);
        if (character != '.' && (character < '0' || character > '9')) {
            const std::string other(1, character);
            EXPECT_EQ(Inches(other), NoMargin) << byte;
            EXPECT_EQ(Inches(other + "1"), NoMargin) << byte;
            EXPECT_EQ(Inches("1" + other), NoMargin) << byte;
            EXPECT_EQ(Centimetres("1.25" + other), NoMargin) << byte;
            EXPECT_EQ(Centimetres("1.259" + other), NoMargin) << byte;
        }
    }
}

TEST(Margin, SignsAndBlanksAreRefused)
{
    for (const char* text : {"-1", "+1", "1 ", " 1", " ", "-", "1-", "0,5", "1in", "0x1"}) {
        EXPECT_EQ(Inches(text), NoMargin) << text;
        EXPECT_EQ(Centimetres(text), NoMargin) << text;
    }
}

TEST(Margin, EveryShortTextFollowsTheRule)
{
    ForEveryText("0159.- ", 4, "", [](const std::string& text) {
        ASSERT_EQ(Inches(text), ByTheRule(text, 100)) << text;
        ASSERT_EQ(Centimetres(text), ByTheRule(text, 254)) << text;
    });
}

TEST(Margin, LargestThatCanBeTypedIsExact)
{
    EXPECT_EQ(Inches("99999"), 59999400);
    EXPECT_EQ(Inches("999.9"), 599940);
    EXPECT_EQ(Centimetres("99999"), 23621811);
}

TEST(Margin, OverlongNumberIsLargerThanAnyPaperAndDoesNotOverflow)
{
    const std::string digits(100, '9');
    for (const std::string& text : {digits, digits + ".", digits + ".5", digits + "." + digits, "1" + digits}) {
        EXPECT_GT(Inches(text), 10000000) << text;
        EXPECT_GT(Centimetres(text), 10000000) << text;
        EXPECT_EQ(Inches(text + "x"), NoMargin) << text;
        EXPECT_EQ(Inches("." + text + "."), NoMargin) << text;
    }
}

TEST(Margin, IsBoundedAtAnAbsurdResolution)
{
    EXPECT_EQ(MarginToDevice("99999", INT32_MAX, true), INT32_MAX);
    EXPECT_EQ(MarginToDevice("1", INT32_MAX, true), INT32_MAX);
    EXPECT_EQ(MarginToDevice("1.01", INT32_MAX, true), INT32_MAX);
    EXPECT_EQ(MarginToDevice("1", INT32_MIN, true), 0);
    EXPECT_EQ(MarginToDevice(std::string(100, '9').c_str(), INT32_MAX, false), INT32_MAX);
}

TEST(MarginsFitPage, LeavesTwentyUnitsAtLeast)
{
    EXPECT_TRUE(MarginsFitPage(0, 0, 20));
    EXPECT_FALSE(MarginsFitPage(0, 0, 19));
    EXPECT_TRUE(MarginsFitPage(3000, 3380, 6400));
    EXPECT_FALSE(MarginsFitPage(3001, 3380, 6400));
    EXPECT_FALSE(MarginsFitPage(3000, 3381, 6400));
}

TEST(MarginsFitPage, EitherMarginMayTakeItAll)
{
    EXPECT_TRUE(MarginsFitPage(6380, 0, 6400));
    EXPECT_TRUE(MarginsFitPage(0, 6380, 6400));
    EXPECT_FALSE(MarginsFitPage(6381, 0, 6400));
    EXPECT_FALSE(MarginsFitPage(0, 6381, 6400));
}

TEST(MarginsFitPage, AbsurdMarginsDoNotOverflow)
{
    EXPECT_FALSE(MarginsFitPage(INT32_MAX, INT32_MAX, 6400));
    EXPECT_FALSE(MarginsFitPage(INT32_MAX, INT32_MAX, INT32_MAX));
    EXPECT_FALSE(MarginsFitPage(INT32_MAX, 1, INT32_MAX));
    EXPECT_FALSE(MarginsFitPage(0, 0, INT32_MIN));
    EXPECT_TRUE(MarginsFitPage(INT32_MAX - 20, 0, INT32_MAX));
}
