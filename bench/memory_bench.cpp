// What an open document costs, and how large the program is.
#include "bench.h"

#include "document/block_cache.h"
#include "document/document.h"

#include <cstdio>

namespace {

double HeapKilobytesInUse()
{
    double bytes = 0;
    PROCESS_HEAP_ENTRY entry = {};
    while (HeapWalk(GetProcessHeap(), &entry)) {
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) {
            bytes += entry.cbData;
        }
    }
    return bytes / 1024;
}

// Heap that a document of a text file of megabytes MB holds.
double HeapOfDocument(int megabytes)
{
    const BenchFile file("kvbench.txt", megabytes, {80, 80}, "\r\n");
    FreeBuffers();
    const double before = HeapKilobytesInUse();
    FileInfo info;
    InitBuffers();
    OpenDocument(file.Path(), info);
    const double after = HeapKilobytesInUse();
    FreeBuffers();
    return after - before;
}

} // namespace

void BenchMemory()
{
    const double small = HeapOfDocument(1);
    const double large = HeapOfDocument(100);
    printf("heap of an open document: %.2f x that of a 1 MB file (100 MB file %.1f KB, 1 MB file %.1f KB)\n",
           large / small, large, small);
}

void BenchSize()
{
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    GetFileAttributesExA(KESTOVAR_EXE, GetFileExInfoStandard, &data);
    constexpr double Allowed = 600;
    const double size = data.nFileSizeLow / 1024.0;
    printf("size of kestovar.exe: %.2f x %.0f KB (ours %.1f KB)\n", size / Allowed, Allowed, size);
}
