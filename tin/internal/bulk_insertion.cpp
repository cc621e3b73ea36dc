#include "tin/internal/bulk_insertion.h"

#include <cmath>

#include "tin/internal/insertion_by_groups.h"
#include "tin/internal/insertion_by_walks.h"
#include "tin/internal/plan_mesh.h"

namespace qsv {

namespace {

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
    return progress.nLeftOut + InsertByGroups(mesh, aOutline, lower, dSide, progress, aSeat);
}

}   // namespace qsv
