#ifndef QSV_TIN_INTERNAL_EDGE_SWAP_H
#define QSV_TIN_INTERNAL_EDGE_SWAP_H

#include "tin/internal/mesh.h"

namespace qsv {

// Whether vertex D lies strictly outside the circle through A, B, C in plan. A circle through points on
// one line never passes; a point exactly on the circle does not either, so that cocircular points end in
// one fixed order of swaps.
bool IsOutsideCircle(const CArray<CXYZ>& aVertex, int nVtA, int nVtB, int nVtC, int nVtD);

// How sides of a diagonal are told: by rounded arithmetic, or exactly.
enum class Turns { Rounded, Exact };

// Whether the new diagonal P-D would run strictly between Q (on its right) and R (on its left).
bool IsStrictlyConvex(const CArray<CXYZ>& aVertex, int nVtP, int nVtQ, int nVtD, int nVtR,
                      Turns eTurns = Turns::Rounded);

// Turns the diagonal shared by triangle nTri, whose apex is in slot nApex, and triangle nOther, which
// holds nTri in neighbour slot nOtherSlot. Returns false, changing nothing, where that would fold.
bool SwapDiagonal(const Mesh& mesh, int nTri, int nApex, int nOther, int nOtherSlot,
                  Turns eTurns = Turns::Rounded);

// Is told of every triangle before its corners are looked at.
class CornerWatcher
{
public:
    virtual void WillLookAt(int nTri) = 0;

protected:
    ~CornerWatcher() = default;
};

// Makes the edge opposite slot nApex of triangle nTri Delaunay, and then every edge that a swap exposes
// (Lawson 1977). nDepth is the nesting level so far; levels past kMaxSwapDepth are left as they are.
void LegalizeEdge(const Mesh& mesh, int nTri, int nApex, int nDepth, Turns eTurns = Turns::Rounded,
                  CornerWatcher* pWatcher = nullptr);

}   // namespace qsv

#endif
