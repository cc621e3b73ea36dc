#include "host/output/tin.h"

#include "host/extension.h"
#include "host/failure.h"
#include "host/terrain/terrain.h"

#include <cstdint>

namespace qsvtin {

namespace {

// Bytes of a mesh in every form: three counts, vertices, triangles and boundary.
std::uintmax_t MeshSize(const CTin& tin)
{
    const auto times = [](std::uintmax_t bytes, int count) {
        return bytes * static_cast<std::uintmax_t>(count);
    };
    return 12 + times(24, tin.m_aVertex.GetSize()) + times(24, tin.m_aTri.GetSize()) +
           times(4, tin.m_aBoundary.GetSize());
}

std::uintmax_t FileSize(const CArray<CTin, CTin&>& tins, int form)
{
    constexpr std::uintmax_t kReserved = 24, kName = 256, kMarker = 4, kHeader = 36;
    if (form == 0) return MeshSize(tins[0]) + kReserved;
    std::uintmax_t size = kHeader;
    for (int i = 0; i < tins.GetSize(); ++i) {
        const auto vertices = static_cast<std::uintmax_t>(tins[i].m_aVertex.GetSize());
        size += kName + MeshSize(tins[i]) + (form == 1 ? kMarker + kReserved : 4 + 8 * vertices);
    }
    return size;
}

void AddInSurveyCoordinates(const Terrain& terrain, CArray<CTin, CTin&>& tins)
{
    CTin tin(terrain.tin);
    for (int v = 0; v < tin.m_aVertex.GetSize(); ++v) {
        CXYZ& vertex = tin.m_aVertex[v];
        const Position at = terrain.origin.ToSurvey({vertex.x, vertex.y, vertex.z});
        vertex.x = at.x;
        vertex.y = at.y;
    }
    tins.Add(tin);
}

}   // namespace

void WriteTin(const Terrain& terrain, const WriteOptions& options, SafeFile& file)
{
    CArray<CTin, CTin&> tins;
    AddInSurveyCoordinates(terrain, tins);
    tins[0].m_strName = (options.name.empty() ? StemOf(file.Target()) : options.name).c_str();
    WriteTins(tins, options.form, file);
}

void WriteTins(CArray<CTin, CTin&>& tins, int form, SafeFile& file)
{
    if (form == 0 && tins.GetSize() != 1) {
        throw Failure("cannot write " + file.Target() + " in form 0: it holds one TIN, not " +
                          std::to_string(tins.GetSize()) + "; leave out --format 0",
                      Failure::BadUsage);
    }
    const auto write = [&](const std::string& path) {
        if (form == 0) return tins[0].WriteBIN_VER0(path.c_str()) != 0;
        if (form == 1) return CTin::WriteBIN_VER1(path.c_str(), tins) != 0;
        return CTin::WriteBIN_VER2(path.c_str(), tins) != 0;
    };
    file.WriteByPath(write, FileSize(tins, form));
}

}   // namespace qsvtin
