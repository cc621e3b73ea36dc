#include "host/extension.h"

#include "host/system.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace qsvtin {

std::string ExtensionOf(const std::string& path)
{
    std::string extension = PathOf(path).extension().u8string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

std::string StemOf(const std::string& path)
{
    return PathOf(path).stem().u8string();
}

}   // namespace qsvtin
