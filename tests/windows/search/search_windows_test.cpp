// Searching real files, with the real capitals of the code page, against the plain search.
#include "document/block_cache.h"
#include "document/document.h"
#include "document/document_state.h"
#include "harness/program.h"
#include "harness/scratch.h"
#include "search/find_state.h"
#include "support/plain_search.h"
#include "view/view_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>
#include <windows.h>

namespace {

void Capitals(char* text, std::int32_t count)
{
    CharUpperBuffA(text, static_cast<DWORD>(count));
}

std::int32_t AnswerSlots()
{
    return 2; // fewer than some files have blocks
}

class Generator {
public:
    explicit Generator(std::uint32_t seed) : Random(seed) {}

    std::size_t Below(std::size_t bound) { return Random() % bound; }
    bool OneIn(std::size_t bound) { return Below(bound) == 0; }

    std::int32_t Between(std::int32_t least, std::int32_t most)
    {
        return least + static_cast<std::int32_t>(Below(static_cast<std::size_t>(most - least + 1)));
    }

    // Lines of letters of both halves of the code page, mostly one that is rare elsewhere.
    std::string Content(std::size_t size)
    {
        static constexpr const char* Ends[] = {"\r\n", "\n", "\r", "\n\n"};
        const std::size_t oneEnd = Below(6);
        const char filler = OneIn(2) ? '.' : '\xE9';
        std::string content;
        while (content.size() < size) {
            for (std::size_t length = Below(70); length > 0; --length) {
                content += OneIn(8) ? Letter() : filler;
            }
            content += Ends[oneEnd < 4 ? oneEnd : Below(4)];
        }
        content.resize(size);
        for (std::size_t end = BlockBytes; end < content.size(); end += BlockBytes) {
            for (std::size_t at = end - Below(20); at < end + Below(20) && at < content.size(); ++at) {
                content[at] = Letter();
            }
        }
        return content;
    }

    char Letter()
    {
        static constexpr char Others[] = {'\0', '\t', ' ', '\x80', '\x9F', '\xFF'};
        switch (Below(6)) {
        case 0: return static_cast<char>(0xC0 + Below(0x40));
        case 1: return Others[Below(sizeof Others)];
        default: return static_cast<char>((OneIn(2) ? 'a' : 'A') + Below(4));
        }
    }

    void NextFind(PlainSearch& plain, const std::string& content)
    {
        PlainFind& find = plain.Options;
        find.HexMode = OneIn(2);
        find.MatchCase = OneIn(3);
        find.Backwards = OneIn(2);
        find.FromCurrent = OneIn(2);
        find.Ebcdic = OneIn(6);
        find.TopLine = Between(0, plain.RowCount() - 1);
        find.ClientHeight = Between(0, 500);
        find.LockTopLine = OneIn(4) ? Between(0, 3) : 0;
        plain.Document.Options.ExpandTabs = OneIn(4);
        std::string pattern = content.substr(Below(content.size()), 1 + Below(OneIn(2) ? 3 : 14));
        for (char& letter : pattern) {
            if (static_cast<std::uint8_t>(letter) >= 'A' && OneIn(2)) {
                letter = static_cast<char>(letter ^ 0x20);
            }
        }
        SetPattern(find, pattern, OneIn(3), ' ');
    }

    SearchStep NextStep(const PlainSearch& plain)
    {
        SearchStep step;
        if (plain.Match.Line != 0 && OneIn(2)) {
            step.From = OneIn(2) ? SearchFrom::Next : SearchFrom::Previous;
        } else if (OneIn(3)) {
            step = {SearchFrom::Place, Between(1, plain.RowCount()), Between(0, 16)};
        }
        return step;
    }

private:
    std::mt19937 Random;
};

class RealSearch : public testing::Test {
protected:
    RealSearch() : FindBefore(Find), ViewBefore(View), OptionsBefore(ViewOptions), CallsBefore(DocumentCalls)
    {
        FreeBuffers();
        Document = DocumentState{};
        DocumentOptions = DocumentSettings{};
        DocumentCalls.ReadBufferCount = AnswerSlots;
        Find = FindState{};
        View = ViewState{};
    }

    ~RealSearch() override
    {
        FreeBuffers();
        Document = DocumentState{};
        DocumentOptions = DocumentSettings{};
        DocumentCalls.ReadBufferCount = CallsBefore.ReadBufferCount;
        Find = FindBefore;
        View = ViewBefore;
        ViewOptions = OptionsBefore;
    }

