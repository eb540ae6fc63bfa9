// Searching against the plain search, over random files, patterns and starts.
//
//   KESTOVAR_TEST_SEED   another seed than the fixed one
//   KESTOVAR_TEST_FILES  another number of files
#include "document/document_fixture.h"
#include "search/find_state.h"
#include "support/document_check.h"
#include "support/plain_search.h"
#include "view/view_state.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace std::string_view_literals;

constexpr std::size_t LongestText = 29;
constexpr std::size_t LongestBytes = 14;
constexpr std::size_t WindowBytes = 512; // of the searches in hex mode

// What may stand about a block's end, of three bytes before and three behind it.
constexpr std::string_view Seams[] = {
    "ab\nab\n"sv, "a\r\nab\n"sv, "ab\r\nab"sv, "abc\nab"sv,    "ab\n\nab"sv, "a\r\n\nab"sv,
    "ab\rabc"sv,  "ab\r\r\na"sv, "\nabAB\r"sv, "a\r\n\r\nA"sv, "abc\rab"sv,  "\r\n\tab\0"sv,
};

// What a search of a sparse file looks for.
constexpr std::string_view Words[] = {
    "ab"sv, "Ab"sv, "xyz"sv, "xyZ"sv, "B"sv, "a b"sv, "Needle in the hay, or so I say"sv,
};

// What files are made of. Few different bytes, so that much is found, nearly found, and found overlapping.
constexpr std::string_view Alphabets[] = {
    "a"sv,
    "ab"sv,
    "aAbB"sv,
    "aab \0"sv,
    "aA\t b"sv,
    "\xE4\xC4\xF6\xD6\xFF\x9F\xF7\xD7z"sv,
    "\x81\xC1\x82\xC2\x40\x4A\xD0\xA2\x61z"sv, // a, A, b, B, a space, a cent sign and others in EBCDIC
    "aA\x80\x81\x82\xFE\xFF"sv,
    "\0\x01\xFFxX"sv,
    "the quick brown fox jumps over THE LAZY DOG\t0123456789{}[]`@"sv,
};

class Generator {
public:
    explicit Generator(std::uint32_t seed) : Random(seed) {}

    std::size_t Below(std::size_t bound) { return bound != 0 ? Random() % bound : 0; }
    bool OneIn(std::size_t bound) { return Below(bound) == 0; }

    std::int32_t Between(std::int32_t least, std::int32_t most)
    {
        return least + static_cast<std::int32_t>(Below(static_cast<std::size_t>(most - least + 1)));
    }

    PlainOptions AnyOptions()
    {
        PlainOptions options;
        options.CacheSlots = Between(0, 5);
        options.MaxLineLen = OneIn(2) ? 80 : Between(80, 1024);
        // Of the first few a record crosses the first block's end by one to three bytes.
        const std::int32_t lengths[] = {7, 19, 73, 75, 75, Between(1, 40), Between(1, 40), Between(1, 1024)};
        options.RecordLength = lengths[Below(8)];
        options.TabWidth = Between(1, 16);
        options.ExpandTabs = OneIn(3);
        // Nothing is text then. Without slots, since with them the second block would have a gap.
        if (OneIn(5)) {
            options.MaxTextBytes = 0;
            options.CacheSlots = 0;
        }
        return options;
    }

    Bytes SmallContent(const PlainOptions& options)
    {
        static constexpr std::size_t Largest[] = {20, 200, 700, 3000};
        const std::string_view alphabet = AnyAlphabet();
        Bytes content;
        AppendText(content, Below(Largest[Below(4)]), LongestLine(options, false), alphabet);
        return content;
    }

    // One to four blocks, often within a few bytes of a multiple. Most of it is of one kind of byte; what can
    // be found is about the ends of blocks and windows.
    Bytes LargeContent(const PlainOptions& options)
    {
        const std::size_t blocks = 1 + Below(4);
        const std::size_t size =
            OneIn(2) ? blocks * BlockBytes - 3 + Below(7) : blocks * BlockBytes - Below(BlockBytes);
        const std::string_view alphabet = AnyAlphabet();
        Bytes content;
        AppendText(content, size, LongestLine(options, true), OneIn(2) ? "."sv : alphabet);
        for (std::size_t place = BlockBytes; place < content.size() + 3; place += BlockBytes) {
            PutAround(content, place, alphabet, options);
        }
        for (int i = 0; i < 6; ++i) {
            PutAround(content, Below(content.size() / WindowBytes + 1) * WindowBytes, alphabet, options);
        }
        return content;
    }

