#include "tin/internal/bulk_insertion.h"

#include <cmath>
#include <cstdlib>

#include "tin/internal/morton_order.h"
#include "tin/internal/plan.h"
#include "tin/internal/plan_insert.h"
#include "tin/internal/plan_search.h"
#include "tin/internal/prefetch.h"
#include "tin/internal/slots.h"
#include "tin/internal/start_table.h"

namespace qsv {

namespace {

// A processor waits for memory most of the time when it walks to one place after the other. So the walks of
// so many coming vertices go on step by step in turn, and what a step needs is fetched while the others step.
constexpr int kGroup = 32;
// Steps of that kind; the walks that are longer end alone.
constexpr int kStepsTogether = 12;
// Vertices whose ranks differ by no more lie so close together that the walk from one to the other is short.
constexpr int kCloseRanks = 64;

constexpr int kIsInMesh = -1;   // in place of a rank

struct Coming {
    int nRank;
    int nBefore;     // the rank of the vertex before
    int nNear;       // a triangle nearby; unless bFollows
    bool bFollows;   // as close to the vertex before as to any triangle that is remembered
};

double Distance2(const PlanPlace& p, const PlanPlace& q)
{
    return (p.x - q.x) * (p.x - q.x) + (p.y - q.y) * (p.y - q.y);
}

class BulkInserter
{
public:
    // Without starts, every search is the walk from the vertex before.
    BulkInserter(PlanMesh& mesh, const WalkTolerance& tolerance, double dReach, int nRanks, bool bStarts,
                 int nFirstTri)
        : m_mesh(mesh), m_tolerance(tolerance), m_bStarts(bStarts), m_traps(mesh, tolerance, dReach),
          m_search(mesh, m_traps, tolerance), m_inserter(mesh, m_traps), m_start(nRanks, nFirstTri),
          m_nLastTri(nFirstTri)
    {
    }

    // Inserts the vertices of all ranks in the list that are not in the mesh, which so far stands on these seats. Returns
    // how many were left out.
    int InsertAll(const CArray<int>& aSeat, const CArray<int>& aRank)
    {
        for (int i = 0; i < aSeat.GetSize(); ++i) {
            LookAt(aSeat[i]);
        }
        for (int i = 0; i < aRank.GetSize(); ++i) {
            if (aRank[i] != kIsInMesh) {
                Take(aRank[i]);
            }
        }
        Finish();
        return m_nLeftOut;
    }

private:
    void LookAt(int nTri)
    {
        const PlanTriangle& tri = m_mesh[nTri];
        const PlanPlace &a = m_mesh.Corner(tri, 0), &b = m_mesh.Corner(tri, 1), &c = m_mesh.Corner(tri, 2);
        m_traps.Update(nTri, -RightOf(a, b, c), Distance2(a, b) + Distance2(b, c) + Distance2(c, a));
    }

    // Adds a vertex to the group, and inserts the group when it is full.
    void Take(int nRank)
    {
        Coming& coming = m_aGroup[m_nGroup++];
        coming.nRank = nRank;
        coming.nBefore = m_nRankBefore;
        coming.bFollows = !m_bStarts || std::abs(nRank - m_nRankBefore) <= kCloseRanks;
        m_nRankBefore = nRank;
        if (m_nGroup == kGroup) {
            Finish();
        }
    }

    // Inserts what is left in the group.
    void Finish()
    {
        FindStarts();
        WalkTogether();
        for (int i = 0; i < m_nGroup; ++i) {
            Insert(m_aGroup[i]);
        }
        m_nGroup = 0;
    }

    void FindStarts()
    {
        ForEachWalking([this](Coming& coming) {
            Prefetch(m_start.AddressOf(coming.nRank));
            Prefetch(&m_mesh.PlaceOf(coming.nRank));
            Prefetch(&m_mesh[PlanMesh::FirstSeatOf(coming.nRank)]);
        });
        ForEachWalking([this](Coming& coming) {
            coming.nNear = m_start.Near(coming.nRank);
            Prefetch(&m_mesh[coming.nNear]);
        });
        ForEachWalking([this](Coming& coming) { Prefetch(&m_mesh.Corner(m_mesh[coming.nNear], 0)); });
        ForEachWalking([this](Coming& coming) {
            const PlanPlace& p = m_mesh.PlaceOf(coming.nRank);
            coming.bFollows = coming.nBefore >= 0 && Distance2(p, m_mesh.PlaceOf(coming.nBefore)) <=
                                                         Distance2(p, m_mesh.Corner(m_mesh[coming.nNear], 0));
        });
    }

    template <class ACTION>
    void ForEachWalking(ACTION fnAction)
    {
        for (int i = 0; i < m_nGroup; ++i) {
            if (!m_aGroup[i].bFollows) {
                fnAction(m_aGroup[i]);
            }
        }
    }

    void WalkTogether()
    {
        Coming* apWalking[kGroup];
        int nWalking = 0;
        ForEachWalking([&apWalking, &nWalking](Coming& coming) { apWalking[nWalking++] = &coming; });
        for (int nStep = 0; nStep < kStepsTogether && nWalking > 0; ++nStep) {
            for (int i = 0; i < nWalking; ++i) {
                FetchCorners(apWalking[i]->nNear);
            }
            int nStill = 0;
            for (int i = 0; i < nWalking; ++i) {
                Coming& coming = *apWalking[i];
                if (m_search.Step(m_mesh.PlaceOf(coming.nRank), coming.nNear)) {
                    Prefetch(&m_mesh[coming.nNear]);
                    apWalking[nStill++] = &coming;
                } else {
                    FetchNeighbors(coming.nNear);
                }
            }
            nWalking = nStill;
        }
    }

