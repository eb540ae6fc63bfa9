#include "support/ui_test.h"

namespace {

class DocumentTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        WriteSettings(FixedFont);
    }
};

constexpr int BlockBytes = 30000;
constexpr int HexRowsOfABlock = BlockBytes / 16;

// The line count as the scroll bar tells it; right while there is more than fits the view.
int LineCount(Program& program)
{
    return program.Vertical().Max + RowsOf(program);
}

void ExpectText(Program& program)
{
    EXPECT_TRUE(program.Menu(IDM_VIEW_TEXT).Checked);
    EXPECT_FALSE(program.Menu(IDM_VIEW_HEX).Checked);
}

void ExpectHex(Program& program)
{
    EXPECT_TRUE(program.Menu(IDM_VIEW_HEX).Checked);
    EXPECT_FALSE(program.Menu(IDM_VIEW_TEXT).Checked);
}

std::string HexRow(int row, std::uint8_t byte)
{
    char text[80];
    int length = snprintf(text, sizeof text, "%.8X  ", row * 16);
    for (int i = 0; i < 16; ++i) {
        length += snprintf(text + length, sizeof text - length, "%.2X%c", byte, i == 7 ? '-' : ' ');
    }
    std::string result(text);
    result.resize(60, ' ');
    return result + std::string(16, byte >= 0x1F && byte <= 0x80 ? static_cast<char>(byte) : '.');
}

// Opens lines ended by lineEnd and looks at the first, a middle and the last screen.
void ExpectNumberedLines(const std::string& lineEnd)
{
    constexpr int Lines = 3000;
    Program program(WriteScratch("lines.txt", NumberedLines(Lines, lineEnd)));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectText(program);
    EXPECT_EQ(LineCount(program), Lines);
    EXPECT_EQ(program.TopText(), "Line 1");
    SetTop(program, 1499);
    EXPECT_EQ(program.TopText(), "Line 1500");
    Key(program, VK_END);
    const std::vector<ProbeText> texts = program.ViewTexts();
    ASSERT_FALSE(texts.empty());
    EXPECT_EQ(std::string(texts.back().Text), "Line " + std::to_string(Lines));
    EXPECT_EQ(static_cast<int>(texts.size()), RowsOf(program));
}

} // namespace

TEST_F(DocumentTest, ShowsLinesEndedByCrLf)
{
    ExpectNumberedLines("\r\n");
}

TEST_F(DocumentTest, ShowsLinesEndedByLf)
{
    ExpectNumberedLines("\n");
}

TEST_F(DocumentTest, ShowsLinesEndedByCr)
{
    ExpectNumberedLines("\r");
}

TEST_F(DocumentTest, CountsALastLineWithoutAnEnd)
{
    Program program(WriteScratch("open.txt", NumberedLines(500) + "the end"));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(LineCount(program), 501);
    Key(program, VK_END);
    EXPECT_STREQ(program.ViewTexts().back().Text, "the end");
}

TEST_F(DocumentTest, CountsACrLfSplitByABlockBoundaryOnce)
{
    // 8-byte lines: with a first line of 9 bytes the boundary at 30000 falls between CR and LF.
    std::string text = "1234567\r\n";
    while (text.size() < 3 * BlockBytes) {
        text += "abcdef\r\n";
    }
    ASSERT_EQ(text[BlockBytes - 1], '\r');
    ASSERT_EQ(text[BlockBytes], '\n');
    const int lines = 1 + static_cast<int>((text.size() - 9) / 8);
    Program program(WriteScratch("split.txt", text));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(LineCount(program), lines);
    Key(program, VK_END);
    EXPECT_STREQ(program.ViewTexts().back().Text, "abcdef");
}

TEST_F(DocumentTest, OpensEbcdicTextAsText)
{
    Program program(WriteScratch("ebcdic.txt", "\xC8\xC5\xD3\xD3\xD6\r\n\xE6\xD6\xD9\xD3\xC4\r\n"));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectText(program);
    EXPECT_EQ(program.TopText(), "\xC8\xC5\xD3\xD3\xD6"); // translated on demand only
    EXPECT_EQ(program.ViewTexts().size(), 2u);
}

