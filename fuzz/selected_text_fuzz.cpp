// What is selected, walked through and gathered with several limits: no part and no buffer is overrun, and what
// the calls give is what the parts say, however many there are.
//
// Input: options, selection, limit, what happens to the file meanwhile, and the file as runs of a byte, so that a
// short input makes a file of several blocks.
#include "fuzz_input.h"
#include "support/document_setup.h"

#include "document/block_cache.h"
#include "document/document_state.h"
#include "document/line_index.h"
#include "view/selected_text.h"
#include "view/selection.h"
#include "view/view_state.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace {

constexpr std::size_t LargestFile = 3 * BlockBytes + 2000;
constexpr std::int32_t MostLines = 1000; // enough to reach from one block into the next but one
constexpr std::int32_t SmallestLimit = MaxPartBytes + 2;

enum class Change {
    None,
    NoMemory,    // blocks are read again and again
    Discarded,   // so are those that were parked
    LineLength,  // records have another length
    Shrunk,      // the file does
    Overwritten, // with one byte over and over
    Released,    // the file is
    Kinds,
};

struct Part {
    std::string Text;
    bool IsCutShort;
};

void TakeOptions(FuzzInput& input)
{
    const std::uint8_t switches = input.Byte();
    View = ViewState{};
    ViewOptions = ViewSettings{};
    View.HexMode = (switches & 1) != 0;
    ViewOptions.EbcdicToAscii = (switches & 2) != 0;
    DocumentOptions.Ptabs = (switches & 4) != 0;
    DocumentOptions.MaxTextSize = (switches & 8) != 0 ? 0 : 12;
    DocumentOptions.TabSize = input.Number32();
    DocumentOptions.FixedLineLen = input.Number32();
    DocumentOptions.MaxLineLen = 80 + static_cast<std::int32_t>(input.Number16() % 945);
}

// Pairs of a byte and a length: below 0xC0, a run of up to 255 bytes; from there on, lines of 60 bytes up to less
// than 64 bytes from the next block boundary.
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
        const std::size_t end = (content.size() / BlockBytes + 1) * BlockBytes - length % 64;
        while (content.size() < end) {
            content.push_back(content.size() % 60 == 59 ? '\n' : byte);
        }
    }
    return content;
}

std::int32_t Within(std::int32_t number, std::int32_t count)
{
    const std::int64_t wrapped = static_cast<std::int64_t>(number) % count;
    return static_cast<std::int32_t>(wrapped < 0 ? wrapped + count : wrapped);
}

// Both ends lie in the document or just behind it; without an end nothing is selected.
void TakeSelection(FuzzInput& input)
{
    const std::uint8_t kind = input.Byte();
    const std::int32_t lines = RowCount() + 2;
    View.SelLineA = Within(input.Number32(), lines);
    const std::int32_t other = input.Number32();
    View.SelLineB = kind % 2 == 0 ? Within(other, lines) : View.SelLineA + Within(other, 81) - 40;
    View.SelLineB = std::clamp(View.SelLineB, std::max(View.SelLineA - MostLines, 0), View.SelLineA + MostLines);
    View.SelLineB = std::min(View.SelLineB, lines - 1);
    View.SelAnchorLine = kind % 4 < 2 ? View.SelLineA : View.SelLineB;
    View.SelColA = Within(input.Number32(), INT32_MAX);
    View.SelColB = Within(input.Number32(), 200);
    if (kind % 8 == 7) {
        SelectEverything();
        View.SelLineB = std::min(View.SelLineB, MostLines);
    }
}

// Returns whether what is read stays the same each time.
bool ChangeDocument(Change change, std::uint32_t number, Bytes content)
{
    // Block 2 of such a file is blank at first.
    const bool blank = Document.FileSize > Document.MaxTextBytes && Document.FileSize > BlockBytes;
    switch (change) {
    case Change::None: return !blank;
    case Change::NoMemory: TestPort::FailAllAllocations(true); return !blank;
    case Change::Discarded: DiscardParkedBlocks(); return true;
    case Change::LineLength: SetFixedLineLength(static_cast<std::int32_t>(number)); return !blank;
    case Change::Released: CloseFileHandle(); return false;
    case Change::Shrunk: content.resize(std::min<std::size_t>(number, content.size())); break;
    default: std::fill(content.begin(), content.end(), static_cast<std::uint8_t>(number)); break;
    }
    TestPort::AddFile(TestPath, std::move(content));
    return false;
}

