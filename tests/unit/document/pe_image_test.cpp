#include "document/pe_image.h"

#include "document/file_images.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr std::size_t PageBytes = 4096;
constexpr std::size_t SectionTableAt = NewHeaderAt + 248;

struct Walk {
    std::int32_t Count;
    std::vector<std::string> Names;
};

Walk WalkOf(const FileImage& image)
{
    Walk walk;
    walk.Count = WalkPeImports(image.Content, ImportSink{TakeImport, &walk.Names});
    EXPECT_EQ(WalkPeImports(image.Content, ImportSink{}), walk.Count) << "counted only";
    return walk;
}

std::int32_t CountOf(const FileImage& image)
{
    return WalkOf(image).Count;
}

// A program whose import section stands in the file where it stands in memory, at the end of the file.
FileImage ImportsInPlace(std::size_t at)
{
    FileImage image = PeImage({{".idata", static_cast<std::uint32_t>(at), {}}});
    return image.U32(SectionTableAt + 20, static_cast<std::uint32_t>(at)).Pad(at);
}

void PutDescriptor(FileImage& image, std::size_t at, std::uint32_t timeStamp, std::size_t name)
{
    image.Pad(at + 20).U32(at + 4, timeStamp).U32(at + 12, static_cast<std::uint32_t>(name));
}

// A resource section with one language, and where things stand in it.
constexpr std::uint32_t ResourceAddress = 0x5000;
constexpr std::size_t LeafAt = LanguageEntriesAt + 8;
constexpr std::size_t BlockAt = LeafAt + 16;

// Changes the resources of a file with a version resource of the letters "block", before they are found.
FileImage ResourceImage(bool is64Bit = false)
{
    return PeImage({ResourceSection({{0x409, BytesOf("block")}}, ResourceAddress)}, is64Bit);
}

std::string BlockOf(const FileImage& image, std::uint16_t userLanguage = 0x407)
{
    const ByteSpan block = FindVersionResource(image.Content, userLanguage);
    return std::string(block.begin(), block.end());
}

std::string BlockAmong(const std::vector<std::uint32_t>& languages, std::uint16_t userLanguage = 0x407)
{
    std::vector<LanguageBlock> blocks;
    for (const std::uint32_t language : languages) {
        blocks.push_back({language, BytesOf(std::to_string(language))});
    }
    return BlockOf(PeImage({ResourceSection(blocks)}), userLanguage);
}

constexpr std::size_t At(std::size_t inResources)
{
    return PeSectionsAt + inResources;
}

} // namespace

TEST(PeImports, EveryDescriptorHasAName)
{
    const Walk walk = WalkOf(PeImage({ImportSection({"KERNEL32.dll", "USER32.dll", "x"})}));
    EXPECT_EQ(walk.Count, 3);
    EXPECT_EQ(walk.Names, (std::vector<std::string>{"KERNEL32.dll", "USER32.dll", "x"}));
}

TEST(PeImports, SameNameTwiceIsHandedOverTwice)
{
    EXPECT_EQ(WalkOf(PeImage({ImportSection({"a.dll", "a.dll"})})).Names, (std::vector<std::string>{"a.dll", "a.dll"}));
}

TEST(PeImports, EmptyImportSectionHasNone)
{
    EXPECT_EQ(CountOf(PeImage({ImportSection({})})), 0);
}

TEST(PeImports, ImportSectionIsFoundAmongOthers)
{
    const PeSection code = {".text", 0x1000, Bytes(16, 0x90)};
    EXPECT_EQ(CountOf(PeImage({code, code, ImportSection({"a.dll"}), code})), 1);
}

TEST(PeImports, FirstImportSectionCounts)
{
    EXPECT_EQ(CountOf(PeImage({ImportSection({"a.dll"}), ImportSection({"b.dll", "c.dll"}, 0x4000)})), 1);
}

TEST(PeImports, SectionOfAnotherNameHoldsNoImports)
{
    for (const char* name : {".rdata", ".IDATA", ".idat", ".idata2", ".idataXY", "idata", ".edata", ""}) {
        PeSection section = ImportSection({"a.dll"});
        section.Name = name;
        EXPECT_EQ(CountOf(PeImage({section})), 0) << name;
    }
}

