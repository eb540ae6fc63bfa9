// Takes a fuzzer's input apart, and ends the run when something is wrong.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size) : Data(data), Left(size) {}

    bool AtEnd() const { return Left == 0; }

    // 0 behind the end.
    std::uint8_t Byte()
    {
        if (AtEnd()) {
            return 0;
        }
        --Left;
        return *Data++;
    }

    std::uint32_t Number16() { return Byte() | static_cast<std::uint32_t>(Byte()) << 8; }

    std::int32_t Number32()
    {
        const std::uint32_t low = Number16();
        return static_cast<std::int32_t>(low | Number16() << 16);
    }

    // What comes before the next zero byte or the end.
    std::string Text()
    {
        std::string text;
        while (!AtEnd()) {
            const std::uint8_t byte = Byte();
            if (byte == 0) {
                break;
            }
            text += static_cast<char>(byte);
        }
        return text;
    }

private:
    const std::uint8_t* Data;
    std::size_t Left;
};

inline void Require(bool holds, const char* what)
{
    if (!holds) {
        fprintf(stderr, "does not hold: %s\n", what);
        abort();
    }
}
