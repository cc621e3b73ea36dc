#ifndef QSV_TIN_TIN_MODEL_INSERTION_H
#define QSV_TIN_TIN_MODEL_INSERTION_H

#include "tin/internal/mesh_walk.h"
#include "tin/internal/recent_triangles.h"

class CTin;

namespace qsv {

// Inserts the vertices of a TIN into its mesh one after the other. The same triangles, numbering and links
// as DivideTri called for each in turn, which searches from the triangle of the vertex before; but a
// search starts near the vertex wherever that provably ends in the same triangle. See
// docs/algorithms/construction.md.
class Inserter
{
public:
    // The first nTriCount triangles make up the mesh; the range of the vertices is up to date.
    Inserter(CTin& tin, int nTriCount);

    void Insert(int nVt);
    int TriangleCount() const { return m_nTriCount; }

private:
    Location Locate(const CXYZ& p) const;
    bool IsDeepInside(int nTri, const CXYZ& p) const;
    bool IsThin(int nTri) const;
    bool BendsOutline(const CXYZ& p, const Location& at) const;
    void CountThinTriangle(int nTri);
    void CountThinTrianglesAround(int nTri);

    CTin& m_tin;
    const Mesh m_mesh;
    int m_nTriCount;
    int m_nLastTri = 0;
    CXYZ m_last;   // the vertex that m_nLastTri was found for
    RecentTriangles m_recent;
    CArray<char> m_aIsThin;
    int m_nThin = 0;
    bool m_bOutlineBent = false;
};

}   // namespace qsv

#endif
