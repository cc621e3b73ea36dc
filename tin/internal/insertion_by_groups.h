#ifndef QSV_TIN_INTERNAL_INSERTION_BY_GROUPS_H
#define QSV_TIN_INTERNAL_INSERTION_BY_GROUPS_H

#include "tin/internal/insertion_by_walks.h"

namespace qsv {

// Inserts the vertices that are left after some progress, in whatever order they come: each is searched for from
// close by, many at a time, and where that does not tell by the walk. The vertices lie in a square from its lower
// corner on; aSeat is what InsertByWalks left. Returns how many of them were left out.
int InsertByGroups(const Mesh& mesh, const CArray<int>& aOutline, const CXYZ& lower, double dSide,
                   const Progress& progress, const CArray<int>& aSeat);

}   // namespace qsv

#endif
