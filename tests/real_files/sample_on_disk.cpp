#include "real_files/sample.h"

#include "document/block_cache.h"

#include <cstdio>

// In the current directory. What could not be written shows as a wrong size.
const char* PutSample(const Bytes& content)
{
    static constexpr char Path[] = "sample.tmp";
    CloseFileHandle(); // the document before is this very file
    FILE* file = fopen(Path, "wb");
    if (file != nullptr) {
        fwrite(content.data(), 1, content.size(), file);
        fclose(file);
    }
    return Path;
}
