#include "document/exe_header.h"

#include "document/file_images.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

HeaderSpan HeaderAt(const FileImage& image, std::size_t at)
{
    return HeaderSpan(image.Content.data() + at, HeaderBytes);
}

StubFacts StubOf(const FileImage& image, std::int32_t fileSize)
{
    return ReadStub(HeaderAt(image, 0), fileSize);
}

// The type of a stub that leads to no new header.
std::int16_t FinalTypeOf(const FileImage& image, std::int32_t fileSize = 1000)
{
    const StubFacts stub = StubOf(image, fileSize);
    EXPECT_EQ(stub.NewHeader, 0);
    return stub.FileType;
}

FileImage Stub(std::uint32_t relocationTable, std::uint32_t newHeader)
{
    return FileImage(HeaderBytes).Text(0, "MZ").U16(24, relocationTable).U32(60, newHeader);
}

NewHeaderFacts FactsOf(const FileImage& image)
{
    return ReadNewHeader(HeaderAt(image, NewHeaderAt));
}

std::int16_t TypeOfMark(std::string_view mark)
{
    return FactsOf(NewHeaderImage(mark)).FileType;
}

std::int16_t TypeOfNe(std::uint32_t target, std::uint32_t flags = 0)
{
    return FactsOf(NewHeaderImage("NE").U8(NewHeaderAt + 54, target).U16(NewHeaderAt + 12, flags)).FileType;
}

std::int16_t TypeOfPe(std::uint32_t characteristics)
{
    return FactsOf(NewHeaderImage("PE").U16(NewHeaderAt + 22, characteristics)).FileType;
}

std::string CountedName(const Bytes& bytes)
{
    char text[10];
    memset(text, '#', sizeof text);
    CopyCountedName(bytes, text, sizeof text);
    EXPECT_NE(memchr(text, '\0', sizeof text), nullptr);
    return text;
}

} // namespace

TEST(ExeHeader, FourLettersMakeACompressedFile)
{
    EXPECT_EQ(FinalTypeOf(FileImage(HeaderBytes).Text(0, "SZDD")), CompressedFile);
    for (const char* mark : {"SZDX", "SZXD", "SXDD", "XZDD", "szdd", "SZ"}) {
        EXPECT_EQ(FinalTypeOf(FileImage(HeaderBytes).Text(0, mark)), NotRecognised) << mark;
    }
}

TEST(ExeHeader, CompressedFileNeedsNothingBeyondItsLetters)
{
    FileImage image(Bytes(HeaderBytes, 0xFF));
    EXPECT_EQ(FinalTypeOf(image.Text(0, "SZDD")), CompressedFile);
}

TEST(ExeHeader, OnlyTheTwoLettersInTheirOrderMakeAProgram)
{
    EXPECT_EQ(FinalTypeOf(FileImage(HeaderBytes).Text(0, "MZ")), DosProgram);
    for (const char* mark : {"ZM", "Mz", "mZ", "M", "XZ", "MX", " MZ"}) {
        EXPECT_EQ(FinalTypeOf(FileImage(HeaderBytes).Text(0, mark)), NotRecognised) << mark;
    }
}

TEST(ExeHeader, RelocationTableBelow64LeavesNoRoomForANewHeader)
{
    EXPECT_EQ(FinalTypeOf(Stub(0, 64)), DosProgram);
    EXPECT_EQ(FinalTypeOf(Stub(63, 64)), DosProgram);
    EXPECT_EQ(StubOf(Stub(64, 64), 1000).NewHeader, 64);
    EXPECT_EQ(StubOf(Stub(0xFFFF, 64), 1000).NewHeader, 64);
}

TEST(ExeHeader, RelocationTableBelow64MakesADosProgramWhereverTheNewHeaderIs)
{
    EXPECT_EQ(FinalTypeOf(Stub(63, 0x7FFFFFFF)), DosProgram);
}

TEST(ExeHeader, NewHeaderAtZeroIsNone)
{
    EXPECT_EQ(FinalTypeOf(Stub(64, 0)), DosProgram);
    EXPECT_EQ(StubOf(Stub(64, 1), 1000).NewHeader, 1);
}

TEST(ExeHeader, NewHeaderMayBeTheLast64Bytes)
{
    EXPECT_EQ(StubOf(Stub(64, 936), 1000).NewHeader, 936);
    EXPECT_EQ(StubOf(Stub(64, 936), 1000).FileType, NotRecognised);
}

