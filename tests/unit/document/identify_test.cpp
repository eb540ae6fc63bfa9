#include "document/identify.h"

#include "document/document_fixture.h"
#include "document/file_images.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

using Names = std::vector<std::string>;

class IdentifyTest : public DocumentFixture {
protected:
    static std::int16_t TypeOf(const FileImage& image) { return Identify(image.Content).Info.FileType; }
    static FileInfo InfoOf(const FileImage& image) { return Identify(image.Content).Info; }
    static FileDetails FactsOf(const FileImage& image) { return Identify(image.Content).Facts; }
    static std::string DescriptionOf(const FileImage& image) { return FactsOf(image).FileDescription; }
    static Names ImportsOf(const FileImage& image) { return Identify(image.Content).Imports; }

    // The type when the status tells another size than the file has.
    static FileInfo InfoWhenSizeIs(const FileImage& image, std::int64_t size)
    {
        TestPort::AddFile(TestPath, image.Content).StatedSize = size;
        return IdentifyAlone();
    }

    // IdentifyFile without a document.
    static FileInfo IdentifyAlone(FileInfo info = {})
    {
        const int file = OpenForReading(TestPath);
        EXPECT_TRUE(IdentifyFile(file, TestPath, info));
        CloseOpenFile(file);
        return info;
    }

    // An archive's end record among size bytes of which it starts at position.
    static FileImage ZipEndAt(std::size_t size, std::size_t position)
    {
        return FileImage(size).Put(position, ZipEndBytesOf(0, 0)).Cut(size);
    }

    static FileImage NeDescription(std::uint32_t tableBytes, std::uint32_t position, std::size_t fileSize)
    {
        FileImage image = NeImage().U16(NewHeaderAt + 32, tableBytes).U32(NewHeaderAt + 44, position);
        if (position < fileSize) {
            image.U8(position, 3).Text(position + 1, "a b");
        }
        return image.Pad(fileSize).Cut(fileSize);
    }

    // A 16-bit program that imports the modules.
    static FileImage NeImporting(const Names& modules)
    {
        FileImage image = NeImage();
        const std::size_t table = 512;
        const std::size_t names = table + 2 * modules.size();
        image.U16(NewHeaderAt + 30, static_cast<std::uint32_t>(modules.size()));
        image.U16(NewHeaderAt + 40, static_cast<std::uint32_t>(table - NewHeaderAt));
        image.U16(NewHeaderAt + 42, static_cast<std::uint32_t>(names - NewHeaderAt)).Pad(names);
        for (std::size_t i = 0; i < modules.size(); ++i) {
            const std::size_t at = image.Content.size();
            image.U16(table + 2 * i, static_cast<std::uint32_t>(at - names));
            image.U8(at, static_cast<std::uint32_t>(modules[i].size())).Text(at + 1, modules[i]);
        }
        return image;
    }

    // What ReadZipCentral makes of room bytes 'x' each.
    static std::string CentralOf(const FileInfo& info, std::size_t room)
    {
        const Bytes before(room, 'x');
        Bytes destination = before;
        const bool read = ReadZipCentral(info, destination);
        EXPECT_TRUE(read || destination == before);
        return read ? std::string(destination.begin(), destination.end()) : "not read";
    }

    static void ExpectNoPromiseBroken(const FileImage& image)
    {
        EXPECT_EQ(BrokenPromises(image.Content), "");
        StartDocuments(MaxCacheSlots);
        for (std::size_t size = 0; size < image.Content.size(); ++size) {
            EXPECT_EQ(BrokenPromises(FileImage(image).Cut(size).Content), "") << "cut to " << size;
        }
        const std::size_t bits = std::min<std::size_t>(image.Content.size(), 1024) * 8;
        for (std::size_t bit = 0; bit < bits; ++bit) {
            FileImage damaged = image;
            damaged.Content[bit / 8] ^= static_cast<std::uint8_t>(1 << bit % 8);
            EXPECT_EQ(BrokenPromises(damaged.Content), "") << "bit " << bit;
        }
    }
};

} // namespace

TEST_F(IdentifyTest, EachKindIsKnownByItsHeaders)
{
    EXPECT_EQ(TypeOf(FileImage().Text(0, "Some text that is longer than the sixty-four bytes of a header.\r\n")), 0);
    EXPECT_EQ(TypeOf(NeImage()), 1);
    EXPECT_EQ(TypeOf(NeImage().U8(NewHeaderAt + 13, 0x80)), 2);
    EXPECT_EQ(TypeOf(NewHeaderImage("LE")), 3);
    EXPECT_EQ(TypeOf(PlainPeImage().U16(NewHeaderAt + 22, 0x2000)), 4);
    EXPECT_EQ(TypeOf(PlainPeImage()), 5);
    EXPECT_EQ(TypeOf(NeImage().U8(NewHeaderAt + 54, 1)), 6);
    EXPECT_EQ(TypeOf(NewHeaderImage("LX")), 7);
    EXPECT_EQ(TypeOf(MzImage()), 8);
    EXPECT_EQ(TypeOf(WithZip(MzImage())), 9);
    EXPECT_EQ(TypeOf(WithZip(FileImage())), 10);
    EXPECT_EQ(TypeOf(SzddImage()), 11);
}

