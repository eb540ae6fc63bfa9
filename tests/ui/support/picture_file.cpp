#include "support/picture_file.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <windows.h>

namespace {

std::string PictureDirectory()
{
    char path[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, sizeof path);
    const std::string program = path;
    return program.substr(0, program.find_last_of('\\')) + "\\pictures";
}

// Rows from the bottom, each filled up to a multiple of four bytes.
std::string BitmapRows(const Pixels& pixels)
{
    constexpr std::size_t Alignment = 4;
    std::string rows;
    for (int y = pixels.Height - 1; y >= 0; --y) {
        for (int x = 0; x < pixels.Width; ++x) {
            const std::uint32_t colour = pixels.At(x, y);
            for (const unsigned shift : {0u, 8u, 16u}) {
                rows += static_cast<char>(colour >> shift);
            }
        }
        rows.resize((rows.size() + Alignment - 1) / Alignment * Alignment);
    }
    return rows;
}

template <typename Header> void Append(std::string& content, const Header& header)
{
    content.append(reinterpret_cast<const char*>(&header), sizeof header);
}

std::string BitmapFile(const Pixels& pixels)
{
    constexpr WORD Signature = 0x4D42; // "BM"
    constexpr WORD BitsPerPixel = 24;
    const std::string rows = BitmapRows(pixels);
    BITMAPFILEHEADER file = {};
    BITMAPINFOHEADER info = {};
    file.bfType = Signature;
    file.bfOffBits = sizeof file + sizeof info;
    file.bfSize = file.bfOffBits + static_cast<DWORD>(rows.size());
    info.biSize = sizeof info;
    info.biWidth = pixels.Width;
    info.biHeight = pixels.Height;
    info.biPlanes = 1;
    info.biBitCount = BitsPerPixel;
    std::string content;
    Append(content, file);
    Append(content, info);
    return content + rows;
}

} // namespace

std::string WritePicture(const Pixels& pixels, const std::string& name)
{
    const std::string directory = PictureDirectory();
    CreateDirectoryA(directory.c_str(), nullptr);
    const std::string path = directory + "\\" + name + ".bmp";
    const std::string content = BitmapFile(pixels);
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    const bool whole = file != INVALID_HANDLE_VALUE &&
                       WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr) &&
                       written == content.size();
    CloseHandle(file);
    EXPECT_TRUE(whole) << path << ", error " << GetLastError();
    return whole ? path : "";
}