    static bool Open(const ScratchFile& file, PlainDocument& plain, const std::string& content)
    {
        FreeBuffers();
        Document = DocumentState{};
        FileInfo info;
        if (!InitBuffers() || OpenDocument(file.Path(), info) != OpenResult::Opened) {
            return false;
        }
        plain.Open(Bytes(content.begin(), content.end()));
        return plain.IsText == Document.IsText && plain.LineCount == Document.LineCount;
    }

private:
    FindState FindBefore;
    ViewState ViewBefore;
    ViewSettings OptionsBefore;
    DocumentHooks CallsBefore;
    ReadingCounter Readings;
};

} // namespace

TEST_F(RealSearch, FindsWhatThePlainSearchFinds)
{
    int found = 0;
    int searches = 0;
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        Generator generator(seed);
        const std::size_t size = generator.OneIn(3) ? 29990 + generator.Below(40000) : 1 + generator.Below(3000);
        const std::string content = generator.Content(size);
        const ScratchFile file("search.txt", content);
        PlainOptions options;
        options.RecordLength = generator.Between(20, 100);
        DocumentOptions.FixedLineLen = options.RecordLength;
        options.MaxLineLen = DocumentOptions.MaxLineLen = generator.OneIn(4) ? 60 : 512;
        PlainDocument document(options);
        ASSERT_TRUE(Open(file, document, content)) << "seed " << seed;
        PlainSearch plain(document, Capitals);
        for (int search = 0; search < 12; ++search) {
            if (plain.Match.Line == 0 || generator.OneIn(3)) {
                generator.NextFind(plain, content);
            }
            const SearchStep step = generator.NextStep(plain);
            const std::string name = DescribeSearch(plain, step);
            ASSERT_EQ("", CompareSearch(plain, step))
                << "seed " << seed << ", file of " << size << ", search " << search << ": " << name;
            found += plain.Match.Line != 0;
            ++searches;
        }
    }
    EXPECT_GT(found, searches / 4);
    EXPECT_LT(found, searches);
}

TEST_F(RealSearch, EveryLetterOfTheCodePageIsFoundByItsCapitalAndTheOtherWayRound)
{
    for (int byte = 0x20; byte < 0x100; ++byte) {
        const char letter = static_cast<char>(byte);
        char capital = letter;
        Capitals(&capital, 1);
        for (const bool hexMode : {false, true}) {
            for (const auto& [written, sought] : {std::pair(letter, capital), std::pair(capital, letter)}) {
                // Amid lines that the search passes over.
                const std::string content = std::string("..\n..\n.") + written + ".\n..\n..";
                const ScratchFile file("letter.txt", content);
                PlainOptions options;
                PlainDocument document(options);
                ASSERT_TRUE(Open(file, document, content));
                PlainSearch plain(document, Capitals);
                plain.Options.HexMode = hexMode;
                plain.Options.Text = std::string(1, sought);
                ASSERT_EQ("", CompareSearch(plain, {})) << byte << " and " << static_cast<std::uint8_t>(capital);
                ASSERT_NE(0, plain.Match.Line) << byte;
                plain.Options.MatchCase = true;
                ASSERT_EQ("", CompareSearch(plain, {})) << byte << ", case";
                ASSERT_EQ(letter == capital, plain.Match.Line != 0) << byte << ", case";
            }
        }
    }
}

TEST_F(RealSearch, RepeatingVisitsEveryMatchAcrossTheBlocksOfAFile)
{
    Generator generator(4711);
    std::string content = generator.Content(95000);
    std::vector<std::int32_t> places;
    for (std::int32_t at = 13; at + 9 < 95000; at += 4993) {
        content.replace(static_cast<std::size_t>(at), 9,
                        "M\xC4"
                        "rchen\xDF!");
        places.push_back(at);
    }
    content.replace(29995, 9,
                    "m\xE4"
                    "RCHEN\xDF!"); // across a block's end
    places.push_back(29995);
    std::sort(places.begin(), places.end());
    const ScratchFile file("walk.txt", content);
    PlainOptions options;
    PlainDocument document(options);
    ASSERT_TRUE(Open(file, document, content));
    PlainSearch plain(document, Capitals);
    plain.Options.Text = "m\xC4rchen\xDF!";
    for (const bool hexMode : {false, true}) {
        for (const bool backwards : {false, true}) {
            plain.Options.HexMode = hexMode;
            plain.Options.Backwards = backwards;
            std::vector<std::int32_t> visited;
            SearchStep step;
            do {
                ASSERT_EQ("", CompareSearch(plain, step));
                if (plain.Match.Line != 0) {
                    visited.push_back((plain.Match.Line - 1) * HexRowBytes + plain.Match.Column);
                }
                step.From = SearchFrom::Next;
            } while (plain.Match.Line != 0 && visited.size() <= places.size());
            EXPECT_EQ(places.size(), visited.size());
            if (hexMode) {
                std::sort(visited.begin(), visited.end());
                EXPECT_EQ(places, visited);
            }
        }
    }
}
