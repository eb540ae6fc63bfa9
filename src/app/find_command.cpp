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
    if (Document.LineCount == 0 || pattern.Length == 0) {
        return false;
    }
    return View.HexMode ? SearchHexRows(pattern, line, column) : SearchTextLines(pattern, line, column);
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
    const SearchPattern pattern = PreparePattern(text);
    SendMessageA(mainWindow, WM_BUSY_START, 0, 0);
    if (Find.FoundLine != 0) {
        SendMessageA(mainWindow, WM_REMOVE_MATCH, static_cast<WPARAM>(Find.FoundCol), Find.FoundLine);
    }
    Find.FindSucceeded = SearchDocument(pattern, line, column);
    if (Find.FindSucceeded) {
        SendMessageA(mainWindow, WM_SHOW_MATCH, static_cast<WPARAM>(Find.FoundCol), Find.FoundLine);
    } else {
        Find.FoundLine = 0;
    }
    SendMessageA(mainWindow, WM_BUSY_END, 0, 0);
    ShowSearchState();
    if (!Find.FindSucceeded) {
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
