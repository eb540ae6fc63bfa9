#include "real_files/facts.h"

#include "document/block_cache.h"
#include "document/document.h"
#include "document/document_state.h"
#include "document/identify.h"
#include "document/port.h"

namespace {

void AnnounceNothing()
{
}

std::int32_t AllCacheSlots()
{
    return MaxCacheSlots;
}

void AddName(void* names, const char* name)
{
    static_cast<std::vector<std::string>*>(names)->push_back(name);
}

bool IdentifyForPane(const char* path, FileInfo& info)
{
    info = FileInfo{};
    const int file = OpenForReading(path);
    if (file == 0) {
        return false;
    }
    IdentifyFile(file, path, info);
    CloseOpenFile(file);
    return true;
}

} // namespace

void StartIdentifying()
{
    DocumentCalls = {AnnounceNothing, AllCacheSlots};
}

bool IdentifyAsProgramDoes(const char* path, Facts& facts)
{
    facts.Imports.clear();
    facts.Document = FileInfo{.WantDetails = true};
    if (!IdentifyForPane(path, facts.Pane) || !InitBuffers() ||
        OpenDocument(path, facts.Document) != OpenResult::Opened) {
        return false;
    }
    ListImports(path, ImportSink{AddName, &facts.Imports});
    return true;
}
