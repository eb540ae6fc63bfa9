#include "document/version_block.h"

#include "document/file_images.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

struct Texts {
    std::string Description;
    std::string Version;
    std::string Company;

    bool operator==(const Texts&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Texts& texts)
{
    return out << "'" << texts.Description << "', '" << texts.Version << "', '" << texts.Company << "'";
}

template <std::size_t Size> std::string Narrow(const char16_t (&text)[Size])
{
    std::string narrow;
    for (std::size_t i = 0; i < Size; ++i) {
        if (text[i] == 0) {
            return narrow;
        }
        narrow += static_cast<char>(text[i]);
    }
    return "does not end";
}

Texts TextsOf(const Bytes& block)
{
    VersionTexts texts;
    memset(static_cast<void*>(&texts), 0x55, sizeof texts);
    ReadVersionTexts(block, texts);
    return {Narrow(texts.FileDescription), Narrow(texts.FileVersion), Narrow(texts.CompanyName)};
}

// A block of the tables and the languages it says it has.
Texts TextsOf(const std::vector<Bytes>& tables, const std::vector<std::uint32_t>& translations)
{
    return TextsOf(VersionRoot({VersionParent("StringFileInfo", tables), VersionVariables(translations)}));
}

Bytes Table(std::string_view language)
{
    return VersionTable(language, "d " + std::string(language), "v " + std::string(language),
                        "c " + std::string(language));
}

Texts TextsIn(std::string_view language)
{
    const std::string name(language);
    return {"d " + name, "v " + name, "c " + name};
}

// The one table of a block without translation.
Bytes BlockWith(const std::vector<Bytes>& strings)
{
    return VersionRoot({VersionParent("StringFileInfo", {VersionParent("040904E4", strings)})});
}

const Texts NoTexts = {"", "", ""};
const Texts PlainTexts = {"A program", "1.2.3", "A company"};

} // namespace

TEST(VersionBlock, TextsAreRead)
{
    EXPECT_EQ(TextsOf(PlainVersionBlock()), PlainTexts);
}

TEST(VersionBlock, WithoutTranslationTheTextsAreAmericanEnglish)
{
    const Bytes strings = VersionParent("StringFileInfo", {Table("040904B0"), Table("040904E4")});
    EXPECT_EQ(TextsOf(VersionRoot({strings})), TextsIn("040904E4"));
    EXPECT_EQ(TextsOf(VersionRoot({VersionParent("StringFileInfo", {Table("040904B0")})})), NoTexts);
}

TEST(VersionBlock, VariablesWithoutTranslationAreNoTranslation)
{
    const Bytes strings = VersionParent("StringFileInfo", {Table("040904E4")});
    const Bytes other = VersionElement("Other", Bytes(4, 1), 4, false, {});
    EXPECT_EQ(TextsOf(VersionRoot({strings, VersionParent("VarFileInfo", {})})), TextsIn("040904E4"));
    EXPECT_EQ(TextsOf(VersionRoot({strings, VersionParent("VarFileInfo", {other})})), TextsIn("040904E4"));
    EXPECT_EQ(TextsOf(VersionRoot({strings, VersionVariables({})})), TextsIn("040904E4"));
}

TEST(VersionBlock, TranslationOfLessThanFourBytesIsNone)
{
    const Bytes strings = VersionParent("StringFileInfo", {Table("040904E4"), Table("00000001")});
    const Bytes whole = VersionElement("Translation", {1, 0, 0, 0}, 4, false, {});
    const Bytes cut = VersionElement("Translation", {1, 0, 0}, 3, false, {});
    EXPECT_EQ(TextsOf(VersionRoot({strings, VersionParent("VarFileInfo", {whole})})), TextsIn("00000001"));
    EXPECT_EQ(TextsOf(VersionRoot({strings, VersionParent("VarFileInfo", {cut})})), TextsIn("040904E4"));
    // One that ends with its key, before the place of its value.
    const Bytes bare = FileImage(whole).Cut(30).U16(0, 30).Content;
    EXPECT_EQ(TextsOf(VersionRoot({strings, VersionParent("VarFileInfo", {bare, whole})})), TextsIn("040904E4"));
}

TEST(VersionBlock, TranslationCountsAsItIsStored)
{
    EXPECT_EQ(TextsOf({Table("04E40407"), Table("040704E4"), Table("040904E4")}, {0x04E40407}), TextsIn("04E40407"));
}

TEST(VersionBlock, HalvesOfTheTranslationAreExchangedNext)
{
    EXPECT_EQ(TextsOf({Table("040904E4"), Table("040704E4")}, {0x04E40407}), TextsIn("040704E4"));
}

