#include "host/input/whole_file.h"

#include "host/failure.h"
#include "host/system.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>

namespace qsvtin {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

File OpenForReading(const std::string& path)
{
    std::error_code ignored;
    if (std::filesystem::is_directory(PathOf(path), ignored)) {
        throw Failure(path + " is a directory; name the files in it");
    }
    File file(OpenFile(path, "rb"));
    if (!file) {
        throw Failure("cannot read " + path + ": " + std::strerror(errno) + "; check the name");
    }
    return file;
}

}   // namespace

std::string ReadWholeFile(const std::string& path, bool (*goOn)(std::string_view bytes))
{
    const File file = OpenForReading(path);
    std::string bytes;
    std::error_code unknown;
    const std::uintmax_t size = std::filesystem::file_size(PathOf(path), unknown);   // not that of a pipe
    if (!unknown && size < bytes.max_size()) bytes.reserve(static_cast<std::size_t>(size));
    std::array<char, 1 << 16> block;
    while (const std::size_t got = std::fread(block.data(), 1, block.size(), file.get())) {
        bytes.append(block.data(), got);
        if (!goOn(bytes)) break;
    }
    if (std::ferror(file.get())) {
        throw Failure("cannot read " + path + " to its end: " + std::strerror(errno));
    }
    return bytes;
}

std::string ReadRegularFile(const std::string& path)
{
    RequireRegularFile(path);
    return ReadWholeFile(path, [](std::string_view) { return true; });
}

void RequireRegularFile(const std::string& path)
{
    std::error_code ignored;
    if (std::filesystem::is_other(PathOf(path), ignored)) {
        throw Failure("cannot read " + path + ": it is a device or a pipe; save it to a file first");
    }
    OpenForReading(path);
}

}   // namespace qsvtin
