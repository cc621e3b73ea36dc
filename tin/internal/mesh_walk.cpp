#include "tin/internal/mesh_walk.h"

#include "tin/internal/plan.h"
#include "tin/internal/slots.h"

namespace qsv {

namespace {

// What one edge says about the point: that it lies beyond, that the search ends here, or nothing.
enum class EdgeAnswer { Passed, Beyond, Found };

EdgeAnswer AskEdge(const MeshView& mesh, int nTri, int k, double x, double y, Location& found)
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

bool StepWalk(const MeshView& mesh, Walk& walk, Location& found)
{
    for (int k = 0; k < 3; ++k) {
        const EdgeAnswer eAnswer = AskEdge(mesh, walk.nTri, k, walk.x, walk.y, found);
        if (eAnswer == EdgeAnswer::Found) {
            return false;
        }
        if (eAnswer == EdgeAnswer::Beyond) {
            walk.nTri = NeighborAt(mesh.aTri, walk.nTri, NeighborSlotOfEdge(k));
            if (walk.nTri < 0) {
                found = {-1, kOutside, k};
                return false;
            }
            if (++walk.nMoves >= mesh.aTri.GetSize() || walk.nTri == walk.nEarlier) {
                found = {};   // back at a triangle of before, it would go round until the last move
                return false;
            }
            if ((walk.nMoves & (walk.nMoves - 1)) == 0) {
                walk.nEarlier = walk.nTri;
            }
            return true;
        }
    }
    found = {walk.nTri, kInside, 0};
    return false;
}

Location WalkToPoint(const MeshView& mesh, int nStartTri, double x, double y)
{
    Location found;
    if (IsIndexOf(mesh.aTri, nStartTri)) {
        Walk walk = StartWalk(nStartTri, x, y);
        while (StepWalk(mesh, walk, found)) {}
    }
    return found;
}

}   // namespace qsv
