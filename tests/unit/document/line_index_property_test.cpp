// The document against the plain one, over random files and random reading.
//
//   KESTOVAR_TEST_SEED   another seed than the fixed one
//   KESTOVAR_TEST_FILES  another number of files
#include "document/document_fixture.h"
#include "support/document_check.h"

#include <algorithm>
#include <cstdlib>
#include <random>
#include <string>

namespace {

class Generator {
public:
    explicit Generator(std::uint32_t seed) : Random(seed) {}

    std::size_t Below(std::size_t bound) { return Random() % bound; }
    bool OneIn(std::size_t bound) { return Below(bound) == 0; }

    // Mostly one to four blocks, and often within a few bytes of a multiple of a block.
    std::size_t FileSize()
    {
        if (OneIn(12)) {
            return Below(300);
        }
        const std::size_t blocks = 1 + Below(4);
        if (OneIn(2)) {
            return blocks * BlockBytes - 3 + Below(7);
        }
        return (blocks - 1) * BlockBytes + Below(BlockBytes) + 1;
    }

    std::uint8_t Letter() { return static_cast<std::uint8_t>('a' + Below(26)); }

    std::uint8_t InterestingByte()
    {
        static constexpr std::uint8_t Bytes[] = {'\r', '\r', '\n', '\n', '\n', 0, '\t', 'x', 0xFF};
        return Bytes[Below(sizeof Bytes)];
    }

    // Lines of up to longest bytes with every kind of line end.
    Bytes Text(std::size_t size, std::size_t longest)
    {
        static constexpr const char* Ends[] = {"\n", "\r\n", "\r", "\n\n", "\r\r\n", "\n\r"};
        const std::size_t oneEnd = Below(8); // files of one kind are the usual ones
        Bytes content;
        content.reserve(size + longest + 4);
        while (content.size() < size) {
            const std::size_t length = OneIn(6) ? Below(3) : Below(longest + 1);
            content.insert(content.end(), length, Letter());
            if (length > 0 && OneIn(3)) {
                content[content.size() - 1 - Below(length)] = OneIn(2) ? '\t' : 0;
            }
            for (const char* end = Ends[oneEnd < 3 ? oneEnd : Below(6)]; *end != '\0'; ++end) {
                content.push_back(static_cast<std::uint8_t>(*end));
            }
        }
        content.resize(size);
        return content;
    }

    // Puts what matters across every block boundary: line ends, zeros, tabs, and lines about as long as
    // the limit.
    void TouchBoundaries(Bytes& content, std::size_t maxLineLen)
    {
        for (std::size_t boundary = BlockBytes; boundary < content.size() + 3; boundary += BlockBytes) {
            if (OneIn(3)) {
                const std::size_t before = OneIn(2) ? maxLineLen - 2 + Below(5) : Below(maxLineLen);
                const std::size_t after = OneIn(2) ? maxLineLen - 2 + Below(5) : Below(maxLineLen);
                for (std::size_t at = boundary - before; at < boundary + after && at < content.size(); ++at) {
                    content[at] = 'y';
                }
            }
            for (std::size_t at = boundary - Below(4); at < boundary + Below(4) && at < content.size(); ++at) {
                content[at] = InterestingByte();
            }
        }
        // A line about as long as the limit somewhere inside.
        if (OneIn(6) && content.size() > 3000) {
            const std::size_t length = maxLineLen - 1 + Below(3);
            const std::size_t start = Below(content.size() - length - 1);
            std::fill_n(content.begin() + static_cast<std::ptrdiff_t>(start), length, 'z');
        }
    }

    PlainOptions Options()
    {
        PlainOptions options;
        options.CacheSlots = static_cast<std::int32_t>(Below(6));
        options.MaxLineLen = OneIn(2) ? 80 : static_cast<std::int32_t>(80 + Below(945));
        options.MaxTextBytes = OneIn(10) ? 0 : 12582912;
        options.RecordLength = static_cast<std::int32_t>(OneIn(2) ? 75 : 1 + Below(1024));
        options.TabWidth = static_cast<std::int32_t>(OneIn(2) ? 8 : 1 + Below(20));
        options.ExpandTabs = OneIn(2);
        return options;
    }