bool IsAllowed(char byte)
{
    return byte != '\0' && byte != '\r' && byte != '\n' && !(View.HexMode && byte == '\t');
}

std::vector<Part> ReadParts()
{
    std::vector<Part> parts;
    SeekLine(0, 0);
    for (SelectionWalk walk = StartSelectionWalk(); !IsOver(walk); ++walk.NextLine) {
        const SelectedPart part = ReadSelectedPart(walk);
        Require(part.Length >= 0 && part.Length <= MaxPartBytes, "no part is too long");
        Require(std::all_of(part.Text, part.Text + part.Length, IsAllowed), "no byte of a part ends it elsewhere");
        Require(!View.HexMode || (part.Length == HexRowShown && !part.IsCutShort), "a hex row is taken whole");
        Require(part.IsLast == (walk.NextLine == walk.LastLine), "the last part is known");
        Require(!part.IsCutShort || IsSelectionEnd(walk.NextLine), "inner lines are taken whole");
        parts.push_back({std::string(part.Text, static_cast<std::size_t>(part.Length)), part.IsCutShort});
    }
    Require(HasSelection() || parts.empty(), "without a selection there is no part");
    Require(!HasSelection() || static_cast<std::int32_t>(parts.size()) == LastSelectedLine() - FirstSelectedLine() + 1,
            "there is a part for each line");
    return parts;
}

// What each call gives, into a buffer of just limit bytes.
std::vector<std::string> GatherInCalls(GatherFor target, std::int32_t limit)
{
    std::vector<std::string> calls;
    SeekLine(0, 0);
    for (SelectionWalk walk = StartSelectionWalk(); !IsOver(walk);) {
        const std::int32_t before = walk.NextLine;
        const std::unique_ptr<char[]> buffer(new char[static_cast<std::size_t>(limit)]);
        const std::int32_t used = GatherSelection(walk, target, buffer.get(), limit);
        Require(used >= 0 && used <= limit, "what is gathered fits");
        Require(walk.NextLine > before, "each call takes a part");
        calls.emplace_back(buffer.get(), static_cast<std::size_t>(used));
    }
    return calls;
}

// Room for all parts and a line end behind each.
std::int32_t LimitForAll(const std::vector<Part>& parts)
{
    std::size_t bytes = SmallestLimit;
    for (const Part& part : parts) {
        bytes += part.Text.size() + 2;
    }
    return static_cast<std::int32_t>(bytes);
}

std::vector<std::string> ExpectedCalls(const std::vector<Part>& parts, GatherFor target, std::size_t limit)
{
    std::vector<std::string> calls;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (calls.empty() || calls.back().size() + parts[i].Text.size() + 2 > limit) {
            calls.emplace_back();
        }
        const bool isLast = i + 1 == parts.size();
        const bool ended = !isLast || (target == GatherFor::Clipboard && !parts[i].IsCutShort);
        calls.back() += parts[i].Text + (ended ? "\r\n" : "");
    }
    return calls;
}

void CheckGathering(const std::vector<Part>& parts, GatherFor target, std::int32_t limit, bool staysTheSame)
{
    const std::vector<std::string> calls = GatherInCalls(target, limit);
    if (staysTheSame) {
        Require(calls == ExpectedCalls(parts, target, static_cast<std::size_t>(limit)),
                "what is gathered is what the parts say");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    StartDocuments(input.Byte() % 6);
    TakeOptions(input);
    FuzzInput selection = input;
    for (int i = 0; i < 17; ++i) {
        input.Byte();
    }
    const std::int32_t limit = SmallestLimit + static_cast<std::int32_t>(input.Number16());
    const auto change = static_cast<Change>(input.Byte() % static_cast<int>(Change::Kinds));
    const std::uint32_t number = input.Number16();
    Bytes content = TakeFile(input);
    OpenBytes(content);
    TakeSelection(selection);
    const bool staysTheSame = ChangeDocument(change, number, std::move(content));
    const std::vector<Part> parts = ReadParts();
    for (const GatherFor target : {GatherFor::File, GatherFor::Clipboard}) {
        CheckGathering(parts, target, limit, staysTheSame);
        CheckGathering(parts, target, SmallestLimit, staysTheSame);
        CheckGathering(parts, target, LimitForAll(parts), staysTheSame);
    }
    FreeBuffers();
    Require(TestPort::LiveObjects() == 0 && TestPort::OpenFiles() == 0, "nothing is left behind");
    Require(TestPort::Misuses() == 0, "memory and files are used by their rules");
    return 0;
}
