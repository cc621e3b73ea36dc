#ifndef QSV_TIN_INTERNAL_PAINTING_ORDER_H
#define QSV_TIN_INTERNAL_PAINTING_ORDER_H

#include "tin/internal/mesh.h"

namespace qsv {

// Refines an order for painting from above, lowest triangle first, which holds every triangle once. At every
// place in turn, the triangle that stands there is exchanged with the first later one that it would wrongly
// hide, as long as there is one, but at most as many times as there are triangles: where they overlap in a ring,
// no order is right, and they end in the one that these exchanges lead to.
//
// The result is that of comparing every pair of places. The cost is near linear where few triangles lie over the
// same ground, rings included.
void RefinePaintingOrder(const Mesh& mesh, CArray<int>& aOrder);

}   // namespace qsv

#endif
