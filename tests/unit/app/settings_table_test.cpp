#include "app/settings_table.h"

#include "document/document_state.h"
#include "print/print_settings.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

struct ExpectedRow {
    const char* Key;
    std::int32_t Default;
};

// The order in which settings files hold the keys.
constexpr ExpectedRow Expected[SettingRowCount] = {
    {"Fcolour", 7},      {"Bcolour", 1},      {"RlFcolour", 0},    {"RlBcolour", 6},    {"MkFcolour", 0},
    {"MkBcolour", 6},    {"StFcolour", 0},    {"StBcolour", 8},    {"LkFcolour", 7},    {"LkBcolour", 9},
    {"Ptabs", 0},        {"Ruler", 0},        {"FontSize", -13},   {"FontWeight", 400}, {"FontItalic", 0},
    {"UseHeadFont", 0},  {"HdFontSize", 0},   {"HdFontWeight", 0}, {"HdFontItalic", 0}, {"UseBodyFont", 0},
    {"BdFontSize", 0},   {"BdFontWeight", 0}, {"BdFontItalic", 0}, {"StatusLine", 1},   {"ButtonBar", 1},
    {"ScrollBars", 1},   {"SuppressMenu", 0}, {"ExitOnEsc", 0},    {"OemToAnsi", 0},    {"FixedLineLen", 75},
    {"AutoZip", 0},      {"MaxTextSize", 12}, {"TabSize", 8},      {"MinOnLaunch", 0},  {"MaxLaunchApp", 0},
    {"MaxLineLen", 512}, {"LoadOnDelete", 0},
};

class Normalize : public testing::Test {
protected:
    void SetUp() override { Restore(); }
    void TearDown() override { Restore(); }

    static void Restore()
    {
        ViewOptions = ViewSettings{};
        PrintOptions = PrintSettings{};
        DocumentOptions = DocumentSettings{};
    }
};

} // namespace

TEST(SettingsTable, HoldsTheKeysAndDefaultsInTheirOrder)
{
    for (int row = 0; row < SettingRowCount; ++row) {
        EXPECT_STREQ(SettingsTable[row].Key, Expected[row].Key) << row;
        EXPECT_EQ(SettingsTable[row].Default, Expected[row].Default) << SettingsTable[row].Key;
    }
}

TEST(SettingsTable, EveryRowHasAVariableOfItsOwnThatStartsAtTheDefault)
{
    std::set<const std::int32_t*> variables;
    for (const SettingRow& row : SettingsTable) {
        ASSERT_NE(row.Value, nullptr) << row.Key;
        EXPECT_TRUE(variables.insert(row.Value).second) << row.Key;
        EXPECT_EQ(*row.Value, row.Default) << row.Key;
    }
}

TEST_F(Normalize, FontSizeOf13AndOfMinus13LoadAlike)
{
    for (const std::int32_t size : {13, -13}) {
        ViewOptions.FontSize = size;
        NormalizeSettings();
        EXPECT_EQ(ViewOptions.FontSize, -13);
    }
}

TEST_F(Normalize, PrintFontSizesAreHeldNegative)
{
    PrintOptions.HeadFont.Size = 10;
    PrintOptions.BodyFont.Size = -9;
    NormalizeSettings();
    EXPECT_EQ(PrintOptions.HeadFont.Size, -10);
    EXPECT_EQ(PrintOptions.BodyFont.Size, -9);
}

TEST_F(Normalize, PrintFontWithoutASizeFollowsTheScreenFont)
{
    ViewOptions.FontSize = 20;
    NormalizeSettings();
    EXPECT_EQ(PrintOptions.HeadFont.Size, -20);
    EXPECT_EQ(PrintOptions.BodyFont.Size, -20);
}

TEST_F(Normalize, MaxLineLenIsClampedTo80To1024)
{
    const std::int32_t pairs[][2] = {{20, 80},     {80, 80}, {81, 81},        {1024, 1024},     {1025, 1024},
                                     {5000, 1024}, {-5, 80}, {INT32_MIN, 80}, {INT32_MAX, 1024}};
    for (const auto& pair : pairs) {
        DocumentOptions.MaxLineLen = pair[0];
        NormalizeSettings();
        EXPECT_EQ(DocumentOptions.MaxLineLen, pair[1]) << pair[0];
    }
}

TEST_F(Normalize, EveryOtherValueIsTakenAsRead)
{
    DocumentOptions.TabSize = -7;
    DocumentOptions.FixedLineLen = 1000000;
    DocumentOptions.MaxTextSize = INT32_MAX;
    ViewOptions.Foreground[OutputRegion] = 99;
    NormalizeSettings();
    EXPECT_EQ(DocumentOptions.TabSize, -7);
    EXPECT_EQ(DocumentOptions.FixedLineLen, 1000000);
    EXPECT_EQ(DocumentOptions.MaxTextSize, INT32_MAX);
    EXPECT_EQ(ViewOptions.Foreground[OutputRegion], 99);
}

TEST_F(Normalize, ExtremeFontSizesAreHarmless)
{
    ViewOptions.FontSize = INT32_MIN;
    PrintOptions.HeadFont.Size = INT32_MAX;
    PrintOptions.BodyFont.Size = INT32_MIN;
    NormalizeSettings();
    EXPECT_EQ(ViewOptions.FontSize, -INT32_MAX);
    EXPECT_EQ(PrintOptions.HeadFont.Size, -INT32_MAX);
    EXPECT_EQ(PrintOptions.BodyFont.Size, -INT32_MAX);
}
