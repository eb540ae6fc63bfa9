#pragma once

#include <algorithm>
#include <string>

// The build names files as its own system does, where the root directory is Windows' drive Z:.
inline std::string WindowsPath(std::string path)
{
    if (!path.empty() && path[0] == '/') {
        std::replace(path.begin(), path.end(), '/', '\\');
        path.insert(0, "Z:");
    }
    return path;
}
