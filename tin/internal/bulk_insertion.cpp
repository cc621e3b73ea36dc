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

// Vertices that come in an order of their own, in scan lines say, need none of this: the walk from one to the next is
// short. So it begins with such walks, unless it is plain that they are long, until they take more moves than these.
constexpr int kMovesPerVertex = 6;
constexpr long long kMovesToSpare = 1000;
constexpr int kMovesPerSpacing = 2;   // along a line through evenly spread vertices
constexpr int kSampledSteps = 1000;

constexpr int kIsInMesh = -1;   // in place of a rank

// How far the insertion has come, by the numbers of the TIN.
struct Progress {
    int nNext = 0;      // the vertex to come
    int nLastTri = 0;   // where the one inserted last lies: the walk to the next one starts there
    int nLeftOut = 0;
    bool bBent = false;   // the outline need no longer be convex
};

// A vertex that joins an outer edge without lying exactly on its line bends the outline in or out.
bool BendsOutline(const PlanMesh& mesh, const PlanPlace& p, Corner faces)
{
    const PlanPlace &a = mesh.PlaceAt(faces.Next()), &b = mesh.PlaceAt(faces.Prev());
    return mesh.Across(faces).IsOutside() &&
           ExactTurn(CXYZ(a.x, a.y, 0.0), CXYZ(b.x, b.y, 0.0), CXYZ(p.x, p.y, 0.0)) != 0;
}

// Inserts vertex after vertex into the triangle where its walk ended.
class Receiver
{
public:
    Receiver(PlanMesh& mesh, WalkTraps* pTraps, int nLastTri)
        : m_mesh(mesh), m_inserter(mesh, pTraps), m_nLastTri(nLastTri)
    {
    }

    // False when the vertex is left out.
    bool Insert(int nRank, const PlanLocation& at)
    {
        if (at.nTri < 0 || at.nState == kOnVertex) {
            ++m_nLeftOut;
            return false;
        }
        m_nLastTri = at.nTri;
        if (at.nState == kInside) {
            m_inserter.SplitInside(nRank, at.nTri);
        } else {
            m_bBent = m_bBent || BendsOutline(m_mesh, m_mesh.PlaceOf(nRank), at.corner);
            m_inserter.SplitOnEdge(nRank, at.corner);
        }
        return true;
    }

    int LastTri() const { return m_nLastTri; }
    bool IsBent() const { return m_bBent; }
    int LeftOut() const { return m_nLeftOut; }

private:
    PlanMesh& m_mesh;
    PlanInserter m_inserter;
    int m_nLastTri;
    int m_nLeftOut = 0;
    bool m_bBent = false;
};

struct Coming {
    int nRank;
    int nBefore;     // the rank of the vertex before
    bool bFollows;   // lies as close to the vertex before as to any triangle that is remembered; otherwise:
    int nNear;       // a triangle nearby
    Corner at;       // where the walk from there stands
};

