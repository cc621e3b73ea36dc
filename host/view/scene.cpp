#include "host/view/scene.h"

#include "host/terrain/outline_rings.h"

#include <algorithm>
#include <cmath>

namespace qsvtin {

namespace {

// Sets centre and range of heights, from the vertices that triangles use.
void FindRange(const CTin& tin, Scene& scene)
{
    Position low{HUGE_VAL, HUGE_VAL, HUGE_VAL}, high{-HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        for (const int corner : tin.m_aTri[t].m_nVertex) {
            const CXYZ& p = tin.m_aVertex[corner];
            low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
            high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
        }
    }
    scene.centre = {(low.x + high.x) / 2.0, (low.y + high.y) / 2.0, (low.z + high.z) / 2.0};
    scene.low = low.z;
    scene.high = high.z;
}

std::vector<Path> OutlineOf(const CTin& tin)
{
    std::vector<Path> outline;
    for (std::vector<int>& ring : OutlineRings(tin)) {
        ring.push_back(ring.front());
        Path& path = outline.emplace_back();
        for (const int v : ring) {
            path.push_back({tin.m_aVertex[v].x, tin.m_aVertex[v].y, tin.m_aVertex[v].z});
        }
    }
    return outline;
}

bool HasTextureCoordinates(const CTin& tin)
{
    for (int v = 0; v < tin.m_aVertex.GetSize(); ++v) {
        if (tin.m_aVertex[v].tu != 0.0f || tin.m_aVertex[v].tv != 0.0f) return true;
    }
    return false;
}

}   // namespace

Scene MakeScene(const CTin& tin, double exaggeration, std::optional<double> skirt)
{
    Scene scene;
    scene.tin = tin;
    scene.exaggeration = exaggeration;
    scene.groundTriangles = tin.m_aTri.GetSize();
    FindRange(tin, scene);
    for (int v = 0; v < scene.tin.m_aVertex.GetSize(); ++v) {
        CXYZ& vertex = scene.tin.m_aVertex[v];
        const Position at = scene.ToScene({vertex.x, vertex.y, vertex.z});
        vertex.SetXYZ(at.x, at.y, at.z);
    }
    scene.outline = OutlineOf(scene.tin);
    if (!HasTextureCoordinates(tin)) scene.tin.UpdateTextureCoord();
    scene.tin.UpdateNormal();
    if (skirt) {
        // Walls would turn the mean normals along the outline to the side.
        const CArray<CXYZ> normals = scene.tin.m_aVtNormal;
        scene.tin.AddVPlane((*skirt - scene.centre.z) * exaggeration);
        scene.tin.UpdateNormal();
        std::copy_n(&normals[0], normals.GetSize(), &scene.tin.m_aVtNormal[0]);
    }
    return scene;
}

std::vector<Position> GroundOf(const Scene& scene)
{
    std::vector<bool> isUsed(static_cast<std::size_t>(scene.tin.m_aVertex.GetSize()));
    for (int t = 0; t < scene.tin.m_aTri.GetSize(); ++t) {
        for (const int v : scene.tin.m_aTri[t].m_nVertex) {
            isUsed[static_cast<std::size_t>(v)] = true;
        }
    }
    std::vector<Position> ground;
    for (int v = 0; v < scene.tin.m_aVertex.GetSize(); ++v) {
        const CXYZ& p = scene.tin.m_aVertex[v];
        if (isUsed[static_cast<std::size_t>(v)]) ground.push_back({p.x, p.y, p.z});
    }
    return ground;
}

}   // namespace qsvtin