TEST(ExeHeader, NewHeaderBeyondTheEndIsDamage)
{
    for (const std::uint32_t at : {937u, 1000u, 0x10000u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        EXPECT_EQ(FinalTypeOf(Stub(64, at)), NotRecognised) << at;
    }
    EXPECT_EQ(FinalTypeOf(Stub(64, 1), 64), NotRecognised);
}

TEST(ExeHeader, NewHeaderOffsetHas32Bits)
{
    EXPECT_EQ(StubOf(Stub(64, 0x12345678), INT32_MAX).NewHeader, 0x12345678);
    EXPECT_EQ(StubOf(Stub(64, INT32_MAX - 64), INT32_MAX).NewHeader, INT32_MAX - 64);
    EXPECT_EQ(FinalTypeOf(Stub(64, INT32_MAX - 63), INT32_MAX), NotRecognised);
}

TEST(ExeHeader, MarkOfTheNewHeaderTellsTheKind)
{
    EXPECT_EQ(TypeOfMark("LE"), WindowsVxd);
    EXPECT_EQ(TypeOfMark("LX"), Os2Version2Program);
    EXPECT_EQ(TypeOfMark("PE"), Windows32Program);
    for (const char* mark : {"", "EL", "EN", "le", "NX", "PX", "LF", "W3", "MZ"}) {
        EXPECT_EQ(TypeOfMark(mark), DosProgram) << mark;
    }
}

TEST(ExeHeader, OnlyNeAndPeTellMore)
{
    for (const char* mark : {"LE", "LX", "XX"}) {
        EXPECT_FALSE(FactsOf(NewHeaderImage(mark)).IsNe) << mark;
        EXPECT_FALSE(FactsOf(NewHeaderImage(mark)).IsPe) << mark;
    }
    EXPECT_TRUE(FactsOf(NewHeaderImage("NE")).IsNe);
    EXPECT_FALSE(FactsOf(NewHeaderImage("NE")).IsPe);
    EXPECT_FALSE(FactsOf(NewHeaderImage("PE")).IsNe);
    EXPECT_TRUE(FactsOf(NewHeaderImage("PE")).IsPe);
}

TEST(ExeHeader, TargetSystemIsToldByTwoBitsOfWhichWindowsCountsFirst)
{
    EXPECT_EQ(TypeOfNe(0), DosProgram);
    EXPECT_EQ(TypeOfNe(1), Os2Program);
    EXPECT_EQ(TypeOfNe(2), Windows16Program);
    EXPECT_EQ(TypeOfNe(3), Windows16Program);
    EXPECT_EQ(TypeOfNe(4), DosProgram);
    EXPECT_EQ(TypeOfNe(5), Os2Program);
    EXPECT_EQ(TypeOfNe(0xFC), DosProgram);
    EXPECT_EQ(TypeOfNe(0xFE), Windows16Program);
}

TEST(ExeHeader, LibraryFlagIsTheTopBitOfTheModuleFlags)
{
    EXPECT_EQ(TypeOfNe(2, 0x8000), Windows16Dll);
    EXPECT_EQ(TypeOfNe(3, 0xFFFF), Windows16Dll);
    EXPECT_EQ(TypeOfNe(2, 0x7FFF), Windows16Program);
    EXPECT_EQ(TypeOfNe(2, 0x0080), Windows16Program);
}

TEST(ExeHeader, LibraryFlagMattersForWindowsOnly)
{
    EXPECT_EQ(TypeOfNe(1, 0x8000), Os2Program);
    EXPECT_EQ(TypeOfNe(0, 0x8000), DosProgram);
}

TEST(ExeHeader, TablesOf16BitProgramsAreToldByTheirOwnFields)
{
    FileImage image = NewHeaderImage("NE");
    for (std::uint32_t i = 2; i < HeaderBytes; ++i) {
        image.U8(NewHeaderAt + i, i);
    }
    const NewHeaderFacts facts = FactsOf(image);
    EXPECT_EQ(facts.ModuleCount, 0x1F1E);
    EXPECT_EQ(facts.DescriptionBytes, 0x2120);
    EXPECT_EQ(facts.ModuleTable, 0x2928);
    EXPECT_EQ(facts.ImportedNamesTable, 0x2B2A);
    EXPECT_EQ(facts.DescriptionPosition, 0x2F2E2D2Cu);
}

TEST(ExeHeader, LibraryImageIsABitOfTheCharacteristics)
{
    EXPECT_EQ(TypeOfPe(0), Windows32Program);
    EXPECT_EQ(TypeOfPe(0x2000), Windows32Dll);
    EXPECT_EQ(TypeOfPe(0xFFFF), Windows32Dll);
    EXPECT_EQ(TypeOfPe(0xDFFF), Windows32Program);
}

TEST(ExeHeader, MachineIsTheFirstFieldOfTheFileHeader)
{
    EXPECT_EQ(FactsOf(NewHeaderImage("PE").U16(NewHeaderAt + 4, 332)).Machine, MachineI386);
    EXPECT_EQ(FactsOf(NewHeaderImage("PE").U16(NewHeaderAt + 4, 0x8664)).Machine, 0x8664);
}

TEST(ExeHeader, CountedNameHasAsManyLettersAsItsFirstByteSays)
{
    EXPECT_EQ(CountedName(BytesOf("\3abcdef")), "abc");
    EXPECT_EQ(CountedName(Bytes{0, 'a', 'b'}), "");
}

TEST(ExeHeader, CountedNameIsCutToItsRoom)
{
    EXPECT_EQ(CountedName(BytesOf("\x09"
                                  "abcdefghijklm")),
              "abcdefghi");
    EXPECT_EQ(CountedName(BytesOf("\x0A"
                                  "abcdefghijklm")),
              "abcdefghi");
    EXPECT_EQ(CountedName(BytesOf("\xFF"
                                  "abcdefghijklm")),
              "abcdefghi");
}

TEST(ExeHeader, CountedNameEndsWithTheData)
{
    EXPECT_EQ(CountedName(BytesOf("\x09"
                                  "abc")),
              "abc");
    EXPECT_EQ(CountedName(BytesOf("\x09")), "");
    EXPECT_EQ(CountedName({}), "");
}

TEST(ExeHeader, CountedNameEndsAtAZeroByte)
{
    EXPECT_EQ(CountedName(Bytes{5, 'a', 'b', 0, 'c', 'd'}), "ab");
}
