#ifndef QSV_TIN_INTERNAL_INSERTION_BY_WALKS_H
#define QSV_TIN_INTERNAL_INSERTION_BY_WALKS_H

#include "tin/internal/mesh.h"

namespace qsv {

// How far the insertion of the vertices of a TIN has come, by its numbers.
struct Progress {
    int nNext = 0;      // the vertex to come
    int nLastTri = 0;   // where the one inserted last lies: the walk to the next one starts there
    int nLeftOut = 0;
    bool bBent = false;   // the outline need no longer be convex
};

// Whether vertices that follow each other mostly lie too far apart for walks; they lie in a square.
bool AreWalksLong(const CArray<CXYZ>& aVertex, double dSide);

// Inserts vertex after vertex, each searched for by the walk from the triangle of the one before: the procedure itself.
// Goes on to the end, or as long as the walks are short. aSeat holds the seats of the triangles in a PlanMesh where
// ranks are the numbers of vertices, and does so again afterwards unless nothing is left to do.
Progress InsertByWalks(const Mesh& mesh, const CArray<int>& aOutline, bool bToTheEnd, CArray<int>& aSeat);

}   // namespace qsv

#endif
