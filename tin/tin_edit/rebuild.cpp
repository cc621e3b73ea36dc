#include <climits>

#include "tin/internal/edge_uses.h"
#include "tin/internal/mesh_links.h"
#include "tin/internal/slots.h"
#include "tin/tin.h"

using namespace qsv;

namespace {

// The last two triangles that hold an edge in one direction.
struct Holders {
    int nLast = -1;
    int nBeforeLast = -1;

    // Called in ascending order, once or more often a triangle.
    void Take(int nTri)
    {
        if (nTri != nLast) {
            nBeforeLast = nLast;
            nLast = nTri;
        }
    }
};

// Whether an earlier slot of the triangle starts an edge between the same vertices in the same direction,
// as in a triangle whose three vertices are one.
bool IsRepeatedEdge(const CTriangle& tri, int nEdge)
{
    for (int k = 0; k < nEdge; ++k) {
        if (tri.m_nVertex[k] == tri.m_nVertex[nEdge] &&
            tri.m_nVertex[NextSlot(k)] == tri.m_nVertex[NextSlot(nEdge)]) {
            return true;
        }
    }
    return false;
}

// The triangle to which an edge of nTri is linked, of those that hold it in the other direction: the last of
// the later ones; without later ones the last of the earlier ones, which see of each triangle only the
// first of its repeated edges. These are the links that remain when every triangle in turn is linked to
// every later one, each link overwriting the former.
int LinkOf(int nTri, const Holders& reverse, bool bRepeated)
{
    if (reverse.nLast > nTri) {
        return reverse.nLast;
    }
    if (bRepeated) {
        return -1;
    }
    return reverse.nLast < nTri ? reverse.nLast : reverse.nBeforeLast;
}

// Links all uses nFirst .. nEnd-1 of one edge.
void LinkEdge(CArray<CTriangle>& aTri, const CArray<EdgeUse>& aUse, int nFirst, int nEnd)
{
    Holders upward, downward;
    for (int i = nFirst; i < nEnd; ++i) {
        (aUse[i].bUpward ? upward : downward).Take(aUse[i].nTri);
    }
    const bool bNoExtent = aUse[nFirst].nLow == aUse[nFirst].nHigh;   // such an edge is its own reverse
    for (int i = nFirst; i < nEnd; ++i) {
        CTriangle& tri = aTri[aUse[i].nTri];
        const Holders& reverse = aUse[i].bUpward && !bNoExtent ? downward : upward;
        tri.m_nNeighbor[NeighborSlotOfEdge(aUse[i].nEdge)] =
            LinkOf(aUse[i].nTri, reverse, IsRepeatedEdge(tri, aUse[i].nEdge));
    }
}

}   // namespace

void CTin::UpdateTopology()
{
    const Array<EdgeUse> aUse = SortedEdgeUses(m_aTri);
    for (int nFirst = 0; nFirst < aUse.GetSize();) {
        const int nEnd = EndOfEdge(aUse, nFirst);
        LinkEdge(m_aTri, aUse, nFirst, nEnd);
        nFirst = nEnd;
    }
}

namespace {

// An index of src as it stands in the joined array. What refers to nothing still refers to nothing.
int Shifted(int nIndex, int nBy)
{
    if (nIndex < 0) {
        return nIndex;
    }
    return nIndex <= INT_MAX - nBy ? nIndex + nBy : INT_MAX;
}

}   // namespace

void CTin::AddTIN(CTin& src)
{
    const int nVertices = m_aVertex.GetSize(), nTriangles = m_aTri.GetSize();
    const int nAdded = src.m_aTri.GetSize();
    m_aVertex.Append(src.m_aVertex);
    m_aTri.SetSize(nTriangles + nAdded, -1);
    for (int t = 0; t < nAdded; ++t) {
        for (int k = 0; k < 3; ++k) {
            CTriangle& tri = m_aTri[nTriangles + t];
            tri.m_nVertex[k] = Shifted(src.m_aTri[t].m_nVertex[k], nVertices);
            tri.m_nNeighbor[k] = Shifted(src.m_aTri[t].m_nNeighbor[k], nTriangles);
        }
    }
}

int CTin::CheckPtUsed(int nVt)
{
    for (int t = 0; t < m_aTri.GetSize(); ++t) {
        if (SlotOfVertex(m_aTri[t], nVt) >= 0) {
            return 1;
        }
    }
    return 0;
}