TEST_F(IdentifyTest, WhatHasATypeIsNoText)
{
    EXPECT_TRUE(Identify(BytesOf("plain text\r\n")).IsText);
    EXPECT_FALSE(Identify(SzddImage().Content).IsText);
    FileImage letters(Bytes(64, 'a'));
    EXPECT_FALSE(Identify(letters.Text(0, "SZDD").Content).IsText);
    EXPECT_FALSE(Identify(ZipEndAt(23, 1).Content).IsText);
}

TEST_F(IdentifyTest, FileBelow64BytesIsNoProgram)
{
    EXPECT_EQ(TypeOf(MzImage().Cut(63)), NotRecognised);
    EXPECT_EQ(TypeOf(MzImage().Cut(64)), DosProgram);
    EXPECT_EQ(TypeOf(SzddImage().Cut(63)), NotRecognised);
    EXPECT_EQ(TypeOf(SzddImage().Cut(64)), CompressedFile);
    EXPECT_EQ(TypeOf(FileImage()), NotRecognised);
}

TEST_F(IdentifyTest, FileBelow64BytesMayBeAnArchive)
{
    EXPECT_EQ(TypeOf(ZipEndAt(63, 41)), ZipFile);
    EXPECT_EQ(TypeOf(ZipEndAt(63, 41).Text(0, "MZ")), ZipFile);
    EXPECT_EQ(TypeOf(ZipEndAt(64, 42).Text(0, "MZ")), SelfExtractingZip);
}

TEST_F(IdentifyTest, DamagedNewHeaderOffsetIsNoDosProgram)
{
    EXPECT_EQ(TypeOf(NewHeaderImage("NE").Cut(127)), NotRecognised);
    EXPECT_EQ(TypeOf(NewHeaderImage("LE").U32(60, 65)), NotRecognised);
    EXPECT_EQ(TypeOf(NewHeaderImage("LE").U32(60, 0x80000000)), NotRecognised);
    EXPECT_EQ(TypeOf(NewHeaderImage("LE").U32(60, 65).U16(24, 63)), DosProgram);
}

TEST_F(IdentifyTest, NewHeaderIsReadWhereItIsSaidToBe)
{
    EXPECT_EQ(TypeOf(NewHeaderImage("LX").U32(60, 1000).Text(1000, "LE").Pad(1064)), WindowsVxd);
    EXPECT_EQ(TypeOf(NewHeaderImage("LX").U32(60, 1000).Text(1000, "LE").Pad(1063)), NotRecognised);
    EXPECT_EQ(TypeOf(NewHeaderImage("LX").U32(60, 100000).Text(100000, "LE").Pad(100064)), WindowsVxd);
}

TEST_F(IdentifyTest, HeadersThatCannotBeReadAreNone)
{
    EXPECT_EQ(InfoWhenSizeIs(MzImage(63), 200).FileType, NotRecognised);
    EXPECT_EQ(InfoWhenSizeIs(NewHeaderImage("LE").Cut(127), 200).FileType, NotRecognised);
    EXPECT_EQ(InfoWhenSizeIs(NewHeaderImage("LE"), 200).FileType, WindowsVxd);
}

TEST_F(IdentifyTest, SizeOfTheStatusCounts)
{
    EXPECT_EQ(InfoWhenSizeIs(MzImage(64), 63).FileType, NotRecognised);
    EXPECT_EQ(InfoWhenSizeIs(NewHeaderImage("LE"), 127).FileType, NotRecognised);
    EXPECT_EQ(InfoWhenSizeIs(NewHeaderImage("LE"), 128).FileType, WindowsVxd);
}

TEST_F(IdentifyTest, TailThatCannotBeReadHasNoEndRecord)
{
    EXPECT_EQ(InfoWhenSizeIs(ZipEndAt(100, 50), 100).ZipDirOffset, 50);
    EXPECT_EQ(InfoWhenSizeIs(ZipEndAt(100, 50), 101).ZipDirOffset, 0);
}

TEST_F(IdentifyTest, StatusTellsSizeTimeAndAttributes)
{
    TestFile& file = TestPort::AddFile(TestPath, MzImage(77).Content);
    file.Time = 1234567890;
    file.Attributes = 0x27;
    const FileInfo info = IdentifyAlone();
    EXPECT_EQ(info.Size, 77);
    EXPECT_EQ(info.Time, 1234567890);
    EXPECT_EQ(info.Attributes, 0x27);
    EXPECT_EQ(info.FileType, DosProgram);
    EXPECT_FALSE(info.WantDetails);
}