TEST_F(DocumentTest, OpensAnEmptyFileAsTextOfOneEmptyLine)
{
    Program program(WriteScratch("empty.txt", ""));
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(program.Title(), "Kestovar-empty.txt");
    ExpectText(program);
    EXPECT_FALSE(program.Menu(IDM_FILE_CLOSE).Greyed);
    EXPECT_EQ(program.Vertical().Max, 0);
    EXPECT_EQ(program.StatusText(), "Line 1 Col 1  100%");
    EXPECT_TRUE(program.ViewTexts().empty());
    program.Command(IDM_VIEW_HEX);
    EXPECT_TRUE(program.ViewTexts().empty());
    for (const int key : {VK_UP, VK_DOWN, VK_PRIOR, VK_NEXT, VK_HOME, VK_END, VK_LEFT, VK_RIGHT}) {
        Key(program, static_cast<WPARAM>(key));
    }
    program.Command(IDM_EDIT_SELECT_ALL);
    EXPECT_EQ(program.StatusText(), "Line 1 Col 1  100%");
    program.Command(IDM_VIEW_TEXT);
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(DocumentTest, AFileOfOneBlockIsReadOnceAndReleased)
{
    const std::string path = WriteScratch("block.txt", Repeated("1234567 90\r\n", BlockBytes));
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_TRUE(DeleteFileA(path.c_str()));
    EXPECT_EQ(LineCount(program), BlockBytes / 12);
    Key(program, VK_END);
    EXPECT_EQ(program.TopText(), "1234567 90");
    program.Command(IDM_VIEW_HEX);
    EXPECT_EQ(LineCount(program), HexRowsOfABlock);
}

TEST_F(DocumentTest, ALargerFileStaysOpen)
{
    const std::string path = WriteScratch("block.txt", Repeated("1234567 90\r\n", BlockBytes + 12));
    {
        Program program(path);
        ASSERT_TRUE(program.WaitForFrame());
        EXPECT_FALSE(DeleteFileA(path.c_str()));
        EXPECT_EQ(LineCount(program), BlockBytes / 12 + 1);
        program.Command(IDM_INTERNAL_CLOSE);
        EXPECT_TRUE(DeleteFileA(path.c_str())); // closed with the document
    }
}

TEST_F(DocumentTest, ALineOf512CharactersIsText)
{
    Program program(WriteScratch("long.txt", "short\r\n" + std::string(512, 'x') + "\r\n"));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectText(program);
    EXPECT_EQ(program.ViewTexts().size(), 2u);
}

TEST_F(DocumentTest, ALongerLineMakesTheFileNonText)
{
    constexpr int Size = 7 + 513 + 2;
    Program program(WriteScratch("long.txt", "short\r\n" + std::string(513, 'x') + "\r\n"));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectHex(program);
    EXPECT_EQ(program.TopText(), "00000000  73 68 6F 72 74 0D 0A 78-78 78 78 78 78 78 78 78   short..xxxxxxxxx");
    // As text it is a file of records of 75 bytes.
    program.Command(IDM_VIEW_TEXT);
    const std::vector<ProbeText> texts = program.ViewTexts();
    ASSERT_EQ(static_cast<int>(texts.size()), (Size + 74) / 75);
    EXPECT_EQ(std::string(texts[1].Text), std::string(75, 'x'));
    EXPECT_EQ(texts[0].Length, 75);
    EXPECT_EQ(texts.back().Length, Size % 75);
}

TEST_F(DocumentTest, ALongLineSplitByABlockBoundaryStaysText)
{
    const std::string lines = Repeated("1234567 90\r\n", BlockBytes - 300);
    Program program(WriteScratch("long.txt", lines + std::string(700, 'x') + "\r\n"));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectText(program);
    Key(program, VK_END);
    EXPECT_EQ(program.ViewTexts().back().Length, 700);
}

TEST_F(DocumentTest, ABinaryFileOpensInHexMode)
{
    std::string bytes;
    for (int i = 0; i < 40000; ++i) {
        bytes += static_cast<char>(i % 7 == 0 ? 0 : 0x80 + i % 100);
    }
    Program program(WriteScratch("data.bin", bytes));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectHex(program);
    EXPECT_EQ(LineCount(program), 40000 / 16);
    Key(program, VK_END);
    EXPECT_EQ(std::string(program.ViewTexts().back().Text, 8), "00009C30");
    program.Command(IDM_VIEW_TEXT);
    EXPECT_EQ(LineCount(program), (40000 + 74) / 75);
    EXPECT_EQ(program.ViewTexts()[0].Length, 75);
    EXPECT_EQ(program.ViewTexts()[0].Text[0], ' '); // a zero byte
}

TEST_F(DocumentTest, ABinaryFileOfWholeBlocksEndsWithItsLastByte)
{
    Program program(WriteScratch("data.bin", std::string(2 * BlockBytes, '\x42')));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectHex(program);
    EXPECT_EQ(LineCount(program), 2 * HexRowsOfABlock);
    Key(program, VK_END);
    EXPECT_EQ(program.ViewTexts().back().Text, HexRow(2 * HexRowsOfABlock - 1, 0x42));
    program.Command(IDM_VIEW_TEXT);
    Key(program, VK_END);
    EXPECT_EQ(program.ViewTexts().back().Length, 75);
}

TEST_F(DocumentTest, AFixedLineLengthCutsRecords)
{
    WriteSettings(std::string(FixedFont) + "FixedLineLen=100\n");
    Program program(WriteScratch("data.bin", std::string(40001, 'x')));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_VIEW_TEXT);
    EXPECT_EQ(LineCount(program), 401);
    EXPECT_EQ(program.ViewTexts()[0].Length, 100);
    Key(program, VK_END);
    EXPECT_EQ(program.ViewTexts().back().Length, 1);
}

