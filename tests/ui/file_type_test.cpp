#include "support/ui_test.h"

#include <algorithm>

namespace {

class FileTypeTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }
};

std::string Number16(unsigned number)
{
    return {static_cast<char>(number), static_cast<char>(number >> 8)};
}

std::string Number32(unsigned number)
{
    return Number16(number & 0xFFFF) + Number16(number >> 16);
}

void Put(std::string& bytes, std::size_t place, const std::string& value)
{
    bytes.replace(place, value.size(), value);
}

// Lines make text of whatever stands before them, unless it is recognised as something else.
std::string Lines()
{
    return "\r\n" + NumberedLines(100);
}

// The header of a DOS program that points to a newer one.
std::string Stub(unsigned newHeader)
{
    std::string stub(64, '\0');
    Put(stub, 0, "MZ");
    Put(stub, 24, Number16(64));
    Put(stub, 60, Number32(newHeader));
    return stub;
}

std::string DosProgramFile()
{
    return Stub(0) + Lines();
}

// A program with a new header right behind the old one; 64 bytes of it are zero but for the mark.
std::string NewProgram(const std::string& mark)
{
    std::string header(64, '\0');
    Put(header, 0, mark);
    return Stub(64) + header + Lines();
}

std::string NeProgram(char target, char flags)
{
    std::string program = NewProgram("NE");
    program[64 + 54] = target;
    program[64 + 13] = flags;
    return program;
}

std::string PeProgram(unsigned machine, unsigned characteristics)
{
    std::string program = NewProgram(std::string("PE\0\0", 4));
    Put(program, 64 + 4, Number16(machine));
    Put(program, 64 + 22, Number16(characteristics));
    return program;
}

constexpr unsigned Machine386 = 332;
constexpr unsigned MachineAmd64 = 0x8664;

// An archive, as large as before bytes stand in front of it, with one stored member.
std::string Archive(std::size_t before = 0, unsigned disk = 0)
{
    const std::string name = "member.txt";
    const std::string content = "stored";
    constexpr unsigned Crc = 0x35E8D4D7; // nobody checks it here
    const std::string sizes = Number32(Crc) + Number32(content.size()) + Number32(content.size());
    const std::string common = Number16(10) + Number16(0) + Number16(0) + Number16(0) + Number16(0x21) + sizes +
                               Number16(name.size()) + Number16(0);
    const std::string local = "PK\3\4" + common + name + content;
    const std::string central = "PK\1\2" + Number16(10) + common + Number16(0) + Number16(0) + Number16(0) +
                                Number32(0x20) + Number32(before) + name;
    const std::string end = "PK\5\6" + Number16(disk) + Number16(disk) + Number16(1) + Number16(1) +
                            Number32(central.size()) + Number32(before + local.size()) + Number16(0);
    return local + central + end;
}

std::string OwnProgramFile()
{
    char path[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, sizeof path);
    return path;
}

void ExpectShown(Program& program, UINT mode)
{
    EXPECT_EQ(program.Menu(IDM_VIEW_TEXT).Checked, mode == IDM_VIEW_TEXT);
    EXPECT_EQ(program.Menu(IDM_VIEW_HEX).Checked, mode == IDM_VIEW_HEX);
}

constexpr char LaunchesAssociated[] = "Launch the current file with it's associated application ";
constexpr char LaunchesWindows[] = "Launch the current Windows program";
constexpr char EditsDos[] = "Edit the current file";

// The menu's help tells what the program takes the file for.
std::string LaunchHelp(Program& program)
{
    program.Send(program.Frame(), WM_MENUSELECT, IDM_FILE_LAUNCH);
    return program.StatusText();
}

// Waits until the file is open and its position shown: a message that comes behind shows it once more, and
// once a command posted after that has beeped it has come.
void WaitForFile(Program& program, const std::string& name)
{
    EXPECT_TRUE(program.WaitForTitle(name));
    const int beeps = program.Inside().Use().Beeps;
    program.Post(WM_COMMAND, IDM_KEY_NEXT); // there is no list
    EXPECT_TRUE(WaitUntil([&] { return program.Inside().Use().Beeps > beeps; }));
}

void Show(Program& program, const std::string& name, const std::string& content)
{
    program.Inside().Drop(program.Frame(), WriteScratch(name, content));
    WaitForFile(program, name);
}

struct Kind {
    const char* Name;
    std::string Content;
    UINT Mode;
    bool IsZip;
    bool Launches;
    const char* Help;
};

