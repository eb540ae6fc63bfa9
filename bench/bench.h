// Speed is a ratio: what our code takes, divided by what a peer takes on the same file in the same run.
#pragma once

#include <functional>
#include <string>
#include <windows.h>

constexpr int Rounds = 11; // best of these

// Runs both in turns, so that whatever else the machine does hits both, and prints the best times:
// "NAME: RATIO x PEER (ours MS ms, peer MS ms)"
void Compare(const std::string& name, const std::string& peer, const std::function<void()>& ours,
             const std::function<void()>& peerWork);

// The same with a peer that was timed elsewhere, just before.
void CompareWithTime(const std::string& name, const std::string& peer, double peerTime,
                     const std::function<void()>& ours);

// Characters of a line, anything from Least to Most.
struct LineLengths {
    int Least;
    int Most;
};

// A text file of megabytes MB in the temporary directory, its lines ended by end; in the page cache
// afterwards. Removed with the object.
class BenchFile {
public:
    BenchFile(const char* name, int megabytes, LineLengths lengths, const char* end);
    ~BenchFile();
    BenchFile(const BenchFile&) = delete;
    BenchFile& operator=(const BenchFile&) = delete;
    const char* Path() const { return FilePath.c_str(); }

private:
    std::string FilePath;
};

// Reads the whole file with a bare loop of block reads.
void ReadWhole(const char* path);

// The program itself, started in this process: classes, settings, frame.
void StartInProcess();

// where goes into the names of the measures.
void BenchIndexing(const char* where);
void BenchOpenSequence();
void BenchMemory();
void BenchPainting();
void BenchSize();

// What looking through a text for a word that is not there takes elsewhere, in milliseconds.
struct SearchPeer {
    const char* TextPath;
    const char* Word;
    double ExactTime;
    double FoldedTime;
};

void BenchSearch(const SearchPeer& peer);
