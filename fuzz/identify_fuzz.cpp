// What a file is told to be, and what it tells of itself.
//
// Input: the file.
#include "fuzz_input.h"
#include "unit/document/file_images.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    StartDocuments(MaxCacheSlots);
    const std::string broken = BrokenPromises(Bytes(data, data + size));
    Require(broken.empty(), broken.c_str());
    return 0;
}