    // Blocks of dots, with words at their ends and hardly anywhere else: a search has far to go.
    Bytes SparseContent(const PlainOptions& options)
    {
        const std::size_t size = (1 + Below(3)) * BlockBytes + (OneIn(2) ? Below(8) : Below(BlockBytes));
        Bytes content;
        AppendText(content, size, LongestLine(options, true), ".");
        for (std::size_t place = BlockBytes; place <= content.size(); place += BlockBytes) {
            if (OneIn(2)) {
                PutSeam(content, place);
            }
            for (std::size_t words = Below(4); words > 0; --words) {
                const std::string_view word = AnyWord();
                PutAt(content, place - word.size() - 2 + Below(OneIn(2) ? word.size() + 5 : 200), word);
            }
        }
        for (std::size_t words = Below(3); words > 0; --words) {
            PutAt(content, Below(content.size()), AnyWord());
        }
        return content;
    }

    // Dots, and bytes of alphabet about every 32nd row from row on and back.
    Bytes WindowsContent(std::int32_t row, std::string_view alphabet)
    {
        Bytes content(600 + Below(2000), '.');
        for (std::size_t end = static_cast<std::size_t>(row) * 16 % WindowBytes; end < content.size();
             end += WindowBytes) {
            PutBytes(content, end, 45, alphabet);
        }
        return content;
    }

    // The options of the next search: mode, direction, pattern, and what is on screen.
    void NextFind(PlainSearch& plain, const Bytes& content)
    {
        PlainFind& find = plain.Options;
        find.HexMode = OneIn(3);
        find.MatchCase = OneIn(3);
        find.Backwards = OneIn(2);
        find.FromCurrent = OneIn(2);
        find.Ebcdic = OneIn(4);
        find.TopLine = Between(0, OneIn(2) ? 3 : plain.RowCount() + 1);
        find.LineHeight = Between(1, 40);
        find.ClientHeight = Between(0, OneIn(2) ? 100 : 2000);
        find.LockTopLine = OneIn(3) ? Between(0, 5) : 0;
        plain.Document.Options.ExpandTabs = OneIn(3);
        plain.Document.Options.TabWidth = Between(1, 16);
        NextPattern(plain, content);
        MoveReadPosition(plain.Document); // choosing the pattern has moved only the plain one's
    }

    void NextPattern(PlainSearch& plain, const Bytes& content)
    {
        const bool bytes = OneIn(3);
        const std::size_t longest = bytes ? LongestBytes : LongestText;
        const std::size_t length = OneIn(2) ? 1 + Below(std::min<std::size_t>(longest, 4)) : 1 + Below(longest);
        std::string pattern = OneIn(5) ? FromAlphabet(length) : FromContent(plain, content, length, bytes);
        if (OneIn(4)) {
            pattern[Below(pattern.size())] = AnyOf(AnyAlphabet());
        }
        if (OneIn(3)) {
            ChangeCase(pattern);
        }
        SetPattern(plain.Options, pattern, bytes, '0');
    }

    // A few bytes from about one of the places that WindowsContent put some at.
    void NextPatternAtWindowEnd(PlainSearch& plain, const Bytes& content, std::int32_t row)
    {
        const std::size_t end = static_cast<std::size_t>(row) * 16 % WindowBytes + Below(5) * WindowBytes;
        const std::size_t place = std::min(end - std::min(Below(8), end), content.size() - 1);
        std::string pattern(content.begin() + static_cast<std::ptrdiff_t>(place), content.end());
        pattern.resize(std::min(pattern.size(), 1 + Below(6)));
        if (OneIn(2)) {
            ChangeCase(pattern);
        }
        SetPattern(plain.Options, pattern, OneIn(2), '0');
    }

