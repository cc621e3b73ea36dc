#include "tin/internal/plan_walk.h"

#include "tin/internal/plan.h"
#include "tin/internal/slots.h"

namespace qsv {

WalkAnswer AskTriangle(const PlanMesh& mesh, int nTri, const PlanPlace& p, const WalkTolerance& tolerance)
{
    const Corner first = mesh.FirstCorner(nTri);
    const Corner aCorner[] = {first, first.Next(), first.Prev()};
    for (int k = 0; k < 3; ++k) {
        const Corner from = aCorner[k], to = aCorner[NextSlot(k)];
        const PlanPlace &a = mesh.PlaceAt(from), &b = mesh.PlaceAt(to);
        const double dx = p.x - a.x, dy = p.y - a.y;
        const double ex = b.x - a.x, ey = b.y - a.y;
        const double s = ey * dx - ex * dy;
        if (s > tolerance.dEPS2) {
            return {false, kOutside, aCorner[PrevSlot(k)]};
        }
        if (!(s >= -tolerance.dEPS2)) {
            continue;
        }
        if (IsSamePlace(p.x, p.y, a.x, a.y, tolerance.dEPS)) {
            return {true, kOnVertex, from};
        }
        if (IsSamePlace(p.x, p.y, b.x, b.y, tolerance.dEPS)) {
            return {true, kOnVertex, to};
        }
        if (ex * dx >= 0.0 && ey * dy >= 0.0 && dx * dx + dy * dy <= ex * ex + ey * ey) {
            return {true, kOnEdge, aCorner[PrevSlot(k)]};
        }
    }
    return {true, kInside, first};
}

namespace {

// The same. Where the place is close to the line of an edge, which is rare, it is left to AskTriangle.
inline WalkAnswer AskOnTheWay(const PlanMesh& mesh, int nTri, const PlanPlace& p,
                              const WalkTolerance& tolerance)
{
    const Corner first = mesh.FirstCorner(nTri);
    const Corner aCorner[] = {first, first.Next(), first.Prev()};
    for (int k = 0; k < 3; ++k) {
        const double dRight = RightOf(mesh.PlaceAt(aCorner[k]), mesh.PlaceAt(aCorner[NextSlot(k)]), p);
        if (dRight > tolerance.dEPS2) {
            return {false, kOutside, aCorner[PrevSlot(k)]};
        }
        if (dRight >= -tolerance.dEPS2) {
            return AskTriangle(mesh, nTri, p, tolerance);
        }
    }
    return {true, kInside, first};
}

}   // namespace

PlanLocation WalkToPoint(const PlanMesh& mesh, int nStartTri, const PlanPlace& p,
                         const WalkTolerance& tolerance)
{
    int nTri = nStartTri;
    int nMoves = 0;
    int nEarlier = nStartTri;   // where the walk stood after 1, 2, 4, 8, ... moves (Brent 1980)
    for (;;) {
        const WalkAnswer answer = AskOnTheWay(mesh, nTri, p, tolerance);
        if (answer.bStops) {
            return {nTri, answer.eState, answer.corner, nMoves};
        }
        const Corner across = mesh.Across(answer.corner);
        if (across.IsOutside()) {
            return {-1, kOutside, answer.corner, nMoves};
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