TEST(VersionBlock, TranslationOfNoTableLeavesNothing)
{
    EXPECT_EQ(TextsOf({Table("040904E4")}, {0x04B00407}), NoTexts);
}

TEST(VersionBlock, TranslationHasEightDigits)
{
    EXPECT_EQ(TextsOf({Table("00000001"), Table("1")}, {1}), TextsIn("00000001"));
    EXPECT_EQ(TextsOf({Table("0000000")}, {0}), NoTexts);
    EXPECT_EQ(TextsOf({Table("000000000")}, {0}), NoTexts);
}

TEST(VersionBlock, FirstTranslationCounts)
{
    EXPECT_EQ(TextsOf({Table("040704B0"), Table("040904B0")}, {0x04B00409, 0x04B00407}), TextsIn("040904B0"));
}

TEST(VersionBlock, DescriptionAloneDecidesWhichHalfComesFirst)
{
    const Bytes stored = VersionParent("04B00409", {VersionString("FileVersion", "stored")});
    const Bytes exchanged =
        VersionParent("040904B0", {VersionString("FileDescription", "d"), VersionString("CompanyName", "exchanged")});
    EXPECT_EQ(TextsOf({stored, exchanged}, {0x04B00409}), (Texts{"d", "", "exchanged"}));
}

TEST(VersionBlock, ExchangedHalvesStayWithoutADescription)
{
    const Bytes stored = VersionParent("04B00409", {VersionString("FileVersion", "stored")});
    const Bytes exchanged = VersionParent("040904B0", {VersionString("FileVersion", "exchanged")});
    EXPECT_EQ(TextsOf({stored, exchanged}, {0x04B00409}), (Texts{"", "exchanged", ""}));
}

TEST(VersionBlock, EmptyDescriptionIsFoundAllTheSame)
{
    const Bytes stored = VersionTable("04B00409", "", "1", "stored");
    EXPECT_EQ(TextsOf({stored, Table("040904B0")}, {0x04B00409}), (Texts{"", "1", "stored"}));
}

TEST(VersionBlock, EachTextMayBeMissing)
{
    const Bytes description = VersionString("FileDescription", "d");
    const Bytes version = VersionString("FileVersion", "v");
    const Bytes company = VersionString("CompanyName", "c");
    EXPECT_EQ(TextsOf(BlockWith({description, version, company})), (Texts{"d", "v", "c"}));
    EXPECT_EQ(TextsOf(BlockWith({version, company})), (Texts{"", "v", "c"}));
    EXPECT_EQ(TextsOf(BlockWith({company, description})), (Texts{"d", "", "c"}));
    EXPECT_EQ(TextsOf(BlockWith({description, version})), (Texts{"d", "v", ""}));
    EXPECT_EQ(TextsOf(BlockWith({})), NoTexts);
}

TEST(VersionBlock, OtherTextsAreSkipped)
{
    EXPECT_EQ(TextsOf(BlockWith({VersionString("Comments", "odd"), VersionString("FileDescriptio", "short"),
                                 VersionString("FileDescriptions", "long"), VersionString("FileDescription", "d"),
                                 VersionString("FileDescription", "second")})),
              (Texts{"d", "", ""}));
}

TEST(VersionBlock, LongTextsAreCut)
{
    const std::string d79(79, 'd');
    const std::string v29(29, '1');
    const std::string c39(39, 'c');
    EXPECT_EQ(TextsOf(PlainVersionBlock(d79, v29, c39)), (Texts{d79, v29, c39}));
    EXPECT_EQ(TextsOf(PlainVersionBlock(d79 + "x", v29 + "x", c39 + "x")), (Texts{d79, v29, c39}));
    const std::string more(500, 'x');
    EXPECT_EQ(TextsOf(PlainVersionBlock(d79 + more, v29 + more, c39 + more)), (Texts{d79, v29, c39}));
}

TEST(VersionBlock, EmptyTextsStayEmpty)
{
    EXPECT_EQ(TextsOf(PlainVersionBlock("", "", "")), NoTexts);
    EXPECT_EQ(TextsOf(BlockWith({VersionElement("FileDescription", {}, 0, true, {}),
                                 VersionElement("FileVersion", {}, 0, true, {}), VersionString("CompanyName", "c")})),
              (Texts{"", "", "c"}));
}

TEST(VersionBlock, ValueOfNoLengthIsEmptyWhateverStandsThere)
{
    const Bytes letters = {'x', 0, 0, 0};
    EXPECT_EQ(TextsOf(BlockWith({VersionElement("FileVersion", letters, 0, true, {}),
                                 VersionElement("CompanyName", letters, 1, true, {})})),
              (Texts{"", "", "x"}));
}

