#include "host/terrain/tin_facts.h"

#include <cmath>
#include <vector>

namespace qsvtin {

namespace {

bool IsIndex(int index, int count)
{
    return index >= 0 && index < count;
}

int CountUnused(const CTin& tin)
{
    std::vector<bool> used(static_cast<std::size_t>(tin.m_aVertex.GetSize()));
    int unused = tin.m_aVertex.GetSize();
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        for (const int v : tin.m_aTri[t].m_nVertex) {
            if (!IsIndex(v, tin.m_aVertex.GetSize()) || used[static_cast<std::size_t>(v)]) continue;
            used[static_cast<std::size_t>(v)] = true;
            --unused;
        }
    }
    return unused;
}

int CountPieces(const CTin& tin)
{
    const int count = tin.m_aTri.GetSize();
    std::vector<bool> seen(static_cast<std::size_t>(count));
    std::vector<int> open;
    int pieces = 0;
    for (int first = 0; first < count; ++first) {
        if (seen[static_cast<std::size_t>(first)]) continue;
        ++pieces;
        seen[static_cast<std::size_t>(first)] = true;
        open.push_back(first);
        while (!open.empty()) {
            const int t = open.back();
            open.pop_back();
            for (const int neighbor : tin.m_aTri[t].m_nNeighbor) {
                if (!IsIndex(neighbor, count) || seen[static_cast<std::size_t>(neighbor)]) continue;
                seen[static_cast<std::size_t>(neighbor)] = true;
                open.push_back(neighbor);
            }
        }
    }
    return pieces;
}

void MeasureOutline(const CTin& tin, TinFacts& facts)
{
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        const CTriangle& tri = tin.m_aTri[t];
        for (int k = 0; k < 3; ++k) {
            const int from = tri.m_nVertex[(k + 2) % 3],
                      to = tri.m_nVertex[k];   // the edge of neighbour slot k
            if (tri.m_nNeighbor[k] >= 0) continue;
            ++facts.outlineEdges;
            if (!IsIndex(from, tin.m_aVertex.GetSize()) || !IsIndex(to, tin.m_aVertex.GetSize())) continue;
            facts.outlineLength += std::hypot(tin.m_aVertex[to].x - tin.m_aVertex[from].x,
                                              tin.m_aVertex[to].y - tin.m_aVertex[from].y);
        }
    }
}

}   // namespace

TinFacts MeasureTerrain(Terrain& terrain)
{
    CTin& tin = terrain.tin;
    TinFacts facts;
    facts.name = tin.m_strName.GetString();
    facts.vertices = tin.m_aVertex.GetSize();
    facts.unused = CountUnused(tin);
    facts.triangles = tin.m_aTri.GetSize();
    facts.pieces = CountPieces(tin);
    MeasureOutline(tin, facts);
    facts.boundaryEntries = tin.m_aBoundary.GetSize();
    tin.GetRange(facts.low.x, facts.high.x, facts.low.y, facts.high.y, facts.low.z, facts.high.z);
    facts.low = terrain.origin.ToSurvey(facts.low);
    facts.high = terrain.origin.ToSurvey(facts.high);
    facts.planArea = tin.CalAllAreaXY();
    facts.surfaceArea = tin.CalAllArea();
    facts.soundness = CheckSoundness(tin);
    return facts;
}

}   // namespace qsvtin