    Bytes Content(const PlainOptions& options)
    {
        const std::size_t limit = static_cast<std::size_t>(options.MaxLineLen);
        const std::size_t longest[] = {3, 12, 40, limit - 3, limit};
        Bytes content = Text(FileSize(), longest[Below(5)]);
        TouchBoundaries(content, limit);
        return content;
    }

    DocumentStep Step(const PlainDocument& plain)
    {
        const std::size_t lines = static_cast<std::size_t>(plain.LineCount);
        const std::int32_t anyLine = static_cast<std::int32_t>(Below(lines) + 1);
        switch (Below(12)) {
        case 0:
        case 1: return {StepKind::ReadLineText, LineAtBlockStart(plain), 0};
        case 2:
        case 3:
        case 4: return {StepKind::ReadLineText, std::max(plain.CurLine, 1), 0};
        case 5: return {StepKind::ReadLineText, anyLine, 0};
        case 6: return {StepKind::ReadLineText, std::max(plain.CurLine - static_cast<std::int32_t>(Below(25)), 1), 0};
        case 7: return {StepKind::HexRowOfLine, anyLine, 0};
        case 8: return {StepKind::ReadBytesAt, Offset(plain), static_cast<std::int32_t>(Below(40))};
        case 9: return {StepKind::ReadBytes, 0, static_cast<std::int32_t>(Below(2049))};
        case 10: return {StepKind::ReadLine, 0, 0};
        default: break;
        }
        switch (Below(6)) {
        case 0: return {StepKind::DiscardParked, 0, 0};
        case 1: return {StepKind::NoMemory, 0, 0};
        case 2: return {StepKind::MemoryAgain, 0, 0};
        case 3: return {StepKind::ReadLineText, plain.LineCount + static_cast<std::int32_t>(Below(3)), 0};
        default: return {StepKind::SeekLine, anyLine, 0};
        }
    }

private:
    std::int32_t Offset(const PlainDocument& plain)
    {
        const std::size_t boundary = Below(static_cast<std::size_t>(plain.BlockCount) + 1) * BlockBytes;
        const std::int64_t offset = static_cast<std::int64_t>(boundary + Below(60)) - 40;
        return static_cast<std::int32_t>(offset);
    }

    // A line about where a block begins, going by what was last read there.
    std::int32_t LineAtBlockStart(const PlainDocument& plain)
    {
        const std::size_t block = Below(static_cast<std::size_t>(plain.BlockCount) + 1);
        const std::int64_t first = plain.FirstLineOf(static_cast<std::int32_t>(block));
        const std::int64_t near = first - 3 + static_cast<std::int64_t>(Below(7));
        return static_cast<std::int32_t>(std::clamp<std::int64_t>(near, 1, plain.LineCount));
    }

    std::mt19937 Random;
};

std::uint32_t NumberFromEnvironment(const char* name, std::uint32_t fallback)
{
    const char* const text = getenv(name);
    return text != nullptr ? static_cast<std::uint32_t>(strtoul(text, nullptr, 10)) : fallback;
}

} // namespace

class LineIndexProperty : public DocumentFixture {};

TEST_F(LineIndexProperty, AgreesWithThePlainDocument)
{
    const std::uint32_t seed = NumberFromEnvironment("KESTOVAR_TEST_SEED", 20240711);
    const std::uint32_t files = NumberFromEnvironment("KESTOVAR_TEST_FILES", 2000);
    std::uint32_t texts = 0;
    for (std::uint32_t file = 0; file < files; ++file) {
        Generator generator(seed + file);
        const PlainOptions options = generator.Options();
        PlainDocument plain(options);
        StartComparing(options);
        // Sometimes a second document follows on the first.
        for (int document = 0; document < (generator.OneIn(4) ? 2 : 1); ++document) {
            const Bytes content = generator.Content(options);
            std::string log = "seed " + std::to_string(seed + file) + ", file of " + std::to_string(content.size());
            std::string difference = OpenBoth(plain, content, generator.OneIn(2));
            for (int step = 0; step < 24 && difference.empty(); ++step) {
                const DocumentStep next = generator.Step(plain);
                log += "\n" + DescribeStep(next);
                difference = TakeStep(plain, next);
            }
            ASSERT_EQ(difference, "") << log;
            texts += plain.IsText;
        }
    }
    // The generator is of no use when it makes only one kind.
    if (files >= 100) {
        EXPECT_GT(texts, files / 3);
        EXPECT_LT(texts, files);
    }
}
