#include "host/output/writers.h"

#include "host/exchange/dxf.h"
#include "host/exchange/geojson.h"
#include "host/exchange/landxml.h"
#include "host/exchange/obj.h"
#include "host/exchange/ply.h"
#include "host/exchange/stl.h"
#include "host/extension.h"
#include "host/failure.h"
#include "host/output/plan_picture.h"
#include "host/output/tin.h"
#include "host/terrain/triangles.h"

#include <algorithm>
#include <array>

namespace qsvtin {

namespace {

constexpr std::array kWriters = {
    Writer{".tin", WriteTin, false, false},        Writer{".png", WritePlanPng, true, true},
    Writer{".svg", WritePlanSvg, true, true},      Writer{".pdf", WritePlanPdf, true, true},
    Writer{".obj", WriteObj, false, true},         Writer{".ply", WritePly, false, false},
    Writer{".stl", WriteStl, false, false},        Writer{".xml", WriteLandXml, false, true},
    Writer{".landxml", WriteLandXml, false, true}, Writer{".dxf", WriteDxf, false, true},
    Writer{".geojson", WriteGeoJson, false, true},
};

// Pictures need ground, which a mesh of nothing but walls has not.
void RequireGround(const Terrain& terrain, const std::string& path)
{
    for (int t = 0; t < terrain.tin.m_aTri.GetSize(); ++t) {
        if (!StandsUpright(terrain.tin, t)) return;
    }
    throw Failure("cannot draw " + path +
                  ": the TIN has no triangle that extends in plan; name a model, .obj");
}

}   // namespace

const Writer& WriterFor(const std::string& path)
{
    const std::string extension = ExtensionOf(path);
    const auto found = std::find_if(kWriters.begin(), kWriters.end(),
                                    [&](const Writer& writer) { return writer.extension == extension; });
    if (found == kWriters.end()) {
        throw Failure("cannot tell the format of " + path + "; end its name in " + KnownExtensions(),
                      Failure::BadUsage);
    }
    if (found->picture) RequirePictures(path);
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

void WriteFiles(const FilesToWrite& files)
{
    std::vector<SafeFile> written;
    for (const auto& [path, write] : files) {
        SafeFile& file = written.emplace_back(path);
        write(file);
        file.Finish();
    }
    for (SafeFile& file : written) {
        file.TakePlace();
    }
}

void WriteAll(const Terrain& terrain, const WriteOptions& options, const std::vector<std::string>& paths)
{
    FilesToWrite files;
    for (const std::string& path : paths) {
        files.emplace_back(path, WriterOf(terrain, options, path));
    }
    WriteFiles(files);
}

std::function<void(SafeFile& file)> WriterOf(const Terrain& terrain, const WriteOptions& options,
                                             const std::string& path)
{
    const Writer& writer = WriterFor(path);
    if (writer.picture) RequireGround(terrain, path);
    return [&](SafeFile& file) { writer.write(terrain, options, file); };
}

}   // namespace qsvtin
