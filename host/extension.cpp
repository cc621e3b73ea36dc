#include "host/extension.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace qsvtin {

std::string ExtensionOf(const std::string& path)
{
    std::string extension = std::filesystem::path(path).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

std::string StemOf(const std::string& path)
{
    return std::filesystem::path(path).stem().string();
}

}   // namespace qsvtin
