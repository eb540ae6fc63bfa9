#include "files/associations.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>
#include <windows.h>

namespace {

// With extensions of its own, which are gone again afterwards.
class Associations : public testing::Test {
protected:
    ~Associations() override
    {
        for (const std::string& key : Keys) {
            RegDeleteKeyA(HKEY_CLASSES_ROOT, key.c_str());
        }
        for (const std::string& entry : Entries) {
            WriteProfileStringA("Extensions", entry.c_str(), nullptr);
        }
        BuildAssociations();
    }

    // A key among the classes with that default value.
    void Register(const std::string& key, const std::string& value)
    {
        Keys.push_back(key);
        ASSERT_EQ(ERROR_SUCCESS, RegSetValueA(HKEY_CLASSES_ROOT, key.c_str(), REG_SZ, value.c_str(),
                                              static_cast<DWORD>(value.size())));
    }

    // And one without a default value.
    void RegisterBare(const std::string& key)
    {
        Keys.push_back(key);
        HKEY made = nullptr;
        ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyA(HKEY_CLASSES_ROOT, key.c_str(), &made));
        RegCloseKey(made);
    }

    void EnterInProfile(const std::string& extension)
    {
        Entries.push_back(extension);
        WriteProfileStringA("Extensions", extension.c_str(), ("notepad.exe ^." + extension).c_str());
    }

    // What files of that extension are called; "none" without an association.
    static std::string Called(const char* extension)
    {
        char description[DescriptionSize] = "";
        return LookupAssociation(extension, description) ? description : "none";
    }

private:
    std::vector<std::string> Keys;
    std::vector<std::string> Entries;
};

} // namespace

TEST_F(Associations, AFileIsCalledByTheFriendlyNameOfItsClass)
{
    Register(".kva", "KvaClass");
    Register("KvaClass", "A Friendly Name");
    BuildAssociations();
    EXPECT_EQ("A Friendly Name", Called("kva"));
}

TEST_F(Associations, WithoutAFriendlyNameTheClassIsShown)
{
    Register(".kva", "KvaClass");
    Register(".kvb", "KvbClass");
    RegisterBare("KvbClass");
    Register(".kvc", "KvcClass");
    Register("KvcClass", "");
    BuildAssociations();
    EXPECT_EQ("KvaClass", Called("kva"));
    EXPECT_EQ("KvbClass", Called("kvb"));
    EXPECT_EQ("KvcClass", Called("kvc"));
}

TEST_F(Associations, AFriendlyNameOfFortyCharactersIsTooLong)
{
    Register(".kva", "KvaClass");
    Register("KvaClass", std::string(39, 'f'));
    Register(".kvb", "KvbClass");
    Register("KvbClass", std::string(40, 'f'));
    Register(".kvc", "KvcClass");
    Register("KvcClass", std::string(600, 'f'));
    BuildAssociations();
    EXPECT_EQ(std::string(39, 'f'), Called("kva"));
    EXPECT_EQ("KvbClass", Called("kvb"));
    EXPECT_EQ("KvcClass", Called("kvc"));
}

TEST_F(Associations, AClassNameOfFortyCharactersIsTooLong)
{
    Register(".kva", std::string(39, 'k'));
    Register(".kvb", std::string(40, 'k'));
    Register(".kvc", std::string(200, 'k'));
    BuildAssociations();
    EXPECT_EQ(std::string(39, 'k'), Called("kva"));
    EXPECT_EQ("KVB File", Called("kvb"));
    EXPECT_EQ("KVC File", Called("kvc"));
}

TEST_F(Associations, AClassNameOfOneCharacterIsNone)
{
    Register(".kva", "k");
    Register(".kvb", "kv");
    BuildAssociations();
    EXPECT_EQ("KVA File", Called("kva"));
    EXPECT_EQ("kv", Called("kvb"));
}

TEST_F(Associations, AnExtensionWithoutAClassIsCalledByItself)
{
    RegisterBare(".kva");
    Register(".kvb", "");
    BuildAssociations();
    EXPECT_EQ("KVA File", Called("kva"));
    EXPECT_EQ("KVB File", Called("kvb"));
}

TEST_F(Associations, ExtensionsOfOneClassShareItsName)
{
    Register(".kva", "KvClass");
    Register(".kvb", "KvClass");
    Register("KvClass", "Shared Name");
    BuildAssociations();
    EXPECT_EQ("Shared Name", Called("kva"));
    EXPECT_EQ("Shared Name", Called("kvb"));
}