TEST_F(DocumentTest, ATextOverTheLimitOpensInHexModeWithAGapOfZeroBytes)
{
    const int size = 12 * 1048576 + 1;
    const std::string path = WriteScratch("large.txt", Repeated(std::string(14, 'A') + "\r\n", size));
    const std::string data = HexRow(0, 0x41).substr(10, 41); // of a row, up to the line end
    for (const char* const buffers : {"Buffers=5\n", "Buffers=0\n"}) {
        WriteSettings(std::string(FixedFont) + buffers);
        Program program(path);
        ASSERT_TRUE(program.WaitForFrame());
        ExpectHex(program);
        const int maxTop = (size + 15) / 16 - RowsOf(program);
        EXPECT_EQ(program.Vertical().Max, maxTop / (maxTop / 32000 + 1));
        SetTop(program, HexRowsOfABlock - 2);
        std::vector<ProbeText> texts = program.ViewTexts();
        ASSERT_GT(texts.size(), 4u);
        EXPECT_EQ(std::string(texts[1].Text).substr(10, 41), data);
        const bool gap = std::string(buffers) == "Buffers=5\n";
        // The second block is not read as long as there is a slot to park blocks in.
        EXPECT_EQ(texts[2].Text == HexRow(HexRowsOfABlock, 0), gap) << texts[2].Text;
        SetTop(program, 2 * HexRowsOfABlock - 2);
        texts = program.ViewTexts();
        ASSERT_GT(texts.size(), 4u);
        EXPECT_EQ(texts[1].Text == HexRow(2 * HexRowsOfABlock - 1, 0), gap) << texts[1].Text;
        EXPECT_EQ(std::string(texts[2].Text).substr(10, 41), data);
        EXPECT_EQ(std::string(texts[2].Text, 8), "0000EA60"); // byte 60000
    }
    DeleteFileA(path.c_str());
}

TEST_F(DocumentTest, ATextAtTheLimitIsText)
{
    WriteSettings(std::string(FixedFont) + "MaxTextSize=1\n");
    const std::string text = Repeated("1234567 901234\r\n", 1048576);
    {
        Program program(WriteScratch("limit.txt", text));
        ASSERT_TRUE(program.WaitForFrame());
        ExpectText(program);
        EXPECT_EQ(program.Vertical().Max, (65536 - RowsOf(program)) / 3); // the bar's positions are three lines
    }
    Program program(WriteScratch("limit.txt", text + "x"));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectHex(program);
}

