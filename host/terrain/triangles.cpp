#include "host/terrain/triangles.h"

#include <algorithm>

namespace qsvtin {

const CXYZ& CornerOf(const CTin& tin, int triangle, int k)
{
    return tin.m_aVertex[tin.m_aTri[triangle].m_nVertex[k]];
}

int SlotOf(const CTriangle& tri, int vertex)
{
    return static_cast<int>(std::find(tri.m_nVertex, tri.m_nVertex + 3, vertex) - tri.m_nVertex);
}

double DoubledPlanArea(const CTin& tin, int triangle)
{
    const CXYZ &a = CornerOf(tin, triangle, 0), &b = CornerOf(tin, triangle, 1),
               &c = CornerOf(tin, triangle, 2);
    return (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
}

bool StandsUpright(const CTin& tin, int triangle)
{
    return DoubledPlanArea(tin, triangle) == 0.0;
}

}   // namespace qsvtin