    // One of the words that a sparse file may hold, or the first of its letters.
    void NextWord(PlainSearch& plain)
    {
        const bool bytes = OneIn(4);
        std::string pattern(AnyWord().substr(0, bytes ? LongestBytes : LongestText));
        if (OneIn(4)) {
            pattern.resize(1 + Below(pattern.size()));
        }
        if (OneIn(3)) {
            ChangeCase(pattern);
        }
        SetPattern(plain.Options, pattern, bytes, '0');
    }

    SearchStep NextStep(const PlainSearch& plain)
    {
        SearchStep step;
        if (plain.Match.Line != 0 && OneIn(3)) {
            step.From = OneIn(2) ? SearchFrom::Next : SearchFrom::Previous;
        } else if (OneIn(2)) {
            step.From = SearchFrom::Place;
            step.Line = Between(OneIn(8) ? -2 : 1, plain.RowCount() + (OneIn(8) ? 3 : 0));
            if (plain.Document.BlockCount > 1 && OneIn(2)) {
                step.Line = NearBlockStart(plain);
            }
            step.Column = OneIn(2) ? Between(-2, 40) : Between(0, 16);
            if (OneIn(20)) {
                step.Line = OneIn(4) ? INT32_MIN : OneIn(4) ? INT32_MAX : Absurd();
            }
            if (OneIn(20)) {
                step.Column = Absurd();
            }
        }
        return step;
    }

    // Leaves both documents' read position anywhere, the same.
    void MoveReadPosition(PlainDocument& plain)
    {
        const std::int32_t line = Between(1, plain.LineCount);
        const std::int32_t offset = Between(0, plain.Size());
        const bool byOffset = OneIn(4);
        SeekLine(byOffset ? 0 : line, offset);
        plain.SeekLine(byOffset ? 0 : line, offset);
        if (!byOffset && OneIn(2)) {
            for (std::int32_t i = Between(0, 30); i > 0; --i) {
                ReadLine();
                plain.ReadLine();
            }
        }
    }

private:
    std::string_view AnyAlphabet() { return Alphabets[Below(std::size(Alphabets))]; }
    char AnyOf(std::string_view alphabet) { return alphabet[Below(alphabet.size())]; }

    std::string_view AnyWord() { return Words[Below(std::size(Words))]; }

    // Seldom short in a large file: many lines in a block take time.
    std::size_t LongestLine(const PlainOptions& options, bool large)
    {
        const std::size_t limit = static_cast<std::size_t>(options.MaxLineLen);
        const std::size_t longest[] = {60, limit, limit + (OneIn(6) ? 200 : 0), 12, 3};
        return longest[Below(large && !OneIn(10) ? 3 : 5)];
    }

    std::int32_t Absurd()
    {
        static constexpr std::int32_t Numbers[] = {-2000000000, 2000000000, INT32_MAX / 16, -1000, 0, 2000};
        return Numbers[Below(std::size(Numbers))];
    }

    void AppendText(Bytes& content, std::size_t size, std::size_t longest, std::string_view alphabet)
    {
        static constexpr std::string_view Ends[] = {"\n", "\r\n", "\r", "\n\n", "\r\r\n", "\n\r"};
        const std::size_t oneEnd = Below(8); // files of one kind are the usual ones
        while (content.size() < size) {
            for (std::size_t length = OneIn(6) ? Below(3) : Below(longest + 1); length > 0; --length) {
                content.push_back(static_cast<std::uint8_t>(AnyOf(alphabet)));
            }
            const std::string_view end = Ends[oneEnd < 3 ? oneEnd : Below(6)];
            content.insert(content.end(), end.begin(), end.end());
        }
        content.resize(size);
    }

    // Bytes of alphabet, line ends and the like, or a line about as long as the limit, across place.
    void PutAround(Bytes& content, std::size_t place, std::string_view alphabet, const PlainOptions& options)
    {
        const std::size_t most = OneIn(3) ? static_cast<std::size_t>(options.MaxLineLen) : 40;
        PutBytes(content, place, most, alphabet);
        if (place % BlockBytes == 0 && place > 0 && OneIn(2)) {
            PutSeam(content, place);
        } else if (OneIn(2)) {
            PutBytes(content, place, 4, "\r\n\n\0\tab"sv);
        }
    }

