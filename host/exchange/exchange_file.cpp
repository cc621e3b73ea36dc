#include "host/exchange/exchange_file.h"

#include "host/exchange/dxf.h"
#include "host/exchange/landxml.h"
#include "host/exchange/obj.h"
#include "host/exchange/ply.h"
#include "host/exchange/stl.h"
#include "host/extension.h"
#include "host/failure.h"
#include "host/input/text_file.h"
#include "host/system.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

namespace qsvtin {

namespace {

template <MeshData (*Read)(const std::string& path)>
ExchangeFile ReadModel(const std::string& path)
{
    ExchangeFile file;
    file.path = path;
    file.format = "model";
    SurfaceData& surface = file.surfaces.emplace_back();
    surface.name = StemOf(path);
    surface.mesh = Read(path);
    return file;
}

bool BeginsAsXml(std::string_view text)
{
    if (StartsWith(text, "\xEF\xBB\xBF")) text.remove_prefix(3);
    return StartsWith(Trimmed(text), "<?xml") || StartsWith(text, "<LandXML");
}

bool BeginsAsPly(std::string_view text)
{
    return StartsWith(text, "ply\n") || StartsWith(text, "ply\r");
}

// The first section; a comment in front of it would not tell the file from a table of numbers.
bool BeginsAsDxf(std::string_view text)
{
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view rest = Trimmed(text.substr(end));
    return Trimmed(text.substr(0, end)) == "0" && StartsWith(rest, "SECTION");
}

bool NeverKnown(std::string_view)
{
    return false;
}

struct Reader {
    std::string_view extension;
    ExchangeFile (*read)(const std::string& path);
    bool (*beginsSo)(std::string_view text);   ///< tells the format where the extension does not
};

constexpr std::array kReaders = {
    Reader{".xml", ReadLandXml, BeginsAsXml},
    Reader{".landxml", ReadLandXml, NeverKnown},
    Reader{".dxf", ReadDxf, BeginsAsDxf},
    Reader{".obj", ReadModel<ReadObjMesh>, NeverKnown},
    Reader{".ply", ReadModel<ReadPlyMesh>, BeginsAsPly},
    Reader{".stl", ReadModel<ReadStlMesh>, NeverKnown},
};

// How a file begins; empty for what is no regular file, since a pipe can be read only once.
std::string BeginningOf(const std::string& path)
{
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(PathOf(path), ignored)) return {};
    std::string text(256, '\0');
    std::ifstream file(PathOf(path), std::ios::binary);
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(file.gcount()));
    return text;
}

const Reader* ReaderFor(const std::string& path)
{
    const std::string extension = ExtensionOf(path);
    const auto* found = std::find_if(kReaders.begin(), kReaders.end(),
                                     [&](const Reader& reader) { return reader.extension == extension; });
    if (found != kReaders.end()) return found;
    const std::string beginning = BeginningOf(path);
    found = std::find_if(kReaders.begin(), kReaders.end(),
                         [&](const Reader& reader) { return reader.beginsSo(beginning); });
    return found == kReaders.end() ? nullptr : found;
}

}   // namespace

ExchangeFile ReadExchangeFile(const std::string& path)
{
    const Reader* const reader = ReaderFor(path);
    if (!reader)
        throw Failure("cannot tell the format of " + path + "; end its name in " + ExchangeExtensions());
    return reader->read(path);
}

bool IsExchangeFile(const std::string& path)
{
    return ReaderFor(path) != nullptr;
}

std::string ExchangeExtensions()
{
    std::string list;
    for (std::size_t i = 0; i < kReaders.size(); ++i) {
        list += i == 0 ? "" : i + 1 < kReaders.size() ? ", " : " or ";
        list += kReaders[i].extension;
    }
    return list;
}

}   // namespace qsvtin
