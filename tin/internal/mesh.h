#ifndef QSV_TIN_INTERNAL_MESH_H
#define QSV_TIN_INTERNAL_MESH_H

#include "base/xyz.h"
#include "platform/afx_array.h"
#include "tin/triangle.h"

namespace qsv {

// The arrays of a TIN and its tolerances, as those functions of this folder see them that only read.
struct MeshView {
    const CArray<CXYZ>& aVertex;
    const CArray<CTriangle>& aTri;
    double dEPS;    // bounds coordinate differences
    double dEPS2;   // bounds doubled areas
};

// The same for those that change them.
struct Mesh {
    CArray<CXYZ>& aVertex;
    CArray<CTriangle>& aTri;
    double dEPS;
    double dEPS2;

    operator MeshView() const { return {aVertex, aTri, dEPS, dEPS2}; }
};

template <class T>
bool IsIndexOf(const CArray<T>& aElement, int nIndex)
{
    return nIndex >= 0 && nIndex < aElement.GetSize();
}

// The host may write the arrays and files may be damaged, so indices that stand in them are looked up
// through these: a missing vertex reads as the zero record, a missing neighbour as the outside.
inline const CXYZ& VertexAt(const CArray<CXYZ>& aVertex, int nVt)
{
    static const CXYZ zero;
    return IsIndexOf(aVertex, nVt) ? aVertex[nVt] : zero;
}

inline const CXYZ& CornerAt(const MeshView& mesh, int nTri, int nSlot)
{
    return VertexAt(mesh.aVertex, mesh.aTri[nTri].m_nVertex[nSlot]);
}

inline int NeighborAt(const CArray<CTriangle>& aTri, int nTri, int nSlot)
{
    const int nNeighbor = aTri[nTri].m_nNeighbor[nSlot];
    return IsIndexOf(aTri, nNeighbor) ? nNeighbor : -1;
}

}   // namespace qsv

#endif
