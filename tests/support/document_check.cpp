#include "support/document_check.h"

#include "document/block_cache.h"
#include "document/document_state.h"
#include "document/line_index.h"
#include "support/document_setup.h"

namespace {

std::string Difference(const char* what, std::int64_t real, std::int64_t plain)
{
    if (real == plain) {
        return "";
    }
    return std::string(what) + ": " + std::to_string(real) + ", expected " + std::to_string(plain) + "\n";
}

std::string Difference(const std::string& real, const std::string& plain)
{
    return real == plain ? "" : "read [" + real + "], expected [" + plain + "]\n";
}

std::string ComparePosition(const PlainDocument& plain)
{
    return Difference("current line", Document.CurLine, plain.CurLine) +
           Difference("current block", Document.CurBlock, plain.CurBlock) +
           Difference("current offset", Document.CurOffset, plain.CurOffset) +
           Difference("readings of the file", ReadingsAnnounced(), plain.Readings);
}

std::string CompareDocument(const PlainDocument& plain)
{
    return Difference("is text", Document.IsText, plain.IsText) +
           Difference("lines", Document.LineCount, plain.LineCount) +
           Difference("longest line", Document.LongestLine, plain.LongestLine) +
           Difference("blocks", Document.BlockCount, plain.BlockCount);
}

std::string TextOf(const LineText& line)
{
    const std::string text(line.Text, static_cast<std::size_t>(line.Length));
    return line.Text[line.Length] == '\0' ? text : text + " without a terminating zero";
}

std::string CompareReading(PlainDocument& plain, const DocumentStep& step)
{
    switch (step.Kind) {
    case StepKind::ReadLineText: return Difference(TextOf(ReadLineText(step.First)), plain.ReadLineText(step.First));
    case StepKind::HexRowOfLine: return Difference("hex row", HexRowOfLine(step.First), plain.HexRowOfLine(step.First));
    case StepKind::ReadLine: return Difference(TextOf(ReadLine()), plain.ReadLine());
    case StepKind::SeekLine:
        SeekLine(step.First, 0);
        plain.SeekLine(step.First, 0);
        return "";
    case StepKind::ReadBytesAt:
        SeekLine(0, step.First);
        plain.SeekLine(0, step.First);
        return Difference(TextOf(ReadBytes(step.Second)), plain.ReadBytes(step.Second));
    case StepKind::ReadBytes: return Difference(TextOf(ReadBytes(step.Second)), plain.ReadBytes(step.Second));
    case StepKind::DiscardParked:
        DiscardParkedBlocks();
        plain.DiscardParked();
        return "";
    case StepKind::NoMemory:
    case StepKind::MemoryAgain:
        TestPort::FailAllAllocations(step.Kind == StepKind::NoMemory);
        plain.SetNoMemory(step.Kind == StepKind::NoMemory);
        return "";
    }
    return "unknown step";
}

} // namespace

void StartComparing(const PlainOptions& options)
{
    StartDocuments(options.CacheSlots);
    DocumentOptions.MaxLineLen = options.MaxLineLen;
    DocumentOptions.FixedLineLen = options.RecordLength;
    DocumentOptions.TabSize = options.TabWidth;
    DocumentOptions.Ptabs = options.ExpandTabs;
}

std::string OpenBoth(PlainDocument& plain, const Bytes& content, bool reset)
{
    TestPort::FailAllAllocations(false);
    plain.SetNoMemory(false);
    TestPort::AddFile(TestPath, content);
    if (!reset) {
        FreeBuffers();
    }
    if (!InitBuffers()) {
        return "no buffers\n";
    }
    Document.MaxTextBytes = static_cast<std::int32_t>(plain.Options.MaxTextBytes);
    FileInfo info;
    if (OpenDocument(TestPath, info) != OpenResult::Opened) {
        return "not opened\n";
    }
    plain.Open(content);
    return CompareDocument(plain) + ComparePosition(plain);
}

std::string TakeStep(PlainDocument& plain, const DocumentStep& step)
{
    const std::string difference = CompareReading(plain, step);
    return difference + ComparePosition(plain);
}

std::string DescribeStep(const DocumentStep& step)
{
    static constexpr const char* Names[] = {"ReadLineText",  "SeekLine",    "HexRowOfLine",
                                            "ReadLine",      "ReadBytesAt", "ReadBytes",
                                            "DiscardParked", "NoMemory",    "MemoryAgain"};
    return std::string(Names[static_cast<int>(step.Kind)]) + " " + std::to_string(step.First) + " " +
           std::to_string(step.Second);
}
