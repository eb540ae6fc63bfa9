// A file and reading in it, compared with the plain document.
//
// Input: options, steps up to their end mark, and the file as runs of a byte, so that a short input makes a
// file of several blocks.
#include "fuzz_input.h"
#include "support/document_check.h"

#include "document/document_state.h"

namespace {

constexpr std::size_t LargestFile = 5 * BlockBytes;
constexpr int MostSteps = 64;
constexpr std::uint8_t StepKinds = 9;

PlainOptions TakeOptions(FuzzInput& input)
{
    PlainOptions options;
    options.CacheSlots = input.Byte() % 6;
    options.MaxLineLen = 80 + static_cast<std::int32_t>(input.Number16() % 945);
    options.MaxTextBytes = input.Byte() % 8 == 7 ? 0 : 12582912;
    options.RecordLength = 1 + static_cast<std::int32_t>(input.Number16() % 1024);
    options.TabWidth = 1 + input.Byte() % 20;
    options.ExpandTabs = input.Byte() % 2 != 0;
    return options;
}

std::vector<DocumentStep> TakeSteps(FuzzInput& input)
{
    std::vector<DocumentStep> steps;
    for (int i = 0; i < MostSteps; ++i) {
        const std::uint8_t kind = input.Byte();
        if (kind >= StepKinds) {
            break;
        }
        const std::int32_t first = input.Number32();
        steps.push_back({static_cast<StepKind>(kind), first, static_cast<std::int32_t>(input.Number16() % 2049)});
    }
    return steps;
}

// Pairs of a byte and a length: below 0xC0, a run of up to 255 bytes; from there on, lines of 60 bytes up to
// less than 64 bytes from the next block boundary.
Bytes TakeFile(FuzzInput& input)
{
    Bytes content;
    while (!input.AtEnd() && content.size() < LargestFile) {
        const std::uint8_t byte = input.Byte();
        const std::uint8_t length = input.Byte();
        if (length < 0xC0) {
            content.insert(content.end(), static_cast<std::size_t>(length) * 4 / 3 + 1, byte);
            continue;
        }
        const std::size_t boundary = (content.size() / BlockBytes + 1) * BlockBytes;
        const std::size_t end = boundary - length % 64;
        while (content.size() < end) {
            content.push_back(content.size() % 60 == 59 ? '\n' : byte);
        }
    }
    return content;
}

std::int32_t SensibleLine(std::int32_t line, const PlainDocument& plain)
{
    const std::int64_t lines = plain.LineCount;
    return static_cast<std::int32_t>((static_cast<std::int64_t>(line) % lines + lines) % lines + 1);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const PlainOptions options = TakeOptions(input);
    const std::vector<DocumentStep> steps = TakeSteps(input);
    const Bytes content = TakeFile(input);

    PlainDocument plain(options);
    StartComparing(options);
    std::string difference = OpenBoth(plain, content, false);
    for (DocumentStep step : steps) {
        if (step.Kind != StepKind::ReadBytesAt) {
            step.First = SensibleLine(step.First, plain);
        }
        difference += TakeStep(plain, step);
    }
    Require(difference.empty(), difference.c_str());
    Require(TestPort::Misuses() == 0, "memory and files are used by their rules");
    return 0;
}