class BulkInserter
{
public:
    BulkInserter(PlanMesh& mesh, const WalkTolerance& tolerance, double dReach, const CXYZ& lower,
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

    // Inserts the vertices of the ranks from a place in the list on, but for those that are in the mesh. Returns how many
    // were left out.
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
    Receiver m_receiver;
    StartTable m_start;
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

// Whether vertices that follow each other mostly lie too far apart for walks.
bool AreWalksLong(const CArray<CXYZ>& aVertex, double dSide)
{
    const int n = aVertex.GetSize(), nStride = (n - 1) / kSampledSteps + 1;
    double dSum = 0.0;
    int nSampled = 0;
    for (int i = 1; i < n; i += nStride, ++nSampled) {
        dSum += std::fabs(aVertex[i].x - aVertex[i - 1].x) + std::fabs(aVertex[i].y - aVertex[i - 1].y);
    }
    const double dSpacing = dSide / std::sqrt(n);
    return kMovesPerSpacing * dSum > kMovesPerVertex * dSpacing * nSampled;
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

void Mark(CArray<int>& aRank, const CArray<int>& aOutline)
{
    for (int i = 0; i < aOutline.GetSize(); ++i) {
        aRank[aOutline[i]] = kIsInMesh;
    }
}

// Where the triangles over an outline stand, as long as ranks are the numbers of vertices: each beside another of its
// vertices.
Array<int> SeatsOf(const CArray<int>& aOutline, int nTriangles)
{
    Array<int> aSeat;
    for (int t = 0; t < nTriangles; ++t) {
        aSeat.Add(PlanMesh::FirstSeatOf(aOutline[t]));
    }
    return aSeat;
}

// The procedure itself, to the end or as long as the walks are short. Then aSeat holds where the triangles stand.
Progress InsertByWalks(const Mesh& mesh, const CArray<int>& aOutline, bool bToTheEnd, CArray<int>& aSeat)
{
    const WalkTolerance tolerance = {mesh.dEPS, mesh.dEPS2};
    Array<int> aRank = RanksInOrder(mesh.aVertex.GetSize());
    PlanMesh planMesh(mesh.aVertex, aRank);
    planMesh.Load(mesh.aTri, aSeat, aRank);
    Mark(aRank, aOutline);
    Receiver receiver(planMesh, nullptr, aSeat[0]);
    long long nMovesLeft = kMovesToSpare;
    int i = 0;
    for (; i < aRank.GetSize() && (bToTheEnd || nMovesLeft > 0); ++i) {
        if (aRank[i] != kIsInMesh) {
            const PlanLocation at = WalkToPoint(planMesh, receiver.LastTri(), planMesh.PlaceOf(i), tolerance);
            receiver.Insert(i, at);
            nMovesLeft += kMovesPerVertex - at.nMoves;
        }
    }
    planMesh.Store(mesh.aTri);
    if (i < aRank.GetSize()) {
        planMesh.ListSeats(aSeat);
    }
    return {i, planMesh.NumberOf(receiver.LastTri()), receiver.LeftOut(), receiver.IsBent()};
}

// The rest. Returns how many vertices were left out.
int InsertInAnyOrder(const Mesh& mesh, const CArray<int>& aOutline, const CXYZ& lower, double dSide,
                     const Progress& progress, CArray<int>& aSeat)
{
    Array<int> aRank = MortonRanks(mesh.aVertex, lower, dSide);
    PlanMesh planMesh(mesh.aVertex, aRank);
    for (int t = 0; t < aSeat.GetSize(); ++t) {
        const int nVt = PlanMesh::RankOfSeat(aSeat[t]), nWhich = aSeat[t] - PlanMesh::FirstSeatOf(nVt);
        aSeat[t] = PlanMesh::FirstSeatOf(aRank[nVt]) + nWhich;
    }
    planMesh.Load(mesh.aTri, aSeat, aRank);
    Mark(aRank, aOutline);
    int nLeftOut = 0;
    {
        BulkInserter inserter(planMesh, {mesh.dEPS, mesh.dEPS2}, ReachFor(mesh, dSide), lower, dSide,
                              aRank.GetSize(), aSeat[progress.nLastTri]);
        if (progress.bBent) {
            inserter.DistrustOutline();
        }
        for (int t = 0; t < aSeat.GetSize(); ++t) {
            inserter.LookAt(aSeat[t]);
        }
        nLeftOut = inserter.InsertAll(aRank, progress.nNext);
    }
    planMesh.Store(mesh.aTri);
    return nLeftOut;
}

}   // namespace

int InsertVertices(const Mesh& mesh, const CArray<int>& aOutline, const CXYZ& lower, const CXYZ& upper)
{
    const double dSide = std::fmax(upper.x - lower.x, upper.y - lower.y);
    const bool bOrdinary = IsOrdinary(mesh, dSide);
    Array<int> aSeat = SeatsOf(aOutline, mesh.aTri.GetSize());
    Progress progress;
    if (!bOrdinary || !AreWalksLong(mesh.aVertex, dSide)) {
        progress = InsertByWalks(mesh, aOutline, !bOrdinary, aSeat);
    }
    if (progress.nNext == mesh.aVertex.GetSize()) {
        return progress.nLeftOut;
    }
    return progress.nLeftOut + InsertInAnyOrder(mesh, aOutline, lower, dSide, progress, aSeat);
}

}   // namespace qsv