// Opens one after the other, under an extension that no application is for.
void ExpectKinds(const std::vector<Kind>& kinds)
{
    WriteSettings(std::string(FixedFont) + "EditorName=\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    for (const Kind& kind : kinds) {
        SCOPED_TRACE(kind.Name);
        Show(program, std::string(kind.Name) + ".kvx", kind.Content);
        ExpectShown(program, kind.Mode);
        EXPECT_EQ(!program.Menu(IDM_VIEW_ZIP).Greyed, kind.IsZip);
        EXPECT_EQ(!program.Menu(IDM_FILE_LAUNCH).Greyed, kind.Launches);
        EXPECT_EQ(!program.Menu(IDM_VIEW_LOCK).Greyed, kind.Mode == IDM_VIEW_TEXT);
        EXPECT_EQ(LaunchHelp(program), kind.Help);
    }
    EXPECT_EQ(program.Close(), 0u);
}

// Looks at what a file made of broken parts leads to.
void ReadAround(Program& program)
{
    for (const UINT mode : {IDM_VIEW_TEXT, IDM_VIEW_HEX}) {
        program.Command(mode);
        Key(program, VK_END);
        program.ViewTexts();
    }
    LaunchHelp(program);
    EXPECT_TRUE(program.Answers());
}

} // namespace

TEST_F(FileTypeTest, AWindowsProgramIsShownInHexAndCanBeLaunched)
{
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().Drop(program.Frame(), OwnProgramFile());
    WaitForFile(program, "ui_tests.exe");
    ExpectShown(program, IDM_VIEW_HEX);
    EXPECT_TRUE(program.Menu(IDM_VIEW_ZIP).Greyed);
    EXPECT_FALSE(program.Menu(IDM_FILE_LAUNCH).Greyed);
    EXPECT_TRUE(program.Menu(IDM_VIEW_LOCK).Greyed);
    EXPECT_EQ(LaunchHelp(program), LaunchesWindows);
    EXPECT_EQ(program.TopText().substr(0, 15), "00000000  4D 5A");
}

TEST_F(FileTypeTest, ProgramsAreToldByTheirHeaders)
{
    ExpectKinds({
        {"dos", DosProgramFile(), IDM_VIEW_HEX, false, false, EditsDos},
        {"win16", NeProgram(2, 0), IDM_VIEW_HEX, false, true, LaunchesWindows},
        {"dll16", NeProgram(2, '\x80'), IDM_VIEW_HEX, false, false, LaunchesAssociated},
        {"os2", NeProgram(1, 0), IDM_VIEW_HEX, false, false, LaunchesAssociated},
        {"dosne", NeProgram(0, 0), IDM_VIEW_HEX, false, false, EditsDos},
        {"win32", PeProgram(Machine386, 2), IDM_VIEW_HEX, false, true, LaunchesWindows},
        {"dll32", PeProgram(Machine386, 0x2002), IDM_VIEW_HEX, false, false, LaunchesAssociated},
        {"win64", PeProgram(MachineAmd64, 2), IDM_VIEW_HEX, false, false, LaunchesAssociated},
        {"vxd", NewProgram("LE"), IDM_VIEW_HEX, false, false, LaunchesAssociated},
        {"os22", NewProgram("LX"), IDM_VIEW_HEX, false, false, LaunchesAssociated},
        {"unknown", NewProgram("XY"), IDM_VIEW_HEX, false, false, EditsDos},
        {"text", "Text" + Lines(), IDM_VIEW_TEXT, false, false, LaunchesAssociated},
    });
}

TEST_F(FileTypeTest, ArchivesAreToldByTheirEnds)
{
    std::string behindComment = Archive();
    behindComment.replace(behindComment.size() - 2, 2, Number16(1000));
    const std::string dos = DosProgramFile();
    const std::string windows = PeProgram(Machine386, 2);
    ExpectKinds({
        {"zip", Archive(), IDM_VIEW_HEX, true, false, LaunchesAssociated},
        {"comment", behindComment + std::string(1000, '\n'), IDM_VIEW_HEX, true, false, LaunchesAssociated},
        {"toofar", behindComment + std::string(2027, '\n'), IDM_VIEW_TEXT, false, false, LaunchesAssociated},
        {"disks", Archive(0, 1) + "\n", IDM_VIEW_TEXT, false, false, LaunchesAssociated},
        {"unpacks", dos + Archive(dos.size()), IDM_VIEW_HEX, true, false, LaunchesAssociated},
        {"appended", windows + Archive(windows.size()), IDM_VIEW_HEX, true, false, LaunchesAssociated},
        {"cut", Archive().substr(0, Archive().size() - 1), IDM_VIEW_TEXT, false, false, LaunchesAssociated},
    });
}

