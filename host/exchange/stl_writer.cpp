#include "host/exchange/stl.h"

#include "host/numbers.h"
#include "host/output/byte_sink.h"
#include "host/output/text_sink.h"
#include "host/say.h"
#include "host/terrain/terrain.h"
#include "host/terrain/triangles.h"

#include <cmath>

namespace qsvtin {

namespace {

// Unit normal of a triangle; zero where it has none, which readers then work out themselves.
Position NormalOf(const CTin& tin, int t)
{
    const CXYZ& a = CornerOf(tin, t, 0);
    const CXYZ n = (CornerOf(tin, t, 1) - a).Out(CornerOf(tin, t, 2) - a);
    const double length = n.Len();
    if (!(length > 0.0) || !std::isfinite(length)) return {};
    return {n.x / length, n.y / length, n.z / length};
}

// A float keeps steps of a millimetre up to here.
bool NeedsOrigin(const Terrain& terrain)
{
    constexpr double kFinest = 8192.0;
    for (int v = 0; v < terrain.tin.m_aVertex.GetSize(); ++v) {
        const Position at =
            terrain.origin.ToSurvey({terrain.tin.m_aVertex[v].x, terrain.tin.m_aVertex[v].y, 0.0});
        if (std::fabs(at.x) > kFinest || std::fabs(at.y) > kFinest) return true;
    }
    return false;
}

void WriteAsText(const Terrain& terrain, const WriteOptions& options, SafeFile& file)
{
    TextSink sink(file);
    sink << "solid " << options.title << "\n";
    for (int t = 0; t < terrain.tin.m_aTri.GetSize(); ++t) {
        const Position normal = NormalOf(terrain.tin, t);
        sink << "facet normal " << normal.x << " " << normal.y << " " << normal.z << "\nouter loop\n";
        for (int k = 0; k < 3; ++k) {
            const CXYZ& corner = CornerOf(terrain.tin, t, k);
            const Position at = terrain.origin.ToSurvey({corner.x, corner.y, corner.z});
            sink << "vertex " << at.x << " " << at.y << " " << at.z << "\n";
        }
        sink << "endloop\nendfacet\n";
    }
    sink << "endsolid " << options.title << "\n";
    sink.Flush();
}

void PutPosition(ByteSink& sink, const Position& at)
{
    sink.PutFloat(static_cast<float>(at.x));
    sink.PutFloat(static_cast<float>(at.y));
    sink.PutFloat(static_cast<float>(at.z));
}

void WriteAsBytes(const Terrain& terrain, SafeFile& file)
{
    constexpr std::size_t kHeader = 80;
    std::string header = "qsvtin";
    LocalOrigin added = terrain.origin;
    if (NeedsOrigin(terrain) && (terrain.origin.x != 0.0 || terrain.origin.y != 0.0)) {
        const std::string origin = Shortest(terrain.origin.x) + " " + Shortest(terrain.origin.y);
        header = kStlOrigin + origin;
        added = {};
        Note(file.Target() + ": binary STL keeps 7 digits, so its coordinates are relative to " + origin +
             "; --ascii keeps them all");
    }
    header.resize(kHeader, ' ');
    ByteSink sink(file);
    sink.PutText(header);
    sink.PutInt32(static_cast<std::uint32_t>(terrain.tin.m_aTri.GetSize()));
    for (int t = 0; t < terrain.tin.m_aTri.GetSize(); ++t) {
        PutPosition(sink, NormalOf(terrain.tin, t));
        for (int k = 0; k < 3; ++k) {
            const CXYZ& corner = CornerOf(terrain.tin, t, k);
            PutPosition(sink, added.ToSurvey({corner.x, corner.y, corner.z}));
        }
        sink.PutInt16(0);
    }
    sink.Flush();
}

}   // namespace

void WriteStl(const Terrain& terrain, const WriteOptions& options, SafeFile& file)
{
    if (options.ascii) {
        WriteAsText(terrain, options, file);
    } else {
        WriteAsBytes(terrain, file);
    }
}

}   // namespace qsvtin