    // Fewer than most bytes of alphabet before place, and fewer behind it.
    void PutBytes(Bytes& content, std::size_t place, std::size_t most, std::string_view alphabet)
    {
        const std::size_t start = place - std::min(Below(most), place);
        const std::size_t end = std::min(place + Below(most), content.size());
        for (std::size_t at = start; at < end; ++at) {
            content[at] = static_cast<std::uint8_t>(AnyOf(alphabet));
        }
    }

    static void PutAt(Bytes& content, std::size_t place, std::string_view text)
    {
        for (std::size_t i = 0; i < text.size() && place + i < content.size(); ++i) {
            content[place + i] = static_cast<std::uint8_t>(text[i]);
        }
    }

    void PutSeam(Bytes& content, std::size_t blockEnd) { PutAt(content, blockEnd - 3, Seams[Below(std::size(Seams))]); }

    std::string FromAlphabet(std::size_t length)
    {
        const std::string_view alphabet = AnyAlphabet();
        std::string pattern;
        while (pattern.size() < length) {
            pattern += AnyOf(alphabet);
        }
        return pattern;
    }

    // A line, record or row about where a block begins.
    std::int32_t NearBlockStart(const PlainSearch& plain)
    {
        const PlainDocument& document = plain.Document;
        const std::int32_t block = Between(2, document.BlockCount);
        const std::int32_t offset = (block - 1) * BlockBytes;
        const std::int32_t unit = plain.Options.HexMode ? 16 : document.Options.RecordLength;
        const bool counted = document.IsText && !plain.Options.HexMode;
        return (counted ? static_cast<std::int32_t>(document.FirstLineOf(block)) : offset / unit + 1) + Between(-3, 3);
    }

    // What stands somewhere in the file, as the mode shows it; about a block's end as often as anywhere.
    std::string FromContent(PlainSearch& plain, const Bytes& content, std::size_t length, bool bytes)
    {
        std::string source;
        const bool large = content.size() > BlockBytes;
        if (plain.Options.HexMode || bytes || (large && OneIn(3))) {
            const std::size_t blockEnd = (1 + Below(content.size() / BlockBytes)) * BlockBytes;
            const std::size_t place = large && OneIn(2) ? blockEnd - Below(length + 2) : Below(content.size() + 1);
            const std::size_t end = std::min(place + length, content.size());
            source.assign(content.begin() + static_cast<std::ptrdiff_t>(place),
                          content.begin() + static_cast<std::ptrdiff_t>(end));
        } else {
            std::int32_t line = Between(1, plain.Document.LineCount);
            if (OneIn(2) && plain.Document.BlockCount > 1) {
                line = std::clamp(NearBlockStart(plain), 1, plain.Document.LineCount);
            }
            const std::string text = plain.DisplayLine(line);
            // The end of a line as often as its inside.
            const std::size_t place = text.size() > length && OneIn(2) ? text.size() - length : Below(text.size() + 1);
            source = text.substr(place, length);
        }
        return source.empty() ? FromAlphabet(length) : source;
    }

    void ChangeCase(std::string& pattern)
    {
        for (char& character : pattern) {
            const bool letter = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
                                static_cast<std::uint8_t>(character) >= 0xC0;
            if (letter && OneIn(2)) {
                character = static_cast<char>(character ^ 0x20);
            }
        }
    }

    std::mt19937 Random;
};

std::uint32_t NumberFromEnvironment(const char* name, std::uint32_t fallback)
{
    const char* const text = getenv(name);
    return text != nullptr ? static_cast<std::uint32_t>(strtoul(text, nullptr, 10)) : fallback;
}

std::uint32_t Seed()
{
    return NumberFromEnvironment("KESTOVAR_TEST_SEED", 19940611);
}

} // namespace

class SearchProperty : public DocumentFixture {
protected:
    void SetUp() override
    {
        DocumentFixture::SetUp();
        Forget();
    }

