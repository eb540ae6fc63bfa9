#include "bench.h"

#include "app/startup.h"
#include "document/document_state.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <random>

namespace {

double Milliseconds()
{
    LARGE_INTEGER count;
    LARGE_INTEGER frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(count.QuadPart) * 1000.0 / static_cast<double>(frequency.QuadPart);
}

double TimeOf(const std::function<void()>& work)
{
    const double start = Milliseconds();
    work();
    return Milliseconds() - start;
}

void Print(const std::string& name, const std::string& peer, double time, double peerTime)
{
    printf("%s: %.2f x %s (ours %.1f ms, peer %.1f ms)\n", name.c_str(), time / peerTime, peer.c_str(), time, peerTime);
    fflush(stdout);
}

std::string TemporaryPath(const char* name)
{
    char directory[MAX_PATH];
    GetTempPathA(sizeof directory, directory);
    return std::string(directory) + name;
}

} // namespace

void Compare(const std::string& name, const std::string& peer, const std::function<void()>& ours,
             const std::function<void()>& peerWork)
{
    double best = 1e30;
    double peerBest = 1e30;
    for (int round = 0; round < Rounds; ++round) {
        peerBest = std::min(peerBest, TimeOf(peerWork));
        best = std::min(best, TimeOf(ours));
    }
    Print(name, peer, best, peerBest);
}

void CompareWithTime(const std::string& name, const std::string& peer, double peerTime,
                     const std::function<void()>& ours)
{
    double best = 1e30;
    for (int round = 0; round < Rounds; ++round) {
        best = std::min(best, TimeOf(ours));
    }
    Print(name, peer, best, peerTime);
}

BenchFile::BenchFile(const char* name, int megabytes, LineLengths lengths, const char* end)
    : FilePath(TemporaryPath(name))
{
    std::mt19937 random; // the same file in every run
    std::uniform_int_distribution<int> length(lengths.Least, lengths.Most);
    std::string piece;
    while (piece.size() < 1000000) {
        const int count = length(random);
        for (int i = 0; i < count; ++i) {
            piece += static_cast<char>('!' + i % 90);
        }
        piece += end;
    }
    FILE* file = fopen(FilePath.c_str(), "wb");
    if (file == nullptr) {
        fprintf(stderr, "cannot write %s\n", FilePath.c_str());
        exit(1);
    }
    for (std::size_t written = 0; written < static_cast<std::size_t>(megabytes) * 1000000; written += piece.size()) {
        fwrite(piece.data(), 1, piece.size(), file);
    }
    fclose(file);
    ReadWhole(Path());
}

BenchFile::~BenchFile()
{
    DeleteFileA(Path());
}

void ReadWhole(const char* path)
{
    static char buffer[BlockBytes];
    const HFILE file = _lopen(path, OF_READ);
    while (_lread(file, buffer, BlockBytes) == static_cast<UINT>(BlockBytes)) {
    }
    _lclose(file);
}

void StartInProcess()
{
    StartProgram(GetModuleHandleA(nullptr), nullptr, "-Ibench");
}

// With the arguments TEXT WORD EXACT-MS FOLDED-MS it compares searching only.
int main(int count, char** arguments)
{
    if (count == 5) {
        StartInProcess();
        BenchSearch({arguments[1], arguments[2], atof(arguments[3]), atof(arguments[4])});
        return 0;
    }
    BenchSize();
    // The document alone, and then in the running program, where every block's reading is announced.
    DocumentCalls.AnnounceReading = [] {};
    DocumentCalls.ReadBufferCount = [] { return std::int32_t{MaxCacheSlots}; };
    BenchIndexing("");
    BenchMemory();
    StartInProcess();
    BenchIndexing(" in the program");
    BenchOpenSequence();
    BenchPainting();
    return 0;
}