TEST_F(IdentifyTest, WithoutAStatusAllStaysZero)
{
    TestPort::AddFile(TestPath, NeImage().Content).StatusFails = true;
    for (const bool wantDetails : {false, true}) {
        FileInfo info = {
            .WantDetails = wantDetails, .Size = 1, .Time = 2, .ZipDirOffset = 3, .FileType = 4, .Attributes = 5};
        const int file = OpenForReading(TestPath);
        EXPECT_FALSE(IdentifyFile(file, TestPath, info));
        CloseOpenFile(file);
        EXPECT_EQ(info.WantDetails, wantDetails);
        EXPECT_EQ(info.Size, 0);
        EXPECT_EQ(info.Time, 0);
        EXPECT_EQ(info.ZipDirOffset, 0);
        EXPECT_EQ(info.FileType, 0);
        EXPECT_EQ(info.Attributes, 0);
    }
}

TEST_F(IdentifyTest, RecordOfAnotherFileIsReplaced)
{
    TestPort::AddFile(TestPath, Bytes(10));
    const FileInfo info = IdentifyAlone({.ZipDirOffset = 3, .FileType = 4, .Attributes = 5});
    EXPECT_EQ(info.Size, 10);
    EXPECT_EQ(info.ZipDirOffset, 0);
    EXPECT_EQ(info.FileType, 0);
    EXPECT_EQ(info.Attributes, 0);
}

TEST_F(IdentifyTest, EndRecordMayBeTheLast22Bytes)
{
    EXPECT_EQ(InfoOf(ZipEndAt(100, 78)).ZipDirOffset, 78);
    EXPECT_EQ(InfoOf(ZipEndAt(100, 79)).ZipDirOffset, 0);
    EXPECT_EQ(InfoOf(ZipEndAt(5000, 4978)).ZipDirOffset, 4978);
    EXPECT_EQ(InfoOf(ZipEndAt(100000, 99978)).ZipDirOffset, 99978);
}

TEST_F(IdentifyTest, EndRecordIsLookedForInTheLast2048Bytes)
{
    EXPECT_EQ(InfoOf(ZipEndAt(5000, 2952)).ZipDirOffset, 2952);
    EXPECT_EQ(InfoOf(ZipEndAt(5000, 2951)).ZipDirOffset, 0);
    EXPECT_EQ(InfoOf(ZipEndAt(2049, 1)).ZipDirOffset, 1);
    EXPECT_EQ(InfoOf(ZipEndAt(2049, 0)).FileType, NotRecognised);
}

TEST_F(IdentifyTest, SmallFileIsLookedThroughWhole)
{
    EXPECT_EQ(InfoOf(ZipEndAt(2047, 1)).ZipDirOffset, 1);
    EXPECT_EQ(InfoOf(ZipEndAt(23, 1)).ZipDirOffset, 1);
    EXPECT_EQ(InfoOf(ZipEndAt(23, 1)).FileType, ZipFile);
}

TEST_F(IdentifyTest, EndRecordAtTheFilesStartIsNoArchive)
{
    // Position 0 says that there is none.
    EXPECT_EQ(InfoOf(ZipEndAt(22, 0)).ZipDirOffset, 0);
    EXPECT_EQ(InfoOf(ZipEndAt(22, 0)).FileType, NotRecognised);
    EXPECT_EQ(InfoOf(ZipEndAt(100, 0)).FileType, NotRecognised);
    EXPECT_EQ(InfoOf(ZipEndAt(21, 0)).FileType, NotRecognised);
    EXPECT_EQ(InfoOf(ZipEndAt(4, 0)).FileType, NotRecognised);
}

TEST_F(IdentifyTest, LastEndRecordCounts)
{
    EXPECT_EQ(InfoOf(WithZip(WithZip(FileImage(10), "one"), "other")).ZipDirOffset, 40);
    EXPECT_EQ(InfoOf(ZipEndAt(100, 30).Put(60, ZipEndBytesOf(0, 0)).U16(66, 1)).ZipDirOffset, 0);
}

TEST_F(IdentifyTest, ArchiveOfSeveralDisksIsNone)
{
    EXPECT_EQ(TypeOf(ZipEndAt(100, 50).U16(54, 1)), NotRecognised);
    EXPECT_EQ(TypeOf(ZipEndAt(100, 50).U16(56, 1)), NotRecognised);
    EXPECT_EQ(TypeOf(WithZip(MzImage()).U16(64 + 17 + 4, 1)), DosProgram);
}

TEST_F(IdentifyTest, ArchiveBehindADosProgramExtractsItself)
{
    EXPECT_EQ(TypeOf(WithZip(MzImage(500))), SelfExtractingZip);
    EXPECT_EQ(TypeOf(WithZip(NewHeaderImage("XX"))), SelfExtractingZip);
    EXPECT_EQ(TypeOf(WithZip(NeImage().U8(NewHeaderAt + 54, 0))), SelfExtractingZip);
}