TEST_F(Associations, UpperAndLowerCaseAreTheSame)
{
    Register(".KvA", "KvaClass");
    BuildAssociations();
    EXPECT_EQ("KvaClass", Called("kva"));
    EXPECT_EQ("KvaClass", Called("KVA"));
    EXPECT_EQ("KvaClass", Called("kVa"));
}

TEST_F(Associations, AnExtensionHasSevenLettersAtMost)
{
    Register(".kvabcde", "SevenLetters");
    Register(".kvabcdef", "EightLetters");
    Register(".k", "OneLetter");
    BuildAssociations();
    EXPECT_EQ("SevenLetters", Called("kvabcde"));
    EXPECT_EQ("none", Called("kvabcdef"));
    EXPECT_EQ("OneLetter", Called("k"));
}

TEST_F(Associations, ALongerExtensionIsNotTakenForItsBeginning)
{
    Register(".kvabcde", "SevenLetters");
    BuildAssociations();
    EXPECT_EQ("none", Called("kvabcdefg"));
    EXPECT_EQ("none", Called("kvabcdex"));
    EXPECT_EQ("none", Called(std::string(300, 'k').c_str()));
}

TEST_F(Associations, AnExtensionOfTheProfileOnlyIsCalledByItself)
{
    EnterInProfile("xyz");
    BuildAssociations();
    EXPECT_EQ("XYZ File", Called("xyz"));
    EXPECT_EQ("XYZ File", Called("Xyz"));
}

TEST_F(Associations, TheProfileHasSevenLettersAtMostToo)
{
    EnterInProfile("xyzabcd");
    EnterInProfile("xyzabcde");
    BuildAssociations();
    EXPECT_EQ("XYZABCD File", Called("xyzabcd"));
    EXPECT_EQ("none", Called("xyzabcde"));
}

TEST_F(Associations, TheRegisteredNameWinsOverTheProfile)
{
    Register(".kva", "KvaClass");
    Register("KvaClass", "A Friendly Name");
    EnterInProfile("kva");
    BuildAssociations();
    EXPECT_EQ("A Friendly Name", Called("kva"));
}

TEST_F(Associations, OnlyClassesWithADotAreExtensions)
{
    Register("kvaclass", "A Class");
    Register(".", "NoExtension");
    BuildAssociations();
    EXPECT_EQ("none", Called("kvaclas"));
    EXPECT_EQ("none", Called("vaclass"));
    EXPECT_EQ("none", Called(""));
}

TEST_F(Associations, AKeyTooLongForAnExtensionDoesNotEndTheSearch)
{
    Register("." + std::string(120, '0'), "Long");
    Register(".zzz", "ZzzClass");
    BuildAssociations();
    EXPECT_EQ("ZzzClass", Called("zzz"));
}

TEST_F(Associations, MoreExtensionsThanTheTableHoldsAreLeftOut)
{
    for (int i = 0; i < 300; ++i) {
        Register(".0" + std::to_string(1000 + i), "KvaClass");
    }
    EnterInProfile("xyz");
    BuildAssociations();
    int known = 0;
    for (int i = 0; i < 300; ++i) {
        known += Called(("0" + std::to_string(1000 + i)).c_str()) == "KvaClass";
    }
    EXPECT_EQ(199, known) << "they come first among the classes";
    EXPECT_EQ("none", Called("xyz")) << "the profile is read last";
}

TEST_F(Associations, EveryExtensionOfAFullTableHasItsOwnDescription)
{
    for (int i = 0; i < 199; ++i) {
        Register(".0" + std::to_string(1000 + i), "KvClass" + std::to_string(1000 + i));
    }
    BuildAssociations();
    for (int i = 0; i < 199; ++i) {
        EXPECT_EQ("KvClass" + std::to_string(1000 + i), Called(("0" + std::to_string(1000 + i)).c_str()));
    }
}

TEST_F(Associations, BuildingAnewForgetsWhatIsGone)
{
    Register(".kva", "KvaClass");
    EnterInProfile("xyz");
    BuildAssociations();
    ASSERT_EQ("KvaClass", Called("kva"));
    RegDeleteKeyA(HKEY_CLASSES_ROOT, ".kva");
    WriteProfileStringA("Extensions", "xyz", nullptr);
    BuildAssociations();
    EXPECT_EQ("none", Called("kva"));
    EXPECT_EQ("none", Called("xyz"));
}
