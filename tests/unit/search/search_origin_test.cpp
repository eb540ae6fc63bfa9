#include "search/search_origin.h"

#include "search/find_state.h"
#include "unit/document/document_fixture.h"
#include "view/view_state.h"

namespace {

class SearchOriginTest : public DocumentFixture {
protected:
    void SetUp() override
    {
        DocumentFixture::SetUp();
        Reset();
        View.LineHeight = 10;
        View.ClientHeight = 105; // ten rows and a half
    }

    void TearDown() override
    {
        Reset();
        DocumentFixture::TearDown();
    }

    static void Reset()
    {
        View = ViewState{};
        ViewOptions = ViewSettings{};
        Find = FindState{};
    }

    static void ExpectOrigin(const SearchOrigin& origin, std::int32_t line, std::int32_t column)
    {
        EXPECT_EQ(origin.Line, line);
        EXPECT_EQ(origin.Column, column);
    }

    // Lines of 1, 2, 3 and so on characters.
    static void OpenStairs(std::size_t lines)
    {
        std::string text;
        for (std::size_t line = 1; line <= lines; ++line) {
            text += std::string(line, 'x') + "\n";
        }
        OpenBytes(BytesOf(text));
    }

    static void Found(std::int32_t line, std::int32_t column)
    {
        Find.FoundLine = line;
        Find.FoundCol = column;
    }
};

} // namespace

TEST_F(SearchOriginTest, FirstVisibleLineIsTheOneBelowTheTopLine)
{
    EXPECT_EQ(FirstVisibleLine(), 1);
    View.TopLine = 41;
    EXPECT_EQ(FirstVisibleLine(), 42);
    View.TopLine = -5;
    EXPECT_EQ(FirstVisibleLine(), 1);
}

TEST_F(SearchOriginTest, LastVisibleLineIsTheLastWholeOneOnScreen)
{
    OpenStairs(100);
    EXPECT_EQ(LastVisibleLine(), 10);
    View.TopLine = 41;
    EXPECT_EQ(LastVisibleLine(), 51);
}

TEST_F(SearchOriginTest, LastVisibleLineIsNoMoreThanThereAre)
{
    OpenStairs(7);
    EXPECT_EQ(LastVisibleLine(), 7);
    View.TopLine = INT32_MAX;
    EXPECT_EQ(LastVisibleLine(), 7);
    View.HexMode = true; // 35 bytes
    EXPECT_EQ(LastVisibleLine(), 3);
    View.TopLine = 0;
    View.ClientHeight = 20;
    EXPECT_EQ(LastVisibleLine(), 2);
}

TEST_F(SearchOriginTest, ForwardsFromTheCurrentPositionIsTheFirstVisibleLine)
{
    OpenStairs(100);
    Find.FromCurrent = true;
    View.TopLine = 41;
    View.LockTopLine = 3;
    ExpectOrigin(OriginOfSearch(), 42, 0);
    View.HexMode = true;
    ExpectOrigin(OriginOfSearch(), 42, 0);
}

TEST_F(SearchOriginTest, ForwardsThroughTheEntireScopeIsTheFirstLineOfTheLock)
{
    OpenStairs(100);
    View.TopLine = 41;
    ExpectOrigin(OriginOfSearch(), 1, 0);
    View.LockTopLine = 3;
    ExpectOrigin(OriginOfSearch(), 4, 0);
}

TEST_F(SearchOriginTest, BackwardsFromTheCurrentPositionIsTheEndOfTheLastVisibleLine)
{
    OpenStairs(100);
    Find.FromCurrent = true;
    Find.Backwards = true;
    View.TopLine = 41;
    ExpectOrigin(OriginOfSearch(), 51, 50);
    View.TopLine = 95;
    ExpectOrigin(OriginOfSearch(), 100, 99);
}