TEST_F(IdentifyTest, ArchiveBehindAnythingElseIsAnArchive)
{
    EXPECT_EQ(TypeOf(WithZip(NeImage())), ZipFile);
    EXPECT_EQ(TypeOf(WithZip(NeImage().U8(NewHeaderAt + 13, 0x80))), ZipFile);
    EXPECT_EQ(TypeOf(WithZip(NewHeaderImage("LE"))), ZipFile);
    EXPECT_EQ(TypeOf(WithZip(NewHeaderImage("LX"))), ZipFile);
    EXPECT_EQ(TypeOf(WithZip(PlainPeImage())), ZipFile);
    EXPECT_EQ(TypeOf(WithZip(SzddImage())), ZipFile);
    EXPECT_EQ(TypeOf(WithZip(FileImage(300))), ZipFile);
    EXPECT_EQ(TypeOf(WithZip(NewHeaderImage("NE").U32(60, 0x7000))), ZipFile);
}

TEST_F(IdentifyTest, DetailsOfAProgramBeforeAnArchiveAreTold)
{
    EXPECT_EQ(FactsOf(WithZip(NeImage())).ImportCount, 2);
    EXPECT_EQ(DescriptionOf(WithZip(NeImage())), "An old program");
    EXPECT_EQ(DescriptionOf(WithZip(PlainPeImage())), "A program");
    EXPECT_EQ(ImportsOf(WithZip(NeImage())), (Names{"KERNEL", "USER"}));
    EXPECT_EQ(ImportsOf(WithZip(PlainPeImage())), (Names{"KERNEL32.dll", "USER32.dll"}));
}

TEST_F(IdentifyTest, DetailsAreToldOnlyWhenWanted)
{
    for (const FileImage& image : {NeImage(), PlainPeImage()}) {
        EXPECT_FALSE(HasNoDetails(Identify(image.Content, true).Facts));
        EXPECT_TRUE(HasNoDetails(Identify(image.Content, false).Facts));
        EXPECT_TRUE(Identify(image.Content, true).Info.WantDetails);
        EXPECT_FALSE(Identify(image.Content, false).Info.WantDetails);
    }
}

TEST_F(IdentifyTest, NextDocumentStartsWithoutDetails)
{
    EXPECT_EQ(DescriptionOf(PlainPeImage()), "A program");
    EXPECT_TRUE(HasNoDetails(FactsOf(MzImage())));
    EXPECT_EQ(DescriptionOf(NeImage()), "An old program");
    EXPECT_TRUE(HasNoDetails(FactsOf(FileImage())));
}

TEST_F(IdentifyTest, IdentifyingAnotherFileKeepsTheDocumentsDetails)
{
    EXPECT_EQ(DescriptionOf(PlainPeImage()), "A program");
    TestPort::AddFile(TestPath, NeImage().Content);
    EXPECT_EQ(IdentifyAlone().FileType, Windows16Program);
    EXPECT_STREQ(Details.FileDescription, "A program");
    EXPECT_EQ(Details.ImageMachine, MachineI386);
}

TEST_F(IdentifyTest, ClearedDetailsAreEmpty)
{
    DirtyDetails();
    ClearDetails();
    EXPECT_TRUE(HasNoDetails(Details));
}

TEST_F(IdentifyTest, Only16BitProgramsWithModulesImport16BitOnes)
{
    EXPECT_TRUE(Identify(NeImage().Content).Is16Bit);
    EXPECT_TRUE(Identify(WithZip(NeImage()).Content).Is16Bit);
    EXPECT_FALSE(Identify(NeImage().U16(NewHeaderAt + 30, 0).Content).Is16Bit);
    EXPECT_FALSE(Identify(PlainPeImage().Content).Is16Bit);
    EXPECT_FALSE(Identify(PlainPeImage().U16(NewHeaderAt + 4, 0).Content).Is16Bit) << "of no machine";
    EXPECT_FALSE(Identify(MzImage().Content).Is16Bit);
}

TEST_F(IdentifyTest, ModulesOf16BitProgramsAreCountedAndPlaced)
{
    const FileDetails facts = FactsOf(NeImage());
    EXPECT_EQ(facts.ImportCount, 2);
    EXPECT_EQ(facts.ModuleTable, static_cast<std::int64_t>(NeModuleTableAt));
    EXPECT_EQ(facts.ImportedNamesTable, static_cast<std::int64_t>(NeNamesAt));
    EXPECT_EQ(facts.ImageMachine, 0);
    EXPECT_STREQ(facts.FileVersionText, "");
    EXPECT_STREQ(facts.CompanyNameText, "");
}

