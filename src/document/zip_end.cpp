#include "document/zip_end.h"

std::int32_t FindZipEnd(ByteSpan tail)
{
    constexpr std::uint32_t Signature = 0x06054B50; // "PK", 5, 6
    if (tail.size() < ZipEndBytes) {
        return -1;
    }
    for (std::size_t position = tail.size() - ZipEndBytes + 1; position-- > 0;) {
        if (ReadU32(tail, position) == Signature) {
            const bool oneDisk = ReadU16(tail, position + 4) == 0 && ReadU16(tail, position + 6) == 0;
            return oneDisk ? static_cast<std::int32_t>(position) : -1;
        }
    }
    return -1;
}

ZipEndRecord ReadZipEndRecord(ByteSpan record)
{
    return {ReadU16(record, 10), ReadU32(record, 12), ReadU32(record, 16)};
}
