#include "host/output/writers.h"

#include "host/failure.h"
#include "host/output/obj.h"
#include "host/output/plan_picture.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>

namespace qsvtin {

namespace {

constexpr std::array kWriters = {
    Writer{".png", WritePlanPng},
    Writer{".svg", WritePlanSvg},
    Writer{".pdf", WritePlanPdf},
    Writer{".obj", WriteObj},
};

std::string LowerCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

}   // namespace

const Writer& WriterFor(const std::string& path)
{
    const std::string extension = LowerCase(std::filesystem::path(path).extension().string());
    const auto found = std::find_if(kWriters.begin(), kWriters.end(),
                                    [&](const Writer& writer) { return writer.extension == extension; });
    if (found == kWriters.end()) {
        throw Failure("cannot tell the format of " + path + "; end its name in " + KnownExtensions(),
                      Failure::BadUsage);
    }
    return *found;
}

std::string KnownExtensions()
{
    std::string list;
    for (std::size_t i = 0; i < kWriters.size(); ++i) {
        list += i == 0 ? "" : i + 1 < kWriters.size() ? ", " : " or ";
        list += kWriters[i].extension;
    }
    return list;
}

void WriteAll(const Terrain& terrain, const std::string& title, const std::vector<std::string>& paths)
{
    std::vector<SafeFile> files;
    for (const std::string& path : paths) {
        SafeFile& file = files.emplace_back(path);
        WriterFor(path).write(terrain, title, file);
        file.Finish();
    }
    for (SafeFile& file : files) {
        file.TakePlace();
    }
}

}   // namespace qsvtin
