#include "real_files/sample.h"

#include "support/test_port.h"

const char* PutSample(const Bytes& content)
{
    static constexpr char Path[] = "c:\\sample";
    TestPort::AddFile(Path, content);
    return Path;
}