    void TearDown() override
    {
        DocumentFixture::TearDown();
        Forget();
    }

private:
    static void Forget()
    {
        Find = FindState{};
        View = ViewState{};
        ViewOptions = ViewSettings{};
    }
};

namespace {

std::string NameOf(std::uint32_t seed, const Bytes& content, const std::string& search)
{
    return "seed " + std::to_string(seed) + ", file of " + std::to_string(content.size()) + ": " + search +
           (HasOneByteCharacters() ? "" : ", two-byte characters");
}

} // namespace

TEST_F(SearchProperty, AnySearchFindsWhatThePlainSearchFinds)
{
    const std::uint32_t files = NumberFromEnvironment("KESTOVAR_TEST_FILES", 2100);
    int searches = 0;
    int found = 0;
    for (std::uint32_t seed = Seed(); seed < Seed() + files; ++seed) {
        Generator generator(seed);
        const PlainOptions options = generator.AnyOptions();
        const bool large = generator.OneIn(12);
        const Bytes content = large ? generator.LargeContent(options) : generator.SmallContent(options);
        PlainDocument document(options);
        StartComparing(options);
        ASSERT_EQ(OpenBoth(document, content, false), "") << "seed " << seed;
        PlainSearch plain(document, ToUpperCase);
        for (int search = 0; search < (large ? 6 : 10); ++search) {
            const bool again = plain.Match.Line != 0 && generator.OneIn(3);
            if (!again) {
                TestPort::SetTwoByteCharacters(generator.OneIn(4));
                generator.NextFind(plain, content);
            }
            if (generator.OneIn(2)) {
                generator.MoveReadPosition(document);
            }
            const SearchStep step = generator.NextStep(plain);
            const std::string name = NameOf(seed, content, DescribeSearch(plain, step));
            ASSERT_EQ(CompareSearch(plain, step), "") << name << ", search " << search;
            ++searches;
            found += plain.Match.Line != 0;
        }
    }
    // The generator is of no use when it asks only for what is there, or for what is not.
    if (files >= 100) {
        EXPECT_GT(found, searches / 4);
        EXPECT_LT(found, searches * 3 / 4);
    }
}

TEST_F(SearchProperty, AcrossBlocksASearchFindsWhatThePlainSearchFinds)
{
    const std::uint32_t files = NumberFromEnvironment("KESTOVAR_TEST_FILES", 2100) / 7;
    int found = 0;
    for (std::uint32_t seed = Seed(); seed < Seed() + files; ++seed) {
        Generator generator(seed);
        const PlainOptions options = generator.AnyOptions();
        const Bytes content = generator.SparseContent(options);
        PlainDocument document(options);
        StartComparing(options);
        ASSERT_EQ(OpenBoth(document, content, false), "") << "seed " << seed;
        PlainSearch plain(document, ToUpperCase);
        for (int search = 0; search < 12; ++search) {
            if (plain.Match.Line == 0 || generator.OneIn(3)) {
                generator.NextFind(plain, content);
                generator.NextWord(plain);
            }
            const SearchStep step = generator.NextStep(plain);
            const std::string name = NameOf(seed, content, DescribeSearch(plain, step));
            ASSERT_EQ(CompareSearch(plain, step), "") << name << ", search " << search;
            found += plain.Match.Line != 0;
        }
    }
    EXPECT_GT(found, static_cast<int>(files));
}

TEST_F(SearchProperty, AWordInTheRecordAcrossABlocksEndIsFoundFromAllAround)
{
    for (const std::int32_t length : {7, 19, 73, 75, 512}) {
        for (std::int32_t place = BlockBytes - 4; place <= BlockBytes + 1; ++place) {
            PlainOptions options;
            options.RecordLength = length;
            options.MaxTextBytes = 0;
            options.CacheSlots = 0;
            Bytes content(2 * BlockBytes + 100, '.');
            std::copy_n("abc", 3, content.begin() + place);
            PlainDocument document(options);
            StartComparing(options);
            ASSERT_EQ(OpenBoth(document, content, false), "");
            PlainSearch plain(document, ToUpperCase);
            plain.Options.Text = "ABC";
            const std::int32_t record = place / length + 1;
            for (std::int32_t line = record - 3; line <= record + 3; ++line) {
                for (const bool backwards : {false, true}) {
                    plain.Options.Backwards = backwards;
                    const SearchStep step = {SearchFrom::Place, line, backwards ? length - 1 : 0};
                    ASSERT_EQ(CompareSearch(plain, step), "")
                        << "records of " << length << ", word at " << place << ", " << DescribeSearch(plain, step);
                }
            }
        }
    }
}