TEST(PeImports, SectionsBeyondTheirCountAreNone)
{
    EXPECT_EQ(CountOf(PeImage({ImportSection({"a.dll"})}).U16(NewHeaderAt + 6, 0)), 0);
    const PeSection code = {".text", 0x1000, Bytes(16, 0x90)};
    EXPECT_EQ(CountOf(PeImage({code, ImportSection({"a.dll"})}).U16(NewHeaderAt + 6, 1)), 0);
    EXPECT_EQ(CountOf(PeImage({code, ImportSection({"a.dll"})}).U16(NewHeaderAt + 6, 0xFFFF)), 1);
}

TEST(PeImports, SectionTableEndsWithTheFile)
{
    EXPECT_EQ(CountOf(PeImage({}).U16(NewHeaderAt + 6, 0xFFFF)), 0);
    EXPECT_EQ(CountOf(PeImage({}).Cut(SectionTableAt).U16(NewHeaderAt + 6, 1)), 0);
}

TEST(PeImports, SectionNeedsAllOfItsEntry)
{
    // The imports stand among the headers, before the section table that the file ends with.
    constexpr std::size_t Descriptors = 200;
    const auto imageOf = [](std::size_t size) {
        FileImage image = PeImage({{".idata", Descriptors, {}}}).U32(SectionTableAt + 20, Descriptors);
        PutDescriptor(image, Descriptors, 0, Descriptors + 60);
        PutDescriptor(image, Descriptors + 20, 0, 0);
        return image.Text(Descriptors + 60, "a.dll").Cut(size);
    };
    EXPECT_EQ(CountOf(imageOf(SectionTableAt + 40)), 1);
    EXPECT_EQ(CountOf(imageOf(SectionTableAt + 39)), 0);
}

TEST(PeImports, SectionTableIsTakenToFollow32BitHeaders)
{
    EXPECT_EQ(CountOf(PeImage({ImportSection({"a.dll"})}, true)), 0);
    // Whatever the size the file header tells.
    EXPECT_EQ(CountOf(PeImage({ImportSection({"a.dll"})}).U16(NewHeaderAt + 20, 0)), 1);
}

TEST(PeImports, SignatureHasFourBytes)
{
    for (std::size_t byte = 0; byte < 4; ++byte) {
        FileImage image = PeImage({ImportSection({"a.dll"})});
        image.Content[NewHeaderAt + byte] ^= 1;
        EXPECT_EQ(CountOf(image), 0) << byte;
    }
}

TEST(PeImports, HeaderFarAwayIsNone)
{
    for (const std::uint32_t at : {0u, 1000u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFC0u, 0xFFFFFFFFu}) {
        EXPECT_EQ(CountOf(PeImage({ImportSection({"a.dll"})}).U32(60, at)), 0) << at;
    }
}

TEST(PeImports, NothingIsNoImage)
{
    EXPECT_EQ(WalkPeImports({}, ImportSink{}), 0);
    EXPECT_TRUE(FindVersionResource({}, 0x409).empty());
}

TEST(PeImports, DescriptorsStopWhereTimeAndNameAreBothZero)
{
    FileImage image = ImportsInPlace(1000);
    PutDescriptor(image, 1000, 0, 1100);
    PutDescriptor(image, 1020, 7, 1100); // both
    PutDescriptor(image, 1040, 7, 0);    // a name at the file's start
    PutDescriptor(image, 1060, 0, 0);
    PutDescriptor(image, 1080, 1, 1100); // behind the stop
    const Walk walk = WalkOf(image.Text(1100, "a.dll").Pad(1200));
    EXPECT_EQ(walk.Count, 3);
    EXPECT_EQ(walk.Names, (std::vector<std::string>{"a.dll", "a.dll", "MZ"}));
}

TEST(PeImports, OtherFieldsOfADescriptorDoNotStopIt)
{
    FileImage image = ImportsInPlace(1000);
    PutDescriptor(image, 1000, 0, 0);
    EXPECT_EQ(CountOf(image.U32(1000, 1).U32(1008, 1).U32(1016, 1)), 0);
}