    void FetchCorners(int nTri) const
    {
        for (int k = 0; k < 3; ++k) {
            Prefetch(&m_mesh.Corner(m_mesh[nTri], k));
        }
    }
    void FetchNeighbors(int nTri) const
    {
        for (const EdgeRef& across : m_mesh[nTri].aLink) {
            if (!across.IsOutside()) {
                Prefetch(&m_mesh[across.Tri()]);
            }
        }
    }

    void Insert(const Coming& coming)
    {
        const PlanPlace& p = m_mesh.PlaceOf(coming.nRank);
        const Location at = coming.bFollows ? WalkToPoint(m_mesh, m_nLastTri, p, m_tolerance)
                                            : m_search.Find(p, coming.nNear, m_nLastTri);
        if (at.nTri < 0 || at.nState == kOnVertex) {
            ++m_nLeftOut;
            return;
        }
        m_nLastTri = at.nTri;
        if (at.nState == kInside) {
            m_inserter.SplitInside(coming.nRank, at.nTri);
        } else {
            if (BendsOutline(p, at)) {
                m_search.DistrustOutline();
            }
            m_inserter.SplitOnEdge(coming.nRank, at.nTri, at.nSide);
        }
        m_start.Remember(coming.nRank, at.nTri);
    }

    // A vertex that joins an outer edge without lying exactly on its line bends the outline in or out.
    bool BendsOutline(const PlanPlace& p, const Location& at) const
    {
        const PlanTriangle& tri = m_mesh[at.nTri];
        const PlanPlace &a = m_mesh.Corner(tri, at.nSide), &b = m_mesh.Corner(tri, NextSlot(at.nSide));
        return tri.aLink[at.nSide].IsOutside() &&
               ExactTurn(CXYZ(a.x, a.y, 0.0), CXYZ(b.x, b.y, 0.0), CXYZ(p.x, p.y, 0.0)) != 0;
    }

    PlanMesh& m_mesh;
    const WalkTolerance m_tolerance;
    const bool m_bStarts;
    WalkTraps m_traps;
    PlanSearch m_search;
    PlanInserter m_inserter;
    StartTable m_start;
    int m_nLastTri;   // of the vertex inserted last: where the walk to the next one starts
    int m_nLeftOut = 0;
    Coming m_aGroup[kGroup];
    int m_nGroup = 0;
    int m_nRankBefore = -1;
};

// Where nothing overflows and nothing is lost in a product of three differences.
bool IsOrdinary(const Mesh& mesh, double dSide)
{
    if (!(dSide > 1e-60 && dSide < 1e60 && mesh.dEPS2 >= 0.0 && mesh.dEPS2 < 1e60 &&
          std::fabs(mesh.dEPS) < 1e60)) {
        return false;
    }
    for (int nVt = 0; nVt < mesh.aVertex.GetSize(); ++nVt) {
        if (!std::isfinite(mesh.aVertex[nVt].x) || !std::isfinite(mesh.aVertex[nVt].y)) {
            return false;
        }
    }
    return true;
}

// More than a place can lie beyond an edge and still be let pass or found on it or on a vertex, and more than rounding; and
// where vertices are far apart, a small part of their distance, so that few triangles are traps.
double ReachFor(const Mesh& mesh, double dSide)
{
    const double dTolerance = 2.0 * std::fmax(std::fabs(mesh.dEPS), std::sqrt(mesh.dEPS2));
    const double dRounding = 1e-12 * dSide, dSpacing = dSide / std::sqrt(mesh.aVertex.GetSize());
    return std::fmax(std::fmax(dTolerance, dRounding), 1e-3 * dSpacing);
}

Array<int> RanksInOrder(int n)
{
    Array<int> aRank;
    aRank.SetSize(n, -1);
    for (int i = 0; i < n; ++i) {
        aRank[i] = i;
    }
    return aRank;
}

}   // namespace

int InsertVertices(const Mesh& mesh, const CArray<int>& aOutline, const CXYZ& lower, const CXYZ& upper)
{
    const int n = mesh.aVertex.GetSize();
    const double dSide = std::fmax(upper.x - lower.x, upper.y - lower.y);
    const bool bOrdinary = IsOrdinary(mesh, dSide);
    Array<int> aRank = bOrdinary ? MortonRanks(mesh.aVertex, lower, dSide) : RanksInOrder(n);
    PlanMesh planMesh(mesh.aVertex, aRank);
    CArray<int> aSeat;   // of the triangles over the outline: those of as many of its vertices
    for (int t = 0; t < mesh.aTri.GetSize(); ++t) {
        aSeat.Add(PlanMesh::FirstSeatOf(aRank[aOutline[t]]));
    }
    planMesh.Load(mesh.aTri, aSeat, aRank);
    for (int i = 0; i < aOutline.GetSize(); ++i) {
        aRank[aOutline[i]] = kIsInMesh;
    }
    int nLeftOut = 0;
    {
        BulkInserter inserter(planMesh, {mesh.dEPS, mesh.dEPS2}, ReachFor(mesh, dSide), n, bOrdinary,
                              aSeat[0]);
        nLeftOut = inserter.InsertAll(aSeat, aRank);
    }
    planMesh.Store(mesh.aTri);
    return nLeftOut;
}

}   // namespace qsv