TEST_F(SearchOriginTest, BackwardsFromTheCurrentPositionInHexIsTheEndOfTheLastVisibleRow)
{
    OpenBytes(Bytes(1003, 'x')); // 63 rows, the last of 11 bytes
    View.HexMode = true;
    Find.FromCurrent = true;
    Find.Backwards = true;
    View.TopLine = 41;
    ExpectOrigin(OriginOfSearch(), 51, 15);
    View.TopLine = 60;
    ExpectOrigin(OriginOfSearch(), 63, 10);
}

TEST_F(SearchOriginTest, BackwardsThroughTheEntireScopeIsTheDocumentsEnd)
{
    OpenStairs(100);
    Find.Backwards = true;
    View.TopLine = 41;
    View.LockTopLine = 3;
    ExpectOrigin(OriginOfSearch(), 100, 99);
}

TEST_F(SearchOriginTest, BackwardsThroughTheEntireScopeInHexIsTheLastByte)
{
    View.HexMode = true;
    Find.Backwards = true;
    OpenBytes(Bytes(1003, 'x'));
    ExpectOrigin(OriginOfSearch(), 63, 10);
    OpenBytes(Bytes(1008, 'x'));
    ExpectOrigin(OriginOfSearch(), 63, 15);
    OpenBytes(Bytes(1, 'x'));
    ExpectOrigin(OriginOfSearch(), 1, 0);
}

TEST_F(SearchOriginTest, BackwardsFromAnEmptyLineIsBeforeItsFirstColumn)
{
    OpenBytes(BytesOf("abc\n\n"));
    Find.Backwards = true;
    ExpectOrigin(OriginOfSearch(), 2, -1);
}

TEST_F(SearchOriginTest, BackwardsFromALineIsItsLengthWithExpandedTabs)
{
    OpenBytes(BytesOf("\tabc\n"));
    Find.Backwards = true;
    ExpectOrigin(OriginOfSearch(), 1, 3);
    DocumentOptions.Ptabs = 1;
    ExpectOrigin(OriginOfSearch(), 1, 10);
}

TEST_F(SearchOriginTest, EmptyFileHasAnOriginBeforeItsBeginning)
{
    OpenBytes({});
    Find.Backwards = true;
    ExpectOrigin(OriginOfSearch(), 1, -1);
    View.HexMode = true; // no rows
    const SearchOrigin origin = OriginOfSearch();
    EXPECT_LT((origin.Line - 1) * HexRowBytes + origin.Column, 0);
}

TEST_F(SearchOriginTest, LargestFileHasItsOriginWithoutOverflow)
{
    TestPort::AddFile(TestPath, Bytes(100, 'x')).StatedSize = INT32_MAX;
    ASSERT_EQ(OpenTestFile(), OpenResult::Opened);
    View.HexMode = true;
    Find.Backwards = true;
    ExpectOrigin(OriginOfSearch(), 134217728, 14);
}

TEST_F(SearchOriginTest, RepeatForwardsIsOneBehindTheMatchsBeginning)
{
    CopyText(Find.LastFindText, "abc");
    Found(7, 4);
    ExpectOrigin(OriginOfRepeat(), 7, 5);
    Found(7, 15);
    ExpectOrigin(OriginOfRepeat(), 7, 16);
}

TEST_F(SearchOriginTest, RepeatBackwardsEndsOneBeforeTheMatchsEnd)
{
    CopyText(Find.LastFindText, "abc");
    Find.Backwards = true;
    Found(7, 4); // 4 to 6
    ExpectOrigin(OriginOfRepeat(), 7, 5);
    Found(7, 0);
    ExpectOrigin(OriginOfRepeat(), 7, 1);
    CopyText(Find.LastFindText, "a");
    ExpectOrigin(OriginOfRepeat(), 7, -1);
}

TEST_F(SearchOriginTest, RepeatCountsAHexStringAsItsBytes)
{
    CopyText(Find.LastFindText, "a text of before");
    CopyText(Find.FindHex, "0D0A0D0A");
    Find.Backwards = true;
    Found(7, 4);
    ExpectOrigin(OriginOfRepeat(), 7, 6);
    Find.Backwards = false;
    ExpectOrigin(OriginOfRepeat(), 7, 5);
}
