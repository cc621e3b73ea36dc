#include "support/mesh_oracle.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace {

using ::testing::AssertionFailure;
using ::testing::AssertionResult;
using ::testing::AssertionSuccess;

using Edge = std::pair<int, int>;

int VertexOf(const CTin& tin, int nTri, int k)
{
    return tin.m_aTri[nTri].m_nVertex[k % 3];
}

const CXYZ& CornerOf(const CTin& tin, int nTri, int k)
{
    return tin.m_aVertex[VertexOf(tin, nTri, k)];
}

long double Area2(const CXYZ& a, const CXYZ& b, const CXYZ& c)
{
    return (static_cast<long double>(b.x) - a.x) * (static_cast<long double>(c.y) - a.y) -
           (static_cast<long double>(b.y) - a.y) * (static_cast<long double>(c.x) - a.x);
}

// What rounding the coordinates themselves may do to a doubled area.
double Rounding(const CXYZ& a, const CXYZ& b, const CXYZ& c)
{
    double dLargest = 0.0, dExtent = 0.0;
    for (const CXYZ* p : {&a, &b, &c}) {
        dLargest = std::max({dLargest, std::fabs(p->x), std::fabs(p->y)});
        dExtent = std::max({dExtent, std::fabs(p->x - a.x), std::fabs(p->y - a.y)});
    }
    return 1e-15 * dLargest * dExtent;
}

AssertionResult HasSoundLink(const CTin& tin, int t, int k)
{
    const int u = tin.m_aTri[t].m_nNeighbor[k];
    if (u == -1) {
        return AssertionSuccess();
    }
    if (u < 0 || u >= tin.m_aTri.GetSize() || u == t) {
        return AssertionFailure() << "triangle " << t << " slot " << k << " links to " << u;
    }
    for (int j = 0; j < 3; ++j) {
        if (tin.m_aTri[u].m_nNeighbor[j] == t && VertexOf(tin, u, j) == VertexOf(tin, t, k + 2) &&
            VertexOf(tin, u, j + 2) == VertexOf(tin, t, k)) {
            return AssertionSuccess();
        }
    }
    return AssertionFailure() << "triangle " << u << " does not link back to " << t << " across its slot "
                              << k;
}

std::set<int> VerticesInUse(const CTin& tin)
{
    std::set<int> aUsed;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        aUsed.insert(tin.m_aTri[t].m_nVertex, tin.m_aTri[t].m_nVertex + 3);
    }
    return aUsed;
}

}   // namespace

AssertionResult IsSound(const CTin& tin)
{
    std::set<Edge> aEdge;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        for (int k = 0; k < 3; ++k) {
            if (VertexOf(tin, t, k) < 0 || VertexOf(tin, t, k) >= tin.m_aVertex.GetSize()) {
                return AssertionFailure() << "triangle " << t << " uses vertex " << VertexOf(tin, t, k);
            }
        }
        for (int k = 0; k < 3; ++k) {
            if (const AssertionResult link = HasSoundLink(tin, t, k); !link) {
                return link;
            }
            if (!aEdge.insert({VertexOf(tin, t, k), VertexOf(tin, t, k + 1)}).second) {
                return AssertionFailure()
                       << "edge " << VertexOf(tin, t, k) << " - " << VertexOf(tin, t, k + 1)
                       << " is used twice, the second time by triangle " << t;
            }
        }
        const CXYZ &a = CornerOf(tin, t, 0), &b = CornerOf(tin, t, 1), &c = CornerOf(tin, t, 2);
        if (Area2(a, b, c) < -static_cast<long double>(tin.m_dEPS2 + Rounding(a, b, c))) {
            return AssertionFailure()
                   << "triangle " << t << " is clockwise by " << static_cast<double>(Area2(a, b, c));
        }
    }
    return AssertionSuccess();
}

AssertionResult IsDisk(const CTin& tin)
{
    std::set<Edge> aEdge;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        for (int k = 0; k < 3; ++k) {
            aEdge.insert(std::minmax({VertexOf(tin, t, k), VertexOf(tin, t, k + 1)}));
        }
    }
    const int nEuler =
        static_cast<int>(VerticesInUse(tin).size()) + tin.m_aTri.GetSize() - static_cast<int>(aEdge.size());
    return nEuler == 1 ? AssertionSuccess() : AssertionFailure() << "Euler count is " << nEuler;
}