TEST_F(IdentifyTest, TablesCountFromTheNewHeader)
{
    FileImage image = NeImage().Pad(1000);
    const Bytes header(image.Content.begin() + NewHeaderAt, image.Content.begin() + 2 * NewHeaderAt);
    const FileDetails facts = FactsOf(image.U32(60, 500).Put(500, header));
    EXPECT_EQ(facts.ModuleTable, 500 + 64);
    EXPECT_EQ(facts.ImportedNamesTable, 500 + 72);
}

TEST_F(IdentifyTest, ProgramWithoutModulesHasNoTables)
{
    const FileDetails facts = FactsOf(NeImage().U16(NewHeaderAt + 30, 0));
    EXPECT_EQ(facts.ImportCount, 0);
    EXPECT_EQ(facts.ModuleTable, 0);
    EXPECT_EQ(facts.ImportedNamesTable, 0);
    EXPECT_STREQ(facts.FileDescription, "An old program");
    EXPECT_EQ(ImportsOf(NeImage().U16(NewHeaderAt + 30, 0)), Names{});
}

TEST_F(IdentifyTest, ModuleCountHas16Bits)
{
    EXPECT_EQ(FactsOf(NeImage().U16(NewHeaderAt + 30, 0xFFFF)).ImportCount, 65535);
}

TEST_F(IdentifyTest, Every16BitProgramTellsItsDescription)
{
    for (const std::uint32_t target : {0u, 1u, 2u, 4u}) {
        EXPECT_EQ(DescriptionOf(NeImage().U8(NewHeaderAt + 54, target)), "An old program") << target;
    }
}

TEST_F(IdentifyTest, DescriptionWithoutASpaceIsNone)
{
    EXPECT_EQ(DescriptionOf(NeImage("MODULE")), "");
    EXPECT_EQ(DescriptionOf(NeImage("MODULE ")), "MODULE ");
    EXPECT_EQ(DescriptionOf(NeImage(" ")), " ");
    EXPECT_EQ(DescriptionOf(NeImage("")), "");
}

TEST_F(IdentifyTest, LongDescriptionIsCut)
{
    const std::string text = "a " + std::string(77, 'b');
    EXPECT_EQ(DescriptionOf(NeImage(text)), text);
    EXPECT_EQ(DescriptionOf(NeImage(text + "c")), text);
    EXPECT_EQ(DescriptionOf(NeImage(text + std::string(150, 'c'))), text);
}

TEST_F(IdentifyTest, SpaceBehindTheCutDoesNotCount)
{
    EXPECT_EQ(DescriptionOf(NeImage(std::string(78, 'b') + " c")), std::string(78, 'b') + " ");
    EXPECT_EQ(DescriptionOf(NeImage(std::string(79, 'b') + " c")), "");
}

TEST_F(IdentifyTest, DescriptionEndsWithItsTable)
{
    EXPECT_EQ(DescriptionOf(NeImage().U16(NewHeaderAt + 32, 7)), "An old");
    EXPECT_EQ(DescriptionOf(NeImage().U16(NewHeaderAt + 32, 3)), "");
    EXPECT_EQ(DescriptionOf(NeImage().U16(NewHeaderAt + 32, 1)), "");
    EXPECT_EQ(DescriptionOf(NeImage().U16(NewHeaderAt + 32, 0)), "");
}

TEST_F(IdentifyTest, DescriptionStandsAnywhereInTheFile)
{
    EXPECT_EQ(DescriptionOf(NeDescription(4, 1000, 1005)), "a b");
    EXPECT_EQ(DescriptionOf(NeDescription(4, 70000, 80000)), "a b");
}

TEST_F(IdentifyTest, DescriptionTableMustEndBeforeTheFilesLastByte)
{
    EXPECT_EQ(DescriptionOf(NeDescription(4, 1000, 1004)), "");
    EXPECT_EQ(DescriptionOf(NeDescription(4, 1000, 1003)), "");
    EXPECT_EQ(DescriptionOf(NeDescription(4, 0x7FFFFFFF, 1000)), "");
    EXPECT_EQ(DescriptionOf(NeDescription(4, 0x80000000, 1000)), "");
    EXPECT_EQ(DescriptionOf(NeDescription(4, 0xFFFFFFFF, 1000)), "");
}

TEST_F(IdentifyTest, OnlyTheFirst256BytesOfTheDescriptionTableCount)
{
    EXPECT_EQ(DescriptionOf(NeDescription(256, 1000, 1257)), "a b");
    EXPECT_EQ(DescriptionOf(NeDescription(256, 1000, 1256)), "");
    EXPECT_EQ(DescriptionOf(NeDescription(0xFFFF, 1000, 1257)), "a b");
    EXPECT_EQ(DescriptionOf(NeDescription(0xFFFF, 1000, 1256)), "");
}

