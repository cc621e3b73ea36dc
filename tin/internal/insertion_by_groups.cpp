#include "tin/internal/insertion_by_groups.h"

#include <cmath>
#include <cstdlib>

#include "tin/internal/hilbert_order.h"
#include "tin/internal/plan_receiver.h"
#include "tin/internal/plan_search.h"
#include "tin/internal/prefetch.h"
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

struct Coming {
    int nRank;
    int nBefore;     // the rank of the vertex before
    bool bFollows;   // lies as close to the vertex before as to any triangle that is remembered; otherwise:
    int nNear;       // a triangle nearby
    Corner at;       // where the walk from there stands
};

class GroupInserter
{
public:
    GroupInserter(PlanMesh& mesh, const WalkTolerance& tolerance, double dReach, const CXYZ& lower,
                  double dSide, int nRanks, int nLastTri)
        : m_mesh(mesh), m_tolerance(tolerance), m_traps(mesh, tolerance, dReach, lower, dSide),
          m_search(mesh, m_traps, tolerance), m_receiver(mesh, &m_traps, nLastTri), m_start(nRanks, nLastTri)
    {
    }

    // To be called once for each triangle of the mesh.
    void LookAt(int nTri)
    {
        m_traps.Update(nTri);
        m_start.Remember(PlanMesh::RankOfSeat(nTri), nTri);
    }
    // To be called when the outline need not be convex.
    void DistrustOutline() { m_search.DistrustOutline(); }

    // Inserts the vertices of the ranks from a place in the list on, but for those that are in the mesh. Returns how
    // many were left out.
    int InsertAll(const CArray<int>& aRank, int nFrom)
    {
        for (int i = nFrom; i < aRank.GetSize(); ++i) {
            if (aRank[i] != kIsInMesh) {
                Take(aRank[i]);
            }
        }
        Finish();
        return m_receiver.LeftOut();
    }

private:
    // Adds a vertex to the group, and inserts the group when it is full.
    void Take(int nRank)
    {
        Coming& coming = m_aGroup[m_nGroup++];
        coming.nRank = nRank;
        coming.nBefore = m_nRankBefore;
        coming.bFollows = std::abs(nRank - m_nRankBefore) <= kCloseRanks;
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
        FetchSurroundings();
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
            Prefetch(m_mesh.AddressOf(Corner(PlanMesh::FirstSeatOf(coming.nRank), 0)));
        });
        ForEachWalking([this](Coming& coming) {
            coming.nNear = m_start.Near(coming.nRank);
            Prefetch(m_mesh.AddressOf(Corner(coming.nNear, 0)));
        });
        ForEachWalking([this](Coming& coming) {
            for (int k = 0; k < 3; ++k) {
                Prefetch(&m_mesh.PlaceAt(Corner(coming.nNear, k)));
            }
        });
        ForEachWalking([this](Coming& coming) {
            const PlanPlace& p = m_mesh.PlaceOf(coming.nRank);
            coming.bFollows =
                coming.nBefore >= 0 && Distance2(p, m_mesh.PlaceOf(coming.nBefore)) <=
                                           Distance2(p, m_mesh.PlaceAt(Corner(coming.nNear, 0)));
            coming.at = m_search.Begin(p, coming.nNear);
            Prefetch(m_mesh.AddressOf(coming.at));
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
                Prefetch(&m_mesh.PlaceAt(apWalking[i]->at));
            }
            int nStill = 0;
            for (int i = 0; i < nWalking; ++i) {
                Coming& coming = *apWalking[i];
                if (m_search.Step(m_mesh.PlaceOf(coming.nRank), coming.at)) {
                    Prefetch(m_mesh.AddressOf(coming.at));
                    apWalking[nStill++] = &coming;
                } else {
                    for (int k = 0; k < 3; ++k) {
                        Prefetch(m_mesh.AddressOf(m_mesh.Across(Corner(coming.at.Tri(), k))));
                    }
                }
            }
            nWalking = nStill;
        }
    }

    // Fetches what the swaps will most often meet: the triangles up to two steps away, and their corners.
    void FetchSurroundings() const
    {
        ForEachAcross([this](Corner near) {
            Prefetch(&m_mesh.PlaceAt(near));
            Prefetch(m_mesh.AddressOf(m_mesh.Across(near.Next())));
            Prefetch(m_mesh.AddressOf(m_mesh.Across(near.Prev())));
        });
        ForEachAcross([this](Corner near) {
            Prefetch(&m_mesh.PlaceAt(m_mesh.Across(near.Next())));
            Prefetch(&m_mesh.PlaceAt(m_mesh.Across(near.Prev())));
        });
    }

    // For every corner across from those of a triangle that a walk reached.
    template <class ACTION>
    void ForEachAcross(ACTION fnAction) const
    {
        for (int i = 0; i < m_nGroup; ++i) {
            for (int k = 0; k < 3 && !m_aGroup[i].bFollows; ++k) {
                fnAction(m_mesh.Across(Corner(m_aGroup[i].at.Tri(), k)));
            }
        }
    }

    void Insert(const Coming& coming)
    {
        const PlanPlace& p = m_mesh.PlaceOf(coming.nRank);
        const PlanLocation at = coming.bFollows ? WalkToPoint(m_mesh, m_receiver.LastTri(), p, m_tolerance)
                                                : m_search.Find(p, coming.at, m_receiver.LastTri());
        if (m_receiver.Insert(coming.nRank, at)) {
            m_start.Remember(coming.nRank, at.nTri);
        }
        if (m_receiver.IsBent()) {
            m_search.DistrustOutline();
        }
    }

    PlanMesh& m_mesh;
    const WalkTolerance m_tolerance;
    WalkTraps m_traps;
    PlanSearch m_search;
    PlanReceiver m_receiver;
    StartTable m_start;
    Coming m_aGroup[kGroup];
    int m_nGroup = 0;
    int m_nRankBefore = -1;
};

