#ifndef QSV_TIN_INTERNAL_FIRST_TRIANGLES_H
#define QSV_TIN_INTERNAL_FIRST_TRIANGLES_H

#include "tin/internal/mesh.h"

namespace qsv {

// Knows the first triangle, in index order, that uses each of some chosen vertices, while the mesh grows. What
// may happen to the mesh meanwhile: triangles are added behind the others, and a corner of a triangle is given
// to a vertex that is none of the chosen.
//
// Each chosen vertex has the list of its triangles, in index order. What is added comes last, and a triangle
// that gave a vertex up never takes it back: so lists stay in order, and outdated fronts are dropped for good.
// No link is followed, so that damaged meshes are no exception.
class FirstTriangles
{
public:
    // aVt: the chosen vertices; those outside 0 .. nVertices-1 are left aside.
    FirstTriangles(const CArray<CTriangle>& aTri, const CArray<int>& aVt, int nVertices);

    bool IsChosen(int nVt) const { return IsIndexOf(m_aListOf, nVt) && m_aListOf[nVt] != kNotChosen; }
    // To be called for every triangle added, in index order.
    void Added(int nTri);
    // The first triangle that uses a chosen vertex; -1 when none does.
    int Find(int nVt);

private:
    static constexpr int kNotChosen = 0;
    struct List {
        int nFirst = -1, nLast = -1;   // in m_aEntry
    };
    struct Entry {
        int nTri;
        int nNext;   // in m_aEntry, -1 at the end
    };

    void Append(List& list, int nTri);

    const CArray<CTriangle>& m_aTri;
    CArray<int> m_aListOf;   // by vertex: number of its list, from 1; kNotChosen
    CArray<List> m_aList;
    CArray<Entry> m_aEntry;
};

}   // namespace qsv

#endif
