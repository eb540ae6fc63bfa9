#include "support/ui_test.h"

#include <algorithm>
#include <climits>

namespace {

class MemoryTest : public UiTest {};

constexpr int LargestGrowth = 400000;

// Bytes of the heap that opening the file takes in one run of the program.
int GrowthInOneRun(const std::string& path, const std::string& name)
{
    Program program;
    EXPECT_TRUE(program.WaitForFrame());
    // Twice: what the first asking itself takes is no part of it.
    program.Inside().Use();
    const int before = program.Inside().Use().HeapBytes;
    program.Inside().Drop(program.Frame(), path);
    EXPECT_TRUE(program.WaitForTitle(name));
    EXPECT_TRUE(program.Answers());
    const int after = program.Inside().Use().HeapBytes;
    EXPECT_EQ(program.Close(), 0u);
    return after - before;
}

// The least of a few runs: what the system itself takes now and then is no part of it.
int GrowthByOpening(const std::string& path, const std::string& name)
{
    return std::min({GrowthInOneRun(path, name), GrowthInOneRun(path, name), GrowthInOneRun(path, name)});
}

} // namespace

TEST_F(MemoryTest, ALargeTextTakesNoMoreThanASmallOneAndItsLineTable)
{
    constexpr int LineTableEntry = 4;
    constexpr int BlockBytes = 30000;
    constexpr int Cursor = 6000; // a wait long enough for the pointer to be drawn anew loads the wait cursor
    WriteSettings(std::string(FixedFont) + "MaxTextSize=114\n");
    const int small =
        GrowthByOpening(WriteScratch("small.txt", Repeated("some text of a line\r\n", 1000000)), "small.txt");
    const int large = GrowthByOpening(BigLog(), "big.log");
    EXPECT_LT(small, LargestGrowth);
    EXPECT_LT(large, LargestGrowth);
    EXPECT_LT(large - small, BigLogLines * (BigLogLineBytes * 1.0 / BlockBytes) * LineTableEntry + Cursor + 2000);
}

TEST_F(MemoryTest, ALargeHexFileTakesNoMoreThanASmallOne)
{
    WriteSettings(std::string(FixedFont) + "MaxTextSize=0\n"); // neither is looked at as text
    const int small = GrowthByOpening(WriteScratch("small.bin", std::string(1000000, 'x')), "small.bin");
    const int large = GrowthByOpening(BigLog(), "big.log");
    EXPECT_LT(large, LargestGrowth);
    EXPECT_LT(large - small, 4096);
}

TEST_F(MemoryTest, OpeningAndClosingGivesEverythingBack)
{
    constexpr int MostRounds = 8;
    constexpr int OpeningsInRound = 5;
    // A round without a leak can still grow by what the system takes now and then; a leak shows in all.
    constexpr int SmallestLeak = 16 * OpeningsInRound;
    const std::string paths[] = {WriteScratch("small.txt", NumberedLines(30000)),
                                 WriteScratch("small.bin", std::string(200000, 'x'))};
    WriteSettings("FontName=Arial\n"); // replaced by another font in hex mode
    Program program;
    ASSERT_TRUE(program.WaitForFrame());
    const auto openAndClose = [&](const std::string& path, const std::string& name) {
        program.Inside().Drop(program.Frame(), path);
        ASSERT_TRUE(program.WaitForTitle(name));
        Key(program, VK_END);
        program.Command(IDM_VIEW_HEX);
        program.Command(IDM_VIEW_TEXT);
        program.Command(IDM_INTERNAL_CLOSE);
    };
    ProbeUseRecord before = program.Inside().Use();
    int leastHeapGrowth = INT_MAX;
    int leastGdiGrowth = INT_MAX;
    for (int round = 0; round < MostRounds && (leastHeapGrowth >= SmallestLeak || leastGdiGrowth >= OpeningsInRound);
         ++round) {
        for (int i = 0; i < OpeningsInRound; ++i) {
            openAndClose(paths[0], "small.txt");
            openAndClose(paths[1], "small.bin");
        }
        const ProbeUseRecord after = program.Inside().Use();
        leastHeapGrowth = std::min(leastHeapGrowth, after.HeapBytes - before.HeapBytes);
        leastGdiGrowth = std::min(leastGdiGrowth, after.GdiObjects - before.GdiObjects);
        before = after;
    }
    EXPECT_LT(leastHeapGrowth, SmallestLeak);
    EXPECT_LT(leastGdiGrowth, OpeningsInRound);
}