TEST_F(IdentifyTest, DescriptionThereIsStays)
{
    strcpy(Details.FileDescription, "An earlier one");
    TestPort::AddFile(TestPath, NeImage().Content);
    IdentifyAlone({.WantDetails = true});
    EXPECT_STREQ(Details.FileDescription, "An earlier one");
    ClearDetails();
}

TEST_F(IdentifyTest, DescriptionThatCannotBeReadIsNone)
{
    TestPort::AddFile(TestPath, NeDescription(100, 200, 250).Content).StatedSize = 1000;
    IdentifyAlone({.WantDetails = true});
    EXPECT_STREQ(Details.FileDescription, "");
    EXPECT_EQ(Details.ImportCount, 2);
    ClearDetails();
}

TEST_F(IdentifyTest, WindowsProgramTellsItsVersionImportsAndMachine)
{
    const FileDetails facts = FactsOf(PlainPeImage());
    EXPECT_EQ(facts.ImportCount, 2);
    EXPECT_EQ(facts.ImageMachine, 332);
    EXPECT_STREQ(facts.FileDescription, "A program");
    EXPECT_STREQ(facts.FileVersionText, "1.2.3");
    EXPECT_STREQ(facts.CompanyNameText, "A company");
    EXPECT_EQ(facts.ModuleTable, 0);
    EXPECT_EQ(facts.ImportedNamesTable, 0);
}

TEST_F(IdentifyTest, ProgramOf64BitsTellsItsVersionButNoImports)
{
    const Identified file = Identify(PlainPeImage(true).Content);
    EXPECT_EQ(file.Info.FileType, Windows32Program);
    EXPECT_EQ(file.Facts.ImageMachine, 0x8664);
    EXPECT_EQ(file.Facts.ImportCount, 0);
    EXPECT_STREQ(file.Facts.FileDescription, "A program");
    EXPECT_EQ(file.Imports, Names{});
}

TEST_F(IdentifyTest, TextsOfTheVersionFillTheirFields)
{
    const std::string letters(100, 'x');
    const FileDetails facts = FactsOf(PeImage({ResourceSection({{0, PlainVersionBlock(letters, letters, letters)}})}));
    EXPECT_EQ(facts.FileDescription, letters.substr(0, 79));
    EXPECT_EQ(facts.FileVersionText, letters.substr(0, 29));
    EXPECT_EQ(facts.CompanyNameText, letters.substr(0, 39));
}

TEST_F(IdentifyTest, DescriptionOfAVersionNeedsNoSpace)
{
    EXPECT_EQ(DescriptionOf(PeImage({ResourceSection({{0, PlainVersionBlock("Lone")}})})), "Lone");
}

TEST_F(IdentifyTest, VersionIsInTheUsersLanguage)
{
    const FileImage image = PeImage(
        {ResourceSection({{0x409, PlainVersionBlock("A program")}, {0x407, PlainVersionBlock("Ein Programm")}})});
    EXPECT_EQ(DescriptionOf(image), "A program");
    TestPort::SetUserLanguage(0x407);
    EXPECT_EQ(DescriptionOf(image), "Ein Programm");
}

TEST_F(IdentifyTest, WindowsProgramWithoutVersionTellsItsImports)
{
    const FileDetails facts = FactsOf(PeImage({ImportSection({"a.dll", "b.dll", "c.dll"})}));
    EXPECT_EQ(facts.ImportCount, 3);
    EXPECT_STREQ(facts.FileDescription, "");
}

TEST_F(IdentifyTest, WindowsProgramWithADamagedSignatureTellsItsMachineOnly)
{
    const Identified file = Identify(PlainPeImage().U8(NewHeaderAt + 2, 1).Content);
    EXPECT_EQ(file.Info.FileType, Windows32Program);
    EXPECT_EQ(file.Facts.ImageMachine, 332);
    EXPECT_EQ(file.Facts.ImportCount, 0);
    EXPECT_STREQ(file.Facts.FileDescription, "");
}

TEST_F(IdentifyTest, ImportsOfWindowsProgramsAndLibrariesAreListed)
{
    const Names names = {"KERNEL32.dll", "USER32.dll"};
    EXPECT_EQ(ImportsOf(PlainPeImage()), names);
    EXPECT_EQ(ImportsOf(PlainPeImage().U16(NewHeaderAt + 22, 0x2000)), names);
    EXPECT_EQ(ImportsOf(PlainPeImage().Pad(100000)), names);
}

TEST_F(IdentifyTest, ImportsOfAFileThatVanishedAreNone)
{
    EXPECT_EQ(FactsOf(PlainPeImage()).ImportCount, 2);
    TestPort::RemoveFile(TestPath);
    Names names;
    ListImports(TestPath, ImportSink{TakeImport, &names});
    EXPECT_EQ(names, Names{});
}

