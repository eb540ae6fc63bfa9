#include "app/release_file.h"

#include "app/app_state.h"
#include "app/open_sequence.h"
#include "base/messages.h"
#include "document/block_cache.h"
#include "document/document.h"
#include "document/document_state.h"
#include "document/file_list.h"
#include "resources/ids.h"

void ReleaseFile()
{
    CloseFileHandle();
    App.ClosedOnIconize = true;
}

void TakeFileBack(HWND mainWindow)
{
    if (!App.ClosedOnIconize) {
        return; // closing the document has cleared it
    }
    App.ClosedOnIconize = false;
    if (ReopenFile(App.CurrentPath) != ReopenResult::Unchanged) {
        ClearFileList();
        CloseLostFile(mainWindow);
    } else if (Document.BlockCount == 1) {
        CloseFileHandle(); // as it was: a document of one block is held whole
    }
}

void CloseLostFile(HWND mainWindow)
{
    CloseDocument(); // before anything can be painted behind the box
    ShowListState();
    ReportMessage(mainWindow, IDS_CANNOT_REOPEN);
}
