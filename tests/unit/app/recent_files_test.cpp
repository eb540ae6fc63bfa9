#include "app/recent_files.h"

#include "base/text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

std::unique_ptr<RecentFiles> Loaded(std::initializer_list<const char*> paths)
{
    auto recent = std::make_unique<RecentFiles>();
    int index = 0;
    for (const char* path : paths) {
        CopyText(recent->Paths[index++], path);
    }
    CompactRecentFiles(*recent);
    return recent;
}

std::vector<std::string> PathsOf(const RecentFiles& recent)
{
    return std::vector<std::string>(recent.Paths, recent.Paths + recent.Count);
}

using Paths = std::vector<std::string>;

} // namespace

TEST(RecentFilesLoad, NothingSavedGivesAnEmptyList)
{
    EXPECT_EQ(Loaded({})->Count, 0);
}

TEST(RecentFilesLoad, WithoutGapsTheOrderStays)
{
    EXPECT_EQ(PathsOf(*Loaded({"a", "b", "c"})), (Paths{"a", "b", "c"}));
    EXPECT_EQ(PathsOf(*Loaded({"1", "2", "3", "4", "5", "6", "7", "8", "9"})),
              (Paths{"1", "2", "3", "4", "5", "6", "7", "8", "9"}));
}

TEST(RecentFilesLoad, GapReordersWhatFollows)
{
    EXPECT_EQ(PathsOf(*Loaded({"a", "", "b", "c", "d"})), (Paths{"a", "b", "d", "c"}));
}

TEST(RecentFilesLoad, FirstEntryEmptyIsFilledByTheSecond)
{
    EXPECT_EQ(PathsOf(*Loaded({"", "b"})), (Paths{"b"}));
}

TEST(RecentFilesLoad, EntryBehindARemainingGapDoesNotCount)
{
    // The pass is single: the destination is still at the first gap when the source has gone by.
    const auto recent = Loaded({"a", "", "", "b", "c", "", "", "", ""});
    EXPECT_EQ(PathsOf(*recent), (Paths{"a", "b"}));
    EXPECT_STREQ(recent->Paths[4], "c");
}

TEST(RecentFilesLoad, LastEntryAloneIsFound)
{
    EXPECT_EQ(PathsOf(*Loaded({"", "", "", "", "", "", "", "", "z"})), (Paths{"z"}));
}

TEST(RecentFilesLoad, EveryPatternOfGapsIsClosedInOnePass)
{
    for (unsigned pattern = 0; pattern < 1u << MaxRecentFiles; ++pattern) {
        auto recent = std::make_unique<RecentFiles>();
        Paths plain(MaxRecentFiles);
        for (int i = 0; i < MaxRecentFiles; ++i) {
            if ((pattern >> i & 1) != 0) {
                plain[static_cast<std::size_t>(i)] = std::to_string(i + 1);
                CopyText(recent->Paths[i], std::to_string(i + 1).c_str());
            }
        }
        CompactRecentFiles(*recent);
        std::size_t destination = 0;
        for (std::size_t source = 1; source < plain.size(); ++source) {
            if (plain[destination].empty()) {
                std::swap(plain[destination], plain[source]);
            } else {
                ++destination;
            }
        }
        EXPECT_EQ(Paths(recent->Paths, recent->Paths + MaxRecentFiles), plain) << pattern;
        const auto gap = std::find(plain.begin(), plain.end(), "");
        EXPECT_EQ(recent->Count, gap - plain.begin()) << pattern;
    }
}

TEST(RecentFilesAdd, LoadedPathIsFoundAgainAndNewOnesFollow)
{
    const auto recent = Loaded({"a", "", "b"});
    EXPECT_FALSE(AddRecentPath(*recent, "b"));
    EXPECT_TRUE(AddRecentPath(*recent, "c"));
    EXPECT_EQ(PathsOf(*recent), (Paths{"a", "b", "c"}));
}

TEST(RecentFilesAdd, PathBehindARemainingGapIsNotInTheList)
{
    const auto recent = Loaded({"a", "", "", "b", "c", "", "", "", ""});
    EXPECT_TRUE(AddRecentPath(*recent, "c"));
    EXPECT_EQ(PathsOf(*recent), (Paths{"a", "b", "c"}));
}

TEST(RecentFilesAdd, NewPathBecomesTheLast)
{
    RecentFiles recent;
    EXPECT_TRUE(AddRecentPath(recent, "c:\\a.txt"));
    EXPECT_TRUE(AddRecentPath(recent, "c:\\b.txt"));
    EXPECT_EQ(PathsOf(recent), (Paths{"c:\\a.txt", "c:\\b.txt"}));
}