TEST_F(IdentifyTest, MediumThatGoesAwayLeavesNothingHalfRead)
{
    int withoutVersion = 0;
    int withoutImports = 0;
    for (int checks = 0; checks < 60; ++checks) {
        TestPort::FailMappedReadsAfter(checks);
        const FileDetails facts = FactsOf(PlainPeImage());
        const bool hasVersion = facts.FileDescription[0] != '\0';
        EXPECT_STREQ(facts.FileDescription, hasVersion ? "A program" : "") << checks;
        EXPECT_STREQ(facts.FileVersionText, hasVersion ? "1.2.3" : "") << checks;
        EXPECT_STREQ(facts.CompanyNameText, hasVersion ? "A company" : "") << checks;
        EXPECT_TRUE(facts.ImportCount == 0 || facts.ImportCount == 2) << checks;
        EXPECT_EQ(facts.ImageMachine, 332) << checks;
        withoutVersion += !hasVersion;
        withoutImports += facts.ImportCount == 0;
    }
    EXPECT_GE(withoutVersion, 8);
    EXPECT_GE(withoutImports, 5);
    EXPECT_LT(withoutImports, 60);
}

TEST_F(IdentifyTest, ImportsOfAMediumThatGoesAwayAreNone)
{
    EXPECT_EQ(FactsOf(PlainPeImage()).ImportCount, 2);
    TestPort::FailMappedReadsAfter(0);
    Names names;
    ListImports(TestPath, ImportSink{TakeImport, &names});
    EXPECT_EQ(names, Names{});
}

TEST_F(IdentifyTest, ModulesOf16BitProgramsAreListedAsTheyStand)
{
    EXPECT_EQ(ImportsOf(NeImage()), (Names{"KERNEL", "USER"}));
    EXPECT_EQ(ImportsOf(NeImage().U8(NewHeaderAt + 54, 1)), (Names{"KERNEL", "USER"}));
    EXPECT_EQ(ImportsOf(NeImporting({"Mixed", "Mixed", ""})), (Names{"Mixed", "Mixed", ""}));
}

TEST_F(IdentifyTest, ModulesOfALargeProgramAreListed)
{
    EXPECT_EQ(ImportsOf(NeImage().Pad(100000)), (Names{"KERNEL", "USER"}));
}

TEST_F(IdentifyTest, FilesWithoutImportsListNone)
{
    for (const FileImage& image :
         {MzImage(), NewHeaderImage("LE"), SzddImage(), WithZip(FileImage(100)), FileImage()}) {
        EXPECT_EQ(ImportsOf(image), Names{});
    }
}

TEST_F(IdentifyTest, First256ModulesAreListed)
{
    Names modules;
    for (int i = 0; i < 300; ++i) {
        modules.push_back("M" + std::to_string(i));
    }
    const Identified file = Identify(NeImporting(modules).Content);
    EXPECT_EQ(file.Facts.ImportCount, 300);
    EXPECT_EQ(file.Imports, Names(modules.begin(), modules.begin() + 256));
}

TEST_F(IdentifyTest, First19LettersOfAModuleAreListed)
{
    EXPECT_EQ(ImportsOf(NeImporting({"ABCDEFGHIJKLMNOPQRS", "ABCDEFGHIJKLMNOPQRST", std::string(120, 'X')})),
              (Names{"ABCDEFGHIJKLMNOPQRS", "ABCDEFGHIJKLMNOPQRS", std::string(19, 'X')}));
}

TEST_F(IdentifyTest, ModuleBehindTheFileIsSkipped)
{
    EXPECT_EQ(ImportsOf(NeImage().U16(NeModuleTableAt, 0xFFFF)), Names{"USER"});
    const std::uint32_t end = static_cast<std::uint32_t>(NeImage().Content.size() - NeNamesAt);
    EXPECT_EQ(ImportsOf(NeImage().U16(NeModuleTableAt, end)), Names{"USER"});
    EXPECT_EQ(ImportsOf(NeImage().U16(NeModuleTableAt, end - 1)), (Names{"", "USER"}));
}

TEST_F(IdentifyTest, ModuleEndsWithTheFile)
{
    EXPECT_EQ(ImportsOf(NeImporting({"KERNEL", "USER"}).Cut(526)), (Names{"KERNEL", "US"}));
}

TEST_F(IdentifyTest, TableOfModulesEndsWithTheFile)
{
    EXPECT_EQ(ImportsOf(NeImage().U16(NewHeaderAt + 40, 0xFFFF)), Names{});
    // One reference and a half.
    FileImage image = NeImage().U16(NewHeaderAt + 30, 9).Pad(300);
    image.U16(NewHeaderAt + 40, 297 - NewHeaderAt).U16(297, 8).U8(299, 1);
    EXPECT_EQ(ImportsOf(image), Names{"USER"});
}

