#include "tin/internal/first_triangles.h"

#include "tin/internal/mesh_links.h"

namespace qsv {

FirstTriangles::FirstTriangles(const CArray<CTriangle>& aTri, const CArray<int>& aVt, int nVertices)
    : m_aTri(aTri)
{
    m_aListOf.SetSize(nVertices, -1);
    for (int i = 0; i < aVt.GetSize(); ++i) {
        if (IsIndexOf(m_aListOf, aVt[i]) && m_aListOf[aVt[i]] == kNotChosen) {
            m_aListOf[aVt[i]] = m_aList.Add(List()) + 1;
        }
    }
    for (int t = 0; t < aTri.GetSize(); ++t) {
        Added(t);
    }
}

void FirstTriangles::Added(int nTri)
{
    for (const int nVt : m_aTri[nTri].m_nVertex) {
        if (IsChosen(nVt)) {
            Append(m_aList[m_aListOf[nVt] - 1], nTri);
        }
    }
}

void FirstTriangles::Append(List& list, int nTri)
{
    const int nEntry = m_aEntry.Add({nTri, -1});
    (list.nLast < 0 ? list.nFirst : m_aEntry[list.nLast].nNext) = nEntry;
    list.nLast = nEntry;
}

int FirstTriangles::Find(int nVt)
{
    List& list = m_aList[m_aListOf[nVt] - 1];
    while (list.nFirst >= 0 && SlotOfVertex(m_aTri[m_aEntry[list.nFirst].nTri], nVt) < 0) {
        list.nFirst = m_aEntry[list.nFirst].nNext;
    }
    if (list.nFirst < 0) {
        list.nLast = -1;
        return -1;
    }
    return m_aEntry[list.nFirst].nTri;
}

}   // namespace qsv
