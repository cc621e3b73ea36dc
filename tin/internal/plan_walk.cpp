#include "tin/internal/plan_walk.h"

#include "tin/internal/plan.h"
#include "tin/internal/slots.h"

namespace qsv {

WalkAnswer AskTriangle(const PlanMesh& mesh, int nTri, const PlanPlace& p, const WalkTolerance& tolerance)
{
    const PlanTriangle& tri = mesh[nTri];
    for (int k = 0; k < 3; ++k) {
        const PlanPlace &a = mesh.Corner(tri, k), &b = mesh.Corner(tri, NextSlot(k));
        const double dx = p.x - a.x, dy = p.y - a.y;
        const double ex = b.x - a.x, ey = b.y - a.y;
        const double s = ey * dx - ex * dy;
        if (s > tolerance.dEPS2) {
            return {false, kOutside, k};
        }
        if (!(s >= -tolerance.dEPS2)) {
            continue;
        }
        if (IsSamePlace(p.x, p.y, a.x, a.y, tolerance.dEPS)) {
            return {true, kOnVertex, k};
        }
        if (IsSamePlace(p.x, p.y, b.x, b.y, tolerance.dEPS)) {
            return {true, kOnVertex, NextSlot(k)};
        }
        if (ex * dx >= 0.0 && ey * dy >= 0.0 && dx * dx + dy * dy <= ex * ex + ey * ey) {
            return {true, kOnEdge, k};
        }
    }
    return {true, kInside, 0};
}

Location WalkToPoint(const PlanMesh& mesh, int nStartTri, const PlanPlace& p, const WalkTolerance& tolerance)
{
    int nTri = nStartTri;
    int nMoves = 0;
    int nEarlier = nStartTri;   // where the walk stood after 1, 2, 4, 8, ... moves (Brent 1980)
    for (;;) {
        const WalkAnswer answer = AskTriangle(mesh, nTri, p, tolerance);
        if (answer.bStops) {
            return {nTri, answer.eState, answer.nSide};
        }
        const EdgeRef across = mesh[nTri].aLink[answer.nSide];
        if (across.IsOutside()) {
            return {-1, kOutside, answer.nSide};
        }
        nTri = across.Tri();
        if (++nMoves >= mesh.Seats() || nTri == nEarlier) {
            return {};   // back at a triangle of before, the walk would go round until the last move
        }
        if ((nMoves & (nMoves - 1)) == 0) {
            nEarlier = nTri;
        }
    }
}

}   // namespace qsv