TEST_F(SearchProperty, AWordInTheLineAcrossABlocksEndIsFoundFromAllAround)
{
    for (const std::string_view word : {"ab"sv, "abc"sv, "abcdefgh"sv}) {
        const auto length = static_cast<std::int32_t>(word.size());
        for (std::int32_t place = BlockBytes - length - 1; place <= BlockBytes + 1; ++place) {
            Bytes content(2 * BlockBytes + 100, '.');
            for (std::size_t end = 50; end < content.size(); end += 101) {
                content[end] = '\n';
            }
            std::copy(word.begin(), word.end(), content.begin() + place);
            const PlainOptions options;
            PlainDocument document(options);
            StartComparing(options);
            ASSERT_EQ(OpenBoth(document, content, false), "");
            PlainSearch plain(document, ToUpperCase);
            plain.Options.Text = word;
            const auto across = static_cast<std::int32_t>(document.FirstLineOf(2));
            for (const std::int32_t line : {1, across - 1, across, across + 1, across + 2, document.LineCount}) {
                for (const bool backwards : {false, true}) {
                    plain.Options.Backwards = backwards;
                    const SearchStep step = {SearchFrom::Place, line, backwards ? 100 : 0};
                    ASSERT_EQ(CompareSearch(plain, step), "")
                        << word << " at " << place << ", " << DescribeSearch(plain, step);
                    ASSERT_EQ(plain.Match.Line != 0, backwards ? line >= across : line <= across);
                }
            }
        }
    }
}

// Above all where a byte's capital depends on the bytes before it, back to the window's first.
TEST_F(SearchProperty, AcrossWindowsASearchFindsWhatThePlainSearchFinds)
{
    const std::uint32_t files = NumberFromEnvironment("KESTOVAR_TEST_FILES", 2100);
    std::uint32_t found = 0;
    for (std::uint32_t seed = Seed(); seed < Seed() + files; ++seed) {
        Generator generator(seed);
        const PlainOptions options;
        SearchStep step;
        step.From = SearchFrom::Place;
        step.Line = generator.Between(1, 70);
        step.Column = generator.Between(0, 15);
        const Bytes content =
            generator.WindowsContent(step.Line - 1, generator.OneIn(2) ? "aAb.\x81\xE4"sv : "aA\x81"sv);
        PlainDocument document(options);
        StartComparing(options);
        ASSERT_EQ(OpenBoth(document, content, false), "") << "seed " << seed;
        TestPort::SetTwoByteCharacters(!generator.OneIn(4));
        PlainSearch plain(document, ToUpperCase);
        plain.Options.HexMode = true;
        plain.Options.Backwards = generator.OneIn(2);
        plain.Options.MatchCase = generator.OneIn(5);
        for (int search = 0; search < 4; ++search) {
            generator.NextPatternAtWindowEnd(plain, content, step.Line - 1);
            const std::string name = NameOf(seed, content, DescribeSearch(plain, step));
            ASSERT_EQ(CompareSearch(plain, step), "") << name;
            found += plain.Match.Line != 0;
        }
    }
    EXPECT_GT(found, files);
}

