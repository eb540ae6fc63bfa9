// Opening a file is reading it once and finding its line ends on the way.
#include "bench.h"

#include "app/open_sequence.h"
#include "document/block_cache.h"
#include "document/document.h"
#include "document/document_state.h"
#include "view/frame_windows.h"

#include <cstdio>

namespace {

struct Shape {
    const char* Name;
    const char* End;
    LineLengths Lengths;
};

constexpr Shape Shapes[] = {
    {"crlf-20", "\r\n", {20, 20}},      {"crlf-80", "\r\n", {80, 80}},       {"lf-20", "\n", {20, 20}},
    {"lf-80", "\n", {80, 80}},          {"cr-20", "\r", {20, 20}},           {"cr-80", "\r", {80, 80}},
    {"crlf-mixed-20", "\r\n", {0, 40}}, {"crlf-mixed-80", "\r\n", {0, 160}},
};

constexpr int Megabytes = 100;
constexpr char Peer[] = "_lread loop";

void OpenAndClose(const char* path)
{
    FileInfo info;
    if (!InitBuffers() || OpenDocument(path, info) != OpenResult::Opened || !Document.IsText) {
        fprintf(stderr, "%s did not open as text\n", path);
        exit(1);
    }
    FreeBuffers();
}

} // namespace

void BenchIndexing(const char* where)
{
    DocumentOptions.MaxTextSize = 200;
    for (const Shape& shape : Shapes) {
        const BenchFile file("kvbench.txt", Megabytes, shape.Lengths, shape.End);
        Compare(
            std::string("index") + where + " " + shape.Name, Peer, [&] { OpenAndClose(file.Path()); },
            [&] { ReadWhole(file.Path()); });
    }
}

void BenchOpenSequence()
{
    DocumentOptions.MaxTextSize = 200;
    const BenchFile file("kvbench.txt", Megabytes, {80, 80}, "\r\n");
    Compare(
        "open from title to menus crlf-80", Peer, [&] { OpenSequence(Windows.Main, file.Path()); },
        [&] { ReadWhole(file.Path()); });
    CloseDocument();
}
