#include "tin/tin_model/careful_build.h"

#include <cmath>

#include "tin/internal/edge_swap.h"
#include "tin/internal/limits.h"
#include "tin/internal/mesh_links.h"
#include "tin/internal/mesh_split.h"
#include "tin/internal/nearest_triangle.h"
#include "tin/internal/outline_join.h"
#include "tin/internal/plan.h"
#include "tin/internal/plan_index.h"
#include "tin/internal/recent_triangles.h"
#include "tin/internal/slots.h"
#include "tin/tin.h"

namespace qsv {

namespace {

// Equal coordinates are one place even when the tolerance lets nothing coincide.
double PlaceTolerance(const CTin& tin)
{
    return tin.m_dEPS > 0.0 ? tin.m_dEPS : 0.0;
}

bool IsPlace(const CXYZ& p)
{
    return std::isfinite(p.x) && std::isfinite(p.y);
}

// Inserts the corners of the hull that m_aBoundary holds first, so that little is left to join to the outline
// one by one, and then all vertices in index order.
class CarefulBuilder
{
public:
    explicit CarefulBuilder(CTin& tin)
        : m_tin(tin), m_aCorner(tin.m_aBoundary),
          m_dTolerance(PlaceTolerance(tin)), m_mesh{tin.m_aVertex, tin.m_aTri, tin.m_dEPS, tin.m_dEPS2},
          m_used(tin.m_aVertex, m_dTolerance), m_search(m_mesh, m_nTriCount),
          m_recent(tin.m_MinXYZ, tin.m_MaxXYZ, 0)
    {
    }

    void Build()
    {
        const int nVertices = m_tin.m_aVertex.GetSize();
        m_tin.m_aTri.SetSize(0, -1);
        m_tin.m_aTri.SetSize(kTrianglesPerVertex * nVertices, -1);
        for (int i = 0; i < m_aCorner.GetSize(); ++i) {
            Insert(m_aCorner[i]);
        }
        for (int nVt = 0; m_nTriCount == 0 && nVt < nVertices; ++nVt) {
            Insert(nVt);   // those in line are passed over until there is a triangle
        }
        for (int nVt = 0; nVt < nVertices; ++nVt) {
            Insert(nVt);
        }
        m_tin.m_aTri.SetSize(m_nTriCount, -1);
    }

private:
    void Insert(int nVt)
    {
        const CXYZ& p = m_tin.m_aVertex[nVt];
        if (IsPlace(p) && m_used.FindFirst(p.x, p.y) < 0) {
            if (m_nTriCount > 0) {
                InsertIntoMesh(nVt, p);
            } else if (!TakeForFirstTriangle(nVt)) {
                return;   // its turn comes again
            }
            m_used.Enter(nVt);
        }
    }

    // The first triangle is made of the first three vertices that are not in line.
    bool TakeForFirstTriangle(int nVt)
    {
        if (m_aFirst.GetSize() < 2) {
            m_aFirst.Add(nVt);
            return true;
        }
        const CArray<CXYZ>& aVertex = m_tin.m_aVertex;
        const int nTurn = ExactTurn(aVertex[m_aFirst[0]], aVertex[m_aFirst[1]], aVertex[nVt]);
        if (nTurn == 0) {
            return false;
        }
        m_tin.m_aTri[0] = nTurn > 0 ? MakeTriangle(m_aFirst[0], m_aFirst[1], nVt, -1, -1, -1)
                                    : MakeTriangle(m_aFirst[0], nVt, m_aFirst[1], -1, -1, -1);
        m_nTriCount = 1;
        return true;
    }

    void InsertIntoMesh(int nVt, const CXYZ& p)
    {
        const double dRounding = 1e-15 * (std::fabs(p.x) + std::fabs(p.y));
        const NearestTriangle::Place place = m_search.Find(p, m_recent.Near(p), m_dTolerance + dRounding);
        if (place.nTri < 0) {
            return;
        }
        if (place.bOutside) {
            const int nFirst =
                JoinToOutline(m_mesh, m_nTriCount, nVt, place.nTri, place.nEdge, m_dTolerance + dRounding);
            const int nEnd = m_nTriCount;
            for (int t = nFirst; t < nEnd; ++t) {
                LegalizeEdge(m_mesh, t, 0, 0, Turns::Exact);
            }
        } else {
            LegalizeFan(m_mesh,
                        place.nEdge >= 0 ? SplitOnEdge(m_mesh.aTri, nVt, m_nTriCount, place.nTri, place.nEdge)
                                         : SplitInside(m_mesh.aTri, nVt, m_nTriCount, place.nTri),
                        0, Turns::Exact);
        }
        m_recent.Remember(p, m_nTriCount - 1);   // all new triangles use the vertex
    }

