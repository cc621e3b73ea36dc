#include "tin/internal/insertion_by_walks.h"

#include <algorithm>
#include <cmath>

#include "tin/internal/plan_receiver.h"

namespace qsv {

namespace {

// Where vertices come in an order of their own, in scan lines say, the walk from one to the next is short. Walks are
// long when they take more moves than these. Long ones are made up for by short ones before, as far as turning to the
// search would cost: about so many moves for each vertex. What may be long at the beginning, where a grid's first rows
// are, is so many walks across the mesh.
constexpr int kMovesPerVertex = 12;
constexpr long long kMovesToTurn = 8;
constexpr long long kWaysToBegin = 32;
constexpr int kMovesPerSpacing = 2;   // along a line through evenly spread vertices
constexpr int kSampledSteps = 1000;

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

Progress InsertByWalks(const Mesh& mesh, const CArray<int>& aOutline, bool bToTheEnd, CArray<int>& aSeat)
{
    const WalkTolerance tolerance = {mesh.dEPS, mesh.dEPS2};
    Array<int> aRank = RanksInOrder(mesh.aVertex.GetSize());
    PlanMesh planMesh(mesh.aVertex, aRank);
    planMesh.Load(mesh.aTri, aSeat, aRank);
    MarkAsInMesh(aRank, aOutline);
    PlanReceiver receiver(planMesh, nullptr, aSeat[0]);
    const long long nToBegin = kWaysToBegin * (static_cast<long long>(std::sqrt(aRank.GetSize())) + 1);
    const long long nMostLeft = nToBegin + kMovesToTurn * aRank.GetSize();
    long long nMovesLeft = nToBegin;
    int i = 0;
    for (; i < aRank.GetSize() && (bToTheEnd || nMovesLeft > 0); ++i) {
        if (aRank[i] != kIsInMesh) {
            const PlanLocation at = WalkToPoint(planMesh, receiver.LastTri(), planMesh.PlaceOf(i), tolerance);
            receiver.Insert(i, at);
            nMovesLeft = std::min(nMovesLeft + kMovesPerVertex - at.nMoves, nMostLeft);
        }
    }
    planMesh.Store(mesh.aTri);
    if (i < aRank.GetSize()) {
        planMesh.ListSeats(aSeat);
    }
    return {i, planMesh.NumberOf(receiver.LastTri()), receiver.LeftOut(), receiver.IsBent()};
}

}   // namespace qsv