AssertionResult IsDelaunay(const CTin& tin)
{
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        const CXYZ &a = CornerOf(tin, t, 0), &b = CornerOf(tin, t, 1), &c = CornerOf(tin, t, 2);
        for (const int nVt : VerticesInUse(tin)) {
            const CXYZ& d = tin.m_aVertex[nVt];
            // The lifted determinant: above 0 when d lies inside the circle of a counter-clockwise triangle.
            const long double ax = a.x - d.x, ay = a.y - d.y, bx = b.x - d.x, by = b.y - d.y;
            const long double cx = c.x - d.x, cy = c.y - d.y;
            const long double a2 = ax * ax + ay * ay, b2 = bx * bx + by * by, c2 = cx * cx + cy * cy;
            const long double dInside =
                a2 * (bx * cy - by * cx) - b2 * (ax * cy - ay * cx) + c2 * (ax * by - ay * bx);
            if (dInside > 1e-9L * (a2 + b2 + c2) * std::fabs(Area2(a, b, c))) {
                return AssertionFailure() << "vertex " << nVt << " lies inside the circle of triangle " << t;
            }
        }
    }
    return AssertionSuccess();
}

AssertionResult HasPlacedEveryVertex(const CTin& tin)
{
    const std::set<int> aUsed = VerticesInUse(tin);
    for (int i = 0; i < tin.m_aVertex.GetSize(); ++i) {
        const CXYZ& p = tin.m_aVertex[i];
        const bool bPlaced = aUsed.count(i) > 0 || std::any_of(aUsed.begin(), aUsed.end(), [&](int nVt) {
                                 const CXYZ& q = tin.m_aVertex[nVt];
                                 return (p.x == q.x && p.y == q.y) || (std::fabs(p.x - q.x) <= tin.m_dEPS &&
                                                                       std::fabs(p.y - q.y) <= tin.m_dEPS);
                             });
        if (!bPlaced) {
            return AssertionFailure() << "vertex " << i << " was left out";
        }
    }
    return AssertionSuccess();
}

int CountFaults(const CTin& tin, MESH_FAULT eBefore)
{
    CArray<CMeshFault> aFault;
    FindMeshFaults(tin, aFault, std::numeric_limits<int>::max());
    return static_cast<int>(
        std::count_if(aFault.GetData(), aFault.GetData() + aFault.GetSize(),
                      [eBefore](const CMeshFault& fault) { return fault.m_eKind < eBefore; }));
}

double MeshArea(const CTin& tin)
{
    long double dArea2 = 0.0L;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        dArea2 += Area2(CornerOf(tin, t, 0), CornerOf(tin, t, 1), CornerOf(tin, t, 2));
    }
    return static_cast<double>(dArea2 / 2.0L);
}

double RingArea(const CTin& tin, const CArray<int>& aRing)
{
    long double dArea2 = 0.0L;
    for (int i = 1; i + 1 < aRing.GetSize(); ++i) {
        dArea2 += Area2(tin.m_aVertex[aRing[0]], tin.m_aVertex[aRing[i]], tin.m_aVertex[aRing[i + 1]]);
    }
    return static_cast<double>(dArea2 / 2.0L);
}

std::string Dump(const CTin& tin)
{
    std::string strDump;
    char szLine[256];
    for (int i = 0; i < tin.m_aVertex.GetSize(); ++i) {
        const CXYZ& p = tin.m_aVertex[i];
        std::snprintf(szLine, sizeof szLine, "v %.17g %.17g %.17g\n", p.x, p.y, p.z);
        strDump += szLine;
    }
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        const CTriangle& tri = tin.m_aTri[t];
        std::snprintf(szLine, sizeof szLine, "t %d %d %d | %d %d %d | %d\n", tri.m_nVertex[0],
                      tri.m_nVertex[1], tri.m_nVertex[2], tri.m_nNeighbor[0], tri.m_nNeighbor[1],
                      tri.m_nNeighbor[2], tri.m_bSelect);
        strDump += szLine;
    }
    for (int i = 0; i < tin.m_aBoundary.GetSize(); ++i) {
        strDump += "b " + std::to_string(tin.m_aBoundary[i]) + "\n";
    }
    for (int i = 0; i < tin.m_aBreakLine.GetSize(); ++i) {
        const CBreakLine& bl = tin.m_aBreakLine[i];
        strDump += bl.m_bClose != 0 ? "ring" : "line";
        for (int j = 0; j < bl.m_aVertexIndex.GetSize(); ++j) {
            strDump += " " + std::to_string(bl.m_aVertexIndex[j]);
        }
        strDump += "\n";
    }
    return strDump;
}
