#include "host/terrain/mesh_to_tin.h"

#include "host/terrain/triangles.h"

#include <utility>

namespace qsvtin {

namespace {

bool UsesVertexTwice(const std::array<int, 3>& triangle)
{
    return triangle[0] == triangle[1] || triangle[1] == triangle[2] || triangle[2] == triangle[0];
}

bool RunsClockwiseThroughout(const CTin& tin)
{
    bool clockwise = false;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        const double area = DoubledPlanArea(tin, t);
        if (area > 0.0) return false;
        clockwise = clockwise || area < 0.0;
    }
    return clockwise;
}

}   // namespace

CTin TinFromMesh(const MeshData& mesh, MeshRepairs& repairs)
{
    CTin tin;
    tin.BeginAddPoint(static_cast<int>(mesh.vertices.size()));
    for (const Position& p : mesh.vertices) {
        tin.AddPoint2(p.x, p.y, p.z);
    }
    tin.EndAddPoint();
    for (const auto& triangle : mesh.triangles) {
        if (UsesVertexTwice(triangle)) {
            ++repairs.dropped;
        } else {
            tin.AddTri(triangle[0], triangle[1], triangle[2]);
        }
    }
    repairs.turnedOver = RunsClockwiseThroughout(tin);
    for (int t = 0; repairs.turnedOver && t < tin.m_aTri.GetSize(); ++t) {
        std::swap(tin.m_aTri[t].m_nVertex[1], tin.m_aTri[t].m_nVertex[2]);
    }
    tin.UpdateTopology();
    UpdateStoredParts(tin);
    return tin;
}

void UpdateStoredParts(CTin& tin)
{
    tin.UpdateBoundary();
    tin.UpdateTinRange();
    if (tin.m_MinXYZ.x < tin.m_MaxXYZ.x && tin.m_MinXYZ.y < tin.m_MaxXYZ.y) tin.UpdateTextureCoord();
}

}   // namespace qsvtin