TEST(PeImports, NameWithoutTwelveReadableBytesGivesUp)
{
    const auto imageWith = [](std::size_t name) {
        FileImage image = ImportsInPlace(1000);
        PutDescriptor(image, 1000, 0, 1100);
        PutDescriptor(image, 1020, 0, name);
        return image.Text(1100, "a.dll").Pad(PageBytes).U8(PageBytes - 12, 'z');
    };
    EXPECT_EQ(CountOf(imageWith(PageBytes - 12)), 2);
    EXPECT_EQ(WalkOf(imageWith(PageBytes - 12)).Names.back(), "z");
    EXPECT_EQ(CountOf(imageWith(PageBytes - 11)), 0);
    EXPECT_EQ(CountOf(imageWith(PageBytes)), 0);
    EXPECT_EQ(CountOf(imageWith(0x80000000)), 0);
    EXPECT_EQ(CountOf(imageWith(0xFFFFFFFF)), 0);
}

TEST(PeImports, LastPageIsReadableToItsEnd)
{
    const auto imageWith = [](std::size_t name) {
        FileImage image = ImportsInPlace(1000);
        PutDescriptor(image, 1000, 0, name);
        return image.Pad(PageBytes + 1);
    };
    EXPECT_EQ(CountOf(imageWith(PageBytes)), 1);
    EXPECT_EQ(CountOf(imageWith(2 * PageBytes - 12)), 1);
    EXPECT_EQ(WalkOf(imageWith(2 * PageBytes - 12)).Names, std::vector<std::string>{""});
    EXPECT_EQ(CountOf(imageWith(2 * PageBytes - 11)), 0);
}

TEST(PeImports, NameEndsWithTheFile)
{
    FileImage image = ImportsInPlace(1000);
    PutDescriptor(image, 1000, 0, 1040);
    PutDescriptor(image, 1020, 0, 0);
    EXPECT_EQ(WalkOf(image.Text(1040, "kern")).Names, std::vector<std::string>{"kern"});
}

TEST(PeImports, LongNameIsCut)
{
    const std::string letters(300, 'n');
    EXPECT_EQ(WalkOf(PeImage({ImportSection({letters})})).Names, std::vector<std::string>{letters.substr(0, 259)});
    EXPECT_EQ(WalkOf(PeImage({ImportSection({letters.substr(0, 259)})})).Names.front().size(), 259u);
}

TEST(PeImports, DescriptorsThatRunOutOfTheFileGiveUp)
{
    FileImage image = ImportsInPlace(PageBytes - 40);
    PutDescriptor(image, PageBytes - 40, 1, 0);
    PutDescriptor(image, PageBytes - 20, 1, 0);
    const Walk walk = WalkOf(image);
    EXPECT_EQ(walk.Count, 0);
    EXPECT_EQ(walk.Names.size(), 2u);
}

TEST(PeImports, EndOfTheLastPageStopsDescriptors)
{
    FileImage image = ImportsInPlace(PageBytes - 40);
    PutDescriptor(image, PageBytes - 40, 1, 0);
    EXPECT_EQ(CountOf(image), 1); // the page's rest reads as zeros
    FileImage late = ImportsInPlace(PageBytes - 39);
    PutDescriptor(late, PageBytes - 39, 1, 0);
    EXPECT_EQ(CountOf(late), 0);
}