TEST_F(SearchProperty, RepeatingASearchVisitsWhatThePlainSearchVisits)
{
    const std::uint32_t files = NumberFromEnvironment("KESTOVAR_TEST_FILES", 2100) / 3;
    int visited = 0;
    int ends = 0;
    for (std::uint32_t seed = Seed(); seed < Seed() + files; ++seed) {
        Generator generator(seed);
        const PlainOptions options = generator.AnyOptions();
        const Bytes content = generator.OneIn(8) ? generator.LargeContent(options) : generator.SmallContent(options);
        PlainDocument document(options);
        StartComparing(options);
        ASSERT_EQ(OpenBoth(document, content, false), "") << "seed " << seed;
        PlainSearch plain(document, ToUpperCase);
        generator.NextFind(plain, content);
        // One way to the end, or to and fro.
        const std::size_t turns = generator.OneIn(2) ? 0 : 2 + generator.Below(8);
        SearchStep step;
        for (int steps = 0; steps < 200 && (steps == 0 || plain.Match.Line != 0); ++steps) {
            if (generator.OneIn(4)) {
                generator.MoveReadPosition(document); // painting does
            }
            const std::string name = NameOf(seed, content, DescribeSearch(plain, step));
            ASSERT_EQ(CompareSearch(plain, step), "") << name << ", step " << steps;
            visited += plain.Match.Line != 0;
            if (step.From == SearchFrom::Origin || (turns != 0 && generator.OneIn(turns))) {
                step.From = step.From == SearchFrom::Next ? SearchFrom::Previous : SearchFrom::Next;
            }
        }
        ends += plain.Match.Line == 0;
    }
    if (files >= 100) {
        EXPECT_GT(visited, static_cast<int>(files) * 10);
        EXPECT_GT(ends, static_cast<int>(files) / 2);
    }
}

// Without what makes searching hard, every occurrence, as the standard library finds them.
class SearchOfEverything : public SearchProperty {
protected:
    using Places = std::vector<std::pair<std::int32_t, std::int32_t>>; // line or row, and column

    // More would take long.
    static constexpr std::size_t MostOccurrences = 500;
    static constexpr std::size_t MostLines = 5000;

    // False: it has no bytes.
    bool Open(Generator& generator)
    {
        PlainOptions options = generator.AnyOptions();
        options.ExpandTabs = false;
        Content = generator.OneIn(5) ? generator.LargeContent(options) : generator.SmallContent(options);
        // There a line end would be counted off, and lines numbered otherwise.
        for (std::size_t start = BlockBytes; start < Content.size(); start += BlockBytes) {
            if (Content[start] == '\n' && Content[start - 1] != '\r') {
                Content[start] = 'x';
            }
        }
        File.emplace(options);
        StartComparing(options);
        EXPECT_EQ(OpenBoth(*File, Content, false), "");
        Plain.emplace(*File, ToUpperCase);
        return !Content.empty();
    }

    // Every match from the origin on, in the program and in the plain search.
    Places Visit()
    {
        Places visited;
        SearchStep step;
        do {
            const std::string difference = CompareSearch(*Plain, step);
            EXPECT_EQ(difference, "");
            if (Plain->Match.Line == 0 || !difference.empty()) {
                return visited;
            }
            visited.emplace_back(Plain->Match.Line, Plain->Match.Column);
            step.From = SearchFrom::Next;
        } while (visited.size() <= Content.size());
        ADD_FAILURE() << "more matches than there are bytes";
        return visited;
    }

    static std::string Capitals(std::string text)
    {
        for (char& character : text) {
            ToUpperCase(&character, 1);
        }
        return text;
    }

    std::string Folded(const std::string& text) const { return Plain->Options.MatchCase ? text : Capitals(text); }

    static std::vector<std::size_t> Occurrences(const std::string& text, const std::string& pattern)
    {
        std::vector<std::size_t> places;
        for (std::size_t at = text.find(pattern); at != std::string::npos; at = text.find(pattern, at + 1)) {
            places.push_back(at);
        }
        return places;
    }

    std::vector<std::string> SplitLines() const
    {
        std::vector<std::string> lines(1);
        for (std::size_t i = 0; i < Content.size(); ++i) {
            const char character = static_cast<char>(Content[i]);
            const bool recordFull =
                !File->IsText && lines.back().size() == static_cast<std::size_t>(File->Options.RecordLength);
            if (recordFull) {
                lines.emplace_back();
            }
            if (!File->IsText || (character != '\r' && character != '\n')) {
                lines.back() += character != '\0' ? character : ' ';
            } else if (character != '\n' || i == 0 || Content[i - 1] != '\r') {
                lines.emplace_back();
            }
        }
        if (File->IsText && (Content.back() == '\r' || Content.back() == '\n')) {
            lines.pop_back();
        }
        return lines;
    }

