#ifndef QSV_TIN_INTERNAL_LINE_WALK_H
#define QSV_TIN_INTERNAL_LINE_WALK_H

#include "tin/internal/mesh.h"

namespace qsv {

// A breakline is a list of vertices; segment i runs from vertex i to the next, the last one from the end of the
// list to its start. A place on the way is a triangle and the slot of the pivot, the vertex that is turned
// around.
struct LinePlace {
    int nSeg;
    int nTri;
    int nSlot;
};

// Turns around the pivot until the segment leaves it through the opposite edge. On the way the pivot moves along
// edges that lie on the segment; where it reaches the segment's end, the next segment goes on. Returns false
// when the line ends, a step is not possible, or nStepLimit steps were taken.
// nWalkDir: the turning direction, as StepAroundOrBack keeps it.
//
// A search that cannot end would turn round and round up to the limit. As soon as it comes back to where it
// was, whole rounds are left out: the outcome is that of all the steps.
bool TurnToCrossing(const Mesh& mesh, const CArray<int>& aLine, LinePlace& at, int& nWalkDir, int nStepLimit);

// Where a segment goes on behind an edge, the vertex opposite of which is W.
enum class Onward {
    AtOpposite = 0,    // at W
    LeftOut = 1,       // through the edge before W: W is on the left
    RightOut = 2,      // through the edge behind W: W is on the right
    DoesNotCross = 3   // it does not meet the edge: it ends before
};

// Meeting point of segment nSeg with the edge of triangle nTri that ends at slot nSlot.
Onward MeetEdge(const Mesh& mesh, const CArray<int>& aLine, int nSeg, int nTri, int nSlot, CXYZ& ptCross);

}   // namespace qsv

#endif