TEST(RecentFilesAdd, SameFileTwiceLeavesOneEntryWhereItWas)
{
    RecentFiles recent;
    AddRecentPath(recent, "a");
    AddRecentPath(recent, "b");
    EXPECT_FALSE(AddRecentPath(recent, "a"));
    EXPECT_EQ(PathsOf(recent), (Paths{"a", "b"}));
}

TEST(RecentFilesAdd, ComparisonIsExact)
{
    RecentFiles recent;
    AddRecentPath(recent, "a");
    EXPECT_TRUE(AddRecentPath(recent, "A"));
    EXPECT_EQ(recent.Count, 2);
}

TEST(RecentFilesAdd, TenthFileDropsTheOldest)
{
    RecentFiles recent;
    for (const char* path : {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10"}) {
        EXPECT_TRUE(AddRecentPath(recent, path));
    }
    EXPECT_EQ(PathsOf(recent), (Paths{"2", "3", "4", "5", "6", "7", "8", "9", "10"}));
    EXPECT_FALSE(AddRecentPath(recent, "10"));
    EXPECT_TRUE(AddRecentPath(recent, "1"));
    EXPECT_EQ(recent.Count, MaxRecentFiles);
}

TEST(RecentFilesAdd, LongestPathIsKeptWhole)
{
    RecentFiles recent;
    const std::string path(MaxPathSize - 1, 'p');
    AddRecentPath(recent, path.c_str());
    EXPECT_EQ(recent.Paths[0], path);
}

TEST(RecentFilesMenu, TextIsNumberedFromOne)
{
    RecentFiles recent;
    for (const char* path : {"1", "2", "3", "4", "5", "6", "7", "8", "c:\\last.txt"}) {
        AddRecentPath(recent, path);
    }
    char text[300];
    FormatRecentText(recent, 8, text, sizeof text);
    EXPECT_STREQ(text, "&9 c:\\last.txt");
}

TEST(RecentFilesMenu, TextOf30CharactersIsShownUnshortened)
{
    RecentFiles recent;
    AddRecentPath(recent, "c:\\dir\\sub\\123456789012.txt"); // 27, and 3 in front
    char text[300];
    FormatRecentText(recent, 0, text, sizeof text);
    EXPECT_STREQ(text, "&1 c:\\dir\\sub\\123456789012.txt");
}

TEST(RecentFilesMenu, LongerTextShowsDriveDotsAndTrailingDirectories)
{
    RecentFiles recent;
    AddRecentPath(recent, "c:\\dir\\sub\\123456789012.text"); // one character more
    char text[300];
    FormatRecentText(recent, 0, text, sizeof text);
    EXPECT_STREQ(text, "&1 c:\\...\\sub\\123456789012.text");
    AddRecentPath(recent, "c:\\first directory\\second directory\\file.txt");
    FormatRecentText(recent, 1, text, sizeof text);
    EXPECT_STREQ(text, "&2 c:\\...\\second directory\\file.txt");
}

TEST(RecentFilesMenu, LongestPathFitsItsText)
{
    RecentFiles recent;
    AddRecentPath(recent, ("c:\\" + std::string(MaxPathSize - 4, 'p')).c_str());
    char text[MaxPathSize + 8];
    FormatRecentText(recent, 0, text, sizeof text);
    EXPECT_EQ(std::string(text), "&1 c:\\..." + std::string(27, 'p'));
}

TEST(RecentFilesMenu, WithoutADirectoryBehindTheCutTheTailBeginsThere)
{
    RecentFiles recent;
    AddRecentPath(recent, "c:\\one\\two\\a name that is longer than the limit.txt");
    char text[300];
    FormatRecentText(recent, 0, text, sizeof text);
    EXPECT_STREQ(text, "&1 c:\\...s longer than the limit.txt"); // no backslash follows the cut
}

TEST(RecentFilesMenu, EveryTextOfMoreThanThirtyCharactersIsElidedBehindItsDrive)
{
    for (std::size_t nameLength = 25; nameLength <= 30; ++nameLength) { // with 6 in front: 31 to 36
        RecentFiles recent;
        AddRecentPath(recent, ("c:\\" + std::string(nameLength, 'n')).c_str());
        char text[300];
        FormatRecentText(recent, 0, text, sizeof text);
        EXPECT_EQ(std::string(text), "&1 c:\\..." + std::string(std::min<std::size_t>(nameLength, 27), 'n'));
    }
}

TEST(RecentFilesMenu, FileInTheRootIsShortenedLikeAnyOther)
{
    RecentFiles recent;
    AddRecentPath(recent, "c:\\a name that is longer than the limit.txt");
    char text[300];
    FormatRecentText(recent, 0, text, sizeof text);
    EXPECT_STREQ(text, "&1 c:\\...s longer than the limit.txt");
}
