#include "tin/internal/mesh_walk.h"

#include "tin/internal/plan.h"
#include "tin/internal/slots.h"

namespace qsv {

namespace {

// What one edge says about the point: that it lies beyond, that the search ends here, or nothing.
enum class EdgeAnswer { Passed, Beyond, Found };

EdgeAnswer AskEdge(const Mesh& mesh, int nTri, int k, double x, double y, Location& found)
{
    const CXYZ& a = CornerAt(mesh, nTri, k);
    const CXYZ& b = CornerAt(mesh, nTri, NextSlot(k));
    const double dx = x - a.x, dy = y - a.y;
    const double ex = b.x - a.x, ey = b.y - a.y;
    const double s = ey * dx - ex * dy;   // above 0: the point is to the right, outside
    if (s > mesh.dEPS2) {
        return EdgeAnswer::Beyond;
    }
    if (!(s >= -mesh.dEPS2)) {
        return EdgeAnswer::Passed;
    }
    if (IsSamePlace(x, y, a.x, a.y, mesh.dEPS)) {
        found = {nTri, kOnVertex, k};
        return EdgeAnswer::Found;
    }
    if (IsSamePlace(x, y, b.x, b.y, mesh.dEPS)) {
        found = {nTri, kOnVertex, NextSlot(k)};
        return EdgeAnswer::Found;
    }
    if (ex * dx >= 0.0 && ey * dy >= 0.0 && dx * dx + dy * dy <= ex * ex + ey * ey) {
        found = {nTri, kOnEdge, k};
        return EdgeAnswer::Found;
    }
    return EdgeAnswer::Passed;   // on the edge's line, but past its ends
}

}   // namespace

Location WalkToPoint(const Mesh& mesh, int nStartTri, double x, double y)
{
    Location found;
    if (!IsIndexOf(mesh.aTri, nStartTri)) {
        return found;
    }
    int nTri = nStartTri;
    int nMoves = 0;
    int nEarlier = nStartTri;   // where the walk stood after 1, 2, 4, 8, ... moves (Brent 1980)
    for (int k = 0; k < 3;) {
        switch (AskEdge(mesh, nTri, k, x, y, found)) {
        case EdgeAnswer::Found: return found;
        case EdgeAnswer::Passed: ++k; break;
        case EdgeAnswer::Beyond:
            nTri = NeighborAt(mesh.aTri, nTri, NeighborSlotOfEdge(k));
            if (nTri < 0) {
                return {-1, kOutside, k};
            }
            if (++nMoves >= mesh.aTri.GetSize() || nTri == nEarlier) {
                return {};   // back at a triangle of before, the walk would go round until the last move
            }
            if ((nMoves & (nMoves - 1)) == 0) {
                nEarlier = nTri;
            }
            k = 0;
            break;
        }
    }
    return {nTri, kInside, 0};
}

}   // namespace qsv
