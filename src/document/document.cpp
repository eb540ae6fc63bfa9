#include "document/document.h"

#include "document/block_cache.h"
#include "document/document_state.h"
#include "document/identify.h"
#include "document/line_index.h"
#include "document/port.h"

#include <algorithm>
#include <cstring>

namespace {

// Block 1 of a file over the text limit is loaded by way of the cache: the zero-filled working buffer is
// parked as block 2 on the way, so block 2 of such a file reads as zero bytes until its cache slot goes
// to another block. The gap is deliberate and kept.
void TakeAsTooLargeForText()
{
    Document.IsText = false;
    Document.CurBlock = 2;
    // All of block 2, and nothing of what the document before left here.
    Document.CurBlockBytes = std::clamp(Document.FileSize - BlockBytes, 0, BlockBytes);
    memset(Document.WorkData, 0, BlockBytes);
}

void TakeAsEmpty()
{
    Document.BlockCount = 1;
    Document.LineTable[1] = 1;
    Document.CurBlock = 1;
    Document.CurBlockBytes = 0;
    Document.LongestLine = 0;
}

void MeasureContent()
{
    Document.IsText = true;
    if (Document.FileSize > Document.MaxTextBytes) {
        TakeAsTooLargeForText();
    } else if (Document.FileSize < 1) {
        TakeAsEmpty();
    } else {
        IndexLines();
    }
}

void SettleLines()
{
    if (Document.IsText) {
        ShrinkLineTable();
    } else {
        // A size that is a multiple of BlockBytes gets one more block, which reads as empty.
        Document.BlockCount = Document.FileSize / BlockBytes + 1;
        Document.LineCount = RecordCount(Document.FileSize);
        Document.LongestLine = RecordLength();
        FreeLineTable();
    }
    if (Document.LineCount == 0) {
        Document.LineCount = 1;
        Document.LineTable[1] = 1;
    }
}

} // namespace

OpenResult OpenDocument(const char* path, FileInfo& info)
{
    Document.FileHandle = OpenForReading(path);
    if (Document.FileHandle == 0) {
        return OpenResult::CannotOpen;
    }
    FileStatus status;
    if (!GetFileStatus(path, status)) {
        CloseFileHandle();
        return OpenResult::NoStatus;
    }
    Document.FileSize = status.Size;
    Document.FileTime = status.Time;
    ClearDetails();
    MeasureContent();
    IdentifyFile(Document.FileHandle, path, status, info);
    if (info.ZipDirOffset != 0 || info.FileType > 0) {
        Document.IsText = false;
    }
    SettleLines();
    Document.CurLine = 1;
    Document.SoughtBlock = 0;
    if (Document.CurBlock != 1) {
        LoadBlock(1);
    }
    Document.CurOffset = 0;
    if (Document.BlockCount == 1) {
        CloseFileHandle();
    }
    return OpenResult::Opened;
}

ReopenResult ReopenFile(const char* path)
{
    Document.FileHandle = OpenForReading(path);
    if (Document.FileHandle == 0) {
        return ReopenResult::CannotOpen;
    }
    FileStatus status;
    if (!GetFileStatus(path, status)) {
        CloseFileHandle();
        return ReopenResult::CannotOpen;
    }
    if (status.Time != Document.FileTime) {
        CloseFileHandle();
        return ReopenResult::Changed;
    }
    return ReopenResult::Unchanged;
}