TEST_F(IdentifyTest, ZipEndIsReadFromTheDocument)
{
    for (const std::size_t before : {std::size_t{10}, std::size_t{100000}}) {
        FileImage image = WithZip(FileImage(before), "directory");
        const FileInfo info = InfoOf(image.U16(before + 9 + 10, 3));
        ZipEndRecord record = {};
        EXPECT_TRUE(ReadZipEnd(info, record));
        EXPECT_EQ(record.EntryCount, 3);
        EXPECT_EQ(record.DirectoryBytes, 9u);
        EXPECT_EQ(record.DirectoryPosition, before);
    }
}

TEST_F(IdentifyTest, ZipEndThatIsNotThereIsTold)
{
    FileInfo info = InfoOf(WithZip(FileImage(10)));
    ZipEndRecord record = {};
    ++info.ZipDirOffset;
    EXPECT_FALSE(ReadZipEnd(info, record)) << "it would pass the end";
    EXPECT_EQ(record.DirectoryBytes, 0u);
    info.ZipDirOffset -= 2;
    EXPECT_FALSE(ReadZipEnd(info, record)) << "other bytes";
    info.ZipDirOffset = 0;
    EXPECT_FALSE(ReadZipEnd(info, record));
    info.ZipDirOffset = -5;
    EXPECT_FALSE(ReadZipEnd(info, record));
}

TEST_F(IdentifyTest, ZipCentralIsReadWhereItFits)
{
    for (const std::size_t before : {std::size_t{10}, std::size_t{100000}}) {
        const FileInfo info = InfoOf(WithZip(FileImage(before), "directory"));
        EXPECT_EQ(CentralOf(info, 9), "directory");
        EXPECT_EQ(CentralOf(info, 12), "directoryxxx");
        EXPECT_EQ(CentralOf(info, 8), "not read");
        EXPECT_EQ(CentralOf(info, 0), "not read");
    }
}

TEST_F(IdentifyTest, ZipCentralThatPassesTheEndIsNotRead)
{
    const auto central = [](std::uint32_t position, std::uint32_t bytes) {
        FileImage image(20);
        const FileInfo info = InfoOf(image.Text(15, "tail").Append(ZipEndBytesOf(position, bytes)));
        return CentralOf(info, 30);
    };
    EXPECT_EQ(central(16, 2), "ai" + std::string(28, 'x'));
    EXPECT_EQ(central(16, 26).substr(0, 7), std::string("ail\0PK\5", 7));
    EXPECT_EQ(central(16, 27), "not read");
    EXPECT_EQ(central(42, 0), "not read") << "an empty directory is none";
    EXPECT_EQ(central(43, 1), "not read");
    EXPECT_EQ(central(0x7FFFFFFF, 30), "not read");
    EXPECT_EQ(central(0x80000000, 2), "not read");
    EXPECT_EQ(central(0xFFFFFFFF, 2), "not read");
    EXPECT_EQ(central(16, 0x80000000), "not read");
    EXPECT_EQ(central(16, 0xFFFFFFFF), "not read");
}

TEST_F(IdentifyTest, ZipCentralThatVanishedIsNotRead)
{
    const FileInfo info = InfoOf(WithZip(FileImage(100000), "directory"));
    TestPort::RemoveFile(TestPath);
    EXPECT_EQ(CentralOf(info, 9), "not read");
}

TEST_F(IdentifyTest, DocumentWithoutArchiveHasNoZipCentral)
{
    EXPECT_EQ(CentralOf(InfoOf(MzImage()), 5), "not read");
    EXPECT_EQ(CentralOf(InfoOf(FileImage(20)), 5), "not read");
}

TEST_F(IdentifyTest, DamagedProgramsBreakNoPromise)
{
    for (const char* mark : {"LE", "LX", "XX"}) {
        ExpectNoPromiseBroken(NewHeaderImage(mark));
    }
    ExpectNoPromiseBroken(MzImage());
    ExpectNoPromiseBroken(SzddImage());
}

TEST_F(IdentifyTest, Damaged16BitProgramsBreakNoPromise)
{
    ExpectNoPromiseBroken(NeImage());
    ExpectNoPromiseBroken(NeImage("MODULE").U8(NewHeaderAt + 13, 0x80));
    ExpectNoPromiseBroken(NeImage().U8(NewHeaderAt + 54, 1));
}

TEST_F(IdentifyTest, Damaged32BitProgramsBreakNoPromise)
{
    ExpectNoPromiseBroken(PlainPeImage());
}

TEST_F(IdentifyTest, Damaged64BitProgramsBreakNoPromise)
{
    ExpectNoPromiseBroken(PlainPeImage(true));
}

TEST_F(IdentifyTest, DamagedArchivesBreakNoPromise)
{
    ExpectNoPromiseBroken(WithZip(FileImage(20)));
    ExpectNoPromiseBroken(WithZip(MzImage(70)));
    ExpectNoPromiseBroken(WithZip(NeImage()));
    ExpectNoPromiseBroken(WithZip(WithZip(FileImage(5))));
}
