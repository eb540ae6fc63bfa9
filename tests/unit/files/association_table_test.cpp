#include "files/association_table.h"

#include "base/text.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

class AssociationTableTest : public testing::Test {
private:
    std::unique_ptr<AssociationTable> Owned = std::make_unique<AssociationTable>();

protected:
    AssociationTable& Table = *Owned;

    std::string Find(const char* extension) const
    {
        char description[DescriptionSize] = "before";
        if (FindAssociation(Table, extension, description)) {
            return description;
        }
        EXPECT_STREQ(description, "") << extension;
        return "none";
    }

    void FillExtensions(int count)
    {
        for (int i = 0; i < count; ++i) {
            ASSERT_TRUE(AddExtension(Table, ("." + std::to_string(i)).c_str(), 0)) << i;
        }
    }

    void FillDescriptions(int count)
    {
        for (int i = 1; i <= count; ++i) {
            ASSERT_EQ(InternDescription(Table, ("Kind " + std::to_string(i)).c_str()), i);
        }
    }
};

} // namespace

TEST_F(AssociationTableTest, EmptyTableKnowsNoExtension)
{
    EXPECT_EQ(Find("TXT"), "none");
    EXPECT_EQ(Find(""), "none");
}

TEST_F(AssociationTableTest, ExtensionWithADescriptionIsCalledByIt)
{
    const std::uint16_t text = InternDescription(Table, "Text Document");
    const std::uint16_t image = InternDescription(Table, "Image");
    EXPECT_TRUE(AddExtension(Table, ".BMP", image));
    EXPECT_TRUE(AddExtension(Table, ".TXT", text));
    EXPECT_EQ(Find("TXT"), "Text Document");
    EXPECT_EQ(Find("BMP"), "Image");
}

TEST_F(AssociationTableTest, ExtensionWithoutADescriptionIsCalledAFileOfItsKind)
{
    AddExtension(Table, ".TXT", 0);
    AddExtension(Table, ".ABCDEFG", 0);
    EXPECT_EQ(Find("TXT"), "TXT File");
    EXPECT_EQ(Find("ABCDEFG"), "ABCDEFG File");
}

TEST_F(AssociationTableTest, OtherExtensionsAreNotKnown)
{
    AddExtension(Table, ".TXT", 0);
    for (const char* extension : {"", "T", "TX", "TXTT", ".TXT", "txt", "ABCDEFGHIJ"}) {
        EXPECT_EQ(Find(extension), "none") << extension;
    }
}

TEST_F(AssociationTableTest, ExtensionHasOneToSevenCharacters)
{
    EXPECT_FALSE(AddExtension(Table, "", 0));
    EXPECT_FALSE(AddExtension(Table, ".", 0));
    EXPECT_TRUE(AddExtension(Table, ".A", 0));
    EXPECT_TRUE(AddExtension(Table, ".ABCDEFG", 0));
    EXPECT_FALSE(AddExtension(Table, ".ABCDEFGH", 0));
    EXPECT_FALSE(AddExtension(Table, ("." + std::string(300, 'A')).c_str(), 0));
    EXPECT_EQ(Table.ExtensionCount, 2);
    EXPECT_EQ(Find("A"), "A File");
    EXPECT_EQ(Find("ABCDEFG"), "ABCDEFG File");
}

TEST_F(AssociationTableTest, KnownExtensionKeepsItsFirstDescription)
{
    const std::uint16_t first = InternDescription(Table, "First");
    const std::uint16_t second = InternDescription(Table, "Second");
    EXPECT_TRUE(AddExtension(Table, ".TXT", first));
    EXPECT_FALSE(AddExtension(Table, ".TXT", second));
    EXPECT_FALSE(AddExtension(Table, ".TXT", 0));
    EXPECT_EQ(Table.ExtensionCount, 1);
    EXPECT_EQ(Find("TXT"), "First");
}

TEST_F(AssociationTableTest, Holds199Extensions)
{
    FillExtensions(198);
    EXPECT_TRUE(CanAddExtension(Table, ".NEW"));
    EXPECT_TRUE(AddExtension(Table, ".NEW", 0));
    EXPECT_EQ(Table.ExtensionCount, 199);
    EXPECT_FALSE(CanAddExtension(Table, ".MORE"));
    EXPECT_FALSE(AddExtension(Table, ".MORE", 0));
    EXPECT_EQ(Table.ExtensionCount, 199);
    EXPECT_EQ(Find("NEW"), "NEW File");
    EXPECT_EQ(Find("0"), "0 File");
    EXPECT_EQ(Find("MORE"), "none");
}

