#include "host/terrain/loaded.h"

namespace qsvtin {

namespace {

bool ComesBack(double coordinate, double origin)
{
    return !IsCoordinate(coordinate) || (coordinate - origin) + origin == coordinate;
}

}   // namespace

std::vector<Position> UsedPositions(const CTin& tin)
{
    std::vector<bool> used(static_cast<std::size_t>(tin.m_aVertex.GetSize()));
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        for (const int v : tin.m_aTri[t].m_nVertex) {
            if (v >= 0 && v < tin.m_aVertex.GetSize()) used[static_cast<std::size_t>(v)] = true;
        }
    }
    std::vector<Position> positions;
    for (int v = 0; v < tin.m_aVertex.GetSize(); ++v) {
        const CXYZ& p = tin.m_aVertex[v];
        if (used[static_cast<std::size_t>(v)] && IsCoordinate(p.x) && IsCoordinate(p.y)) {
            positions.push_back({p.x, p.y, p.z});
        }
    }
    return positions;
}

LocalOrigin WithoutLoss(LocalOrigin origin, const CTin& tin)
{
    for (int v = 0; v < tin.m_aVertex.GetSize(); ++v) {
        if (!ComesBack(tin.m_aVertex[v].x, origin.x)) origin.x = 0.0;
        if (!ComesBack(tin.m_aVertex[v].y, origin.y)) origin.y = 0.0;
    }
    return origin;
}

Terrain MoveTo(const LocalOrigin& origin, const CTin& tin)
{
    Terrain terrain{tin, origin, {}, {}, {}, {}};
    for (int v = 0; v < tin.m_aVertex.GetSize(); ++v) {
        CXYZ& vertex = terrain.tin.m_aVertex[v];
        const Position local = origin.ToLocal({vertex.x, vertex.y, vertex.z});
        vertex.x = local.x;
        vertex.y = local.y;
    }
    return terrain;
}

Terrain LocalTerrain(const CTin& tin, bool exact)
{
    const LocalOrigin origin = ChooseOrigin(UsedPositions(tin));
    return MoveTo(exact ? WithoutLoss(origin, tin) : origin, tin);
}

}   // namespace qsvtin
