#include "app/release_file.h"

#include "app/app_state.h"
#include "app/open_sequence.h"
#include "base/messages.h"
#include "base/text.h"
#include "document/block_cache.h"
#include "document/document.h"
#include "document/document_state.h"
#include "resources/ids.h"
#include "view/frame_windows.h"
#include "view/view_state.h"

#include <cstring>

namespace {

// While the box is open, another file may be handed over, which then stays.
void ReopenChanged(HWND mainWindow)
{
    char path[MaxPathSize];
    CopyText(path, App.OpenedPath);
    ReportMessage(mainWindow, IDS_FILE_CHANGED);
    if (strcmp(path, App.OpenedPath) == 0) {
        OpenNamedFile(mainWindow, path);
    }
}

} // namespace

void ReleaseFile()
{
    if (Document.FileHandle != 0) {
        CloseFileHandle();
        App.FileReleased = true;
    }
}

void ReleaseFileOfIcon()
{
    if (View.FileShown && Document.WorkMemory != nullptr) {
        CloseFileHandle();
        App.FileReleased = true;
    }
}

void TakeFileBack(HWND mainWindow)
{
    if (!App.FileReleased) {
        return; // it was not open, or closing the document has cleared this
    }
    App.FileReleased = false;
    switch (ReopenFile(App.OpenedPath)) {
    case ReopenResult::CannotOpen: CloseLostFile(mainWindow); break;
    case ReopenResult::Changed: ReopenChanged(mainWindow); break;
    case ReopenResult::Unchanged:
        if (Document.BlockCount == 1) {
            CloseFileHandle(); // it is held whole, and was only looked at
        }
        RepaintView(); // what was painted meanwhile may lack what could not be read
        break;
    }
}

void CloseLostFile(HWND mainWindow)
{
    CloseAndClear(); // before anything can be painted behind the box
    ReportMessage(mainWindow, IDS_CANNOT_REOPEN);
}
