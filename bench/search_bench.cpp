// A word that is not there: the whole file has to be looked at. The peer, grep, is timed outside.
#include "bench.h"

#include "app/open_sequence.h"
#include "app/startup.h"
#include "base/text.h"
#include "document/document_state.h"
#include "search/search_hex.h"
#include "search/search_origin.h"
#include "search/search_text.h"
#include "view/frame_windows.h"
#include "view/view_state.h"

#include <cstdio>
#include <cstdlib>

namespace {

void SearchAll(const char* word)
{
    const SearchPattern pattern = PreparePattern(word);
    const SearchOrigin origin = OriginOfSearch();
    const bool found = View.HexMode ? SearchHexRows(pattern, origin.Line, origin.Column)
                                    : SearchTextLines(pattern, origin.Line, origin.Column);
    if (found) {
        fprintf(stderr, "%s was found at line %d\n", word, static_cast<int>(Find.FoundLine));
        exit(1);
    }
}

void Measure(const char* where, const SearchPeer& peer)
{
    for (const bool matchCase : {true, false}) {
        for (const bool backwards : {false, true}) {
            Find.MatchCase = matchCase;
            Find.Backwards = backwards;
            CompareWithTime(std::string("search ") + where + (matchCase ? " exact" : " either case") +
                                (backwards ? " backwards" : ""),
                            matchCase ? "grep -cF" : "grep -ciF", matchCase ? peer.ExactTime : peer.FoldedTime,
                            [&] { SearchAll(peer.Word); });
        }
    }
    Find.Backwards = false;
}

} // namespace

void BenchSearch(const SearchPeer& peer)
{
    DocumentOptions.MaxTextSize = 200;
    OpenSequence(Windows.Main, peer.TextPath);
    Measure("lines", peer);
    DocumentOptions.Ptabs = 1;
    Measure("lines, tabs expanded", peer);
    DocumentOptions.Ptabs = 0;
    View.HexMode = true;
    Measure("hex", peer);
    View.HexMode = false;
    CloseDocument();
    DocumentOptions.MaxTextSize = 12;
    OpenSequence(Windows.Main, peer.TextPath);
    Measure("records", peer);
    CloseDocument();
}
