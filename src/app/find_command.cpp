#include "app/find_command.h"

#include "app/menu_state.h"
#include "base/messages.h"
#include "base/text.h"
#include "document/document_state.h"
#include "resources/ids.h"
#include "search/find_dialog.h"
#include "search/find_state.h"
#include "search/search_hex.h"
#include "search/search_origin.h"
#include "search/search_pattern.h"
#include "search/search_text.h"
#include "view/frame_windows.h"
#include "view/view_state.h"

namespace {

bool SearchDocument(const SearchPattern& pattern, std::int32_t line, std::int32_t column)
{
    if (pattern.Length == 0) {
        return false;
    }
    return View.HexMode ? SearchHexRows(pattern, line, column) : SearchTextLines(pattern, line, column);
}

// Searches under the wait cursor and marks what is found instead of what was marked before.
bool FindAndShow(HWND mainWindow, const SearchPattern& pattern, std::int32_t line, std::int32_t column)
{
    SendMessageA(mainWindow, WM_BUSY_START, 0, 0);
    if (Find.FoundLine != 0) {
        SendMessageA(mainWindow, WM_REMOVE_MATCH, static_cast<WPARAM>(Find.FoundCol), Find.FoundLine);
    }
    const bool found = SearchDocument(pattern, line, column);
    if (found) {
        SendMessageA(mainWindow, WM_SHOW_MATCH, static_cast<WPARAM>(Find.FoundCol), Find.FoundLine);
    }
    SendMessageA(mainWindow, WM_BUSY_END, 0, 0);
    return found;
}

// Offers the selected text, or else what was looked for last. False: the dialog was cancelled, and Find's
// strings are as before.
bool AskWhatToFind(HWND mainWindow)
{
    char hexBefore[FindTextSize];
    char textBefore[FindTextSize];
    CopyText(hexBefore, Find.FindHex);
    CopyText(textBefore, Find.FindText);
    CopyText(Find.FindText, Find.LastFindText);
    if (TakeSelectedText(Find.FindText)) {
        Find.FindHex[0] = '\0';
    }
    if (AskFind(mainWindow)) {
        return true;
    }
    CopyText(Find.FindHex, hexBefore);
    CopyText(Find.FindText, textBefore);
    return false;
}

void SearchFrom(HWND mainWindow, const SearchOrigin& origin)
{
    RunSearch(mainWindow, Find.LastFindText, origin.Line, origin.Column);
}

} // namespace

void RunSearch(HWND mainWindow, const char* text, std::int32_t line, std::int32_t column)
{
    Find.FindSucceeded = Document.LineCount > 0 && FindAndShow(mainWindow, PreparePattern(text), line, column);
    ShowSearchState();
    if (!Find.FindSucceeded) {
        Find.FoundLine = 0;
        ReportMessage(mainWindow, IDS_NOT_FOUND);
    }
    RefreshStatus();
}

void DoFind(HWND mainWindow)
{
    if (!AskWhatToFind(mainWindow)) {
        return;
    }
    CopyText(Find.LastFindText, Find.FindText);
    SearchFrom(mainWindow, OriginOfSearch());
}

void RepeatFind(HWND mainWindow)
{
    if (Find.FindSucceeded) {
        SearchFrom(mainWindow, OriginOfRepeat());
    }
}