TEST_F(DocumentTest, BuffersBeyondTheLimitsAreClamped)
{
    // Without a slot to park blocks in the gap of a too large file is not there: see above.
    WriteSettings(std::string(FixedFont) + "MaxTextSize=0\nBuffers=-1\n");
    const std::string path = WriteScratch("large.txt", Repeated("abcdefghijklmn\r\n", 20 * BlockBytes));
    {
        Program program(path);
        ASSERT_TRUE(program.WaitForFrame());
        SetTop(program, HexRowsOfABlock);
        EXPECT_EQ(std::string(program.TopText()).substr(60, 14), "abcdefghijklmn");
    }
    WriteSettings(std::string(FixedFont) + "MaxTextSize=0\nBuffers=9\n");
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    program.Inside().Use();
    const int before = program.Inside().Use().HeapBytes;
    program.Inside().Drop(program.Frame(), path);
    ASSERT_TRUE(program.WaitForTitle("large.txt"));
    for (int block = 0; block < 20; ++block) {
        SetTop(program, block * HexRowsOfABlock);
    }
    const int growth = program.Inside().Use().HeapBytes - before;
    EXPECT_GE(growth, 6 * 30800); // the working buffer and five slots
    EXPECT_LT(growth, 7 * 30800);
}

TEST_F(DocumentTest, ZeroBytesInTextShowAsSpaces)
{
    Program program(WriteScratch("zero.txt", std::string("one\0two\r\nthree", 14)));
    ASSERT_TRUE(program.WaitForFrame());
    ExpectText(program);
    EXPECT_EQ(program.TopText(), "one two");
}

TEST_F(DocumentTest, ExpandsTabsByTheRemainder)
{
    const std::string path = WriteScratch("tabs.txt", "\tx\r\nabc\tx\r\nabcdefghi\tx\r\n");
    {
        Program program(path);
        ASSERT_TRUE(program.WaitForFrame());
        EXPECT_EQ(program.TopText(), "\tx");
    }
    WriteSettings(std::string(FixedFont) + "Ptabs=1\n");
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    const std::vector<ProbeText> texts = program.ViewTexts();
    ASSERT_EQ(texts.size(), 3u);
    EXPECT_STREQ(texts[0].Text, "        x");
    EXPECT_STREQ(texts[1].Text, "abc   x");
    EXPECT_STREQ(texts[2].Text, "abcdefghi x");
}

TEST_F(DocumentTest, ShowsAHundredMegabyteLog)
{
    WriteSettings(std::string(FixedFont) + "MaxTextSize=114\n");
    const std::string path = BigLog();
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(program.WaitForTitle("big.log"));
    ExpectText(program);
    const int rows = RowsOf(program);
    const int maxTop = BigLogLines - rows;
    const int scale = maxTop / 32000 + 1;
    EXPECT_EQ(program.Vertical().Max, maxTop / scale);
    EXPECT_EQ(program.TopText().substr(0, 8), "00000001");
    // Lines all over the file, there and back.
    for (const int line : {1081000 - rows, 500000, 777777, 12345, 1080000, 1}) {
        SetTop(program, line - 1);
        EXPECT_EQ(program.Top(), (line - 1) / scale);
        char digits[16];
        snprintf(digits, sizeof digits, "%08d", line);
        EXPECT_EQ(program.TopText().substr(0, 8), digits);
    }
    Key(program, VK_END);
    const std::vector<ProbeText> texts = program.ViewTexts();
    EXPECT_EQ(static_cast<int>(texts.size()), rows);
    EXPECT_EQ(std::string(texts.back().Text, 8), "01081000");
    EXPECT_EQ(program.StatusText(), "Line 1,080," + std::to_string(1081000 - rows + 1 - 1080000) + " Col 1  100%");
    program.Command(IDM_VIEW_HEX);
    EXPECT_EQ(program.TopText().substr(0, 3), "063"); // just below 100 MB
}

TEST_F(DocumentTest, ShowsALogOverTheLimitInHexMode)
{
    Program program(BigLog());
    ASSERT_TRUE(program.WaitForFrame());
    ExpectHex(program);
    const int rows = (BigLogLines * BigLogLineBytes + 15) / 16;
    const int maxTop = rows - RowsOf(program);
    EXPECT_EQ(program.Vertical().Max, maxTop / (maxTop / 32000 + 1));
    Key(program, VK_END);
    EXPECT_EQ(std::string(program.ViewTexts().back().Text, 8), "063FFDA0");
}