TEST(PeImports, SectionBehindTheFileHasNone)
{
    for (const std::uint32_t at : {0x10000u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
        EXPECT_EQ(CountOf(ImportsInPlace(1000).U32(SectionTableAt + 20, at)), 0) << at;
    }
}

TEST(PeImports, AddressesBelowTheirPlaceInTheFileWork)
{
    // The section stands lower in memory than in the file.
    FileImage image = ImportsInPlace(1000).U32(SectionTableAt + 12, 600);
    PutDescriptor(image, 1000, 0, 700);
    PutDescriptor(image, 1020, 0, 0);
    EXPECT_EQ(WalkOf(image.Text(1100, "low.dll")).Names, std::vector<std::string>{"low.dll"});
}

TEST(PeImports, MoreThan4096AreNotBelieved)
{
    const auto imageWith = [](std::size_t count) {
        FileImage image = ImportsInPlace(1000);
        for (std::size_t i = 0; i < count; ++i) {
            PutDescriptor(image, 1000 + 20 * i, 1, 0);
        }
        return image.Pad(image.Content.size() + 20);
    };
    EXPECT_EQ(CountOf(imageWith(4096)), 4096);
    EXPECT_EQ(CountOf(imageWith(4097)), 0);
}

TEST(PeVersion, ResourceIsFound)
{
    EXPECT_EQ(BlockOf(ResourceImage()), "block");
}

TEST(PeVersion, ResourceIsFoundBehind64BitHeaders)
{
    EXPECT_EQ(BlockOf(ResourceImage(true)), "block");
}

TEST(PeVersion, ResourceMayStandInAnySection)
{
    PeSection data = ResourceSection({{0x409, BytesOf("block")}}, ResourceAddress);
    data.Name = ".data";
    FileImage image = PeImage({{".text", 0x1000, Bytes(100)}, data});
    EXPECT_EQ(BlockOf(image), "");
    EXPECT_EQ(BlockOf(image.U32(NewHeaderAt + 24 + 96 + 16, ResourceAddress)), "block");
}

TEST(PeVersion, BlockMayStandInAnotherSection)
{
    FileImage image = PeImage({ResourceSection({{0x409, BytesOf("block")}}), {".data", 0x8000, BytesOf("..other..")}});
    EXPECT_EQ(BlockOf(image.U32(At(LeafAt), 0x8002)), "other");
}

TEST(PeVersion, SectionsMayFollowEachOtherClosely)
{
    const PeSection resources = ResourceSection({{0x409, BytesOf("block")}}, ResourceAddress);
    const std::uint32_t end = ResourceAddress + static_cast<std::uint32_t>(resources.Data.size());
    FileImage image = PeImage({resources, {".data", end, BytesOf("other")}});
    EXPECT_EQ(BlockOf(image.U32(At(LeafAt), end)), "other");
}

TEST(PeVersion, SectionTableFollowsHeadersOfTheSizeTold)
{
    FileImage image = ResourceImage();
    const Bytes entry(image.Content.begin() + SectionTableAt, image.Content.begin() + SectionTableAt + 40);
    image.Put(SectionTableAt, Bytes(40)).Put(SectionTableAt + 16, entry);
    EXPECT_EQ(BlockOf(image), "");
    EXPECT_EQ(BlockOf(image.U16(NewHeaderAt + 20, 240)), "block");
}

TEST(PeVersion, HeaderNeeds248ReadableBytes)
{
    const auto imageWith = [](std::size_t header) {
        FileImage image = ResourceImage();
        constexpr std::size_t HeadersKept = 24 + 120; // up to the resources' entry
        const auto start = image.Content.begin() + NewHeaderAt;
        const Bytes headers(start, start + HeadersKept);
        const Bytes section(start + 248, start + 288);
        image.U32(60, static_cast<std::uint32_t>(header)).Put(header, headers).U16(header + 20, 120);
        return image.Put(header + HeadersKept, section).Pad(PageBytes);
    };
    EXPECT_EQ(BlockOf(imageWith(PageBytes - 248)), "block");
    EXPECT_EQ(BlockOf(imageWith(PageBytes - 247)), "");
}

TEST(PeVersion, SignatureIsChecked)
{
    EXPECT_EQ(BlockOf(ResourceImage().U8(NewHeaderAt + 2, 1)), "");
}

TEST(PeVersion, NeutralComesBeforeTheUsersLanguageAndThatBeforeAmericanEnglish)
{
    EXPECT_EQ(BlockAmong({0x40C, 0x409, 0x407, 0}), "0");
    EXPECT_EQ(BlockAmong({0x40C, 0x409, 0x407}), "1031");
    EXPECT_EQ(BlockAmong({0x40C, 0x409}), "1033");
    EXPECT_EQ(BlockAmong({0x40C, 0x410}), "1036");
    EXPECT_EQ(BlockAmong({0x40C, 0x409, 0x407}, 0x40C), "1036");
}

TEST(PeVersion, NoLanguageIsNoVersion)
{
    EXPECT_EQ(BlockAmong({}), "");
}

TEST(PeVersion, TypeIs16AndNumberIs1)
{
    EXPECT_EQ(BlockOf(ResourceImage().U32(At(16), 17)), "");
    EXPECT_EQ(BlockOf(ResourceImage().U32(At(16), 0x80000010)), "");
    EXPECT_EQ(BlockOf(ResourceImage().U32(At(NumberDirectoryAt + 16), 2)), "");
}

TEST(PeVersion, NamedEntriesAreSkipped)
{
    const PeSection plain = ResourceSection({{0x409, BytesOf("block")}}, ResourceAddress);
    FileImage data(plain.Data);
    // A second root: a named entry, then those of another type and of this one.
    const std::size_t root = 200;
    data.Pad(root + 16 + 24).U16(root + 12, 1).U16(root + 14, 2);
    data.U32(root + 16, 16).U32(root + 20, 0x80000000);
    data.U32(root + 24, 3).U32(root + 28, 0x80000000);
    data.U32(root + 32, 16).U32(root + 36, 0x80000000 | NumberDirectoryAt);
    FileImage image = PeImage({{".rsrc", ResourceAddress, data.Content}});
    EXPECT_EQ(BlockOf(image.U32(NewHeaderAt + 24 + 96 + 16, ResourceAddress + root)), "")
        << "offsets count from the root";
    FileImage rebased(root + 400);
    rebased.Put(0, Bytes(data.Content.begin() + root, data.Content.end())).Put(100, plain.Data);
    rebased.U32(36, 0x80000000 | (100 + NumberDirectoryAt));
    rebased.U32(100 + NumberDirectoryAt + 20, 0x80000000 | (100 + LanguageDirectoryAt));
    rebased.U32(100 + LanguageEntriesAt + 4, 100 + LeafAt).U32(100 + LeafAt, ResourceAddress + 100 + BlockAt);
    EXPECT_EQ(BlockOf(PeImage({{".rsrc", ResourceAddress, rebased.Content}})), "block");
}

TEST(PeVersion, NamedLanguageIsNone)
{
    EXPECT_EQ(BlockOf(ResourceImage().U16(At(LanguageDirectoryAt + 12), 1).U16(At(LanguageDirectoryAt + 14), 0)), "");
}

TEST(PeVersion, LeafWhereADirectoryShouldBeIsDamage)
{
    EXPECT_EQ(BlockOf(ResourceImage().U32(At(20), NumberDirectoryAt)), "");
    EXPECT_EQ(BlockOf(ResourceImage().U32(At(NumberDirectoryAt + 20), LanguageDirectoryAt)), "");
}

TEST(PeVersion, DirectoryWhereALeafShouldBeIsDamage)
{
    EXPECT_EQ(BlockOf(ResourceImage().U32(At(LanguageEntriesAt + 4), 0x80000000 | LeafAt)), "");
}

TEST(PeVersion, DirectoriesBehindTheResourcesAreEmpty)
{
    for (const std::uint32_t at : {0x80000500u, 0x87FFFFFFu, 0xFFFFFFF0u, 0xFFFFFFFFu}) {
        EXPECT_EQ(BlockOf(ResourceImage().U32(At(20), at)), "") << at;
        EXPECT_EQ(BlockOf(ResourceImage().U32(At(NumberDirectoryAt + 20), at)), "") << at;
    }
}

TEST(PeVersion, LeafNeedsAll16OfItsBytes)
{
    const std::uint32_t end = BlockAt + 8; // the block's five letters fill two numbers
    FileImage image = ResourceImage();
    ASSERT_EQ(image.Content.size(), At(end));
    // A leaf of the last 16 bytes, which overlap the leaf there is.
    const std::uint32_t last = end - 16;
    image.U32(At(LanguageEntriesAt + 4), last).U32(At(last), ResourceAddress + BlockAt + 3).U32(At(last + 4), 2);
    EXPECT_EQ(BlockOf(image).size(), 2u);
    image.U32(At(LanguageEntriesAt + 4), last + 1).U32(At(last + 1), ResourceAddress + BlockAt + 3);
    EXPECT_EQ(BlockOf(image.U32(At(last + 5), 2)), "");
    for (const std::uint32_t leaf : {end, 0x7FFFFFFFu}) {
        EXPECT_EQ(BlockOf(ResourceImage().U32(At(LanguageEntriesAt + 4), leaf)), "") << leaf;
    }
}

TEST(PeVersion, CountsThatLieFindWhatThereIs)
{
    EXPECT_EQ(BlockOf(ResourceImage().U16(At(14), 0xFFFF)), "block");
    EXPECT_EQ(BlockOf(ResourceImage().U16(At(12), 0xFFFF)), "");
    EXPECT_EQ(BlockOf(ResourceImage().U16(At(14), 0)), "");
    EXPECT_EQ(BlockOf(ResourceImage().U16(At(NumberDirectoryAt + 14), 0xFFFF)), "block");
}

TEST(PeVersion, EntriesEndWithTheResources)
{
    // The languages stand at the end, and the zeros behind it are not the neutral one.
    FileImage data(ResourceSection({{0x409, BytesOf("block")}}, ResourceAddress).Data);
    const std::size_t end = data.Content.size();
    data.U32(NumberDirectoryAt + 20, 0x80000000 | static_cast<std::uint32_t>(end)).U16(end + 14, 0xFFFF);
    data.U32(end + 16, 0x409).U32(end + 20, LeafAt);
    EXPECT_EQ(BlockOf(PeImage({{".rsrc", ResourceAddress, data.Content}})), "block");
}

TEST(PeVersion, EntryCutByTheEndIsNone)
{
    // The root alone, without the last byte of its only entry.
    const PeSection whole = ResourceSection({{0x409, BytesOf("block")}}, ResourceAddress);
    for (const std::size_t size : {16u, 20u, 23u}) {
        const Bytes data(whole.Data.begin(), whole.Data.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(BlockOf(PeImage({{".rsrc", ResourceAddress, data}})), "") << size;
    }
}

TEST(PeVersion, BlockIsCutToItsSection)
{
    EXPECT_EQ(BlockOf(ResourceImage().U32(At(LeafAt + 4), 1000)), std::string("block\0\0\0", 8));
    EXPECT_EQ(BlockOf(ResourceImage().U32(At(LeafAt + 4), 0xFFFFFFFF)), std::string("block\0\0\0", 8));
    const std::size_t more = ResourceImage().Content.size() + 100;
    EXPECT_EQ(BlockOf(ResourceImage().U32(At(LeafAt + 4), 1000).Pad(more)), std::string("block\0\0\0", 8));
    EXPECT_EQ(BlockOf(ResourceImage().U32(At(LeafAt + 4), 2)), "bl");
    EXPECT_EQ(BlockOf(ResourceImage().U32(At(LeafAt + 4), 0)), "");
}

TEST(PeVersion, BlockIsCutToTheFile)
{
    const std::size_t whole = ResourceImage().Content.size();
    EXPECT_EQ(BlockOf(ResourceImage().Cut(whole - 6)), "bl");
}

TEST(PeVersion, BlockBehindItsSectionIsNone)
{
    const std::uint32_t end = ResourceAddress + BlockAt + 8;
    EXPECT_EQ(BlockOf(ResourceImage().U32(At(LeafAt), end - 1)).size(), 1u);
    EXPECT_EQ(BlockOf(ResourceImage().U32(At(LeafAt), end)), "");
    EXPECT_EQ(BlockOf(ResourceImage().U32(At(LeafAt), ResourceAddress - 1)), "");
    EXPECT_EQ(BlockOf(ResourceImage().U32(At(LeafAt), 0)), "");
}

TEST(PeVersion, SectionThatLiesAboutItsSizeHidesNoneBelowIt)
{
    const PeSection resources = ResourceSection({{0x409, BytesOf("block")}}, ResourceAddress);
    FileImage image = PeImage({{".text", ResourceAddress + 0x1000, {}}, resources});
    EXPECT_EQ(BlockOf(image.U32(SectionTableAt + 16, 0xFFFFFFFF)), "block");
}

TEST(PeVersion, SectionWithoutBytesInTheFileHoldsNothing)
{
    EXPECT_EQ(BlockOf(ResourceImage().U32(SectionTableAt + 16, 0)), "");
    EXPECT_EQ(BlockOf(ResourceImage().U32(SectionTableAt + 20, 0x7FFFFFFF)), "");
    EXPECT_EQ(BlockOf(ResourceImage().U32(SectionTableAt + 20, 0xFFFFFFFF)), "");
}

TEST(PeVersion, HeadersMayTellOfNoResources)
{
    const std::size_t directories = NewHeaderAt + 24 + 96;
    EXPECT_EQ(BlockOf(ResourceImage().U32(directories - 4, 3)), "block");
    EXPECT_EQ(BlockOf(ResourceImage().U32(directories - 4, 2)), "");
    EXPECT_EQ(BlockOf(ResourceImage().U32(directories - 4, 0)), "");
    EXPECT_EQ(BlockOf(ResourceImage().U32(directories + 16, 0)), "");
}

TEST(PeVersion, ZeroAddressIsNoneEvenIfASectionStandsThere)
{
    FileImage image = PeImage({ResourceSection({{0x409, BytesOf("block")}}, 0)});
    EXPECT_EQ(BlockOf(image), "");
}