TEST_F(AssociationTableTest, CanBeAskedBeforeAnExtensionIsAdded)
{
    for (const char* name : {"", ".", ".ABCDEFGH"}) {
        EXPECT_FALSE(CanAddExtension(Table, name)) << name;
    }
    for (const char* name : {".A", ".ABCDEFG", ".TXT"}) {
        EXPECT_TRUE(CanAddExtension(Table, name)) << name;
    }
    AddExtension(Table, ".TXT", 0);
    EXPECT_FALSE(CanAddExtension(Table, ".TXT"));
    EXPECT_TRUE(CanAddExtension(Table, ".TX"));
    EXPECT_EQ(Table.ExtensionCount, 1);
}

TEST_F(AssociationTableTest, DescriptionsAreNumberedFromOne)
{
    EXPECT_EQ(InternDescription(Table, "One"), 1);
    EXPECT_EQ(InternDescription(Table, "Two"), 2);
    EXPECT_EQ(Table.DescriptionCount, 2);
    EXPECT_STREQ(Table.Descriptions[0], "One");
    EXPECT_STREQ(Table.Descriptions[1], "Two");
}

TEST_F(AssociationTableTest, EqualDescriptionsAreOne)
{
    InternDescription(Table, "One");
    InternDescription(Table, "Two");
    EXPECT_EQ(InternDescription(Table, "One"), 1);
    EXPECT_EQ(InternDescription(Table, "Two"), 2);
    EXPECT_EQ(Table.DescriptionCount, 2);
    EXPECT_EQ(InternDescription(Table, "one"), 3);
}

TEST_F(AssociationTableTest, DescriptionHasTwoTo39Characters)
{
    EXPECT_EQ(InternDescription(Table, ""), 0);
    EXPECT_EQ(InternDescription(Table, "a"), 0);
    EXPECT_EQ(InternDescription(Table, "ab"), 1);
    const std::string longest(39, 'd');
    EXPECT_EQ(InternDescription(Table, longest.c_str()), 2);
    EXPECT_EQ(InternDescription(Table, std::string(40, 'd').c_str()), 0);
    EXPECT_EQ(InternDescription(Table, std::string(500, 'd').c_str()), 0);
    EXPECT_EQ(Table.DescriptionCount, 2);
    AddExtension(Table, ".TXT", 2);
    EXPECT_EQ(Find("TXT"), longest);
}

TEST_F(AssociationTableTest, Holds200Descriptions)
{
    FillDescriptions(199);
    EXPECT_EQ(InternDescription(Table, "The last"), 200);
    EXPECT_EQ(InternDescription(Table, "One more"), 0);
    EXPECT_EQ(Table.DescriptionCount, 200);
    EXPECT_EQ(InternDescription(Table, "Kind 1"), 1);
    EXPECT_EQ(InternDescription(Table, "The last"), 200);
    AddExtension(Table, ".TXT", 200);
    EXPECT_EQ(Find("TXT"), "The last");
}

TEST_F(AssociationTableTest, ExtensionsOfOneKindShareItsDescription)
{
    AddExtension(Table, ".JPG", InternDescription(Table, "Picture"));
    AddExtension(Table, ".TXT", InternDescription(Table, "Text Document"));
    AddExtension(Table, ".JPEG", InternDescription(Table, "Picture"));
    EXPECT_EQ(Table.DescriptionCount, 2);
    EXPECT_EQ(Find("JPG"), "Picture");
    EXPECT_EQ(Find("JPEG"), "Picture");
}

TEST_F(AssociationTableTest, ExtensionWhoseDescriptionDoesNotFitIsCalledAFileOfItsKind)
{
    EXPECT_TRUE(AddExtension(Table, ".LNG", InternDescription(Table, std::string(40, 'd').c_str())));
    EXPECT_EQ(Find("LNG"), "LNG File");
    FillDescriptions(200);
    EXPECT_TRUE(AddExtension(Table, ".NEW", InternDescription(Table, "One more")));
    EXPECT_EQ(Find("NEW"), "NEW File");
}