TEST(VersionBlock, TextEndsWithItsElement)
{
    // No terminator: the element ends first.
    const Bytes unterminated = VersionElement("FileVersion", {'1', 0, '.', 0, '2', 0}, 3, true, {});
    EXPECT_EQ(TextsOf(BlockWith({unterminated, VersionString("CompanyName", "c")})), (Texts{"", "1.2", "c"}));
    const Bytes halfALetter = VersionElement("FileVersion", {'1', 0, '.'}, 3, true, {});
    EXPECT_EQ(TextsOf(BlockWith({halfALetter, VersionString("CompanyName", "c")})), (Texts{"", "1", "c"}));
}

TEST(VersionBlock, LettersBeyond8BitsAreKept)
{
    VersionTexts texts;
    ReadVersionTexts(BlockWith({VersionElement("FileVersion", {0x3A, 0x04, 0xAC, 0x20, 0, 0}, 3, true, {})}), texts);
    EXPECT_EQ(std::u16string(texts.FileVersion), u"\x043A\x20AC");
}

TEST(VersionBlock, KeysCountInWhateverCase)
{
    const Bytes table =
        VersionParent("040904e4", {VersionString("FILEDESCRIPTION", "d"), VersionString("fileversion", "v"),
                                   VersionString("cOMPANYnAME", "c")});
    EXPECT_EQ(TextsOf(VersionRoot({VersionParent("stringfileinfo", {table})})), (Texts{"d", "v", "c"}));
    const Bytes translation = VersionElement("TRANSLATION", {0xB0, 0x04, 0x09, 0x0A}, 4, false, {});
    EXPECT_EQ(TextsOf(VersionRoot(
                  {VersionParent("VARFILEINFO", {translation}), VersionParent("StringFileInfo", {Table("0A0904B0")})})),
              TextsIn("0A0904B0"));
}

TEST(VersionBlock, LettersThatDifferByMoreThanCaseDiffer)
{
    // As '{' and '[' would by the same distance, and a letter of a higher byte.
    EXPECT_EQ(TextsOf(BlockWith({VersionString("File\x36"
                                               "ersion",
                                               "v")})),
              NoTexts);
    FileImage odd(VersionString("FileVersion", "v"));
    EXPECT_EQ(TextsOf(BlockWith({odd.U8(7, 1).Content})), NoTexts);
}

TEST(VersionBlock, KeyOfTheRootDoesNotMatter)
{
    const Bytes strings = VersionParent("StringFileInfo", {Table("040904E4")});
    EXPECT_EQ(TextsOf(VersionElement("X", {}, 0, false, {strings})), TextsIn("040904E4"));
}

TEST(VersionBlock, ValueOfTheRootIsSteppedOver)
{
    const Bytes strings = VersionParent("StringFileInfo", {Table("040904E4")});
    for (const std::size_t size : {0u, 1u, 2u, 3u, 4u, 52u}) {
        const Bytes value(size, 0xEE);
        EXPECT_EQ(TextsOf(VersionElement("VS_VERSION_INFO", value, static_cast<std::uint32_t>(size), false, {strings})),
                  TextsIn("040904E4"))
            << size;
    }
}

TEST(VersionBlock, LengthOfATextValueIsInLetters)
{
    const Bytes strings = VersionParent("StringFileInfo", {Table("040904E4")});
    EXPECT_EQ(TextsOf(VersionElement("Root", Bytes(10, 'x'), 5, true, {strings})), TextsIn("040904E4"));
    EXPECT_EQ(TextsOf(VersionElement("Root", Bytes(10, 'x'), 10, false, {strings})), TextsIn("040904E4"));
}

TEST(VersionBlock, ElementsAreFoundAtMultiplesOfFourWhateverEndsBeforeThem)
{
    for (const char* value : {"", "1", "12", "123", "1234"}) {
        for (const char* key : {"a", "ab", "abc", "abcd"}) {
            EXPECT_EQ(TextsOf(BlockWith({VersionString(key, value), VersionString("FileVersion", "v")})),
                      (Texts{"", "v", ""}))
                << key << value;
        }
    }
    // An element of an odd number of bytes.
    EXPECT_EQ(TextsOf(BlockWith({VersionElement("a", {1}, 1, false, {}), VersionString("FileVersion", "v")})),
              (Texts{"", "v", ""}));
}

