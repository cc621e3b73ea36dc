#include "tin/internal/mesh_walk.h"

#include "tin/internal/plan.h"
#include "tin/internal/slots.h"

namespace qsv {

namespace {

// Whether a point on the line of the edge of a and b, or close to it, lies on the edge or one of its ends. A point past
// its ends does not.
bool IsOnEdge(const MeshView& mesh, const Walk& walk, int k, const CXYZ& a, const CXYZ& b, Location& found)
{
    if (IsSamePlace(walk.x, walk.y, a.x, a.y, mesh.dEPS)) {
        found = {walk.nTri, kOnVertex, k};
        return true;
    }
    if (IsSamePlace(walk.x, walk.y, b.x, b.y, mesh.dEPS)) {
        found = {walk.nTri, kOnVertex, NextSlot(k)};
        return true;
    }
    const double dx = walk.x - a.x, dy = walk.y - a.y;
    const double ex = b.x - a.x, ey = b.y - a.y;
    if (ex * dx >= 0.0 && ey * dy >= 0.0 && dx * dx + dy * dy <= ex * ex + ey * ey) {
        found = {walk.nTri, kOnEdge, k};
        return true;
    }
    return false;
}

// Moves across an edge, unless that ends the walk.
bool Cross(const MeshView& mesh, Walk& walk, int k, Location& found)
{
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

}   // namespace

bool StepWalk(const MeshView& mesh, Walk& walk, Location& found)
{
    const int* const pVertex = mesh.aTri[walk.nTri].m_nVertex;
    const CXYZ* const apCorner[3] = {&VertexAt(mesh.aVertex, pVertex[0]), &VertexAt(mesh.aVertex, pVertex[1]),
                                     &VertexAt(mesh.aVertex, pVertex[2])};
    for (int k = 0; k < 3; ++k) {
        const CXYZ &a = *apCorner[k], &b = *apCorner[NextSlot(k)];
        const double dRight =
            (b.y - a.y) * (walk.x - a.x) - (b.x - a.x) * (walk.y - a.y);   // above 0: outside
        if (dRight > mesh.dEPS2) {
            return Cross(mesh, walk, k, found);
        }
        if (dRight >= -mesh.dEPS2 && IsOnEdge(mesh, walk, k, a, b, found)) {
            return false;
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