TEST_F(FileTypeTest, ACompressedFileIsToldByItsFirstLetters)
{
    ExpectKinds({
        {"szdd", "SZDD" + Lines(), IDM_VIEW_HEX, false, false, LaunchesAssociated},
        {"short", "SZDD" + std::string(59, '\n'), IDM_VIEW_TEXT, false, false, LaunchesAssociated},
        {"other", "SZDX" + Lines(), IDM_VIEW_TEXT, false, false, LaunchesAssociated},
    });
}

TEST_F(FileTypeTest, ADamagedHeaderMakesNoProgram)
{
    // The new header has to begin 64 bytes before the end.
    const std::size_t size = (Stub(0) + Lines()).size();
    const std::string fits = Stub(static_cast<unsigned>(size - 64)) + Lines();
    const std::string beyond = Stub(static_cast<unsigned>(size - 63)) + Lines();
    ExpectKinds({
        {"letters", "MZ" + Lines(), IDM_VIEW_TEXT, false, false, LaunchesAssociated},
        {"fits", fits, IDM_VIEW_HEX, false, false, EditsDos},
        {"beyond", beyond, IDM_VIEW_TEXT, false, false, LaunchesAssociated},
        {"far", Stub(0x7FFFFFFF) + Lines(), IDM_VIEW_TEXT, false, false, LaunchesAssociated},
        {"negative", Stub(0xFFFFFFFF) + Lines(), IDM_VIEW_TEXT, false, false, LaunchesAssociated},
        {"short", Stub(0).substr(0, 63), IDM_VIEW_TEXT, false, false, LaunchesAssociated},
    });
}

TEST_F(FileTypeTest, TheZipItemFollowsTheFile)
{
    Program program(WriteScratch("one.zip", Archive()));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_FALSE(program.Menu(IDM_VIEW_ZIP).Greyed);
    Show(program, "one.txt", "text");
    EXPECT_TRUE(program.Menu(IDM_VIEW_ZIP).Greyed);
    Show(program, "one.zip", Archive());
    EXPECT_FALSE(program.Menu(IDM_VIEW_ZIP).Greyed);
    program.Command(IDM_FILE_CLOSE);
    EXPECT_TRUE(program.Menu(IDM_VIEW_ZIP).Greyed);
}

TEST_F(FileTypeTest, AProgramCutOffAnywhereIsRead)
{
    const std::string whole = ReadWholeFile(OwnProgramFile());
    ASSERT_GT(whole.size(), 100000u);
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    std::vector<std::size_t> lengths = {1,   2,   23,  26,  60,  63,  64,   65,   127,  128,  129,   150,   191,  192,
                                        376, 400, 500, 512, 700, 999, 1023, 1024, 1025, 4096, 30000, 30001, 60000};
    for (const int parts : {2, 3, 4}) {
        lengths.push_back(whole.size() * (parts - 1) / parts);
    }
    lengths.push_back(whole.size() - 1);
    for (const std::size_t length : lengths) {
        SCOPED_TRACE(length);
        Show(program, length % 2 == 0 ? "even.exe" : "odd.exe", whole.substr(0, length));
        ReadAround(program);
        if (testing::Test::HasFailure()) {
            break;
        }
    }
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(FileTypeTest, HeadersFullOfTheHighestNumbersAreRead)
{
    const std::string whole = ReadWholeFile(OwnProgramFile()).substr(0, 100000);
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    // Eight bytes at a time: all there is in the headers, from the number of the new header's place on.
    for (std::size_t place = 60; place < 60 + 40 * 8; place += 8) {
        SCOPED_TRACE(place);
        std::string damaged = whole;
        Put(damaged, place, std::string(8, '\xFF'));
        Show(program, place % 16 == 12 ? "first.exe" : "second.exe", damaged);
        EXPECT_TRUE(program.Answers());
        if (testing::Test::HasFailure()) {
            break;
        }
    }
    std::string ne = NewProgram("NE");
    std::fill(ne.begin() + 66, ne.end(), '\xFF');
    Show(program, "ne.exe", ne);
    ReadAround(program);
    std::string pe = NewProgram(std::string("PE\0\0", 4));
    std::fill(pe.begin() + 68, pe.end(), '\xFF');
    Show(program, "pe.exe", pe);
    ReadAround(program);
    std::string zip = Archive();
    std::fill(zip.end() - 14, zip.end(), '\xFF');
    Show(program, "bad.zip", zip);
    ReadAround(program);
    EXPECT_EQ(program.Close(), 0u);
}