// More than a place can lie beyond an edge and still be let pass or found on it or on a vertex, and more than rounding;
// and where vertices are far apart, a small part of their distance, so that few triangles are traps.
double ReachFor(const Mesh& mesh, double dSide)
{
    const double dTolerance = 2.0 * std::fmax(std::fabs(mesh.dEPS), std::sqrt(mesh.dEPS2));
    const double dRounding = 1e-12 * dSide, dSpacing = dSide / std::sqrt(mesh.aVertex.GetSize());
    return std::fmax(std::fmax(dTolerance, dRounding), 1e-3 * dSpacing);
}

// The same seats in a mesh of other ranks: each triangle beside the vertex where it was.
Array<int> SeatsByRank(const CArray<int>& aSeat, const CArray<int>& aRank)
{
    Array<int> aRanked;
    aRanked.SetSize(aSeat.GetSize(), -1);
    for (int t = 0; t < aSeat.GetSize(); ++t) {
        const int nVt = PlanMesh::RankOfSeat(aSeat[t]), nWhich = aSeat[t] - PlanMesh::FirstSeatOf(nVt);
        aRanked[t] = PlanMesh::FirstSeatOf(aRank[nVt]) + nWhich;
    }
    return aRanked;
}

}   // namespace

int InsertByGroups(const Mesh& mesh, const CArray<int>& aOutline, const CXYZ& lower, double dSide,
                   const Progress& progress, const CArray<int>& aSeat)
{
    Array<int> aRank = HilbertRanks(mesh.aVertex, lower, dSide);
    PlanMesh planMesh(mesh.aVertex, aRank);
    const Array<int> aRankedSeat = SeatsByRank(aSeat, aRank);
    planMesh.Load(mesh.aTri, aRankedSeat, aRank);
    MarkAsInMesh(aRank, aOutline);
    int nLeftOut = 0;
    {
        GroupInserter inserter(planMesh, {mesh.dEPS, mesh.dEPS2}, ReachFor(mesh, dSide), lower, dSide,
                               aRank.GetSize(), aRankedSeat[progress.nLastTri]);
        if (progress.bBent) {
            inserter.DistrustOutline();
        }
        for (int t = 0; t < aRankedSeat.GetSize(); ++t) {
            inserter.LookAt(aRankedSeat[t]);
        }
        nLeftOut = inserter.InsertAll(aRank, progress.nNext);
    }
    planMesh.Store(mesh.aTri);
    return nLeftOut;
}

}   // namespace qsv