    CTin& m_tin;
    const Array<int> m_aCorner;
    const double m_dTolerance;
    const Mesh m_mesh;
    int m_nTriCount = 0;
    CArray<int> m_aFirst;   // vertices in line, until there is a triangle
    PlanIndex m_used;
    NearestTriangle m_search;
    RecentTriangles m_recent;
};

// The vertices along the outer edges, counter-clockwise, from the first outer edge in triangle order.
Array<int> OutlineRing(const CTin& tin)
{
    CArray<int> aNext;   // where the outer edge from a vertex ends; -1 inside
    aNext.SetSize(tin.m_aVertex.GetSize(), -1);
    for (int nVt = 0; nVt < aNext.GetSize(); ++nVt) {
        aNext[nVt] = -1;
    }
    int nFirst = -1;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        const CTriangle& tri = tin.m_aTri[t];
        for (int k = 0; k < 3; ++k) {
            if (tri.m_nNeighbor[NeighborSlotOfEdge(k)] < 0) {
                nFirst = nFirst < 0 ? tri.m_nVertex[k] : nFirst;
                aNext[tri.m_nVertex[k]] = tri.m_nVertex[NextSlot(k)];
            }
        }
    }
    Array<int> aRing;
    for (int nVt = nFirst; nVt >= 0 && aRing.GetSize() < aNext.GetSize(); nVt = aNext[nVt]) {
        aRing.Add(nVt);
        if (aNext[nVt] == nFirst) {
            break;
        }
    }
    return aRing;
}

// The position in the ring of its lowest x, and of those the lowest y: a corner for certain.
int ExtremeOf(const CTin& tin, const CArray<int>& aRing)
{
    int nExtreme = 0;
    for (int i = 1; i < aRing.GetSize(); ++i) {
        const CXYZ &p = tin.m_aVertex[aRing[i]], &q = tin.m_aVertex[aRing[nExtreme]];
        nExtreme = p.x < q.x || (p.x == q.x && p.y < q.y) ? i : nExtreme;
    }
    return nExtreme;
}

// Takes out of the ring, one by one, what is no corner: points in line, within the tolerance, with the
// corners that are left beside them.
Array<int> CornersOf(const CTin& tin, const Array<int>& aRing)
{
    const CArray<CXYZ>& aVertex = tin.m_aVertex;
    const int n = aRing.GetSize(), nStart = ExtremeOf(tin, aRing);
    Array<int> aCorner;
    for (int i = 0; i <= n; ++i) {   // and back to the start
        const int nVt = aRing[(nStart + i) % n];
        int nLast = aCorner.GetUpperBound();
        while (nLast >= 1 && DoubledArea(aVertex[aCorner[nLast - 1]], aVertex[aCorner[nLast]],
                                         aVertex[nVt]) <= tin.m_dEPS2) {
            aCorner.SetSize(nLast--, -1);
        }
        if (i < n) {
            aCorner.Add(nVt);
        }
    }
    return aCorner.GetSize() >= 3 ? aCorner : aRing;
}

}   // namespace

bool HasMissedVertex(const CTin& tin, int nTriCount)
{
    const int nVertices = tin.m_aVertex.GetSize();
    CArray<char> aUsed;
    aUsed.SetSize(nVertices, -1);
    int nUnused = nVertices;
    for (int t = 0; t < nTriCount; ++t) {
        for (const int nVt : tin.m_aTri[t].m_nVertex) {
            nUnused -= aUsed[nVt] ? 0 : 1;
            aUsed[nVt] = 1;
        }
    }
    if (nUnused == 0) {
        return false;
    }
    PlanIndex used(tin.m_aVertex, PlaceTolerance(tin));
    for (int nVt = 0; nVt < nVertices; ++nVt) {
        if (aUsed[nVt]) {
            used.Enter(nVt);
        }
    }
    for (int nVt = 0; nVt < nVertices; ++nVt) {
        const CXYZ& p = tin.m_aVertex[nVt];
        if (!aUsed[nVt] && IsPlace(p) && used.FindFirst(p.x, p.y) < 0) {
            return true;
        }
    }
    return false;
}

void BuildCarefully(CTin& tin)
{
    CarefulBuilder(tin).Build();
    const Array<int> aRing = OutlineRing(tin);
    Array<int> aCorner = aRing.IsEmpty() ? aRing : CornersOf(tin, aRing);   // no triangle: all lie in line
    MoveInto(tin.m_aBoundary, aCorner);
}

}   // namespace qsv
