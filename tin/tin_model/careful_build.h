#ifndef QSV_TIN_TIN_MODEL_CAREFUL_BUILD_H
#define QSV_TIN_TIN_MODEL_CAREFUL_BUILD_H

class CTin;

namespace qsv {

// Whether some vertex is used by none of the first nTriCount triangles although it coincides with no vertex
// that is.
bool HasMissedVertex(const CTin& tin, int nTriCount);

// Triangulates all vertices anew, the hull corners that m_aBoundary holds first and then all in index order,
// and sets m_aBoundary to the hull. Sides are decided exactly, so that no sliver can catch a search or fold
// the mesh; a vertex is left out only where it coincides with one that is in. Takes longer than the ordinary
// insertion, which is why that one is tried first. The triangle array is resized to what is in use.
void BuildCarefully(CTin& tin);

}   // namespace qsv

#endif