    std::string AllBytes() const { return std::string(Content.begin(), Content.end()); }

    // A pattern of what is there, mostly short.
    std::string TakePattern(Generator& generator, bool bytes)
    {
        const std::size_t most = generator.OneIn(2) ? 3 : bytes ? LongestBytes : LongestText;
        std::string pattern = AllBytes().substr(generator.Below(Content.size()), 1 + generator.Below(most));
        std::replace(pattern.begin(), pattern.end(), '\0', bytes ? '\0' : 'a');
        SetPattern(Plain->Options, pattern, bytes, '0');
        return Plain->Options.MatchCase ? pattern : Capitals(pattern);
    }

    Bytes Content;
    std::optional<PlainDocument> File;
    std::optional<PlainSearch> Plain;
};

TEST_F(SearchOfEverything, InTextModeVisitsEveryOccurrenceInEveryLine)
{
    std::size_t visited = 0;
    for (std::uint32_t seed = Seed(); seed < Seed() + 900; ++seed) {
        Generator generator(seed);
        if (!Open(generator)) {
            continue;
        }
        Plain->Options.MatchCase = generator.OneIn(3);
        const bool bytes = generator.OneIn(3);
        const std::string pattern = TakePattern(generator, bytes);
        Places expected;
        const std::vector<std::string> lines = SplitLines();
        for (std::size_t line = 0; line < lines.size(); ++line) {
            for (const std::size_t at : Occurrences(bytes ? lines[line] : Folded(lines[line]), pattern)) {
                expected.emplace_back(static_cast<std::int32_t>(line + 1), static_cast<std::int32_t>(at));
            }
        }
        if (expected.size() > MostOccurrences || lines.size() > MostLines) {
            continue;
        }
        ASSERT_EQ(Visit(), expected) << NameOf(seed, Content, DescribeSearch(*Plain, {}));
        Plain->Options.Backwards = true;
        std::reverse(expected.begin(), expected.end());
        ASSERT_EQ(Visit(), expected) << NameOf(seed, Content, DescribeSearch(*Plain, {}));
        ASSERT_FALSE(HasFailure());
        visited += expected.size();
    }
    EXPECT_GT(visited, 6000u);
}

TEST_F(SearchOfEverything, InHexModeVisitsEveryOccurrenceInTheFile)
{
    std::size_t visited = 0;
    for (std::uint32_t seed = Seed(); seed < Seed() + 900; ++seed) {
        Generator generator(seed);
        if (!Open(generator)) {
            continue;
        }
        Plain->Options.HexMode = true;
        Plain->Options.MatchCase = generator.OneIn(2);
        const std::string pattern = TakePattern(generator, generator.OneIn(2));
        const std::vector<std::size_t> occurrences = Occurrences(Folded(AllBytes()), pattern);
        if (occurrences.size() > MostOccurrences) {
            continue;
        }
        Places expected;
        for (const std::size_t at : occurrences) {
            expected.emplace_back(static_cast<std::int32_t>(at / 16 + 1), static_cast<std::int32_t>(at % 16));
        }
        ASSERT_EQ(Visit(), expected) << NameOf(seed, Content, DescribeSearch(*Plain, {}));
        visited += expected.size();
        // Letters are not all compared as capitals backwards, and a match at the file's start is left out when
        // the search for it would start within it.
        if (Plain->Options.MatchCase) {
            const bool startsWithin = occurrences.size() > 1 && occurrences[1] == 1;
            if (!occurrences.empty() && occurrences[0] == 0 && (startsWithin || Content.size() <= pattern.size())) {
                expected.erase(expected.begin());
            }
            std::reverse(expected.begin(), expected.end());
            Plain->Options.Backwards = true;
            ASSERT_EQ(Visit(), expected) << NameOf(seed, Content, DescribeSearch(*Plain, {}));
        }
        ASSERT_FALSE(HasFailure());
    }
    EXPECT_GT(visited, 6000u);
}
