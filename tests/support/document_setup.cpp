#include "support/document_setup.h"

#include "document/block_cache.h"
#include "document/document_state.h"
#include "document/line_index.h"

namespace {

int Announced;
int Queries;
std::int32_t CacheSlots;

void CountReading()
{
    ++Announced;
}

std::int32_t AnswerBufferCount()
{
    ++Queries;
    return CacheSlots;
}

} // namespace

void StartDocuments(std::int32_t cacheSlots)
{
    FreeBuffers();
    TestPort::Reset();
    Document = DocumentState{};
    DocumentOptions = DocumentSettings{};
    DocumentCalls = {CountReading, AnswerBufferCount};
    Announced = 0;
    Queries = 0;
    CacheSlots = cacheSlots;
}

int ReadingsAnnounced()
{
    return Announced;
}

int BufferCountQueries()
{
    return Queries;
}

OpenResult OpenTestFile()
{
    FreeBuffers();
    FileInfo info;
    return InitBuffers() ? OpenDocument(TestPath, info) : OpenResult::CannotOpen;
}

OpenResult OpenBytes(Bytes content)
{
    TestPort::AddFile(TestPath, std::move(content));
    return OpenTestFile();
}

Bytes BytesOf(std::string_view text)
{
    return Bytes(text.begin(), text.end());
}

Bytes Lines(std::size_t size, std::size_t lineLength)
{
    Bytes content(size, '\n');
    std::size_t line = 0;
    for (std::size_t start = 0; start < size; start += lineLength + 1, ++line) {
        for (std::size_t i = start; i < start + lineLength && i < size; ++i) {
            content[i] = static_cast<std::uint8_t>('a' + line % 26);
        }
    }
    return content;
}

std::string TextOfLine(std::int32_t line)
{
    const LineText read = ReadLineText(line);
    return std::string(read.Text, static_cast<std::size_t>(read.Length));
}

std::string TextOfBytes(std::int32_t offset, std::int32_t count)
{
    SeekLine(0, offset);
    const LineText read = ReadBytes(count);
    return std::string(read.Text, static_cast<std::size_t>(read.Length));
}

int DiscardParkedBlocks()
{
    int discarded = 0;
    for (const CacheSlot& slot : Document.Slots) {
        discarded += slot.Memory != nullptr && TestPort::Discard(slot.Memory);
    }
    return discarded;
}