TEST(VersionBlock, ElementWithoutLengthEndsItsLevel)
{
    for (const std::uint32_t length : {0u, 5u}) {
        FileImage damaged(VersionString("Comments", "x"));
        damaged.U16(0, length);
        EXPECT_EQ(
            TextsOf(BlockWith({VersionString("CompanyName", "c"), damaged.Content, VersionString("FileVersion", "v")})),
            (Texts{"", "", "c"}))
            << length;
    }
}

TEST(VersionBlock, ShortestElementIsItsHead)
{
    EXPECT_EQ(TextsOf(BlockWith({Bytes{6, 0, 0, 0, 1, 0}, VersionString("FileVersion", "v")})), (Texts{"", "v", ""}));
}

TEST(VersionBlock, ElementThatPassesItsParentsEndIsCutToIt)
{
    FileImage damaged(VersionString("FileVersion", "12"));
    damaged.U16(0, 0xFFFF);
    const Bytes first = VersionParent("040904E4", {damaged.Content});
    // What follows belongs to others.
    const Bytes second = VersionParent("00000000", {VersionString("CompanyName", "c")});
    EXPECT_EQ(TextsOf(VersionRoot({VersionParent("StringFileInfo", {first, second})})), (Texts{"", "12", ""}));
    FileImage unterminated(VersionElement("FileVersion", {'1', 0, '2', 0}, 2, true, {}));
    unterminated.U16(0, 0xFFFF);
    const Bytes third = VersionParent("040904E4", {unterminated.Content});
    EXPECT_EQ(TextsOf(VersionRoot({VersionParent("StringFileInfo", {third, second})})), (Texts{"", "12", ""}));
}

TEST(VersionBlock, LengthOfTheRootBoundsAll)
{
    FileImage block(BlockWith({VersionString("FileVersion", "v")}));
    const std::size_t length = block.Content.size();
    EXPECT_EQ(TextsOf(block.Content), (Texts{"", "v", ""}));
    EXPECT_EQ(TextsOf(FileImage(block).U16(0, 0xFFFF).Content), (Texts{"", "v", ""}));
    EXPECT_EQ(TextsOf(FileImage(block).U16(0, static_cast<std::uint32_t>(length - 4)).Content), NoTexts);
    EXPECT_EQ(TextsOf(FileImage(block).U16(0, 0).Content), NoTexts);
}

TEST(VersionBlock, ValueThatPassesTheEndLeavesNoChildren)
{
    const Bytes block = PlainVersionBlock();
    EXPECT_EQ(TextsOf(FileImage(block).U16(2, 0xFFFF).Content), NoTexts);
    EXPECT_EQ(TextsOf(FileImage(block).U16(2, 0xFFFF).U16(4, 1).Content), NoTexts);
}

TEST(VersionBlock, KeyWithoutEndMatchesNothing)
{
    EXPECT_EQ(TextsOf(BlockWith({Bytes{10, 0, 0, 0, 1, 0, 'F', 0, 'i', 0}, VersionString("FileVersion", "v")})),
              (Texts{"", "v", ""}));
}

TEST(VersionBlock, BytesTooFewForABlockAreNone)
{
    EXPECT_EQ(TextsOf(Bytes{}), NoTexts);
    EXPECT_EQ(TextsOf(Bytes{6}), NoTexts);
    EXPECT_EQ(TextsOf(Bytes{6, 0, 0, 0, 1}), NoTexts);
    EXPECT_EQ(TextsOf(Bytes{6, 0, 0, 0, 1, 0}), NoTexts);
}

TEST(VersionBlock, CutBlockTellsTheBeginningOfWhatItTold)
{
    const Bytes whole = PlainVersionBlock();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const Texts texts = TextsOf(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
        EXPECT_TRUE(PlainTexts.Description.starts_with(texts.Description)) << size;
        EXPECT_TRUE(PlainTexts.Version.starts_with(texts.Version)) << size;
        EXPECT_TRUE(PlainTexts.Company.starts_with(texts.Company)) << size;
    }
}

TEST(VersionBlock, FlippedBitsLeaveTextsThatEnd)
{
    const Bytes whole = PlainVersionBlock();
    for (std::size_t bit = 0; bit < whole.size() * 8; ++bit) {
        Bytes damaged = whole;
        damaged[bit / 8] ^= static_cast<std::uint8_t>(1 << bit % 8);
        const Texts texts = TextsOf(damaged);
        EXPECT_LE(texts.Description.size(), 79u) << bit;
        EXPECT_LE(texts.Version.size(), 29u) << bit;
        EXPECT_LE(texts.Company.size(), 39u) << bit;
    }
}
